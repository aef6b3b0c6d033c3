// Telling the parent window. Every notification of the library goes to GetParent(),
// synchronously (SendMessageW), and only when the parent passes IsWindow. The parent may
// destroy the control while handling it, so each call reports whether the control still
// exists: a caller that gets false must return at once and touch no member.
#pragma once

#include <afxwin.h>

namespace zelctl {

// Sends (message, wParam, lParam) to the live parent. True when `self` survived.
bool NotifyParent(CWnd& self, UINT message, WPARAM wParam, LPARAM lParam);

// WM_COMMAND: wParam = MAKEWPARAM(the control identifier's low 16 bits, code), lParam = the control.
bool NotifyCommand(CWnd& self, WORD code = 0);

// WM_NOTIFY with an NMHDR {control, identifier, code} on the stack; wParam = the
// identifier read with GetWindowLongW(GWL_ID).
bool NotifyNmhdr(CWnd& self, int code);

// WM_HSCROLL / WM_VSCROLL: wParam = MAKEWPARAM(code, position), lParam = the control.
bool NotifyScroll(CWnd& self, UINT message, UINT code, long pos);

// Where a forwarded pointer message's point is expressed.
enum class PointIn { Parent, Screen };

// Forwards a pointer message (WM_LBUTTONDOWN, WM_LBUTTONUP, ...) with the key flags and
// `clientPoint` converted into the parent's client or the screen's coordinates.
bool ForwardPointer(CWnd& self, UINT message, UINT flags, CPoint clientPoint, PointIn target);

// For code that sends something else and must know afterwards whether the window lives.
class AliveCheck {
public:
    explicit AliveCheck(const CWnd& wnd) : hwnd_(wnd.GetSafeHwnd()) {}
    bool Alive() const { return hwnd_ && ::IsWindow(hwnd_); }

private:
    HWND hwnd_;
};

}  // namespace zelctl
