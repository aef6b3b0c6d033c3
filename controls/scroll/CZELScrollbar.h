// CZELScrollbar: a vertical scroll bar drawn from seven bitmaps (up and down arrows, each
// normal and pressed; a track stretched to the available height; a thumb, normal and
// pressed, of fixed bitmap size). It keeps its own range, position, page and line, moves
// by arrow, page and drag with 100 ms repeats, and reports every change to its parent as
// WM_VSCROLL (WM_HSCROLL until a skin makes it vertical) with lParam = its own window, so
// a parent tells several bars apart by handle.
//
// The bar's size comes from its skin: loading one resizes the window to the track's width
// and the track plus two arrows' height; MoveWindow then stretches the track.
#pragma once

#include <afxwin.h>

#include <memory>

#include "CSkinWnd.h"
#include "zelctl_api.h"

namespace zelctl {
class SkinSet;
}

class ZELCTL_API CZELScrollbar : public CSkinWnd {
public:
    CZELScrollbar();
    ~CZELScrollbar() override;

    // Creates the child window; the final size is set when a skin is loaded.
    virtual BOOL Create(LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // Skin by resource identifiers (low 16 bits) from hInst, or from the current resource
    // handle when hInst is NULL. Replaces the seven bitmaps and lays the bar out.
    void LoadBitmapW(UINT nThumb, UINT nThumbDown, UINT nTrack, UINT nUp, UINT nDown, UINT nDownDown,
                     UINT nUpDown, HINSTANCE hInst);
    // The same from image files; an empty path loads nothing.
    void LoadBitmapW(CString strThumb, CString strThumbDown, CString strTrack, CString strUp, CString strDown,
                     CString strDownDown, CString strUpDown);
    // strSkin: "up|up pressed|track|thumb|thumb pressed|down|down pressed|", the bar's
    // pieces from top to bottom. Missing pieces load nothing.
    void LoadSkin(CString strSkin, CString strReserved) override;

    // A range with nMin >= nMax becomes 0..1 with the position 0.
    void SetScrollRange(long nMin, long nMax);
    void GetRange(long& nMin, long& nMax);
    // Also tells the parent SB_THUMBPOSITION with the new position, whoever called it: a
    // parent that sets the position from its own scroll handler must guard against re-entry.
    void SetScrollPos(long nPos, BOOL bRedraw = TRUE);
    long GetScrollPos() const { return m_nPos; }
    // -1 means "not set" (pages are then a fifth of the range). Returns the value stored.
    long SetPagesize(long nPage);
    long GetPageSize() const { return m_nPage; }
    // Returns the value stored, or -1 (nothing stored) for a line below 1.
    long SetLineSize(long nLine);
    long GetLineSize() const { return m_nLine; }
    // Range and page are taken as given; the position is nTrackPos when fMask is non-zero,
    // else nPos, clamped, and the clamped value is written back. FALSE for a NULL pointer.
    BOOL SetScrollInfo(SCROLLINFO* psi, BOOL bRedraw = TRUE);
    // Fills range, page, position and track position unless psi->fMask is 0.
    BOOL GetScrollInfo(SCROLLINFO* psi, UINT nMask = SIF_ALL);

    // Moves the window and, on a skinned bar, re-lays the arrows and the track.
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE);

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    afx_msg void OnPaint();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnDestroy();
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    DECLARE_MESSAGE_MAP()

    CRect m_rcClient;
    CRect m_rcUpArrow;
    CRect m_rcDownArrow;
    CRect m_rcThumb;
    CRect m_rcTrack;
    CRect m_rcPageUp;
    CRect m_rcPageDown;
    // The seven pieces in the bitmap loaders' order (thumb, thumb pressed, track, up,
    // down, down pressed, up pressed), owned by the set.
    std::unique_ptr<zelctl::SkinSet> m_skin;
    BOOL m_bVertical;
    int m_nPressedPart;  // 0 none, 1 thumb, 2 up arrow, 3 down arrow
    long m_nMax;
    long m_nMin;
    long m_nPos;
    long m_nPage;  // -1: not set
    long m_nLine;
    CPoint m_ptLast;  // client coordinates

private:
    // Steps: each notifies the parent and returns FALSE when the parent destroyed the bar
    // while handling it (the caller must then touch nothing).
    BOOL LeftLine();
    BOOL RightLine();
    BOOL LeftPage();
    BOOL RightPage();
    long PageStep() const;
    BOOL Notify(UINT nCode, long nPos);
    void KillRepeatTimers();
    void LayOut();
    void PlaceThumb();
};
