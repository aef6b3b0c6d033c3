// The special lists' kept canvas: KeptRows draws only what changed since the last paint
// (and what a paint's clip left out before), RowPiecesCover and RowBackdrops draw a row's
// pieces once; and each list on CListData, after any run of changes and partial repaints,
// shows exactly what a canvas drawn afresh shows, while a repaint that changes nothing
// draws nothing.
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "CZELBTList.h"
#include "CZELListCtrl.h"
#include "CZELPlayList.h"
#include "CZELTelList.h"
#include "ListPaint.h"
#include "speciallists_fixture.h"
#include "support/memory_surface.h"

namespace {

using namespace speclisttest;
namespace sl = zelctl::speciallists;
using zel::test::MemorySurface;

// ---- KeptRows --------------------------------------------------------------------------

constexpr int kW = 100, kRow = 20;

sl::PictureKey Key(long long v, const wchar_t* text = L"") {
    sl::PictureKey key;
    key << v << CString(text);
    return key;
}

RECT Band(int k) { return RECT{0, k * kRow, kW, (k + 1) * kRow}; }

// One paint of four rows whose keys are `keys`, through a paint DC clipped to `clip`;
// returns which rows the paint draws ("" for none: Clip said there was nothing).
std::string PaintRows(sl::KeptRows& kept, HDC paint, HDC canvas, bool fresh, const std::vector<long long>& keys,
                      long long layout = 0) {
    kept.Begin(paint, CRect(0, 0, kW, 4 * kRow), fresh, Key(layout));
    for (size_t k = 0; k < keys.size(); ++k) kept.Row(Band(static_cast<int>(k)), Key(keys[k]));
    const int saved = ::SaveDC(canvas);
    std::string drawn;
    if (kept.Clip(canvas))
        for (size_t k = 0; k < 4; ++k)
            if (kept.Draws(canvas, Band(static_cast<int>(k)))) drawn += std::to_string(k);
    ::RestoreDC(canvas, saved);
    kept.End();
    return drawn;
}

using KeptRowsTest = SpecialListTest;

TEST_F(KeptRowsTest, DrawsWhatChangedAndWhatAClipLeftOut) {
    MemorySurface paint(kW, 4 * kRow, false), canvas(kW, 4 * kRow, false);
    sl::KeptRows kept;
    auto clipTo = [&](const RECT* rc) {
        ::SelectClipRgn(paint.dc(), nullptr);
        if (rc) ::IntersectClipRect(paint.dc(), rc->left, rc->top, rc->right, rc->bottom);
    };
    const RECT row2 = Band(2);
    const struct Step {
        const char* what;
        const RECT* clip;  // the paint's clip (null: all of it)
        bool fresh;
        std::vector<long long> keys;
        long long layout;
        const char* drawn;
    } steps[] = {
        {"a new canvas: everything", nullptr, true, {1, 2, 3, 4}, 0, "0123"},
        {"nothing changed", nullptr, false, {1, 2, 3, 4}, 0, ""},
        {"rows 0 and 3 changed", nullptr, false, {9, 2, 3, 8}, 0, "03"},
        {"row 1 changed, the paint covers row 2 only", &row2, false, {9, 7, 3, 8}, 0, ""},
        {"row 1 is still stale", nullptr, false, {9, 7, 3, 8}, 0, "1"},
        {"a row fewer: its band shows the frame again", nullptr, false, {9, 7, 3}, 0, "3"},
        {"a row more", nullptr, false, {9, 7, 3, 5}, 0, "3"},
        {"the layout changed: everything", nullptr, false, {9, 7, 3, 5}, 1, "0123"},
        {"the canvas was made afresh: everything", nullptr, true, {9, 7, 3, 5}, 1, "0123"},
    };
    for (const Step& s : steps) {
        clipTo(s.clip);
        EXPECT_EQ(PaintRows(kept, paint.dc(), canvas.dc(), s.fresh, s.keys, s.layout), s.drawn) << s.what;
    }
}

TEST_F(KeptRowsTest, KeysCompareEverythingAppendedInOrder) {
    auto key = [](std::initializer_list<const wchar_t*> texts) {
        sl::PictureKey k;
        for (const wchar_t* t : texts) k << CString(t);
        return k;
    };
    EXPECT_TRUE(key({L"ab", L"c"}) == key({L"ab", L"c"}));
    EXPECT_FALSE(key({L"ab", L"c"}) == key({L"a", L"bc"}));
    EXPECT_FALSE(key({L"ab"}) == key({L"ab", L""}));
    sl::PictureKey big, small;
    big << (1LL << 40);
    small << 0LL;
    EXPECT_FALSE(big == small) << "the high half of a value counts";
}

// ---- row pieces ----------------------------------------------------------------------------

TEST_F(KeptRowsTest, RowPiecesCoverOnlyWhenEveryCopiedPartLiesInsideItsBitmap) {
    skins.Solid("cap", 6, 30, kLeft);
    skins.Solid("short", 6, 20, kLeft);
    skins.Solid("mid", 10, 30, kMiddle);
    skins.Solid("thin", 4, 30, kMiddle);
    auto load = [&](const char* name) { return name ? ::SHLoadDIBitmap(CString(skins.Path(name).c_str())) : nullptr; };
    const SIZE sizes[3] = {{6, 30}, {10, 30}, {6, 30}};
    const struct Case {
        const char *left, *middle, *right;
        RECT row;
        bool covers;
    } cases[] = {
        {"cap", "mid", "cap", {0, 0, 100, 30}, true},
        {"cap", "mid", "cap", {0, 0, 100, 20}, true},    // a cut row
        {"short", "mid", "cap", {0, 0, 100, 30}, false},  // the left cap 10 rows short
        {"cap", "thin", "cap", {0, 0, 100, 30}, false},   // the middle's source is 10 wide
        {"cap", nullptr, "cap", {0, 0, 100, 30}, false},
        {"cap", "thin", "cap", {0, 0, 12, 30}, true},     // the caps meet: no middle drawn
        {"cap", "mid", "cap", {0, 0, 0, 30}, false},
    };
    for (const Case& c : cases) {
        const HBITMAP pieces[3] = {load(c.left), load(c.middle), load(c.right)};
        EXPECT_EQ(sl::RowPiecesCover(c.row, pieces, sizes), c.covers)
            << c.left << "|" << (c.middle ? c.middle : "-") << "|" << c.right << " " << c.row.right << "x"
            << c.row.bottom;
        for (HBITMAP b : pieces)
            if (b) ::DeleteObject(b);
    }
}

// A row copied from the kept picture of its kind is what drawing its pieces gives, whole
// and cut; a cut row whose middle is squeezed is drawn at its place.
TEST_F(KeptRowsTest, BackdropsCopyWhatThePiecesDraw) {
    // Every pixel its own colour, so that a stretch or copy from the wrong place shows.
    auto ramp = [&](const char* name, int w, int h) {
        skins.Pixels(name, w, h, [](int x, int y) { return RGB(x * 20, y * 8, 255 - x * 10 - y * 3); });
    };
    ramp("gl", 6, 30);
    ramp("gm", 10, 30);
    ramp("gr", 6, 30);
    ramp("gs", 10, 12);  // a middle shorter than the row: stretched downwards
    for (const char* middle : {"gm", "gs"}) {
        SCOPED_TRACE(middle);
        const HBITMAP pieces[3] = {::SHLoadDIBitmap(CString(skins.Path("gl").c_str())),
                                   ::SHLoadDIBitmap(CString(skins.Path(middle).c_str())),
                                   ::SHLoadDIBitmap(CString(skins.Path("gr").c_str()))};
        const SIZE sizes[3] = {{6, 30}, zelctl::BitmapSize(pieces[1]), {6, 30}};
        MemorySurface direct(90, 100, false), copied(90, 100, false);
        sl::PieceDC source;
        sl::RowBackdrops backdrops;
        for (const RECT& row : {RECT{5, 0, 85, 30}, RECT{5, 40, 85, 70}, RECT{5, 80, 85, 97}}) {
            sl::PaintRowPieces(direct.dc(), row, pieces, sizes, &source);
            EXPECT_TRUE(backdrops.Paint(copied.dc(), row, 30, pieces, sizes, source));
        }
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 90; ++x)
                ASSERT_EQ(::GetPixel(copied.dc(), x, y), ::GetPixel(direct.dc(), x, y)) << x << "," << y;
        const int bitmaps = zel::LiveGdiObjects().bitmaps;
        backdrops.Release();
        EXPECT_EQ(zel::LiveGdiObjects().bitmaps, bitmaps - 1) << "one kind kept: the whole rows' picture";
        for (HBITMAP b : pieces) ::DeleteObject(b);
    }
}

