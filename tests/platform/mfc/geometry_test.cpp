// CPoint, CSize, CRect: what the classes compute themselves. Membership, emptiness,
// intersection and union forward to the USER functions and are tested with them
// (gdi/rects_test.cpp); here only a forwarder's own NULL check.
#include <afxwin.h>
#include <gtest/gtest.h>

namespace {

TEST(CRect, NormaliseNullAndTheAliasedCorners) {
    CRect inverted(50, 30, 10, 20);
    EXPECT_EQ(inverted.Width(), -40);
    inverted.NormalizeRect();
    EXPECT_EQ(inverted, CRect(10, 20, 50, 30));
    EXPECT_EQ(inverted.CenterPoint(), CPoint(30, 25));
    EXPECT_TRUE(CRect(5, 5, 5, 9).IsRectEmpty());
    EXPECT_FALSE(CRect(5, 5, 5, 9).IsRectNull()) << "empty is not null";
    inverted.TopLeft() = CPoint(-5, -6);
    inverted.BottomRight().x = 10;
    EXPECT_EQ(inverted, CRect(-5, -6, 10, 30));
    CRect r(1, 2, 3, 4);
    EXPECT_FALSE(r.IntersectRect(nullptr, inverted));
    EXPECT_TRUE(r.IsRectNull()) << "a NULL argument fails as an empty result does";
}

TEST(CRect, InflateDeflateOffsetAndMove) {
    CRect r(10, 10, 20, 20);
    r.DeflateRect(2, 3);
    EXPECT_EQ(r, CRect(12, 13, 18, 17));
    r.InflateRect(1, 2, 3, 4);  // left, top, right, bottom
    EXPECT_EQ(r, CRect(11, 11, 21, 21));
    r.OffsetRect(-11, 5);
    r.MoveToXY(100, 200);
    EXPECT_EQ(r, CRect(100, 200, 110, 210));
    EXPECT_EQ(r - CSize(100, 200), CRect(0, 0, 10, 10));
    r &= CRect(105, 0, 300, 205);
    EXPECT_EQ(r, CRect(105, 200, 110, 205));
}

TEST(CPoint, MessageCoordinatesAreSigned) {
    EXPECT_EQ(CPoint(MAKELPARAM(-3, 7)), CPoint(-3, 7));
    EXPECT_EQ(CPoint(4, 3) - CPoint(1, 1), CSize(3, 2));
}

}  // namespace
