// CZELButton driven through the desktop: skins per state, clicks, forwarded presses,
// auto-repeat on the virtual clock, the stepped region and the caption strip.
#include <CZELButton.h>

#include <array>
#include <climits>
#include <fstream>
#include <memory>

#include "support/control_test.h"
#include "support/golden.h"

namespace {

using namespace zel::test;

constexpr COLORREF kRed = RGB(200, 40, 40);
constexpr COLORREF kGreen = RGB(40, 200, 40);
constexpr COLORREF kBlue = RGB(40, 40, 200);
constexpr COLORREF kGrey = RGB(120, 120, 120);
constexpr COLORREF kYellow = RGB(230, 200, 30);
constexpr UINT kId = 7;

// The parent is at (20, 30) and the button at (10, 10) in it: client (x, y) of the
// button is screen (x + 30, y + 40).
const CRect kPlace(10, 10, 88, 86);  // 78 x 76

class ZelButton : public ControlTest {
protected:
    std::unique_ptr<CZELButton> Make(const CRect& rect = kPlace, DWORD style = WS_VISIBLE | BS_OWNERDRAW,
                                     bool strip = false) {
        auto button = std::make_unique<CZELButton>();
        EXPECT_TRUE(button->Create(L"", style, rect, &parent, kId, strip));
        parent.Name(button->m_hWnd, "btn");
        desktop.RunUntilIdle();
        return button;
    }

    // The skin shown in each state: normal (the parent has the focus), focused, pressed,
    // disabled.
    std::array<COLORREF, 4> Shown(CZELButton& button) {
        std::array<COLORREF, 4> shown{};
        size_t i = 0;
        ForEachLook(button, {39, 38}, [&](const char*) { shown[i++] = ShownAt(button.m_hWnd, 39, 38); });
        parent.Take();
        return shown;
    }

