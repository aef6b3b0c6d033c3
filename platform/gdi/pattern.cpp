// Brush realisation and pattern fills (PatBlt, FillRect, FillRgn).
#include <algorithm>
#include <cstring>

#include "gdi/raster.h"
#include "gdi/stroke.h"

namespace zel::gdi {

namespace {

int Mod(int a, int m) {
    int r = a % m;
    return r < 0 ? r + m : r;
}

// Threshold of the 8x8 ordered-dither (Bayer) matrix at (x, y), 0..63: the bits of x^y and
// y interleaved from the least significant up, so neighbouring thresholds are far apart.
int BayerThreshold(int x, int y) {
    int v = 0;
    for (int k = 0; k < 3; ++k) {
        v |= (((x ^ y) >> k) & 1) << (5 - 2 * k);
        v |= ((y >> k) & 1) << (4 - 2 * k);
    }
    return v;
}

// A solid brush that is neither black nor white is dithered on a monochrome surface: its
// grey level (30/59/11 weights) decides how many of 64 cells are white. This reproduces the
// patterns the reference drivers paint (50% grey is a checkerboard with black at the brush
// origin).
std::shared_ptr<PixelBuffer> DitherPattern(COLORREF c) {
    int grey = (30 * GetRValue(c) + 59 * GetGValue(c) + 11 * GetBValue(c)) / 100;
    auto pattern = std::make_shared<PixelBuffer>(8, 8, 1);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x) pattern->row(y)[x] = (63 - BayerThreshold(x, y)) * 4 < grey ? 1u : 0u;
    return pattern;
}

std::shared_ptr<PixelBuffer> ConvertPattern(const DC& dc, const PixelBuffer& src, const PixelBuffer& target) {
    auto conv = std::make_shared<PixelBuffer>(src.width, src.height, target.bpp);
    if (src.mono()) {
        // Monochrome patterns paint 0 bits in the text colour and 1 bits in the background
        // colour of the DC drawn into.
        uint32_t fg = target.mono() ? MonoPixelFor(dc, dc.state.textColor) : ColorToPixel(target, dc.state.textColor);
        uint32_t bg = target.mono() ? MonoPixelFor(dc, dc.state.bkColor) : ColorToPixel(target, dc.state.bkColor);
        for (size_t i = 0; i < src.pixels.size(); ++i) conv->pixels[i] = (src.pixels[i] & 1) ? bg : fg;
    } else {
        // Colour patterns into monochrome match the DC's background colour, as blits do.
        uint32_t key = ColorToPixel32(dc.state.bkColor & 0xFFFFFF);
        for (size_t i = 0; i < src.pixels.size(); ++i) conv->pixels[i] = src.pixels[i] == key ? 1u : 0u;
    }
    return conv;
}

constexpr int64_t kFar = int64_t{1} << 30;

bool IsFillRop(uint8_t rop) { return rop == 0x00 || rop == 0xFF || rop == 0xF0; }

}  // namespace

void PatternSource::Span(int x, int y, int n, uint32_t* out) const {
    const uint32_t* row = pattern->row(Mod(y - org.y, pattern->height));
    const int width = pattern->width;
    if (width == 1) {  // a one-column tile: the row is one value
        if (n > 0) FillPixels(out, static_cast<size_t>(n), row[0]);
        return;
    }
    const int px = Mod(x - org.x, width);
    const int head = std::min(n, width - px);
    if (head > 0) std::memcpy(out, row + px, static_cast<size_t>(head) * sizeof *out);
    out += head;
    n -= head;
    if (n <= 0) return;
    // Whole periods from here: one from the tile, then ever longer copies of what is
    // already written (a narrow tile would otherwise cost one copy per period).
    int done = std::min(n, width);
    std::memcpy(out, row, static_cast<size_t>(done) * sizeof *out);
    while (done < n) {
        const int chunk = std::min(done, n - done);
        std::memcpy(out + done, out, static_cast<size_t>(chunk) * sizeof *out);
        done += chunk;
    }
}

uint32_t MonoPixelFor(const DC& dc, COLORREF color) { return MonoPenPixel(color, dc.state.bkColor); }

PatternSource RealizeBrush(DC& dc, const Brush* brush) {
    PatternSource out;
    const PixelBuffer* target = dc.TargetShape();
    if (!brush || !target || brush->style == BS_NULL) return out;
    out.org = POINT{dc.origin.x + dc.state.brushOrg.x, dc.origin.y + dc.state.brushOrg.y};
    if (brush->style == BS_SOLID) {
        COLORREF c = ResolveColor(brush->color);
        if (target->mono() && c != RGB(0, 0, 0) && c != RGB(255, 255, 255)) {
            out.kind = PatternSource::kPattern;
            out.pattern = DitherPattern(c);
            return out;
        }
        out.kind = PatternSource::kSolid;
        out.pixel = ColorToPixel(*target, c);
        return out;
    }
    if (!brush->pattern) return out;
    out.kind = PatternSource::kPattern;
    if (!brush->pattern->mono() && !target->mono())
        out.pattern = brush->pattern;
    else
        out.pattern = ConvertPattern(dc, *brush->pattern, *target);
    return out;
}

RopApplier::RopApplier(DC& dst, uint8_t rop) : row_(RopRowFor(rop)) {
    const PixelBuffer* t = dst.TargetShape();
    mask_ = t ? t->mask() : 0;
    if (RopUsesPattern(static_cast<DWORD>(rop) << 16)) {
        pattern_ = RealizeBrush(dst, dst.state.brush);
        skip_ = pattern_.kind == PatternSource::kNull;  // a NULL brush paints nothing
    }
    if (pattern_.kind == PatternSource::kPattern && t) patRow_.resize(static_cast<size_t>(t->width));
}

