#include "CZELListCtrl.h"

#include <commctrl.h>

#include <algorithm>

#include "ControlFont.h"
#include "ListPaint.h"
#include "ListRowStore.h"
#include "Notify.h"
#include "OffscreenCanvas.h"
#include "SkinSet.h"
#include "SkinText.h"
#include "ThreePiece.h"

namespace sl = zelctl::speciallists;

namespace {
constexpr int kDefaultHeading = 24;
constexpr int kTextInset = 4;
constexpr int kRowFontHeight = 16;
const COLORREF kText = RGB(0, 0, 0), kCurrentText = RGB(255, 255, 255);

UINT AlignmentOf(int format) {
    switch (format & 3) {
        case LVCFMT_RIGHT: return DT_RIGHT;
        case LVCFMT_CENTER: return DT_CENTER;
        default: return DT_LEFT;
    }
}
}  // namespace

BEGIN_MESSAGE_MAP(CZELListCtrl, CListData)
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_SIZE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELListCtrl::CZELListCtrl()
    : m_skin(std::make_unique<zelctl::SkinSet>(kPieces)),
      m_fontRow(std::make_unique<zelctl::OwnedFont>(zelctl::CreateControlFont(kRowFontHeight))),
      m_fontHeading(std::make_unique<zelctl::OwnedFont>(zelctl::CreateControlFont(kRowFontHeight, FW_BOLD))),
      m_nPressedColumn(-1),
      m_kept(std::make_unique<sl::KeptRows>()) {}

CZELListCtrl::~CZELListCtrl() = default;

BOOL CZELListCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    return CWnd::Create(nullptr, L"", dwStyle, rect, pParentWnd, nID, nullptr);
}

void CZELListCtrl::PreSubclassWindow() {
    CListData::PreSubclassWindow();
    ::SetClassLongW(m_hWnd, GCL_STYLE, static_cast<LONG>(::GetClassLongW(m_hWnd, GCL_STYLE) | CS_DBLCLKS));
    UpdataScrollBar();
}

// ---- skin and layout -------------------------------------------------------------------------

void CZELListCtrl::LoadSkin(CString strSkin, CString) {
    if (m_skin->LoadSkinString(strSkin, zelctl::MissingPiece::Empty) <= 0) return;
    const SIZE row = m_skin->Size(kRowMiddle);
    if (row.cy > 0) m_nItemHeight = row.cy;
    UpdataScrollBar();
    if (::IsWindow(m_hWnd)) Invalidate();
}

int CZELListCtrl::GetHeadingHeight() const {
    const SIZE s = m_skin->Size(kHeadMiddle);
    return s.cy > 0 ? s.cy : kDefaultHeading;
}

CRect CZELListCtrl::GetHeadingRect() const {
    return CRect(m_rcList.left, m_rcList.top - GetHeadingHeight(), m_rcList.right, m_rcList.top);
}

CRect CZELListCtrl::HeadingHitRect() const {
    CRect client;
    GetClientRect(&client);
    return CRect(client.left, client.top, client.right, GetHeadingRect().bottom);
}

void CZELListCtrl::Layout(bool barShown) {
    CRect client;
    GetClientRect(&client);
    m_rcList.SetRect(client.left + m_nMarginX, client.top + m_nMarginY + GetHeadingHeight(),
                     client.right - m_nMarginX, client.bottom - m_nMarginY);
    if (barShown) m_rcList.right -= ScrollBarWidth();
    if (m_rcList.bottom < m_rcList.top) m_rcList.bottom = m_rcList.top;
}

// The bar stands beside the rows, under the headings, inside the margins.
void CZELListCtrl::PlaceBar() {
    if (!::IsWindow(m_hWnd) || !::IsWindow(m_pScrollBar->m_hWnd)) return;
    CRect client;
    GetClientRect(&client);
    const int width = ScrollBarWidth();
    const int top = client.top + m_nMarginY + GetHeadingHeight();
    const CRect want(client.right - m_nMarginX - width, top, client.right - m_nMarginX,
                     std::max<int>(top, client.bottom - m_nMarginY));
    CRect now;
    m_pScrollBar->GetWindowRect(&now);
    ScreenToClient(&now);
    if (now != want) m_pScrollBar->MoveWindow(want.left, want.top, want.Width(), want.Height(), TRUE);
    m_rcScroll = want;
}

void CZELListCtrl::UpdataScrollBar() {
    if (!::IsWindow(m_hWnd)) return;
    Layout(false);
    if (!::IsWindow(m_pScrollBar->m_hWnd)) return;
    PlaceBar();
    const int visible = m_nItemHeight > 0 ? m_rcList.Height() / m_nItemHeight : 0;
    const int excess = m_nItemCount - visible;
    if (excess > 0) {
        m_pScrollBar->SetScrollRange(0, excess);
        m_pScrollBar->SetPagesize(std::max(visible, 1));
        m_pScrollBar->ShowWindow(SW_SHOW);
        Layout(true);
    } else {
        m_pScrollBar->SetScrollRange(0, 1);
        m_pScrollBar->SetScrollPos(0, TRUE);
        m_pScrollBar->ShowWindow(SW_HIDE);
    }
}

