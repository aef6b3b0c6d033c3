// CZELTelList and CZELBTList: the telephone list's image set per row (the last set for an
// index past the end, none for a negative one or without sets), the sizes of the last set
// for every set, AddItem's column check, the bar that stays on screen disabled; the device
// list's lookups, its skin arrays (both short together stop the load), its status icons;
// and the goldens of both.
#include <gtest/gtest.h>

#include <memory>

#include "CZELBTList.h"
#include "CZELTelList.h"
#include "SkinSet.h"
#include "speciallists_fixture.h"

namespace {

using namespace speclisttest;

const COLORREF kSetBLeft = RGB(20, 120, 20), kSetBMiddle = RGB(150, 220, 150), kSetBRight = RGB(10, 90, 10);
const COLORREF kSetBCur = RGB(220, 150, 220);
const COLORREF kIcon0 = RGB(250, 160, 0), kIcon1 = RGB(0, 200, 200);

template <class Base>
class Probe : public Base {
public:
    using Base::m_pScrollBar;
    using Base::m_ppRows;
    using Base::m_rcClick;
    using Base::m_rcList;
    std::string Bar() { return BarState(m_pScrollBar); }
};

class ProbeBT : public Probe<CZELBTList> {
public:
    HBITMAP Piece(int k) const { return (*m_pieces)[k]; }
};

// Both lists: 200 x 130 at (10, 10) of the parent. Margins 11 and 6 leave rows from y = 6
// to 124: three whole rows of 30 and one cut 28 pixels down.
class TelBtTest : public SpecialListTest {
protected:
    std::unique_ptr<Probe<CZELTelList>> tel;
    std::unique_ptr<ProbeBT> bt;

