// The row and column storage both list families share (CListData and CZELList keep the
// same members under the same names; this works on them through references).
//
// Row-index invariant: the index holds capacity + 1 slots, zero-filled, so the slot just
// past the last row is always NULL. The lists test "empty" on slot 0, not on the count,
// and a delete moves every slot from the deleted one up to and including slot `count`
// down by one, which pulls that NULL in. The index grows by 100 rows when an insertion
// finds it full.
//
// Memory: a few column operations cut cells off their rows on purpose (see
// CutRowsAtColumn); those cells are kept in `orphans` so the list frees them at the end.
#pragma once

#include <vector>

#include "ListRecords.h"

namespace zelctl::lists {

constexpr int kRowGrowth = 100;

struct RowStore {
    int& itemCount;
    int& columnCount;
    int& rowCapacity;
    ListCell*& firstRow;
    ListCell**& rows;
    ListColumn*& columns;
    std::vector<ListCell*>& orphans;

    // capacity + 1 zero-filled slots.
    static ListCell** AllocateIndex(int capacity);

    bool Empty() const { return rows == nullptr || rows[0] == nullptr; }
    bool ValidRow(int row) const { return row >= 0 && row < itemCount && rows && rows[row]; }
    ListCell* Head(int row) const { return ValidRow(row) ? rows[row] : nullptr; }
    // Cell `col` of row `row` (0 is the head); NULL when the row or the cell does not exist.
    ListCell* Cell(int row, int col) const;
    // The descriptor `col` steps from the head (a negative count stays at the head).
    ListColumn* Column(int col) const;

    // Inserts a row of columnCount + 1 cells with `text` in its head; -1 without columns
    // or for a negative index; the index is clamped to the count. `wasEmpty` tells which
    // branch ran (the first row always lands at 0).
    int InsertRow(int index, const CString& text, bool& wasEmpty);
    // Removes row `index` and frees its cells; a selection then at or past the new count
    // becomes -1 (one below the deleted row is not moved). 0 when refused, else 1.
    int DeleteRow(int index, int& curSel);
    // The LVITEMW form: pszText (NULL: empty) at iItem; the first row of an empty list
    // carries the selection mark.
    int InsertItem(const LVITEMW& item, bool& wasEmpty);
    // Deletes every row as DeleteRow would, last first; rows it refuses (no columns left)
    // are freed too, so the count ends at 0.
    void DeleteAllRows(int& curSel);

    // Cell texts: SetText reaches cells 0..columnCount, one more than Text reads (a row
    // has columnCount + 1 cells). SetText stores "" for NULL and is false for a cell that
    // does not exist; Text is empty for one it cannot read.
    bool SetText(int row, int col, LPCTSTR text);
    CString Text(int row, int col) const;

    // The selection mark: MoveMark clears every marked row and marks `row` if it exists;
    // MarkedRow is the first marked row, or -1.
    void MoveMark(int row);
    int MarkedRow() const;

    // The first insertion form's placement: the descriptor becomes the head of an empty
    // chain (returns 0), else it goes after the descriptor reached by at most `col` steps
    // (returns the steps taken), so a column inserted "at" col lands one place after it.
    int LinkColumn(int col, const CString& heading, int width);
    // The LVCOLUMNW insertion form: counts the column and links it as LinkColumn does.
    int InsertColumn(int col, const LVCOLUMNW& column);
    // The second insertion form: -1 unless 0 <= col <= columnCount; on a list with rows,
    // every row is cut after its first col cells (CutRowsAtColumn). Returns col.
    int InsertColumnCuttingRows(int col, LPCTSTR heading, int width);
    // Width of descriptor `col` (-1 outside 0..columnCount - 1). SetColumnWidth does not
    // refuse a negative column (the walk stays at the first) and is false when nothing
    // changed.
    int ColumnWidth(int col) const;
    bool SetColumnWidth(int col, int cx);
    // What the second insertion form does to existing rows: each row is cut after its
    // first `col` cells (after the head for col 0); the new empty cell points at the cut
    // part but joins nothing. Both the cut cells and the new cell are orphaned.
    void CutRowsAtColumn(int col);
    // Unlinks and frees cell `col` of every row and descriptor `col`; cell 0's removal
    // makes cell 1 the head (mark 0) and keeps the row chain. Does not check `col`.
    void RemoveColumn(int col);

    // Frees every row, column, orphan and the index.
    void FreeAll();

private:
    void Grow();
};

}  // namespace zelctl::lists
