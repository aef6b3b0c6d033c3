// The demo application: its skin, the notification log and the screen on show.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "host/host_window.h"
#include "host/notification.h"
#include "host/screens.h"

namespace zel::demo {

class DemoApp {
public:
    DemoApp() = default;
    ~DemoApp();
    DemoApp(const DemoApp&) = delete;
    DemoApp& operator=(const DemoApp&) = delete;

    // Loads the skin's resource script (dir/default.rc), makes it the resource handle and
    // loads the background from it. False, with the reason on stderr, when either is
    // missing.
    bool LoadSkin(const std::string& dir);

    // Loads the skin's folder again and rebuilds the screen on show with it (its controls
    // start afresh). A skin that no longer loads changes nothing: false, the reason on
    // stderr. Not from inside a host window's handler.
    bool ReloadSkin();

    // Tears down the current screen and builds the named one in a new host window. May be
    // called from inside the current host window's message handler (a tab was tapped).
    bool Show(const std::string& name);

    NotificationLog& log() { return log_; }
    const std::string& screen() const { return screenName_; }

private:
    // A screen and its host window; the window is destroyed before the screen, and with
    // it the screen's controls.
    struct Shown {
        std::unique_ptr<Screen> screen;
        std::unique_ptr<HostWindow> window;
    };

    void CloseScreen();

    NotificationLog log_;
    std::string skinDir_;
    SkinSource skin_;
    HBITMAP background_ = nullptr;
    Shown current_;
    // Screens closed while their host window's handler may still be on the stack: their
    // windows are gone, the objects wait for the next Show or the end.
    std::vector<Shown> retired_;
    std::string screenName_;
};

}  // namespace zel::demo
