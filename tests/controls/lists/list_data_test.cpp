// CListData: rows and columns with their deliberate quirks, selection and mark, the click
// state machine and its notifications, the scroll bar's range and placement, the text
// rule, background bitmaps and survival when the parent destroys the list.
#include <gtest/gtest.h>

#include <memory>

#include "CListData.h"
#include "OffscreenCanvas.h"
#include "support/list_fixture.h"

namespace {

using zel::test::kBarWidth;

// A list that paints its client white and, when asked, accepts the second click on the
// selected row (what a derived list does by setting m_rcClick as it draws).
class ProbeList : public CListData {
public:
    using CListData::DelOneItem;
    using CListData::GetColumnWidth;
    using CListData::m_bClickArmed;
    using CListData::m_hBkBitmap;
    using CListData::m_nImageCount;
    using CListData::m_nItemCount;
    using CListData::m_nRowCapacity;
    using CListData::m_pColumns;
    using CListData::m_pFirstRow;
    using CListData::m_ppRows;
    using CListData::m_pScrollBar;
    using CListData::m_rcClick;
    using CListData::m_rcList;
    using CListData::m_rcScroll;
    using CListData::SetColumnWidth;

    bool clickOnSelectedRow = true;
    int paints = 0;

    void DrawInterface(HDC hdc) override {
        ++paints;
        CRect client;
        GetClientRect(&client);
        zel::test::FillBox(hdc, client, RGB(255, 255, 255));
        if (clickOnSelectedRow && m_nCurSel >= 0) {
            const int top = m_rcList.top + (m_nCurSel - m_pScrollBar->GetScrollPos()) * m_nItemHeight;
            m_rcClick.SetRect(m_rcList.left, top, m_rcList.right, top + m_nItemHeight);
        }
    }
    // Head cells in index order, and along the head chain from row 0.
    std::string Texts() {
        std::string s;
        for (int i = 0; i < m_nItemCount; ++i) s += (s.empty() ? "" : ",") + zel::test::Narrow(m_ppRows[i]->strText);
        return s;
    }
    std::string Chain() {
        std::string s;
        for (ListCell* c = m_nItemCount ? m_ppRows[0] : nullptr; c; c = c->pNextRow)
            s += (s.empty() ? "" : ",") + zel::test::Narrow(c->strText);
        return s;
    }
};

// The list sits at (10, 10) of the parent, 120 x 102: margins of 3 leave 96 pixels, four
// rows of 24.
class ListDataTest : public zel::test::ListFixture {
protected:
    std::unique_ptr<ProbeList> list;