    std::string red = skins.Solid("red", 78, 76, kRed);
    std::string green = skins.Solid("green", 78, 76, kGreen);
    std::string blue = skins.Solid("blue", 78, 76, kBlue);
    std::string grey = skins.Solid("grey", 78, 76, kGrey);
    std::string yellow = skins.Solid("yellow", 78, 76, kYellow);
};

using Skins = std::array<COLORREF, 4>;

TEST_F(ZelButton, SkinStringPiecesFillNormalFocusDownDisabled) {
    const std::string r = red, g = green, b = blue, k = grey;
    struct Case {
        std::string skin;
        Skins shown;
    } cases[] = {
        {r + "|" + g + "|", {kRed, kGreen, kRed, kRed}},
        {" " + r + " |\t" + g + "|" + b + "|" + k + "|", {kRed, kGreen, kBlue, kGrey}},
        {r + "|" + g, {kRed, kRed, kRed, kRed}},
        {r + "|" + g + "|" + b + "|" + k + "|" + r + "|", {kRed, kGreen, kBlue, kGrey}},
        {r, {kYellow, kYellow, kYellow, kYellow}},  // no piece: the old skins stay
        {"", {kYellow, kYellow, kYellow, kYellow}},
    };
    for (const Case& c : cases) {
        auto button = Make();
        button->LoadSkin(CString((yellow + "|").c_str()), CString());
        button->LoadSkin(CString(c.skin.c_str()), CString(L"ignored"));
        EXPECT_EQ(Shown(*button), c.shown) << "skin string: " << c.skin;
    }
}

TEST_F(ZelButton, MissingSkinsFallBackToNormal) {
    auto button = Make();
    button->LoadBitmaps(CString(red.c_str()), CString(L"/no/such/focus.bmp"), CString(blue.c_str()),
                        CString(L"/no/such/disabled.bmp"));
    EXPECT_EQ(Shown(*button), (Skins{kRed, kRed, kBlue, kRed}));

    // Pressed without a down skin, the focused button shows its focus skin.
    button->LoadBitmaps(CString(red.c_str()), CString(green.c_str()), CString(L""), CString(grey.c_str()));
    EXPECT_EQ(Shown(*button), (Skins{kRed, kGreen, kGreen, kGrey}));
}

TEST_F(ZelButton, CreateTurnsStylesSharingOwnerDrawBitsIntoOwnerDraw) {
    const struct {
        DWORD style, type;
    } cases[] = {{BS_PUSHBUTTON, BS_PUSHBUTTON},
                 {BS_DEFPUSHBUTTON, BS_OWNERDRAW},
                 {BS_CHECKBOX, BS_OWNERDRAW},
                 {BS_RADIOBUTTON, BS_RADIOBUTTON},
                 {BS_OWNERDRAW, BS_OWNERDRAW}};
    for (const auto& c : cases) {
        auto button = Make(kPlace, WS_VISIBLE | c.style);
        EXPECT_EQ(button->GetStyle() & 0x0F, c.type) << "style " << c.style;
        EXPECT_TRUE(button->GetStyle() & WS_CHILD);
        button->LoadSkin(CString((red + "|").c_str()), CString());
        EXPECT_EQ(button->GetStyle() & BS_OWNERDRAW, static_cast<DWORD>(BS_OWNERDRAW)) << "a skin adds the bits";
    }
}

// Press at (5, 6), move along the path, release at its end: the parent hears the forwarded
// press and release (in its own coordinates) and a click only for a release over the button.
TEST_F(ZelButton, ClickOnReleaseInsideAndForwardedPressAndRelease) {
    const struct {
        std::vector<POINT> path;
        COLORREF held;  // shown just before the release
        const char* log;
    } cases[] = {
        {{{5, 6}}, kBlue, "LBUTTONDOWN(1,35,46);COMMAND(7,0,btn);LBUTTONUP(0,35,46)"},
        {{{200, 6}}, kGreen, "LBUTTONDOWN(1,35,46);LBUTTONUP(0,230,46)"},  // dragged off, it pops up
        {{{-20, 6}, {30, 30}}, kBlue, "LBUTTONDOWN(1,35,46);COMMAND(7,0,btn);LBUTTONUP(0,60,70)"},
    };
    for (const auto& c : cases) {
        auto button = Make();
        button->LoadSkin(skins.Skin({"red", "green", "blue"}), CString());
        const HWND hwnd = button->m_hWnd;
        DownAt(hwnd, 5, 6);
        EXPECT_EQ(GetCapture(), hwnd);
        for (POINT pt : c.path) MoveTo(hwnd, pt.x, pt.y);
        EXPECT_EQ(ShownAt(hwnd, 39, 38), c.held);
        UpAt(hwnd, c.path.back().x, c.path.back().y);
        EXPECT_EQ(parent.Take(), c.log);
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(GetFocus(), hwnd);
        desktop.Advance(1000);
    }
}

TEST_F(ZelButton, DoubleTapIsASecondClickAndKeysClick) {
    auto button = Make();
    TapAt(button->m_hWnd, 5, 6);
    TapAt(button->m_hWnd, 5, 6);
    EXPECT_EQ(parent.Take(),
              "LBUTTONDOWN(1,35,46);COMMAND(7,0,btn);LBUTTONUP(0,35,46);COMMAND(7,0,btn);LBUTTONUP(0,35,46)");
    desktop.Advance(1000);
    TapAt(button->m_hWnd, 5, 6);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,35,46);COMMAND(7,0,btn);LBUTTONUP(0,35,46)");

    button->SetFocus();  // Enter clicks the focused button; space is the BUTTON class's own
    for (UINT key : {VK_RETURN, VK_SPACE}) {
        Press(key);
        EXPECT_EQ(parent.Take(), "COMMAND(7,0,btn)") << key;
    }
}

TEST_F(ZelButton, HeldAutoClickRepeatsAt300MsThenEvery100MsAndClicksOnRelease) {
    auto button = Make();
    DownAt(button->m_hWnd, 5, 6);
    desktop.Advance(1000);
    UpAt(button->m_hWnd, 5, 6);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,35,46);COMMAND(7,0,btn);LBUTTONUP(0,35,46)") << "no repeat by default";
    desktop.Advance(1000);
    button->SetAutoClick(true);
    parent.timed = true;
    DownAt(button->m_hWnd, 5, 6);
    desktop.Advance(1000);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,35,46)@2000;" + Repeats("COMMAND(7,0,btn)", 2300, 100, 8));
    UpAt(button->m_hWnd, 5, 6);
    EXPECT_EQ(parent.Take(), "COMMAND(7,0,btn)@3000;LBUTTONUP(0,35,46)@3000");
    desktop.Advance(1000);
    EXPECT_EQ(parent.Take(), "-") << "the release stops the repeat";
}

