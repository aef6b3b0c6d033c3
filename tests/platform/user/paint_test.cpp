// Painting: WM_PAINT's place in the queue, UpdateWindow, the erase flag, the CE clipping
// rules, and the composed screen under overlapping and shaped windows.
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <zel/desktop.h>

#include "recorder.h"
#include "user/wndmgr.h"

namespace {

zel::Desktop& D() { return zel::Desktop::Get(); }

using Painting = zel::test::DesktopTest;

// Logs each WM_PAINT's BeginPaint result as "name:begin(rcPaint,erase=fErase)".
void LogPaints(zel::test::Recorder& rec) {
    rec.hook = [&rec](HWND h, UINT m, WPARAM, LPARAM, LRESULT* r) {
        if (m != WM_PAINT) return false;
        PAINTSTRUCT ps;
        BeginPaint(h, &ps);
        char b[80];
        std::snprintf(b, sizeof b, "%s:begin(%ld,%ld,%ld,%ld,erase=%d)", rec.NameOf(h).c_str(), (long)ps.rcPaint.left,
                      (long)ps.rcPaint.top, (long)ps.rcPaint.right, (long)ps.rcPaint.bottom, ps.fErase ? 1 : 0);
        rec.Note(b);
        EndPaint(h, &ps);
        *r = 0;
        return true;
    };
}

TEST_F(Painting, PaintComesAfterPostedMessagesAndBeforeTimers) {
    HWND w = rec.Top("w", 0, 0, 50, 50);
    D().RunUntilIdle();
    rec.Start({WM_PAINT, WM_TIMER, WM_USER});
    SetTimer(w, 1, 10, nullptr);
    D().Advance(10);
    EXPECT_EQ(rec.Take(), "w:TIMER(1)");
    D().Advance(5);
    InvalidateRect(w, nullptr, FALSE);
    PostMessageW(w, WM_USER, 0, 0);
    D().Advance(5);  // the timer is due again
    EXPECT_EQ(rec.Take(), "w:USER;w:PAINT;w:TIMER(1)");
}

// Held paints: the queue makes no WM_PAINT, everything else still comes, the invalid
// regions add up into one paint once let go, and UpdateWindow still paints at once.
TEST_F(Painting, HeldPaintsComeOnceWhenLetGo) {
    HWND w = rec.Top("w", 0, 0, 50, 50);
    HWND v = rec.Top("v", 60, 0, 50, 50);
    D().RunUntilIdle();
    rec.Start({WM_PAINT, WM_TIMER, WM_USER});
    LogPaints(rec);
    zel::user::HoldPaints(true);
    SetTimer(w, 1, 10, nullptr);
    RECT a{1, 1, 5, 5}, b{20, 20, 30, 30};
    InvalidateRect(w, &a, FALSE);
    PostMessageW(w, WM_USER, 0, 0);
    D().Advance(10);
    KillTimer(w, 1);
    InvalidateRect(w, &b, FALSE);
    InvalidateRect(v, nullptr, FALSE);
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "w:USER;w:TIMER(1)");
    MSG m;
    EXPECT_FALSE(PeekMessageW(&m, nullptr, WM_PAINT, WM_PAINT, PM_NOREMOVE));
    EXPECT_TRUE(UpdateWindow(v));
    EXPECT_EQ(rec.Take(), "v:PAINT;v:begin(0,0,50,50,erase=0)");
    zel::user::HoldPaints(false);
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "w:PAINT;w:begin(1,1,30,30,erase=0)") << "both rectangles in one paint";
}

TEST_F(Painting, UpdateWindowPaintsSynchronouslyParentFirst) {
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND c = rec.Child(top, "c", 10, 10, 20, 20, 1);
    D().RunUntilIdle();
    rec.Start({WM_PAINT, WM_ERASEBKGND});
    LogPaints(rec);
    RECT part{1, 2, 3, 4};
    InvalidateRect(c, &part, TRUE);
    InvalidateRect(top, nullptr, FALSE);
    EXPECT_TRUE(UpdateWindow(top));
    EXPECT_EQ(rec.Take(), "top:PAINT;top:begin(0,0,100,100,erase=0);c:PAINT;c:ERASEBKGND;c:begin(1,2,3,4,erase=0)");
    EXPECT_TRUE(UpdateWindow(top));
    EXPECT_EQ(rec.Take(), "-") << "nothing left to paint";
    EXPECT_FALSE(UpdateWindow(reinterpret_cast<HWND>(0x77)));
}

