#include "host/host_window.h"

#include <iterator>

#include <CZELComBox.h>

#include "skin/theme.h"

namespace zel::demo {

namespace {

constexpr size_t kStatusLines = 2;
constexpr int kTabWidth = 104, kTabsRight = 736;  // tabs end left of the signal bars

std::wstring Widen(const std::string& ascii) { return std::wstring(ascii.begin(), ascii.end()); }

int IdOfWindow(HWND hwnd) { return GetDlgCtrlID(hwnd); }

}  // namespace

HostWindow::HostWindow(NotificationLog& log, HBITMAP background, Screen* screen, std::string screenName,
                       std::function<void(const std::string&)> navigate)
    : log_(log),
      background_(background),
      screen_(screen),
      screenName_(std::move(screenName)),
      navigate_(std::move(navigate)) {}

HostWindow::~HostWindow() {
    Destroy();
    FreeFrame();
}

void HostWindow::FreeFrame() {
    if (frame_) ::DeleteObject(frame_);
    frame_ = nullptr;
}

void HostWindow::Destroy() {
    if (::IsWindow(m_hWnd)) DestroyWindow();
}

// A class without CS_DBLCLKS: two quick taps on the host are two taps.
bool HostWindow::Create(const std::wstring& title) {
    return CreateEx(0, AfxRegisterWndClass(0), title.c_str(), WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                    theme::kScreenWidth, theme::kScreenHeight, nullptr, nullptr) != FALSE;
}

RECT HostWindow::TabRect(size_t index) {
    int count = 0;
    for (const ScreenInfo& s : Screens()) count += s.tab != nullptr;
    const int left = kTabsRight - count * kTabWidth + static_cast<int>(index) * kTabWidth;
    return RECT{left, 0, left + kTabWidth, theme::kTitleBarHeight};
}

// Notifications are logged first and then take the framework's way (offered to the
// sending control: an owner-drawn button's WM_DRAWITEM is its cue to draw).
LRESULT HostWindow::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND: return 1;  // WM_PAINT covers every pixel
        case WM_PAINT: Paint(); return 0;
        case WM_DESTROY:
            FreeFrame();
            return CWnd::WindowProc(message, wParam, lParam);
        case WM_COMMAND:
        case WM_NOTIFY:
            Hear(message, wParam, lParam);
            return CWnd::WindowProc(message, wParam, lParam);
        case WM_VSCROLL:
        case WM_HSCROLL: Hear(message, wParam, lParam); return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP: Pointer(message, lParam); return 0;
        case kHeardMessage:
            if (const auto* heard = reinterpret_cast<const MSG*>(lParam))
                Hear(heard->message, heard->wParam, heard->lParam);
            return 0;
        case WM_TIMER:
            if (screen_) screen_->Timer(wParam);
            return 0;
        case kNavigateMessage:
            // The last thing this window does: navigating destroys it.
            if (wParam < Screens().size() && navigate_) navigate_(Screens()[wParam].name);
            return 0;
        default: return CWnd::WindowProc(message, wParam, lParam);
    }
}

// A pointer message forwarded by a control carries only the point (screen coordinates from
// push buttons, the parent's from lists; the host covers the screen, so both are the same
// here): the control under it is the sender. With no control there, the stylus touched the
// host itself: a tab when released in the title bar, otherwise the screen's business.
// ChildWindowFromPoint also finds hidden and disabled children, which take no input, and
// looks only at rectangles, not at window regions: a tap on a hidden or disabled control,
// or outside a shaped control's region, is the host's own.
int HostWindow::ControlAt(POINT point) const {
    HWND child = ::ChildWindowFromPoint(m_hWnd, point);
    if (!child || child == m_hWnd || !::IsWindowVisible(child) || !::IsWindowEnabled(child)) return 0;
    HRGN shape = ::CreateRectRgn(0, 0, 0, 0);
    bool outside = false;
    if (shape && ::GetWindowRgn(child, shape) != ERROR) {
        POINT screen = point;
        ::ClientToScreen(m_hWnd, &screen);
        RECT frame;
        ::GetWindowRect(child, &frame);
        outside = !::PtInRegion(shape, screen.x - frame.left, screen.y - frame.top);
    }
    if (shape) ::DeleteObject(shape);
    return outside ? 0 : ::GetDlgCtrlID(child);
}

void HostWindow::Pointer(UINT message, LPARAM lParam) {
    POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (ControlAt(point)) {
        Hear(message, 0, lParam);
        return;
    }
    if (point.y >= theme::kTitleBarHeight) {
        if (screen_) screen_->Tap(message, point);
        return;
    }
    if (message != WM_LBUTTONUP) return;
    for (size_t i = 0; i < Screens().size() && Screens()[i].tab; ++i) {
        RECT tab = TabRect(i);
        if (PtInRect(&tab, point) && Screens()[i].name != screenName_) PostMessage(kNavigateMessage, i, 0);
    }
}

