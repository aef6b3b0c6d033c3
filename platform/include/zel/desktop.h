// The desktop: the screen, the input devices and the clock that hosts and tests run the
// platform with.
#pragma once

#include <windows.h>

namespace zel {

struct DesktopConfig {
    int width = 800, height = 480;   // the screen, GetSystemMetrics(SM_CXSCREEN/SM_CYSCREEN)
    bool virtualClock = true;        // time moves only through Advance()
    UINT doubleClickMs = 500;        // GetDoubleClickTime()
    SYSTEMTIME localStart = {2026, 1, 4, 1, 12, 0, 0, 0};  // GetLocalTime() when the virtual
                                     // clock starts (Thursday 2026-01-01 12:00:00); it advances with it
};

// Until the first Reset the platform runs on the real clock with an 800 x 480 screen, so a
// plain Win32 program (PeekMessageW loops, real timers) works without the desktop.
class ZEL_API Desktop {
public:
    static Desktop& Get();
    void Reset(const DesktopConfig& config = {});  // destroys all windows, timers and queued messages
    // Input in screen pixels, routed by hit testing, capture and double-click rules;
    // each call then runs the message loop until idle (posted, paint, due timers).
    void PointerDown(int x, int y);
    void PointerMove(int x, int y);
    void PointerUp(int x, int y);
    void Tap(int x, int y);  // down + up at one point
    void KeyDown(UINT vk);
    void KeyUp(UINT vk);
    void Advance(DWORD ms);  // virtual time: the clock jumps to each due time in order and the
                             // loop runs there, so during a WM_TIMER GetTickCount() equals that
                             // timer's due time and its next period counts from it
    void RunUntilIdle();  // also stops at WM_QUIT (Run() then returns its exit code)
    DWORD Now() const;  // what GetTickCount() returns; the virtual clock starts at 0
    COLORREF Pixel(int x, int y) const;  // the composed screen
    bool SavePng(const char* path) const;
    // Real-time loop (the clock switches to real time) until WM_QUIT: in the SDL2 viewer
    // when a display exists, else headless, where it also ends once nothing can happen any
    // more (no timer left to wait for). Returns the WM_QUIT exit code, or 0.
    int Run();

private:
    Desktop() = default;
};

}  // namespace zel
