// The window tree: creation and destruction, handles, relations, longs and text.
#include <algorithm>
#include <cstring>

#include "gdi/dc.h"
#include "user/wndmgr.h"
#include "zel/hooks.h"

namespace zel::user {

namespace {

constexpr uint8_t kWindowTag = 0x57;  // 'W': window handles never resolve as GDI objects

CreateWindowHook& CreateHook() {
    static CreateWindowHook hook = nullptr;
    return hook;
}

// Sends WM_DESTROY to a window and then to its children, parents first, each window once:
// a window whose WM_DESTROY was already sent (it is being destroyed further up the stack,
// say a child destroying its parent from its own WM_DESTROY) is passed over, its children
// not. Children are listed after their parent's WM_DESTROY, so windows created in it are
// destroyed too. Iterative: the depth of the tree never reaches the stack.
void SendDestroy(HWND root) {
    std::vector<HWND> pending{root};
    while (!pending.empty()) {
        HWND hwnd = pending.back();
        pending.pop_back();
        Window* w = Get(hwnd);
        if (!w) continue;
        ++WindowVisits();
        if (!w->destroying) {
            w->destroying = true;
            Send(w, WM_DESTROY, 0, 0);
            if (!(w = Get(hwnd))) continue;
        }
        for (auto it = w->children.rbegin(); it != w->children.rend(); ++it) pending.push_back((*it)->handle);
    }
}

// Releases one window whose children are gone: WM_NCDESTROY is the last message it receives.
void ReleaseWindow(Window* w) {
    w->destroying = true;
    Send(w, WM_NCDESTROY, 0, 0);
    HWND hwnd = w->handle;
    KillWindowTimers(hwnd);
    PurgePosted(hwnd);
    ForgetWindow(w);
    ClearUpdateTree(w);  // its pending paint (and any escaped child's) leaves the counts
    std::vector<Window*>& sibs = Siblings(w);
    if (auto it = std::find(sibs.begin(), sibs.end(), w); it != sibs.end()) sibs.erase(it);
    TreeChanged();
    for (Window* c : w->children) c->parent = nullptr;  // only if a child escaped FreeWindow
    w->children.clear();
    if (w->cls) --w->cls->windows;
    if (w->owner) --w->owner->owned;
    UserState& s = State();
    if (w->owned) {
        s.table.ForEach([w](uint8_t, Window& o) {
            if (o.owner == w) o.owner = nullptr;
        });
    }
    s.graveyard.push_back(s.table.Remove(reinterpret_cast<uintptr_t>(hwnd)));
}

// Releases a window after its children, in z-order (post-order), without recursion.
void FreeWindow(Window* root) {
    std::vector<std::pair<HWND, bool>> pending{{root->handle, false}};  // (window, children listed)
    while (!pending.empty()) {
        auto [hwnd, listed] = pending.back();
        Window* w = Get(hwnd);
        if (!w) {
            pending.pop_back();
            continue;
        }
        ++WindowVisits();
        if (listed) {
            pending.pop_back();
            ReleaseWindow(w);
            continue;
        }
        pending.back().second = true;
        for (auto it = w->children.rbegin(); it != w->children.rend(); ++it) pending.emplace_back((*it)->handle, false);
    }
}

Window* NewDesktop(UserState& s) {
    auto d = std::make_unique<Window>();
    d->style = WS_VISIBLE | WS_CLIPCHILDREN;
    d->proc = DefWindowProcW;
    Window* raw = d.get();
    raw->handle = reinterpret_cast<HWND>(s.table.Add(std::move(d), kWindowTag));
    return raw;
}

void FillCreateStruct(CREATESTRUCTW& cs, LPVOID param, HINSTANCE inst, HMENU menu, HWND parent, const RECT& r,
                      DWORD style, LPCWSTR name, LPCWSTR cls, DWORD exStyle) {
    cs.lpCreateParams = param;
    cs.hInstance = inst;
    cs.hMenu = menu;
    cs.hwndParent = parent;
    cs.cx = r.right - r.left;
    cs.cy = r.bottom - r.top;
    cs.x = r.left;
    cs.y = r.top;
    cs.style = static_cast<LONG>(style);
    cs.lpszName = name;
    cs.lpszClass = cls;
    cs.dwExStyle = exStyle;
}

// Levels of the subtree under w, w included (1 for a window without children).
int SubtreeDepth(const Window* root) {
    int deepest = 0;
    std::vector<std::pair<const Window*, int>> pending{{root, 1}};
    while (!pending.empty()) {
        auto [w, depth] = pending.back();
        pending.pop_back();
        deepest = std::max(deepest, depth);
        for (const Window* c : w->children) pending.emplace_back(c, depth + 1);
    }
    return deepest;
}

// CW_USEDEFAULT: top-level windows fill the screen, as on CE; children start empty at 0,0.
RECT InitialRect(bool child, int x, int y, int width, int height) {
    if (x == CW_USEDEFAULT) x = y = 0;
    if (width == CW_USEDEFAULT) {
        width = child ? 0 : gdi::Screen().width;
        height = child ? 0 : gdi::Screen().height;
    }
    x = std::clamp(x, kMinWindowCoord, kMaxWindowCoord);
    y = std::clamp(y, kMinWindowCoord, kMaxWindowCoord);
    return RECT{x, y, x + std::clamp(width, 0, kMaxWindowCoord), y + std::clamp(height, 0, kMaxWindowCoord)};
}

}  // namespace

UserState& State() {
    static auto* s = new UserState();  // lives until exit: handles may outlive statics
    if (!s->desktop) s->desktop = NewDesktop(*s);
    return *s;
}

Window* Desktop() {
    Window* d = State().desktop;
    d->rect = RECT{0, 0, gdi::Screen().width, gdi::Screen().height};
    return d;
}

Window* Get(HWND hwnd) {
    return State().table.Lookup(reinterpret_cast<uintptr_t>(hwnd), kWindowTag);
}

uint64_t& TreeEpoch() {
    static uint64_t epoch = 1;
    return epoch;
}

uint64_t& WindowVisits() {
    static uint64_t visits = 0;
    return visits;
}

int NestingLevel(const Window* w) {
    int level = 0;
    for (; w && w != State().desktop; w = w->parent ? w->parent : w->owner) ++level;
    return level;
}

Busy::Busy() { ++State().busy; }
Busy::~Busy() {
    UserState& s = State();
    if (--s.busy == 0 && !s.graveyard.empty()) {
        std::vector<std::unique_ptr<Window>> dead;
        dead.swap(s.graveyard);
    }
}

std::vector<Window*>& Siblings(Window* w) { return w->parent ? w->parent->children : State().desktop->children; }

Window* TopLevel(Window* w) {
    while (w && w->parent) w = w->parent;
    return w;
}

bool IsInside(const Window* ancestor, const Window* w) {
    for (const Window* p = w ? w->parent : nullptr; p; p = p->parent)
        if (p == ancestor) return true;
    return false;
}

POINT ScreenOrigin(const Window* w) {
    POINT p{0, 0};
    for (; w; w = w->parent) {
        p.x += w->rect.left;
        p.y += w->rect.top;
    }
    return p;
}

RECT ScreenRect(const Window* w) {
    POINT o = ScreenOrigin(w);
    return RECT{o.x, o.y, o.x + w->Width(), o.y + w->Height()};
}

bool Visible(const Window* w) {
    for (; w; w = w->parent)
        if (!(w->style & WS_VISIBLE)) return false;
    return true;
}

void PreOrder(Window* root, std::vector<HWND>& out) {
    ++WindowVisits();
    out.push_back(root->handle);
    for (Window* c : root->children) PreOrder(c, out);
}

bool MatchesFilter(HWND filter, HWND target) {
    if (!filter) return true;
    if (filter == reinterpret_cast<HWND>(-1)) return target == nullptr;
    if (filter == target) return true;
    Window* f = Get(filter);
    Window* t = Get(target);
    return f && t && IsInside(f, t);
}

void Restack(Window* w, size_t index) {
    std::vector<Window*>& sibs = Siblings(w);
    sibs.erase(std::remove(sibs.begin(), sibs.end(), w), sibs.end());
    sibs.insert(sibs.begin() + static_cast<std::ptrdiff_t>(std::min(index, sibs.size())), w);
    TreeChanged();
}

size_t TopIndexFor(const Window* w) {
    if (w->parent || (w->exStyle & WS_EX_TOPMOST)) return 0;
    const std::vector<Window*>& tops = State().desktop->children;
    size_t i = 0;
    while (i < tops.size() && tops[i] != w && (tops[i]->exStyle & WS_EX_TOPMOST)) ++i;
    return i;
}

}  // namespace zel::user

