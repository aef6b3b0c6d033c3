// Window geometry and state: rectangles and coordinate mapping, visible regions,
// SetWindowPos / MoveWindow / ShowWindow, EnableWindow and window regions.
#include <algorithm>

#include "gdi/dc.h"
#include "user/wndmgr.h"

namespace zel::user {

namespace {

void Subtract(PixRegion& from, const PixRegion& what) {
    pixman_region32_subtract(from.get(), from.get(), what.mut());
}

bool ActivatingShow(int cmd) {
    return cmd != SW_SHOWNOACTIVATE && cmd != SW_SHOWNA && cmd != SW_SHOWMINNOACTIVE;
}

// Where SetWindowPos's insert-after handle puts the window in its sibling list (computed
// with the window already removed from it). nullopt = the handle is not a sibling.
std::optional<size_t> ZTarget(Window* w, HWND after) {
    std::vector<Window*> sibs = Siblings(w);
    sibs.erase(std::remove(sibs.begin(), sibs.end(), w), sibs.end());
    if (after == HWND_TOP || after == HWND_TOPMOST || after == HWND_NOTOPMOST) return TopIndexFor(w);
    if (after == HWND_BOTTOM) return sibs.size();
    Window* a = Get(after);
    auto it = std::find(sibs.begin(), sibs.end(), a);
    if (!a || it == sibs.end()) return std::nullopt;
    return static_cast<size_t>(it - sibs.begin()) + 1;
}

size_t IndexOf(Window* w) {
    std::vector<Window*>& sibs = Siblings(w);
    return static_cast<size_t>(std::find(sibs.begin(), sibs.end(), w) - sibs.begin());
}

// Drops from the flags whatever would change nothing, as Windows does before notifying.
void NormaliseFlags(Window* w, WINDOWPOS& wp) {
    if (wp.flags & SWP_NOMOVE) {
        wp.x = w->rect.left;
        wp.y = w->rect.top;
    }
    if (wp.flags & SWP_NOSIZE) {
        wp.cx = w->Width();
        wp.cy = w->Height();
    }
    wp.x = std::clamp(wp.x, kMinWindowCoord, kMaxWindowCoord);
    wp.y = std::clamp(wp.y, kMinWindowCoord, kMaxWindowCoord);
    wp.cx = std::clamp(wp.cx, 0, kMaxWindowCoord);
    wp.cy = std::clamp(wp.cy, 0, kMaxWindowCoord);
    if (wp.x == w->rect.left && wp.y == w->rect.top) wp.flags |= SWP_NOMOVE;
    if (wp.cx == w->Width() && wp.cy == w->Height()) wp.flags |= SWP_NOSIZE;
    bool visible = (w->style & WS_VISIBLE) != 0;
    if (visible) wp.flags &= ~SWP_SHOWWINDOW;
    if (!visible) wp.flags &= ~SWP_HIDEWINDOW;
    if (!(wp.flags & SWP_NOZORDER)) {
        bool topmostChange = !w->parent && ((wp.hwndInsertAfter == HWND_TOPMOST) != !!(w->exStyle & WS_EX_TOPMOST)) &&
                             (wp.hwndInsertAfter == HWND_TOPMOST || wp.hwndInsertAfter == HWND_NOTOPMOST);
        std::optional<size_t> target = ZTarget(w, wp.hwndInsertAfter);
        if (!topmostChange && (!target || *target == IndexOf(w))) wp.flags |= SWP_NOZORDER;
    }
}

void ApplyZOrder(Window* w, HWND after) {
    if (!w->parent && after == HWND_TOPMOST) w->exStyle |= WS_EX_TOPMOST;
    if (!w->parent && after == HWND_NOTOPMOST) w->exStyle &= ~WS_EX_TOPMOST;
    if (std::optional<size_t> target = ZTarget(w, after)) Restack(w, *target);
}

}  // namespace

PixRegion Shape(const Window* w) {
    RECT r = ScreenRect(w);
    PixRegion s(r);
    if (w->shape) {
        PixRegion t = *w->shape;
        t.translate(r.left, r.top);
        s.intersect(t);
    }
    return s;
}

namespace {

bool Meets(const RECT& a, const RECT& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// Subtracts from rgn the visible windows of `list` before `stop` (all of them when stop
// is null) whose rectangle meets what is left of rgn. `origin` is the screen position of
// the list's parent client area; `within`, when given, holds rgn (windows outside it are
// skipped). The covering shapes are gathered into one region and subtracted once:
// subtracting them one by one walks the whole (ever more ragged) region per window, which
// with a dozen shaped controls over a window cost more than its paint.
void SubtractCovering(PixRegion& rgn, const std::vector<Window*>& list, const Window* stop, POINT origin,
                      const PixRegion* within = nullptr) {
    const RECT left = rgn.box();  // all zero once nothing is left
    if (IsRectEmpty(&left)) return;
    std::vector<pixman_box32_t> cover;
    for (const Window* s : list) {
        if (s == stop) break;
        if (!(s->style & WS_VISIBLE)) continue;
        ++WindowVisits();
        RECT r{s->rect.left + origin.x, s->rect.top + origin.y, s->rect.right + origin.x, s->rect.bottom + origin.y};
        if (!Meets(r, left)) continue;
        // The region may be two strips far apart (a readout and a status line): a window
        // between them takes nothing. Tested against those few rectangles, not against
        // what is left.
        const pixman_box32_t box{r.left, r.top, r.right, r.bottom};
        if (within && pixman_region32_contains_rectangle(within->mut(), &box) == PIXMAN_REGION_OUT) continue;
        if (!s->shape) {
            if (r.left <= left.left && r.top <= left.top && r.right >= left.right && r.bottom >= left.bottom) {
                rgn = PixRegion();  // one window covers all that is left
                return;
            }
            cover.push_back(box);
            continue;
        }
        int n = 0;
        const pixman_box32_t* b = pixman_region32_rectangles(s->shape->mut(), &n);
        for (int i = 0; i < n; ++i) {
            pixman_box32_t c{std::max(b[i].x1 + r.left, r.left), std::max(b[i].y1 + r.top, r.top),
                             std::min(b[i].x2 + r.left, r.right), std::min(b[i].y2 + r.top, r.bottom)};
            if (c.x1 < c.x2 && c.y1 < c.y2) cover.push_back(c);
        }
    }
    if (cover.empty()) return;
    PixRegion covered;
    pixman_region32_fini(covered.get());
    pixman_region32_init_rects(covered.get(), cover.data(), static_cast<int>(cover.size()));
    Subtract(rgn, covered);
}

}  // namespace

// What a window may paint on the screen: its shape, inside every ancestor's shape, minus
// the visible siblings above it and above each ancestor, minus its visible children.
PixRegion VisibleRegion(const Window* w) {
    return VisibleRegionWithin(w, RECT{0, 0, gdi::Screen().width, gdi::Screen().height});
}

// Asked for the whole window, the answer is kept until the tree next changes: a window
// repainted with nothing moved in between (a full repaint, a control's strip of the host)
// takes it from there. Asked for less, only what meets the bounds (and `within`, when it is
// more than one rectangle) is worked out.
PixRegion VisibleRegionWithin(const Window* w, const RECT& bounds, const PixRegion* within) {
    if (!w || !Visible(w) || w == State().desktop) return PixRegion();
    static RECT lastScreen{};  // the screen's size is part of every answer
    RECT screen{0, 0, gdi::Screen().width, gdi::Screen().height};
    if (screen.right != lastScreen.right || screen.bottom != lastScreen.bottom) {
        lastScreen = screen;
        TreeChanged();
    }
    RECT clip;
    if (!IntersectRect(&clip, &screen, &bounds)) return PixRegion();
    if (within && pixman_region32_n_rects(within->mut()) <= 1) within = nullptr;  // (one rectangle: it is `bounds`)
    RECT whole = ScreenRect(w), part;
    const bool covers = clip.left <= whole.left && clip.top <= whole.top && clip.right >= whole.right &&
                        clip.bottom >= whole.bottom;
    const bool keep = covers && !within;
    // Cutting a small part out of a ragged kept region walks all of it: below half of the
    // window, working the part out afresh costs less.
    auto area = [](const RECT& r) { return static_cast<int64_t>(r.right - r.left) * (r.bottom - r.top); };
    if (w->visEpoch == TreeEpoch() && IntersectRect(&part, &clip, &whole) && 2 * area(part) >= area(whole)) {
        PixRegion rgn = w->vis;
        if (!covers) rgn.intersect(PixRegion(clip));
        if (within) rgn.intersect(*within);
        return rgn;
    }
    PixRegion rgn = Shape(w);
    rgn.intersect(PixRegion(keep ? screen : clip));
    if (within) rgn.intersect(*within);
    for (const Window* x = w; x && !rgn.empty(); x = x->parent) {
        if (x != w) rgn.intersect(Shape(x));
        POINT origin = x->parent ? ScreenOrigin(x->parent) : POINT{0, 0};
        SubtractCovering(rgn, Siblings(const_cast<Window*>(x)), x, origin, within);
    }
    SubtractCovering(rgn, w->children, nullptr, ScreenOrigin(w), within);
    if (keep) {
        Window* mw = const_cast<Window*>(w);
        mw->vis = rgn;
        mw->visEpoch = TreeEpoch();  // all of it lies within clip already
    }
    return rgn;
}

// Raises a top-level window (with the windows it owns above it) to the top of its group.
void BringToTop(Window* top) {
    if (!top || top->parent) return;
    std::vector<Window*> owned;
    for (Window* t : State().desktop->children)
        if (t->owner == top) owned.push_back(t);
    std::vector<const Window*> subjects(owned.begin(), owned.end());
    subjects.push_back(top);
    ExposureSnapshot snapshot(std::move(subjects));
    Restack(top, TopIndexFor(top));
    for (auto it = owned.rbegin(); it != owned.rend(); ++it) Restack(*it, TopIndexFor(*it));
    snapshot.Apply();
}

}  // namespace zel::user

using namespace zel::user;

extern "C" {

BOOL GetClientRect(HWND hwnd, LPRECT rect) {
    Window* w = hwnd ? Get(hwnd) : nullptr;
    if (!w || !rect) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    if (w == Desktop()) w = Desktop();
    *rect = w->ClientRect();
    return TRUE;
}

BOOL GetWindowRect(HWND hwnd, LPRECT rect) {
    Window* w = hwnd ? Get(hwnd) : nullptr;
    if (!w || !rect) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    if (w == Desktop()) w = Desktop();
    *rect = ScreenRect(w);
    return TRUE;
}

BOOL ClientToScreen(HWND hwnd, LPPOINT pt) {
    Window* w = Get(hwnd);
    if (!w || !pt) return FALSE;
    POINT o = ScreenOrigin(w);
    pt->x += o.x;
    pt->y += o.y;
    return TRUE;
}

BOOL ScreenToClient(HWND hwnd, LPPOINT pt) {
    Window* w = Get(hwnd);
    if (!w || !pt) return FALSE;
    POINT o = ScreenOrigin(w);
    pt->x -= o.x;
    pt->y -= o.y;
    return TRUE;
}

// NULL stands for the screen. The result packs the horizontal offset in the low word and
// the vertical one in the high word; 0 with an invalid handle.
int MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count) {
    Window* f = from ? Get(from) : nullptr;
    Window* t = to ? Get(to) : nullptr;
    if ((from && !f) || (to && !t)) {
        SetLastError(kErrorInvalidWindowHandle);
        return 0;
    }
    POINT a = f ? ScreenOrigin(f) : POINT{0, 0};
    POINT b = t ? ScreenOrigin(t) : POINT{0, 0};
    int dx = a.x - b.x, dy = a.y - b.y;
    for (UINT i = 0; points && i < count; ++i) {
        points[i].x += dx;
        points[i].y += dy;
    }
    return MAKELONG(dx, dy);
}

BOOL SetWindowPos(HWND hwnd, HWND insertAfter, int x, int y, int cx, int cy, UINT flags) {
    Busy busy;
    Window* w = Get(hwnd);
    if (!w || w == Desktop()) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    WINDOWPOS wp{hwnd, insertAfter, x, y, cx, cy, flags};
    NormaliseFlags(w, wp);
    const UINT kNothing = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER;
    if ((wp.flags & kNothing) == kNothing && !(wp.flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW | SWP_FRAMECHANGED))) {
        if (!(flags & SWP_NOACTIVATE) && !w->parent && Visible(w) && !(w->style & WS_DISABLED)) Activate(w);
        return TRUE;
    }

