// The host at work: going between screens by tile and tab (the host window that asked is
// destroyed from inside its own handler), what it logs and what it leaves to the screen,
// and failures that must stay failures.
#include <gtest/gtest.h>

#include "demo_fixture.h"
#include "host/demo_app.h"
#include "host/host_window.h"
#include "screens/home_screen.h"

namespace zel::demo {
namespace {

zel::Desktop& D() { return zel::Desktop::Get(); }

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

class DemoHost : public DemoTest {
protected:
    void SetUp() override {
        DemoTest::SetUp();
        app = std::make_unique<DemoApp>();
        ASSERT_TRUE(app->LoadSkin(ZEL_DEMO_SKIN_DIR));
    }
    void TearDown() override {
        app.reset();
        DemoTest::TearDown();
    }

    // The lines logged since the last call.
    std::vector<std::string> Heard() {
        const std::vector<std::string>& all = app->log().Lines();
        std::vector<std::string> since(all.begin() + static_cast<std::ptrdiff_t>(seen), all.end());
        seen = all.size();
        return since;
    }

    std::unique_ptr<DemoApp> app;
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
