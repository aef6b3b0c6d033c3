// USER around the edges the controls meet: focus and capture when the window holding
// them is destroyed, hidden or disabled, the order siblings paint in, and hit testing of
// windows shaped by SetWindowRgn.
#include "recorded.h"

namespace {

using recorded::Facts;

// Windows are named so that logs never print handles.
struct Named {
    HWND hwnd;
    const char* name;
};
std::vector<Named>& Names() {
    static std::vector<Named> names;
    return names;
}
std::string NameOf(HWND h) {
    if (!h) return "0";
    for (const Named& n : Names())
        if (n.hwnd == h) return n.name;
    return "other";
}

std::string& Log() {
    static std::string log;
    return log;
}
void Note(const std::string& s) { Log() += (Log().empty() ? "" : ";") + s; }
std::string Take() {
    std::string s = Log().empty() ? "-" : Log();
    Log().clear();
    return s;
}

LRESULT CALLBACK Proc(HWND h, UINT m, WPARAM wp, LPARAM lp) {
    switch (m) {
        case WM_SETFOCUS: Note(NameOf(h) + ":SETFOCUS(" + NameOf(reinterpret_cast<HWND>(wp)) + ")"); break;
        case WM_KILLFOCUS: Note(NameOf(h) + ":KILLFOCUS(" + NameOf(reinterpret_cast<HWND>(wp)) + ")"); break;
        case WM_CAPTURECHANGED: Note(NameOf(h) + ":CAPTURECHANGED(" + NameOf(reinterpret_cast<HWND>(lp)) + ")"); break;
        case WM_DESTROY: Note(NameOf(h) + ":DESTROY"); break;
        case WM_ERASEBKGND: return 1;
        case WM_PAINT: {
            PAINTSTRUCT ps;
            BeginPaint(h, &ps);
            Note(NameOf(h) + ":PAINT");
            EndPaint(h, &ps);
            return 0;
        }
        default: break;
    }
    return DefWindowProcW(h, m, wp, lp);
}

const WCHAR* ClassName() {
    static const WCHAR name[] = {'r', 'e', 'c', 'L', 'o', 'g', 0};
    static bool registered = [] {
        WNDCLASSW wc;
        std::memset(&wc, 0, sizeof wc);
        wc.lpfnWndProc = Proc;
        wc.lpszClassName = name;
        wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
        return RegisterClassW(&wc) != 0;
    }();
    (void)registered;
    return name;
}

void Pump() {
    MSG msg;
    for (int i = 0; i < 500 && PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE); ++i) DispatchMessageW(&msg);
}

// A visible top-level window at (40, 30), 200 x 150, and its children.
class Scene {
public:
    Scene() {
        Names().clear();
        Log().clear();
        top_ = CreateWindowExW(0, ClassName(), nullptr, WS_POPUP | WS_VISIBLE, 40, 30, 200, 150, nullptr, nullptr,
                               nullptr, nullptr);
        Names().push_back({top_, "top"});
        Pump();
        Log().clear();
    }
    ~Scene() {
        if (IsWindow(top_)) DestroyWindow(top_);
        Pump();
        Names().clear();
        Log().clear();
    }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    HWND top() const { return top_; }
    HWND Child(HWND parent, const char* name, int x, int y, int w, int h, DWORD style = WS_VISIBLE) {
        HWND c = CreateWindowExW(0, ClassName(), nullptr, WS_CHILD | style, x, y, w, h, parent, nullptr, nullptr,
                                 nullptr);
        Names().push_back({c, name});
        return c;
    }
    // Everything painted and logged so far is forgotten.
    void Settle() {
        UpdateWindow(top_);
        Pump();
        Log().clear();
    }

private:
    HWND top_;
};

// The layouts the cases share: "a" alone or beside "b"; "inner" inside "panel"; and
// three overlapping siblings, "first" on top.
HWND One(Scene& s) { return s.Child(s.top(), "a", 10, 10, 50, 30); }
HWND Pair(Scene& s, HWND* b = nullptr) {
    HWND a = One(s);
    HWND other = s.Child(s.top(), "b", 70, 10, 50, 30);
    if (b) *b = other;
    return a;
}
HWND Nested(Scene& s, HWND* inner) {
    HWND panel = s.Child(s.top(), "panel", 10, 10, 150, 100);
    *inner = s.Child(panel, "inner", 5, 5, 40, 20);
    return panel;
}
struct Three {
    HWND first, second, third;
};
Three Overlapping(Scene& s, DWORD thirdStyle = WS_VISIBLE) {
    Three t;
    t.first = s.Child(s.top(), "first", 10, 10, 80, 60);
    t.second = s.Child(s.top(), "second", 40, 30, 80, 60);
    t.third = s.Child(s.top(), "third", 70, 50, 80, 60, thirdStyle);
    return t;
}

