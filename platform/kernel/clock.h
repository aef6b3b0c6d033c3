// The one clock behind GetTickCount, GetLocalTime, timers and input time stamps.
//
// Real mode follows the monotonic clock. Virtual mode (tests) starts at tick 0 and moves
// only when told to; local time is then the configured start plus the virtual ticks.
#pragma once

#include <windows.h>

namespace zel::kernel {

DWORD Ticks();
bool IsVirtualClock();

// Virtual time restarts at tick 0, with GetLocalTime() returning `localStart` there.
void UseVirtualClock(const SYSTEMTIME& localStart);
// Real time continues from the current tick value, so pending timers keep their meaning.
void UseRealClock();

// Virtual mode only: moves the clock forward (never backwards) to `ticks`.
void AdvanceTo(DWORD ticks);

// True when tick `a` is at or before tick `b`, across the 49.7-day wrap.
inline bool TickReached(DWORD a, DWORD b) { return static_cast<int32_t>(b - a) >= 0; }

}  // namespace zel::kernel
