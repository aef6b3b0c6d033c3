// Cosmetic and wide strokes, the ellipse quadrant tracer and region painting.
#include "gdi/stroke.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace zel::gdi {

namespace {

int64_t FloorDiv(int64_t num, int64_t den) {
    if (den < 0) num = -num, den = -den;
    return num >= 0 ? num / den : -((-num + den - 1) / den);
}
int64_t CeilDiv(int64_t num, int64_t den) { return -FloorDiv(-num, den); }

// Whether position `pos` of a dash pattern lies in an "on" run.
bool DashOn(std::span<const uint8_t> dashes, int64_t pos) {
    for (size_t i = 0;; i = (i + 1) % dashes.size()) {
        if (pos < dashes[i]) return (i & 1) == 0;
        pos -= dashes[i];
    }
}

int DashLength(std::span<const uint8_t> dashes) {
    int n = 0;
    for (uint8_t d : dashes) n += d;
    return n;
}

// The first i in [lo, hi) for which `pred` holds, or hi; pred must turn from false to true
// at most once over the range.
template <class Pred>
int64_t FirstTrue(int64_t lo, int64_t hi, Pred pred) {
    while (lo < hi) {
        const int64_t mid = lo + (hi - lo) / 2;
        if (pred(mid))
            hi = mid;
        else
            lo = mid + 1;
    }
    return lo;
}

// One cosmetic segment from a up to (not including) b. The minor coordinate of the i-th
// pixel is the exact line's value rounded to nearest, a tie going to the smaller
// coordinate, so a line and its reverse cover the same pixels. Each clip rectangle is
// applied once per segment: the major-axis range inside it, narrowed (the minor
// coordinate being monotonic) to where the minor coordinate is inside too; the pixels of
// that range then follow with an error term, without a division or clip test each.
void CosmeticSegment(DC& dc, PixelBuffer& t, const PenSource& pen, POINT a, POINT b, int64_t& dashPos) {
    const int64_t dx = int64_t{b.x} - a.x, dy = int64_t{b.y} - a.y;
    const int64_t n = std::max(std::llabs(dx), std::llabs(dy));
    if (n == 0) return;
    const bool xMajor = std::llabs(dx) >= std::llabs(dy);
    const int64_t major0 = xMajor ? a.x : a.y, minor0 = xMajor ? a.y : a.x;
    const int64_t dMinor = xMajor ? dy : dx;
    const int step = (xMajor ? dx : dy) > 0 ? 1 : -1;
    const int dashLen = pen.dashes.empty() ? 0 : DashLength(pen.dashes);
    const uint32_t mask = t.mask();
    auto minorAt = [&](int64_t i) { return minor0 + CeilDiv(2 * i * dMinor - n, 2 * n); };
    const bool plain = dashLen == 0 && pen.rop2 == R2_COPYPEN;
    const uint32_t solid = pen.pixel & mask;
    for (const RECT& c : dc.ClipRects()) {
        const int64_t lo = xMajor ? c.left : c.top, hi = xMajor ? c.right : c.bottom;
        const int64_t minorLo = xMajor ? c.top : c.left, minorHi = xMajor ? c.bottom : c.right;
        int64_t i0 = step > 0 ? lo - major0 : major0 - hi + 1;
        int64_t i1 = step > 0 ? hi - major0 : major0 - lo + 1;
        i0 = std::max<int64_t>(i0, 0);
        i1 = std::min(i1, n);
        if (i0 >= i1) continue;
        if (dMinor >= 0) {
            i0 = FirstTrue(i0, i1, [&](int64_t i) { return minorAt(i) >= minorLo; });
            i1 = FirstTrue(i0, i1, [&](int64_t i) { return minorAt(i) >= minorHi; });
        } else {
            i0 = FirstTrue(i0, i1, [&](int64_t i) { return minorAt(i) < minorHi; });
            i1 = FirstTrue(i0, i1, [&](int64_t i) { return minorAt(i) < minorLo; });
        }
        if (i0 >= i1) continue;
        pixelsWritten += static_cast<uint64_t>(i1 - i0);
        if (plain && dMinor == 0) {
            // A solid copy-pen line along a row or a column: no stepping, no ROP.
            const int64_t first = major0 + step * i0, last = major0 + step * (i1 - 1);
            const int64_t from = std::min(first, last), count = i1 - i0;
            if (xMajor) {
                FillPixels(t.row(static_cast<int>(minor0)) + from, static_cast<size_t>(count), solid);
            } else {
                for (int64_t y = from; y < from + count; ++y) t.row(static_cast<int>(y))[minor0] = solid;
            }
            continue;
        }
        // minor = minor0 + q with q = ceil(num / 2n), num = 2 i dMinor - n; rem = num - 2n q
        // stays in (-2n, 0], and q moves by at most one a step since |dMinor| <= n.
        const int64_t den = 2 * n, num0 = 2 * i0 * dMinor - n;
        int64_t q = CeilDiv(num0, den), rem = num0 - q * den;
        int64_t major = major0 + step * i0;
        for (int64_t i = i0; i < i1; ++i, major += step) {
            uint32_t p = pen.pixel;
            bool paint = true;
            if (dashLen && !DashOn(pen.dashes, (dashPos + i) % dashLen)) {
                paint = pen.paintGaps;
                p = pen.gapPixel;
            }
            if (paint) {
                const int64_t minor = minor0 + q;
                const int x = static_cast<int>(xMajor ? major : minor), y = static_cast<int>(xMajor ? minor : major);
                uint32_t& d = t.row(y)[x];
                d = Rop2(pen.rop2, p, d) & mask;
            }
            rem += 2 * dMinor;
            if (rem > 0)
                ++q, rem -= den;
            else if (rem <= -den)
                --q, rem += den;
        }
    }
    dashPos += n;
}

int64_t RoundHalfUp(double v) { return static_cast<int64_t>(std::floor(v + 0.5)); }

// Scan-converts a convex polygon with integer vertices: on row y, the pixels from the
// left edge's x to the right edge's x, each rounded up (left edge in, right edge out;
// top vertex row in, bottom vertex row out), as Win32 polygon regions do.
void AddPolygon(SpanSet& spans, std::span<const POINT> poly) {
    int64_t top = poly[0].y, bottom = poly[0].y;
    for (const POINT& p : poly) top = std::min<int64_t>(top, p.y), bottom = std::max<int64_t>(bottom, p.y);
    top = std::max<int64_t>(top, 0);
    bottom = std::min<int64_t>(bottom, spans.height());
    std::vector<int64_t> xs;
    for (int64_t y = top; y < bottom; ++y) {
        xs.clear();
        for (size_t i = 0; i < poly.size(); ++i) {
            const POINT& p = poly[i];
            const POINT& q = poly[(i + 1) % poly.size()];
            if (p.y == q.y || y < std::min(p.y, q.y) || y >= std::max(p.y, q.y)) continue;
            xs.push_back(CeilDiv((y - p.y) * (int64_t{q.x} - p.x) + int64_t{p.x} * (q.y - p.y), int64_t{q.y} - p.y));
        }
        std::sort(xs.begin(), xs.end());
        for (size_t i = 0; i + 1 < xs.size(); i += 2) spans.Add(y, xs[i], xs[i + 1]);
    }
}

// The body of one wide segment (no caps). Axis-aligned bodies are rectangles whose odd
// extra pixel of thickness lies above / left of the line. Slanted bodies are the segment
// shifted across by two half widths, each rounded per axis, the longer half on the
// side facing up-right for a segment running down-right (mirrored for other directions).
void AddWideSegment(SpanSet& spans, POINT a, POINT b, int w) {
    const int64_t dx = int64_t{b.x} - a.x, dy = int64_t{b.y} - a.y;
    if (dx == 0 && dy == 0) return;
    if (dy == 0) {
        spans.AddBox(std::min(a.x, b.x), a.y - w / 2, std::max(a.x, b.x), a.y - w / 2 + w);
        return;
    }
    if (dx == 0) {
        spans.AddBox(a.x - w / 2, std::min(a.y, b.y), a.x - w / 2 + w, std::max(a.y, b.y));
        return;
    }
    const double len = std::hypot(static_cast<double>(dx), static_cast<double>(dy));
    const double across_x = w * std::fabs(static_cast<double>(dy)) / len;
    const double across_y = w * std::fabs(static_cast<double>(dx)) / len;
    int64_t shortX = RoundHalfUp(across_x / 2), shortY = RoundHalfUp(across_y / 2);
    int64_t longX = RoundHalfUp((across_x + 1) / 2), longY = RoundHalfUp((across_y + 1) / 2);
    if (dx < 0) shortY = -shortY, longY = -longY;
    if (dy < 0) {
        std::swap(shortX, longX);
        std::swap(shortY, longY);
        shortX = -shortX, longX = -longX;
    }
    const POINT quad[4] = {
        {static_cast<LONG>(a.x - shortX), static_cast<LONG>(a.y + shortY)},
        {static_cast<LONG>(a.x + longX), static_cast<LONG>(a.y - longY)},
        {static_cast<LONG>(b.x + longX), static_cast<LONG>(b.y - longY)},
        {static_cast<LONG>(b.x - shortX), static_cast<LONG>(b.y + shortY)},
    };
    AddPolygon(spans, quad);
}

// A round pen tip: the w x w ellipse whose box starts w/2 pixels above and left of the point.
void AddDisc(SpanSet& spans, POINT c, int w, const std::vector<int>& inset) {
    const int64_t left = int64_t{c.x} - w / 2, top = int64_t{c.y} - w / 2;
    for (size_t v = 0; v < inset.size(); ++v) {
        const int64_t x0 = left + inset[v], x1 = left + w - inset[v];
        spans.Add(top + (w - 1) / 2 - static_cast<int64_t>(v), x0, x1);
        spans.Add(top + w / 2 + static_cast<int64_t>(v), x0, x1);
    }
}

}  // namespace

