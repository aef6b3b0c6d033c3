// What the labels share: the three-piece frame of the label and the telephone display
// (whose text shrinks to fit with DrawShrunkText, SkinText.h), and the text settings.
#pragma once

#include <afxwin.h>

#include "OffscreenCanvas.h"
#include "SkinSet.h"

namespace zelctl {

// The pieces of a label frame, in the order LoadBitmap takes them.
enum LabelPiece { kLabelLeft, kLabelMiddle, kLabelRight, kLabelPieces };

// Both caps stretched to the client height at their own widths, the middle tiled between
// them with a pattern brush from the canvas origin; missing pieces are not drawn (a missing
// cap is 0 wide).
void PaintLabelFrame(OffscreenCanvas& canvas, const SkinSet& frame);

// The text settings the labels keep under the same member names, by reference (as the
// lists' RowStore holds theirs). Set is their SetFont: a new control font of `height`,
// which is also where shrinking starts, with the colour, format and rectangle.
struct LabelText {
    HFONT& font;
    COLORREF& colour;
    UINT& format;
    CRect& rect;
    int& shrinkFrom;

    void Set(int height, COLORREF textColour, UINT textFormat, const CRect& textRect);
};

}  // namespace zelctl
