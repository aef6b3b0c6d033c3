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
END_MESSAGE_MAP()

ScreenDialog::ScreenDialog(UINT templateId, const SkinSource& skin) : templateId_(templateId), skin_(skin) {}

ScreenDialog::~ScreenDialog() {
    if (::IsWindow(m_hWnd)) DestroyWindow();
    if (background_) ::DeleteObject(background_);
    if (frame_) ::DeleteObject(frame_);
}

// The templates' items are placeholders, so their class must exist first.
bool ScreenDialog::Open(HWND host) {
    if (!PlaceholderClass()) return false;
    if (!background_) background_ = ::LoadBitmapW(skin_.module, MAKEINTRESOURCEW(IDB_BACKGROUND));
    return Create(templateId_, CWnd::FromHandle(host)) && built_;
}

LRESULT ScreenDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (FromItem(message, lParam)) {
        const HWND self = m_hWnd;
        MSG heard{self, message, wParam, lParam, 0, {}};
        ::SendMessageW(::GetParent(self), kHeardMessage, 0, reinterpret_cast<LPARAM>(&heard));
        if (!::IsWindow(self)) return 0;
    }
    return CDialog::WindowProc(message, wParam, lParam);
}

BOOL ScreenDialog::OnEraseBkgnd(CDC*) { return TRUE; }  // OnPaint covers every pixel

// The frame is drawn only inside the update region's bounding box and only that box is
// presented: the readouts change twice a second and need no full frame. It is kept while
// the dialog keeps its size; outside that box its old contents are never shown.
void ScreenDialog::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    BITMAP size{};
    if (frame_ && (::GetObjectW(frame_, sizeof size, &size) != sizeof size || size.bmWidth != client.Width() ||
                   size.bmHeight != client.Height())) {
        ::DeleteObject(frame_);
        frame_ = nullptr;
    }
    if (!frame_) frame_ = ::CreateCompatibleBitmap(dc.m_hDC, client.Width(), client.Height());
    HDC memory = ::CreateCompatibleDC(dc.m_hDC);
    HGDIOBJ oldFrame = ::SelectObject(memory, frame_);
    const RECT& box = dc.m_ps.rcPaint;
    ::IntersectClipRect(memory, box.left, box.top, box.right, box.bottom);
    // The host's background, from where the dialog sits on the host.
    POINT at{0, 0};
    ::MapWindowPoints(m_hWnd, ::GetParent(m_hWnd), &at, 1);
    if (background_) {
        HDC source = ::CreateCompatibleDC(dc.m_hDC);
        HGDIOBJ old = ::SelectObject(source, background_);
        ::BitBlt(memory, 0, 0, client.Width(), client.Height(), source, at.x, at.y, SRCCOPY);
        ::SelectObject(source, old);
        ::DeleteDC(source);
    } else {
        FillBox(memory, client, theme::kScreen);
    }
    PaintContent(memory);
    ::BitBlt(dc.m_hDC, box.left, box.top, box.right - box.left, box.bottom - box.top, memory, box.left, box.top,
             SRCCOPY);
    ::SelectObject(memory, oldFrame);
    ::DeleteDC(memory);
}

}  // namespace zel::demo