namespace zel {
void SetCreateWindowHook(CreateWindowHook hook) { user::CreateHook() = hook; }
}  // namespace zel

using namespace zel::user;

extern "C" {

HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, int x, int y, int width,
                     int height, HWND parentHandle, HMENU menu, HINSTANCE instance, LPVOID param) {
    Busy busy;
    std::shared_ptr<WindowClass> cls = FindClass(className);
    if (!cls) {
        SetLastError(kErrorCannotFindWndClass);
        return nullptr;
    }
    bool child = (style & WS_CHILD) != 0;
    Window* parent = nullptr;
    Window* owner = nullptr;
    if (parentHandle && parentHandle != H(Desktop())) {
        Window* p = Get(parentHandle);
        if (!p || p->destroying) {
            SetLastError(kErrorInvalidWindowHandle);
            return nullptr;
        }
        if (child)
            parent = p;
        else
            owner = TopLevel(p);  // a popup is owned by the top-level window of its "parent"
    } else if (child) {
        SetLastError(kErrorTlwWithWschild);
        return nullptr;
    }
    // The documentation names no error code for a window nested too deep.
    if (NestingLevel(parent ? parent : owner) >= kMaxNesting) {
        SetLastError(kErrorInvalidParameter);
        return nullptr;
    }

    auto win = std::make_unique<Window>();
    Window* w = win.get();
    w->cls = cls;
    w->proc = cls->proc;
    // WS_VISIBLE is applied by ShowWindow once the window is created; top-level windows
    // always clip their siblings.
    w->style = (style & ~WS_VISIBLE) | (child ? 0 : WS_CLIPSIBLINGS);
    w->exStyle = exStyle;
    w->parent = parent;
    w->owner = owner;
    w->rect = InitialRect(child, x, y, width, height);
    w->id = reinterpret_cast<UINT_PTR>(menu);
    w->instance = instance;
    w->extra.assign(static_cast<size_t>(std::max(cls->wndExtra, 0)), 0);
    w->handle = reinterpret_cast<HWND>(State().table.Add(std::move(win), kWindowTag));
    ++cls->windows;
    if (owner) ++owner->owned;
    std::vector<Window*>& sibs = Siblings(w);
    sibs.insert(sibs.begin() + static_cast<std::ptrdiff_t>(TopIndexFor(w)), w);
    TreeChanged();
    HWND hwnd = w->handle;

    CREATESTRUCTW cs;
    FillCreateStruct(cs, param, instance, menu, parentHandle, w->rect, style, windowName, className, exStyle);
    if (CreateHook()) CreateHook()(hwnd, &cs);
    if (!Get(hwnd)) return nullptr;

    if (!Send(w, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&cs))) {
        if ((w = Get(hwnd))) FreeWindow(w);
        return nullptr;
    }
    if (!(w = Get(hwnd))) return nullptr;
    if (Send(w, WM_CREATE, 0, reinterpret_cast<LPARAM>(&cs)) == -1) {
        DestroyWindow(hwnd);
        return nullptr;
    }
    if (!(w = Get(hwnd)) || w->destroying) return nullptr;

    Send(w, WM_SIZE, 0 /* SIZE_RESTORED */, MAKELPARAM(w->Width(), w->Height()));
    if (!(w = Get(hwnd))) return nullptr;
    Send(w, WM_MOVE, 0, MAKELPARAM(w->rect.left, w->rect.top));
    if (!(w = Get(hwnd))) return nullptr;
    if (style & WS_VISIBLE) ShowWindow(hwnd, SW_SHOW);
    w = Get(hwnd);
    return w && !w->destroying ? hwnd : nullptr;
}

