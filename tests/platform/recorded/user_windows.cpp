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

}  // namespace

RECORDED_CASE(user_windows, focus_destroy_focused_child) {
    Scene s;
    HWND a = s.Child(s.top(), "a", 10, 10, 50, 30);
    s.Child(s.top(), "b", 70, 10, 50, 30);
    s.Settle();
    SetFocus(a);
    facts.Add("set", Take());
    DestroyWindow(a);
    facts.Add("destroy", Take()).Add("focus", NameOf(GetFocus()));
}

RECORDED_CASE(user_windows, focus_destroy_parent_of_focused) {
    Scene s;
    HWND panel = s.Child(s.top(), "panel", 10, 10, 150, 100);
    HWND inner = s.Child(panel, "inner", 5, 5, 40, 20);
    s.Settle();
    SetFocus(inner);
    Take();
    DestroyWindow(panel);
    facts.Add("destroy", Take()).Add("focus", NameOf(GetFocus()));
}

RECORDED_CASE(user_windows, focus_hide_focused_child) {
    Scene s;
    HWND a = s.Child(s.top(), "a", 10, 10, 50, 30);
    s.Settle();
    SetFocus(a);
    Take();
    ShowWindow(a, SW_HIDE);
    facts.Add("hide", Take()).Add("focus", NameOf(GetFocus()));
}

RECORDED_CASE(user_windows, focus_disable_focused_child) {
    Scene s;
    HWND a = s.Child(s.top(), "a", 10, 10, 50, 30);
    s.Settle();
    SetFocus(a);
    Take();
    EnableWindow(a, FALSE);
    facts.Add("disable", Take()).Add("focus", NameOf(GetFocus()));
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
    HWND a = s.Child(s.top(), "a", 10, 10, 50, 30);
    s.Settle();
    SetFocus(a);
    DestroyWindow(a);
    Take();
    facts.Add("prev", NameOf(SetFocus(a))).Add("log", Take()).Add("focus", NameOf(GetFocus()));
}

RECORDED_CASE(user_windows, capture_destroy_capturing) {
    Scene s;
    HWND a = s.Child(s.top(), "a", 10, 10, 50, 30);
    s.Settle();
    SetCapture(a);
    facts.Add("set", Take());
    DestroyWindow(a);
    facts.Add("destroy", Take()).Add("capture", NameOf(GetCapture()));
}

RECORDED_CASE(user_windows, capture_destroy_parent) {
    Scene s;
    HWND panel = s.Child(s.top(), "panel", 10, 10, 150, 100);
    HWND inner = s.Child(panel, "inner", 5, 5, 40, 20);
    s.Settle();
    SetCapture(inner);
    Take();
    DestroyWindow(panel);
    facts.Add("destroy", Take()).Add("capture", NameOf(GetCapture()));
}

RECORDED_CASE(user_windows, capture_hide_and_disable) {
    Scene s;
    HWND a = s.Child(s.top(), "a", 10, 10, 50, 30);
    s.Settle();
    SetCapture(a);
    Take();
    ShowWindow(a, SW_HIDE);
    facts.Add("hide", Take()).Add("after_hide", NameOf(GetCapture()));
    EnableWindow(a, FALSE);
    facts.Add("disable", Take()).Add("after_disable", NameOf(GetCapture()));
    ReleaseCapture();
    facts.Add("release", Take());
}

RECORDED_CASE(user_windows, capture_moves_between_windows) {
    Scene s;
    HWND a = s.Child(s.top(), "a", 10, 10, 50, 30);
    HWND b = s.Child(s.top(), "b", 70, 10, 50, 30);
    s.Settle();
    facts.Add("first_prev", NameOf(SetCapture(a))).Add("first", Take());
    facts.Add("second_prev", NameOf(SetCapture(b))).Add("second", Take());
    facts.Add("again_prev", NameOf(SetCapture(b))).Add("again", Take());
    facts.Add("release", ReleaseCapture()).Add("released", Take());
    facts.Add("release_twice", ReleaseCapture()).Add("twice", Take()).Add("capture", NameOf(GetCapture()));
}