    void TearDown() override {
        list.reset();
        ListFixture::TearDown();
    }
    ProbeList& Make(int columns = 1, int rows = 0) {
        list = std::make_unique<ProbeList>();
        HWND item = ItemWindow(CRect(10, 10, 130, 112), 77);
        EXPECT_TRUE(list->SubclassWindow(item));
        parent.Name(item, "list");
        for (int c = 0; c < columns; ++c) list->InsertColumn(c, L"col", LVCFMT_LEFT, 50, c);
        for (int r = 0; r < rows; ++r) list->InsertItem(r, Text(r), true);
        desktop.RunUntilIdle();
        parent.Take();
        DebugLines();
        return *list;
    }
    static CString Text(int i) {
        CString s;
        s.Format(L"row%d", i);
        return s;
    }
    void TapRow(int row) { TapAt(list->m_hWnd, 20, 3 + row * 24 + 12); }
};

TEST_F(ListDataTest, WithoutColumnsEveryInsertFails) {
    ProbeList& l = Make(0);
    LVITEMW item{};
    item.pszText = const_cast<LPWSTR>(L"a");
    EXPECT_EQ(l.InsertItem(&item), -1);
    EXPECT_EQ(l.InsertItem(0, L"a", true), -1);
    EXPECT_EQ(l.InsertItem(0, L"a", 0), -1);
    EXPECT_EQ(l.InsertItem(nullptr), -1);
    EXPECT_EQ(l.GetItemCount(), 0);
    EXPECT_EQ(l.m_ppRows[0], nullptr);
}

TEST_F(ListDataTest, InsertPlacesClampsAndKeepsTheHeadChain) {
    ProbeList& l = Make(2);
    struct Case { int index; const wchar_t* text; int result; const char* rows; } cases[] = {
        {7, L"a", 0, "a"},            // the first row lands at 0 whatever is asked
        {-1, L"x", -1, "a"},          // negative: refused
        {9, L"b", 1, "a,b"},          // past the end: clamped to the count
        {0, L"c", 0, "c,a,b"},        // at 0 of a filled list: no row before it
        {2, L"d", 2, "c,a,d,b"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(l.InsertItem(c.index, c.text, true), c.result) << zel::test::Narrow(c.text);
        EXPECT_EQ(l.Texts(), c.rows);
        EXPECT_EQ(l.Chain(), c.rows) << "the head chain follows the index";
        EXPECT_EQ(l.m_ppRows[l.GetItemCount()], nullptr) << "the slot past the last row";
    }
}

TEST_F(ListDataTest, OnlyTheFirstRowOfAnItemInsertCarriesTheMark) {
    ProbeList& l = Make(1);
    LVITEMW item{};
    item.pszText = nullptr;  // an empty text, not a crash
    EXPECT_EQ(l.InsertItem(&item), 0);
    item.iItem = 1;
    EXPECT_EQ(l.InsertItem(&item), 1);
    EXPECT_EQ(l.GetSelect(), 0);
    EXPECT_EQ(l.m_ppRows[1]->nMark, 0);
    EXPECT_EQ(l.SetSelectionMark(1), 0);
    EXPECT_EQ(l.GetSelect(), 1);
    l.SetSelectionMark(5);
    EXPECT_EQ(l.GetSelect(), -1) << "an invalid row clears every mark";
}

TEST_F(ListDataTest, ImageIndexAndDebugLines) {
    ProbeList& l = Make(1);
    l.m_nImageCount = 3;
    struct Case { int image; int stored; const char* line; } cases[] = {
        {2, 2, "insertimage = 2"}, {3, 0, ""}, {-1, 0, ""}};
    for (const auto& c : cases) {
        const int row = l.InsertItem(99, L"r", c.image);
        EXPECT_EQ(l.m_ppRows[row]->nImage, c.stored) << c.image;
        EXPECT_EQ(DebugLines(), c.line);
    }
    EXPECT_EQ(l.InsertColumn(1, L"h", 0, 10, 0), 1);
    EXPECT_EQ(DebugLines(), "col11= 1|col= 2");
    EXPECT_EQ(l.InsertColumn(5, L"h", 0, 10, 0), -1);
    EXPECT_EQ(DebugLines(), "col11= 2");
    l.MoveWindow(10, 10, 140, 102);
    EXPECT_EQ(DebugLines(), "listsize ");
}

TEST_F(ListDataTest, TextCellsAreWritableOneFurtherThanReadable) {
    ProbeList& l = Make(2, 2);
    struct Case { int row, sub; int set; } cases[] = {
        {0, 0, 1}, {1, 1, 1}, {1, 2, 1}, {1, 3, 0}, {2, 0, 0}, {-1, 0, 0}, {0, -1, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(l.SetItemText(c.row, c.sub, L"t"), c.set) << c.row << "," << c.sub;
        const bool readable = c.set && c.sub < 2;
        EXPECT_EQ(l.GetItemText(c.row, c.sub), readable ? CString(L"t") : CString()) << c.row << "," << c.sub;
    }
}

TEST_F(ListDataTest, SelectionAfterDeletes) {
    struct Case { int selected; int deleted; int result; int after; } cases[] = {
        {2, 0, 1, 2},    // above the selection: the index stays (now another row's)
        {1, 1, 1, 1},    // the selected row itself, not at the end: the index stays
        {3, 3, 1, -1},   // the last row, selected: at the new count
        {3, 1, 1, -1},   // the selection now past the end
        {1, 4, 0, 1},    // no such row
        {1, -1, 0, 1},
    };
    for (const auto& c : cases) {
        ProbeList& l = Make(1, 4);
        l.SetCurSel(c.selected);
        EXPECT_EQ(l.DeleteItem(c.deleted), c.result) << c.deleted;
        EXPECT_EQ(l.GetCurSel(), c.after) << c.selected << " after deleting " << c.deleted;
        EXPECT_EQ(l.Chain(), l.Texts());
        list.reset();
    }
    ProbeList& l = Make(1, 3);
    EXPECT_EQ(l.SetCurSel(2), 2);
    for (long bad : {3L, -1L, 100000L}) EXPECT_EQ(l.SetCurSel(bad), 2) << bad << ": out of range keeps the old";
}

TEST_F(ListDataTest, RowIndexGrowsAndKeepsItsSpareSlot) {
    ProbeList& l = Make(1, 100);
    EXPECT_EQ(l.m_nRowCapacity, 100);
    EXPECT_EQ(l.DeleteItem(0), 1) << "a delete with the index full reads the spare slot";
    EXPECT_EQ(l.m_ppRows[99], nullptr);
    for (int i = 0; i < 151; ++i) l.InsertItem(0, Text(i), false);
    EXPECT_EQ(l.GetItemCount(), 250);
    EXPECT_EQ(l.m_nRowCapacity, 300);
    EXPECT_EQ(l.m_ppRows[250], nullptr);
    EXPECT_EQ(l.GetItemText(0, 0), CString(L"row150"));
    EXPECT_EQ(l.GetItemText(249, 0), CString(L"row99"));
    EXPECT_EQ(l.DeleteAllItems(), 1);
    EXPECT_EQ(l.GetItemCount(), 0);
    EXPECT_EQ(l.m_ppRows[0], nullptr);
    EXPECT_EQ(l.InsertItem(5, L"again", true), 0) << "empty again";
}

TEST_F(ListDataTest, ColumnPlacementWidthsAndDeletes) {
    ProbeList& l = Make(0);
    LVCOLUMNW col{};
    auto insert = [&](int at, const wchar_t* name, int cx) {
        col.pszText = const_cast<LPWSTR>(name);
        col.cx = cx;
        return l.InsertColumn(at, &col);
    };
    EXPECT_EQ(insert(5, L"a", 10), 0);
    EXPECT_EQ(insert(0, L"b", 20), 0);  // lands second
    EXPECT_EQ(insert(7, L"c", 30), 1);  // walks to the end: one step
    EXPECT_EQ(l.InsertColumn(0, nullptr), -1);
    std::string order;
    for (ListColumn* c = l.m_pColumns; c; c = c->pNext) order += zel::test::Narrow(c->strHeading);
    EXPECT_EQ(order, "abc");
    struct Width { int col; int width; } widths[] = {{0, 10}, {1, 20}, {2, 30}, {3, -1}, {-1, -1}};
    for (const auto& w : widths) EXPECT_EQ(l.GetColumnWidth(w.col), w.width) << w.col;
    EXPECT_EQ(l.SetColumnWidth(-4, 11), 1) << "a negative column changes the first";
    EXPECT_EQ(l.SetColumnWidth(0, 11), 0) << "unchanged";
    EXPECT_EQ(l.SetColumnWidth(3, 5), 0);
    EXPECT_EQ(l.GetColumnWidth(0), 11);

    l.InsertItem(0, L"r0", true);
    l.SetItemText(0, 1, L"s1");
    l.SetItemText(0, 2, L"s2");
    l.m_ppRows[0]->nMark = 1;
    struct Del { int col; int result; } dels[] = {{3, 0}, {-1, 0}, {0, 1}};
    for (const auto& d : dels) EXPECT_EQ(l.DeleteColumn(d.col), d.result) << d.col;
    EXPECT_EQ(l.GetItemText(0, 0), CString(L"s1")) << "cell 1 became the head";
    EXPECT_EQ(l.m_ppRows[0]->nMark, 0);
    EXPECT_EQ(l.m_pFirstRow, l.m_ppRows[0]);
    EXPECT_EQ(l.GetColumnWidth(0), 20);
}

// The second form on a filled list cuts every row after its first nCol cells: kept.
TEST_F(ListDataTest, InsertColumnWithHeadingCutsFilledRows) {
    ProbeList& l = Make(2, 2);
    for (int sub = 1; sub <= 2; ++sub) l.SetItemText(1, sub, L"x");
    EXPECT_EQ(l.InsertColumn(1, L"new", 0, 10, 0), 1);
    EXPECT_EQ(l.GetItemText(1, 0), CString(L"row1"));
    EXPECT_EQ(l.GetItemText(1, 1), CString()) << "cut";
    EXPECT_EQ(l.SetItemText(1, 1, L"y"), 0) << "the cell is gone";
    EXPECT_EQ(l.InsertColumn(0, L"first", 0, 10, 0), 0);
    EXPECT_EQ(l.DeleteColumn(2), 1) << "rows shorter than the column are passed over";
    EXPECT_EQ(l.GetItemCount(), 2);
    // With every column gone the rows cannot be deleted one by one; emptying the list
    // still frees them, and the selection goes with them.
    l.SetCurSel(1);
    for (int i = 0; i < 4; ++i) l.DeleteColumn(0);
    EXPECT_EQ(l.DeleteAllItems(), 1);
    EXPECT_EQ(l.GetItemCount(), 0);
    EXPECT_EQ(l.GetCurSel(), -1);
}

TEST_F(ListDataTest, ScrollBarRangeAndVisibilityByRowCount) {
    // The page is the whole client height over the row height (4), cut to the range's span.
    struct Case { int rows; const char* bar; int listRight; long page; } cases[] = {
        {0, "0..1@0 hidden", 117, 0}, {4, "0..1@0 hidden", 117, 0}, {5, "0..1@0 shown", 117 - kBarWidth, 1},
        {9, "0..5@0 shown", 117 - kBarWidth, 4}};
    for (const auto& c : cases) {
        ProbeList& l = Make(1);
        l.LoadScrollBitmap(BarSkin(), L"");
        for (int r = 0; r < c.rows; ++r) l.InsertItem(r, Text(r), true);
        l.UpdataScrollBar();
        EXPECT_EQ(zel::test::BarState(l.m_pScrollBar), c.bar) << c.rows;
        EXPECT_EQ(l.m_rcList, CRect(3, 3, c.listRight, 99)) << c.rows;
        if (c.page) {
            EXPECT_EQ(l.m_rcScroll, CRect(120 - kBarWidth, 0, 120, 102));
            EXPECT_EQ(l.m_pScrollBar->GetPageSize(), c.page) << c.rows;
        }
        list.reset();
    }
}

TEST_F(ListDataTest, ScrollBarPlacement) {
    ProbeList& l = Make(1);
    auto barRect = [&] {
        CRect rc;
        l.m_pScrollBar->GetWindowRect(&rc);
        l.ScreenToClient(&rc);
        return rc;
    };
    EXPECT_EQ(l.m_pScrollBar->GetDlgCtrlID(), 9001);
    EXPECT_EQ(l.m_pScrollBar->GetParent(), &l);
    l.LoadScrollBitmap(BarSkin(), L"");
    EXPECT_EQ(barRect(), CRect(120 - kBarWidth - 1, 1, 119, 101)) << "1 pixel inside the edge";
    l.MoveWindow(CRect(10, 10, 150, 112));
    EXPECT_EQ(barRect(), CRect(140 - kBarWidth - 3, 3, 137, 99)) << "inside the margins";
}

TEST_F(ListDataTest, ScrollToOnlyWhenRowsDoNotFit) {
    ProbeList& l = Make(1, 4);
    l.LoadScrollBitmap(BarSkin(), L"");
    l.ScrollTo(3);
    EXPECT_EQ(l.m_pScrollBar->GetScrollPos(), 0) << "four rows fit";
    for (int r = 4; r < 10; ++r) l.InsertItem(r, Text(r), true);
    struct Case { long to; long pos; } cases[] = {{3, 3}, {50, 6}, {-5, 0}};
    for (const auto& c : cases) {
        l.ScrollTo(c.to);
        EXPECT_EQ(l.m_pScrollBar->GetScrollPos(), c.pos) << c.to;
    }
    l.ScrollTo(4);
    TapRow(2);
    EXPECT_EQ(l.GetCurSel(), 6) << "rows are hit from the bar's position";
}

TEST_F(ListDataTest, ClickThenDoubleClickInsideTheClickArea) {
    ProbeList& l = Make(1, 3);
    TapRow(1);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,30,49);NOTIFY(77,NM_CLICK,list)");
    EXPECT_EQ(l.GetCurSel(), 1);
    TapRow(1);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,30,49);NOTIFY(77,NM_DBLCLK,list)");
    EXPECT_EQ(l.m_bClickArmed, 0);
    TapRow(1);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,30,49);NOTIFY(77,NM_CLICK,list)");
    TapRow(2);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,30,73);NOTIFY(77,NM_CLICK,list)") << "outside the click area";
    EXPECT_EQ(l.GetCurSel(), 2);

    l.clickOnSelectedRow = false;  // no click area: no double click, even on the selected row
    l.m_rcClick.SetRectEmpty();
    desktop.Advance(1000);
    TapRow(2);
    TapRow(2);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,30,73);NOTIFY(77,NM_CLICK,list);LBUTTONDOWN(1,30,73);NOTIFY(77,NM_CLICK,list)");
}

