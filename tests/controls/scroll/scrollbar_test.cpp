// CZELScrollbar: layout from its skin, the range/page/line/position rules, the steps and
// their notifications, repeats, drags, keys and painting.
#include <climits>
#include <memory>
#include <vector>

#include "CZELScrollbar.h"
#include "controls/shown_part.h"
#include "support/control_test.h"
#include "support/golden.h"

namespace {

using namespace zel::test;

// The skin: 8-pixel arrows with a dark outer row, a 12 x 24 track with a dark left column
// and bands of 4 rows, an 8 x 6 framed thumb. The bar is 12 x 40 at (10, 10) of the parent
// (the parent sits at the screen's origin): arrows at rows 0-7 and 32-39, track 8-31.
const COLORREF kUp = RGB(200, 60, 60), kUpPressed = RGB(255, 140, 140), kUpEdge = RGB(120, 30, 30);
const COLORREF kDown = RGB(60, 60, 200), kDownPressed = RGB(140, 140, 255), kDownEdge = RGB(30, 30, 120);
const COLORREF kTrackA = RGB(220, 220, 220), kTrackB = RGB(190, 190, 190), kTrackEdge = RGB(100, 100, 100);
const COLORREF kThumb = RGB(40, 160, 40), kThumbPressed = RGB(120, 230, 120), kThumbFrame = RGB(0, 90, 0);
constexpr int kX = 10, kY = 10;                        // the bar's origin on the screen
const CRect kFence(kX - 1, kY - 1, kX + 13, kY + 41);  // the bar and a pixel around it

COLORREF TrackArt(int x, int y) { return x == 0 ? kTrackEdge : (y / 4) % 2 ? kTrackB : kTrackA; }

// Exposes the cells for layout checks.
class ProbeBar : public CZELScrollbar {
public:
    using CZELScrollbar::m_rcDownArrow;
    using CZELScrollbar::m_rcTrack;
    using CZELScrollbar::m_rcUpArrow;
    // "lo..hi@pos"; reading the range invalidates the bar, as a host's call does.
    std::string State() {
        long lo = 0, hi = 0;
        GetRange(lo, hi);
        return std::to_string(lo) + ".." + std::to_string(hi) + "@" + std::to_string(GetScrollPos());
    }
};

class ScrollbarTest : public ControlTest {
protected:
    ScrollbarTest() : ControlTest(CRect(0, 0, 120, 100)) {}
    void SetUp() override {
        ControlTest::SetUp();
        skins.Pixels("up", 12, 8, [](int, int y) { return y == 0 ? kUpEdge : kUp; });
        skins.Pixels("up_down", 12, 8, [](int, int y) { return y == 0 ? kUpEdge : kUpPressed; });
        skins.Pixels("down", 12, 8, [](int, int y) { return y == 7 ? kDownEdge : kDown; });
        skins.Pixels("down_down", 12, 8, [](int, int y) { return y == 7 ? kDownEdge : kDownPressed; });
        skins.Pixels("track", 12, 24, TrackArt);
        skins.Framed("thumb", 8, 6, kThumb, kThumbFrame);
        skins.Framed("thumb_down", 8, 6, kThumbPressed, kThumbFrame);
    }
    void TearDown() override {
        bar.reset();
        ControlTest::TearDown();
    }

    CString SkinString() const {
        CString s;
        for (const char* piece : {"up", "up_down", "track", "thumb", "thumb_down", "down", "down_down"})
            s += CString((" " + skins.Path(piece) + " |").c_str());
        return s;
    }

    ProbeBar& MakeBar(bool skinned = true) {
        bar = std::make_unique<ProbeBar>();
        EXPECT_TRUE(bar->Create(L"VSCrollBar", WS_CHILD | WS_VISIBLE, CRect(kX, kY, kX + 30, kY + 90), &parent, 9001));
        parent.Name(bar->m_hWnd, "bar");
        if (skinned) bar->LoadSkin(SkinString(), L"");
        desktop.RunUntilIdle();
        parent.Take();
        return *bar;
    }

