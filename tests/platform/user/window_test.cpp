// Window creation and destruction, the tree, geometry, longs, text, classes and regions.
#include <windows.h>

#include <climits>

#include <zel/desktop.h>

#include "recorder.h"
#include "support/platform_rects.h"

namespace {

using zel::test::RectText;
using zel::test::WindowRectText;

using Windows = zel::test::DesktopTest;

TEST_F(Windows, CreationSendsItsMessagesInOrder) {
    rec.Start({WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE, WM_SHOWWINDOW});
    HWND top = rec.Top("top", 10, 20, 300, 200);
    EXPECT_EQ(rec.Take(), "top:NCCREATE;top:CREATE;top:SIZE(300,200);top:MOVE(10,20);top:SHOWWINDOW(1)");
    rec.Child(top, "c", 5, 6, 50, 40, 7, 0);
    EXPECT_EQ(rec.Take(), "c:NCCREATE;c:CREATE;c:SIZE(50,40);c:MOVE(5,6)") << "a hidden child is not shown";
}

TEST_F(Windows, WindowIsHiddenDuringCreateAndGetsItsVisibleStyleAfter) {
    rec.Start({});
    DWORD styleInCreate = 0;
    rec.hook = [&](HWND h, UINT m, WPARAM, LPARAM, LRESULT*) {
        if (m == WM_CREATE) styleInCreate = static_cast<DWORD>(GetWindowLongW(h, GWL_STYLE));
        return false;
    };
    HWND top = rec.Top("top", 0, 0, 10, 10);
    EXPECT_EQ(styleInCreate & WS_VISIBLE, 0u);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(top, GWL_STYLE)), static_cast<DWORD>(WS_POPUP | WS_VISIBLE | WS_CLIPSIBLINGS));
}

TEST_F(Windows, DestroyTellsParentsFirstAndFreesChildrenFirst) {
    rec.Start({WM_DESTROY, WM_NCDESTROY});
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND a = rec.Child(top, "a", 0, 0, 50, 50, 1);
    HWND g = rec.Child(a, "g", 0, 0, 10, 10, 2);
    HWND b = rec.Child(top, "b", 50, 0, 50, 50, 3);
    EXPECT_TRUE(DestroyWindow(top));
    // b was created last, so it is first in z-order.
    EXPECT_EQ(rec.Take(),
              "top:DESTROY;b:DESTROY;a:DESTROY;g:DESTROY;b:NCDESTROY;g:NCDESTROY;a:NCDESTROY;top:NCDESTROY");
    for (HWND h : {top, a, g, b}) EXPECT_FALSE(IsWindow(h));
    RECT r;
    EXPECT_FALSE(GetWindowRect(a, &r));
    EXPECT_EQ(SendMessageW(g, WM_USER, 0, 0), 0);
    EXPECT_FALSE(PostMessageW(b, WM_USER, 0, 0));
    EXPECT_FALSE(DestroyWindow(top)) << "a stale handle fails";
}

TEST_F(Windows, CreateFailsWhenCreationIsRefused) {
    rec.Start({WM_NCCREATE, WM_CREATE, WM_DESTROY, WM_NCDESTROY});
    rec.hook = [](HWND, UINT m, WPARAM, LPARAM, LRESULT* r) {
        if (m != WM_CREATE) return false;
        *r = -1;
        return true;
    };
    EXPECT_EQ(rec.Top("w", 0, 0, 10, 10), nullptr);
    EXPECT_EQ(rec.Take(), "w:NCCREATE;w:CREATE;w:DESTROY;w:NCDESTROY");

    rec.hook = [](HWND, UINT m, WPARAM, LPARAM, LRESULT* r) {
        if (m != WM_NCCREATE) return false;
        *r = FALSE;
        return true;
    };
    EXPECT_EQ(rec.Top("v", 0, 0, 10, 10), nullptr);
    EXPECT_EQ(rec.Take(), "v:NCCREATE;v:NCDESTROY");
}

