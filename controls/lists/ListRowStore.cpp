#include "ListRowStore.h"

#include <cstdlib>
#include <cstring>

namespace zelctl::lists {

namespace {

void FreeChain(ListCell* cell) {
    while (cell) {
        ListCell* next = cell->pNextCell;
        delete cell;
        cell = next;
    }
}

// Appends `n` empty cells after the last cell of the row.
void AppendCells(ListCell* head, int n) {
    ListCell* last = head;
    while (last->pNextCell) last = last->pNextCell;
    for (int i = 0; i < n; ++i) {
        last->pNextCell = new ListCell;
        last = last->pNextCell;
    }
}

}  // namespace

ListCell** RowStore::AllocateIndex(int capacity) {
    return static_cast<ListCell**>(std::calloc(static_cast<size_t>(capacity) + 1, sizeof(ListCell*)));
}

// realloc keeps the old slots; the added ones, including the spare one past the new
// capacity, are zero-filled so the slot after the last row stays NULL.
void RowStore::Grow() {
    const int old = rowCapacity;
    rowCapacity += kRowGrowth;
    auto* grown = static_cast<ListCell**>(std::realloc(rows, (static_cast<size_t>(rowCapacity) + 1) * sizeof(ListCell*)));
    if (!grown) std::abort();  // allocation failures are not handled
    std::memset(grown + old + 1, 0, static_cast<size_t>(kRowGrowth) * sizeof(ListCell*));
    rows = grown;
}

ListCell* RowStore::Cell(int row, int col) const {
    if (col < 0) return nullptr;
    ListCell* cell = Head(row);
    for (int i = 0; i < col && cell; ++i) cell = cell->pNextCell;
    return cell;
}

ListColumn* RowStore::Column(int col) const {
    ListColumn* c = columns;
    for (int i = 0; i < col && c; ++i) c = c->pNext;
    return c;
}

int RowStore::InsertRow(int index, const CString& text, bool& wasEmpty) {
    wasEmpty = false;
    if (columnCount < 1 || index < 0) return -1;
    if (index > itemCount) index = itemCount;
    auto* head = new ListCell;
    head->strText = text;
    if (Empty()) {
        wasEmpty = true;
        firstRow = head;
        AppendCells(head, columnCount);
        if (itemCount >= rowCapacity) Grow();
        rows[0] = head;
        ++itemCount;
        return 0;
    }
    // The head chain: after the row before the insertion point. At index 0 there is no
    // such row, and the new head simply leads the old first row.
    if (index > 0) {
        ListCell* before = rows[index - 1];
        head->pNextRow = before->pNextRow;
        before->pNextRow = head;
    } else {
        head->pNextRow = rows[0];
    }
    if (itemCount >= rowCapacity) Grow();
    std::memmove(rows + index + 1, rows + index, static_cast<size_t>(itemCount - index) * sizeof(ListCell*));
    rows[index] = head;
    AppendCells(head, columnCount);
    ++itemCount;
    return index;
}

int RowStore::DeleteRow(int index, int& curSel) {
    if (index < 0 || columnCount < 1 || index >= itemCount || Empty()) return 0;
    ListCell* head = rows[index];
    // Keep the head chain whole: the row before (and a list's first-row pointer) now lead
    // to the row after the deleted one.
    if (index > 0 && rows[index - 1]) rows[index - 1]->pNextRow = head->pNextRow;
    if (firstRow == head) firstRow = head->pNextRow;
    // Slots index .. itemCount move down one: slot itemCount, always NULL, closes the gap.
    std::memmove(rows + index, rows + index + 1, static_cast<size_t>(itemCount - index) * sizeof(ListCell*));
    FreeChain(head);
    --itemCount;
    if (curSel >= itemCount) curSel = -1;
    return 1;
}

int RowStore::InsertItem(const LVITEMW& item, bool& wasEmpty) {
    const int result = InsertRow(item.iItem, item.pszText ? item.pszText : L"", wasEmpty);
    if (result >= 0 && wasEmpty) rows[0]->nMark = 1;
    return result;
}

void RowStore::DeleteAllRows(int& curSel) {
    const int count = itemCount;
    for (int i = count - 1; i >= 0; --i) DeleteRow(i, curSel);
    // DeleteRow refuses every row once all columns are gone; those rows are freed here so
    // the count of 0 below is true and nothing is lost.
    for (int i = 0; i <= count && rows; ++i) {
        FreeChain(rows[i]);
        rows[i] = nullptr;
    }
    if (count > 0 && columnCount < 1) firstRow = nullptr;
    itemCount = 0;
    if (curSel >= itemCount) curSel = -1;  // as DeleteRow leaves it: no row, no selection
}

bool RowStore::SetText(int row, int col, LPCTSTR text) {
    if (row < 0 || row >= itemCount || col < 0 || col > columnCount) return false;
    ListCell* cell = Cell(row, col);
    if (!cell) return false;
    cell->strText = text ? text : L"";
    return true;
}

CString RowStore::Text(int row, int col) const {
    if (row < 0 || row >= itemCount || col < 0 || col >= columnCount) return CString();
    ListCell* cell = Cell(row, col);
    return cell ? cell->strText : CString();
}

void RowStore::MoveMark(int row) {
    for (int i = 0; i < itemCount; ++i)
        if (rows[i] && rows[i]->nMark == 1) rows[i]->nMark = 0;
    if (ListCell* head = Head(row)) head->nMark = 1;
}

int RowStore::MarkedRow() const {
    for (int i = 0; i < itemCount; ++i)
        if (rows[i] && rows[i]->nMark == 1) return i;
    return -1;
}

int RowStore::InsertColumn(int col, const LVCOLUMNW& column) {
    ++columnCount;
    return LinkColumn(col, column.pszText ? column.pszText : L"", column.cx);
}

int RowStore::InsertColumnCuttingRows(int col, LPCTSTR heading, int width) {
    NKDbgPrintfW(L"col11= %d\n", columnCount);
    if (col < 0 || col > columnCount) return -1;
    ++columnCount;
    LinkColumn(col, heading ? heading : L"", width);
    // On a filled list the device cuts every row at the new column instead of adding a
    // cell to it. Kept so: hosts create their columns before their rows.
    if (!Empty()) CutRowsAtColumn(col);
    NKDbgPrintfW(L"col= %d\n", columnCount);
    return col;
}

int RowStore::ColumnWidth(int col) const {
    if (col >= columnCount || col < 0) return -1;
    ListColumn* column = Column(col);
    return column ? column->nWidth : -1;
}

bool RowStore::SetColumnWidth(int col, int cx) {
    if (col >= columnCount) return false;
    ListColumn* column = Column(col);
    if (!column || column->nWidth == cx) return false;
    column->nWidth = cx;
    return true;
}

int RowStore::LinkColumn(int col, const CString& heading, int width) {
    auto* column = new ListColumn;
    column->strHeading = heading;
    column->nWidth = width;
    if (!columns) {
        columns = column;
        return 0;
    }
    ListColumn* at = columns;
    int steps = 0;
    while (steps < col && at->pNext) {
        at = at->pNext;
        ++steps;
    }
    column->pNext = at->pNext;
    at->pNext = column;
    return steps;
}

void RowStore::CutRowsAtColumn(int col) {
    for (int r = 0; r < itemCount; ++r) {
        ListCell* head = rows[r];
        if (!head) continue;
        ListCell* before = head;
        ListCell* at = head;
        for (int i = 0; i < col && at; ++i) {
            before = at;
            at = at->pNextCell;
        }
        // The earlier cell takes the new cell's (NULL) link and the new cell would point at
        // cell `col`: the row ends after `before` and neither the new cell nor the cut part
        // is reachable from it. Both are kept for the final free; the new cell is kept
        // unlinked (at col 0 it would point at the head, which stays in the row).
        ListCell* cut = before->pNextCell;
        before->pNextCell = nullptr;
        orphans.push_back(new ListCell);
        if (cut) orphans.push_back(cut);
    }
}

void RowStore::RemoveColumn(int col) {
    for (int r = 0; r < itemCount; ++r) {
        ListCell* head = rows[r];
        if (!head) continue;
        if (col == 0) {
            ListCell* second = head->pNextCell;
            if (!second) continue;  // a row cut down to its head keeps it
            second->pNextRow = head->pNextRow;
            second->nMark = 0;
            if (r > 0 && rows[r - 1]) rows[r - 1]->pNextRow = second;
            if (firstRow == head) firstRow = second;
            rows[r] = second;
            delete head;
            continue;
        }
        ListCell* before = head;
        ListCell* at = head->pNextCell;
        for (int i = 1; i < col && at; ++i) {
            before = at;
            at = at->pNextCell;
        }
        if (!at) continue;
        before->pNextCell = at->pNextCell;
        delete at;
    }
    if (col == 0) {
        ListColumn* gone = columns;
        if (gone) {
            columns = gone->pNext;
            delete gone;
        }
    } else if (ListColumn* before = Column(col - 1); before && before->pNext) {
        ListColumn* gone = before->pNext;
        before->pNext = gone->pNext;
        delete gone;
    }
    --columnCount;
}

void RowStore::FreeAll() {
    for (int r = 0; r < itemCount && rows; ++r) {
        FreeChain(rows[r]);
        rows[r] = nullptr;
    }
    itemCount = 0;
    firstRow = nullptr;
    while (columns) {
        ListColumn* next = columns->pNext;
        delete columns;
        columns = next;
    }
    for (ListCell* cell : orphans) FreeChain(cell);
    orphans.clear();
    std::free(rows);
    rows = nullptr;
}

}  // namespace zelctl::lists
