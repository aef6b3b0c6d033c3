// What the labels share: the three-piece frame of the label and the telephone display
// (whose text shrinks to fit with DrawShrunkText, SkinText.h), and the text settings.
#pragma once

#include <afxwin.h>

#include <functional>

#include "OffscreenCanvas.h"
#include "SkinSet.h"

namespace zelctl {

// The pieces of a label frame, in the order LoadBitmap takes them.
enum LabelPiece { kLabelLeft, kLabelMiddle, kLabelRight, kLabelPieces };

// Both caps stretched to the client height at their own widths, the middle tiled between
// them with a pattern brush from the canvas origin; missing pieces are not drawn (a missing
// cap is 0 wide).
void PaintLabelFrame(OffscreenCanvas& canvas, const SkinSet& frame);

// What a label keeps between paints: its canvas, and its picture without the text (the
// stretched frame, and the display's indicators) at the client size. A key tap changes only
// the text, so a repaint copies the kept picture and draws the text over it instead of
// stretching the frame again. The owner forgets the picture whenever a piece it is drawn
// from changes, and releases both on WM_DESTROY.
class LabelCanvases {
public:
    // Copies the picture onto `canvas` (within the canvas's clip), drawing it with `paint`
    // first when none is kept at the canvas's size. A picture that cannot be kept (no
    // memory) is drawn straight onto the canvas, as it was before anything was kept.
    void Backdrop(HDC screen, OffscreenCanvas& canvas, const std::function<void(OffscreenCanvas&)>& paint);
    void Forget() { backdrop_.Release(); }
    void Release() {
        backdrop_.Release();
        canvas_.Release();
    }
    CanvasStore& canvas() { return canvas_; }

private:
    CanvasStore canvas_, backdrop_;
};

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