TEST_F(Painting, EraseRequestIsStickyAndFEraseReportsARefusal) {
    HWND w = rec.Top("w", 0, 0, 100, 100);
    D().RunUntilIdle();
    rec.Start({WM_PAINT, WM_ERASEBKGND});
    LogPaints(rec);
    RECT a{0, 0, 10, 10}, b{50, 50, 60, 70};
    InvalidateRect(w, &a, TRUE);
    InvalidateRect(w, &b, FALSE);
    RECT upd;
    EXPECT_TRUE(GetUpdateRect(w, &upd, FALSE));
    EXPECT_EQ(upd.right, 60);
    EXPECT_EQ(upd.bottom, 70);
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "w:PAINT;w:ERASEBKGND;w:begin(0,0,60,70,erase=0)");
    rec.eraseResult = 0;
    ValidateRect(w, nullptr);
    InvalidateRect(w, &a, TRUE);
    ValidateRect(w, &a);
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "-") << "validated: no paint, and the erase request went with it";
    InvalidateRect(w, &a, TRUE);
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "w:PAINT;w:ERASEBKGND;w:begin(0,0,10,10,erase=1)");
}

TEST_F(Painting, InvalidatingAParentLeavesItsChildrenAlone) {
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND c = rec.Child(top, "c", 10, 10, 20, 20, 1);
    D().RunUntilIdle();
    InvalidateRect(top, nullptr, TRUE);
    RECT upd;
    EXPECT_FALSE(GetUpdateRect(c, &upd, FALSE)) << "every window clips its children (CE)";
    EXPECT_TRUE(RedrawWindow(top, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN));
    EXPECT_TRUE(GetUpdateRect(c, &upd, FALSE)) << "unless asked for";
}

TEST_F(Painting, HiddenWindowsHaveNothingToPaintUntilShown) {
    HWND top = rec.Top("top", 0, 0, 100, 100);
    HWND w = rec.Child(top, "w", 10, 10, 40, 30, 1, 0);
    D().RunUntilIdle();
    rec.Start({WM_PAINT, WM_ERASEBKGND});
    EXPECT_TRUE(InvalidateRect(w, nullptr, TRUE));
    RECT upd;
    EXPECT_FALSE(GetUpdateRect(w, &upd, FALSE));
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "-");
    ShowWindow(w, SW_SHOW);
    EXPECT_EQ(rec.Take(), "w:ERASEBKGND") << "a shown window is erased at once";
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "w:PAINT");
}

constexpr COLORREF kRed = RGB(255, 0, 0), kBlue = RGB(0, 0, 255), kGreen = RGB(0, 255, 0), kBlack = RGB(0, 0, 0);

TEST_F(Painting, MovingAChildErasesWhatItUncoveredAtOnceAndItselfWhenPainted) {
    HWND top = rec.Top("top", 0, 0, 200, 100);
    HWND c = rec.Child(top, "c", 10, 10, 100, 60, 1);
    D().RunUntilIdle();
    rec.Start({WM_PAINT, WM_ERASEBKGND});
    LogPaints(rec);
    MoveWindow(c, 20, 20, 120, 70, TRUE);
    EXPECT_EQ(rec.Take(), "top:ERASEBKGND") << "the child waits: its parent has yet to paint";
    RECT upd;
    GetUpdateRect(top, &upd, FALSE);
    EXPECT_EQ(upd.left, 10);
    EXPECT_EQ(upd.bottom, 70) << "only what the child uncovered";
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "top:PAINT;top:begin(10,10,110,70,erase=0);c:PAINT;c:ERASEBKGND;c:begin(0,0,120,70,erase=0)");
    MoveWindow(c, 25, 20, 120, 70, FALSE);
    D().RunUntilIdle();
    EXPECT_EQ(rec.Take(), "-") << "without repaint nothing is invalidated";
}

