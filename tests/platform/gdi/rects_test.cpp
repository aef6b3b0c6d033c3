// The USER rectangle helpers: property tests over a fixture of edge cases plus the
// documented edge rules (half-open rectangles, empty and inverted rectangles).
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

const RECT kCases[] = {
    {0, 0, 0, 0},   {3, 3, 3, 8},  {2, 5, 9, 5},  {1, 1, 6, 5},   {6, 1, 10, 5},  {1, 5, 6, 8},
    {4, 3, 8, 7},   {9, 8, 2, 2},  {-4, -3, 3, 2}, {2, 2, 3, 3},  {0, 0, 12, 10}, {1, 1, 6, 8},
};
constexpr int kX0 = -6, kX1 = 13, kY0 = -5, kY1 = 11;

bool Inside(const RECT& r, int x, int y) { return PtInRect(&r, POINT{x, y}) != 0; }

TEST(Rects, PtInRectIsHalfOpenAndInvertedRectsContainNothing) {
    const RECT r{2, 3, 6, 8};
    EXPECT_TRUE(Inside(r, 2, 3));
    EXPECT_TRUE(Inside(r, 5, 7));
    EXPECT_FALSE(Inside(r, 6, 3));
    EXPECT_FALSE(Inside(r, 2, 8));
    EXPECT_FALSE(Inside(r, 1, 4));
    const RECT inverted{6, 8, 2, 3};
    EXPECT_FALSE(Inside(inverted, 4, 5));
    EXPECT_FALSE(PtInRect(nullptr, POINT{0, 0}));
}

TEST(Rects, EmptinessAndEquality) {
    for (const RECT& r : kCases) {
        bool any = false;
        for (int y = kY0; y < kY1; ++y)
            for (int x = kX0; x < kX1; ++x) any |= Inside(r, x, y);
        EXPECT_EQ(IsRectEmpty(&r) != 0, !any) << r.left << "," << r.top << "," << r.right << "," << r.bottom;
    }
    EXPECT_TRUE(IsRectEmpty(nullptr));
    const RECT a{0, 0, 0, 0}, b{3, 3, 3, 8};
    EXPECT_FALSE(EqualRect(&a, &b)) << "two empty rects are equal only if their coordinates are";
    EXPECT_TRUE(EqualRect(&b, &b));
    EXPECT_FALSE(EqualRect(&a, nullptr));
}

TEST(Rects, SetCopyOffsetInflate) {
    RECT a, b;
    EXPECT_TRUE(SetRect(&a, 5, 6, 1, 2)) << "no normalisation";
    EXPECT_EQ(a.left, 5);
    EXPECT_EQ(a.bottom, 2);
    EXPECT_TRUE(CopyRect(&b, &a));
    EXPECT_TRUE(EqualRect(&a, &b));
    EXPECT_TRUE(SetRectEmpty(&b));
    EXPECT_TRUE(IsRectEmpty(&b));
    EXPECT_EQ(b.right, 0);
    EXPECT_FALSE(SetRect(nullptr, 0, 0, 1, 1));
    EXPECT_FALSE(CopyRect(&a, nullptr));

    RECT r{2, 3, 10, 9};
    EXPECT_TRUE(OffsetRect(&r, -5, 4));
    const RECT moved{-3, 7, 5, 13};
    EXPECT_TRUE(EqualRect(&r, &moved));
    EXPECT_TRUE(InflateRect(&r, 2, -1));
    const RECT inflated{-5, 8, 7, 12};
    EXPECT_TRUE(EqualRect(&r, &inflated));
    EXPECT_TRUE(InflateRect(&r, -8, -5));
    const RECT past{3, 13, -1, 7};
    EXPECT_TRUE(EqualRect(&r, &past)) << "shrinking past the centre inverts";
    EXPECT_FALSE(OffsetRect(nullptr, 1, 1));
    EXPECT_FALSE(InflateRect(nullptr, 1, 1));
}

