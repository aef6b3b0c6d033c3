// Tahoma asked for in ways the face has no file for: italics (slanted outlines), weights
// between and beyond regular and bold, an average character width (lfWidth), and
// underlined or struck-out text measured like plain text.
#include "recorded.h"

namespace {

using recorded::Facts;
using recorded::Wide;

void Variant(Facts& facts, LONG height, LONG width, LONG weight, BYTE italic) {
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, 120, 48);
    ReleaseDC(nullptr, screen);
    HGDIOBJ oldBmp = SelectObject(dc, bmp);
    RECT all = {0, 0, 120, 48};
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    LOGFONTW lf;
    std::memset(&lf, 0, sizeof lf);
    lf.lfHeight = height;
    lf.lfWidth = width;
    lf.lfWeight = weight;
    lf.lfItalic = italic;
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfQuality = NONANTIALIASED_QUALITY;
    const char* face = "Tahoma";
    for (int i = 0; face[i]; ++i) lf.lfFaceName[i] = static_cast<WCHAR>(face[i]);
    HFONT font = CreateFontIndirectW(&lf);
    HGDIOBJ oldFont = SelectObject(dc, font);
    TEXTMETRICW tm;
    std::memset(&tm, 0, sizeof tm);
    GetTextMetricsW(dc, &tm);
    facts.Add("cell", std::to_string(tm.tmHeight) + "=" + std::to_string(tm.tmAscent) + "+" +
                          std::to_string(tm.tmDescent))
        .Add("avemax", std::to_string(tm.tmAveCharWidth) + "/" + std::to_string(tm.tmMaxCharWidth))
        .Add("weight", tm.tmWeight)
        .Add("italic", tm.tmItalic)
        .Add("overhang", tm.tmOverhang);
    std::vector<WCHAR> text = Wide("Hello World");
    SIZE size = {0, 0};
    GetTextExtentPoint32W(dc, text.data(), 11, &size);
    facts.Add("extent", std::to_string(size.cx) + "x" + std::to_string(size.cy));
    SetBkMode(dc, TRANSPARENT);
    TextOutW(dc, 4, 4, text.data(), 11);
    RECT box = {120, 48, -1, -1};
    uint32_t hash = 2166136261u;
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 120; ++x) {
            COLORREF c = GetPixel(dc, x, y) & 0xFFFFFF;
            hash = (hash ^ (c & 0xFF)) * 16777619u;
            if (c == RGB(255, 255, 255)) continue;
            if (x < box.left) box.left = x;
            if (y < box.top) box.top = y;
            if (x + 1 > box.right) box.right = x + 1;
            if (y + 1 > box.bottom) box.bottom = y + 1;
        }
    char b[64];
    std::snprintf(b, sizeof b, "%ld,%ld,%ld,%ld/%08x", static_cast<long>(box.left), static_cast<long>(box.top),
                  static_cast<long>(box.right), static_cast<long>(box.bottom), static_cast<unsigned>(hash));
    facts.Add("ink", b);
    SelectObject(dc, oldFont);
    DeleteObject(font);
    SelectObject(dc, oldBmp);
    DeleteObject(bmp);
    DeleteDC(dc);
}

}  // namespace

RECORDED_CASE(font_variants, italic_14) { Variant(facts, 14, 0, FW_NORMAL, 1); }
RECORDED_CASE(font_variants, italic_24) { Variant(facts, 24, 0, FW_NORMAL, 1); }
RECORDED_CASE(font_variants, bold_italic_18) { Variant(facts, 18, 0, FW_BOLD, 1); }
RECORDED_CASE(font_variants, weight_100) { Variant(facts, 14, 0, 100, 0); }
RECORDED_CASE(font_variants, weight_500) { Variant(facts, 14, 0, 500, 0); }
RECORDED_CASE(font_variants, weight_600) { Variant(facts, 14, 0, 600, 0); }
RECORDED_CASE(font_variants, weight_900) { Variant(facts, 14, 0, 900, 0); }
RECORDED_CASE(font_variants, weight_0) { Variant(facts, 14, 0, 0, 0); }
RECORDED_CASE(font_variants, width_4) { Variant(facts, 14, 4, FW_NORMAL, 0); }
RECORDED_CASE(font_variants, width_10) { Variant(facts, 14, 10, FW_NORMAL, 0); }
RECORDED_CASE(font_variants, width_negative) { Variant(facts, 14, -10, FW_NORMAL, 0); }
