// The dialog manager's keyboard: IsDialogMessageW (Tab, arrows, Enter, Escape), tab and
// group order, and the dialog item helpers.
#include <algorithm>
#include <cwchar>
#include <string>

#include "user/dialog.h"

namespace zel::user {

LRESULT DlgCode(HWND control, MSG* msg) {
    return control ? SendMessageW(control, WM_GETDLGCODE, msg ? msg->wParam : 0, reinterpret_cast<LPARAM>(msg)) : 0;
}

namespace {

bool Usable(const Window* w) { return (w->style & WS_VISIBLE) && !(w->style & WS_DISABLED); }

// The windows the dialog manager moves among, in tab (z-) order: the dialog's children,
// except that a visible, enabled child with WS_EX_CONTROLPARENT (a dialog embedded with
// DS_CONTROL) is replaced by its own items, so that they take part in the outer dialog's
// navigation. Nesting is bounded (kMaxNesting), and so is the recursion.
void CollectItems(const Window* parent, std::vector<Window*>& items) {
    for (Window* child : parent->children) {
        if ((child->exStyle & WS_EX_CONTROLPARENT) && Usable(child)) {
            CollectItems(child, items);
        } else {
            items.push_back(child);
        }
    }
}

std::vector<Window*> ItemsOf(const Window* dlg) {
    std::vector<Window*> items;
    CollectItems(dlg, items);
    return items;
}

// The item that is, or contains, hwnd.
Window* ItemOf(const std::vector<Window*>& items, Window* dlg, HWND hwnd) {
    for (Window* w = Get(hwnd); w && w != dlg; w = w->parent)
        if (std::find(items.begin(), items.end(), w) != items.end()) return w;
    return nullptr;
}

// Items after `from` in tab (z-) order, wrapping, `from` last; or all from the first.
std::vector<Window*> Cycle(std::vector<Window*> items, Window* from, bool previous) {
    if (previous) std::reverse(items.begin(), items.end());
    auto at = std::find(items.begin(), items.end(), from);
    if (at != items.end()) std::rotate(items.begin(), at + 1, items.end());
    return items;
}

// The first and one-past-last index of the group holding `item`: a group starts at a
// WS_GROUP item and runs to the next one.
std::pair<size_t, size_t> GroupOf(const std::vector<Window*>& items, size_t index) {
    size_t first = index;
    while (first > 0 && !(items[first]->style & WS_GROUP)) --first;
    size_t last = index + 1;
    while (last < items.size() && !(items[last]->style & WS_GROUP)) ++last;
    return {first, last};
}

void Click(HWND dlg, int id, HWND button) {
    if (button && !IsWindowEnabled(button)) return;
    SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(button));
}

// Enter: the focused push button, else the default identifier, else IDOK.
void OnEnter(HWND dlg, HWND focus) {
    LRESULT code = DlgCode(focus, nullptr);
    if (focus && (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON))) {
        Click(dlg, GetDlgCtrlID(focus), focus);
        return;
    }
    LRESULT def = SendMessageW(dlg, DM_GETDEFID, 0, 0);
    int id = HIWORD(def) == DC_HASDEFID ? LOWORD(def) : IDOK;
    Click(dlg, id, GetDlgItem(dlg, id));
}

void MoveInGroup(HWND dlg, HWND focus, bool previous) {
    HWND next = GetNextDlgGroupItem(dlg, focus, previous);
    if (!next || next == focus) return;
    SetFocus(next);
    // Arrows in a group of automatic radio buttons select as they move.
    if (DlgCode(next, nullptr) & DLGC_RADIOBUTTON) SendMessageW(next, BM_CLICK, 0, 0);
}

// A key the dialog manager handles itself; false leaves it to the control.
bool HandleKey(HWND dlg, MSG* msg) {
    HWND focus = GetFocus();
    LRESULT code = DlgCode(msg->hwnd, msg);
    if (code & DLGC_WANTMESSAGE) return false;
    switch (msg->wParam) {
        case VK_TAB:
            if (code & DLGC_WANTTAB) return false;
            SendMessageW(dlg, WM_NEXTDLGCTL, (GetKeyState(VK_SHIFT) & 0x8000) ? 1 : 0, 0);
            return true;
        case VK_LEFT:
        case VK_UP:
        case VK_RIGHT:
        case VK_DOWN:
            if (code & DLGC_WANTARROWS) return false;
            MoveInGroup(dlg, focus, msg->wParam == VK_LEFT || msg->wParam == VK_UP);
            return true;
        case VK_RETURN: OnEnter(dlg, focus); return true;
        case VK_ESCAPE: Click(dlg, IDCANCEL, GetDlgItem(dlg, IDCANCEL)); return true;
        default: return false;
    }
}

// The characters of the keys handled above must not reach the control as WM_CHAR.
bool SwallowChar(MSG* msg) {
    WPARAM c = msg->wParam;
    if (c != L'\t' && c != L'\r' && c != 0x1B) return false;
    LRESULT code = DlgCode(msg->hwnd, msg);
    if (code & (DLGC_WANTMESSAGE | DLGC_WANTCHARS)) return false;
    return !(c == L'\t' && (code & DLGC_WANTTAB));
}

}  // namespace

}  // namespace zel::user

