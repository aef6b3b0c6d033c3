// Timers. WM_TIMER is never queued: it is made when the queue is asked and nothing else is
// pending, so an overdue timer yields one message however many periods passed, and the
// next period counts from the moment it was retrieved.
#include <algorithm>

#include "kernel/clock.h"
#include "user/wndmgr.h"

namespace zel::user {

namespace {

struct Timer {
    HWND hwnd;
    UINT_PTR id;
    UINT period;  // ms
    DWORD due;    // tick
    TIMERPROC proc;
};

std::vector<Timer>& Timers() {
    static auto* timers = new std::vector<Timer>();
    return *timers;
}

UINT ClampPeriod(UINT ms) {
    if (ms < USER_TIMER_MINIMUM) return USER_TIMER_MINIMUM;
    if (ms > USER_TIMER_MAXIMUM) return USER_TIMER_MAXIMUM;
    return ms;
}

Timer* Find(HWND hwnd, UINT_PTR id) {
    for (Timer& t : Timers())
        if (t.hwnd == hwnd && t.id == id) return &t;
    return nullptr;
}

// Thread timers (no window) get ids of their own, never 0.
UINT_PTR FreeThreadTimerId() {
    static UINT_PTR next = 1;
    while (next == 0 || Find(nullptr, next)) ++next;
    return next++;
}

}  // namespace

// The earliest due timer among those the filter lets through; ties go to the timer set first.
std::optional<MSG> TakeDueTimer(HWND filter, bool remove) {
    DWORD now = kernel::Ticks();
    Timer* best = nullptr;
    for (Timer& t : Timers()) {
        if (!kernel::TickReached(t.due, now) || !MatchesFilter(filter, t.hwnd)) continue;
        if (!best || static_cast<int32_t>(t.due - best->due) < 0) best = &t;
    }
    if (!best) return std::nullopt;
    MSG m{best->hwnd, WM_TIMER, best->id, reinterpret_cast<LPARAM>(best->proc), now, CursorPos()};
    if (remove) best->due = now + best->period;
    return m;
}

std::optional<DWORD> NextTimerDue() {
    std::optional<DWORD> due;
    for (const Timer& t : Timers())
        if (!due || static_cast<int32_t>(t.due - *due) < 0) due = t.due;
    return due;
}

bool TimerProcRegistered(HWND hwnd, UINT_PTR id, TIMERPROC proc) {
    const Timer* t = Find(hwnd, id);
    return t && t->proc == proc;
}

void KillWindowTimers(HWND hwnd) {
    std::erase_if(Timers(), [hwnd](const Timer& t) { return t.hwnd == hwnd; });
}

void KillAllTimers() { Timers().clear(); }

}  // namespace zel::user

using namespace zel::user;

extern "C" {

// Setting an existing (window, id) pair restarts it with the new period and procedure.
// Window timers return their id (1 for id 0, so success stays non-zero); thread timers
// return the id they were given.
UINT_PTR SetTimer(HWND hwnd, UINT_PTR id, UINT elapse, TIMERPROC proc) {
    if (hwnd && !Get(hwnd)) {
        SetLastError(kErrorInvalidWindowHandle);
        return 0;
    }
    if (!hwnd && !Find(nullptr, id)) id = FreeThreadTimerId();
    UINT period = ClampPeriod(elapse);
    DWORD due = zel::kernel::Ticks() + period;
    if (Timer* t = Find(hwnd, id)) {
        t->period = period;
        t->due = due;
        t->proc = proc;
    } else {
        Timers().push_back(Timer{hwnd, id, period, due, proc});
    }
    return hwnd && id == 0 ? 1 : id;
}

BOOL KillTimer(HWND hwnd, UINT_PTR id) {
    auto& timers = Timers();
    auto it = std::find_if(timers.begin(), timers.end(), [&](const Timer& t) { return t.hwnd == hwnd && t.id == id; });
    if (it == timers.end()) return FALSE;
    timers.erase(it);
    PurgePostedTimer(hwnd, id);
    return TRUE;
}

}  // extern "C"