    // The pointer on row y (bar coordinates) of the bar's middle column.
    void Down(int y) { desktop.PointerDown(kX + 5, kY + y); }
    void Move(int y) { desktop.PointerMove(kX + 5, kY + y); }
    void Up(int y) { desktop.PointerUp(kX + 5, kY + y); }
    void Tap(int y) { desktop.Tap(kX + 5, kY + y); }

    // The first row (bar coordinates) of the thumb's frame in the thumb's middle column.
    int ThumbTop() const {
        for (int y = 0; y < 80; ++y)
            if (ScreenPixel(kX + 5, kY + y) == kThumbFrame) return y;
        return -1;
    }

    std::unique_ptr<ProbeBar> bar;
};

// ---- layout and painting -------------------------------------------------------------------

TEST_F(ScrollbarTest, SkinSizesTheBarAndLaysTheCellsOutFromTheTopDown) {
    ProbeBar& b = MakeBar();
    CRect window;
    b.GetWindowRect(&window);
    EXPECT_EQ(window, CRect(kX, kY, kX + 12, kY + 40)) << "track width, track height plus two arrows; not moved";
    // Where each cell is painted (the sentinel fence around the bar included) is the
    // golden's; where each is hit, the step and drag tests'.
    EXPECT_TRUE(ScreenMatchesGolden("CZELScrollbar", "min", kFence));
    b.SetScrollPos(100, TRUE);
    desktop.RunUntilIdle();
    EXPECT_TRUE(ScreenMatchesGolden("CZELScrollbar", "max", kFence));
}

TEST_F(ScrollbarTest, PressedArrowAndPressedThumbShowTheirImages) {
    MakeBar();
    Down(35);
    EXPECT_TRUE(ScreenMatchesGolden("CZELScrollbar", "pressed_arrow", kFence));
    Up(35);
    EXPECT_EQ(ScreenPixel(kX + 5, kY + 34), kDown) << "the release clears the pressed part";

    bar->SetScrollPos(50, TRUE);
    desktop.RunUntilIdle();
    Down(19);
    EXPECT_TRUE(ScreenMatchesGolden("CZELScrollbar", "pressed_thumb", kFence));
    Up(19);
    EXPECT_EQ(ScreenPixel(kX + 5, kY + 19), kThumb);
}

TEST_F(ScrollbarTest, ResourceSkinMatchesThePathSkin) {
    HINSTANCE module = skins.Module({{101, "thumb"},
                                     {102, "thumb_down"},
                                     {103, "track"},
                                     {104, "up"},
                                     {105, "down"},
                                     {106, "down_down"},
                                     {107, "up_down"}});
    ProbeBar& b = MakeBar(false);
    HINSTANCE before = AfxGetResourceHandle();
    // Identifiers count by their low 16 bits.
    b.LoadBitmapW(101, 102, 0x10000 | 103, 104, 105, 106, 107, module);
    EXPECT_EQ(AfxGetResourceHandle(), before) << "the resource handle is restored";
    desktop.RunUntilIdle();
    EXPECT_TRUE(ScreenMatchesGolden("CZELScrollbar", "min", kFence));

    // Without a module the current resource handle is used.
    AfxSetResourceHandle(module);
    b.LoadBitmapW(101, 102, 103, 104, 105, 106, 107, nullptr);
    AfxSetResourceHandle(before);
    desktop.RunUntilIdle();
    EXPECT_EQ(ThumbTop(), 8);
    EXPECT_EQ(ScreenPixel(kX + 5, kY + 33), kDown);
}

TEST_F(ScrollbarTest, MoveWindowStretchesTheTrackAndMovesTheDownArrow) {
    ProbeBar& b = MakeBar();
    b.MoveWindow(kX, kY, 12, 72, TRUE);
    EXPECT_EQ(b.m_rcTrack, CRect(0, 8, 12, 64));
    EXPECT_EQ(b.m_rcDownArrow, CRect(0, 64, 12, 72));
    b.SetScrollPos(100, TRUE);
    desktop.RunUntilIdle();
    EXPECT_EQ(ThumbTop(), 58) << "8 + 56 - 6";
    // The track's 24 rows stretched over 56: source row ceil((2i+1) x 24 / 112) - 1.
    for (int i = 0; i < 50; ++i) {
        const int source = ((2 * i + 1) * 24 + 111) / 112 - 1;
        ASSERT_EQ(ScreenPixel(kX + 5, kY + 8 + i), TrackArt(5, source)) << "track row " << i;
    }
    EXPECT_EQ(ScreenPixel(kX + 5, kY + 64), kDown);
    EXPECT_EQ(ScreenPixel(kX + 5, kY + 71), kDownEdge);
    EXPECT_EQ(ScreenPixel(kX + 5, kY + 72), kSentinel);

    Tap(68);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_THUMBPOSITION,100,bar);VSCROLL(SB_LINEDOWN,0,bar)");
}

