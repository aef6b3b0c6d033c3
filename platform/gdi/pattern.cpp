// Brush realisation and pattern fills (PatBlt, FillRect, FillRgn).
#include <algorithm>

#include "gdi/raster.h"

namespace zel::gdi {

PatternSource RealizeBrush(DC& dc, const Brush* brush) {
    PatternSource out;
    PixelBuffer* target = dc.Target();
    if (!brush || !target || brush->style == BS_NULL) return out;
    out.org = POINT{dc.origin.x + dc.state.brushOrg.x, dc.origin.y + dc.state.brushOrg.y};
    if (brush->style == BS_SOLID) {
        out.kind = PatternSource::kSolid;
        out.pixel = ColorToPixel(*target, brush->color);
        return out;
    }
    if (!brush->pattern) return out;
    const PixelBuffer& src = *brush->pattern;
    out.kind = PatternSource::kPattern;
    if (src.bpp == target->bpp) {
        out.pattern = brush->pattern;
        return out;
    }
    // Monochrome patterns paint 0 bits in the text colour and 1 bits in the background
    // colour of the DC drawn into; colour patterns into monochrome match the bk colour.
    auto conv = std::make_shared<PixelBuffer>(src.width, src.height, target->bpp);
    uint32_t fg = ColorToPixel(*target, dc.state.textColor), bg = ColorToPixel(*target, dc.state.bkColor);
    uint32_t key = ColorToPixel32(dc.state.bkColor);
    for (size_t i = 0; i < src.pixels.size(); ++i) {
        uint32_t p = src.pixels[i];
        conv->pixels[i] = src.mono() ? ((p & 1) ? bg : fg) : (p == key ? 1u : 0u);
    }
    out.pattern = std::move(conv);
    return out;
}

void PatFill(DC& dc, const PatternSource& pat, const RECT& device, uint8_t rop) {
    PixelBuffer* t = dc.Target();
    if (!t) return;
    uint32_t mask = t->mask();
    dc.ForEachClipped(device, [&](const RECT& r) {
        for (int y = r.top; y < r.bottom; ++y) {
            uint32_t* row = t->row(y);
            if (pat.kind != PatternSource::kPattern && rop == 0xF0) {
                std::fill(row + r.left, row + r.right, pat.pixel);
                continue;
            }
            for (int x = r.left; x < r.right; ++x) row[x] = Rop3(rop, pat.At(x, y), 0, row[x]) & mask;
        }
    });
}

}  // namespace zel::gdi

using namespace zel::gdi;

namespace {

// Normalises a (possibly negative) extent to a half-open device rectangle.
RECT ExtentRect(DC& dc, int x, int y, int w, int h) {
    int l = w >= 0 ? x : x + w + 1, r = w >= 0 ? x + w : x + 1;
    int t = h >= 0 ? y : y + h + 1, b = h >= 0 ? y + h : y + 1;
    return RECT{dc.DevX(l), dc.DevY(t), dc.DevX(r), dc.DevY(b)};
}

}  // namespace

extern "C" {

BOOL PatBlt(HDC hdc, int x, int y, int w, int h, DWORD rop) {
    DC* dc = LookupDC(hdc);
    if (!dc || RopUsesSource(rop)) return FALSE;
    PatternSource pat = RealizeBrush(*dc, dc->state.brush);
    if (pat.kind == PatternSource::kNull && RopUsesPattern(rop)) return TRUE;  // NULL brush paints nothing
    PatFill(*dc, pat, ExtentRect(*dc, x, y, w, h), RopIndex(rop));
    return TRUE;
}

int FillRect(HDC hdc, const RECT* rc, HBRUSH hbrush) {
    DC* dc = LookupDC(hdc);
    Brush* brush = LookupBrush(hbrush);
    if (!dc || !rc || !brush) return 0;
    PatternSource pat = RealizeBrush(*dc, brush);
    if (pat.kind == PatternSource::kNull) return 1;
    // The extents go through PatBlt's rules: an inverted rect fills its mirror image.
    PatFill(*dc, pat, ExtentRect(*dc, rc->left, rc->top, rc->right - rc->left, rc->bottom - rc->top), 0xF0);
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
        PatFill(*dc, pat,
                RECT{dc->DevX(boxes[i].x1), dc->DevY(boxes[i].y1), dc->DevX(boxes[i].x2), dc->DevY(boxes[i].y2)},
                0xF0);
    return TRUE;
}

}  // extern "C"
