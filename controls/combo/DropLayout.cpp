#include "DropLayout.h"

#include <algorithm>

namespace zelctl {

DropLayout PlanDropList(const RECT& box, int screenHeight, int count, int droppedRows, int rowHeight) {
    DropLayout plan;
    if (rowHeight <= 0) return plan;
    const int wanted = std::max(0, std::min(count, std::max(droppedRows, 1)));
    const int below = std::max(0, screenHeight - static_cast<int>(box.bottom));
    const int above = std::max(0, static_cast<int>(box.top));
    // The comparison is in rows, not pixels: 10 000 rows of a tall skin would overflow.
    const int rowsBelow = below / rowHeight, rowsAbove = above / rowHeight;
    if (wanted <= rowsBelow) {
        plan.rows = wanted;
    } else if (wanted <= rowsAbove) {
        plan.rows = wanted;
        plan.upward = true;
    } else {
        // Neither side holds the list: the roomier side shows what fits, the rest scrolls.
        plan.upward = rowsAbove > rowsBelow;
        plan.rows = std::min(wanted, plan.upward ? rowsAbove : rowsBelow);
    }
    plan.listHeight = plan.rows * rowHeight;
    return plan;
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