TEST_F(ListDataTest, ReleaseKeepsTheArmButTheTimerDisarmsAHeldPress) {
    ProbeList& l = Make(1, 3);
    TapRow(0);
    desktop.Advance(5000);
    TapRow(0);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,30,25);NOTIFY(77,NM_CLICK,list);LBUTTONDOWN(1,30,25);NOTIFY(77,NM_DBLCLK,list)")
        << "the release killed the timer: the arm stays";
    DownAt(l.m_hWnd, 20, 15);
    desktop.Advance(500);
    EXPECT_EQ(l.m_bClickArmed, 0) << "the timer ran out while held";
    UpAt(l.m_hWnd, 20, 15);
    TapRow(0);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,30,25);NOTIFY(77,NM_CLICK,list);LBUTTONDOWN(1,30,25);NOTIFY(77,NM_CLICK,list)");
}

TEST_F(ListDataTest, PressBelowTheLastRowOrOnTheBar) {
    struct Case { int rows; int expectSel; } cases[] = {{2, 1}, {0, -1}};
    for (const auto& c : cases) {
        ProbeList& l = Make(1, c.rows);
        TapRow(3);
        EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,30,97)") << "no NM_CLICK";
        EXPECT_EQ(l.GetCurSel(), c.expectSel);
        EXPECT_EQ(l.m_bClickArmed, 0);
        list.reset();
    }
    ProbeList& l = Make(1, 9);
    l.LoadScrollBitmap(BarSkin(), L"");
    TapRow(0);
    l.SetCurSel(0);
    parent.Take();
    // The strip runs the client's full height; its top pixel row lies above the bar window.
    TapAt(l.m_hWnd, 115, 0);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,125,10)") << "the bar's strip is not a row";
    EXPECT_EQ(l.m_bClickArmed, 0);
}