// Window classes painting solid colours through DefWindowProc's erase. Their brushes live
// as long as the program, as class brushes do.
void RegisterSolidClasses() {
    static bool done = false;
    if (done) return;
    done = true;
    const std::pair<const wchar_t*, COLORREF> classes[] = {{L"TestRed", kRed}, {L"TestBlue", kBlue}, {L"TestGreen", kGreen}};
    for (auto [name, color] : classes) {
        WNDCLASSW wc{};
        wc.lpfnWndProc = DefWindowProcW;
        wc.lpszClassName = name;
        wc.hbrBackground = CreateSolidBrush(color);
        RegisterClassW(&wc);
    }
}

HWND Solid(const wchar_t* cls, HWND parent, int x, int y, int w, int h) {
    return CreateWindowExW(0, cls, L"", (parent ? WS_CHILD : WS_POPUP) | WS_VISIBLE, x, y, w, h, parent, nullptr,
                           nullptr, nullptr);
}

class Composition : public Painting {
protected:
    void SetUp() override {
        RegisterSolidClasses();
        Painting::SetUp();
    }
};

TEST_F(Composition, OverlappingWindowsAndAShapedChild) {
    HWND a = Solid(L"TestRed", nullptr, 10, 10, 40, 30);
    HWND g = Solid(L"TestGreen", a, 5, 5, 20, 10);
    HRGN shape = CreateRectRgn(0, 0, 20, 10);
    HRGN corner = CreateRectRgn(0, 0, 4, 4);
    CombineRgn(shape, shape, corner, RGN_DIFF);
    DeleteObject(corner);
    SetWindowRgn(g, shape, TRUE);
    HWND b = Solid(L"TestBlue", nullptr, 30, 20, 40, 30);
    D().RunUntilIdle();
    struct Probe {
        int x, y;
        COLORREF want;
        const char* what;
    };
    const Probe probes[] = {
        {9, 9, kBlack, "desktop left of a"},   {10, 10, kRed, "a's corner"},
        {15, 15, kRed, "g's cut corner"},      {18, 18, kRed, "still cut"},
        {19, 19, kGreen, "g"},                 {29, 24, kGreen, "g beside b"},
        {35, 19, kRed, "right of g"},          {34, 24, kBlue, "b covers g"},          {30, 20, kBlue, "b covers a"},
        {69, 49, kBlue, "b's last pixel"},     {70, 50, kBlack, "sentinel right-below b"},
        {49, 19, kRed, "a above b"},           {50, 39, kBlue, "b beside a"},
    };
    for (const Probe& p : probes) EXPECT_EQ(D().Pixel(p.x, p.y), p.want) << p.what << " at " << p.x << "," << p.y;

    ShowWindow(b, SW_HIDE);
    D().RunUntilIdle();
    EXPECT_EQ(D().Pixel(40, 30), kRed) << "a repaints what b uncovered";
    EXPECT_EQ(D().Pixel(34, 24), kGreen) << "and so does g";
    EXPECT_EQ(D().Pixel(69, 49), kBlack) << "the bare desktop is repainted at once";
    MoveWindow(a, 100, 100, 40, 30, TRUE);
    D().RunUntilIdle();
    EXPECT_EQ(D().Pixel(10, 10), kBlack);
    EXPECT_EQ(D().Pixel(100, 100), kRed);
    EXPECT_EQ(D().Pixel(110, 110), kGreen) << "children move along and repaint";
    DestroyWindow(a);
    DestroyWindow(b);
}

