// CScrollBar: a scroll bar control, and the type OnHScroll/OnVScroll receive for the
// control that sent the message.
#pragma once

#include "zel/mfc/cwnd.h"

class ZEL_API CScrollBar : public CWnd {
public:
    CScrollBar() = default;

    // Creates a window of the SCROLLBAR class (available when the platform provides it).
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // The temporary or permanent CScrollBar for hwnd. When the window's permanent object is
    // some other CWnd (a custom scroll bar derived from CWnd), a separate temporary
    // CScrollBar wrapper is returned: never a CWnd seen through the wrong type.
    static CScrollBar* FromHandle(HWND hwnd);

private:
    using CWnd::Create;
};
