// CBbgFileList: items and their bounds, marks (the last row out of SetItemState's reach),
// the bar before and after the first paint, drag marking and edge auto-scroll on the
// virtual clock, the double tap only on the current row, a parent that destroys the list
// inside NM_DBLCLK, the whole-screen background piece, 100 000 rows, and the goldens.
#include <gtest/gtest.h>

#include <climits>
#include <memory>

#include "CBbgFileList.h"
#include "CZELScrollbar.h"
#include "speciallists_fixture.h"

namespace {

using namespace speclisttest;

const COLORREF kSelRow = RGB(90, 140, 230);
COLORREF Screen(int x, int y) { return RGB(x % 200, y % 200, 120); }

class ProbeFile : public CBbgFileList {
public:
    using CBbgFileList::m_nColumnWidth;
    using CBbgFileList::m_pScrollBar;
    using CBbgFileList::m_rcList;
    std::string Bar() { return BarState(m_pScrollBar); }
    std::string Marks() {
        std::string s;
        for (int i = 0; i < GetItemCount(); ++i) s += i == GetCurSel() ? 'C' : '.';
        s += ' ';
        for (int pos = 0, i; (i = GetNextSelectedItemIndex(pos)) >= 0;) s += std::to_string(i);
        return s;
    }
};

// The list: 200 wide at (10, 10) of the parent, which is at (20, 30) on the screen; rows
// 30 high (the current-row bitmap's height); the bar 12 wide.
class FileListTest : public SpecialListTest {
protected:
    std::unique_ptr<ProbeFile> list;
    HINSTANCE module = nullptr;  // the skin's resources, from Make