BOOL DestroyWindow(HWND hwnd) {
    Busy busy;
    Window* w = Get(hwnd);
    if (!w || w == Desktop()) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    if (w->destroying) return TRUE;

    // Hidden first, so that what it covered is repainted and focus moves away. Children
    // hide through ShowWindow (with WM_SHOWWINDOW); top-level windows quietly.
    if (w->style & WS_VISIBLE) {
        if (w->parent)
            ShowWindow(hwnd, SW_HIDE);
        else
            SetWindowPos(hwnd, nullptr, 0, 0, 0, 0,
                         SWP_HIDEWINDOW | SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER);
        if (!(w = Get(hwnd)) || w->destroying) return TRUE;
    }

    if (w->owned) {
        std::vector<HWND> owned;
        for (Window* t : State().desktop->children)
            if (t->owner == w) owned.push_back(t->handle);
        for (HWND o : owned) DestroyWindow(o);  // owner chains are bounded by kMaxNesting
        if (!(w = Get(hwnd)) || w->destroying) return TRUE;
    }

    SendDestroy(hwnd);
    if ((w = Get(hwnd))) FreeWindow(w);
    RefreshWindowDCs();
    return TRUE;
}

BOOL IsWindow(HWND hwnd) { return Get(hwnd) != nullptr; }

