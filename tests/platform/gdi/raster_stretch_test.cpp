// StretchBlt: sampling grids, stretch modes, mirroring, clipping and conversion.
#include <vector>

#include "raster_canvas.h"
#include "support/leak_check.h"

namespace {

using zel::test::Canvas;
using zel::test::kSentinel;
using Stretch = zel::test::LeakChecked;

// Source column (or row) index each destination pixel shows after stretching a strip of
// `from` distinct pixels to `to` pixels along one axis.
std::vector<int> Sampled(int from, int to, bool vertical, int mode) {
    Canvas src(vertical ? 1 : from, vertical ? from : 1), dst(vertical ? 1 : to, vertical ? to : 1);
    for (int i = 0; i < from; ++i) (vertical ? src.at(0, i) : src.at(i, 0)) = 0x00010000u << (i % 8) | i;
    SetStretchBltMode(dst.dc(), mode);
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, dst.w(), dst.h(), src.dc(), 0, 0, src.w(), src.h(), SRCCOPY));
    std::vector<int> out;
    for (int i = 0; i < to; ++i) {
        uint32_t p = vertical ? dst.at(0, i) : dst.at(i, 0);
        out.push_back(p == kSentinel ? -1 : static_cast<int>(p & 0xFF));
    }
    return out;
}

// Enlarging takes the source pixel under each destination pixel's centre; an exact tie
// (2 -> 3, middle pixel) goes to the lower index. The stretch mode plays no part, and rows
// sample as columns do (the sweep below covers every size along one axis).
TEST_F(Stretch, EnlargingSamplesThePixelUnderTheCentre) {
    struct Case {
        int from, to;
        std::vector<int> expected;
    } cases[] = {
        {2, 3, {0, 0, 1}},
        {4, 7, {0, 0, 1, 1, 2, 3, 3}},
    };
    for (const Case& c : cases)
        for (int mode : {COLORONCOLOR, BLACKONWHITE, WHITEONBLACK})
            for (bool vertical : {false, true})
                EXPECT_EQ(Sampled(c.from, c.to, vertical, mode), c.expected)
                    << c.from << " -> " << c.to << (vertical ? " vertical" : " horizontal") << " mode " << mode;
}

// Every size pair up to 40 pixels, both directions of mirroring, against the closed forms:
// enlarging, destination i shows source ceil((2i+1)S / 2D) - 1; shrinking, source j belongs
// to destination ceil((2j+1)D / 2S) - 1 and COLORONCOLOR keeps a group's last column.
TEST_F(Stretch, SamplingSweepMatchesTheClosedForms) {
    auto ceilDiv = [](long a, long b) { return (a + b - 1) / b; };
    for (int S = 1; S <= 40; ++S) {
        Canvas src(S, 1);
        for (int x = 0; x < S; ++x) src.at(x, 0) = static_cast<uint32_t>(x);
        for (int D = 1; D <= 40; ++D) {
            for (bool mirror : {false, true}) {
                // A destination extent of exactly +1 samples one source pixel less.
                const int s = !mirror && D == 1 && S > 1 ? S - 1 : S;
                std::vector<int> expected(D, -1);
                if (D >= s) {
                    for (int i = 0; i < D; ++i) expected[i] = static_cast<int>(ceilDiv((2L * i + 1) * s, 2L * D) - 1);
                } else {
                    for (int j = 0; j < s; ++j) expected[ceilDiv((2L * j + 1) * D, 2L * s) - 1] = j;
                }
                Canvas dst(D, 1);
                SetStretchBltMode(dst.dc(), COLORONCOLOR);
                bool ok = mirror ? StretchBlt(dst.dc(), D - 1, 0, -D, 1, src.dc(), 0, 0, S, 1, SRCCOPY)
                                 : StretchBlt(dst.dc(), 0, 0, D, 1, src.dc(), 0, 0, S, 1, SRCCOPY);
                ASSERT_TRUE(ok);
                for (int i = 0; i < D; ++i) {
                    uint32_t got = dst.at(mirror ? D - 1 - i : i, 0);
                    ASSERT_EQ(got, static_cast<uint32_t>(expected[i]))
                        << S << " -> " << D << (mirror ? " mirrored" : "") << ", destination pixel " << i;
                }
            }
        }
    }
}

