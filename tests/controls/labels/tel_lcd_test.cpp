// CZELTelLCD: the two modes' geometry (indicators, number rectangle, status strip), the
// number's shrink from the number font's height, SetszTime per mode, and both InitCtrl
// forms with their bad input.
#include <zel/platform.h>

#include <memory>

#include "CZELTelLCD.h"
#include "SkinSet.h"
#include "label_fixture.h"

namespace {

using labeltest::Measure;
using labeltest::Reference;

const COLORREF kMiddle = RGB(20, 90, 40), kLeftInd = RGB(220, 30, 30), kRightInd = RGB(30, 30, 220);
const COLORREF kNumber = RGB(255, 230, 0), kStatus = RGB(255, 255, 255);
constexpr int kW = 200, kH = 60;           // the display, at (10, 10) of the screen
constexpr SIZE kLeftSize{30, 16}, kRightSize{20, 12};
constexpr UINT kNumberFormat = DT_SINGLELINE | DT_VCENTER | DT_CENTER;
constexpr UINT kStatusFormat = DT_SINGLELINE | DT_VCENTER;

class ProbeLCD : public CZELTelLCD {
public:
    using CZELTelLCD::m_frame;
    using CZELTelLCD::m_indicators;
    using CZELTelLCD::m_nFontHeight;
    using CZELTelLCD::m_nMode;
    using CZELTelLCD::m_strTime;
};

class TelLCDTest : public labeltest::LabelTest {
protected:
    void SetUp() override {
        LabelTest::SetUp();
        skins.Solid("middle", 8, kH, kMiddle);
        skins.Solid("left", kLeftSize.cx, kLeftSize.cy, kLeftInd);
        skins.Solid("right", kRightSize.cx, kRightSize.cy, kRightInd);
        lcd = std::make_unique<ProbeLCD>();
        EXPECT_TRUE(lcd->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(10, 10, 10 + kW, 10 + kH), &parent, 8));
    }
    void TearDown() override {
        lcd.reset();
        LabelTest::TearDown();
    }
    void InitFiles(int mode, int numberHeight = 30, int frameCount = 3, const char* left = "left") {
        CArray<CString, CString> frame, indicators;
        const CString pieces[] = {L"", SkinPath("middle"), L""};
        for (int i = 0; i < frameCount; ++i) frame.Add(pieces[i]);
        indicators.Add(SkinPath(left));
        indicators.Add(SkinPath("right"));
        DWORD colors[3] = {kNumber, kStatus, 0};
        int heights[3] = {numberHeight, 14, 0};
        lcd->InitCtrl(frame, indicators, colors, heights, mode);
    }
    void Show(const wchar_t* number) {
        lcd->SetWindowText(number);
        lcd->Invalidate();
        desktop.RunUntilIdle();
    }
    std::string Shows(const Reference& want) {
        desktop.RunUntilIdle();
        return want.Diff(lcd->m_hWnd);
    }
    // The indicators over the middle: the right one always, the left one when `left`.
    static void Indicators(Reference& want, bool left) {
        want.Fill(RECT{kW - kRightSize.cx, kH - kRightSize.cy, kW, kH}, kRightInd);
        if (left) want.Fill(RECT{0, kH - kLeftSize.cy, kLeftSize.cx, kH}, kLeftInd);
    }
    RECT Update() {
        RECT rc{};
        ::GetUpdateRect(lcd->m_hWnd, &rc, FALSE);
        return rc;
    }

    std::unique_ptr<ProbeLCD> lcd;
};

// Mode 1: the strip is the left indicator's size, so the number sits above its height and
// the status text starts at its width. Mode 2 keeps no left indicator: the strip is the
// right one's size, and the status text set in mode 1 stays, drawn from its width.
TEST_F(TelLCDTest, GeometryPerMode) {
    for (int mode : {1, 2}) {
        SCOPED_TRACE(mode);
        InitFiles(1);
        CString time = L"00:42";
        lcd->SetszTime(time);
        if (mode == 2) InitFiles(2);
        EXPECT_EQ((*lcd->m_indicators)[0] != nullptr, mode == 1);
        const SIZE strip = mode == 1 ? kLeftSize : kRightSize;
        Show(L"5551234");
        Reference want(kW, kH, kMiddle);
        Indicators(want, mode == 1);
        want.Text(L"5551234", RECT{5, 0, kW - 5, kH - strip.cy}, kNumberFormat, 30, kNumber);
        want.Text(time, RECT{strip.cx, kH - strip.cy, kW, kH}, kStatusFormat, 14, kStatus);
        EXPECT_EQ(Shows(want), "");
    }
}