void SpanSet::Add(int64_t y, int64_t x0, int64_t x1) {
    if (y < 0 || y >= height_) return;
    x0 = std::max<int64_t>(x0, 0);
    x1 = std::min<int64_t>(x1, width_);
    if (x0 >= x1) return;
    boxes_.push_back(pixman_box32_t{static_cast<int32_t>(x0), static_cast<int32_t>(y), static_cast<int32_t>(x1),
                                    static_cast<int32_t>(y + 1)});
}

void SpanSet::AddBox(int64_t x0, int64_t y0, int64_t x1, int64_t y1) {
    x0 = std::max<int64_t>(x0, 0);
    y0 = std::max<int64_t>(y0, 0);
    x1 = std::min<int64_t>(x1, width_);
    y1 = std::min<int64_t>(y1, height_);
    if (x0 >= x1 || y0 >= y1) return;
    boxes_.push_back(pixman_box32_t{static_cast<int32_t>(x0), static_cast<int32_t>(y0), static_cast<int32_t>(x1),
                                    static_cast<int32_t>(y1)});
}

PixRegion SpanSet::Build() const {
    PixRegion out;
    if (boxes_.empty()) return out;
    // pixman validates the list, merging overlapping boxes into one banded region.
    pixman_region32_t tmp;
    pixman_region32_init_rects(&tmp, boxes_.data(), static_cast<int>(boxes_.size()));
    pixman_region32_union(out.get(), out.get(), &tmp);
    pixman_region32_fini(&tmp);
    return out;
}