    void TearDown() override {
        list.reset();
        SpecialListTest::TearDown();
    }
    ProbeFile& Make(int rows, int height = 150, bool paint = true) {
        skins.Pixels("screen", 800, 480, Screen);
        skins.Solid("sel", 40, kRowHeight, kSelRow);
        BarSkin();
        module = skins.Module({{101, "screen"}, {102, "sel"}, {201, "thumb"}, {202, "thumb_down"},
                                         {203, "track"}, {204, "up"}, {205, "down"}, {206, "down_down"},
                                         {207, "up_down"}});
        list = std::make_unique<ProbeFile>();
        EXPECT_TRUE(list->SubclassWindow(ItemWindow(CRect(10, 10, 210, 10 + height), 64)));
        parent.Name(list->m_hWnd, "files");
        list->LoadBkBitmap(101, 102, module);
        list->LoadScrollBitmap(201, 202, 203, 204, 205, 206, 207, module);
        for (int i = 0; i < rows; ++i) {
            CString name;
            name.Format(L"File %02d.txt", i);
            list->InsertItem(i, name, 1000 + i);
        }
        if (paint) {
            desktop.RunUntilIdle();
            list->UpdataScrollBar();
        }
        return *list;
    }
    static int Y(int row) { return row * kRowHeight + 10; }
};

TEST_F(FileListTest, ItemsInsertAppendAndAnswerOutsideTheirBounds) {
    ProbeFile& l = Make(2, 150, false);
    const struct {
        int index;
        const wchar_t* text;
        int result;
    } cases[] = {{-1, L"no", -1}, {5, L"end", 2}, {0, L"first", 0}, {3, L"before end", 3}};
    for (const auto& c : cases) EXPECT_EQ(l.InsertItem(c.index, c.text, c.result * 10), c.result) << c.result;
    EXPECT_EQ(l.GetItemCount(), 5);
    EXPECT_EQ(Narrow(l.GetItemText(0, 7) + L"," + l.GetItemText(1, 0) + L"," + l.GetItemText(3, 0) + L"," +
                     l.GetItemText(4, 0)),
              "first,File 00.txt,before end,end");
    EXPECT_EQ(l.GetItemData(0), 0);
    EXPECT_EQ(l.GetItemData(1), 1000);
    EXPECT_EQ(l.GetItemData(-1), -1);
    EXPECT_EQ(l.GetItemText(5, 0), CString());
    EXPECT_EQ(l.InsertColumn(0, L"Name", 0, 100), -1);
    EXPECT_TRUE(l.DeleteAllItems());
    EXPECT_EQ(l.GetItemCount(), 0);
}

TEST_F(FileListTest, SetItemStateNeverReachesTheLastRow) {
    ProbeFile& l = Make(0, 150, false);
    EXPECT_FALSE(l.SetItemState(0, 2, 0)) << "an empty list's bound wraps; nothing is written";
    EXPECT_FALSE(l.SetItemState(0xFFFFFFFFu, 2, 0));
    for (int i = 0; i < 4; ++i) l.InsertItem(i, L"f", 0);
    for (UINT i : {0u, 2u, 3u}) l.SetItemState(i, 2, 0);
    EXPECT_EQ(l.Marks(), ".... 02");
    EXPECT_EQ(l.GetFirstSelectedItemIndex(), 0);
    l.SetItemState(0, 1, 0);  // any other state unmarks
    int pos = 1;
    EXPECT_EQ(l.GetNextSelectedItemIndex(pos), 2);
    EXPECT_EQ(pos, 3);
    EXPECT_EQ(l.GetNextSelectedItemIndex(pos), -1);
    EXPECT_EQ(pos, 3) << "left as it was";
    pos = 4;
    EXPECT_EQ(l.GetNextSelectedItemIndex(pos), -1);
    EXPECT_EQ(l.SetSelectionMark(17), 17) << "stored unchecked";
    EXPECT_EQ(l.GetCurSel(), 17);
    EXPECT_EQ(l.SetCurSel(17), -1);
}

TEST_F(FileListTest, BarRangeAndColumnWidthBeforeAndAfterTheFirstPaint) {
    const struct {
        int rows;
        bool painted;
        const char* bar;
        int column;
    } cases[] = {
        {10, false, "0..6@0 shown", 200 - kBarWidth - 5},  // rows in the client less 2: 4 whole and 26 pixels
        {10, true, "0..5@0 shown", 200 - kBarWidth - 5},
        {5, true, "0..1@0 hidden", 200},  // the bar's own rule turns 0..0 into 0..1
    };
    for (const auto& c : cases) {
        ProbeFile& l = Make(c.rows, 150, c.painted);
        EXPECT_EQ(l.Bar(), c.bar) << c.rows << c.painted;
        EXPECT_EQ(l.m_nColumnWidth, c.column) << c.rows << c.painted;
        EXPECT_EQ(l.GetCountPerPage(), c.painted ? 5 : 4);
        list.reset();
    }
}

TEST_F(FileListTest, DraggingMarksTheSpanFromThePressedRowAndBack) {
    ProbeFile& l = Make(10, 240);
    DownAt(l.m_hWnd, 20, Y(3));
    MoveTo(l.m_hWnd, 20, Y(6));
    EXPECT_EQ(l.Marks(), "...C...... 3456");
    MoveTo(l.m_hWnd, 20, Y(4));
    UpAt(l.m_hWnd, 20, Y(4));
    EXPECT_EQ(l.Marks(), "...C...... 34");
    EXPECT_EQ(parent.Take(), "-") << "no notification but the double click";

    l.SetExtendedStyle(4);
    DownAt(l.m_hWnd, 20, Y(1));
    MoveTo(l.m_hWnd, 20, Y(5));
    UpAt(l.m_hWnd, 20, Y(5));
    EXPECT_EQ(l.Marks(), ".C........ 1") << "drag marking off: the press still selects";
    EXPECT_EQ(l.SetExtendedStyle(0), 1u);
}

TEST_F(FileListTest, HoldingADragBelowTheListScrollsARowEvery300MsToTheEnd) {
    ProbeFile& l = Make(10);
    DownAt(l.m_hWnd, 20, Y(0));
    MoveTo(l.m_hWnd, 20, 170);  // 20 pixels below the list
    std::string positions = std::to_string(l.m_pScrollBar->GetScrollPos());
    for (int step = 0; step < 6; ++step) {
        desktop.Advance(CBbgFileList::kAutoScrollMs);
        positions += "," + std::to_string(l.m_pScrollBar->GetScrollPos());
    }
    EXPECT_EQ(positions, "1,2,3,4,5,5,5");
    EXPECT_EQ(l.Marks(), "C......... 0123456789");
    UpAt(l.m_hWnd, 20, 170);
    desktop.Advance(3000);
    EXPECT_EQ(l.m_pScrollBar->GetScrollPos(), 5) << "the release stops the repeat";
}

TEST_F(FileListTest, DraggingFarAboveTheListWritesNoRowBeforeTheFirst) {
    ProbeFile& l = Make(4);
    DownAt(l.m_hWnd, 20, Y(1));
    MoveTo(l.m_hWnd, 20, -100);  // row (-100 / 30) = -3
    UpAt(l.m_hWnd, 20, -100);
    EXPECT_EQ(l.Marks(), ".C.. 01");

    // Emptied in the middle of a drag: the rows inserted next are not marked by it.
    DownAt(l.m_hWnd, 20, Y(2));
    MoveTo(l.m_hWnd, 20, Y(3));
    EXPECT_EQ(l.Marks(), "..C. 23");
    l.DeleteAllItems();
    for (int i = 0; i < 4; ++i) l.InsertItem(i, L"again", 0);
    MoveTo(l.m_hWnd, 20, Y(1));
    UpAt(l.m_hWnd, 20, Y(1));
    EXPECT_EQ(l.Marks(), "..C. ");
}

TEST_F(FileListTest, ASecondTapOnTheCurrentRowIsOneDoubleClick) {
    ProbeFile& l = Make(4);
    const struct {
        int secondX, secondRow;
        DWORD wait;
        const char* log;
        int current;
    } cases[] = {
        {20, 1, 0, "NOTIFY(64,NM_DBLCLK,files)", 1},   // the platform's own double click
        {150, 1, 0, "NOTIFY(64,NM_DBLCLK,files)", 1},  // too far for it: the list's second-tap rule
        {20, 2, 0, "-", 2},                            // another row just selects it
        {20, 1, 600, "-", 1},                          // after the double-click time
    };
    for (const auto& c : cases) {
        l.SetCurSel(-1);
        desktop.Advance(1000);
        TapAt(l.m_hWnd, 20, Y(1));
        desktop.Advance(c.wait);
        TapAt(l.m_hWnd, c.secondX, Y(c.secondRow));
        EXPECT_EQ(parent.Take(), c.log) << c.secondX << "," << c.secondRow << "," << c.wait;
        EXPECT_EQ(l.GetCurSel(), c.current);
    }
    TapAt(l.m_hWnd, 20, 125);  // below the last row
    EXPECT_EQ(l.GetCurSel(), 1);
}

TEST_F(FileListTest, ParentMayDestroyTheListInsideItsDoubleClick) {
    for (int secondX : {20, 150}) {
        ProbeFile& l = Make(3);
        parent.onMessage = [this](UINT message, WPARAM, LPARAM) {
            if (message == WM_NOTIFY && list) list->DestroyWindow();
        };
        TapAt(l.m_hWnd, 20, Y(0));
        TapAt(l.m_hWnd, secondX, Y(0));
        // The release then reaches the parent: the list is gone.
        EXPECT_EQ(parent.Take().rfind("NOTIFY(64,NM_DBLCLK,files);LBUTTONUP(", 0), 0u);
        EXPECT_FALSE(::IsWindow(list->m_hWnd));
        parent.onMessage = nullptr;
        list.reset();
        desktop.Advance(1000);
    }
}

TEST_F(FileListTest, AHundredThousandRows) {
    ProbeFile& l = Make(0);
    for (int i = 0; i < 100000; ++i) l.InsertItem(i, L"row", i);
    l.ScrollTo(1 << 30);
    l.SetCurSel(99999);
    l.SetColumnWidth(0, INT_MAX);  // the text rectangle's growing edge stays in range
    desktop.RunUntilIdle();
    EXPECT_EQ(l.m_pScrollBar->GetScrollPos(), 100000 - 5);
    EXPECT_EQ(l.GetItemData(99999), 99999);
    EXPECT_TRUE(InkInBand(l.m_hWnd, kSelRow, 120, 30)) << "the last row at the bottom";
}

// A tap repaints the bands of the rows whose look changes (the current row left and
// taken, marks cleared), and nothing on the release; the list then looks as a whole
// repaint draws it.
TEST_F(FileListTest, ATapRepaintsOnlyTheRowsItChanges) {
    struct Case {
        int first, second, top, bottom;  // tapped rows; expected update band in rows
    } cases[] = {{1, 3, 1, 4}, {0, 0, 0, 0}, {2, 1, 1, 3}};  // the same row again: nothing
    for (const Case& c : cases) {
        ProbeFile& l = Make(5);
        TapAt(l.m_hWnd, 20, Y(c.first) - 5);
        desktop.Advance(1000);  // no double tap
        desktop.RunUntilIdle();
        const POINT pt{20, Y(c.second) - 5};
        l.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(pt.x, pt.y));
        l.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(pt.x, pt.y));
        CRect update;
        l.GetUpdateRect(&update, FALSE);
        const int top = l.m_rcList.top + c.top * kRowHeight, bottom = l.m_rcList.top + c.bottom * kRowHeight;
        EXPECT_EQ(update, top < bottom ? CRect(0, top, 200, bottom) : CRect()) << c.first << " then " << c.second;
        desktop.RunUntilIdle();
        const zel::test::Image partial = zel::test::CaptureWindow(l.m_hWnd, 0);
        l.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_EQ(zel::test::CaptureWindow(l.m_hWnd, 0).pixels, partial.pixels) << c.first << " then " << c.second;
        list.reset();
        parent.Take();
    }
}

