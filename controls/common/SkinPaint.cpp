#include "SkinPaint.h"

#include "OffscreenCanvas.h"

namespace zelctl {

void PaintSingleSkin(CWnd& wnd, CPaintDC& dc, HBITMAP skin) {
    CRect rc;
    wnd.GetClientRect(&rc);
    OffscreenCanvas canvas(dc, rc.Width(), rc.Height());
    canvas.PresentPiece(skin);
}

}  // namespace zelctl
