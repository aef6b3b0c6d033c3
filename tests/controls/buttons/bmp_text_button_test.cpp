// CBmpTextButton: stretched skins and a caption whose font and colour follow the focus,
// drawn through the owner-draw BUTTON class and its parent's reflected WM_DRAWITEM.
#include <CBmpTextButton.h>
#include <zel/resources.h>

#include <memory>

#include "controls/shown_part.h"
#include "support/control_test.h"
#include "support/golden.h"

namespace {

using namespace zel::test;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kNormalFace = RGB(70, 90, 160);
constexpr COLORREF kFocusFace = RGB(40, 150, 60);
constexpr COLORREF kDownFace = RGB(170, 50, 50);
constexpr COLORREF kCells[4][2] = {{RGB(250, 0, 0), RGB(0, 250, 0)},
                                   {RGB(0, 0, 250), RGB(250, 250, 0)},
                                   {RGB(0, 250, 250), RGB(250, 0, 250)},
                                   {RGB(90, 90, 90), RGB(160, 160, 160)}};  // [x][y]
constexpr UINT kId = 7;
enum : UINT { kNormal = 201, kFocus, kDown, kCellsSkin };
const CRect kPlace(10, 10, 130, 50);  // 120 x 40

class BmpTextButton : public ControlTest {
protected:
    void SetUp() override {
        ControlTest::SetUp();
        skins.Solid("normal", 30, 10, kNormalFace);
        skins.Solid("focus", 30, 10, kFocusFace);
        skins.Solid("down", 30, 10, kDownFace);
        skins.Pixels("cells", 4, 2, [](int x, int y) { return kCells[x][y]; });
        module = skins.Module({{kNormal, "normal"}, {kFocus, "focus"}, {kDown, "down"}, {kCellsSkin, "cells"}});
        ASSERT_NE(module, nullptr);
    }

    std::unique_ptr<CBmpTextButton> Make(const wchar_t* caption, const CRect& rect = kPlace, UINT normal = kNormal) {
        auto button = std::make_unique<CBmpTextButton>();
        EXPECT_TRUE(button->Create(caption, WS_VISIBLE | BS_PUSHBUTTON, rect, &parent, kId));
        parent.Name(button->m_hWnd, "btn");
        button->LoadBitmaps(normal, kFocus, kDown, module);
        desktop.RunUntilIdle();
        return button;
    }

    HINSTANCE module = nullptr;
};

TEST_F(BmpTextButton, SkinIsStretchedOverTheWholeButton) {
    auto button = Make(L"", CRect(10, 10, 90, 50), kCellsSkin);  // 4 x 2 cells of 20 x 20
    const HWND hwnd = button->m_hWnd;
    for (int y : {0, 19, 20, 39})
        for (int x : {0, 19, 20, 39, 40, 59, 60, 79})
            EXPECT_EQ(ShownAt(hwnd, x, y), kCells[x / 20][y / 20]) << x << "," << y;
    EXPECT_EQ(ShownAt(hwnd, 80, 20), kSentinel);
    EXPECT_EQ(ShownAt(hwnd, 20, 40), kSentinel);
}

TEST_F(BmpTextButton, LoadBitmapsMakesItOwnerDrawnAndClicksAreTheButtonClasssOwn) {
    auto button = std::make_unique<CBmpTextButton>();
    ASSERT_TRUE(button->Create(L"Play", WS_VISIBLE | BS_PUSHBUTTON, kPlace, &parent, kId));
    parent.Name(button->m_hWnd, "btn");
    EXPECT_EQ(button->GetStyle() & 0x0F, static_cast<DWORD>(BS_PUSHBUTTON));
    button->LoadBitmaps(kNormal, kFocus, kDown, module);
    EXPECT_EQ(button->GetStyle() & 0x0F, static_cast<DWORD>(BS_OWNERDRAW));
    desktop.RunUntilIdle();
    TapAt(button->m_hWnd, 60, 20);
    EXPECT_EQ(parent.Take(), "COMMAND(7,0,btn)");
    desktop.Advance(1000);
    DownAt(button->m_hWnd, 60, 20);
    MoveTo(button->m_hWnd, 200, 20);
    UpAt(button->m_hWnd, 200, 20);
    EXPECT_EQ(parent.Take(), "-");
}

TEST_F(BmpTextButton, FontsAreReleasedWithTheWindowOrTheObject) {
    const int fonts = zel::LiveGdiObjects().fonts;
    auto button = Make(L"Play");
    EXPECT_EQ(zel::LiveGdiObjects().fonts, fonts + 2);
    button->DestroyWindow();
    EXPECT_EQ(zel::LiveGdiObjects().fonts, fonts);
    button.reset();
    { CBmpTextButton never; }
    EXPECT_EQ(zel::LiveGdiObjects().fonts, fonts);
}

// A paint costs what shows of the button: half hidden past the parent's left edge it shows
// the columns (skin and caption) it shows whole, and at 32767 x 1000, of which the parent
// shows 290 x 190, a repaint writes a few layers of that, not a canvas of the window.
TEST_F(BmpTextButton, PaintCostsWhatShowsAndShowsWhatAWholePaintWould) {
    auto button = Make(L"Wide caption");
    EXPECT_TRUE(ShowsAsWhole(*button, kPlace, -60, 0, kBlack));  // 50 of its 120 columns hidden

    button->MoveWindow(kPlace.left, kPlace.top, 32767, 1000);
    ExpectRepaintWithin(*button, 4u * 290 * 190);
}

// The goldens are the caption's contract: 14-pixel black bold Tahoma on the normal face,
// 25-pixel white when focused or pressed, and after SetFont both states at its first
// height in its colours.
TEST_F(BmpTextButton, GoldenStates) {
    auto button = Make(L"Play");
    const HWND hwnd = button->m_hWnd;
    EXPECT_GOLDEN("CBmpTextButton", "normal", zel::test::CaptureWindow(hwnd, 1));
    button->SetState(TRUE);  // pushed without the focus: drawn as normal
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CBmpTextButton", "normal", zel::test::CaptureWindow(hwnd, 1));
    button->SetState(FALSE);
    button->SetFocus();
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CBmpTextButton", "focus", zel::test::CaptureWindow(hwnd, 1));
    DownAt(hwnd, 60, 20);
    EXPECT_GOLDEN("CBmpTextButton", "down", zel::test::CaptureWindow(hwnd, 1));
    UpAt(hwnd, 60, 20);
    button->SetFont(18, 30, kBlack, kRed);
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CBmpTextButton", "setfont_focus", zel::test::CaptureWindow(hwnd, 1));
    parent.SetFocus();
    desktop.RunUntilIdle();
    EXPECT_GOLDEN("CBmpTextButton", "setfont_normal", zel::test::CaptureWindow(hwnd, 1));
}

}  // namespace
