#include "RowGeometry.h"

#include <algorithm>

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

int ScrollToShow(int row, int top, int rows, int count) {
    const int lastTop = std::max(0, count - std::max(rows, 1));
    if (rows > 0 && row >= 0) {
        if (row < top) top = row;
        else if (row >= top + rows) top = row - rows + 1;
    }
    return std::clamp(top, 0, lastTop);
}

}  // namespace zelctl
