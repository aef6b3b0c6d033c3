// Window classes: registration, lookup (names are case-insensitive), class longs, and the
// system classes BUTTON and STATIC.
#include <algorithm>
#include <cstring>
#include <cwctype>

#include "user/wndmgr.h"

namespace zel::user {

namespace {

constexpr ATOM kFirstAtom = 0xC000;  // registered class atoms start here, as on Windows

std::vector<std::shared_ptr<WindowClass>>& Classes() {
    static auto* classes = new std::vector<std::shared_ptr<WindowClass>>();
    return *classes;
}

bool SameName(const std::wstring& a, LPCWSTR b) {
    size_t i = 0;
    for (; b[i]; ++i)
        if (i >= a.size() || std::towlower(a[i]) != std::towlower(b[i])) return false;
    return i == a.size();
}

std::shared_ptr<WindowClass> Lookup(LPCWSTR name) {
    if (!name) return nullptr;
    for (const auto& c : Classes()) {
        if (IS_INTRESOURCE(name) ? c->atom == static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(name))
                                 : SameName(c->name, name))
            return c;
    }
    return nullptr;
}

ATOM Add(const WNDCLASSW& wc, bool system) {
    static ATOM next = kFirstAtom;
    auto c = std::make_shared<WindowClass>();
    c->name = wc.lpszClassName;
    c->atom = next++;
    c->style = wc.style;
    c->proc = wc.lpfnWndProc;
    c->wndExtra = wc.cbWndExtra;
    c->instance = wc.hInstance;
    c->icon = wc.hIcon;
    c->cursor = wc.hCursor;
    c->background = wc.hbrBackground;
    c->extra.assign(static_cast<size_t>(wc.cbClsExtra > 0 ? wc.cbClsExtra : 0), 0);
    c->system = system;
    Classes().push_back(c);
    return c->atom;
}

WindowClass* ClassOf(HWND hwnd) {
    Window* w = Get(hwnd);
    if (!w || !w->cls) {
        SetLastError(kErrorInvalidWindowHandle);
        return nullptr;
    }
    return w->cls.get();
}

}  // namespace

// The system classes under their Windows spellings (GetClassNameW reports these). Edit,
// list box, combo box and scroll bar controls are plain windows of their class, present
// so that dialog templates naming them create windows the library's controls subclass.
void RegisterSystemClasses() {
    static bool done = false;
    if (done) return;
    done = true;
    WNDCLASSW wc{};
    wc.style = CS_DBLCLKS | CS_VREDRAW | CS_HREDRAW | CS_PARENTDC;
    wc.lpfnWndProc = ButtonProc;
    wc.lpszClassName = L"Button";
    Add(wc, true);
    wc.style = CS_DBLCLKS | CS_PARENTDC;
    wc.lpfnWndProc = StaticProc;
    wc.lpszClassName = L"Static";
    Add(wc, true);
    wc.style = CS_DBLCLKS | CS_PARENTDC;
    wc.lpfnWndProc = PlainControlProc;
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    for (const wchar_t* name : {L"Edit", L"ListBox", L"ComboBox"}) {
        wc.lpszClassName = name;
        Add(wc, true);
    }
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_SCROLLBAR + 1);
    wc.lpszClassName = L"ScrollBar";
    Add(wc, true);
    wc = WNDCLASSW{};
    wc.style = CS_DBLCLKS | CS_SAVEBITS;
    wc.lpfnWndProc = DefDlgProcW;
    wc.cbWndExtra = DLGWINDOWEXTRA;
    wc.lpszClassName = L"#32770";
    Add(wc, true);
    // The dialog class also answers to its atom, WC_DIALOG.
    Classes().back()->atom = static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(WC_DIALOG));
}

std::shared_ptr<WindowClass> FindClass(LPCWSTR name) {
    RegisterSystemClasses();
    return Lookup(name);
}

}  // namespace zel::user

using namespace zel::user;

