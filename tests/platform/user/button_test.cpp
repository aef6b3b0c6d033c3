// The BUTTON and STATIC classes driven by the stylus: what the parent hears and sees.
#include <windows.h>

#include <zel/desktop.h>

#include "recorder.h"

namespace {

zel::Desktop& D() { return zel::Desktop::Get(); }

// An owner-draw button with id 7 at (10,20) 60x30 on a recording parent.
class OwnerDraw : public zel::test::DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        parent = rec.Top("parent", 0, 0, 200, 100);
        btn = rec.Child(parent, "btn", 10, 20, 60, 30, 7, WS_VISIBLE | BS_OWNERDRAW, L"BUTTON", L"OK");
        D().RunUntilIdle();
        rec.Start({WM_DRAWITEM, WM_COMMAND});
        rec.hook = [this](HWND, UINT m, WPARAM, LPARAM, LRESULT*) {
            if (m == WM_COMMAND) rec.Note(GetCapture() ? "captured" : "released");
            return false;
        };
    }
    HWND parent = nullptr, btn = nullptr;
};

const char* kPress = "parent:DRAWITEM(act=4,state=0x10);parent:DRAWITEM(act=2,state=0x11)";

TEST_F(OwnerDraw, TapClicksAfterReleasingTheCapture) {
    D().PointerDown(20, 30);
    EXPECT_EQ(rec.Take(), kPress) << "focus first, then the push";
    EXPECT_EQ(GetCapture(), btn);
    EXPECT_EQ(SendMessageW(btn, BM_GETSTATE, 0, 0), BST_PUSHED | BST_FOCUS);
    D().PointerUp(20, 30);
    EXPECT_EQ(rec.Take(), "parent:DRAWITEM(act=2,state=0x10);parent:COMMAND(7,0);released");
    EXPECT_EQ(SendMessageW(btn, BM_GETSTATE, 0, 0), BST_FOCUS);
}

TEST_F(OwnerDraw, DraggingOutPopsItUpAndOnlyReleasingInsideClicks) {
    D().PointerDown(20, 30);
    rec.Take();
    D().PointerMove(100, 30);
    D().PointerMove(101, 30);
    EXPECT_EQ(rec.Take(), "parent:DRAWITEM(act=2,state=0x10);parent:DRAWITEM(act=2,state=0x10)")
        << "every move outside repaints";
    EXPECT_EQ(GetCapture(), btn);
    D().PointerUp(101, 30);
    EXPECT_EQ(rec.Take(), "-");
    EXPECT_EQ(GetCapture(), nullptr);

    D().Advance(1000);  // not a double click
    D().PointerDown(20, 30);
    D().PointerMove(100, 30);
    rec.Take();
    D().PointerMove(30, 30);
    D().PointerUp(30, 30);
    EXPECT_EQ(rec.Take(),
              "parent:DRAWITEM(act=2,state=0x11);parent:DRAWITEM(act=2,state=0x10);parent:COMMAND(7,0);released")
        << "dragged back in";
}

TEST_F(OwnerDraw, DoubleTapGivesOneClickAndOneDoubleClick) {
    D().Tap(20, 30);
    D().Tap(20, 30);
    EXPECT_EQ(rec.Take(), std::string(kPress) +
                              ";parent:DRAWITEM(act=2,state=0x10);parent:COMMAND(7,0);released;parent:COMMAND(7,5);released");
    D().Advance(1000);
    D().Tap(20, 30);
    EXPECT_EQ(rec.Take(),
              "parent:DRAWITEM(act=2,state=0x11);parent:DRAWITEM(act=2,state=0x10);parent:COMMAND(7,0);released");
}

TEST_F(OwnerDraw, DisabledButtonLetsTheParentHaveTheTap) {
    rec.Start({WM_DRAWITEM, WM_COMMAND, WM_LBUTTONDOWN});
    EXPECT_FALSE(EnableWindow(btn, FALSE));
    EXPECT_EQ(rec.Take(), "parent:DRAWITEM(act=1,state=0x4)") << "WM_ENABLE repaints at once";
    D().Tap(20, 30);
    EXPECT_EQ(rec.Take(), "parent:LBUTTONDOWN(20,30)");
}

TEST_F(OwnerDraw, ClickAndStateMessages) {
    EXPECT_EQ(SendMessageW(btn, BM_SETSTATE, TRUE, 0), 0);
    EXPECT_EQ(SendMessageW(btn, BM_SETSTATE, TRUE, 0), 0);
    EXPECT_EQ(rec.Take(), "parent:DRAWITEM(act=2,state=0x1);parent:DRAWITEM(act=2,state=0x1)")
        << "a state set again is painted again";
    SendMessageW(btn, BM_SETSTATE, FALSE, 0);
    rec.Take();
    SendMessageW(btn, BM_CLICK, 0, 0);
    EXPECT_EQ(rec.Take(), std::string(kPress) + ";parent:DRAWITEM(act=2,state=0x10);parent:COMMAND(7,0);released");
}

