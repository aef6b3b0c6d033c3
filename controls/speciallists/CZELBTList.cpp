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
END_MESSAGE_MAP()

CZELBTList::CZELBTList() : m_pieces(std::make_unique<zelctl::SkinSet>(kPieces)), m_szPiece{{0, 0}, {0, 0}, {0, 0}}, m_szIcon{0, 0} {
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
    // The numbers' column is measured as the play list measures it, and not drawn.
    CString count;
    count.Format(L"%d. ", m_nItemCount);
    (void)sl::LineHeight(dc, count);

    const bool barShown = ::IsWindow(m_pScrollBar->m_hWnd) && m_pScrollBar->IsWindowVisible();
    const int barWidth = barShown ? ScrollBarWidth() : 0;
    int y = m_rcList.top;
    for (int i = std::max(0, ScrollPos()); i < m_nItemCount && m_nItemHeight > 0; ++i) {
        ListCell* head = m_ppRows[i];
        if (!head) break;
        const bool marked = head->nMark == 1;
        if (marked) ::SetTextColor(dc, sl::kMarkedText);
        CRect rc(m_rcList.left, y, m_rcList.right - barWidth, y + m_nItemHeight);
        const bool cut = rc.bottom > m_rcList.bottom;
        if (cut) rc.bottom = m_rcList.bottom;
        const bool current = i == m_nCurSel;
        if (current) m_rcClick = rc;
        const HBITMAP pieces[3] = {(*m_pieces)[current ? kCurLeft : kLeft], (*m_pieces)[current ? kCurMiddle : kMiddle],
                                   (*m_pieces)[current ? kCurRight : kRight]};
        const bool drawn = sl::PaintRowPieces(dc, rc, pieces, m_szPiece);
        if (marked && drawn) {
            const HBITMAP icon = (*m_pieces)[current ? kCurIcon : kIcon];
            const int ix = rc.right - m_szPiece[2].cx - m_szIcon.cx;
            const int iy = rc.top + (m_nItemHeight - m_szIcon.cy) / 2 - 2;
            sl::StretchPart(dc, ix, iy, m_szIcon.cx, rc.bottom - iy, icon, 0, 0, m_szIcon.cx, rc.bottom - iy);
        }
        CRect textRc(m_rcList.left + m_szPiece[0].cx, y, rc.right - m_szIcon.cx - m_szPiece[2].cx, y + m_nItemHeight);
        CString name = head->strText;
        ForMartLeng(dc, name, textRc.Width());
        if (cut)
            sl::DrawCutLine(dc, name, textRc.left, textRc.right, y, m_nItemHeight, m_rcList.bottom, DT_SINGLELINE);
        else
            ::DrawTextW(dc, name, name.GetLength(), &textRc, sl::kCentredLine);
        y += m_nItemHeight;
        if (marked) ::SetTextColor(dc, RGB(0, 0, 0));
        if (cut) break;
    }
    frame.Present();
}