// The background lies under every row but the current one, whose bitmap covers its band;
// without that bitmap the background shows there too. (Only the right edge is looked at:
// the text is on the left.)
TEST_F(FileListTest, TheCurrentRowsBitmapCoversItsBandElseTheBackgroundShows) {
    for (bool withBitmap : {true, false}) {
        ProbeFile& l = Make(4);
        if (!withBitmap) l.LoadBkBitmap(101, 999, module);  // no such current-row bitmap
        l.SetCurSel(1);
        desktop.RunUntilIdle();
        for (int row = 0; row < 3; ++row) {
            POINT pt{150, l.m_rcList.top + row * kRowHeight + kRowHeight / 2};
            l.ClientToScreen(&pt);
            const COLORREF want = row == 1 && withBitmap ? kSelRow : Screen(pt.x, pt.y);
            EXPECT_EQ(zel::test::ScreenPixel(pt.x, pt.y), want) << "row " << row << (withBitmap ? "" : " without bitmap");
        }
        list.reset();
    }
}

TEST_F(FileListTest, Goldens) {
    ProbeFile& l = Make(8, 140);
    l.SetItemState(3, 2, 0);
    l.SetItemState(4, 2, 0);
    l.SetCurSel(1);
    l.InsertItem(2, L"A file name much longer than the list is wide.txt", 0);
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CBbgFileList", "rows", zel::test::CaptureWindow(l.m_hWnd, 1));
}

}  // namespace
