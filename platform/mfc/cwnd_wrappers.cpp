// CWnd's thin wrappers over the window functions. Each works on m_hWnd and, for an object
// without a window, fails as the function does for a NULL handle.
#include <vector>

#include "zel/mfc/cwnd.h"

namespace {

HWND HwndOf(const CWnd* wnd) { return wnd ? wnd->m_hWnd : nullptr; }

}  // namespace

CWnd* CWnd::GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
CWnd* CWnd::SetParent(CWnd* parent) { return FromHandle(::SetParent(m_hWnd, HwndOf(parent))); }

CWnd* CWnd::GetTopLevelParent() const {
    HWND top = m_hWnd;
    for (int guard = 0; top && guard < 256; ++guard) {
        if (!(::GetWindowLongW(top, GWL_STYLE) & WS_CHILD)) break;
        HWND parent = ::GetParent(top);
        if (!parent) break;
        top = parent;
    }
    return FromHandle(top);
}

CWnd* CWnd::GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }
void CWnd::GetDlgItem(int id, HWND* hwnd) const {
    if (hwnd) *hwnd = ::GetDlgItem(m_hWnd, id);
}
int CWnd::GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
int CWnd::SetDlgCtrlID(int id) { return static_cast<int>(::SetWindowLongW(m_hWnd, GWL_ID, id)); }
CWnd* CWnd::GetWindow(UINT cmd) const { return FromHandle(::GetWindow(m_hWnd, cmd)); }
BOOL CWnd::IsChild(const CWnd* wnd) const { return ::IsChild(m_hWnd, HwndOf(wnd)); }
BOOL CWnd::IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
BOOL CWnd::IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
BOOL CWnd::EnableWindow(BOOL enable) { return ::EnableWindow(m_hWnd, enable); }
BOOL CWnd::ShowWindow(int cmd) { return ::ShowWindow(m_hWnd, cmd); }
DWORD CWnd::GetStyle() const { return static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_STYLE)); }
DWORD CWnd::GetExStyle() const { return static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_EXSTYLE)); }

namespace {

BOOL ModifyLong(HWND hwnd, int index, DWORD remove, DWORD add, UINT flags) {
    if (!hwnd) return FALSE;
    DWORD style = static_cast<DWORD>(::GetWindowLongW(hwnd, index));
    DWORD changed = (style & ~remove) | add;
    if (style == changed) return FALSE;
    ::SetWindowLongW(hwnd, index, static_cast<LONG>(changed));
    if (flags)
        ::SetWindowPos(hwnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
    return TRUE;
}

}  // namespace

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT flags) { return ModifyLong(m_hWnd, GWL_STYLE, remove, add, flags); }
BOOL CWnd::ModifyStyleEx(DWORD remove, DWORD add, UINT flags) {
    return ModifyLong(m_hWnd, GWL_EXSTYLE, remove, add, flags);
}

void CWnd::GetClientRect(LPRECT rect) const { ::GetClientRect(m_hWnd, rect); }
void CWnd::GetWindowRect(LPRECT rect) const { ::GetWindowRect(m_hWnd, rect); }
void CWnd::ClientToScreen(LPPOINT pt) const { ::ClientToScreen(m_hWnd, pt); }
void CWnd::ClientToScreen(LPRECT rect) const {
    if (!rect) return;
    ::ClientToScreen(m_hWnd, reinterpret_cast<LPPOINT>(&rect->left));
    ::ClientToScreen(m_hWnd, reinterpret_cast<LPPOINT>(&rect->right));
}
void CWnd::ScreenToClient(LPPOINT pt) const { ::ScreenToClient(m_hWnd, pt); }
void CWnd::ScreenToClient(LPRECT rect) const {
    if (!rect) return;
    ::ScreenToClient(m_hWnd, reinterpret_cast<LPPOINT>(&rect->left));
    ::ScreenToClient(m_hWnd, reinterpret_cast<LPPOINT>(&rect->right));
}
void CWnd::MapWindowPoints(CWnd* to, LPPOINT points, UINT count) const {
    ::MapWindowPoints(m_hWnd, HwndOf(to), points, count);
}
void CWnd::MapWindowPoints(CWnd* to, LPRECT rect) const {
    ::MapWindowPoints(m_hWnd, HwndOf(to), reinterpret_cast<LPPOINT>(rect), 2);
}
void CWnd::MoveWindow(int x, int y, int width, int height, BOOL repaint) {
    ::MoveWindow(m_hWnd, x, y, width, height, repaint);
}
void CWnd::MoveWindow(LPCRECT rect, BOOL repaint) {
    if (rect) MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, repaint);
}
BOOL CWnd::SetWindowPos(const CWnd* insertAfter, int x, int y, int cx, int cy, UINT flags) {
    return ::SetWindowPos(m_hWnd, HwndOf(insertAfter), x, y, cx, cy, flags);
}
int CWnd::SetWindowRgn(HRGN region, BOOL redraw) { return ::SetWindowRgn(m_hWnd, region, redraw); }
int CWnd::GetWindowRgn(HRGN region) const { return ::GetWindowRgn(m_hWnd, region); }

