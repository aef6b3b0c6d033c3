// Text extents and ExtTextOutW / TextOutW: clip regions, monochrome and antialiased
// rendering on 32-bpp and 1-bpp surfaces, the glyph cache, bad arguments. Alignment,
// the current position, opaque and clipped rectangles, explicit advances and underlines
// are pinned against the recordings (recorded/text_output.cpp).
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
    ASSERT_TRUE(GetTextExtentExPointW(s.dc(), text, 5, -1, &fit, nullptr, &size));
    EXPECT_EQ(fit, 5) << "-1: no limit";
    EXPECT_FALSE(GetTextExtentExPointW(s.dc(), text, 5, -2, &fit, nullptr, &size));
    EXPECT_TRUE(GetTextExtentExPointW(s.dc(), text, 5, -2, nullptr, nullptr, &size)) << "no fit asked, no limit";
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
    s.Use({L"Liberation Sans", 14});
    EXPECT_TRUE(ExtTextOutW(s.dc(), 0, 0, ETO_OPAQUE | ETO_CLIPPED, nullptr, L"W", 1, nullptr))
        << "flags needing a rectangle are ignored without one";
    EXPECT_NE(s.InkBox(t::kSentinel).right, 0) << "and the text is drawn";
}

}  // namespace
