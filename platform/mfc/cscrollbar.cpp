// CScrollBar.
#include "zel/mfc/cscrollbar.h"

#include "mfc/handle_maps.h"

BOOL CScrollBar::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(L"SCROLLBAR", nullptr, style, rect, parent, id);
}

CScrollBar* CScrollBar::FromHandle(HWND hwnd) {
    return zel::mfc::WindowMap().Get<CScrollBar>(
        hwnd, [](CScrollBar* w, const void* h) { w->m_hWnd = static_cast<HWND>(const_cast<void*>(h)); });
}
