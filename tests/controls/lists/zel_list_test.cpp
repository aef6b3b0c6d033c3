// CZELList: the column sets of the styles and the play layout, lookups and states, the
// click below the last row by style, double clicks, keys, the scroll bar by style, the
// four drawing styles (goldens), bad input and survival inside its notifications.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "CZELList.h"
#include "OffscreenCanvas.h"
#include "support/list_fixture.h"
#include "support/golden.h"

namespace {

const COLORREF kLeft = RGB(200, 80, 40), kMiddle = RGB(240, 200, 120), kRight = RGB(160, 60, 30);
const COLORREF kSelLeft = RGB(30, 60, 160), kSelMiddle = RGB(60, 110, 220), kSelRight = RGB(20, 40, 120);
const COLORREF kSeparator = RGB(120, 120, 120), kMark = RGB(0, 160, 0), kSelMark = RGB(250, 250, 0);

class ProbeZList : public CZELList {
public:
    using CZELList::m_bClickArmed;
    using CZELList::m_bPlayStyle;
    using CZELList::m_clrBack;
    using CZELList::m_nRowInterval;
    using CZELList::m_nStyle;
    using CZELList::m_pColumns;
    using CZELList::m_ppRows;
    using CZELList::m_pScrollBar;
    using CZELList::m_rcClick;
    using CZELList::m_rcList;
    using CZELList::GetColumnWidth;

    std::string Columns() { return zel::test::ColumnList(m_pColumns); }
    BOOL Key(UINT vk) {
        MSG msg{m_hWnd, WM_KEYDOWN, vk, 0, 0, {}};
        return PreTranslateMessage(&msg);
    }
};

// The list: 200 x 130 at (10, 10) of the parent; bar 12 pixels wide.
class ZelListTest : public zel::test::ListFixture {
protected:
    std::unique_ptr<ProbeZList> list;

    void TearDown() override {
        list.reset();
        ListFixture::TearDown();
    }
    ProbeZList& Make(int style, int rows = 0, bool skinned = true) {
        list = std::make_unique<ProbeZList>();
        EXPECT_TRUE(list->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(10, 10, 210, 140), &parent, 55));
        parent.Name(list->m_hWnd, "list");
        if (skinned) Skin(*list);
        list->SetSytle(style);
        for (int r = 0; r < rows; ++r) {
            CString s;
            s.Format(L"row%d", r);
            list->InsertItem(r, s);
        }
        desktop.RunUntilIdle();
        parent.Take();
        DebugLines();
        return *list;
    }
    void Skin(ProbeZList& l) {
        BarSkin();  // writes the bar's pieces
        HINSTANCE bar = skins.Module({{1, "thumb"}, {2, "thumb_down"}, {3, "track"}, {4, "up"}, {5, "down"},
                                      {6, "down_down"}, {7, "up_down"}});
        l.LoadScrollBitmap(1, 2, 3, 4, 5, 6, 7, bar);
        skins.Solid("l", 6, 20, kLeft);
        skins.Solid("m", 4, 20, kMiddle);
        skins.Solid("r", 6, 20, kRight);
        skins.Solid("sep", 4, 2, kSeparator);
        skins.Solid("sl", 6, 20, kSelLeft);
        skins.Solid("sm", 4, 20, kSelMiddle);
        skins.Solid("sr", 6, 20, kSelRight);
        skins.Solid("mark", 8, 8, kMark);
        skins.Solid("smark", 8, 8, kSelMark);
        l.LoadBitmapW(P("l"), P("m"), P("r"), P("sep"));
        l.LoadSelBitmaps(P("sl"), P("sm"), P("sr"), P("mark"), P("smark"));
        int heights[4] = {14, 14, 12, 10};
        COLORREF colours[2] = {RGB(0, 0, 0), RGB(255, 255, 255)};
        l.SetFontSizeAndClr(heights, colours);
    }
    CString P(const char* name) { return CString(skins.Path(name).c_str()); }
    static CArray<CString, CString>* Texts(std::initializer_list<const wchar_t*> texts) {
        static CArray<CString, CString> array;
        array.RemoveAll();
        for (const wchar_t* t : texts) array.Add(t);
        return &array;
    }
};