// ---- the lists -------------------------------------------------------------------------------

// Each list with what the tests below need: its kept canvas and its rows' area.
template <class Base>
class Kept : public Base {
public:
    using Base::m_ppRows;
    using Base::m_rcList;
    zelctl::CanvasStore& Store() { return this->Canvas(); }
};

const COLORREF kStray = RGB(255, 0, 255);

class KeptListTest : public SpecialListTest {
protected:
    std::unique_ptr<CListData> list;
    std::function<CRect()> rowsArea;
    std::function<zelctl::CanvasStore&()> store;
    std::function<ListCell**()> rows;

    void TearDown() override {
        list.reset();
        SpecialListTest::TearDown();
    }
    template <class L>
    L& Attach(std::unique_ptr<L> made) {
        L& l = *made;
        EXPECT_TRUE(l.SubclassWindow(ItemWindow(CRect(10, 10, 210, 140), 71)));
        rowsArea = [&l] { return CRect(l.m_rcList); };
        store = [&l]() -> zelctl::CanvasStore& { return l.Store(); };
        rows = [&l] { return l.m_ppRows; };
        list = std::move(made);
        return l;
    }
    void Make(const std::string& kind) {
        WritePieces();
        skins.Solid("icon", 10, 12, RGB(250, 160, 0));
        const CString bar = BarSkin();
        if (kind == "play") {
            auto& l = Attach(std::make_unique<Kept<CZELPlayList>>());
            l.LoadScrollBitmap(bar, L"");
            l.LoadBitmaps(Paths({"bk0", "bk1", "bk2", "bk3"}), Paths({"l", "m", "r"}), Paths({"cl", "cm", "cr"}));
        } else if (kind == "tel") {
            auto& l = Attach(std::make_unique<Kept<CZELTelList>>());
            l.LoadScrollBitmap(bar, L"");
            l.LoadBkImage(Paths({"bk0", "bk1", "bk2", "bk3"}));
            l.AddImage(Paths({"l", "m", "r"}), Paths({"cl", "cm", "cr"}));
        } else if (kind == "bt") {
            auto& l = Attach(std::make_unique<Kept<CZELBTList>>());
            l.LoadScrollBitmap(bar, L"");
            l.LoadBitmaps(Paths({"bk0", "bk1", "bk2", "bk3"}), Paths({"l", "m", "r"}), Paths({"cl", "cm", "cr"}),
                          Paths({"icon", "icon"}));
        } else {
            auto& l = Attach(std::make_unique<Kept<CZELListCtrl>>());
            l.LoadBkImage(Paths({"bk0", "bk1", "bk2", "bk3"}));
            // Headings as rows; the marked row's pieces reversed.
            l.LoadSkin(skins.Skin({"l", "m", "r", "cl", "cm", "cr", "l", "m", "r", "cl", "cm", "cr", "r", "m", "l"}),
                       L"");
            l.InsertColumn(0, L"Name", LVCFMT_LEFT, 120);
            l.InsertColumn(1, L"Size", LVCFMT_RIGHT, 60);
        }
        for (int i = 0; i < 7; ++i) {
            CString name;
            name.Format(L"Row %d", i + 1);
            list->InsertItem(i, name, true);
            list->SetItemText(i, 1, L"cell");
        }
        list->UpdataScrollBar();
        desktop.RunUntilIdle();
    }
    CRect RowBand(int k) const {
        const CRect area = rowsArea();
        return CRect(0, area.top + k * kRowHeight, 200, area.top + (k + 1) * kRowHeight);
    }
    void Repaint(const CRect* part = nullptr) {
        list->InvalidateRect(part, FALSE);
        desktop.RunUntilIdle();
    }
    // What the list shows now, and what it shows drawn on a new canvas.
    void ExpectAsDrawnAfresh(const std::string& what) {
        Repaint();
        const zel::test::Image kept = zel::test::CaptureWindow(list->m_hWnd, 0);
        store().Release();
        Repaint();
        const zel::test::Image fresh = zel::test::CaptureWindow(list->m_hWnd, 0);
        ASSERT_EQ(kept.pixels.size(), fresh.pixels.size());
        for (size_t i = 0; i < kept.pixels.size(); ++i)
            ASSERT_EQ(kept.pixels[i], fresh.pixels[i]) << what << ": first difference at (" << i % kept.width << ", "
                                                       << i / kept.width << ")";
    }
    // Marks the kept canvas where a repaint that draws there would cover it.
    void Stray(const CRect& rc) {
        HBRUSH brush = ::CreateSolidBrush(kStray);
        ::FillRect(store().dc(), &rc, brush);
        ::DeleteObject(brush);
    }
    bool StrayShows(const CRect& rc) {
        POINT pt{(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};
        list->ClientToScreen(&pt);
        return zel::test::ScreenPixel(pt.x, pt.y) == kStray;
    }
};

const char* const kKinds[] = {"play", "tel", "bt", "table"};

// Changes a host may make without the list repainting (the selection, the scroll position,
// a row's text through its cells), each followed by a repaint of one band only, so stale
// parts pile up outside the clips; then everything is repainted.
TEST_F(KeptListTest, AfterAnyChangesTheKeptCanvasShowsWhatAFreshOneShows) {
    for (const char* kind : kKinds) {
        SCOPED_TRACE(kind);
        Make(kind);
        const CRect band0 = RowBand(0), band3 = RowBand(3);
        const std::function<void()> steps[] = {
            [&] { list->SetCurSel(2); },
            [&] { rows()[4]->strText = L"A name changed behind the list's back"; },
            [&] { list->SetSelectionMark(5); },
            [&] { list->ScrollTo(2); },
            [&] { TapAt(list->m_hWnd, 60, RowBand(1).top + 5); },
            [&] { list->DeleteItem(6); },
            [&] { list->ScrollTo(0); },
        };
        int n = 0;
        for (const auto& step : steps) {
            step();
            desktop.RunUntilIdle();
            Repaint(n++ % 2 ? &band0 : &band3);
            ExpectAsDrawnAfresh("step " + std::to_string(n));
        }
        list.reset();
        parent.Take();
    }
}

// Nothing changed: a repaint presents the kept canvas (a mark put on it shows). A changed
// row is drawn again (its mark goes) and the others are not.
TEST_F(KeptListTest, ARepaintDrawsOnlyTheRowsThatChanged) {
    for (const char* kind : kKinds) {
        SCOPED_TRACE(kind);
        Make(kind);
        const CRect spot1(40, RowBand(1).top + 4, 50, RowBand(1).top + 8), spot2(40, RowBand(2).top + 4, 50,
                                                                                 RowBand(2).top + 8);
        Stray(spot1);
        Stray(spot2);
        Repaint();
        EXPECT_TRUE(StrayShows(spot1) && StrayShows(spot2)) << "nothing changed: nothing drawn";
        list->SetItemText(1, 0, L"Renamed");
        desktop.RunUntilIdle();
        EXPECT_FALSE(StrayShows(spot1)) << "the renamed row is drawn again";
        EXPECT_TRUE(StrayShows(spot2)) << "its neighbour is not";
        list.reset();
        parent.Take();
    }
}

}  // namespace
