#include "CZELBmpButton.h"

#include "SkinList.h"
#include "SkinPaint.h"

namespace {

bool ParentIsWindow(HWND parent) { return parent && ::IsWindow(parent); }

HBITMAP Handle(const CBitmap& bitmap) { return static_cast<HBITMAP>(bitmap.m_hObject); }

}  // namespace

BEGIN_MESSAGE_MAP(CZELBmpButton, CButton)
    ON_WM_KILLFOCUS()
    ON_WM_SETFOCUS()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_PAINT()
END_MESSAGE_MAP()

CZELBmpButton::CZELBmpButton() : m_bPressed(FALSE) {}

CZELBmpButton::~CZELBmpButton() = default;

void CZELBmpButton::LoadBitmaps(UINT nNormal, UINT nFocus, UINT nDown, UINT nDisable, HINSTANCE hInst) {
    m_rgnShape.DeleteObject();
    m_rgnShape.CreateRectRgn(0, 0, 0, 0);
    m_bmpNormal.DeleteObject();
    m_bmpFocus.DeleteObject();
    m_bmpDown.DeleteObject();
    m_bmpDisable.DeleteObject();
    m_bmpNormal.Attach(zelctl::LoadSkinBitmap(nNormal, hInst));
    if (nFocus) m_bmpFocus.Attach(zelctl::LoadSkinBitmap(nFocus, hInst));
    if (nDown) m_bmpDown.Attach(zelctl::LoadSkinBitmap(nDown, hInst));
    if (nDisable) m_bmpDisable.Attach(zelctl::LoadSkinBitmap(nDisable, hInst));
    BuildShape();
    // A new region alone repaints only what it uncovers; the new skins need a paint too.
    if (m_hWnd) Invalidate();
}

// One span per row, from the first to the last pixel that is not the key colour (the
// skin's top-left pixel); holes inside a row stay part of the button.
void CZELBmpButton::BuildShape() {
    ::NKDbgPrintfW(L"fjeif\n");
    HDC hDC = m_hWnd ? ::GetDC(m_hWnd) : nullptr;
    if (!hDC) {
        AfxMessageBox(L"fjie");
        return;
    }
    ::NKDbgPrintfW(L"hDC\n");
    HDC memDC = ::CreateCompatibleDC(hDC);
    ::NKDbgPrintfW(L"MemDC\n");
    HGDIOBJ oldBitmap = ::SelectObject(memDC, Handle(m_bmpNormal));
    CRect rc;
    GetClientRect(&rc);
    const int width = rc.Width();
    const COLORREF key = ::GetPixel(memDC, 0, 0);
    ::NKDbgPrintfW(L"for\n");
    for (int y = 0; y < rc.Height(); ++y) {
        int first = 0;
        while (first < width && ::GetPixel(memDC, first, y) == key) ++first;
        if (first == width) continue;
        int last = width - 1;
        while (last > first && ::GetPixel(memDC, last, y) == key) --last;
        CRect span(rc.left + first, rc.top + y, rc.left + last + 1, rc.top + y + 1);
        ::NKDbgPrintfW(L"%d-%d-%d-%d\n", span.left, span.top, span.Width(), span.Height());
        CRgn row;
        row.CreateRectRgnIndirect(&span);
        m_rgnShape.CombineRgn(&m_rgnShape, &row, RGN_OR);
    }
    if (oldBitmap) ::SelectObject(memDC, oldBitmap);
    ::DeleteDC(memDC);
    ::ReleaseDC(m_hWnd, hDC);
    // The window keeps a copy; the handle left here is deleted with the object.
    SetWindowRgn(static_cast<HRGN>(m_rgnShape.m_hObject), TRUE);
}

CBitmap& CZELBmpButton::ChooseSkin() {
    if (m_bPressed) return Handle(m_bmpDown) ? m_bmpDown : m_bmpNormal;
    if (::GetFocus() != m_hWnd) return !IsWindowEnabled() && Handle(m_bmpDisable) ? m_bmpDisable : m_bmpNormal;
    return Handle(m_bmpFocus) ? m_bmpFocus : m_bmpNormal;
}

void CZELBmpButton::OnPaint() {
    CPaintDC dc(this);
    zelctl::PaintSingleSkin(*this, dc, Handle(ChooseSkin()));
}

// No default processing: the BUTTON logic must not see the press, or it would send a
// click of its own on the release.
void CZELBmpButton::OnLButtonDown(UINT, CPoint) {
    SetFocus();
    SetCapture();
    m_bPressed = TRUE;
    Invalidate();
}

void CZELBmpButton::OnMouseMove(UINT, CPoint point) {
    CRect rc;
    GetClientRect(&rc);
    const bool inside = rc.PtInRect(point) != FALSE;
    if (inside != (m_bPressed != FALSE)) {
        m_bPressed = inside ? TRUE : FALSE;
        Invalidate();
    }
    Default();
}

// The release point decides, not the last move.
void CZELBmpButton::OnLButtonUp(UINT, CPoint point) {
    const HWND self = m_hWnd;
    ::ReleaseCapture();
    m_bPressed = FALSE;
    CRect rc;
    GetClientRect(&rc);
    if (rc.PtInRect(point)) {
        HWND parent = ::GetParent(self);
        if (ParentIsWindow(parent))
            ::SendMessageW(parent, WM_COMMAND, static_cast<WPARAM>(GetDlgCtrlID() & 0xFFFF),
                           reinterpret_cast<LPARAM>(self));
        if (!::IsWindow(self)) return;
    }
    Default();
    if (::IsWindow(self)) Invalidate();
}

void CZELBmpButton::OnKillFocus(CWnd*) {
    const HWND self = m_hWnd;
    m_bPressed = FALSE;
    Default();
    ::ReleaseCapture();
    if (::IsWindow(self)) Invalidate();
}

void CZELBmpButton::OnSetFocus(CWnd*) {
    const HWND self = m_hWnd;
    Default();
    if (::IsWindow(self)) Invalidate();
}
