// Golden pictures of each control. Text-bearing ones are few: they follow the platform's
// glyphs and widths.
#include <cmath>
#include <memory>

#include "CZELBkLable.h"
#include "CZELLable.h"
#include "CZELStatic.h"
#include "CZELTelLCD.h"
#include "label_fixture.h"

namespace {

// A rounded dark cap shaded by column, a banded middle.
COLORREF Cap(int x, int) { return RGB(40 + 12 * x, 60 + 12 * x, 90 + 10 * x); }
COLORREF Middle(int, int y) { return y % 4 < 2 ? RGB(150, 170, 200) : RGB(140, 160, 190); }
COLORREF Diagonals(int x, int y) { return ((x + y) / 6) % 2 ? RGB(30, 60, 110) : RGB(60, 110, 170); }

class GoldenTest : public labeltest::LabelTest {
protected:
    void SetUp() override {
        LabelTest::SetUp();
        skins.Pixels("cap_l", 6, 12, Cap);
        skins.Pixels("cap_r", 6, 12, [](int x, int y) { return Cap(5 - x, y); });
        skins.Pixels("middle", 4, 4, Middle);
    }
    void Frame(CZELLable& label) { label.LoadBitmap(SkinPath("cap_l"), SkinPath("middle"), SkinPath("cap_r")); }
};

TEST_F(GoldenTest, Label) {
    const struct {
        const char* state;
        const wchar_t* text;
    } cases[] = {{"full", L"Kitchen"}, {"shrunk", L"Upstairs hallway lights"}};
    for (const auto& c : cases) {
        CZELLable label;
        ASSERT_TRUE(label.Create(nullptr, c.text, WS_CHILD | WS_VISIBLE, CRect(10, 10, 170, 46), &parent, 1));
        label.SetFont(26, RGB(20, 20, 40), DT_SINGLELINE | DT_VCENTER | DT_CENTER, CRect(6, 0, 154, 36));
        Frame(label);
        desktop.RunUntilIdle();
        EXPECT_TRUE(zel::test::WindowMatchesGolden("CZELLable", c.state, label.m_hWnd));
    }
}

TEST_F(GoldenTest, TelLCD) {
    skins.Pixels("signal", 24, 14, [](int x, int y) {
        return x % 5 < 3 && 13 - y <= x / 2 ? RGB(240, 240, 240) : RGB(30, 40, 60);
    });
    skins.Pixels("battery", 28, 14, [](int x, int y) {
        return x > 1 && x < 25 && y > 2 && y < 11 ? (x < 18 ? RGB(90, 220, 90) : RGB(30, 40, 60)) : RGB(200, 200, 200);
    });
    for (int mode : {1, 2}) {
        CZELTelLCD lcd;
        ASSERT_TRUE(lcd.Create(nullptr, L"+49 89 1234 5678 90", WS_CHILD | WS_VISIBLE, CRect(10, 10, 210, 74),
                               &parent, 2));
        CArray<CString, CString> frame, indicators;
        for (const char* piece : {"cap_l", "middle", "cap_r"}) frame.Add(SkinPath(piece));
        for (const char* piece : {"signal", "battery"}) indicators.Add(SkinPath(piece));
        DWORD colors[3] = {RGB(10, 20, 40), RGB(255, 255, 255), 0};
        int heights[3] = {34, 13, 0};
        lcd.InitCtrl(frame, indicators, colors, heights, 1);
        CString time = L"02:17";
        lcd.SetszTime(time);
        if (mode == 2) lcd.InitCtrl(frame, indicators, colors, heights, 2);
        lcd.Invalidate();
        desktop.RunUntilIdle();
        EXPECT_TRUE(zel::test::WindowMatchesGolden("CZELTelLCD", mode == 1 ? "mode1_long" : "mode2_long", lcd.m_hWnd));
    }
}

TEST_F(GoldenTest, BkLabelOverPatternedScreen) {
    labeltest::ArtBitmap screen(320, 200, Diagonals);
    CZELBkLable label;
    ASSERT_TRUE(label.Create(nullptr, L"Favourites", WS_CHILD | WS_VISIBLE, CRect(100, 40, 220, 64), &parent, 3));
    label.SetFont(18, RGB(255, 255, 255), DT_SINGLELINE | DT_VCENTER, CRect());
    label.SetBitmap(screen.get());
    label.Invalidate();
    desktop.RunUntilIdle();
    EXPECT_TRUE(zel::test::WindowMatchesGolden("CZELBkLable", "over_pattern", label.m_hWnd));
}

// A disc on a magenta key: the cut-out corners show the parent's sentinel grey.
TEST_F(GoldenTest, StaticRoundPicture) {
    labeltest::ArtBitmap round(40, 40, [](int x, int y) {
        const double d = std::hypot(x - 19.5, y - 19.5);
        return d > 19 ? RGB(255, 0, 255) : d > 16 ? RGB(20, 20, 20) : RGB(200 - 4 * x, 90 + 3 * y, 60);
    });
    CZELStatic picture;
    ASSERT_TRUE(picture.Create(L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_BITMAP, CRect(20, 20, 60, 60), &parent, 4));
    picture.SetBitmap(round.get());
    desktop.RunUntilIdle();
    EXPECT_TRUE(zel::test::ScreenMatchesGolden("CZELStatic", "round", RECT{16, 16, 64, 64}));
    picture.SetBitmap(nullptr);
}

}  // namespace
