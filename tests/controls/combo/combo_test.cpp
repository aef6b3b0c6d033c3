// CZELComBox: contents and their failure values, opening and closing by taps and keys,
// the upward flip and the exact restore, auto-scroll on the virtual clock, the scroll bar,
// notification order, a parent that destroys the box, and the painted looks.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "DropLayout.h"
#include "gdi/raster.h"
#include "combo_fixture.h"
#include "support/golden.h"

namespace {

using combotest::Commands;
using combotest::kBoxH;
using combotest::kRowH;
using zel::test::kSentinel;

const CRect kTopBox(20, 20, 220, 50);       // room below for any list
const CRect kBottomBox(20, 420, 220, 450);  // 30 pixels below: the list opens upward

class Combo : public combotest::ComboTest {};

// A host written with the framework's combo-box message-map entries.
class MapHost : public CWnd {
public:
    std::string heard;

protected:
    void OnDropDown() { heard += "dropdown;"; }
    void OnCloseUp() { heard += "closeup;"; }
    void OnSelEndOk() { heard += "selendok;"; }
    void OnSelChange() { heard += "selchange;"; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(MapHost, CWnd)
ON_CBN_DROPDOWN(combotest::kId, &MapHost::OnDropDown)
ON_CBN_CLOSEUP(combotest::kId, &MapHost::OnCloseUp)
ON_CBN_SELENDOK(combotest::kId, &MapHost::OnSelEndOk)
ON_CBN_SELCHANGE(combotest::kId, &MapHost::OnSelChange)
END_MESSAGE_MAP()

// ---- contents and failure values -------------------------------------------------------------

TEST_F(Combo, BadIndicesAndNullStringsGiveCbErr) {
    CZELComBox& c = Make(kTopBox, 3);
    WCHAR buffer[32] = L"untouched";
    CString text = L"x";
    const struct {
        const char* call;
        int result;
    } cases[] = {
        {"InsertString(4)", c.InsertString(4, L"past the end")},
        {"InsertString(-2)", c.InsertString(-2, L"x")},
        {"AddString(NULL)", c.AddString(nullptr)},
        {"DeleteString(3)", c.DeleteString(3)},
        {"DeleteString(-1 as UINT)", c.DeleteString(static_cast<UINT>(-1))},
        {"GetLBText(3)", c.GetLBText(3, buffer)},
        {"GetLBText(0, NULL)", c.GetLBText(0, nullptr)},
        {"GetLBTextLen(-1)", c.GetLBTextLen(-1)},
        {"SetItemData(3)", c.SetItemData(3, 5)},
        {"GetItemData(-1)", static_cast<int>(c.GetItemData(-1))},
        {"FindStringExact(missing)", c.FindStringExact(-1, L"item 9")},
        {"FindStringExact(NULL)", c.FindStringExact(-1, nullptr)},
        {"SetDroppedHeight(0)", c.SetDroppedHeight(0)},
        {"GetCurSel(none)", c.GetCurSel()},
        {"SetCurSel(3)", c.SetCurSel(3)},
    };
    for (const auto& k : cases) EXPECT_EQ(k.result, CB_ERR) << k.call;
    EXPECT_STREQ(buffer, L"untouched");
    c.GetLBText(7, text);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(c.GetCount(), 3) << "nothing was added or removed";
    EXPECT_EQ(c.GetDroppedHeight(), 5);
    EXPECT_EQ(parent.Take(), "-") << "no operation notifies";
}

TEST_F(Combo, SelectionFollowsItsItemAndSetCurSelOutOfRangeClearsIt) {
    CZELComBox& c = Make(kTopBox, 4);
    EXPECT_EQ(c.SetCurSel(2), 2);
    EXPECT_EQ(c.InsertString(0, L"first"), 0);
    EXPECT_EQ(c.GetCurSel(), 3) << "an insertion above moves the selection down";
    EXPECT_EQ(c.DeleteString(1), 4) << "returns the items left";
    EXPECT_EQ(c.GetCurSel(), 2);
    EXPECT_EQ(c.DeleteString(2), 3);
    EXPECT_EQ(c.GetCurSel(), CB_ERR) << "the selected item went";
    EXPECT_EQ(c.SetCurSel(1), 1);
    EXPECT_EQ(c.SetCurSel(9), CB_ERR);
    EXPECT_EQ(c.GetCurSel(), CB_ERR) << "an index out of range clears the selection";

    WCHAR buffer[16];
    EXPECT_EQ(c.GetLBText(0, buffer), 5);
    EXPECT_STREQ(buffer, L"first");
    EXPECT_EQ(c.GetLBTextLen(2), 6);
    EXPECT_EQ(c.InsertString(-1, L"ITEM 1"), 3) << "-1 appends";
    EXPECT_EQ(c.FindStringExact(-1, L"item 1"), 1) << "case-blind, from the top";
    EXPECT_EQ(c.FindStringExact(1, L"item 1"), 3) << "starts after nIndexStart";
    EXPECT_EQ(c.FindStringExact(3, L"Item 1"), 1) << "and wraps round";
    EXPECT_EQ(c.SetItemData(2, 0xBEEF), CB_OKAY);
    EXPECT_EQ(c.GetItemData(2), 0xBEEFu);
    c.ResetContent();
    EXPECT_EQ(c.GetCount(), 0);
    EXPECT_EQ(c.GetCurSel(), CB_ERR);
    EXPECT_EQ(parent.Take(), "-");
}

TEST_F(Combo, SortStyleKeepsCaseBlindOrder) {
    CZELComBox& c = Make(kTopBox, 0, WS_VISIBLE | CBS_SORT);
    for (const wchar_t* s : {L"delta", L"Alpha", L"charlie", L"bravo", L"alpha"}) c.AddString(s);
    CString order;
    for (int i = 0; i < c.GetCount(); ++i) {
        CString t;
        c.GetLBText(i, t);
        order += t + L",";
    }
    EXPECT_STREQ(order, L"Alpha,alpha,bravo,charlie,delta,") << "equal texts keep their arrival order";
}

TEST_F(Combo, TenThousandStringsScrollAndSearch) {
    CZELComBox& c = Make(kTopBox, 10000);
    EXPECT_EQ(c.GetCount(), 10000);
    EXPECT_EQ(c.FindStringExact(-1, L"item 9999"), 9999);
    c.SetCurSel(9998);
    desktop.Tap(100, 35);
    ASSERT_TRUE(c.GetDroppedState());
    EXPECT_EQ(c.GetTopIndex(), 9995) << "the selection is shown in the last page";
    long lo = -1, hi = -1;
    c.GetScrollBar()->GetRange(lo, hi);
    EXPECT_EQ(hi, 9995);
    EXPECT_TRUE(c.GetScrollBar()->IsWindowVisible());
    TapRow(4);
    EXPECT_EQ(c.GetCurSel(), 9999);
    EXPECT_EQ(parent.Take(), Commands({CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
    // Closed, the list's top row stays among the items as they go (it was 9995).
    while (c.GetCount() > 10) c.DeleteString(static_cast<UINT>(c.GetCount() - 1));
    EXPECT_EQ(c.GetTopIndex(), 9);
}

// ---- opening and closing -----------------------------------------------------------------------

TEST_F(Combo, TapOpensDownwardAndARowChoosesInTheFrameworkOrder) {
    CZELComBox& c = Make(kTopBox, 8);
    std::string seenInSelEndOk;
    parent.onMessage = [&](UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_COMMAND && HIWORD(wParam) == CBN_SELENDOK)
            seenInSelEndOk = std::to_string(c.GetCurSel()) + (c.GetDroppedState() ? " open" : " closed");
    };
    desktop.Tap(60, 35);
    EXPECT_EQ(parent.Take(), Commands({CBN_DROPDOWN}));
    EXPECT_TRUE(c.GetDroppedState());
    EXPECT_EQ(WindowRect(), CRect(20, 20, 220, 50 + 5 * kRowH)) << "five rows grown downward";
    EXPECT_EQ(CWnd::GetCapture(), &c);
    CRect list;
    c.GetDroppedControlRect(&list);
    EXPECT_EQ(list, CRect(20, 50, 220, 150));

    TapRow(2);
    EXPECT_EQ(parent.Take(), Commands({CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
    EXPECT_EQ(seenInSelEndOk, "2 open") << "the new selection, before the list rolls up";
    EXPECT_EQ(c.GetCurSel(), 2);
    EXPECT_FALSE(c.GetDroppedState());
    EXPECT_EQ(WindowRect(), kTopBox);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(Combo, EveryWayOfClosingWithoutAChoiceCancels) {
    const struct {
        const char* how;
        std::function<void()> close;
    } ways[] = {
        {"tap outside", [this] { desktop.Tap(600, 300); }},
        {"tap on the box", [this] { desktop.Tap(100, 35); }},
        {"tap on the arrow", [this] { desktop.Tap(205, 35); }},
        {"Escape", [this] { Press(VK_ESCAPE); }},
        {"focus lost", [this] { parent.SetFocus(); desktop.RunUntilIdle(); }},
        {"ShowDropDown(FALSE)", [this] { ctl->ShowDropDown(FALSE); }},
    };
    for (const auto& way : ways) {
        CZELComBox& c = Make(kTopBox, 8);
        c.SetCurSel(1);
        desktop.Tap(205, 35);  // the arrow opens as the box does
        ASSERT_TRUE(c.GetDroppedState()) << way.how;
        parent.Take();
        way.close();
        EXPECT_EQ(parent.Take(), Commands({CBN_SELENDCANCEL, CBN_CLOSEUP})) << way.how << ": nothing else reaches the parent";
        EXPECT_FALSE(c.GetDroppedState()) << way.how;
        EXPECT_EQ(c.GetCurSel(), 1) << way.how;
        EXPECT_EQ(WindowRect(), kTopBox) << way.how;
        EXPECT_EQ(CWnd::GetCapture(), nullptr) << way.how;
    }
}

TEST_F(Combo, AHostsMessageMapHearsTheCbnEntries) {
    MapHost host;
    ASSERT_TRUE(host.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &parent, 1));
    ctl = std::make_unique<CZELComBox>();
    ASSERT_TRUE(ctl->Create(WS_VISIBLE, kTopBox, &host, combotest::kId));
    ctl->LoadSkin(BoxSkin(), L"");
    ctl->AddString(L"one");
    desktop.Tap(60, 35);
    TapRow(0);
    EXPECT_EQ(host.heard, "dropdown;selendok;closeup;selchange;");
    ctl.reset();
    host.DestroyWindow();
}

TEST_F(Combo, ASubclassedDialogItemGetsItsBarAndOpens) {
    HWND item = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 20, 20, 200, 30, parent.m_hWnd,
                                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(combotest::kId)), nullptr, nullptr);
    ctl = std::make_unique<CZELComBox>();
    ASSERT_TRUE(ctl->SubclassDlgItem(combotest::kId, &parent));
    parent.Name(item, "combo");
    EXPECT_EQ(ctl->GetDlgItem(9001), ctl->GetScrollBar());
    ctl->LoadSkin(BoxSkin() + BarSkin(), L"");
    ctl->AddString(L"one");
    desktop.Tap(60, 35);
    EXPECT_EQ(WindowRect(), CRect(20, 20, 220, 50 + kRowH));
    EXPECT_EQ(parent.Take(), Commands({CBN_DROPDOWN}));
}

// An empty list opens to nothing; one taller than the screen is cut to the room.
TEST_F(Combo, EmptyListOpensToNothingAndATallOneIsCutToTheRoom) {
    CZELComBox& c = Make(kTopBox, 0);
    desktop.Tap(60, 35);
    EXPECT_TRUE(c.GetDroppedState());
    EXPECT_EQ(WindowRect(), kTopBox) << "no rows, no growth";
    desktop.Tap(60, 35);
    EXPECT_FALSE(c.GetDroppedState());
    EXPECT_EQ(parent.Take(), Commands({CBN_DROPDOWN, CBN_SELENDCANCEL, CBN_CLOSEUP}));

    CZELComBox& tall = Make(CRect(20, 200, 220, 230), 100);
    EXPECT_EQ(tall.SetDroppedHeight(50), 50);
    desktop.Tap(60, 215);
    EXPECT_EQ(WindowRect(), CRect(20, 200, 220, 230 + 12 * kRowH)) << "250 pixels below hold 12 rows";
    EXPECT_TRUE(tall.GetScrollBar()->IsWindowVisible());
}

TEST_F(Combo, NearTheBottomTheListOpensUpwardAndCloseRestoresExactly) {
    CZELComBox& c = Make(kBottomBox, 3);
    EXPECT_EQ(zel::test::ScreenPixel(100, 400), kSentinel);
    desktop.Tap(60, 435);
    EXPECT_EQ(WindowRect(), CRect(20, 420 - 3 * kRowH, 220, 450)) << "three rows above the box";
    CRect list;
    c.GetDroppedControlRect(&list);
    EXPECT_EQ(list, CRect(20, 360, 220, 420));
    EXPECT_EQ(zel::test::ScreenPixel(100, 435), combotest::kMiddle) << "the box stays where it was";
    EXPECT_NE(zel::test::ScreenPixel(100, 400), kSentinel) << "the list covers the parent";

    TapRow(0);
    EXPECT_EQ(c.GetCurSel(), 0);
    EXPECT_EQ(WindowRect(), kBottomBox);
    EXPECT_EQ(zel::test::ScreenPixel(100, 400), kSentinel) << "what the list covered is repainted";
    EXPECT_EQ(zel::test::ScreenPixel(100, 361), kSentinel);
    EXPECT_EQ(parent.Take(), Commands({CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
}

TEST_F(Combo, CloseRestoresTheZOrderUnderASibling) {
    CZELComBox& c = Make(kTopBox, 8);
    CWnd sibling;
    ASSERT_TRUE(sibling.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(300, 20, 340, 60), &parent, 5));
    EXPECT_EQ(c.GetWindow(GW_HWNDPREV)->m_hWnd, sibling.m_hWnd);
    desktop.Tap(60, 35);
    EXPECT_EQ(c.GetWindow(GW_HWNDPREV), nullptr) << "open, the box is on top";
    desktop.Tap(600, 300);
    ASSERT_NE(c.GetWindow(GW_HWNDPREV), nullptr);
    EXPECT_EQ(c.GetWindow(GW_HWNDPREV)->m_hWnd, sibling.m_hWnd) << "closed, back under the sibling";
    sibling.DestroyWindow();
}

// ---- keys --------------------------------------------------------------------------------------

TEST_F(Combo, KeysStepTheClosedBoxAndDriveTheOpenList) {
    CZELComBox& c = Make(kTopBox, 8);
    c.SetFocus();
    const int ok = CBN_SELENDOK, change = CBN_SELCHANGE;
    const struct {
        UINT vk;
        int sel;
        BOOL dropped;
        std::string log;
    } steps[] = {
        {VK_DOWN, 0, FALSE, Commands({ok, change})},  // from no selection to the first
        {VK_DOWN, 1, FALSE, Commands({ok, change})},
        {VK_UP, 0, FALSE, Commands({ok, change})},
        {VK_UP, 0, FALSE, "-"},  // at the top nothing changes, nothing is told
        {VK_RETURN, 0, TRUE, Commands({CBN_DROPDOWN})},
        {VK_DOWN, 0, TRUE, "-"},  // open, the keys move the lit row only
        {VK_DOWN, 0, TRUE, "-"},
        {VK_RETURN, 2, FALSE, Commands({ok, CBN_CLOSEUP, change})},
        {VK_RETURN, 2, TRUE, Commands({CBN_DROPDOWN})},
        {VK_RETURN, 2, FALSE, Commands({ok, CBN_CLOSEUP})},  // the same row: no change to tell
        {VK_RETURN, 2, TRUE, Commands({CBN_DROPDOWN})},
        {VK_UP, 2, TRUE, "-"},
        {VK_ESCAPE, 2, FALSE, Commands({CBN_SELENDCANCEL, CBN_CLOSEUP})},
    };
    int n = 0;
    for (const auto& s : steps) {
        Press(s.vk);
        EXPECT_EQ(parent.Take(), s.log) << "step " << n;
        EXPECT_EQ(c.GetCurSel(), s.sel) << "step " << n;
        EXPECT_EQ(c.GetDroppedState(), s.dropped) << "step " << n;
        ++n;
    }
}

TEST_F(Combo, KeysScrollTheLitRowIntoView) {
    CZELComBox& c = Make(kTopBox, 8);
    c.SetFocus();
    Press(VK_RETURN);
    for (int i = 0; i < 7; ++i) Press(VK_DOWN);  // the first lights row 0
    EXPECT_EQ(c.GetTopIndex(), 2) << "row 6 is the last of five visible rows";
    EXPECT_EQ(c.GetScrollBar()->GetScrollPos(), 2);
    Press(VK_RETURN);
    EXPECT_EQ(c.GetCurSel(), 6);
}

// ---- dragging and the scroll bar ---------------------------------------------------------------

TEST_F(Combo, DraggingPastEitherEdgeScrollsOneRowEvery100Ms) {
    CZELComBox& c = Make(kTopBox, 20);
    desktop.Tap(60, 35);
    const POINT row1 = RowOnScreen(1);
    desktop.PointerDown(row1.x, row1.y);
    desktop.PointerMove(row1.x, 200);  // below the list (it ends at 150)
    EXPECT_EQ(c.GetTopIndex(), 0) << "no row before the first tick";
    const struct {
        DWORD advance;
        int top;
    } below[] = {{99, 0}, {1, 1}, {100, 2}, {300, 5}};
    for (const auto& s : below) {
        desktop.Advance(s.advance);
        EXPECT_EQ(c.GetTopIndex(), s.top) << "after " << s.advance;
    }
    EXPECT_EQ(c.GetScrollBar()->GetScrollPos(), 5) << "the bar follows";
    desktop.PointerMove(row1.x, row1.y);  // back over the list: the repeat stops
    desktop.Advance(500);
    EXPECT_EQ(c.GetTopIndex(), 5);
    desktop.PointerMove(row1.x, 10);  // above the list, past the box too
    desktop.Advance(200);
    EXPECT_EQ(c.GetTopIndex(), 3);
    desktop.PointerUp(row1.x, 10);  // released off the rows: still open, nothing chosen
    desktop.Advance(300);
    EXPECT_EQ(c.GetTopIndex(), 3);
    EXPECT_TRUE(c.GetDroppedState());
    EXPECT_EQ(parent.Take(), Commands({CBN_DROPDOWN}));

    // Press on the box, drag into the list, release on a row: chosen (the framework's drag).
    desktop.Tap(600, 300);
    parent.Take();
    desktop.PointerDown(60, 35);
    const POINT row3 = RowOnScreen(3);
    desktop.PointerMove(row3.x, row3.y);
    desktop.PointerUp(row3.x, row3.y);
    EXPECT_EQ(c.GetCurSel(), 3);
    EXPECT_EQ(parent.Take(), Commands({CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
}

TEST_F(Combo, TheScrollBarTakesItsTapsAndTheListStaysOpen) {
    CZELComBox& c = Make(kTopBox, 8);
    desktop.Tap(60, 35);
    CZELScrollbar& bar = *c.GetScrollBar();
    ASSERT_TRUE(bar.IsWindowVisible());
    EXPECT_EQ(bar.GetDlgCtrlID(), 9001);
    CRect place;
    bar.GetWindowRect(&place);
    EXPECT_EQ(place, CRect(220 - combotest::kBarW, 50, 220, 150)) << "at the list's right edge, as tall as it";
    desktop.Tap(place.left + 6, place.bottom - 4);  // the down arrow
    EXPECT_EQ(c.GetTopIndex(), 1);
    EXPECT_TRUE(c.GetDroppedState());
    EXPECT_EQ(CWnd::GetCapture(), &c) << "the capture came back";
    EXPECT_EQ(CWnd::GetFocus(), &c);
    TapRow(0);
    EXPECT_EQ(c.GetCurSel(), 1) << "the first visible row is item 1 now";
    EXPECT_EQ(parent.Take(), Commands({CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
    EXPECT_FALSE(bar.IsWindowVisible()) << "closed, the bar hides";
}

// ---- a parent that destroys the box ---------------------------------------------------------------

TEST_F(Combo, AParentMayDestroyTheBoxInsideItsNotifications) {
    for (int code : {CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE, CBN_DROPDOWN}) {
        CZELComBox& c = Make(kTopBox, 8);
        HWND hwnd = c.m_hWnd;
        parent.onMessage = [&, code](UINT message, WPARAM wParam, LPARAM) {
            if (message == WM_COMMAND && HIWORD(wParam) == code && ::IsWindow(hwnd)) ::DestroyWindow(hwnd);
        };
        desktop.Tap(60, 35);
        if (::IsWindow(hwnd)) TapRow(2);
        parent.onMessage = nullptr;
        EXPECT_FALSE(::IsWindow(hwnd)) << code;
        EXPECT_EQ(CWnd::GetCapture(), nullptr) << code;
        std::string log = parent.Take();
        EXPECT_EQ(log.substr(log.rfind("COMMAND(77,") + 11, std::to_string(code).size()), std::to_string(code))
            << code << ": nothing after the fatal notification; log " << log;
        ctl.reset();
    }
}

// ---- skins -------------------------------------------------------------------------------------------

TEST_F(Combo, ResourceIdentifiersLoadTheSameSkinAsFiles) {
    CZELComBox& c = Make(kTopBox, 3);
    HINSTANCE module = skins.Module({{1, "left"}, {2, "middle"}, {3, "right"}, {4, "arrow"}, {5, "arrow_down"},
                                     {6, "row"}, {7, "row_lit"}, {11, "thumb"}, {12, "thumb_down"}, {13, "track"},
                                     {14, "up"}, {15, "down"}, {16, "down_down"}, {17, "up_down"}});
    ASSERT_NE(module, nullptr);
    c.LoadBitmapW(L"", L"", L"", L"", L"", L"", L"");
    desktop.RunUntilIdle();
    EXPECT_EQ(c.GetItemHeight(), 24) << "no row piece: the default row height";
    c.LoadBitmapW(1, 2, 3, 4, 5, 6, 7, module);
    c.LoadScrollBitmap(11, 12, 13, 14, 15, 16, 17, module);
    desktop.RunUntilIdle();
    EXPECT_EQ(c.GetItemHeight(), kRowH);
    EXPECT_EQ(zel::test::ScreenPixel(22, 35), combotest::kCap);
    EXPECT_EQ(zel::test::ScreenPixel(100, 22), combotest::kMiddle);
    EXPECT_EQ(zel::test::ScreenPixel(205, 35), combotest::kArrow);
}

// ---- looks --------------------------------------------------------------------------------------------

TEST_F(Combo, Looks) {
    CZELComBox& c = Make(kTopBox, 8);
    c.SetCurSel(1);
    desktop.RunUntilIdle();
    const RECT closed{kTopBox.left - 2, kTopBox.top - 2, kTopBox.right + 2, kTopBox.bottom + 2};
    EXPECT_TRUE(zel::test::ScreenMatchesGolden("CZELComBox", "closed", closed));

    desktop.Tap(60, 35);  // eight items in five rows: the bar shows, item 1 lit
    EXPECT_TRUE(zel::test::ScreenMatchesGolden("CZELComBox", "open_down_scrollbar", RECT{18, 18, 222, 152}));
    desktop.Tap(600, 300);

    CZELComBox& low = Make(kBottomBox, 3);
    low.SetCurSel(2);
    desktop.Tap(60, 435);
    EXPECT_TRUE(zel::test::ScreenMatchesGolden("CZELComBox", "open_up", RECT{18, 358, 222, 452}));
}

// ---- kept pictures ---------------------------------------------------------------------------

std::vector<COLORREF> Pixels(const RECT& r) { return zel::test::CaptureScreen(r).pixels; }

// The box keeps its closed and its open picture and each row kind stretched. Whatever
// changes while the list is closed, opening it again shows what a box opening for the first
// time in that state shows, and closing it shows the box as it now is.
TEST_F(Combo, KeptPicturesFollowEveryChange) {
    skins.Solid("row2", 10, kRowH, RGB(250, 200, 0));
    const CString otherRows = skins.Skin({"left", "middle", "right", "arrow", "arrow_down", "row2", "row_lit"});
    using Change = std::function<void(CZELComBox&)>;
    const struct {
        const char* name;
        int items;
        Change change;
    } cases[] = {
        {"nothing", 8, [](CZELComBox&) {}},
        {"SetCurSel", 8, [](CZELComBox& c) { c.SetCurSel(3); }},
        {"SetCurSel, scrolled", 8, [](CZELComBox& c) { c.SetCurSel(7); }},
        {"SetCurSel, the same rows", 3, [](CZELComBox& c) { c.SetCurSel(2); }},
        {"SetTextColor", 3, [](CZELComBox& c) { c.SetTextColor(RGB(200, 0, 0), RGB(0, 0, 200)); }},
        {"InsertString at the top", 3, [](CZELComBox& c) { c.InsertString(0, L"first"); }},
        {"DeleteString", 3, [](CZELComBox& c) { c.DeleteString(1); }},
        {"another row piece", 3, [&](CZELComBox& c) { c.LoadSkin(otherRows, L""); }},
        {"SetFontHeight", 3, [](CZELComBox& c) { c.SetFontHeight(12); }},
        {"fewer dropped rows", 8, [](CZELComBox& c) { c.SetDroppedHeight(2); }},
    };
    const RECT open{18, 18, 222, 152}, closed{18, 18, 222, 52};
    for (const auto& k : cases) {
        CZELComBox& kept = Make(kTopBox, k.items);
        kept.SetCurSel(2);
        desktop.Tap(60, 35);  // the list's first paint, on a new canvas
        desktop.Tap(600, 300);
        kept.SetCurSel(1);
        desktop.Tap(60, 35);  // drawn again on the kept canvas, from the row kinds kept aside
        desktop.Tap(600, 300);
        k.change(kept);
        desktop.Tap(60, 35);
        const std::vector<COLORREF> keptOpen = Pixels(open);
        desktop.Tap(600, 300);
        const std::vector<COLORREF> keptClosed = Pixels(closed);

        CZELComBox& fresh = Make(kTopBox, k.items, 0);  // hidden: nothing painted yet
        fresh.SetCurSel(1);
        k.change(fresh);
        fresh.ShowWindow(SW_SHOW);
        desktop.Tap(60, 35);
        EXPECT_TRUE(Pixels(open) == keptOpen) << k.name << ": open";
        desktop.Tap(600, 300);
        EXPECT_TRUE(Pixels(closed) == keptClosed) << k.name << ": closed";
    }
}

// Opening a list that did not change presents the kept picture: no more pixels than the
// window's, where a list with a new selection is drawn again (fill, rows, box, captions)
// before it is presented.
TEST_F(Combo, OpeningAnUnchangedListOnlyPresents) {
    CZELComBox& c = Make(kTopBox, 3);  // three rows: no bar
    auto open = [&] {
        const uint64_t before = zel::gdi::pixelsWritten;
        desktop.Tap(60, 35);
        const uint64_t written = zel::gdi::pixelsWritten - before;
        desktop.Tap(600, 300);
        return written;
    };
    const uint64_t area = static_cast<uint64_t>(kTopBox.Width()) * static_cast<uint64_t>(kBoxH + 3 * kRowH);
    open();
    EXPECT_LE(open(), area) << "unchanged";
    c.SetCurSel(2);
    EXPECT_GT(open(), 2 * area) << "another lit row";
    EXPECT_LE(open(), area) << "and kept";
}

// ---- the drop rule -------------------------------------------------------------------------------------

TEST(DropLayout, OpensWhereTheListFits) {
    const struct {
        const char* name;
        RECT box;
        int count, rows;
        int shown;
        bool upward;
    } cases[] = {
        {"room below", {0, 20, 100, 50}, 8, 5, 5, false},
        {"fewer items than rows", {0, 20, 100, 50}, 2, 5, 2, false},
        {"no items", {0, 20, 100, 50}, 0, 5, 0, false},
        {"exactly fits below", {0, 330, 100, 380}, 8, 5, 5, false},
        {"one pixel short below", {0, 331, 100, 381}, 8, 5, 5, true},
        {"neither side: the roomier", {0, 200, 100, 260}, 100, 50, 11, false},
        {"neither side, more above", {0, 300, 100, 330}, 100, 50, 15, true},
        {"box past the screen's bottom", {0, 470, 100, 500}, 3, 5, 3, true},
    };
    for (const auto& k : cases) {
        const zelctl::DropLayout plan = zelctl::PlanDropList(k.box, 480, k.count, k.rows, 20);
        EXPECT_EQ(plan.rows, k.shown) << k.name;
        EXPECT_EQ(plan.upward, k.upward) << k.name;
        EXPECT_EQ(plan.listHeight, k.shown * 20) << k.name;
    }
    EXPECT_EQ(zelctl::PlanDropList(RECT{0, 0, 10, 10}, 480, 5, 5, 0).rows, 0) << "no row height, no rows";
}

}  // namespace
