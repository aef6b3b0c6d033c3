// CZELLable: the window's own text over a three-piece frame (left cap, tiled middle, right
// cap). A text that does not fit its rectangle is drawn with the font recreated 2 pixels
// smaller at a time, starting from the font height SetFont was given (40 until then),
// down to a floor of 12; past the floor it is drawn anyway and clipped.
//
// The label paints its text as it is when WM_PAINT comes: a host that changes the text
// with SetWindowText invalidates the label itself.
//
// Skin string for LoadSkin: "left cap|middle|right cap|"; missing pieces are not drawn.
#pragma once

#include <afxwin.h>

#include <memory>

#include "CSkinWnd.h"
#include "zelctl_api.h"

namespace zelctl {
class SkinSet;
class LabelCanvases;
}  // namespace zelctl

class ZELCTL_API CZELLable : public CSkinWnd {
public:
    CZELLable();
    ~CZELLable() override;

    // Replaces the three pieces with the given image files and repaints at once; a path
    // that does not load leaves its piece out.
    void LoadBitmap(CString strLeft, CString strMiddle, CString strRight);
    // A new "Tahoma" font of nHeight, the text colour, the DrawTextW format and the text
    // rectangle (empty: the whole client area); nHeight is also where shrinking starts.
    // Does not repaint.
    void SetFont(int nHeight, DWORD crText, UINT nFormat, CRect rcText);
    void LoadSkin(CString strSkin, CString strReserved) override;

protected:
    afx_msg void OnPaint();
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    std::unique_ptr<zelctl::SkinSet> m_frame;  // left cap, middle, right cap
    // The canvas and the picture under the text, kept between paints; whoever changes a
    // piece of the picture calls Forget on it.
    std::unique_ptr<zelctl::LabelCanvases> m_kept;
    HFONT m_hFont;
    COLORREF m_crText;
    UINT m_nFormat;
    CRect m_rcText;
    int m_nFontHeight;  // where the shrink loop starts
};
