// CZELTimeDate: the day's range following year and month, the running clock on the
// virtual clock, the shared half-rate toggle, forwarding and painting.
#include <CZELTimeDate.h>

#include <algorithm>
#include <memory>
#include <string>

#include "spin_skin.h"
#include "support/control_test.h"
#include "support/golden.h"

namespace {

using namespace zel::test;
using namespace datetimetest;

constexpr UINT kId = 51;

class TimeDate : public ControlTest {
protected:
    std::unique_ptr<CZELTimeDate> ctl, other;
    CString names = WriteSpinSkin(skins, true);
    void TearDown() override {
        ctl.reset();
        other.reset();
        ControlTest::TearDown();
    }
    std::unique_ptr<CZELTimeDate> Make(int style, int x = 5) {
        auto td = std::make_unique<CZELTimeDate>();
        EXPECT_TRUE(td->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(x, 5, x + 200, 135), &parent, kId));
        parent.Name(td->m_hWnd, "td");
        td->LoadSkin(Folder(skins), names);
        td->SetStyle(style);
        desktop.RunUntilIdle();
        parent.Take();
        return td;
    }
    static HWND Button(CWnd& td, int spin, bool add) {
        return ::GetDlgItem(::GetDlgItem(td.m_hWnd, CZELTimeDate::IDC_ONE + spin), add ? 1011 : 2012);
    }
    void Step(CWnd& td, int spin, bool add) {
        desktop.Advance(1000);
        TapAt(Button(td, spin, add), 20, 20);
    }
    static SYSTEMTIME Shown(CZELTimeDate& td) {
        SYSTEMTIME t{};
        td.GetTime(&t);
        return t;
    }
};

TEST_F(TimeDate, DayRangeFollowsYearAndMonth) {
    ctl = Make(0);
    EXPECT_EQ(Ymd(Shown(*ctl)), "2026-1-1");  // the clock's date at construction
    SYSTEMTIME leap{2024, 2, 0, 29, 0, 0, 0, 0};
    EXPECT_TRUE(ctl->SetTime(leap));
    EXPECT_EQ(Ymd(Shown(*ctl)), "2024-2-29");
    struct Case {
        int spin;
        bool add;
        const char* expected;
    } steps[] = {
        {0, true, "2025-2-28"},   // the leap day goes with the leap year
        {1, true, "2025-3-28"},  {2, true, "2025-3-29"}, {2, true, "2025-3-30"}, {2, true, "2025-3-31"},
        {2, true, "2025-3-1"},    // the day wraps in its month's range
        {2, false, "2025-3-31"}, {1, false, "2025-2-28"}, {0, false, "2024-2-28"}, {1, false, "2024-1-28"},
        {1, false, "2024-12-28"},  // months wrap both ways
    };
    for (const Case& c : steps) {
        Step(*ctl, c.spin, c.add);
        EXPECT_EQ(Ymd(Shown(*ctl)), c.expected) << "spinner " << c.spin << (c.add ? " add" : " Def");
        EXPECT_EQ(parent.Take(), "COMMAND(51,0,td)");
    }
    SYSTEMTIME bad{1999, 13, 0, 40, 0, 0, 0, 0};  // every field outside its spinner's range
    ctl->SetTime(bad);
    EXPECT_EQ(Ymd(Shown(*ctl)), "2024-12-28");
    EXPECT_TRUE(WindowMatchesGolden("CZELTimeDate", "date", ctl->m_hWnd));
}

TEST_F(TimeDate, ClockRunsOverMidnightAndStopsOnEdit) {
    ctl = Make(1);
    SYSTEMTIME late{2026, 1, 4, 1, 23, 59, 59, 0};
    ctl->SetTime(late);
    desktop.Advance(1000);  // two half-second ticks: the toggle passes 0 once
    EXPECT_EQ(Hms(Shown(*ctl)), "0:0:0");
    desktop.Advance(3000);
    EXPECT_EQ(Hms(Shown(*ctl)), "0:0:3");
    desktop.Advance(500);  // an odd tick: the colon is off now or was off before
    Step(*ctl, 1, true);   // editing the minute stops the clock for good
    EXPECT_EQ(parent.Take(), "COMMAND(51,0,td)");
    const std::string stopped = Hms(Shown(*ctl));
    EXPECT_EQ(stopped.substr(stopped.size() - 2), ":0");
    desktop.Advance(5000);
    EXPECT_EQ(Hms(Shown(*ctl)), stopped);
    EXPECT_TRUE(WindowMatchesGolden("CZELTimeDate", "clock_edited", ctl->m_hWnd));  // the colon shown again
}

