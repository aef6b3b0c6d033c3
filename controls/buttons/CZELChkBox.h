// CZELChkBox: a check box drawn from three image files (checked box, unchecked box,
// background) with its caption beside the box. A tap on the box or on the caption's text
// toggles it, as does Enter while it has the focus; each toggle is a WM_COMMAND with code
// 0 to the parent.
#pragma once

#include <afxwin.h>

#include <memory>

#include "CSkinWnd.h"
#include "zelctl_api.h"

namespace zelctl {
class OwnedFont;
class SkinSet;
}

class ZELCTL_API CZELChkBox : public CSkinWnd {
public:
    CZELChkBox();
    ~CZELChkBox() override;

    int GetCheck();
    // Changes the state without telling the parent.
    void SetCheck(int n);
    // With false the pointer no longer toggles; Enter still does.
    void SetAutoClick(bool b);
    // Every caption is in "Tahoma": strFace is not used.
    void SetFont(int nHeight, CString strFace, DWORD crText);
    // Paths of the three images; the unchecked one sets the size of the box.
    void LoadBitmapW(CString strChecked, CString strUnchecked, CString strBack);
    // "|"-separated paths in LoadBitmapW's order; missing ones repeat the first.
    void LoadSkin(CString strSkin, CString strReserved) override;

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    void PreSubclassWindow() override;

    afx_msg void OnPaint();
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnDestroy();

    DECLARE_MESSAGE_MAP()

    BOOL m_bChecked;
    // Checked box, unchecked box, background, owned by the set.
    std::unique_ptr<zelctl::SkinSet> m_skin;
    CRect m_rcBox;  // (0, 0, width, height) of the unchecked image
    BOOL m_bPressed;
    BOOL m_bClickable;
    std::unique_ptr<zelctl::OwnedFont> m_font;
    COLORREF m_crText;
    CRect m_rcHit;  // box and measured caption, recomputed by every paint

private:
    // Toggles and tells the parent; false when the parent destroyed the check box.
    bool Toggle();
    void PaintCaption(HDC dc, const CRect& client, CPoint toCanvas);
};
