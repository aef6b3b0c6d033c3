// What the combo box tests share: a parent over the whole screen (so the list may grow
// either way), a skin of solid pieces and a box made and named "combo".
#pragma once

#include <memory>
#include <string>

#include "CZELComBox.h"
#include "support/control_test.h"

namespace combotest {

constexpr UINT kId = 77;
// Box 200 x 30; arrow 30 wide; rows 20 high; the bar 12 wide.
constexpr int kBoxW = 200, kBoxH = 30, kArrowW = 30, kRowH = 20, kBarW = 12;
const COLORREF kCap = RGB(40, 40, 120), kMiddle = RGB(200, 200, 240), kArrow = RGB(240, 160, 0),
               kArrowDown = RGB(255, 220, 120), kRow = RGB(230, 240, 230), kRowLit = RGB(0, 110, 60);

// "COMMAND(77,<code>,combo)" for each code, joined as the parent's log joins them.
std::string Commands(std::initializer_list<int> codes);

class ComboTest : public zel::test::ControlTest {
protected:
    ComboTest() : ControlTest(CRect(0, 0, 800, 480)) {}
    void SetUp() override;
    void TearDown() override;

    // The pieces of box and bar as image files.
    void WriteSkin();
    CString BoxSkin() const;
    CString BarSkin() const;
    // A skinned box at `rect` (the parent's = the screen's coordinates) with `items`
    // named "item 0", "item 1", ...; the log is emptied.
    CZELComBox& Make(const CRect& rect, int items, DWORD style = WS_VISIBLE);
    // The screen point in the middle of the open list's visible row `visibleRow`.
    POINT RowOnScreen(int visibleRow) const;
    void TapRow(int visibleRow);
    CRect WindowRect() const;

    std::unique_ptr<CZELComBox> ctl;
};

}  // namespace combotest