// Repeats are skipped while held outside and resume inside; losing the focus stops the
// repeat and the click of the release.
TEST_F(ZelButton, RepeatsPauseOutsideAndStopWithTheFocus) {
    auto button = Make();
    button->SetAutoClick(true);
    const HWND hwnd = button->m_hWnd;
    parent.timed = true;
    DownAt(hwnd, 5, 6);
    desktop.Advance(300);
    MoveTo(hwnd, 120, 6);
    parent.Take();
    desktop.Advance(250);  // ticks at 400 and 500, outside
    EXPECT_EQ(parent.Take(), "-");
    MoveTo(hwnd, 5, 6);
    desktop.Advance(100);
    EXPECT_EQ(parent.Take(), "COMMAND(7,0,btn)@600");
    parent.SetFocus();
    desktop.Advance(500);
    UpAt(hwnd, 5, 6);
    EXPECT_EQ(parent.Take(), "LBUTTONUP(0,35,46)@1150");
}

// The stepped outline itself shows in the goldens (the parent's sentinel in the cut
// corners); here, that the cut corners are not the button's to hit, and that other sizes
// are rectangular.
TEST_F(ZelButton, Only78By76IsSteppedAndResizingReshapes) {
    auto button = Make();
    TapAt(button->m_hWnd, 0, 0);  // a tap in a cut corner is the parent's own
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,10,10);LBUTTONUP(0,10,10)");
    TapAt(button->m_hWnd, 4, 0);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,34,40);COMMAND(7,0,btn);LBUTTONUP(0,34,40)");

    desktop.Advance(1000);
    button = Make(CRect(10, 10, 70, 50));
    CRgn region;
    region.CreateRectRgn(0, 0, 0, 0);
    CRect box;
    EXPECT_EQ(button->GetWindowRgn(region), SIMPLEREGION);
    region.GetRgnBox(&box);
    EXPECT_EQ(box, CRect(0, 0, 60, 40));

    button->MoveWindow(10, 10, 78, 76, TRUE);
    EXPECT_EQ(button->GetWindowRgn(region), COMPLEXREGION);
    EXPECT_FALSE(region.PtInRegion(0, 0));

    button->MoveWindow(10, 10, 78, 77, TRUE);
    EXPECT_EQ(button->GetWindowRgn(region), SIMPLEREGION);
    region.GetRgnBox(&box);
    EXPECT_EQ(box, CRect(0, 0, 78, 77));
    desktop.RunUntilIdle();
    TapAt(button->m_hWnd, 0, 0);
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,30,40);COMMAND(7,0,btn);LBUTTONUP(0,30,40)");
}

TEST_F(ZelButton, CaptionStripIsReservedBelowAndFollowsTheFirstMoveWindowOnly) {
    auto button = Make(CRect(10, 10, 88, 107), WS_VISIBLE | BS_OWNERDRAW, true);
    CRect window;
    button->GetWindowRect(&window);
    EXPECT_EQ(window.Size(), CSize(78, 76));
    EXPECT_EQ(button->m_rcCaption, CRect(2, 87, 96, 107));

    button->MoveWindow(20, 30, 78, 76, TRUE);
    EXPECT_EQ(button->m_rcCaption, CRect(12, 107, 106, 127));
    button->MoveWindow(CRect(40, 50, 118, 126), TRUE);
    button->GetWindowRect(&window);
    parent.ScreenToClient(&window);
    EXPECT_EQ(window, CRect(40, 50, 118, 126));
    EXPECT_EQ(button->m_rcCaption, CRect(12, 107, 106, 127)) << "this overload leaves the strip";

    auto plain = Make(CRect(100, 10, 178, 107));
    plain->GetWindowRect(&window);
    EXPECT_EQ(window.Size(), CSize(78, 97));
    plain->MoveWindow(100, 10, 78, 76, TRUE);
    EXPECT_TRUE(plain->m_rcCaption.IsRectNull());
}

