// Timers on the virtual clock, and the clock itself (GetTickCount, GetLocalTime).
#include <windows.h>

#include <zel/desktop.h>

#include "recorder.h"

namespace {

zel::Desktop& D() { return zel::Desktop::Get(); }

class Timers : public zel::test::DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        w = rec.Top("w", 0, 0, 10, 10);
        D().RunUntilIdle();
        rec.Start({});
        // "id@tick" for each WM_TIMER the window receives.
        rec.hook = [this](HWND, UINT m, WPARAM wp, LPARAM, LRESULT*) {
            if (m == WM_TIMER) rec.Note(std::to_string(wp) + "@" + std::to_string(GetTickCount()));
            return false;
        };
    }
    HWND w = nullptr;
};

TEST_F(Timers, FireInDueOrderAtTheirDueTimes) {
    EXPECT_EQ(SetTimer(w, 1, 30, nullptr), 1u);
    EXPECT_EQ(SetTimer(w, 2, 20, nullptr), 2u);
    D().Advance(59);
    EXPECT_EQ(rec.Take(), "2@20;1@30;2@40");
    D().Advance(1);
    EXPECT_EQ(rec.Take(), "1@60;2@60") << "equal due times: the timer set first goes first";
    EXPECT_EQ(D().Now(), 60u);
}

TEST_F(Timers, OverdueTicksCoalesceIntoOne) {
    SetTimer(w, 1, 10, nullptr);
    Sleep(95);  // a handler that blocks: nine periods pass with nothing dispatched
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "1@95");
    D().Advance(15);
    EXPECT_EQ(rec.Take(), "1@105") << "the next period counts from the delivery";
}

TEST_F(Timers, ABlockingHandlerInALongAdvanceCoalescesTheOthers) {
    bool slept = false;
    rec.hook = [&](HWND, UINT m, WPARAM wp, LPARAM, LRESULT*) {
        if (m != WM_TIMER) return false;
        rec.Note(std::to_string(wp) + "@" + std::to_string(GetTickCount()));
        if (wp == 2 && !slept) {
            slept = true;
            Sleep(45);
        }
        return false;
    };
    SetTimer(w, 1, 10, nullptr);
    SetTimer(w, 2, 50, nullptr);
    D().Advance(100);
    EXPECT_EQ(rec.Take(), "1@10;1@20;1@30;1@40;1@50;2@50;1@95;2@100")
        << "timer 1 missed 60..90 while timer 2 blocked and is delivered once at 95";
}

TEST_F(Timers, SettingAgainRestartsWithTheNewPeriod) {
    SetTimer(w, 1, 50, nullptr);
    D().Advance(40);
    EXPECT_EQ(SetTimer(w, 1, 30, nullptr), 1u);
    D().Advance(69);
    EXPECT_EQ(rec.Take(), "1@70;1@100");
    EXPECT_EQ(SetTimer(w, 0, 0, nullptr), 1u) << "id 0 still reports success";
    D().Advance(10);
    EXPECT_EQ(rec.Take(), "0@119") << "periods below 10 ms are raised to 10";
    KillTimer(w, 0);
}

TEST_F(Timers, KillStopsItAndDropsAQueuedTick) {
    SetTimer(w, 3, 10, nullptr);
    PostMessageW(w, WM_TIMER, 3, 0);
    EXPECT_TRUE(KillTimer(w, 3));
    EXPECT_FALSE(KillTimer(w, 3));
    EXPECT_FALSE(KillTimer(w, 99));
    D().Advance(100);
    EXPECT_EQ(rec.Take(), "-");
    SetTimer(w, 4, 10, nullptr);
    DestroyWindow(w);
    EXPECT_FALSE(KillTimer(w, 4)) << "destroying the window killed it";
    EXPECT_EQ(SetTimer(w, 5, 10, nullptr), 0u) << "stale window";
}

UINT_PTR procCalls;
DWORD procTime;
HWND procWindow;
void CALLBACK CountTicks(HWND hwnd, UINT, UINT_PTR, DWORD time) {
    ++procCalls;
    procTime = time;
    procWindow = hwnd;
}

TEST_F(Timers, TimerProcReplacesTheWindowProcedure) {
    procCalls = 0;
    SetTimer(w, 1, 25, CountTicks);
    D().Advance(50);
    EXPECT_EQ(procCalls, 2u);
    EXPECT_EQ(procTime, 50u);
    EXPECT_EQ(procWindow, w);
    EXPECT_EQ(rec.Take(), "-");
    UINT_PTR thread = SetTimer(nullptr, 0, 10, CountTicks);
    UINT_PTR other = SetTimer(nullptr, 0, 10, CountTicks);
    EXPECT_NE(thread, 0u);
    EXPECT_NE(thread, other) << "thread timers get ids of their own";
    D().Advance(10);
    EXPECT_EQ(procCalls, 4u);
    EXPECT_EQ(procWindow, nullptr);
    KillTimer(nullptr, thread);
    KillTimer(nullptr, other);
    KillTimer(w, 1);
}

TEST_F(Timers, WindowThatNeverValidatesStarvesTimersWithoutHanging) {
    SetTimer(w, 1, 10, nullptr);
    rec.hook = [this](HWND h, UINT m, WPARAM, LPARAM, LRESULT* r) {
        if (m == WM_TIMER) rec.Note("tick");
        if (h != w || m != WM_PAINT) return false;
        *r = 0;  // never calls BeginPaint
        return true;
    };
    InvalidateRect(w, nullptr, FALSE);
    D().Advance(30);
    EXPECT_EQ(rec.Take(), "-");
    EXPECT_EQ(D().Now(), 30u);
    ValidateRect(w, nullptr);
}

using Clock = zel::test::DesktopTest;

TEST_F(Clock, LocalTimeStartsAtTheConfiguredTimeAndAdvancesWithIt) {
    SYSTEMTIME t;
    GetLocalTime(&t);
    EXPECT_EQ(t.wYear, 2026);
    EXPECT_EQ(t.wMonth, 1);
    EXPECT_EQ(t.wDay, 1);
    EXPECT_EQ(t.wDayOfWeek, 4) << "Thursday";
    EXPECT_EQ(t.wHour, 12);
    zel::DesktopConfig cfg;
    cfg.localStart = SYSTEMTIME{2024, 2, 0, 28, 23, 59, 59, 500};
    D().Reset(cfg);
    EXPECT_EQ(D().Now(), 0u);
    D().Advance(1500);
    GetLocalTime(&t);
    EXPECT_EQ(t.wMonth, 2) << "2024 is a leap year";
    EXPECT_EQ(t.wDay, 29);
    EXPECT_EQ(t.wDayOfWeek, 4);
    EXPECT_EQ(t.wHour, 0);
    EXPECT_EQ(t.wSecond, 1);
    EXPECT_EQ(t.wMilliseconds, 0);
    EXPECT_EQ(GetTickCount(), 1500u);
}

}  // namespace
