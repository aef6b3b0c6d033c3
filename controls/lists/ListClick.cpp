#include "ListClick.h"

#include <commctrl.h>

#include "Notify.h"

namespace zelctl::lists {

void PressRow(CWnd& list, int& armed, const CRect& clickRect, UINT_PTR timer, UINT doubleClickMs, UINT flags,
              CPoint point) {
    if (armed && clickRect.PtInRect(point)) {
        list.SendMessage(WM_LBUTTONDBLCLK, flags, MAKELPARAM(point.x, point.y));
        return;
    }
    list.KillTimer(timer);
    list.SetTimer(timer, doubleClickMs, nullptr);
    armed = 1;
    zelctl::NotifyNmhdr(list, NM_CLICK);
}

}  // namespace zelctl::lists
