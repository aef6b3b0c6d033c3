// CZELChkBox: toggling by tap and Enter, the hit area that follows the measured caption,
// caption layout and font, the three images, and its unusual clean-up.
#include <CZELButton.h>
#include <CZELChkBox.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include "ControlFont.h"
#include "controls/shown_part.h"
#include "support/control_test.h"
#include "support/golden.h"

namespace {

using namespace zel::test;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kBack = RGB(200, 220, 240);
constexpr COLORREF kBackRight = RGB(240, 230, 190);
constexpr COLORREF kUnchecked = RGB(250, 250, 250);
constexpr COLORREF kChecked = RGB(30, 160, 60);
constexpr UINT kId = 8;
const CRect kPlace(10, 60, 210, 100);  // 200 x 40: the 20 x 20 box is at (0, 10)

class ChkProbe : public CZELChkBox {
public:
    using CZELChkBox::m_font;
};

class ChkBox : public ControlTest {
protected:
    std::unique_ptr<ChkProbe> Make(const wchar_t* caption, const CRect& rect = kPlace) {
        auto box = std::make_unique<ChkProbe>();
        EXPECT_TRUE(box->Create(nullptr, caption, WS_VISIBLE, rect, &parent, kId));
        parent.Name(box->m_hWnd, "chk");
        box->LoadSkin(skins.Skin({"checked", "unchecked", "back"}), CString());
        desktop.RunUntilIdle();
        return box;
    }

    std::string Mark(const std::string& name, int w, int h, COLORREF face) {
        return skins.Draw(name, w, h, [=](HDC dc) {
            FillBox(dc, 0, 0, w, h, RGB(60, 60, 60));
            FillBox(dc, 2, 2, w - 2, h - 2, face);
        });
    }

