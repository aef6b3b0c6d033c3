// CZELList: the stand-alone image list. Single selection, rows and columns kept exactly as
// CListData keeps them (same records, row index, growth and quirks), drawn from bitmaps in
// one of four styles with a fixed column set each, an owned CZELScrollbar ("VSCrollBar",
// 9001), keys Up/Down, and NM_CLICK / NM_DBLCLK to the parent.
//
// Styles (SetSytle; 0 until one is chosen):
//   0  Draw:  the image list. Rows drawn with the pieces of their image entry (AddImage;
//             the row's image index picks it) or, without one, with the list's normal and
//             selected row pieces; cell 0 in m_hFonts[0]. With the play layout on
//             (SetPlayStyle), cell 1 is drawn right-aligned in column 1's width.
//   1  Draw1: the name list: a rounded panel, three-piece rows, separators, "..." text.
//   2  Draw2: the name-and-state list: the panel bitmap, the mark bitmaps on marked rows.
//   3  Draw3: number, name, detail and time per row, on the panel scheme of style 2.
//
// The thirteen skin bitmaps (in declared order) and what fills them:
//    0 normal row left cap     1 normal row middle     2 normal row right cap
//    3 row separator             -- LoadNomalBmp (resources) / LoadBitmapW (files)
//    4 selected row left cap   5 selected row middle   6 selected row right cap
//    7 mark (normal rows)      8 mark (selected row)
//                                -- LoadSelectBmp (resources) / LoadSelBitmaps (files)
//    9 panel background (styles 2 and 3)                     -- LoadBkBitmap
//   10 list-area background, stretched over it (styles 0 and 3) -- LoadClrBitmap
//   11 number badge, normal rows   12 number badge, selected row (style 3) -- LoadBitBmp2
// A piece never loaded draws as nothing. The scroll-bar test of UpdataScrollBar takes the
// row height from piece 1 in style 0 and piece 0 in style 1.
//
// The three colours: m_clrBack (panel, 0x00F9EDE7; style 2 replaces it with the colour
// sampled from the panel bitmap, and styles 2 and 3 fill the list area with it), m_clrFrame
// (panel outline of style 1, 0x00D88C64), m_clrFill (panel and list fill, 0x00F9FFFF).
//
// Row layout of the designed styles (list-area coordinates, k = row - scroll position,
// h = m_nItemHeight, caps and middle at their own height as in style 1):
//   Draw  (0): top = k*h, the row is h - m_nRowInterval high (the interval is the gap),
//              text from the left cap + 5 to the right cap (or to column 1 in the play
//              layout), vertically centred on the middle piece; the selected row uses the
//              selected pieces and m_clrSelText. Rows stop 2 pixels short of a visible
//              bar (the play layout's widths count from the client width).
//   Draw3 (3): top = k*h + 2*m_nRowInterval/5. The number "%d." (row + 1) is centred in a
//              box of the badge's width (32 without a badge) after the left cap, over the
//              badge; cell 0 (m_hFonts[1], "..." to fit) fills the upper half of the space
//              up to 18 pixels before the right cap, cell 1 (m_hFonts[2]) the lower half;
//              cell 2 (m_hFonts[3]) is centred in the 60-pixel box from 18 pixels left of
//              the right cap's left edge, so this style's right cap is a wide piece (about
//              42 pixels) under the time. Selected row: selected pieces and m_clrSelText.
// Every style records the selected row's rectangle, in list-area coordinates as drawn, in
// m_rcClick: the area of the second click of a double click.
#pragma once

#include <afxtempl.h>
#include <afxwin.h>

#include <memory>
#include <vector>

#include "CZELScrollbar.h"
#include "ListRecords.h"
#include "zelctl_api.h"

namespace zelctl {
class SkinSet;
class OwnedFont;
class CanvasStore;
}  // namespace zelctl
namespace zelctl::lists {
struct RowStore;
}

class ZELCTL_API CZELList : public CWnd {
public:
    enum Piece {
        kNormalLeft, kNormalMiddle, kNormalRight, kSeparator,
        kSelLeft, kSelMiddle, kSelRight, kMark, kSelMark,
        kPanel, kListBack, kBadge, kSelBadge, kPieceCount
    };
    // One AddImage entry: three row pieces (left cap, middle, right cap) for normal rows
    // and three for the selected row.
    struct ImageEntry {
        std::unique_ptr<zelctl::SkinSet> pieces;  // six pieces
        ImageEntry* pNext = nullptr;
    };

