// Glyph blits: monochrome and antialiased coverage onto 32-bpp and 1-bpp surfaces.
#include "gdi/text/text_render.h"

#include <algorithm>

#include "gdi/raster.h"

namespace zel::gdi {

namespace {

// One glyph row segment: coverage[0..n) onto dst[0..n). The painter is chosen once per
// call from the surface format and the font's rendering.
struct Painter {
    uint32_t pixel = 0;  // the text colour in the surface's format
    void (*span)(const Painter&, uint32_t* dst, const uint8_t* coverage, int n) = nullptr;
};

void SpanSolid(const Painter& p, uint32_t* dst, const uint8_t* cov, int n) {
    for (int i = 0; i < n; ++i)
        if (cov[i] >= 128) dst[i] = p.pixel;
}

// dst + (src - dst) * a / 255 per channel, exact for every a; GDI leaves alpha 0.
inline uint32_t Mix(uint32_t src, uint32_t dst, uint32_t a) {
    uint32_t out = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
        uint32_t s = (src >> shift) & 0xFF, d = (dst >> shift) & 0xFF;
        uint32_t t = s * a + d * (255 - a) + 128;
        out |= (((t + (t >> 8)) >> 8) & 0xFF) << shift;
    }
    return out;
}

void SpanBlend(const Painter& p, uint32_t* dst, const uint8_t* cov, int n) {
    for (int i = 0; i < n; ++i) {
        uint32_t a = cov[i];
        if (a == 0) continue;
        dst[i] = a == 255 ? p.pixel : Mix(p.pixel, dst[i], a);
    }
}

Painter PainterFor(const DC& dc, const PixelBuffer& target, bool antialiased) {
    Painter p;
    p.pixel = ColorToPixel(target, dc.state.textColor);
    // A monochrome surface has no shades: coverage thresholds at one half.
    p.span = antialiased && !target.mono() ? SpanBlend : SpanSolid;
    return p;
}

RECT Intersect(const RECT& a, const RECT& b) {
    return RECT{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                std::min(a.bottom, b.bottom)};
}

}  // namespace

int DrawGlyphs(DC& dc, RealizedFont& font, int penX, int baseline, const WCHAR* text, int count, const INT* dx,
               const RECT* limit) {
    PixelBuffer* target = dc.Target();
    int start = penX;
    if (!target) {
        for (int i = 0; i < count; ++i) penX += dx ? dx[i] : font.Advance(static_cast<char32_t>(text[i]));
        return penX - start;
    }
    Painter painter = PainterFor(dc, *target, font.Antialiased());
    for (int i = 0; i < count; ++i) {
        const GlyphInfo& g = font.Glyph(static_cast<char32_t>(text[i]));
        const text::GlyphImage* image = font.Image(g);
        if (image && !image->coverage.empty()) {
            int left = penX + image->left, top = baseline - image->top;
            RECT box{left, top, left + image->width, top + image->height};
            if (limit) box = Intersect(box, *limit);
            if (box.left < box.right && box.top < box.bottom) {
                dc.ForEachClipped(box, [&](const RECT& r) {
                    for (int y = r.top; y < r.bottom; ++y) {
                        const uint8_t* cov = image->coverage.data() +
                                             static_cast<size_t>(y - top) * image->width + (r.left - left);
                        painter.span(painter, target->row(y) + r.left, cov, r.right - r.left);
                    }
                });
            }
        }
        penX += dx ? dx[i] : image ? image->advance : g.advance;
    }
    return penX - start;
}

void FillSolid(DC& dc, const RECT& device, COLORREF color) {
    PixelBuffer* target = dc.Target();
    if (!target || device.left >= device.right || device.top >= device.bottom) return;
    PatternSource solid;
    solid.kind = PatternSource::kSolid;
    solid.pixel = ColorToPixel(*target, color);
    PatFill(dc, solid, device, 0xF0);  // PATCOPY
}

int TextWidth(RealizedFont& font, const WCHAR* text, int count) {
    int width = 0;
    for (int i = 0; i < count; ++i) width += font.Advance(static_cast<char32_t>(text[i]));
    return width;
}

}  // namespace zel::gdi