RECORDED_CASE(user_windows, capture_and_focus_destroy_top) {
    Scene s;
    HWND a = s.Child(s.top(), "a", 10, 10, 50, 30);
    s.Settle();
    SetFocus(a);
    SetCapture(a);
    Take();
    DestroyWindow(s.top());
    facts.Add("destroy", Take()).Add("focus", NameOf(GetFocus())).Add("capture", NameOf(GetCapture()));
}

RECORDED_CASE(user_windows, sibling_paint_order) {
    Scene s;
    s.Child(s.top(), "first", 10, 10, 80, 60);
    s.Child(s.top(), "second", 40, 30, 80, 60);
    s.Child(s.top(), "third", 70, 50, 80, 60);
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
    HWND first = s.Child(s.top(), "first", 10, 10, 80, 60);
    HWND second = s.Child(s.top(), "second", 40, 30, 80, 60);
    HWND third = s.Child(s.top(), "third", 70, 50, 80, 60);
    s.Settle();
    InvalidateRect(third, nullptr, TRUE);
    InvalidateRect(first, nullptr, TRUE);
    InvalidateRect(second, nullptr, TRUE);
    Pump();
    facts.Add("pump", Take());
}

RECORDED_CASE(user_windows, sibling_paint_order_after_raise) {
    Scene s;
    HWND first = s.Child(s.top(), "first", 10, 10, 80, 60);
    HWND second = s.Child(s.top(), "second", 40, 30, 80, 60);
    HWND third = s.Child(s.top(), "third", 70, 50, 80, 60);
    s.Settle();
    SetWindowPos(third, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);  // to the top of the z-order
    Pump();
    Take();
    InvalidateRect(first, nullptr, TRUE);
    InvalidateRect(second, nullptr, TRUE);
    InvalidateRect(third, nullptr, TRUE);
    Pump();
    facts.Add("after_raise", Take());
    POINT overlap = {80, 60};  // inside all three
    facts.Add("on_top", NameOf(ChildWindowFromPoint(s.top(), overlap)));
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
        child += (child.empty() ? "" : ".") + NameOf(ChildWindowFromPoint(s.top(), p));
        POINT q = {p.x + 40, p.y + 30};
        screen += (screen.empty() ? "" : ".") + NameOf(WindowFromPoint(q));
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
    POINT inside = {90 + 40, 30 + 30};
    facts.Add("after_clear", NameOf(WindowFromPoint(inside)));
}

RECORDED_CASE(user_windows, window_region_offset_and_empty) {
    Scene s;
    HWND shaped = s.Child(s.top(), "shaped", 20, 20, 100, 80);
    HRGN outside = CreateRectRgn(150, 150, 200, 200);
    facts.Add("set_outside", SetWindowRgn(shaped, outside, FALSE));
    s.Settle();
    POINT p = {60, 50};
    facts.Add("hit_outside_rgn", NameOf(ChildWindowFromPoint(s.top(), p)));
    HRGN empty = CreateRectRgn(0, 0, 0, 0);
    facts.Add("set_empty", SetWindowRgn(shaped, empty, FALSE));
    facts.Add("hit_empty_rgn", NameOf(ChildWindowFromPoint(s.top(), p)));
    POINT q = {60 + 40, 50 + 30};
    facts.Add("screen_empty_rgn", NameOf(WindowFromPoint(q)));
}

// Hiding or disabling a window whose child has the focus, and destroying a window two
// levels above the focus.
RECORDED_CASE(user_windows, focus_hide_parent_of_focused) {
    Scene s;
    HWND panel = s.Child(s.top(), "panel", 10, 10, 150, 100);
    HWND inner = s.Child(panel, "inner", 5, 5, 40, 20);
    s.Settle();
    SetFocus(inner);
    Take();
    ShowWindow(panel, SW_HIDE);
    facts.Add("hide", Take()).Add("focus", NameOf(GetFocus()));
}

RECORDED_CASE(user_windows, focus_disable_parent_of_focused) {
    Scene s;
    HWND panel = s.Child(s.top(), "panel", 10, 10, 150, 100);
    HWND inner = s.Child(panel, "inner", 5, 5, 40, 20);
    s.Settle();
    SetFocus(inner);
    Take();
    EnableWindow(panel, FALSE);
    facts.Add("disable", Take()).Add("focus", NameOf(GetFocus()));
}

