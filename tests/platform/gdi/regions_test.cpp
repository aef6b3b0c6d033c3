// Regions: property tests of CombineRgn and friends over a fixture of edge cases, the
// return codes, and filling and clipping with regions.
#include <windows.h>

#include <functional>

#include "shape_canvas.h"
#include "support/leak_check.h"

namespace {

using zel::test::Canvas;
using Regions = zel::test::LeakChecked;

// Empty, degenerate, touching, overlapping, inverted and negative rectangles.
const RECT kCases[] = {
    {0, 0, 0, 0},    {3, 3, 3, 8},   {2, 5, 9, 5},  {1, 1, 6, 5},   {6, 1, 10, 5},
    {1, 5, 6, 8},    {4, 3, 8, 7},   {9, 8, 2, 2},  {-4, -3, 3, 2}, {2, 2, 3, 3},
};
// The grid the properties are checked on, wider than every case.
constexpr int kX0 = -6, kX1 = 12, kY0 = -5, kY1 = 10;

bool InRect(const RECT& r, int x, int y) {
    return x >= std::min(r.left, r.right) && x < std::max(r.left, r.right) && y >= std::min(r.top, r.bottom) &&
           y < std::max(r.top, r.bottom);
}

// Checks the region's code and box against its membership on the grid: NULLREGION when
// empty (box 0,0,0,0), SIMPLEREGION when it fills its box, COMPLEXREGION otherwise.
void ExpectConsistent(HRGN rgn, int code) {
    int count = 0;
    RECT ink{kX1, kY1, kX0, kY0};
    for (int y = kY0; y < kY1; ++y)
        for (int x = kX0; x < kX1; ++x)
            if (PtInRegion(rgn, x, y)) {
                ++count;
                ink = RECT{std::min<LONG>(ink.left, x), std::min<LONG>(ink.top, y), std::max<LONG>(ink.right, x + 1),
                           std::max<LONG>(ink.bottom, y + 1)};
            }
    RECT box{-1, -1, -1, -1};
    EXPECT_EQ(GetRgnBox(rgn, &box), code);
    if (count == 0) {
        EXPECT_EQ(code, NULLREGION);
        ink = RECT{0, 0, 0, 0};
    } else {
        const int area = (ink.right - ink.left) * (ink.bottom - ink.top);
        EXPECT_EQ(code, area == count ? SIMPLEREGION : COMPLEXREGION);
    }
    EXPECT_TRUE(EqualRect(&box, &ink)) << box.left << "," << box.top << "," << box.right << "," << box.bottom;
}

TEST_F(Regions, CombineMatchesSetAlgebraForEveryPairAndMode) {
    const struct {
        int mode;
        std::function<bool(bool, bool)> op;
    } modes[] = {
        {RGN_AND, [](bool a, bool b) { return a && b; }},
        {RGN_OR, [](bool a, bool b) { return a || b; }},
        {RGN_XOR, [](bool a, bool b) { return a != b; }},
        {RGN_DIFF, [](bool a, bool b) { return a && !b; }},
    };
    for (const RECT& a : kCases)
        for (const RECT& b : kCases)
            for (const auto& m : modes) {
                SCOPED_TRACE(testing::Message() << "mode " << m.mode << " a " << a.left << "," << a.top << ","
                                                << a.right << "," << a.bottom << " b " << b.left << "," << b.top
                                                << "," << b.right << "," << b.bottom);
                HRGN ra = CreateRectRgnIndirect(&a), rb = CreateRectRgnIndirect(&b), d = CreateRectRgn(0, 0, 9, 9);
                const int code = CombineRgn(d, ra, rb, m.mode);
                for (int y = kY0; y < kY1; ++y)
                    for (int x = kX0; x < kX1; ++x) {
                        ASSERT_EQ(PtInRegion(d, x, y) != 0, m.op(InRect(a, x, y), InRect(b, x, y))) << x << "," << y;
                        ASSERT_EQ(PtInRegion(ra, x, y) != 0, InRect(a, x, y)) << "source changed";
                    }
                ExpectConsistent(d, code);
                // The destination may be a source.
                EXPECT_EQ(CombineRgn(ra, ra, rb, m.mode), code);
                EXPECT_TRUE(EqualRgn(ra, d));
                DeleteObject(ra);
                DeleteObject(rb);
                DeleteObject(d);
            }
}

TEST_F(Regions, RectRegionsNormaliseAndEmptyOnesAreEqual) {
    for (const RECT& r : kCases) {
        HRGN rgn = CreateRectRgn(r.left, r.top, r.right, r.bottom);
        HRGN swapped = CreateRectRgn(r.right, r.bottom, r.left, r.top);
        HRGN copy = CreateRectRgn(0, 0, 0, 0);
        const bool empty = r.left == r.right || r.top == r.bottom;
        ExpectConsistent(rgn, empty ? NULLREGION : SIMPLEREGION);
        EXPECT_TRUE(EqualRgn(rgn, swapped));
        EXPECT_EQ(CombineRgn(copy, rgn, nullptr, RGN_COPY), empty ? NULLREGION : SIMPLEREGION);
        EXPECT_TRUE(EqualRgn(copy, rgn));
        EXPECT_EQ(OffsetRgn(copy, -3, 4), empty ? NULLREGION : SIMPLEREGION);
        for (int y = kY0; y < kY1; ++y)
            for (int x = kX0; x < kX1; ++x) EXPECT_EQ(PtInRegion(copy, x - 3, y + 4), PtInRegion(rgn, x, y));
        DeleteObject(rgn);
        DeleteObject(swapped);
        DeleteObject(copy);
    }
}

TEST_F(Regions, EqualRgnComparesAreaNotConstruction) {
    HRGN whole = CreateRectRgn(0, 0, 10, 8);
    HRGN left = CreateRectRgn(0, 0, 4, 8), right = CreateRectRgn(4, 0, 10, 8), d = CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(CombineRgn(d, left, right, RGN_OR), SIMPLEREGION) << "touching halves merge";
    EXPECT_TRUE(EqualRgn(whole, d));
    EXPECT_EQ(CombineRgn(d, whole, right, RGN_DIFF), SIMPLEREGION);
    EXPECT_TRUE(EqualRgn(d, left));
    EXPECT_FALSE(EqualRgn(d, whole));
    DeleteObject(whole);
    DeleteObject(left);
    DeleteObject(right);
    DeleteObject(d);
}

TEST_F(Regions, BadModesAndHandlesFailWithoutTouchingTheDestination) {
    HRGN a = CreateRectRgn(1, 2, 3, 4), d = CreateRectRgn(5, 5, 7, 7);
    for (int mode : {0, 6, -1}) EXPECT_EQ(CombineRgn(d, a, a, mode), ERROR) << mode;
    EXPECT_EQ(CombineRgn(d, a, nullptr, RGN_AND), ERROR);
    EXPECT_EQ(CombineRgn(nullptr, a, a, RGN_OR), ERROR);
    RECT box;
    EXPECT_EQ(GetRgnBox(d, &box), SIMPLEREGION);
    EXPECT_EQ(box.left, 5);
    HRGN stale = CreateRectRgn(0, 0, 1, 1);
    DeleteObject(stale);
    EXPECT_EQ(CombineRgn(d, stale, a, RGN_OR), ERROR);
    EXPECT_EQ(GetRgnBox(stale, &box), ERROR);
    EXPECT_EQ(OffsetRgn(stale, 1, 1), ERROR);
    EXPECT_FALSE(PtInRegion(stale, 0, 0));
    EXPECT_EQ(EqualRgn(stale, a), ERROR);
    EXPECT_EQ(CreateRectRgnIndirect(nullptr), nullptr);
    DeleteObject(a);
    DeleteObject(d);
}

TEST_F(Regions, RectInRegionTouchesAnyPart) {
    HRGN r = CreateRectRgn(2, 2, 6, 6);
    const RECT inside{3, 3, 4, 4}, overlap{5, 5, 9, 9}, touching{6, 2, 9, 6}, swapped{9, 9, 5, 5};
    EXPECT_TRUE(RectInRegion(r, &inside));
    EXPECT_TRUE(RectInRegion(r, &overlap));
    EXPECT_FALSE(RectInRegion(r, &touching)) << "the right edge is outside";
    EXPECT_TRUE(RectInRegion(r, &swapped));
    DeleteObject(r);
}

// FillRgn paints exactly the region's pixels (brush copied); PaintRgn uses the DC's
// brush and mix mode.
TEST_F(Regions, FillAndPaintCoverExactlyTheRegion) {
    HRGN a = CreateRectRgn(1, 1, 6, 5), b = CreateRectRgn(4, 3, 8, 7), u = CreateRectRgn(0, 0, 0, 0);
    CombineRgn(u, a, b, RGN_XOR);
    Canvas c(10, 9);
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    SetROP2(c.dc(), R2_NOT);  // FillRgn ignores it
    EXPECT_TRUE(FillRgn(c.dc(), u, red));
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 10; ++x)
            EXPECT_EQ(GetPixel(c.dc(), x, y), PtInRegion(u, x, y) ? RGB(255, 0, 0) : zel::test::kSentinel) << x << ","
                                                                                                          << y;
    EXPECT_TRUE(PaintRgn(c.dc(), u));
    EXPECT_TRUE(PaintRgn(c.dc(), u));
    EXPECT_TRUE(FillRgn(c.dc(), a, static_cast<HBRUSH>(GetStockObject(NULL_BRUSH))));
    EXPECT_EQ(GetPixel(c.dc(), 1, 1), RGB(255, 0, 0)) << "inverted twice, and a NULL brush paints nothing";
    EXPECT_FALSE(FillRgn(c.dc(), u, nullptr));
    EXPECT_FALSE(PaintRgn(c.dc(), nullptr));
    DeleteObject(red);
    DeleteObject(a);
    DeleteObject(b);
    DeleteObject(u);
}

