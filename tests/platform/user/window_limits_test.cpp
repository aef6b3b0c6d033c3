// Limits and costs of the window tree: nesting as deep as Windows allows and no deeper,
// destruction that reaches every window exactly once whatever the window procedures do,
// and operations whose work follows the windows they change, not the windows that exist
// (counted with the manager's own visit counter, never timed).
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include <zel/desktop.h>

#include "recorder.h"
#include "user/wndmgr.h"

namespace {

using WindowLimits = zel::test::DesktopTest;
using zel::user::kMaxNesting;

template <class F>
uint64_t VisitsOf(F&& work) {
    uint64_t before = zel::user::WindowVisits();
    work();
    return zel::user::WindowVisits() - before;
}

void Pump() { zel::Desktop::Get().RunUntilIdle(); }

// Levels 2 .. `levels` below `top` (level 1), each one pixel inside its parent and named
// "L<level>"; returns the deepest.
HWND Nest(zel::test::Recorder& rec, HWND top, int levels) {
    HWND w = top;
    for (int level = 2; level <= levels; ++level) {
        w = rec.Child(w, ("L" + std::to_string(level)).c_str(), 1, 1, 700, 400, level);
        if (!w) return nullptr;
    }
    return w;
}

TEST_F(WindowLimits, ChildrenNestFiftyLevelsDeepAndNoDeeper) {
    HWND top = rec.Top("L1", 0, 0, 800, 480);
    HWND deepest = Nest(rec, top, kMaxNesting);
    ASSERT_NE(deepest, nullptr);
    EXPECT_EQ(zel::test::LiveWindows(), kMaxNesting);

    rec.Start({WM_NCCREATE, WM_CREATE});
    SetLastError(0);
    EXPECT_EQ(rec.Child(deepest, "too deep", 0, 0, 5, 5, 99), nullptr);
    EXPECT_EQ(GetLastError(), 87u);
    EXPECT_EQ(rec.Take(), "-") << "refused before any message";
    EXPECT_EQ(zel::test::LiveWindows(), kMaxNesting);

    // A popup owned by the deepest window's top-level window is one level below it.
    HWND owner = top;
    for (int level = 2; level <= kMaxNesting; ++level)
        owner = CreateWindowExW(0, zel::test::Recorder::ClassName(), L"", WS_POPUP, 0, 0, 5, 5, owner, nullptr, nullptr,
                                nullptr);
    ASSERT_NE(owner, nullptr);
    EXPECT_EQ(CreateWindowExW(0, zel::test::Recorder::ClassName(), L"", WS_POPUP, 0, 0, 5, 5, owner, nullptr, nullptr,
                              nullptr),
              nullptr)
        << "owned windows count as nesting too";
}

TEST_F(WindowLimits, SetParentRefusesToNestTooDeep) {
    HWND top = rec.Top("L1", 0, 0, 800, 480);
    HWND level49 = Nest(rec, top, kMaxNesting - 1);
    HWND level48 = GetParent(level49);
    HWND other = rec.Top("other", 0, 0, 100, 100);
    HWND branch = rec.Child(other, "branch", 0, 0, 50, 50, 1);
    rec.Child(branch, "leaf", 0, 0, 10, 10, 2);

    EXPECT_EQ(SetParent(branch, level49), nullptr) << "the leaf would be at level 51";
    EXPECT_EQ(GetParent(branch), other);
    EXPECT_EQ(SetParent(branch, level48), other) << "the leaf is at level 50";
    EXPECT_EQ(GetParent(branch), level48);
}

TEST_F(WindowLimits, DestroyingTheDeepestTreeTellsEveryLevelOnceInOrder) {
    rec.Start({WM_DESTROY, WM_NCDESTROY});
    HWND top = rec.Top("L1", 0, 0, 800, 480);
    ASSERT_NE(Nest(rec, top, kMaxNesting), nullptr);
    EXPECT_TRUE(DestroyWindow(top));
    std::string want;
    for (int level = 1; level <= kMaxNesting; ++level) want += "L" + std::to_string(level) + ":DESTROY;";
    for (int level = kMaxNesting; level >= 1; --level)
        want += "L" + std::to_string(level) + ":NCDESTROY" + (level > 1 ? ";" : "");
    EXPECT_EQ(rec.Take(), want);
    EXPECT_EQ(zel::test::LiveWindows(), 0);
}

TEST_F(WindowLimits, WmDestroyReachesEveryWindowOnceWhateverItsHandlerDestroys) {
    // top has children c (with a child g) and s (created last, so first in z-order).
    struct Case {
        const char* name;
        const char* destroyed;  // the window DestroyWindow is called on
        const char* handler;    // whose WM_DESTROY handler ...
        const char* victim;     // ... destroys this window
        const char* messages;
    } cases[] = {
        {"a child destroys its parent while being destroyed itself", "c", "c", "top",
         "c:DESTROY;top:DESTROY;s:DESTROY;g:DESTROY;s:NCDESTROY;g:NCDESTROY;c:NCDESTROY;top:NCDESTROY"},
        {"a grandchild destroys the top while the top is destroyed", "top", "g", "top",
         "top:DESTROY;s:DESTROY;c:DESTROY;g:DESTROY;s:NCDESTROY;g:NCDESTROY;c:NCDESTROY;top:NCDESTROY"},
        {"a grandchild destroys its parent while its parent is destroyed", "c", "g", "c",
         "c:DESTROY;g:DESTROY;g:NCDESTROY;c:NCDESTROY"},
        {"a child destroys itself again", "top", "c", "c",
         "top:DESTROY;s:DESTROY;c:DESTROY;g:DESTROY;s:NCDESTROY;g:NCDESTROY;c:NCDESTROY;top:NCDESTROY"},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.name);
        rec.Start({WM_DESTROY, WM_NCDESTROY});
        HWND top = rec.Top("top", 0, 0, 200, 200);
        HWND c = rec.Child(top, "c", 0, 0, 100, 100, 1);
        rec.Child(c, "g", 0, 0, 50, 50, 2);
        rec.Child(top, "s", 100, 0, 100, 100, 3);
        auto byName = [&](const char* name) {
            for (HWND h : {top, c, GetWindow(c, GW_CHILD), GetWindow(top, GW_CHILD)})
                if (rec.NameOf(h) == name) return h;
            return HWND{};
        };
        HWND handler = byName(k.handler), victim = byName(k.victim), destroyed = byName(k.destroyed);
        rec.hook = [&](HWND h, UINT m, WPARAM, LPARAM, LRESULT*) {
            if (m == WM_DESTROY && h == handler) DestroyWindow(victim);
            return false;
        };
        EXPECT_TRUE(DestroyWindow(destroyed));
        EXPECT_EQ(rec.Take(), k.messages);
        rec.hook = nullptr;
        DestroyWindow(top);
        EXPECT_EQ(zel::test::LiveWindows(), 0);
    }
}

