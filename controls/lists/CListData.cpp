#include "CListData.h"

#include <aygshell.h>

#include <algorithm>

#include "ListClick.h"
#include "OffscreenCanvas.h"
#include "ListRowStore.h"
#include "Notify.h"
#include "RowGeometry.h"
#include "SkinList.h"
#include "SkinText.h"

namespace {

constexpr int kScrollBarId = 9001;
constexpr int kInitialRows = 100;

// GetDoubleClickTime, read once per process on the first row click.
UINT CachedDoubleClickTime() {
    static const UINT ms = ::GetDoubleClickTime();
    return ms;
}

}  // namespace

BEGIN_MESSAGE_MAP(CListData, CSkinWnd)
ON_WM_PAINT()
ON_WM_TIMER()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_SIZE()
ON_WM_DESTROY()
ON_WM_VSCROLL()
ON_WM_LBUTTONDBLCLK()
END_MESSAGE_MAP()

CListData::CListData()
    : m_pScrollBar(new CZELScrollbar),
      m_nItemCount(0),
      m_nColumnCount(0),
      m_nRowCapacity(kInitialRows),
      m_nCurSel(-1),
      m_nExtra(2),
      m_nMarginX(3),
      m_nMarginY(3),
      m_nItemHeight(24),
      m_nTextSpace(4),
      m_pFirstRow(nullptr),
      m_ppRows(zelctl::lists::RowStore::AllocateIndex(kInitialRows)),
      m_pColumns(nullptr),
      m_bClickArmed(0),
      m_rcClick(0, 0, 0, 0),
      m_rcScroll(0, 0, 0, 0),
      m_nReserved(0),
      m_nImageCount(0),
      m_rcList(0, 0, 0, 0),
      m_hBkBitmap{nullptr, nullptr, nullptr, nullptr} {}

CListData::~CListData() {
    DeleteAllObject();
    delete m_pScrollBar;
    m_pScrollBar = nullptr;
    Rows().FreeAll();
}

zelctl::lists::RowStore CListData::Rows() {
    return {m_nItemCount, m_nColumnCount, m_nRowCapacity, m_pFirstRow, m_ppRows, m_pColumns, m_orphans};
}

void CListData::PlaceBarAtRightEdge() {
    if (!::IsWindow(m_hWnd) || !m_pScrollBar || !::IsWindow(m_pScrollBar->m_hWnd)) return;
    CRect client;
    GetClientRect(&client);
    const int barWidth = ScrollBarWidth();
    m_pScrollBar->MoveWindow(client.right - barWidth - client.left, 0, barWidth, client.Height(), TRUE);
}

int CListData::ScrollBarWidth() const {
    if (!m_pScrollBar || !::IsWindow(m_pScrollBar->m_hWnd)) return 0;
    CRect rc;
    m_pScrollBar->GetWindowRect(&rc);
    return rc.Width();
}

int CListData::ScrollPos() const {
    return m_pScrollBar && ::IsWindow(m_pScrollBar->m_hWnd) ? static_cast<int>(m_pScrollBar->GetScrollPos()) : 0;
}

void CListData::LoadSkin(CString, CString) {}

// ---- creation and layout ---------------------------------------------------------------------

void CListData::PreSubclassWindow() {
    CSkinWnd::PreSubclassWindow();
    if (!m_pScrollBar->Create(L"VSCrollBar", WS_CHILD | WS_VISIBLE, CRect(1, 1, 20, 100), this, kScrollBarId))
        AfxMessageBox(L"ERROR");
    CRect client;
    GetClientRect(&client);
    m_rcList = client;
    m_rcList.DeflateRect(3, 3, 3, 3);
}

