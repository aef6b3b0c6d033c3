#include "CZELPlayList.h"

#include <aygshell.h>

#include <algorithm>

#include "ListPaint.h"
#include "ListRowStore.h"
#include "OffscreenCanvas.h"
#include "SkinList.h"
#include "SkinSet.h"

namespace sl = zelctl::speciallists;

namespace {
constexpr COLORREF kCapKey = 0x00CC0020;  // SRCCOPY's code, taken as a colour
constexpr COLORREF kMiddleKey = 0x00FF00FF;
constexpr int kTimeWidth = 40;
}  // namespace

BEGIN_MESSAGE_MAP(CZELPlayList, CListData)
ON_WM_SIZE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELPlayList::CZELPlayList()
    : m_pieces(std::make_unique<zelctl::SkinSet>(kPieces)),
      m_szCur{{0, 0}, {0, 0}, {0, 0}},
      m_kept(std::make_unique<sl::KeptRows>()) {}

CZELPlayList::~CZELPlayList() = default;

void CZELPlayList::PreSubclassWindow() {
    CListData::PreSubclassWindow();
    CRect client;
    GetClientRect(&client);
    const int w = client.Width() - 2 * m_nMarginX;
    InsertColumn(0, L"name", 0, w - kTimeWidth, 0);
    InsertColumn(1, L"time", 0, kTimeWidth, 30);
    InsertColumn(2, L"Tname", 0, 0, 0);
    if (::IsWindow(m_pScrollBar->m_hWnd)) m_pScrollBar->ShowWindow(SW_HIDE);
}

void CZELPlayList::OnSize(UINT nType, int cx, int cy) { CListData::OnSize(nType, cx, cy); }

void CZELPlayList::OnDestroy() {
    m_kept->Release();
    CListData::OnDestroy();
}

void CZELPlayList::MoveWindow(CRect rect, BOOL bRepaint) { CListData::MoveWindow(rect, bRepaint); }

void CZELPlayList::MoveWindow(int x, int y, int cx, int cy, BOOL bRepaint) {
    CListData::MoveWindow(x, y, cx, cy, bRepaint);
}

// The pieces go; the handles' sizes are forgotten. (The set clears its slots, so a later
// short load finds nothing to draw rather than dead handles: the same picture.)
void CZELPlayList::DeleteAllObject() {
    m_pieces->ReleaseAll();
    for (SIZE& s : m_szCur) s = SIZE{0, 0};
}

void CZELPlayList::LoadBitmaps(CArray<CString, CString>& arrBk, CArray<CString, CString>& arrRow,
                               CArray<CString, CString>& arrCur) {
    DeleteAllObject();
    if (arrBk.GetSize() < 4 || arrRow.GetSize() < 3 || arrCur.GetSize() < 3) return;
    LoadBkImage(arrBk);
    m_pieces->LoadFiles({arrRow[0], arrRow[1], arrRow[2]}, kRowLeft);
    m_pieces->LoadFiles({arrCur[0], arrCur[1], arrCur[2]}, kCurLeft);
    for (int k = 0; k < 3; ++k) m_szCur[k] = m_pieces->Size(kCurLeft + k);
    // A current middle that did not load leaves the row height as it was.
    if (m_szCur[1].cy > 0) m_nItemHeight = m_szCur[1].cy;
    UpdataScrollBar();
    if (::IsWindow(m_hWnd)) Invalidate();
}

void CZELPlayList::LoadSkin(CString strSkin, CString) {
    CStringArray paths;
    zelctl::SplitSkinList(strSkin, paths);
    CArray<CString, CString> bk, row, cur;
    for (int i = 0; i < paths.GetSize(); ++i) (i < 4 ? bk : i < 7 ? row : cur).Add(paths[i]);
    LoadBitmaps(bk, row, cur);
}

