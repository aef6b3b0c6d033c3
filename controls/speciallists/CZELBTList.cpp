#include "CZELBTList.h"

#include <algorithm>

#include "ListPaint.h"
#include "ListRowStore.h"
#include "OffscreenCanvas.h"
#include "SkinList.h"
#include "SkinSet.h"

namespace sl = zelctl::speciallists;

BEGIN_MESSAGE_MAP(CZELBTList, CListData)
ON_WM_SIZE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELBTList::CZELBTList()
    : m_pieces(std::make_unique<zelctl::SkinSet>(kPieces)),
      m_szPiece{{0, 0}, {0, 0}, {0, 0}},
      m_szIcon{0, 0},
      m_kept(std::make_unique<sl::KeptRows>()) {
    m_nMarginX = 11;
    m_nMarginY = 6;
}

CZELBTList::~CZELBTList() { DeleteAllObject(); }

void CZELBTList::PreSubclassWindow() {
    CListData::PreSubclassWindow();
    InsertColumn(0, L"name", 0, 40, 0);
    if (::IsWindow(m_pScrollBar->m_hWnd)) m_pScrollBar->ShowWindow(SW_SHOW);
}

void CZELBTList::DeleteAllObject() { m_pieces->ReleaseAll(); }

void CZELBTList::LoadBitmaps(CArray<CString, CString>& arrBk, CArray<CString, CString>& arrNormal,
                             CArray<CString, CString>& arrCurrent, CArray<CString, CString>& arrIcons) {
    DeleteAllObject();
    m_szIcon = SIZE{0, 0};
    if (arrBk.GetSize() < 4 || arrNormal.GetSize() < 3) return;
    // Both short together stop the load; either alone does not.
    if (arrCurrent.GetSize() < 3 && arrIcons.GetSize() < 2) return;
    LoadBkImage(arrBk);
    for (int k = 0; k < 3; ++k) {
        m_pieces->Set(kLeft + k, zelctl::LoadSkinFile(arrNormal[k]));
        // A short array's missing paths load nothing.
        m_pieces->Set(kCurLeft + k, k < arrCurrent.GetSize() ? zelctl::LoadSkinFile(arrCurrent[k]) : nullptr);
        m_szPiece[k] = m_pieces->Size(kCurLeft + k);
    }
    m_nItemHeight = m_szPiece[0].cy;
    for (int k = 0; k < 2; ++k)
        m_pieces->Set(kIcon + k, k < arrIcons.GetSize() ? zelctl::LoadSkinFile(arrIcons[k]) : nullptr);
    if ((*m_pieces)[kIcon]) m_szIcon = m_pieces->Size(kIcon);
    if (::IsWindow(m_hWnd)) Invalidate();
}

int CZELBTList::GetIndexByName(CString& strName) {
    for (int i = 0; i < m_nItemCount; ++i)
        if (m_ppRows[i] && m_ppRows[i]->strText == strName) return i;
    return -1;
}

int CZELBTList::GetIndexByState(CString& strState) {
    for (int i = 0; i < m_nItemCount; ++i) {
        ListCell* state = m_ppRows[i] ? m_ppRows[i]->pNextCell : nullptr;
        if (!state) return -1;
        if (state->strText == strState) return i;
    }
    return -1;
}

void CZELBTList::LoadScrollBitmap(CString strThumb, CString strThumbDown, CString strTrack, CString strUp,
                                  CString strDown, CString strDownDown, CString strUpDown) {
    m_pScrollBar->LoadBitmapW(strThumb, strThumbDown, strTrack, strUp, strDown, strDownDown, strUpDown);
    PlaceBarAtRightEdge();
}

void CZELBTList::OnSize(UINT nType, int cx, int cy) {
    CListData::OnSize(nType, cx, cy);
    PlaceBarAtRightEdge();
}

void CZELBTList::OnDestroy() {
    m_kept->Release();
    CListData::OnDestroy();
}

void CZELBTList::UpdataScrollBar() {
    if (!::IsWindow(m_hWnd) || !::IsWindow(m_pScrollBar->m_hWnd)) return;
    m_pScrollBar->GetClientRect(&m_rcScroll);
    const int max = m_nItemHeight > 0 ? m_nItemCount - m_rcList.Height() / m_nItemHeight : 0;
    NKDbgPrintfW(L"Max = %d\n", max);
    sl::ApplyAlwaysShownBar(*this, *m_pScrollBar, m_rcScroll, max, m_nItemHeight);
}

