// Text extents and ExtTextOutW / TextOutW: alignment, background, clipping, colour,
// monochrome and antialiased rendering on 32-bpp and 1-bpp surfaces, the glyph cache.
#include <gtest/gtest.h>

#include "gdi/text/glyph_cache.h"
#include "text_fixture.h"

namespace {

using zel::test::FontSpec;
using zel::test::RectText;
using zel::test::Surface;
namespace t = zel::test;

using TextOutput = zel::test::LeakChecked;

constexpr COLORREF kWhite = RGB(255, 255, 255), kBlack = RGB(0, 0, 0);

TEST_F(TextOutput, ExtentsAreSumsOfAdvancesAndTheCellHeight) {
    Surface s(1, 1);
    s.Use({L"Liberation Sans", 14});
    SIZE size{};
    ASSERT_TRUE(GetTextExtentPoint32W(s.dc(), L"Hello World", 11, &size));
    EXPECT_EQ(size.cx, 64);
    EXPECT_EQ(size.cy, 14);
    EXPECT_EQ(t::Width(s.dc(), L"Hello") + t::Width(s.dc(), L" World"), 64) << "no kerning between runs";
    ASSERT_TRUE(GetTextExtentPoint32W(s.dc(), L"", 0, &size));
    EXPECT_EQ(size.cx, 0);
    EXPECT_EQ(size.cy, 14) << "an empty string is still one cell high";
    EXPECT_FALSE(GetTextExtentPoint32W(s.dc(), L"abc", -1, &size));
    EXPECT_FALSE(GetTextExtentPoint32W(s.dc(), nullptr, 3, &size));
    EXPECT_FALSE(GetTextExtentPoint32W(s.dc(), L"abc", 3, nullptr));
    EXPECT_FALSE(GetTextExtentPoint32W(nullptr, L"abc", 3, &size));
}

TEST_F(TextOutput, ExtentExCountsWhatFitsAndReportsPartialExtents) {
    Surface s(1, 1);
    s.Use({L"Liberation Sans", 14});
    const wchar_t* text = L"Hello";
    int dx[5] = {};
    int fit = -7;
    SIZE size{};
    ASSERT_TRUE(GetTextExtentExPointW(s.dc(), text, 5, 1000, &fit, dx, &size));
    EXPECT_EQ(fit, 5);
    EXPECT_EQ(dx[4], size.cx);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(dx[i], t::Width(s.dc(), std::wstring(text, i + 1).c_str())) << i;

    // A character fits when the extent through it is at most the maximum.
    ASSERT_TRUE(GetTextExtentExPointW(s.dc(), text, 5, dx[2], &fit, nullptr, &size));
    EXPECT_EQ(fit, 3);
    ASSERT_TRUE(GetTextExtentExPointW(s.dc(), text, 5, dx[2] - 1, &fit, nullptr, &size));
    EXPECT_EQ(fit, 2);
    ASSERT_TRUE(GetTextExtentExPointW(s.dc(), text, 5, 0, &fit, nullptr, &size));
    EXPECT_EQ(fit, 0);
    ASSERT_TRUE(GetTextExtentExPointW(s.dc(), text, 5, -1, &fit, nullptr, &size));
    EXPECT_EQ(fit, 5) << "-1: no limit";
    EXPECT_FALSE(GetTextExtentExPointW(s.dc(), text, 5, -2, &fit, nullptr, &size));
    EXPECT_TRUE(GetTextExtentExPointW(s.dc(), text, 5, -2, nullptr, nullptr, &size)) << "no fit asked, no limit";
}

// Black text, transparent background, on the sentinel colour.
struct Drawn {
    std::string picture;
    RECT ink;
};
Drawn DrawAt(const FontSpec& spec, UINT align, int x, int y, const wchar_t* text) {
    Surface s(80, 40);
    s.Use(spec);
    SetBkMode(s.dc(), TRANSPARENT);
    SetTextAlign(s.dc(), align);
    TextOutW(s.dc(), x, y, text, static_cast<int>(std::wcslen(text)));
    return Drawn{s.Picture(kBlack), s.InkBox(t::kSentinel)};
}

TEST_F(TextOutput, AlignmentMovesTheCellAroundTheReferencePoint) {
    FontSpec spec{L"Liberation Sans", 14};
    Surface m(1, 1);
    m.Use(spec);
    int w = t::Width(m.dc(), L"Hag");
    TEXTMETRICW tm{};
    GetTextMetricsW(m.dc(), &tm);

    Drawn topLeft = DrawAt(spec, TA_LEFT | TA_TOP, 10, 5, L"Hag");
    EXPECT_NE(topLeft.ink.right, 0);
    EXPECT_EQ(topLeft.picture, DrawAt(spec, TA_RIGHT | TA_TOP, 10 + w, 5, L"Hag").picture);
    EXPECT_EQ(topLeft.picture, DrawAt(spec, TA_CENTER | TA_TOP, 10 + w / 2, 5, L"Hag").picture);
    EXPECT_EQ(topLeft.picture, DrawAt(spec, TA_LEFT | TA_BASELINE, 10, 5 + tm.tmAscent, L"Hag").picture);
    EXPECT_EQ(topLeft.picture, DrawAt(spec, TA_LEFT | TA_BOTTOM, 10, 5 + tm.tmHeight, L"Hag").picture);
    // Ink stays within the text's cell.
    EXPECT_GE(topLeft.ink.left, 10);
    EXPECT_LE(topLeft.ink.right, 10 + w);
    EXPECT_GE(topLeft.ink.top, 5);
    EXPECT_LE(topLeft.ink.bottom, 5 + tm.tmHeight);
}

TEST_F(TextOutput, UpdateCpDrawsAtAndAdvancesTheCurrentPosition) {
    FontSpec spec{L"Liberation Sans", 14};
    Drawn whole = DrawAt(spec, TA_LEFT, 3, 4, L"Hello");

    Surface s(80, 40);
    s.Use(spec);
    SetBkMode(s.dc(), TRANSPARENT);
    SetTextAlign(s.dc(), TA_UPDATECP);
    MoveToEx(s.dc(), 3, 4, nullptr);
    TextOutW(s.dc(), 70, 30, L"He", 2);  // x and y are ignored
    POINT cp{};
    GetCurrentPositionEx(s.dc(), &cp);
    EXPECT_EQ(cp.x, 3 + t::Width(s.dc(), L"He"));
    EXPECT_EQ(cp.y, 4);
    TextOutW(s.dc(), 0, 0, L"llo", 3);
    EXPECT_EQ(s.Picture(kBlack), whole.picture);
}

TEST_F(TextOutput, OpaqueModeFillsExactlyTheTextCell) {
    Surface s(60, 30);
    s.Use({L"Liberation Sans", 14});
    SetBkColor(s.dc(), RGB(0, 0, 255));
    SetTextColor(s.dc(), RGB(255, 255, 0));
    ASSERT_EQ(GetBkMode(s.dc()), OPAQUE) << "the default";
    TextOutW(s.dc(), 3, 4, L"Hi", 2);
    int w = t::Width(s.dc(), L"Hi");
    EXPECT_EQ(RectText(s.InkBox(t::kSentinel)), RectText(RECT{3, 4, 3 + w, 18}));
    for (int y = 4; y < 18; ++y)
        for (int x = 3; x < 3 + w; ++x) {
            COLORREF c = s.Pixel(x, y);
            ASSERT_TRUE(c == RGB(0, 0, 255) || c == RGB(255, 255, 0)) << x << "," << y;
        }

    Surface clear(60, 30);
    clear.Use({L"Liberation Sans", 14});
    SetBkMode(clear.dc(), TRANSPARENT);
    SetBkColor(clear.dc(), RGB(0, 0, 255));
    TextOutW(clear.dc(), 3, 4, L"Hi", 2);
    EXPECT_EQ(clear.Count(RGB(0, 0, 255)), 0) << "transparent mode leaves the background";
}

TEST_F(TextOutput, ClippedAndOpaqueRectangles) {
    FontSpec spec{L"Liberation Sans", 30};
    Surface s(80, 40);
    s.Use(spec);
    SetBkMode(s.dc(), TRANSPARENT);
    RECT clip{10, 8, 30, 20};
    ASSERT_TRUE(ExtTextOutW(s.dc(), 5, 2, ETO_CLIPPED, &clip, L"WWW", 3, nullptr));
    RECT ink = s.InkBox(t::kSentinel);
    EXPECT_GE(ink.left, 10);
    EXPECT_GE(ink.top, 8);
    EXPECT_LE(ink.right, 30);
    EXPECT_LE(ink.bottom, 20);
    EXPECT_GT(ink.right, ink.left);

    // ETO_OPAQUE paints the rectangle in the background colour whatever the bk mode.
    Surface o(40, 30);
    o.Use(spec);
    SetBkMode(o.dc(), TRANSPARENT);
    SetBkColor(o.dc(), RGB(0, 128, 0));
    RECT box{2, 3, 20, 25};
    ASSERT_TRUE(ExtTextOutW(o.dc(), 0, 0, ETO_OPAQUE, &box, nullptr, 0, nullptr));
    EXPECT_EQ(RectText(o.InkBox(t::kSentinel)), RectText(box));
    EXPECT_EQ(o.Count(RGB(0, 128, 0)), 18 * 22);
    EXPECT_TRUE(ExtTextOutW(o.dc(), 0, 0, ETO_OPAQUE | ETO_CLIPPED, nullptr, L"W", 1, nullptr))
        << "flags needing a rectangle are ignored without one";
}

TEST_F(TextOutput, DrawingHonoursTheClipRegion) {
    Surface s(80, 40);
    s.Use({L"Liberation Sans", 30});
    SetBkMode(s.dc(), TRANSPARENT);
    HRGN rgn = CreateRectRgn(0, 0, 20, 40);
    SelectClipRgn(s.dc(), rgn);
    DeleteObject(rgn);
    TextOutW(s.dc(), 2, 2, L"WWWW", 4);
    SelectClipRgn(s.dc(), nullptr);  // GetPixel outside a clip region reads CLR_INVALID
    RECT ink = s.InkBox(t::kSentinel);
    EXPECT_GT(ink.right, 2);
    EXPECT_EQ(ink.right, 20) << "cut at the clip edge";
}

TEST_F(TextOutput, MonochromeTextUsesOnlyTheTextColour) {
    for (BYTE quality : {DEFAULT_QUALITY, DRAFT_QUALITY, PROOF_QUALITY, NONANTIALIASED_QUALITY}) {
        Surface s(60, 30, kWhite);
        s.Use({L"Liberation Sans", 20, FW_NORMAL, quality});
        SetBkMode(s.dc(), TRANSPARENT);
        SetTextColor(s.dc(), RGB(200, 0, 0));
        TextOutW(s.dc(), 2, 2, L"Wag", 3);
        int text = s.Count(RGB(200, 0, 0)), white = s.Count(kWhite);
        EXPECT_GT(text, 20) << int(quality);
        EXPECT_EQ(text + white, 60 * 30) << "no shades, quality " << int(quality);
    }
}

TEST_F(TextOutput, AntialiasedTextBlendsAndThresholdsOnMonochrome) {
    for (BYTE quality : {ANTIALIASED_QUALITY, CLEARTYPE_QUALITY, CLEARTYPE_NATURAL_QUALITY}) {
        FontSpec spec{L"Liberation Sans", 20, FW_NORMAL, quality};
        Surface colour(60, 30, kWhite);
        colour.Use(spec);
        SetBkMode(colour.dc(), TRANSPARENT);
        TextOutW(colour.dc(), 2, 2, L"Wag", 3);
        int shades = 0, dark = 0;
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 60; ++x) {
                COLORREF c = colour.Pixel(x, y);
                ASSERT_TRUE(GetRValue(c) == GetGValue(c) && GetGValue(c) == GetBValue(c)) << "black over white stays grey";
                shades += c != kWhite && c != kBlack;
                dark += GetGValue(c) <= 127;
            }
        EXPECT_GT(shades, 10) << "antialiased edges, quality " << int(quality);

        // The same glyphs on a 1-bpp surface: a pixel is set where coverage reaches one half.
        Surface mono(60, 30, kWhite, /*mono=*/true);
        mono.Use(spec);
        SetBkMode(mono.dc(), TRANSPARENT);
        TextOutW(mono.dc(), 2, 2, L"Wag", 3);
        EXPECT_EQ(mono.Count(kBlack), dark);
        EXPECT_EQ(mono.Count(kBlack) + mono.Count(kWhite), 60 * 30);
    }
}