extern "C" {

ATOM RegisterClassW(const WNDCLASSW* wc) {
    RegisterSystemClasses();
    if (!wc || !wc->lpszClassName || IS_INTRESOURCE(wc->lpszClassName) || !wc->lpszClassName[0] ||
        !wc->lpfnWndProc || wc->cbClsExtra < 0 || wc->cbWndExtra < 0) {
        SetLastError(kErrorInvalidParameter);
        return 0;
    }
    if (Lookup(wc->lpszClassName)) {
        SetLastError(kErrorClassAlreadyExists);
        return 0;
    }
    return Add(*wc, false);
}

BOOL UnregisterClassW(LPCWSTR className, HINSTANCE) {
    std::shared_ptr<WindowClass> c = Lookup(className);
    if (!c || c->system) {
        SetLastError(kErrorClassDoesNotExist);
        return FALSE;
    }
    if (c->windows > 0) {
        SetLastError(kErrorClassHasWindows);
        return FALSE;
    }
    auto& all = Classes();
    for (auto it = all.begin(); it != all.end(); ++it)
        if (*it == c) {
            all.erase(it);
            break;
        }
    return TRUE;
}

BOOL GetClassInfoW(HINSTANCE instance, LPCWSTR className, LPWNDCLASSW wc) {
    std::shared_ptr<WindowClass> c = FindClass(className);
    if (!c || !wc) {
        SetLastError(kErrorClassDoesNotExist);
        return FALSE;
    }
    wc->style = c->style;
    wc->lpfnWndProc = c->proc;
    wc->cbClsExtra = static_cast<int>(c->extra.size());
    wc->cbWndExtra = c->wndExtra;
    wc->hInstance = c->system ? instance : c->instance;
    wc->hIcon = c->icon;
    wc->hCursor = c->cursor;
    wc->hbrBackground = c->background;
    wc->lpszMenuName = nullptr;
    wc->lpszClassName = c->name.c_str();
    return TRUE;
}

ULONG_PTR GetClassLongPtrW(HWND hwnd, int index) {
    WindowClass* c = ClassOf(hwnd);
    if (!c) return 0;
    if (index >= 0) {
        if (static_cast<size_t>(index) + sizeof(LONG) > c->extra.size()) {
            SetLastError(kErrorInvalidIndex);
            return 0;
        }
        LONG v;
        std::memcpy(&v, &c->extra[index], sizeof v);
        return static_cast<DWORD>(v);
    }
    switch (index) {
        case GCL_STYLE: return c->style;
        case GCL_WNDPROC: return reinterpret_cast<ULONG_PTR>(c->proc);
        case GCL_HBRBACKGROUND: return reinterpret_cast<ULONG_PTR>(c->background);
        case GCL_HCURSOR: return reinterpret_cast<ULONG_PTR>(c->cursor);
        case GCL_HICON: return reinterpret_cast<ULONG_PTR>(c->icon);
        case GCL_CBWNDEXTRA: return static_cast<ULONG_PTR>(c->wndExtra);
        case GCL_CBCLSEXTRA: return c->extra.size();
        default: SetLastError(kErrorInvalidIndex); return 0;
    }
}

ULONG_PTR SetClassLongPtrW(HWND hwnd, int index, LONG_PTR value) {
    WindowClass* c = ClassOf(hwnd);
    if (!c) return 0;
    ULONG_PTR old = GetClassLongPtrW(hwnd, index);
    if (index >= 0) {
        if (static_cast<size_t>(index) + sizeof(LONG) > c->extra.size()) return 0;
        LONG v = static_cast<LONG>(value);
        std::memcpy(&c->extra[index], &v, sizeof v);
        return old;
    }
    switch (index) {
        case GCL_STYLE: c->style = static_cast<UINT>(value); break;
        case GCL_WNDPROC:
            if (value) c->proc = reinterpret_cast<WNDPROC>(value);
            break;
        case GCL_HBRBACKGROUND: c->background = reinterpret_cast<HBRUSH>(value); break;
        case GCL_HCURSOR: c->cursor = reinterpret_cast<HCURSOR>(value); break;
        case GCL_HICON: c->icon = reinterpret_cast<HICON>(value); break;
        default: SetLastError(kErrorInvalidIndex); return 0;
    }
    return old;
}

// The 32-bit forms: handles and procedures need the pointer-sized variants.
DWORD GetClassLongW(HWND hwnd, int index) {
    if (index == GCL_WNDPROC || index == GCL_HBRBACKGROUND || index == GCL_HCURSOR || index == GCL_HICON) {
        SetLastError(kErrorInvalidIndex);
        return 0;
    }
    return static_cast<DWORD>(GetClassLongPtrW(hwnd, index));
}

DWORD SetClassLongW(HWND hwnd, int index, LONG value) {
    if (index == GCL_WNDPROC || index == GCL_HBRBACKGROUND || index == GCL_HCURSOR || index == GCL_HICON) {
        SetLastError(kErrorInvalidIndex);
        return 0;
    }
    return static_cast<DWORD>(SetClassLongPtrW(hwnd, index, value));
}

int GetClassNameW(HWND hwnd, LPWSTR name, int max) {
    WindowClass* c = ClassOf(hwnd);
    if (!c || !name || max <= 0) return 0;
    int n = static_cast<int>(std::min<size_t>(c->name.size(), static_cast<size_t>(max - 1)));
    std::wmemcpy(name, c->name.c_str(), n);
    name[n] = 0;
    return n;
}

}  // extern "C"
