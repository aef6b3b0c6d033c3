// Handles, object lifetime, selection and DC state. GetObjectW on every kind of object and
// buffer size is pinned against the recordings (recorded/gdi_objects.cpp).
#include <windows.h>

#include <cstring>

#include "support/leak_check.h"
#include "support/memory_surface.h"

namespace {

using Objects = zel::test::LeakChecked;

TEST_F(Objects, StaleNullAndWrongTypedHandlesFail) {
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    ASSERT_NE(brush, nullptr);
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_FALSE(DeleteObject(brush)) << "a stale handle must not resolve";
    LOGBRUSH lb;
    EXPECT_EQ(GetObjectW(brush, sizeof lb, &lb), 0);
    EXPECT_FALSE(DeleteObject(nullptr));

    HPEN pen = CreatePen(PS_SOLID, 1, 0);
    HDC dc = CreateCompatibleDC(nullptr);
    // A pen handle is not a DC, nor a region.
    EXPECT_EQ(SetBkColor(reinterpret_cast<HDC>(pen), 0), CLR_INVALID);
    EXPECT_EQ(GetRgnBox(reinterpret_cast<HRGN>(pen), nullptr), ERROR);
    // Forged values never crash.
    EXPECT_EQ(SelectObject(dc, reinterpret_cast<HGDIOBJ>(0x1234)), nullptr);
    EXPECT_EQ(GetPixel(reinterpret_cast<HDC>(~uintptr_t{0}), 0, 0), CLR_INVALID);
    DeleteObject(pen);
    DeleteDC(dc);
}

TEST_F(Objects, DeletingASelectedObjectIsDeferredUntilDeselected) {
    HDC dc = CreateCompatibleDC(nullptr);
    HBRUSH brush = CreateSolidBrush(RGB(10, 20, 30));
    HGDIOBJ old = SelectObject(dc, brush);
    int live = zel::LiveGdiObjects().brushes;
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_EQ(zel::LiveGdiObjects().brushes, live) << "still selected, still alive";
    LOGBRUSH lb{};
    EXPECT_EQ(GetObjectW(brush, sizeof lb, &lb), static_cast<int>(sizeof lb));
    EXPECT_EQ(lb.lbColor, RGB(10, 20, 30));
    EXPECT_EQ(SelectObject(dc, old), brush);
    EXPECT_EQ(zel::LiveGdiObjects().brushes, live - 1) << "deselection completes the deletion";
    DeleteDC(dc);
}

TEST_F(Objects, StockObjectsSurviveDeletion) {
    HGDIOBJ white = GetStockObject(WHITE_BRUSH);
    EXPECT_TRUE(DeleteObject(white));
    EXPECT_TRUE(DeleteObject(white));
    EXPECT_EQ(GetStockObject(WHITE_BRUSH), white);
    EXPECT_EQ(GetObjectType(white), static_cast<DWORD>(OBJ_BRUSH));
    EXPECT_EQ(CreatePen(PS_NULL, 3, RGB(1, 1, 1)), GetStockObject(NULL_PEN));
}

TEST_F(Objects, FreshMemoryDcHasMonochromeDefaultsAndColours) {
    HDC dc = CreateCompatibleDC(nullptr);
    BITMAP bm{};
    HGDIOBJ current = GetCurrentObject(dc, OBJ_BITMAP);
    ASSERT_EQ(GetObjectW(current, sizeof bm, &bm), static_cast<int>(sizeof bm));
    EXPECT_EQ(bm.bmWidth, 1);
    EXPECT_EQ(bm.bmBitsPixel, 1);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(GetCurrentObject(dc, OBJ_PEN), GetStockObject(BLACK_PEN));
    EXPECT_EQ(GetTextColor(dc), RGB(0, 0, 0));
    EXPECT_EQ(GetBkColor(dc), RGB(255, 255, 255));
    EXPECT_EQ(GetBkMode(dc), OPAQUE);
    EXPECT_EQ(GetStretchBltMode(dc), BLACKONWHITE);
    // What GetObjectW reports of compatible bitmaps (monochrome for a fresh memory DC) is
    // pinned against the recordings (recorded/gdi_objects.cpp).
    DeleteDC(dc);
}

TEST_F(Objects, ABitmapIsSelectedIntoOneDcAtATime) {
    HDC a = CreateCompatibleDC(nullptr);
    HDC b = CreateCompatibleDC(nullptr);
    HBITMAP bmp = CreateBitmap(4, 4, 1, 1, nullptr);
    HGDIOBJ oldA = SelectObject(a, bmp);
    EXPECT_NE(oldA, nullptr);
    EXPECT_EQ(SelectObject(b, bmp), nullptr);
    SelectObject(a, oldA);
    HGDIOBJ oldB = SelectObject(b, bmp);
    EXPECT_NE(oldB, nullptr);
    SelectObject(b, oldB);
    DeleteObject(bmp);
    DeleteDC(a);
    DeleteDC(b);
}

TEST_F(Objects, SaveAndRestoreDcRestoreSelectionsAndAttributes) {
    HDC dc = CreateCompatibleDC(nullptr);
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    int level = SaveDC(dc);
    EXPECT_EQ(level, 1);
    SelectObject(dc, red);
    SetTextColor(dc, RGB(1, 2, 3));
    IntersectClipRect(dc, 0, 0, 0, 0);
    EXPECT_TRUE(DeleteObject(red));  // deferred: still selected
    EXPECT_TRUE(RestoreDC(dc, -1));
    EXPECT_EQ(GetCurrentObject(dc, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(GetTextColor(dc), RGB(0, 0, 0));
    RECT box;
    EXPECT_EQ(GetClipBox(dc, &box), SIMPLEREGION);
    EXPECT_FALSE(RestoreDC(dc, 1)) << "nothing left to restore";
    DeleteDC(dc);
}

// Zero sizes give the stock 1x1 monochrome bitmap, negative ones their magnitude.
TEST_F(Objects, BitmapSizeEdgeCases) {
    HDC screen = GetDC(nullptr);
    HDC mem = CreateCompatibleDC(screen);
    HGDIOBJ stock = GetCurrentObject(mem, OBJ_BITMAP);
    EXPECT_EQ(CreateCompatibleBitmap(screen, 0, 5), stock);
    EXPECT_EQ(CreateBitmap(0, 0, 0, 0, nullptr), stock);
    HBITMAP neg = CreateCompatibleBitmap(screen, -3, 4);
    BITMAP bm{};
    ASSERT_EQ(GetObjectW(neg, sizeof bm, &bm), static_cast<int>(sizeof bm));
    EXPECT_TRUE(bm.bmWidth == 3 && bm.bmHeight == 4 && bm.bmWidthBytes == 12);
    EXPECT_EQ(CreateBitmap(2, 2, 2, 1, nullptr), nullptr) << "one plane only";
    EXPECT_EQ(CreateBitmap(2, 2, 1, 33, nullptr), nullptr);
    EXPECT_EQ(CreateBitmap(1 << 20, 1 << 20, 1, 32, nullptr), nullptr) << "refused, not allocated";
    EXPECT_EQ(CreateBitmap(16384, 16384, 1, 32, nullptr), nullptr) << "1 GiB of pixels is refused too";
    EXPECT_TRUE(DeleteObject(stock)) << "deleting the stock bitmap is a no-op";
    DeleteObject(neg);
    DeleteDC(mem);
    ReleaseDC(nullptr, screen);
}

// Rows are WORD aligned, most significant bit first; a short buffer sets what it holds.
TEST_F(Objects, BitmapBitsRoundTrip) {
    const uint8_t mono[4] = {0xB1, 0x80, 0x7F, 0xC0};
    HBITMAP m = CreateBitmap(10, 2, 1, 1, nullptr);
    EXPECT_EQ(SetBitmapBits(m, sizeof mono, mono), 4);
    uint8_t back[4] = {};
    EXPECT_EQ(GetBitmapBits(m, sizeof back, back), 4);
    EXPECT_TRUE(back[0] == 0xB1 && back[1] == 0x80 && back[2] == 0x7F && back[3] == 0xC0);
    EXPECT_EQ(SetBitmapBits(m, 1, mono), 1);
    EXPECT_EQ(SetBitmapBits(m, 4, nullptr), 0);
    DeleteObject(m);
}

// 32-bpp rows are each pixel's B, G, R and a zero byte; only whole rows fit in a short
// buffer, the bytes after them are zero.
TEST_F(Objects, ColourBitmapBitsAreWholeRowsOfBgrx) {
    const uint8_t bits[2 * 3 * 4] = {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 0, 13, 14, 15, 0, 16, 17, 18, 0};
    HBITMAP b = CreateBitmap(3, 2, 1, 32, bits);
    uint8_t back[sizeof bits + 4];
    struct Case {
        LONG size, returned;
        size_t copied;  // leading bytes equal to `bits`; the rest of `size` must be zero
    } cases[] = {{sizeof bits, sizeof bits, sizeof bits}, {sizeof bits + 4, sizeof bits, sizeof bits}, {18, 18, 12},
                 {11, 11, 0}, {0, 0, 0}, {-5, 0, 0}};
    for (const Case& c : cases) {
        std::memset(back, 0xEE, sizeof back);
        EXPECT_EQ(GetBitmapBits(b, c.size, back), c.returned) << c.size;
        for (LONG i = 0; i < c.returned; ++i)
            EXPECT_EQ(back[i], static_cast<size_t>(i) < c.copied ? bits[i] : 0) << "buffer of " << c.size << ", byte " << i;
        for (size_t i = static_cast<size_t>(c.returned); i < sizeof back; ++i) EXPECT_EQ(back[i], 0xEE) << "byte " << i;
    }
    DeleteObject(b);
}

TEST_F(Objects, PixelsOutsideTheSurfaceOrTheClip) {
    zel::test::MemorySurface colour(4, 3, false), mono(1, 1, true);
    HDC dc = colour.dc();
    EXPECT_EQ(GetPixel(dc, -1, 0), CLR_INVALID);
    EXPECT_EQ(GetPixel(dc, 4, 0), CLR_INVALID);
    EXPECT_EQ(SetPixel(dc, 4, 0, RGB(1, 2, 3)), RGB(1, 2, 3)) << "the colour is reported even when clipped";
    IntersectClipRect(dc, 1, 1, 3, 2);
    EXPECT_EQ(GetPixel(dc, 0, 0), CLR_INVALID);
    SetPixel(dc, 0, 0, RGB(1, 2, 3));
    SelectClipRgn(dc, nullptr);
    EXPECT_EQ(GetPixel(dc, 0, 0), RGB(0, 0, 0)) << "not written outside the clip";
    // A COLORREF top byte of 1 picks from the default palette (13 is red; out of range, 0).
    EXPECT_EQ(SetPixel(dc, 2, 2, 0x0100000D), RGB(255, 0, 0));
    EXPECT_EQ(SetPixel(dc, 2, 2, 0x01ABCDEF), RGB(0, 0, 0));
    // On monochrome, SetPixel takes the nearer of black and white (pens do not).
    EXPECT_EQ(SetPixel(mono.dc(), 0, 0, RGB(128, 128, 128)), RGB(255, 255, 255));
    EXPECT_EQ(SetPixel(mono.dc(), 0, 0, RGB(127, 127, 127)), RGB(0, 0, 0));
    EXPECT_EQ(SetPixel(mono.dc(), 0, 0, RGB(255, 0, 255)), RGB(255, 255, 255));
}

// RectVisible looks at the clip's rectangles, not their box.
TEST_F(Objects, RectVisibleTestsTheClipRectanglesThemselves) {
    zel::test::MemorySurface surface(100, 100, false);
    HDC dc = surface.dc();
    HRGN strips = CreateRectRgn(0, 0, 100, 10);
    HRGN bottom = CreateRectRgn(0, 90, 100, 100);
    CombineRgn(strips, strips, bottom, RGN_OR);
    SelectClipRgn(dc, strips);
    struct Case {
        RECT r;
        BOOL want;
        const char* what;
    };
    const Case cases[] = {
        {{10, 40, 50, 60}, FALSE, "between the strips"},  {{10, 5, 50, 20}, TRUE, "into the top strip"},
        {{10, 85, 50, 91}, TRUE, "one row of the bottom"}, {{10, 10, 50, 90}, FALSE, "touching both, in neither"},
        {{50, 60, 10, 95}, TRUE, "given backwards"},       {{120, 0, 150, 10}, FALSE, "beside the surface"},
        {{10, 5, 10, 8}, FALSE, "empty"},
    };
    for (const Case& c : cases) EXPECT_EQ(RectVisible(dc, &c.r), c.want) << c.what;
    EXPECT_FALSE(RectVisible(dc, nullptr));
    EXPECT_FALSE(RectVisible(nullptr, &cases[1].r));
    SelectClipRgn(dc, nullptr);
    EXPECT_TRUE(RectVisible(dc, &cases[0].r)) << "without a clip: the surface";
    DeleteObject(bottom);
    DeleteObject(strips);
}

}  // namespace
