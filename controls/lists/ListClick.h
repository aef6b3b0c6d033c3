// The lists' press rule, shared by CListData and CZELList: a press on a row is a click
// unless the list is armed and the press lands in its m_rcClick, which makes it a double
// click. The double-click timer disarms the list when it fires.
#pragma once

#include <afxwin.h>

namespace zelctl::lists {

// A press on a row: inside `clickRect` while `armed`, WM_LBUTTONDBLCLK (flags, point) is
// sent to the list and nothing else happens; otherwise timer `timer` restarts with
// `doubleClickMs`, the list arms and its parent hears NM_CLICK (which may destroy the list:
// the caller returns at once after this).
void PressRow(CWnd& list, int& armed, const CRect& clickRect, UINT_PTR timer, UINT doubleClickMs, UINT flags,
              CPoint point);

}  // namespace zelctl::lists