    std::string checked = Mark("checked", 20, 20, kChecked);
    std::string unchecked = Mark("unchecked", 20, 20, kUnchecked);
    std::string back = skins.Striped("back", 2, 1, kBack, kBackRight, 1, true);
};

// A toggle needs the press and the release in the hit area: the box, or the measured
// caption's ink within the box's rows. Each one tells the parent and repaints the box.
TEST_F(ChkBox, PressAndReleaseInTheHitAreaToggle) {
    auto box = Make(L"Mute");
    const HWND hwnd = box->m_hWnd;
    const CRect ink = InkBox(hwnd, kBlack);
    ASSERT_FALSE(ink.IsRectEmpty());
    const CPoint word = ink.CenterPoint();
    const struct {
        const char* what;
        std::vector<POINT> path;  // pressed at the first point, released at the last
        bool toggles;
    } cases[] = {
        {"the box", {{10, 20}}, true},
        {"the box again", {{10, 20}}, true},
        {"the caption's ink", {{word.x, word.y}}, true},
        {"the blank rest of the caption", {{ink.right + 15, word.y}}, false},
        {"above the box's rows", {{word.x, 5}}, false},
        {"pressed outside, released on the box", {{150, 20}, {10, 20}}, false},
        {"pressed on the box, released outside", {{10, 20}, {150, 20}}, false},
    };
    int check = 0;
    for (const auto& c : cases) {
        desktop.Advance(1000);
        DownAt(hwnd, c.path.front().x, c.path.front().y);
        for (POINT p : c.path) MoveTo(hwnd, p.x, p.y);
        UpAt(hwnd, c.path.back().x, c.path.back().y);
        check ^= c.toggles;
        EXPECT_EQ(parent.Take(), c.toggles ? "COMMAND(8,0,chk)" : "-") << c.what;
        EXPECT_EQ(box->GetCheck(), check) << c.what;
        EXPECT_EQ(ShownAt(hwnd, 10, 20), check ? kChecked : kUnchecked) << c.what;
    }
    EXPECT_EQ(GetFocus(), hwnd);

    desktop.Advance(1000);
    TapAt(hwnd, 10, 20);
    TapAt(hwnd, 10, 20);
    EXPECT_EQ(parent.Take(), "COMMAND(8,0,chk)") << "the second tap of a double tap does not toggle";
    EXPECT_EQ(box->GetCheck(), 0);

    // SetCheck repaints and tells nobody; any non-zero value checks.
    for (int set : {5, 0}) {
        box->SetCheck(set);
        desktop.RunUntilIdle();
        EXPECT_EQ(box->GetCheck(), set ? 1 : 0);
        EXPECT_EQ(ShownAt(hwnd, 10, 20), set ? kChecked : kUnchecked);
    }
    EXPECT_EQ(parent.Take(), "-");
}

TEST_F(ChkBox, WithoutAutoClickTapsDoNothingButEnterToggles) {
    auto box = Make(L"Mute");
    box->SetAutoClick(false);
    TapAt(box->m_hWnd, 10, 20);
    EXPECT_EQ(parent.Take(), "-");
    EXPECT_NE(GetFocus(), box->m_hWnd) << "an ignored tap does not take the focus either";
    box->SetFocus();
    desktop.KeyDown(VK_RETURN);
    desktop.KeyUp(VK_RETURN);
    EXPECT_EQ(parent.Take(), "COMMAND(8,0,chk)");
    EXPECT_EQ(box->GetCheck(), 1);
    EXPECT_EQ(ShownAt(box->m_hWnd, 10, 20), kChecked);
    desktop.KeyDown(VK_RETURN);
    EXPECT_EQ(box->GetCheck(), 0);
    desktop.KeyDown(VK_SPACE);
    EXPECT_EQ(parent.Take(), "COMMAND(8,0,chk)") << "only Enter";
}

// Measured word-wrapped, a caption shorter than 31 pixels is one centred line; taller, it
// is drawn wrapped from the top of its rectangle.
TEST_F(ChkBox, CaptionWrapsOnlyWhenItsWrappedHeightReaches31) {
    const wchar_t* kLong = L"Repeat every track of the album";
    const CRect tall(10, 10, 170, 90);  // 160 x 80: the caption gets 134 pixels
    auto wrapped = Make(kLong, tall);
    const CRect two = InkBox(wrapped->m_hWnd, kBlack);
    EXPECT_LT(two.top, 8) << "from the top";
    EXPECT_GT(two.Height(), 24) << "two lines";

    wrapped->SetFont(14, CString(L"Tahoma"), kBlack);
    desktop.RunUntilIdle();
    const CRect one = InkBox(wrapped->m_hWnd, kBlack);
    EXPECT_LT(one.Height(), 16) << "two 14-pixel lines measure 28: drawn as one line";
    EXPECT_GT(one.top, 25) << "centred";
    EXPECT_GE(one.right, 159) << "the single line runs to the clipped edge";
}

TEST_F(ChkBox, SetFontAlwaysUsesTahoma) {
    auto box = Make(L"Mute");
    box->SetFont(24, CString(L"Arial"), kBlue);
    desktop.RunUntilIdle();
    LOGFONTW lf{};
    ASSERT_EQ(GetObjectW(box->m_font->get(), sizeof lf, &lf), static_cast<int>(sizeof lf));
    EXPECT_EQ(lf.lfHeight, 24);
    EXPECT_EQ(lf.lfWeight, FW_NORMAL);
    EXPECT_EQ(lf.lfCharSet, DEFAULT_CHARSET);
    EXPECT_STREQ(lf.lfFaceName, L"Tahoma");
    EXPECT_TRUE(InkBox(box->m_hWnd, kBlack).IsRectNull());
    EXPECT_FALSE(InkBox(box->m_hWnd, kBlue).IsRectNull());
}

TEST_F(ChkBox, SkinPiecesAreCheckedUncheckedBackgroundAndTheBoxTakesTheUncheckedSize) {
    auto box = Make(L"");
    const HWND hwnd = box->m_hWnd;
    const std::string small = Mark("small", 20, 12, kUnchecked);
    box->LoadSkin(CString((checked + "|" + small + "|" + back + "|").c_str()), CString());
    desktop.RunUntilIdle();
    EXPECT_EQ(ShownAt(hwnd, 10, 13), kBack);  // the box is at (0, 14)-(20, 26)
    EXPECT_EQ(ShownAt(hwnd, 10, 16), kUnchecked);
    EXPECT_EQ(ShownAt(hwnd, 10, 23), kUnchecked);
    EXPECT_EQ(ShownAt(hwnd, 10, 26), kBack);
    EXPECT_EQ(ShownAt(hwnd, 199, 39), kBackRight) << "the background is stretched over the control";
    box->SetCheck(1);
    desktop.RunUntilIdle();
    EXPECT_EQ(ShownAt(hwnd, 10, 16), kChecked);
    EXPECT_EQ(ShownAt(hwnd, 10, 26), kBack) << "the checked image is cut to the box";

    box->LoadSkin(CString((checked + "|").c_str()), CString());
    desktop.RunUntilIdle();
    EXPECT_EQ(ShownAt(hwnd, 100, 20), kChecked) << "missing pieces repeat the first";
}

TEST_F(ChkBox, BadImagesLeaveNoBoxAndNoCrash) {
    const std::string junk = (skins.Dir() / "junk.bmp").string();
    std::ofstream(junk, std::ios::binary) << "BM\x01\x02 broken";
    auto box = std::make_unique<ChkProbe>();
    ASSERT_TRUE(box->Create(nullptr, L"Mute", WS_VISIBLE, kPlace, &parent, kId));
    box->LoadBitmapW(CString(junk.c_str()), CString(L""), CString(L"/no/such/back.bmp"));
    desktop.RunUntilIdle();
    const CRect ink = InkBox(box->m_hWnd, kBlack);
    EXPECT_LT(ink.left, 10) << "no box: the caption starts 5 pixels in";
    TapAt(box->m_hWnd, ink.CenterPoint().x, 20);
    EXPECT_EQ(parent.Take(), "-") << "and the hit area has no rows";
}

TEST_F(ChkBox, PathsLongerThanMaxPathAreCut) {
    std::filesystem::path dir = skins.Dir();
    while (dir.string().size() < MAX_PATH) dir /= "a_rather_long_folder_name";
    std::filesystem::create_directories(dir);
    const std::string longPath = (dir / "unchecked.bmp").string();
    std::filesystem::copy_file(unchecked, longPath);

    auto box = Make(L"");
    box->LoadBitmapW(CString(checked.c_str()), CString(longPath.c_str()), CString(back.c_str()));
    desktop.RunUntilIdle();
    EXPECT_NE(ShownAt(box->m_hWnd, 10, 20), kUnchecked);

    CZELButton button;  // the push button takes the whole path
    ASSERT_TRUE(button.Create(L"", WS_VISIBLE | BS_OWNERDRAW, CRect(220, 10, 240, 30), &parent, 9, false));
    button.LoadSkin(CString((longPath + "|").c_str()), CString());
    desktop.RunUntilIdle();
    EXPECT_EQ(ShownAt(button.m_hWnd, 10, 10), kUnchecked);
}

// The window's destruction releases the background (twice) and the checked image only;
// the unchecked image and the font go with the object.
TEST_F(ChkBox, DestroyingTheWindowLeavesTheUncheckedImageAndFontToTheObject) {
    const zel::GdiCounts base = zel::LiveGdiObjects();
    auto box = Make(L"Mute");
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, base.bitmaps + 3);
    EXPECT_EQ(zel::LiveGdiObjects().fonts, base.fonts + 1);
    box->DestroyWindow();
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, base.bitmaps + 1);
    EXPECT_EQ(zel::LiveGdiObjects().fonts, base.fonts + 1);
    box.reset();
    EXPECT_EQ(zel::LiveGdiObjects().total(), base.total());
}

