// The host of one screen: a full-screen WS_POPUP window that paints the skin's background,
// a title bar with the screen's title and a tab per screen, the screen's own content and a
// status strip with the last notifications; it logs every notification its child controls
// send it and hands it on to the screen.
//
// It is a CWnd, as a device application's dialog is: owner-drawn buttons draw when their
// parent reflects WM_DRAWITEM to them, and command and notify messages are offered to the
// sending control first.
#pragma once

#include <afxwin.h>

#include <array>
#include <functional>
#include <string>

#include "host/kept_frame.h"
#include "host/notification.h"
#include "host/paint_kit.h"
#include "host/screens.h"

namespace zel::demo {

class HostWindow : public CWnd {
public:
    // background stays the caller's. navigate is called with a screen's name when a tab is
    // tapped; it may destroy this window (not the object) from inside the call.
    HostWindow(NotificationLog& log, HBITMAP background, Screen* screen, std::string screenName,
               std::function<void(const std::string&)> navigate);
    ~HostWindow() override;  // destroys the window and with it the screen's controls
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    bool Create(const std::wstring& title);  // hidden: Show() once the controls are made
    void Show();
    // Hidden without repainting anything under it: for a host another host is about to
    // cover (destroying a hidden window uncovers nothing either).
    void HideUnder();
    // Kept for a return while another host is on show: remembers the control with the
    // focus (activating the other host takes it away) and pauses the screen. Before the
    // other host is made or activated.
    void Leave();
    // Back from Leave, still hidden: the screen resumes, the host is activated (raised
    // while that moves nothing on the screen), the focus goes back where it was and the
    // status strip catches up with the log. Show() then puts it on the screen.
    void Return();
    void Destroy();
    HWND hwnd() const { return m_hWnd; }

    // The tab of Screens()[index] in the title bar.
    static RECT TabRect(size_t index);

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Paint();
    HRGN ExcludeControls(HDC frame, const RECT& paint) const;
    void StatusChanged();
    void Changed(const RECT& area);
    void PaintTitleBar(HDC frame);
    void PaintStatus(HDC frame);
    void Hear(UINT message, WPARAM wParam, LPARAM lParam);
    void Pointer(UINT message, LPARAM lParam);
    int ControlAt(POINT point) const;

    NotificationLog& log_;
    HBITMAP background_;
    Screen* screen_;
    std::string screenName_;
    std::function<void(const std::string&)> navigate_;
    Font titleFont_{26, FW_BOLD};
    Font tabFont_{17, FW_BOLD};
    Font statusFont_{15};
    KeptFrame frame_;
    // What each row of the status strip shows, top to bottom (empty: nothing), so that a
    // notification repaints only the rows it changes.
    static constexpr size_t kStatusLines = 2;
    std::array<std::string, kStatusLines> status_{};
    bool statusPending_ = false;  // a kStatusMessage is on its way
    HWND focus_ = nullptr;        // the control that had the focus when the host was left
};

}  // namespace zel::demo
