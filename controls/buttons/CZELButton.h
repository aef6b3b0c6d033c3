// CZELButton: the skinned push button. Four skins (normal, focus, pressed, disabled),
// optional auto-repeat while held, a caption strip reserved below the button, a stepped
// window region at the 78 x 76 button size, and every press and release forwarded to the
// parent in screen coordinates.
//
// The window is an owner-drawn BUTTON: the class's own logic captures, pushes and sends
// BN_CLICKED on a release inside; this class paints in WM_PAINT only and decides whether
// a release reaches that logic at all.
#pragma once

#include <afxwin.h>

#include <memory>

#include "zelctl_api.h"

namespace zelctl {
class SkinSet;
}

class ZELCTL_API CZELButton : public CButton {
public:
    enum STATE { STATE_NORMAL, STATE_FOCUS, STATE_DOWN, STATE_DISABLE };

    CZELButton();
    ~CZELButton() override;

    BOOL PreTranslateMessage(MSG* pMsg) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

    // With bCaptionStrip the window is made 21 pixels shorter than `rect` and the strip
    // below it is kept in m_rcCaption. A style with any of the bits of BS_OWNERDRAW gets
    // all of them; any other style is passed as it is.
    virtual BOOL Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                        bool bCaptionStrip);
    // "|"-separated paths: normal, focus, down, disabled; missing ones repeat the first.
    virtual void LoadSkin(CString strSkin, CString strReserved);

    // Also moves the caption strip along.
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);
    // Leaves the caption strip where it was.
    void MoveWindow(CRect rect, BOOL bRepaint = TRUE);
    BOOL ShowWindow(int nCmdShow);
    void SetWindowTextW(LPCTSTR lpszString);
    // Always the whole client area, with erase.
    void InvalidateRect(const RECT* lpRect, BOOL bErase = TRUE);
    BOOL EnableWindow(BOOL bEnable = TRUE);

    // Resource skins are for the other buttons; this one takes paths.
    void LoadBitmaps(UINT nNormal, UINT nFocus, UINT nDown, HINSTANCE hInst);
    // Paths of the four skins; a path that does not load leaves that skin absent.
    void LoadBitmaps(CString strNormal, CString strFocus, CString strDown, CString strDisable);
    // Held down, the button repeats its command 300 ms after the press, then every 100 ms.
    void SetAutoClick(bool bAuto);

protected:
    void DrawBitmap(HDC hDC, STATE state);

    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnPaint();
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnDestroy();
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnSize(UINT nType, int cx, int cy);

    DECLARE_MESSAGE_MAP()

    // Normal, focus, down and disabled skins, owned by the set.
    std::unique_ptr<zelctl::SkinSet> m_skin;
    bool m_bCaptionStrip;
    bool m_bAutoClick;
    CPoint m_ptLast;  // client coordinates of the last press or move
    BOOL m_bPressed;

public:
    // The strip reserved below the button, in the parent's coordinates; nothing in the
    // button draws there, a host may put a label in it.
    CRect m_rcCaption;

protected:
    CRgn m_rgnWindow;  // the region last given to the window

private:
    HBITMAP ChooseSkin() const;
    // Forwards a press or release to the parent with the point in screen coordinates;
    // false when the parent destroyed the button meanwhile.
    bool ForwardToParent(UINT message, UINT nFlags, CPoint point);
};
