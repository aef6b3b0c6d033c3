// Dialogs: creation from templates, the default dialog procedure, modal loops and
// EndDialog. Keyboard navigation lives in dialog_nav.cpp.
#include "user/dialog.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

#include "gdi/dc.h"
#include "kernel/dialog_template.h"
#include "kernel/resource_module.h"
#include "zel/hooks.h"

namespace zel::user {

namespace {

using detail::DialogItem;
using detail::DialogTemplate;

constexpr int kMessageBoxFontSize = 0x7FFF;  // a template point size meaning "the message box font"

ModalIdleHook& IdleHook() {
    static ModalIdleHook hook = nullptr;
    return hook;
}

std::vector<HWND>& ModalStack() {
    static auto* stack = new std::vector<HWND>();
    return *stack;
}

// The dialog procedure: in the window's DWLP_DLGPROC bytes when its class has room for
// them, else in the dialog state.
DLGPROC ProcOf(Window* w, DialogData& d) {
    if (w->extra.size() >= DLGWINDOWEXTRA) {
        DLGPROC p;
        std::memcpy(&p, &w->extra[DWLP_DLGPROC], sizeof p);
        return p;
    }
    return d.proc;
}

void SetLong(HWND hwnd, size_t offset, LONG_PTR value) {
    Window* w = Get(hwnd);
    if (w && w->extra.size() >= offset + sizeof value) std::memcpy(&w->extra[offset], &value, sizeof value);
}

LONG_PTR GetLong(HWND hwnd, size_t offset) {
    Window* w = Get(hwnd);
    LONG_PTR v = 0;
    if (w && w->extra.size() >= offset + sizeof v) std::memcpy(&v, &w->extra[offset], sizeof v);
    return v;
}

// Messages whose dialog procedure result is the message's result itself; for every other
// message a procedure that returns TRUE leaves the result in DWLP_MSGRESULT.
bool ReturnsDirectly(UINT msg) {
    return (msg >= WM_CTLCOLORMSGBOX && msg <= WM_CTLCOLORSTATIC) || msg == WM_COMPAREITEM || msg == WM_VKEYTOITEM ||
           msg == WM_CHARTOITEM || msg == WM_INITDIALOG || msg == 0x0037 /* WM_QUERYDRAGICON */;
}

HFONT CreateTemplateFont(const DialogTemplate& t, bool* owned) {
    *owned = false;
    if (!t.hasFont) return static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
    if (t.pointSize == kMessageBoxFontSize) return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    HDC screen = GetDC(nullptr);
    int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    int height = -MulDiv(t.pointSize, dpi, 72);
    HFONT font = CreateFontW(height, 0, 0, 0, t.weight, static_cast<DWORD>(t.italic != 0), FALSE, FALSE,
                             static_cast<DWORD>(t.charset), 0, 0, 0, 0, t.typeface.c_str());
    if (!font) return static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
    *owned = true;
    return font;
}

RECT ToPixels(SIZE units, int x, int y, int cx, int cy) {
    int left = MulDiv(x, units.cx, 4), top = MulDiv(y, units.cy, 8);
    return RECT{left, top, left + MulDiv(cx, units.cx, 4), top + MulDiv(cy, units.cy, 8)};
}

// Where a dialog goes: child dialogs in the parent's client area; popups relative to the
// owner's client area (DS_ABSALIGN: the screen); DS_CENTER centres on the parent or screen.
RECT PlaceDialog(const DialogTemplate& t, SIZE units, HWND owner) {
    RECT r = ToPixels(units, t.x, t.y, t.cx, t.cy);
    bool child = (t.style & WS_CHILD) != 0;
    int areaW = gdi::Screen().width, areaH = gdi::Screen().height;
    POINT origin{0, 0};
    if (owner && child) {
        RECT pc;
        GetClientRect(owner, &pc);
        areaW = pc.right;
        areaH = pc.bottom;
    } else if (owner && !(t.style & DS_ABSALIGN)) {
        ClientToScreen(owner, &origin);
    }
    if (t.style & (DS_CENTER | DS_CENTERMOUSE)) {
        origin = POINT{0, 0};
        OffsetRect(&r, (areaW - (r.right - r.left)) / 2 - r.left, (areaH - (r.bottom - r.top)) / 2 - r.top);
    }
    OffsetRect(&r, origin.x, origin.y);
    return r;
}

LPCWSTR ItemText(const DialogItem& item) { return item.textIsId ? L"" : item.text.c_str(); }

// Creates the items in template order, each below the ones before it, so that the
// z-order (GetWindow(GW_HWNDNEXT)) is the tab order. False when one cannot be created and
// the template did not ask for DS_NOFAILCREATE.
bool CreateItems(HWND dialog, const DialogTemplate& t, DialogData& d, HINSTANCE instance) {
    for (const DialogItem& item : t.items) {
        RECT r = ToPixels(d.baseUnits, item.x, item.y, item.cx, item.cy);
        LPCWSTR cls = item.className.c_str();
        if (item.className.size() > 1 && item.className[0] == L'#')
            cls = MAKEINTRESOURCEW(std::wcstoul(item.className.c_str() + 1, nullptr, 10));
        HWND control = CreateWindowExW(item.exStyle | WS_EX_NOPARENTNOTIFY, cls, ItemText(item),
                                       (item.style | WS_CHILD) & ~WS_POPUP, r.left, r.top, r.right - r.left,
                                       r.bottom - r.top, dialog,
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(item.id)), instance, nullptr);
        if (!IsWindow(dialog)) return false;
        if (!control) {
            if (t.style & DS_NOFAILCREATE) continue;
            return false;
        }
        SetWindowPos(control, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOREDRAW);
        if (t.hasFont) SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(d.font), FALSE);
        if (!d.defId && (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON))
            d.defId = static_cast<UINT>(item.id);
    }
    return true;
}

