#include "SkinText.h"

#include <algorithm>
#include <utility>

#include "OffscreenCanvas.h"

namespace zelctl {

namespace {

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

RECT MeasureText(HDC dc, const CString& text, const RECT& rc, UINT format) {
    RECT calc = rc;
    ::DrawTextW(dc, text, text.GetLength(), &calc, format | DT_CALCRECT);
    return calc;
}

int TextWidth(HDC dc, const CString& text) {
    const RECT calc = MeasureText(dc, text, RECT{0, 0, 0, 0}, DT_SINGLELINE);
    return calc.right - calc.left;
}

// A host's rectangle may span any ints (a label's SetFont takes it as given): the extents
// are compared in 64 bits.
bool TextFits(HDC dc, const CString& text, const RECT& rc, UINT format) {
    const RECT calc = MeasureText(dc, text, rc, format);
    using Wide = long long;
    return Wide{calc.right} - calc.left <= Wide{rc.right} - rc.left &&
           Wide{calc.bottom} - calc.top <= Wide{rc.bottom} - rc.top;
}

void DrawSkinText(HDC dc, const CString& text, const RECT& rc, UINT format, COLORREF colour, HFONT font) {
    const int oldMode = ::SetBkMode(dc, TRANSPARENT);
    const COLORREF oldColour = ::SetTextColor(dc, colour);
    SelectGuard selectFont(dc, font);
    RECT box = rc;
    ::DrawTextW(dc, text, text.GetLength(), &box, format);
    ::SetTextColor(dc, oldColour);
    ::SetBkMode(dc, oldMode);
}

void ShortenWithEllipsis(HDC dc, CString& text, int width) {
    if (TextWidth(dc, text) <= width) return;
    const CString ellipsis(L"...");
    const int e = TextWidth(dc, ellipsis);
    if (width < e) {
        text = ellipsis;
        return;
    }
    // The search stops once the prefix plus "..." is within 2 pixels under the width; its
    // second test subtracts the ellipsis where the first adds it. Both are kept as the
    // device has them: they decide where long names are cut.
    int lo = 0, hi = text.GetLength();
    int n = hi / 2;
    int w = TextWidth(dc, text.Left(n));
    while (!((w + e - width >= -2) && (w - e - width <= 0)) && lo <= hi) {
        if (w + e > width)
            hi = n - 1;
        else
            lo = n + 1;
        n = (lo + hi) / 2;
        w = TextWidth(dc, text.Left(n));
    }
    while (width - w - 2 < e && n > 0) {
        --n;
        w = TextWidth(dc, text.Left(n));
    }
    text = text.Left(n) + ellipsis;
}

OwnedFont ShrinkFontToFit(HDC dc, const CString& text, const RECT& rc, UINT format, int height, LONG weight,
                          const wchar_t* face, int floor) {
    OwnedFont font;
    for (;;) {
        height -= 2;
        OwnedFont next(CreateControlFont(height, weight, face));
        if (next.get()) ::SelectObject(dc, next.get());
        font = std::move(next);  // the previous font is deselected above, so it may die
        if (TextFits(dc, text, rc, format) || height <= floor) break;
    }
    return font;
}

void DrawShrunkText(HDC dc, const CString& text, const RECT& rc, UINT format, COLORREF colour, HFONT font,
                    int shrinkFrom) {
    format = WithoutModifyString(format);
    OwnedFont shrunk;  // declared first: it dies after the guard has put the DC's font back
    // Selecting the DC's own font when there is none still makes the guard put it back.
    SelectGuard keepFont(dc, font ? static_cast<HGDIOBJ>(font) : ::GetCurrentObject(dc, OBJ_FONT));
    if (!TextFits(dc, text, rc, format))
        shrunk = ShrinkFontToFit(dc, text, rc, format, FirstUsefulStart(shrinkFrom, rc));
    DrawSkinText(dc, text, rc, format, colour, nullptr);
}

}  // namespace zelctl
