// Draws a small scene with the platform's GDI into a memory bitmap and writes it as PNG:
// zel-scene [out.png]. It exercises fills, pattern brushes (including one made from a
// bitmap saved and loaded back through SHLoadDIBitmap), regions, clipping, raster
// operations and single pixels, and checks that every GDI object it made is released.
#include <aygshell.h>
#include <windows.h>
#include <zel/platform.h>

#include <cmath>
#include <cstdio>
#include <string>

namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 200;

void Fill(HDC dc, int l, int t, int r, int b, COLORREF color) {
    HBRUSH brush = CreateSolidBrush(color);
    RECT rc = {l, t, r, b};
    FillRect(dc, &rc, brush);
    DeleteObject(brush);
}

// A dusk sky: horizontal bands from deep blue to orange, and a dark ground.
void DrawBackground(HDC dc) {
    const int bands = 20, sky = 140;
    for (int i = 0; i < bands; ++i) {
        int r = 20 + i * 235 / bands, g = 30 + i * 110 / bands, b = 110 - i * 80 / bands;
        Fill(dc, 0, i * sky / bands, kWidth, (i + 1) * sky / bands, RGB(r, g, b));
    }
    Fill(dc, 0, sky, kWidth, kHeight, RGB(34, 40, 30));
}

// A 4 x 4 checker as a 32-bpp pattern brush paving the road.
void DrawRoad(HDC dc) {
    const uint32_t a = 0x00505058, b = 0x00606068;
    uint32_t bits[16];
    for (int i = 0; i < 16; ++i) bits[i] = ((i / 4) / 2 + (i % 4) / 2) % 2 ? a : b;
    HBITMAP tile = CreateBitmap(4, 4, 1, 32, bits);
    HBRUSH road = CreatePatternBrush(tile);
    DeleteObject(tile);  // the brush keeps its own copy
    RECT rc = {0, 160, kWidth, 180};
    FillRect(dc, &rc, road);
    DeleteObject(road);
    Fill(dc, 0, 169, kWidth, 171, RGB(230, 200, 60));
}

// Windows of a skyline: each building is a region, with its windows cut out (RGN_DIFF)
// so the sky shows through where lights are off.
void DrawSkyline(HDC dc) {
    struct Building { int l, t, r; } buildings[] = {{10, 70, 60}, {70, 40, 120}, {130, 90, 175}, {250, 55, 305}};
    HBRUSH wall = CreateSolidBrush(RGB(25, 25, 45));
    for (const Building& bld : buildings) {
        HRGN shape = CreateRectRgn(bld.l, bld.t, bld.r, 160);
        for (int y = bld.t + 8; y + 6 < 155; y += 12)
            for (int x = bld.l + 6; x + 6 < bld.r; x += 12) {
                if ((x * 7 + y * 3) % 5 == 0) continue;  // some windows are lit, drawn later
                HRGN hole = CreateRectRgn(x, y, x + 5, y + 6);
                CombineRgn(shape, shape, hole, RGN_DIFF);
                DeleteObject(hole);
            }
        FillRgn(dc, shape, wall);
        DeleteObject(shape);
        for (int y = bld.t + 8; y + 6 < 155; y += 12)
            for (int x = bld.l + 6; x + 6 < bld.r; x += 12)
                if ((x * 7 + y * 3) % 5 == 0) Fill(dc, x, y, x + 5, y + 6, RGB(255, 220, 120));
    }
    DeleteObject(wall);
}

// The moon, pixel by pixel, with a PATINVERT halo clipped to a rectangle.
void DrawMoon(HDC dc) {
    const int cx = 210, cy = 35, r = 14;
    for (int y = -r; y <= r; ++y)
        for (int x = -r; x <= r; ++x) {
            double d = std::sqrt(double(x * x + y * y));
            if (d <= r) SetPixel(dc, cx + x, cy + y, d > r - 1.5 ? RGB(200, 200, 170) : RGB(245, 245, 215));
        }
    SaveDC(dc);
    IntersectClipRect(dc, cx - 24, cy - 24, cx + 25, cy + 25);
    HBRUSH glow = CreateSolidBrush(RGB(24, 24, 8));
    HGDIOBJ old = SelectObject(dc, glow);
    PatBlt(dc, cx - 40, cy - 2, 80, 4, PATINVERT);
    PatBlt(dc, cx - 2, cy - 40, 4, 80, PATINVERT);
    SelectObject(dc, old);
    DeleteObject(glow);
    RestoreDC(dc, -1);
}

// A sign made from a bitmap written with SaveBitmap and read back with SHLoadDIBitmap,
// then used as a pattern brush (so it appears tiled, as a skin piece would).
bool DrawSign(HDC dc, const std::string& tilePath) {
    uint32_t bits[8 * 8];
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x) bits[y * 8 + x] = (x + y) % 8 < 4 ? 0x00D04060 : 0x00F0E0F0;
    HBITMAP tile = CreateBitmap(8, 8, 1, 32, bits);
    bool saved = zel::SaveBitmap(tile, tilePath.c_str());
    DeleteObject(tile);
    if (!saved) return false;
    std::wstring wide(tilePath.begin(), tilePath.end());
    HBITMAP loaded = SHLoadDIBitmap(wide.c_str());
    if (!loaded) return false;
    HBRUSH sign = CreatePatternBrush(loaded);
    DeleteObject(loaded);
    Fill(dc, 186, 104, 240, 136, RGB(20, 20, 20));
    SetBrushOrgEx(dc, 188, 106, nullptr);
    RECT rc = {188, 106, 238, 134};
    FillRect(dc, &rc, sign);
    DeleteObject(sign);
    Fill(dc, 210, 136, 214, 160, RGB(90, 90, 90));
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::string out = argc > 1 ? argv[1] : "out/scene.png";
    std::string dir = out.find('/') == std::string::npos ? "." : out.substr(0, out.rfind('/'));
    zel::GdiCounts before = zel::LiveGdiObjects();

    HDC screen = GetDC(NULL);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP canvas = CreateCompatibleBitmap(screen, kWidth, kHeight);  // 32 bpp, like the screen
    ReleaseDC(NULL, screen);
    HGDIOBJ old = SelectObject(dc, canvas);

    DrawBackground(dc);
    DrawSkyline(dc);
    DrawRoad(dc);
    DrawMoon(dc);
    bool signOk = DrawSign(dc, dir + "/scene-tile.bmp");

    SelectObject(dc, old);
    bool saved = zel::SaveBitmap(canvas, out.c_str());
    DeleteObject(canvas);
    DeleteDC(dc);

    int leaked = zel::LiveGdiObjects().total() - before.total();
    if (!signOk) std::fprintf(stderr, "scene: the sign tile could not be saved and loaded in %s\n", dir.c_str());
    if (!saved) std::fprintf(stderr, "scene: cannot write %s\n", out.c_str());
    if (leaked) std::fprintf(stderr, "scene: %d GDI objects leaked\n", leaked);
    if (!signOk || !saved || leaked) return 1;
    std::printf("scene: wrote %s (%dx%d)\n", out.c_str(), kWidth, kHeight);
    return 0;
}
