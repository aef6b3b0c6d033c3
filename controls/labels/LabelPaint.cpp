#include "LabelPaint.h"

#include <algorithm>
#include <climits>
#include <cwchar>

#include "SkinText.h"
#include "ThreePiece.h"

namespace zelctl {

namespace {

// DT_MODIFYSTRING would write the shortened text back into the CString's buffer, which
// has no room for the "..." it appends: the labels draw a copy of the window text and
// never need the shortened form, so the flag is dropped.
UINT SafeFormat(UINT format) { return format & ~static_cast<UINT>(DT_MODIFYSTRING); }

// A font taller than the rectangle never fits it (a line is at least the cell height), so a
// start far above the rectangle -- a host's absurd height -- goes straight to the first
// height that might, keeping its parity: the heights tried and drawn stay those of the
// 2-pixel loop, and the loop stays short. The margin covers cell-height rounding; no window
// is taller than 16-bit coordinates reach, so neither is a useful font. A start far below
// zero takes its one step from a height that cannot wrap around.
int FirstUsefulStart(int shrinkFrom, const RECT& rc) {
    constexpr int kMargin = 8, kFloor = 12, kLowest = -0x8000, kTallestWindow = 0x8000;
    if (shrinkFrom < kLowest) return kLowest;
    const long long rows = static_cast<long long>(rc.bottom) - rc.top;  // a host's rectangle may span any ints
    const int tallest = static_cast<int>(std::clamp<long long>(rows, kFloor, kTallestWindow)) + kMargin;
    if (shrinkFrom <= tallest + 2) return shrinkFrom;
    return shrinkFrom - ((shrinkFrom - tallest) / 2) * 2;
}

}  // namespace

HFONT CreateControlFontQ(int height, BYTE quality, LONG weight, const wchar_t* face) {
    LOGFONTW lf{};
    lf.lfHeight = height;
    lf.lfWeight = weight;
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfQuality = quality;
    std::wcsncpy(lf.lfFaceName, face ? face : L"Tahoma", LF_FACESIZE - 1);
    return ::CreateFontIndirectW(&lf);
}

void PaintLabelFrame(OffscreenCanvas& canvas, const SkinSet& frame) {
    const RECT client{0, 0, canvas.width(), canvas.height()};
    const ThreePieceSkin skin{frame[kLabelLeft], frame[kLabelMiddle], frame[kLabelRight]};
    PaintThreePiece(canvas, client, skin, {Axis::Horizontal, CapFit::Stretch, MiddleFit::Tile});
}

void DrawShrunkText(HDC dc, const CString& text, const RECT& rc, UINT format, COLORREF colour, HFONT font,
                    int shrinkFrom) {
    format = SafeFormat(format);
    OwnedFont shrunk;  // declared first: it dies after the guard has put the DC's font back
    // Selecting the DC's own font when the label has none still makes the guard put it back.
    SelectGuard keepFont(dc, font ? static_cast<HGDIOBJ>(font) : ::GetCurrentObject(dc, OBJ_FONT));
    if (!TextFits(dc, text, rc, format))
        shrunk = ShrinkFontToFit(dc, text, rc, format, FirstUsefulStart(shrinkFrom, rc));
    DrawSkinText(dc, text, rc, format, colour, nullptr);
}

}  // namespace zelctl