TEST_F(TextOutput, FontSmoothingAntialiasesDefaultTextWhereTheGaspTableAllows) {
    auto shades = [](const FontSpec& spec) {
        Surface s(80, 40, kWhite);
        s.Use(spec);
        SetBkMode(s.dc(), TRANSPARENT);
        TextOutW(s.dc(), 2, 2, L"Wag", 3);
        return 80 * 40 - s.Count(kWhite) - s.Count(kBlack);
    };
    ASSERT_FALSE(zel::text::FontSmoothing()) << "off by default";
    zel::text::SetFontSmoothing(true);
    // Liberation Sans asks for greyscale above 17 pixels per em only.
    int small = shades({L"Liberation Sans", 14}), large = shades({L"Liberation Sans", 30});
    int forcedOff = shades({L"Liberation Sans", 30, FW_NORMAL, NONANTIALIASED_QUALITY});
    zel::text::SetFontSmoothing(false);
    EXPECT_EQ(small, 0) << "12 ppem stays monochrome";
    EXPECT_GT(large, 10) << "27 ppem is antialiased";
    EXPECT_EQ(forcedOff, 0) << "NONANTIALIASED_QUALITY ignores the switch";
    EXPECT_EQ(shades({L"Liberation Sans", 30}), 0) << "off again";
}