TEST_F(Composition, WindowDcIsClippedToWhatTheWindowShows) {
    HWND a = Solid(L"TestRed", nullptr, 0, 0, 50, 50);
    HWND child = Solid(L"TestGreen", a, 10, 10, 10, 10);
    HWND over = Solid(L"TestBlue", nullptr, 40, 0, 20, 20);
    D().RunUntilIdle();
    HDC dc = GetDC(a);
    RECT all{-10, -10, 100, 100};
    HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    FillRect(dc, &all, white);
    ReleaseDC(a, dc);
    EXPECT_EQ(D().Pixel(0, 0), RGB(255, 255, 255));
    EXPECT_EQ(D().Pixel(15, 15), kGreen) << "children are clipped out";
    EXPECT_EQ(D().Pixel(45, 5), kBlue) << "so is the window above";
    EXPECT_EQ(D().Pixel(45, 25), RGB(255, 255, 255));
    EXPECT_EQ(D().Pixel(50, 25), kBlack) << "nothing outside the window";
    (void)child;
    DestroyWindow(a);
    DestroyWindow(over);
}

// An update region of two strips far apart: the paint DC leaves out the children and the
// window above that reach into either strip, and draws nothing between them.
TEST_F(Composition, PaintDcOfTwoStripsLeavesOutWhatCoversEither) {
    HWND a = rec.Top("a", 0, 0, 100, 100);
    ShowWindow(a, SW_SHOWNOACTIVATE);
    Solid(L"TestGreen", a, 10, 5, 20, 10);   // in the top strip
    Solid(L"TestGreen", a, 10, 40, 20, 20);  // between the strips
    Solid(L"TestGreen", a, 60, 75, 20, 15);  // reaching into the bottom strip
    HWND over = Solid(L"TestBlue", nullptr, 90, 90, 20, 20);
    HBRUSH red = CreateSolidBrush(kRed);
    HBRUSH fill = red;  // red at first, white over the strips
    rec.hook = [a, &fill](HWND h, UINT m, WPARAM, LPARAM, LRESULT* r) {
        if (h != a || m != WM_PAINT) return false;
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(h, &ps);
        RECT all{0, 0, 100, 100};
        FillRect(dc, &all, fill);
        EndPaint(h, &ps);
        *r = 0;
        return true;
    };
    InvalidateRect(a, nullptr, FALSE);
    D().RunUntilIdle();
    fill = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    const RECT top{0, 0, 100, 20}, bottom{0, 80, 100, 100};
    InvalidateRect(a, &top, FALSE);
    InvalidateRect(a, &bottom, FALSE);
    D().RunUntilIdle();
    struct Probe {
        int x, y;
        COLORREF want;
        const char* what;
    };
    const COLORREF kWhite = RGB(255, 255, 255);
    const Probe probes[] = {
        {5, 5, kWhite, "top strip"},          {15, 10, kGreen, "child in the top strip"},
        {5, 50, kRed, "between the strips"},  {15, 50, kGreen, "child between"},
        {5, 90, kWhite, "bottom strip"},      {65, 85, kGreen, "child reaching into the bottom strip"},
        {95, 95, kBlue, "window above"},      {85, 95, kWhite, "beside it"},
    };
    for (const Probe& p : probes) EXPECT_EQ(D().Pixel(p.x, p.y), p.want) << p.what << " at " << p.x << "," << p.y;
    rec.hook = nullptr;
    DestroyWindow(a);
    DestroyWindow(over);
    DeleteObject(red);
}

TEST_F(Composition, SavePngWritesTheScreen) {
    HWND a = Solid(L"TestRed", nullptr, 0, 0, 50, 50);
    D().RunUntilIdle();
    std::string path = std::string(ZEL_TEST_OUT_DIR) + "/desktop_save.png";
    std::remove(path.c_str());
    std::filesystem::create_directories(ZEL_TEST_OUT_DIR);
    ASSERT_TRUE(D().SavePng(path.c_str()));
    std::ifstream f(path, std::ios::binary);
    char sig[8] = {};
    f.read(sig, 8);
    EXPECT_EQ(std::string(sig + 1, 3), "PNG");
    EXPECT_FALSE(D().SavePng("/nonexistent-dir/x.png"));
    DestroyWindow(a);
}

}  // namespace