// The window manager clamps an absurd size; the cells are laid out for what the window
// got, and so is a bar without a window for the sizes it can have.
TEST_F(ScrollbarTest, MoveWindowToAnAbsurdSizeLaysTheCellsForTheSizeTheWindowGot) {
    ProbeBar& b = MakeBar();
    b.MoveWindow(kX, kY, 12, INT_MIN, TRUE);
    EXPECT_EQ(b.m_rcUpArrow, CRect(0, 0, 12, 8));
    EXPECT_EQ(b.m_rcTrack, CRect(0, 8, 12, -8));
    EXPECT_EQ(b.m_rcDownArrow, CRect(0, -8, 12, 0));
    b.MoveWindow(kX, kY, INT_MAX, 40, TRUE);
    EXPECT_EQ(b.m_rcTrack, CRect(0, 8, 32767, 32));
    desktop.RunUntilIdle();
    Tap(36);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_LINEDOWN,0,bar)");

    ProbeBar windowless;
    windowless.LoadSkin(SkinString(), L"");
    windowless.MoveWindow(0, 0, -5, INT_MIN, TRUE);
    EXPECT_EQ(windowless.m_rcDownArrow, CRect(0, -8, 0, 0));
}

// ---- range, page, line, position ----------------------------------------------------------

TEST_F(ScrollbarTest, RangeRules) {
    ProbeBar& b = MakeBar();
    EXPECT_EQ(b.State(), "0..100@0");
    EXPECT_EQ(b.GetPageSize(), -1);
    EXPECT_EQ(b.GetLineSize(), 1);

    b.SetScrollPos(60, FALSE);
    b.SetScrollRange(5, 5);
    EXPECT_EQ(b.State(), "0..1@0") << "a degenerate range is 0..1 and resets the position";
    long lo = -1, hi = -1;

    b.SetScrollRange(9, 3);
    b.GetRange(lo, hi);
    EXPECT_EQ(hi - lo, 1);

    b.SetScrollRange(10, 20);
    EXPECT_EQ(b.GetScrollPos(), 10) << "clamped up to the new minimum";
    b.SetScrollPos(20, FALSE);
    b.SetScrollRange(0, 15);
    EXPECT_EQ(b.GetScrollPos(), 15) << "clamped down to the new maximum";
    b.SetScrollPos(-7, FALSE);
    EXPECT_EQ(b.GetScrollPos(), 0);

    desktop.RunUntilIdle();
    RECT update;
    b.GetRange(lo, hi);
    EXPECT_TRUE(::GetUpdateRect(b.m_hWnd, &update, FALSE)) << "reading the range invalidates the bar";
}

TEST_F(ScrollbarTest, PageAndLineSizeRules) {
    ProbeBar& b = MakeBar();  // range 0..100
    struct Case {
        long in, stored;
    };
    for (Case c : {Case{1, 1}, Case{99, 99}, Case{100, 100}, Case{500, 100}, Case{-1, -1}, Case{0, 0}, Case{-5, 0}}) {
        EXPECT_EQ(b.SetPagesize(c.in), c.stored) << "page " << c.in;
        EXPECT_EQ(b.GetPageSize(), c.stored) << "page " << c.in;
    }
    for (Case c : {Case{5, 5}, Case{100, 100}, Case{150, 100}, Case{99, 99}}) {
        EXPECT_EQ(b.SetLineSize(c.in), c.stored) << "line " << c.in;
        EXPECT_EQ(b.GetLineSize(), c.stored) << "line " << c.in;
    }
    EXPECT_EQ(b.SetLineSize(0), -1);
    EXPECT_EQ(b.SetLineSize(-3), -1);
    EXPECT_EQ(b.GetLineSize(), 99) << "a rejected line leaves the old one";
}

