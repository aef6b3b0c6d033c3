// The records every row-and-column list of the library stores its data in.
//
// A row is a chain of ListCell: the head cell holds the item text (column 0) and the row's
// mark, and links to the next row's head; the cells after it hold the sub-item texts. A
// list keeps an index of head cells in display order (see ListRowStore.h). Columns are a
// singly linked chain of ListColumn descriptors. The insert operations take the list-view
// LVITEMW and LVCOLUMNW of commctrl.h.
#pragma once

#include <afxwin.h>
#include <commctrl.h>

struct ListCell {
    CString strText;              // the cell's text
    ListCell* pNextRow = nullptr; // head cells only: the next row's head, in row order
    int nMark = 0;                // head cells only: 1 when the row carries the selection mark
    int nImage = 0;               // image index (head cell)
    ListCell* pNextCell = nullptr;// the next cell of the same row, NULL at the row's end
    int nSpare = -1;              // free for the derived lists
};

struct ListColumn {
    CString strHeading;           // the heading text
    int nWidth = -1;              // width in pixels
    ListColumn* pNext = nullptr;  // the next column
};
