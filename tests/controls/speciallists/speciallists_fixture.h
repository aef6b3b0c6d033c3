// What the special-list tests add to the shared list fixture: the row pieces and frame
// images written once per test, path arrays, and a band probe.
#pragma once

#include <afxtempl.h>
#include <afxwin.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "CZELScrollbar.h"
#include "ListRecords.h"
#include "support/control_test.h"
#include "support/golden.h"
#include "support/list_fixture.h"

namespace speclisttest {

using zel::test::kBarArrow;
using zel::test::kBarThumb;
using zel::test::kBarTrack;
using zel::test::kBarWidth;
using zel::test::BarState;
using zel::test::ColumnList;
using zel::test::Narrow;
constexpr int kRowHeight = 30;
const COLORREF kFrame = RGB(230, 230, 210);
const COLORREF kLeft = RGB(200, 80, 40), kMiddle = RGB(240, 200, 120), kRight = RGB(160, 60, 30);
const COLORREF kCurLeft = RGB(30, 60, 160), kCurMiddle = RGB(60, 110, 220), kCurRight = RGB(20, 40, 120);
const COLORREF kMarkedInk = RGB(0xC8, 0x14, 0x32);  // 0x003214C8
const COLORREF kBlack = RGB(0, 0, 0);

class SpecialListTest : public zel::test::ListFixture {
protected:
    void TearDown() override;

    // The four frame images (8 x 8, kFrame), the ordinary pieces "l", "m", "r" and the
    // current ones "cl", "cm", "cr" (caps 6 wide, middles 10, all kRowHeight high).
    void WritePieces();
    // Paths of pieces by name ("" stays empty: a path that loads nothing).
    CArray<CString, CString>& Paths(std::initializer_list<std::string> names);
    // Pixels of `ink` inside row band [top, top + h) of the window's client.
    bool InkInBand(HWND hwnd, COLORREF ink, int top, int h);

private:
    std::vector<std::unique_ptr<CArray<CString, CString>>> arrays_;
};

}  // namespace speclisttest

// Rectangles print as (l,t,r,b) in failures.
inline void PrintTo(const CRect& rc, std::ostream* os) {
    *os << "(" << rc.left << "," << rc.top << "," << rc.right << "," << rc.bottom << ")";
}
