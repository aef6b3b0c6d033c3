// What the label and the telephone display share: the three-piece frame and the text that
// shrinks until it fits.
#pragma once

#include <afxwin.h>

#include "OffscreenCanvas.h"
#include "SkinSet.h"

namespace zelctl {

// The pieces of a label frame, in the order LoadBitmap takes them.
enum LabelPiece { kLabelLeft, kLabelMiddle, kLabelRight, kLabelPieces };

// candidate for common/: CreateControlFont with a LOGFONT quality (4 = antialiased), for
// the fonts a control makes before any host asks for a size.
HFONT CreateControlFontQ(int height, BYTE quality, LONG weight = FW_NORMAL, const wchar_t* face = L"Tahoma");

// Both caps stretched to the client height at their own widths, the middle tiled between
// them with a pattern brush from the canvas origin; missing pieces are not drawn (a missing
// cap is 0 wide).
void PaintLabelFrame(OffscreenCanvas& canvas, const SkinSet& frame);

// Draws `text` into `rc` with `format`, transparent, in `colour`: in `font` when the
// DT_CALCRECT size is no larger than `rc` in both directions, otherwise in the font
// recreated from `shrinkFrom` 2 pixels smaller a step until it fits or reaches the floor of
// 12 (drawn there even when it still does not fit; the window clips it). The font made for
// the shrink dies here; the DC's font, colour and mode are restored.
void DrawShrunkText(HDC dc, const CString& text, const RECT& rc, UINT format, COLORREF colour, HFONT font,
                    int shrinkFrom);

}  // namespace zelctl