void CListData::UpdataScrollBar() {
    if (!::IsWindow(m_hWnd)) return;
    CRect client;
    GetClientRect(&client);
    m_rcList = client;
    m_rcList.DeflateRect(m_nMarginX, m_nMarginY, m_nMarginX, m_nMarginY);
    if (!::IsWindow(m_pScrollBar->m_hWnd)) return;
    m_pScrollBar->GetClientRect(&m_rcScroll);
    const int barWidth = m_rcScroll.Width();
    const int visible = m_nItemHeight > 0 ? m_rcList.Height() / m_nItemHeight : 0;
    const int excess = m_nItemCount - visible;
    if (excess > 0) {
        m_rcList.right -= barWidth;
        m_pScrollBar->SetScrollRange(0, excess);
        // The page is counted over the whole client height, margins included.
        m_pScrollBar->SetPagesize(m_nItemHeight > 0 ? client.Height() / m_nItemHeight : 0);
        m_pScrollBar->ShowWindow(SW_SHOW);
        m_rcScroll.SetRect(client.right - barWidth, client.top, client.right, client.bottom);
    } else {
        m_pScrollBar->SetScrollRange(0, 1);
        m_pScrollBar->SetScrollPos(0, TRUE);
        m_pScrollBar->ShowWindow(SW_HIDE);
    }
}

// OnSize and a width change by MoveWindow keep the bar inside the margins; LoadScrollBitmap
// puts it 1 pixel from the edge instead. Both placements are the device's.
void CListData::PlaceScrollBarInMargins() {
    if (!::IsWindow(m_hWnd) || !::IsWindow(m_pScrollBar->m_hWnd)) return;
    CRect client;
    GetClientRect(&client);
    const int barWidth = ScrollBarWidth();
    m_pScrollBar->MoveWindow(client.Width() - barWidth - m_nMarginX, m_nMarginY, barWidth,
                             client.Height() - 2 * m_nMarginY, TRUE);
}

void CListData::PlaceScrollBarAtEdge() {
    if (!::IsWindow(m_hWnd) || !::IsWindow(m_pScrollBar->m_hWnd)) return;
    CRect client;
    GetClientRect(&client);
    const int barWidth = ScrollBarWidth();
    m_pScrollBar->MoveWindow(client.Width() - barWidth - 1, 1, barWidth, client.Height() - 2, TRUE);
    m_pScrollBar->GetWindowRect(&m_rcScroll);
    ScreenToClient(&m_rcScroll);
    UpdataScrollBar();
}

void CListData::MoveWindow(CRect rect, BOOL bRepaint) {
    MoveWindow(rect.left, rect.top, rect.Width(), rect.Height(), bRepaint);
}

void CListData::MoveWindow(int x, int y, int cx, int cy, BOOL bRepaint) {
    if (!::IsWindow(m_hWnd)) return;
    CRect before;
    GetClientRect(&before);
    CWnd::MoveWindow(x, y, cx, cy, bRepaint);
    CRect after;
    GetClientRect(&after);
    if (after.Width() != before.Width()) {
        PlaceScrollBarInMargins();
        UpdataScrollBar();
    }
}

int CListData::GetItemHeight() { return m_nItemHeight; }

int CListData::GettbInterval() { return 2 * m_nMarginY; }

// ---- rows --------------------------------------------------------------------------------

int CListData::FinishInsert(int result, bool wasEmpty, bool update) {
    if (result < 0) return result;
    // The first row of an empty list leaves the bar alone: one row always fits.
    if (update && !wasEmpty) UpdataScrollBar();
    if (update && ::IsWindow(m_hWnd)) Invalidate();
    return result;
}

int CListData::InsertItem(const LVITEMW* pItem) {
    if (!pItem) return -1;
    bool wasEmpty = false;
    const int result = Rows().InsertItem(*pItem, wasEmpty);
    return FinishInsert(result, wasEmpty, true);
}

int CListData::InsertItem(int nItem, LPCTSTR lpszText, bool bUpdate) {
    bool wasEmpty = false;
    const int result = Rows().InsertRow(nItem, lpszText ? lpszText : L"", wasEmpty);
    if (result < 0 || !bUpdate) return result;
    UpdataScrollBar();
    if (::IsWindow(m_hWnd)) Invalidate();
    return result;
}

int CListData::InsertItem(int nItem, LPCTSTR lpszText, int nImage) {
    bool wasEmpty = false;
    const int result = Rows().InsertRow(nItem, lpszText ? lpszText : L"", wasEmpty);
    if (result < 0) return result;
    // A negative image would index outside every image table: it is refused like one
    // past the count.
    if (nImage >= 0 && nImage < m_nImageCount) {
        m_ppRows[result]->nImage = nImage;
        NKDbgPrintfW(L"insertimage = %d\n", nImage);
    }
    UpdataScrollBar();
    if (::IsWindow(m_hWnd)) Invalidate();
    return result;
}