void StrokeCosmetic(DC& dc, const PenSource& pen, std::span<const POINT> points, bool closed) {
    PixelBuffer* t = dc.Target();
    if (!t || pen.kind != PenSource::kCosmetic || points.size() < 2) return;
    int64_t dashPos = 0;
    for (size_t i = 0; i + 1 < points.size(); ++i) CosmeticSegment(dc, *t, pen, points[i], points[i + 1], dashPos);
    if (closed) CosmeticSegment(dc, *t, pen, points.back(), points.front(), dashPos);
}

void AddWidePath(SpanSet& spans, std::span<const POINT> points, bool closed, int width) {
    if (points.empty()) return;
    const std::vector<int> inset = TraceQuarterEllipse(width, width).inset;
    for (size_t i = 0; i < points.size(); ++i) {
        AddDisc(spans, points[i], width, inset);
        if (i + 1 < points.size()) AddWideSegment(spans, points[i], points[i + 1], width);
    }
    if (closed && points.size() > 1) AddWideSegment(spans, points.back(), points.front(), width);
}

void PaintPixels(DC& dc, const PixRegion& rgn, uint32_t pixel, int rop2) {
    PatternSource solid;
    solid.kind = PatternSource::kSolid;
    solid.pixel = pixel;
    PaintBrush(dc, rgn, solid, rop2);
}