// Each style sets its column set, and so does the play layout (style -1 below), over the
// columns a host inserted before.
TEST_F(ZelListTest, StylesAndThePlayLayoutSetTheirColumnSets) {
    // Column 0's width: 200 - 2 x 8 - the bar's 12.
    struct Case { int before; int style; const char* columns; int after; } cases[] = {
        {0, 1, "name:172", 1},
        {0, 2, "name:172,state:0", 2},
        {0, 3, "name:172,data:0,time1:0", 3},
        {2, 3, "name:172,data:0,time1:0", 3},
        {3, 1, "c0:172", 1},            // trimmed first, then the style is set
        {3, 2, "c0:172,c1:50", 2},
        {2, 0, "c0:50,c1:50", 0},       // ignored
        {2, 4, "c0:50,c1:50", 0},
        {0, -1, "name:160,Tname:40,time:0", 1},  // after: m_bPlayStyle
        {1, -1, "c0:160,Tname:40,time:0", 1},
        {2, -1, "c0:160,c1:40,time:0", 1},
        {4, -1, "c0:160,c1:40,c2:0", 0},
    };
    for (const auto& c : cases) {
        ProbeZList& l = Make(0);
        for (int i = 0; i < c.before; ++i) l.InsertColumn(i, CString(("c" + std::to_string(i)).c_str()), 0, 50, i);
        if (c.style < 0) {
            EXPECT_EQ(l.SetPlayStyle(1), 1);
            EXPECT_EQ(l.m_nRowInterval, 0);
        } else {
            l.SetSytle(c.style);
        }
        EXPECT_EQ(l.Columns(), c.columns) << c.before << " columns, style " << c.style;
        EXPECT_EQ(c.style < 0 ? l.m_bPlayStyle : l.m_nStyle, c.after) << c.before << " columns, style " << c.style;
    }
    ProbeZList& l = Make(0);
    l.SetPlayStyle(1);
    EXPECT_EQ(l.DeleteColumn(2), 0) << "refused in the play layout";
    l.SetPlayStyle(0);
    EXPECT_EQ(l.DeleteColumn(2), 1);
    l.SetSytle(1);
    EXPECT_EQ(l.DeleteColumn(0), 0) << "refused in style 1";
}

TEST_F(ZelListTest, AddItemAndLookups) {
    ProbeZList& l = Make(2);
    EXPECT_EQ(l.AddItem(*Texts({L"one"}), 0), -1);
    EXPECT_EQ(l.AddItem(*Texts({L"a", L"b", L"c"}), 0), -1);
    EXPECT_EQ(l.GetItemCount(), 0);
    EXPECT_EQ(l.AddItem(*Texts({L"Anna", L"busy"}), 0), 0);
    EXPECT_EQ(l.AddItem(*Texts({L"Bert", L"free"}), 0), 1);
    EXPECT_EQ(l.AddItem(*Texts({L"anna", L"free"}), 0), 2);
    CString s;
    struct Case { const wchar_t* text; int byName; int byState; } cases[] = {
        {L"Anna", 0, -1}, {L"anna", 2, -1}, {L"free", -1, 1}, {L"busy", -1, 0}, {L"", -1, -1}};
    for (const auto& c : cases) {
        s = c.text;
        EXPECT_EQ(l.GetIndexByName(s), c.byName) << c.byName;
        EXPECT_EQ(l.GetIndexByState(s), c.byState);
    }
    // A row without a second cell ends the state search, even with a match after it.
    ProbeZList& m = Make(1);
    m.InsertItem(0, L"x");
    m.InsertColumn(1, L"state", 0, 0, 1);
    m.InsertItem(1, L"y");
    m.SetItemText(1, 1, L"on");
    s = L"on";
    EXPECT_EQ(m.GetIndexByState(s), -1) << "row 0 has no second cell";
}