TEST_F(ScrollbarTest, ScrollInfoTakesRangeAndPageAsGivenAndClampsThePosition) {
    ProbeBar& b = MakeBar();
    SCROLLINFO si{sizeof si, 0, 10, 60, 7, 70, 20};
    EXPECT_TRUE(b.SetScrollInfo(&si, TRUE));
    EXPECT_EQ(b.GetScrollPos(), 60) << "fMask 0 takes nPos";
    EXPECT_EQ(si.nPos, 60) << "the clamped position is written back";
    EXPECT_EQ(si.nTrackPos, 20);
    EXPECT_EQ(b.GetPageSize(), 7);

    si = SCROLLINFO{sizeof si, SIF_POS, 10, 60, 0xFFFFFFFFu, 30, 5};
    EXPECT_TRUE(b.SetScrollInfo(&si, FALSE));
    EXPECT_EQ(b.GetScrollPos(), 10) << "a non-zero fMask takes nTrackPos";
    EXPECT_EQ(si.nTrackPos, 10);
    EXPECT_EQ(si.nPos, 30);
    EXPECT_EQ(b.GetPageSize(), -1) << "a page of 0xFFFFFFFF reads as not set";

    SCROLLINFO out{sizeof out, 0, -9, -9, 9, -9, -9};
    EXPECT_TRUE(b.GetScrollInfo(&out, SIF_ALL));
    EXPECT_EQ(out.nMin, -9) << "fMask 0: nothing is filled";
    out.fMask = SIF_RANGE;
    EXPECT_TRUE(b.GetScrollInfo(&out, SIF_ALL));
    EXPECT_EQ(out.nMin, 10);
    EXPECT_EQ(out.nMax, 60);
    EXPECT_EQ(out.nPage, 0xFFFFFFFFu);
    EXPECT_EQ(out.nPos, 10);
    EXPECT_EQ(out.nTrackPos, 10);

    // No checks on the range: even an empty one is taken, and painting survives it.
    si = SCROLLINFO{sizeof si, 0, 40, 40, 0, 40, 0};
    EXPECT_TRUE(b.SetScrollInfo(&si, TRUE));
    EXPECT_EQ(b.State(), "40..40@40");
    desktop.RunUntilIdle();
    EXPECT_EQ(ThumbTop(), 8);

    EXPECT_FALSE(b.SetScrollInfo(nullptr, TRUE));
    EXPECT_FALSE(b.GetScrollInfo(nullptr, SIF_ALL));
    EXPECT_EQ(parent.Take(), "-") << "scroll info is silent";
}

// SetScrollPos from the host notifies the parent; a scroll message sent to the bar only
// repaints it.
TEST_F(ScrollbarTest, SetScrollPosNotifiesAndAScrollMessageOnlyRepaints) {
    ProbeBar& b = MakeBar();
    b.SetScrollPos(40, TRUE);
    b.SetScrollPos(500, FALSE);
    b.SetScrollPos(100, FALSE);
    EXPECT_EQ(parent.Take(),
              "VSCROLL(SB_THUMBPOSITION,40,bar);VSCROLL(SB_THUMBPOSITION,100,bar);"
              "VSCROLL(SB_THUMBPOSITION,100,bar)");
    EXPECT_EQ(b.GetScrollPos(), 100);

    desktop.RunUntilIdle();
    ::SendMessageW(b.m_hWnd, WM_VSCROLL, MAKEWPARAM(SB_LINEUP, 0), 0);
    RECT update;
    EXPECT_TRUE(::GetUpdateRect(b.m_hWnd, &update, FALSE));
    desktop.RunUntilIdle();
    EXPECT_EQ(parent.Take(), "-");
    EXPECT_EQ(b.GetScrollPos(), 100);
}

