// MoveToEx / LineTo / Polyline: end points, the rounding of slanted lines, clipping,
// wide pens, dashes, mix modes and pens on monochrome surfaces.
#include <windows.h>

#include <functional>

#include "shape_canvas.h"
#include "support/leak_check.h"

namespace {

using zel::test::Canvas;
using zel::test::PenAndBrush;
using Lines = zel::test::LeakChecked;
using Ink = std::set<std::pair<int, int>>;

void Line(HDC dc, int x0, int y0, int x1, int y1) {
    MoveToEx(dc, x0, y0, nullptr);
    LineTo(dc, x1, y1);
}

Ink DrawLine(int x0, int y0, int x1, int y1, int w = 17, int h = 17) {
    Canvas c(w, h);
    PenAndBrush pb(c.dc(), CreatePen(PS_SOLID, 1, RGB(0, 0, 0)), zel::test::StockBrush(NULL_BRUSH));
    Line(c.dc(), x0, y0, x1, y1);
    return c.Ink();
}

TEST_F(Lines, CosmeticLineStopsBeforeItsEndAndMovesThePosition) {
    Canvas c(8, 3);
    PenAndBrush pb(c.dc(), CreatePen(PS_SOLID, 1, RGB(0, 0, 0)), zel::test::StockBrush(NULL_BRUSH));
    POINT prev{};
    EXPECT_TRUE(MoveToEx(c.dc(), 1, 1, &prev));
    EXPECT_EQ(prev.x, 0);
    EXPECT_EQ(prev.y, 0);
    EXPECT_TRUE(LineTo(c.dc(), 6, 1));
    EXPECT_EQ(c.Picture(), "........\n.#####..\n........\n");
    POINT pos{};
    GetCurrentPositionEx(c.dc(), &pos);
    EXPECT_EQ(pos.x, 6);
    EXPECT_EQ(pos.y, 1);
    EXPECT_TRUE(LineTo(c.dc(), 6, 1)) << "zero length: nothing drawn, still a success";
    EXPECT_EQ(c.Picture(), "........\n.#####..\n........\n");
}

// A tie between two rows (slope 1/2) goes to the smaller coordinate in both directions.
TEST_F(Lines, SlantedLinesRoundToNearestWithTiesToTheSmallerCoordinate) {
    Canvas fwd(9, 6), rev(9, 6);
    for (Canvas* c : {&fwd, &rev}) SelectObject(c->dc(), GetStockObject(BLACK_PEN));
    Line(fwd.dc(), 1, 1, 7, 4);
    Line(rev.dc(), 7, 4, 1, 1);
    EXPECT_EQ(fwd.Picture(), ".........\n.##......\n...##....\n.....##..\n.........\n.........\n");
    EXPECT_EQ(rev.Picture(), ".........\n..#......\n...##....\n.....##..\n.......#.\n.........\n");
}

// In every octant: one pixel per step of the major axis, and a line and its reverse
// cover the same pixels apart from the excluded end point.
TEST_F(Lines, ReversedLinesCoverTheSamePixelsInEveryOctant) {
    const POINT ends[] = {{6, 3}, {3, 6}, {-3, 6}, {-6, 3}, {-6, -3}, {-3, -6}, {3, -6}, {6, -3},
                          {5, 5}, {-5, 5}, {7, 0}, {0, -7}, {4, 1},  {-1, 4}, {7, 2},  {-2, -7}};
    for (POINT d : ends) {
        SCOPED_TRACE(testing::Message() << "delta " << d.x << "," << d.y);
        const int ax = 8, ay = 8, bx = ax + d.x, by = ay + d.y;
        Ink forward = DrawLine(ax, ay, bx, by), backward = DrawLine(bx, by, ax, ay);
        EXPECT_EQ(forward.size(), static_cast<size_t>(std::max(std::abs(d.x), std::abs(d.y))));
        EXPECT_TRUE(forward.count({ax, ay}) && !forward.count({bx, by}));
        forward.insert({bx, by});
        backward.insert({ax, ay});
        EXPECT_EQ(forward, backward);
    }
}

// Clipping keeps exactly the unclipped line's pixels inside the clip, each drawn once
// (an XOR pen would cancel a pixel drawn twice), from end points far outside.
TEST_F(Lines, ClippedLinesKeepTheUnclippedPixels) {
    const RECT lines[] = {{-40, -25, 60, 40}, {15, -100, 3, 100}, {-1000, 5, 1000, 5}, {20, 11, -5, 0}};
    HPEN white = CreatePen(PS_SOLID, 1, RGB(255, 255, 255));
    HRGN clip = CreateRectRgn(0, 0, 0, 0);
    for (const RECT& l : lines) {
        Canvas full(16, 12, false, RGB(0, 0, 0)), clipped(16, 12, false, RGB(0, 0, 0));
        HGDIOBJ oldFull = SelectObject(full.dc(), white), oldClipped = SelectObject(clipped.dc(), white);
        SetROP2(clipped.dc(), R2_XORPEN);
        IntersectClipRect(clipped.dc(), 2, 1, 14, 10);
        ExcludeClipRect(clipped.dc(), 6, 4, 9, 6);  // several clip rectangles
        ASSERT_EQ(GetClipRgn(clipped.dc(), clip), 1);
        Line(full.dc(), l.left, l.top, l.right, l.bottom);
        Line(clipped.dc(), l.left, l.top, l.right, l.bottom);
        SelectClipRgn(clipped.dc(), nullptr);  // GetPixel reads only inside the clip
        for (int y = 0; y < 12; ++y)
            for (int x = 0; x < 16; ++x) {
                COLORREF expect = PtInRegion(clip, x, y) ? GetPixel(full.dc(), x, y) : RGB(0, 0, 0);
                EXPECT_EQ(GetPixel(clipped.dc(), x, y), expect) << "line " << l.left << "," << l.top << " at " << x
                                                                << "," << y;
            }
        SelectObject(full.dc(), oldFull);
        SelectObject(clipped.dc(), oldClipped);
    }
    DeleteObject(white);
    DeleteObject(clip);
}

// Wide pens: the body's odd extra row goes up, round caps sit on both end points.
TEST_F(Lines, WidePensHaveRoundCapsOnBothEnds) {
    struct Case {
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
    for (const Case& t : cases) {
        SCOPED_TRACE(t.picture);
        Canvas c(t.w, t.h);
        PenAndBrush pb(c.dc(), CreatePen(PS_SOLID, t.width, RGB(0, 0, 0)), zel::test::StockBrush(NULL_BRUSH));
        Line(c.dc(), t.line.left, t.line.top, t.line.right, t.line.bottom);
        EXPECT_EQ(c.Picture(), t.picture);
    }
}

// PS_DASH: 18 pixels on, 6 off; gaps take the background colour only when OPAQUE, and
// the pattern carries on round the vertices of a polyline.
TEST_F(Lines, DashedPenGapsFollowTheBackgroundMode) {
    Canvas c(40, 1);
    PenAndBrush pb(c.dc(), CreatePen(PS_DASH, 1, RGB(0, 0, 0)), zel::test::StockBrush(NULL_BRUSH));
    Line(c.dc(), 0, 0, 40, 0);
    EXPECT_EQ(c.Picture(), std::string(18, '#') + std::string(6, 'o') + std::string(16, '#') + "\n");
    c.Fill(zel::test::kSentinel);
    SetBkMode(c.dc(), TRANSPARENT);
    Line(c.dc(), 0, 0, 40, 0);
    EXPECT_EQ(c.Picture(), std::string(18, '#') + std::string(6, '.') + std::string(16, '#') + "\n");

    Canvas corner(21, 11);
    PenAndBrush pb2(corner.dc(), CreatePen(PS_DASH, 1, RGB(0, 0, 0)), zel::test::StockBrush(NULL_BRUSH));
    SetBkMode(corner.dc(), TRANSPARENT);
    const POINT path[] = {{0, 0}, {20, 0}, {20, 10}};
    EXPECT_TRUE(Polyline(corner.dc(), path, 3));
    std::string column;
    for (int y = 0; y < 11; ++y) column += Canvas::Glyph(GetPixel(corner.dc(), 20, y));
    EXPECT_EQ(column, "....######.") << "pixels 20..23 of the pattern are a gap";
}

TEST_F(Lines, EveryMixModeCombinesPenAndDestination) {
    const COLORREF P = RGB(0x3C, 0x5A, 0x66), D = RGB(0x0F, 0x33, 0xA5);
    const std::function<COLORREF(COLORREF, COLORREF)> expect[16] = {
        [](COLORREF, COLORREF) { return 0u; },                  // R2_BLACK
        [](COLORREF p, COLORREF d) { return ~(p | d); },        // R2_NOTMERGEPEN
        [](COLORREF p, COLORREF d) { return ~p & d; },          // R2_MASKNOTPEN
        [](COLORREF p, COLORREF) { return ~p; },                // R2_NOTCOPYPEN
        [](COLORREF p, COLORREF d) { return p & ~d; },          // R2_MASKPENNOT
        [](COLORREF, COLORREF d) { return ~d; },                // R2_NOT
        [](COLORREF p, COLORREF d) { return p ^ d; },           // R2_XORPEN
        [](COLORREF p, COLORREF d) { return ~(p & d); },        // R2_NOTMASKPEN
        [](COLORREF p, COLORREF d) { return p & d; },           // R2_MASKPEN
        [](COLORREF p, COLORREF d) { return ~(p ^ d); },        // R2_NOTXORPEN
        [](COLORREF, COLORREF d) { return d; },                 // R2_NOP
        [](COLORREF p, COLORREF d) { return ~p | d; },          // R2_MERGENOTPEN
        [](COLORREF p, COLORREF) { return p; },                 // R2_COPYPEN
        [](COLORREF p, COLORREF d) { return p | ~d; },          // R2_MERGEPENNOT
        [](COLORREF p, COLORREF d) { return p | d; },           // R2_MERGEPEN
        [](COLORREF, COLORREF) { return 0xFFFFFFu; },           // R2_WHITE
    };
    for (int rop2 = R2_BLACK; rop2 <= R2_WHITE; ++rop2) {
        Canvas c(2, 1, false, D);
        PenAndBrush pb(c.dc(), CreatePen(PS_SOLID, 1, P), zel::test::StockBrush(NULL_BRUSH));
        EXPECT_EQ(SetROP2(c.dc(), rop2), R2_COPYPEN);
        Line(c.dc(), 0, 0, 1, 0);
        EXPECT_EQ(GetPixel(c.dc(), 0, 0), expect[rop2 - 1](P, D) & 0xFFFFFF) << "R2 code " << rop2;
        EXPECT_EQ(GetPixel(c.dc(), 1, 0), D) << "end point untouched";
    }
    Canvas c(1, 1);
    EXPECT_EQ(SetROP2(c.dc(), 0), 0);
    EXPECT_EQ(SetROP2(c.dc(), 17), 0);
    EXPECT_EQ(GetROP2(c.dc()), R2_COPYPEN);
}

// On a monochrome surface a pen is not "nearest colour": only exact black and white keep
// their pixel, the background colour keeps the background's, anything else the opposite.
TEST_F(Lines, PenColoursOnMonochromeDependOnTheBackgroundColour) {
    struct Case {
        COLORREF pen, bk;
        bool white;
    } cases[] = {
        {RGB(255, 255, 255), RGB(255, 255, 255), true}, {RGB(0, 0, 0), RGB(255, 255, 255), false},
        {RGB(128, 128, 128), RGB(255, 255, 255), false}, {RGB(200, 200, 200), RGB(200, 200, 200), true},
        {RGB(128, 128, 128), RGB(200, 200, 200), false}, {RGB(255, 0, 0), RGB(255, 0, 0), false},
        {RGB(0, 0, 255), RGB(255, 0, 0), true},          {RGB(255, 255, 255), RGB(255, 0, 0), true},
    };
    for (const Case& t : cases) {
        Canvas c(3, 1, true, t.white ? RGB(0, 0, 0) : RGB(255, 255, 255));
        PenAndBrush pb(c.dc(), CreatePen(PS_SOLID, 1, t.pen), zel::test::StockBrush(NULL_BRUSH));
        SetBkColor(c.dc(), t.bk);
        Line(c.dc(), 0, 0, 3, 0);
        EXPECT_EQ(c.Picture(), t.white ? "ooo\n" : "###\n") << std::hex << "pen " << t.pen << " bk " << t.bk;
    }
}

TEST_F(Lines, PolylineLeavesThePositionAndItsLastPoint) {
    Canvas c(7, 7);
    PenAndBrush pb(c.dc(), CreatePen(PS_SOLID, 1, RGB(0, 0, 0)), zel::test::StockBrush(NULL_BRUSH));
    MoveToEx(c.dc(), 0, 6, nullptr);
    const POINT path[] = {{1, 1}, {5, 1}, {5, 5}};
    EXPECT_TRUE(Polyline(c.dc(), path, 3));
    EXPECT_EQ(c.Picture(), ".......\n.#####.\n.....#.\n.....#.\n.....#.\n.......\n.......\n");
    POINT pos{};
    GetCurrentPositionEx(c.dc(), &pos);
    EXPECT_EQ(pos.x, 0);
    EXPECT_EQ(pos.y, 6);
    EXPECT_FALSE(Polyline(c.dc(), path, 1));
    EXPECT_FALSE(Polyline(c.dc(), nullptr, 3));
}

TEST_F(Lines, NullPenAndBadHandles) {
    Canvas c(5, 5);
    SelectObject(c.dc(), GetStockObject(NULL_PEN));
    Line(c.dc(), 0, 0, 4, 4);
    EXPECT_TRUE(c.Ink().empty());
    POINT pos{};
    GetCurrentPositionEx(c.dc(), &pos);
    EXPECT_EQ(pos.x, 4) << "the position moves even with a NULL pen";
    EXPECT_FALSE(LineTo(nullptr, 1, 1));
    HDC gone = CreateCompatibleDC(nullptr);
    DeleteDC(gone);
    EXPECT_FALSE(LineTo(gone, 1, 1));
    EXPECT_FALSE(MoveToEx(gone, 1, 1, nullptr));
    SelectObject(c.dc(), GetStockObject(BLACK_PEN));
}

}  // namespace
