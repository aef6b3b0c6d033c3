// CListData: the base of the library's row-and-column lists. It owns the data (rows of
// text cells, column descriptors), the selection and the selection mark, a vertical
// CZELScrollbar child ("VSCrollBar", identifier 9001) on its right edge, four background
// bitmaps, and the click and double-click logic with its notifications to the parent.
// It draws nothing: OnPaint hands the paint DC to DrawInterface, which each derived list
// implements.
//
// Building a list on it:
//   - It is not created by a Create of its own: it subclasses a dialog item (or any child
//     window), and PreSubclassWindow creates the scroll bar window.
//   - Rows: m_ppRows[i] is row i's head ListCell (ListRecords.h); cell 0 is the item text,
//     cells 1..m_nColumnCount the sub-items (a row has m_nColumnCount + 1 cells, so
//     SetItemText reaches one cell more than GetItemText). The scroll position -- the
//     first visible row -- lives in the bar: read m_pScrollBar->GetScrollPos().
//   - m_rcList is where rows go (client inset by the margins, narrowed by the bar when it
//     shows); rows are m_nItemHeight high from its top. UpdataScrollBar recomputes it.
//   - The click: a press on a row selects it, repaints and sends NM_CLICK; a second
//     press inside m_rcClick while armed becomes WM_LBUTTONDBLCLK to the list, then
//     NM_DBLCLK. This class never sets m_rcClick: a derived list that wants double
//     clicks sets it when it draws (typically to the selected row's rectangle).
//   - m_hBkBitmap[0..3] are backgrounds for DrawInterface (LoadBkImage); a derived list
//     draws them as it likes.
//   - Every notification may destroy the list; the handlers return at once when it did.
//   - Rows() (include ListRowStore.h) gives the shared row and column operations on these
//     members, for a derived list that adds its own insert or lookup forms.
#pragma once

#include <afxtempl.h>
#include <afxwin.h>

#include <vector>

#include "CSkinWnd.h"
#include "CZELScrollbar.h"
#include "ListRecords.h"
#include "zelctl_api.h"

namespace zelctl::lists {
struct RowStore;  // ListRowStore.h: the row and column operations on a list's members
}

namespace zelctl {
class CanvasStore;
}

class ZELCTL_API CListData : public CSkinWnd {
public:
    CListData();
    ~CListData() override;

    // Does nothing here; the derived lists load their own skins.
    void LoadSkin(CString strSkin, CString strReserved) override;
    // Lays out m_rcList and the scroll bar for the row count (range, page, visibility).
    virtual void UpdataScrollBar();
    // Draws the whole control into `hdc` (the paint DC).
    virtual void DrawInterface(HDC hdc) = 0;

    // Rows. Each returns the row's index, or -1 without columns or for a negative index
    // (an index past the end appends; the first row always lands at 0).
    // The first row inserted into an empty list this way carries the selection mark.
    int InsertItem(const LVITEMW* pItem);
    // Scroll bar update and repaint only when bUpdate is true.
    int InsertItem(int nItem, LPCTSTR lpszText, bool bUpdate);
    // The head cell takes nImage when it is below m_nImageCount.
    int InsertItem(int nItem, LPCTSTR lpszText, int nImage);
    // 1 when the cell exists (nSubItem may be m_nColumnCount), else 0.
    int SetItemText(int nItem, int nSubItem, LPCTSTR lpszText);
    // Empty outside 0 <= nSubItem < m_nColumnCount.
    CString GetItemText(int nItem, int nSubItem);
    int GetItemCount();
    int DeleteItem(int nItem);
    int DeleteAllItems();

    // Columns.
    // Adds a descriptor one place after position nCol (0 when it is the first), without
    // cells for existing rows; returns the steps taken.
    int InsertColumn(int nCol, const LVCOLUMNW* pColumn);
    // -1 unless 0 <= nCol <= m_nColumnCount; on a list with rows, every row is cut after
    // its first nCol cells (kept from the device: do not use it on a filled list).
    int InsertColumn(int nCol, LPCTSTR lpszHeading, int nFormat, int nWidth, int nSubItem);
    int DeleteColumn(int nCol);

    // Geometry.
    int GetItemHeight();
    int GettbInterval();
    void MoveWindow(CRect rect, BOOL bRepaint = TRUE);
    void MoveWindow(int x, int y, int cx, int cy, BOOL bRepaint = TRUE);

    // Selection (no repaint, no scrolling) and the selection mark.
    int SetCurSel(long n);
    int GetCurSel();
    int SetSelectionMark(int n);
    int GetSelect();

    // Scrolls the bar to pos (clamped) when the rows do not fit; no repaint of the list.
    void ScrollTo(long pos);

    // Skins: the scroll bar's seven images (its LoadBitmapW order) or its two-name skin
    // form, then the bar is placed 1 pixel inside the right edge.
    void LoadScrollBitmap(CString strThumb, CString strThumbDown, CString strTrack, CString strUp, CString strDown,
                          CString strDownDown, CString strUpDown);
    void LoadScrollBitmap(CString strSkin, CString strReserved);
    // The four background images from the first four paths; fewer than four load nothing.
    void LoadBkImage(CArray<CString, CString>& paths);

    // The lists' text rule: a text wider than `width` in the DC's font becomes its longest
    // fitting prefix followed by "..." (never less than "..."). The last argument is unused.
    void ForMartLeng(HDC hdc, CString& text, int width, int nReserved = 0);

protected:
    int DelOneItem(int nItem);
    int SetColumnWidth(int nCol, int cx);
    int GetColumnWidth(int nCol);
    void DeleteAllObject();

    void PreSubclassWindow() override;

    afx_msg void OnPaint();
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    DECLARE_MESSAGE_MAP()

    // The double-click timer.
    static constexpr UINT_PTR kClickTimer = 2001;

    CZELScrollbar* m_pScrollBar;
    int m_nItemCount;
    int m_nColumnCount;
    int m_nRowCapacity;
    int m_nCurSel;
    int m_nExtra;       // for the derived lists
    int m_nMarginX;
    int m_nMarginY;
    int m_nItemHeight;
    int m_nTextSpace;   // for the derived lists' drawing
    ListCell* m_pFirstRow;
    ListCell** m_ppRows;
    ListColumn* m_pColumns;
    int m_bClickArmed;
    CRect m_rcClick;
    CRect m_rcScroll;
    int m_nReserved;
    int m_nImageCount;
    CRect m_rcList;
    HBITMAP m_hBkBitmap[4];

    // The storage operations on the members above.
    zelctl::lists::RowStore Rows();
    // The canvas kept between paints (the derived lists cover all of it every time);
    // released on WM_DESTROY.
    zelctl::CanvasStore& Canvas();
    // Width of the scroll bar window (0 before it exists).
    int ScrollBarWidth() const;
    // Lays the bar along the right edge over the full client height (the lists that keep
    // their bar outside the margins).
    void PlaceBarAtRightEdge();
    // The bar's position, the first visible row (0 without a bar window).
    int ScrollPos() const;

private:
    // Places the bar along the right edge inside the margins (OnSize, MoveWindow).
    void PlaceScrollBarInMargins();
    // Places the bar 1 pixel inside the right edge (LoadScrollBitmap) and updates.
    void PlaceScrollBarAtEdge();
    int FinishInsert(int result, bool wasEmpty, bool update);

    std::vector<ListCell*> m_orphans;  // cells cut off their rows, freed at destruction
    std::unique_ptr<zelctl::CanvasStore> m_canvas;
};
