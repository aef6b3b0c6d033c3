// CZELSlider: its skins and layout, the range and step rules with their notifications,
// paging, dragging, move style, vertical mode, thumb states, keys and painting.
#include <functional>
#include <memory>
#include <vector>

#include "CZELSlider.h"
#include "controls/shown_part.h"
#include "support/control_test.h"
#include "support/golden.h"

namespace {

using namespace zel::test;

// The nine-piece skin: 6 x 16 caps, 3-pixel channel end pieces (the right one 5 wide, of
// which only the left piece's 3 columns show), an empty channel dark at its top and bottom
// 4 rows, a 6-row filled channel and 8 x 16 thumbs with magenta notches at their corners.
// The slider is 80 x 16 at (10, 10): channel x 6-73, thumb centre 10 + 60 x pos / 100.
const COLORREF kLeftCap = RGB(90, 90, 160), kRightCap = RGB(160, 90, 90);
const COLORREF kLeftPiece = RGB(200, 200, 120), kRightPiece = RGB(120, 200, 200), kRightPieceTail = RGB(255, 255, 0);
const COLORREF kChannel = RGB(235, 235, 235), kChannelEdge = RGB(70, 70, 70), kFill = RGB(250, 170, 40);
const COLORREF kThumb = RGB(30, 30, 30), kThumbReleased = RGB(30, 30, 200), kThumbPressed = RGB(200, 30, 30);
const COLORREF kKey = RGB(255, 0, 255);
constexpr int kX = 10, kY = 10;
const CRect kFence(kX - 1, kY - 1, kX + 81, kY + 17);  // the nine-piece slider and a pixel around it

COLORREF ChannelArt(int, int y) { return y < 4 || y >= 12 ? kChannelEdge : kChannel; }

// Progress art: colours that encode their own coordinates, so an offset source shows.
COLORREF HBack(int x, int y) { return RGB(20, 20 + y, 20 + x); }
COLORREF HFill(int x, int y) { return RGB(255, 4 * x, 20 * y); }
COLORREF VBack(int x, int y) { return RGB(20 + y, 20, 20 + x); }
COLORREF VFill(int x, int y) { return RGB(20 * x, 4 * y, 255); }

class ProbeSlider : public CZELSlider {
public:
    using CZELSlider::m_nThumbState;
    using CZELSlider::m_rcChannel;
    std::string State() {
        long lo = 0, hi = 0;
        GetRange(lo, hi);
        return std::to_string(lo) + ".." + std::to_string(hi) + "@" + std::to_string(GetPos());
    }
};

class SliderTest : public ControlTest {
protected:
    SliderTest() : ControlTest(CRect(0, 0, 120, 100)) {}
    void SetUp() override {
        ControlTest::SetUp();
        skins.Solid("lcap", 6, 16, kLeftCap);
        skins.Solid("rcap", 6, 16, kRightCap);
        skins.Solid("lpiece", 3, 16, kLeftPiece);
        skins.Pixels("rpiece", 5, 16, [](int x, int) { return x < 3 ? kRightPiece : kRightPieceTail; });
        skins.Pixels("channel", 2, 16, ChannelArt);
        skins.Solid("fill", 2, 6, kFill);
        for (auto [name, body] :
             {std::pair{"thumb", kThumb}, {"thumb_up", kThumbReleased}, {"thumb_down", kThumbPressed}})
            skins.Keyed(name, 8, 16, body, kKey, {{0, 0, 1, 3}, {7, 0, 8, 3}, {0, 13, 1, 16}, {7, 13, 8, 16}});
        skins.Pixels("hback", 40, 10, HBack);
        skins.Pixels("hfill", 40, 10, HFill);
        skins.Pixels("vback", 10, 40, VBack);
        skins.Pixels("vfill", 10, 50, VFill);  // taller than the slider: its bottom is used
    }
    void TearDown() override {
        slider.reset();
        ControlTest::TearDown();
    }

    CString NinePieces() const {
        return skins.Skin({"lcap", "rcap", "thumb", "thumb_up", "thumb_down", "fill", "channel", "lpiece", "rpiece"});
    }

