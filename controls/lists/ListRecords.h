// The records every row-and-column list of the library stores its data in.
//
// A row is a chain of ListCell: the head cell holds the item text (column 0) and the row's
// mark, and links to the next row's head; the cells after it hold the sub-item texts. A
// list keeps an index of head cells in display order (see ListRowStore.h). Columns are a
// singly linked chain of ListColumn descriptors.
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

// The list-view item and column descriptions the lists' insert operations take. Only the
// fields the lists read are meaningful. Defined here until the platform's commctrl.h
// carries them (candidate for the platform headers).
#ifndef LVIF_TEXT
#define LVIF_TEXT 0x0001
#define LVIF_IMAGE 0x0002
#define LVIF_PARAM 0x0004
#define LVIF_STATE 0x0008
#define LVCF_FMT 0x0001
#define LVCF_WIDTH 0x0002
#define LVCF_TEXT 0x0004
#define LVCF_SUBITEM 0x0008
#define LVCFMT_LEFT 0x0000
#define LVIS_FOCUSED 0x0001
#define LVIS_SELECTED 0x0002
typedef struct tagLVITEMW {
    UINT mask;
    int iItem;
    int iSubItem;
    UINT state;
    UINT stateMask;
    LPWSTR pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam;
    int iIndent;
} LVITEMW, *LPLVITEMW;
typedef struct tagLVCOLUMNW {
    UINT mask;
    int fmt;
    int cx;
    LPWSTR pszText;
    int cchTextMax;
    int iSubItem;
    int iImage;
    int iOrder;
} LVCOLUMNW, *LPLVCOLUMNW;
#endif