// Shrinking in COLORONCOLOR keeps the last source column (the sweep above) but the first
// source row of each group.
TEST_F(Stretch, ColorOnColorKeepsTheFirstRow) {
    struct Case {
        int from, to;
        std::vector<int> rows;
    } cases[] = {
        {6, 4, {0, 2, 3, 5}},
        {7, 2, {0, 4}},
        {5, 3, {0, 2, 3}},
    };
    for (const Case& c : cases) EXPECT_EQ(Sampled(c.from, c.to, true, COLORONCOLOR), c.rows) << c.from << " -> " << c.to;
}

// BLACKONWHITE (the default) ANDs and WHITEONBLACK ORs the raw pixels of each group, on the
// shrunk axis only.
TEST_F(Stretch, AndAndOrModesMergeShrunkGroups) {
    Canvas src(4, 4), tall(2, 4), small(2, 2);
    const uint32_t px[4][4] = {{0x00F0F0F1, 0x003C3CF2, 0x00FF0004, 0x000F0F08},
                               {0x00AAAA10, 0x00555520, 0x00FFFF40, 0x00808080},
                               {0x01020304, 0x10203040, 0x00FEDCBA, 0x00ABCDEF},
                               {0x00777777, 0x00EEEEEE, 0x00313131, 0x00C4C4C4}};
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x) src.at(x, y) = px[y][x];
    EXPECT_EQ(GetStretchBltMode(tall.dc()), BLACKONWHITE);
    // Columns {0,1} and {2,3} merge; rows map one to one.
    EXPECT_TRUE(StretchBlt(tall.dc(), 0, 0, 2, 4, src.dc(), 0, 0, 4, 4, SRCCOPY));
    for (int y = 0; y < 4; ++y) {
        EXPECT_EQ(tall.at(0, y), px[y][0] & px[y][1]) << y;
        EXPECT_EQ(tall.at(1, y), px[y][2] & px[y][3]) << y;
    }
    SetStretchBltMode(small.dc(), WHITEONBLACK);
    EXPECT_TRUE(StretchBlt(small.dc(), 0, 0, 2, 2, src.dc(), 0, 0, 4, 4, SRCCOPY));
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 2; ++x) {
            uint32_t any = px[2 * y][2 * x] | px[2 * y][2 * x + 1] | px[2 * y + 1][2 * x] | px[2 * y + 1][2 * x + 1];
            EXPECT_EQ(small.at(x, y), any) << x << "," << y;
        }
}

// A one-pixel destination samples a source one pixel shorter: 2 -> 1 takes the first pixel
// even when ANDing, 3 -> 1 ANDs only the first two.
TEST_F(Stretch, OnePixelDestinationShortensTheSource) {
    Canvas src(3, 1), dst(1, 1);
    src.at(0, 0) = 0x0000FF00;
    src.at(1, 0) = 0x0000F0F0;
    src.at(2, 0) = 0x00003C3C;
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, 1, 1, src.dc(), 0, 0, 2, 1, SRCCOPY));
    EXPECT_EQ(dst.at(0, 0), 0x0000FF00u);
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, 1, 1, src.dc(), 0, 0, 3, 1, SRCCOPY));
    EXPECT_EQ(dst.at(0, 0), 0x0000F000u);
}

// Calls with the same rectangles one after the other still sample by their own source
// size, mode and clip (plans are kept between calls).
TEST_F(Stretch, RepeatedRectanglesSampleByTheirOwnSourceModeAndClip) {
    Canvas wide(4, 1), narrow(2, 1);
    for (int x = 0; x < 4; ++x) wide.at(x, 0) = 0x00F0F0F0u >> x;
    for (int x = 0; x < 2; ++x) narrow.at(x, 0) = wide.at(x, 0);
    Canvas a(8, 1), b(8, 1), c(2, 1), d(2, 1), e(8, 1);
    EXPECT_TRUE(StretchBlt(a.dc(), 0, 0, 8, 1, wide.dc(), 0, 0, 4, 1, SRCCOPY));
    EXPECT_TRUE(StretchBlt(b.dc(), 0, 0, 8, 1, narrow.dc(), 0, 0, 4, 1, SRCCOPY));
    for (int x = 0; x < 8; ++x) {
        EXPECT_EQ(a.at(x, 0), wide.at(x / 2, 0)) << x;
        EXPECT_EQ(b.at(x, 0), x < 4 ? wide.at(x / 2, 0) : kSentinel) << x << ": no source beyond 2";
    }
    SetStretchBltMode(c.dc(), COLORONCOLOR);
    EXPECT_TRUE(StretchBlt(c.dc(), 0, 0, 2, 1, wide.dc(), 0, 0, 4, 1, SRCCOPY));
    EXPECT_TRUE(StretchBlt(d.dc(), 0, 0, 2, 1, wide.dc(), 0, 0, 4, 1, SRCCOPY));
    EXPECT_EQ(c.at(0, 0), wide.at(1, 0)) << "COLORONCOLOR keeps the last column";
    EXPECT_EQ(d.at(0, 0), wide.at(0, 0) & wide.at(1, 0)) << "BLACKONWHITE ANDs";
    IntersectClipRect(e.dc(), 2, 0, 5, 1);
    EXPECT_TRUE(StretchBlt(e.dc(), 0, 0, 8, 1, wide.dc(), 0, 0, 4, 1, SRCCOPY));
    EXPECT_EQ(e.FenceIntact(RECT{2, 0, 5, 1}), "");
    EXPECT_EQ(e.at(4, 0), wide.at(2, 0));
}

