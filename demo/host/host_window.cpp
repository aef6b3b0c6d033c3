#include "host/host_window.h"

#include <algorithm>
#include <iterator>

#include <CZELComBox.h>

#include "skin/theme.h"

namespace zel::demo {

namespace {

constexpr int kTabWidth = 104, kTabsRight = 736;  // tabs end left of the signal bars

std::wstring Widen(const std::string& ascii) { return std::wstring(ascii.begin(), ascii.end()); }

int IdOfWindow(HWND hwnd) { return GetDlgCtrlID(hwnd); }

bool Meets(const RECT& a, const RECT& b) {
    RECT meet;
    return ::IntersectRect(&meet, &a, &b) != FALSE;
}

// Posted to the host itself after a notification (the host's own, past the screens' in
// screens.h): the status strip is brought up to date once the burst it came in is over.
constexpr UINT kStatusMessage = WM_APP + 16;

constexpr RECT kTitleBar{0, 0, theme::kScreenWidth, theme::kTitleBarHeight};
constexpr RECT kStatusStrip{0, theme::kStatusTop, theme::kScreenWidth, theme::kScreenHeight};

// Row `row` of the status strip (0 at the top), where its line is written.
RECT StatusBox(size_t row, size_t rows) {
    const int height = (theme::kScreenHeight - theme::kStatusTop - 2) / static_cast<int>(rows);
    const int top = theme::kStatusTop + 1 + static_cast<int>(row) * height;
    return RECT{16, top, theme::kScreenWidth - 16, top + height};
}

// The log's last lines as the strip's rows show them: the newest at the bottom.
template <size_t N>
std::array<std::string, N> LastRows(const NotificationLog& log) {
    std::array<std::string, N> rows;
    const std::vector<std::string> last = log.Last(N);
    for (size_t i = 0; i < last.size(); ++i) rows[N - last.size() + i] = last[i];
    return rows;
}

}  // namespace

HostWindow::HostWindow(NotificationLog& log, HBITMAP background, Screen* screen, std::string screenName,
                       std::function<void(const std::string&)> navigate)
    : log_(log),
      background_(background),
      screen_(screen),
      screenName_(std::move(screenName)),
      navigate_(std::move(navigate)) {}

HostWindow::~HostWindow() { Destroy(); }

// The frame's content in area (client coordinates) is out of date: drawn again at the
// next paint, which this asks for.
void HostWindow::Changed(const RECT& area) {
    frame_.MarkStale(area);
    if (m_hWnd) InvalidateRect(&area, FALSE);
}

// Shown without working out what it uncovers or covers: a host covers the whole screen,
// so all of it and every control paint anyway.
void HostWindow::Show() {
    if (!::IsWindow(m_hWnd)) return;
    SetWindowPos(nullptr, 0, 0, 0, 0, SWP_SHOWWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOREDRAW);
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void HostWindow::HideUnder() {
    if (::IsWindow(m_hWnd))
        SetWindowPos(nullptr, 0, 0, 0, 0,
                     SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
}

void HostWindow::Leave() {
    const HWND focus = ::GetFocus();
    focus_ = focus && ::IsChild(m_hWnd, focus) ? focus : nullptr;
    if (screen_) screen_->Pause();
}

// As a dialog gives the focus back to the control that had it when it is activated again.
void HostWindow::Return() {
    if (!::IsWindow(m_hWnd)) return;
    if (screen_) screen_->Resume();
    ::SetActiveWindow(m_hWnd);
    if (focus_ && ::IsChild(m_hWnd, focus_)) ::SetFocus(focus_);
    focus_ = nullptr;
    StatusChanged();  // other screens logged meanwhile
}

void HostWindow::Destroy() {
    if (::IsWindow(m_hWnd)) DestroyWindow();
}

// A class without CS_DBLCLKS: two quick taps on the host are two taps. Made hidden, as a
// dialog is while its controls are created: a control that paints itself when set up
// (UpdateWindow) then paints nothing yet, and no child's creation uncovers or covers
// anything. Show() puts the window, and every control with it, on the screen at once.
bool HostWindow::Create(const std::wstring& title) {
    if (!CreateEx(0, AfxRegisterWndClass(0), title.c_str(), WS_POPUP | WS_CLIPCHILDREN, 0, 0,
                  theme::kScreenWidth, theme::kScreenHeight, nullptr, nullptr))
        return false;
    // Activated (and so raised) while still hidden, when that moves nothing on the screen:
    // shown later, it is already on top and active, and showing it only covers.
    ::SetActiveWindow(m_hWnd);
    StatusChanged();  // the whole window is invalid already; this records the rows
    return true;
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
            frame_.Free();
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
        case kChangedMessage:
            if (lParam) Changed(*reinterpret_cast<const RECT*>(lParam));
            return 0;
        case kStatusMessage:
            statusPending_ = false;
            StatusChanged();
            return 0;
        case kNavigateMessage:
            // The last thing this window does: navigating hides it, kept for a return. A tab
            // tapped on a host no longer on show (another screen came up before the message
            // did) asks for nothing.
            if (wParam < Screens().size() && navigate_ && IsWindowVisible()) navigate_(Screens()[wParam].name);
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
    // A tap sends a burst (the press, then the control's notification): the strip is
    // compared with what it shows once the burst is over, so lines that come back as they
    // were -- the same row tapped again -- repaint nothing. Posted messages come before
    // painting, so the strip is never painted out of date.
    if (!statusPending_ && m_hWnd && PostMessage(kStatusMessage)) statusPending_ = true;
    if (!statusPending_) StatusChanged();
    if (screen_) screen_->Heard(message, wParam, lParam);
}

void HostWindow::Paint() {
    // The update region itself, not just its box: two strips far apart (a readout and the
    // status strip) are drawn as two strips. BeginPaint validates it, so it is read first.
    HRGN update = ::CreateRectRgn(0, 0, 0, 0);
    const bool haveUpdate = update && ::GetUpdateRgn(m_hWnd, update, FALSE) > NULLREGION;
    PAINTSTRUCT ps;
    HDC dc = ::BeginPaint(m_hWnd, &ps);
    RECT client;
    GetClientRect(&client);
    const RECT& paint = ps.rcPaint;
    if (!haveUpdate && update) ::SetRectRgn(update, paint.left, paint.top, paint.right, paint.bottom);
    HDC memory = CreateCompatibleDC(dc);
    // One frame for the window's life: outside the update region its old contents are
    // never shown, so it need not be made (or cleared) again for each paint.
    const bool fresh = frame_.Fit(dc, client);
    HGDIOBJ oldFrame = SelectObject(memory, frame_.bitmap());

    // What is drawn: of the update region, the part whose content changed or was never
    // drawn -- all of it for a screen that does not announce its changes. The rest the
    // frame still holds (a popup closed over it, the whole screen was invalidated).
    HRGN redraw = frame_.Redraw(update, !screen_ || screen_->AnnouncesChanges());
    RECT box{};
    if (redraw && ::GetRgnBox(redraw, &box) > NULLREGION) {
        SelectClipRgn(memory, redraw);
        // The background not under the controls. A new frame takes it whole, once: a bitmap
        // written whole by its first blit is never zero-filled. Only the blit is clipped so:
        // every clip rectangle costs each shape and glyph drawn after it.
        const int saved = SaveDC(memory);
        HRGN under = fresh ? nullptr : ExcludeControls(memory, box);
        if (background_) {
            HDC source = CreateCompatibleDC(dc);
            HGDIOBJ old = SelectObject(source, background_);
            BitBlt(memory, 0, 0, client.right, client.bottom, source, 0, 0, SRCCOPY);
            SelectObject(source, old);
            DeleteDC(source);
        } else {
            FillBox(memory, client, theme::kScreen);
        }
        RestoreDC(memory, saved);
        if (Meets(box, kTitleBar)) PaintTitleBar(memory);
        if (screen_) screen_->Paint(memory);
        if (Meets(box, kStatusStrip)) PaintStatus(memory);
        // Drawn now, except under the controls, where the frame was left as it was.
        frame_.Drawn(redraw);
        if (under) {
            ::CombineRgn(under, under, redraw, RGN_AND);
            frame_.MarkStale(under);
            ::DeleteObject(under);
        }
    }
    if (redraw) ::DeleteObject(redraw);
    if (update) ::DeleteObject(update);

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
    const auto rows = LastRows<kStatusLines>(log_);
    for (size_t row = 0; row < kStatusLines; ++row)
        if (!rows[row].empty())
            DrawLabel(frame, Widen(rows[row]), StatusBox(row, kStatusLines), statusFont_,
                      row + 1 == kStatusLines ? theme::kText : theme::kTextDim);
}

// A notification moves the strip's lines up a row: only the rows whose text changed are
// repainted (a repeated notification changes none), and of a row only as far as the old or
// the new line can have left ink.
void HostWindow::StatusChanged() {
    const auto rows = LastRows<kStatusLines>(log_);
    HDC measure = nullptr;
    for (size_t row = 0; row < kStatusLines; ++row) {
        if (rows[row] == status_[row]) continue;
        if (!measure) measure = ::CreateCompatibleDC(nullptr);
        RECT span = StatusBox(row, kStatusLines);
        const int ink = std::max(InkWidth(measure, Widen(status_[row]), statusFont_),
                                 InkWidth(measure, Widen(rows[row]), statusFont_));
        span.right = std::min<LONG>(span.right, span.left + ink);
        status_[row] = rows[row];
        Changed(span);
    }
    if (measure) ::DeleteDC(measure);
}

// Controls paint themselves, and the paint DC leaves them out (the host clips its
// children): the frame is not drawn under them either. Around a shaped control the host
// shows through, so those keep their rectangle. Returns what was left out (NULL: nothing).
HRGN HostWindow::ExcludeControls(HDC frame, const RECT& paint) const {
    HRGN shape = ::CreateRectRgn(0, 0, 0, 0);
    if (!shape) return nullptr;  // which controls are shaped cannot be told: leave none out
    HRGN under = nullptr;
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (!::IsWindowVisible(child)) continue;
        RECT r;
        ::GetWindowRect(child, &r);
        ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&r), 2);
        if (!Meets(r, paint) || ::GetWindowRgn(child, shape) != ERROR) continue;
        ::ExcludeClipRect(frame, r.left, r.top, r.right, r.bottom);
        if (!under) {
            under = ::CreateRectRgnIndirect(&r);
        } else {
            ::SetRectRgn(shape, r.left, r.top, r.right, r.bottom);
            ::CombineRgn(under, under, shape, RGN_OR);
        }
    }
    ::DeleteObject(shape);
    return under;
}

}  // namespace zel::demo
