// ROP3 evaluation: the 256 row kernels, raw 32-bit results and source/pattern usage rules.
#include <random>

#include "gdi/raster.h"
#include "raster_canvas.h"
#include "support/leak_check.h"

namespace {

using zel::test::Canvas;
using Rop3 = zel::test::LeakChecked;

// Every kernel against the bit-by-bit truth table evaluator, on lengths that exercise both
// the vector body and the tail, with all 32 bits random (the top byte takes part too) and
// with monochrome rows, where only bit 0 may survive.
TEST(Rop3Table, KernelsAgreeWithReferenceOnColourAndMonoRows) {
    std::mt19937 rng(99);
    constexpr int n = 21;
    for (int index = 0; index < 256; ++index) {
        const auto& row = zel::gdi::RopRowFor(static_cast<uint8_t>(index));
        for (uint32_t mask : {~0u, 1u}) {
            uint32_t s[n], d[n], dp[n], p[n], before[n];
            for (int i = 0; i < n; ++i) {
                s[i] = rng() & mask;
                before[i] = d[i] = dp[i] = rng() & mask;
                p[i] = rng() & mask;
            }
            const uint32_t solid = rng() & mask;
            row.solid(d, s, solid, n, mask);
            row.pattern(dp, s, p, n, mask);
            for (int i = 0; i < n; ++i) {
                ASSERT_EQ(d[i], zel::gdi::Rop3(index, solid, s[i], before[i]) & mask)
                    << "solid, rop " << index << ", mask " << mask << ", pixel " << i;
                ASSERT_EQ(dp[i], zel::gdi::Rop3(index, p[i], s[i], before[i]) & mask)
                    << "pattern, rop " << index << ", mask " << mask << ", pixel " << i;
            }
        }
    }
}

// Known results on raw 8888 pixels: source 0xFEDCBA98, destination 0x89ABCDEF, brush
// COLORREF 0x12345678 (pixel 0x00785634: its top byte is dropped and red/blue swap).
TEST_F(Rop3, RawPixelVectorsThroughBitBlt) {
    struct Case {
        const char* name;
        DWORD rop;
        uint32_t expected;
    } cases[] = {
        {"SRCAND", SRCAND, 0x88888888},       {"SRCINVERT", SRCINVERT, 0x77777777},
        {"SRCERASE", SRCERASE, 0x76543210},   {"MERGECOPY", MERGECOPY, 0x00581210},
        {"PATPAINT", PATPAINT, 0x89FBDFFF},   {"PATINVERT", PATINVERT, 0x89D39BDB},
        {"SRCCOPY", SRCCOPY, 0xFEDCBA98},     {"DSTINVERT", DSTINVERT, 0x76543210},
        {"WHITENESS", WHITENESS, 0xFFFFFFFF}, {"BLACKNESS", BLACKNESS, 0x00000000},
    };
    Canvas src(3, 1, false, 0xFEDCBA98), dst(3, 1);
    HBRUSH brush = CreateSolidBrush(0x12345678);
    HGDIOBJ old = SelectObject(dst.dc(), brush);
    for (const Case& c : cases) {
        dst.Fill(0x89ABCDEF);
        EXPECT_TRUE(BitBlt(dst.dc(), 1, 0, 1, 1, src.dc(), 2, 0, c.rop)) << c.name;
        EXPECT_EQ(dst.at(1, 0), c.expected) << c.name;
        EXPECT_EQ(dst.at(0, 0), 0x89ABCDEFu) << c.name << " painted outside";
        EXPECT_EQ(dst.at(2, 0), 0x89ABCDEFu) << c.name << " painted outside";
    }
    SelectObject(dst.dc(), old);
    DeleteObject(brush);
}

TEST_F(Rop3, OnlyTheIndexByteMatters) {
    Canvas src(2, 2), a(2, 2, false, 0x123456), b(2, 2, false, 0x123456);
    src.Gradient();
    EXPECT_TRUE(BitBlt(a.dc(), 0, 0, 2, 2, src.dc(), 0, 0, SRCINVERT));
    EXPECT_TRUE(BitBlt(b.dc(), 0, 0, 2, 2, src.dc(), 0, 0, 0xAB66BEEF));
    EXPECT_EQ(a.Pixels(), b.Pixels());
}

// ROPs without a source are PatBlt: the source DC may be NULL or stale. PatBlt itself
// refuses a ROP that needs a source.
TEST_F(Rop3, SourcelessRopsIgnoreTheSourceDc) {
    Canvas dst(4, 1, false, 0x00102030);
    HDC stale = CreateCompatibleDC(nullptr);
    DeleteDC(stale);
    EXPECT_TRUE(BitBlt(dst.dc(), 0, 0, 1, 1, nullptr, 0, 0, DSTINVERT));
    EXPECT_TRUE(BitBlt(dst.dc(), 1, 0, 1, 1, stale, 0, 0, DSTINVERT));
    EXPECT_TRUE(StretchBlt(dst.dc(), 2, 0, 1, 1, nullptr, 0, 0, 5, 5, DSTINVERT));
    EXPECT_EQ(dst.at(0, 0), ~0x00102030u);
    EXPECT_EQ(dst.at(1, 0), ~0x00102030u);
    EXPECT_EQ(dst.at(2, 0), ~0x00102030u);
    EXPECT_EQ(dst.at(3, 0), 0x00102030u);

    EXPECT_FALSE(BitBlt(dst.dc(), 0, 0, 1, 1, nullptr, 0, 0, SRCCOPY));
    EXPECT_FALSE(BitBlt(dst.dc(), 0, 0, 1, 1, stale, 0, 0, SRCCOPY));
    EXPECT_FALSE(StretchBlt(dst.dc(), 0, 0, 2, 2, stale, 0, 0, 1, 1, SRCAND));
    EXPECT_FALSE(PatBlt(dst.dc(), 0, 0, 1, 1, SRCCOPY));
    EXPECT_FALSE(PatBlt(dst.dc(), 0, 0, 1, 1, PATPAINT)) << "PATPAINT reads the source";
    EXPECT_FALSE(BitBlt(stale, 0, 0, 1, 1, dst.dc(), 0, 0, SRCCOPY));
    EXPECT_FALSE(PatBlt(stale, 0, 0, 1, 1, PATCOPY));
    EXPECT_EQ(dst.at(0, 0), ~0x00102030u);
}

// A NULL brush paints nothing with a pattern ROP, with or without a source.
TEST_F(Rop3, NullBrushPaintsNothing) {
    Canvas src(2, 2, false, 0x00FFFFFF), dst(2, 2, false, 0x00445566);
    HGDIOBJ old = SelectObject(dst.dc(), GetStockObject(NULL_BRUSH));
    EXPECT_TRUE(PatBlt(dst.dc(), 0, 0, 2, 2, PATINVERT));
    EXPECT_TRUE(BitBlt(dst.dc(), 0, 0, 2, 2, src.dc(), 0, 0, MERGECOPY));
    EXPECT_TRUE(PatBlt(dst.dc(), 0, 0, 2, 2, DSTINVERT)) << "no pattern needed";
    SelectObject(dst.dc(), old);
    for (uint32_t p : dst.Pixels()) EXPECT_EQ(p, ~0x00445566u);
}

// BLACKNESS/WHITENESS and DSTINVERT act on every bit of a 32-bpp pixel, so two inversions
// restore it exactly and WHITENESS sets the top byte that GetPixel hides.
TEST_F(Rop3, PatBltWorksOnAllBitsAndNegativeExtentsCountBack) {
    Canvas dst(6, 3, false, 0x01020304);
    EXPECT_TRUE(PatBlt(dst.dc(), 0, 0, 1, 3, WHITENESS));
    EXPECT_EQ(dst.at(0, 1), 0xFFFFFFFFu);
    EXPECT_EQ(GetPixel(dst.dc(), 0, 1), RGB(255, 255, 255));
    EXPECT_TRUE(PatBlt(dst.dc(), 1, 0, 1, 3, DSTINVERT));
    EXPECT_TRUE(PatBlt(dst.dc(), 1, 0, 1, 3, DSTINVERT));
    EXPECT_EQ(dst.at(1, 2), 0x01020304u);
    // Width -2 at x = 4 covers x = 3..4; height -1 at y = 2 covers row 2.
    EXPECT_TRUE(PatBlt(dst.dc(), 4, 2, -2, -1, BLACKNESS));
    EXPECT_EQ(dst.at(3, 2), 0u);
    EXPECT_EQ(dst.at(4, 2), 0u);
    EXPECT_EQ(dst.at(5, 2), 0x01020304u);
    EXPECT_EQ(dst.at(2, 2), 0x01020304u);
    EXPECT_EQ(dst.at(3, 1), 0x01020304u);
}

// FillRect is a PatBlt of the rectangle's extents, so an inverted rectangle fills the
// negative extents counted back from its first corner.
TEST_F(Rop3, FillRectOfAnInvertedRectangle) {
    Canvas dst(12, 12);
    HBRUSH br = CreateSolidBrush(RGB(255, 0, 0));
    RECT inverted{7, 9, 2, 3}, empty{4, 2, 4, 6};
    EXPECT_EQ(FillRect(dst.dc(), &inverted, br), 1);
    EXPECT_EQ(FillRect(dst.dc(), &empty, br), 1);
    DeleteObject(br);
    for (int y = 4; y < 10; ++y)
        for (int x = 3; x < 8; ++x) EXPECT_EQ(dst.at(x, y), 0x00FF0000u) << x << "," << y;
    EXPECT_EQ(dst.FenceIntact(RECT{3, 4, 8, 10}), "");
}

}  // namespace