RECORDED_CASE(user_windows, focus_destroy_grandparent_of_focused) {
    Scene s;
    HWND outer = s.Child(s.top(), "outer", 10, 10, 150, 100);
    HWND panel = s.Child(outer, "panel", 5, 5, 100, 60);
    HWND inner = s.Child(panel, "inner", 5, 5, 40, 20);
    s.Settle();
    SetFocus(inner);
    Take();
    DestroyWindow(outer);
    facts.Add("destroy", Take()).Add("focus", NameOf(GetFocus()));
    // The top window can take the focus again afterwards.
    facts.Add("refocus_prev", NameOf(SetFocus(s.top()))).Add("refocus", Take());
}

RECORDED_CASE(user_windows, capture_set_twice_then_other) {
    Scene s;
    HWND a = s.Child(s.top(), "a", 10, 10, 50, 30);
    s.Child(s.top(), "b", 70, 10, 50, 30);
    s.Settle();
    SetCapture(a);
    Take();
    facts.Add("again_prev", NameOf(SetCapture(a))).Add("again", Take());
    facts.Add("release", ReleaseCapture()).Add("released", Take()).Add("capture", NameOf(GetCapture()));
}

// The sibling z-order as GetWindow walks it: new children go to the bottom, so the first
// created is first (and on top); SetWindowPos and BringWindowToTop move them.
std::string Siblings(HWND parent) {
    std::string out;
    for (HWND c = GetWindow(parent, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT))
        out += (out.empty() ? "" : ".") + NameOf(c);
    return out.empty() ? "-" : out;
}

RECORDED_CASE(user_windows, zorder_of_new_children) {
    Scene s;
    HWND first = s.Child(s.top(), "first", 10, 10, 80, 60);
    HWND second = s.Child(s.top(), "second", 40, 30, 80, 60);
    HWND third = s.Child(s.top(), "third", 70, 50, 80, 60, 0);
    s.Settle();
    facts.Add("created", Siblings(s.top()));
    facts.Add("last", NameOf(GetWindow(first, GW_HWNDLAST))).Add("prev_of_third", NameOf(GetWindow(third, GW_HWNDPREV)));
    BringWindowToTop(second);
    facts.Add("bring_second", Siblings(s.top()));
    SetWindowPos(second, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    facts.Add("second_bottom", Siblings(s.top()));
    SetWindowPos(third, first, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    facts.Add("third_after_first", Siblings(s.top()));
    ShowWindow(third, SW_SHOW);
    facts.Add("shown", Siblings(s.top()));
    POINT overlap = {80, 60};  // inside all three
    facts.Add("child_at", NameOf(ChildWindowFromPoint(s.top(), overlap)));
    POINT screen = {80 + 40, 60 + 30};
    facts.Add("window_at", NameOf(WindowFromPoint(screen)));
    HWND inner = s.Child(first, "inner", 0, 0, 10, 10);
    HWND inner2 = s.Child(first, "inner2", 0, 0, 10, 10);
    (void)inner;
    (void)inner2;
    facts.Add("grandchildren", Siblings(first));
}

// Overlapping siblings without WS_CLIPSIBLINGS: who is hit where two overlap, and the
// order in which an update of the parent's whole area paints them.
RECORDED_CASE(user_windows, zorder_paint_and_hit) {
    Scene s;
    s.Child(s.top(), "a", 10, 10, 60, 40);
    HWND b = s.Child(s.top(), "b", 30, 20, 60, 40);
    s.Settle();
    POINT both = {40, 30};
    facts.Add("hit", NameOf(ChildWindowFromPoint(s.top(), both)));
    POINT q = {40 + 40, 30 + 30};
    facts.Add("screen_hit", NameOf(WindowFromPoint(q)));
    RedrawWindow(s.top(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    facts.Add("redraw", Take());
    SetWindowPos(b, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    facts.Add("hit_after", NameOf(ChildWindowFromPoint(s.top(), both)));
    RedrawWindow(s.top(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    facts.Add("redraw_after", Take());
}
