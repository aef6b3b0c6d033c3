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
// them with a pattern brush from the client origin; missing pieces are not drawn (a missing
// cap is 0 wide). `client` is the whole client area, whatever part the canvas covers.
void PaintLabelFrame(OffscreenCanvas& canvas, const SkinSet& frame, const RECT& client);

// What a label keeps between paints: its canvas, and its picture without the text (the
// stretched frame, and the display's indicators) at the client size. A key tap changes only
// the text, so a repaint copies the kept picture and draws the text over it instead of
// stretching the frame again. The owner forgets the picture whenever a piece it is drawn
// from changes, and releases both on WM_DESTROY.
//
// Only a client that can show whole is kept: one wider or taller than the screen (a host's
// MoveWindow to 32767 pixels) is painted through a canvas of what the paint can change,
// without keeping anything, so its repaint costs what shows rather than a canvas and a
// picture of the whole window.
class LabelCanvases {
public:
    // One paint of a width x height client through `screen`: `backdrop` draws the picture
    // without the text, `text` the text over it, both in client coordinates through
    // OffscreenCanvas::Local; then the canvas is presented. `centred` says a text line is
    // centred across (DT_CENTER): DrawText places it at (left + right - width) / 2 rounded
    // toward zero, which moves it by a pixel where that sum is odd and a canvas origin takes
    // it below zero, so such a canvas starts at the client's left edge.
    void Paint(HDC screen, int width, int height, bool centred, const std::function<void(OffscreenCanvas&)>& backdrop,
               const std::function<void(OffscreenCanvas&)>& text);
    void Forget() { backdrop_.Release(); }
    void Release() {
        backdrop_.Release();
        canvas_.Release();
    }

private:
    // Copies the picture onto `canvas` (within the canvas's clip), drawing it with `paint`
    // first when none is kept at the canvas's size. A picture that cannot be kept (no
    // memory) is drawn straight onto the canvas, as it was before anything was kept.
    void Backdrop(HDC screen, OffscreenCanvas& canvas, const std::function<void(OffscreenCanvas&)>& paint);

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
