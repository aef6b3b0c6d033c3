#include "LabelPaint.h"

#include "ControlFont.h"
#include "ThreePiece.h"

namespace zelctl {

void PaintLabelFrame(OffscreenCanvas& canvas, const SkinSet& frame) {
    const RECT client{0, 0, canvas.width(), canvas.height()};
    const ThreePieceSkin skin{frame[kLabelLeft], frame[kLabelMiddle], frame[kLabelRight]};
    PaintThreePiece(canvas, client, skin, {Axis::Horizontal, CapFit::Stretch, MiddleFit::Tile});
}

void LabelText::Set(int height, COLORREF textColour, UINT textFormat, const CRect& textRect) {
    RecreateFont(font, height);
    colour = textColour;
    format = textFormat;
    rect = textRect;
    shrinkFrom = height;
}

}  // namespace zelctl
