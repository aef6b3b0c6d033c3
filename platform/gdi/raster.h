// Raster building blocks shared by blits, fills, shapes and text.
#pragma once

#include "gdi/dc.h"

namespace zel::gdi {

// Ternary raster operation on raw pixel bits: bit n of `rop` (n = P<<2 | S<<1 | D) is the
// result for that combination of pattern, source and destination bits.
inline uint32_t Rop3(uint8_t rop, uint32_t p, uint32_t s, uint32_t d) {
    uint32_t r = 0;
    for (int n = 0; n < 8; ++n)
        if ((rop >> n) & 1) r |= ((n & 4) ? p : ~p) & ((n & 2) ? s : ~s) & ((n & 1) ? d : ~d);
    return r;
}
inline uint8_t RopIndex(DWORD rop) { return static_cast<uint8_t>((rop >> 16) & 0xFF); }
inline bool RopUsesSource(DWORD rop) { return ((rop >> 2) & 0x330000) != (rop & 0x330000); }
inline bool RopUsesPattern(DWORD rop) { return ((rop >> 4) & 0x0F0000) != (rop & 0x0F0000); }

// A brush realised for one DC and target surface: a solid pixel, a pattern already
// converted to the target's format, or nothing (NULL brush).
struct PatternSource {
    enum Kind { kNull, kSolid, kPattern } kind = kNull;
    uint32_t pixel = 0;
    std::shared_ptr<const PixelBuffer> pattern;  // target format
    POINT org{0, 0};                             // brush origin in surface coordinates

    // Pattern pixel at surface coordinates (x, y).
    uint32_t At(int x, int y) const {
        if (kind != kPattern) return pixel;
        int px = (x - org.x) % pattern->width, py = (y - org.y) % pattern->height;
        if (px < 0) px += pattern->width;
        if (py < 0) py += pattern->height;
        return pattern->row(py)[px];
    }
};
PatternSource RealizeBrush(DC& dc, const Brush* brush);

// Applies a ROP3 that does not use a source to a rectangle in surface coordinates,
// clipped by the DC.
void PatFill(DC& dc, const PatternSource& pattern, const RECT& device, uint8_t rop);

}  // namespace zel::gdi