void CZELListCtrl::OnSize(UINT nType, int cx, int cy) {
    CListData::OnSize(nType, cx, cy);
    UpdataScrollBar();
}

void CZELListCtrl::OnDestroy() {
    m_nPressedColumn = -1;
    m_kept->Release();
    CListData::OnDestroy();
}

// ---- columns --------------------------------------------------------------------------------

int CZELListCtrl::InsertColumn(int nCol, LPCTSTR lpszHeading, int nFormat, int nWidth, int) {
    if (nCol < 0 || m_nItemCount > 0) return -1;
    nCol = std::min(nCol, m_nColumnCount);
    auto* column = new ListColumn;
    column->strHeading = lpszHeading ? lpszHeading : L"";
    column->nWidth = nWidth;
    ListColumn** link = &m_pColumns;
    for (int i = 0; i < nCol && *link; ++i) link = &(*link)->pNext;
    column->pNext = *link;
    *link = column;
    ++m_nColumnCount;
    m_formats.insert(m_formats.begin() + nCol, nFormat);
    if (::IsWindow(m_hWnd)) Invalidate();
    return nCol;
}

int CZELListCtrl::InsertColumn(int nCol, const LVCOLUMNW* pColumn) {
    if (!pColumn) return -1;
    return InsertColumn(nCol, (pColumn->mask & LVCF_TEXT) ? pColumn->pszText : nullptr,
                        (pColumn->mask & LVCF_FMT) ? pColumn->fmt : LVCFMT_LEFT,
                        (pColumn->mask & LVCF_WIDTH) ? pColumn->cx : -1);
}

int CZELListCtrl::DeleteColumn(int nCol) {
    if (!CListData::DeleteColumn(nCol)) return 0;  // the base counts the column out
    if (nCol < static_cast<int>(m_formats.size())) m_formats.erase(m_formats.begin() + nCol);
    return 1;
}

BOOL CZELListCtrl::SetColumnWidth(int nCol, int cx) {
    if (nCol < 0 || nCol >= m_nColumnCount) return FALSE;
    CListData::SetColumnWidth(nCol, cx);
    return TRUE;
}

int CZELListCtrl::GetColumnWidth(int nCol) { return CListData::GetColumnWidth(nCol); }

// Column edges are summed in 64 bits: a host may give any width.
int CZELListCtrl::ColumnAtX(int x) const {
    long long left = m_rcList.left;
    int k = 0;
    for (const ListColumn* c = m_pColumns; c && left < m_rcList.right; c = c->pNext, ++k) {
        const long long right = left + std::max(c->nWidth, 0);
        if (x >= left && x < right && x < m_rcList.right) return k;
        left = right;
    }
    return -1;
}

// ---- rows and selection -------------------------------------------------------------------------

int CZELListCtrl::InsertItem(int nItem, LPCTSTR lpszItem) { return CListData::InsertItem(nItem, lpszItem, true); }

int CZELListCtrl::SetCurSel(long n) {
    const int result = CListData::SetCurSel(n);
    if (::IsWindow(m_hWnd)) Invalidate();
    return result;
}

BOOL CZELListCtrl::EnsureVisible(int nItem, BOOL bPartialOK) {
    if (nItem < 0 || nItem >= m_nItemCount || m_nItemHeight <= 0) return FALSE;
    if (!::IsWindow(m_hWnd) || !::IsWindow(m_pScrollBar->m_hWnd)) return TRUE;
    const int first = ScrollPos();
    const int whole = m_rcList.Height() / m_nItemHeight;
    const bool partShown = m_rcList.Height() % m_nItemHeight != 0;
    int target = first;
    if (nItem < first)
        target = nItem;
    else if (nItem >= first + whole && !(bPartialOK && partShown && nItem == first + whole))
        target = nItem - std::max(whole, 1) + 1;
    if (target != first) {
        long lo = 0, hi = 0;
        m_pScrollBar->GetRange(lo, hi);
        m_pScrollBar->SetScrollPos(std::clamp<long>(target, lo, hi), TRUE);
        if (::IsWindow(m_hWnd)) Invalidate();
    }
    return TRUE;
}

// ---- input ---------------------------------------------------------------------------------------