TEST_F(TextOutput, MonochromeSurfacesGetTheSameShapes) {
    FontSpec spec{L"Tahoma", 14};
    Surface colour(50, 20, kWhite), mono(50, 20, kWhite, /*mono=*/true);
    colour.Use(spec);
    mono.Use(spec);
    for (Surface* s : {&colour, &mono}) {
        SetBkMode(s->dc(), TRANSPARENT);
        TextOutW(s->dc(), 1, 1, L"Tahoma 14", 9);
    }
    EXPECT_EQ(colour.Picture(kBlack), mono.Picture(kBlack));
    // An opaque cell on a monochrome surface: background 1 bits, glyph 0 bits.
    Surface cell(50, 20, kBlack, /*mono=*/true);
    cell.Use(spec);
    SetBkColor(cell.dc(), kWhite);
    TextOutW(cell.dc(), 0, 0, L"T ", 2);
    TEXTMETRICW tm{};
    GetTextMetricsW(cell.dc(), &tm);
    EXPECT_EQ(RectText(cell.InkBox(kBlack)), RectText(RECT{0, 0, t::Width(cell.dc(), L"T "), tm.tmHeight}));
    EXPECT_EQ(cell.Pixel(0, tm.tmHeight - 1), kWhite);
}

TEST_F(TextOutput, ExplicitAdvancesPlaceEachGlyph) {
    FontSpec spec{L"Liberation Sans", 20};
    Surface s(80, 30, kWhite);
    s.Use(spec);
    SetBkMode(s.dc(), TRANSPARENT);
    const INT dx[2] = {30, 30};
    ASSERT_TRUE(ExtTextOutW(s.dc(), 2, 2, 0, nullptr, L"ll", 2, dx));
    RECT first = s.BoxWhere([](COLORREF c) { return c == kBlack; });
    // The two 'l's are 30 pixels apart: the box spans the first stem plus 30.
    Surface one(80, 30, kWhite);
    one.Use(spec);
    SetBkMode(one.dc(), TRANSPARENT);
    TextOutW(one.dc(), 2, 2, L"l", 1);
    RECT single = one.BoxWhere([](COLORREF c) { return c == kBlack; });
    EXPECT_EQ(first.left, single.left);
    EXPECT_EQ(first.right, single.right + 30);
}