void CZELBTList::DrawInterface(HDC hdc) {
    sl::ListFrame frame(*this, hdc, m_hBkBitmap, Canvas());
    const CRect& client = frame.client();
    HDC dc = frame.dc();
    m_rcList.SetRect(m_nMarginX, m_nMarginY, client.Width() - m_nMarginX, client.Height() - m_nMarginY);

    const bool barShown = ::IsWindow(m_pScrollBar->m_hWnd) && m_pScrollBar->IsWindowVisible();
    const int barWidth = barShown ? ScrollBarWidth() : 0;
    // The rows as this paint lays them out, before anything is drawn: what they show
    // decides what of the kept canvas is drawn again.
    struct Row {
        int index;
        CRect rc;     // the background, cut at the list's bottom
        CRect reach;  // every pixel the row may draw
        bool cut;
    };
    std::vector<Row> rows;
    // A status icon taller than the row stands out above it (it is centred 2 pixels high).
    const int iconAbove = std::max(0, 2 - (m_nItemHeight - m_szIcon.cy) / 2);
    int overhang = -1;  // measured for the cut row, whose name is placed by its height
    int y = m_rcList.top;
    for (int i = std::max(0, ScrollPos()); i < m_nItemCount && m_nItemHeight > 0; ++i) {
        const ListCell* head = m_ppRows[i];
        if (!head) break;
        CRect rc(m_rcList.left, y, m_rcList.right - barWidth, y + m_nItemHeight);
        const bool cut = rc.bottom > m_rcList.bottom;
        if (cut) rc.bottom = m_rcList.bottom;
        CRect reach(client.left, y - (head->nMark == 1 ? iconAbove : 0), client.right, y + m_nItemHeight);
        if (cut) {
            if (overhang < 0) overhang = sl::TextOverhang(dc, m_nItemHeight, {nullptr});
            reach.InflateRect(0, overhang);
        }
        rows.push_back(Row{i, rc, reach, cut});
        y += m_nItemHeight;
        if (cut) break;
    }

    sl::PictureKey layout;
    layout << client << m_rcList << m_nItemHeight << barWidth << m_szPiece[0] << m_szPiece[1] << m_szPiece[2]
           << m_szIcon;
    for (HBITMAP image : m_hBkBitmap) layout << image;
    for (int k = 0; k < kPieces; ++k) layout << (*m_pieces)[k];
    m_kept->Begin(hdc, client, !frame.reused(), std::move(layout));
    for (const Row& row : rows) {
        const ListCell* head = m_ppRows[row.index];
        sl::PictureKey key;
        key << row.index << head->strText << head->nMark << (row.index == m_nCurSel) << row.cut;
        m_kept->Row(row.reach, std::move(key));
        if (row.index == m_nCurSel) m_rcClick = row.rc;
    }

    if (m_kept->Clip(dc)) {
        // The numbers' column is measured as the play list measures it, and not drawn.
        CString count;
        count.Format(L"%d. ", m_nItemCount);
        (void)sl::LineHeight(dc, count);
        // Rows whose pieces cover them hide the frame: it is not drawn under them.
        std::vector<RECT> covered;
        for (const Row& row : rows) {
            const HBITMAP pieces[3] = {PieceOf(row.index, 0), PieceOf(row.index, 1), PieceOf(row.index, 2)};
            if (m_kept->Draws(dc, row.reach) && sl::RowPiecesCover(row.rc, pieces, m_szPiece))
                covered.push_back(row.rc);
        }
        frame.PaintFrame(covered);
        for (const Row& row : rows)
            if (m_kept->Draws(dc, row.reach)) DrawRow(dc, row.index, row.rc, row.cut, frame.pieces());
    }
    m_kept->End();
    frame.Present();
}

HBITMAP CZELBTList::PieceOf(int row, int k) const {
    return (*m_pieces)[(row == m_nCurSel ? kCurLeft : kLeft) + k];
}

void CZELBTList::DrawRow(HDC dc, int i, const CRect& rc, bool cut, sl::PieceDC& source) {
    const ListCell* head = m_ppRows[i];
    const bool marked = head->nMark == 1;
    if (marked) ::SetTextColor(dc, sl::kMarkedText);
    const bool current = i == m_nCurSel;
    const HBITMAP pieces[3] = {PieceOf(i, 0), PieceOf(i, 1), PieceOf(i, 2)};
    const bool drawn = m_kept->backdrops().Paint(dc, rc, m_nItemHeight, pieces, m_szPiece, source);
    const int y = rc.top;
    if (marked && drawn) {
        const HBITMAP icon = (*m_pieces)[current ? kCurIcon : kIcon];
        const int ix = rc.right - m_szPiece[2].cx - m_szIcon.cx;
        const int iy = rc.top + (m_nItemHeight - m_szIcon.cy) / 2 - 2;
        sl::StretchPart(dc, ix, iy, m_szIcon.cx, rc.bottom - iy, icon, 0, 0, m_szIcon.cx, rc.bottom - iy, &source);
    }
    CRect textRc(m_rcList.left + m_szPiece[0].cx, y, rc.right - m_szIcon.cx - m_szPiece[2].cx, y + m_nItemHeight);
    CString name = head->strText;
    ForMartLeng(dc, name, textRc.Width());
    if (cut)
        sl::DrawCutLine(dc, name, textRc.left, textRc.right, y, m_nItemHeight, m_rcList.bottom, DT_SINGLELINE);
    else
        ::DrawTextW(dc, name, name.GetLength(), &textRc, sl::kCentredLine);
    if (marked) ::SetTextColor(dc, RGB(0, 0, 0));
}
