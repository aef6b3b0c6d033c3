// CZELBkLable: a label that shows, behind its text, the piece of a whole-screen background
// bitmap lying under it on the screen, so that on a skinned screen it looks transparent.
// Without a bitmap it is white. The text is the window's own, drawn once in one font,
// colour and DrawTextW format, 5 pixels in from the left and right edges (it never
// shrinks). The background bitmap stays the caller's.
#pragma once

#include <afxwin.h>

#include "zelctl_api.h"

class ZELCTL_API CZELBkLable : public CWnd {
public:
    CZELBkLable();
    ~CZELBkLable() override;

    // Returns the bitmap given before (NULL the first time). Does not repaint.
    HBITMAP SetBitmap(HBITMAP hBitmap);
    // A new "Tahoma" font of nHeight, the text colour and format. rcText is kept but the
    // text always goes into the client area. Does not repaint.
    void SetFont(int nHeight, DWORD crText, UINT nFormat, CRect rcText);

protected:
    afx_msg void OnPaint();
    DECLARE_MESSAGE_MAP()

    HFONT m_hFont;
    COLORREF m_crText;
    UINT m_nFormat;
    CRect m_rcText;
    int m_nFontHeight;
    HBITMAP m_hBkBitmap;  // not owned
};
