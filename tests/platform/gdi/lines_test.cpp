// LineTo / Polyline: end points, rounding of slanted lines, clipping, wide pens, dashes,
// mix modes and pens on monochrome surfaces.
#include <cmath>
#include <vector>
#include <algorithm>
#include <functional>

#include "shape_canvas.h"
#include "support/leak_check.h"

namespace {

using namespace zel::test;
using Lines = LeakChecked;

void Line(HDC dc, int x0, int y0, int x1, int y1) {
    MoveToEx(dc, x0, y0, nullptr);
    LineTo(dc, x1, y1);
}

TEST_F(Lines, EndPointIsExcludedAndBecomesThePosition) {
    ShapeCanvas c(9, 6);
    Selected s(c.dc(), Pen(RGB(0, 0, 0)), NullBrush());
    Line(c.dc(), 1, 1, 7, 4);  // slope 1/2: each tie goes to the smaller row
    POINT pos{};
    GetCurrentPositionEx(c.dc(), &pos);
    EXPECT_TRUE(pos.x == 7 && pos.y == 4);
    EXPECT_EQ(c.Picture(), ".........\n.##......\n...##....\n.....##..\n.........\n.........\n");
    EXPECT_FALSE(LineTo(nullptr, 1, 1));
}

// Clipping (several clip rectangles, end points far outside) keeps exactly the unclipped
// pixels, each drawn once: an XOR pen would cancel a pixel drawn twice. The copy pen draws
// rows and columns its own way; both must agree.
TEST_F(Lines, ClippingKeepsTheUnclippedPixels) {
    const RECT lines[] = {{-40, -25, 60, 40}, {15, -100, 3, 100}, {-1000, 5, 1000, 5}, {20, 11, -5, 0},
                          {30, 7, -4, 7},     {7, -20, 7, 30},    {9, 30, 9, -3},      {4, 3, 4, 4}};
    for (const RECT& l : lines) {
        for (int rop : {R2_XORPEN, R2_COPYPEN}) {
            ShapeCanvas full(16, 12, false, 0), clipped(16, 12, false, 0);
            Selected a(full.dc(), Pen(RGB(255, 255, 255)), NullBrush());
            Selected b(clipped.dc(), Pen(RGB(255, 255, 255)), NullBrush());
            SetROP2(clipped.dc(), rop);
            IntersectClipRect(clipped.dc(), 2, 1, 14, 10);
            ExcludeClipRect(clipped.dc(), 6, 4, 9, 6);
            HRGN clip = CreateRectRgn(0, 0, 0, 0);
            GetClipRgn(clipped.dc(), clip);
            Line(full.dc(), l.left, l.top, l.right, l.bottom);
            Line(clipped.dc(), l.left, l.top, l.right, l.bottom);
            SelectClipRgn(clipped.dc(), nullptr);
            for (int y = 0; y < 12; ++y)
                for (int x = 0; x < 16; ++x)
                    EXPECT_EQ(GetPixel(clipped.dc(), x, y), PtInRegion(clip, x, y) ? GetPixel(full.dc(), x, y) : 0)
                        << l.left << "," << l.top << " rop " << rop << " at " << x << "," << y;
            DeleteObject(clip);
        }
    }
}

// A fan of lines in every direction and slope, clipped by a ring of rectangles: each pixel
// lies on the exact line rounded to nearest (a tie to the smaller coordinate), inside the
// clip, drawn once (XOR). The rule is symmetric, so a line and its reverse cover the same
// pixels apart from the excluded end.
TEST_F(Lines, FanOfSlopesThroughAComplexClip) {
    constexpr int kW = 40, kH = 30, kCx = 20, kCy = 15;
    for (int k = 0; k < 48; ++k) {
        const int ex = kCx + ((k % 12) - 6) * 7 + (k / 12), ey = kCy + ((k * 5) % 13 - 6) * 5 - (k / 12);
        ShapeCanvas canvas(kW, kH, false, 0);
        Selected pen(canvas.dc(), Pen(RGB(255, 255, 255)), NullBrush());
        SetROP2(canvas.dc(), R2_XORPEN);
        IntersectClipRect(canvas.dc(), 3, 2, 37, 27);
        ExcludeClipRect(canvas.dc(), 12, 9, 27, 20);
        HRGN clip = CreateRectRgn(0, 0, 0, 0);
        GetClipRgn(canvas.dc(), clip);
        Line(canvas.dc(), ex, ey, 2 * kCx - ex, 2 * kCy - ey);
        SelectClipRgn(canvas.dc(), nullptr);
        const int x0 = ex, y0 = ey, dx = 2 * (kCx - ex), dy = 2 * (kCy - ey);
        const int n = std::max(std::abs(dx), std::abs(dy));
        std::vector<bool> want(kW * kH, false);
        for (int i = 0; i < n; ++i) {
            const bool xMajor = std::abs(dx) >= std::abs(dy);
            const double exact = (xMajor ? y0 : x0) + static_cast<double>(i) * (xMajor ? dy : dx) / n;
            const int minor = static_cast<int>(std::ceil(exact - 0.5));
            const int major = (xMajor ? x0 : y0) + i * ((xMajor ? dx : dy) > 0 ? 1 : -1);
            const int x = xMajor ? major : minor, y = xMajor ? minor : major;
            if (x >= 0 && x < kW && y >= 0 && y < kH && PtInRegion(clip, x, y)) want[y * kW + x] = true;
        }
        for (int y = 0; y < kH; ++y)
            for (int x = 0; x < kW; ++x)
                ASSERT_EQ(GetPixel(canvas.dc(), x, y), want[y * kW + x] ? RGB(255, 255, 255) : 0)
                    << "line from " << ex << "," << ey << " at " << x << "," << y;
        DeleteObject(clip);
    }
}

// Wide pens: the odd extra row of the body goes up/left; round caps are centred on both
// end points, so the end point is drawn; a zero-length line is just the cap.
TEST_F(Lines, WidePensHaveRoundCapsOnBothEnds) {
    const struct {
        int width;
        RECT line;
        int w, h;
        const char* picture;
    } cases[] = {
        {2, {3, 2, 8, 2}, 12, 4, "............\n..#######...\n..#######...\n............\n"},
        {2, {2, 1, 2, 4}, 5, 6, ".##..\n.##..\n.##..\n.##..\n.##..\n.....\n"},
        {3, {3, 3, 8, 3}, 12, 6, "............\n............\n...######...\n..########..\n...######...\n............\n"},
        {3, {3, 3, 3, 3}, 7, 6, ".......\n.......\n...#...\n..###..\n...#...\n.......\n"},
    };
    for (const auto& t : cases) {
        ShapeCanvas c(t.w, t.h);
        Selected s(c.dc(), Pen(RGB(0, 0, 0), t.width), NullBrush());
        Line(c.dc(), t.line.left, t.line.top, t.line.right, t.line.bottom);
        EXPECT_EQ(c.Picture(), t.picture);
    }
}

// PS_DASH runs 18 on, 6 off, carried on round polyline vertices; gaps take the background
// colour only in OPAQUE mode. Polyline leaves the current position alone.
TEST_F(Lines, DashedPenGapsAndPolylines) {
    ShapeCanvas c(21, 11);
    Selected s(c.dc(), Pen(RGB(0, 0, 0), 1, PS_DASH), NullBrush());
    const POINT path[] = {{0, 0}, {20, 0}, {20, 10}};
    EXPECT_TRUE(Polyline(c.dc(), path, 3));
    std::string column;
    for (int y = 0; y < 11; ++y) column += ShapeCanvas::Glyph(GetPixel(c.dc(), 20, y));
    EXPECT_EQ(c.Picture().substr(0, 22), std::string(18, '#') + "ooo\n");
    EXPECT_EQ(column, "oooo######.");
    SetBkMode(c.dc(), TRANSPARENT);
    c.Fill(kSentinel);
    Polyline(c.dc(), path, 3);
    EXPECT_EQ(c.Picture().substr(0, 22), std::string(18, '#') + "...\n");
    POINT pos{};
    GetCurrentPositionEx(c.dc(), &pos);
    EXPECT_TRUE(pos.x == 0 && pos.y == 0);
    EXPECT_FALSE(Polyline(c.dc(), path, 1));
}

TEST_F(Lines, EveryMixModeCombinesPenAndDestination) {
    const COLORREF P = RGB(0x3C, 0x5A, 0x66), D = RGB(0x0F, 0x33, 0xA5);
    using F = std::function<COLORREF(COLORREF, COLORREF)>;
    const F expect[16] = {
        [](COLORREF, COLORREF) { return 0u; },            [](COLORREF p, COLORREF d) { return ~(p | d); },
        [](COLORREF p, COLORREF d) { return ~p & d; },    [](COLORREF p, COLORREF) { return ~p; },
        [](COLORREF p, COLORREF d) { return p & ~d; },    [](COLORREF, COLORREF d) { return ~d; },
        [](COLORREF p, COLORREF d) { return p ^ d; },     [](COLORREF p, COLORREF d) { return ~(p & d); },
        [](COLORREF p, COLORREF d) { return p & d; },     [](COLORREF p, COLORREF d) { return ~(p ^ d); },
        [](COLORREF, COLORREF d) { return d; },           [](COLORREF p, COLORREF d) { return ~p | d; },
        [](COLORREF p, COLORREF) { return p; },           [](COLORREF p, COLORREF d) { return p | ~d; },
        [](COLORREF p, COLORREF d) { return p | d; },     [](COLORREF, COLORREF) { return 0xFFFFFFu; },
    };  // R2_BLACK .. R2_WHITE
    for (int rop2 = R2_BLACK; rop2 <= R2_WHITE; ++rop2) {
        ShapeCanvas c(2, 1, false, D);
        Selected s(c.dc(), Pen(P), NullBrush());
        SetROP2(c.dc(), rop2);
        Line(c.dc(), 0, 0, 1, 0);
        EXPECT_EQ(GetPixel(c.dc(), 0, 0), expect[rop2 - 1](P, D) & 0xFFFFFF) << "R2 code " << rop2;
    }
    ShapeCanvas c(1, 1);
    EXPECT_EQ(SetROP2(c.dc(), 17), 0);
    EXPECT_EQ(GetROP2(c.dc()), R2_COPYPEN);
}

// A pen on monochrome is not "nearest colour": exact black and white keep their pixel,
// the background colour keeps the background's, any other colour gets the opposite.
TEST_F(Lines, PenColoursOnMonochromeDependOnTheBackground) {
    const struct {
        COLORREF pen, bk;
        bool white;
    } cases[] = {
        {RGB(0, 0, 0), RGB(255, 255, 255), false},       {RGB(128, 128, 128), RGB(255, 255, 255), false},
        {RGB(200, 200, 200), RGB(200, 200, 200), true},  {RGB(128, 128, 128), RGB(200, 200, 200), false},
        {RGB(255, 0, 0), RGB(255, 0, 0), false},         {RGB(0, 0, 255), RGB(255, 0, 0), true},
        {RGB(255, 255, 255), RGB(255, 0, 0), true},
    };
    for (const auto& t : cases) {
        ShapeCanvas c(3, 1, true, t.white ? RGB(0, 0, 0) : RGB(255, 255, 255));
        Selected s(c.dc(), Pen(t.pen), NullBrush());
        SetBkColor(c.dc(), t.bk);
        Line(c.dc(), 0, 0, 3, 0);
        EXPECT_EQ(c.Picture(), t.white ? "ooo\n" : "###\n") << std::hex << t.pen << " on bk " << t.bk;
    }
}

}  // namespace