void CZELPlayList::UpdataScrollBar() {
    if (!::IsWindow(m_hWnd)) return;
    CRect client;
    GetClientRect(&client);
    m_rcList = client;
    m_rcList.DeflateRect(m_nMarginX, m_nMarginY, m_nMarginX, m_nMarginY);
    if (::IsWindow(m_pScrollBar->m_hWnd)) {
        m_pScrollBar->GetClientRect(&m_rcScroll);
        const int barWidth = m_rcScroll.Width();
        const int max = m_nItemHeight > 0 ? m_nItemCount - m_rcList.Height() / m_nItemHeight : 0;
        if (max > 0) {
            m_rcList.right -= barWidth;
            m_pScrollBar->SetScrollRange(0, max);
            m_pScrollBar->SetPagesize(client.Height() / m_nItemHeight);
            m_pScrollBar->ShowWindow(SW_SHOW);
            m_rcScroll.SetRect(client.right - barWidth, client.top, client.right, client.bottom);
        } else {
            m_pScrollBar->SetScrollRange(0, 1);
            m_pScrollBar->SetScrollPos(0, TRUE);
            m_pScrollBar->ShowWindow(SW_HIDE);
        }
    }
    SetColumnWidth(0, m_rcList.Width() - kTimeWidth);
}

void CZELPlayList::DrawInterface(HDC hdc) {
    sl::ListFrame frame(*this, hdc, m_hBkBitmap, Canvas());
    const CRect& client = frame.client();
    HDC dc = frame.dc();

    CString count;
    count.Format(L"%d. ", m_nItemCount);
    RECT measure{0, 0, 0, 0};
    ::DrawTextW(dc, count, count.GetLength(), &measure, sl::kMeasureLine);
    const int numberWidth = measure.right - measure.left;

    // The rows as this paint lays them out, before anything is drawn: what they show
    // decides what of the kept canvas is drawn again.
    struct Row {
        int index;
        CRect rc;     // cut at the list's bottom
        CRect reach;  // every pixel the row may draw
        bool cut;
    };
    std::vector<Row> rows;
    int y = m_rcList.top;
    for (int i = std::max(0, ScrollPos()); i < m_nItemCount && m_nItemHeight > 0; ++i) {
        if (!m_ppRows[i]) break;
        CRect rc(m_rcList.left, y, m_rcList.right, y + m_nItemHeight);
        const bool cut = rc.bottom > m_rcList.bottom;
        if (cut) rc.bottom = m_rcList.bottom;
        CRect reach(client.left, y, client.right, y + m_nItemHeight);
        // A cut row's lines are placed by their measured height and may stand out of it.
        if (cut) reach.InflateRect(0, sl::TextOverhang(dc, m_nItemHeight, {nullptr}));
        rows.push_back(Row{i, rc, reach, cut});
        y += m_nItemHeight;
        if (cut) break;
    }

    sl::PictureKey layout;
    layout << client << m_rcList << m_nItemHeight << numberWidth << m_szCur[0] << m_szCur[1] << m_szCur[2];
    for (HBITMAP image : m_hBkBitmap) layout << image;
    for (int k = 0; k < kPieces; ++k) layout << (*m_pieces)[k];
    for (const ListColumn* c = m_pColumns; c; c = c->pNext) layout << c->nWidth;
    m_kept->Begin(hdc, client, !frame.reused(), std::move(layout));
    const bool currentWhole = (*m_pieces)[kCurLeft] && (*m_pieces)[kCurMiddle] && (*m_pieces)[kCurRight];
    for (const Row& row : rows) {
        sl::PictureKey key;
        key << row.index << m_ppRows[row.index]->nMark << (row.index == m_nCurSel) << row.cut;
        for (const ListCell* cell = m_ppRows[row.index]; cell; cell = cell->pNextCell) key << cell->strText;
        m_kept->Row(row.reach, std::move(key));
        if (row.index == m_nCurSel && currentWhole) m_rcClick = row.rc;
    }

    if (m_kept->Clip(dc)) {
        // Ordinary rows whose pieces cover them hide the frame: it is not drawn under them
        // (the current row is keyed: the frame shows through it).
        const HBITMAP ordinary[3] = {(*m_pieces)[kRowLeft], (*m_pieces)[kRowMiddle], (*m_pieces)[kRowRight]};
        std::vector<RECT> covered;
        for (const Row& row : rows)
            if (row.index != m_nCurSel && m_kept->Draws(dc, row.reach) && sl::RowPiecesCover(row.rc, ordinary, m_szCur))
                covered.push_back(row.rc);
        frame.PaintFrame(covered);
        for (const Row& row : rows) {
            if (!m_kept->Draws(dc, row.reach)) continue;
            const bool marked = m_ppRows[row.index]->nMark == 1;
            if (marked) ::SetTextColor(dc, sl::kMarkedText);
            DrawRow(dc, row.index, row.rc, row.cut, numberWidth, frame.pieces());
            if (marked) ::SetTextColor(dc, RGB(0, 0, 0));
        }
    }
    m_kept->End();
    frame.Present();
}

