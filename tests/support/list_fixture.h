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

// ASCII text of a CString, for compact compares.
inline std::string Narrow(const CString& s) {
    std::wstring w(static_cast<LPCWSTR>(s));
    return std::string(w.begin(), w.end());
}

// "heading:width,..." of a list's column chain, head first.
template <class Column>
std::string ColumnList(const Column* head) {
    std::string s;
    for (const Column* c = head; c; c = c->pNext)
        s += (s.empty() ? "" : ",") + Narrow(c->strHeading) + ":" + std::to_string(c->nWidth);
    return s;
}

// "lo..hi@pos shown|hidden[ disabled]" of a list's scroll bar.
template <class Bar>
std::string BarState(Bar* bar) {
    long lo = 0, hi = 0;
    bar->GetRange(lo, hi);
    return std::to_string(lo) + ".." + std::to_string(hi) + "@" + std::to_string(bar->GetScrollPos()) +
           (bar->IsWindowVisible() ? " shown" : " hidden") + (bar->IsWindowEnabled() ? "" : " disabled");
}

}  // namespace zel::test
