// The host at work: going between screens by tile and tab (the host window that asked is
// hidden from inside its own handler), the screens kept for a return (their state, their
// timers, how many), what it logs and what it leaves to the screen, and failures that must
// stay failures.
#include <gtest/gtest.h>

#include "demo_fixture.h"
#include "host/demo_app.h"
#include "host/host_window.h"
#include "screens/clock_screen.h"
#include "screens/dialogs.h"
#include "screens/home_screen.h"
#include "screens/player_screen.h"
#include "skin/theme.h"

#include <map>
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

TEST_F(DemoHost, TilesAndTabsHideTheHostWindowAndReturnToIt) {
    ASSERT_TRUE(app->Show("home"));
    D().RunUntilIdle();
    const POINT body{400, 420};
    HWND home = HostAt(body);
    ASSERT_TRUE(home);

    TapAt(Centre(HomeScreen::TileRect(IndexOf("player"))));
    EXPECT_EQ(app->screen(), "player");
    EXPECT_TRUE(::IsWindow(home) && !::IsWindowVisible(home)) << "the home screen's host is kept hidden";
    HWND player = HostAt(body);
    EXPECT_NE(player, home);

    TapAt(Centre(HostWindow::TabRect(IndexOf("player"))));
    EXPECT_EQ(app->screen(), "player") << "the current tab goes nowhere";

    TapAt(Centre(HostWindow::TabRect(IndexOf("buttons"))));
    EXPECT_EQ(app->screen(), "buttons");
    EXPECT_FALSE(::IsWindowVisible(player));
    TapAt(Centre(HostWindow::TabRect(IndexOf("home"))));
    EXPECT_EQ(HostAt(body), home) << "the home screen came back in its own host";
    EXPECT_EQ(app->KeptScreens(), (std::vector<std::string>{"player", "buttons"}));
    EXPECT_EQ(Heard(), (std::vector<std::string>{"-- screen home", "-- screen player", "-- screen buttons",
                                                 "-- screen home"}))
        << "a tap on the host itself is not a notification";
}

CZELSlider* SliderOf(HWND host, int id) {
    return dynamic_cast<CZELSlider*>(CWnd::FromHandlePermanent(::GetDlgItem(host, id)));
}

// A person who comes back finds the screen as they left it: the volume they set, the
// control they were using still focused; and coming back makes no window and no GDI object.
TEST_F(DemoHost, ReturningKeepsTheScreensStateAndMakesNothing) {
    ASSERT_TRUE(app->Show("player"));
    D().RunUntilIdle();
    HWND player = Host();
    CZELSlider* volume = SliderOf(player, PlayerScreen::kVolumeId);
    ASSERT_TRUE(volume);
    D().Tap(380, 396);  // a page toward the maximum; the slider takes the focus
    const int set = volume->GetPos();
    ASSERT_EQ(::GetFocus(), volume->m_hWnd);
    ASSERT_TRUE(app->Show("buttons"));
    D().RunUntilIdle();
    const int windows = zel::test::LiveWindows();
    const int gdi = zel::LiveGdiObjects().total();

    ASSERT_TRUE(app->Show("player"));
    D().RunUntilIdle();
    EXPECT_EQ(Host(), player);
    EXPECT_EQ(volume->GetPos(), set);
    EXPECT_EQ(::GetFocus(), volume->m_hWnd) << "the focus went back to the slider";
    EXPECT_EQ(zel::test::LiveWindows(), windows);
    EXPECT_EQ(zel::LiveGdiObjects().total(), gdi);
    D().KeyDown(VK_RIGHT);
    D().KeyUp(VK_RIGHT);
    EXPECT_EQ(volume->GetPos(), set + 5) << "keys reach the slider again (a line is 5)";
}

// A hidden screen's timers do no work; on return the screen catches up before its first
// paint. The player plays on meanwhile: its progress counts the seconds it was hidden at
// once, and its next tick ends the second under way.
TEST_F(DemoHost, HiddenScreensTimersWaitAndCatchUpOnReturn) {
    ASSERT_TRUE(app->Show("player"));
    HWND player = Host();
    CZELSlider* progress = SliderOf(player, PlayerScreen::kProgressId);
    ASSERT_TRUE(progress);
    D().Advance(3000);
    ASSERT_EQ(progress->GetPos(), 3);
    ASSERT_TRUE(app->Show("home"));
    D().Advance(5500);
    EXPECT_EQ(progress->GetPos(), 3) << "no tick while hidden";
    ASSERT_TRUE(app->Show("player"));
    D().RunUntilIdle();
    EXPECT_EQ(progress->GetPos(), 8) << "caught up on return";
    D().Advance(499);
    EXPECT_EQ(progress->GetPos(), 8);
    D().Advance(1);
    EXPECT_EQ(progress->GetPos(), 9) << "the second begun before the return ends on time";
    D().Advance(1000);
    EXPECT_EQ(progress->GetPos(), 10);

    // The clock's readout (dialog row 48, the dialog at the host's row 56) shows the running
    // clock's time on the first paint after the return: what a redraw of it now shows, and
    // not what it showed on leaving.
    ASSERT_TRUE(app->Show("clock"));
    D().Advance(1000);
    const RECT readout{534, 104, 776, 234};
    auto pixels = [&] {
        std::vector<COLORREF> all;
        for (int y = readout.top; y < readout.bottom; ++y)
            for (int x = readout.left; x < readout.right; ++x) all.push_back(D().Pixel(x, y));
        return all;
    };
    const std::vector<COLORREF> left = pixels();
    ASSERT_TRUE(app->Show("home"));
    D().Advance(5000);
    ASSERT_TRUE(app->Show("clock"));
    D().RunUntilIdle();
    const std::vector<COLORREF> returned = pixels();
    EXPECT_TRUE(returned != left) << "the clock ran on while hidden";
    HWND dialog = ::GetWindow(Host(), GW_CHILD);
    ContentChanged(dialog, RECT{readout.left, readout.top - 56, readout.right, readout.bottom - 56});
    D().RunUntilIdle();
    EXPECT_TRUE(returned == pixels()) << "the first paint after the return showed the time of the return";
}

