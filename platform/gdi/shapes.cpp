// Rectangle, RoundRect and Ellipse: a brush interior and a pen outline.
//
// All three shapes live in the box [left, right) x [top, bottom). The outline runs along
// the box's inside edge pixels (so the right column is right - 1), anticlockwise from the
// top-right corner. A cosmetic pen is drawn over the already filled interior; a wide pen
// becomes one region, and the interior is filled only where the pen does not go, so each
// pixel is painted once whatever the mix mode.
#include <algorithm>
#include <cstdlib>

#include "gdi/stroke.h"

using namespace zel::gdi;

namespace {

// Ellipses are traced pixel by pixel; beyond this size a shape is refused rather than
// letting a hostile call spin for seconds.
constexpr int kMaxEllipse = 1 << 16;

RECT DeviceBox(DC& dc, int l, int t, int r, int b) {
    l = ClampCoord(l), t = ClampCoord(t), r = ClampCoord(r), b = ClampCoord(b);
    return RECT{dc.DevX(std::min(l, r)), dc.DevY(std::min(t, b)), dc.DevX(std::max(l, r)), dc.DevY(std::max(t, b))};
}

// PS_INSIDEFRAME pulls a wide outline in so that its outer edge is the box's edge.
void ApplyInsideFrame(const PenSource& pen, RECT& box) {
    if (pen.kind != PenSource::kWide || !pen.insideFrame) return;
    box.left += pen.width / 2;
    box.top += pen.width / 2;
    box.right -= (pen.width - 1) / 2;
    box.bottom -= (pen.width - 1) / 2;
}

void FillAndStroke(DC& dc, const PenSource& pen, std::span<const POINT> outline, const PixRegion& interior) {
    PatternSource brush = RealizeBrush(dc, dc.state.brush);
    if (pen.kind == PenSource::kWide) {
        SpanSet spans(*dc.Target());
        AddWidePath(spans, outline, true, pen.width);
        PixRegion stroke = spans.Build();
        if (brush.kind != PatternSource::kNull) {
            PixRegion inside = interior;
            pixman_region32_subtract(inside.get(), inside.get(), stroke.get());
            PaintBrush(dc, inside, brush, dc.state.rop2);
        }
        PaintPixels(dc, stroke, pen.pixel, pen.rop2);
        return;
    }
    PaintBrush(dc, interior, brush, dc.state.rop2);
    StrokeCosmetic(dc, pen, outline, true);
}

// The interior of a rounded box: every row inset by the corner ellipse's inset for it.
PixRegion RoundRectInterior(const PixelBuffer& target, const RECT& box, int eh, const QuarterEllipse& q) {
    SpanSet spans(target);
    const int yTop = box.top + (eh - 1) / 2, yBottom = box.bottom - eh + eh / 2;
    for (size_t v = 0; v < q.inset.size(); ++v) {
        spans.Add(yTop - static_cast<int>(v), box.left + q.inset[v], box.right - q.inset[v]);
        spans.Add(yBottom + static_cast<int>(v), box.left + q.inset[v], box.right - q.inset[v]);
    }
    spans.AddBox(box.left, yTop + 1, box.right, yBottom);
    return spans.Build();
}

// The outline of a rounded box as a closed list of vertices: the four quarter ellipses
// joined by the straight edges between them.
std::vector<POINT> RoundRectOutline(const RECT& box, int eh, const QuarterEllipse& q) {
    const int yTop = box.top + (eh - 1) / 2, yBottom = box.bottom - eh + eh / 2;
    const int xLeft = box.left, xRight = box.right - 1;
    std::vector<POINT> pts;
    pts.reserve(q.path.size() * 4);
    auto add = [&pts](int x, int y) {
        if (pts.empty() || pts.back().x != x || pts.back().y != y) pts.push_back(POINT{x, y});
    };
    for (const POINT& p : q.path) add(xRight - p.x, yTop - p.y);
    for (auto p = q.path.rbegin(); p != q.path.rend(); ++p) add(xLeft + p->x, yTop - p->y);
    for (const POINT& p : q.path) add(xLeft + p.x, yBottom + p.y);
    for (auto p = q.path.rbegin(); p != q.path.rend(); ++p) add(xRight - p->x, yBottom + p->y);
    while (pts.size() > 1 && pts.back().x == pts.front().x && pts.back().y == pts.front().y) pts.pop_back();
    return pts;
}

BOOL DrawRectangle(DC& dc, const PenSource& pen, const RECT& box) {
    // The interior stops one pixel short of right and bottom: with a NULL pen that is
    // the documented "one pixel smaller" fill.
    const POINT outline[4] = {
        {box.right - 1, box.top}, {box.left, box.top}, {box.left, box.bottom - 1}, {box.right - 1, box.bottom - 1}};
    FillAndStroke(dc, pen, outline, PixRegion(RECT{box.left, box.top, box.right - 1, box.bottom - 1}));
    return TRUE;
}

BOOL DrawRoundRect(DC& dc, RECT box, int ew, int eh) {
    PenSource pen = RealizePen(dc, dc.state.pen);
    ApplyInsideFrame(pen, box);
    // The corner ellipse is given by its full width and height, clamped to the box; a
    // corner of two pixels or less is no corner at all.
    ew = static_cast<int>(std::min<int64_t>(box.right - box.left, std::llabs(ew)));
    eh = static_cast<int>(std::min<int64_t>(box.bottom - box.top, std::llabs(eh)));
    if (ew <= 2 || eh <= 2) return DrawRectangle(dc, pen, box);
    if (ew > kMaxEllipse || eh > kMaxEllipse) return FALSE;
    QuarterEllipse q = TraceQuarterEllipse(ew, eh);
    std::vector<POINT> outline = RoundRectOutline(box, eh, q);
    FillAndStroke(dc, pen, outline, RoundRectInterior(*dc.Target(), box, eh, q));
    return TRUE;
}

// Runs a shape on a valid DC: an empty box draws nothing and succeeds.
template <class F>
BOOL Shape(HDC hdc, int l, int t, int r, int b, F&& draw) {
    DC* dc = LookupDC(hdc);
    if (!dc) return FALSE;
    RECT box = DeviceBox(*dc, l, t, r, b);
    if (box.left == box.right || box.top == box.bottom || !dc->Target()) return TRUE;
    return draw(*dc, box);
}

}  // namespace

extern "C" {

BOOL Rectangle(HDC hdc, int left, int top, int right, int bottom) {
    return Shape(hdc, left, top, right, bottom, [](DC& dc, RECT box) {
        PenSource pen = RealizePen(dc, dc.state.pen);
        ApplyInsideFrame(pen, box);
        return DrawRectangle(dc, pen, box);
    });
}

BOOL RoundRect(HDC hdc, int left, int top, int right, int bottom, int width, int height) {
    return Shape(hdc, left, top, right, bottom,
                 [=](DC& dc, const RECT& box) { return DrawRoundRect(dc, box, width, height); });
}

BOOL Ellipse(HDC hdc, int left, int top, int right, int bottom) {
    return Shape(hdc, left, top, right, bottom, [](DC& dc, const RECT& box) {
        return DrawRoundRect(dc, box, box.right - box.left, box.bottom - box.top);
    });
}

}  // extern "C"
