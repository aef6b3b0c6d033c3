// Glyphs and the clip: a glyph outside the clipping rectangle or the DC's clip region is
// never rasterised, and a glyph too large for the cache is rasterised only where it shows
// and never cached, with the same pixels as the cached path.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gdi/text/glyph_cache.h"
#include "text_fixture.h"

namespace {

using zel::test::FontSpec;
using zel::test::Surface;
using zel::text::GlyphCache;

using GlyphClipping = zel::test::LeakChecked;

constexpr COLORREF kWhite = RGB(255, 255, 255);
// 60 different characters: at 2048 pixels per em they cannot all be cached at once.
const std::wstring kSixty = L"HIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789ABCDE";

// Counters of the shared cache, before and after some drawing.
struct Counts {
    uint64_t renders, uncached, uncachedPixels;
    size_t bytes, count;
    static Counts Now() {
        auto& c = GlyphCache::Get();
        return {c.Renders(), c.UncachedRenders(), c.UncachedPixels(), c.Bytes(), c.Count()};
    }
};

// The cache is shared by the whole process: each test starts empty and puts the limit back.
class CacheScope {
public:
    explicit CacheScope(size_t limit) : saved_(GlyphCache::Get().Limit()) {
        GlyphCache::Get().Clear();
        GlyphCache::Get().SetLimit(limit);
    }
    ~CacheScope() {
        GlyphCache::Get().Clear();
        GlyphCache::Get().SetLimit(saved_);
    }

private:
    size_t saved_;
};

std::vector<COLORREF> Pixels(const Surface& s, int w, int h) {
    std::vector<COLORREF> p;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) p.push_back(s.Pixel(x, y));
    return p;
}

TEST_F(GlyphClipping, HugeTextClippedToASmallBoxRasterisesOnlyTheVisibleParts) {
    CacheScope scope(8u << 20);
    for (BYTE quality : {NONANTIALIASED_QUALITY, ANTIALIASED_QUALITY}) {
        SCOPED_TRACE(quality);
        Surface s(120, 40, kWhite);
        s.Use({L"Liberation Sans", -2048, FW_NORMAL, quality});
        SetBkMode(s.dc(), TRANSPARENT);
        // The pen starts so that the first glyph's left stem covers the box.
        RECT clip{0, 0, 100, 30};
        Counts before = Counts::Now();
        ASSERT_TRUE(ExtTextOutW(s.dc(), -200, -1500, ETO_CLIPPED, &clip, kSixty.c_str(), 60, nullptr));
        Counts after = Counts::Now();
        EXPECT_EQ(after.renders, before.renders) << "nothing this large goes into the cache";
        EXPECT_EQ(after.bytes, before.bytes);
        EXPECT_LE(after.uncached - before.uncached, 2u) << "only glyphs that reach the box";
        EXPECT_GE(after.uncached - before.uncached, 1u);
        EXPECT_LE(after.uncachedPixels - before.uncachedPixels, 2u * 100 * 30) << "and only their visible parts";
        RECT ink = s.InkBox(kWhite);
        EXPECT_LT(ink.left, ink.right) << "something was drawn";
        EXPECT_LE(ink.right, 100);
        EXPECT_LE(ink.bottom, 30);
    }
}

