// Input: the stylus and key queue, hit testing, double-click synthesis, key state, mouse
// capture, keyboard focus and window activation.
//
// The stylus is the left button. Moves are reported only while it is down (CE: no hover),
// and consecutive queued moves merge into the latest. Pointer events are routed when they
// are retrieved, so a window that changed in the meantime is hit as it is now.
#include <algorithm>
#include <cstdlib>
#include <deque>

#include "kernel/clock.h"
#include "user/wndmgr.h"

namespace zel::user {

namespace {

struct RawEvent {
    enum Kind { kDown, kUp, kMove, kKeyDown, kKeyUp } kind;
    POINT pt;
    UINT vk;
    DWORD time;
};

struct Input {
    std::deque<RawEvent> events;
    bool stylus = false;  // as queued
    POINT cursor{0, 0};
    BYTE keys[256]{};       // as retrieved: 0x80 down, 0x01 toggled
    BYTE asyncKeys[256]{};  // as injected
    HWND lastDownWindow = nullptr;  // the click a double click pairs with
    DWORD lastDownTime = 0;
    POINT lastDownPt{0, 0};
    UINT doubleClickMs = 500;
};

Input& In() {
    static auto* in = new Input();
    return *in;
}

bool InRange(UINT msg, UINT first, UINT last) { return (first == 0 && last == 0) || (msg >= first && msg <= last); }

// Front-to-back candidates under a screen point: within each window, its children first
// (deepest first), then the window itself. Hidden windows and disabled children are not
// candidates: the point belongs to what lies beneath them.
void Candidates(const std::vector<Window*>& list, POINT pt, std::vector<HWND>& out) {
    for (Window* w : list) {
        if (!(w->style & WS_VISIBLE)) continue;
        if (w->parent && (w->style & WS_DISABLED)) continue;
        if (!Shape(w).contains(pt.x, pt.y)) continue;
        Candidates(w->children, pt, out);
        out.push_back(w->handle);
    }
}

// WM_NCHITTEST decides among the candidates; HTTRANSPARENT passes the point on.
Window* HitTest(POINT pt, LRESULT* code) {
    std::vector<HWND> candidates;
    Candidates(State().desktop->children, pt, candidates);
    for (HWND h : candidates) {
        Window* w = Get(h);
        if (!w) continue;
        LRESULT r = Send(w, WM_NCHITTEST, 0, MAKELPARAM(pt.x, pt.y));
        if (r == HTTRANSPARENT) continue;
        if (code) *code = r;
        return Get(h);
    }
    return nullptr;
}

WPARAM ModifierFlags() {
    const Input& in = In();
    WPARAM f = 0;
    if (in.keys[VK_SHIFT] & 0x80) f |= MK_SHIFT;
    if (in.keys[VK_CONTROL] & 0x80) f |= MK_CONTROL;
    return f;
}

// A second down on the same window of a CS_DBLCLKS class, within the double-click time
// and less than SM_CXDOUBLECLK/2 x SM_CYDOUBLECLK/2 pixels from the first.
bool IsDoubleClick(const Window* target, const RawEvent& e) {
    const Input& in = In();
    if (!(target->cls && (target->cls->style & CS_DBLCLKS)) || in.lastDownWindow != target->handle) return false;
    int halfX = GetSystemMetrics(SM_CXDOUBLECLK) / 2, halfY = GetSystemMetrics(SM_CYDOUBLECLK) / 2;
    return e.time - in.lastDownTime < in.doubleClickMs && std::abs(e.pt.x - in.lastDownPt.x) < halfX &&
           std::abs(e.pt.y - in.lastDownPt.y) < halfY;
}

std::optional<MSG> RoutePointer(const RawEvent& e) {
    Window* target = Get(State().capture);
    if (!target) {
        LRESULT code = HTNOWHERE;
        target = HitTest(e.pt, &code);
        // Disabled windows take no mouse input (a disabled top-level window still owns the
        // point, so nothing beneath gets it either).
        if (!target || code != HTCLIENT || (target->style & WS_DISABLED)) return std::nullopt;
    }
    POINT o = ScreenOrigin(target);
    WPARAM wp = ModifierFlags();
    UINT msg = WM_MOUSEMOVE;
    if (e.kind == RawEvent::kMove) {
        wp |= MK_LBUTTON;
    } else if (e.kind == RawEvent::kDown) {
        wp |= MK_LBUTTON;
        msg = IsDoubleClick(target, e) ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN;
    } else {
        msg = WM_LBUTTONUP;
    }
    // Capture delivers client coordinates even outside the window: they may be negative.
    LPARAM lp = MAKELPARAM(static_cast<short>(e.pt.x - o.x), static_cast<short>(e.pt.y - o.y));
    return MSG{target->handle, msg, wp, lp, e.time, e.pt};
}

// Keys go to the focus window; with no focus they are dropped.
std::optional<MSG> RouteKey(const RawEvent& e) {
    Window* target = Get(State().focus);
    if (!target) return std::nullopt;
    bool down = e.kind == RawEvent::kKeyDown;
    bool wasDown = (In().keys[e.vk & 0xFF] & 0x80) != 0;
    LPARAM lp = 1;
    if (wasDown) lp |= 1L << 30;
    if (!down) lp |= (1L << 30) | (1UL << 31);
    return MSG{target->handle, down ? static_cast<UINT>(WM_KEYDOWN) : static_cast<UINT>(WM_KEYUP),
               static_cast<WPARAM>(e.vk), lp, e.time, In().cursor};
}

// State changes that belong to the retrieval of an input message.
void Commit(const RawEvent& e, const MSG& m) {
    Input& in = In();
    switch (m.message) {
        case WM_LBUTTONDOWN:
            in.lastDownWindow = m.hwnd;  // every down is recorded, CS_DBLCLKS or not
            in.lastDownTime = e.time;
            in.lastDownPt = e.pt;
            break;
        case WM_LBUTTONDBLCLK:
            in.lastDownWindow = nullptr;  // so a third click is a plain down
            break;
        case WM_KEYDOWN:
            in.keys[e.vk & 0xFF] = static_cast<BYTE>(0x80 | ((in.keys[e.vk & 0xFF] & 1) ^ 1));
            break;
        case WM_KEYUP:
            in.keys[e.vk & 0xFF] &= 1;
            break;
        default: break;
    }
    in.keys[VK_LBUTTON] = e.kind == RawEvent::kDown ? 0x80 : e.kind == RawEvent::kUp ? 0 : in.keys[VK_LBUTTON];
    // A click activates the top-level window it lands in.
    if (m.message == WM_LBUTTONDOWN || m.message == WM_LBUTTONDBLCLK) {
        Window* top = TopLevel(Get(m.hwnd));
        if (top && top->handle != State().active && !(top->exStyle & WS_EX_NOACTIVATE)) Activate(top);
    }
}

HWND ValidOrNull(HWND& slot) {
    if (slot && !Get(slot)) slot = nullptr;
    return slot;
}

void ActivateOther(Window* leaving) {
    for (Window* t : State().desktop->children) {
        if (t == leaving || !(t->style & WS_VISIBLE) || (t->style & WS_DISABLED) || (t->exStyle & WS_EX_NOACTIVATE))
            continue;
        Activate(t);
        return;
    }
    Activate(nullptr);
}

}  // namespace

void QueuePointer(PointerKind kind, POINT screen) {
    Input& in = In();
    DWORD now = kernel::Ticks();
    if (kind == PointerKind::kMove) {
        in.cursor = screen;
        if (!in.stylus) return;  // no hover moves
        if (!in.events.empty() && in.events.back().kind == RawEvent::kMove) {
            in.events.back().pt = screen;
            in.events.back().time = now;
            return;
        }
        in.events.push_back(RawEvent{RawEvent::kMove, screen, 0, now});
        return;
    }
    if (kind == PointerKind::kUp && in.stylus && (screen.x != in.cursor.x || screen.y != in.cursor.y))
        QueuePointer(PointerKind::kMove, screen);  // the stylus travelled to where it lifts
    in.cursor = screen;
    in.stylus = kind == PointerKind::kDown;
    in.asyncKeys[VK_LBUTTON] = in.stylus ? 0x80 : 0;
    in.events.push_back(RawEvent{kind == PointerKind::kDown ? RawEvent::kDown : RawEvent::kUp, screen, 0, now});
}

void QueueKey(UINT vk, bool down) {
    Input& in = In();
    in.asyncKeys[vk & 0xFF] = down ? 0x80 : 0;
    in.events.push_back(RawEvent{down ? RawEvent::kKeyDown : RawEvent::kKeyUp, in.cursor, vk, kernel::Ticks()});
}

std::optional<MSG> TakeInput(HWND filter, UINT first, UINT last, bool remove) {
    Input& in = In();
    while (!in.events.empty()) {
        RawEvent e = in.events.front();
        bool key = e.kind == RawEvent::kKeyDown || e.kind == RawEvent::kKeyUp;
        std::optional<MSG> m = key ? RouteKey(e) : RoutePointer(e);
        if (!m) {
            // Nobody takes it; the key state still follows the device.
            if (!in.events.empty()) in.events.pop_front();
            if (key) in.keys[e.vk & 0xFF] = e.kind == RawEvent::kKeyDown ? 0x80 : 0;
            continue;
        }
        if (!MatchesFilter(filter, m->hwnd) || !InRange(m->message, first, last)) return std::nullopt;
        if (remove) {
            in.events.pop_front();
            Commit(e, *m);
        }
        return m;
    }
    return std::nullopt;
}

void ResetInput(UINT doubleClickMs) {
    Input& in = In();
    in = Input();
    in.doubleClickMs = doubleClickMs;
}

bool StylusDown() { return In().stylus; }
POINT CursorPos() { return In().cursor; }

void Activate(Window* top) {
    Busy busy;
    UserState& s = State();
    HWND prev = ValidOrNull(s.active);
    HWND next = H(top);
    if (next == prev) return;
    s.active = next;
    if (top) BringToTop(top);
    if (Window* p = Get(prev)) Send(p, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(next));
    if (next && s.active == next)
        if (Window* t = Get(next)) Send(t, WM_ACTIVATE, WA_ACTIVE, reinterpret_cast<LPARAM>(prev));
    if (s.active != next) return;
    // The focus follows the activation unless the handler already put it inside.
    Window* f = Get(ValidOrNull(s.focus));
    if (!next) {
        if (f) SetFocus(nullptr);
    } else if (Window* t = Get(next); t && (!f || TopLevel(f) != t)) {
        SetFocus(next);
    }
}

void AfterHide(Window* w) {
    UserState& s = State();
    HWND hwnd = w->handle;
    if (!w->parent && ValidOrNull(s.active) == hwnd) ActivateOther(w);
    if (!(w = Get(hwnd))) return;
    // Only the focus window itself gives the focus to its parent; a focused descendant of
    // the hidden window keeps it (and loses it silently if the window is then destroyed).
    if (ValidOrNull(s.focus) == hwnd) SetFocus(w->parent ? w->parent->handle : nullptr);
}

// Destruction releases capture without WM_CAPTURECHANGED: the window is already gone.
void ForgetWindow(Window* w) {
    UserState& s = State();
    if (s.capture == w->handle) s.capture = nullptr;
    if (s.focus == w->handle) s.focus = nullptr;
    if (s.active == w->handle) s.active = nullptr;
    if (In().lastDownWindow == w->handle) In().lastDownWindow = nullptr;
}

}  // namespace zel::user

