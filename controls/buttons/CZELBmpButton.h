// CZELBmpButton: a push button with four resource skins whose window takes the shape of
// its normal skin. Every pixel that differs from the skin's top-left pixel belongs to the
// button, so a round button only takes taps on its face. It sends its own click on a
// release inside; the BUTTON logic never sees the press.
#pragma once

#include <afxwin.h>

#include <memory>

#include "zelctl_api.h"

namespace zelctl {
class SkinSet;
}

class ZELCTL_API CZELBmpButton : public CButton {
public:
    CZELBmpButton();
    ~CZELBmpButton() override;

    // Call once the window exists. Identifiers other than the normal one may be 0 (no such
    // skin). A non-null hInst is the resource module for this call only.
    void LoadBitmaps(UINT nNormal, UINT nFocus, UINT nDown, UINT nDisable, HINSTANCE hInst);

protected:
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnPaint();

    DECLARE_MESSAGE_MAP()

    BOOL m_bPressed;
    // Normal (also the window's shape), focus, down and disabled skins, owned by the set.
    std::unique_ptr<zelctl::SkinSet> m_skin;
    CRgn m_rgnShape;

private:
    void BuildShape();
    HBITMAP ChooseSkin() const;
};