BOOL IsWindowVisible(HWND hwnd) {
    Window* w = Get(hwnd);
    return w && Visible(w);
}

BOOL IsWindowEnabled(HWND hwnd) {
    Window* w = Get(hwnd);
    return w && !(w->style & WS_DISABLED);
}

BOOL IsChild(HWND parent, HWND hwnd) {
    Window* p = Get(parent);
    Window* w = Get(hwnd);
    return p && w && IsInside(p, w);
}

HWND GetParent(HWND hwnd) {
    Window* w = Get(hwnd);
    if (!w) {
        SetLastError(kErrorInvalidWindowHandle);
        return nullptr;
    }
    if (w->style & WS_CHILD) return H(w->parent);
    return H(w->owner);
}

HWND GetDesktopWindow(void) { return H(Desktop()); }

HWND GetWindow(HWND hwnd, UINT cmd) {
    Window* w = Get(hwnd);
    if (!w) {
        SetLastError(kErrorInvalidWindowHandle);
        return nullptr;
    }
    if (cmd == GW_CHILD) return w->children.empty() ? nullptr : w->children.front()->handle;
    if (cmd == GW_OWNER) return H(w->owner);
    if (w == Desktop()) return nullptr;
    std::vector<Window*>& sibs = Siblings(w);
    auto it = std::find(sibs.begin(), sibs.end(), w);
    switch (cmd) {
        case GW_HWNDFIRST: return sibs.front()->handle;
        case GW_HWNDLAST: return sibs.back()->handle;
        case GW_HWNDNEXT: return it + 1 < sibs.end() ? (*(it + 1))->handle : nullptr;
        case GW_HWNDPREV: return it > sibs.begin() ? (*(it - 1))->handle : nullptr;
        default: SetLastError(kErrorInvalidParameter); return nullptr;
    }
}

HWND GetDlgItem(HWND dialog, int id) {
    Window* d = Get(dialog);
    if (!d) return nullptr;
    for (Window* c : d->children)
        if (static_cast<int>(c->id) == id) return c->handle;
    return nullptr;
}

int GetDlgCtrlID(HWND hwnd) {
    Window* w = Get(hwnd);
    return w ? static_cast<int>(w->id) : 0;
}

LONG_PTR GetWindowLongPtrW(HWND hwnd, int index) {
    Window* w = Get(hwnd);
    if (!w) {
        SetLastError(kErrorInvalidWindowHandle);
        return 0;
    }
    if (index >= 0) {
        if (static_cast<size_t>(index) + sizeof(LONG_PTR) > w->extra.size()) {
            // Four-byte reads of the last slots are common (cbWndExtra = 4).
            if (static_cast<size_t>(index) + sizeof(LONG) <= w->extra.size()) {
                LONG v;
                std::memcpy(&v, &w->extra[index], sizeof v);
                return v;
            }
            SetLastError(kErrorInvalidIndex);
            return 0;
        }
        LONG_PTR v;
        std::memcpy(&v, &w->extra[index], sizeof v);
        return v;
    }
    switch (index) {
        case GWL_WNDPROC: return reinterpret_cast<LONG_PTR>(w->proc);
        case GWL_HINSTANCE: return reinterpret_cast<LONG_PTR>(w->instance);
        case GWL_HWNDPARENT: return reinterpret_cast<LONG_PTR>(GetParent(hwnd));
        case GWL_STYLE: return static_cast<LONG>(w->style);
        case GWL_EXSTYLE: return static_cast<LONG>(w->exStyle);
        case GWL_USERDATA: return w->userData;
        case GWL_ID: return static_cast<LONG_PTR>(w->id);
        default: SetLastError(kErrorInvalidIndex); return 0;
    }
}

