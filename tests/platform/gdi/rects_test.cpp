// The USER rectangle helpers as set operations over a fixture of edge cases (empty,
// degenerate, touching, inverted, negative), plus their documented edge rules.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

const RECT kCases[] = {{0, 0, 0, 0},   {3, 3, 3, 8},  {2, 5, 9, 5}, {1, 1, 6, 5},   {6, 1, 10, 5}, {1, 5, 6, 8},
                       {4, 3, 8, 7},   {9, 8, 2, 2},  {-4, -3, 3, 2}, {2, 2, 3, 3}, {0, 0, 12, 10}};
constexpr int kX0 = -6, kX1 = 13, kY0 = -5, kY1 = 11;

bool In(const RECT& r, int x, int y) { return PtInRect(&r, POINT{x, y}) != 0; }
bool IsZero(const RECT& r) { return r.left == 0 && r.top == 0 && r.right == 0 && r.bottom == 0; }

// Half-open: left/top inside, right/bottom outside; an inverted rect holds nothing.
TEST(Rects, MembershipAndEmptiness) {
    const RECT r{2, 3, 6, 8};
    EXPECT_TRUE(In(r, 2, 3) && In(r, 5, 7));
    EXPECT_FALSE(In(r, 6, 3) || In(r, 2, 8) || In(r, 1, 4));
    for (const RECT& c : kCases) {
        bool any = false;
        for (int y = kY0; y < kY1; ++y)
            for (int x = kX0; x < kX1; ++x) any |= In(c, x, y);
        EXPECT_EQ(IsRectEmpty(&c) != 0, !any) << c.left << "," << c.top << "," << c.right << "," << c.bottom;
    }
    EXPECT_TRUE(IsRectEmpty(nullptr));
    EXPECT_FALSE(PtInRect(nullptr, POINT{0, 0}));
}

TEST(Rects, IntersectHoldsTheCommonPointsAndUnionBoundsTheNonEmpty) {
    for (const RECT& a : kCases)
        for (const RECT& b : kCases) {
            RECT i{9, 9, 9, 9}, u{9, 9, 9, 9};
            const BOOL iok = IntersectRect(&i, &a, &b), uok = UnionRect(&u, &a, &b);
            bool any = false;
            for (int y = kY0; y < kY1; ++y)
                for (int x = kX0; x < kX1; ++x) {
                    const bool both = In(a, x, y) && In(b, x, y);
                    any |= both;
                    ASSERT_EQ(In(i, x, y), both) << x << "," << y;
                    if (In(a, x, y) || In(b, x, y)) {
                        ASSERT_TRUE(In(u, x, y)) << x << "," << y;
                    }
                }
            EXPECT_EQ(iok != 0, any);
            EXPECT_TRUE(any || IsZero(i)) << "an empty intersection is stored as 0,0,0,0";
            const bool ea = IsRectEmpty(&a), eb = IsRectEmpty(&b);
            EXPECT_EQ(uok != 0, !(ea && eb));
            const RECT& only = ea ? b : a;
            if (ea && eb) {
                EXPECT_TRUE(IsZero(u));
            } else if (ea || eb) {
                EXPECT_TRUE(EqualRect(&u, &only)) << "an empty operand is ignored";
            }
        }
}

// Only a subtraction that removes a whole band along one side shrinks the result.
TEST(Rects, SubtractRemovesOnlyWholeBands) {
    const RECT a{2, 2, 10, 8};
    const struct {
        RECT b;
        BOOL ok;
        RECT out;
    } cases[] = {
        {{0, 0, 12, 10}, FALSE, {0, 0, 0, 0}}, {{0, 0, 5, 10}, TRUE, {5, 2, 10, 8}},
        {{7, 1, 12, 9}, TRUE, {2, 2, 7, 8}},   {{1, 0, 11, 4}, TRUE, {2, 4, 10, 8}},
        {{2, 6, 10, 8}, TRUE, {2, 2, 10, 6}},  {{4, 4, 6, 6}, TRUE, {2, 2, 10, 8}},  // a hole: unchanged
        {{0, 0, 5, 5}, TRUE, {2, 2, 10, 8}},   {{3, 3, 3, 9}, TRUE, {2, 2, 10, 8}},  // corner; empty
    };
    for (const auto& t : cases) {
        RECT out{9, 9, 9, 9};
        EXPECT_EQ(SubtractRect(&out, &a, &t.b), t.ok) << t.b.left << "," << t.b.top;
        EXPECT_TRUE(EqualRect(&out, &t.out)) << t.b.left << "," << t.b.top;
    }
}

TEST(Rects, SetOffsetInflate) {
    RECT r;
    EXPECT_TRUE(SetRect(&r, 2, 3, 10, 9));
    EXPECT_TRUE(OffsetRect(&r, -5, 4));
    EXPECT_TRUE(InflateRect(&r, -8, -5));
    const RECT past{5, 12, -3, 8};
    EXPECT_TRUE(EqualRect(&r, &past)) << "shrinking past the centre inverts the rect";
    EXPECT_FALSE(SetRect(nullptr, 0, 0, 1, 1) || CopyRect(&r, nullptr) || OffsetRect(nullptr, 1, 1) ||
                 EqualRect(&r, nullptr));
}

}  // namespace
