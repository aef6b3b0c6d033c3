// CZELComBox: the skinned drop-down list. A closed box (three pieces, the chosen item's
// text, an arrow button) that opens into a list of rows by growing its own window, and a
// CZELScrollbar child for lists longer than the rows shown. Its operations, return values
// and notifications are those of the framework's combo box with the drop-down-list style,
// so a host written for one finds what it knows.
//
// States
//   Closed  the window is the box the host created (or subclassed), and follows the host's
//           MoveWindow; nothing is captured.
//   Open    the window has grown by the list: downward from the box, or upward when the
//           list would pass the bottom of the screen (the box then sits at the bottom of
//           the window). The window is raised above its siblings and holds the capture, so
//           a tap anywhere reaches it. Closing puts the window back exactly where it was,
//           in size, place and Z order; what the list covered is repainted by its owners.
//   While open, a press is one of: on the box (closes, nothing chosen), outside the window
//   (closes, nothing chosen; the tap is not passed on), on a row (the row lights and follows
//   the stylus; releasing on a row chooses it), or on the scroll bar (lent: the bar gets
//   that press, its moves and release, then the capture and the focus come back).
//
// Geometry (client coordinates of the open window)
//   box   (0, boxTop, width, boxTop + closed height); boxTop is 0 downward, the list's
//         height upward. The arrow is the box's right part, as wide as the arrow piece
//         and as tall as the box; the box's three pieces fill the rest, caps at their size,
//         middle stretched; the text sits in the middle piece, shortened with "...".
//   list  (0, listTop, width, listTop + rows x row height): rows = the dropped height
//         (SetDroppedHeight, default 5) or fewer when there are fewer items or less
//         screen. The row height is the row piece's height (24 without one). When items
//         exceed the rows, the bar stands at the list's right edge, as tall as the list,
//         and the rows are narrowed by its width. The bar's position is the first visible
//         row, as in the lists.
//   Dragging the stylus above or below the list scrolls it one row every 100 ms (timer
//   1) and lights the row that came into view; the repeat stops on release or when the
//   stylus returns over the list.
//
// Keys (through PreTranslateMessage while the box or its bar has the focus)
//   closed  Up/Down choose the previous/next item at once (CBN_SELENDOK, CBN_SELCHANGE);
//           Enter and F4 open the list.
//   open    Up/Down move the lit row, scrolling it into view; Enter chooses the lit row;
//           Escape and F4 close with nothing chosen.
//
// Notifications: WM_COMMAND to the parent, wParam = MAKEWPARAM(identifier, code), lParam
// = the box's window, in this order (the framework combo box's):
//   open                    CBN_DROPDOWN (before the window grows: a host may fill the
//                           list in it)
//   a row tapped            CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE (the selection is
//                           already the new one when CBN_SELENDOK arrives)
//   Enter                   CBN_SELENDOK, CBN_CLOSEUP, then CBN_SELCHANGE if the
//                           selection changed
//   tap outside, tap on the box, Escape, focus lost, ShowDropDown(FALSE)
//                           CBN_SELENDCANCEL, CBN_CLOSEUP
//   Up/Down while closed    CBN_SELENDOK, CBN_SELCHANGE
// SetCurSel and the other operations notify nothing. The parent may destroy the box from
// inside any of them: the capture is released before the first closing notification, and
// nothing is touched after a notification that found the box gone.
#pragma once

#include <afxwin.h>

#include <vector>

#include "CSkinWnd.h"
#include "CZELScrollbar.h"
#include "zelctl_api.h"

namespace zelctl {
class OffscreenCanvas;
}

class ZELCTL_API CZELComBox : public CSkinWnd {
public:
    // The box's pieces, in the order of the loaders' arguments and of the skin string.
    enum Piece { kBoxLeft, kBoxMiddle, kBoxRight, kArrow, kArrowDown, kRow, kRowSelected, kPieces };

    CZELComBox();
    ~CZELComBox() override;

    // `rect` is the closed box in the parent's coordinates; the list grows from it. The
    // style may carry CBS_SORT (AddString then keeps the items in case-blind order).
    // Creates the "VSCrollBar" child (9001) too; FALSE when either window fails.
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // ---- skin ----------------------------------------------------------------------------
    // The box's seven pieces by resource identifier (low 16 bits) of hInst, or of the
    // current resource handle when hInst is NULL. Each load replaces all seven.
    void LoadBitmapW(UINT nBoxLeft, UINT nBoxMiddle, UINT nBoxRight, UINT nArrow, UINT nArrowDown, UINT nRow,
                     UINT nRowSelected, HINSTANCE hInst);
    // The same from image files; an empty path loads nothing.
    void LoadBitmapW(CString strBoxLeft, CString strBoxMiddle, CString strBoxRight, CString strArrow,
                     CString strArrowDown, CString strRow, CString strRowSelected);
    // The bar's seven pieces, passed on in the bar's own loader order.
    void LoadScrollBitmap(UINT nThumb, UINT nThumbDown, UINT nTrack, UINT nUp, UINT nDown, UINT nDownDown,
                          UINT nUpDown, HINSTANCE hInst);
    void LoadScrollBitmap(CString strThumb, CString strThumbDown, CString strTrack, CString strUp, CString strDown,
                          CString strDownDown, CString strUpDown);
    // "box left|box middle|box right|arrow|arrow pressed|row|row selected|" and, optionally,
    // the bar's string after it: "up|up pressed|track|thumb|thumb pressed|down|down pressed|".
    // With no piece at all nothing changes; box pieces the string lacks load nothing; the
    // bar keeps its skin unless the string names bar pieces. strReserved is not used.
    void LoadSkin(CString strSkin, CString strReserved) override;