// Costs. A grid of visible siblings, 24 x 16 pixels every 20 x 12, so each overlaps its
// neighbours, all painted.
class WindowCosts : public WindowLimits {
protected:
    HWND Sibling(int i) { return rec.Child(top_, "s", (i % 40) * 20, (i / 40 % 40) * 12, 24, 16, i); }
    void Grow(int count) {
        while (made_ < count) Sibling(made_++);
        Pump();
    }
    HWND top_ = nullptr;
    int made_ = 0;

    void SetUp() override {
        WindowLimits::SetUp();
        top_ = rec.Top("top", 0, 0, 800, 480);
    }
};

TEST_F(WindowCosts, CreatingAndPaintingASiblingCostsTheSameAmongTenOrAThousand) {
    Grow(10);
    uint64_t few = VisitsOf([&] {
        Sibling(made_++);
        Pump();
    });
    Grow(1000);
    uint64_t many = VisitsOf([&] {
        Sibling(made_++);
        Pump();
    });
    EXPECT_EQ(many, few);
    EXPECT_LE(many, 10u);
}

TEST_F(WindowCosts, AnIdlePumpLooksAtNoWindow) {
    Grow(1000);
    EXPECT_EQ(VisitsOf(Pump), 0u);
}

TEST_F(WindowCosts, RepaintingTheTopSiblingLooksOnlyAtItAndItsParent) {
    Grow(1000);
    HWND topmost = GetWindow(top_, GW_CHILD);
    uint64_t visits = VisitsOf([&] {
        InvalidateRect(topmost, nullptr, TRUE);
        Pump();
    });
    EXPECT_LE(visits, 4u);
}

