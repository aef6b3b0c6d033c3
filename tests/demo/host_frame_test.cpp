// The host's kept frame: after any sequence of input, presenting what the frame holds must
// show exactly what drawing everything afresh shows -- a screen change the host was not
// told of, or a part of the frame wrongly taken as current, shows up as a difference. And
// a notification repaints only the status rows it changes, as far as their lines reach.
#include <gtest/gtest.h>

#include <vector>

#include "demo_fixture.h"
#include "host/demo_app.h"
#include "skin/theme.h"

namespace zel::demo {
namespace {

std::vector<COLORREF> Screenful() {
    std::vector<COLORREF> pixels;
    pixels.reserve(static_cast<size_t>(theme::kScreenWidth) * theme::kScreenHeight);
    for (int y = 0; y < theme::kScreenHeight; ++y)
        for (int x = 0; x < theme::kScreenWidth; ++x) pixels.push_back(D().Pixel(x, y));
    return pixels;
}

// Where two screenfuls first differ, or "" when they do not.
std::string FirstDifference(const std::vector<COLORREF>& a, const std::vector<COLORREF>& b) {
    for (size_t i = 0; i < a.size() && i < b.size(); ++i)
        if (a[i] != b[i])
            return "at (" + std::to_string(i % theme::kScreenWidth) + ", " + std::to_string(i / theme::kScreenWidth) + ")";
    return a.size() == b.size() ? "" : "in size";
}

void RepaintAll(HWND host) {
    ::RedrawWindow(host, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    D().RunUntilIdle();
}

using HostFrame = DemoAppTest;

struct Input {
    enum Kind { kTap, kHide } kind;
    POINT at;  // kHide: the control under it is hidden, uncovering the host's frame
};

struct Case {
    const char* screen;
    std::vector<Input> input;
};

// Input that changes what the screens draw themselves (readouts, the art, the status
// strip) and what covers the host (a combo box's list opening and closing, a control
// hidden).
const Case kCases[] = {
    {"home", {}},
    {"player",
     {{Input::kTap, {224, 298}}, {Input::kTap, {380, 396}}, {Input::kTap, {300, 222}}, {Input::kTap, {143, 298}},
      {Input::kTap, {600, 230}}, {Input::kHide, {220, 396}}}},
    {"buttons",
     {{Input::kTap, {63, 138}}, {Input::kTap, {532, 138}}, {Input::kTap, {306, 276}}, {Input::kTap, {40, 374}},
      {Input::kHide, {306, 276}}}},
    {"phone", {{Input::kTap, {63, 110}}, {Input::kTap, {151, 362}}, {Input::kHide, {540, 110}}}},
    {"settings",
     {{Input::kTap, {200, 128}}, {Input::kTap, {200, 252}}, {Input::kTap, {200, 400}}, {Input::kTap, {200, 316}}}},
    {"lists", {{Input::kTap, {150, 147}}, {Input::kTap, {560, 336}}}},
    {"contacts", {{Input::kTap, {200, 150}}, {Input::kTap, {200, 230}}}},
    {"devices", {{Input::kTap, {200, 150}}, {Input::kTap, {200, 230}}}},
    {"table", {{Input::kTap, {200, 150}}, {Input::kTap, {200, 230}}}},
    {"clock", {{Input::kTap, {134, 214}}}},  // the dialog keeps its own frame and draws afresh with the host
};

TEST_F(HostFrame, PresentingTheKeptFrameShowsWhatDrawingAfreshShows) {
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.screen);
        ASSERT_TRUE(app->Show(c.screen));
        D().RunUntilIdle();
        for (const Input& in : c.input) {
            if (in.kind == Input::kTap) {
                D().Tap(in.at.x, in.at.y);
                D().Advance(600);  // past any double-tap timer
            } else {
                ::ShowWindow(::ChildWindowFromPoint(Host(), in.at), SW_HIDE);
                D().RunUntilIdle();
            }
        }
        const HWND host = Host();
        RepaintAll(host);
        const std::vector<COLORREF> kept = Screenful();
        RECT client;
        ::GetClientRect(host, &client);
        ContentChanged(host, client);
        RepaintAll(host);
        EXPECT_EQ(FirstDifference(kept, Screenful()), "");
    }
}

// What the host has invalidated once the messages posted to it (its own status update
// among them) are handled, before anything is painted.
RECT UpdateAfterPosted(HWND host) {
    MSG msg;
    while (::PeekMessageW(&msg, host, WM_APP, 0xBFFF, PM_REMOVE)) ::DispatchMessageW(&msg);
    RECT update{};
    return ::GetUpdateRect(host, &update, FALSE) ? update : RECT{};
}

// The strip's rows: a line moves up a row with each new notification, and a notification
// that repeats the last two lines changes nothing; nor does a burst of notifications that
// leaves the strip showing the lines it showed (the same list row tapped again: the press
// and the click, as before).
TEST_F(HostFrame, ANotificationRepaintsOnlyTheStatusRowsItChanges) {
    ASSERT_TRUE(app->Show("buttons"));
    D().RunUntilIdle();
    const HWND host = Host();
    const RECT strip{0, theme::kStatusTop, theme::kScreenWidth, theme::kScreenHeight};
    auto send = [&](WORD id) { ::SendMessageW(host, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0); };
    struct Step {
        const char* what;
        std::vector<WORD> burst;  // senders of the notifications sent together
        bool top, bottom;         // the rows expected invalid
    };
    const Step steps[] = {
        {"a new line: both rows", {9999}, true, true},
        {"the same line again: only the top row takes it", {9999}, true, false},
        {"and again: nothing changes", {9999}, false, false},
        {"two new lines at once: both rows", {9998, 9997}, true, true},
        {"the same two again: nothing changes", {9998, 9997}, false, false},
        {"a line that comes and goes within the burst: nothing changes", {9996, 9998, 9997}, false, false},
    };
    const int middle = (theme::kStatusTop + theme::kScreenHeight) / 2;
    for (const Step& s : steps) {
        SCOPED_TRACE(s.what);
        for (WORD id : s.burst) send(id);
        const RECT update = UpdateAfterPosted(host);
        D().RunUntilIdle();
        RECT inside;
        if (!s.top && !s.bottom) {
            EXPECT_TRUE(::IsRectEmpty(&update));
            continue;
        }
        EXPECT_TRUE(::IntersectRect(&inside, &update, &strip) && ::EqualRect(&inside, &update))
            << "outside the strip: " << update.left << "," << update.top << "," << update.right << "," << update.bottom;
        EXPECT_EQ(update.top < middle, s.top);
        EXPECT_EQ(update.bottom > middle + 1, s.bottom);
        EXPECT_LT(update.right, theme::kScreenWidth / 2) << "a short line repaints only its part of the row";
    }
}

}  // namespace
}  // namespace zel::demo

namespace zel::demo {
namespace {

// Play and pause swap kept pictures of the player's art: one kept from before a track
// change must be drawn again, not shown with the old track's label colour.
TEST_F(HostFrame, ThePlayersArtFollowsTheTrackAcrossPlayAndPause) {
    ASSERT_TRUE(app->Show("player"));
    D().RunUntilIdle();
    const POINT play{224, 298}, previous{143, 298}, label{104, 136};  // label: beside the pause bars
    auto tap = [](POINT p) {
        D().Tap(p.x, p.y);
        D().Advance(600);
    };
    tap(play);
    const COLORREF before = D().Pixel(label.x, label.y);
    tap(previous);
    const COLORREF after = D().Pixel(label.x, label.y);
    EXPECT_NE(after, before) << "the track's colour";
    for (const char* what : {"the other state", "and back"}) {
        tap(play);
        EXPECT_EQ(D().Pixel(label.x, label.y), after) << what;
    }
}

}  // namespace
}  // namespace zel::demo