HWND CreateFromTemplate(HINSTANCE instance, const DialogTemplate& t, HWND owner, DLGPROC proc, LPARAM param,
                        bool modal) {
    Busy busy;
    bool ownsFont = false;
    HFONT font = CreateTemplateFont(t, &ownsFont);
    SIZE units = BaseUnitsOf(font);
    RECT r = PlaceDialog(t, units, owner);
    LPCWSTR cls = t.className.empty() ? WC_DIALOG : t.className.c_str();
    DWORD style = t.style & ~WS_VISIBLE;
    // An embedded dialog's items join its parent's navigation.
    DWORD exStyle = t.exStyle | ((t.style & DS_CONTROL) ? WS_EX_CONTROLPARENT : 0);
    HWND dlg = CreateWindowExW(exStyle, cls, t.caption.c_str(), style, r.left, r.top, r.right - r.left,
                               r.bottom - r.top, owner, nullptr, instance, nullptr);
    Window* w = Get(dlg);
    DialogData* d = w ? DialogOf(w) : nullptr;
    if (!d) {
        if (ownsFont) DeleteObject(font);
        if (dlg) DestroyWindow(dlg);
        return nullptr;
    }
    d->font = font;
    d->ownsFont = ownsFont;
    d->baseUnits = units;
    d->proc = proc;
    SetLong(dlg, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(proc));
    if (t.hasFont) SendMessageW(dlg, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    if (!IsWindow(dlg) || !CreateItems(dlg, t, *d, instance)) {
        if (IsWindow(dlg)) DestroyWindow(dlg);
        return nullptr;
    }
    HWND first = GetNextDlgTabItem(dlg, nullptr, FALSE);
    if (SendMessageW(dlg, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), param) && IsWindow(dlg) && first &&
        IsWindow(first))
        SetFocus(first);
    if (!IsWindow(dlg)) return nullptr;
    if (!modal && (t.style & WS_VISIBLE)) ShowWindow(dlg, SW_SHOWNORMAL);
    return IsWindow(dlg) ? dlg : nullptr;
}

// Focus goes back to the control that had it, or to the first tab stop.
void RestoreFocus(HWND dlg, DialogData& d) {
    HWND target = d.savedFocus && IsChild(dlg, d.savedFocus) ? d.savedFocus : GetNextDlgTabItem(dlg, nullptr, FALSE);
    if (target) SetFocus(target);
}

void SaveFocus(HWND dlg, DialogData& d) {
    HWND focus = GetFocus();
    if (focus && IsChild(dlg, focus)) d.savedFocus = focus;
}

