// CZELDate driven through its buttons: wrap-around in both styles, one WM_COMMAND per
// step, held-button streams, layout, painting and bad input.
#include <CZELDate.h>

#include <climits>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "gdi/raster.h"

#include "spin_skin.h"
#include "support/control_test.h"
#include "support/golden.h"

namespace {

using namespace zel::test;
using namespace datetimetest;

constexpr UINT kId = 41;

class SpinProbe : public CZELDate {
public:
    using CZELDate::m_rcText;
    using CZELDate::m_nValue;
    HWND add() const { return m_btnAdd.m_hWnd; }
    HWND def() const { return m_btnDef.m_hWnd; }
};

class Spinner : public ControlTest {
protected:
    std::unique_ptr<SpinProbe> ctl;
    CString names = WriteSpinSkin(skins, false);
    void TearDown() override {
        ctl.reset();
        ControlTest::TearDown();
    }
    // Value style 60 x 130, or string style 200 x 40 with "one", "two", "three"; hidden
    // (`show` 0), it is not painted until shown.
    SpinProbe& Make(bool strings = false, DWORD show = WS_VISIBLE) {
        ctl = std::make_unique<SpinProbe>();
        EXPECT_TRUE(ctl->Create(L"spin", WS_CHILD | show, CRect(10, 10, 70, 140), &parent, kId));
        parent.Name(ctl->m_hWnd, "spin");
        if (strings) {
            ctl->SetVStyle(false);
            for (const wchar_t* s : {L"one", L"two", L"three"}) ctl->InsertStr(s);
            ctl->MoveWindow(10, 10, 200, 40, true);
        }
        ctl->LoadSkin(Folder(skins), names);
        if (!strings) ctl->MoveWindow(10, 10, 60, 130, true);
        desktop.RunUntilIdle();
        parent.Take();
        return *ctl;
    }
    void Tap(HWND button) {
        desktop.Advance(1000);  // never a double tap
        TapAt(button, 20, 20);
    }
};

TEST_F(Spinner, ValueStyleWrapsWithOneCommandPerStep) {
    auto& s = Make();
    ASSERT_TRUE(s.SetRang(1, 12));
    struct Case {
        int from;
        bool add;
        int to;
    } cases[] = {{12, true, 1}, {1, false, 12}, {5, true, 6}, {5, false, 4}};
    for (const Case& c : cases) {
        ASSERT_TRUE(s.SetPos(c.from));
        Tap(c.add ? s.add() : s.def());
        EXPECT_EQ(s.GetCurValue(), c.to) << c.from << (c.add ? " add" : " Def");
        EXPECT_EQ(parent.Take(), "COMMAND(41,0,spin)");
    }
}

TEST_F(Spinner, StringStyleCyclesEveryString) {
    auto& s = Make(true);
    std::string seen;
    for (int i = 0; i < 4; ++i) {
        Tap(s.add());
        seen += std::to_string(s.GetCurValue());
    }
    EXPECT_EQ(seen, "1201");
    ASSERT_TRUE(s.SetPos(0));
    Tap(s.def());
    CString text;
    s.GetCurValue(text);
    EXPECT_EQ(text, CString(L"three"));
    EXPECT_EQ(parent.Take(), "COMMAND(41,0,spin);COMMAND(41,0,spin);COMMAND(41,0,spin);COMMAND(41,0,spin);"
                             "COMMAND(41,0,spin)");
    EXPECT_FALSE(s.SetRang(0, 5));  // never in string style
}

TEST_F(Spinner, RangesPositionsAndStrings) {
    CZELDate s;  // no window: the setters still hold
    EXPECT_FALSE(s.SetRang(5, 3));
    EXPECT_TRUE(s.SetRang(1, 100));
    s.SetCurValue(40);
    EXPECT_TRUE(s.SetRang(1, 31));
    EXPECT_EQ(s.GetCurValue(), 31);
    EXPECT_FALSE(s.SetPos(32));
    EXPECT_FALSE(s.SetPos(0));
    s.SetCurValue(99);  // outside: ignored
    EXPECT_EQ(s.GetCurValue(), 31);

    CZELDate list;
    list.SetVStyle(false);
    CString text = L"x";
    list.GetCurValue(text);
    EXPECT_EQ(text, CString());  // no string at all
    list.InsertStr(L"");
    EXPECT_EQ(list.GetCurValue(), 0);  // the index is set even by an empty string
    list.GetCurValue(text);
    EXPECT_EQ(text, CString());
    list.InsertStr(L"a");
    EXPECT_TRUE(list.SetPos(1));  // one past the last string: accepted, shows nothing
    list.GetCurValue(text);
    EXPECT_EQ(text, CString());

    // A range taken in value style down to INT_MIN, then stepped as strings.
    CZELDate odd;
    EXPECT_TRUE(odd.SetRang(INT_MIN, INT_MIN));
    odd.SetVStyle(false);
    odd.OnBtnAdd();
    odd.OnBtnDef();
    EXPECT_EQ(odd.GetCurValue(), INT_MIN);

    // A range that already ends at INT_MAX has no room to grow: the string is still
    // added and the range keeps its end.
    CZELDate full;
    EXPECT_TRUE(full.SetRang(0, INT_MAX));
    full.InsertStr(L"extra");
    EXPECT_TRUE(full.SetPos(INT_MAX));
    EXPECT_EQ(full.GetCurValue(), INT_MAX);
    full.SetVStyle(false);
    full.GetCurValue(text);
    EXPECT_EQ(text, CString(L"extra"));
}

TEST_F(Spinner, HeldButtonRepeatsAtTheButtonsRate) {
    auto& s = Make();
    s.SetRang(0, 99);
    parent.timed = true;
    desktop.Advance(1000);
    const DWORD t0 = desktop.Now();
    DownAt(s.add(), 20, 20);
    desktop.Advance(1000);
    UpAt(s.add(), 20, 20);
    std::vector<DWORD> expected;
    for (DWORD t = 300; t <= 1000; t += 100) expected.push_back(t0 + t);
    expected.push_back(t0 + 1000);  // the release's own click
    EXPECT_EQ(parent.Times(WM_COMMAND), expected);
    EXPECT_EQ(s.GetCurValue(), 9);
}

// The colours the skin's samples give, the buttons' size and places and the value style's
// text box are the goldens'; here, the string style's text box after the skin and a move.
TEST_F(Spinner, StringStyleTextBoxFollowsSkinAndMove) {
    // String style: the skin leaves 10 pixels beside the buttons, a move 5.
    auto& t = Make(true);
    EXPECT_EQ(t.m_rcText, CRect(55, 6, 145, 34));
    t.MoveWindow(CRect(10, 10, 210, 50), true);
    EXPECT_EQ(t.m_rcText, CRect(50, 6, 150, 34));
    // Too few names: nothing changes.
    t.LoadSkin(Folder(skins), L"add.bmp|add_f.bmp|add_d.bmp|def.bmp|def_f.bmp|def_d.bmp|back.bmp|frame.bmp|box.bmp");
    EXPECT_EQ(t.m_rcText, CRect(50, 6, 150, 34));
}

TEST_F(Spinner, DigitsAreCentredInTheBox) {
    auto& s = Make();
    s.SetRang(0, 100);
    s.SetTextCol(RGB(200, 0, 200));
    struct Case {
        int value;
        int width;  // ink of n glyph boxes 8 wide, 5 apart, stroked 2 wide ("1" starts 2 in)
    } cases[] = {{7, 2 * 13 - 5 + 2}, {100, 3 * 13 - 5 + 2 - 2}};
    for (const Case& c : cases) {
        s.SetPos(c.value);
        desktop.RunUntilIdle();
        const CRect ink = InkBox(s.m_hWnd, RGB(200, 0, 200));
        EXPECT_EQ(ink.Width(), c.width) << c.value;
        EXPECT_NEAR(ink.left + ink.right, s.m_rcText.left + s.m_rcText.right, 2) << c.value;
    }
    s.SetPos(7);
    desktop.RunUntilIdle();
    EXPECT_TRUE(WindowMatchesGolden("CZELDate", "value", s.m_hWnd));
    DownAt(s.add(), 20, 20);
    EXPECT_TRUE(WindowMatchesGolden("CZELDate", "value_pressed", s.m_hWnd));
    UpAt(s.add(), 20, 20);
    auto& t = Make(true);
    desktop.Advance(1000);
    EXPECT_TRUE(WindowMatchesGolden("CZELDate", "string", t.m_hWnd));
    DownAt(t.def(), 20, 20);
    EXPECT_TRUE(WindowMatchesGolden("CZELDate", "string_pressed", t.m_hWnd));
    UpAt(t.def(), 20, 20);
}

// The spinner keeps its picture between paints. Whatever changes after a paint, by any
// path (a step, a setter, a setter that does not repaint, a subclass writing a member), the
// next paint shows what a spinner painting for the first time in that state shows.
TEST_F(Spinner, KeptPictureFollowsEveryChange) {
    skins.Solid("back2", 2, 2, RGB(30, 30, 60));
    skins.Solid("frame2", 2, 2, RGB(250, 0, 0));
    skins.Solid("box2", 2, 2, RGB(0, 40, 0));
    const CString otherColours = L"add.bmp|add_f.bmp|add_d.bmp|def.bmp|def_f.bmp|def_d.bmp|back2.bmp|frame2.bmp|box2.bmp|";
    using Step = std::function<void(SpinProbe&)>;
    const struct {
        const char* name;
        bool strings;
        Step change;
    } cases[] = {
        {"a step", false, [](SpinProbe& s) { s.OnBtnAdd(); }},
        {"SetPos", false, [](SpinProbe& s) { s.SetPos(42); }},
        {"SetCurValue", false, [](SpinProbe& s) { s.SetCurValue(9); }},
        {"SetRang clamping", false, [](SpinProbe& s) { s.SetRang(50, 60); }},
        {"SetTextCol", false, [](SpinProbe& s) { s.SetTextCol(RGB(200, 0, 200)); }},
        {"other colours", false, [&](SpinProbe& s) { s.LoadSkin(Folder(skins), otherColours); }},
        {"smaller", false, [](SpinProbe& s) { s.MoveWindow(10, 10, 50, 110, true); }},
        {"a member written", false, [](SpinProbe& s) { s.m_nValue = 77; }},
        {"to strings, unrepainted", false,
         [](SpinProbe& s) {
             s.SetVStyle(false);
             s.InsertStr(L"late");
         }},
        {"a string step", true, [](SpinProbe& s) { s.OnBtnDef(); }},
        {"InsertStr, unrepainted", true, [](SpinProbe& s) { s.InsertStr(L"four"); }},
    };
    auto make = [&](bool strings, DWORD show) -> SpinProbe& {
        SpinProbe& s = Make(strings, show);
        if (!strings) s.SetRang(0, 99);
        desktop.RunUntilIdle();
        return s;
    };
    for (const auto& c : cases) {
        SpinProbe& kept = make(c.strings, WS_VISIBLE);
        c.change(kept);
        kept.Invalidate(FALSE);  // a repaint from outside, whether or not the change asked for one
        desktop.RunUntilIdle();
        const std::vector<COLORREF> changed = CaptureWindow(kept.m_hWnd, 0).pixels;

        ctl.reset();
        SpinProbe& fresh = make(c.strings, 0);
        c.change(fresh);
        fresh.ShowWindow(SW_SHOW);  // its first paint
        desktop.RunUntilIdle();
        EXPECT_TRUE(CaptureWindow(fresh.m_hWnd, 0).pixels == changed) << c.name;
        ctl.reset();
        desktop.RunUntilIdle();
    }
}

// A repaint that changes nothing (the screen under it repainted) presents the kept
// picture: it writes no more than the client area, where a change fills, frames and
// strokes the digits before presenting.
TEST_F(Spinner, RepaintWithoutAChangeOnlyPresents) {
    auto& s = Make();
    s.SetRang(0, 99);
    desktop.RunUntilIdle();
    CRect client;
    s.GetClientRect(&client);
    const uint64_t area = static_cast<uint64_t>(client.Width()) * static_cast<uint64_t>(client.Height());
    auto repaint = [&] {
        const uint64_t before = zel::gdi::pixelsWritten;
        s.Invalidate(FALSE);
        desktop.RunUntilIdle();
        return zel::gdi::pixelsWritten - before;
    };
    EXPECT_LE(repaint(), area) << "unchanged";
    s.SetPos(12);
    EXPECT_GT(repaint(), area) << "a new value is drawn";
    EXPECT_LE(repaint(), area) << "and kept";
}

TEST_F(Spinner, ParentDestroyingItInsideTheCommand) {
    auto& s = Make();
    s.SetRang(0, 9);
    parent.onMessage = [&](UINT message, WPARAM, LPARAM) {
        if (message == WM_COMMAND && ctl && ::IsWindow(ctl->m_hWnd)) ctl->DestroyWindow();
    };
    const HWND hwnd = s.m_hWnd;
    DownAt(s.add(), 20, 20);
    desktop.Advance(400);  // the first repeat destroys it; no timer outlives it
    EXPECT_FALSE(::IsWindow(hwnd));
    UpAt(s.add(), 20, 20);
    desktop.Advance(1000);
    EXPECT_EQ(parent.Take(), "COMMAND(41,0,spin)");
}

}  // namespace