TEST_F(ZelListTest, StatesSelectAndMark) {
    ProbeZList& l = Make(1, 4);
    struct Case { int item; UINT state; int result; int sel; int marked; } cases[] = {
        {2, 1, 1, 2, 0}, {3, 2, 1, 2, 1}, {1, 2, 1, 2, 2}, {0, 7, 1, 2, 2}, {4, 1, 0, 2, 2}, {-1, 2, 0, 2, 2}};
    for (const auto& c : cases) {
        EXPECT_EQ(l.SetItemState(c.item, c.state, 0), c.result) << c.item << "/" << c.state;
        EXPECT_EQ(l.GetCurSel(), c.sel);
        EXPECT_EQ(l.GetSelectedCount(), c.marked);
    }
    l.SetCurSel(9);
    EXPECT_EQ(l.GetCurSel(), 2);
    LVITEMW item{};
    EXPECT_EQ(l.SetItemState(0, &item), 1);
    EXPECT_EQ(l.GetItemText(0, 0, nullptr, 0), 1);
}

TEST_F(ZelListTest, PressBelowTheLastRowActsByStyle) {
    // Two rows; the press lands well below them.
    struct Case { int style; int expectSel; } cases[] = {{0, -1}, {1, 1}, {2, 0}, {3, -1}};
    for (const auto& c : cases) {
        ProbeZList& l = Make(c.style, 2);
        l.SetCurSel(0);
        TapAt(l.m_hWnd, 40, 120);
        EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,50,130)") << "style " << c.style;
        EXPECT_EQ(l.GetCurSel(), c.expectSel) << "style " << c.style;
        EXPECT_EQ(l.m_bClickArmed, 0);
        list.reset();
    }
}

TEST_F(ZelListTest, ClickThenDoubleClick) {
    ProbeZList& l = Make(1, 3);
    const int y = l.m_rcList.top + 24 + 5;  // row 1
    TapAt(l.m_hWnd, 40, y);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,50," + std::to_string(y + 10) + ");NOTIFY(55,NM_CLICK,list)");
    EXPECT_EQ(l.GetCurSel(), 1);
    desktop.RunUntilIdle();
    // The click area is the selected row as drawn, in list-area coordinates: row 1 from 24 to
    // 48 less the separator's 2, column 0 wide.
    EXPECT_EQ(l.m_rcClick, CRect(0, 24, 184, 46));
    TapAt(l.m_hWnd, 40, y);
    EXPECT_EQ(parent.Take(), "NOTIFY(55,NM_DBLCLK,list)") << "the class's own double click";
    desktop.Advance(1000);
    TapAt(l.m_hWnd, 40, y);
    desktop.Advance(600);
    EXPECT_EQ(l.m_bClickArmed, 0) << "timer 1 disarms";
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,50," + std::to_string(y + 10) + ");NOTIFY(55,NM_CLICK,list)");
}

