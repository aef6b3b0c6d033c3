// Rectangle, RoundRect, Ellipse, DrawFocusRect, FrameRect and InvertRect: bounds, pens,
// brushes and mix modes, pixel by pixel inside a sentinel fence.
#include <climits>

#include "shape_canvas.h"
#include "support/leak_check.h"

namespace {

using namespace zel::test;
using Shapes = LeakChecked;

const COLORREF kRed = RGB(255, 0, 0);
HBRUSH Blue() { return CreateSolidBrush(RGB(0, 0, 255)); }

TEST_F(Shapes, RectanglePenOutlineAndBrushInterior) {
    const struct {
        bool pen, brush;
        const char* picture;
    } cases[] = {
        {true, true, ".........\n.rrrrrr..\n.rbbbbr..\n.rbbbbr..\n.rbbbbr..\n.rrrrrr..\n.........\n"},
        // Without a pen the fill is one pixel narrower and shorter.
        {false, true, ".........\n.bbbbb...\n.bbbbb...\n.bbbbb...\n.bbbbb...\n.........\n.........\n"},
        {true, false, ".........\n.rrrrrr..\n.r....r..\n.r....r..\n.r....r..\n.rrrrrr..\n.........\n"},
    };
    for (const auto& t : cases) {
        ShapeCanvas c(9, 7);
        Selected s(c.dc(), t.pen ? Pen(kRed) : NullPen(), t.brush ? Blue() : NullBrush());
        EXPECT_TRUE(Rectangle(c.dc(), 7, 6, 1, 1)) << "corners are normalised";
        EXPECT_EQ(c.Picture(), t.picture);
        c.Fill(kSentinel);
        Rectangle(c.dc(), 2, 1, 2, 5);  // no width
        Rectangle(c.dc(), 2, 2, 3, 3);  // 1x1: an outline of no length, an empty interior
        EXPECT_TRUE(c.Pixels().empty());
    }
    EXPECT_FALSE(Rectangle(nullptr, 0, 0, 4, 4));
}

// A width-2 outline has its extra pixel up/left: one pixel outside the box at top and
// left, inside at right and bottom. PS_INSIDEFRAME keeps any width inside the box.
TEST_F(Shapes, WidePenOutlines) {
    ShapeCanvas c(10, 8);
    {
        Selected s(c.dc(), Pen(kRed, 2), Blue());
        Rectangle(c.dc(), 2, 2, 8, 7);
    }
    EXPECT_EQ(c.Picture(),
              "..........\n.rrrrrrr..\n.rrrrrrr..\n.rrbbbrr..\n.rrbbbrr..\n.rrrrrrr..\n.rrrrrrr..\n..........\n");
    for (int width : {2, 3, 4, 7}) {
        for (bool ellipse : {false, true}) {
            ShapeCanvas f(14, 13);
            Selected s(f.dc(), Pen(kRed, width, PS_INSIDEFRAME), Blue());
            ellipse ? Ellipse(f.dc(), 2, 1, 12, 11) : Rectangle(f.dc(), 2, 1, 12, 11);
            const RECT ink = f.InkBox(kSentinel), box{2, 1, 12, 11};
            EXPECT_TRUE(EqualRect(&ink, &box)) << "width " << width << "\n" << f.Picture();
        }
    }
}

// A one-pixel ellipse fills its box exactly and is its own mirror image on both axes.
TEST_F(Shapes, EllipseIsInscribedAndSymmetric) {
    ShapeCanvas small(7, 7);
    {
        Selected s(small.dc(), Pen(kRed), Blue());
        EXPECT_TRUE(Ellipse(small.dc(), 1, 1, 6, 6));
    }
    EXPECT_EQ(small.Picture(), ".......\n..rrr..\n.rbbbr.\n.rbbbr.\n.rbbbr.\n..rrr..\n.......\n");
    for (const RECT& box : {RECT{1, 1, 15, 11}, RECT{2, 1, 13, 14}, RECT{1, 3, 16, 8}, RECT{3, 1, 7, 15}}) {
        ShapeCanvas c(17, 16);
        Selected s(c.dc(), Pen(kRed), Blue());
        Ellipse(c.dc(), box.left, box.top, box.right, box.bottom);
        const RECT ink = c.InkBox(kSentinel);
        EXPECT_TRUE(EqualRect(&ink, &box)) << c.Picture();
        for (int y = box.top; y < box.bottom; ++y)
            for (int x = box.left; x < box.right; ++x) {
                EXPECT_EQ(GetPixel(c.dc(), x, y), GetPixel(c.dc(), box.right - 1 - (x - box.left), y));
                EXPECT_EQ(GetPixel(c.dc(), x, y), GetPixel(c.dc(), x, box.bottom - 1 - (y - box.top)));
            }
    }
}

// A clip region shows exactly the part of a filled shape it holds, whatever the shape's
// rows and the clip's rectangles have in common.
TEST_F(Shapes, ClippedShapesShowTheirUnclippedPixels) {
    const RECT box{1, 2, 19, 15};
    using Draw = BOOL (*)(HDC, int, int, int, int);
    const std::pair<const char*, Draw> shapes[] = {
        {"ellipse", [](HDC d, int l, int t, int r, int b) { return Ellipse(d, l, t, r, b); }},
        {"round rect", [](HDC d, int l, int t, int r, int b) { return RoundRect(d, l, t, r, b, 9, 7); }},
    };
    for (const auto& [name, draw] : shapes) {
        ShapeCanvas whole(20, 17), clipped(20, 17);
        {
            Selected s(whole.dc(), Pen(kRed), Blue());
            draw(whole.dc(), box.left, box.top, box.right, box.bottom);
        }
        HRGN clip = CreateRectRgn(0, 0, 7, 9);
        HRGN other = CreateRectRgn(11, 5, 20, 17);
        CombineRgn(clip, clip, other, RGN_OR);
        SelectClipRgn(clipped.dc(), clip);
        {
            Selected s(clipped.dc(), Pen(kRed), Blue());
            draw(clipped.dc(), box.left, box.top, box.right, box.bottom);
        }
        SelectClipRgn(clipped.dc(), nullptr);
        for (int y = 0; y < 17; ++y)
            for (int x = 0; x < 20; ++x)
                EXPECT_EQ(GetPixel(clipped.dc(), x, y), PtInRegion(clip, x, y) ? GetPixel(whole.dc(), x, y) : kSentinel)
                    << name << " at " << x << "," << y;
        DeleteObject(other);
        DeleteObject(clip);
    }
}

// Corners of two pixels or less make a rectangle; corners larger than the box are
// clamped to it, which makes an ellipse.
TEST_F(Shapes, RoundRectCornersClampBetweenRectangleAndEllipse) {
    auto draw = [](int width, auto&& shape) {
        ShapeCanvas c(16, 14);
        Selected s(c.dc(), width ? Pen(kRed, width) : NullPen(), Blue());
        shape(c.dc());
        return c.Picture();
    };
    for (int width : {0, 1, 2}) {
        const std::string rect = draw(width, [](HDC dc) { Rectangle(dc, 2, 2, 14, 12); });
        const std::string ellipse = draw(width, [](HDC dc) { Ellipse(dc, 2, 2, 14, 12); });
        EXPECT_EQ(draw(width, [](HDC dc) { RoundRect(dc, 2, 2, 14, 12, 2, 9); }), rect);
        EXPECT_EQ(draw(width, [](HDC dc) { RoundRect(dc, 2, 2, 14, 12, 8, -2); }), rect);
        EXPECT_EQ(draw(width, [](HDC dc) { RoundRect(dc, 14, 12, 2, 2, 40, -40); }), ellipse);
    }
    // With no pen the brush covers the outline's pixels too.
    EXPECT_EQ(draw(1, [](HDC dc) { RoundRect(dc, 1, 1, 15, 9, 6, 6); }),
              "................\n...rrrrrrrrrr...\n..rbbbbbbbbbbr..\n.rbbbbbbbbbbbbr.\n.rbbbbbbbbbbbbr.\n"
              ".rbbbbbbbbbbbbr.\n.rbbbbbbbbbbbbr.\n..rbbbbbbbbbbr..\n...rrrrrrrrrr...\n................\n"
              "................\n................\n................\n................\n");
    EXPECT_EQ(draw(0, [](HDC dc) { RoundRect(dc, 1, 1, 15, 9, 6, 6); }),
              "................\n...bbbbbbbbbb...\n..bbbbbbbbbbbb..\n.bbbbbbbbbbbbbb.\n.bbbbbbbbbbbbbb.\n"
              ".bbbbbbbbbbbbbb.\n.bbbbbbbbbbbbbb.\n..bbbbbbbbbbbb..\n...bbbbbbbbbb...\n................\n"
              "................\n................\n................\n................\n");
}

// The brush obeys the mix mode too, and a wide pen is one region: with XOR on black each
// covered pixel flips exactly once, giving the same picture as a copy.
TEST_F(Shapes, MixModesPaintEachPixelOnce) {
    auto draw = [](int rop2, int width, int times, auto&& shape) {
        ShapeCanvas c(18, 16, false, 0);
        Selected s(c.dc(), Pen(RGB(255, 255, 255), width), NullBrush());
        SetROP2(c.dc(), rop2);
        for (int i = 0; i < times; ++i) shape(c.dc());
        return c.Picture();
    };
    auto rect = [](HDC dc) { Rectangle(dc, 3, 2, 15, 13); };
    auto ellipse = [](HDC dc) { Ellipse(dc, 2, 2, 16, 14); };
    auto round = [](HDC dc) { RoundRect(dc, 2, 3, 16, 13, 7, 5); };
    for (int width : {1, 2, 3, 5}) {
        EXPECT_EQ(draw(R2_XORPEN, width, 1, rect), draw(R2_COPYPEN, width, 1, rect)) << width;
        EXPECT_EQ(draw(R2_XORPEN, width, 1, ellipse), draw(R2_COPYPEN, width, 1, ellipse)) << width;
        EXPECT_EQ(draw(R2_XORPEN, width, 1, round), draw(R2_COPYPEN, width, 1, round)) << width;
    }
    ShapeCanvas c(6, 6, false, RGB(0, 255, 255));
    Selected s(c.dc(), NullPen(), CreateSolidBrush(RGB(255, 255, 0)));
    SetROP2(c.dc(), R2_MASKPEN);
    Rectangle(c.dc(), 1, 1, 5, 5);
    EXPECT_EQ(GetPixel(c.dc(), 1, 1), RGB(0, 255, 0));
    EXPECT_EQ(GetPixel(c.dc(), 4, 4), RGB(0, 255, 255));
}

// Pattern brushes tile from the brush origin, not from the shape; monochrome targets.
TEST_F(Shapes, PatternBrushOriginAndMonochrome) {
    ShapeCanvas pattern(2, 2, false, RGB(0, 0, 255));
    SetPixel(pattern.dc(), 0, 0, kRed);
    SetPixel(pattern.dc(), 1, 1, kRed);
    ShapeCanvas c(6, 4);
    {
        Selected s(c.dc(), NullPen(), CreatePatternBrush(static_cast<HBITMAP>(GetCurrentObject(pattern.dc(), OBJ_BITMAP))));
        Rectangle(c.dc(), 1, 1, 6, 4);
        SetBrushOrgEx(c.dc(), 1, 0, nullptr);
        Rectangle(c.dc(), 0, 0, 3, 2);
    }
    EXPECT_EQ(c.Picture(), "br....\n.rbrb.\n.brbr.\n......\n");
    ShapeCanvas m(8, 6, true, RGB(0, 0, 0));
    Selected s(m.dc(), Pen(RGB(255, 255, 255)), static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    Rectangle(m.dc(), 1, 1, 7, 5);
    EXPECT_EQ(m.Picture(), "########\n#oooooo#\n#o####o#\n#o####o#\n#oooooo#\n########\n");
}

// Long rows of narrow and wide tiles, from several origins: pixel (x, y) shows the tile's
// pixel at ((x - org.x) mod w, (y - org.y) mod h) wherever the fill starts.
TEST_F(Shapes, PatternRowsRepeatTheTileFromTheBrushOrigin) {
    for (int tw : {1, 2, 3, 8, 13}) {
        ShapeCanvas tile(tw, 2, false);
        for (int y = 0; y < 2; ++y)
            for (int x = 0; x < tw; ++x) SetPixel(tile.dc(), x, y, RGB(10 * x, 100 + y, 7));
        HBRUSH brush = CreatePatternBrush(static_cast<HBITMAP>(GetCurrentObject(tile.dc(), OBJ_BITMAP)));
        for (int org : {0, 1, 5}) {
            for (int from : {0, 3}) {
                ShapeCanvas c(61, 2);
                SetBrushOrgEx(c.dc(), org, 0, nullptr);
                RECT r{from, 0, 61, 2};
                FillRect(c.dc(), &r, brush);
                for (int y = 0; y < 2; ++y)
                    for (int x = 0; x < 61; ++x) {
                        const int tx = ((x - org) % tw + tw) % tw;
                        EXPECT_EQ(GetPixel(c.dc(), x, y), x < from ? kSentinel : RGB(10 * tx, 100 + y, 7))
                            << "tile " << tw << " origin " << org << " from " << from << " at " << x << "," << y;
                    }
            }
        }
        DeleteObject(brush);
    }
}

// Every other pixel of the outline is inverted, starting at the top-right corner and
// running anticlockwise with the pattern carried round the corners.
TEST_F(Shapes, FocusRectInvertsAlternatePixels) {
    ShapeCanvas c(8, 6, false, RGB(255, 255, 255));
    RECT r{1, 1, 7, 5};
    EXPECT_TRUE(DrawFocusRect(c.dc(), &r));
    EXPECT_EQ(c.Picture(), "oooooooo\noo#o#o#o\no#oooooo\noooooo#o\no#o#o#oo\noooooooo\n");
    EXPECT_TRUE(DrawFocusRect(c.dc(), &r));
    EXPECT_TRUE(c.Pixels(RGB(255, 255, 255)).empty()) << "a second call erases it";
    RECT thin{1, 1, 7, 2};  // the path covers this row twice, so most dots cancel
    DrawFocusRect(c.dc(), &thin);
    EXPECT_EQ(c.Pixels(RGB(255, 255, 255)), (Ink{{6, 1}}));
    EXPECT_FALSE(DrawFocusRect(c.dc(), nullptr));
}

TEST_F(Shapes, FrameRectAndInvertRect) {
    ShapeCanvas c(8, 6, false, RGB(255, 255, 255));
    HBRUSH red = CreateSolidBrush(kRed);
    RECT r{1, 1, 6, 5}, empty{4, 4, 4, 6}, inv{2, 2, 4, 4};
    EXPECT_NE(FrameRect(c.dc(), &r, red), 0);
    EXPECT_EQ(FrameRect(c.dc(), &empty, red), 0);
    EXPECT_EQ(FrameRect(c.dc(), &r, nullptr), 0);
    EXPECT_TRUE(InvertRect(c.dc(), &inv));
    EXPECT_EQ(c.Picture(), "oooooooo\norrrrroo\nor##oroo\nor##oroo\norrrrroo\noooooooo\n");
    DeleteObject(red);
}

// Coordinates far outside the surface are clamped to GDI's range: no overflow, no long
// loops, and what lands on the surface is still exact.
TEST_F(Shapes, HugeCoordinatesStayExactAndCheap) {
    ShapeCanvas c(6, 4);
    {
        Selected s(c.dc(), Pen(kRed, 9), Blue());
        EXPECT_TRUE(Rectangle(c.dc(), INT_MIN, INT_MIN, INT_MAX, INT_MAX));
        EXPECT_EQ(c.Picture(), "bbbbbb\nbbbbbb\nbbbbbb\nbbbbbb\n") << "the outline is far away";
        MoveToEx(c.dc(), INT_MIN, 1, nullptr);
        EXPECT_TRUE(LineTo(c.dc(), INT_MAX, 1));
        EXPECT_EQ(c.Picture(), "rrrrrr\nrrrrrr\nrrrrrr\nrrrrrr\n");
        EXPECT_FALSE(Ellipse(c.dc(), -100000000, -100000000, 100000000, 100000000)) << "refused, not traced";
    }
    const RECT far{INT_MIN, INT_MIN, INT_MAX, INT_MAX};
    EXPECT_TRUE(DrawFocusRect(c.dc(), &far));
    EXPECT_TRUE(InvertRect(c.dc(), &far));
    EXPECT_EQ(GetPixel(c.dc(), 0, 0), RGB(0, 255, 255));
}

}  // namespace
