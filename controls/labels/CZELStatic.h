// CZELStatic: a picture control whose window takes the shape of its picture. It runs on a
// STATIC window with SS_BITMAP (made with Create("STATIC", ...) or taken over with
// SubclassWindow). SetBitmap keeps, row by row, the span from the leftmost to the rightmost
// pixel that differs from the picture's top-left pixel (the key) by more than 120 --
// compared as whole 0x00BBGGRR numbers, so any change in green or blue counts and red must
// move by more than 120 -- and gives the window that shape. Holes inside a row stay.
#pragma once

#include <afxwin.h>

#include "zelctl_api.h"

class ZELCTL_API CZELStatic : public CWnd {
public:
    CZELStatic();
    ~CZELStatic() override;

    // Shapes the window to hBitmap, then shows it with STM_SETIMAGE and returns the bitmap
    // shown before. A null bitmap or a picture of key colour only leaves the window's shape
    // as it was. The bitmap stays the caller's.
    HBITMAP SetBitmap(HBITMAP hBitmap);

protected:
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    HRGN m_hRgn;  // the shape of the last SetBitmap; the window holds its own copy

private:
    void BuildShape(HBITMAP hBitmap);
    void ReleaseShape();
};
