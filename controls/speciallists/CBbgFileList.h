// CBbgFileList: the file browser, a single-column list of text rows drawn over a
// whole-screen background bitmap (the piece under the window, so the list looks
// transparent on a skinned screen), a bitmap behind the current row whose height is the
// row height, and an owned CZELScrollbar ("VSCrollBar", 9001). It is a plain CWnd meant to
// subclass a dialog item; its operations borrow the platform list view's names and
// signatures so that a host written for a list view can drive it.
//
// Input:
//   - A press inside the hit rectangle (the client less the bar's strip while the bar
//     shows) makes the row under it current and the only marked row, captures the pointer
//     when drag marking is on (SetExtendedStyle: 4 turns it off, anything else on), and arms
//     the double-tap timer (7, the platform's double-click time). A press below the last
//     row changes nothing.
//   - Dragging marks the span from the pressed row to the row under the finger (clamped to
//     the last row). Above or below the list it scrolls one row at once and then every
//     300 ms (timer 6 replays the last drag point) until the release or the range's end.
//   - A second press inside the current row while the timer runs, or a real double click,
//     sends the parent WM_NOTIFY NM_DBLCLK, the only notification. The parent may destroy
//     the list inside it.
//
// Painting: from the first paint on the rows cover the whole client (before it, the list
// rectangle is the client less 2 on every side, which is what the bar's range is first
// computed from). Each row is item-height high from the scroll position; marked rows are
// white on black, the current row is drawn in an 18-pixel font on the stretched current-row
// bitmap; the text rectangle's right edge advances by the column width on every row (only
// the first drawn row is bounded by it; the surface clips the rest). Rows run on while
// their top is not below the list's height, so the last row is seen in part.
//
// Deliberate bounds: SetItemState never reaches the last row (its bound is count - 1); no
// repaint follows InsertItem or DeleteAllItems.
#pragma once

#include <afxwin.h>

#include <memory>
#include <vector>

#include "zelctl_api.h"

class CZELScrollbar;
namespace zelctl {
class SkinSet;
class OwnedFont;
class CanvasStore;
}  // namespace zelctl

class ZELCTL_API CBbgFileList : public CWnd {
public:
    CBbgFileList();
    ~CBbgFileList() override;

    // Skins from resource identifiers of hInst (the current resource handle when NULL): the
    // whole-screen background and the current-row bitmap; then the bar's seven pieces in
    // CZELScrollbar::LoadBitmapW's order, the bar placed at the right edge.
    void LoadBkBitmap(UINT nBkID, UINT nSelID, HINSTANCE hInst);
    void LoadScrollBitmap(UINT nThumb, UINT nThumbDown, UINT nTrack, UINT nUp, UINT nDown, UINT nDownDown,
                          UINT nUpDown, HINSTANCE hInst);

    void MoveWindow(int x, int y, int cx, int cy, BOOL bRepaint = TRUE);
    // 4 turns drag marking off, any other value on; returns 1.
    DWORD SetExtendedStyle(DWORD dwStyle);

    // Items. InsertItem: -1 for a negative index; at or past the end appends (returns the
    // new last index), else inserts before nItem (returns nItem).
    int InsertItem(int nItem, CString strText, long lData);
    BOOL DeleteAllItems();
    int GetItemCount() const;
    CString GetItemText(int nItem, int nSubItem) const;  // empty outside the rows
    long GetItemData(int nItem) const;                    // -1 outside the rows
    int InsertColumn(int nCol, CString strHeading, int nFormat, int nWidth);  // always -1
    BOOL SetColumnWidth(int nCol, int cx);
    // Leaves the text as it is: this list does not shorten.
    void ForMartLeng(HDC hdc, CString& text, int width);

    // Current row and marks.
    int SetCurSel(int n);  // a row or -1; repaints
    int GetCurSel() const;
    int GetSelectionMark() const;
    int SetSelectionMark(int n);  // stored unchecked
    // Marks (nState 2) or unmarks row nItem, for nItem below count - 1 only.
    BOOL SetItemState(UINT nItem, UINT nState, UINT nMask);
    int GetFirstSelectedItemIndex() const;
    // From nPos upward: the next marked row (nPos then points past it), or -1.
    int GetNextSelectedItemIndex(int& nPos) const;

    // Scrolling.
    int GetCountPerPage() const;
    void ScrollTo(int nPos);
    void UpdataScrollBar();

    // The timers: 6 repeats the drag while the finger is outside the list, 7 is the
    // double-tap window.
    static constexpr UINT_PTR kAutoScrollTimer = 6;
    static constexpr UINT_PTR kDoubleTapTimer = 7;
    static constexpr UINT kAutoScrollMs = 300;

protected:
    void PreSubclassWindow() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    afx_msg void OnPaint();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    DECLARE_MESSAGE_MAP()

    struct Item {
        CString strText;
        int nState = 0;  // 1: marked
        long lData = 0;
    };

    enum Piece { kBackground, kCurrentRow, kPieces };
    std::unique_ptr<zelctl::SkinSet> m_skin;  // the background and the current-row bitmap
    BOOL m_bMultiSelect;
    CPoint m_ptAnchor;
    CPoint m_ptDrag;
    int m_nAnchor;
    int m_nDrag;
    CRect m_rcHit;
    bool m_bDragging;
    std::unique_ptr<zelctl::OwnedFont> m_fontRow;
    std::unique_ptr<zelctl::OwnedFont> m_fontCurrent;
    COLORREF m_clrText;
    int m_nCurSel;
    COLORREF m_clrMarked;
    CRect m_rcList;
    CZELScrollbar* m_pScrollBar;
    std::vector<Item> m_items;
    int m_nColumnWidth;
    CRect m_rcScroll;
    int m_nItemHeight;
    CRect m_rcCurRow;
    bool m_bPressedOnce;

private:
    // The row under client y (unclamped), or -1 without a row height.
    int RowAtY(int y) const;
    int ScrollPos() const;
    bool HasBar() const;
    void MarkSpan(int from, int to, int state);
    void PlaceBarAtRightEdge();
    // Invalidates the band of each row whose look differs between the two selections and
    // mark lists.
    void InvalidateChangedRows(int oldCurrent, const std::vector<int>& oldStates);

    // The canvas kept between paints while a background covers it; released on WM_DESTROY.
    std::unique_ptr<zelctl::CanvasStore> m_canvas;
};