// A growing number keeps its font while it fits, then steps down from the number font's
// height 2 pixels at a time, never below 12.
TEST_F(TelLCDTest, LongNumbersShrinkFromTheNumberFontHeight) {
    InitFiles(1);
    const int width = kW - 10;
    const CString numbers[] = {L"555", L"0049 89 1234 5678", L"0049 89 1234 5678 9012 3456",
                               L"00000000000000000000000000000000000000000000000000"};
    int last = 31;
    for (const CString& n : numbers) {
        int expected = 30;
        if (Measure(n, 30).cx > width) {
            expected = 28;
            while (Measure(n, expected).cx > width && expected > 12) expected -= 2;
        }
        EXPECT_LE(expected, last) << "the cases should grow";
        last = expected;
        SCOPED_TRACE(expected);
        Show(n);
        Reference want(kW, kH, kMiddle);
        Indicators(want, true);
        want.Text(n, RECT{5, 0, kW - 5, kH - kLeftSize.cy}, kNumberFormat, expected, kNumber);
        EXPECT_EQ(Shows(want), "");
    }
    EXPECT_EQ(last, 12) << "the last number should reach the floor";
}

TEST_F(TelLCDTest, SetszTimeByMode) {
    CString time = L"01:00";
    lcd->SetszTime(time);  // mode 0 before InitCtrl
    EXPECT_EQ(lcd->m_strTime, L"");

    InitFiles(1);
    desktop.RunUntilIdle();
    lcd->SetszTime(time);
    EXPECT_EQ(lcd->m_strTime, L"01:00");
    // The taller strip: the left indicator's 16 rows, not the right one's 12.
    EXPECT_EQ(CRect(Update()), CRect(0, kH - kLeftSize.cy, kW, kH));

    InitFiles(2);
    desktop.RunUntilIdle();
    CString other = L"02:00";
    lcd->SetszTime(other);
    EXPECT_EQ(lcd->m_strTime, L"01:00");
    const RECT none = Update();
    EXPECT_TRUE(::IsRectEmpty(&none)) << "mode 2 repaints nothing";
}

// What stays from one paint to the next (the frame and indicators) is drawn again when the
// indicators change; a status strip painted alone keeps the number above it.
TEST_F(TelLCDTest, NewIndicatorsAndStatusShowOverTheLastPaint) {
    const COLORREF other = RGB(250, 160, 0);
    skins.Solid("left2", kLeftSize.cx, kLeftSize.cy, other);
    InitFiles(1);
    Show(L"42");
    InitFiles(1, 30, 3, "left2");
    CString time = L"00:07";
    lcd->SetszTime(time);
    auto shows = [&](const wchar_t* number) {
        Reference want(kW, kH, kMiddle);
        Indicators(want, false);
        want.Fill(RECT{0, kH - kLeftSize.cy, kLeftSize.cx, kH}, other);
        want.Text(number, RECT{5, 0, kW - 5, kH - kLeftSize.cy}, kNumberFormat, 30, kNumber);
        want.Text(time, RECT{kLeftSize.cx, kH - kLeftSize.cy, kW, kH}, kStatusFormat, 14, kStatus);
        return Shows(want);
    };
    EXPECT_EQ(shows(L"42"), "");
    Show(L"4");  // the shorter number leaves nothing of the longer one
    EXPECT_EQ(shows(L"4"), "");
}

