// Where a drop-down list opens: below the closed box when it fits above the screen's
// bottom edge, above the box when it fits there instead, and otherwise on the side with
// more room, cut to the whole rows that room holds. Pure arithmetic in screen pixels, so
// the rule is testable without a window.
#pragma once

#include <windows.h>

namespace zelctl {

struct DropLayout {
    int rows = 0;          // rows the open list shows (0 for an empty list)
    bool upward = false;   // the list lies above the box
    int listHeight = 0;    // rows x row height
};

// `box` is the closed box in screen coordinates, `screenHeight` the screen's height,
// `count` the items, `droppedRows` the rows wanted at most (>= 1), `rowHeight` > 0.
DropLayout PlanDropList(const RECT& box, int screenHeight, int count, int droppedRows, int rowHeight);

}  // namespace zelctl