TEST_F(Stretch, ClipRegionLimitsTheDestination) {
    Canvas src(4, 4), dst(10, 10);
    src.Gradient();
    IntersectClipRect(dst.dc(), 3, 2, 6, 9);
    EXPECT_TRUE(StretchBlt(dst.dc(), 1, 1, 8, 8, src.dc(), 0, 0, 4, 4, SRCCOPY));
    for (int y = 2; y < 9; ++y)
        for (int x = 3; x < 6; ++x) EXPECT_EQ(dst.at(x, y), src.at((x - 1) / 2, (y - 1) / 2)) << x << "," << y;
    EXPECT_EQ(dst.FenceIntact(RECT{3, 2, 6, 9}), "");
}

// The same stretch drawn at other places (a list's rows, a screen shown again) samples as
// it did the first time, moved with its destination: wholly inside, cut by the surface's
// edges or a clip, mirrored, shrunk and enlarged, each drawn several times in a row.
TEST_F(Stretch, TheSameStretchElsewhereSamplesTheSame) {
    Canvas src(7, 1);
    for (int x = 0; x < 7; ++x) src.at(x, 0) = 0x00010101u * static_cast<uint32_t>(x + 1);
    struct Case {
        const char* name;
        int w, sw;  // destination and source width (negative: mirrored)
    } cases[] = {{"enlarged", 23, 7}, {"shrunk", 3, 7}, {"mirrored", -17, 7}, {"mirrored source", 11, -7},
                 {"equal extents", 7, 7}};
    for (const Case& c : cases) {
        const int sx = c.sw < 0 ? 6 : 0, extent = c.w < 0 ? -c.w : c.w;
        Canvas alone(extent, 1);
        SetStretchBltMode(alone.dc(), COLORONCOLOR);
        ASSERT_TRUE(StretchBlt(alone.dc(), c.w < 0 ? extent - 1 : 0, 0, c.w, 1, src.dc(), sx, 0, c.sw, 1, SRCCOPY));
        for (int at : {0, 5, 0, 40, -3, 60, 60}) {
            Canvas dst(72, 1);
            SetStretchBltMode(dst.dc(), COLORONCOLOR);
            if (at == 60) IntersectClipRect(dst.dc(), 63, 0, 66, 1);
            const int x = c.w < 0 ? at + extent - 1 : at;
            ASSERT_TRUE(StretchBlt(dst.dc(), x, 0, c.w, 1, src.dc(), sx, 0, c.sw, 1, SRCCOPY));
            for (int i = 0; i < extent; ++i) {
                const int dx = at + i;
                if (dx < 0 || dx >= 72) continue;
                const bool shown = at != 60 || (dx >= 63 && dx < 66);
                EXPECT_EQ(dst.at(dx, 0), shown ? alone.at(i, 0) : kSentinel) << c.name << " at " << at << ", pixel " << i;
            }
        }
    }
}

