#include "SkinPaint.h"

namespace zelctl {

void PaintSingleSkin(CWnd& wnd, CPaintDC& dc, HBITMAP skin) {
    CRect rc;
    wnd.GetClientRect(&rc);
    CBitmap frame;
    frame.CreateCompatibleBitmap(&dc, rc.Width(), rc.Height());
    CDC frameDC, skinDC;
    frameDC.CreateCompatibleDC(&dc);
    skinDC.CreateCompatibleDC(&dc);
    HGDIOBJ oldFrame = frameDC.SelectObject(static_cast<HGDIOBJ>(frame.m_hObject));
    if (skin) {
        HGDIOBJ oldSkin = skinDC.SelectObject(static_cast<HGDIOBJ>(skin));
        dc.BitBlt(0, 0, rc.Width(), rc.Height(), &skinDC, 0, 0, SRCCOPY);
        skinDC.SelectObject(oldSkin);
    }
    frameDC.SelectObject(oldFrame);
}

}  // namespace zelctl