TEST_F(ScrollbarTest, BeforeASkinTheBarIsHorizontalAndPaintsNothing) {
    ProbeBar& b = MakeBar(false);
    b.SetScrollPos(3, TRUE);
    EXPECT_EQ(parent.Take(), "HSCROLL(SB_THUMBPOSITION,3,bar)");
    desktop.RunUntilIdle();
    EXPECT_EQ(ScreenPixel(kX + 5, kY + 5), kSentinel) << "no drawing of its own: what lies beneath shows";
}

// ---- steps, repeats, drags --------------------------------------------------------------------

TEST_F(ScrollbarTest, LineStepAtTheMinimumStillNotifies) {
    ProbeBar& b = MakeBar();
    Tap(3);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_LINEUP,0,bar)");
    EXPECT_EQ(b.GetScrollPos(), 0);

    Tap(35);
    EXPECT_EQ(b.GetScrollPos(), 1);
    b.SetLineSize(30);
    b.SetScrollPos(90, FALSE);
    desktop.Advance(600);  // apart by more than the double-click time
    Tap(35);
    EXPECT_EQ(b.GetScrollPos(), 100) << "a line step stops at the maximum";
    desktop.Advance(600);
    Tap(35);
    EXPECT_EQ(b.GetScrollPos(), 100);
    EXPECT_EQ(parent.Take(),
              "VSCROLL(SB_LINEDOWN,0,bar);VSCROLL(SB_THUMBPOSITION,90,bar);VSCROLL(SB_LINEDOWN,0,bar);"
              "VSCROLL(SB_LINEDOWN,0,bar)");
    desktop.Advance(600);
    Tap(3);
    EXPECT_EQ(b.GetScrollPos(), 70);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_LINEUP,0,bar)") << "no pointer messages are forwarded";
}

// The bar's window class takes double clicks, and the bar has no use for them: of two quick
// taps on an arrow only the first steps.
TEST_F(ScrollbarTest, ASecondQuickTapIsADoubleClickTheBarIgnores) {
    ProbeBar& b = MakeBar();
    Tap(35);
    desktop.Advance(100);
    Tap(35);
    desktop.Advance(100);
    Tap(35);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_LINEDOWN,0,bar);VSCROLL(SB_LINEDOWN,0,bar)");
    EXPECT_EQ(b.GetScrollPos(), 2);
}

TEST_F(ScrollbarTest, ArrowRepeatsEvery100msWhileThePointerIsOnIt) {
    ProbeBar& b = MakeBar();
    parent.timed = true;
    Down(35);
    desktop.Advance(250);
    EXPECT_EQ(parent.Take(), Repeats("VSCROLL(SB_LINEDOWN,0,bar)", 0, 100, 3));

    // Off the arrow the repeat pauses and the arrow looks released; back on, it resumes.
    Move(20);
    desktop.Advance(100);
    EXPECT_EQ(parent.Take(), "-");
    EXPECT_EQ(ScreenPixel(kX + 5, kY + 34), kDown);
    Move(36);
    desktop.Advance(100);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_LINEDOWN,0,bar)@400");
    EXPECT_EQ(ScreenPixel(kX + 5, kY + 34), kDownPressed);
    EXPECT_EQ(b.GetScrollPos(), 4);

    Up(36);
    desktop.Advance(500);
    EXPECT_EQ(parent.Take(), "-") << "the release kills the timer";

    // Losing the focus kills it too.
    Down(35);
    desktop.Advance(150);
    ::SetFocus(parent.m_hWnd);
    desktop.Advance(500);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_LINEDOWN,0,bar)@950;VSCROLL(SB_LINEDOWN,0,bar)@1050");
    Up(35);
    EXPECT_EQ(b.GetScrollPos(), 6);
}