void CZELListCtrl::OnLButtonDown(UINT nFlags, CPoint point) {
    if (!HeadingHitRect().PtInRect(point)) {
        CListData::OnLButtonDown(nFlags, point);
        return;
    }
    if (!zelctl::ForwardPointer(*this, WM_LBUTTONDOWN, nFlags, point, zelctl::PointIn::Parent)) return;
    m_nPressedColumn = ColumnAtX(point.x);
    if (m_nPressedColumn < 0) return;
    SetCapture();
    Invalidate();
}

void CZELListCtrl::OnLButtonUp(UINT nFlags, CPoint point) {
    if (m_nPressedColumn < 0) {
        CListData::OnLButtonUp(nFlags, point);
        return;
    }
    const int column = m_nPressedColumn;
    m_nPressedColumn = -1;
    if (::GetCapture() == m_hWnd) ::ReleaseCapture();
    Invalidate();
    if (!HeadingHitRect().PtInRect(point) || ColumnAtX(point.x) != column) return;
    NMLISTVIEW nm{};
    nm.hdr.hwndFrom = m_hWnd;
    nm.hdr.idFrom = static_cast<UINT_PTR>(::GetWindowLongW(m_hWnd, GWL_ID));
    nm.hdr.code = LVN_COLUMNCLICK;
    nm.iItem = -1;
    nm.iSubItem = column;
    nm.ptAction = point;
    zelctl::NotifyParent(*this, WM_NOTIFY, nm.hdr.idFrom, reinterpret_cast<LPARAM>(&nm));
}

// ---- painting -------------------------------------------------------------------------------------

void CZELListCtrl::DrawInterface(HDC hdc) {
    sl::ListFrame frame(*this, hdc, m_hBkBitmap, Canvas());
    const CRect& client = frame.client();
    HDC dc = frame.dc();

    // The rows as this paint lays them out, before anything is drawn: what they show
    // decides what of the kept canvas is drawn again.
    struct Row {
        int index;
        CRect rc;  // cut at the list's bottom; everything the row draws is clipped to it
    };
    std::vector<Row> rows;
    int y = m_rcList.top;
    for (int i = std::max(0, ScrollPos()); i < m_nItemCount && m_nItemHeight > 0 && y < m_rcList.bottom; ++i) {
        if (!m_ppRows[i]) break;
        const int bottom = std::min<int>(y + m_nItemHeight, m_rcList.bottom);
        rows.push_back(Row{i, CRect(m_rcList.left, y, m_rcList.right, bottom)});
        y += m_nItemHeight;
    }
    const CRect band = GetHeadingRect();
    sl::PictureKey layout;
    layout << client << m_rcList << band << m_nItemHeight << m_nPressedColumn << m_fontRow->get()
           << m_fontHeading->get();
    for (HBITMAP image : m_hBkBitmap) layout << image;
    for (int k = 0; k < kPieces; ++k) layout << (*m_skin)[k];
    for (const ListColumn* c = m_pColumns; c; c = c->pNext) layout << c->nWidth << c->strHeading;
    for (int format : m_formats) layout << format;
    m_kept->Begin(hdc, client, !frame.reused(), std::move(layout));
    for (const Row& row : rows) {
        const ListCell* head = m_ppRows[row.index];
        sl::PictureKey key;
        key << head->nMark << (row.index == m_nCurSel);
        for (const ListCell* cell = head; cell; cell = cell->pNextCell) key << cell->strText;
        m_kept->Row(CRect(client.left, row.rc.top, client.right, row.rc.bottom), std::move(key));
        if (row.index == m_nCurSel) m_rcClick = row.rc;
    }
    if (m_kept->Clip(dc)) {
        // Rows whose pieces cover them hide the frame: it is not drawn under them.
        std::vector<RECT> covered;
        for (const Row& row : rows)
            if (m_kept->Draws(dc, row.rc) && RowCovered(row.index, row.rc)) covered.push_back(row.rc);
        frame.PaintFrame(covered);
        if (m_kept->Draws(dc, band)) PaintHeadings(frame, band);
        const HGDIOBJ oldFont =
            ::SelectObject(dc, m_fontRow->get() ? m_fontRow->get() : ::GetCurrentObject(dc, OBJ_FONT));
        for (const Row& row : rows)
            if (m_kept->Draws(dc, row.rc)) PaintRow(frame, row.index, row.rc);
        ::SelectObject(dc, oldFont);
    }
    m_kept->End();
    frame.Present();
}

