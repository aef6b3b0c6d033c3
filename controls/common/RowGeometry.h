// Where the rows of a list lie: rows of one height stacked from the top of an area,
// the first visible row being the scroll position. Integer arithmetic throughout, as
// the lists hit-test with a division that truncates toward zero.
#pragma once

#include <windows.h>

namespace zelctl {

struct RowGeometry {
    RECT area{};        // the rows' area in client coordinates
    int rowHeight = 0;  // > 0 for any answer but "none"
    int firstRow = 0;   // the first visible row (the scroll position)
    int count = 0;      // rows in the list

    // The row under client y, whatever the count: (y - top) / rowHeight + firstRow,
    // truncating toward zero. The x coordinate plays no part (a press on a row's margin is
    // on the row). -1 when the row height is not positive.
    int RowAtY(int y) const { return rowHeight > 0 ? (y - area.top) / rowHeight + firstRow : -1; }
    // The row under a point inside the area, or -1 (outside the area or past the rows).
    int RowAt(POINT pt) const;
    // Row `row`'s rectangle across the area (it may lie outside the area).
    RECT RowRect(int row) const;
    // Whole rows the area shows.
    int VisibleRows() const { return rowHeight > 0 ? (area.bottom - area.top) / rowHeight : 0; }
    // The largest useful first row: 0 when every row fits.
    int LastFirstRow() const;
};

// The first visible row that shows `row` in a window of `rows` rows starting at `top`,
// moving as little as possible; the result stays in 0 .. count - rows. A row of -1 (no
// selection) or a window of no rows only clamps `top`. Any list that moves a selection by
// keys needs it.
int ScrollToShow(int row, int top, int rows, int count);

}  // namespace zelctl
