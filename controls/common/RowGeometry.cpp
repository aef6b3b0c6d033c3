#include "RowGeometry.h"

namespace zelctl {

int RowGeometry::RowAt(POINT pt) const {
    if (rowHeight <= 0 || pt.x < area.left || pt.x >= area.right || pt.y < area.top || pt.y >= area.bottom) return -1;
    const int row = RowAtY(pt.y);
    return row >= 0 && row < count ? row : -1;
}

RECT RowGeometry::RowRect(int row) const {
    const int top = area.top + (row - firstRow) * rowHeight;
    return RECT{area.left, top, area.right, top + rowHeight};
}

int RowGeometry::LastFirstRow() const {
    const int excess = count - VisibleRows();
    return excess > 0 ? excess : 0;
}

}  // namespace zelctl
