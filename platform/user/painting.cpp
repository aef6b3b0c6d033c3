// Invalidation and painting: update regions, the erase flag, WM_PAINT / WM_ERASEBKGND,
// BeginPaint / EndPaint, UpdateWindow, RedrawWindow, and repainting what a change uncovers.
//
// Every window clips its children (CE), so invalidating a window never invalidates its
// children; only RDW_ALLCHILDREN (UpdateWindow paints invalid children too) reaches them.
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "gdi/dc.h"
#include "user/wndmgr.h"

namespace zel::user {

namespace {

PixRegion ClientRegion(const Window* w) { return PixRegion(w->ClientRect()); }

void Union(PixRegion& a, const PixRegion& b) { pixman_region32_union(a.get(), a.get(), b.mut()); }
void Subtract(PixRegion& a, const PixRegion& b) { pixman_region32_subtract(a.get(), a.get(), b.mut()); }

PixRegion ScreenArea() { return PixRegion(RECT{0, 0, gdi::Screen().width, gdi::Screen().height}); }

// The part of `bounds` (screen) that no top-level window covers.
PixRegion UncoveredDesktop(const RECT& bounds) {
    PixRegion rgn = ScreenArea();
    rgn.intersect(PixRegion(bounds));
    RECT meet;
    for (Window* t : State().desktop->children)
        if ((t->style & WS_VISIBLE) && IntersectRect(&meet, &t->rect, &bounds)) Subtract(rgn, Shape(t));
    return rgn;
}

PixRegion UncoveredDesktop() { return UncoveredDesktop(RECT{0, 0, gdi::Screen().width, gdi::Screen().height}); }

// Visible windows whose rectangle meets `bounds` (children lie within their parent).
template <class F>
void ForEachVisibleNear(Window* w, const RECT& bounds, F&& f) {
    if (!(w->style & WS_VISIBLE)) return;
    ++WindowVisits();
    RECT r = ScreenRect(w), meet;
    if (!IntersectRect(&meet, &r, &bounds)) return;
    f(w);
    for (Window* c : w->children) ForEachVisibleNear(c, bounds, f);
}

// The windows whose paintBelow counts a change below `from`: from and its parent chain,
// ending with the desktop (the parent of the top-level windows).
template <class F>
void ForEachCounter(Window* from, F&& f) {
    Window* desktop = State().desktop;
    for (Window* a = from; a; a = a->parent) {
        f(a);
        if (a == desktop) return;
    }
    f(desktop);
}

// WM_ERASEBKGND outside BeginPaint: through a DC clipped to the update region.
void SendErase(Window* w) {
    HWND hwnd = w->handle;
    PixRegion area = w->update;
    w->erase = false;
    HDC dc = NewWindowDC(w, &area);
    LRESULT erased = Send(w, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    ReleaseWindowDC(dc);
    if ((w = Get(hwnd)) && !erased) w->eraseDeclined = true;
}

void UpdateNow(Window* w, bool children) {
    std::vector<HWND> order;
    if (children)
        PreOrder(w, order);
    else
        order.push_back(w->handle);
    for (HWND h : order) {
        Window* x = Get(h);
        if (x && x != State().desktop && NeedsPaint(x)) Send(x, WM_PAINT, 0, 0);
    }
}

void RedrawArea(Window* w, const PixRegion& area, UINT flags) {
    if (w != State().desktop) {
        if (flags & RDW_INVALIDATE) {
            Invalidate(w, &area, (flags & RDW_ERASE) && !(flags & RDW_NOERASE));
            if ((flags & RDW_INTERNALPAINT) && Visible(w)) w->internalPaint = true;
        }
        if (flags & RDW_VALIDATE) {
            Validate(w, &area);
            if (flags & RDW_NOERASE) w->erase = false;
            if (flags & RDW_NOINTERNALPAINT) w->internalPaint = false;
        }
        SyncPaint(w);
    } else if ((flags & RDW_INVALIDATE) && (flags & RDW_ERASE)) {
        PixRegion bare = UncoveredDesktop();
        bare.intersect(area);
        PaintDesktop(bare);
    }
    if (!(flags & RDW_ALLCHILDREN) && w != State().desktop) return;
    for (Window* c : w->children) {
        PixRegion sub = area;
        sub.translate(-c->rect.left, -c->rect.top);
        sub.intersect(ClientRegion(c));
        if (!sub.empty()) RedrawArea(c, sub, flags | RDW_ALLCHILDREN);
    }
}

HRGN ResultRegion(HRGN hrgn, const PixRegion& rgn) {
    if (gdi::Region* r = gdi::LookupRegion(hrgn)) r->rgn = rgn;
    return hrgn;
}

}  // namespace

void Invalidate(Window* w, const PixRegion* clientArea, bool erase) {
    if (!w || w == State().desktop || !Visible(w)) return;
    PixRegion a = clientArea ? *clientArea : ClientRegion(w);
    a.intersect(ClientRegion(w));
    if (a.empty()) return;
    Union(w->update, a);
    if (erase) w->erase = true;
    SyncPaint(w);
}

void InvalidateTree(Window* w, bool erase) {
    ++WindowVisits();
    Invalidate(w, nullptr, erase);
    for (Window* c : w->children) InvalidateTree(c, erase);
}

void Validate(Window* w, const PixRegion* clientArea) {
    if (clientArea)
        Subtract(w->update, *clientArea);
    else
        w->update = PixRegion();
    if (w->update.empty()) {
        w->erase = false;
        w->eraseDeclined = false;
    }
    SyncPaint(w);
}

void ClearUpdateTree(Window* w) {
    ++WindowVisits();
    w->update = PixRegion();
    w->erase = w->eraseDeclined = w->internalPaint = false;
    SyncPaint(w);
    for (Window* c : w->children)
        if (c->paintBelow) ClearUpdateTree(c);
}

void SyncPaint(Window* w) {
    bool pending = !w->update.empty() || w->internalPaint;
    if (pending == w->paintPending) return;
    w->paintPending = pending;
    int delta = pending ? 1 : -1;
    w->paintBelow += delta;
    ForEachCounter(w->parent, [delta](Window* a) { a->paintBelow += delta; });
}

void MovePaintCount(Window* w, Window* oldParent) {
    int n = w->paintBelow;
    if (!n) return;
    ForEachCounter(oldParent, [n](Window* a) { a->paintBelow -= n; });
    ForEachCounter(w->parent, [n](Window* a) { a->paintBelow += n; });
}

bool NeedsPaint(const Window* w) { return Visible(w) && (!w->update.empty() || w->internalPaint); }

// Parents come before their children, top-level windows in z-order. Subtrees where
// nothing is pending are skipped on their count, so an idle pump costs nothing.
Window* FindPaintWindow(HWND filter) {
    Window* found = nullptr;
    auto visit = [&](auto&& self, Window* w) -> void {
        if (found || !(w->style & WS_VISIBLE) || !w->paintBelow) return;
        ++WindowVisits();
        if (w->paintPending && MatchesFilter(filter, w->handle)) {
            found = w;
            return;
        }
        for (Window* c : w->children) self(self, c);
    };
    if (State().desktop->paintBelow)
        for (Window* t : State().desktop->children) visit(visit, t);
    return found;
}

// A window with an erase pending has a non-empty update region, so subtrees with nothing
// pending are skipped.
void EraseNow(Window* w) {
    if (!w || !Visible(w)) return;
    ++WindowVisits();
    HWND hwnd = w->handle;
    if (w != State().desktop && w->erase && !w->update.empty()) SendErase(w);
    if (!(w = Get(hwnd)) || (w != State().desktop && NeedsPaint(w))) return;
    std::vector<HWND> kids;
    for (Window* c : w->children)
        if (c->paintBelow) kids.push_back(c->handle);
    for (HWND k : kids) EraseNow(Get(k));
}

void EraseChanged(Window* root, const std::vector<HWND>& changed) {
    HWND rootHandle = root->handle;
    std::unordered_set<HWND> seen;
    for (HWND h : changed) {
        if (!seen.insert(h).second) continue;
        Window* w = Get(h);
        Window* r = Get(rootHandle);
        if (!w || !r || w == State().desktop || !Visible(w) || (w != r && !IsInside(r, w))) continue;
        ++WindowVisits();
        if (!w->erase || w->update.empty()) continue;
        bool waiting = false;
        for (Window* a = w->parent; a && a != State().desktop && !waiting; a = a->parent) {
            waiting = NeedsPaint(a);
            if (a == r) break;
        }
        if (!waiting) SendErase(w);
    }
}

ExposureSnapshot::ExposureSnapshot(std::vector<const Window*> subjects) : subjects_(std::move(subjects)) {
    for (const Window* s : subjects_) {
        if (!Visible(s)) continue;
        RECT r = ScreenRect(s);
        if (!covered_) bounds_ = r;
        UnionRect(&bounds_, &bounds_, &r);
        covered_ = true;
    }
    if (!covered_) return;
    for (Window* t : State().desktop->children) {
        ForEachVisibleNear(t, bounds_,
                           [this](Window* w) { windows_.emplace_back(w->handle, VisibleRegionWithin(w, bounds_)); });
    }
    desktop_ = UncoveredDesktop(bounds_);
}

std::vector<HWND> ExposureSnapshot::Apply() {
    // Subjects hidden before and after (a control set up in a window not shown yet): no
    // pixel of the screen and no window DC's visible region has changed.
    if (!covered_ && std::none_of(subjects_.begin(), subjects_.end(),
                                  [](const Window* s) { return Get(s->handle) && Visible(s); }))
        return {};
    std::unordered_map<HWND, const PixRegion*> before;
    std::vector<HWND> order;
    for (const auto& [h, rgn] : windows_) {
        before[h] = &rgn;
        order.push_back(h);
    }
    // A subject that was hidden before is not in the record: all it shows now is new.
    size_t othersEnd = order.size();
    std::unordered_set<HWND> subjectTree;
    for (const Window* s : subjects_) {
        if (!Get(s->handle)) continue;
        size_t from = order.size();
        PreOrder(const_cast<Window*>(s), order);
        subjectTree.insert(order.begin() + static_cast<std::ptrdiff_t>(from), order.end());
    }
    std::vector<HWND> changed;
    std::unordered_set<HWND> done;
    for (size_t i = 0; i < order.size(); ++i) {
        HWND h = order[i];
        Window* w = Get(h);
        if (!w || !Visible(w) || !done.insert(h).second) continue;
        // Others can only have gained where the subjects were; the subjects' own windows
        // may show anything new.
        bool subject = i >= othersEnd || subjectTree.count(h);
        PixRegion gained = subject ? VisibleRegion(w) : VisibleRegionWithin(w, bounds_);
        auto it = before.find(h);
        if (it != before.end()) Subtract(gained, *it->second);
        if (gained.empty()) continue;
        POINT o = ScreenOrigin(w);
        gained.translate(-o.x, -o.y);
        Invalidate(w, &gained, true);
        changed.push_back(h);
    }
    if (covered_) {
        PixRegion bare = UncoveredDesktop(bounds_);
        Subtract(bare, desktop_);
        PaintDesktop(bare);
    }
    RefreshWindowDCs();
    return changed;
}

// The bare desktop has no window to paint it: it is filled at once.
void PaintDesktop(const PixRegion& screenArea) {
    gdi::PixelBuffer& screen = gdi::Screen();
    PixRegion area = screenArea;
    area.intersect(ScreenArea());
    uint32_t px = gdi::ColorToPixel32(DesktopColor());
    int n = 0;
    const pixman_box32_t* boxes = pixman_region32_rectangles(area.mut(), &n);
    for (int i = 0; i < n; ++i)
        for (int y = boxes[i].y1; y < boxes[i].y2; ++y) std::fill(screen.row(y) + boxes[i].x1, screen.row(y) + boxes[i].x2, px);
}

}  // namespace zel::user

using namespace zel::user;
using zel::gdi::PixRegion;

extern "C" {

HDC BeginPaint(HWND hwnd, LPPAINTSTRUCT ps) {
    Busy busy;
    Window* w = Get(hwnd);
    if (!w || !ps || w == Desktop()) return nullptr;
    PixRegion area = w->update;
    area.intersect(PixRegion(w->ClientRect()));
    bool erase = w->erase && !area.empty();
    bool declined = w->eraseDeclined;
    // The update region is validated before WM_ERASEBKGND, so invalidating from inside the
    // erase or paint handler starts a new cycle.
    w->update = PixRegion();
    w->erase = w->eraseDeclined = w->internalPaint = false;
    SyncPaint(w);
    HDC dc = NewWindowDC(w, &area);
    ps->hdc = dc;
    ps->fErase = declined;
    if (erase) ps->fErase = Send(w, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0) ? FALSE : TRUE;
    ps->rcPaint = area.box();
    ps->fRestore = FALSE;
    ps->fIncUpdate = FALSE;
    return dc;
}

BOOL EndPaint(HWND, const PAINTSTRUCT* ps) {
    if (ps) ReleaseWindowDC(ps->hdc);
    return TRUE;
}

BOOL InvalidateRgn(HWND hwnd, HRGN hrgn, BOOL erase) {
    if (!hwnd) return RedrawWindow(nullptr, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    Window* w = Get(hwnd);
    zel::gdi::Region* r = hrgn ? zel::gdi::LookupRegion(hrgn) : nullptr;
    if (!w || (hrgn && !r)) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    Invalidate(w, r ? &r->rgn : nullptr, erase != FALSE);
    return TRUE;
}

BOOL InvalidateRect(HWND hwnd, const RECT* rect, BOOL erase) {
    if (!hwnd) return RedrawWindow(nullptr, rect, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    Window* w = Get(hwnd);
    if (!w) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    if (rect) {
        PixRegion area(*rect);
        Invalidate(w, &area, erase != FALSE);
    } else {
        Invalidate(w, nullptr, erase != FALSE);
    }
    return TRUE;
}

BOOL ValidateRgn(HWND hwnd, HRGN hrgn) {
    Window* w = Get(hwnd);
    zel::gdi::Region* r = hrgn ? zel::gdi::LookupRegion(hrgn) : nullptr;
    if (!w || (hrgn && !r)) return FALSE;
    Validate(w, r ? &r->rgn : nullptr);
    return TRUE;
}

BOOL ValidateRect(HWND hwnd, const RECT* rect) {
    Window* w = Get(hwnd);
    if (!w) return FALSE;
    if (rect) {
        PixRegion area(*rect);
        Validate(w, &area);
    } else {
        Validate(w, nullptr);
    }
    return TRUE;
}

// Sends WM_PAINT at once to the window and then to its invalid descendants.
BOOL UpdateWindow(HWND hwnd) {
    Busy busy;
    Window* w = Get(hwnd);
    if (!w) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    UpdateNow(w, true);
    return TRUE;
}

BOOL GetUpdateRect(HWND hwnd, LPRECT rect, BOOL erase) {
    Busy busy;
    Window* w = Get(hwnd);
    if (!w) return FALSE;
    if (erase && w->erase && NeedsPaint(w)) {
        SendErase(w);
        if (!(w = Get(hwnd))) return FALSE;
    }
    PixRegion area = w->update;
    area.intersect(PixRegion(w->ClientRect()));
    if (rect) *rect = area.box();
    return !area.empty();
}

int GetUpdateRgn(HWND hwnd, HRGN hrgn, BOOL erase) {
    Busy busy;
    Window* w = Get(hwnd);
    if (!w || !zel::gdi::LookupRegion(hrgn)) return ERROR;
    if (erase && w->erase && NeedsPaint(w)) {
        SendErase(w);
        if (!(w = Get(hwnd))) return ERROR;
    }
    PixRegion area = w->update;
    area.intersect(PixRegion(w->ClientRect()));
    ResultRegion(hrgn, area);
    return zel::gdi::RegionType(area);
}

BOOL RedrawWindow(HWND hwnd, const RECT* rect, HRGN hrgn, UINT flags) {
    Busy busy;
    Window* w = hwnd ? Get(hwnd) : Desktop();
    zel::gdi::Region* r = hrgn ? zel::gdi::LookupRegion(hrgn) : nullptr;
    if (!w || (hrgn && !r)) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    if (w == Desktop()) w = Desktop();  // refreshes its rectangle to the screen
    PixRegion area = r ? r->rgn : rect ? PixRegion(*rect) : PixRegion(w->ClientRect());
    RedrawArea(w, area, flags);
    if (flags & RDW_UPDATENOW)
        UpdateNow(w, !(flags & RDW_NOCHILDREN));
    else if (flags & RDW_ERASENOW)
        EraseNow(w);
    return TRUE;
}

}  // extern "C"