void CWnd::Invalidate(BOOL erase) { ::InvalidateRect(m_hWnd, nullptr, erase); }
void CWnd::InvalidateRect(LPCRECT rect, BOOL erase) { ::InvalidateRect(m_hWnd, rect, erase); }
void CWnd::InvalidateRgn(CRgn* region, BOOL erase) {
    ::InvalidateRgn(m_hWnd, region ? static_cast<HRGN>(region->m_hObject) : nullptr, erase);
}
void CWnd::ValidateRect(LPCRECT rect) { ::ValidateRect(m_hWnd, rect); }
void CWnd::ValidateRgn(CRgn* region) {
    ::ValidateRgn(m_hWnd, region ? static_cast<HRGN>(region->m_hObject) : nullptr);
}
void CWnd::UpdateWindow() { ::UpdateWindow(m_hWnd); }
BOOL CWnd::RedrawWindow(LPCRECT rect, CRgn* region, UINT flags) {
    return ::RedrawWindow(m_hWnd, rect, region ? static_cast<HRGN>(region->m_hObject) : nullptr, flags);
}
BOOL CWnd::GetUpdateRect(LPRECT rect, BOOL erase) { return ::GetUpdateRect(m_hWnd, rect, erase); }
CDC* CWnd::BeginPaint(LPPAINTSTRUCT ps) { return CDC::FromHandle(::BeginPaint(m_hWnd, ps)); }
void CWnd::EndPaint(LPPAINTSTRUCT ps) { ::EndPaint(m_hWnd, ps); }
CDC* CWnd::GetDC() { return CDC::FromHandle(::GetDC(m_hWnd)); }
CDC* CWnd::GetWindowDC() { return CDC::FromHandle(::GetWindowDC(m_hWnd)); }
int CWnd::ReleaseDC(CDC* dc) { return dc ? ::ReleaseDC(m_hWnd, dc->m_hDC) : 0; }

CWnd* CWnd::SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
CWnd* CWnd::GetCapture() { return FromHandle(::GetCapture()); }
CWnd* CWnd::SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
CWnd* CWnd::GetFocus() { return FromHandle(::GetFocus()); }
UINT_PTR CWnd::SetTimer(UINT_PTR id, UINT elapse, void(CALLBACK* timerProc)(HWND, UINT, UINT_PTR, DWORD)) {
    return ::SetTimer(m_hWnd, id, elapse, timerProc);
}
BOOL CWnd::KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id); }

void CWnd::SetWindowText(LPCWSTR text) { ::SetWindowTextW(m_hWnd, text); }
int CWnd::GetWindowText(LPWSTR text, int max) const { return ::GetWindowTextW(m_hWnd, text, max); }
void CWnd::GetWindowText(CString& text) const {
    int length = ::GetWindowTextLengthW(m_hWnd);
    if (length <= 0) {
        text.Empty();
        return;
    }
    std::vector<wchar_t> buf(static_cast<size_t>(length) + 1, L'\0');
    int got = ::GetWindowTextW(m_hWnd, buf.data(), length + 1);
    text = CString(buf.data(), got > 0 ? got : 0);
}
int CWnd::GetWindowTextLength() const { return ::GetWindowTextLengthW(m_hWnd); }
void CWnd::SetFont(CFont* font, BOOL redraw) {
    ::SendMessageW(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(font ? font->m_hObject : nullptr), redraw);
}
CFont* CWnd::GetFont() const {
    return CFont::FromHandle(reinterpret_cast<HFONT>(::SendMessageW(m_hWnd, WM_GETFONT, 0, 0)));
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::SendMessageW(m_hWnd, message, wParam, lParam);
}
BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::PostMessageW(m_hWnd, message, wParam, lParam);
}
int CWnd::MessageBox(LPCWSTR text, LPCWSTR caption, UINT type) {
    return ::MessageBoxW(m_hWnd, text, caption, type);
}

void CWnd::SetDlgItemText(int id, LPCWSTR text) { ::SetDlgItemTextW(m_hWnd, id, text); }
int CWnd::GetDlgItemText(int id, CString& text) const {
    text.Empty();
    HWND item = ::GetDlgItem(m_hWnd, id);
    if (!item) return 0;
    CWnd::FromHandle(item)->GetWindowText(text);
    return text.GetLength();
}
void CWnd::SetDlgItemInt(int id, UINT value, BOOL isSigned) { ::SetDlgItemInt(m_hWnd, id, value, isSigned); }
UINT CWnd::GetDlgItemInt(int id, BOOL* translated, BOOL isSigned) const {
    return ::GetDlgItemInt(m_hWnd, id, translated, isSigned);
}
void CWnd::CheckDlgButton(int id, UINT check) { ::CheckDlgButton(m_hWnd, id, check); }
UINT CWnd::IsDlgButtonChecked(int id) const { return ::IsDlgButtonChecked(m_hWnd, id); }
LRESULT CWnd::SendDlgItemMessage(int id, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::SendDlgItemMessageW(m_hWnd, id, message, wParam, lParam);
}
