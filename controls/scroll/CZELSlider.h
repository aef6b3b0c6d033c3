// CZELSlider: a horizontal slider drawn from nine pieces (two end caps, two channel end
// pieces, an empty and a filled channel, three thumb images), or a progress bar drawn from
// a background and a fill bitmap. It keeps range, position, page and line; a press beside
// the thumb pages toward the press every 500 ms, a press on the thumb drags it, and in
// move style a press in the channel jumps there. Every change reaches the parent as
// WM_HSCROLL, or WM_VSCROLL in vertical mode, with lParam = the slider's own window.
//
// Vertical mode changes the pointer arithmetic (the minimum is at the bottom) and the
// progress fill (it grows upward); the nine-piece slider always paints horizontally.
//
// Skin strings for LoadSkin, each path followed by "|":
//   nine pieces: "left cap|right cap|thumb|thumb released|thumb pressed|filled channel|
//                 empty channel|left channel piece|right channel piece|"
//                (the order of the three arrays LoadBitmaps takes, one after the other),
//                which also selects the slider style; missing pieces load nothing;
//   two pieces:  "progress background|progress fill|", which also selects the progress
//                style.
#pragma once

#include <afxtempl.h>
#include <afxwin.h>

#include <memory>

#include "CSkinWnd.h"
#include "zelctl_api.h"

namespace zelctl {
class CanvasStore;
class OffscreenCanvas;
class SkinSet;
}

class ZELCTL_API CZELSlider : public CSkinWnd {
public:
    CZELSlider();
    ~CZELSlider() override;

    // Nine-piece skin by resource identifiers (low 16 bits) from hInst, or from the current
    // resource handle when hInst is NULL: pEnds = {left cap, right cap}; pThumb = {normal,
    // released, pressed}; pChannel = {filled, empty, left piece, right piece}. The window
    // takes the left cap's height and the channel runs between the caps.
    void LoadBitmapW(const UINT* const pEnds, const UINT* const pThumb, const UINT* const pChannel,
                     HINSTANCE hInst);
    // Progress skin: background and fill.
    void LoadBitmapW(UINT nBack, UINT nFill, HINSTANCE hInst);
    // The same from image files, the arrays in the order of the identifier arrays; an
    // empty or missing path loads nothing.
    void LoadBitmaps(CArray<CString, CString>& ends, CArray<CString, CString>& thumb,
                     CArray<CString, CString>& channel);
    void LoadBitmaps(CString strBack, CString strFill);
    void LoadSkin(CString strSkin, CString strReserved) override;

    // With nMax > nMin the position restarts at nMin unless its rescaled value lands
    // exactly on nMax (hosts call SetPos after SetRange); otherwise range and position
    // all become 0.
    void SetRange(long nMin, long nMax, BOOL bRedraw = TRUE);
    void GetRange(long& nMin, long& nMax) const;
    // Clamped into the range; tells the parent nothing.
    void SetPos(int nPos);
    int GetPos() const { return static_cast<int>(m_nPos); }
    // -1 means "not set": pages are then a fifth of the range. Returns the previous page.
    UINT SetPageSize(int nPage);
    int GetPageSize() const { return static_cast<int>(m_nPage); }
    // Returns the previous line size.
    int SetLineSize(int nLine);

    // Line steps tell the parent only when the position moves. LineUp raises the value
    // and Linedown lowers it: a vertical slider has its minimum at the bottom.
    void LineLeft();
    void LineRight();
    void LineUp();
    void Linedown();
    // Page steps always tell the parent WM_HSCROLL, also on a vertical slider and also
    // when the position is already at the limit.
    void LeftPage();
    void Rightpage();

    // Centres a channel of cx x cy (clipped to the client size) in the client area.
    void SetChanRect(UINT cx, UINT cy);
    // 0 slider, 1 progress (the channel becomes the client area and the thumb goes).
    // Going back to 0 with a nine-piece skin lays the channel out between the caps again.
    void SetStyle(int nStyle);
    void SetvStyle(bool bVertical);
    void SetMoveStyle(bool bMove);

    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);
    void MoveWindow(CRect rect, BOOL bRepaint = TRUE);

    // Keys move the thumb the way they point: Left/Right by a line and Page Up/Page Down by
    // a page on a horizontal slider; Up/Down by a line and Page Up/Page Down by a page
    // upward/downward on a vertical one.
    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    afx_msg void OnPaint();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnDestroy();
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    DECLARE_MESSAGE_MAP()

    long m_nMin;
    long m_nMax;
    long m_nPage;  // -1: not set
    long m_nLine;
    long m_nPos;
    CRect m_rcClient;
    CRect m_rcThumb;
    CRect m_rcChannel;
    CPoint m_ptLast;
    // The nine slider pieces in the loaders' order (left cap, right cap; thumb, thumb
    // released, thumb pressed; filled channel, empty channel, left and right channel
    // pieces), then the progress background and fill, owned by the set.
    std::unique_ptr<zelctl::SkinSet> m_skin;
    BOOL m_bVertical;
    BOOL m_bMoveStyle;
    BOOL m_bDragging;
    int m_nThumbState;  // 0 normal, 1 pressed, 2 released
    int m_nStyle;       // 0 slider, 1 progress
    BOOL m_bSkinLoaded;
    // Kept between paints for a window of ordinary size: the canvas, and the layer that
    // changes only with the size, the style, the channel or the skin (the caps, the
    // channel's end pieces and the empty channel, or the progress background), so a moved
    // position stretches only the fill again.
    std::unique_ptr<zelctl::CanvasStore> m_canvas;
    std::unique_ptr<zelctl::CanvasStore> m_layer;
    CSize m_layerSize;
    CRect m_rcLayerChannel;
    int m_nLayerStyle;
    bool m_bLayerStale;

private:
    // Each returns FALSE when the parent destroyed the slider while being told.
    BOOL StepLine(int nDirection, UINT nMessage, UINT nCode);
    BOOL StepPage(int nDirection, UINT nCode);
    BOOL Notify(UINT nMessage, UINT nCode, long nPos);
    UINT ScrollMessage() const { return m_bVertical ? WM_VSCROLL : WM_HSCROLL; }
    void LayOutSlider();
    void ReLay();
    int PlaceThumb();
    ZELCTL_HIDDEN void PaintLayer(zelctl::OffscreenCanvas& canvas, int width, int height);
    ZELCTL_HIDDEN void PaintMoving(zelctl::OffscreenCanvas& canvas, int width, int height);
    ZELCTL_HIDDEN bool PaintKept(HDC screen, int width, int height);
    void DropKept();
    void Redraw();
};