// Painting finds a window by walking down from the top, parents first: the cost grows by
// its ancestors, a few visits per level, never by the windows of other levels.
TEST_F(WindowCosts, CreatingDeepCostsOnlyTheLevelsAbove) {
    HWND level9 = Nest(rec, top_, 9);
    Pump();
    uint64_t shallow = VisitsOf([&] {
        rec.Child(level9, "shallow", 1, 1, 10, 10, 1);
        Pump();
    });
    HWND level49 = Nest(rec, top_, kMaxNesting - 1);
    Pump();
    uint64_t deep = VisitsOf([&] {
        rec.Child(level49, "deep", 1, 1, 10, 10, 1);
        Pump();
    });
    EXPECT_LE(deep, shallow + 2 * (kMaxNesting - 10));
}

TEST_F(WindowCosts, PendingPaintIsForgottenWithItsWindowWhereverItMoved) {
    // Windows left with something to paint are reparented, hidden and destroyed; the
    // pump must then find nothing left and look at nothing.
    Grow(20);
    HWND a = GetWindow(top_, GW_CHILD);
    HWND b = GetWindow(a, GW_HWNDNEXT);
    HWND other = rec.Top("other", 0, 0, 100, 100);
    InvalidateRect(a, nullptr, TRUE);
    InvalidateRect(b, nullptr, TRUE);
    SetParent(a, other);
    ShowWindow(other, SW_HIDE);
    DestroyWindow(b);
    RedrawWindow(top_, nullptr, nullptr, RDW_INVALIDATE | RDW_INTERNALPAINT | RDW_ALLCHILDREN);
    Pump();
    EXPECT_EQ(VisitsOf(Pump), 0u);
    ShowWindow(other, SW_SHOW);
    uint64_t showing = VisitsOf(Pump);
    EXPECT_GE(showing, 2u) << "what was hidden paints once shown";
    EXPECT_FALSE(GetUpdateRect(other, nullptr, FALSE));
    EXPECT_FALSE(GetUpdateRect(a, nullptr, FALSE));
    EXPECT_EQ(VisitsOf(Pump), 0u);
}

}  // namespace

// A plus sign filling w x h: a window shape of three bands.
HRGN Plus(int w, int h) {
    HRGN a = CreateRectRgn(w / 4, 0, w * 3 / 4, h);
    HRGN b = CreateRectRgn(0, h / 4, w, h * 3 / 4);
    CombineRgn(a, a, b, RGN_OR);
    DeleteObject(b);
    return a;
}

// Work inside a window not shown yet (a dialog or screen being built) changes nothing on
// the screen, so it must not walk the subtree it changes.
TEST_F(WindowCosts, ShowingASubtreeInsideAHiddenWindowVisitsNoneOfIt) {
    HWND hidden = rec.Top("hidden", 0, 0, 800, 480, 0);
    HWND panel = rec.Child(hidden, "panel", 0, 0, 400, 400, 1, 0);
    for (int i = 0; i < 100; ++i) rec.Child(panel, "k", (i % 10) * 30, (i / 10) * 30, 28, 28, i + 2);
    Pump();
    uint64_t visits = VisitsOf([&] {
        ShowWindow(panel, SW_SHOW);
        SetWindowPos(panel, nullptr, 5, 5, 300, 300, SWP_NOZORDER | SWP_NOACTIVATE);
        SetWindowRgn(panel, Plus(300, 300), TRUE);
        Pump();
    });
    EXPECT_LE(visits, 4u);
}