LONG_PTR SetWindowLongPtrW(HWND hwnd, int index, LONG_PTR value) {
    Window* w = Get(hwnd);
    if (!w || w == Desktop()) {
        SetLastError(kErrorInvalidWindowHandle);
        return 0;
    }
    LONG_PTR old = GetWindowLongPtrW(hwnd, index);
    if (index >= 0) {
        size_t n = static_cast<size_t>(index) + sizeof(LONG_PTR) <= w->extra.size() ? sizeof(LONG_PTR)
                   : static_cast<size_t>(index) + sizeof(LONG) <= w->extra.size()    ? sizeof(LONG)
                                                                                     : 0;
        if (!n) return 0;
        if (n == sizeof(LONG)) {
            LONG v = static_cast<LONG>(value);
            std::memcpy(&w->extra[index], &v, n);
        } else {
            std::memcpy(&w->extra[index], &value, n);
        }
        return old;
    }
    switch (index) {
        case GWL_WNDPROC:
            if (!value) {
                SetLastError(kErrorInvalidParameter);
                return 0;
            }
            w->proc = reinterpret_cast<WNDPROC>(value);
            break;
        case GWL_HINSTANCE: w->instance = reinterpret_cast<HINSTANCE>(value); break;
        // Style bits change as stored, without repainting (as Win32 does; callers follow
        // with SetWindowPos(SWP_FRAMECHANGED) or InvalidateRect when it matters).
        case GWL_STYLE:
            w->style = static_cast<DWORD>(value);
            TreeChanged();
            RefreshWindowDCs();  // WS_VISIBLE may have changed what window DCs may paint
            break;
        case GWL_EXSTYLE: w->exStyle = static_cast<DWORD>(value); break;
        case GWL_USERDATA: w->userData = value; break;
        case GWL_ID: w->id = static_cast<UINT_PTR>(value); break;
        default: SetLastError(kErrorInvalidIndex); return 0;
    }
    return old;
}

// The 32-bit forms cannot carry a procedure address on this platform (as on 64-bit Windows).
LONG GetWindowLongW(HWND hwnd, int index) {
    if (index == GWL_WNDPROC || index == GWL_HINSTANCE || index == GWL_HWNDPARENT) {
        SetLastError(kErrorInvalidIndex);
        return 0;
    }
    return static_cast<LONG>(GetWindowLongPtrW(hwnd, index));
}

LONG SetWindowLongW(HWND hwnd, int index, LONG value) {
    if (index == GWL_WNDPROC || index == GWL_HINSTANCE || index == GWL_HWNDPARENT) {
        SetLastError(kErrorInvalidIndex);
        return 0;
    }
    if (index >= 0) {
        Window* w = Get(hwnd);
        if (!w || static_cast<size_t>(index) + sizeof(LONG) > w->extra.size()) {
            SetLastError(w ? kErrorInvalidIndex : kErrorInvalidWindowHandle);
            return 0;
        }
        LONG old;
        std::memcpy(&old, &w->extra[index], sizeof old);
        std::memcpy(&w->extra[index], &value, sizeof value);
        return old;
    }
    return static_cast<LONG>(SetWindowLongPtrW(hwnd, index, value));
}

int GetWindowTextW(HWND hwnd, LPWSTR text, int max) {
    Window* w = Get(hwnd);
    if (!w || !text || max <= 0) return 0;
    Busy busy;
    return static_cast<int>(Send(w, WM_GETTEXT, static_cast<WPARAM>(max), reinterpret_cast<LPARAM>(text)));
}

int GetWindowTextLengthW(HWND hwnd) {
    Window* w = Get(hwnd);
    if (!w) return 0;
    Busy busy;
    return static_cast<int>(Send(w, WM_GETTEXTLENGTH, 0, 0));
}

BOOL SetWindowTextW(HWND hwnd, LPCWSTR text) {
    Window* w = Get(hwnd);
    if (!w) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    Busy busy;
    return Send(w, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) ? TRUE : FALSE;
}

HWND SetParent(HWND hwnd, HWND parentHandle) {
    Busy busy;
    Window* w = Get(hwnd);
    Window* p = parentHandle ? Get(parentHandle) : Desktop();
    if (!w || !p || w == Desktop() || p == w || IsInside(w, p) ||
        NestingLevel(p == Desktop() ? nullptr : p) + SubtreeDepth(w) > kMaxNesting) {
        SetLastError(kErrorInvalidParameter);
        return nullptr;
    }
    HWND old = w->parent ? w->parent->handle : H(Desktop());
    ExposureSnapshot snapshot({w});
    std::vector<Window*>& sibs = Siblings(w);
    sibs.erase(std::remove(sibs.begin(), sibs.end(), w), sibs.end());
    Window* oldParent = w->parent;
    w->parent = p == Desktop() ? nullptr : p;
    TreeChanged();
    MovePaintCount(w, oldParent);
    Restack(w, TopIndexFor(w));
    snapshot.Apply();
    InvalidateTree(w, true);
    return old;
}

}  // extern "C"
