// CZELPlayList: the media player's track list, a CListData with three fixed columns --
// "name" (the file name), "time" (40 pixels, the duration) and "Tname" (0 wide, a text the
// host keeps for itself) -- rows numbered "%d." from 1 in a column as wide as the row
// count's "%d. ", and file names shortened without losing their extension.
//
// Look: the four background images of the base make the frame (white without all four);
// ordinary rows get three copied pieces, the current row three pieces drawn with colour
// keys -- 0x00CC0020 for the caps (a raster-operation code passed as a colour, kept as the
// caps' key) and magenta for the middle. The ordinary pieces are drawn with the sizes of
// the current ones, so both sets must have equal caps. Marked rows (the base's mark) have
// their text in 0x003214C8, except the current row: the key blit leaves the surface's text
// colour black, so a marked current row reads black. Text is in the surface's default
// font.
//
// The scroll bar shows only while the rows overflow m_rcList (the client less the
// margins); when everything fits its range is 0..1 at position 0 and it is hidden.
//
// LoadSkin takes the ten paths LoadBitmaps takes, in its order: the four background
// images, the ordinary left, middle and right pieces, the current left, middle and right.
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

class ZELCTL_API CZELPlayList : public CListData {
public:
    CZELPlayList();
    ~CZELPlayList() override;

    void LoadSkin(CString strSkin, CString strReserved) override;
    void UpdataScrollBar() override;
    void DrawInterface(HDC hdc) override;

    // Loads nothing (after deleting the old pieces) unless arrBk holds 4 paths and arrRow
    // and arrCur 3 each.
    void LoadBitmaps(CArray<CString, CString>& arrBk, CArray<CString, CString>& arrRow,
                     CArray<CString, CString>& arrCur);

    void MoveWindow(CRect rect, BOOL bRepaint = TRUE);
    void MoveWindow(int x, int y, int cx, int cy, BOOL bRepaint = TRUE);

protected:
    void DeleteAllObject();
    void PreSubclassWindow() override;

    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    enum Piece { kRowLeft, kRowMiddle, kRowRight, kCurLeft, kCurMiddle, kCurRight, kPieces };
    std::unique_ptr<zelctl::SkinSet> m_pieces;  // the six row pieces
    SIZE m_szCur[3];

private:
    // A row's pieces and texts: rc its background, cut at the list's bottom.
    ZELCTL_HIDDEN void DrawRow(HDC dc, int row, const CRect& rc, bool cut, int numberWidth,
                               zelctl::speciallists::PieceDC& source);
    // What of the kept canvas still shows the list as it is.
    std::unique_ptr<zelctl::speciallists::KeptRows> m_kept;
};