// Whether `top`'s visible region is, pixel by pixel, its rectangle less the shapes of its
// visible children, as worked out from their public state.
void ExpectVisibleLessChildren(HWND top, const std::string& what) {
    zel::gdi::PixRegion vis = zel::user::VisibleRegion(zel::user::Get(top));
    RECT t;
    GetWindowRect(top, &t);
    for (int y = t.top; y < t.bottom; ++y)
        for (int x = t.left; x < t.right; ++x) {
            bool shown = true;
            for (HWND c = GetWindow(top, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
                RECT r;
                GetWindowRect(c, &r);
                HRGN shape = CreateRectRgn(0, 0, 0, 0);
                bool in = PtInRect(&r, POINT{x, y}) &&
                          (GetWindowRgn(c, shape) == ERROR || PtInRegion(shape, x - r.left, y - r.top));
                DeleteObject(shape);
                if (IsWindowVisible(c) && in) shown = false;
            }
            ASSERT_EQ(vis.contains(x, y), shown) << what << " at " << x << "," << y;
        }
}

// Shaped children overlapping each other, a hidden one (ignored), one reaching past the
// parent, and one unshaped child covering everything.
TEST_F(WindowLimits, VisibleRegionLeavesOutEveryVisibleChildShape) {
    struct Kid {
        RECT rc;
        int shape;  // 0: none, 1: a plus over its rectangle, 2: a rectangle inset by 3
        bool visible;
    };
    const std::vector<std::vector<Kid>> cases = {
        {{{2, 2, 30, 20}, 1, true}, {{20, 10, 50, 35}, 1, true}, {{10, 5, 25, 30}, 0, false}},
        {{{-5, -5, 20, 20}, 1, true}, {{40, 20, 70, 50}, 2, true}, {{15, 15, 45, 25}, 0, true}},
        {{{5, 5, 15, 15}, 1, true}, {{0, 0, 60, 40}, 0, true}},
    };
    for (size_t n = 0; n < cases.size(); ++n) {
        HWND top = rec.Top("t", 10, 10, 60, 40);
        for (const Kid& k : cases[n]) {
            HWND c = rec.Child(top, "c", k.rc.left, k.rc.top, k.rc.right - k.rc.left, k.rc.bottom - k.rc.top, 1,
                               k.visible ? WS_VISIBLE : 0);
            int w = k.rc.right - k.rc.left, h = k.rc.bottom - k.rc.top;
            if (k.shape) SetWindowRgn(c, k.shape == 1 ? Plus(w, h) : CreateRectRgn(3, 3, w - 3, h - 3), TRUE);
        }
        ExpectVisibleLessChildren(top, "case " + std::to_string(n));
        DestroyWindow(top);
    }
}

// The visible region is kept between changes: every kind of change must drop it.
TEST_F(WindowLimits, KeptVisibleRegionFollowsEveryChange) {
    HWND top = rec.Top("t", 10, 10, 60, 40);
    HWND a = rec.Child(top, "a", 2, 2, 20, 20, 1);
    HWND b = rec.Child(top, "b", 30, 10, 20, 20, 2);
    HWND other = rec.Top("o", 200, 0, 50, 50);
    ExpectVisibleLessChildren(top, "first");
    const std::vector<std::pair<const char*, std::function<void()>>> changes = {
        {"move", [&] { SetWindowPos(a, nullptr, 10, 12, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOREDRAW); }},
        {"reshape", [&] { SetWindowRgn(a, Plus(20, 20), FALSE); }},
        {"hide", [&] { SetWindowPos(b, nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOREDRAW); }},
        {"style", [&] { SetWindowLongW(b, GWL_STYLE, GetWindowLongW(b, GWL_STYLE) | WS_VISIBLE); }},
        {"new child", [&] { rec.Child(top, "c", 0, 30, 60, 5, 3); }},
        {"adopt", [&] { SetParent(other, top); }},
        {"restack", [&] { SetWindowPos(other, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOREDRAW); }},
        {"move adopted", [&] { SetWindowPos(other, nullptr, 40, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOREDRAW); }},
        {"unshape", [&] { SetWindowRgn(a, nullptr, FALSE); }},
        {"destroy", [&] { DestroyWindow(b); }},
    };
    for (const auto& [what, change] : changes) {
        change();
        ExpectVisibleLessChildren(top, what);
    }
    DestroyWindow(top);
}