using namespace zel::user;

extern "C" {

HWND SetCapture(HWND hwnd) {
    Busy busy;
    UserState& s = State();
    Window* w = hwnd ? Get(hwnd) : nullptr;
    if (hwnd && (!w || w == Desktop())) {
        SetLastError(kErrorInvalidWindowHandle);
        return nullptr;
    }
    HWND prev = ValidOrNull(s.capture);
    s.capture = hwnd;
    // Also when the window already has the capture: it is told that it took it again
    // (lParam names itself), which handlers that end a drag must tell from a loss.
    if (prev) Send(Get(prev), WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(hwnd));
    return prev;
}

BOOL ReleaseCapture(void) {
    Busy busy;
    UserState& s = State();
    HWND prev = ValidOrNull(s.capture);
    s.capture = nullptr;
    if (prev) Send(Get(prev), WM_CAPTURECHANGED, 0, 0);
    return TRUE;
}

HWND GetCapture(void) { return ValidOrNull(State().capture); }

// The focus variable changes first, so GetFocus() already names the new window while the
// old one handles WM_KILLFOCUS. A window inside a disabled chain cannot take the focus.
HWND SetFocus(HWND hwnd) {
    Busy busy;
    UserState& s = State();
    HWND prev = ValidOrNull(s.focus);
    if (!hwnd) {
        if (!prev) return nullptr;
        s.focus = nullptr;
        Send(Get(prev), WM_KILLFOCUS, 0, 0);
        return prev;
    }
    Window* w = Get(hwnd);
    if (!w || w == Desktop()) {
        SetLastError(kErrorInvalidWindowHandle);
        return nullptr;
    }
    if (hwnd == prev) return prev;
    for (Window* x = w; x; x = x->parent)
        if (x->style & WS_DISABLED) return nullptr;
    Window* top = TopLevel(w);
    if (top->handle != ValidOrNull(s.active)) {
        Activate(top);
        if (!Get(hwnd) || s.active != top->handle) return nullptr;
        prev = ValidOrNull(s.focus);
        if (hwnd == prev) return prev;
    }
    s.focus = hwnd;
    if (Window* p = Get(prev)) {
        Send(p, WM_KILLFOCUS, reinterpret_cast<WPARAM>(hwnd), 0);
        if (s.focus != hwnd) return prev;  // the handler moved the focus elsewhere
    }
    if ((w = Get(hwnd))) Send(w, WM_SETFOCUS, reinterpret_cast<WPARAM>(prev), 0);
    return prev;
}

HWND GetFocus(void) { return ValidOrNull(State().focus); }

HWND GetActiveWindow(void) { return ValidOrNull(State().active); }

HWND SetActiveWindow(HWND hwnd) {
    Window* w = Get(hwnd);
    if (!w || w->parent || w == Desktop()) {
        SetLastError(kErrorInvalidWindowHandle);
        return nullptr;
    }
    HWND prev = GetActiveWindow();
    Activate(w);
    return prev;
}

HWND GetForegroundWindow(void) { return GetActiveWindow(); }

BOOL SetForegroundWindow(HWND hwnd) { return SetActiveWindow(hwnd) != nullptr || GetActiveWindow() == hwnd; }

HWND WindowFromPoint(POINT pt) {
    Busy busy;
    return H(HitTest(pt, nullptr));
}

// Only the direct children, hidden and disabled ones included; the parent itself when no
// child contains the point, NULL when the point is outside the parent. Only the children's
// rectangles count: unlike WindowFromPoint, a window region is not looked at, so a child
// is hit where its region leaves a hole, and even with an empty region.
HWND ChildWindowFromPoint(HWND parent, POINT pt) {
    Window* p = Get(parent);
    if (!p) return nullptr;
    RECT client = p->ClientRect();
    if (!PtInRect(&client, pt)) return nullptr;
    for (Window* c : p->children)
        if (PtInRect(&c->rect, pt)) return c->handle;
    return parent;
}

UINT GetDoubleClickTime(void) { return In().doubleClickMs; }

BOOL SetDoubleClickTime(UINT ms) {
    In().doubleClickMs = ms == 0 ? 500 : std::min<UINT>(ms, 5000);
    return TRUE;
}

short GetKeyState(int vk) {
    BYTE k = In().keys[vk & 0xFF];
    return static_cast<short>(((k & 0x80) ? 0x8000 : 0) | (k & 1));
}

short GetAsyncKeyState(int vk) { return static_cast<short>((In().asyncKeys[vk & 0xFF] & 0x80) ? 0x8000 : 0); }

BOOL GetCursorPos(LPPOINT pt) {
    if (!pt) return FALSE;
    *pt = In().cursor;
    return TRUE;
}

}  // extern "C"
