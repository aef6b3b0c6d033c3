// The host at work: going between screens by tile and tab (the host window that asked is
// destroyed from inside its own handler), what it logs and what it leaves to the screen,
// and failures that must stay failures.
#include <gtest/gtest.h>

#include "demo_fixture.h"
#include "host/demo_app.h"
#include "host/host_window.h"
#include "screens/clock_screen.h"
#include "screens/dialogs.h"
#include "screens/home_screen.h"

#include <typeinfo>

namespace zel::demo {
namespace {

POINT Centre(const RECT& r) { return POINT{(r.left + r.right) / 2, (r.top + r.bottom) / 2}; }

size_t IndexOf(const char* name) {
    for (size_t i = 0; i < Screens().size(); ++i)
        if (std::string(Screens()[i].name) == name) return i;
    return Screens().size();
}

void TapAt(POINT p) { D().Tap(p.x, p.y); }

// The top-level window under p.
HWND HostAt(POINT p) {
    HWND h = ::WindowFromPoint(p);
    while (HWND parent = ::GetParent(h)) h = parent;
    return h;
}

class DemoHost : public DemoAppTest {
protected:
    // The lines logged since the last call.
    std::vector<std::string> Heard() {
        const std::vector<std::string>& all = app->log().Lines();
        std::vector<std::string> since(all.begin() + static_cast<std::ptrdiff_t>(seen), all.end());
        seen = all.size();
        return since;
    }

    size_t seen = 0;
};

TEST_F(DemoHost, TilesAndTabsReplaceTheHostWindow) {
    ASSERT_TRUE(app->Show("home"));
    D().RunUntilIdle();
    const POINT body{400, 420};
    HWND home = HostAt(body);
    ASSERT_TRUE(home);

    TapAt(Centre(HomeScreen::TileRect(IndexOf("player"))));
    EXPECT_EQ(app->screen(), "player");
    EXPECT_FALSE(::IsWindow(home)) << "the home screen's host is gone";
    HWND player = HostAt(body);
    EXPECT_NE(player, home);

    TapAt(Centre(HostWindow::TabRect(IndexOf("player"))));
    EXPECT_EQ(app->screen(), "player") << "the current tab goes nowhere";
    EXPECT_TRUE(::IsWindow(player));

    TapAt(Centre(HostWindow::TabRect(IndexOf("buttons"))));
    EXPECT_EQ(app->screen(), "buttons");
    EXPECT_FALSE(::IsWindow(player));
    EXPECT_EQ(Heard(), (std::vector<std::string>{"-- screen home", "-- screen player", "-- screen buttons"}))
        << "a tap on the host itself is not a notification";
}

// What controls forward, and the positions of scroll codes that carry none, are in the
// default tour's log (Cooler, the round button's disc and beside it, the volume); a tap on
// a disabled button or on the background reaches only the host and is not logged.
TEST_F(DemoHost, TapsNoControlForwardsAreNotLogged) {
    ASSERT_TRUE(app->Show("buttons"));
    Heard();
    D().Tap(407, 138);  // the disabled button
    D().Tap(700, 420);  // the background
    EXPECT_EQ(Heard(), std::vector<std::string>{});
}

// The clock screen is the dialog IDD_CLOCK: each item is its library control, at the pixels
// its dialog units give (bold 10-point Tahoma: two pixels a unit; the dialog at row 56) and
// the tour taps. The format spinner is created in its item's place and keeps its tab position.
TEST_F(DemoHost, ClockScreenItemsAreTheLibraryControlsWhereTheTemplatePutsThem) {
    ASSERT_TRUE(app->Show("clock"));
    HWND host = HostAt(POINT{400, 20});
    HWND dlg = ::GetWindow(host, GW_CHILD);
    wchar_t cls[16] = {};
    ::GetClassNameW(dlg, cls, 16);
    EXPECT_EQ(std::wstring(cls), L"#32770");
    struct Item {
        int id;
        const std::type_info& type;
        RECT host;  // host client coordinates
    };
    const Item items[] = {
        {IDC_CLOCK_DATE, typeid(CZELTimeDate), {24, 104, 226, 234}},
        {IDC_CLOCK_CLOCK, typeid(CZELTimeDate), {404, 104, 514, 234}},
        {IDC_CLOCK_DATE_PICKER, typeid(CDataTimectrl), {24, 290, 148, 312}},
        {IDC_CLOCK_TIME_PICKER, typeid(CDataTimectrl), {172, 290, 296, 312}},
        {IDC_CLOCK_TIME_FIELD, typeid(CTimeData), {320, 290, 384, 310}},
        {IDC_CLOCK_FORMAT, typeid(CZELDate), {24, 372, 264, 412}},
    };
    HWND previous = nullptr;
    for (const Item& item : items) {
        HWND hwnd = ::GetDlgItem(dlg, item.id);
        ASSERT_TRUE(hwnd) << item.id;
        CWnd* control = CWnd::FromHandlePermanent(hwnd);
        ASSERT_TRUE(control) << item.id;
        EXPECT_EQ(typeid(*control), item.type) << item.id;
        EXPECT_EQ(::GetDlgCtrlID(hwnd), item.id);
        EXPECT_EQ(::GetWindow(hwnd, GW_HWNDPREV), previous) << item.id << " keeps its template (tab) position";
        RECT r;
        ::GetWindowRect(hwnd, &r);
        ::MapWindowPoints(nullptr, host, reinterpret_cast<POINT*>(&r), 2);
        EXPECT_TRUE(::EqualRect(&r, &item.host)) << item.id << ": " << r.left << "," << r.top << "," << r.right << ","
                                                 << r.bottom;
        previous = hwnd;
    }
    CString title;
    ASSERT_TRUE(title.LoadString(IDS_CLOCK_DATE));
    EXPECT_EQ(std::wstring(title.GetString()), L"DATE  \u00B7  THE DAY FOLLOWS THE MONTH");
    // A step of the date reaches the host's log through the dialog, once.
    Heard();
    D().Tap(68, 124);  // year add
    EXPECT_EQ(Heard(), std::vector<std::string>{"1401 WM_COMMAND BN_CLICKED"});
}

TEST_F(DemoHost, FailuresAreReportedAndLeaveNothingBehind) {
    EXPECT_FALSE(app->Show("radio"));
    EXPECT_EQ(app->screen(), "");
    ASSERT_TRUE(app->Show("player"));
    EXPECT_FALSE(app->Show("nowhere"));
    EXPECT_EQ(app->screen(), "player") << "an unknown screen leaves the current one up";

    DemoApp other;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(other.LoadSkin("/nonexistent/skin"));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("cannot load the skin"), std::string::npos);
}

}  // namespace
}  // namespace zel::demo
