#include "CZELTelList.h"

#include <aygshell.h>

#include <algorithm>

#include "ListPaint.h"
#include "ListRowStore.h"
#include "OffscreenCanvas.h"
#include "SkinList.h"
#include "SkinSet.h"
#include "ControlFont.h"

namespace sl = zelctl::speciallists;

struct CZELTelList::ImageSet {
    zelctl::SkinSet pieces{kPieces};
};

struct CZELTelList::Resources {
    zelctl::SkinSet spare{6};  // never loaded or drawn by the list; released with it
    zelctl::OwnedFont fonts[4];
};

BEGIN_MESSAGE_MAP(CZELTelList, CListData)
ON_WM_SIZE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELTelList::CZELTelList()
    : m_res(std::make_unique<Resources>()),
      m_szPiece{{0, 0}, {0, 0}, {0, 0}},
      m_nFontHeight{30, 28, 17, 13},
      m_kept(std::make_unique<sl::KeptRows>()) {
    m_nMarginX = 11;
    m_nMarginY = 6;
    m_nImageCount = 0;
    for (int i = 0; i < 4; ++i) m_res->fonts[i].Create(m_nFontHeight[i]);
}

CZELTelList::~CZELTelList() = default;

void CZELTelList::PreSubclassWindow() {
    CListData::PreSubclassWindow();
    InsertColumn(0, L"name", 0, 40, 0);
    InsertColumn(1, L"Tname", 0, 40, 1);
    InsertColumn(2, L"time", 0, 40, 2);
}

void CZELTelList::AddImage(CArray<CString, CString>& arrNormal, CArray<CString, CString>& arrCurrent) {
    if (arrNormal.GetSize() < 3 || arrCurrent.GetSize() < 3) return;
    auto set = std::make_unique<ImageSet>();
    for (int k = 0; k < 3; ++k) {
        set->pieces.Set(kLeft + k, zelctl::LoadSkinFile(arrNormal[k]));
        set->pieces.Set(kCurLeft + k, zelctl::LoadSkinFile(arrCurrent[k]));
        if (set->pieces[kLeft + k]) m_szPiece[k] = set->pieces.Size(kLeft + k);
    }
    m_sets.push_back(std::move(set));
    m_nItemHeight = m_szPiece[0].cy;
    ++m_nImageCount;
    if (::IsWindow(m_hWnd)) Invalidate();
}

void CZELTelList::ClearImages() {
    m_sets.clear();
    m_nImageCount = 0;
    if (::IsWindow(m_hWnd)) Invalidate();
}

int CZELTelList::AddItem(CArray<CString, CString>& arrCells, int nImage) {
    if (arrCells.GetSize() != m_nColumnCount || m_nColumnCount < 1) return -1;
    const int row = InsertItem(m_nItemCount, arrCells[0], nImage);
    if (row < 0) return -1;
    for (int k = 1; k < m_nColumnCount; ++k) SetItemText(row, k, arrCells[k]);
    return row;
}

void CZELTelList::LoadScrollBitmap(CString strThumb, CString strThumbDown, CString strTrack, CString strUp,
                                   CString strDown, CString strDownDown, CString strUpDown) {
    m_pScrollBar->LoadBitmapW(strThumb, strThumbDown, strTrack, strUp, strDown, strDownDown, strUpDown);
    PlaceBarAtRightEdge();
}

void CZELTelList::OnSize(UINT nType, int cx, int cy) {
    CListData::OnSize(nType, cx, cy);
    PlaceBarAtRightEdge();
}

void CZELTelList::OnDestroy() {
    m_sets.clear();  // m_nImageCount stays: rows keep their indexes
    m_kept->Release();
    CListData::OnDestroy();
}

void CZELTelList::UpdataScrollBar() {
    if (!::IsWindow(m_hWnd) || !::IsWindow(m_pScrollBar->m_hWnd)) return;
    m_pScrollBar->GetClientRect(&m_rcScroll);
    const int max = m_nItemHeight > 0 ? m_nItemCount - m_rcList.Height() / m_nItemHeight : 0;
    sl::ApplyAlwaysShownBar(*this, *m_pScrollBar, m_rcScroll, max, m_nItemHeight);
}

const CZELTelList::ImageSet* CZELTelList::SetOfRow(int image) const {
    if (image < 0 || m_sets.empty()) return nullptr;
    return m_sets[std::min<size_t>(static_cast<size_t>(image), m_sets.size() - 1)].get();
}