    // Text colours of the box and the rows, and of the selected (lit) row.
    void SetTextColor(COLORREF crText, COLORREF crSelected);
    // The font's cell height in pixels (the control font, weight 400). FALSE if the font
    // could not be made (the old one stays).
    BOOL SetFontHeight(int nHeight);

    // ---- contents ------------------------------------------------------------------------
    // Index of the new item; CB_ERR for a NULL string.
    int AddString(LPCTSTR lpszString);
    // At nIndex (-1: at the end); CB_ERR for a NULL string or an index past the end.
    int InsertString(int nIndex, LPCTSTR lpszString);
    // Items left, or CB_ERR for a bad index.
    int DeleteString(UINT nIndex);
    void ResetContent();
    int GetCount() const;

    // ---- selection -----------------------------------------------------------------------
    int GetCurSel() const;  // CB_ERR when nothing is selected
    // The new selection's index; -1 or an index out of range clears the selection and
    // returns CB_ERR. No notification.
    int SetCurSel(int nSelect);
    // Copies the item's text with its terminator; returns its length, CB_ERR for a bad
    // index or a NULL buffer.
    int GetLBText(int nIndex, LPTSTR lpszText) const;
    // An empty string for a bad index.
    void GetLBText(int nIndex, CString& rString) const;
    int GetLBTextLen(int nIndex) const;  // CB_ERR for a bad index
    // The first item after nIndexStart (wrapping round; -1 searches from the top) whose
    // text equals lpszFind ignoring case; CB_ERR when none does.
    int FindStringExact(int nIndexStart, LPCTSTR lpszFind) const;
    int SetItemData(int nIndex, DWORD_PTR dwItemData);  // CB_OKAY, CB_ERR for a bad index
    DWORD_PTR GetItemData(int nIndex) const;            // CB_ERR for a bad index

    // ---- the list ------------------------------------------------------------------------
    // Opens (CBN_DROPDOWN) or closes (CBN_SELENDCANCEL, CBN_CLOSEUP); nothing when already so.
    void ShowDropDown(BOOL bShowIt = TRUE);
    BOOL GetDroppedState() const;
    // The rows the open list shows at most; CB_ERR below 1 (nothing stored), else nRows.
    int SetDroppedHeight(int nRows);
    int GetDroppedHeight() const;
    // The list's rectangle on the screen: the open list, or where it would open now.
    void GetDroppedControlRect(LPRECT lprect) const;
    int GetTopIndex() const;  // the first visible row of the list
    int GetItemHeight() const;  // the row height
    CZELScrollbar* GetScrollBar() { return &m_ScrollBar; }

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    void PreSubclassWindow() override;

    afx_msg void OnPaint();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg LRESULT OnNcHitTest(CPoint point);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    // What the stylus is doing while the list is open.
    enum Drag {
        kNoDrag,       // up, or the press went nowhere
        kOpeningPress, // the press that opened the list, until it reaches the rows
        kTrackRows,    // over the rows: the lit row follows it
        kLentToBar,    // the press belongs to the scroll bar
        kSwallowUp,    // the press closed the list: its release goes nowhere
    };

    struct Item {
        CString text;
        DWORD_PTR data = 0;
    };

    CZELScrollbar m_ScrollBar;
    std::vector<Item> m_items;
    int m_nCurSel;         // -1: none
    int m_nLitRow;         // the open list's highlighted row; -1: none
    int m_nTopRow;         // first visible row (the bar's position when it shows)
    int m_nDroppedRows;    // SetDroppedHeight
    int m_nShownRows;      // rows of the open list
    BOOL m_bDropped;
    BOOL m_bUpward;
    Drag m_nDrag;
    int m_nAutoScroll;     // -1 up, +1 down, 0 off (timer 1)
    CRect m_rcClosed;      // the closed window in the parent's client coordinates
    HWND m_hWndAbove;      // the sibling above the closed window, for the Z order on close
    CRect m_rcBox;         // client coordinates, see the geometry above
    CRect m_rcArrow;
    CRect m_rcList;
    CRect m_rcRows;        // the list less the bar
    COLORREF m_crText;
    COLORREF m_crSelText;

private:
    struct Skin;   // the pieces, the font and the kept pictures (internal types)
    struct Shown;    // what a kept picture shows
    struct RowKind;  // a row piece kept stretched to the cell size, for pictures drawn again
    ZELCTL_HIDDEN Shown Showing() const;
    ZELCTL_HIDDEN const RowKind* KeptRowKind(HDC screen, bool lit, int w, int h);
    ZELCTL_HIDDEN void PaintWindow(zelctl::OffscreenCanvas& canvas, HDC screen, const CRect& client, bool fresh);

    BOOL CreateScrollBar();
    void TakeClosedRect();
    int RowHeight() const;
    int ClosedHeight() const { return m_rcClosed.Height(); }
    void LayOutBox(int top, int width);
    void LayOutOpen();
    void PlaceScrollBar();
    void ScrollTo(int nTop);
    void ContentChanged();
    // Opening and closing with their notifications; each returns FALSE when the parent
    // destroyed the box while being told (touch nothing then).
    BOOL DropDown();
    BOOL CloseUp(BOOL bOk, int nChosen, BOOL bForceSelChange);
    void RollUp();
    BOOL StepSelection(int nDelta);
    void MoveLitRow(int nDelta);
    void TrackRows(CPoint point);
    void SetAutoScroll(int nDirection);
    void LendToBar(UINT message, UINT nFlags, CPoint point);
    BOOL IsOwnWindow(HWND hwnd) const;

    Skin* m_pSkin;
    BOOL m_bInCreate;  // Create makes the bar once the window is whole
    BOOL m_bClosing;   // CloseUp is telling the parent: a focus change then is no second close
};
