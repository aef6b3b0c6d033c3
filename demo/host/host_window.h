// The host window of one screen: a full-screen WS_POPUP window that paints the skin's
// background, the screen's title and a status strip with the last notifications, and
// logs every notification its child controls send it.
#pragma once

#include <windows.h>

#include <string>

#include "host/notification.h"
#include "host/screens.h"

namespace zel::demo {

class HostWindow {
public:
    // background stays the caller's; screen answers scroll positions (may be null).
    HostWindow(NotificationLog& log, HBITMAP background, const Screen* screen);
    ~HostWindow();  // destroys the window and with it the screen's controls
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    bool Create(const std::wstring& title);
    HWND hwnd() const { return hwnd_; }

private:
    static LRESULT CALLBACK Proc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void Paint();
    void Hear(UINT message, WPARAM wParam, LPARAM lParam);
    int ControlAt(POINT point) const;

    NotificationLog& log_;
    HBITMAP background_;
    const Screen* screen_;
    HWND hwnd_ = nullptr;
    HFONT titleFont_ = nullptr;
    HFONT statusFont_ = nullptr;
};

}  // namespace zel::demo