using namespace zel::user;

extern "C" {

BOOL IsDialogMessageW(HWND dlg, LPMSG msg) {
    Window* d = Get(dlg);
    if (!d || !msg || (msg->hwnd != dlg && !IsChild(dlg, msg->hwnd))) return FALSE;
    Busy busy;
    // A dialog embedded with DS_CONTROL in another dialog hands its keys to the outer one,
    // whose navigation includes its items.
    constexpr LONG kEmbedded = DS_CONTROL | WS_CHILD;
    while (ExistingDialog(dlg) && (GetWindowLongW(dlg, GWL_STYLE) & kEmbedded) == kEmbedded) {
        HWND parent = GetParent(dlg);
        if (!parent || !ExistingDialog(parent)) break;
        dlg = parent;
    }
    if (msg->message == WM_KEYDOWN && HandleKey(dlg, msg)) return TRUE;
    if (msg->message == WM_CHAR && SwallowChar(msg)) return TRUE;
    TranslateMessage(msg);
    DispatchMessageW(msg);
    return TRUE;
}

HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous) {
    Window* dlg = Get(dialog);
    if (!dlg) {
        SetLastError(kErrorInvalidWindowHandle);
        return nullptr;
    }
    std::vector<Window*> items = ItemsOf(dlg);
    Window* from = control ? ItemOf(items, dlg, control) : nullptr;
    // Without a starting control the search starts before the first item (or after the last).
    std::vector<Window*> order = from ? Cycle(std::move(items), from, previous) : std::move(items);
    if (!from && previous) std::reverse(order.begin(), order.end());
    for (Window* w : order)
        if ((w->style & WS_TABSTOP) && Usable(w)) return w->handle;
    return from ? from->handle : nullptr;
}

HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous) {
    Window* dlg = Get(dialog);
    if (!dlg) {
        SetLastError(kErrorInvalidWindowHandle);
        return nullptr;
    }
    const std::vector<Window*> items = ItemsOf(dlg);
    Window* from = control ? ItemOf(items, dlg, control) : nullptr;
    if (!from) return items.empty() ? nullptr : GetNextDlgTabItem(dialog, nullptr, previous);
    size_t at = static_cast<size_t>(std::find(items.begin(), items.end(), from) - items.begin());
    auto [first, last] = GroupOf(items, at);
    size_t n = last - first;
    for (size_t step = 1; step < n; ++step) {
        size_t i = previous ? first + (at - first + n - step) % n : first + (at - first + step) % n;
        if (Usable(items[i])) return items[i]->handle;
    }
    return from->handle;
}

BOOL SetDlgItemTextW(HWND dialog, int id, LPCWSTR text) {
    HWND item = GetDlgItem(dialog, id);
    return item ? SetWindowTextW(item, text) : FALSE;
}

UINT GetDlgItemTextW(HWND dialog, int id, LPWSTR text, int max) {
    HWND item = GetDlgItem(dialog, id);
    if (!item) {
        if (text && max > 0) text[0] = 0;
        return 0;
    }
    return static_cast<UINT>(GetWindowTextW(item, text, max));
}

BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned) {
    std::wstring text = isSigned ? std::to_wstring(static_cast<int>(value)) : std::to_wstring(value);
    return SetDlgItemTextW(dialog, id, text.c_str());
}

UINT GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL isSigned) {
    if (translated) *translated = FALSE;
    wchar_t buffer[32];
    if (!GetDlgItemTextW(dialog, id, buffer, 32)) return 0;
    wchar_t* end = nullptr;
    const wchar_t* p = buffer;
    while (*p == L' ') ++p;
    if (!isSigned && *p == L'-') return 0;
    long long v = std::wcstoll(p, &end, 10);
    if (end == p) return 0;
    while (*end == L' ') ++end;
    if (*end) return 0;
    if (isSigned ? (v < INT32_MIN || v > INT32_MAX) : (v < 0 || v > UINT32_MAX)) return 0;
    if (translated) *translated = TRUE;
    return static_cast<UINT>(v);
}

LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT msg, WPARAM wParam, LPARAM lParam) {
    HWND item = GetDlgItem(dialog, id);
    return item ? SendMessageW(item, msg, wParam, lParam) : 0;
}

BOOL CheckDlgButton(HWND dialog, int id, UINT check) {
    HWND item = GetDlgItem(dialog, id);
    if (!item) return FALSE;
    SendMessageW(item, BM_SETCHECK, check, 0);
    return TRUE;
}

UINT IsDlgButtonChecked(HWND dialog, int id) {
    HWND item = GetDlgItem(dialog, id);
    return item ? static_cast<UINT>(SendMessageW(item, BM_GETCHECK, 0, 0)) : 0;
}

BOOL CheckRadioButton(HWND dialog, int first, int last, int check) {
    Window* dlg = Get(dialog);
    if (!dlg) return FALSE;
    std::vector<HWND> items;
    for (Window* c : dlg->children) {
        int id = static_cast<int>(c->id);
        if (id >= first && id <= last) items.push_back(c->handle);
    }
    for (HWND item : items) SendMessageW(item, BM_SETCHECK, GetDlgCtrlID(item) == check ? BST_CHECKED : 0, 0);
    return TRUE;
}

}  // extern "C"
