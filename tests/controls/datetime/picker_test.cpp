// CDataTimectrl and CTimeData driven through the desktop: the calendar and clock steps
// through the key pump, field and cell selection by tap, following the clock, painting.
#include <CDataTimectrl.h>
#include <CTimeData.h>

#include <memory>
#include <string>
#include <utility>

#include "spin_skin.h"
#include "support/control_test.h"
#include "support/golden.h"

namespace {

using namespace zel::test;
using datetimetest::Hms;
using datetimetest::Ymd;

constexpr UINT kId = 31;
const CRect kPlace(10, 10, 130, 30);  // 120 x 20 in the parent

// Exposes the state and counts the keys that got past PreTranslateMessage.
template <class Base>
class Probe : public Base {
public:
    using Base::m_nCurField;
    using Base::m_rcField;
    int dispatchedKeys = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_KEYDOWN) ++dispatchedKeys;
        return Base::WindowProc(message, wParam, lParam);
    }
};

class TimeDataProbe : public Probe<CTimeData> {
public:
    using CTimeData::m_nCurChar;
};

SYSTEMTIME Date(WORD y, WORD m, WORD d) { return SYSTEMTIME{y, m, 0, d, 0, 0, 0, 0}; }
SYSTEMTIME Clock(WORD h, WORD m, WORD s) { return SYSTEMTIME{2026, 1, 4, 1, h, m, s, 0}; }

class Picker : public ControlTest {
protected:
    std::unique_ptr<Probe<CDataTimectrl>> ctl;
    void TearDown() override {
        ctl.reset();
        ControlTest::TearDown();
    }

    Probe<CDataTimectrl>& Make(int style, SYSTEMTIME t) {
        ctl = std::make_unique<Probe<CDataTimectrl>>();
        EXPECT_TRUE(ctl->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kPlace, &parent, kId));
        ctl->SetStyle(style);
        ctl->SetTime(&t);
        ctl->SetFocus();
        desktop.RunUntilIdle();
        return *ctl;
    }
    // Selects field `field` with Right presses from no selection, then presses `key`.
    SYSTEMTIME Step(int field, UINT key) {
        for (int i = 0; i <= field; ++i) Press(VK_RIGHT);
        Press(key);
        SYSTEMTIME t{};
        ctl->GetTime(&t);
        return t;
    }
};

// A key pressed on one field of a picker of `style` showing `from`, and the time it then
// holds (as Ymd for dates, Hms for times).
struct StepCase {
    int style;
    SYSTEMTIME from;
    int field;
    UINT key;
    const char* expected;
};

TEST_F(Picker, DateStepsKeepTheirQuirksAndClampTheDayTimeFieldsWrap) {
    const StepCase cases[] = {
        {0, Date(2026, 11, 15), 1, VK_UP, "2026-0-15"},  // November steps up to 0
        {0, Date(2026, 0, 15), 1, VK_UP, "2026-1-15"},
        {0, Date(2026, 1, 15), 1, VK_DOWN, "2026-12-15"},
        {0, Date(2026, 0, 15), 1, VK_DOWN, "2026-65535-15"},  // only exactly 0 wraps
        {0, Date(2026, 1, 30), 2, VK_UP, "2026-1-0"},  // the last day is skipped going up
        {0, Date(2026, 1, 0), 2, VK_UP, "2026-1-1"},
        {0, Date(2026, 1, 1), 2, VK_DOWN, "2026-1-31"},
        {0, Date(2024, 2, 1), 2, VK_DOWN, "2024-2-29"},
        {0, Date(2999, 5, 5), 0, VK_UP, "2999-5-5"},
        {0, Date(2000, 5, 5), 0, VK_DOWN, "2000-5-5"},
        {0, Date(2024, 2, 29), 0, VK_UP, "2025-2-28"},
        {0, Date(2400, 2, 29), 0, VK_DOWN, "2399-2-28"},
        {0, Date(2026, 3, 31), 1, VK_DOWN, "2026-2-28"},
        {0, Date(2024, 1, 31), 1, VK_UP, "2024-2-29"},
        {0, Date(2026, 11, 31), 1, VK_UP, "2026-0-30"},  // month 0 counts 30 days
        {1, Clock(0, 0, 0), 0, VK_DOWN, "23:0:0"}, {1, Clock(23, 0, 0), 0, VK_UP, "0:0:0"},
        {1, Clock(0, 59, 0), 1, VK_UP, "0:0:0"},   {1, Clock(0, 0, 0), 1, VK_DOWN, "0:59:0"},
        {1, Clock(0, 0, 59), 2, VK_UP, "0:0:0"},   {1, Clock(0, 0, 0), 2, VK_DOWN, "0:0:59"},
        {1, Clock(23, 59, 59), 2, VK_UP, "23:59:0"},  // fields step alone: no carry
    };
    for (const StepCase& c : cases) {
        auto show = c.style ? Hms : Ymd;
        Make(c.style, c.from);
        EXPECT_EQ(show(Step(c.field, c.key)), c.expected) << show(c.from) << " field " << c.field;
    }
}