// The default push button moves with DM_SETDEFID: the old one loses the style.
void SetDefaultId(HWND dlg, DialogData& d, UINT id) {
    if (HWND old = d.defId ? GetDlgItem(dlg, static_cast<int>(d.defId)) : nullptr)
        if (SendMessageW(old, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON)
            SendMessageW(old, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
    d.defId = id;
    if (HWND now = GetDlgItem(dlg, static_cast<int>(id)))
        if (SendMessageW(now, WM_GETDLGCODE, 0, 0) & DLGC_UNDEFPUSHBUTTON)
            SendMessageW(now, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
}

// WM_CLOSE is the Cancel button, unless that button exists and is disabled.
void CloseAsCancel(HWND dlg) {
    HWND cancel = GetDlgItem(dlg, IDCANCEL);
    if (cancel && !IsWindowEnabled(cancel)) return;
    PostMessageW(dlg, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), reinterpret_cast<LPARAM>(cancel));
}

LRESULT OnEraseBackground(HWND dlg, WPARAM wp) {
    HDC dc = reinterpret_cast<HDC>(wp);
    auto brush = reinterpret_cast<HBRUSH>(SendMessageW(dlg, WM_CTLCOLORDLG, wp, reinterpret_cast<LPARAM>(dlg)));
    if (!brush) brush = GetSysColorBrush(COLOR_BTNFACE);
    RECT box;
    if (GetClipBox(dc, &box) == ERROR) return 0;
    FillRect(dc, &box, brush);
    return 1;
}

LRESULT DefaultDialogMessage(HWND dlg, DialogData& d, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_ERASEBKGND: return OnEraseBackground(dlg, wp);
        case WM_ACTIVATE:
            if (LOWORD(wp) == WA_INACTIVE) {
                SaveFocus(dlg, d);
            } else {
                RestoreFocus(dlg, d);
            }
            return 0;
        case WM_SETFOCUS: RestoreFocus(dlg, d); return 0;
        case WM_SHOWWINDOW:
            if (!wp) SaveFocus(dlg, d);
            return DefWindowProcW(dlg, msg, wp, lp);
        case WM_CLOSE: CloseAsCancel(dlg); return 0;
        case WM_GETFONT: return reinterpret_cast<LRESULT>(d.font);
        case WM_SETFONT: d.font = reinterpret_cast<HFONT>(wp); return 0;
        case DM_GETDEFID: return d.defId ? MAKELONG(d.defId, DC_HASDEFID) : 0;
        case DM_SETDEFID: SetDefaultId(dlg, d, static_cast<UINT>(wp)); return TRUE;
        case WM_NEXTDLGCTL: {
            HWND target = lp ? reinterpret_cast<HWND>(wp) : GetNextDlgTabItem(dlg, GetFocus(), wp != 0);
            if (target && IsChild(dlg, target)) SetFocus(target);
            return 0;
        }
        case WM_GETDLGCODE: return 0;
        default: return DefWindowProcW(dlg, msg, wp, lp);
    }
}

}  // namespace

DialogData::~DialogData() {
    if (ownsFont && font) DeleteObject(font);
}

DialogData* ExistingDialog(HWND hwnd) {
    Window* w = Get(hwnd);
    return w ? dynamic_cast<DialogData*>(w->control.get()) : nullptr;
}

DialogData* DialogOf(Window* w) {
    if (!w) return nullptr;
    if (!w->control) w->control = std::make_unique<DialogData>();
    return dynamic_cast<DialogData*>(w->control.get());
}

SIZE BaseUnitsOf(HFONT font) {
    static const wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, font);
    TEXTMETRICW tm{};
    SIZE extent{};
    GetTextMetricsW(dc, &tm);
    GetTextExtentPoint32W(dc, kLetters, 52, &extent);
    SelectObject(dc, old);
    DeleteDC(dc);
    return SIZE{(extent.cx / 26 + 1) / 2, tm.tmHeight};
}

bool RouteToModalDialog(MSG* msg) {
    std::vector<HWND>& stack = ModalStack();
    while (!stack.empty() && !IsWindow(stack.back())) stack.pop_back();
    return !stack.empty() && IsDialogMessageW(stack.back(), msg);
}

LRESULT CALLBACK PlainControlProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    return DefWindowProcW(hwnd, msg, wp, lp);
}

}  // namespace zel::user

namespace zel {
void SetModalIdleHook(ModalIdleHook hook) { user::IdleHook() = hook; }
}  // namespace zel

using namespace zel::user;

namespace {

// The modal loop: messages go through the pump (pre-translate hook, then this dialog's
// IsDialogMessageW) until EndDialog. When nothing is queued the idle hook may bring input;
// when nothing at all can arrive the dialog is cancelled as Escape would, then ended.
INT_PTR RunModal(HWND dlg, HWND owner) {
    bool ownerWasEnabled = owner && IsWindowEnabled(owner);
    if (ownerWasEnabled) EnableWindow(owner, FALSE);
    ModalStack().push_back(dlg);
    // A dialog that ended during WM_INITDIALOG is never shown.
    if (DialogData* d = ExistingDialog(dlg); d && !d->ended) ShowWindow(dlg, SW_SHOW);
    bool cancelled = false;
    INT_PTR result = IDCANCEL;
    for (;;) {
        Window* w = Get(dlg);
        DialogData* d = w ? DialogOf(w) : nullptr;
        if (!d) break;
        if (d->ended) {
            result = d->result;
            break;
        }
        MSG quit{};
        if (PumpOne(&quit)) {
            if (quit.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(quit.wParam));  // for the loop outside
                break;
            }
            continue;
        }
        if (IdleHook() && IdleHook()(dlg)) continue;
        if (WaitForWork()) continue;
        if (!cancelled) {
            cancelled = true;
            SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                         reinterpret_cast<LPARAM>(GetDlgItem(dlg, IDCANCEL)));
            continue;
        }
        EndDialog(dlg, IDCANCEL);
    }
    std::erase(ModalStack(), dlg);
    if (ownerWasEnabled && IsWindow(owner)) EnableWindow(owner, TRUE);
    if (IsWindow(dlg)) DestroyWindow(dlg);
    return result;
}