    Send(w, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&wp));
    if (!(w = Get(hwnd))) return FALSE;
    NormaliseFlags(w, wp);  // the handler may have changed the position or the flags

    bool redraw = !(wp.flags & SWP_NOREDRAW);
    std::optional<ExposureSnapshot> snapshot;
    if (redraw) snapshot.emplace(std::vector<const Window*>{w});
    RECT old = w->rect;
    w->rect = RECT{wp.x, wp.y, wp.x + wp.cx, wp.y + wp.cy};
    if (!(wp.flags & SWP_NOZORDER)) ApplyZOrder(w, wp.hwndInsertAfter);
    if (wp.flags & SWP_SHOWWINDOW) w->style |= WS_VISIBLE;
    if (wp.flags & SWP_HIDEWINDOW) w->style &= ~WS_VISIBLE;
    TreeChanged();
    bool moved = old.left != w->rect.left || old.top != w->rect.top;
    bool sized = (old.right - old.left) != w->Width() || (old.bottom - old.top) != w->Height();

    if (redraw) {
        std::vector<HWND> changed = snapshot->Apply();
        // Nothing is copied on the screen: a moved, resized or newly shown window is
        // repainted whole, children included.
        if ((moved || sized || (wp.flags & SWP_SHOWWINDOW)) && Visible(w)) {
            InvalidateTree(w, true);
            PreOrder(w, changed);
        }
        EraseChanged(w->parent ? w->parent : w, changed);
    } else {
        RefreshWindowDCs();
    }
    if (!(w = Get(hwnd))) return TRUE;
    if (!Visible(w)) ClearUpdateTree(w);
    if (wp.flags & SWP_HIDEWINDOW) AfterHide(w);
    if (!(w = Get(hwnd))) return TRUE;
    if (!(flags & SWP_NOACTIVATE) && !w->parent && Visible(w) && !(w->style & WS_DISABLED)) Activate(w);
    if (!(w = Get(hwnd))) return TRUE;

    if (!moved) wp.flags |= kNoClientMove;
    if (!sized) wp.flags |= kNoClientSize;
    Send(w, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&wp));
    return TRUE;
}

