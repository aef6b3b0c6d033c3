// The paint step of the buttons that show one skin bitmap as their whole picture.
#pragma once

#include <afxwin.h>

namespace zelctl {

// Paints `skin` (may be NULL: nothing is drawn) at the client origin in one SRCCOPY.
// Like every control it sets up an off-screen frame of the client size and a skin DC;
// the skin is already off screen, so it goes to the paint DC directly.
void PaintSingleSkin(CWnd& wnd, CPaintDC& dc, HBITMAP skin);

}  // namespace zelctl
