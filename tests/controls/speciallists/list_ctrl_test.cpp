// CZELListCtrl: column insertion at a place and its refusal once rows exist, widths and
// alignment, the heading tap's LVN_COLUMNCLICK (and a press dragged off its heading), row
// clicks and double clicks as the base sends them, the bar beside the rows, EnsureVisible,
// bad input, and the goldens.
#include <gtest/gtest.h>

#include <climits>
#include <memory>

#include "CZELListCtrl.h"
#include "CZELScrollbar.h"
#include "speciallists_fixture.h"

namespace {

using namespace speclisttest;

const COLORREF kHead = RGB(180, 180, 200), kHeadDown = RGB(100, 100, 140), kMark = RGB(250, 220, 120);

class ProbeCtrl : public CZELListCtrl {
public:
    using CZELListCtrl::m_pScrollBar;
    using CZELListCtrl::m_rcClick;
    using CZELListCtrl::m_rcList;
    std::string Headings() { return ColumnList(m_pColumns); }
};

// The table: 240 x 150 at (10, 10) of the parent; margins 3, headings 20 high (their
// piece), rows 30: rows from y = 23 to 147, four whole and a fifth cut at 4 pixels.
class ListCtrlTest : public SpecialListTest {
protected:
    std::unique_ptr<ProbeCtrl> table;
    std::vector<int> clicked;  // iSubItem of each LVN_COLUMNCLICK