TEST_F(Picker, ArrowKeysAreEatenBeforeDispatchOthersAreNot) {
    auto& p = Make(0, Date(2026, 5, 5));
    for (UINT vk : {VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN}) desktop.KeyDown(vk);
    EXPECT_EQ(p.dispatchedKeys, 0);
    desktop.KeyDown(VK_RETURN);
    EXPECT_EQ(p.dispatchedKeys, 1);
    // Left from no selection goes to the last field, Right to the first.
    for (auto [vk, field] : {std::pair{VK_LEFT, 2}, std::pair{VK_RIGHT, 0}}) {
        parent.SetFocus();
        ctl->SetFocus();
        Press(vk);
        EXPECT_EQ(p.m_nCurField, field) << vk;
    }
}

TEST_F(Picker, TapSelectsTheFieldPaintedThereAndFocusLossClears) {
    auto& p = Make(0, Date(2026, 11, 15));
    // 2026 at 4..47, "-", 11 at 59..80, "-", 15 at 92..113 (each glyph 6 + a 5 gap).
    EXPECT_EQ(CRect(p.m_rcField[0]), CRect(4, 0, 48, 20));
    EXPECT_EQ(CRect(p.m_rcField[2]), CRect(92, 0, 114, 20));
    struct Case {
        int x;
        int field;
    } taps[] = {{10, 0}, {50, 0}, {60, 1}, {100, 2}, {118, 2}, {4, 0}, {47, 0}};
    for (const Case& c : taps) {
        TapAt(p.m_hWnd, c.x, 10);
        EXPECT_EQ(p.m_nCurField, c.field) << "tap at x = " << c.x;
    }
    EXPECT_EQ(::GetFocus(), p.m_hWnd);
    parent.SetFocus();
    desktop.RunUntilIdle();
    EXPECT_EQ(p.m_nCurField, -1);
    EXPECT_EQ(parent.Take(), "-");  // the picker tells its parent nothing

    ctl = std::make_unique<Probe<CDataTimectrl>>();  // before its first paint, no field
    ASSERT_TRUE(ctl->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kPlace, &parent, kId));
    ::SendMessageW(ctl->m_hWnd, WM_LBUTTONDOWN, 0, MAKELPARAM(10, 10));
    EXPECT_EQ(ctl->m_nCurField, -1);
}

TEST_F(Picker, FollowsTheClockUntilEdited) {
    desktop.Advance((11 * 3600 + 59 * 60 + 59) * 1000);  // 2026-01-01 23:59:59
    auto& p = Make(1, Clock(1, 2, 3));
    p.SetAutoUpdate(TRUE);
    desktop.Advance(1000);
    SYSTEMTIME t{};
    p.GetTime(&t);
    EXPECT_EQ(Ymd(t) + " " + Hms(t), "2026-1-2 0:0:0");
    desktop.Advance(2000);
    p.GetTime(&t);
    EXPECT_EQ(Hms(t), "0:0:2");
    Step(2, VK_UP);  // editing stops following for good
    desktop.Advance(5000);
    p.GetTime(&t);
    EXPECT_EQ(Hms(t), "0:0:3");
    p.SetAutoUpdate(TRUE);
    p.DestroyWindow();
    desktop.Advance(2000);  // no tick reaches a destroyed picker
}

TEST_F(Picker, SettersAndTheCTimeForms) {
    auto& p = Make(0, Date(2026, 7, 4));
    CTime before;
    EXPECT_EQ(p.GetTime(before), 1u);
    EXPECT_EQ(before.GetYear() * 10000 + before.GetMonth() * 100 + before.GetDay(), 20260704);
    const CTime other(2001, 2, 3, 4, 5, 6);
    EXPECT_EQ(p.SetTime(&other), 1);  // deliberately a no-op
    EXPECT_EQ(p.SetTime(static_cast<SYSTEMTIME*>(nullptr)), 1);
    SYSTEMTIME t{};
    p.GetTime(&t);
    EXPECT_EQ(Ymd(t), "2026-7-4");
    p.SetStyle(7);
    EXPECT_EQ(p.GetSyle(), 1);
    EXPECT_EQ(p.Monthdays(2026, 0), 30u) << "the calendar rule is DateMath's; month 0 counts 30";
}