TEST_F(ListDataTest, ParentDestroyingTheListInsideItsNotifications) {
    for (UINT code : {static_cast<UINT>(NM_CLICK), static_cast<UINT>(NM_DBLCLK)}) {
        Make(1, 3);
        parent.onMessage = [&](UINT message, WPARAM, LPARAM lParam) {
            if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == code) list.reset();
        };
        TapRow(0);
        if (list) TapRow(0);
        EXPECT_EQ(list, nullptr);
        parent.onMessage = nullptr;
        desktop.RunUntilIdle();
    }
}

TEST_F(ListDataTest, BackgroundImagesAndTheirStaleHandles) {
    ProbeList& l = Make(1);
    CArray<CString, CString> paths;
    for (const char* name : {"b0", "b1", "b2", "b3"}) {
        skins.Solid(name, 4, 4, RGB(1, 2, 3));
        paths.Add(CString(skins.Path(name).c_str()));
    }
    l.LoadBkImage(paths);
    for (HBITMAP b : l.m_hBkBitmap) EXPECT_EQ(zelctl::BitmapSize(b).cx, 4);
    const HBITMAP first = l.m_hBkBitmap[0];
    paths.SetSize(3);
    l.LoadBkImage(paths);
    EXPECT_EQ(l.m_hBkBitmap[0], first) << "the old value stays";
    EXPECT_EQ(zelctl::BitmapSize(first).cx, 0) << "but the bitmap is gone";
    paths.Add(L"/no/such/file.bmp");
    l.LoadBkImage(paths);
    EXPECT_EQ(l.m_hBkBitmap[3], nullptr) << "a missing file is an absent piece";
    l.Invalidate();
    desktop.RunUntilIdle();
}

}  // namespace
