// The device screens of the demo. Each is built as the children of a fresh host window
// and torn down with it; the host paints around the controls, and hands the screen what
// it hears from them, its own taps and its timers. A screen shown before is kept built
// while others are on show (host/demo_app.h): it is paused while hidden and resumed on
// its return.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zel::demo {

// Where a screen takes its skin from: the generated resource module (by identifier) and
// the folder of its bitmap files (by path). The module is also the application's resource
// handle (AfxSetResourceHandle), as a device application sets it to its resource library.
struct SkinSource {
    HINSTANCE module = nullptr;
    std::string bitmapDir;  // ends without a slash; files are <dir>/<piece>.bmp
    // The screen's background as the host paints it (from the client origin); the
    // application's, lent for the screen's life. NULL: the theme's screen colour.
    HBITMAP background = nullptr;

    std::string Path(const char* piece) const { return bitmapDir + "/" + piece + ".bmp"; }
};

class Screen {
public:
    virtual ~Screen() = default;
    // Creates the screen's controls as children of host. False when one cannot be made.
    virtual bool Build(HWND host, const SkinSource& skin) = 0;
    // The position of one of the screen's scroll controls, for the scroll codes whose
    // message carries none.
    virtual std::optional<long> ScrollPos(HWND control) const { return std::nullopt; }
    // Draws the screen's own content (labels, lists) over the background of the host's
    // off-screen frame; the controls paint themselves.
    virtual void Paint(HDC frame) {}
    // True when the screen tells the host of every change to what Paint draws
    // (ContentChanged): the host then keeps its frame and repaints from it whatever else
    // is invalidated (a control's popup closing, a repaint of the whole screen). Otherwise
    // every update is drawn afresh.
    virtual bool AnnouncesChanges() const { return false; }
    // A notification the host has just logged (WM_COMMAND, WM_NOTIFY, WM_HSCROLL, ...).
    virtual void Heard(UINT message, WPARAM wParam, LPARAM lParam) {}
    // The stylus on the host itself, below the title bar (host client coordinates).
    virtual void Tap(UINT message, POINT point) {}
    // A timer the screen set on the host window.
    virtual void Timer(UINT_PTR id) {}
    // The host is about to be hidden and kept for a return: timers whose work only changes
    // what is shown stop here (a hidden window paints nothing, so their work would be
    // thrown away).
    virtual void Pause() {}
    // Back on show, before the host's first paint: the screen starts its timers again and
    // brings up to date at once whatever shows time, so that the first paint is current.
    virtual void Resume() {}
};

struct ScreenInfo {
    const char* name;      // as tours write it
    const wchar_t* title;  // in the title bar
    const wchar_t* tab;    // on its tab in the title bar and its tile on the home screen; NULL:
                           // neither (the screen is reached by name); such screens come last
    const wchar_t* blurb;  // on its tile
    std::unique_ptr<Screen> (*make)();
};

// Posted to the host window to go to another screen: wParam is the screen's index in
// Screens(). Posted, not sent, so that the window that asks is not torn down under its own
// message handler.
constexpr UINT kNavigateMessage = WM_APP + 1;

// Sent to the host window when what a screen draws in the rectangle lParam points to (host
// client coordinates) has changed: the host draws that part of its frame again and
// invalidates it.
constexpr UINT kChangedMessage = WM_APP + 2;
void ContentChanged(HWND host, const RECT& area);

// Sent to the host by a screen that is a dialog (host/screen_dialog.h) with each
// notification one of its items sent the dialog: lParam is the MSG. The host logs it as if
// it had heard it itself; the dialog handles it.
constexpr UINT kHeardMessage = WM_APP + 3;

// In tab order.
const std::vector<ScreenInfo>& Screens();
const ScreenInfo* FindScreen(const std::string& name);

}  // namespace zel::demo