TEST_F(TextOutput, UnderlineAndStrikeOutSpanTheRun) {
    FontSpec plain{L"Liberation Sans", 20};
    FontSpec decorated = plain;
    decorated.underline = 1;
    decorated.strikeOut = 1;
    Surface a(60, 30, kWhite), b(60, 30, kWhite);
    a.Use(plain);
    b.Use(decorated);
    SetBkMode(a.dc(), TRANSPARENT);
    SetBkMode(b.dc(), TRANSPARENT);
    TextOutW(a.dc(), 2, 2, L"a  a", 4);
    TextOutW(b.dc(), 2, 2, L"a  a", 4);
    int w = t::Width(b.dc(), L"a  a");
    TEXTMETRICW tm{};
    GetTextMetricsW(b.dc(), &tm);
    int middle = 2 + w / 2;  // between the letters: only the lines are there
    int below = 0, above = 0;
    for (int y = 0; y < 30; ++y) {
        EXPECT_EQ(a.Pixel(middle, y), kWhite);
        if (b.Pixel(middle, y) == kBlack) (y >= 2 + tm.tmAscent ? below : above)++;
    }
    EXPECT_GE(below, 1) << "underline below the baseline";
    EXPECT_GE(above, 1) << "strike-out above it";
    EXPECT_EQ(b.Pixel(1, 2 + tm.tmAscent + 1), kWhite) << "lines start at the pen position";
    EXPECT_EQ(b.Pixel(2 + w, 2 + tm.tmAscent + 1), kWhite) << "and end with the advance";
}

