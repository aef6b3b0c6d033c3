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
    // start afresh); the screens kept hidden wear the old skin and go. A skin that no
    // longer loads changes nothing: false, the reason on stderr. Not from inside a host
    // window's handler.
    bool ReloadSkin();

    // Shows the named screen: the one kept from an earlier show as it was left (its
    // controls' state, its pictures), otherwise a new one built in a new host window. The
    // screen on show is hidden under it and kept; beyond kKeptScreens kept, the least
    // recently shown is destroyed. The screen on show stays up when the named one cannot
    // be built. May be called from inside the current host window's message handler (a
    // tab was tapped).
    bool Show(const std::string& name);

    // Destroys every screen kept hidden (not the one on show), as if none had been shown
    // before. Not from inside a host window's handler.
    void DropKeptScreens();

    // How many screens besides the one on show stay built: each holds its windows, its
    // controls' pictures and its host's 800 x 480 frame, some 1.75 MB of resident memory
    // (docs/performance.md, "Screens kept built between shows").
    static constexpr size_t kKeptScreens = 4;
    // The screens kept hidden, the least recently shown first.
    std::vector<std::string> KeptScreens() const;

    NotificationLog& log() { return log_; }
    const std::string& screen() const { return screenName_; }

private:
    // A screen and its host window; the window is destroyed before the screen, and with
    // it the screen's controls.
    struct Shown {
        std::string name;
        std::unique_ptr<Screen> screen;
        std::unique_ptr<HostWindow> window;
    };

    void CloseScreen();
    void Retire(Shown shown);

    NotificationLog log_;
    std::string skinDir_;
    SkinSource skin_;
    HBITMAP background_ = nullptr;
    Shown current_;
    // Screens shown before and hidden since, their windows alive; the least recently shown
    // first.
    std::vector<Shown> kept_;
    // Screens closed while their host window's handler may still be on the stack: their
    // windows are gone, the objects wait for the next Show or the end.
    std::vector<Shown> retired_;
    std::string screenName_;
};

}  // namespace zel::demo
