// Stylus and key input: hit testing, double clicks, move reporting, keys through the pump.
#include <windows.h>

#include <zel/desktop.h>
#include <zel/hooks.h>

#include "recorder.h"
#include "user/wndmgr.h"

namespace {

using HitTesting = zel::test::DesktopTest;
using DoubleClick = zel::test::DesktopTest;
using Stylus = zel::test::DesktopTest;
using Keys = zel::test::DesktopTest;

zel::Desktop& D() { return zel::Desktop::Get(); }

TEST_F(HitTesting, WindowRegionLetsTheClickThroughToTheParent) {
    rec.Start({WM_LBUTTONDOWN});
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND c = rec.Child(top, "c", 10, 10, 40, 40, 1);
    HRGN rgn = CreateRectRgn(0, 0, 40, 40);
    HRGN corner = CreateRectRgn(0, 0, 10, 10);
    CombineRgn(rgn, rgn, corner, RGN_DIFF);
    DeleteObject(corner);
    SetWindowRgn(c, rgn, TRUE);
    D().Tap(12, 12);   // in the cut corner
    D().Tap(25, 12);   // in the region
    D().Tap(49, 49);   // last pixel of the child
    D().Tap(50, 50);   // first pixel outside it
    EXPECT_EQ(rec.Take(), "top:LBUTTONDOWN(12,12);c:LBUTTONDOWN(15,2);c:LBUTTONDOWN(39,39);top:LBUTTONDOWN(50,50)");
}

TEST_F(HitTesting, DisabledChildIsTransparentDisabledTopLevelSwallows) {
    rec.Start({WM_LBUTTONDOWN});
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND c = rec.Child(top, "c", 10, 10, 40, 40, 1, WS_VISIBLE | WS_DISABLED);
    rec.Child(c, "inner", 0, 0, 40, 40, 2);
    D().Tap(20, 20);
    EXPECT_EQ(rec.Take(), "top:LBUTTONDOWN(20,20)") << "nor does the disabled child's own child get it";
    HWND over = rec.Top("over", 0, 0, 50, 50, WS_VISIBLE | WS_DISABLED);
    (void)over;
    D().Tap(20, 20);
    EXPECT_EQ(rec.Take(), "-") << "a disabled top-level window owns the point but takes no input";
    D().Tap(70, 70);
    EXPECT_EQ(rec.Take(), "top:LBUTTONDOWN(70,70)");
}

TEST_F(HitTesting, TransparentWindowsPassThePointOn) {
    rec.Start({WM_LBUTTONDOWN, WM_COMMAND});
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND under = rec.Child(top, "under", 0, 0, 50, 50, 1);
    HWND glass = rec.Child(top, "glass", 0, 0, 50, 50, 2);
    rec.hook = [glass](HWND h, UINT m, WPARAM, LPARAM, LRESULT* r) {
        if (h != glass || m != WM_NCHITTEST) return false;
        *r = HTTRANSPARENT;
        return true;
    };
    D().Tap(5, 5);
    EXPECT_EQ(rec.Take(), "under:LBUTTONDOWN(5,5)");
    (void)under;
    rec.hook = nullptr;
    rec.Child(top, "label", 60, 0, 20, 20, 3, WS_VISIBLE, L"STATIC", L"x");
    rec.Child(top, "link", 60, 30, 20, 20, 4, WS_VISIBLE | SS_NOTIFY, L"STATIC", L"x");
    D().Tap(65, 5);
    D().Tap(65, 35);
    EXPECT_EQ(rec.Take(), "top:LBUTTONDOWN(65,5);top:COMMAND(4,0)") << "only SS_NOTIFY statics take clicks";
}

TEST_F(DoubleClick, SecondTapMakesIt_ThirdIsPlainAgain) {
    rec.Start({WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK});
    rec.Top("w", 0, 0, 100, 100);
    D().Tap(10, 10);
    D().Advance(100);
    D().Tap(11, 9);
    D().Tap(11, 9);
    D().Tap(11, 9);
    EXPECT_EQ(rec.Take(),
              "w:LBUTTONDOWN(10,10);w:LBUTTONUP(10,10);w:LBUTTONDBLCLK(11,9);w:LBUTTONUP(11,9);"
              "w:LBUTTONDOWN(11,9);w:LBUTTONUP(11,9);w:LBUTTONDBLCLK(11,9);w:LBUTTONUP(11,9)");
}

TEST_F(DoubleClick, NeedsTimeDistanceSameWindowAndTheClassStyle) {
    rec.Start({WM_LBUTTONDOWN, WM_LBUTTONDBLCLK});
    HWND w = rec.Top("w", 0, 0, 100, 100);
    HWND c = rec.Child(w, "c", 50, 0, 50, 50, 1);
    (void)c;
    auto taps = [](std::initializer_list<std::pair<POINT, DWORD>> seq) {
        for (auto [pt, wait] : seq) {
            D().Advance(wait);
            D().Tap(pt.x, pt.y);
        }
    };
    taps({{{10, 10}, 0}, {{10, 10}, 500}});  // the double-click time is a strict limit
    taps({{{10, 70}, 0}, {{12, 70}, 0}});    // two pixels apart is too far
    taps({{{48, 10}, 0}, {{50, 10}, 0}});    // another window
    EXPECT_EQ(rec.Take(),
              "w:LBUTTONDOWN(10,10);w:LBUTTONDOWN(10,10);w:LBUTTONDOWN(10,70);w:LBUTTONDOWN(12,70);"
              "w:LBUTTONDOWN(48,10);c:LBUTTONDOWN(0,10)");

    SetClassLongW(w, GCL_STYLE, 0);
    taps({{{10, 70}, 0}, {{10, 70}, 0}});
    EXPECT_EQ(rec.Take(), "w:LBUTTONDOWN(10,70);w:LBUTTONDOWN(10,70)") << "without CS_DBLCLKS";
    SetClassLongW(w, GCL_STYLE, CS_DBLCLKS);
}

TEST_F(Stylus, MovesOnlyWhileDownMergedToTheLatest) {
    rec.Start({WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP});
    rec.Top("w", 0, 0, 100, 100);
    D().PointerMove(5, 5);
    EXPECT_EQ(rec.Take(), "-") << "no hover moves";
    D().PointerDown(10, 10);
    zel::user::QueuePointer(zel::user::PointerKind::kMove, POINT{11, 11});
    zel::user::QueuePointer(zel::user::PointerKind::kMove, POINT{12, 12});
    zel::user::QueuePointer(zel::user::PointerKind::kMove, POINT{13, 14});
    D().RunUntilIdle();
    D().PointerUp(20, 20);  // lifted elsewhere: the stylus travelled there first
    EXPECT_EQ(rec.Take(), "w:LBUTTONDOWN(10,10);w:MOUSEMOVE(13,14);w:MOUSEMOVE(20,20);w:LBUTTONUP(20,20)");
    rec.hook = [&](HWND, UINT m, WPARAM wp, LPARAM, LRESULT*) {
        if (m == WM_MOUSEMOVE) rec.Note((wp & MK_LBUTTON) ? "with-button" : "no-button");
        if (m == WM_LBUTTONUP) rec.Note((wp & MK_LBUTTON) ? "up-with-button" : "up-no-button");
        return false;
    };
    D().PointerDown(30, 30);
    D().PointerMove(31, 31);
    D().PointerUp(31, 31);
    EXPECT_EQ(rec.Take(), "w:LBUTTONDOWN(30,30);w:MOUSEMOVE(31,31);with-button;w:LBUTTONUP(31,31);up-no-button");
}

bool consumeKeys = false;
std::vector<UINT> hookSaw;
bool PreTranslate(MSG* m) {
    hookSaw.push_back(m->message);
    return consumeKeys && m->message == WM_KEYDOWN;
}

TEST_F(Keys, GoToTheFocusThroughThePreTranslateHook) {
    rec.Start({WM_KEYDOWN, WM_KEYUP, WM_CHAR});
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND c = rec.Child(top, "c", 0, 0, 10, 10, 1);
    SetFocus(c);
    D().RunUntilIdle();
    hookSaw.clear();
    consumeKeys = false;
    zel::SetPreTranslateHook(PreTranslate);
    D().KeyDown('A');
    D().KeyUp('A');
    EXPECT_EQ(rec.Take(), "c:KEYDOWN(65);c:CHAR(97);c:KEYUP(65)");
    EXPECT_EQ(hookSaw, (std::vector<UINT>{WM_KEYDOWN, WM_CHAR, WM_KEYUP}));
    consumeKeys = true;
    D().KeyDown(VK_SPACE);
    EXPECT_EQ(rec.Take(), "-") << "the hook consumed it: no dispatch, no translation";
    EXPECT_LT(GetKeyState(VK_SPACE), 0) << "the key state still follows";
    consumeKeys = false;
    D().KeyUp(VK_SPACE);
    EXPECT_EQ(GetKeyState(VK_SPACE) & 0x8000, 0);
    SetFocus(nullptr);
    D().KeyDown('B');
    EXPECT_EQ(rec.Take(), "c:KEYUP(32)") << "with no focus a key goes nowhere";
    zel::SetPreTranslateHook(nullptr);
}

TEST_F(Keys, ClickActivatesTheTopLevelWindowItLandsIn) {
    HWND one = rec.Top("one", 0, 0, 50, 50);
    HWND two = rec.Top("two", 100, 0, 50, 50);
    ASSERT_EQ(GetActiveWindow(), two);
    rec.Start({WM_ACTIVATE, WM_LBUTTONDOWN});
    D().Tap(10, 10);
    EXPECT_EQ(rec.Take(), "two:ACTIVATE(0,one);one:ACTIVATE(1,two);one:LBUTTONDOWN(10,10)");
    EXPECT_EQ(GetFocus(), one);
}

}  // namespace
