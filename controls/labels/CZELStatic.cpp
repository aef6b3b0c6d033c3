#include "CZELStatic.h"

#include "OffscreenCanvas.h"
#include "StaticShape.h"

BEGIN_MESSAGE_MAP(CZELStatic, CWnd)
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELStatic::CZELStatic() : m_hRgn(nullptr) {}

CZELStatic::~CZELStatic() { ReleaseShape(); }

void CZELStatic::ReleaseShape() {
    if (m_hRgn) ::DeleteObject(m_hRgn);
    m_hRgn = nullptr;
}

HBITMAP CZELStatic::SetBitmap(HBITMAP hBitmap) {
    BuildShape(hBitmap);
    if (!::IsWindow(m_hWnd)) return nullptr;
    return reinterpret_cast<HBITMAP>(SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(hBitmap)));
}

void CZELStatic::BuildShape(HBITMAP hBitmap) {
    ReleaseShape();
    m_hRgn = ::CreateRectRgn(0, 0, 0, 0);
    // Without a window there is no DC of its own to have: GetDC(NULL) would be the screen's.
    if (!hBitmap || !m_hRgn || !::IsWindow(m_hWnd)) return;
    HDC windowDC = ::GetDC(m_hWnd);
    if (!windowDC) return;
    HDC mem = ::CreateCompatibleDC(windowDC);
    {
        zelctl::SelectGuard picture(mem, hBitmap);
        if (picture.selected()) {
            const SIZE size = zelctl::BitmapSize(hBitmap);
            zelctl::AddFigureSpans(mem, size.cx, size.cy, m_hRgn);
        }
    }
    ::DeleteDC(mem);
    ::ReleaseDC(m_hWnd, windowDC);

    HRGN empty = ::CreateRectRgn(0, 0, 0, 0);
    if (!::EqualRgn(m_hRgn, empty)) {
        // SetWindowRgn takes the region it is given over (and deletes its handle), so the
        // window gets a copy and the control keeps its own, which it deletes.
        HRGN windowShape = ::CreateRectRgn(0, 0, 0, 0);
        ::CombineRgn(windowShape, m_hRgn, nullptr, RGN_COPY);
        if (!::SetWindowRgn(m_hWnd, windowShape, TRUE)) ::DeleteObject(windowShape);
    }
    ::DeleteObject(empty);
}

void CZELStatic::OnDestroy() {
    ReleaseShape();
    CWnd::OnDestroy();
}
