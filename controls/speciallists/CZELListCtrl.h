// CZELListCtrl: the general table of the library, a CListData with headings, so that a host
// written for the platform's list view can show a table on the device. It keeps the base's
// data, selection, clicks, double clicks and notifications (NM_CLICK, NM_DBLCLK, forwarded
// presses) and the list view's names and signatures where they fit.
//
// Layout (client coordinates, margins m_nMarginX / m_nMarginY of the base):
//   heading band   the top margin's bottom down by the heading height (the heading
//                  pieces' height, 24 without them), across the client less the margins;
//   rows           below it down to the bottom margin, m_nItemHeight each (the row middle
//                  piece's height, the base's 24 without it) from the scroll position; a
//                  row cut by the bottom is drawn cut;
//   scroll bar     the owned CZELScrollbar beside the rows (not the headings), shown only
//                  while the rows overflow; the rows and headings then stop at its left.
// Columns run from the left edge at their widths; whatever passes the right edge is
// clipped. A heading is drawn on its three-piece skin (the pressed pieces while the finger
// is on it) with its text in bold, and each cell's text in the row font, both aligned as
// the column's format says (LVCFMT_LEFT, LVCFMT_RIGHT, LVCFMT_CENTER) 4 pixels in from
// the cell's edges and shortened with ForMartLeng.
//
// Rows: ordinary, current (m_nCurSel) and marked (the head cell's mark, the base's
// selection mark) rows each have a three-piece background, stretched over the row; the
// current row's wins over the mark. The current row's text is white, others black. The
// current row's rectangle becomes m_rcClick, so a second tap on it is a double click.
//
// Headings: a tap (press and release on the same heading) sends the parent WM_NOTIFY with
// an NMLISTVIEW {hdr {list, id, LVN_COLUMNCLICK}, iItem -1, iSubItem the column, ptAction
// the release point}; the list sorts nothing itself. The press is forwarded to the parent
// like any press; it changes no selection and arms no double click.
//
// Columns: InsertColumn puts the column at nCol (past the end: appended) and returns its
// index, -1 for a negative index or once rows exist (a row's cells are made with it, one
// per column, so columns are laid out before the rows).
//
// Skin (LoadSkin, paths each followed by "|", 15 pieces, missing ones not drawn):
//   heading left|middle|right, pressed heading left|middle|right, row left|middle|right,
//   current row left|middle|right, marked row left|middle|right.
// Without the base's four background images the client is white behind everything.
#pragma once

#include <afxwin.h>

#include <memory>
#include <vector>

#include "CListData.h"
#include "ListRecords.h"
#include "zelctl_api.h"

// The list-view notification the headings send, until the platform's commctrl.h carries it.
#ifndef LVN_COLUMNCLICK
#define LVN_FIRST (0U - 100U)
#define LVN_COLUMNCLICK (LVN_FIRST - 8)
typedef struct tagNMLISTVIEW {
    NMHDR hdr;
    int iItem;
    int iSubItem;
    UINT uNewState;
    UINT uOldState;
    UINT uChanged;
    POINT ptAction;
    LPARAM lParam;
} NMLISTVIEW, *LPNMLISTVIEW;
#endif
#ifndef LVCFMT_RIGHT
#define LVCFMT_RIGHT 0x0001
#define LVCFMT_CENTER 0x0002
#endif

namespace zelctl {
class SkinSet;
class OwnedFont;
class OffscreenCanvas;
}  // namespace zelctl

namespace zelctl::speciallists {
class KeptRows;  // what of the kept canvas is current (ListPaint.h)
}

class ZELCTL_API CZELListCtrl : public CListData {
public:
    CZELListCtrl();
    ~CZELListCtrl() override;

    // A child window of its own (a dialog item may be subclassed instead).
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    void LoadSkin(CString strSkin, CString strReserved) override;
    void UpdataScrollBar() override;
    void DrawInterface(HDC hdc) override;

    // Columns.
    int InsertColumn(int nCol, LPCTSTR lpszHeading, int nFormat = LVCFMT_LEFT, int nWidth = -1, int nSubItem = -1);
    int InsertColumn(int nCol, const LVCOLUMNW* pColumn);
    int DeleteColumn(int nCol);
    BOOL SetColumnWidth(int nCol, int cx);
    int GetColumnWidth(int nCol);
    int GetColumnCount() const { return m_nColumnCount; }

    // Rows (the base's forms stay available).
    using CListData::InsertItem;
    int InsertItem(int nItem, LPCTSTR lpszItem);

    // Selection: as the base's, and the list repaints.
    int SetCurSel(long n);
    // Scrolls the fewest rows that bring row nItem into view; FALSE for no such row.
    BOOL EnsureVisible(int nItem, BOOL bPartialOK);

    int GetHeadingHeight() const;
    // The heading band and the rows' area as laid out now (client coordinates).
    CRect GetHeadingRect() const;

protected:
    void PreSubclassWindow() override;
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    enum Piece {
        kHeadLeft, kHeadMiddle, kHeadRight,
        kHeadDownLeft, kHeadDownMiddle, kHeadDownRight,
        kRowLeft, kRowMiddle, kRowRight,
        kCurLeft, kCurMiddle, kCurRight,
        kMarkLeft, kMarkMiddle, kMarkRight,
        kPieces
    };
    std::unique_ptr<zelctl::SkinSet> m_skin;
    std::unique_ptr<zelctl::OwnedFont> m_fontRow;
    std::unique_ptr<zelctl::OwnedFont> m_fontHeading;
    std::vector<int> m_formats;  // each column's LVCFMT_ alignment, in column order
    int m_nPressedColumn;        // the heading under the finger, or -1

private:
    // Lays out m_rcList (and the bar, when it exists) for the row count.
    void Layout(bool barShown);
    void PlaceBar();
    // The column whose heading spans client x, or -1.
    int ColumnAtX(int x) const;
    // The band that takes heading presses: the client's width down to the headings' bottom.
    CRect HeadingHitRect() const;
    ZELCTL_HIDDEN void PaintHeadings(zelctl::OffscreenCanvas& frame, const CRect& band);
    ZELCTL_HIDDEN void PaintRow(zelctl::OffscreenCanvas& frame, int i, const CRect& row);
    // The first of row i's three pieces in m_skin: current, marked or ordinary.
    int RowBase(int i) const;
    bool RowCovered(int i, const CRect& row) const;
    // What of the kept canvas still shows the list as it is.
    std::unique_ptr<zelctl::speciallists::KeptRows> m_kept;
};