TEST_F(Windows, BadCreationArgumentsFail) {
    SetLastError(0);
    EXPECT_EQ(CreateWindowExW(0, zel::test::Recorder::ClassName(), L"", WS_CHILD, 0, 0, 1, 1, nullptr, nullptr,
                              nullptr, nullptr),
              nullptr);
    EXPECT_EQ(GetLastError(), 1406u) << "a child needs a parent";
    EXPECT_EQ(CreateWindowExW(0, L"NoSuchClass", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr), nullptr);
    HWND top = rec.Top("top", 0, 0, 10, 10);
    DestroyWindow(top);
    EXPECT_EQ(rec.Child(top, "orphan", 0, 0, 1, 1, 1), nullptr) << "stale parent";
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(0x1234)));
    EXPECT_EQ(SetWindowLongW(top, GWL_ID, 5), 0);
}

TEST_F(Windows, GeometryAndCoordinateMapping) {
    HWND top = rec.Top("top", 100, 50, 300, 200);
    HWND c = rec.Child(top, "c", 10, 20, 50, 40, 7);
    EXPECT_EQ(WindowRectText(c), "110,70,160,110");
    RECT r;
    ASSERT_TRUE(GetClientRect(c, &r));
    EXPECT_EQ(RectText(r), "0,0,50,40");
    POINT p{-5, 100};
    ClientToScreen(c, &p);
    EXPECT_TRUE(p.x == 105 && p.y == 170);
    ScreenToClient(top, &p);
    EXPECT_TRUE(p.x == 5 && p.y == 120);
    POINT pts[2] = {{0, 0}, {1, 1}};
    int packed = MapWindowPoints(c, top, pts, 2);
    EXPECT_TRUE(LOWORD(packed) == 10 && HIWORD(packed) == 20);
    EXPECT_TRUE(pts[1].x == 11 && pts[1].y == 21);
    MapWindowPoints(nullptr, c, pts, 1);  // from the screen
    EXPECT_EQ(pts[0].x, 10 - 110);
}

TEST_F(Windows, RelationsAndZOrder) {
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND a = rec.Child(top, "a", 0, 0, 10, 10, 1);
    HWND b = rec.Child(top, "b", 0, 0, 10, 10, 2);
    HWND owned = CreateWindowExW(0, zel::test::Recorder::ClassName(), L"", WS_POPUP, 0, 0, 5, 5, a, nullptr,
                                 nullptr, nullptr);
    EXPECT_EQ(GetParent(a), top);
    EXPECT_EQ(GetParent(top), nullptr);
    EXPECT_EQ(GetParent(owned), top) << "a popup is owned by the top-level window of its parent";
    EXPECT_EQ(GetWindow(top, GW_CHILD), b) << "a new child goes on top of its siblings";
    EXPECT_EQ(GetWindow(b, GW_HWNDNEXT), a);
    EXPECT_EQ(GetDlgItem(top, 1), a);
    EXPECT_EQ(GetDlgItem(top, 99), nullptr);
    EXPECT_EQ(GetDlgCtrlID(b), 2);
    EXPECT_TRUE(IsChild(top, a));
    EXPECT_FALSE(IsChild(a, top));

    EXPECT_TRUE(SetWindowPos(b, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE));
    EXPECT_EQ(GetWindow(top, GW_CHILD), a);
    EXPECT_TRUE(SetWindowPos(b, a, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE));
    EXPECT_EQ(GetWindow(a, GW_HWNDNEXT), b);
    EXPECT_TRUE(SetWindowPos(b, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE));
    EXPECT_EQ(GetWindow(top, GW_CHILD), b);

    DestroyWindow(top);
    EXPECT_FALSE(IsWindow(owned)) << "owned windows go with their owner";
}

