// Raster building blocks shared by blits, fills, shapes and text.
#pragma once

#include <cstring>

#include "gdi/dc.h"
#include "gdi/row_copy.h"

namespace zel::gdi {

// Ternary raster operation on raw pixel bits: bit n of `rop` (n = P<<2 | S<<1 | D) is the
// result for that combination of pattern, source and destination bits. The reference
// evaluator; pixel loops use the row kernels of RopRow instead.
inline uint32_t Rop3(uint8_t rop, uint32_t p, uint32_t s, uint32_t d) {
    uint32_t r = 0;
    for (int n = 0; n < 8; ++n)
        if ((rop >> n) & 1) r |= ((n & 4) ? p : ~p) & ((n & 2) ? s : ~s) & ((n & 1) ? d : ~d);
    return r;
}
// The low word of a ROP DWORD is only an encoding hint; the truth table is bits 16..23.
inline uint8_t RopIndex(DWORD rop) { return static_cast<uint8_t>((rop >> 16) & 0xFF); }
inline bool RopUsesSource(DWORD rop) { return ((rop >> 2) & 0x330000) != (rop & 0x330000); }
inline bool RopUsesPattern(DWORD rop) { return ((rop >> 4) & 0x0F0000) != (rop & 0x0F0000); }
// Whether a ROP3 index's result depends on the destination's old value.
inline bool RopReadsDest(uint8_t index) { return ((index >> 1) & 0x55) != (index & 0x55); }

// Row kernels of one ROP3: d[i] = rop(p, s[i], d[i]) & mask for i in [0, n). `s` must be
// readable for n pixels even when the operation ignores it (pass `d`). The mask keeps bit 0
// on monochrome surfaces, where ~ would otherwise set the unused bits.
struct RopRow {
    void (*solid)(uint32_t* d, const uint32_t* s, uint32_t p, int n, uint32_t mask);
    void (*pattern)(uint32_t* d, const uint32_t* s, const uint32_t* p, int n, uint32_t mask);
};
const RopRow& RopRowFor(uint8_t index);

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
    // The n pattern pixels of row y starting at x (kPattern only).
    void Span(int x, int y, int n, uint32_t* out) const;
};
PatternSource RealizeBrush(DC& dc, const Brush* brush);

// What a solid colour drawn without a brush (pen, text) becomes on a monochrome surface of
// this DC: black and white are exact; the DC's background colour takes its nearest pixel,
// and every other colour the opposite one, so that colour art keeps its contrast against
// the background.
uint32_t MonoPixelFor(const DC& dc, COLORREF color);

// Applies a ROP3 that does not use a source to a rectangle in surface coordinates,
// clipped by the DC.
void PatFill(DC& dc, const PatternSource& pattern, const RECT& device, uint8_t rop);

// Applies one ROP3 to rows of a destination DC given source pixels already in its format;
// the pattern is the DC's brush, realised once. Skip() is true when the operation needs a
// pattern and the brush is NULL: nothing is painted then.
class RopApplier {
public:
    RopApplier(DC& dst, uint8_t rop);
    bool Skip() const { return skip_; }
    // d: the n destination pixels starting at surface (x, y); s: n source pixels.
    void Apply(uint32_t* d, const uint32_t* s, int x, int y, int n);

private:
    const RopRow& row_;
    PatternSource pattern_;
    std::vector<uint32_t> patRow_;
    uint32_t mask_ = 0;
    bool skip_ = false;
};

// A DC-coordinate rectangle in surface coordinates, clamped so that far-away coordinates
// cannot overflow later arithmetic.
RECT DeviceRect(const DC& dc, int64_t left, int64_t top, int64_t right, int64_t bottom);

// Converts source rows into the destination's pixel format, as BitBlt and StretchBlt do:
// colour -> mono gives 1 where the raw pixel equals the SOURCE DC's background colour;
// mono -> colour paints 0 bits in the DESTINATION DC's text colour and 1 bits in its
// background colour; equal formats copy raw bits.
class RowConverter {
public:
    RowConverter(const DC& dst, const PixelBuffer& target, const DC& src, const PixelBuffer& source);
    bool Identity() const { return convert_ == nullptr; }
    // Pixels [x, x + n) of source row y, in the destination format. Returns either a
    // pointer into the source surface (identity) or `scratch`.
    const uint32_t* Row(int x, int y, int n, uint32_t* scratch) const {
        const uint32_t* in = source_.row(y) + x;
        if (!convert_) return in;
        convert_(in, scratch, n, a_, b_);
        return scratch;
    }
    void Into(int x, int y, int n, uint32_t* out) const {
        if (convert_)
            convert_(source_.row(y) + x, out, n, a_, b_);
        else
            CopyPixels(out, source_.row(y) + x, static_cast<size_t>(n));
    }

private:
    const PixelBuffer& source_;
    void (*convert_)(const uint32_t* in, uint32_t* out, int n, uint32_t a, uint32_t b) = nullptr;
    uint32_t a_ = 0, b_ = 0;
};

// Pixels written by the raster primitives (blits, stretches, pattern fills, cosmetic
// lines; not text), for the frame benchmarks. Counted per row or rectangle, never per pixel.
extern uint64_t pixelsWritten;

// BitBlt without stretching, all coordinates in surface units: dst rectangle `device`
// takes the source pixels at (x + dx, y + dy). The ROP uses the source.
void BlitCore(DC& dst, DC& src, const RECT& device, int dx, int dy, uint8_t rop);

}  // namespace zel::gdi
