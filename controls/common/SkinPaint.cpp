#include "SkinPaint.h"

#include "OffscreenCanvas.h"

namespace zelctl {

void PaintSingleSkin(CWnd& wnd, CPaintDC& dc, HBITMAP skin) {
    CRect rc;
    wnd.GetClientRect(&rc);
    // Only what shows: a button moved to 32767 x 32767 copies its visible part.
    OffscreenCanvas canvas(dc, OffscreenCanvas::PaintArea(dc, rc.Width(), rc.Height()));
    canvas.PresentPiece(skin);
}

}  // namespace zelctl