// Ten seconds with a screen, three of them on show and seven hidden, end on the picture of
// ten seconds on show (above the status strip, whose log differs): what the screen did or
// skipped while hidden leaves no trace. The clock is left out: its controls start from the
// real time of day, so two builds may differ by a second.
TEST_F(DemoHost, AReturnShowsWhatStayingWouldHaveShown) {
    auto shown = [] {
        std::vector<COLORREF> all;
        for (int y = 0; y < theme::kStatusTop; ++y)
            for (int x = 0; x < theme::kScreenWidth; ++x) all.push_back(D().Pixel(x, y));
        return all;
    };
    for (const ScreenInfo& screen : Screens()) {
        const std::string name = screen.name;
        if (name == "clock") continue;
        std::vector<COLORREF> returned;
        for (bool away : {true, false}) {
            app.reset();
            D().Reset();
            app = std::make_unique<DemoApp>();
            ASSERT_TRUE(app->LoadSkin(ZEL_DEMO_SKIN_DIR));
            ASSERT_TRUE(app->Show(name));
            D().Advance(3000);
            if (away) ASSERT_TRUE(app->Show(name == "home" ? "player" : "home"));
            D().Advance(7000);
            ASSERT_TRUE(app->Show(name));
            D().RunUntilIdle();
            if (away) returned = shown();
        }
        EXPECT_TRUE(returned == shown()) << name;
    }
}

// A new skin: the screens kept wear the old one and go; the one on show is built again.
TEST_F(DemoHost, ReloadDropsTheKeptScreens) {
    ASSERT_TRUE(app->Show("player"));
    HWND player = Host();
    ASSERT_TRUE(app->Show("buttons"));
    HWND buttons = Host();
    ASSERT_TRUE(app->ReloadSkin());
    EXPECT_FALSE(::IsWindow(player));
    EXPECT_FALSE(::IsWindow(buttons));
    EXPECT_EQ(app->screen(), "buttons");
    EXPECT_EQ(app->KeptScreens(), std::vector<std::string>{});
    ASSERT_TRUE(app->Show("player"));
    EXPECT_NE(Host(), player);
}

int WindowsFrom(HWND w) {
    int n = 0;
    for (; w; w = ::GetWindow(w, GW_HWNDNEXT)) n += 1 + WindowsFrom(::GetWindow(w, GW_CHILD));
    return n;
}

int WindowsOf(HWND host) { return 1 + WindowsFrom(::GetWindow(host, GW_CHILD)); }

// Beyond kKeptScreens the least recently shown goes, with all its windows; a return makes
// a screen the most recently shown.
TEST_F(DemoHost, TheLeastRecentlyShownKeptScreenGoesFirst) {
    ASSERT_EQ(DemoApp::kKeptScreens, 4u);
    std::map<std::string, HWND> hosts;
    for (const char* name : {"home", "player", "buttons", "clock", "phone", "home"}) {
        ASSERT_TRUE(app->Show(name));
        hosts[name] = Host();
    }
    EXPECT_EQ(app->KeptScreens(), (std::vector<std::string>{"player", "buttons", "clock", "phone"}));
    const int playerWindows = WindowsOf(hosts["player"]);
    const int windows = zel::test::LiveWindows();
    ASSERT_TRUE(app->Show("lists"));
    EXPECT_FALSE(::IsWindow(hosts["player"]));
    EXPECT_EQ(zel::test::LiveWindows(), windows - playerWindows + WindowsOf(Host()));
    EXPECT_EQ(app->KeptScreens(), (std::vector<std::string>{"buttons", "clock", "phone", "home"}));
    for (const char* kept : {"buttons", "clock", "phone", "home"})
        EXPECT_TRUE(::IsWindow(hosts[kept]) && !::IsWindowVisible(hosts[kept])) << kept;
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