// An axis of equal extents (here the columns, while the one row is doubled) copies pixel
// for pixel; destination pixels whose source lies outside the source surface, or outside
// the clip, are left alone.
TEST_F(Stretch, EqualExtentsAlongOneAxisCopyWhatTheSourceHas) {
    Canvas src(6, 1), dst(12, 2);
    for (int x = 0; x < 6; ++x) src.at(x, 0) = 0x00050505u * static_cast<uint32_t>(x + 1);
    struct Case {
        int x, sx, w;  // destination x, source x, width of both
        int clipLeft;  // destination pixels left of this are clipped
    } cases[] = {{0, 0, 6, 0}, {3, -2, 6, 0}, {1, 3, 6, 0}, {-2, 0, 6, 0}, {2, 0, 6, 4}, {2, 5, 1, 0}};
    for (const Case& c : cases) {
        dst.Fill(kSentinel);
        SelectClipRgn(dst.dc(), nullptr);
        if (c.clipLeft) IntersectClipRect(dst.dc(), c.clipLeft, 0, 12, 2);
        ASSERT_TRUE(StretchBlt(dst.dc(), c.x, 0, c.w, 2, src.dc(), c.sx, 0, c.w, 1, SRCCOPY));
        for (int y = 0; y < 2; ++y)
            for (int x = 0; x < 12; ++x) {
                const int i = x - c.x, sx = c.sx + i;
                const bool copied = i >= 0 && i < c.w && sx >= 0 && sx < 6 && x >= c.clipLeft;
                EXPECT_EQ(dst.at(x, y), copied ? src.at(sx, 0) : kSentinel)
                    << "at " << c.x << " from " << c.sx << ": " << x << "," << y;
            }
    }
    SelectClipRgn(dst.dc(), nullptr);
}

// Extents far beyond the surfaces sample exactly as small ones and finish quickly.
TEST_F(Stretch, HugeExtentsOnlyComputeTheVisiblePart) {
    Canvas src(3, 3), dst(4, 2);
    src.Gradient();
    EXPECT_TRUE(StretchBlt(dst.dc(), -1000000000, 0, 2000000000, 2, src.dc(), 0, 0, 3, 3, SRCCOPY));
    // Destination x = 0 is pixel 10^9 of 2*10^9: source column 1; rows 0 and 1 of 2 take
    // source rows 0 and 2 (BLACKONWHITE ANDs rows 0+1 and 2).
    EXPECT_EQ(dst.at(0, 0), src.at(1, 0) & src.at(1, 1));
    EXPECT_EQ(dst.at(3, 1), src.at(1, 2));
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, 4, 2, src.dc(), -2000000000, 0, 2147483647, 3, SRCCOPY));
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, -2147483647 - 1, 2, src.dc(), 0, 0, 3, 3, SRCCOPY));
}

// A monochrome source becomes the destination's text (0) and background (1) colours
// first; shrinking then merges those colours.
TEST_F(Stretch, MonoSourceTakesDestinationColoursBeforeMerging) {
    Canvas mono(4, 1, true, 1), dst(4, 2);
    mono.at(0, 0) = 0;
    SetTextColor(dst.dc(), RGB(0x10, 0x20, 0x30));
    SetBkColor(dst.dc(), RGB(0xF0, 0xE0, 0xD0));
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, 4, 2, mono.dc(), 0, 0, 2, 1, SRCCOPY));
    EXPECT_EQ(dst.at(1, 1), 0x00102030u);
    EXPECT_EQ(dst.at(2, 0), 0x00F0E0D0u);
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, 2, 1, mono.dc(), 0, 0, 4, 1, SRCCOPY));
    EXPECT_EQ(dst.at(0, 0), 0x00102030u & 0x00F0E0D0u);
    EXPECT_EQ(dst.at(1, 0), 0x00F0E0D0u);
}

TEST_F(Stretch, RopsApplyAfterSampling) {
    Canvas src(2, 2), dst(4, 4, false, 0x005AA53C);
    src.Gradient();
    SetStretchBltMode(dst.dc(), COLORONCOLOR);
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, 4, 4, src.dc(), 0, 0, 2, 2, SRCINVERT));
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x) EXPECT_EQ(dst.at(x, y), src.at(x / 2, y / 2) ^ 0x005AA53Cu) << x << "," << y;
}