const void* NamedTemplate(HINSTANCE instance, LPCWSTR name) {
    return zel::detail::FindDialogTemplate(instance, name);
}

}  // namespace

extern "C" {

HWND CreateDialogIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATEW dlgTemplate, HWND owner, DLGPROC proc,
                                LPARAM param) {
    if (!dlgTemplate) {
        SetLastError(kErrorInvalidParameter);
        return nullptr;
    }
    return CreateFromTemplate(instance, zel::detail::DecodeDialogTemplate(dlgTemplate), owner, proc, param, false);
}

HWND CreateDialogParamW(HINSTANCE instance, LPCWSTR name, HWND owner, DLGPROC proc, LPARAM param) {
    const void* t = NamedTemplate(instance, name);
    if (!t) return nullptr;
    return CreateDialogIndirectParamW(instance, static_cast<LPCDLGTEMPLATEW>(t), owner, proc, param);
}

INT_PTR DialogBoxIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATEW dlgTemplate, HWND owner, DLGPROC proc,
                                LPARAM param) {
    if (!dlgTemplate) {
        SetLastError(kErrorInvalidParameter);
        return -1;
    }
    if (owner && !IsWindow(owner)) {
        SetLastError(kErrorInvalidWindowHandle);
        return -1;
    }
    Busy busy;
    HWND dlg =
        CreateFromTemplate(instance, zel::detail::DecodeDialogTemplate(dlgTemplate), owner, proc, param, true);
    if (!dlg) return -1;
    return RunModal(dlg, owner);
}

INT_PTR DialogBoxParamW(HINSTANCE instance, LPCWSTR name, HWND owner, DLGPROC proc, LPARAM param) {
    const void* t = NamedTemplate(instance, name);
    if (!t) return -1;
    return DialogBoxIndirectParamW(instance, static_cast<LPCDLGTEMPLATEW>(t), owner, proc, param);
}

// The dialog hides at once; a modal loop notices at its next turn and destroys it.
BOOL EndDialog(HWND dialog, INT_PTR result) {
    DialogData* d = ExistingDialog(dialog);
    if (!d) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    d->ended = true;
    d->result = result;
    HWND owner = GetWindow(dialog, GW_OWNER);
    if (owner && !IsWindowEnabled(owner)) EnableWindow(owner, TRUE);
    SetWindowPos(dialog, nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER);
    return TRUE;
}

LRESULT DefDlgProcW(HWND dlg, UINT msg, WPARAM wp, LPARAM lp) {
    Busy busy;
    Window* w = Get(dlg);
    DialogData* d = DialogOf(w);
    if (!d) return w ? DefWindowProcW(dlg, msg, wp, lp) : 0;
    SetLong(dlg, DWLP_MSGRESULT, 0);
    if (DLGPROC proc = ProcOf(w, *d)) {
        INT_PTR handled = proc(dlg, msg, wp, lp);
        if (!(w = Get(dlg))) return handled;
        if (handled) return ReturnsDirectly(msg) ? handled : GetLong(dlg, DWLP_MSGRESULT);
        if (!(d = DialogOf(w))) return 0;
    }
    return DefaultDialogMessage(dlg, *d, msg, wp, lp);
}

BOOL MapDialogRect(HWND dialog, LPRECT rect) {
    DialogData* d = ExistingDialog(dialog);
    if (!d || !rect) {
        SetLastError(d ? kErrorInvalidParameter : kErrorInvalidWindowHandle);
        return FALSE;
    }
    rect->left = MulDiv(rect->left, d->baseUnits.cx, 4);
    rect->right = MulDiv(rect->right, d->baseUnits.cx, 4);
    rect->top = MulDiv(rect->top, d->baseUnits.cy, 8);
    rect->bottom = MulDiv(rect->bottom, d->baseUnits.cy, 8);
    return TRUE;
}

LONG GetDialogBaseUnits(void) {
    SIZE units = BaseUnitsOf(static_cast<HFONT>(GetStockObject(SYSTEM_FONT)));
    return MAKELONG(units.cx, units.cy);
}

}  // extern "C"
