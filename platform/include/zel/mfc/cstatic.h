// CStatic: the STATIC class, with SS_BITMAP images.
#pragma once

#include "zel/mfc/cwnd.h"

class ZEL_API CStatic : public CWnd {
public:
    CStatic() = default;

    virtual BOOL Create(LPCWSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF);
    // STM_SETIMAGE: returns the previous bitmap; the control does not own either.
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const;

private:
    using CWnd::Create;
};