void HostWindow::Hear(UINT message, WPARAM wParam, LPARAM lParam) {
    Notification n = DecodeNotification(message, wParam, lParam, IdOfWindow);
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONUP) n.id = ControlAt(n.point);
    if (message == WM_COMMAND)
        n.fromComboBox = dynamic_cast<CZELComBox*>(CWnd::FromHandlePermanent(reinterpret_cast<HWND>(lParam))) != nullptr;
    if ((message == WM_VSCROLL || message == WM_HSCROLL) && !n.pos && screen_)
        n.pos = screen_->ScrollPos(reinterpret_cast<HWND>(lParam));
    log_.Add(FormatNotification(n));
    RECT status{0, theme::kStatusTop, theme::kScreenWidth, theme::kScreenHeight};
    InvalidateRect(&status, FALSE);
    if (screen_) screen_->Heard(message, wParam, lParam);
}

void HostWindow::Paint() {
    PAINTSTRUCT ps;
    HDC dc = ::BeginPaint(m_hWnd, &ps);
    RECT client;
    GetClientRect(&client);
    HDC memory = CreateCompatibleDC(dc);
    // One frame for the window's life: outside the update region its old contents are
    // never shown, so it need not be made (or cleared) again for each paint.
    BITMAP size{};
    if (frame_ && (::GetObjectW(frame_, sizeof size, &size) != sizeof size || size.bmWidth != client.right ||
                   size.bmHeight != client.bottom))
        FreeFrame();
    if (!frame_) frame_ = CreateCompatibleBitmap(dc, client.right, client.bottom);
    HGDIOBJ oldFrame = SelectObject(memory, frame_);
    // The paint DC shows only the update region, so the frame is drawn only inside its
    // bounding box, and only that box is presented.
    const RECT& paint = ps.rcPaint;
    IntersectClipRect(memory, paint.left, paint.top, paint.right, paint.bottom);

    if (background_) {
        HDC source = CreateCompatibleDC(dc);
        HGDIOBJ old = SelectObject(source, background_);
        BitBlt(memory, 0, 0, client.right, client.bottom, source, 0, 0, SRCCOPY);
        SelectObject(source, old);
        DeleteDC(source);
    } else {
        FillBox(memory, client, theme::kScreen);
    }
    PaintTitleBar(memory);
    if (screen_) screen_->Paint(memory);
    PaintStatus(memory);

    BitBlt(dc, paint.left, paint.top, paint.right - paint.left, paint.bottom - paint.top, memory, paint.left, paint.top,
           SRCCOPY);
    SelectObject(memory, oldFrame);
    DeleteDC(memory);
    ::EndPaint(m_hWnd, &ps);
}

// The title on the left; the tabs on the right, the current one lit and underlined with
// the accent colour.
void HostWindow::PaintTitleBar(HDC frame) {
    wchar_t title[128] = {};
    GetWindowText(title, static_cast<int>(std::size(title)));
    DrawLabel(frame, title, RECT{24, 0, TabRect(0).left, theme::kTitleBarHeight}, titleFont_, theme::kText,
              DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
    for (size_t i = 0; i < Screens().size() && Screens()[i].tab; ++i) {
        const RECT tab = TabRect(i);
        const bool current = Screens()[i].name == screenName_;
        DrawLabel(frame, Screens()[i].tab, tab, tabFont_, current ? theme::kText : theme::kTextDim,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        if (current) FillBox(frame, RECT{tab.left + 16, tab.bottom - 5, tab.right - 16, tab.bottom - 2}, theme::kAccent);
    }
}

// Newest notification at the bottom in full colour, the one before it dimmed.
void HostWindow::PaintStatus(HDC frame) {
    std::vector<std::string> last = log_.Last(kStatusLines);
    const int rowHeight = (theme::kScreenHeight - theme::kStatusTop - 2) / static_cast<int>(kStatusLines);
    for (size_t i = 0; i < last.size(); ++i) {
        const size_t row = kStatusLines - last.size() + i;
        const int top = theme::kStatusTop + 1 + static_cast<int>(row) * rowHeight;
        DrawLabel(frame, Widen(last[i]), RECT{16, top, theme::kScreenWidth - 16, top + rowHeight}, statusFont_,
                  i + 1 == last.size() ? theme::kText : theme::kTextDim);
    }
}

}  // namespace zel::demo
