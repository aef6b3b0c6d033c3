// What the list families' fixtures share: the control fixture on a 400 x 300 parent, a plain
// child window for a list to subclass (a dialog item), the scroll bar's skin, and a
// debug-line recorder.
#pragma once

#include <afxwin.h>

#include <string>
#include <vector>

#include "support/control_test.h"

namespace zel::test {

// The scroll bar's skin: 12 pixels wide, 8-pixel arrows, a 24-pixel track, a 10 x 8 thumb.
constexpr int kBarWidth = 12;
const COLORREF kBarArrow = RGB(40, 40, 160), kBarTrack = RGB(200, 200, 230), kBarThumb = RGB(40, 160, 40);

class ListFixture : public ControlTest {
protected:
    ListFixture() : ControlTest(CRect(20, 30, 420, 330)) {}
    void SetUp() override;
    void TearDown() override;

    // A visible child of the parent at `rc` (parent coordinates) of a class without
    // CS_DBLCLKS, identifier `id`: what a host's dialog gives a list to subclass.
    HWND ItemWindow(const CRect& rc, int id);
    // The bar's seven pieces, written once per test; its skin string in the bar's order.
    CString BarSkin();
    // Debug lines printed since the last call, joined by '|'.
    std::string DebugLines();

private:
    std::vector<std::wstring> lines_;
};

}  // namespace zel::test
