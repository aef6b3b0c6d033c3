// CZELBTList: the Bluetooth devices, a CListData with one visible column ("name"), a
// three-piece background for ordinary rows and one for the current row, and a status icon
// at the right end of every marked row (icon 0 on an ordinary row, icon 1 on the current
// one; the host marks the device it singles out, such as the connected one). Rows are
// found by device name (cell 0) or by state (cell 1, set with SetItemText(row, 1, ...)).
//
// Frame, margins (11, 6), the bar that never leaves the screen and the cut last row are the
// telephone list's. The ordinary pieces are drawn with the current pieces' sizes; the row
// height is the current left piece's height. The icon's room is kept at the right of every
// row's text, marked or not. Text is in the surface's default font, "..." to fit.
//
// LoadBitmaps deletes the old pieces first, then loads nothing unless arrBk holds four
// paths and arrNormal three; it also stops when arrCurrent holds fewer than three paths
// and, at once, arrIcons fewer than two (one short array alone does not stop it: the
// pieces it lacks stay empty and draw nothing).
#pragma once

#include <afxtempl.h>

#include <memory>

#include "CListData.h"
#include "zelctl_api.h"

namespace zelctl {
class SkinSet;
}

namespace zelctl::speciallists {
class KeptRows;  // what of the kept canvas is current (ListPaint.h)
class PieceDC;
}

class ZELCTL_API CZELBTList : public CListData {
public:
    CZELBTList();
    ~CZELBTList() override;

    void UpdataScrollBar() override;
    void DrawInterface(HDC hdc) override;

    void LoadBitmaps(CArray<CString, CString>& arrBk, CArray<CString, CString>& arrNormal,
                     CArray<CString, CString>& arrCurrent, CArray<CString, CString>& arrIcons);

    // The first row whose cell 0 (name) or cell 1 (state) equals the text exactly, or -1.
    // The state search gives up at the first row without a cell 1.
    int GetIndexByName(CString& strName);
    int GetIndexByState(CString& strState);

    using CListData::LoadScrollBitmap;
    void LoadScrollBitmap(CString strThumb, CString strThumbDown, CString strTrack, CString strUp, CString strDown,
                          CString strDownDown, CString strUpDown);

protected:
    void DeleteAllObject();
    void PreSubclassWindow() override;
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    enum Piece { kLeft, kMiddle, kRight, kCurLeft, kCurMiddle, kCurRight, kIcon, kCurIcon, kPieces };
    std::unique_ptr<zelctl::SkinSet> m_pieces;  // six row pieces and two icons
    SIZE m_szPiece[3];
    SIZE m_szIcon;

private:
    // Piece k (left, middle, right) of row `row`: the current set's for the current row.
    HBITMAP PieceOf(int row, int k) const;
    // Row i's pieces, icon and name; rc its background, cut at the list's bottom.
    ZELCTL_HIDDEN void DrawRow(HDC dc, int i, const CRect& rc, bool cut, zelctl::speciallists::PieceDC& source);
    // What of the kept canvas still shows the list as it is.
    std::unique_ptr<zelctl::speciallists::KeptRows> m_kept;
};