TEST_F(TimeDate, ColonBlinksEveryHalfSecond) {
    ctl = Make(1);
    EXPECT_TRUE(WindowMatchesGolden("CZELTimeDate", "clock_colon_on", ctl->m_hWnd));
    desktop.Advance(500);
    EXPECT_TRUE(WindowMatchesGolden("CZELTimeDate", "clock_colon_off", ctl->m_hWnd));
    desktop.Advance(500);  // the second has changed since: only the colon is compared
    EXPECT_EQ(ShownAt(ctl->m_hWnd, 48 + 4, 65 - 7), kColon);
}

TEST_F(TimeDate, TwoClocksShareTheHalfRateToggle) {
    ctl = Make(1, 0);
    other = Make(1, 0);
    SYSTEMTIME zero{2026, 1, 4, 1, 0, 0, 0, 0};
    ctl->SetTime(zero);
    other->SetTime(zero);
    desktop.Advance(2000);
    const SYSTEMTIME a = Shown(*ctl), b = Shown(*other);
    // Each half second both tick and flip the one toggle; the same clock always finds it 0.
    EXPECT_EQ(std::min(a.wSecond, b.wSecond), 0);
    EXPECT_EQ(std::max(a.wSecond, b.wSecond), 4);
}

TEST_F(TimeDate, LayoutPerStyleAndBadSkins) {
    ctl = Make(0);
    CRect rc;
    ctl->GetClientRect(&rc);
    EXPECT_EQ(rc.Size(), CSize(66 + 2 * (48 + 6 + 8), 130));  // dash 6 wide + 8
    ctl->SetStyle(1);
    ctl->GetClientRect(&rc);
    EXPECT_EQ(rc.Size(), CSize(14 + 2 * 48, 130));  // the width taken at skin time stays
    EXPECT_FALSE(::IsWindowVisible(::GetDlgItem(ctl->m_hWnd, CZELTimeDate::IDC_THREE)));
    // Lists too short: nothing changes; an empty folder's pieces load nothing.
    ctl->LoadSkin(Folder(skins), L"add.bmp|add_f.bmp|add_d.bmp|def.bmp|def_f.bmp|def_d.bmp|back.bmp|frame.bmp|box.bmp|dash.bmp");
    ctl->GetClientRect(&rc);
    EXPECT_EQ(rc.Size(), CSize(14 + 2 * 48, 130));
    ctl->LoadSkin(L"/nonexistent/", names);
    desktop.RunUntilIdle();
    ctl->GetClientRect(&rc);
    EXPECT_EQ(rc.Size(), CSize(8 + 2 * 48, 130));
}

TEST_F(TimeDate, ParentDestroyingItInsideTheCommand) {
    ctl = Make(1);
    parent.onMessage = [&](UINT message, WPARAM, LPARAM) {
        if (message == WM_COMMAND && ::IsWindow(ctl->m_hWnd)) ctl->DestroyWindow();
    };
    const HWND hwnd = ctl->m_hWnd;
    Step(*ctl, 0, true);
    EXPECT_FALSE(::IsWindow(hwnd));
    EXPECT_EQ(parent.Take(), "COMMAND(51,0,td)");
    desktop.Advance(2000);  // no clock tick reaches it
}


// A dialog's control: a plain child taken over, which makes its spinners as it is.
TEST_F(TimeDate, SubclassedFromAPlainChild) {
    HWND plain = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 5, 5, 200, 130, parent.m_hWnd,
                                   reinterpret_cast<HMENU>(static_cast<INT_PTR>(kId)), nullptr, nullptr);
    ctl = std::make_unique<CZELTimeDate>();
    ASSERT_TRUE(ctl->SubclassWindow(plain));
    parent.Name(plain, "td");
    ASSERT_NE(::GetDlgItem(plain, CZELTimeDate::IDC_THREE), nullptr);
    ctl->LoadSkin(Folder(skins), names);
    desktop.RunUntilIdle();
    Step(*ctl, 1, true);
    EXPECT_EQ(Ymd(Shown(*ctl)), "2026-2-1");
    EXPECT_EQ(parent.Take(), "COMMAND(51,0,td)");
}

}  // namespace