// To the top of its siblings' z-order; a top-level window is activated as well.
BOOL BringWindowToTop(HWND hwnd) { return SetWindowPos(hwnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE); }

BOOL MoveWindow(HWND hwnd, int x, int y, int width, int height, BOOL repaint) {
    return SetWindowPos(hwnd, nullptr, x, y, width, height,
                        SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? 0 : SWP_NOREDRAW));
}

// Returns whether the window was visible before. Minimising does not exist here: every
// command but SW_HIDE shows.
BOOL ShowWindow(HWND hwnd, int cmd) {
    Busy busy;
    Window* w = Get(hwnd);
    if (!w || w == Desktop()) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    bool was = (w->style & WS_VISIBLE) != 0;
    bool show = cmd != SW_HIDE;
    if (show == was) return was;
    Send(w, WM_SHOWWINDOW, show ? TRUE : FALSE, 0);
    if (!(w = Get(hwnd))) return was;
    UINT swp = SWP_NOMOVE | SWP_NOSIZE | (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW);
    if (w->parent || !show || !ActivatingShow(cmd) || (w->exStyle & WS_EX_NOACTIVATE))
        swp |= SWP_NOACTIVATE | SWP_NOZORDER;
    SetWindowPos(hwnd, HWND_TOP, 0, 0, 0, 0, swp);
    return was;
}