enum class Hold { kFocus, kCapture };
enum class Act { kDestroy, kHide, kDisable };

// Settles the scene and gives `holder` the focus or the capture; what that sends is
// recorded as "set" when `logSet`, else forgotten.
void Give(Scene& s, Facts& facts, Hold hold, HWND holder, bool logSet = false) {
    s.Settle();
    if (hold == Hold::kFocus)
        SetFocus(holder);
    else
        SetCapture(holder);
    std::string set = Take();
    if (logSet) facts.Add("set", set);
}
// Destroys, hides or disables `target`, recording what that sent and then where the
// focus or capture is, under `where` ("focus" or "capture" unless named).
void Apply(Facts& facts, Hold hold, Act act, HWND target, const char* where = nullptr) {
    const char* key = "destroy";
    if (act == Act::kDestroy) {
        DestroyWindow(target);
    } else if (act == Act::kHide) {
        ShowWindow(target, SW_HIDE);
        key = "hide";
    } else {
        EnableWindow(target, FALSE);
        key = "disable";
    }
    facts.Add(key, Take());
    if (hold == Hold::kFocus)
        facts.Add(where ? where : "focus", NameOf(GetFocus()));
    else
        facts.Add(where ? where : "capture", NameOf(GetCapture()));
}
enum class Layout { kOne, kPair, kNested };
// In a fresh scene of `layout`, gives the focus or capture to "a" (or "inner") and then
// destroys, hides or disables "a" (or "panel").
void HoldCase(Facts& facts, Hold hold, Layout layout, Act act, bool logSet = false) {
    Scene s;
    HWND holder, target;
    if (layout == Layout::kNested)
        target = Nested(s, &holder);
    else
        holder = target = layout == Layout::kPair ? Pair(s) : One(s);
    Give(s, facts, hold, holder, logSet);
    Apply(facts, hold, act, target);
}

// Invalidates the three children in the order given, then lets the queue paint them.
void InvalidateAndPump(HWND x, HWND y, HWND z) {
    for (HWND h : {x, y, z}) InvalidateRect(h, nullptr, TRUE);
    Pump();
}

// The sibling z-order as GetWindow walks it: new children go to the bottom, so the first
// created is first (and on top); SetWindowPos and BringWindowToTop move them.
std::string Siblings(HWND parent) {
    std::string out;
    for (HWND c = GetWindow(parent, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT))
        out += (out.empty() ? "" : ".") + NameOf(c);
    return out.empty() ? "-" : out;
}
void Place(HWND h, HWND after) { SetWindowPos(h, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE); }
void RedrawAll(Scene& s) { RedrawWindow(s.top(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW); }

// The window hit at (x, y) of the top window's client area: the child by
// ChildWindowFromPoint, and the window on screen (the top window sits at 40, 30).
std::string ChildAt(Scene& s, LONG x, LONG y) {
    POINT p = {x, y};
    return NameOf(ChildWindowFromPoint(s.top(), p));
}
std::string ScreenAt(LONG x, LONG y) {
    POINT p = {x + 40, y + 30};
    return NameOf(WindowFromPoint(p));
}

}  // namespace

RECORDED_CASE(user_windows, focus_destroy_focused_child) { HoldCase(facts, Hold::kFocus, Layout::kPair, Act::kDestroy, true); }

RECORDED_CASE(user_windows, focus_destroy_parent_of_focused) { HoldCase(facts, Hold::kFocus, Layout::kNested, Act::kDestroy); }

RECORDED_CASE(user_windows, focus_hide_focused_child) { HoldCase(facts, Hold::kFocus, Layout::kOne, Act::kHide); }

RECORDED_CASE(user_windows, focus_disable_focused_child) {
    Scene s;
    HWND a = One(s);
    Give(s, facts, Hold::kFocus, a);
    Apply(facts, Hold::kFocus, Act::kDisable, a);
    HWND prev = SetFocus(a);
    facts.Add("refocus_prev", NameOf(prev)).Add("refocus", Take()).Add("focus_after", NameOf(GetFocus()));
}