void CZELTelList::DrawInterface(HDC hdc) {
    sl::ListFrame frame(*this, hdc, m_hBkBitmap, Canvas());
    const CRect& client = frame.client();
    HDC dc = frame.dc();
    m_rcList.SetRect(m_nMarginX, m_nMarginY, client.Width() - m_nMarginX, client.Height() - m_nMarginY);

    const bool barShown = ::IsWindow(m_pScrollBar->m_hWnd) && m_pScrollBar->IsWindowVisible();
    const int barWidth = ScrollBarWidth();
    const HGDIOBJ oldFont = ::GetCurrentObject(dc, OBJ_FONT);
    HFONT fonts[2];
    for (int k = 0; k < 2; ++k) fonts[k] = m_res->fonts[k].get() ? m_res->fonts[k].get() : static_cast<HFONT>(oldFont);

    // The rows as this paint lays them out, before anything is drawn: what they show
    // decides what of the kept canvas is drawn again.
    struct Row {
        int index;
        CRect rc;        // the background, cut at the list's bottom
        CRect numberRc;  // the text band
        CRect reach;     // every pixel the row may draw
        bool cut;
        const ImageSet* set;
    };
    std::vector<Row> rows;
    int overhang = -1;  // measured for the first row whose text is placed by its height
    int y = m_rcList.top;
    for (int i = std::max(0, ScrollPos()); i < m_nItemCount && m_nItemHeight > 0; ++i) {
        ListCell* head = m_ppRows[i];
        if (!head) break;
        NKDbgPrintfW(L"imagelist = %d\n", head->nImage);
        CRect rc(m_rcList.left, y, m_rcList.right - (barShown ? barWidth : 0), y + m_nItemHeight);
        const bool cut = rc.bottom > m_rcList.bottom;
        if (cut) rc.bottom = m_rcList.bottom;
        // The text band: the row less the pieces' caps and the bar's strip (taken whether
        // the bar shows or not), 5 pixels further left, 2 less at the top and 10 at the
        // bottom.
        CRect numberRc(m_rcList.left + m_szPiece[0].cx, y, m_rcList.right - barWidth - m_szPiece[2].cx,
                       y + m_nItemHeight);
        numberRc.OffsetRect(-5, 0);
        numberRc.top += 2;
        numberRc.bottom -= 10;
        CRect reach(client.left, y, client.right, y + m_nItemHeight);
        if (numberRc.bottom >= m_rcList.bottom) {
            // Its lines are placed by their measured height and may stand out of the row.
            if (overhang < 0) overhang = sl::TextOverhang(dc, m_nItemHeight, {fonts[0], fonts[1]});
            reach.InflateRect(0, overhang);
        }
        rows.push_back(Row{i, rc, numberRc, reach, cut, SetOfRow(head->nImage)});
        y += m_nItemHeight;
        if (cut) break;
    }

    sl::PictureKey layout;
    layout << client << m_rcList << m_nItemHeight << barShown << barWidth << m_szPiece[0] << m_szPiece[1]
           << m_szPiece[2] << fonts[0] << fonts[1];
    for (HBITMAP image : m_hBkBitmap) layout << image;
    for (const auto& set : m_sets)
        for (int k = 0; k < kPieces; ++k) layout << set->pieces[k];
    m_kept->Begin(hdc, client, !frame.reused(), std::move(layout));
    for (const Row& row : rows) {
        const ListCell* head = m_ppRows[row.index];
        sl::PictureKey key;
        key << row.index << head->strText << head->nMark << (row.index == m_nCurSel) << row.set << row.cut;
        m_kept->Row(row.reach, std::move(key));
        if (row.index == m_nCurSel && row.set) {
            const zelctl::SkinSet& p = row.set->pieces;
            if (p[kCurLeft] && p[kCurMiddle] && p[kCurRight]) m_rcClick = row.rc;
        }
    }

    if (m_kept->Clip(dc)) {
        // Rows whose pieces cover them hide the frame: it is not drawn under them.
        std::vector<RECT> covered;
        for (const Row& row : rows) {
            if (!row.set || !m_kept->Draws(dc, row.reach)) continue;
            const zelctl::SkinSet& p = row.set->pieces;
            const int base = row.index == m_nCurSel ? kCurLeft : kLeft;
            const HBITMAP pieces[3] = {p[base], p[base + 1], p[base + 2]};
            if (sl::RowPiecesCover(row.rc, pieces, m_szPiece)) covered.push_back(row.rc);
        }
        frame.PaintFrame(covered);
        for (const Row& row : rows)
            if (m_kept->Draws(dc, row.reach))
                DrawRow(dc, row.index, row.rc, row.numberRc, row.set, fonts, frame.pieces());
    }
    m_kept->End();
    ::SelectObject(dc, oldFont);
    frame.Present();
}

void CZELTelList::DrawRow(HDC dc, int i, const CRect& rc, const CRect& numberRc, const ImageSet* set,
                          const HFONT (&fonts)[2], sl::PieceDC& source) {
    ListCell* head = m_ppRows[i];
    const bool marked = head->nMark == 1;
    if (marked) ::SetTextColor(dc, sl::kMarkedText);
    if (set) {
        const zelctl::SkinSet& p = set->pieces;
        if (i == m_nCurSel) {
            const HBITMAP current[3] = {p[kCurLeft], p[kCurMiddle], p[kCurRight]};
            if (current[0] && current[1] && current[2])
                m_kept->backdrops().Paint(dc, rc, m_nItemHeight, current, m_szPiece, source);
        } else {
            const HBITMAP normal[3] = {p[kLeft], p[kMiddle], p[kRight]};
            m_kept->backdrops().Paint(dc, rc, m_nItemHeight, normal, m_szPiece, source);
        }
    }
    const int y = rc.top;
    CString number;
    number.Format(L"%d.", i + 1);
    ::SelectObject(dc, fonts[0]);
    CRect numberBox = numberRc;
    if (numberRc.bottom < m_rcList.bottom)
        ::DrawTextW(dc, number, number.GetLength(), &numberBox, sl::kCentredLine);
    else
        sl::DrawCutLine(dc, number, numberRc.left, numberRc.right, y, m_nItemHeight, m_rcList.bottom, DT_SINGLELINE);

    CRect nameRc = numberRc;
    nameRc.left += 40;
    ::SelectObject(dc, fonts[1]);
    CString name = head->strText;
    ForMartLeng(dc, name, nameRc.Width());
    if (nameRc.bottom < m_rcList.bottom) {
        ::DrawTextW(dc, name, name.GetLength(), &nameRc, sl::kCentredLine);
    } else {
        CRect measured = nameRc;
        ::DrawTextW(dc, name, name.GetLength(), &measured, sl::kMeasureLine);
        ::DrawTextW(dc, name, name.GetLength(), &measured, DT_SINGLELINE);
    }
    if (marked) ::SetTextColor(dc, RGB(0, 0, 0));
}
