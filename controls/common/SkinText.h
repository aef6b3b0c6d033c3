// Text as the controls draw it: measured with DrawTextW(DT_CALCRECT) -- the widths that
// decide what fits -- and drawn with a transparent background in one colour and font.
#pragma once

#include <afxwin.h>

#include "ControlFont.h"

namespace zelctl {

// The rectangle DrawTextW(DT_CALCRECT | format) gives for `text` laid into `rc` (the
// width matters for DT_WORDBREAK; single lines grow to the text's width).
RECT MeasureText(HDC dc, const CString& text, const RECT& rc, UINT format);

// The width DT_CALCRECT | DT_SINGLELINE gives from an empty rectangle at the origin.
int TextWidth(HDC dc, const CString& text);

// True when the measured text is no wider and no taller than `rc` (equal sizes fit).
bool TextFits(HDC dc, const CString& text, const RECT& rc, UINT format);

// Draws `text` into `rc` with `format`, transparent background, `colour` and `font`
// (NULL keeps the DC's font); the DC's mode, colour and font are restored afterwards.
void DrawSkinText(HDC dc, const CString& text, const RECT& rc, UINT format, COLORREF colour, HFONT font);

// The lists' shortening rule: a text wider than `width` becomes its longest prefix found
// by the binary search below followed by "...", and never less than "...". Widths are
// those of TextWidth in the DC's current font.
void ShortenWithEllipsis(HDC dc, CString& text, int width);

// Shrink-to-fit: recreates the font 2 pixels smaller at a time from `height` - 2, selecting
// each into `dc` to measure, until the text fits `rc` or the height is no longer above
// `floor`. Returns the last font made (fitting or not), still selected into `dc`: the
// caller draws with it, then restores the DC's font before the returned font dies.
// The caller has already found that the text does not fit at `height`.
OwnedFont ShrinkFontToFit(HDC dc, const CString& text, const RECT& rc, UINT format, int height,
                          LONG weight = FW_NORMAL, const wchar_t* face = L"Tahoma", int floor = 12);

// Draws `text` into `rc` with `format`, transparent, in `colour`: in `font` (NULL: the DC's)
// when the DT_CALCRECT size is no larger than `rc` in both directions, otherwise in the font
// ShrinkFontToFit recreates from `shrinkFrom` (drawn at the floor of 12 even when it still
// does not fit; the window clips it). A start that cannot fit `rc` is first brought down to
// the heights that might, keeping its parity, so a host's absurd height neither hangs the
// loop nor overflows it. The shrunk font dies here; the DC's font, colour and mode are
// restored. DT_MODIFYSTRING is dropped (see WithoutModifyString).
void DrawShrunkText(HDC dc, const CString& text, const RECT& rc, UINT format, COLORREF colour, HFONT font,
                    int shrinkFrom);

// DT_MODIFYSTRING would write the shortened text back into the CString's buffer, which has
// no room for the "..." it appends: controls draw a copy of their window text and never
// need the shortened form, so they drop the flag from a host's format.
constexpr UINT WithoutModifyString(UINT format) { return format & ~static_cast<UINT>(DT_MODIFYSTRING); }

}  // namespace zelctl
