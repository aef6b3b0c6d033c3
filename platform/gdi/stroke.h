// Pens and the geometry shared by lines, shapes and the focus rectangle.
//
// Coordinates here are surface (device) coordinates; callers convert with DC::DevX/DevY.
// A stroke never draws a pixel twice within one call except where Win32 itself does
// (a cosmetic path that revisits a pixel), which matters for XOR-type mix modes.
#pragma once

#include <span>
#include <vector>

#include "gdi/raster.h"

namespace zel::gdi {

// Logical coordinates are limited to the 27-bit range Win32 documents for GDI, which
// keeps every product below in 64-bit arithmetic and every DevX/DevY free of overflow.
constexpr int kCoordLimit = 1 << 27;
inline int ClampCoord(int v) { return v < -kCoordLimit ? -kCoordLimit : v > kCoordLimit ? kCoordLimit : v; }

// COLORREF -> RGB: a PALETTEINDEX (top byte 1) picks from the 20-entry default palette,
// any other top byte is ignored.
COLORREF ResolveColor(COLORREF c);

// A solid pen or gap colour on a monochrome surface (no colour table of its own): exact
// black and white keep their pixel, the DC background colour keeps the background's
// pixel, and every other colour takes the opposite of the background's pixel.
uint32_t MonoPenPixel(COLORREF color, COLORREF bkColor);

// Binary raster operation (R2_*): bit ((P << 1) | D) of (code - 1) is the result.
inline uint32_t Rop2(int rop2, uint32_t p, uint32_t d) {
    unsigned t = static_cast<unsigned>(rop2 - 1);
    return ((t & 1) ? ~p & ~d : 0) | ((t & 2) ? ~p & d : 0) | ((t & 4) ? p & ~d : 0) | ((t & 8) ? p & d : 0);
}
// The same operation as a ROP3 index (pattern = pen or brush, no source), for PatFill.
uint8_t Rop2AsRop3(int rop2);

// A pen realised for one DC and target surface.
struct PenSource {
    enum Kind { kNull, kCosmetic, kWide } kind = kNull;
    uint32_t pixel = 0;       // pen colour in the target's format
    uint32_t gapPixel = 0;    // background colour, for the gaps of styled pens
    bool paintGaps = false;   // styled pens fill their gaps only in OPAQUE mode
    int width = 1;            // kWide: the geometric width in pixels
    bool insideFrame = false; // PS_INSIDEFRAME: wide outlines stay inside the shape
    std::span<const uint8_t> dashes;  // alternating on/off runs in pixels; empty = solid
    int rop2 = R2_COPYPEN;
};
PenSource RealizePen(DC& dc, const Pen* pen);
// The dotted pen DrawFocusRect strokes with: every other pixel, inverting.
PenSource FocusPen(DC& dc);

// A set of pixels built from spans, limited to the target surface, painted once.
class SpanSet {
public:
    explicit SpanSet(const PixelBuffer& target) : width_(target.width), height_(target.height) {}
    void Add(int64_t y, int64_t x0, int64_t x1);  // [x0, x1) on row y
    void AddBox(int64_t x0, int64_t y0, int64_t x1, int64_t y1);
    PixRegion Build() const;
    int height() const { return height_; }

private:
    int width_, height_;
    std::vector<pixman_box32_t> boxes_;
};

// Draws a cosmetic (one pixel) polyline: each segment stops before its end point; the
// dash pattern runs on from segment to segment.
void StrokeCosmetic(DC& dc, const PenSource& pen, std::span<const POINT> points, bool closed);

// The pixels covered by a wide pen along a polyline: every vertex gets a round disc (caps
// and joins are round) and every segment its body.
void AddWidePath(SpanSet& spans, std::span<const POINT> points, bool closed, int width);

// Paints a region (surface coordinates) with a solid pixel and a mix mode, clipped.
void PaintPixels(DC& dc, const PixRegion& rgn, uint32_t pixel, int rop2);
// Paints a region with a realised brush and a mix mode, clipped.
void PaintBrush(DC& dc, const PixRegion& rgn, const PatternSource& brush, int rop2);

// Strokes `points` with `pen`: cosmetic pens directly, wide pens as one region.
void StrokePath(DC& dc, const PenSource& pen, std::span<const POINT> points, bool closed);

// The 8-connected pixels of one quarter of a w x h ellipse, from the middle of its side
// (u = 0, v = 0) to its top or bottom: u counts pixels in from the side, v rows out from
// the middle row. Also gives, per v, the first u reached (the ellipse's inset on that row).
struct QuarterEllipse {
    std::vector<POINT> path;  // x = u, y = v
    std::vector<int> inset;   // indexed by v, 0 .. (h - 1) / 2
};
QuarterEllipse TraceQuarterEllipse(int w, int h);

}  // namespace zel::gdi