void RopApplier::Apply(uint32_t* d, const uint32_t* s, int x, int y, int n) {
    if (pattern_.kind == PatternSource::kPattern) {
        pattern_.Span(x, y, n, patRow_.data());
        row_.pattern(d, s, patRow_.data(), n, mask_);
    } else {
        row_.solid(d, s, pattern_.pixel, n, mask_);
    }
}

void PatFill(DC& dc, const PatternSource& pat, const RECT& device, uint8_t rop) {
    if (!dc.TargetShape()) return;
    bool usesPattern = RopUsesPattern(static_cast<DWORD>(rop) << 16);
    if (usesPattern && pat.kind == PatternSource::kNull) return;
    PixelBuffer* t = RopReadsDest(rop) ? dc.Target() : dc.Overwrite(device);
    const uint32_t mask = t->mask();
    if (pat.kind != PatternSource::kPattern && IsFillRop(rop)) {
        // The whole row takes one value: a solid PATCOPY, BLACKNESS or WHITENESS (all bits
        // set, the top byte of 32-bpp pixels included).
        uint32_t v = rop == 0xF0 ? pat.pixel : rop == 0xFF ? mask : 0;
        dc.ForEachClipped(device, [&](const RECT& r) {
            pixelsWritten += static_cast<uint64_t>(r.right - r.left) * static_cast<uint64_t>(r.bottom - r.top);
            for (int y = r.top; y < r.bottom; ++y) FillPixels(t->row(y) + r.left, static_cast<size_t>(r.right - r.left), v);
        });
        return;
    }
    const RopRow& k = RopRowFor(rop);
    std::vector<uint32_t> patRow(pat.kind == PatternSource::kPattern ? static_cast<size_t>(t->width) : 0);
    dc.ForEachClipped(device, [&](const RECT& r) {
        int n = r.right - r.left;
        pixelsWritten += static_cast<uint64_t>(n) * static_cast<uint64_t>(r.bottom - r.top);
        for (int y = r.top; y < r.bottom; ++y) {
            uint32_t* d = t->row(y) + r.left;
            if (pat.kind == PatternSource::kPattern && rop == 0xF0 && mask == 0xFFFFFFFFu) {
                pat.Span(r.left, y, n, d);  // PATCOPY on colour: the pattern itself
            } else if (pat.kind == PatternSource::kPattern) {
                pat.Span(r.left, y, n, patRow.data());
                k.pattern(d, d, patRow.data(), n, mask);
            } else {
                k.solid(d, d, pat.pixel, n, mask);
            }
        }
    });
}

RECT DeviceRect(const DC& dc, int64_t left, int64_t top, int64_t right, int64_t bottom) {
    // Far-away coordinates only need to stay outside every surface; clamping keeps the
    // arithmetic of huge extents from overflowing.
    auto clamp = [](int64_t v) { return static_cast<LONG>(std::clamp(v, -kFar, kFar)); };
    return RECT{clamp(left + dc.origin.x), clamp(top + dc.origin.y), clamp(right + dc.origin.x),
                clamp(bottom + dc.origin.y)};
}

}  // namespace zel::gdi

using namespace zel::gdi;

namespace {

// PatBlt's negative extents count back from the origin pixel: width -w at x covers
// x - w + 1 .. x.
RECT ExtentRect(const DC& dc, int64_t x, int64_t y, int64_t w, int64_t h) {
    int64_t l = w >= 0 ? x : x + w + 1, r = w >= 0 ? x + w : x + 1;
    int64_t t = h >= 0 ? y : y + h + 1, b = h >= 0 ? y + h : y + 1;
    return DeviceRect(dc, l, t, r, b);
}

}  // namespace

extern "C" {

BOOL PatBlt(HDC hdc, int x, int y, int w, int h, DWORD rop) {
    DC* dc = LookupDC(hdc);
    if (!dc || RopUsesSource(rop)) return FALSE;
    PatternSource pat = RealizeBrush(*dc, dc->state.brush);
    PatFill(*dc, pat, ExtentRect(*dc, x, y, w, h), RopIndex(rop));
    return TRUE;
}

int FillRect(HDC hdc, const RECT* rc, HBRUSH hbrush) {
    DC* dc = LookupDC(hdc);
    Brush* brush = LookupBrush(hbrush);
    if (!dc || !rc || !brush) return 0;
    // A PatBlt of the rectangle's extents: an inverted rectangle becomes negative extents,
    // which count back from its first corner (7,9 -> 2,3 fills x 3..7, y 4..9).
    const int64_t w = int64_t{rc->right} - rc->left, h = int64_t{rc->bottom} - rc->top;
    if (w == 0 || h == 0) return 1;
    PatternSource pat = RealizeBrush(*dc, brush);
    PatFill(*dc, pat, ExtentRect(*dc, rc->left, rc->top, w, h), 0xF0);
    return 1;
}

BOOL FillRgn(HDC hdc, HRGN hrgn, HBRUSH hbrush) {
    DC* dc = LookupDC(hdc);
    Region* rgn = LookupRegion(hrgn);
    Brush* brush = LookupBrush(hbrush);
    if (!dc || !rgn || !brush) return FALSE;
    PatternSource pat = RealizeBrush(*dc, brush);
    if (pat.kind == PatternSource::kNull) return TRUE;
    int n = 0;
    const pixman_box32_t* boxes = pixman_region32_rectangles(rgn->rgn.mut(), &n);
    for (int i = 0; i < n; ++i)
        PatFill(*dc, pat, DeviceRect(*dc, boxes[i].x1, boxes[i].y1, boxes[i].x2, boxes[i].y2), 0xF0);
    return TRUE;
}

}  // extern "C"