// HALFTONE averages covered areas when shrinking and interpolates when enlarging; it
// writes a zero top byte. Monochrome targets and other ROPs fall back to the plain modes.
TEST_F(Stretch, HalftoneFiltersColour) {
    Canvas src(2, 2), dst(4, 1);
    src.at(0, 0) = 0x00000000, src.at(1, 0) = 0xFF808080, src.at(0, 1) = 0x00402000, src.at(1, 1) = 0x00C0E0FC;
    SetStretchBltMode(dst.dc(), HALFTONE);
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, 1, 1, src.dc(), 0, 0, 2, 2, SRCCOPY));
    EXPECT_EQ(dst.at(0, 0), src.at(0, 0)) << "one-pixel destination: a 1x1 source";
    // A 4x4 source area of which only the 2x2 bitmap exists: the first destination pixel
    // is the mean of all four per channel; the others have no source and keep their colour.
    Canvas area(2, 2);
    SetStretchBltMode(area.dc(), HALFTONE);
    EXPECT_TRUE(StretchBlt(area.dc(), 0, 0, 2, 2, src.dc(), 0, 0, 4, 4, SRCCOPY));
    EXPECT_EQ(area.at(0, 0), 0x0060605Fu);
    EXPECT_EQ(area.FenceIntact(RECT{0, 0, 1, 1}), "");
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, 4, 1, src.dc(), 0, 0, 2, 1, SRCCOPY));
    EXPECT_EQ(dst.at(0, 0), 0x00000000u);
    EXPECT_EQ(dst.at(1, 0), 0x00202020u);
    EXPECT_EQ(dst.at(2, 0), 0x00606060u);
    EXPECT_EQ(dst.at(3, 0), 0x00808080u);

    Canvas mono(1, 1, true, 1), plain(1, 1);
    Canvas bw(2, 1, true, 1);
    bw.at(0, 0) = 0;
    SetStretchBltMode(mono.dc(), HALFTONE);
    EXPECT_TRUE(StretchBlt(mono.dc(), 0, 0, 1, 1, bw.dc(), 0, 0, 3, 1, SRCCOPY));
    EXPECT_EQ(mono.at(0, 0), 0u) << "monochrome falls back to ANDing";
    SetStretchBltMode(plain.dc(), HALFTONE);
    plain.Fill(0);
    EXPECT_TRUE(StretchBlt(plain.dc(), 0, 0, 1, 1, src.dc(), 0, 0, 3, 1, SRCINVERT));
    EXPECT_EQ(plain.at(0, 0), src.at(1, 0)) << "other ROPs fall back to COLORONCOLOR";
}

// Stretching within one bitmap reads the source as it was before the call, whether the
// pixels read and written overlap, share only rows, or share nothing (a skin's edge column
// stretched across the middle).
TEST_F(Stretch, WithinOneSurfaceReadsTheOriginal) {
    struct Case {
        int x, y, w, h, sx, sy, sw, sh;
    } cases[] = {
        {1, 1, 7, 6, 0, 0, 4, 4},  // overlapping
        {3, 0, 5, 8, 2, 0, 1, 8},  // the column left of the destination, across
        {2, 0, 6, 8, 2, 0, 1, 8},  // the destination's own first column, across
        {0, 4, 8, 4, 0, 3, 8, 1},  // the row above, down
        {4, 0, 4, 8, 0, 0, 2, 3},  // disjoint columns, both axes scaled
        {3, 0, 5, 8, 7, 0, -3, 8}, // mirrored from the far side onto itself
    };
    for (const Case& c : cases) {
        Canvas a(8, 8), b(8, 8), copy(8, 8);
        a.Gradient();
        b.Gradient();
        copy.Gradient();
        EXPECT_TRUE(StretchBlt(a.dc(), c.x, c.y, c.w, c.h, a.dc(), c.sx, c.sy, c.sw, c.sh, SRCCOPY));
        EXPECT_TRUE(StretchBlt(b.dc(), c.x, c.y, c.w, c.h, copy.dc(), c.sx, c.sy, c.sw, c.sh, SRCCOPY));
        EXPECT_EQ(a.Pixels(), b.Pixels()) << c.x << "," << c.y << " " << c.w << "x" << c.h << " from " << c.sx << ","
                                          << c.sy << " " << c.sw << "x" << c.sh;
    }
}

TEST_F(Stretch, ZeroExtentsSucceedAndDrawNothing) {
    Canvas src(2, 2), dst(2, 2);
    src.Gradient();
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, 0, 2, src.dc(), 0, 0, 2, 2, SRCCOPY));
    EXPECT_TRUE(StretchBlt(dst.dc(), 0, 0, 2, 2, src.dc(), 0, 0, 2, 0, SRCCOPY));
    EXPECT_EQ(dst.FenceIntact(RECT{0, 0, 0, 0}), "");
    EXPECT_FALSE(StretchBlt(nullptr, 0, 0, 2, 2, src.dc(), 0, 0, 2, 2, SRCCOPY));
}

}  // namespace