// The strip's edges are computed as the device computes them, in 32 bits that wrap; the
// window itself is clamped by the window manager.
TEST_F(ZelButton, CaptionStripOfAnAbsurdMoveWrapsAround) {
    auto button = Make(CRect(10, 10, 88, 107), WS_VISIBLE | BS_OWNERDRAW, true);
    button->MoveWindow(INT_MIN, INT_MAX, 0, 0, TRUE);
    EXPECT_EQ(button->m_rcCaption, CRect(INT_MAX - 7, INT_MIN, INT_MIN + 8, INT_MIN + 20));
    button->MoveWindow(0, 0, INT_MAX, INT_MAX, TRUE);
    EXPECT_EQ(button->m_rcCaption, CRect(-8, INT_MIN, INT_MIN + 7, INT_MIN + 20));
    CRect window;
    button->GetWindowRect(&window);
    EXPECT_EQ(window.Size(), CSize(32767, 32767));
    desktop.RunUntilIdle();
    EXPECT_EQ(parent.Take(), "-");
}

TEST_F(ZelButton, InvalidateRectAlwaysTakesTheWholeButton) {
    auto button = Make();
    CRect small(2, 2, 4, 4), update;
    button->InvalidateRect(&small, FALSE);
    EXPECT_TRUE(button->GetUpdateRect(&update, FALSE));
    EXPECT_EQ(update, CRect(0, 0, 78, 76));

    CZELButton windowless;  // releases its skins with the object
    const zel::GdiCounts before = zel::LiveGdiObjects();
    windowless.LoadBitmaps(CString(red.c_str()), CString(green.c_str()), CString(blue.c_str()), CString(grey.c_str()));
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps + 4);
}

TEST_F(ZelButton, SurvivesAParentThatDestroysItFromTheClick) {
    auto button = Make();
    button->SetAutoClick(true);
    const HWND hwnd = button->m_hWnd;
    parent.onMessage = [&](UINT message, WPARAM, LPARAM) {
        if (message == WM_COMMAND) button.reset();
    };
    DownAt(hwnd, 5, 6);
    desktop.Advance(300);
    EXPECT_FALSE(IsWindow(hwnd)) << "destroyed from the first repeat";
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,35,46);COMMAND(7,0,btn)");
    UpAt(hwnd, 5, 6);
    parent.Take();

    button = Make();
    const HWND second = button->m_hWnd;
    TapAt(second, 5, 6);
    EXPECT_FALSE(IsWindow(second)) << "destroyed from the click";
    EXPECT_EQ(parent.Take(), "LBUTTONDOWN(1,35,46);COMMAND(7,0,btn)");
}

TEST_F(ZelButton, BadSkinFilesDrawNothingAndAMissingParentFailsCreate) {
    const std::string junk = (skins.Dir() / "junk.bmp").string();
    std::ofstream(junk, std::ios::binary) << "BM this is not a bitmap";
    auto button = Make();
    button->LoadSkin(CString((junk + "|" + junk + "|").c_str()), CString());
    EXPECT_EQ(Shown(*button), (Skins{kSentinel, kSentinel, kSentinel, kSentinel}));

    CZELButton orphan;
    EXPECT_FALSE(orphan.Create(L"", WS_VISIBLE | BS_OWNERDRAW, kPlace, nullptr, kId, true));
    EXPECT_EQ(orphan.m_hWnd, nullptr);
    orphan.InvalidateRect(nullptr, TRUE);
    orphan.LoadSkin(CString((red + "|").c_str()), CString());
}

// A skin with a frame and a corner mark, so that the golden shows orientation and edges.
std::string FramedSkin(SkinFolder& skins, const std::string& name, COLORREF face) {
    return skins.Draw(name, 78, 76, [&](HDC dc) {
        FillBox(dc, 0, 0, 78, 76, RGB(20, 20, 20));
        FillBox(dc, 2, 2, 76, 74, face);
        FillBox(dc, 6, 6, 16, 12, RGB(255, 255, 255));
    });
}

TEST_F(ZelButton, GoldenStates) {
    auto button = Make();
    std::string skin = FramedSkin(skins, "n", kRed) + "|" + FramedSkin(skins, "f", kGreen) + "|" +
                       FramedSkin(skins, "d", kBlue) + "|" + FramedSkin(skins, "x", kGrey) + "|";
    button->LoadSkin(CString(skin.c_str()), CString());
    ForEachLook(*button, {39, 38},
                [&](const char* look) { EXPECT_GOLDEN("CZELButton", look, CaptureWindow(button->m_hWnd, 2)); });
}

}  // namespace
