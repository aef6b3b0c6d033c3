// What the special-list tests share: the control fixture, a plain child window for a list
// to subclass (a dialog item), the row pieces and frame images written once per test, the
// scroll bar's skin, path arrays, and a debug-line recorder.
#pragma once

#include <afxtempl.h>
#include <afxwin.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "support/control_test.h"
#include "support/golden.h"

namespace speclisttest {

constexpr int kBarWidth = 12;
constexpr int kRowHeight = 30;
const COLORREF kFrame = RGB(230, 230, 210);
const COLORREF kLeft = RGB(200, 80, 40), kMiddle = RGB(240, 200, 120), kRight = RGB(160, 60, 30);
const COLORREF kCurLeft = RGB(30, 60, 160), kCurMiddle = RGB(60, 110, 220), kCurRight = RGB(20, 40, 120);
const COLORREF kBarArrow = RGB(40, 40, 160), kBarTrack = RGB(200, 200, 230), kBarThumb = RGB(40, 160, 40);
const COLORREF kMarkedInk = RGB(0xC8, 0x14, 0x32);  // 0x003214C8
const COLORREF kBlack = RGB(0, 0, 0);

class SpecialListTest : public zel::test::ControlTest {
protected:
    SpecialListTest() : ControlTest(CRect(20, 30, 420, 330)) {}
    void SetUp() override;
    void TearDown() override;

    // A visible child of the parent at `rc` (parent coordinates), identifier `id`.
    HWND ItemWindow(const CRect& rc, int id);
    // The four frame images (8 x 8, kFrame), the ordinary pieces "l", "m", "r" and the
    // current ones "cl", "cm", "cr" (caps 6 wide, middles 10, all kRowHeight high).
    void WritePieces();
    // The bar's seven pieces; its skin string in the bar's order.
    CString BarSkin();
    // Paths of pieces by name ("" stays empty: a path that loads nothing).
    CArray<CString, CString>& Paths(std::initializer_list<std::string> names);
    // Debug lines since the last call, joined by '|'.
    std::string DebugLines();
    // Pixels of `ink` inside row band [top, top + h) of the window's client.
    bool InkInBand(HWND hwnd, COLORREF ink, int top, int h);

private:
    std::vector<std::wstring> lines_;
    std::vector<std::unique_ptr<CArray<CString, CString>>> arrays_;
};

std::string Narrow(const CString& s);

// "lo..hi@pos shown|hidden[ disabled]" of a list's scroll bar.
std::string BarState(CWnd* bar);

}  // namespace speclisttest

// Rectangles print as (l,t,r,b) in failures.
inline void PrintTo(const CRect& rc, std::ostream* os) {
    *os << "(" << rc.left << "," << rc.top << "," << rc.right << "," << rc.bottom << ")";
}