// A press repaints the bands of the rows left and taken, nothing between them, per style's
// row geometry; the list repainted there from its kept canvas looks as a whole repaint does.
TEST_F(ZelListTest, APressRepaintsOnlyTheRowsLeftAndTaken) {
    struct Case {
        int style, first, second, bands;  // rows pressed; runs of invalidated lines expected
    } cases[] = {{0, 0, 2, 2}, {1, 0, 2, 2}, {2, 3, 1, 2}, {3, 0, 2, 2}, {1, 2, 2, 0}};
    for (const Case& c : cases) {
        ProbeZList& l = Make(c.style, c.style ? 5 : 0);
        if (c.style == 0) {  // the image list has no column of its own
            l.InsertColumn(0, L"name", LVCFMT_LEFT, 160, 0);
            for (int r = 0; r < 5; ++r) l.InsertItem(r, L"row");
            desktop.RunUntilIdle();
        }
        const int pitch = l.GetItemHeight();
        TapAt(l.m_hWnd, 40, l.m_rcList.top + c.first * pitch + 5);
        desktop.Advance(1000);
        desktop.RunUntilIdle();
        const POINT pt{40, l.m_rcList.top + c.second * pitch + 5};
        l.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(pt.x, pt.y));
        ASSERT_EQ(l.GetCurSel(), c.second) << "style " << c.style;
        HRGN update = ::CreateRectRgn(0, 0, 0, 0);
        ::GetUpdateRgn(l.m_hWnd, update, FALSE);
        int runs = 0, lines = 0;
        for (int y = 0, was = 0; y < 130; ++y) {
            const int in = ::PtInRegion(update, 100, y) ? 1 : 0;
            runs += in && !was;
            lines += in;
            was = in;
        }
        ::DeleteObject(update);
        EXPECT_EQ(runs, c.bands) << "style " << c.style;
        EXPECT_LE(lines, c.bands * pitch) << "style " << c.style << ": no more than a row pitch per row";
        l.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(pt.x, pt.y));
        desktop.RunUntilIdle();
        const zel::test::Image partial = zel::test::CaptureWindow(l.m_hWnd, 0);
        l.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_EQ(zel::test::CaptureWindow(l.m_hWnd, 0).pixels, partial.pixels) << "style " << c.style;
        list.reset();
        parent.Take();
    }
}