void PaintBrush(DC& dc, const PixRegion& rgn, const PatternSource& brush, int rop2) {
    if (brush.kind == PatternSource::kNull) return;
    const uint8_t rop = Rop2AsRop3(rop2);
    int n = 0;
    const pixman_box32_t* boxes = pixman_region32_rectangles(rgn.mut(), &n);
    if (brush.kind == PatternSource::kSolid && rop == 0xF0 && n > 1) {
        // A solid copy-pen fill of a shape's rows (an ellipse has one box per row or two):
        // each box clipped and filled here, without a whole PatFill set-up per box.
        PixelBuffer* t = dc.Target();
        if (!t) return;
        const std::vector<RECT>& clip = dc.ClipRects();
        for (int i = 0; i < n; ++i)
            for (const RECT& c : clip) {
                const int l = std::max<int>(boxes[i].x1, c.left), r = std::min<int>(boxes[i].x2, c.right);
                const int top = std::max<int>(boxes[i].y1, c.top), bottom = std::min<int>(boxes[i].y2, c.bottom);
                if (l >= r || top >= bottom) continue;
                pixelsWritten += static_cast<uint64_t>(r - l) * static_cast<uint64_t>(bottom - top);
                for (int y = top; y < bottom; ++y) FillPixels(t->row(y) + l, static_cast<size_t>(r - l), brush.pixel);
            }
        return;
    }
    for (int i = 0; i < n; ++i) PatFill(dc, brush, RECT{boxes[i].x1, boxes[i].y1, boxes[i].x2, boxes[i].y2}, rop);
}

void StrokePath(DC& dc, const PenSource& pen, std::span<const POINT> points, bool closed) {
    const PixelBuffer* t = dc.Target();
    if (!t) return;
    if (pen.kind == PenSource::kCosmetic) {
        StrokeCosmetic(dc, pen, points, closed);
    } else if (pen.kind == PenSource::kWide) {
        SpanSet spans(*t);
        AddWidePath(spans, points, closed, pen.width);
        PaintPixels(dc, spans.Build(), pen.pixel, pen.rop2);
    }
}

// A midpoint ellipse walk with an exact integer error term (the "rasterizing curves"
// formulation): from the side's middle it steps up, out, or both, whichever keeps the
// pixel closest to the curve. A flat ellipse ends its walk before reaching the last rows;
// those rows get the centre column(s).
QuarterEllipse TraceQuarterEllipse(int w, int h) {
    QuarterEllipse q;
    if (w < 1 || h < 1) return q;
    const int vmax = (h - 1) / 2;
    q.inset.assign(vmax + 1, -1);
    auto plot = [&q, vmax](int u, int v) {
        if (v > vmax) return false;
        if (q.path.empty() || q.path.back().x != u || q.path.back().y != v) q.path.push_back(POINT{u, v});
        if (q.inset[v] < 0) q.inset[v] = u;
        return true;
    };
    const int64_t a = w - 1, b = h - 1, b1 = b & 1;
    int64_t dx = 4 * (1 - a) * b * b, dy = 4 * (b1 + 1) * a * a;
    int64_t err = dx + dy + b1 * a * a;
    const int64_t stepDy = 8 * a * a, stepDx = 8 * b * b;
    int x0 = 0, x1 = w - 1, v = 0;
    do {
        if (!plot(x0, v)) break;
        const int64_t e2 = 2 * err;
        if (e2 <= dy) {
            ++v;
            dy += stepDy;
            err += dy;
        }
        if (e2 >= dx || 2 * err > dy) {
            ++x0;
            --x1;
            dx += stepDx;
            err += dx;
        }
    } while (x0 <= x1);
    while (v <= vmax) plot(std::max(x0 - 1, 0), v++);
    return q;
}

}  // namespace zel::gdi