TEST_F(OwnerDraw, SpaceKeyPressesAndReleases) {
    SetFocus(btn);
    rec.Take();
    D().KeyDown(VK_SPACE);
    EXPECT_EQ(rec.Take(), "parent:DRAWITEM(act=2,state=0x11)");
    D().KeyUp(VK_SPACE);
    EXPECT_EQ(rec.Take(), "parent:DRAWITEM(act=2,state=0x10);parent:COMMAND(7,0);released");
}

TEST_F(OwnerDraw, ParentMayDestroyTheButtonFromItsNotification) {
    rec.hook = [this](HWND, UINT m, WPARAM, LPARAM, LRESULT*) {
        if (m == WM_COMMAND) DestroyWindow(btn);
        return false;
    };
    D().Tap(20, 30);
    EXPECT_FALSE(IsWindow(btn));
    EXPECT_EQ(GetCapture(), nullptr);
    D().Tap(20, 30);  // lands on the parent now
}

TEST_F(OwnerDraw, FocusChangesRepaintTheFocusState) {
    SetFocus(btn);
    EXPECT_EQ(rec.Take(), "parent:DRAWITEM(act=4,state=0x10)");
    SetFocus(parent);
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "parent:DRAWITEM(act=4,state=0x0);parent:DRAWITEM(act=1,state=0x0)")
        << "losing the focus also invalidates (painted by the next WM_PAINT)";
}

using PushButton = zel::test::DesktopTest;

TEST_F(PushButton, PaintsFaceAndBevelAndClicks) {
    rec.Start({WM_COMMAND});
    HWND parent = rec.Top("parent", 0, 0, 100, 60);
    HWND b = rec.Child(parent, "b", 10, 10, 40, 20, 3, WS_VISIBLE | BS_PUSHBUTTON, L"BUTTON", L"");
    D().RunUntilIdle();
    EXPECT_EQ(D().Pixel(10, 10), RGB(0, 0, 0)) << "outline";
    EXPECT_EQ(D().Pixel(11, 11), RGB(255, 255, 255)) << "highlight";
    EXPECT_EQ(D().Pixel(48, 28), RGB(128, 128, 128)) << "shadow";
    EXPECT_EQ(D().Pixel(30, 20), RGB(192, 192, 192)) << "face";
    D().PointerDown(30, 20);
    EXPECT_EQ(D().Pixel(11, 11), RGB(128, 128, 128)) << "pushed: sunken, painted at once";
    D().PointerUp(30, 20);
    EXPECT_EQ(rec.Take(), "parent:COMMAND(3,0)");
    EXPECT_EQ(GetFocus(), b);
}

using Static = zel::test::DesktopTest;

TEST_F(Static, BitmapSetsTheSizeAndStaysTheCallers) {
    HWND parent = rec.Top("parent", 0, 0, 200, 100);
    HWND s = rec.Child(parent, "s", 10, 10, 100, 80, 5, WS_VISIBLE | SS_BITMAP, L"STATIC", L"");
    HDC screen = GetDC(nullptr);
    HBITMAP a = CreateCompatibleBitmap(screen, 20, 12);
    HBITMAP b = CreateCompatibleBitmap(screen, 30, 8);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(SendMessageW(s, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(a)), 0);
    RECT r;
    GetWindowRect(s, &r);
    EXPECT_EQ(r.left, 10);
    EXPECT_EQ(r.right - r.left, 20);
    EXPECT_EQ(r.bottom - r.top, 12);
    EXPECT_EQ(SendMessageW(s, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(b)), reinterpret_cast<LRESULT>(a));
    EXPECT_EQ(SendMessageW(s, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(parent)), 0) << "not a bitmap";
    EXPECT_EQ(SendMessageW(s, STM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(a)), 0);
    EXPECT_EQ(SendMessageW(s, STM_GETIMAGE, IMAGE_BITMAP, 0), reinterpret_cast<LRESULT>(b));
    EXPECT_EQ(SendMessageW(s, STM_SETIMAGE, IMAGE_BITMAP, 0), reinterpret_cast<LRESULT>(b));
    GetClientRect(s, &r);
    EXPECT_EQ(r.right, 30) << "clearing keeps the size";
    DestroyWindow(parent);
    BITMAP bm;
    EXPECT_NE(GetObjectW(a, sizeof bm, &bm), 0);
    EXPECT_NE(GetObjectW(b, sizeof bm, &bm), 0);
    DeleteObject(a);
    DeleteObject(b);
}

}  // namespace
