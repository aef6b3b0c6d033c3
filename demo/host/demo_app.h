// The demo application: its skin, the notification log and the screen on show.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

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

    // Loads the skin's resource script (dir/default.rc) and the background from it.
    // False, with the reason on stderr, when either is missing.
    bool LoadSkin(const std::string& dir);

    // Tears down the current screen and builds the named one in a new host window.
    bool Show(const std::string& name);

    NotificationLog& log() { return log_; }
    const std::string& screen() const { return screenName_; }

private:
    void CloseScreen();

    NotificationLog log_;
    SkinSource skin_;
    HBITMAP background_ = nullptr;
    std::unique_ptr<HostWindow> window_;  // destroyed before the screen: its controls first
    std::unique_ptr<Screen> screen_;
    std::string screenName_;
};

}  // namespace zel::demo
