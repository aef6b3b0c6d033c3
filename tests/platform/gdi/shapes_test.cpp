// Rectangle, RoundRect, Ellipse, DrawFocusRect, FrameRect and InvertRect: bounds,
// pens, brushes and mix modes, pixel by pixel inside a sentinel fence.
#include <windows.h>

#include <algorithm>
#include <climits>

#include "shape_canvas.h"
#include "support/leak_check.h"

namespace {

using zel::test::Canvas;
using zel::test::PenAndBrush;
using zel::test::Stock;
using zel::test::StockBrush;
using Shapes = zel::test::LeakChecked;

HPEN RedPen(int width = 1, int style = PS_SOLID) { return CreatePen(style, width, RGB(255, 0, 0)); }
HBRUSH BlueBrush() { return CreateSolidBrush(RGB(0, 0, 255)); }

// The bounding box of the drawn pixels, or an empty rect.
RECT InkBox(const Canvas& c) {
    RECT box{0, 0, 0, 0};
    bool any = false;
    for (auto [x, y] : c.Ink()) {
        if (!any) box = RECT{x, y, x + 1, y + 1};
        any = true;
        box = RECT{std::min<LONG>(box.left, x), std::min<LONG>(box.top, y), std::max<LONG>(box.right, x + 1),
                   std::max<LONG>(box.bottom, y + 1)};
    }
    return box;
}

TEST_F(Shapes, RectanglePenOutlineAndBrushInterior) {
    struct Case {
        const char* name;
        bool pen, brush;
        const char* picture;
    } cases[] = {
        {"pen and brush", true, true, ".........\n.rrrrrr..\n.rbbbbr..\n.rbbbbr..\n.rbbbbr..\n.rrrrrr..\n.........\n"},
        // Without a pen the fill is one pixel narrower and shorter.
        {"null pen", false, true, ".........\n.bbbbb...\n.bbbbb...\n.bbbbb...\n.bbbbb...\n.........\n.........\n"},
        {"null brush", true, false, ".........\n.rrrrrr..\n.r....r..\n.r....r..\n.r....r..\n.rrrrrr..\n.........\n"},
    };
    for (const Case& t : cases) {
        Canvas c(9, 7);
        PenAndBrush pb(c.dc(), t.pen ? RedPen() : Stock(NULL_PEN), t.brush ? BlueBrush() : StockBrush(NULL_BRUSH));
        EXPECT_TRUE(Rectangle(c.dc(), 1, 1, 7, 6));
        EXPECT_EQ(c.Picture(), t.picture) << t.name;
        c.Fill(zel::test::kSentinel);
        EXPECT_TRUE(Rectangle(c.dc(), 7, 6, 1, 1));
        EXPECT_EQ(c.Picture(), t.picture) << t.name << ": swapped corners are normalised";
    }
}

TEST_F(Shapes, DegenerateRectangles) {
    Canvas c(8, 8);
    PenAndBrush pb(c.dc(), RedPen(), BlueBrush());
    EXPECT_TRUE(Rectangle(c.dc(), 2, 1, 2, 5));
    EXPECT_TRUE(Rectangle(c.dc(), 1, 3, 6, 3));
    EXPECT_TRUE(Rectangle(c.dc(), 2, 2, 3, 3)) << "1x1: the outline has no length";
    EXPECT_TRUE(c.Ink().empty());
    EXPECT_TRUE(Rectangle(c.dc(), 5, 5, 7, 7));
    EXPECT_EQ(c.Ink(), (std::set<std::pair<int, int>>{{5, 5}, {6, 5}, {5, 6}, {6, 6}}));
    EXPECT_FALSE(Rectangle(nullptr, 0, 0, 4, 4));
    EXPECT_FALSE(Ellipse(nullptr, 0, 0, 4, 4));
    EXPECT_FALSE(RoundRect(nullptr, 0, 0, 4, 4, 2, 2));
}

// A width-2 outline is centred with its extra pixel up/left: one pixel outside the box at
// top and left, inside at right and bottom. PS_INSIDEFRAME keeps it all inside.
TEST_F(Shapes, WidePenOutlines) {
    Canvas c(10, 9);
    {
        PenAndBrush pb(c.dc(), RedPen(2), BlueBrush());
        Rectangle(c.dc(), 2, 2, 8, 7);
    }
    EXPECT_EQ(c.Picture(),
              "..........\n.rrrrrrr..\n.rrrrrrr..\n.rrbbbrr..\n.rrbbbrr..\n.rrrrrrr..\n.rrrrrrr..\n..........\n"
              "..........\n");
    for (int width : {2, 3, 4, 7}) {
        Canvas f(14, 13);
        PenAndBrush pb(f.dc(), RedPen(width, PS_INSIDEFRAME), BlueBrush());
        Rectangle(f.dc(), 2, 1, 12, 11);
        const RECT ink = InkBox(f), box{2, 1, 12, 11};
        EXPECT_TRUE(EqualRect(&ink, &box)) << "width " << width << "\n" << f.Picture();
    }
}

TEST_F(Shapes, EllipseIsInscribedAndSymmetric) {
    Canvas small(7, 7);
    {
        PenAndBrush pb(small.dc(), RedPen(), BlueBrush());
        EXPECT_TRUE(Ellipse(small.dc(), 1, 1, 6, 6));
    }
    EXPECT_EQ(small.Picture(), ".......\n..rrr..\n.rbbbr.\n.rbbbr.\n.rbbbr.\n..rrr..\n.......\n");

    const RECT boxes[] = {{1, 1, 15, 11}, {2, 1, 13, 14}, {1, 3, 16, 8}, {3, 1, 7, 15}};
    for (const RECT& box : boxes) {
        SCOPED_TRACE(testing::Message() << "box " << box.left << "," << box.top << "," << box.right << ","
                                        << box.bottom);
        // One-pixel outline: a mirror image of itself across both axes of the box.
        Canvas c(17, 16);
        {
            PenAndBrush pb(c.dc(), RedPen(), BlueBrush());
            Ellipse(c.dc(), box.left, box.top, box.right, box.bottom);
        }
        RECT ink = InkBox(c);
        EXPECT_TRUE(EqualRect(&ink, &box)) << c.Picture();
        for (int y = box.top; y < box.bottom; ++y)
            for (int x = box.left; x < box.right; ++x) {
                COLORREF p = GetPixel(c.dc(), x, y);
                EXPECT_EQ(p, GetPixel(c.dc(), box.right - 1 - (x - box.left), y)) << x << "," << y;
                EXPECT_EQ(p, GetPixel(c.dc(), x, box.bottom - 1 - (y - box.top))) << x << "," << y;
            }
        // A wide PS_INSIDEFRAME outline still touches all four sides and stays inside.
        Canvas w(17, 16);
        {
            PenAndBrush pb(w.dc(), RedPen(3, PS_INSIDEFRAME), BlueBrush());
            Ellipse(w.dc(), box.left, box.top, box.right, box.bottom);
        }
        ink = InkBox(w);
        EXPECT_TRUE(EqualRect(&ink, &box)) << w.Picture();
    }
}

// Small corners degrade to a rectangle, huge ones are clamped to the box (an ellipse).
TEST_F(Shapes, RoundRectCornersClampBetweenRectangleAndEllipse) {
    auto draw = [](auto&& shape, int width, bool nullPen) {
        Canvas c(16, 14);
        PenAndBrush pb(c.dc(), nullPen ? Stock(NULL_PEN) : RedPen(width), BlueBrush());
        shape(c.dc());
        return c.Picture();
    };
    for (int width : {1, 2}) {
        for (bool nullPen : {false, true}) {
            SCOPED_TRACE(testing::Message() << "width " << width << " null pen " << nullPen);
            std::string rect = draw([](HDC dc) { Rectangle(dc, 2, 2, 14, 12); }, width, nullPen);
            EXPECT_EQ(draw([](HDC dc) { RoundRect(dc, 2, 2, 14, 12, 2, 9); }, width, nullPen), rect);
            EXPECT_EQ(draw([](HDC dc) { RoundRect(dc, 2, 2, 14, 12, 8, -2); }, width, nullPen), rect);
            std::string ellipse = draw([](HDC dc) { Ellipse(dc, 2, 2, 14, 12); }, width, nullPen);
            EXPECT_EQ(draw([](HDC dc) { RoundRect(dc, 2, 2, 14, 12, 40, 40); }, width, nullPen), ellipse);
            EXPECT_EQ(draw([](HDC dc) { RoundRect(dc, 14, 12, 2, 2, -12, 10); }, width, nullPen), ellipse);
        }
    }
}

TEST_F(Shapes, RoundRectCorners) {
    Canvas c(14, 10);
    {
        PenAndBrush pb(c.dc(), RedPen(), BlueBrush());
        EXPECT_TRUE(RoundRect(c.dc(), 1, 1, 13, 9, 6, 6));
    }
    EXPECT_EQ(c.Picture(),
              "..............\n...rrrrrrrr...\n..rbbbbbbbbr..\n.rbbbbbbbbbbr.\n.rbbbbbbbbbbr.\n"
              ".rbbbbbbbbbbr.\n.rbbbbbbbbbbr.\n..rbbbbbbbbr..\n...rrrrrrrr...\n..............\n");
    // With no pen the brush covers the whole rounded shape, outline pixels included.
    c.Fill(zel::test::kSentinel);
    {
        PenAndBrush pb(c.dc(), Stock(NULL_PEN), BlueBrush());
        RoundRect(c.dc(), 1, 1, 13, 9, 6, 6);
    }
    EXPECT_EQ(c.Picture(),
              "..............\n...bbbbbbbb...\n..bbbbbbbbbb..\n.bbbbbbbbbbbb.\n.bbbbbbbbbbbb.\n"
              ".bbbbbbbbbbbb.\n.bbbbbbbbbbbb.\n..bbbbbbbbbb..\n...bbbbbbbb...\n..............\n");
}

// A wide pen is one region: with XOR each covered pixel flips exactly once, so the XOR
// result on black equals the copied result. Drawing twice restores the surface.
TEST_F(Shapes, XorShapesPaintEachPixelOnce) {
    auto draw = [](int rop2, int width, int times, auto&& shape) {
        Canvas c(18, 16, false, RGB(0, 0, 0));
        PenAndBrush pb(c.dc(), CreatePen(PS_SOLID, width, RGB(255, 255, 255)), StockBrush(NULL_BRUSH));
        SetROP2(c.dc(), rop2);
        for (int i = 0; i < times; ++i) shape(c.dc());
        return c.Picture();
    };
    auto rect = [](HDC dc) { Rectangle(dc, 3, 2, 15, 13); };
    auto ellipse = [](HDC dc) { Ellipse(dc, 2, 2, 16, 14); };
    auto round = [](HDC dc) { RoundRect(dc, 2, 3, 16, 13, 7, 5); };
    const std::string black = draw(R2_COPYPEN, 1, 0, rect);
    for (int width : {1, 2, 3, 5}) {
        SCOPED_TRACE(testing::Message() << "width " << width);
        EXPECT_EQ(draw(R2_XORPEN, width, 1, rect), draw(R2_COPYPEN, width, 1, rect));
        EXPECT_EQ(draw(R2_XORPEN, width, 1, ellipse), draw(R2_COPYPEN, width, 1, ellipse));
        EXPECT_EQ(draw(R2_XORPEN, width, 1, round), draw(R2_COPYPEN, width, 1, round));
        EXPECT_EQ(draw(R2_NOT, width, 2, ellipse), black);
    }
}

TEST_F(Shapes, BrushMixModeAndPatternOrigin) {
    // The interior uses the DC's mix mode as well.
    Canvas c(6, 6, false, RGB(255, 255, 255));
    {
        PenAndBrush pb(c.dc(), Stock(NULL_PEN), CreateSolidBrush(RGB(255, 255, 0)));
        SetROP2(c.dc(), R2_MASKPEN);
        Rectangle(c.dc(), 1, 1, 5, 5);
    }
    EXPECT_EQ(GetPixel(c.dc(), 1, 1), RGB(255, 255, 0));
    EXPECT_EQ(GetPixel(c.dc(), 4, 4), RGB(255, 255, 255));

    // A 2x2 checkerboard pattern is anchored at the brush origin, not at the shape.
    Canvas pattern(2, 2);
    SetPixel(pattern.dc(), 0, 0, RGB(255, 0, 0));
    SetPixel(pattern.dc(), 1, 1, RGB(255, 0, 0));
    SetPixel(pattern.dc(), 1, 0, RGB(0, 0, 255));
    SetPixel(pattern.dc(), 0, 1, RGB(0, 0, 255));
    HBITMAP bits = static_cast<HBITMAP>(GetCurrentObject(pattern.dc(), OBJ_BITMAP));
    Canvas s(6, 4);
    {
        PenAndBrush pb(s.dc(), Stock(NULL_PEN), CreatePatternBrush(bits));
        Rectangle(s.dc(), 1, 1, 6, 4);
        SetBrushOrgEx(s.dc(), 1, 0, nullptr);
        Rectangle(s.dc(), 0, 0, 3, 2);
    }
    EXPECT_EQ(s.Picture(), "br....\n.rbrb.\n.brbr.\n......\n");
}

TEST_F(Shapes, ShapesOnMonochrome) {
    Canvas m(8, 6, true, RGB(0, 0, 0));
    PenAndBrush pb(m.dc(), CreatePen(PS_SOLID, 1, RGB(255, 255, 255)), StockBrush(BLACK_BRUSH));
    Rectangle(m.dc(), 1, 1, 7, 5);
    EXPECT_EQ(m.Picture(), "########\n#oooooo#\n#o####o#\n#o####o#\n#oooooo#\n########\n");
}

// The dotted frame starts at the top-right corner and runs anticlockwise, every other
// pixel inverted; the pattern carries round the corners.
TEST_F(Shapes, FocusRectInvertsAlternatePixels) {
    Canvas c(8, 6, false, RGB(255, 255, 255));
    RECT r{1, 1, 7, 5};
    EXPECT_TRUE(DrawFocusRect(c.dc(), &r));
    EXPECT_EQ(c.Picture(), "oooooooo\noo#o#o#o\no#oooooo\noooooo#o\no#o#o#oo\noooooooo\n");
    EXPECT_TRUE(DrawFocusRect(c.dc(), &r));
    EXPECT_EQ(c.Ink(RGB(255, 255, 255)).size(), 0u) << "a second call erases it";

    // A frame one pixel high covers its row twice, so most dots cancel.
    RECT thin{1, 1, 7, 2};
    DrawFocusRect(c.dc(), &thin);
    EXPECT_EQ(c.Ink(RGB(255, 255, 255)), (std::set<std::pair<int, int>>{{6, 1}}));
    EXPECT_FALSE(DrawFocusRect(c.dc(), nullptr));
    EXPECT_FALSE(DrawFocusRect(nullptr, &r));
}

TEST_F(Shapes, FrameRectAndInvertRect) {
    Canvas c(8, 6);
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    RECT r{1, 1, 6, 5};
    EXPECT_NE(FrameRect(c.dc(), &r, red), 0);
    EXPECT_EQ(c.Picture(), "........\n.rrrrr..\n.r...r..\n.r...r..\n.rrrrr..\n........\n");
    RECT empty{4, 4, 4, 6};
    EXPECT_EQ(FrameRect(c.dc(), &empty, red), 0);
    EXPECT_EQ(FrameRect(c.dc(), &r, nullptr), 0);
    DeleteObject(red);

    Canvas inv(6, 4, false, RGB(255, 255, 255));
    RECT i{1, 1, 4, 3};
    EXPECT_TRUE(InvertRect(inv.dc(), &i));
    EXPECT_EQ(inv.Picture(), "oooooo\no###oo\no###oo\noooooo\n");
    EXPECT_TRUE(InvertRect(inv.dc(), &i));
    EXPECT_EQ(inv.Ink(RGB(255, 255, 255)).size(), 0u);
    EXPECT_FALSE(InvertRect(inv.dc(), nullptr));
}

// Coordinates far outside the surface are clamped to GDI's range: no overflow, no long
// loops, and what lands on the surface is still right.
TEST_F(Shapes, HugeCoordinatesStayExactAndCheap) {
    Canvas c(6, 4);
    {
        PenAndBrush pb(c.dc(), RedPen(9), BlueBrush());
        EXPECT_TRUE(Rectangle(c.dc(), INT_MIN, INT_MIN, INT_MAX, INT_MAX));
        EXPECT_EQ(c.Picture(), "bbbbbb\nbbbbbb\nbbbbbb\nbbbbbb\n") << "the outline is far away";
        MoveToEx(c.dc(), INT_MIN, 1, nullptr);
        EXPECT_TRUE(LineTo(c.dc(), INT_MAX, 1));
        EXPECT_EQ(c.Picture(), "rrrrrr\nrrrrrr\nrrrrrr\nrrrrrr\n");
        EXPECT_FALSE(Ellipse(c.dc(), -100000000, -100000000, 100000000, 100000000)) << "refused, not traced";
        EXPECT_TRUE(RoundRect(c.dc(), INT_MIN, 0, INT_MAX, 3, INT_MAX, 2));
    }
    const RECT far{INT_MIN, INT_MIN, INT_MAX, INT_MAX};
    EXPECT_TRUE(DrawFocusRect(c.dc(), &far));
    EXPECT_TRUE(InvertRect(c.dc(), &far));
    EXPECT_EQ(GetPixel(c.dc(), 0, 0), RGB(0, 255, 255));
}

}  // namespace
