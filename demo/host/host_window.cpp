#include "host/host_window.h"

#include <cwchar>
#include <iterator>

#include "skin/theme.h"

namespace zel::demo {

namespace {

constexpr wchar_t kClassName[] = L"ZelDemoHost";
constexpr size_t kStatusLines = 2;

bool RegisterHostClass(WNDPROC proc) {
    static bool registered = false;
    if (registered) return true;
    WNDCLASSW wc{};
    wc.lpfnWndProc = proc;
    wc.lpszClassName = kClassName;
    registered = RegisterClassW(&wc) != 0;
    return registered;
}

HFONT MakeFont(int height, int weight) {
    LOGFONTW lf{};
    lf.lfHeight = height;
    lf.lfWeight = weight;
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfQuality = ANTIALIASED_QUALITY;
    std::wcsncpy(lf.lfFaceName, L"Tahoma", LF_FACESIZE - 1);
    return CreateFontIndirectW(&lf);
}

void DrawLine(HDC dc, const std::string& text, RECT rc, COLORREF color) {
    std::wstring wide(text.begin(), text.end());  // log lines are ASCII
    SetTextColor(dc, color);
    DrawTextW(dc, wide.c_str(), static_cast<int>(wide.size()), &rc, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

int IdOfWindow(HWND hwnd) { return GetDlgCtrlID(hwnd); }

}  // namespace

HostWindow::HostWindow(NotificationLog& log, HBITMAP background, const Screen* screen)
    : log_(log), background_(background), screen_(screen) {}

HostWindow::~HostWindow() {
    if (IsWindow(hwnd_)) DestroyWindow(hwnd_);
    if (titleFont_) DeleteObject(titleFont_);
    if (statusFont_) DeleteObject(statusFont_);
}

bool HostWindow::Create(const std::wstring& title) {
    if (!RegisterHostClass(&HostWindow::Proc)) return false;
    titleFont_ = MakeFont(26, FW_BOLD);
    statusFont_ = MakeFont(15, FW_NORMAL);
    return CreateWindowExW(0, kClassName, title.c_str(), WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                           theme::kScreenWidth, theme::kScreenHeight, nullptr, nullptr, nullptr, this) != nullptr;
}

// The object rides in on WM_NCCREATE's creation parameters and stays in the user data
// until WM_DESTROY.
LRESULT CALLBACK HostWindow::Proc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<HostWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->hwnd_ = hwnd;
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (!self) return DefWindowProcW(hwnd, message, wParam, lParam);
    return self->Handle(message, wParam, lParam);
}

LRESULT HostWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND: return 1;  // WM_PAINT covers every pixel
        case WM_PAINT: Paint(); return 0;
        case WM_COMMAND:
        case WM_NOTIFY:
        case WM_VSCROLL:
        case WM_HSCROLL:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP: Hear(message, wParam, lParam); return 0;
        case WM_DESTROY: SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0); return 0;
        default: return DefWindowProcW(hwnd_, message, wParam, lParam);
    }
}

// A pointer message forwarded by a control carries only the point (screen coordinates from
// push buttons, the parent's from lists; the host covers the screen, so both are the same
// here): the control under it is the sender.
int HostWindow::ControlAt(POINT point) const {
    HWND child = ChildWindowFromPoint(hwnd_, point);
    return child && child != hwnd_ ? GetDlgCtrlID(child) : 0;
}

void HostWindow::Hear(UINT message, WPARAM wParam, LPARAM lParam) {
    Notification n = DecodeNotification(message, wParam, lParam, IdOfWindow);
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONUP) n.id = ControlAt(n.point);
    if ((message == WM_VSCROLL || message == WM_HSCROLL) && !n.pos && screen_)
        n.pos = screen_->ScrollPos(reinterpret_cast<HWND>(lParam));
    log_.Add(FormatNotification(n));
    RECT status{0, theme::kStatusTop, theme::kScreenWidth, theme::kScreenHeight};
    InvalidateRect(hwnd_, &status, FALSE);
}

void HostWindow::Paint() {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(hwnd_, &ps);
    RECT client;
    GetClientRect(hwnd_, &client);
    HDC memory = CreateCompatibleDC(dc);
    HBITMAP frame = CreateCompatibleBitmap(dc, client.right, client.bottom);
    HGDIOBJ oldFrame = SelectObject(memory, frame);

    if (background_) {
        HDC source = CreateCompatibleDC(dc);
        HGDIOBJ old = SelectObject(source, background_);
        BitBlt(memory, 0, 0, client.right, client.bottom, source, 0, 0, SRCCOPY);
        SelectObject(source, old);
        DeleteDC(source);
    } else {
        HBRUSH screen = CreateSolidBrush(theme::kScreen);
        FillRect(memory, &client, screen);
        DeleteObject(screen);
    }

    SetBkMode(memory, TRANSPARENT);
    wchar_t title[128] = {};
    GetWindowTextW(hwnd_, title, static_cast<int>(std::size(title)));
    HGDIOBJ oldFont = SelectObject(memory, titleFont_);
    RECT titleRect{24, 0, 720, theme::kTitleBarHeight};
    SetTextColor(memory, theme::kText);
    DrawTextW(memory, title, -1, &titleRect, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);

    // Newest notification at the bottom in full colour, the one before it dimmed.
    SelectObject(memory, statusFont_);
    std::vector<std::string> last = log_.Last(kStatusLines);
    int rowHeight = (theme::kScreenHeight - theme::kStatusTop - 2) / static_cast<int>(kStatusLines);
    for (size_t i = 0; i < last.size(); ++i) {
        size_t row = kStatusLines - last.size() + i;
        int top = theme::kStatusTop + 1 + static_cast<int>(row) * rowHeight;
        DrawLine(memory, last[i], RECT{16, top, theme::kScreenWidth - 16, top + rowHeight},
                 i + 1 == last.size() ? theme::kText : theme::kTextDim);
    }
    SelectObject(memory, oldFont);

    BitBlt(dc, 0, 0, client.right, client.bottom, memory, 0, 0, SRCCOPY);
    SelectObject(memory, oldFrame);
    DeleteObject(frame);
    DeleteDC(memory);
    EndPaint(hwnd_, &ps);
}

}  // namespace zel::demo