RECORDED_CASE(user_windows, focus_to_hidden_and_disabled) {
    Scene s;
    HWND hidden = s.Child(s.top(), "hidden", 10, 10, 50, 30, 0);
    HWND disabled = s.Child(s.top(), "disabled", 70, 10, 50, 30, WS_VISIBLE | WS_DISABLED);
    s.Settle();
    facts.Add("hidden_prev", NameOf(SetFocus(hidden))).Add("hidden", Take()).Add("f1", NameOf(GetFocus()));
    facts.Add("disabled_prev", NameOf(SetFocus(disabled))).Add("disabled", Take()).Add("f2", NameOf(GetFocus()));
}

RECORDED_CASE(user_windows, focus_destroyed_handle) {
    Scene s;
    HWND a = One(s);
    Give(s, facts, Hold::kFocus, a);
    DestroyWindow(a);
    Take();
    facts.Add("prev", NameOf(SetFocus(a))).Add("log", Take()).Add("focus", NameOf(GetFocus()));
}

RECORDED_CASE(user_windows, capture_destroy_capturing) { HoldCase(facts, Hold::kCapture, Layout::kOne, Act::kDestroy, true); }

RECORDED_CASE(user_windows, capture_destroy_parent) { HoldCase(facts, Hold::kCapture, Layout::kNested, Act::kDestroy); }

RECORDED_CASE(user_windows, capture_hide_and_disable) {
    Scene s;
    HWND a = One(s);
    Give(s, facts, Hold::kCapture, a);
    Apply(facts, Hold::kCapture, Act::kHide, a, "after_hide");
    Apply(facts, Hold::kCapture, Act::kDisable, a, "after_disable");
    ReleaseCapture();
    facts.Add("release", Take());
}

RECORDED_CASE(user_windows, capture_moves_between_windows) {
    Scene s;
    HWND b;
    HWND a = Pair(s, &b);
    s.Settle();
    facts.Add("first_prev", NameOf(SetCapture(a))).Add("first", Take());
    facts.Add("second_prev", NameOf(SetCapture(b))).Add("second", Take());
    facts.Add("again_prev", NameOf(SetCapture(b))).Add("again", Take());
    facts.Add("release", ReleaseCapture()).Add("released", Take());
    facts.Add("release_twice", ReleaseCapture()).Add("twice", Take()).Add("capture", NameOf(GetCapture()));
}

RECORDED_CASE(user_windows, capture_and_focus_destroy_top) {
    Scene s;
    HWND a = One(s);
    Give(s, facts, Hold::kFocus, a);
    SetCapture(a);
    Take();
    DestroyWindow(s.top());
    facts.Add("destroy", Take()).Add("focus", NameOf(GetFocus())).Add("capture", NameOf(GetCapture()));
}

RECORDED_CASE(user_windows, sibling_paint_order) {
    Scene s;
    Overlapping(s);
    s.Settle();
    InvalidateRect(s.top(), nullptr, TRUE);
    UpdateWindow(s.top());
    facts.Add("update_top", Take());
    InvalidateRect(s.top(), nullptr, TRUE);
    Pump();
    facts.Add("pump", Take());
}

RECORDED_CASE(user_windows, sibling_paint_order_children_only) {
    Scene s;
    Three t = Overlapping(s);
    s.Settle();
    InvalidateAndPump(t.third, t.first, t.second);
    facts.Add("pump", Take());
}

RECORDED_CASE(user_windows, sibling_paint_order_after_raise) {
    Scene s;
    Three t = Overlapping(s);
    s.Settle();
    SetWindowPos(t.third, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);  // to the top of the z-order
    Pump();
    Take();
    InvalidateAndPump(t.first, t.second, t.third);
    facts.Add("after_raise", Take());
    facts.Add("on_top", ChildAt(s, 80, 60));  // inside all three
}

RECORDED_CASE(user_windows, window_region_hit_test) {
    Scene s;
    HWND shaped = s.Child(s.top(), "shaped", 20, 20, 100, 80);
    HRGN a = CreateRectRgn(0, 0, 40, 40);
    HRGN b = CreateRectRgn(60, 40, 100, 80);
    CombineRgn(a, a, b, RGN_OR);
    DeleteObject(b);
    facts.Add("set", SetWindowRgn(shaped, a, TRUE));  // the window owns the region now
    s.Settle();
    const POINT pts[] = {{25, 25}, {65, 65}, {90, 30}, {30, 90}, {85, 65}, {139, 99}, {140, 100}, {19, 19}};
    std::string child, screen;
    for (POINT p : pts) {
        child += (child.empty() ? "" : ".") + ChildAt(s, p.x, p.y);
        screen += (screen.empty() ? "" : ".") + ScreenAt(p.x, p.y);
    }
    facts.Add("child", child).Add("screen", screen);
    HRGN copy = CreateRectRgn(0, 0, 0, 0);
    RECT box = {0, 0, 0, 0};
    facts.Add("get", GetWindowRgn(shaped, copy));
    GetRgnBox(copy, &box);
    facts.Rect("box", box);
    DeleteObject(copy);
    facts.Add("clear", SetWindowRgn(shaped, nullptr, TRUE));
    HRGN none = CreateRectRgn(0, 0, 0, 0);
    facts.Add("get_cleared", GetWindowRgn(shaped, none));
    DeleteObject(none);
    facts.Add("after_clear", ScreenAt(90, 30));
}

