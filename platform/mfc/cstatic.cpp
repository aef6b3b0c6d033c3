// CStatic.
#include "zel/mfc/cstatic.h"

BOOL CStatic::Create(LPCWSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(L"STATIC", text, style, rect, parent, id);
}

HBITMAP CStatic::SetBitmap(HBITMAP bitmap) {
    return reinterpret_cast<HBITMAP>(
        ::SendMessageW(m_hWnd, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)));
}

HBITMAP CStatic::GetBitmap() const {
    return reinterpret_cast<HBITMAP>(::SendMessageW(m_hWnd, STM_GETIMAGE, IMAGE_BITMAP, 0));
}