int CListData::SetItemText(int nItem, int nSubItem, LPCTSTR lpszText) {
    if (!Rows().SetText(nItem, nSubItem, lpszText)) return 0;
    if (::IsWindow(m_hWnd)) Invalidate();
    return 1;
}

// The last cell of a row (index m_nColumnCount) is writable but not readable here.
CString CListData::GetItemText(int nItem, int nSubItem) { return Rows().Text(nItem, nSubItem); }

int CListData::GetItemCount() { return m_nItemCount; }

int CListData::DelOneItem(int nItem) { return Rows().DeleteRow(nItem, m_nCurSel); }

int CListData::DeleteItem(int nItem) {
    if (!DelOneItem(nItem)) return 0;
    UpdataScrollBar();
    if (::IsWindow(m_hWnd)) Invalidate();
    return 1;
}

int CListData::DeleteAllItems() {
    Rows().DeleteAllRows(m_nCurSel);
    UpdataScrollBar();
    if (::IsWindow(m_hWnd)) Invalidate();
    return 1;
}

// ---- columns -------------------------------------------------------------------------------

int CListData::InsertColumn(int nCol, const LVCOLUMNW* pColumn) {
    if (!pColumn) return -1;
    return Rows().InsertColumn(nCol, *pColumn);
}

int CListData::InsertColumn(int nCol, LPCTSTR lpszHeading, int, int nWidth, int) {
    return Rows().InsertColumnCuttingRows(nCol, lpszHeading, nWidth);
}

int CListData::DeleteColumn(int nCol) {
    if (nCol >= m_nColumnCount || nCol < 0 || m_nColumnCount < 1 || !m_pColumns) return 0;
    Rows().RemoveColumn(nCol);
    if (::IsWindow(m_hWnd)) Invalidate();
    return 1;
}

// A negative column is not refused: the walk stays at the first column.
int CListData::SetColumnWidth(int nCol, int cx) {
    if (!Rows().SetColumnWidth(nCol, cx)) return 0;
    if (::IsWindow(m_hWnd)) Invalidate();
    return 1;
}

int CListData::GetColumnWidth(int nCol) { return Rows().ColumnWidth(nCol); }

// ---- selection -------------------------------------------------------------------------------

int CListData::SetCurSel(long n) {
    if (n >= 0 && n < m_nItemCount) m_nCurSel = static_cast<int>(n);
    return m_nCurSel;
}

int CListData::GetCurSel() { return m_nCurSel; }

int CListData::SetSelectionMark(int n) {
    Rows().MoveMark(n);
    if (::IsWindow(m_hWnd)) Invalidate();
    return 0;
}

int CListData::GetSelect() { return Rows().MarkedRow(); }

// ---- scrolling -------------------------------------------------------------------------------

void CListData::ScrollTo(long pos) {
    if (!::IsWindow(m_hWnd) || !::IsWindow(m_pScrollBar->m_hWnd)) return;
    long lo = 0, hi = 0;
    m_pScrollBar->GetRange(lo, hi);
    CRect client;
    GetClientRect(&client);
    const long long needed = static_cast<long long>(m_nItemHeight) * m_nItemCount + 2LL * m_nMarginY;
    if (needed <= client.Height()) return;
    m_pScrollBar->SetScrollPos(std::clamp(pos, lo, hi), TRUE);
}

// ---- skins ---------------------------------------------------------------------------------

void CListData::LoadScrollBitmap(CString strThumb, CString strThumbDown, CString strTrack, CString strUp,
                                 CString strDown, CString strDownDown, CString strUpDown) {
    m_pScrollBar->LoadBitmapW(strThumb, strThumbDown, strTrack, strUp, strDown, strDownDown, strUpDown);
    PlaceScrollBarAtEdge();
}

void CListData::LoadScrollBitmap(CString strSkin, CString strReserved) {
    m_pScrollBar->LoadSkin(strSkin, strReserved);
    PlaceScrollBarAtEdge();
}

void CListData::LoadBkImage(CArray<CString, CString>& paths) {
    DeleteAllObject();
    m_canvas.reset();  // a new frame: the next paint draws the whole canvas
    if (paths.GetSize() < 4) return;
    for (int i = 0; i < 4; ++i) m_hBkBitmap[i] = zelctl::LoadSkinFile(paths[i]);
}

