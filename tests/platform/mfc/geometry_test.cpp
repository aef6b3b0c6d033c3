// CPoint, CSize, CRect: the Win32 rectangle rules the wrappers must keep (half-open
// edges, empty versus null, the all-zero result of a failed intersection).
#include <afxwin.h>
#include <gtest/gtest.h>

namespace {

TEST(CRect, HalfOpenEdgesAndEmptiness) {
    CRect r(10, 20, 50, 30);
    EXPECT_EQ(r.CenterPoint(), CPoint(30, 25));
    EXPECT_TRUE(r.PtInRect(CPoint(10, 20)));
    EXPECT_FALSE(r.PtInRect(CPoint(50, 25))) << "the right edge is outside";
    EXPECT_FALSE(r.PtInRect(CPoint(20, 30))) << "the bottom edge is outside";
    CRect inverted(50, 30, 10, 20);
    EXPECT_EQ(inverted.Width(), -40);
    EXPECT_TRUE(inverted.IsRectEmpty());
    inverted.NormalizeRect();
    EXPECT_EQ(inverted, r);
    EXPECT_TRUE(CRect(5, 5, 5, 9).IsRectEmpty());
    EXPECT_FALSE(CRect(5, 5, 5, 9).IsRectNull());
    // The corners alias the structure.
    r.TopLeft() = CPoint(-5, -6);
    r.BottomRight().x = 10;
    EXPECT_EQ(r, CRect(-5, -6, 10, 30));
}

TEST(CRect, InflateDeflateOffsetAndMove) {
    CRect r(10, 10, 20, 20);
    r.DeflateRect(2, 3);
    EXPECT_EQ(r, CRect(12, 13, 18, 17));
    r.InflateRect(1, 2, 3, 4);
    EXPECT_EQ(r, CRect(11, 11, 21, 21));
    r.OffsetRect(-11, 5);
    r.MoveToXY(100, 200);
    EXPECT_EQ(r, CRect(100, 200, 110, 210));
    EXPECT_EQ(r - CSize(100, 200), CRect(0, 0, 10, 10));
}

TEST(CRect, IntersectAndUnionFollowTheWin32Functions) {
    CRect a(0, 0, 10, 10), b(5, 5, 20, 20), c(30, 30, 40, 40);
    CRect r;
    EXPECT_TRUE(r.IntersectRect(a, b));
    EXPECT_EQ(r, CRect(5, 5, 10, 10));
    EXPECT_FALSE(r.IntersectRect(a, c));
    EXPECT_TRUE(r.IsRectNull()) << "no overlap gives the all-zero rectangle";
    EXPECT_TRUE(r.UnionRect(CRect(3, 3, 3, 9), b)) << "an empty rectangle does not widen a union";
    EXPECT_EQ(r, b);
    CRect d = a;
    d &= b;
    d |= c;
    EXPECT_EQ(d, CRect(5, 5, 40, 40));
    EXPECT_FALSE(r.IntersectRect(nullptr, a));
}

TEST(CPoint, MessageCoordinatesAreSigned) {
    EXPECT_EQ(CPoint(MAKELPARAM(-3, 7)), CPoint(-3, 7));
    EXPECT_EQ(CPoint(4, 3) - CPoint(1, 1), CSize(3, 2));
}

}  // namespace
