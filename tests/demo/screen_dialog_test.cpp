// A screen that is a dialog keeps its own frame, as the host does: after input that changes
// what it draws (a step of the date, of the format, the running clock), presenting the kept
// frame shows exactly what drawing it afresh shows, and a repaint from outside draws
// nothing again.
#include <gtest/gtest.h>

#include <vector>

#include "demo_fixture.h"
#include "gdi/raster.h"
#include "host/demo_app.h"
#include "host/screens.h"
#include "skin/theme.h"

namespace zel::demo {
namespace {

HWND Dialog() { return ::GetWindow(Host(), GW_CHILD); }

std::vector<COLORREF> Screenful() {
    std::vector<COLORREF> pixels;
    pixels.reserve(static_cast<size_t>(theme::kScreenWidth) * theme::kScreenHeight);
    for (int y = 0; y < theme::kScreenHeight; ++y)
        for (int x = 0; x < theme::kScreenWidth; ++x) pixels.push_back(D().Pixel(x, y));
    return pixels;
}

size_t Differences(const std::vector<COLORREF>& a, const std::vector<COLORREF>& b) {
    size_t n = a.size() == b.size() ? 0 : 1;
    for (size_t i = 0; i < a.size() && i < b.size(); ++i) n += a[i] != b[i];
    return n;
}

// Everything invalidated: the dialog paints from its frame, its controls from theirs.
void RepaintAll() {
    ::RedrawWindow(Host(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    D().RunUntilIdle();
}

// The dialog told that all it draws changed: it draws its frame afresh at the next paint.
void DialogChangedEverywhere() {
    RECT client;
    ::GetClientRect(Dialog(), &client);
    ContentChanged(Dialog(), client);
}

using ScreenDialogFrame = DemoAppTest;

TEST_F(ScreenDialogFrame, PresentingTheKeptFrameShowsWhatDrawingAfreshShows) {
    ASSERT_TRUE(app->Show("clock"));
    D().RunUntilIdle();
    const struct {
        const char* what;
        POINT tap;  // screen; {0, 0}: no tap, only time passing
        UINT key;   // then pressed, or 0
    } steps[] = {
        {"the year's add", {68, 124}, 0},
        {"the month's Def", {134, 214}, 0},
        {"the format's add", {240, 392}, 0},
        {"the running clock", {0, 0}, 0},
        {"the picker's year, by key", {40, 300}, VK_UP},  // read back by the dialog's timer
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.what);
        if (step.tap.x) D().Tap(step.tap.x, step.tap.y);
        if (step.key) {
            D().KeyDown(step.key);
            D().KeyUp(step.key);
        }
        D().Advance(1600);  // past any double tap; the clock moves on a second or more
        RepaintAll();
        const std::vector<COLORREF> kept = Screenful();
        DialogChangedEverywhere();
        RepaintAll();
        EXPECT_EQ(Differences(kept, Screenful()), 0u);
    }
}

// Only the dialog's own paint, without its controls: from the kept frame it is one copy
// (at most the client area's pixels); told of a change it draws the background and the
// readouts again first.
TEST_F(ScreenDialogFrame, ARepaintFromOutsideOnlyPresentsTheFrame) {
    ASSERT_TRUE(app->Show("clock"));
    D().RunUntilIdle();
    RECT client;
    ASSERT_TRUE(::GetClientRect(Dialog(), &client));
    const uint64_t area = static_cast<uint64_t>(client.right) * static_cast<uint64_t>(client.bottom);
    auto repaint = [] {
        const uint64_t before = zel::gdi::pixelsWritten;
        ::RedrawWindow(Dialog(), nullptr, nullptr, RDW_INVALIDATE);
        D().RunUntilIdle();
        return zel::gdi::pixelsWritten - before;
    };
    EXPECT_LE(repaint(), area) << "unchanged";
    DialogChangedEverywhere();
    EXPECT_GT(repaint(), area) << "changed everywhere";
    EXPECT_LE(repaint(), area) << "and kept again";
}

}  // namespace
}  // namespace zel::demo