TEST_F(ChkBox, SurvivesAParentThatDestroysItFromTheToggle) {
    auto box = Make(L"Mute");
    const HWND hwnd = box->m_hWnd;
    parent.onMessage = [&](UINT message, WPARAM, LPARAM) {
        if (message == WM_COMMAND) box.reset();
    };
    TapAt(hwnd, 10, 20);
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_EQ(parent.Take(), "COMMAND(8,0,chk)");
}

TEST_F(ChkBox, GoldenStates) {
    auto box = Make(L"Mute");
    const HWND hwnd = box->m_hWnd;
    EXPECT_GOLDEN("CZELChkBox", "unchecked", zel::test::CaptureWindow(hwnd, 1));
    box->SetCheck(1);
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CZELChkBox", "checked", zel::test::CaptureWindow(hwnd, 1));
    box->SetFocus();
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CZELChkBox", "checked_focus", zel::test::CaptureWindow(hwnd, 1));
    box->SetFont(24, CString(L"Arial"), kBlue);
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CZELChkBox", "font24_focus", zel::test::CaptureWindow(hwnd, 1));

    auto wrapped = Make(L"Repeat every track of the album", CRect(10, 110, 170, 190));
    wrapped->SetFocus();
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CZELChkBox", "wrapped_focus", zel::test::CaptureWindow(wrapped->m_hWnd, 1));
}

// A paint costs what shows of the box. Pushed past the parent's left or top edge, the box
// shows the pixels it shows whole where both show (the skin, the box, the caption centred
// on its rows, the focus rectangle); moved to 32767 x 1000, of which the parent shows
// 290 x 140, a repaint writes a few layers of that, not a canvas of the window.
TEST_F(ChkBox, PaintCostsWhatShowsAndShowsWhatAWholePaintWould) {
    auto box = Make(L"Mute the speaker now");
    box->SetFocus();
    desktop.RunUntilIdle();
    for (const POINT shift : {POINT{-60, 0}, POINT{-61, 0}, POINT{0, -75}, POINT{-45, -73}})
        EXPECT_TRUE(ShowsAsWhole(*box, kPlace, shift.x, shift.y, kBlack));

    box->MoveWindow(kPlace.left, kPlace.top, 32767, 1000);
    ExpectRepaintWithin(*box, 4u * 290 * 140);
}

}  // namespace
