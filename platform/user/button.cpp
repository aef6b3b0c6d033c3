// The BUTTON class: push buttons painted by the system and owner-draw buttons painted by
// the parent through WM_DRAWITEM.
//
// Pressing: a down captures the stylus, takes the focus and pushes the button; moving
// with capture pushes or pops it as the stylus enters or leaves; the up releases capture
// first and only then, if it lands inside, sends BN_CLICKED - so a parent that destroys
// the button from its WM_COMMAND handler finds capture already gone. State changes are
// repainted at once through a window DC (not through WM_PAINT), each time they are set.
#include "user/wndmgr.h"

namespace zel::user {

namespace {

constexpr LRESULT kDlgcButton = 0x2000;
constexpr LRESULT kDlgcDefPushButton = 0x0010;
constexpr LRESULT kDlgcUndefPushButton = 0x0020;

struct ButtonData : ControlData {
    UINT state = 0;               // BST_CHECKED / BST_INDETERMINATE / BST_PUSHED / BST_FOCUS
    bool pressed = false;         // pushed by the stylus or the space key, release pending
    HFONT font = nullptr;
    HANDLE image = nullptr;
};

ButtonData& Data(Window* w) {
    if (!w->control) w->control = std::make_unique<ButtonData>();
    return static_cast<ButtonData&>(*w->control);
}

UINT TypeOf(const Window* w) { return w->style & BS_TYPEMASK; }

HWND NotifyTarget(Window* w) { return w->parent ? w->parent->handle : w->handle; }

void Notify(HWND hwnd, UINT code) {
    Window* w = Get(hwnd);
    if (!w) return;
    SendMessageW(NotifyTarget(w), WM_COMMAND, MAKEWPARAM(static_cast<WORD>(w->id), code),
                 reinterpret_cast<LPARAM>(hwnd));
}

void Strip(HDC dc, int l, int t, int r, int b, int color) {
    RECT rc{l, t, r, b};
    FillRect(dc, &rc, GetSysColorBrush(color));
}

// Face, a black outline, a raised (or, pushed, sunken) bevel, the caption and the focus.
void PaintPushButton(Window* w, HDC dc) {
    ButtonData& d = Data(w);
    HWND hwnd = w->handle;
    SendMessageW(NotifyTarget(w), WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(hwnd));
    if (!(w = Get(hwnd))) return;
    RECT rc = w->ClientRect();
    bool pushed = (d.state & BST_PUSHED) != 0;
    int cx = rc.right, cy = rc.bottom;
    FillRect(dc, &rc, GetSysColorBrush(COLOR_BTNFACE));
    if (cx >= 2 && cy >= 2) {
        Strip(dc, 0, 0, cx, 1, COLOR_WINDOWFRAME);
        Strip(dc, 0, cy - 1, cx, cy, COLOR_WINDOWFRAME);
        Strip(dc, 0, 0, 1, cy, COLOR_WINDOWFRAME);
        Strip(dc, cx - 1, 0, cx, cy, COLOR_WINDOWFRAME);
    }
    if (cx >= 4 && cy >= 4) {
        int lightColor = pushed ? COLOR_BTNSHADOW : COLOR_BTNHIGHLIGHT;
        Strip(dc, 1, 1, cx - 1, 2, lightColor);
        Strip(dc, 1, 1, 2, cy - 1, lightColor);
        if (!pushed) {
            Strip(dc, 1, cy - 2, cx - 1, cy - 1, COLOR_BTNSHADOW);
            Strip(dc, cx - 2, 1, cx - 1, cy - 1, COLOR_BTNSHADOW);
        }
    }
    if (!w->text.empty()) {
        RECT text{2, 2, cx - 2, cy - 2};
        if (pushed) OffsetRect(&text, 1, 1);
        HGDIOBJ oldFont = d.font ? SelectObject(dc, d.font) : nullptr;
        int oldMode = SetBkMode(dc, TRANSPARENT);
        COLORREF oldColor = SetTextColor(dc, GetSysColor((w->style & WS_DISABLED) ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
        DrawTextW(dc, w->text.c_str(), -1, &text, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        SetTextColor(dc, oldColor);
        SetBkMode(dc, oldMode);
        if (oldFont) SelectObject(dc, oldFont);
    }
    if ((d.state & BST_FOCUS) && cx > 6 && cy > 6) {
        RECT focus{3, 3, cx - 3, cy - 3};
        DrawFocusRect(dc, &focus);
    }
}

void PaintOwnerDraw(Window* w, HDC dc, UINT action) {
    ButtonData& d = Data(w);
    HWND hwnd = w->handle;
    HWND parent = NotifyTarget(w);
    SendMessageW(parent, WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(hwnd));
    if (!(w = Get(hwnd))) return;
    DRAWITEMSTRUCT dis{};
    dis.CtlType = ODT_BUTTON;
    dis.CtlID = static_cast<UINT>(w->id);
    dis.itemID = 0;
    dis.itemAction = action;
    dis.itemState = ((d.state & BST_PUSHED) ? ODS_SELECTED : 0) | ((d.state & BST_FOCUS) ? ODS_FOCUS : 0) |
                    ((w->style & WS_DISABLED) ? ODS_DISABLED : 0);
    dis.hwndItem = hwnd;
    dis.hDC = dc;
    dis.rcItem = w->ClientRect();
    int saved = SaveDC(dc);
    if (d.font) SelectObject(dc, d.font);
    IntersectClipRect(dc, 0, 0, dis.rcItem.right, dis.rcItem.bottom);
    SendMessageW(parent, WM_DRAWITEM, static_cast<WPARAM>(dis.CtlID), reinterpret_cast<LPARAM>(&dis));
    RestoreDC(dc, saved);
}

// Paints into `paintDC` (WM_PAINT) or, for an immediate state change, a window DC.
// Nothing is drawn while the button is not visible.
void Paint(HWND hwnd, UINT action, HDC paintDC = nullptr) {
    Window* w = Get(hwnd);
    if (!w || !Visible(w)) return;
    HDC dc = paintDC ? paintDC : GetDC(hwnd);
    if (TypeOf(w) == BS_OWNERDRAW)
        PaintOwnerDraw(w, dc, action);
    else
        PaintPushButton(w, dc);
    if (!paintDC) ReleaseDC(hwnd, dc);
}

// Owner-draw buttons erase with the brush the parent hands out for buttons.
LRESULT OnEraseBackground(Window* w, WPARAM wp) {
    if (TypeOf(w) != BS_OWNERDRAW) return 1;  // the push button paints every pixel
    HWND hwnd = w->handle;
    HWND parent = NotifyTarget(w);
    HDC dc = reinterpret_cast<HDC>(wp);
    auto brush = reinterpret_cast<HBRUSH>(SendMessageW(parent, WM_CTLCOLORBTN, wp, reinterpret_cast<LPARAM>(hwnd)));
    if (!brush) brush = reinterpret_cast<HBRUSH>(DefWindowProcW(parent, WM_CTLCOLORBTN, wp, reinterpret_cast<LPARAM>(hwnd)));
    if (!(w = Get(hwnd))) return 1;
    RECT rc = w->ClientRect();
    FillRect(dc, &rc, brush);
    return 1;
}

bool InsideClient(Window* w, LPARAM lp) {
    POINT pt{GET_X_LPARAM(lp), GET_Y_LPARAM(lp)};
    RECT rc = w->ClientRect();
    return PtInRect(&rc, pt) != FALSE;
}

void Press(HWND hwnd, bool takeFocus) {
    SetCapture(hwnd);
    if (takeFocus) SetFocus(hwnd);  // fails quietly for a disabled button
    if (Window* w = Get(hwnd)) Data(w).pressed = true;
    SendMessageW(hwnd, BM_SETSTATE, TRUE, 0);
}

// An automatic radio button checks itself and clears the other automatic radio buttons
// of its group (WS_GROUP to the next WS_GROUP among its siblings).
void CheckInGroup(HWND hwnd) {
    SendMessageW(hwnd, BM_SETCHECK, BST_CHECKED, 0);
    HWND parent = GetParent(hwnd);
    if (!parent || !(GetWindowLongW(hwnd, GWL_STYLE) & WS_CHILD)) return;
    std::vector<HWND> group;
    for (HWND s = GetNextDlgGroupItem(parent, hwnd, FALSE); s && s != hwnd && group.size() < 4096;
         s = GetNextDlgGroupItem(parent, s, FALSE))
        group.push_back(s);
    for (HWND s : group)
        if (IsWindow(s) && (SendMessageW(s, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) &&
            (GetWindowLongW(s, GWL_STYLE) & BS_TYPEMASK) == BS_AUTORADIOBUTTON)
            SendMessageW(s, BM_SETCHECK, BST_UNCHECKED, 0);
}

void AutoCheck(Window* w) {
    ButtonData& d = Data(w);
    switch (TypeOf(w)) {
        case BS_AUTOCHECKBOX: SendMessageW(w->handle, BM_SETCHECK, (d.state & BST_CHECKED) ? 0 : 1, 0); break;
        case BS_AUTORADIOBUTTON: CheckInGroup(w->handle); break;
        case BS_AUTO3STATE: SendMessageW(w->handle, BM_SETCHECK, ((d.state & 3) + 1) % 3, 0); break;
        default: break;
    }
}

// A release that was not preceded by a press on this button does nothing. Released with
// the button popped up (the stylus left it) it only ends the capture.
LRESULT OnRelease(HWND hwnd, LPARAM lp, bool alwaysInside) {
    Window* w = Get(hwnd);
    ButtonData& d = Data(w);
    if (!d.pressed) return 0;
    d.pressed = false;
    if (!(d.state & BST_PUSHED)) {
        ReleaseCapture();
        return 0;
    }
    SendMessageW(hwnd, BM_SETSTATE, FALSE, 0);
    if (!(w = Get(hwnd))) return 0;
    bool inside = alwaysInside || InsideClient(w, lp);
    if (inside) AutoCheck(w);
    ReleaseCapture();
    if (inside) Notify(hwnd, BN_CLICKED);
    return 0;
}

bool DoubleClickNotifies(const Window* w) {
    UINT type = TypeOf(w);
    return type == BS_OWNERDRAW || type == BS_RADIOBUTTON || type == BS_USERBUTTON ||
           type == BS_AUTORADIOBUTTON || (w->style & BS_NOTIFY);
}

LRESULT OnSetState(HWND hwnd, Window* w, WPARAM wp) {
    ButtonData& d = Data(w);
    if (wp)
        d.state |= BST_PUSHED;
    else
        d.state &= ~BST_PUSHED;
    Paint(hwnd, ODA_SELECT);
    return 0;
}

LRESULT OnSetCheck(HWND hwnd, Window* w, WPARAM wp) {
    ButtonData& d = Data(w);
    UINT check = static_cast<UINT>(wp) & (BST_CHECKED | BST_INDETERMINATE);
    if ((d.state & (BST_CHECKED | BST_INDETERMINATE)) == check) return 0;
    d.state = (d.state & ~(BST_CHECKED | BST_INDETERMINATE)) | check;
    Paint(hwnd, ODA_SELECT);
    return 0;
}

LRESULT OnKillFocus(HWND hwnd, Window* w) {
    ButtonData& d = Data(w);
    d.state &= ~BST_FOCUS;
    Paint(hwnd, ODA_FOCUS);
    if (!(w = Get(hwnd))) return 0;
    // Losing the focus ends a press without a click (WM_CAPTURECHANGED pops the button).
    if (Data(w).pressed && GetCapture() == hwnd) ReleaseCapture();
    if (!(w = Get(hwnd))) return 0;
    if (w->style & BS_NOTIFY) Notify(hwnd, BN_KILLFOCUS);
    InvalidateRect(hwnd, nullptr, FALSE);
    return 0;
}

LRESULT OnSetFocus(HWND hwnd, Window* w) {
    Data(w).state |= BST_FOCUS;
    Paint(hwnd, ODA_FOCUS);
    if ((w = Get(hwnd)) && (w->style & BS_NOTIFY)) Notify(hwnd, BN_SETFOCUS);
    return 0;
}

LRESULT OnCaptureChanged(HWND hwnd, Window* w, LPARAM lp) {
    ButtonData& d = Data(w);
    if (reinterpret_cast<HWND>(lp) == hwnd || !d.pressed) return 0;
    d.pressed = false;
    if (d.state & BST_PUSHED) SendMessageW(hwnd, BM_SETSTATE, FALSE, 0);
    return 0;
}

LRESULT OnPaint(HWND hwnd) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(hwnd, &ps);
    if (dc) Paint(hwnd, ODA_DRAWENTIRE, dc);
    EndPaint(hwnd, &ps);
    return 0;
}

}  // namespace

LRESULT CALLBACK ButtonProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    Window* w = Get(hwnd);
    if (!w) return 0;
    Busy busy;
    ButtonData& d = Data(w);
    switch (msg) {
        case WM_NCHITTEST:
            if (TypeOf(w) == BS_GROUPBOX) return HTTRANSPARENT;
            break;
        case WM_ERASEBKGND: return OnEraseBackground(w, wp);
        case WM_PAINT: return OnPaint(hwnd);
        case WM_ENABLE: Paint(hwnd, ODA_DRAWENTIRE); return 0;
        case WM_LBUTTONDBLCLK:
            if (DoubleClickNotifies(w)) {
                Notify(hwnd, BN_DOUBLECLICKED);
                return 0;
            }
            Press(hwnd, true);  // other push buttons take a double click as a press
            return 0;
        case WM_LBUTTONDOWN: Press(hwnd, true); return 0;
        case WM_LBUTTONUP: return OnRelease(hwnd, lp, false);
        case WM_MOUSEMOVE:
            if ((wp & MK_LBUTTON) && GetCapture() == hwnd) SendMessageW(hwnd, BM_SETSTATE, InsideClient(w, lp), 0);
            return 0;
        case WM_KEYDOWN:
            if (wp == VK_SPACE) Press(hwnd, false);
            return 0;
        case WM_KEYUP:
            if (wp == VK_SPACE) return OnRelease(hwnd, 0, true);
            return 0;
        case WM_CAPTURECHANGED: return OnCaptureChanged(hwnd, w, lp);
        case WM_SETFOCUS: return OnSetFocus(hwnd, w);
        case WM_KILLFOCUS: return OnKillFocus(hwnd, w);
        case BM_GETSTATE: return static_cast<LRESULT>(d.state);
        case BM_SETSTATE: return OnSetState(hwnd, w, wp);
        case BM_GETCHECK: return static_cast<LRESULT>(d.state & (BST_CHECKED | BST_INDETERMINATE));
        case BM_SETCHECK: return OnSetCheck(hwnd, w, wp);
        case BM_CLICK:
            SendMessageW(hwnd, WM_LBUTTONDOWN, 0, 0);
            SendMessageW(hwnd, WM_LBUTTONUP, 0, 0);
            return 0;
        case BM_SETSTYLE:
            w->style = (w->style & 0xFFFF0000u) | LOWORD(wp);
            if (lp) InvalidateRect(hwnd, nullptr, TRUE);
            return 0;
        case BM_GETIMAGE: return reinterpret_cast<LRESULT>(d.image);
        case BM_SETIMAGE: {
            HANDLE old = d.image;
            d.image = reinterpret_cast<HANDLE>(lp);
            InvalidateRect(hwnd, nullptr, TRUE);
            return reinterpret_cast<LRESULT>(old);
        }
        case WM_SETFONT:
            d.font = reinterpret_cast<HFONT>(wp);
            if (lp) InvalidateRect(hwnd, nullptr, TRUE);
            return 0;
        case WM_GETFONT: return reinterpret_cast<LRESULT>(d.font);
        case WM_SETTEXT: {
            LRESULT r = DefWindowProcW(hwnd, msg, wp, lp);
            InvalidateRect(hwnd, nullptr, TRUE);
            return r;
        }
        case WM_GETDLGCODE:
            if (TypeOf(w) == BS_DEFPUSHBUTTON) return kDlgcButton | kDlgcDefPushButton;
            if (TypeOf(w) == BS_PUSHBUTTON) return kDlgcButton | kDlgcUndefPushButton;
            if (TypeOf(w) == BS_RADIOBUTTON || TypeOf(w) == BS_AUTORADIOBUTTON) return kDlgcButton | DLGC_RADIOBUTTON;
            return kDlgcButton;
        default: break;
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
}

}  // namespace zel::user