    CZELList();
    ~CZELList() override;

    BOOL Create(LPCWSTR lpszClassName, LPCWSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                UINT nID, void* pContext = nullptr) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

    // Rows: as CListData, every successful insertion updates the bar and repaints.
    int InsertItem(const LVITEMW* pItem);
    int InsertItem(int nItem, LPCTSTR lpszText);
    int InsertItem(int nItem, LPCTSTR lpszText, int nImage);
    // A row of m_nColumnCount texts appended with nImage; -1 for any other count.
    int AddItem(CArray<CString, CString>& texts, int nImage);
    int SetItemText(int nItem, int nSubItem, LPCTSTR lpszText);
    CString GetItemText(int nItem, int nSubItem);
    int GetItemText(int nItem, int nSubItem, LPTSTR lpszText, int nLen);  // does nothing: 1
    int DeleteItem(int nItem);
    int DeleteAllItems();
    int GetItemCount();
    int GetItemHeight();

    // Columns: as CListData; DeleteColumn refuses (0) in style 1 and in the play layout.
    int InsertColumn(int nCol, const LVCOLUMNW* pColumn);
    int InsertColumn(int nCol, LPCTSTR lpszHeading, int nFormat, int nWidth, int nSubItem);
    int DeleteColumn(int nCol);

    // Lookups: the first row whose cell 0 (name) or cell 1 (state) equals s exactly, or -1;
    // the state search ends at the first row without a cell 1.
    int GetIndexByName(CString& s);
    int GetIndexByState(CString& s);

    // Selection.
    void SetCurSel(int n);
    int GetCurSel();
    // State 1 selects the row (repaint), 2 marks it; 0 when nItem is not a row, else 1.
    int SetItemState(int nItem, UINT nState, UINT nMask);
    int SetItemState(int nItem, LVITEMW* pItem);  // does nothing: 1
    int GetSelectedCount();
    int SetSelectionMark(int n);
    int GetSelect();

    // Styles and geometry.
    void SetSytle(int nStyle);
    int SetPlayStyle(int bOn);
    int SetInterval(int nRowInterval, int nMarginX, int nMarginY);
    void SetItemHeight(int nHeight);
    void SetScrollInter(int n);
    void SetFontSizeAndClr(int (&heights)[4], COLORREF (&colours)[2]);
    void ScrollTo(long pos);
    void MoveWindow(int x, int y, int cx, int cy, BOOL bRepaint = TRUE);
    void UpdataScrollBar();

    // Skins (see the table above).
    void LoadScrollBitmap(UINT nThumb, UINT nThumbDown, UINT nTrack, UINT nUp, UINT nDown, UINT nDownDown,
                          UINT nUpDown, HINSTANCE hInst);
    // {left cap, middle, right cap} and the separator.
    void LoadNomalBmp(const UINT (&ids)[3], UINT nSeparator, HINSTANCE hInst);
    // {left cap, middle, right cap} of the selected row and {mark, selected mark}.
    void LoadSelectBmp(const UINT (&ids)[3], const UINT (&marks)[2], HINSTANCE hInst);
    void LoadBitmapW(CString strLeft, CString strMiddle, CString strRight, CString strSeparator);
    void LoadSelBitmaps(CString strLeft, CString strMiddle, CString strRight, CString strMark, CString strSelMark);
    void LoadBkBitmap(CString strPanel);
    void LoadClrBitmap(CString strListBack);
    void LoadBitBmp2(CString strBadge, CString strSelBadge);
    // Adds an image entry (each array: left cap, middle, right cap); returns its index.
    int AddImage(const CString (&normal)[3], const CString (&selected)[3]);
    void ClearImages();

    // The lists' text rule (CListData::ForMartLeng).
    void ForMartLeng(HDC hdc, CString& text, int width, int nReserved = 0);

protected:
    int DelOneItem(int nItem);
    int SetColumnWidth(int nCol, int cx);
    int GetColumnWidth(int nCol);