// The handles are deliberately left as they were: after this a LoadBkImage with fewer
// than four paths keeps the old (now dead) values, as hosts of the device see them. Dead
// handles are refused by every GDI call (each handle carries a generation), so painting
// them draws nothing and deleting them again at destruction is a harmless no-op; every
// live bitmap is deleted exactly once, here or in the destructor.
void CListData::DeleteAllObject() {
    for (HBITMAP bitmap : m_hBkBitmap)
        if (bitmap) ::DeleteObject(bitmap);
}

// ---- text -------------------------------------------------------------------------------------

void CListData::ForMartLeng(HDC hdc, CString& text, int width, int) { zelctl::ShortenWithEllipsis(hdc, text, width); }

// ---- messages ------------------------------------------------------------------------------

void CListData::OnPaint() {
    CPaintDC dc(this);
    DrawInterface(dc.GetSafeHdc());
}

void CListData::OnTimer(UINT_PTR nIDEvent) {
    if (nIDEvent == kClickTimer) {
        KillTimer(kClickTimer);
        m_bClickArmed = 0;
    }
    Default();
}

void CListData::OnLButtonDown(UINT nFlags, CPoint point) {
    if (!zelctl::ForwardPointer(*this, WM_LBUTTONDOWN, nFlags, point, zelctl::PointIn::Parent)) return;
    Default();
    if (m_rcScroll.PtInRect(point) && m_pScrollBar->IsWindowVisible()) {
        m_bClickArmed = 0;
        return;
    }
    SetFocus();
    const zelctl::RowGeometry rows{m_rcList, m_nItemHeight, ScrollPos(), m_nItemCount};
    // Without a row height no row is under the point: it counts as below the last row.
    const int previous = m_nCurSel;
    m_nCurSel = m_nItemHeight > 0 ? rows.RowAtY(point.y) : m_nItemCount;
    // Only the rows whose look changes: the one left and the one taken (the last row when
    // the press is below the rows). Every derived list draws a row inside its own band.
    if (m_nItemHeight > 0) {
        for (int row : {previous, std::min(m_nCurSel, m_nItemCount - 1)}) {
            CRect band(rows.RowRect(row));
            band.IntersectRect(band, m_rcList);
            CRect client;
            GetClientRect(&client);
            band.left = client.left;
            band.right = client.right;
            if (!band.IsRectEmpty()) InvalidateRect(band, TRUE);
        }
    } else {
        InvalidateRect(nullptr, TRUE);
    }
    if (m_nCurSel >= m_nItemCount) {
        m_nCurSel = m_nItemCount - 1;
        KillTimer(kClickTimer);
        m_bClickArmed = 0;
        return;
    }
    zelctl::lists::PressRow(*this, m_bClickArmed, m_rcClick, kClickTimer, CachedDoubleClickTime(), nFlags, point);
}

// The release leaves the arm set: with the timer gone, the next press inside m_rcClick is
// a double click however late it comes. The device behaves so.
void CListData::OnLButtonUp(UINT, CPoint) {
    KillTimer(kClickTimer);
    Default();
}

void CListData::OnMouseMove(UINT, CPoint) { Default(); }

void CListData::OnLButtonDblClk(UINT, CPoint) {
    KillTimer(kClickTimer);
    m_bClickArmed = 0;
    Default();
    if (!zelctl::NotifyNmhdr(*this, NM_DBLCLK)) return;
    Default();  // a second time, as the device does
}

void CListData::OnSize(UINT, int, int) {
    Default();
    NKDbgPrintfW(L"listsize \n");
    PlaceScrollBarInMargins();
}

void CListData::OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar) {
    Invalidate();
    CSkinWnd::OnVScroll(nSBCode, nPos, pScrollBar);
}

zelctl::CanvasStore& CListData::Canvas() {
    if (!m_canvas) m_canvas = std::make_unique<zelctl::CanvasStore>();
    return *m_canvas;
}

void CListData::OnDestroy() {
    KillTimer(kClickTimer);
    m_canvas.reset();
    CSkinWnd::OnDestroy();
}