TEST_F(Windows, SetWindowPosNotifiesOnlyRealChanges) {
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND c = rec.Child(top, "c", 1, 2, 10, 10, 1);
    rec.Start({WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED, WM_MOVE, WM_SIZE});
    MoveWindow(c, 3, 4, 20, 20, FALSE);
    EXPECT_EQ(rec.Take(), "c:POSCHANGING;c:POSCHANGED;c:MOVE(3,4);c:SIZE(20,20)");
    MoveWindow(c, 3, 4, 20, 20, FALSE);
    EXPECT_EQ(rec.Take(), "-");
    SetWindowPos(c, nullptr, 0, 0, 25, 20, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(rec.Take(), "c:POSCHANGING;c:POSCHANGED;c:SIZE(25,20)");
    MoveWindow(c, 3, 4, -5, -5, FALSE);
    EXPECT_EQ(rec.Take(), "c:POSCHANGING;c:POSCHANGED;c:SIZE(0,0)") << "negative sizes clamp to 0";
}

// Positions and sizes beyond 16 bits are clamped before anyone sees them, so a host's
// absurd MoveWindow never produces a rectangle whose edges cannot be computed.
TEST_F(Windows, CoordinatesAreClampedToSixteenBits) {
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND c = rec.Child(top, "c", INT_MAX, INT_MIN, INT_MAX, 70000, 1);
    EXPECT_EQ(WindowRectText(c), "32767,-32768,65534,-1");

    rec.Start({WM_WINDOWPOSCHANGING, WM_MOVE, WM_SIZE});
    LONG seenX = 0, seenCx = 0;
    rec.hook = [&](HWND h, UINT m, WPARAM, LPARAM lp, LRESULT*) {
        if (h == c && m == WM_WINDOWPOSCHANGING) {
            seenX = reinterpret_cast<WINDOWPOS*>(lp)->x;
            seenCx = reinterpret_cast<WINDOWPOS*>(lp)->cx;
        }
        return false;
    };
    MoveWindow(c, INT_MIN, INT_MAX, INT_MAX, INT_MIN, FALSE);
    EXPECT_EQ(seenX, -32768) << "the handler already sees the clamped move";
    EXPECT_EQ(seenCx, 32767);
    EXPECT_EQ(WindowRectText(c), "-32768,32767,-1,32767");
    EXPECT_EQ(rec.Take(), "c:POSCHANGING;c:MOVE(-32768,32767);c:SIZE(32767,0)");
    rec.hook = nullptr;  // it refers to this test's locals; the windows die after them
}

TEST_F(Windows, MoveAndSizeComeFromDefaultWindowPosChanged) {
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND c = rec.Child(top, "c", 0, 0, 10, 10, 1);
    rec.Start({WM_MOVE, WM_SIZE});
    // A handler may also move the window while it is being positioned.
    rec.hook = [c](HWND h, UINT m, WPARAM, LPARAM lp, LRESULT*) {
        if (h == c && m == WM_WINDOWPOSCHANGING) reinterpret_cast<WINDOWPOS*>(lp)->x = 40;
        return h == c && m == WM_WINDOWPOSCHANGED;
    };
    MoveWindow(c, 5, 5, 20, 20, FALSE);
    EXPECT_EQ(rec.Take(), "-") << "WM_WINDOWPOSCHANGED was not passed on";
    EXPECT_EQ(WindowRectText(c), "40,5,60,25");
}

TEST_F(Windows, LongsTextAndSubclassing) {
    HWND top = rec.Top("top", 0, 0, 10, 10);
    int local = 0;
    SetWindowLongPtrW(top, GWL_USERDATA, reinterpret_cast<LONG_PTR>(&local));
    EXPECT_EQ(GetWindowLongPtrW(top, GWL_USERDATA), reinterpret_cast<LONG_PTR>(&local)) << "pointer-sized";
    EXPECT_EQ(GetWindowLongW(top, GWL_WNDPROC), 0) << "a 32-bit long cannot hold a procedure";

    static WNDPROC original;
    static int seen;
    seen = 0;
    original = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(top, GWL_WNDPROC));
    auto sub = [](HWND h, UINT m, WPARAM wp, LPARAM lp) -> LRESULT {
        if (m == WM_USER) ++seen;
        return CallWindowProcW(original, h, m, wp, lp);
    };
    EXPECT_EQ(SetWindowLongPtrW(top, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(+sub)), reinterpret_cast<LONG_PTR>(original));
    SendMessageW(top, WM_USER, 0, 0);
    EXPECT_EQ(seen, 1);

    EXPECT_TRUE(SetWindowTextW(top, L"Hello World"));
    wchar_t buf[8];
    std::fill(std::begin(buf), std::end(buf), L'x');
    EXPECT_EQ(GetWindowTextW(top, buf, 4), 3);
    EXPECT_STREQ(buf, L"Hel");
    EXPECT_EQ(GetWindowTextLengthW(top), 11);
    EXPECT_EQ(GetWindowTextW(top, buf, 0), 0);
}

