// Glyph blits: monochrome and antialiased coverage onto 32-bpp and 1-bpp surfaces.
#include "gdi/text/text_render.h"

#include <algorithm>

#include "gdi/raster.h"

namespace zel::gdi {

namespace {

// (src * a + dst * (255 - a)) / 255 per channel, rounded, exact for every a; red and blue
// share one multiplication (their sums cannot reach each other). GDI leaves alpha 0.
inline uint32_t Mix(uint32_t src, uint32_t dst, uint32_t a) {
    uint32_t rb = (src & 0xFF00FF) * a + (dst & 0xFF00FF) * (255 - a) + 0x800080;
    rb = ((rb + ((rb >> 8) & 0xFF00FF)) >> 8) & 0xFF00FF;
    uint32_t g = (src & 0xFF00) * a + (dst & 0xFF00) * (255 - a) + 0x8000;
    g = ((g + ((g >> 8) & 0xFF00)) >> 8) & 0xFF00;
    return rb | g;
}

// Primitives take a glyph and a rectangle already clipped to both the glyph box and the
// DC's clip, in surface coordinates; (left, top) is where the glyph's first pixel goes.
using GlyphBlit = void (*)(PixelBuffer& target, const text::GlyphImage& g, int left, int top, const RECT& r,
                           uint32_t pixel);

// Monochrome: fill the runs of pixels covered at least half (any surface format).
void BlitRuns(PixelBuffer& target, const text::GlyphImage& g, int left, int top, const RECT& r, uint32_t pixel) {
    if (r.left <= left && r.right >= left + g.width) {
        // The common case, the whole width visible: runs need no clipping, and being a few
        // pixels long they are written one by one.
        for (int y = r.top; y < r.bottom; ++y) {
            uint32_t* row = target.row(y) + left;
            const uint16_t* run = g.runs.data() + g.rowRuns[y - top];
            const uint16_t* end = g.runs.data() + g.rowRuns[y - top + 1];
            for (; run != end; run += 2)
                for (int x = run[0]; x < run[1]; ++x) row[x] = pixel;
        }
        return;
    }
    for (int y = r.top; y < r.bottom; ++y) {
        uint32_t* row = target.row(y);
        const uint16_t* run = g.runs.data() + g.rowRuns[y - top];
        const uint16_t* end = g.runs.data() + g.rowRuns[y - top + 1];
        for (; run != end; run += 2) {
            int from = std::max<int>(left + run[0], r.left), to = std::min<int>(left + run[1], r.right);
            if (from < to) std::fill(row + from, row + to, pixel);
        }
    }
}

// Antialiased on 32 bpp: blend the text colour over the destination by coverage.
void BlitBlend(PixelBuffer& target, const text::GlyphImage& g, int left, int top, const RECT& r, uint32_t pixel) {
    for (int y = r.top; y < r.bottom; ++y) {
        uint32_t* dst = target.row(y);
        const uint8_t* cov = g.coverage.data() + static_cast<size_t>(y - top) * g.width - left;
        for (int x = r.left; x < r.right; ++x) {
            uint32_t a = cov[x];
            if (a == 255)
                dst[x] = pixel;
            else if (a != 0)
                dst[x] = Mix(pixel, dst[x], a);
        }
    }
}

RECT Intersect(const RECT& a, const RECT& b) {
    return RECT{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                std::min(a.bottom, b.bottom)};
}

// The bounding box of both; an empty `a` counts for nothing.
RECT Union(const RECT& a, const RECT& b) {
    if (a.left >= a.right) return b;
    return RECT{std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                std::max(a.bottom, b.bottom)};
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
    // A monochrome surface has no shades: antialiased coverage thresholds at one half.
    GlyphBlit blit = font.Antialiased() && !target->mono() ? BlitBlend : BlitRuns;
    uint32_t pixel = ColorToPixel(*target, dc.state.textColor);
    auto& cache = text::GlyphCache::Get();
    text::GlyphImage part;  // glyphs too large for the cache, rasterised only where visible
    for (int i = 0; i < count; ++i) {
        char32_t ch = static_cast<char32_t>(text[i]);
        const GlyphInfo& g = font.Glyph(ch);
        const text::GlyphImage* image = font.CachedImage(ch, g);
        int advance = g.advance;
        if (!image) {
            // Not rasterised yet: where it would land comes from the loaded glyph alone, and
            // a glyph wholly outside the limit and the clip costs no rasterising at all.
            const text::GlyphBox* box = font.Box(g);
            if (!box) {
                penX += dx ? dx[i] : advance;
                continue;
            }
            advance = box->advance;
            RECT visible{0, 0, 0, 0};
            if (box->width > 0) {
                int left = penX + box->left, top = baseline - box->top;
                RECT r{left, top, left + box->width, top + box->height};
                if (limit) r = Intersect(r, *limit);
                if (r.left < r.right && r.top < r.bottom)
                    dc.ForEachClipped(r, [&](const RECT& c) { visible = Union(visible, c); });
            }
            if (visible.left >= visible.right) {
                penX += dx ? dx[i] : advance;
                continue;
            }
            if (cache.Fits(*box)) {
                image = font.Image(ch, g);
            } else {
                text::GlyphBox wanted{visible.left - penX, baseline - visible.top, visible.right - visible.left,
                                      visible.bottom - visible.top, box->advance};
                image = font.RenderPart(g, wanted, part) ? &part : nullptr;
            }
        }
        if (image && !image->coverage.empty()) {
            int left = penX + image->left, top = baseline - image->top;
            RECT box{left, top, left + image->width, top + image->height};
            if (limit) box = Intersect(box, *limit);
            if (box.left < box.right && box.top < box.bottom)
                dc.ForEachClipped(box, [&](const RECT& r) { blit(*target, *image, left, top, r, pixel); });
        }
        penX += dx ? dx[i] : image ? image->advance : advance;
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
