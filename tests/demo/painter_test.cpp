// The skin's drawing kit: exact coverage at a scale, masking through a shape, and the
// area-averaging reduction that smooths the pieces. Canvases start with a sentinel colour
// so a stray pixel shows.
#include <gtest/gtest.h>

#include <string>

#include "skin/painter.h"
#include "support/leak_check.h"

namespace zel::demo {
namespace {

constexpr COLORREF kSentinel = RGB(0xAA, 0xAA, 0xAA);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

class PainterTest : public zel::test::LeakChecked {
protected:
    static Canvas Blank(int w, int h) {
        Canvas c(w, h);
        Painter(c, 1).Fill(Box{0, 0, double(w), double(h)}, kSentinel);
        return c;
    }
    // '.' sentinel, 'r' red, 'b' blue, 'w' white, '#' black, '?' anything else.
    static std::string Picture(const Canvas& c) {
        std::string s;
        for (int y = 0; y < c.height(); ++y) {
            for (int x = 0; x < c.width(); ++x) {
                switch (c.Pixel(x, y)) {
                    case kSentinel: s += '.'; break;
                    case kRed: s += 'r'; break;
                    case kBlue: s += 'b'; break;
                    case RGB(255, 255, 255): s += 'w'; break;
                    case RGB(0, 0, 0): s += '#'; break;
                    default: s += '?';
                }
            }
            s += '\n';
        }
        return s;
    }
};

TEST_F(PainterTest, ShapesCoverTheirScaledBoxExactly) {
    struct Case {
        const char* name;
        void (*draw)(Painter&);
    } cases[] = {
        {"Fill", [](Painter& p) { p.Fill(Box{1, 1, 3, 2.5}, kRed); }},
        {"RoundRect without corners", [](Painter& p) { p.RoundRect(Box{1, 1, 3, 2.5}, 0, kRed); }},
        {"Polygon", [](Painter& p) { p.Polygon({{1, 1}, {3, 1}, {3, 2.5}, {1, 2.5}}, kRed); }},
    };
    for (const Case& c : cases) {
        Canvas canvas = Blank(8, 6);
        Painter p(canvas, 2);
        c.draw(p);
        EXPECT_EQ(Picture(canvas),
                  "........\n"
                  "........\n"
                  "..rrrr..\n"
                  "..rrrr..\n"
                  "..rrrr..\n"
                  "........\n")
            << c.name;
    }
}

TEST_F(PainterTest, SilhouetteModeDrawsEveryColourWhite) {
    Canvas canvas = Blank(4, 3);
    Painter p(canvas, 1, true);
    p.Fill(Box{0, 0, 2, 1}, kRed);
    p.Polygon({{2, 1}, {4, 1}, {4, 3}, {2, 3}}, kBlue);
    EXPECT_EQ(Picture(canvas),
              "ww..\n"
              "..ww\n"
              "..ww\n");
}

// The layer shows only where the shape is; elsewhere the canvas keeps its own pixels,
// whatever colours the layer had there.
TEST_F(PainterTest, ThroughPaintsTheLayerOnlyInsideTheShape) {
    Canvas canvas = Blank(6, 4);
    Painter p(canvas, 1);
    p.Through([](Painter& m) { m.Fill(Box{1, 1, 4, 3}, kBlue); },
              [](Painter& layer) {
                  layer.Fill(Box{0, 0, 6, 4}, kBlue);
                  layer.Fill(Box{2, 0, 6, 2}, kRed);
              });
    EXPECT_EQ(Picture(canvas),
              "......\n"
              ".brr..\n"
              ".bbb..\n"
              "......\n");
}

TEST_F(PainterTest, ThroughInSilhouetteModeAddsOnlyTheShape) {
    Canvas canvas = Blank(4, 2);
    Painter p(canvas, 1, true);
    p.Through([](Painter& m) { m.Fill(Box{1, 0, 3, 1}, kBlue); }, [](Painter& layer) { layer.Fill(Box{0, 0, 4, 2}, kRed); });
    EXPECT_EQ(Picture(canvas),
              ".ww.\n"
              "....\n");
}

TEST_F(PainterTest, GradientBandsRunFromOneColourToTheOther) {
    Canvas canvas = Blank(3, 10);
    Painter(canvas, 1).VerticalGradient(Box{1, 0, 2, 10}, RGB(0, 0, 0), RGB(200, 100, 0));
    int previous = -1;
    for (int y = 0; y < 10; ++y) {
        COLORREF c = canvas.Pixel(1, y);
        EXPECT_GT(int(GetRValue(c)), previous) << "row " << y;
        EXPECT_EQ(GetGValue(c), (GetRValue(c) + 1) / 2) << "row " << y;
        previous = GetRValue(c);
        EXPECT_EQ(canvas.Pixel(0, y), kSentinel);
        EXPECT_EQ(canvas.Pixel(2, y), kSentinel);
    }
    EXPECT_LT(GetRValue(canvas.Pixel(1, 0)), 20);
    EXPECT_GT(GetRValue(canvas.Pixel(1, 9)), 180);
}

TEST_F(PainterTest, ReducedAveragesEachBlock) {
    Canvas large(8, 4);
    Painter p(large, 2);
    p.Fill(Box{0, 0, 4, 2}, RGB(40, 80, 120));  // uniform blocks stay as they are
    p.Fill(Box{2, 1, 3, 2}, RGB(0, 0, 0));
    p.Fill(Box{3, 1, 4, 2}, RGB(0, 0, 0));
    large.SetPixelColor(7, 3, RGB(255, 255, 255));  // one white pixel in its block of four
    Canvas small = large.Reduced(2);
    ASSERT_EQ(small.width(), 4);
    ASSERT_EQ(small.height(), 2);
    EXPECT_EQ(small.Pixel(0, 0), RGB(40, 80, 120));
    EXPECT_EQ(small.Pixel(2, 1), RGB(0, 0, 0));
    EXPECT_NEAR(GetRValue(small.Pixel(3, 1)), 64, 1);
    EXPECT_NEAR(GetBValue(small.Pixel(3, 1)), 64, 1);
}

// Round shapes keep to their box too: every pixel of the box's edge rows and columns
// that the shape touches lies inside the box, and the box's middle row is full.
TEST_F(PainterTest, RoundShapesStayInsideTheirBox) {
    for (bool ellipse : {false, true}) {
        Canvas canvas = Blank(14, 12);
        Painter p(canvas, 1);
        if (ellipse)
            p.Ellipse(Box{2, 2, 12, 10}, kRed);
        else
            p.RoundRect(Box{2, 2, 12, 10}, 3, kRed);
        for (int y = 0; y < 12; ++y)
            for (int x = 0; x < 14; ++x) {
                bool inBox = x >= 2 && x < 12 && y >= 2 && y < 10;
                if (!inBox) {
                    ASSERT_EQ(canvas.Pixel(x, y), kSentinel) << (ellipse ? "ellipse" : "roundrect") << " " << x << "," << y;
                }
            }
        for (int x = 2; x < 12; ++x) EXPECT_EQ(canvas.Pixel(x, 6), kRed) << x;
        for (int y = 2; y < 10; ++y) EXPECT_EQ(canvas.Pixel(7, y), kRed) << y;
    }
}

TEST(Mix, EndsAreExactAndSharesAreClamped) {
    EXPECT_EQ(Mix(RGB(10, 20, 30), RGB(110, 220, 130), 0), RGB(10, 20, 30));
    EXPECT_EQ(Mix(RGB(10, 20, 30), RGB(110, 220, 130), 1), RGB(110, 220, 130));
    EXPECT_EQ(Mix(RGB(10, 20, 30), RGB(110, 220, 130), 0.5), RGB(60, 120, 80));
    EXPECT_EQ(Mix(RGB(10, 20, 30), RGB(110, 220, 130), 7), RGB(110, 220, 130));
    EXPECT_EQ(Mix(RGB(10, 20, 30), RGB(110, 220, 130), -1), RGB(10, 20, 30));
}

TEST(CanvasTest, ABadSizeGivesADeadCanvasThatFailsQuietly) {
    zel::GdiCounts before = zel::LiveGdiObjects();
    {
        Canvas dead(0, 5);
        EXPECT_FALSE(dead.ok());
        EXPECT_FALSE(dead.Save("/tmp/never-written.bmp"));
        EXPECT_TRUE(dead.Colors().empty());
        Painter(dead, 2).Fill(Box{0, 0, 1, 1}, kRed);
        EXPECT_FALSE(dead.Reduced(2).ok());
    }
    EXPECT_EQ(zel::LiveGdiObjects().total(), before.total());
}

}  // namespace
}  // namespace zel::demo