    // Hidden (`show` 0), it is not painted until shown.
    ProbeSlider& MakeSlider(int width, int height, const CString& skin, DWORD show = WS_VISIBLE) {
        slider = std::make_unique<ProbeSlider>();
        EXPECT_TRUE(slider->Create(nullptr, L"", WS_CHILD | show, CRect(kX, kY, kX + width, kY + height), &parent, 77));
        parent.Name(slider->m_hWnd, "slider");
        if (!skin.IsEmpty()) slider->LoadSkin(skin, L"");
        desktop.RunUntilIdle();
        parent.Take();
        return *slider;
    }
    ProbeSlider& MakeNinePiece() { return MakeSlider(80, 30, NinePieces()); }

    // The first thumb-coloured column in the slider's middle row (slider coordinates).
    int ThumbLeft(COLORREF body = kThumb) const {
        for (int x = 0; x < 100; ++x)
            if (ScreenPixel(kX + x, kY + 8) == body) return x;
        return -1;
    }
    void Show() { desktop.RunUntilIdle(); }

    std::unique_ptr<ProbeSlider> slider;
};

// ---- skins, layout and painting -------------------------------------------------------------

TEST_F(SliderTest, NinePieceSkinTakesTheCapHeightAndLaysTheChannelBetweenTheCaps) {
    ProbeSlider& s = MakeNinePiece();
    CRect window;
    s.GetWindowRect(&window);
    EXPECT_EQ(window, CRect(kX, kY, kX + 80, kY + 16)) << "the left cap's height; not moved";

    s.SetPos(50);
    Show();  // caps, end pieces, fill, keyed thumb and channel: the golden's pixels
    EXPECT_TRUE(ScreenMatchesGolden("CZELSlider", "normal", kFence));
}

// A paint costs what shows of the slider. Half hidden past the parent's left edge, the
// slider shows exactly the columns it shows whole (its canvas then starts inside the client
// area: pieces, the stretched channel and fill, the keyed thumb all land the same); moved
// 32767 wide, of which the parent shows 110 columns, a repaint writes a few layers of those
// columns, not of the whole window.
TEST_F(SliderTest, PaintCostsWhatShowsAndShowsWhatAWholePaintWould) {
    ProbeSlider& s = MakeNinePiece();
    s.SetPos(50);
    Show();
    EXPECT_TRUE(ShowsAsWhole(s, CRect(kX, kY, kX + 80, kY + 16), -30, 0, kThumb));

    s.MoveWindow(kX, kY, 32767, 16);
    ExpectRepaintWithin(s, 8u * 110 * 16);
}

// The slider keeps its canvas and the layer under the fill and the thumb between paints.
// Whatever changes after a paint, the next paint shows what a slider painting for the
// first time in that state shows.
TEST_F(SliderTest, KeptPicturesFollowEveryChangeOfSkinLayoutAndStyle) {
    skins.Pixels("channel2", 2, 16, [](int x, int y) { return RGB(40 * x, 10 * y, 99); });
    const CString second =
        skins.Skin({"lcap", "rcap", "thumb", "thumb_up", "thumb_down", "fill", "channel2", "lpiece", "rpiece"});
    const CString progress = skins.Skin({"hback", "hfill"}), otherProgress = skins.Skin({"vback", "vfill"});
    using Step = std::function<void(ProbeSlider&)>;
    const Step nothing = [](ProbeSlider&) {};
    const struct {
        const char* name;
        Step before, after;  // before the first paint, after it
    } cases[] = {
        {"another channel", nothing, [&](ProbeSlider& s) { s.LoadSkin(second, L""); }},
        {"SetChanRect", nothing, [](ProbeSlider& s) { s.SetChanRect(41, 5); }},
        {"wider", nothing, [](ProbeSlider& s) { s.MoveWindow(kX, kY, 100, 16); }},
        {"narrower", nothing, [](ProbeSlider& s) { s.MoveWindow(kX, kY, 50, 16); }},
        {"to progress", nothing, [&](ProbeSlider& s) { s.LoadSkin(progress, L""); }},
        {"another background", [&](ProbeSlider& s) { s.LoadSkin(progress, L""); },
         [&](ProbeSlider& s) { s.LoadSkin(otherProgress, L""); }},
        {"back to the nine pieces", [&](ProbeSlider& s) { s.LoadSkin(progress, L""); },
         [](ProbeSlider& s) { s.SetStyle(0); }},
        {"vertical progress", [&](ProbeSlider& s) { s.LoadSkin(progress, L""); },
         [](ProbeSlider& s) { s.SetvStyle(true); }},
        {"position", nothing, [](ProbeSlider& s) { s.SetPos(90); }},
    };
    auto picture = [] { return CaptureScreen(CRect(kX - 1, kY - 1, kX + 101, kY + 17)).pixels; };
    for (const auto& c : cases) {
        ProbeSlider& kept = MakeNinePiece();
        c.before(kept);
        kept.SetPos(50);
        Show();
        c.after(kept);
        Show();
        const std::vector<COLORREF> changed = picture();
        slider.reset();
        Show();

        ProbeSlider& fresh = MakeSlider(80, 30, NinePieces(), 0);
        c.before(fresh);
        fresh.SetPos(50);
        c.after(fresh);
        fresh.ShowWindow(SW_SHOW);
        Show();  // the first paint
        EXPECT_TRUE(picture() == changed) << c.name;
        slider.reset();
        Show();
    }
}

TEST_F(SliderTest, ResourceSkinMatchesThePathSkin) {
    HINSTANCE module = skins.Module({{201, "lcap"},
                                     {202, "rcap"},
                                     {203, "thumb"},
                                     {204, "thumb_up"},
                                     {205, "thumb_down"},
                                     {206, "fill"},
                                     {207, "channel"},
                                     {208, "lpiece"},
                                     {209, "rpiece"}});
    ProbeSlider& s = MakeSlider(80, 30, L"");
    const UINT ends[] = {201, 202}, thumb[] = {203, 204, 0x30000 | 205}, channel[] = {206, 207, 208, 209};
    HINSTANCE before = AfxGetResourceHandle();
    s.LoadBitmapW(ends, thumb, channel, module);
    EXPECT_EQ(AfxGetResourceHandle(), before);
    s.SetPos(50);
    Show();
    EXPECT_TRUE(ScreenMatchesGolden("CZELSlider", "normal", kFence));

    s.LoadBitmapW(nullptr, nullptr, nullptr, module);  // no arrays: nothing to load
    Show();
    EXPECT_EQ(ScreenPixel(kX + 2, kY + 8), 0u) << "an unskinned slider shows its empty canvas";
}

TEST_F(SliderTest, SetChanRectCentresAClippedChannelAndMoveWindowLaysItAgain) {
    ProbeSlider& s = MakeNinePiece();
    s.SetChanRect(41, 5);
    EXPECT_EQ(s.m_rcChannel, CRect(19, 5, 60, 10)) << "margins (80 - 41) / 2 and (16 - 5) / 2, rounded down";
    s.SetChanRect(1000, 1000);
    EXPECT_EQ(s.m_rcChannel, CRect(0, 0, 80, 16));
    s.SetChanRect(0, 0);
    EXPECT_EQ(s.m_rcChannel, CRect(40, 8, 40, 8));

    s.MoveWindow(CRect(kX, kY, kX + 100, kY + 16), TRUE);  // lays the channel again: 6-93
    s.SetPos(100);
    Show();
    EXPECT_EQ(ThumbLeft(), 86);
    EXPECT_EQ(ScreenPixel(kX + 99, kY + 8), kRightCap);
}

// ---- range, position, steps ---------------------------------------------------------------------

TEST_F(SliderTest, SetRangeRestartsAtTheNewMinimumUnlessTheValueLandsOnTheNewMaximum) {
    ProbeSlider& s = MakeNinePiece();
    EXPECT_EQ(s.State(), "0..100@0");
    EXPECT_EQ(s.GetPageSize(), -1);
    // The rescaling itself is ScrollMath's table; here the control applies it.
    const struct {
        long pos, lo, hi;
        const char* state;
    } cases[] = {{25, 0, 50, "0..50@50"},    // 25 x 100 / 50 lands on the new maximum
                 {50, 20, 120, "20..120@20"},  // anything else restarts at the minimum
                 {20, 7, 7, "0..0@0"},         // a degenerate range is 0..0
                 {0, 9, 3, "0..0@0"}};
    for (const auto& c : cases) {
        s.SetPos(c.pos);
        s.SetRange(c.lo, c.hi, TRUE);
        EXPECT_EQ(s.State(), c.state) << c.pos << " -> " << c.lo << ".." << c.hi;
    }
    s.SetRange(0, 100, TRUE);
    s.SetPos(500);
    EXPECT_EQ(s.GetPos(), 100);
    s.SetPos(-3);
    EXPECT_EQ(s.GetPos(), 0);
    EXPECT_EQ(parent.Take(), "-") << "range and position changes from the host are silent";
}

TEST_F(SliderTest, LineStepsNotifyOnlyWhenTheyMove) {
    ProbeSlider& s = MakeNinePiece();
    s.LineLeft();
    s.Linedown();
    EXPECT_EQ(parent.Take(), "-") << "at the minimum nothing moves and nothing is sent";
    s.LineRight();
    s.LineUp();
    EXPECT_EQ(s.GetPos(), 2) << "LineUp raises the value";
    s.Linedown();
    s.LineLeft();
    EXPECT_EQ(s.GetPos(), 0);
    EXPECT_EQ(parent.Take(),
              "HSCROLL(SB_LINEDOWN,0,slider);VSCROLL(SB_LINEUP,0,slider);VSCROLL(SB_LINEDOWN,0,slider);"
              "HSCROLL(SB_LINEUP,0,slider)");
    EXPECT_EQ(s.SetLineSize(30), 1) << "returns the previous line";
    s.SetPos(90);
    s.LineRight();
    EXPECT_EQ(s.GetPos(), 100);
    s.LineUp();
    EXPECT_EQ(parent.Take(), "HSCROLL(SB_LINEDOWN,0,slider)");
}

TEST_F(SliderTest, PageStepsAlwaysNotifyAsHorizontal) {
    ProbeSlider& s = MakeNinePiece();
    s.LeftPage();
    EXPECT_EQ(s.GetPos(), 0);
    s.Rightpage();
    EXPECT_EQ(s.GetPos(), 20) << "a fifth of the range while the page is not set";
    EXPECT_EQ(s.SetPageSize(7), static_cast<UINT>(-1)) << "returns the previous page";
    EXPECT_EQ(s.GetPageSize(), 7);
    s.SetvStyle(true);
    s.Rightpage();
    EXPECT_EQ(s.GetPos(), 27);
    s.SetPos(98);
    s.Rightpage();
    s.Rightpage();
    EXPECT_EQ(s.GetPos(), 100);
    EXPECT_EQ(parent.Take(),
              "HSCROLL(SB_PAGEUP,0,slider);HSCROLL(SB_PAGEDOWN,0,slider);HSCROLL(SB_PAGEDOWN,0,slider);"
              "HSCROLL(SB_PAGEDOWN,0,slider);HSCROLL(SB_PAGEDOWN,0,slider)");
}

// ---- pointer --------------------------------------------------------------------------------

TEST_F(SliderTest, PressBesideTheThumbPagesEvery500msUntilTheThumbReachesThePointer) {
    ProbeSlider& s = MakeNinePiece();
    parent.timed = true;
    desktop.PointerDown(kX + 70, kY + 8);
    desktop.Advance(3000);
    EXPECT_EQ(parent.Take(), Repeats("HSCROLL(SB_PAGEDOWN,0,slider)", 0, 500, 5))
        << "at 100 the thumb (66-73) covers x 70";
    EXPECT_EQ(s.GetPos(), 100);
    desktop.PointerUp(kX + 70, kY + 8);

    // Beside the thumb at the far end, the repeat goes on at the limit.
    desktop.Advance(1000);
    desktop.PointerDown(kX + 2, kY + 8);
    desktop.Advance(2600);
    desktop.PointerUp(kX + 2, kY + 8);
    desktop.Advance(1000);
    EXPECT_EQ(parent.Take(), Repeats("HSCROLL(SB_PAGEUP,0,slider)", 4000, 500, 6))
        << "the last at the minimum already";
    EXPECT_EQ(s.GetPos(), 0);
    EXPECT_EQ(s.m_nThumbState, 2) << "any release leaves the released thumb";
}

TEST_F(SliderTest, RepeatStopsWhileThePointerIsAwayAndOnFocusLoss) {
    ProbeSlider& s = MakeNinePiece();
    desktop.PointerDown(kX + 70, kY + 8);
    desktop.PointerMove(kX + 70, kY + 40);  // below the slider: outside the client area
    desktop.Advance(1000);
    EXPECT_EQ(s.GetPos(), 20);
    desktop.PointerMove(kX + 70, kY + 8);
    desktop.Advance(500);
    EXPECT_EQ(s.GetPos(), 40);
    ::SetFocus(parent.m_hWnd);
    EXPECT_EQ(s.m_nThumbState, 0);
    desktop.Advance(2000);
    EXPECT_EQ(s.GetPos(), 40);
    desktop.PointerUp(kX + 70, kY + 8);
}

TEST_F(SliderTest, DragBeyondEitherEndGivesTheLimits) {
    MakeNinePiece();
    desktop.PointerDown(kX + 10, kY + 8);  // on the thumb at 0 (x 6-13)
    EXPECT_EQ(ThumbLeft(kThumbPressed), 6);
    EXPECT_TRUE(ScreenMatchesGolden("CZELSlider", "pressed", kFence));
    desktop.PointerMove(kX - 50, kY + 8);
    desktop.PointerMove(kX + 300, kY - 40);
    desktop.PointerMove(kX + 40, kY + 8);  // (40 - 4 - 6) x 100 / 60
    desktop.PointerUp(kX + 40, kY + 8);
    EXPECT_EQ(parent.Take(),
              "HSCROLL(SB_THUMBTRACK,0,slider);HSCROLL(SB_THUMBTRACK,100,slider);"
              "HSCROLL(SB_THUMBTRACK,50,slider);HSCROLL(SB_THUMBPOSITION,50,slider)");
    EXPECT_EQ(ThumbLeft(kThumbReleased), 36);
    EXPECT_TRUE(ScreenMatchesGolden("CZELSlider", "released", kFence));

    ::SetFocus(parent.m_hWnd);
    Show();
    EXPECT_EQ(ThumbLeft(kThumb), 36) << "losing the focus shows the normal thumb";
}

TEST_F(SliderTest, MoveStyleJumpsToThePressAndReadsAsAPageStep) {
    ProbeSlider& s = MakeNinePiece();
    s.SetMoveStyle(true);
    desktop.PointerDown(kX + 40, kY + 8);  // 100 x (40 - 6) / 68
    EXPECT_EQ(s.GetPos(), 50);
    EXPECT_EQ(s.m_nThumbState, 0) << "a jump does not press the thumb";
    desktop.PointerMove(kX + 70, kY + 8);
    desktop.PointerUp(kX + 70, kY + 8);
    EXPECT_EQ(parent.Take(),
              "HSCROLL(SB_PAGEDOWN,0,slider);HSCROLL(SB_THUMBTRACK,100,slider);"
              "HSCROLL(SB_THUMBPOSITION,100,slider)");

    // Outside the channel (on a cap) a press pages as usual.
    desktop.Advance(1000);
    desktop.PointerDown(kX + 2, kY + 8);
    desktop.PointerUp(kX + 2, kY + 8);
    EXPECT_EQ(parent.Take(), "HSCROLL(SB_PAGEUP,0,slider)");
    EXPECT_EQ(s.GetPos(), 80);
}

// ---- progress style and vertical mode ----------------------------------------------------------

TEST_F(SliderTest, HorizontalProgressFillsFromTheLeft) {
    ProbeSlider& s = MakeSlider(40, 10, skins.Skin({"hback", "hfill"}));
    // The two-piece skin selects the progress style: a channel over the whole client, no thumb.
    s.SetPos(25);
    Show();
    EXPECT_TRUE(ScreenMatchesGolden("CZELSlider", "progress_horizontal", CRect(kX - 1, kY - 1, kX + 41, kY + 11)));
    s.SetRange(0, 0, TRUE);
    Show();
    EXPECT_EQ(ScreenPixel(kX, kY), HBack(0, 0)) << "an empty range fills nothing";
}

TEST_F(SliderTest, VerticalProgressFillsUpwardFromTheFillBitmapsBottom) {
    ProbeSlider& s = MakeSlider(10, 40, L"");
    HINSTANCE module = skins.Module({{301, "vback"}, {302, "vfill"}});
    s.LoadBitmapW(301, 302, module);
    s.SetStyle(1);
    s.SetvStyle(true);
    s.SetPos(25);
    Show();
    // 40 x 25 / 100 = 10 rows, from fill rows 40-49 (the art encodes its coordinates) to
    // client rows 30-39.
    EXPECT_TRUE(ScreenMatchesGolden("CZELSlider", "progress_vertical", CRect(kX - 1, kY - 1, kX + 11, kY + 41)));
}

TEST_F(SliderTest, VerticalPointerArithmeticHasTheMinimumAtTheBottom) {
    ProbeSlider& s = MakeSlider(10, 40, skins.Skin({"vback", "vfill"}));
    s.SetvStyle(true);
    s.SetMoveStyle(true);
    desktop.PointerDown(kX + 5, kY + 30);  // 100 x (40 - 30) / 40
    EXPECT_EQ(s.GetPos(), 25);
    desktop.PointerMove(kX + 5, kY - 10);
    desktop.PointerMove(kX + 5, kY + 50);
    desktop.PointerMove(kX + 5, kY + 20);
    desktop.PointerUp(kX + 5, kY + 20);
    EXPECT_EQ(parent.Take(),
              "VSCROLL(SB_PAGEUP,0,slider);VSCROLL(SB_THUMBTRACK,100,slider);"
              "VSCROLL(SB_THUMBTRACK,0,slider);VSCROLL(SB_THUMBTRACK,50,slider);"
              "VSCROLL(SB_THUMBPOSITION,50,slider)");
}

// ---- keys -------------------------------------------------------------------------------------

TEST_F(SliderTest, KeysMoveTheThumbTheWayTheyPoint) {
    ProbeSlider& s = MakeNinePiece();
    ::SetFocus(s.m_hWnd);
    for (UINT key : {VK_RIGHT, VK_NEXT, VK_LEFT, VK_PRIOR, VK_UP, VK_DOWN}) desktop.KeyDown(key);
    EXPECT_EQ(parent.Take(),
              "HSCROLL(SB_LINEDOWN,0,slider);HSCROLL(SB_PAGEDOWN,0,slider);HSCROLL(SB_LINEUP,0,slider);"
              "HSCROLL(SB_PAGEUP,0,slider)");
    EXPECT_EQ(s.GetPos(), 0);

    s.SetvStyle(true);
    for (UINT key : {VK_UP, VK_PRIOR, VK_DOWN, VK_NEXT, VK_LEFT}) desktop.KeyDown(key);
    EXPECT_EQ(parent.Take(),
              "VSCROLL(SB_LINEUP,0,slider);HSCROLL(SB_PAGEDOWN,0,slider);VSCROLL(SB_LINEDOWN,0,slider);"
              "HSCROLL(SB_PAGEUP,0,slider)");
    EXPECT_EQ(s.GetPos(), 0);
}

// ---- lifetime ---------------------------------------------------------------------------------

TEST_F(SliderTest, LoadsReplaceTheirBitmapsAndTheDestructorReleasesThem) {
    const zel::GdiCounts before = zel::LiveGdiObjects();
    ProbeSlider& s = MakeNinePiece();
    // The painted window keeps two bitmaps besides its skin: its canvas and its still layer.
    constexpr int kKept = 2;
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps + 9 + kKept);
    s.LoadSkin(NinePieces(), L"");
    s.LoadSkin(skins.Skin({"hback", "hfill"}), L"");
    s.UpdateWindow();
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps + 11 + kKept);
    s.LoadSkin(skins.Skin({"hback", "hfill"}), L"");
    s.UpdateWindow();
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps + 11 + kKept) << "a new layer replaces the old one";
    ::DestroyWindow(s.m_hWnd);
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps + 11) << "the window's end leaves them to the object";
    slider.reset();
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps);
}

TEST_F(SliderTest, AParentMayDeleteTheSliderFromItsNotification) {
    MakeNinePiece();
    parent.onMessage = [this](UINT message, WPARAM, LPARAM) {
        if (message == WM_HSCROLL || message == WM_VSCROLL) slider.reset();
    };
    desktop.PointerDown(kX + 70, kY + 8);
    EXPECT_EQ(slider, nullptr);
    desktop.Advance(1500);
    desktop.PointerUp(kX + 70, kY + 8);
    EXPECT_EQ(parent.Take(), "HSCROLL(SB_PAGEDOWN,0,slider);LBUTTONUP(0,80,18)");
}

}  // namespace