// Rows of one look show the same background wherever they lie and however a paint is
// clipped: a row kept and copied for the rows after it shows what drawing its pieces
// shows. The pieces vary along both axes, so a strip copied from the wrong place, or drawn
// wrong, differs from the first row.
TEST_F(ZelListTest, RowsOfOneLookShowTheSameBackground) {
    const COLORREF corner = RGB(10, 20, 200);  // the left cap's first pixel: where a row starts
    for (int style : {1, 2}) {  // style 3 writes each row's number over its background
        ProbeZList& l = Make(style);
        skins.Pixels("gl", 6, 20, [](int x, int y) { return RGB(10 + x * 30, 20 + y * 9, 200); });
        skins.Pixels("gm", 4, 20, [](int x, int y) { return RGB(40 * x, 250 - y * 9, 90); });
        skins.Pixels("gr", 6, 20, [](int x, int y) { return RGB(200, 10 + y * 11, 5 + x * 40); });
        l.LoadBitmapW(P("gl"), P("gm"), P("gr"), P("sep"));
        for (int r = 0; r < 6; ++r) l.InsertItem(r, L"");
        desktop.RunUntilIdle();
        const int left = l.m_rcList.left, width = l.GetColumnWidth(0);
        auto rowTops = [&](const zel::test::Image& shot) {
            std::vector<int> tops;
            for (int y = 0; y + 20 <= l.m_rcList.bottom; ++y)  // rows the list area shows whole
                if (shot.At(left, y) == corner) tops.push_back(y);
            return tops;
        };
        auto sameAsFirst = [&](const zel::test::Image& shot, const zel::test::Image& first, int top, int firstTop,
                               int fromY) {
            for (int y = fromY; y < 20; ++y)
                for (int x = left; x < left + width; ++x)
                    if (shot.At(x, top + y) != first.At(x, firstTop + y)) return false;
            return true;
        };
        const zel::test::Image whole = zel::test::CaptureWindow(l.m_hWnd, 0);
        const std::vector<int> tops = rowTops(whole);
        ASSERT_GE(tops.size(), 3u) << "style " << style;
        for (size_t k = 1; k < tops.size(); ++k)
            EXPECT_TRUE(sameAsFirst(whole, whole, tops[k], tops[0], 0)) << "style " << style << ", row " << k;

        // Drawn again from the middle of the first row down: that row is cut, the next
        // one is the first whole row of the look.
        int heights[4] = {14, 14, 12, 10};
        COLORREF colours[2] = {RGB(0, 0, 0), RGB(255, 255, 255)};
        l.SetFontSizeAndClr(heights, colours);  // everything is drawn again at the next paint
        const RECT cut{0, tops[0] + 7, 200, 130};
        l.RedrawWindow(&cut, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        const zel::test::Image again = zel::test::CaptureWindow(l.m_hWnd, 0);
        EXPECT_TRUE(sameAsFirst(again, whole, tops[0], tops[0], 7)) << "style " << style << ", the cut row";
        for (size_t k = 1; k < tops.size(); ++k)
            EXPECT_TRUE(sameAsFirst(again, whole, tops[k], tops[0], 0)) << "style " << style << ", row " << k << " again";
        list.reset();
        parent.Take();
    }
}

// Changes that invalidate nothing (as the device's list) still show at the next paint from
// outside: the kept canvas is not presented as it was.
TEST_F(ZelListTest, ChangesWithoutRepaintShowAtTheNextPaint) {
    struct Case {
        int style;
        const char* change;
        void (*apply)(ProbeZList&);
    } cases[] = {
        {1, "SetCurSel", [](ProbeZList& l) { l.SetCurSel(3); }},
        {2, "mark", [](ProbeZList& l) { l.SetItemState(1, 2, 0); }},
        {1, "fonts", [](ProbeZList& l) {
             int heights[4] = {20, 20, 16, 12};
             COLORREF colours[2] = {RGB(200, 0, 0), RGB(0, 200, 0)};
             l.SetFontSizeAndClr(heights, colours);
         }},
    };
    for (const Case& c : cases) {
        ProbeZList& l = Make(c.style, 5);
        const zel::test::Image before = zel::test::CaptureWindow(l.m_hWnd, 0);
        c.apply(l);
        l.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_NE(zel::test::CaptureWindow(l.m_hWnd, 0).pixels, before.pixels) << c.change;
        list.reset();
    }
}

TEST_F(ZelListTest, Keys) {
    ProbeZList& l = Make(1, 9);
    EXPECT_FALSE(l.Key(VK_DOWN)) << "no selection";
    l.SetCurSel(0);
    EXPECT_FALSE(l.Key(VK_UP)) << "at row 0";
    EXPECT_FALSE(l.Key(VK_LEFT));
    // Style 1's 120 pixels of list area hold 5 whole rows of 24; the bar moves once the
    // selection is more than 5 rows below the first visible one.
    for (int i = 1; i <= 5; ++i) EXPECT_TRUE(l.Key(VK_DOWN));
    EXPECT_EQ(l.m_pScrollBar->GetScrollPos(), 0);
    EXPECT_TRUE(l.Key(VK_DOWN));
    EXPECT_EQ(l.GetCurSel(), 6);
    EXPECT_EQ(l.m_pScrollBar->GetScrollPos(), 1);
    for (int i = 7; i < 9; ++i) l.Key(VK_DOWN);
    EXPECT_FALSE(l.Key(VK_DOWN)) << "at the last row";
    l.m_pScrollBar->SetScrollPos(4);
    for (int i = 0; i < 5; ++i) l.Key(VK_UP);
    EXPECT_EQ(l.GetCurSel(), 3);
    EXPECT_EQ(l.m_pScrollBar->GetScrollPos(), 3) << "follows the selection up";
    l.SetFocus();
    desktop.KeyDown(VK_UP);
    EXPECT_EQ(l.GetCurSel(), 2) << "through the message loop";
    EXPECT_EQ(parent.Take(), "-") << "keys notify nothing";
}

TEST_F(ZelListTest, ScrollBarByStyle) {
    // Until a paint lays out its style, the list area is the creation's 126 pixels: five
    // rows of 24 and a leftover of 6 + 8 that, with the separator's 2, holds no sixth row.
    struct Case { int style; int rows; const char* bar; int column0; } cases[] = {
        {1, 4, "0..1@0 hidden", 184},   // fits: hidden, column 0 across the margins
        {1, 6, "0..1@0 shown", 172},
        {1, 9, "0..4@0 shown", 172},
        {2, 4, "0..1@0 shown disabled", 172},   // styles 2 and 3 keep the bar, disabled
        {2, 9, "0..4@0 shown", 172},
        {3, 6, "0..1@0 shown", 172},
    };
    for (const auto& c : cases) {
        ProbeZList& l = Make(c.style, c.rows);
        EXPECT_EQ(zel::test::BarState(l.m_pScrollBar), c.bar) << c.style << "/" << c.rows;
        EXPECT_EQ(l.GetColumnWidth(0), c.column0) << c.style << "/" << c.rows;
        list.reset();
    }
    // ScrollTo moves only when the rows overflow the client: 5 x 24 = 120 <= 130 fits.
    ProbeZList& l = Make(1, 5);
    l.ScrollTo(1);
    EXPECT_EQ(l.m_pScrollBar->GetScrollPos(), 0);
    l.InsertItem(5, L"six");
    l.ScrollTo(9);
    EXPECT_EQ(l.m_pScrollBar->GetScrollPos(), 1) << "clamped to the range";
}

TEST_F(ZelListTest, ParentDestroyingTheListInsideItsNotifications) {
    for (UINT code : {static_cast<UINT>(NM_CLICK), static_cast<UINT>(NM_DBLCLK)}) {
        Make(1, 3);
        parent.onMessage = [&](UINT message, WPARAM, LPARAM lParam) {
            if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == code) list.reset();
        };
        TapAt(list->m_hWnd, 40, 20);
        if (list) TapAt(list->m_hWnd, 40, 20);
        EXPECT_EQ(list, nullptr);
        parent.onMessage = nullptr;
        desktop.RunUntilIdle();
    }
}

