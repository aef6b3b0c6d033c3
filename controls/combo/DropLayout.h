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

// The first visible row that shows `row` in a window of `rows` rows starting at `top`,
// moving as little as possible; the result stays in 0 .. count - rows. Any list that moves
// a selection by keys needs it.  // candidate for common/ (RowGeometry)
int ScrollToShow(int row, int top, int rows, int count);

}  // namespace zelctl