    void PreSubclassWindow() override;

    // Each paints the whole client into the kept canvas (the panel around the list area,
    // then the rows inside it), limited to the canvas's clip. The canvas type is the
    // list's own (an OffscreenCanvas), so no helper type shows in the exported names.
    struct Canvas;
    void Draw(Canvas& canvas);
    void Draw1(Canvas& canvas);
    void Draw2(Canvas& canvas);
    void Draw3(Canvas& canvas);

    afx_msg void OnPaint();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnDoubleclicked();
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnMove(int x, int y);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    static constexpr UINT_PTR kClickTimer = 1;

    CZELScrollbar* m_pScrollBar;
    int m_nItemCount;
    int m_nColumnCount;
    int m_nRowCapacity;
    int m_nCurSel;
    int m_nRowInterval;
    int m_nMarginX;
    int m_nItemHeight;
    int m_nScrollInter;
    ListCell* m_pFirstRow;
    ListCell** m_ppRows;
    ListColumn* m_pColumns;
    int m_bClickArmed;
    CRect m_rcClick;
    CRect m_rcScroll;
    std::unique_ptr<zelctl::SkinSet> m_skin;  // kPieceCount pieces
    ImageEntry* m_pImages;
    int m_nImageCount;
    int m_bPlayStyle;
    int m_nStyle;
    int m_nMarginY;
    COLORREF m_clrBack;
    COLORREF m_clrFrame;
    COLORREF m_clrFill;
    CRect m_rcList;
    std::unique_ptr<zelctl::OwnedFont[]> m_hFonts;  // four fonts
    COLORREF m_clrText;
    COLORREF m_clrSelText;

    zelctl::lists::RowStore Rows();
    int ScrollBarWidth() const;
    int ScrollPos() const;
    bool HasBar() const;

private:
    void Repaint();
    int FinishInsert(int result);
    void LayOutList(bool fromSize);
    void PlaceBarForStyle();
    void TrimColumns(int keep);
    void AppendColumn(LPCTSTR heading, int width);
    int ColumnZeroRight();
    // The pieces of one row: left cap, middle, right cap.
    void RowPieces(int row, bool selected, HBITMAP (&pieces)[3]) const;

    // How far above (lo <= 0) and below (hi) a row's top anything of a row may be drawn,
    // selected or not, in any image entry: the band a row's look lives in.
    struct RowReach {
        int lo = 0, hi = 0;
    };
    RowReach Reach() const;
    // The list area of the current style in a client of this size (as the paint lays it).
    CRect ListArea(const CRect& client) const;
    // The top of the k-th visible row in list-area coordinates (64 bits: k may be any row).
    long long RowTop(long long k, const CRect& listArea) const;
    // Whether a row whose top is `top` (list-area coordinates) reaches into `box`, the
    // canvas's clip box taken into list-area coordinates.
    bool RowShows(long long top, const RowReach& reach, const RECT& box) const {
        return top + reach.hi > box.top && top + reach.lo < box.bottom;
    }
    // The list area's paint, as every style makes it: clipped to the list area, fill() when
    // any of it is to be painted, then, with transparent text in the first font, the rows
    // from the scroll position down (only the first when the row pitch is nothing) while
    // their tops (RowTop) lie within the list area: row(i, top, drawn) for each, `drawn`
    // telling whether the paint reaches it.
    template <class Fill, class Row>
    void PaintRows(Canvas& canvas, Fill&& fill, Row&& row);
    // Invalidates the bands of rows a and b (either may be -1), nothing for a row off the
    // list area; the rest of the list keeps its pixels.
    void InvalidateRows(int a, int b);

    std::unique_ptr<zelctl::CanvasStore> m_canvas;  // kept between paints while the size holds
    CSize m_canvasSize{0, 0};                       // the kept canvas's size (0 x 0: none yet)
    // What of the kept canvas no longer shows the list: all of it after any change that
    // repaints the whole list or none (SetCurSel, marks, fonts ...), else the bands of
    // the rows InvalidateRows invalidated since the last paint that covered them.
    bool m_bStaleAll = true;
    CRect m_rcStale{0, 0, 0, 0};

    std::vector<ListCell*> m_orphans;
};