RECORDED_CASE(user_windows, window_region_offset_and_empty) {
    Scene s;
    HWND shaped = s.Child(s.top(), "shaped", 20, 20, 100, 80);
    HRGN outside = CreateRectRgn(150, 150, 200, 200);
    facts.Add("set_outside", SetWindowRgn(shaped, outside, FALSE));
    s.Settle();
    facts.Add("hit_outside_rgn", ChildAt(s, 60, 50));
    HRGN empty = CreateRectRgn(0, 0, 0, 0);
    facts.Add("set_empty", SetWindowRgn(shaped, empty, FALSE));
    facts.Add("hit_empty_rgn", ChildAt(s, 60, 50)).Add("screen_empty_rgn", ScreenAt(60, 50));
}

// Hiding or disabling a window whose child has the focus, and destroying a window two
// levels above the focus.
RECORDED_CASE(user_windows, focus_hide_parent_of_focused) { HoldCase(facts, Hold::kFocus, Layout::kNested, Act::kHide); }

RECORDED_CASE(user_windows, focus_disable_parent_of_focused) { HoldCase(facts, Hold::kFocus, Layout::kNested, Act::kDisable); }

RECORDED_CASE(user_windows, focus_destroy_grandparent_of_focused) {
    Scene s;
    HWND outer = s.Child(s.top(), "outer", 10, 10, 150, 100);
    HWND panel = s.Child(outer, "panel", 5, 5, 100, 60);
    HWND inner = s.Child(panel, "inner", 5, 5, 40, 20);
    Give(s, facts, Hold::kFocus, inner);
    Apply(facts, Hold::kFocus, Act::kDestroy, outer);
    // The top window can take the focus again afterwards.
    facts.Add("refocus_prev", NameOf(SetFocus(s.top()))).Add("refocus", Take());
}

RECORDED_CASE(user_windows, capture_set_twice_then_other) {
    Scene s;
    HWND a = Pair(s);
    Give(s, facts, Hold::kCapture, a);
    facts.Add("again_prev", NameOf(SetCapture(a))).Add("again", Take());
    facts.Add("release", ReleaseCapture()).Add("released", Take()).Add("capture", NameOf(GetCapture()));
}

RECORDED_CASE(user_windows, zorder_of_new_children) {
    Scene s;
    Three t = Overlapping(s, 0);
    s.Settle();
    facts.Add("created", Siblings(s.top()));
    facts.Add("last", NameOf(GetWindow(t.first, GW_HWNDLAST)))
        .Add("prev_of_third", NameOf(GetWindow(t.third, GW_HWNDPREV)));
    BringWindowToTop(t.second);
    facts.Add("bring_second", Siblings(s.top()));
    Place(t.second, HWND_BOTTOM);
    facts.Add("second_bottom", Siblings(s.top()));
    Place(t.third, t.first);
    facts.Add("third_after_first", Siblings(s.top()));
    ShowWindow(t.third, SW_SHOW);
    facts.Add("shown", Siblings(s.top()));
    facts.Add("child_at", ChildAt(s, 80, 60)).Add("window_at", ScreenAt(80, 60));  // inside all three
    s.Child(t.first, "inner", 0, 0, 10, 10);
    s.Child(t.first, "inner2", 0, 0, 10, 10);
    facts.Add("grandchildren", Siblings(t.first));
}

// Overlapping siblings without WS_CLIPSIBLINGS: who is hit where two overlap, and the
// order in which an update of the parent's whole area paints them.
RECORDED_CASE(user_windows, zorder_paint_and_hit) {
    Scene s;
    s.Child(s.top(), "a", 10, 10, 60, 40);
    HWND b = s.Child(s.top(), "b", 30, 20, 60, 40);
    s.Settle();
    facts.Add("hit", ChildAt(s, 40, 30)).Add("screen_hit", ScreenAt(40, 30));
    RedrawAll(s);
    facts.Add("redraw", Take());
    Place(b, HWND_TOP);
    facts.Add("hit_after", ChildAt(s, 40, 30));
    RedrawAll(s);
    facts.Add("redraw_after", Take());
}