// The intersection holds exactly the points in both; an empty one is stored as 0,0,0,0.
TEST(Rects, IntersectRectIsTheCommonArea) {
    for (const RECT& a : kCases)
        for (const RECT& b : kCases) {
            RECT out{9, 9, 9, 9};
            const BOOL ok = IntersectRect(&out, &a, &b);
            bool any = false;
            for (int y = kY0; y < kY1; ++y)
                for (int x = kX0; x < kX1; ++x) {
                    const bool both = Inside(a, x, y) && Inside(b, x, y);
                    any |= both;
                    ASSERT_EQ(Inside(out, x, y), both) << x << "," << y;
                }
            EXPECT_EQ(ok != 0, any);
            if (!any) {
                EXPECT_TRUE(out.left == 0 && out.top == 0 && out.right == 0 && out.bottom == 0);
            }
        }
    RECT out;
    EXPECT_FALSE(IntersectRect(&out, &kCases[3], nullptr));
}

// The union is the bounding box of the non-empty operands.
TEST(Rects, UnionRectBoundsTheNonEmptyOperands) {
    for (const RECT& a : kCases)
        for (const RECT& b : kCases) {
            RECT out{9, 9, 9, 9};
            const BOOL ok = UnionRect(&out, &a, &b);
            const bool ea = IsRectEmpty(&a), eb = IsRectEmpty(&b);
            EXPECT_EQ(ok != 0, !(ea && eb));
            if (ea && eb) {
                EXPECT_TRUE(IsRectEmpty(&out) && out.left == 0 && out.right == 0);
                continue;
            }
            LONG l = 1000, t = 1000, r = -1000, bt = -1000;
            for (const RECT* x : {&a, &b}) {
                if (IsRectEmpty(x)) continue;
                l = std::min(l, x->left), t = std::min(t, x->top), r = std::max(r, x->right), bt = std::max(bt, x->bottom);
            }
            const RECT expect{l, t, r, bt};
            EXPECT_TRUE(EqualRect(&out, &expect));
        }
}

// SubtractRect only shrinks when the subtracted rect removes a whole side band;
// otherwise the result is the first rect unchanged.
TEST(Rects, SubtractRectRemovesOnlyWholeBands) {
    const RECT a{2, 2, 10, 8};
    const struct {
        RECT b;
        BOOL ok;
        RECT out;
    } cases[] = {
        {{0, 0, 12, 10}, FALSE, {0, 0, 0, 0}},  // covers everything
        {{0, 0, 5, 10}, TRUE, {5, 2, 10, 8}},   // left band
        {{7, 1, 12, 9}, TRUE, {2, 2, 7, 8}},    // right band
        {{1, 0, 11, 4}, TRUE, {2, 4, 10, 8}},   // top band
        {{2, 6, 10, 8}, TRUE, {2, 2, 10, 6}},   // bottom band, exact edges
        {{4, 4, 6, 6}, TRUE, {2, 2, 10, 8}},    // a hole: unchanged
        {{0, 0, 5, 5}, TRUE, {2, 2, 10, 8}},    // a corner: unchanged
        {{20, 20, 30, 30}, TRUE, {2, 2, 10, 8}},
        {{3, 3, 3, 9}, TRUE, {2, 2, 10, 8}},    // empty
    };
    for (const auto& t : cases) {
        RECT out{9, 9, 9, 9};
        EXPECT_EQ(SubtractRect(&out, &a, &t.b), t.ok) << t.b.left << "," << t.b.top;
        EXPECT_TRUE(EqualRect(&out, &t.out)) << t.b.left << "," << t.b.top << " -> " << out.left << "," << out.top
                                             << "," << out.right << "," << out.bottom;
    }
    const RECT empty{5, 5, 5, 5};
    RECT out;
    EXPECT_FALSE(SubtractRect(&out, &empty, &a));
    EXPECT_TRUE(IsRectEmpty(&out));
}

}  // namespace
