#include "LabelPaint.h"

#include "ControlFont.h"
#include "ThreePiece.h"

namespace zelctl {

void PaintLabelFrame(OffscreenCanvas& canvas, const SkinSet& frame) {
    const RECT client{0, 0, canvas.width(), canvas.height()};
    const ThreePieceSkin skin{frame[kLabelLeft], frame[kLabelMiddle], frame[kLabelRight]};
    PaintThreePiece(canvas, client, skin, {Axis::Horizontal, CapFit::Stretch, MiddleFit::Tile});
}

void LabelCanvases::Backdrop(HDC screen, OffscreenCanvas& canvas, const std::function<void(OffscreenCanvas&)>& paint) {
    const int w = canvas.width(), h = canvas.height();
    if (!backdrop_.dc() || backdrop_.width() != w || backdrop_.height() != h) {
        // Released first, so the new picture is a fresh bitmap painted whole (a reused one
        // would be clipped to this paint's clip box), black wherever no piece covers it,
        // as a fresh canvas is.
        backdrop_.Release();
        OffscreenCanvas picture(screen, w, h, backdrop_);
        paint(picture);
    }
    if (!backdrop_.dc()) {
        paint(canvas);
        return;
    }
    ::BitBlt(canvas.dc(), 0, 0, w, h, backdrop_.dc(), 0, 0, SRCCOPY);
}

void LabelText::Set(int height, COLORREF textColour, UINT textFormat, const CRect& textRect) {
    RecreateFont(font, height);
    colour = textColour;
    format = textFormat;
    rect = textRect;
    shrinkFrom = height;
}

}  // namespace zelctl
