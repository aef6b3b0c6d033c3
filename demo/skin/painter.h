// The drawing kit of the default skin. A piece is drawn at a whole multiple of its size
// with the platform's own GDI (FillRect bands for gradients, RoundRect, Ellipse, wide-pen
// Polyline, regions, ROP3 blits for masking) and then reduced, so GDI's aliased edges
// come out smooth. Coordinates are piece pixels as doubles; the painter scales them.
#pragma once

#include <windows.h>

#include <functional>
#include <initializer_list>

#include "skin/canvas.h"

namespace zel::demo {

struct Box {
    double left = 0, top = 0, right = 0, bottom = 0;

    double Width() const { return right - left; }
    double Height() const { return bottom - top; }
    double CenterX() const { return (left + right) / 2; }
    double CenterY() const { return (top + bottom) / 2; }
    Box Inset(double d) const { return {left + d, top + d, right - d, bottom - d}; }
    Box Inset(double dx, double dy) const { return {left + dx, top + dy, right - dx, bottom - dy}; }
    Box Offset(double dx, double dy) const { return {left + dx, top + dy, right + dx, bottom + dy}; }
    static Box Centered(double cx, double cy, double w, double h) {
        return {cx - w / 2, cy - h / 2, cx + w / 2, cy + h / 2};
    }
};

struct Pt {
    double x = 0, y = 0;
};

// The colour a share t (0..1) of the way from a to b, per channel, rounded.
COLORREF Mix(COLORREF a, COLORREF b, double t);

class Painter;
using Layer = std::function<void(Painter&)>;

class Painter {
public:
    // In silhouette mode every colour is drawn white: the pass that finds a piece's shape
    // on a black canvas.
    Painter(Canvas& canvas, int scale, bool silhouette = false);

    int scale() const { return scale_; }
    bool silhouette() const { return silhouette_; }
    Canvas& canvas() { return canvas_; }

    void Fill(const Box& box, COLORREF color);
    // One FillRect band per canvas row (column), each the colour at the band's centre.
    void VerticalGradient(const Box& box, COLORREF top, COLORREF bottom);
    void HorizontalGradient(const Box& box, COLORREF left, COLORREF right);
    void RoundRect(const Box& box, double radius, COLORREF color);
    void Ellipse(const Box& box, COLORREF color);
    // A wide solid pen: round caps and joins, so each end point is covered.
    void Stroke(std::initializer_list<Pt> points, double width, COLORREF color);
    // Scanline fill of a convex polygon, one FillRect per canvas row.
    void Polygon(std::initializer_list<Pt> points, COLORREF color);
    // A region given in canvas pixels.
    void FillRegion(HRGN region, COLORREF color);

    // Paints `fill` only where `shape` paints; elsewhere the canvas keeps its pixels. The
    // shape is drawn white on black and used as a mask: the layer is ANDed with it, the
    // canvas ANDed with its inverse (DSna) and the two ORed together.
    void Through(const Layer& shape, const Layer& fill);

private:
    COLORREF Ink(COLORREF color) const { return silhouette_ ? RGB(255, 255, 255) : color; }
    int Device(double v) const;
    RECT Device(const Box& box) const;

    Canvas& canvas_;
    int scale_;
    bool silhouette_;
};

}  // namespace zel::demo
