// The default window procedure. Each message it acts on has a small handler below.
#include <algorithm>
#include <cstring>

#include "user/wndmgr.h"

namespace zel::user {

namespace {

LRESULT OnNcCreate(Window* w, LPARAM lp) {
    auto* cs = reinterpret_cast<const CREATESTRUCTW*>(lp);
    if (cs && cs->lpszName && !IS_INTRESOURCE(cs->lpszName)) w->text = cs->lpszName;
    return TRUE;
}

// Without a non-client area, every point of the window rectangle is client area.
LRESULT OnNcHitTest(Window* w, LPARAM lp) {
    RECT r = ScreenRect(w);
    int x = GET_X_LPARAM(lp), y = GET_Y_LPARAM(lp);
    return x >= r.left && x < r.right && y >= r.top && y < r.bottom ? HTCLIENT : HTNOWHERE;
}

LRESULT OnPaint(HWND hwnd) {
    PAINTSTRUCT ps;
    if (BeginPaint(hwnd, &ps)) EndPaint(hwnd, &ps);
    return 0;
}

// The class brush fills the area to erase (the DC's clip box: the update region's bounds).
LRESULT OnEraseBackground(Window* w, WPARAM wp) {
    HBRUSH brush = w->cls ? ResolveBrush(w->cls->background) : nullptr;
    if (!brush) return 0;
    HDC dc = reinterpret_cast<HDC>(wp);
    RECT box;
    if (GetClipBox(dc, &box) == ERROR) return 0;
    FillRect(dc, &box, brush);
    return 1;
}

LRESULT OnSetText(Window* w, LPARAM lp) {
    auto* text = reinterpret_cast<LPCWSTR>(lp);
    w->text = text ? text : L"";
    return TRUE;
}

LRESULT OnGetText(Window* w, WPARAM wp, LPARAM lp) {
    auto* buf = reinterpret_cast<LPWSTR>(lp);
    if (!buf || wp == 0) return 0;
    size_t n = std::min(w->text.size(), static_cast<size_t>(wp) - 1);
    std::wmemcpy(buf, w->text.c_str(), n);
    buf[n] = 0;
    return static_cast<LRESULT>(n);
}

// WM_MOVE and WM_SIZE come from here, so a window procedure that handles
// WM_WINDOWPOSCHANGED without passing it on gets neither.
LRESULT OnWindowPosChanged(Window* w, LPARAM lp) {
    auto* wp = reinterpret_cast<const WINDOWPOS*>(lp);
    if (!wp) return 0;
    HWND hwnd = w->handle;
    if (!(wp->flags & kNoClientMove)) Send(w, WM_MOVE, 0, MAKELPARAM(w->rect.left, w->rect.top));
    if (!(wp->flags & kNoClientSize) && (w = Get(hwnd)))
        Send(w, WM_SIZE, 0 /* SIZE_RESTORED */, MAKELPARAM(w->Width(), w->Height()));
    return 0;
}

// Default control colours: window colours for edits and lists, the face colour otherwise.
LRESULT OnCtlColor(UINT msg, WPARAM wp) {
    HDC dc = reinterpret_cast<HDC>(wp);
    bool windowLike = msg == WM_CTLCOLOREDIT || msg == WM_CTLCOLORLISTBOX;
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(dc, GetSysColor(windowLike ? COLOR_WINDOW : COLOR_BTNFACE));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(windowLike ? COLOR_WINDOW : COLOR_BTNFACE));
}

LRESULT OnActivate(HWND hwnd, WPARAM wp) {
    if (LOWORD(wp) != WA_INACTIVE) SetFocus(hwnd);
    return 0;
}

LRESULT OnCancelMode(HWND hwnd) {
    if (GetCapture() == hwnd) ReleaseCapture();
    return 0;
}

}  // namespace

}  // namespace zel::user

using namespace zel::user;

extern "C" {

LRESULT DefWindowProcW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    Window* w = Get(hwnd);
    if (!w) return 0;
    Busy busy;
    switch (msg) {
        case WM_NCCREATE: return OnNcCreate(w, lParam);
        case WM_NCHITTEST: return OnNcHitTest(w, lParam);
        case WM_PAINT: return OnPaint(hwnd);
        case WM_ERASEBKGND: return OnEraseBackground(w, wParam);
        case WM_SETTEXT: return OnSetText(w, lParam);
        case WM_GETTEXT: return OnGetText(w, wParam, lParam);
        case WM_GETTEXTLENGTH: return static_cast<LRESULT>(w->text.size());
        case WM_WINDOWPOSCHANGED: return OnWindowPosChanged(w, lParam);
        case WM_CTLCOLORMSGBOX:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSCROLLBAR:
        case WM_CTLCOLORSTATIC: return OnCtlColor(msg, wParam);
        case WM_ACTIVATE: return OnActivate(hwnd, wParam);
        case WM_CANCELMODE: return OnCancelMode(hwnd);
        case WM_CLOSE: DestroyWindow(hwnd); return 0;
        case WM_MOUSEACTIVATE: return 1;  // MA_ACTIVATE
        default: return 0;
    }
}

LRESULT CallWindowProcW(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (!proc) return 0;
    Busy busy;
    return proc(hwnd, msg, wParam, lParam);
}

}  // extern "C"