BOOL EnableWindow(HWND hwnd, BOOL enable) {
    Busy busy;
    Window* w = Get(hwnd);
    if (!w || w == Desktop()) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    bool wasDisabled = (w->style & WS_DISABLED) != 0;
    if (enable && wasDisabled) {
        w->style &= ~WS_DISABLED;
        Send(w, WM_ENABLE, TRUE, 0);
    } else if (!enable && !wasDisabled) {
        // Modes (capture, tracking) end before the window stops taking input; a disabled
        // window cannot keep the focus.
        Send(w, WM_CANCELMODE, 0, 0);
        if (!(w = Get(hwnd))) return FALSE;
        w->style |= WS_DISABLED;
        // Only the focus window itself loses the focus; a focused child of a window being
        // disabled keeps it.
        if (GetFocus() == hwnd) SetFocus(nullptr);
        if ((w = Get(hwnd))) Send(w, WM_ENABLE, FALSE, 0);
    }
    return wasDisabled;
}

// The window takes the region over: it keeps a copy and deletes the caller's handle, so
// the region must not be used after a successful call (Win32 ownership rule).
int SetWindowRgn(HWND hwnd, HRGN hrgn, BOOL redraw) {
    Busy busy;
    Window* w = Get(hwnd);
    zel::gdi::Region* r = hrgn ? zel::gdi::LookupRegion(hrgn) : nullptr;
    if (!w || w == Desktop() || (hrgn && !r)) {
        SetLastError(w ? kErrorInvalidParameter : kErrorInvalidWindowHandle);
        return 0;
    }
    UINT flags = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED |
                 (redraw ? 0 : SWP_NOREDRAW);
    WINDOWPOS wp{hwnd, nullptr, w->rect.left, w->rect.top, w->Width(), w->Height(), flags};
    std::optional<PixRegion> shape;
    if (r) shape = r->rgn;
    DeleteObject(hrgn);
    Send(w, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&wp));
    if (!(w = Get(hwnd))) return 0;

    std::optional<ExposureSnapshot> snapshot;
    if (redraw) snapshot.emplace(std::vector<const Window*>{w});
    w->shape = std::move(shape);
    TreeChanged();
    if (redraw) {
        std::vector<HWND> changed = snapshot->Apply();
        // The frame changed: the window gets a WM_PAINT even when nothing of its client
        // area became invalid.
        if (Visible(w)) {
            w->internalPaint = true;
            SyncPaint(w);
            changed.push_back(w->handle);
        }
        if (!changed.empty()) EraseChanged(w->parent ? w->parent : w, changed);
    } else {
        RefreshWindowDCs();
    }
    if (!(w = Get(hwnd))) return 1;
    wp.flags |= kNoClientMove | kNoClientSize;
    Send(w, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&wp));
    return 1;
}

int GetWindowRgn(HWND hwnd, HRGN hrgn) {
    Window* w = Get(hwnd);
    zel::gdi::Region* r = zel::gdi::LookupRegion(hrgn);
    if (!w || !r || !w->shape) return ERROR;
    r->rgn = *w->shape;
    return zel::gdi::RegionType(r->rgn);
}

}  // extern "C"
