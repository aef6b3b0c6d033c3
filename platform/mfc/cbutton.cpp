// CButton.
#include "zel/mfc/cbutton.h"

BOOL CButton::Create(LPCWSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(L"BUTTON", caption, style, rect, parent, id);
}

UINT CButton::GetState() const { return static_cast<UINT>(::SendMessageW(m_hWnd, BM_GETSTATE, 0, 0)); }
void CButton::SetState(BOOL highlight) { ::SendMessageW(m_hWnd, BM_SETSTATE, highlight, 0); }
int CButton::GetCheck() const { return static_cast<int>(::SendMessageW(m_hWnd, BM_GETCHECK, 0, 0)); }
void CButton::SetCheck(int check) { ::SendMessageW(m_hWnd, BM_SETCHECK, static_cast<WPARAM>(check), 0); }
UINT CButton::GetButtonStyle() const { return static_cast<UINT>(::GetWindowLongW(m_hWnd, GWL_STYLE)) & 0xFF; }
void CButton::SetButtonStyle(UINT style, BOOL redraw) {
    ::SendMessageW(m_hWnd, BM_SETSTYLE, style, MAKELPARAM(redraw, 0));
}
HBITMAP CButton::SetBitmap(HBITMAP bitmap) {
    return reinterpret_cast<HBITMAP>(
        ::SendMessageW(m_hWnd, BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)));
}
HBITMAP CButton::GetBitmap() const {
    return reinterpret_cast<HBITMAP>(::SendMessageW(m_hWnd, BM_GETIMAGE, IMAGE_BITMAP, 0));
}

void CButton::DrawItem(LPDRAWITEMSTRUCT) {}

// The parent's WM_DRAWITEM for this button lands here (through CWnd::OnDrawItem's
// reflection) and becomes a DrawItem call; other notifications reflect as usual.
BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM) return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    if (result) *result = TRUE;
    return TRUE;
}
