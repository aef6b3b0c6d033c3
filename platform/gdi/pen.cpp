// Pen realisation: colour conversion for the target, mix mode, width class and dashes.
#include <algorithm>

#include "gdi/stroke.h"

namespace zel::gdi {

namespace {

// The default palette: the 16 VGA colours split around the four reserved system colours.
constexpr COLORREF kDefaultPalette[20] = {
    RGB(0x00, 0x00, 0x00), RGB(0x80, 0x00, 0x00), RGB(0x00, 0x80, 0x00), RGB(0x80, 0x80, 0x00),
    RGB(0x00, 0x00, 0x80), RGB(0x80, 0x00, 0x80), RGB(0x00, 0x80, 0x80), RGB(0xC0, 0xC0, 0xC0),
    RGB(0xC0, 0xDC, 0xC0), RGB(0xA6, 0xCA, 0xF0), RGB(0xFF, 0xFB, 0xF0), RGB(0xA0, 0xA0, 0xA4),
    RGB(0x80, 0x80, 0x80), RGB(0xFF, 0x00, 0x00), RGB(0x00, 0xFF, 0x00), RGB(0xFF, 0xFF, 0x00),
    RGB(0x00, 0x00, 0xFF), RGB(0xFF, 0x00, 0xFF), RGB(0x00, 0xFF, 0xFF), RGB(0xFF, 0xFF, 0xFF),
};

// Cosmetic dash runs in pixels, "on" first.
constexpr uint8_t kDash[] = {18, 6};
constexpr uint8_t kDot[] = {3, 3};
constexpr uint8_t kDashDot[] = {9, 6, 3, 6};
constexpr uint8_t kDashDotDot[] = {9, 3, 3, 3, 3, 3};
constexpr uint8_t kAlternate[] = {1, 1};

// Wider pens are clipped to this: a disc this size already covers any surface we draw on,
// and it bounds the work a hostile width can cause.
constexpr int kMaxPenWidth = 4096;

std::span<const uint8_t> DashesFor(UINT style) {
    switch (style) {
        case PS_DASH: return kDash;
        case PS_DOT: return kDot;
        case PS_DASHDOT: return kDashDot;
        case PS_DASHDOTDOT: return kDashDotDot;
        default: return {};
    }
}

}  // namespace

COLORREF ResolveColor(COLORREF c) {
    if ((c >> 24) == 0x01) {
        unsigned index = c & 0xFFFF;
        return kDefaultPalette[index < 20 ? index : 0];  // out of range: the first entry
    }
    return c & 0xFFFFFF;
}

uint32_t MonoPenPixel(COLORREF color, COLORREF bkColor) {
    color = ResolveColor(color);
    bkColor = ResolveColor(bkColor);
    if (color == RGB(0, 0, 0)) return 0;
    if (color == RGB(255, 255, 255)) return 1;
    uint32_t bk = ColorToMono(bkColor);
    return color == bkColor ? bk : bk ^ 1;
}

uint8_t Rop2AsRop3(int rop2) {
    // Evaluate the binary operation on the ROP3 operand constants P = 0xF0, D = 0xAA.
    return static_cast<uint8_t>(Rop2(rop2, 0xF0, 0xAA) & 0xFF);
}

PenSource RealizePen(DC& dc, const Pen* pen) {
    PenSource out;
    const PixelBuffer* target = dc.TargetShape();
    if (!pen || !target) return out;
    UINT style = pen->style & PS_STYLE_MASK;
    if (style == PS_NULL) return out;
    COLORREF bk = ResolveColor(dc.state.bkColor);
    if (target->mono()) {
        out.pixel = MonoPenPixel(pen->color, bk);
        out.gapPixel = MonoPenPixel(bk, bk);
    } else {
        out.pixel = ColorToPixel32(ResolveColor(pen->color));
        out.gapPixel = ColorToPixel32(bk);
    }
    out.paintGaps = dc.state.bkMode == OPAQUE;
    out.rop2 = dc.state.rop2;
    if (pen->width > 1) {
        // Styled wide pens are undefined in Win32 and absent on CE: they draw solid.
        out.kind = PenSource::kWide;
        out.width = std::min(pen->width, kMaxPenWidth);
        out.insideFrame = style == PS_INSIDEFRAME;
        return out;
    }
    out.kind = PenSource::kCosmetic;
    out.dashes = DashesFor(style);
    return out;
}

PenSource FocusPen(DC& dc) {
    PenSource out;
    const PixelBuffer* target = dc.TargetShape();
    if (!target) return out;
    out.kind = PenSource::kCosmetic;
    out.pixel = target->mono() ? 1u : 0x00FFFFFFu;  // XOR with white inverts the colour bits
    out.rop2 = R2_XORPEN;
    out.dashes = kAlternate;
    out.paintGaps = false;
    return out;
}

}  // namespace zel::gdi