// Combining with a DC that has no clip region combines with its whole surface.
TEST_F(Regions, ClipCombinesWithTheWholeSurfaceWhenThereIsNoClip) {
    HRGN r = CreateRectRgn(2, 1, 5, 3);
    const struct {
        int mode;
        int code;
        bool inside, outside;  // drawable inside r / outside r
    } cases[] = {
        {RGN_AND, SIMPLEREGION, true, false},
        {RGN_OR, SIMPLEREGION, true, true},
        {RGN_DIFF, COMPLEXREGION, false, true},
        {RGN_XOR, COMPLEXREGION, false, true},
        {RGN_COPY, SIMPLEREGION, true, false},
    };
    for (const auto& t : cases) {
        Canvas c(8, 5, false, RGB(0, 0, 0));
        EXPECT_EQ(ExtSelectClipRgn(c.dc(), r, t.mode), t.code) << "mode " << t.mode;
        RECT all{0, 0, 8, 5};
        FillRect(c.dc(), &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        SelectClipRgn(c.dc(), nullptr);
        EXPECT_EQ(GetPixel(c.dc(), 3, 2) == RGB(255, 255, 255), t.inside) << "mode " << t.mode;
        EXPECT_EQ(GetPixel(c.dc(), 6, 4) == RGB(255, 255, 255), t.outside) << "mode " << t.mode;
    }
    Canvas c(4, 4);
    EXPECT_EQ(ExtSelectClipRgn(c.dc(), nullptr, RGN_AND), ERROR);
    EXPECT_EQ(ExtSelectClipRgn(c.dc(), nullptr, RGN_COPY), SIMPLEREGION) << "NULL removes the clip";
    EXPECT_EQ(ExtSelectClipRgn(c.dc(), r, 9), ERROR);
    DeleteObject(r);
}

}  // namespace
