// Keyboard focus, activation and mouse capture: message order and routing.
#include <windows.h>

#include <zel/desktop.h>

#include "recorder.h"

namespace {

using Focus = zel::test::DesktopTest;
using Capture = zel::test::DesktopTest;

struct Pair {
    HWND top, a, b;
};

Pair MakePair(zel::test::Recorder& rec) {
    Pair p;
    p.top = rec.Top("top", 0, 0, 200, 100);
    p.a = rec.Child(p.top, "a", 10, 10, 50, 30, 1);
    p.b = rec.Child(p.top, "b", 70, 10, 50, 30, 2);
    return p;
}

TEST_F(Focus, NewFocusIsVisibleWhileTheOldWindowLosesIt) {
    Pair p = MakePair(rec);
    EXPECT_EQ(GetFocus(), p.top) << "a shown top-level window is activated and focused";
    SetFocus(p.a);
    rec.Start({WM_SETFOCUS, WM_KILLFOCUS});
    rec.hook = [&](HWND h, UINT m, WPARAM, LPARAM, LRESULT*) {
        if (m == WM_KILLFOCUS) rec.Note("during-kill=" + rec.NameOf(GetFocus()));
        return false;
    };
    EXPECT_EQ(SetFocus(p.b), p.a);
    EXPECT_EQ(rec.Take(), "a:KILLFOCUS(b);during-kill=b;b:SETFOCUS(a)");
    EXPECT_EQ(SetFocus(p.b), p.b);
    EXPECT_EQ(rec.Take(), "-") << "already focused: nothing is sent";
    EXPECT_EQ(SetFocus(nullptr), p.b);
    EXPECT_EQ(rec.Take(), "b:KILLFOCUS(0);during-kill=0");
}

TEST_F(Focus, DisabledWindowsAndTheirChildrenCannotTakeIt) {
    Pair p = MakePair(rec);
    HWND inner = rec.Child(p.a, "inner", 0, 0, 5, 5, 3);
    EnableWindow(p.a, FALSE);
    rec.Start({WM_SETFOCUS, WM_KILLFOCUS});
    EXPECT_EQ(SetFocus(p.a), nullptr);
    EXPECT_EQ(SetFocus(inner), nullptr);
    EXPECT_EQ(rec.Take(), "-");
    EXPECT_EQ(GetFocus(), p.top);
}

TEST_F(Focus, KillFocusHandlerThatMovesTheFocusWins) {
    Pair p = MakePair(rec);
    SetFocus(p.a);
    rec.Start({WM_SETFOCUS, WM_KILLFOCUS});
    rec.hook = [&](HWND h, UINT m, WPARAM, LPARAM, LRESULT*) {
        if (h == p.a && m == WM_KILLFOCUS) SetFocus(p.top);
        return false;
    };
    SetFocus(p.b);
    EXPECT_EQ(rec.Take(), "a:KILLFOCUS(b);b:KILLFOCUS(top);top:SETFOCUS(b)") << "b never hears WM_SETFOCUS";
    EXPECT_EQ(GetFocus(), p.top);
}

TEST_F(Focus, HidingOrDisablingTheFocusMovesIt) {
    Pair p = MakePair(rec);
    SetFocus(p.a);
    rec.Start({WM_SETFOCUS, WM_KILLFOCUS, WM_SHOWWINDOW, WM_CANCELMODE, WM_ENABLE});
    ShowWindow(p.a, SW_HIDE);
    EXPECT_EQ(rec.Take(), "a:SHOWWINDOW(0);a:KILLFOCUS(top);top:SETFOCUS(a)");
    SetFocus(p.b);
    rec.Take();
    EXPECT_FALSE(EnableWindow(p.b, FALSE));
    EXPECT_EQ(rec.Take(), "b:CANCELMODE;b:KILLFOCUS(0);b:ENABLE(0)");
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST_F(Focus, FocusInAnotherTopLevelWindowActivatesItFirst) {
    HWND one = rec.Top("one", 0, 0, 50, 50);
    HWND two = rec.Top("two", 100, 0, 50, 50);
    HWND child = rec.Child(one, "child", 0, 0, 10, 10, 1);
    ASSERT_EQ(GetActiveWindow(), two);
    rec.Start({WM_ACTIVATE, WM_SETFOCUS, WM_KILLFOCUS});
    SetFocus(child);
    EXPECT_EQ(rec.Take(),
              "two:ACTIVATE(0,one);one:ACTIVATE(1,two);two:KILLFOCUS(one);one:SETFOCUS(two);"
              "one:KILLFOCUS(child);child:SETFOCUS(one)");
    EXPECT_EQ(GetActiveWindow(), one);
    EXPECT_EQ(GetWindow(one, GW_HWNDFIRST), one) << "activation raises the window";
    DestroyWindow(one);
    EXPECT_EQ(GetActiveWindow(), two) << "another window takes over when the active one goes";
    EXPECT_EQ(GetFocus(), two);
}

TEST_F(Capture, MouseGoesToTheCaptureInItsClientCoordinates) {
    Pair p = MakePair(rec);
    rec.Start({WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_CAPTURECHANGED});
    EXPECT_EQ(SetCapture(p.a), nullptr);
    zel::Desktop& d = zel::Desktop::Get();
    d.PointerDown(80, 20);  // over b
    d.PointerMove(5, 2);    // left of and above a
    d.PointerUp(5, 2);
    EXPECT_EQ(rec.Take(), "a:LBUTTONDOWN(70,10);a:MOUSEMOVE(-5,-8);a:LBUTTONUP(-5,-8)");
    EXPECT_EQ(SetCapture(p.b), p.a);
    EXPECT_TRUE(ReleaseCapture());
    EXPECT_TRUE(ReleaseCapture()) << "releasing nothing still succeeds";
    EXPECT_EQ(rec.Take(), "a:CAPTURECHANGED(b);b:CAPTURECHANGED(0)");
    d.Tap(80, 20);
    EXPECT_EQ(rec.Take(), "b:LBUTTONDOWN(10,10);b:LBUTTONUP(10,10)") << "without capture, hit testing decides";
}

}  // namespace