TEST_F(Picker, PaintsFrameSelectionAndBlackColonDots) {
    // The frame, background, black colon dots and the selected field's box are the goldens'.
    const char* names[2][3] = {{"date_year", "date_month", "date_day"}, {"time_hour", "time_minute", "time_second"}};
    for (int style : {0, 1}) {
        Make(style, style ? Clock(9, 5, 37) : SYSTEMTIME{2026, 11, 0, 28, 0, 0, 0, 0});
        for (int field = 0; field < 3; ++field) {
            Press(VK_RIGHT);
            EXPECT_TRUE(WindowMatchesGolden("CDataTimectrl", names[style][field], ctl->m_hWnd));
        }
    }
    Make(0, Date(2034, 6, 9));  // the remaining digits 3 4 6 9 ... and 7 8 above
    EXPECT_TRUE(WindowMatchesGolden("CDataTimectrl", "digits", ctl->m_hWnd));
}

// ---- the time field -----------------------------------------------------------------------

constexpr COLORREF kSkin = RGB(250, 240, 200);

class TimeField : public ControlTest {
protected:
    std::unique_ptr<TimeDataProbe> ctl;
    void TearDown() override {
        ctl.reset();
        ControlTest::TearDown();
    }
    TimeDataProbe& Make(int style, SYSTEMTIME t, bool skinned = true) {
        ctl = std::make_unique<TimeDataProbe>();
        EXPECT_TRUE(ctl->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(10, 10, 90, 30), &parent, kId));
        ctl->SetStyle(style);
        ctl->SetTime(&t);
        if (skinned) ctl->LoadBitmapW(201, skins.Module({{201, "back"}}));
        ctl->Invalidate();
        desktop.RunUntilIdle();
        return *ctl;
    }
    std::string back = skins.Framed("back", 16, 8, kSkin, RGB(120, 90, 30));
};

TEST_F(TimeField, PaintsNothingUntilItsSkinLoads) {
    const HINSTANCE before = AfxGetResourceHandle();
    auto& t = Make(0, Date(2026, 11, 15), false);
    for (UINT id : {999u, 201u}) {  // no such bitmap, then the skin
        EXPECT_EQ(ShownAt(t.m_hWnd, 79, 10), kSentinel) << id;
        t.LoadBitmapW(id, skins.Module({{201, "back"}}));
        EXPECT_EQ(AfxGetResourceHandle(), before) << id;
        t.Invalidate();
        desktop.RunUntilIdle();
    }
    EXPECT_EQ(ShownAt(t.m_hWnd, 79, 10), RGB(120, 90, 30));  // the skin's frame, stretched
}

TEST_F(TimeField, TapHighlightsTheCellUnderItExceptDashes) {
    auto& t = Make(0, Date(2026, 11, 15));
    EXPECT_EQ(t.m_nCurChar, -1);
    struct Case {
        int x;
        int cell;
        bool shown;
    } taps[] = {{0, 0, true}, {7, 0, true}, {16, 2, false}, {23, 2, false}, {24, 3, true}, {63, 7, true},
                {70, 8, false}, {41, 5, false}};
    for (const Case& c : taps) {
        desktop.Advance(1000);  // taps, not double taps
        TapAt(t.m_hWnd, c.x, 10);
        EXPECT_EQ(t.m_nCurChar, c.cell) << "x = " << c.x;
        // Only a highlighted character is white (on black).
        const CRect ink = InkBox(t.m_hWnd, RGB(0xFF, 0xFF, 0xFF));
        EXPECT_EQ(!ink.IsRectEmpty() && ink.left >= c.cell * 8 && ink.right <= c.cell * 8 + 8, c.shown) << "x = " << c.x;
    }
    desktop.Advance(1000);
    TapAt(t.m_hWnd, 9, 10);
    EXPECT_TRUE(WindowMatchesGolden("CTimeData", "date_cell1", t.m_hWnd));
    // Time style: space-padded cells and no highlight.
    Make(1, Clock(9, 5, 7));
    TapAt(ctl->m_hWnd, 9, 10);
    EXPECT_EQ(ctl->m_nCurChar, 1);
    EXPECT_TRUE(WindowMatchesGolden("CTimeData", "time", ctl->m_hWnd));
}

TEST_F(TimeField, TheInertEditorChangesNothing) {
    auto& t = Make(0, Date(2026, 11, 15));
    TapAt(t.m_hWnd, 1, 10);
    const Image before = CaptureWindow(t.m_hWnd, 0);
    t.Add();
    t.Def();
    t.Setcur(0, 5);
    desktop.RunUntilIdle();
    SYSTEMTIME now{};
    t.GetTime(&now);
    EXPECT_EQ(Ymd(now), "2026-11-15");
    EXPECT_EQ(CaptureWindow(t.m_hWnd, 0).pixels, before.pixels);
    ::SendMessageW(t.m_hWnd, WM_LBUTTONDOWN, 0, MAKELPARAM(-20, 5));  // left of the first cell
    EXPECT_EQ(t.m_nCurChar, -2);
}

}  // namespace