// Paging repeats every 100 ms to either end, where its timer stops, or until the thumb
// reaches the pointer.
TEST_F(ScrollbarTest, PagingRepeatsEvery100msToTheEndOrThePointer) {
    ProbeBar& b = MakeBar();
    parent.timed = true;
    Down(31);  // the track's last row, below the thumb all the way
    desktop.Advance(1000);
    EXPECT_EQ(parent.Take(), Repeats("VSCROLL(SB_PAGEDOWN,0,bar)", 0, 100, 5));
    EXPECT_EQ(b.GetScrollPos(), 100);
    EXPECT_FALSE(::KillTimer(b.m_hWnd, 4)) << "the page-down timer killed itself at the maximum";
    Up(31);

    EXPECT_EQ(b.SetPagesize(30), 30);
    Down(8);  // the track's first row
    desktop.Advance(600);
    EXPECT_EQ(parent.Take(), Repeats("VSCROLL(SB_PAGEUP,0,bar)", 1000, 100, 4));
    EXPECT_EQ(b.GetScrollPos(), 0) << "100, 70, 40, 10, then the minimum";
    EXPECT_FALSE(::KillTimer(b.m_hWnd, 3));
    Up(8);

    // Once the thumb reaches the pointer the repeat idles: at 70 the thumb covers rows 20-25.
    b.SetScrollPos(100, TRUE);
    desktop.RunUntilIdle();
    parent.Take();
    Down(22);
    desktop.Advance(500);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_PAGEUP,0,bar)@1600");
    EXPECT_EQ(b.GetScrollPos(), 70);
    Up(22);
}

TEST_F(ScrollbarTest, DragBeyondEitherEndGivesTheLimitsAndReleaseReportsThePosition) {
    MakeBar();
    Down(10);  // on the thumb, rows 8-13
    Move(-30);
    Move(200);
    Move(20);  // (20 - 3 - 8) x 100 / 18
    Move(10);  // within half a thumb of the top
    Move(30);  // within half a thumb of the bottom
    Move(29);
    Up(29);
    EXPECT_EQ(parent.Take(),
              "VSCROLL(SB_THUMBTRACK,0,bar);VSCROLL(SB_THUMBTRACK,100,bar);VSCROLL(SB_THUMBTRACK,50,bar);"
              "VSCROLL(SB_THUMBTRACK,0,bar);VSCROLL(SB_THUMBTRACK,100,bar);VSCROLL(SB_THUMBTRACK,100,bar);"
              "VSCROLL(SB_THUMBPOSITION,100,bar)");
    EXPECT_EQ(bar->GetScrollPos(), 100);
    EXPECT_EQ(ThumbTop(), 26);
}

TEST_F(ScrollbarTest, DraggedPositionsKeepTheOffsetOfANonZeroMinimum) {
    ProbeBar& b = MakeBar();
    b.SetScrollRange(50, 150);
    desktop.RunUntilIdle();
    parent.Take();
    Down(10);
    Move(20);  // the track's middle reports 50, not 100
    Move(-5);
    Move(45);
    Up(45);
    EXPECT_EQ(parent.Take(),
              "VSCROLL(SB_THUMBTRACK,50,bar);VSCROLL(SB_THUMBTRACK,50,bar);VSCROLL(SB_THUMBTRACK,150,bar);"
              "VSCROLL(SB_THUMBPOSITION,150,bar)");
}

// ---- keys, focus, incoming scroll messages ---------------------------------------------------

// Keys step along the bar only: left and right are not a vertical bar's keys, up and down
// not a horizontal one's (an unskinned bar is horizontal).
TEST_F(ScrollbarTest, KeysStepByLineAndPageAlongTheBar) {
    const struct {
        bool vertical;
        std::initializer_list<UINT> keys;
        const char* log;
        long pos;
    } cases[] = {
        {true,
         {VK_NEXT, VK_DOWN, VK_UP, VK_PRIOR, VK_LEFT, VK_RIGHT},
         "VSCROLL(SB_PAGEDOWN,0,bar);VSCROLL(SB_LINEDOWN,0,bar);VSCROLL(SB_LINEUP,0,bar);VSCROLL(SB_PAGEUP,0,bar)",
         0},
        {false,
         {VK_RIGHT, VK_RIGHT, VK_LEFT, VK_UP, VK_DOWN},
         "HSCROLL(SB_LINEDOWN,0,bar);HSCROLL(SB_LINEDOWN,0,bar);HSCROLL(SB_LINEUP,0,bar)",
         1},
    };
    for (const auto& c : cases) {
        ProbeBar& b = MakeBar(c.vertical);
        ::SetFocus(b.m_hWnd);
        for (UINT key : c.keys) Press(key);
        EXPECT_EQ(parent.Take(), c.log);
        EXPECT_EQ(b.GetScrollPos(), c.pos);
    }
}