    void TearDown() override {
        tel.reset();
        bt.reset();
        SpecialListTest::TearDown();
    }
    int height = 130;  // the goldens take a list whose last row is cut well inside it
    template <class L>
    void Attach(L& list, int id, const char* name) {
        EXPECT_TRUE(list.SubclassWindow(ItemWindow(CRect(10, 10, 210, 10 + height), id)));
        parent.Name(list.m_hWnd, name);
        BarSkin();
        list.LoadScrollBitmap(skins.Path("thumb").c_str(), skins.Path("thumb_down").c_str(),
                              skins.Path("track").c_str(), skins.Path("up").c_str(), skins.Path("down").c_str(),
                              skins.Path("down_down").c_str(), skins.Path("up_down").c_str());
    }
    Probe<CZELTelList>& MakeTel(int rows) {
        WritePieces();
        skins.Solid("bl", 10, kRowHeight, kSetBLeft);
        skins.Solid("bm", 10, kRowHeight, kSetBMiddle);
        skins.Solid("br", 10, kRowHeight, kSetBRight);
        skins.Solid("bc", 10, kRowHeight, kSetBCur);
        tel = std::make_unique<Probe<CZELTelList>>();
        Attach(*tel, 62, "tel");
        tel->LoadBkImage(Paths({"bk0", "bk1", "bk2", "bk3"}));
        tel->AddImage(Paths({"l", "m", "r"}), Paths({"cl", "cm", "cr"}));
        for (int i = 0; i < rows; ++i) {
            CString name;
            name.Format(L"Contact %d", i + 1);
            CArray<CString, CString> cells;
            cells.Add(name);
            cells.Add(L"0123");
            cells.Add(L"12:00");
            tel->AddItem(cells, 0);
        }
        desktop.RunUntilIdle();
        return *tel;
    }
    ProbeBT& MakeBT(int rows) {
        WritePieces();
        skins.Solid("icon0", 10, 12, kIcon0);
        skins.Solid("icon1", 10, 12, kIcon1);
        bt = std::make_unique<ProbeBT>();
        Attach(*bt, 63, "bt");
        bt->LoadBitmaps(Paths({"bk0", "bk1", "bk2", "bk3"}), Paths({"l", "m", "r"}), Paths({"cl", "cm", "cr"}),
                        Paths({"icon0", "icon1"}));
        for (int i = 0; i < rows; ++i) {
            CString name;
            name.Format(L"Headset %d", i + 1);
            bt->InsertItem(i, name, true);
            bt->SetItemText(i, 1, i == 1 ? L"Connected" : L"Paired");
        }
        desktop.RunUntilIdle();
        return *bt;
    }
    void Repaint(CWnd& w) {
        w.Invalidate();
        desktop.RunUntilIdle();
    }
    static int RowTop(int k) { return 6 + k * kRowHeight; }
};

// ---- the telephone list ---------------------------------------------------------------------

TEST_F(TelBtTest, AddItemTakesExactlyOneTextPerColumn) {
    Probe<CZELTelList>& l = MakeTel(0);
    for (int texts : {2, 4, 0, 3}) {
        CArray<CString, CString> cells;
        for (int k = 0; k < texts; ++k) cells.Add(CString(L"c") + CString(static_cast<wchar_t>(L'0' + k)));
        EXPECT_EQ(l.AddItem(cells, 0), texts == 3 ? 0 : -1) << texts;
    }
    EXPECT_EQ(l.GetItemCount(), 1);
    EXPECT_EQ(Narrow(l.GetItemText(0, 0) + l.GetItemText(0, 1) + l.GetItemText(0, 2)), "c0c1c2");
}

TEST_F(TelBtTest, EachRowTakesItsSetTheLastForAnIndexPastTheEndNoneForNegative) {
    Probe<CZELTelList>& l = MakeTel(4);
    l.AddImage(Paths({"bl", "bm", "br"}), Paths({"bc", "bc", "bc"}));
    l.m_ppRows[1]->nImage = 1;
    l.m_ppRows[2]->nImage = 5;
    l.m_ppRows[3]->nImage = -1;
    l.SetCurSel(3);
    DebugLines();
    Repaint(l);
    const struct {
        int row;
        COLORREF middle;
    } cases[] = {{0, kMiddle}, {1, kSetBMiddle}, {2, kSetBMiddle}};
    for (const auto& c : cases) EXPECT_TRUE(InkInBand(l.m_hWnd, c.middle, RowTop(c.row), kRowHeight)) << c.row;
    EXPECT_FALSE(InkInBand(l.m_hWnd, kSetBCur, RowTop(3), 28)) << "a negative index draws no pieces";
    EXPECT_EQ(DebugLines(), "imagelist = 0|imagelist = 1|imagelist = 5|imagelist = -1");

    l.ClearImages();
    Repaint(l);
    for (COLORREF ink : {kMiddle, kSetBMiddle, kSetBCur}) EXPECT_EQ(zel::test::InkBox(l.m_hWnd, ink), CRect());
    EXPECT_EQ(l.GetImageSetCount(), 0);
}

TEST_F(TelBtTest, EverySetIsDrawnWithTheLastSetsSizes) {
    Probe<CZELTelList>& l = MakeTel(2);
    l.AddImage(Paths({"bl", "bm", "br"}), Paths({"bc", "bc", "bc"}));
    l.SetCurSel(1);
    Repaint(l);
    // Set 0's caps are 6 wide but laid out 10 wide, the size of set 1's caps: the copy
    // stops at the bitmap's edge and the middle starts 10 pixels in.
    EXPECT_EQ(zel::test::InkBox(l.m_hWnd, kLeft), CRect(11, RowTop(0), 17, RowTop(1)));
    EXPECT_EQ(zel::test::InkBox(l.m_hWnd, kMiddle).left, 21);
    EXPECT_EQ(l.m_rcClick, CRect(11, RowTop(1), 189 - kBarWidth, RowTop(2)));
    EXPECT_TRUE(InkInBand(l.m_hWnd, kCurMiddle, RowTop(1), kRowHeight)) << "the current row: its set's current pieces";
}

TEST_F(TelBtTest, TelephoneBarStaysOnScreenDisabledWhileEverythingFits) {
    const struct {
        int rows;
        const char* bar;
    } cases[] = {{2, "0..100@0 shown disabled"}, {6, "0..3@0 shown"}};
    for (const auto& c : cases) {
        Probe<CZELTelList>& l = MakeTel(c.rows);
        l.UpdataScrollBar();  // after the first paint laid m_rcList out
        EXPECT_EQ(l.Bar(), c.bar) << c.rows;
        tel.reset();
    }
}

// ---- the Bluetooth device list -------------------------------------------------------------

TEST_F(TelBtTest, DevicesAreFoundByExactNameOrState) {
    ProbeBT& l = MakeBT(0);
    CString any(L"Headset 1");
    EXPECT_EQ(l.GetIndexByName(any), -1) << "empty list";
    MakeBT(3);
    ProbeBT& m = *bt;
    const struct {
        const wchar_t* text;
        int byName, byState;
    } cases[] = {
        {L"Headset 2", 1, -1}, {L"headset 2", -1, -1}, {L"Headset", -1, -1}, {L"Connected", -1, 1}, {L"Paired", -1, 0},
    };
    for (const auto& c : cases) {
        CString t(c.text);
        EXPECT_EQ(m.GetIndexByName(t), c.byName) << Narrow(t);
        EXPECT_EQ(m.GetIndexByState(t), c.byState) << Narrow(t);
    }
}

TEST_F(TelBtTest, StateSearchStopsAtTheFirstRowWithoutASecondCell) {
    ProbeBT& l = MakeBT(1);
    // Removing the only column leaves row 0 with its head alone; rows added after a new
    // column have their second cell again.
    ASSERT_EQ(l.DeleteColumn(0), 1);
    l.InsertColumn(0, L"name", 0, 40, 0);
    l.InsertItem(1, L"Car kit", true);
    l.SetItemText(1, 1, L"Connected");
    CString state(L"Connected"), name(L"Car kit");
    EXPECT_EQ(l.GetIndexByState(state), -1);
    EXPECT_EQ(l.GetIndexByName(name), 1);
}

TEST_F(TelBtTest, SkinArraysStopOnlyWhenCurrentAndIconsAreBothShort) {
    ProbeBT& l = MakeBT(0);
    enum { kLeftP, kMiddleP, kRightP, kCurL, kCurM, kCurR, kIconP, kCurIconP };
    const struct {
        int bk, normal, cur, icons;
        const char* loaded;  // which of the eight pieces exist afterwards
    } cases[] = {
        {4, 3, 2, 1, "00000000"}, {4, 3, 3, 2, "11111111"}, {4, 3, 2, 2, "11111011"},
        {4, 3, 3, 1, "11111110"}, {3, 3, 3, 2, "00000000"}, {4, 2, 3, 2, "00000000"},
    };
    for (const auto& c : cases) {
        l.LoadBitmaps(Paths({"bk0", "bk1", "bk2", "bk3"}), Paths({"l", "m", "r"}), Paths({"cl", "cm", "cr"}),
                      Paths({"icon0", "icon1"}));
        CArray<CString, CString>& bk = Paths({"bk0", "bk1", "bk2", "bk3"});
        CArray<CString, CString>& normal = Paths({"l", "m", "r"});
        CArray<CString, CString>& cur = Paths({"cl", "cm", "cr"});
        CArray<CString, CString>& icons = Paths({"icon0", "icon1"});
        bk.SetSize(c.bk);
        normal.SetSize(c.normal);
        cur.SetSize(c.cur);
        icons.SetSize(c.icons);
        l.LoadBitmaps(bk, normal, cur, icons);
        std::string loaded;
        for (int k = kLeftP; k <= kCurIconP; ++k) loaded += l.Piece(k) ? '1' : '0';
        EXPECT_EQ(loaded, c.loaded) << c.bk << c.normal << c.cur << c.icons;
    }
}

// Where a marked row's icon goes (raised two pixels above centre, the current icon on the
// current row) is the goldens'; the current row takes the second click. The bar is the
// telephone list's, and prints its maximum.
TEST_F(TelBtTest, CurrentDeviceRowIsTheClickAreaAndTheBarIsTheTelephoneLists) {
    ProbeBT& l = MakeBT(2);
    l.SetSelectionMark(1);
    l.SetCurSel(0);
    Repaint(l);
    EXPECT_EQ(l.m_rcClick, CRect(11, RowTop(0), 189 - kBarWidth, RowTop(1))) << "the rows stop at the bar's strip";
    DebugLines();
    l.UpdataScrollBar();
    EXPECT_EQ(l.Bar(), "0..100@0 shown disabled");
    EXPECT_EQ(DebugLines(), "Max = -1");
}

// 115 high: rows end at 109, so the fourth row shows 13 of its 30 pixels.
TEST_F(TelBtTest, Goldens) {
    height = 115;
    Probe<CZELTelList>& t = MakeTel(5);
    t.AddImage(Paths({"bl", "bm", "br"}), Paths({"cl", "cm", "cr"}));
    t.m_ppRows[2]->nImage = 1;
    t.SetItemText(0, 0, L"A name far too long for the row to hold");
    t.SetSelectionMark(2);
    t.SetCurSel(1);
    Repaint(t);
    EXPECT_GOLDEN("CZELTelList", "rows", zel::test::CaptureWindow(t.m_hWnd, 1));

    ProbeBT& b = MakeBT(5);
    b.SetItemText(0, 0, L"A device name far too long for the row");
    b.SetSelectionMark(2);
    b.SetCurSel(1);
    b.UpdataScrollBar();
    Repaint(b);
    EXPECT_GOLDEN("CZELBTList", "rows", zel::test::CaptureWindow(b.m_hWnd, 1));
    b.SetSelectionMark(1);
    Repaint(b);
    EXPECT_GOLDEN("CZELBTList", "marked_current", zel::test::CaptureWindow(b.m_hWnd, 1));
}

}  // namespace