// Headings, clipped at the rows' right edge.
void CZELListCtrl::PaintHeadings(zelctl::OffscreenCanvas& frame, const CRect& band) {
    HDC dc = frame.dc();
    const zelctl::ThreePieceStyle across{};
    const zelctl::SkinSet& skin = *m_skin;
    long long x = band.left;
    int k = 0;
    for (const ListColumn* c = m_pColumns; c && x < band.right; c = c->pNext, ++k) {
        const CRect cell(static_cast<int>(x), band.top,
                         static_cast<int>(std::min<long long>(x + std::max(c->nWidth, 0), band.right)), band.bottom);
        x += std::max(c->nWidth, 0);
        if (cell.IsRectEmpty()) continue;
        const bool down = k == m_nPressedColumn;
        const int base = down ? kHeadDownLeft : kHeadLeft;
        zelctl::PaintThreePiece(frame, cell, {skin[base], skin[base + 1], skin[base + 2]}, across);
        CString heading = c->strHeading;
        const HGDIOBJ old =
            ::SelectObject(dc, m_fontHeading->get() ? m_fontHeading->get() : ::GetCurrentObject(dc, OBJ_FONT));
        CRect text(cell.left + kTextInset, cell.top, cell.right - kTextInset, cell.bottom);
        ForMartLeng(dc, heading, text.Width());
        ::SetTextColor(dc, kText);
        ::DrawTextW(dc, heading, heading.GetLength(), &text,
                    sl::kCentredLine | AlignmentOf(k < static_cast<int>(m_formats.size()) ? m_formats[k] : 0));
        ::SelectObject(dc, old);
    }
}

int CZELListCtrl::RowBase(int i) const {
    return i == m_nCurSel ? kCurLeft : m_ppRows[i]->nMark == 1 ? kMarkLeft : kRowLeft;
}

// Whether row i's three pieces write every pixel of `row`: each cap copied at its width
// needs the row's height, and the middle is stretched whole over what the caps leave.
bool CZELListCtrl::RowCovered(int i, const CRect& row) const {
    const int base = RowBase(i);
    const SIZE first = m_skin->Size(base), middle = m_skin->Size(base + 1), last = m_skin->Size(base + 2);
    if (first.cx <= 0 || last.cx <= 0 || first.cy < row.Height() || last.cy < row.Height()) return false;
    const long long between = static_cast<long long>(row.Width()) - first.cx - last.cx;
    return between <= 0 || (middle.cx > 0 && middle.cy > 0);
}

// Row i in `row` (cut at the list's bottom), in the row font the canvas holds.
void CZELListCtrl::PaintRow(zelctl::OffscreenCanvas& frame, int i, const CRect& row) {
    HDC dc = frame.dc();
    const zelctl::ThreePieceStyle across{};
    const zelctl::SkinSet& skin = *m_skin;
    const ListCell* head = m_ppRows[i];
    const int y = row.top;
    const bool current = i == m_nCurSel;
    const int base = RowBase(i);
    const zelctl::ThreePieceSkin pieces{skin[base], skin[base + 1], skin[base + 2]};
    if (RowCovered(i, row)) {
        // Every row of a kind looks alike: drawn once, then copied. A cut row's middle is
        // squeezed, so it is drawn at its place.
        sl::PictureKey kind;
        kind << pieces.first << pieces.middle << pieces.last;
        m_kept->backdrops().Paint(dc, row, m_nItemHeight, kind, false, [&](HDC target, const RECT& area) {
            if (target == dc) {
                zelctl::PaintThreePiece(frame, area, pieces, across);
                return;
            }
            zelctl::OffscreenCanvas picture(target, area.right - area.left, area.bottom - area.top);
            zelctl::PaintThreePiece(picture, area, pieces, across);
            ::BitBlt(target, area.left, area.top, picture.width(), picture.height(), picture.dc(), 0, 0, SRCCOPY);
        });
    } else {
        zelctl::PaintThreePiece(frame, row, pieces, across);
    }
    ::SetTextColor(dc, current ? kCurrentText : kText);
    // The texts are clipped at the row's bottom (a cut last row) and the list's right,
    // within whatever clip the canvas has (the part being repainted).
    const int unclipped = ::SaveDC(dc);
    ::IntersectClipRect(dc, row.left, row.top, row.right, row.bottom);
    long long left = m_rcList.left;
    int c = 0;
    const ListColumn* column = m_pColumns;
    for (const ListCell* cell = head; cell && column && left < m_rcList.right;
         cell = cell->pNextCell, column = column->pNext, ++c) {
        const int width = std::max(column->nWidth, 0);
        // A column that passes the right edge aligns and shortens within what shows.
        const int cellRight = static_cast<int>(std::min<long long>(left + width, m_rcList.right));
        CRect text(static_cast<int>(left) + kTextInset, y, cellRight - kTextInset, y + m_nItemHeight);
        left += width;
        if (cell->strText.IsEmpty() || text.Width() <= 0) continue;
        CString s = cell->strText;
        ForMartLeng(dc, s, text.Width());
        ::DrawTextW(dc, s, s.GetLength(), &text,
                    sl::kCentredLine | AlignmentOf(c < static_cast<int>(m_formats.size()) ? m_formats[c] : 0));
    }
    ::RestoreDC(dc, unclipped);
}
