// LineTo and Polyline.
//
// A cosmetic (one pixel) line stops before its end point, so chained lines meet without
// overlapping. A wide pen has round caps centred on both end points, so it does paint
// the end point.
#include <vector>

#include "gdi/stroke.h"

using namespace zel::gdi;

namespace {

POINT Device(const DC& dc, POINT p) { return POINT{dc.DevX(ClampCoord(p.x)), dc.DevY(ClampCoord(p.y))}; }

}  // namespace

extern "C" {

// The current position moves to the end point even when nothing is drawn.
BOOL LineTo(HDC hdc, int x, int y) {
    DC* dc = LookupDC(hdc);
    if (!dc) return FALSE;
    const POINT from = dc->state.curPos;
    dc->state.curPos = POINT{x, y};
    const POINT pts[2] = {Device(*dc, from), Device(*dc, POINT{x, y})};
    StrokePath(*dc, RealizePen(*dc, dc->state.pen), pts, false);
    return TRUE;
}

// Polyline neither uses nor moves the current position.
BOOL Polyline(HDC hdc, const POINT* points, int count) {
    DC* dc = LookupDC(hdc);
    if (!dc || !points || count < 2) return FALSE;
    std::vector<POINT> pts(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) pts[i] = Device(*dc, points[i]);
    StrokePath(*dc, RealizePen(*dc, dc->state.pen), pts, false);
    return TRUE;
}

}  // extern "C"
