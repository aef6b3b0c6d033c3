// GetTickCount, GetLocalTime, GetSystemTime and Sleep on the one clock.
#include "kernel/clock.h"

#include <time.h>

#include <cerrno>
#include <cstdint>

namespace zel::kernel {

namespace {

struct Clock {
    bool virtualMode = false;
    DWORD virtualTicks = 0;
    int64_t realOffset = 0;  // ms added to the monotonic clock in real mode
    int64_t virtualEpochMs = 0;  // local time (ms since 1970, as UTC) at virtual tick 0
};

Clock& TheClock() {
    static Clock c;
    return c;
}

int64_t MonotonicMs() {
    timespec ts;
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return static_cast<int64_t>(ts.tv_sec) * 1000 + ts.tv_nsec / 1000000;
}

int64_t WallMs() {
    timespec ts;
    clock_gettime(CLOCK_REALTIME, &ts);
    return static_cast<int64_t>(ts.tv_sec) * 1000 + ts.tv_nsec / 1000000;
}

// SYSTEMTIME fields are taken as UTC; the day of week is recomputed, never trusted.
int64_t SystemTimeToMs(const SYSTEMTIME& st) {
    tm t{};
    t.tm_year = st.wYear - 1900;
    t.tm_mon = st.wMonth - 1;
    t.tm_mday = st.wDay;
    t.tm_hour = st.wHour;
    t.tm_min = st.wMinute;
    t.tm_sec = st.wSecond;
    return static_cast<int64_t>(timegm(&t)) * 1000 + st.wMilliseconds;
}

void MsToSystemTime(int64_t ms, const tm& (*split)(time_t, tm&), SYSTEMTIME* out) {
    int64_t sec = ms >= 0 ? ms / 1000 : (ms - 999) / 1000;
    tm t{};
    split(static_cast<time_t>(sec), t);
    out->wYear = static_cast<WORD>(t.tm_year + 1900);
    out->wMonth = static_cast<WORD>(t.tm_mon + 1);
    out->wDayOfWeek = static_cast<WORD>(t.tm_wday);
    out->wDay = static_cast<WORD>(t.tm_mday);
    out->wHour = static_cast<WORD>(t.tm_hour);
    out->wMinute = static_cast<WORD>(t.tm_min);
    out->wSecond = static_cast<WORD>(t.tm_sec);
    out->wMilliseconds = static_cast<WORD>(ms - sec * 1000);
}

const tm& SplitUtc(time_t s, tm& t) { return *gmtime_r(&s, &t); }
const tm& SplitLocal(time_t s, tm& t) { return *localtime_r(&s, &t); }

}  // namespace

DWORD Ticks() {
    const Clock& c = TheClock();
    if (c.virtualMode) return c.virtualTicks;
    return static_cast<DWORD>(MonotonicMs() + c.realOffset);
}

bool IsVirtualClock() { return TheClock().virtualMode; }

void UseVirtualClock(const SYSTEMTIME& localStart) {
    Clock& c = TheClock();
    c.virtualMode = true;
    c.virtualTicks = 0;
    c.virtualEpochMs = SystemTimeToMs(localStart);
}

void UseRealClock() {
    Clock& c = TheClock();
    if (!c.virtualMode) return;
    DWORD now = c.virtualTicks;
    c.virtualMode = false;
    c.realOffset = static_cast<int64_t>(now) - MonotonicMs();
}

void AdvanceTo(DWORD ticks) {
    Clock& c = TheClock();
    if (c.virtualMode && TickReached(c.virtualTicks, ticks)) c.virtualTicks = ticks;
}

}  // namespace zel::kernel

using namespace zel::kernel;

extern "C" {

DWORD GetTickCount(void) { return Ticks(); }

void GetLocalTime(LPSYSTEMTIME time) {
    if (!time) return;
    const Clock& c = TheClock();
    if (c.virtualMode)
        MsToSystemTime(c.virtualEpochMs + c.virtualTicks, SplitUtc, time);
    else
        MsToSystemTime(WallMs(), SplitLocal, time);
}

// The virtual world has no time zones: system time equals local time there.
void GetSystemTime(LPSYSTEMTIME time) {
    if (!time) return;
    const Clock& c = TheClock();
    if (c.virtualMode)
        MsToSystemTime(c.virtualEpochMs + c.virtualTicks, SplitUtc, time);
    else
        MsToSystemTime(WallMs(), SplitUtc, time);
}

// A virtual sleep is a handler that blocks: time passes and nothing is dispatched meanwhile.
void Sleep(DWORD ms) {
    Clock& c = TheClock();
    if (c.virtualMode) {
        c.virtualTicks += ms;
        return;
    }
    timespec ts{static_cast<time_t>(ms / 1000), static_cast<long>(ms % 1000) * 1000000L};
    while (nanosleep(&ts, &ts) != 0 && errno == EINTR) {
    }
}

}  // extern "C"