TEST_F(TextOutput, RepeatedDrawingUsesTheGlyphCache) {
    auto& cache = zel::text::GlyphCache::Get();
    Surface s(200, 30, kWhite);
    s.Use({L"Liberation Sans", 17});
    SetBkMode(s.dc(), TRANSPARENT);
    TextOutW(s.dc(), 0, 0, L"The quick brown fox", 19);
    std::string first = s.Picture(kBlack);
    uint64_t renders = cache.Renders();
    s.Fill(kWhite);
    TextOutW(s.dc(), 0, 0, L"The quick brown fox", 19);
    EXPECT_EQ(cache.Renders(), renders) << "nothing re-rasterised";
    EXPECT_EQ(s.Picture(kBlack), first);
}

TEST_F(TextOutput, TheGlyphCacheStaysWithinItsBound) {
    auto& cache = zel::text::GlyphCache::Get();
    size_t limit = cache.Limit();
    cache.SetLimit(16 * 1024);
    Surface s(300, 60, kWhite);
    SetBkMode(s.dc(), TRANSPARENT);
    s.Use({L"Liberation Sans", 40});
    TextOutW(s.dc(), 0, 0, L"ABCDEFG", 7);
    std::string big = s.Picture(kBlack);
    for (int h = 8; h < 60; h += 3) {
        s.Use({L"DejaVu Sans", h});
        TextOutW(s.dc(), 0, 0, L"abcdefghijklmnopqrstuvwxyz", 26);
        EXPECT_LE(cache.Bytes(), 16u * 1024 + 4096) << "one oversized newest glyph at most";
    }
    // Evicted glyphs come back identical.
    s.Fill(kWhite);
    s.Use({L"Liberation Sans", 40});
    TextOutW(s.dc(), 0, 0, L"ABCDEFG", 7);
    EXPECT_EQ(s.Picture(kBlack), big);
    cache.SetLimit(limit);
    EXPECT_EQ(cache.Limit(), 8u << 20) << "8 MiB by default";
}

TEST_F(TextOutput, BadArgumentsFail) {
    Surface s(10, 10);
    EXPECT_FALSE(TextOutW(nullptr, 0, 0, L"a", 1));
    EXPECT_FALSE(TextOutW(s.dc(), 0, 0, L"a", -1));
    EXPECT_FALSE(TextOutW(s.dc(), 0, 0, nullptr, 1));
    EXPECT_TRUE(TextOutW(s.dc(), 0, 0, nullptr, 0));
    EXPECT_FALSE(ExtTextOutW(s.dc(), 0, 0, 0, nullptr, nullptr, 2, nullptr));
    EXPECT_EQ(s.InkBox(t::kSentinel).right, 0) << "nothing drawn";
}

}  // namespace