TEST_F(ZelListTest, BadInputPaintsWithoutCrashing) {
    ProbeZList& l = Make(3, 3, false);
    l.LoadBitmapW(L"", L"/no/such.bmp", L"", L"");
    l.LoadBkBitmap(L"/no/such.bmp");
    const CString missing[3] = {L"/no/a.bmp", L"", L"/no/c.bmp"};
    EXPECT_EQ(l.AddImage(missing, missing), 0);
    EXPECT_EQ(l.InsertItem(0, nullptr, 5), 0);
    l.SetItemHeight(0);
    l.SetInterval(-30, -4, 500);
    for (int style : {0, 1, 2, 3}) {
        l.SetSytle(style);
        l.m_nStyle = style;
        l.Invalidate();
        desktop.RunUntilIdle();
        TapAt(l.m_hWnd, 40, 20);
    }
    EXPECT_EQ(l.GetItemCount(), 4);
    // Distances past any window's size are held at 32767, so the rows' positions stay in an
    // int (a sanitizer build reports an overflow here otherwise).
    for (int extreme : {INT_MAX, INT_MIN}) {
        l.SetItemHeight(extreme);
        EXPECT_EQ(l.SetInterval(extreme, extreme, extreme), extreme > 0 ? 32767 : -32767);
        for (int style : {0, 1, 2, 3}) {
            l.m_nStyle = style;
            l.Invalidate();
            desktop.RunUntilIdle();
            TapAt(l.m_hWnd, 40, 20);
        }
    }
    EXPECT_EQ(l.GetItemHeight(), -32767);
    l.MoveWindow(10, 10, -5, -5);
    desktop.RunUntilIdle();
}

TEST_F(ZelListTest, AHundredThousandRows) {
    ProbeZList& l = Make(1);
    for (int i = 0; i < 100000; ++i) l.InsertItem(i, L"row");
    EXPECT_EQ(l.GetItemCount(), 100000);
    EXPECT_EQ(l.m_ppRows[100000], nullptr);
    l.ScrollTo(99990);
    desktop.RunUntilIdle();
    EXPECT_EQ(l.m_pScrollBar->GetScrollPos(), 99990);
    TapAt(l.m_hWnd, 40, l.m_rcList.top + 24 + 5);
    EXPECT_EQ(l.GetCurSel(), 99991);
    EXPECT_EQ(zel::test::InkBox(l.m_hWnd, kSelMiddle).top, l.m_rcList.top + 24) << "painted from the position";
    EXPECT_EQ(l.DeleteItem(50000), 1);
    EXPECT_EQ(l.DeleteAllItems(), 1);
}

// ---- goldens ------------------------------------------------------------------------------------

