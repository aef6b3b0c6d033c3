#include "support/control_test.h"

#include "gdi/raster.h"

#include <algorithm>
#include <cstdio>

namespace zel::test {

void ControlTest::SetUp() {
    desktop.Reset();
    LeakChecked::SetUp();
    windowsBefore_ = LiveWindows();
    ASSERT_TRUE(parent.CreateAt(parentPlace_));
    desktop.RunUntilIdle();
}

// Children go with the parent; whatever outlives it was created and never destroyed.
void ControlTest::TearDown() {
    parent.onMessage = nullptr;
    if (parent.m_hWnd) parent.DestroyWindow();
    EXPECT_EQ(LiveWindows(), windowsBefore_) << "windows leaked";
    desktop.Reset();
    desktop.RunUntilIdle();
    CWnd::DeleteTempMap();
    LeakChecked::TearDown();
}

POINT ControlTest::ScreenOf(HWND hwnd, int x, int y) const {
    POINT pt{x, y};
    ::ClientToScreen(hwnd, &pt);
    return pt;
}

COLORREF ControlTest::ShownAt(HWND hwnd, int x, int y) const {
    const POINT pt = ScreenOf(hwnd, x, y);
    return desktop.Pixel(pt.x, pt.y);
}

void ControlTest::TapAt(HWND hwnd, int x, int y) {
    const POINT pt = ScreenOf(hwnd, x, y);
    desktop.Tap(pt.x, pt.y);
}

void ControlTest::DownAt(HWND hwnd, int x, int y) {
    const POINT pt = ScreenOf(hwnd, x, y);
    desktop.PointerDown(pt.x, pt.y);
}

void ControlTest::MoveTo(HWND hwnd, int x, int y) {
    const POINT pt = ScreenOf(hwnd, x, y);
    desktop.PointerMove(pt.x, pt.y);
}

void ControlTest::UpAt(HWND hwnd, int x, int y) {
    const POINT pt = ScreenOf(hwnd, x, y);
    desktop.PointerUp(pt.x, pt.y);
}

void ControlTest::Press(UINT vk) {
    desktop.KeyDown(vk);
    desktop.KeyUp(vk);
}

uint64_t ControlTest::RepaintPixels(CWnd& ctl) {
    desktop.RunUntilIdle();
    ctl.Invalidate();
    const uint64_t before = zel::gdi::pixelsWritten;
    desktop.RunUntilIdle();
    return zel::gdi::pixelsWritten - before;
}

void ControlTest::ExpectRepaintWithin(CWnd& ctl, uint64_t most) {
    const uint64_t written = RepaintPixels(ctl);
    EXPECT_GT(written, 0u);
    EXPECT_LE(written, most) << "pixels written by one repaint";
}

void ControlTest::ForEachLook(CWnd& ctl, POINT at, const std::function<void(const char* look)>& look) {
    const HWND hwnd = ctl.m_hWnd;
    parent.SetFocus();
    desktop.RunUntilIdle();
    look("normal");
    ctl.SetFocus();
    desktop.RunUntilIdle();
    look("focus");
    DownAt(hwnd, at.x, at.y);
    look("down");
    UpAt(hwnd, at.x, at.y);
    parent.SetFocus();
    ctl.EnableWindow(FALSE);
    desktop.RunUntilIdle();
    look("disabled");
    ctl.EnableWindow(TRUE);
    desktop.RunUntilIdle();
}

COLORREF ScreenPixel(int x, int y) { return zel::Desktop::Get().Pixel(x, y); }

std::string Hex(COLORREF c) {
    char b[16];
    std::snprintf(b, sizeof b, "%06x", static_cast<unsigned>(c & 0xFFFFFF));
    return b;
}

std::string Row(int y, int left, int right) {
    std::string s;
    for (int x = left; x < right; ++x) s += (s.empty() ? "" : " ") + Hex(ScreenPixel(x, y));
    return s;
}

CRect InkBox(HWND hwnd, COLORREF ink) {
    CRect client, box;
    ::GetClientRect(hwnd, &client);
    bool any = false;
    for (int y = 0; y < client.bottom; ++y)
        for (int x = 0; x < client.right; ++x) {
            POINT pt{x, y};
            ::ClientToScreen(hwnd, &pt);
            if (ScreenPixel(pt.x, pt.y) != ink) continue;
            box = any ? CRect(std::min<int>(box.left, x), std::min<int>(box.top, y), std::max<int>(box.right, x + 1),
                              std::max<int>(box.bottom, y + 1))
                      : CRect(x, y, x + 1, y + 1);
            any = true;
        }
    return box;
}

}  // namespace zel::test
