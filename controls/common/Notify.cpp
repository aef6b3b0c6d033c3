#include "Notify.h"

namespace zelctl {

bool NotifyParent(CWnd& self, UINT message, WPARAM wParam, LPARAM lParam) {
    const AliveCheck alive(self);
    if (!alive.Alive()) return false;
    HWND parent = ::GetParent(self.GetSafeHwnd());
    if (parent && ::IsWindow(parent)) ::SendMessageW(parent, message, wParam, lParam);
    return alive.Alive();
}

bool NotifyCommand(CWnd& self, WORD code) {
    const WORD id = static_cast<WORD>(self.GetDlgCtrlID() & 0xFFFF);
    return NotifyParent(self, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(self.GetSafeHwnd()));
}

bool NotifyNmhdr(CWnd& self, int code) {
    HWND hwnd = self.GetSafeHwnd();
    const LONG id = ::GetWindowLongW(hwnd, GWL_ID);
    NMHDR hdr{};
    hdr.hwndFrom = hwnd;
    hdr.idFrom = static_cast<UINT_PTR>(id);
    hdr.code = static_cast<UINT>(code);
    return NotifyParent(self, WM_NOTIFY, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&hdr));
}

bool NotifyScroll(CWnd& self, UINT message, UINT code, long pos) {
    return NotifyParent(self, message, MAKEWPARAM(code, pos), reinterpret_cast<LPARAM>(self.GetSafeHwnd()));
}

bool ForwardPointer(CWnd& self, UINT message, UINT flags, CPoint clientPoint, PointIn target) {
    HWND hwnd = self.GetSafeHwnd();
    if (!hwnd || !::IsWindow(hwnd)) return false;
    POINT pt{clientPoint.x, clientPoint.y};
    ::ClientToScreen(hwnd, &pt);
    HWND parent = ::GetParent(hwnd);
    if (target == PointIn::Parent && parent) ::ScreenToClient(parent, &pt);
    return NotifyParent(self, message, flags, MAKELPARAM(pt.x, pt.y));
}

}  // namespace zelctl
