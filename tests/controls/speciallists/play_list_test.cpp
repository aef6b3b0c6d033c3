// CZELPlayList: its three columns, the extension-keeping name rule, the bar's two states,
// marked and current rows' colours (the key blit's black), a missing current piece, short
// skin arrays, the skin string, clicks, and the goldens.
#include <gtest/gtest.h>

#include <memory>

#include "CZELPlayList.h"
#include "ListPaint.h"
#include "SkinText.h"
#include "speciallists_fixture.h"
#include "support/memory_surface.h"

namespace {

using namespace speclisttest;

class ProbePlay : public CZELPlayList {
public:
    using CZELPlayList::m_pColumns;
    using CZELPlayList::m_pScrollBar;
    using CZELPlayList::m_rcClick;
    using CZELPlayList::m_rcList;
    std::string Columns() { return ColumnList(m_pColumns); }
    std::string Bar() { return BarState(m_pScrollBar); }
};

// The list: 200 x 130 at (10, 10) of the parent; margins 3 leave 124 pixels: 4 rows of 30.
class PlayListTest : public SpecialListTest {
protected:
    std::unique_ptr<ProbePlay> list;
    void TearDown() override {
        list.reset();
        SpecialListTest::TearDown();
    }
    ProbePlay& Make(int rows, bool skinned = true, int height = 130) {
        WritePieces();
        list = std::make_unique<ProbePlay>();
        EXPECT_TRUE(list->SubclassWindow(ItemWindow(CRect(10, 10, 210, 10 + height), 61)));
        parent.Name(list->m_hWnd, "play");
        list->LoadScrollBitmap(BarSkin(), L"");
        if (skinned)
            list->LoadBitmaps(Paths({"bk0", "bk1", "bk2", "bk3"}), Paths({"l", "m", "r"}), Paths({"cl", "cm", "cr"}));
        for (int i = 0; i < rows; ++i) {
            CString name;
            name.Format(L"Track %d.mp3", i + 1);
            const int row = list->InsertItem(i, name, true);
            list->SetItemText(row, 1, L"3:20");
        }
        desktop.RunUntilIdle();
        return *list;
    }
    int RowTop(int k) const { return list->m_rcList.top + k * kRowHeight; }
};

TEST_F(PlayListTest, BarShowsOnlyWhileRowsOverflow) {
    const struct {
        int rows;
        const char* bar;
        int nameWidth;
    } cases[] = {
        {3, "0..1@0 hidden", 154},
        {4, "0..1@0 hidden", 154},
        {6, "0..2@0 shown", 154 - kBarWidth},
    };
    for (const auto& c : cases) {
        ProbePlay& l = Make(c.rows);
        EXPECT_EQ(l.Bar(), c.bar) << c.rows;
        EXPECT_EQ(l.Columns(), "name:" + std::to_string(c.nameWidth) + ",time:40,Tname:0") << c.rows;
        list.reset();
    }
}

TEST_F(PlayListTest, NamesKeepTheirExtensionWhenShortened) {
    zel::test::MemorySurface surface(10, 10, false);
    HDC dc = surface.dc();
    const int width = zelctl::TextWidth(dc, L"A rather long track.mp3") - 20;
    const struct {
        const wchar_t* name;
        int width;
        const wchar_t* suffix;  // what the result ends with
        bool shortened;
    } cases[] = {
        {L"A rather long track.mp3", width, L"....mp3", true},
        {L"Short.mp3", width, L"Short.mp3", false},
        {L"A rather long name without a stop", width, L"...", true},
        {L"two.dots.ogg", 1, L"....ogg", true},  // nothing fits: "..." then the extension
    };
    for (const auto& c : cases) {
        const CString out = zelctl::speciallists::ShortenKeepingExtension(dc, c.name, c.width);
        const CString suffix(c.suffix);
        EXPECT_EQ(out.Right(suffix.GetLength()), suffix) << Narrow(out);
        EXPECT_EQ(out != CString(c.name), c.shortened) << Narrow(out);
    }
}

// A marked row inks its text (the golden shows it); marked and current, the key blit of the
// current pieces turns the text black.
TEST_F(PlayListTest, MarkedCurrentRowsKeyBlitTurnsTextBlack) {
    ProbePlay& l = Make(3);
    l.SetSelectionMark(1);
    l.SetCurSel(1);
    l.Invalidate();
    desktop.RunUntilIdle();
    EXPECT_FALSE(InkInBand(l.m_hWnd, kMarkedInk, RowTop(1), kRowHeight));
    EXPECT_TRUE(InkInBand(l.m_hWnd, kBlack, RowTop(1), kRowHeight));
    EXPECT_TRUE(InkInBand(l.m_hWnd, kCurMiddle, RowTop(1), kRowHeight));
}

TEST_F(PlayListTest, CurrentRowWithoutAllItsPiecesHasNoBackgroundButItsText) {
    ProbePlay& l = Make(2, false);
    l.LoadBitmaps(Paths({"bk0", "bk1", "bk2", "bk3"}), Paths({"l", "m", "r"}), Paths({"cl", "missing", "cr"}));
    l.SetCurSel(0);
    l.Invalidate();
    desktop.RunUntilIdle();
    EXPECT_EQ(zel::test::InkBox(l.m_hWnd, kCurLeft), CRect());
    EXPECT_TRUE(InkInBand(l.m_hWnd, kBlack, RowTop(0), 20));
    // Ordinary rows keep their caps; their middle is drawn with the current middle's size,
    // which is now 0 wide, so it is not drawn.
    EXPECT_NE(zel::test::InkBox(l.m_hWnd, kLeft), CRect());
    EXPECT_EQ(zel::test::InkBox(l.m_hWnd, kMiddle), CRect());
}

TEST_F(PlayListTest, ShortArraysDeleteThePiecesAndLoadNothing) {
    ProbePlay& l = Make(2);
    const struct {
        int bk, row, cur;
    } cases[] = {{3, 3, 3}, {4, 2, 3}, {4, 3, 2}};
    for (const auto& c : cases) {
        l.LoadBitmaps(Paths({"bk0", "bk1", "bk2", "bk3"}), Paths({"l", "m", "r"}), Paths({"cl", "cm", "cr"}));
        CArray<CString, CString>& bk = Paths({"bk0", "bk1", "bk2", "bk3"});
        CArray<CString, CString>& row = Paths({"l", "m", "r"});
        CArray<CString, CString>& cur = Paths({"cl", "cm", "cr"});
        bk.SetSize(c.bk);
        row.SetSize(c.row);
        cur.SetSize(c.cur);
        l.LoadBitmaps(bk, row, cur);
        l.Invalidate();
        desktop.RunUntilIdle();
        EXPECT_FALSE(InkInBand(l.m_hWnd, kMiddle, RowTop(1), kRowHeight)) << c.bk << c.row << c.cur;
        EXPECT_TRUE(InkInBand(l.m_hWnd, kFrame, 0, 3)) << "the frame stays";
    }
}

TEST_F(PlayListTest, SkinStringLoadsBackgroundRowAndCurrentPieces) {
    ProbePlay& l = Make(2, false);
    l.LoadSkin(skins.Skin({"bk0", "bk1", "bk2", "bk3", "l", "m", "r", "cl", "cm", "cr"}), L"");
    l.SetCurSel(1);
    l.Invalidate();
    desktop.RunUntilIdle();
    EXPECT_TRUE(InkInBand(l.m_hWnd, kMiddle, RowTop(0), kRowHeight));
    EXPECT_TRUE(InkInBand(l.m_hWnd, kCurMiddle, RowTop(1), kRowHeight));
    l.LoadSkin(L"broken|", L"");  // too few pieces: the row pieces go
    l.Invalidate();
    desktop.RunUntilIdle();
    EXPECT_FALSE(InkInBand(l.m_hWnd, kMiddle, RowTop(0), kRowHeight));
}

TEST_F(PlayListTest, TapsSelectAndASecondTapOnTheCurrentRowIsADoubleClick) {
    ProbePlay& l = Make(3);
    TapAt(l.m_hWnd, 50, RowTop(1) + 5);
    EXPECT_EQ(l.GetCurSel(), 1);
    TapAt(l.m_hWnd, 60, RowTop(1) + 10);
    // The forwarded presses are in the parent's coordinates (the list sits at (10, 10)).
    EXPECT_EQ(parent.Take(),
              "LBUTTONDOWN(1,60,48);NOTIFY(61,NM_CLICK,play);LBUTTONDOWN(1,70,53);NOTIFY(61,NM_DBLCLK,play)");
}

// A press invalidates only the band of the row it leaves and of the row it takes (the last
// row for a press below the rows), and the list repainted there from its kept canvas looks
// as a whole repaint does.
TEST_F(PlayListTest, APressRepaintsOnlyTheRowsLeftAndTaken) {
    struct Case {
        int rows, first, second, top, bottom;  // presses at row bands; expected update band
    } cases[] = {
        {4, 1, 3, 1, 4},  // rows 1 and 3: their bounding box
        {4, 2, 2, 2, 3},  // the same row again
        {2, 0, 3, 0, 2},  // below the rows: the last row
    };
    for (const Case& c : cases) {
        ProbePlay& l = Make(c.rows);
        TapAt(l.m_hWnd, 50, RowTop(c.first) + 5);
        const POINT pt{50, RowTop(c.second) + 5};
        l.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(pt.x, pt.y));
        CRect update;
        l.GetUpdateRect(&update, FALSE);
        EXPECT_EQ(update, CRect(0, RowTop(c.top), 200, RowTop(c.bottom))) << c.first << " then " << c.second;
        l.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(pt.x, pt.y));
        desktop.RunUntilIdle();
        const zel::test::Image partial = zel::test::CaptureWindow(l.m_hWnd, 0);
        l.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_EQ(zel::test::CaptureWindow(l.m_hWnd, 0).pixels, partial.pixels) << c.first << " then " << c.second;
        list.reset();
        parent.Take();
    }
}

// 115 high: three whole rows and a fourth cut 19 pixels down.
TEST_F(PlayListTest, Goldens) {
    ProbePlay& l = Make(6, true, 115);
    l.SetItemText(2, 0, L"An uncommonly long title for one track.mp3");
    l.SetSelectionMark(3);
    l.SetCurSel(1);
    l.Invalidate();
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CZELPlayList", "rows", zel::test::CaptureWindow(l.m_hWnd, 1));
    l.ScrollTo(2);
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CZELPlayList", "scrolled", zel::test::CaptureWindow(l.m_hWnd, 1));
}

}  // namespace