class ZelListGolden : public ZelListTest {
protected:
    // Paints the list and compares it with its golden image.
    void Shoot(ProbeZList& l, const char* name) {
        l.Invalidate();
        desktop.RunUntilIdle();
        EXPECT_GOLDEN("CZELList", name, zel::test::CaptureWindow(l.m_hWnd, 1));
    }
    // A 30 x 130 panel whose last two columns give the list its background colour.
    void Panel(ProbeZList& l) {
        skins.Pixels("panel", 30, 130, [](int x, int) { return x < 28 ? RGB(90, 120, 170) : RGB(210, 225, 240); });
        l.LoadBkBitmap(P("panel"));
    }
};

TEST_F(ZelListGolden, Style1) {
    ProbeZList& l = Make(1);
    Shoot(l, "style1_empty");
    l.SetItemHeight(26);  // 120 pixels of list area: the fifth row is cut at its bottom
    for (const wchar_t* n :
         {L"Alpha", L"Bravo with a name far too long to fit the row", L"Charlie", L"Delta", L"Echo", L"Foxtrot"})
        l.InsertItem(l.GetItemCount(), n);
    l.SetCurSel(2);
    Shoot(l, "style1");
}

TEST_F(ZelListGolden, Style2) {
    ProbeZList& l = Make(2);
    Panel(l);
    for (const wchar_t* n : {L"Alpha", L"Bravo with a name far too long to fit the row", L"Charlie", L"Delta", L"Echo"})
        l.InsertItem(l.GetItemCount(), n);
    l.SetItemState(1, 2, 0);
    l.SetItemState(2, 2, 0);
    l.SetCurSel(2);
    Shoot(l, "style2");
    EXPECT_EQ(l.m_clrBack, RGB(210, 225, 240)) << "sampled from the panel bitmap";
}

TEST_F(ZelListGolden, Style3) {
    ProbeZList& l = Make(3);
    skins.Framed("badge", 22, 18, RGB(255, 230, 150), RGB(120, 90, 0));
    skins.Framed("sbadge", 22, 18, RGB(255, 255, 255), RGB(0, 0, 0));
    // Style 3's right caps are wide: the time is written over them.
    skins.Framed("wide", 48, 20, kRight, kMiddle);
    skins.Framed("swide", 48, 20, kSelRight, kSelMiddle);
    l.LoadBitmapW(P("l"), P("m"), P("wide"), P("sep"));
    l.LoadSelBitmaps(P("sl"), P("sm"), P("swide"), P("mark"), P("smark"));
    Panel(l);
    l.LoadBitBmp2(P("badge"), P("sbadge"));
    l.SetItemHeight(30);
    for (const wchar_t* n : {L"Alpha", L"Bravo with a long name", L"Charlie", L"Delta"})
        l.AddItem(*Texts({n, L"detail line", L"3:41"}), 0);
    l.SetCurSel(1);
    Shoot(l, "style3");
}

TEST_F(ZelListGolden, Style0WithImagesAndPlayLayout) {
    ProbeZList& l = Make(0);
    skins.Solid("il", 6, 20, RGB(120, 0, 120));
    skins.Solid("im", 4, 20, RGB(230, 180, 230));
    skins.Solid("ir", 6, 20, RGB(90, 0, 90));
    const CString image[3] = {P("il"), P("im"), P("ir")};
    const CString selected[3] = {P("sl"), P("sm"), P("sr")};
    EXPECT_EQ(l.AddImage(image, selected), 0);
    l.SetPlayStyle(1);
    l.SetInterval(4, 8, 4);
    for (const wchar_t* n : {L"Alpha", L"Bravo with a name far too long to fit", L"Charlie"})
        l.AddItem(*Texts({n, L"3:41", L""}), 0);
    l.InsertItem(1, L"No image", 7);  // an image past the count is not taken: the row keeps image 0
    l.SetItemText(1, 1, L"0:15");
    l.SetCurSel(2);
    Shoot(l, "style0_play");
}

}  // namespace
