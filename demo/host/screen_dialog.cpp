#include "host/screen_dialog.h"

#include "host/paint_kit.h"
#include "host/placeholder.h"
#include "resource.h"  // generated with the skin
#include "skin/theme.h"

namespace zel::demo {

namespace {

// What an item tells its dialog: commands and notifications from controls (a command
// without a control is a menu's or the dialog manager's own, as Enter's IDOK), and the
// scroll messages of scroll controls.
bool FromItem(UINT message, LPARAM lParam) {
    const bool told = message == WM_COMMAND || message == WM_NOTIFY || message == WM_HSCROLL || message == WM_VSCROLL;
    return told && lParam != 0;
}

}  // namespace

BEGIN_MESSAGE_MAP(ScreenDialog, CDialog)
    ON_WM_ERASEBKGND()
    ON_WM_PAINT()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

ScreenDialog::ScreenDialog(UINT templateId, const SkinSource& skin) : templateId_(templateId), skin_(skin) {}

ScreenDialog::~ScreenDialog() {
    if (::IsWindow(m_hWnd)) DestroyWindow();
    if (background_) ::DeleteObject(background_);
}

void ScreenDialog::OnDestroy() {
    frame_.Free();
    CDialog::OnDestroy();
}

// The frame notes what went stale (see KeptFrame::MarkStale); the paint it asks for
// redraws it.
void ScreenDialog::Changed(const RECT& area) {
    frame_.MarkStale(area);
    if (m_hWnd) InvalidateRect(&area, FALSE);
}

// The templates' items are placeholders, so their class must exist first.
bool ScreenDialog::Open(HWND host) {
    if (!PlaceholderClass()) return false;
    if (!background_) background_ = ::LoadBitmapW(skin_.module, MAKEINTRESOURCEW(IDB_BACKGROUND));
    return Create(templateId_, CWnd::FromHandle(host)) && built_;
}

LRESULT ScreenDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kChangedMessage) {
        if (lParam) Changed(*reinterpret_cast<const RECT*>(lParam));
        return 0;
    }
    if (FromItem(message, lParam)) {
        const HWND self = m_hWnd;
        MSG heard{self, message, wParam, lParam, 0, {}};
        ::SendMessageW(::GetParent(self), kHeardMessage, 0, reinterpret_cast<LPARAM>(&heard));
        if (!::IsWindow(self)) return 0;
    }
    return CDialog::WindowProc(message, wParam, lParam);
}

BOOL ScreenDialog::OnEraseBkgnd(CDC*) { return TRUE; }  // OnPaint covers every pixel

// Of the update region, only the part whose content changed or was never drawn is drawn;
// the rest the frame still holds. The region is read before BeginPaint validates it.
void ScreenDialog::OnPaint() {
    HRGN update = ::CreateRectRgn(0, 0, 0, 0);
    const bool haveUpdate = update && ::GetUpdateRgn(m_hWnd, update, FALSE) > NULLREGION;
    CPaintDC dc(this);
    const RECT& paint = dc.m_ps.rcPaint;
    if (!haveUpdate && update) ::SetRectRgn(update, paint.left, paint.top, paint.right, paint.bottom);
    CRect client;
    GetClientRect(&client);
    frame_.Fit(dc.m_hDC, client);
    HDC memory = ::CreateCompatibleDC(dc.m_hDC);
    HGDIOBJ oldFrame = ::SelectObject(memory, frame_.bitmap());
    HRGN redraw = frame_.Redraw(update);
    RECT box{};
    if (redraw && ::GetRgnBox(redraw, &box) > NULLREGION) {
        PaintStale(memory, redraw, client);
        frame_.Drawn(redraw);
    }
    if (redraw) ::DeleteObject(redraw);
    if (update) ::DeleteObject(update);
    ::BitBlt(dc.m_hDC, paint.left, paint.top, paint.right - paint.left, paint.bottom - paint.top, memory, paint.left,
             paint.top, SRCCOPY);
    ::SelectObject(memory, oldFrame);
    ::DeleteDC(memory);
}

// The host's background, from where the dialog sits on the host, then the content; both
// clipped to what is redrawn.
void ScreenDialog::PaintStale(HDC frame, HRGN redraw, const RECT& client) {
    const int saved = ::SaveDC(frame);
    ::SelectClipRgn(frame, redraw);
    POINT at{0, 0};
    ::MapWindowPoints(m_hWnd, ::GetParent(m_hWnd), &at, 1);
    if (background_) {
        HDC source = ::CreateCompatibleDC(frame);
        HGDIOBJ old = ::SelectObject(source, background_);
        ::BitBlt(frame, 0, 0, client.right, client.bottom, source, at.x, at.y, SRCCOPY);
        ::SelectObject(source, old);
        ::DeleteDC(source);
    } else {
        FillBox(frame, client, theme::kScreen);
    }
    PaintContent(frame);
    ::RestoreDC(frame, saved);
}

}  // namespace zel::demo