TEST_F(GlyphClipping, GlyphsOutsideTheClipAreNeverRasterised) {
    CacheScope scope(8u << 20);
    Surface s(200, 40, kWhite);
    s.Use({L"Liberation Sans", 20});
    SetBkMode(s.dc(), TRANSPARENT);
    struct Case {
        const char* name;
        RECT rect;        // ExtTextOutW's clipping rectangle (with ETO_CLIPPED)
        RECT region;      // the DC's clip region; empty: none
        bool drawsSome;   // whether any glyph reaches what is left
    } cases[] = {
        {"rectangle left of the text", {0, 0, 5, 40}, {}, false},
        {"rectangle below the text", {0, 35, 200, 40}, {}, false},
        {"region beside the text", {0, 0, 200, 40}, {150, 0, 200, 40}, false},
        {"rectangle over the first glyph", {10, 0, 20, 40}, {}, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        GlyphCache::Get().Clear();
        HRGN rgn = nullptr;
        if (c.region.right > c.region.left) {
            rgn = CreateRectRgnIndirect(&c.region);
            SelectClipRgn(s.dc(), rgn);
        }
        Counts before = Counts::Now();
        ASSERT_TRUE(ExtTextOutW(s.dc(), 10, 5, ETO_CLIPPED, &c.rect, L"abcdefgh", 8, nullptr));
        uint64_t rendered = Counts::Now().renders - before.renders;
        if (c.drawsSome) {
            EXPECT_GE(rendered, 1u);
            EXPECT_LE(rendered, 2u) << "a 10-pixel box meets at most two glyphs";
        } else {
            EXPECT_EQ(rendered, 0u);
        }
        SelectClipRgn(s.dc(), nullptr);
        if (rgn) DeleteObject(rgn);
    }
}

// Skipped glyphs still move the pen by their drawn advance: text clipped on the left lands
// where unclipped text does, and a later unclipped draw of the same text is unchanged.
TEST_F(GlyphClipping, SkippingKeepsThePenWhereDrawingPutsIt) {
    for (BYTE quality : {NONANTIALIASED_QUALITY, ANTIALIASED_QUALITY}) {
        SCOPED_TRACE(quality);
        CacheScope scope(8u << 20);
        Surface whole(300, 40, kWhite), right(300, 40, kWhite);
        whole.Use({L"Liberation Sans", 22, FW_NORMAL, quality});
        right.Use({L"Liberation Sans", 22, FW_NORMAL, quality});
        SetBkMode(whole.dc(), TRANSPARENT);
        SetBkMode(right.dc(), TRANSPARENT);
        const wchar_t* text = L"Illumination of wavy text";
        int n = static_cast<int>(std::wcslen(text));
        RECT rest{150, 0, 300, 40};
        ExtTextOutW(right.dc(), 2, 4, ETO_CLIPPED, &rest, text, n, nullptr);  // first: nothing cached yet
        ExtTextOutW(whole.dc(), 2, 4, 0, nullptr, text, n, nullptr);
        whole.FillBox(RECT{0, 0, 150, 40}, kWhite);
        EXPECT_EQ(Pixels(right, 300, 40), Pixels(whole, 300, 40));
    }
}

// The uncached path draws exactly what the cached one does, whatever the rendering: outline
// glyphs monochrome and greyscale, emboldened and slanted ones, an embedded bitmap strike,
// clipped through the middle of glyphs or not at all.
TEST_F(GlyphClipping, UncachedGlyphsMatchCachedOnes) {
    struct Case {
        FontSpec font;
        const wchar_t* text;
    } cases[] = {
        {{L"Liberation Sans", 90, FW_NORMAL, NONANTIALIASED_QUALITY}, L"Ag@%"},
        {{L"Liberation Sans", 90, FW_NORMAL, ANTIALIASED_QUALITY}, L"Ag@%"},
        {{L"DejaVu Sans", 70, FW_BOLD, NONANTIALIASED_QUALITY, 1}, L"Wyj&"},
        {{L"Tahoma", 13, FW_NORMAL, NONANTIALIASED_QUALITY}, L"Tahoma 13 px"},
    };
    RECT rects[] = {{0, 0, 400, 120}, {23, 17, 151, 71}, {0, 40, 400, 41}};
    for (const Case& c : cases) {
        for (const RECT& r : rects) {
            SCOPED_TRACE(::testing::Message() << zel::test::RectText(r) << " height " << c.font.height);
            std::vector<COLORREF> cached, uncached;
            for (size_t limit : {size_t{8} << 20, size_t{256}}) {
                CacheScope scope(limit);
                Surface s(400, 120, kWhite);
                s.Use(c.font);
                SetBkMode(s.dc(), TRANSPARENT);
                Counts before = Counts::Now();
                ExtTextOutW(s.dc(), 3, 2, ETO_CLIPPED, &r, c.text, static_cast<UINT>(std::wcslen(c.text)), nullptr);
                Counts after = Counts::Now();
                if (limit == 256) {
                    EXPECT_EQ(after.count, 0u) << "nothing fits an eighth of 256 bytes";
                    if (r.left == 0 && r.top == 0) {
                        EXPECT_GT(after.uncached, before.uncached);
                    }
                }
                (limit == 256 ? uncached : cached) = Pixels(s, 400, 120);
            }
            EXPECT_EQ(uncached, cached);
        }
    }
}

}  // namespace
