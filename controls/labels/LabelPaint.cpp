#include "LabelPaint.h"

#include "ControlFont.h"
#include "ThreePiece.h"

namespace zelctl {

void PaintLabelFrame(OffscreenCanvas& canvas, const SkinSet& frame, const RECT& client) {
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

void LabelCanvases::Paint(HDC screen, int width, int height, bool centred,
                          const std::function<void(OffscreenCanvas&)>& backdrop,
                          const std::function<void(OffscreenCanvas&)>& text) {
    if (width <= ::GetSystemMetrics(SM_CXSCREEN) && height <= ::GetSystemMetrics(SM_CYSCREEN)) {
        OffscreenCanvas canvas(screen, width, height, canvas_);
        Backdrop(screen, canvas, backdrop);
        text(canvas);
        canvas.Present();
        return;
    }
    // Kept bitmaps of an earlier, ordinary size would only hold memory until the label
    // shrinks back, when they are made again anyway.
    Release();
    RECT area = OffscreenCanvas::PaintArea(screen, width, height);
    if (area.left >= area.right || area.top >= area.bottom) return;  // nothing of it shows
    if (centred) area.left = 0;
    OffscreenCanvas canvas(screen, area);
    backdrop(canvas);
    text(canvas);
    canvas.Present();
}

void LabelText::Set(int height, COLORREF textColour, UINT textFormat, const CRect& textRect) {
    RecreateFont(font, height);
    colour = textColour;
    format = textFormat;
    rect = textRect;
    shrinkFrom = height;
}

}  // namespace zelctl