void CZELPlayList::DrawRow(HDC dc, int row, const CRect& rc, bool cut, int numberWidth, sl::PieceDC& source) {
    const int h = rc.Height();
    if (row == m_nCurSel) {
        if ((*m_pieces)[kCurLeft] && (*m_pieces)[kCurMiddle] && (*m_pieces)[kCurRight]) {
            const SIZE r = m_szCur[2], l = m_szCur[0], m = m_szCur[1];
            // The caps unscaled (cut at the row's bottom), the middle stretched between.
            sl::KeyedPart(dc, rc.right - r.cx, rc.top, r.cx, std::min<int>(h, r.cy), (*m_pieces)[kCurRight], 0, 0, r.cx,
                          std::min<int>(h, r.cy), kCapKey, &source);
            sl::KeyedPart(dc, rc.left, rc.top, l.cx, std::min<int>(h, l.cy), (*m_pieces)[kCurLeft], 0, 0, l.cx,
                          std::min<int>(h, l.cy), kCapKey, &source);
            sl::KeyedPart(dc, rc.left + l.cx, rc.top, rc.Width() - l.cx - r.cx, h, (*m_pieces)[kCurMiddle], 0, 0, m.cx,
                          std::min<int>(m_nItemHeight, m.cy), kMiddleKey, &source);
        }
    } else {
        const HBITMAP pieces[3] = {(*m_pieces)[kRowLeft], (*m_pieces)[kRowMiddle], (*m_pieces)[kRowRight]};
        m_kept->backdrops().Paint(dc, rc, m_nItemHeight, pieces, m_szCur, source);
    }

    int x = m_rcList.left;
    const int y = rc.top;
    ListColumn* column = m_pColumns;
    for (ListCell* cell = m_ppRows[row]; cell && column; cell = cell->pNextCell, column = column->pNext) {
        const CRect cellRc(x, y, x + column->nWidth, y + m_nItemHeight);
        if (!cell->strText.IsEmpty()) {
            int textLeft = x;
            CString text = cell->strText;
            if (cell == m_ppRows[row]) {
                CString number;
                number.Format(L"%d.", row + 1);
                if (cut) {
                    sl::DrawCutLine(dc, number, x, x + numberWidth, y, m_nItemHeight, m_rcList.bottom,
                                    DT_SINGLELINE | DT_RIGHT);
                } else {
                    CRect numberRc(x, y, x + numberWidth, cellRc.bottom);
                    ::DrawTextW(dc, number, number.GetLength(), &numberRc, sl::kCentredRight);
                }
                textLeft = x + numberWidth;
                // The extension is kept whole; only the part before it is shortened.
                text = sl::ShortenKeepingExtension(dc, text, cellRc.right - textLeft);
            } else {
                ForMartLeng(dc, text, cellRc.Width());
            }
            if (cut) {
                sl::DrawCutLine(dc, text, textLeft, cellRc.right, y, m_nItemHeight, m_rcList.bottom, DT_SINGLELINE);
            } else {
                CRect textRc(textLeft, y, cellRc.right, cellRc.bottom);
                ::DrawTextW(dc, text, text.GetLength(), &textRc, sl::kCentredLine);
            }
        }
        x = cellRc.right;
    }
}