    void TearDown() override {
        table.reset();
        SpecialListTest::TearDown();
    }
    ProbeCtrl& Make(int rows, bool columns = true, int height = 150) {
        WritePieces();
        skins.Solid("h", 8, 20, kHead);
        skins.Solid("hd", 8, 20, kHeadDown);
        skins.Solid("k", 8, kRowHeight, kMark);
        table = std::make_unique<ProbeCtrl>();
        EXPECT_TRUE(table->Create(WS_CHILD | WS_VISIBLE, CRect(10, 10, 250, 10 + height), &parent, 65));
        parent.Name(table->m_hWnd, "table");
        table->LoadScrollBitmap(BarSkin(), L"");
        table->LoadSkin(skins.Skin({"h", "h", "h", "hd", "hd", "hd", "l", "m", "r", "cl", "cm", "cr", "k", "k", "k"}),
                        L"");
        if (columns) {
            table->InsertColumn(0, L"Name", LVCFMT_LEFT, 120);
            table->InsertColumn(1, L"Size", LVCFMT_RIGHT, 60);
            table->InsertColumn(2, L"Kind", LVCFMT_CENTER, 80);
        }
        for (int i = 0; i < rows; ++i) {
            CString name;
            name.Format(L"Item %d", i);
            const int row = table->InsertItem(i, name);
            table->SetItemText(row, 1, L"12 kB");
            table->SetItemText(row, 2, L"text");
        }
        parent.onMessage = [this](UINT message, WPARAM, LPARAM lParam) {
            const auto* nm = reinterpret_cast<const NMLISTVIEW*>(lParam);
            if (message == WM_NOTIFY && nm->hdr.code == LVN_COLUMNCLICK) clicked.push_back(nm->iSubItem);
        };
        desktop.RunUntilIdle();
        parent.Take();
        return *table;
    }
    static int RowY(int k) { return 23 + k * kRowHeight + 10; }
};

TEST_F(ListCtrlTest, ColumnsGoWhereAskedUntilRowsExist) {
    ProbeCtrl& t = Make(0, false);
    const struct {
        int at;
        const wchar_t* heading;
        int result;
    } cases[] = {{0, L"B", 0}, {0, L"A", 0}, {9, L"D", 2}, {2, L"C", 2}, {-1, L"X", -1}};
    for (const auto& c : cases) EXPECT_EQ(t.InsertColumn(c.at, c.heading, LVCFMT_LEFT, 50), c.result);
    EXPECT_EQ(t.Headings(), "A:50,B:50,C:50,D:50");
    LVCOLUMNW lv{};
    lv.mask = LVCF_TEXT | LVCF_WIDTH;
    lv.pszText = const_cast<LPWSTR>(L"E");
    lv.cx = 30;
    EXPECT_EQ(t.InsertColumn(4, &lv), 4);
    EXPECT_EQ(t.InsertColumn(0, static_cast<const LVCOLUMNW*>(nullptr)), -1);
    EXPECT_EQ(t.InsertItem(0, L"row"), 0);
    EXPECT_EQ(t.InsertColumn(1, L"late", LVCFMT_LEFT, 10), -1) << "a row's cells are made with it";
    EXPECT_EQ(t.DeleteColumn(1), 1);
    EXPECT_EQ(t.Headings(), "A:50,C:50,D:50,E:30");
    EXPECT_EQ(t.GetColumnCount(), 4);
    EXPECT_TRUE(t.SetColumnWidth(3, 44));
    EXPECT_FALSE(t.SetColumnWidth(4, 44));
    EXPECT_FALSE(t.SetColumnWidth(-1, 44));
    EXPECT_EQ(t.GetColumnWidth(3), 44);
}

TEST_F(ListCtrlTest, AHeadingTapSendsColumnClickAndSortsNothing) {
    ProbeCtrl& t = Make(3);
    const struct {
        int downX, upX;
        int column;  // -1: nothing sent
    } cases[] = {{10, 20, 0}, {130, 170, 1}, {200, 230, 2}, {20, 130, -1}, {238, 238, -1}};
    for (const auto& c : cases) {
        clicked.clear();
        DownAt(t.m_hWnd, c.downX, 12);
        UpAt(t.m_hWnd, c.upX, 12);
        EXPECT_EQ(clicked, c.column < 0 ? std::vector<int>{} : std::vector<int>{c.column}) << c.downX;
    }
    EXPECT_EQ(t.GetCurSel(), -1) << "headings select nothing";
    EXPECT_EQ(Narrow(t.GetItemText(0, 0)), "Item 0");
    const std::string log = parent.Take();
    EXPECT_EQ(log.find("NOTIFY(65,-108,table)"), log.find("NOTIFY")) << log;
    EXPECT_EQ(log.find("NM_CLICK"), std::string::npos);

    DownAt(t.m_hWnd, 130, 12);  // a pressed heading draws its pressed pieces
    EXPECT_EQ(zel::test::InkBox(t.m_hWnd, kHeadDown), CRect(123, 3, 183, 23));
    UpAt(t.m_hWnd, 130, 12);
    EXPECT_EQ(zel::test::InkBox(t.m_hWnd, kHeadDown), CRect());
}

TEST_F(ListCtrlTest, RowsClickAndDoubleClickAsTheBaseSays) {
    ProbeCtrl& t = Make(3);
    TapAt(t.m_hWnd, 50, RowY(1));
    TapAt(t.m_hWnd, 55, RowY(1));
    EXPECT_EQ(parent.Take(),
              "LBUTTONDOWN(1,60,73);NOTIFY(65,NM_CLICK,table);LBUTTONDOWN(1,65,73);NOTIFY(65,NM_DBLCLK,table)");
    EXPECT_EQ(t.GetCurSel(), 1);
    EXPECT_EQ(t.m_rcClick, CRect(3, 53, 237, 83));
}

TEST_F(ListCtrlTest, BarStandsBesideTheRowsAndEnsureVisibleScrollsTheFewestRows) {
    ProbeCtrl& t = Make(10);
    CRect bar;
    t.m_pScrollBar->GetWindowRect(&bar);
    t.ScreenToClient(&bar);
    EXPECT_EQ(bar, CRect(237 - kBarWidth, 23, 237, 147));
    EXPECT_EQ(t.m_rcList, CRect(3, 23, 237 - kBarWidth, 147));
    const struct {
        int row;
        BOOL partial;
        BOOL ok;
        long pos;
    } cases[] = {{9, FALSE, TRUE, 6}, {2, FALSE, TRUE, 2}, {6, TRUE, TRUE, 2}, {6, FALSE, TRUE, 3}, {10, FALSE, FALSE, 3},
                 {-1, FALSE, FALSE, 3}};
    for (const auto& c : cases) {
        EXPECT_EQ(t.EnsureVisible(c.row, c.partial), c.ok) << c.row;
        EXPECT_EQ(t.m_pScrollBar->GetScrollPos(), c.pos) << c.row;
    }
}

TEST_F(ListCtrlTest, BadInputDrawsWithoutThePieceAndRefuses) {
    ProbeCtrl& t = Make(0);
    t.LoadSkin(L"", L"");           // no piece: the skin stays
    t.LoadSkin(L"/no/such.bmp|", L"");  // a piece that does not load: nothing drawn, no crash
    EXPECT_EQ(t.InsertItem(-1, L"x"), -1);
    EXPECT_EQ(t.DeleteItem(0), 0);
    EXPECT_EQ(t.GetItemText(7, 0), CString());
    EXPECT_EQ(t.SetCurSel(5), -1);
    EXPECT_EQ(t.InsertItem(0, nullptr), 0);
    EXPECT_TRUE(t.SetColumnWidth(1, INT_MAX));  // the edges after it would overflow 32 bits
    EXPECT_TRUE(t.SetColumnWidth(2, INT_MAX));
    desktop.RunUntilIdle();
    TapAt(t.m_hWnd, 200, 12);
    EXPECT_EQ(zel::test::InkBox(t.m_hWnd, kHead), CRect());
}

// 135 high: rows end at 132, the fourth row cut 19 pixels down.
TEST_F(ListCtrlTest, Goldens) {
    ProbeCtrl& t = Make(6, true, 135);
    t.SetItemText(2, 0, L"A name far longer than its column");
    t.SetSelectionMark(3);
    t.SetCurSel(1);
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CZELListCtrl", "table", zel::test::CaptureWindow(t.m_hWnd, 1));
}

}  // namespace