TEST_F(Windows, ClassesAreCaseInsensitiveAndCountTheirWindows) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = DefWindowProcW;
    wc.lpszClassName = L"Once";
    wc.cbWndExtra = 8;
    ASSERT_NE(RegisterClassW(&wc), 0);
    wc.lpszClassName = L"ONCE";
    EXPECT_EQ(RegisterClassW(&wc), 0) << "names compare case-insensitively";
    HWND w = CreateWindowExW(0, L"once", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(SetWindowLongW(w, 4, 77), 0);
    EXPECT_EQ(GetWindowLongW(w, 4), 77);
    EXPECT_EQ(GetWindowLongW(w, 8), 0) << "past cbWndExtra";
    EXPECT_FALSE(UnregisterClassW(L"Once", nullptr)) << "a window of the class is alive";
    DestroyWindow(w);
    EXPECT_TRUE(UnregisterClassW(L"Once", nullptr));

    WNDCLASSW button{};
    ASSERT_TRUE(GetClassInfoW(nullptr, L"button", &button));
    EXPECT_EQ(button.style, static_cast<UINT>(CS_DBLCLKS | CS_VREDRAW | CS_HREDRAW | CS_PARENTDC));
}

// The return codes of Set/GetWindowRgn and clearing are pinned against the recordings
// (window_region_hit_test); here who owns the region.
TEST_F(Windows, WindowRegionIsOwnedAndCopied) {
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND c = rec.Child(top, "c", 10, 10, 20, 20, 1);
    HRGN rgn = CreateRectRgn(2, 2, 18, 18);
    EXPECT_EQ(SetWindowRgn(c, rgn, TRUE), 1);
    EXPECT_EQ(GetObjectType(rgn), 0u) << "the window took the region over";
    HRGN copy = CreateRectRgn(0, 0, 0, 0), again = CreateRectRgn(0, 0, 0, 0);
    GetWindowRgn(c, copy);
    OffsetRgn(copy, 50, 50);
    GetWindowRgn(c, again);
    RECT box;
    GetRgnBox(again, &box);
    EXPECT_EQ(box.left, 2) << "GetWindowRgn hands out a copy";
    DeleteObject(copy);
    DeleteObject(again);
}

TEST_F(Windows, ResetDestroysEverythingAndSizesTheScreen) {
    rec.Start({WM_DESTROY});
    HWND top = rec.Top("top", 0, 0, 10, 10);
    SetTimer(top, 1, 100, nullptr);
    PostMessageW(top, WM_USER, 0, 0);
    zel::DesktopConfig cfg;
    cfg.width = 320;
    cfg.height = 240;
    zel::Desktop::Get().Reset(cfg);
    EXPECT_EQ(rec.Take(), "top:DESTROY");
    EXPECT_FALSE(IsWindow(top));
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 320);
    EXPECT_EQ(GetSystemMetrics(SM_CYSCREEN), 240);
    MSG m;
    EXPECT_FALSE(PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(zel::Desktop::Get().Pixel(320, 0), CLR_INVALID);
}

}  // namespace

namespace {

TEST(Cursors, StandardCursorsLoadOthersDoNot) {
    HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW);
    EXPECT_NE(arrow, nullptr);
    EXPECT_EQ(LoadCursorW(nullptr, IDC_ARROW), arrow);
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(arrow)));
    EXPECT_EQ(GetObjectType(arrow), 0u);
    EXPECT_EQ(LoadCursorW(nullptr, MAKEINTRESOURCEW(5)), nullptr);
    EXPECT_EQ(LoadCursorW(nullptr, L"named"), nullptr);
}

}  // namespace
