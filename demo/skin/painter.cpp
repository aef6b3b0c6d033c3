#include "skin/painter.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zel::demo {

namespace {

constexpr DWORD kDestAndNotSource = 0x00220326;  // DSna

// A GDI object selected for the lifetime of the guard and deleted after.
class Selected {
public:
    Selected(HDC dc, HGDIOBJ object) : dc_(dc), object_(object), old_(SelectObject(dc, object)) {}
    ~Selected() {
        SelectObject(dc_, old_);
        DeleteObject(object_);  // stock objects ignore this
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ object_;
    HGDIOBJ old_;
};

void FillSolid(HDC dc, const RECT& rc, COLORREF color) {
    HBRUSH brush = CreateSolidBrush(color);
    FillRect(dc, &rc, brush);
    DeleteObject(brush);
}

int Channel(COLORREF c, int shift) { return static_cast<int>((c >> shift) & 0xFF); }

}  // namespace

COLORREF Mix(COLORREF a, COLORREF b, double t) {
    t = std::clamp(t, 0.0, 1.0);
    auto mix = [&](int shift) {
        return static_cast<int>(std::lround(Channel(a, shift) + (Channel(b, shift) - Channel(a, shift)) * t));
    };
    return RGB(mix(0), mix(8), mix(16));
}

Painter::Painter(Canvas& canvas, int scale, bool silhouette)
    : canvas_(canvas), scale_(scale), silhouette_(silhouette) {}

int Painter::Device(double v) const { return static_cast<int>(std::lround(v * scale_)); }

RECT Painter::Device(const Box& box) const {
    return RECT{Device(box.left), Device(box.top), Device(box.right), Device(box.bottom)};
}

void Painter::Fill(const Box& box, COLORREF color) { FillSolid(canvas_.dc(), Device(box), Ink(color)); }

void Painter::VerticalGradient(const Box& box, COLORREF top, COLORREF bottom) {
    RECT rc = Device(box);
    int rows = rc.bottom - rc.top;
    for (int i = 0; i < rows; ++i) {
        RECT band{rc.left, rc.top + i, rc.right, rc.top + i + 1};
        FillSolid(canvas_.dc(), band, Ink(Mix(top, bottom, (i + 0.5) / rows)));
    }
}

void Painter::HorizontalGradient(const Box& box, COLORREF left, COLORREF right) {
    RECT rc = Device(box);
    int columns = rc.right - rc.left;
    for (int i = 0; i < columns; ++i) {
        RECT band{rc.left + i, rc.top, rc.left + i + 1, rc.bottom};
        FillSolid(canvas_.dc(), band, Ink(Mix(left, right, (i + 0.5) / columns)));
    }
}

// Outlined with a one-pixel pen of the fill colour: the documented bounds of an outlined
// shape are exactly [left, right) x [top, bottom), where a NULL pen's are not settled.
void Painter::RoundRect(const Box& box, double radius, COLORREF color) {
    RECT rc = Device(box);
    Selected brush(canvas_.dc(), CreateSolidBrush(Ink(color)));
    Selected pen(canvas_.dc(), CreatePen(PS_SOLID, 1, Ink(color)));
    int corner = Device(2 * radius);
    ::RoundRect(canvas_.dc(), rc.left, rc.top, rc.right, rc.bottom, corner, corner);
}

void Painter::Ellipse(const Box& box, COLORREF color) {
    RECT rc = Device(box);
    Selected brush(canvas_.dc(), CreateSolidBrush(Ink(color)));
    Selected pen(canvas_.dc(), CreatePen(PS_SOLID, 1, Ink(color)));
    ::Ellipse(canvas_.dc(), rc.left, rc.top, rc.right, rc.bottom);
}

void Painter::Stroke(std::initializer_list<Pt> points, double width, COLORREF color) {
    std::vector<POINT> device;
    for (const Pt& p : points) device.push_back(POINT{Device(p.x), Device(p.y)});
    Selected pen(canvas_.dc(), CreatePen(PS_SOLID, std::max(1, Device(width)), Ink(color)));
    Polyline(canvas_.dc(), device.data(), static_cast<int>(device.size()));
}

void Painter::Polygon(std::initializer_list<Pt> points, COLORREF color) {
    std::vector<Pt> v;
    for (const Pt& p : points) v.push_back(Pt{p.x * scale_, p.y * scale_});
    if (v.size() < 3) return;
    double top = v[0].y, bottom = v[0].y;
    for (const Pt& p : v) top = std::min(top, p.y), bottom = std::max(bottom, p.y);
    HBRUSH brush = CreateSolidBrush(Ink(color));
    // A canvas pixel belongs to the polygon when its centre does.
    for (int y = static_cast<int>(std::floor(top)); y < static_cast<int>(std::ceil(bottom)); ++y) {
        double cy = y + 0.5, left = 1e9, right = -1e9;
        for (size_t i = 0; i < v.size(); ++i) {
            const Pt& a = v[i];
            const Pt& b = v[(i + 1) % v.size()];
            if ((a.y <= cy) == (b.y <= cy)) continue;
            double x = a.x + (cy - a.y) * (b.x - a.x) / (b.y - a.y);
            left = std::min(left, x), right = std::max(right, x);
        }
        RECT row{static_cast<LONG>(std::lround(left)), y, static_cast<LONG>(std::lround(right)), y + 1};
        if (row.left < row.right) FillRect(canvas_.dc(), &row, brush);
    }
    DeleteObject(brush);
}

void Painter::FillRegion(HRGN region, COLORREF color) {
    HBRUSH brush = CreateSolidBrush(Ink(color));
    FillRgn(canvas_.dc(), region, brush);
    DeleteObject(brush);
}

void Painter::Through(const Layer& shape, const Layer& fill) {
    const int w = canvas_.width(), h = canvas_.height();
    Canvas mask(w, h);
    Painter maskPainter(mask, scale_, true);
    shape(maskPainter);
    if (silhouette_) {  // only the outline matters in this pass
        BitBlt(canvas_.dc(), 0, 0, w, h, mask.dc(), 0, 0, SRCPAINT);
        return;
    }
    Canvas layer(w, h);
    Painter layerPainter(layer, scale_);
    fill(layerPainter);
    BitBlt(layer.dc(), 0, 0, w, h, mask.dc(), 0, 0, SRCAND);
    BitBlt(canvas_.dc(), 0, 0, w, h, mask.dc(), 0, 0, kDestAndNotSource);
    BitBlt(canvas_.dc(), 0, 0, w, h, layer.dc(), 0, 0, SRCPAINT);
}

}  // namespace zel::demo
