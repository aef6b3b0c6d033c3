// CZELTelList: the telephone book and call log, a CListData whose rows show a large
// number ("%d.", font 0, 30 high) and cell 0 (font 1, 28 high, "..." to fit) over a
// three-piece background chosen per row from a list of image sets (one per kind of entry),
// with the set's own pieces for the current row. Columns "name", "Tname" and "time" are
// made when the list subclasses its item; only cell 0 is drawn, the others hold the host's
// texts (AddItem fills a whole row at once).
//
// Image sets: AddImage appends one (three normal and three current pieces). A row's image
// index picks the set at that position; an index past the end picks the last set; a
// negative index, or any index when no set exists, draws the row without pieces. Every
// set is drawn with the piece sizes of the set added last, and the row height is that
// set's left piece's height.
//
// The scroll bar never leaves the screen: while the rows overflow it is enabled with the
// range 0..rows - whole rows shown; otherwise it is disabled at range 0..100, position 0.
// The bar's test uses m_rcList as the last paint laid it out (the client less margins of
// 11 and 6; until the first paint, the base's client less 3).
//
// The number and the name share one band: the row's text rectangle, 5 pixels further left,
// less 2 pixels at the top and 10 at the bottom; the name starts 40 pixels after the
// number. A row cut by the list's bottom is the last drawn; its texts stand where they
// would stand centred and are clipped there.
#pragma once

#include <afxtempl.h>

#include <memory>
#include <vector>

#include "CListData.h"
#include "zelctl_api.h"

namespace zelctl::speciallists {
class KeptRows;  // what of the kept canvas is current (ListPaint.h)
class PieceDC;
}

class ZELCTL_API CZELTelList : public CListData {
public:
    CZELTelList();
    ~CZELTelList() override;

    void UpdataScrollBar() override;
    void DrawInterface(HDC hdc) override;

    // Appends an image set from three normal and three current piece paths (left, middle,
    // right); nothing unless both arrays hold at least three.
    void AddImage(CArray<CString, CString>& arrNormal, CArray<CString, CString>& arrCurrent);
    void ClearImages();
    // Appends a row with cell texts arrCells[0..] and image index nImage; -1 unless the
    // array holds exactly one text per column.
    int AddItem(CArray<CString, CString>& arrCells, int nImage);

    using CListData::LoadScrollBitmap;
    void LoadScrollBitmap(CString strThumb, CString strThumbDown, CString strTrack, CString strUp, CString strDown,
                          CString strDownDown, CString strUpDown);

    // The number of image sets.
    int GetImageSetCount() const { return static_cast<int>(m_sets.size()); }

protected:
    void PreSubclassWindow() override;
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    enum Piece { kLeft, kMiddle, kRight, kCurLeft, kCurMiddle, kCurRight, kPieces };
    struct ImageSet;   // six pieces (CZELTelList.cpp)
    struct Resources;  // the spare pieces and the four fonts

    std::unique_ptr<Resources> m_res;
    SIZE m_szPiece[3];
    int m_nFontHeight[4];
    std::vector<std::unique_ptr<ImageSet>> m_sets;

private:
    const ImageSet* SetOfRow(int image) const;
    // Row i's pieces and texts: rc its background (cut at the list's bottom), numberRc the
    // band its number and name are written in; fonts 0 and 1 as drawn.
    ZELCTL_HIDDEN void DrawRow(HDC dc, int i, const CRect& rc, const CRect& numberRc, const ImageSet* set,
                               const HFONT (&fonts)[2], zelctl::speciallists::PieceDC& source);
    // What of the kept canvas still shows the list as it is.
    std::unique_ptr<zelctl::speciallists::KeptRows> m_kept;
};
