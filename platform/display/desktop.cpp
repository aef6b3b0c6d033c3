// zel::Desktop: the screen, the stylus and keys, the clock, and the loops that run the
// message queue for tests (virtual time) and hosts (real time, headless or in the viewer).
#include "zel/desktop.h"

#include <cstdio>

#include "gdi/image_codec.h"
#include "display/runtime.h"
#include "gdi/dc.h"
#include "kernel/clock.h"
#include "user/wndmgr.h"

namespace zel {

namespace {

// A loop that never settles (a window that never validates its update region, or one
// that posts to itself forever) is cut off here rather than hanging the host.
constexpr int kMaxMessagesPerRun = 20000;

struct LoopState {
    bool quit = false;
    int exitCode = 0;
};

LoopState& Loop() {
    static LoopState s;
    return s;
}

void DestroyAllWindows() {
    for (int guard = 0; guard < 10000; ++guard) {
        std::vector<user::Window*>& tops = user::State().desktop->children;
        if (tops.empty()) return;
        DestroyWindow(tops.front()->handle);
    }
}

}  // namespace

namespace display {
bool TakeQuit(int* exitCode) {
    if (!Loop().quit) return false;
    Loop().quit = false;
    if (exitCode) *exitCode = Loop().exitCode;
    return true;
}
}  // namespace display

Desktop& Desktop::Get() {
    static Desktop desktop;
    return desktop;
}

void Desktop::Reset(const DesktopConfig& config) {
    DestroyAllWindows();
    user::KillAllTimers();
    user::ResetQueue();
    user::ResetInput(config.doubleClickMs ? config.doubleClickMs : 500);
    user::UserState& s = user::State();
    s.focus = s.active = s.capture = nullptr;
    if (config.virtualClock)
        kernel::UseVirtualClock(config.localStart);
    else
        kernel::UseRealClock();
    gdi::PixelBuffer& screen = gdi::Screen();
    if (config.width > 0 && config.height > 0 && (config.width != screen.width || config.height != screen.height))
        gdi::ResizeScreen(config.width, config.height);
    user::PaintDesktop(gdi::PixRegion(RECT{0, 0, screen.width, screen.height}));
    user::RefreshWindowDCs();
    Loop() = LoopState();
}

void Desktop::PointerDown(int x, int y) {
    user::QueuePointer(user::PointerKind::kDown, POINT{x, y});
    RunUntilIdle();
}

void Desktop::PointerMove(int x, int y) {
    user::QueuePointer(user::PointerKind::kMove, POINT{x, y});
    RunUntilIdle();
}

void Desktop::PointerUp(int x, int y) {
    user::QueuePointer(user::PointerKind::kUp, POINT{x, y});
    RunUntilIdle();
}

void Desktop::Tap(int x, int y) {
    PointerDown(x, y);
    PointerUp(x, y);
}

void Desktop::KeyDown(UINT vk) {
    user::QueueKey(vk, true);
    RunUntilIdle();
}

void Desktop::KeyUp(UINT vk) {
    user::QueueKey(vk, false);
    RunUntilIdle();
}

void Desktop::RunUntilIdle() {
    for (int i = 0; i < kMaxMessagesPerRun; ++i) {
        MSG quit{};
        if (!user::PumpOne(&quit)) return;
        if (quit.message == WM_QUIT) {
            Loop().quit = true;
            Loop().exitCode = static_cast<int>(quit.wParam);
            return;
        }
    }
    std::fprintf(stderr, "zel::Desktop: the message loop did not settle after %d messages\n", kMaxMessagesPerRun);
}

// Virtual time jumps from one due timer to the next, running the loop at each, so a
// handler sees GetTickCount() equal to its timer's due time. A timer that stays due after
// the loop ran (starved by a window that never validates) ends the stepping.
void Desktop::Advance(DWORD ms) {
    DWORD target = kernel::Ticks() + ms;
    if (!kernel::IsVirtualClock()) {
        for (;;) {
            RunUntilIdle();
            DWORD now = kernel::Ticks();
            if (kernel::TickReached(target, now)) return;
            DWORD until = target;
            if (std::optional<DWORD> due = user::NextTimerDue(); due && kernel::TickReached(*due, target)) until = *due;
            ::Sleep(kernel::TickReached(until, now) ? 0 : until - now);
        }
    }
    RunUntilIdle();
    for (;;) {
        std::optional<DWORD> due = user::NextTimerDue();
        if (!due || !kernel::TickReached(*due, target)) break;
        kernel::AdvanceTo(*due);
        RunUntilIdle();
        std::optional<DWORD> still = user::NextTimerDue();
        if (still && kernel::TickReached(*still, kernel::Ticks())) break;
    }
    kernel::AdvanceTo(target);
    RunUntilIdle();
}

DWORD Desktop::Now() const { return kernel::Ticks(); }

COLORREF Desktop::Pixel(int x, int y) const {
    const gdi::PixelBuffer& s = gdi::Screen();
    if (x < 0 || y < 0 || x >= s.width || y >= s.height) return CLR_INVALID;
    return gdi::Pixel32ToColor(s.row(y)[x]);
}

bool Desktop::SavePng(const char* path) const { return detail::SavePixels(gdi::Screen(), path); }

// Real time from here on. With a display the viewer runs; headless, the loop runs until
// WM_QUIT or until nothing can happen any more (no timer left to wait for).
int Desktop::Run() {
    kernel::UseRealClock();
    int exitCode = 0;
    if (display::RunViewer(*this, &exitCode)) return exitCode;
    for (;;) {
        RunUntilIdle();
        if (display::TakeQuit(&exitCode)) return exitCode;
        std::optional<DWORD> due = user::NextTimerDue();
        if (!due) return 0;
        DWORD now = kernel::Ticks();
        if (!kernel::TickReached(*due, now)) ::Sleep(*due - now);
    }
}

}  // namespace zel
