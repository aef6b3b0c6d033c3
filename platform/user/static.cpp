// The STATIC class: text labels and SS_BITMAP pictures.
//
// A static is transparent to the stylus unless it has SS_NOTIFY: clicks fall through to
// the window beneath. SS_BITMAP takes the bitmap's size when one is set (position kept)
// unless SS_CENTERIMAGE or SS_REALSIZECONTROL asks otherwise. The bitmap stays the
// caller's: the static never deletes it.
#include "user/wndmgr.h"

namespace zel::user {

namespace {

struct StaticData : ControlData {
    HBITMAP bitmap = nullptr;
    HFONT font = nullptr;
};

StaticData& Data(Window* w) {
    if (!w->control) w->control = std::make_unique<StaticData>();
    return static_cast<StaticData&>(*w->control);
}

UINT TypeOf(const Window* w) { return w->style & SS_TYPEMASK; }

HWND NotifyTarget(Window* w) { return w->parent ? w->parent->handle : w->handle; }

HBRUSH BackgroundBrush(HWND hwnd, HDC dc) {
    Window* w = Get(hwnd);
    if (!w) return nullptr;
    HWND parent = NotifyTarget(w);
    auto brush = reinterpret_cast<HBRUSH>(
        SendMessageW(parent, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(hwnd)));
    if (!brush)
        brush = reinterpret_cast<HBRUSH>(
            DefWindowProcW(parent, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(hwnd)));
    return brush;
}

void PaintBitmap(Window* w, HDC dc) {
    StaticData& d = Data(w);
    BITMAP bm{};
    if (!d.bitmap || GetObjectW(d.bitmap, sizeof bm, &bm) != static_cast<int>(sizeof bm)) return;
    int x = 0, y = 0;
    if (w->style & SS_CENTERIMAGE) {
        x = (w->Width() - bm.bmWidth) / 2;
        y = (w->Height() - bm.bmHeight) / 2;
    }
    HDC mem = CreateCompatibleDC(dc);
    HGDIOBJ old = SelectObject(mem, d.bitmap);
    BitBlt(dc, x, y, bm.bmWidth, bm.bmHeight, mem, 0, 0, SRCCOPY);
    SelectObject(mem, old);
    DeleteDC(mem);
}

void PaintText(Window* w, HDC dc) {
    if (w->text.empty()) return;
    StaticData& d = Data(w);
    RECT rc = w->ClientRect();
    UINT align = TypeOf(w) == SS_CENTER ? DT_CENTER : TypeOf(w) == SS_RIGHT ? DT_RIGHT : DT_LEFT;
    HGDIOBJ oldFont = d.font ? SelectObject(dc, d.font) : nullptr;
    int oldMode = SetBkMode(dc, TRANSPARENT);
    if (w->style & WS_DISABLED) SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
    DrawTextW(dc, w->text.c_str(), -1, &rc, align | DT_WORDBREAK | DT_NOPREFIX);
    SetBkMode(dc, oldMode);
    if (oldFont) SelectObject(dc, oldFont);
}

LRESULT OnPaint(HWND hwnd) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(hwnd, &ps);
    if (dc) {
        HBRUSH brush = BackgroundBrush(hwnd, dc);
        if (Window* w = Get(hwnd)) {
            RECT rc = w->ClientRect();
            if (brush) FillRect(dc, &rc, brush);
            if (TypeOf(w) == SS_BITMAP)
                PaintBitmap(w, dc);
            else if (TypeOf(w) <= SS_RIGHT)
                PaintText(w, dc);
        }
    }
    EndPaint(hwnd, &ps);
    return 0;
}

// Returns the previous bitmap; 0 when the static is not SS_BITMAP or the handle is not a
// bitmap. A NULL bitmap clears the picture without resizing.
LRESULT OnSetImage(HWND hwnd, Window* w, WPARAM type, LPARAM lp) {
    auto bitmap = reinterpret_cast<HBITMAP>(lp);
    if (TypeOf(w) != SS_BITMAP || type != IMAGE_BITMAP) return 0;
    BITMAP bm{};
    if (bitmap && GetObjectW(bitmap, sizeof bm, &bm) != static_cast<int>(sizeof bm)) return 0;
    StaticData& d = Data(w);
    HBITMAP old = d.bitmap;
    d.bitmap = bitmap;
    if (bitmap && !(w->style & (SS_CENTERIMAGE | SS_REALSIZECONTROL)))
        SetWindowPos(hwnd, nullptr, 0, 0, bm.bmWidth, bm.bmHeight, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    InvalidateRect(hwnd, nullptr, TRUE);
    return reinterpret_cast<LRESULT>(old);
}

void Notify(HWND hwnd, UINT code) {
    Window* w = Get(hwnd);
    if (!w || !(w->style & SS_NOTIFY)) return;
    SendMessageW(NotifyTarget(w), WM_COMMAND, MAKEWPARAM(static_cast<WORD>(w->id), code),
                 reinterpret_cast<LPARAM>(hwnd));
}

}  // namespace

LRESULT CALLBACK StaticProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    Window* w = Get(hwnd);
    if (!w) return 0;
    Busy busy;
    StaticData& d = Data(w);
    switch (msg) {
        case WM_NCHITTEST:
            if (!(w->style & SS_NOTIFY)) return HTTRANSPARENT;
            break;
        case WM_ERASEBKGND: return 1;  // WM_PAINT fills the background
        case WM_PAINT: return OnPaint(hwnd);
        case WM_ENABLE: InvalidateRect(hwnd, nullptr, TRUE); return 0;
        case WM_LBUTTONDOWN: Notify(hwnd, STN_CLICKED); return 0;
        case WM_LBUTTONDBLCLK: Notify(hwnd, STN_DBLCLK); return 0;
        case STM_SETIMAGE: return OnSetImage(hwnd, w, wp, lp);
        case STM_GETIMAGE:
            return TypeOf(w) == SS_BITMAP && wp == IMAGE_BITMAP ? reinterpret_cast<LRESULT>(d.bitmap) : 0;
        case WM_SETFONT:
            d.font = reinterpret_cast<HFONT>(wp);
            if (lp) InvalidateRect(hwnd, nullptr, TRUE);
            return 0;
        case WM_GETFONT: return reinterpret_cast<LRESULT>(d.font);
        case WM_SETTEXT: {
            LRESULT r = DefWindowProcW(hwnd, msg, wp, lp);
            if (TypeOf(w) != SS_BITMAP) InvalidateRect(hwnd, nullptr, TRUE);
            return r;
        }
        default: break;
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
}

}  // namespace zel::user