// ---- bad skins and lifetime --------------------------------------------------------------------

TEST_F(ScrollbarTest, MissingPiecesLoadNothingAndPaintAroundTheGaps) {
    ProbeBar& b = MakeBar(false);
    // Thumb pieces left out, a file that does not exist for the pressed up arrow.
    b.LoadSkin(skins.Skin({"up", "nowhere", "track"}), L"");
    desktop.RunUntilIdle();
    CRect window;
    b.GetWindowRect(&window);
    EXPECT_EQ(window.Size(), CSize(12, 40)) << "the sizes that could be read";
    EXPECT_EQ(ScreenPixel(kX + 5, kY + 9), TrackArt(5, 1)) << "no thumb";
    Tap(3);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_LINEUP,0,bar)");

    b.LoadSkin(L"no bar at all", L"");
    desktop.RunUntilIdle();
    b.GetWindowRect(&window);
    EXPECT_EQ(window.Size(), CSize(0, 0)) << "nothing loaded: nothing to size by";
    b.LoadBitmapW(1, 2, 3, 4, 5, 6, 7, nullptr);  // identifiers nobody has
    desktop.RunUntilIdle();
    EXPECT_EQ(ScreenPixel(kX, kY), kSentinel);
}

TEST_F(ScrollbarTest, ReloadingAndDestroyingReleaseEveryBitmap) {
    const zel::GdiCounts before = zel::LiveGdiObjects();
    ProbeBar& b = MakeBar();
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps + 7);
    b.LoadSkin(SkinString(), L"");
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps + 7) << "a load replaces the previous bitmaps";
    Down(35);
    ::DestroyWindow(b.m_hWnd);  // the window goes first, the object later
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps);
    desktop.Advance(300);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_LINEDOWN,0,bar)");
}

TEST_F(ScrollbarTest, AParentMayDeleteTheBarFromItsNotification) {
    MakeBar();
    parent.onMessage = [this](UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_VSCROLL && (LOWORD(wParam) == SB_LINEDOWN || LOWORD(wParam) == SB_THUMBTRACK)) bar.reset();
    };
    Down(35);
    EXPECT_EQ(bar, nullptr);
    desktop.Advance(300);
    Up(35);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_LINEDOWN,0,bar);LBUTTONUP(0,15,45)")
        << "no repeat; the release finds the parent";

    MakeBar();
    Down(10);
    Move(20);
    Up(20);
    EXPECT_EQ(bar, nullptr);
    EXPECT_EQ(parent.Take(), "VSCROLL(SB_THUMBTRACK,50,bar);LBUTTONUP(0,15,30)");
}

// A paint costs what shows of the bar. Pushed past the parent's top edge, the bar shows the
// rows it shows whole (arrows, the track's bands, the thumb); 32767 rows tall, of which
// the parent shows 90, a repaint writes a few layers of those rows, not of the window.
TEST_F(ScrollbarTest, PaintCostsWhatShowsAndShowsWhatAWholePaintWould) {
    ProbeBar& b = MakeBar();
    b.SetScrollPos(30, TRUE);
    desktop.RunUntilIdle();
    for (int hidden : {13, 20}) EXPECT_TRUE(ShowsAsWhole(b, CRect(kX, kY, kX + 12, kY + 40), 0, -kY - hidden, kDown));

    b.MoveWindow(kX, kY, 12, 32767);
    ExpectRepaintWithin(b, 8u * 12 * 90);
}

}  // namespace