TEST_F(TelLCDTest, FileFormNeedsThreeFramePathsAndTwoIndicators) {
    const zel::GdiCounts before = zel::LiveGdiObjects();
    InitFiles(1, 30, 2);
    EXPECT_EQ(lcd->m_nMode, 0);
    EXPECT_EQ(lcd->m_nFontHeight, 40);
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps);
    EXPECT_EQ(zel::LiveGdiObjects().fonts, before.fonts);

    InitFiles(7, 24);  // an unknown mode is taken as it is and shows no indicators
    EXPECT_EQ(lcd->m_nMode, 7);
    EXPECT_EQ(lcd->m_nFontHeight, 24);
}

// The resource form: mode 1 = {middle, left, right}, mode 2 = {middle, right}; another mode
// loads nothing and keeps the mode; the shrink start stays the label's.
TEST_F(TelLCDTest, ResourceForm) {
    HINSTANCE module = skins.Module({{101, "middle"}, {102, "left"}, {103, "right"}});
    UINT ids[] = {101, 102, 103};
    DWORD colors[] = {kNumber, kStatus};
    int heights[] = {26, 12};
    struct Case {
        int mode, modeAfter;
        bool middle, left, right;
    } cases[] = {{1, 1, true, true, true}, {2, 2, true, false, true}, {5, 2, false, false, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.mode);
        if (c.mode == 2) ids[1] = 103;
        lcd->InitCtrl(ids, colors, heights, c.mode, module);
        EXPECT_EQ(lcd->m_nMode, c.modeAfter);
        EXPECT_EQ((*lcd->m_frame)[1] != nullptr, c.middle);
        EXPECT_EQ((*lcd->m_indicators)[0] != nullptr, c.left);
        EXPECT_EQ((*lcd->m_indicators)[1] != nullptr, c.right);
        EXPECT_EQ(lcd->m_nFontHeight, 40);
    }
    lcd->InitCtrl(nullptr, colors, heights, 1, module);  // ignored
    EXPECT_EQ(lcd->m_nMode, 2);
}

TEST_F(TelLCDTest, DestroyReleasesFontsAndIndicatorsAndLaterCallsAreHarmless) {
    InitFiles(1);
    Show(L"123");
    lcd->DestroyWindow();
    EXPECT_EQ((*lcd->m_indicators)[0], nullptr);
    EXPECT_EQ((*lcd->m_indicators)[1], nullptr);
    CString time = L"03:00";
    lcd->SetszTime(time);
    InitFiles(1);
    lcd->LoadSkin(skins.Skin({"middle"}), L"");
    EXPECT_NE((*lcd->m_frame)[0], nullptr);  // held until the destructor
}

// A display taller and wider than the screen paints what shows of it: the centred number,
// the indicators and the status text land where a whole paint puts them, at odd and even
// offsets; moved to 32767 x 32767, its paints write a few layers of the 190 x 190 pixels
// that show.
TEST_F(TelLCDTest, PaintCostsWhatShowsAndShowsWhatAWholePaintWould) {
    constexpr int w = 901, h = 613;
    InitFiles(1, 40);
    CString time = L"12:34";
    lcd->SetszTime(time);
    lcd->SetWindowText(L"0049 89 1234 567");
    Reference want(w, h, kMiddle);
    want.Fill(RECT{w - kRightSize.cx, h - kRightSize.cy, w, h}, kRightInd);
    want.Fill(RECT{0, h - kLeftSize.cy, kLeftSize.cx, h}, kLeftInd);
    want.Text(L"0049 89 1234 567", RECT{5, 0, w - 5, h - kLeftSize.cy}, kNumberFormat, 40, kNumber);
    want.Text(time, RECT{kLeftSize.cx, h - kLeftSize.cy, w, h}, kStatusFormat, 14, kStatus);
    for (const POINT at : {POINT{0, -430}, POINT{-401, -200}, POINT{-400, -201}, POINT{-720, -450}}) {
        lcd->MoveWindow(at.x, at.y, w, h);
        desktop.RunUntilIdle();
        EXPECT_EQ(ShowsWhereVisible(lcd->m_hWnd, want), "") << "at " << at.x << "," << at.y;
    }

    lcd->MoveWindow(130, 10, 32767, 32767);
    ExpectRepaintWithin(*lcd, 4u * 190 * 190);
    EXPECT_EQ(ShownAt(lcd->m_hWnd, 189, 189), kMiddle);
}

}  // namespace
