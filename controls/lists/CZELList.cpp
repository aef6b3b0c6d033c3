#include "CZELList.h"

#include <algorithm>
#include <array>
#include <climits>
#include <memory>
#include <vector>

#include "ListClick.h"
#include "ListRowStore.h"
#include "Notify.h"
#include "OffscreenCanvas.h"
#include "RowGeometry.h"
#include "ControlFont.h"
#include "SkinList.h"
#include "SkinSet.h"
#include "SkinText.h"

namespace {

// Row pitches, intervals and margins are distances inside a window, which is at most 32767
// pixels across; larger ones are held at that, so the row arithmetic stays inside an int.
int PixelDistance(long long v) { return static_cast<int>(std::clamp<long long>(v, -32767, 32767)); }

constexpr int kScrollBarId = 9001;
constexpr int kInitialRows = 100;
constexpr int kPlayColumn = 40;       // the play layout's second column
constexpr UINT kRowText = DT_SINGLELINE | DT_VCENTER;             // 0x24
constexpr UINT kCentredText = DT_SINGLELINE | DT_VCENTER | DT_CENTER;  // 0x25
constexpr int kDefaultFontHeights[4] = {30, 28, 17, 13};

// This list's own cache of the double-click time, read on the first row click.
UINT ListDoubleClickTime() {
    static const UINT ms = ::GetDoubleClickTime();
    return ms;
}

// The list's own pieces of a row, selected or not: left cap, middle, right cap.
std::array<HBITMAP, 3> SkinRow(const zelctl::SkinSet& skin, bool selected) {
    const size_t first = selected ? CZELList::kSelLeft : CZELList::kNormalLeft;
    return {skin[first], skin[first + 1], skin[first + 2]};
}

// DrawTextW with a transparent background into `rc` (the DC's font and colour).
void RowText(HDC dc, const CString& text, RECT rc, UINT format) {
    ::DrawTextW(dc, text, text.GetLength(), &rc, format);
}

}  // namespace

struct CZELList::Canvas : zelctl::OffscreenCanvas {
    using OffscreenCanvas::OffscreenCanvas;
};

BEGIN_MESSAGE_MAP(CZELList, CWnd)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_WM_TIMER()
ON_WM_KILLFOCUS()
ON_CONTROL_REFLECT(BN_DOUBLECLICKED, &CZELList::OnDoubleclicked)
ON_WM_VSCROLL()
ON_WM_MOVE()
ON_WM_SIZE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELList::CZELList()
    : m_pScrollBar(new CZELScrollbar),
      m_nItemCount(0),
      m_nColumnCount(0),
      m_nRowCapacity(kInitialRows),
      m_nCurSel(-1),
      m_nRowInterval(8),
      m_nMarginX(8),
      m_nItemHeight(24),
      m_nScrollInter(4),
      m_pFirstRow(nullptr),
      m_ppRows(zelctl::lists::RowStore::AllocateIndex(kInitialRows)),
      m_pColumns(nullptr),
      m_bClickArmed(0),
      m_rcClick(0, 0, 0, 0),
      m_rcScroll(0, 0, 0, 0),
      m_pImages(nullptr),
      m_nImageCount(0),
      m_bPlayStyle(0),
      m_nStyle(0),
      m_nMarginY(4),
      m_clrBack(RGB(0xE7, 0xED, 0xF9)),   // 0x00F9EDE7
      m_clrFrame(RGB(0x64, 0x8C, 0xD8)),  // 0x00D88C64
      m_clrFill(RGB(0xFF, 0xFF, 0xF9)),   // 0x00F9FFFF
      m_rcList(0, 0, 0, 0),
      m_clrText(RGB(0, 0, 0)),
      m_clrSelText(RGB(255, 255, 255)) {
    m_skin = std::make_unique<zelctl::SkinSet>(kPieceCount);
    m_hFonts = std::make_unique<zelctl::OwnedFont[]>(4);
    for (int i = 0; i < 4; ++i) m_hFonts[i].Create(kDefaultFontHeights[i]);
}

CZELList::~CZELList() {
    ClearImages();
    delete m_pScrollBar;
    m_pScrollBar = nullptr;
    Rows().FreeAll();
}

zelctl::lists::RowStore CZELList::Rows() {
    return {m_nItemCount, m_nColumnCount, m_nRowCapacity, m_pFirstRow, m_ppRows, m_pColumns, m_orphans};
}

bool CZELList::HasBar() const { return m_pScrollBar && ::IsWindow(m_pScrollBar->m_hWnd); }

int CZELList::ScrollBarWidth() const {
    if (!HasBar()) return 0;
    CRect rc;
    m_pScrollBar->GetWindowRect(&rc);
    return rc.Width();
}

int CZELList::ScrollPos() const { return HasBar() ? static_cast<int>(m_pScrollBar->GetScrollPos()) : 0; }

void CZELList::Repaint() {
    m_bStaleAll = true;
    if (::IsWindow(m_hWnd)) Invalidate();
}

// ---- creation ------------------------------------------------------------------------------

BOOL CZELList::Create(LPCWSTR lpszClassName, LPCWSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                      CWnd* pParentWnd, UINT nID, void* pContext) {
    return CWnd::Create(lpszClassName, lpszWindowName, dwStyle, rect, pParentWnd, nID, pContext);
}

// The class takes CS_DBLCLKS, so a quick second tap arrives as WM_LBUTTONDBLCLK itself.
void CZELList::PreSubclassWindow() {
    CWnd::PreSubclassWindow();
    ::SetClassLongW(m_hWnd, GCL_STYLE, ::GetClassLongW(m_hWnd, GCL_STYLE) | CS_DBLCLKS);
    if (!m_pScrollBar->Create(L"VSCrollBar", WS_CHILD | WS_VISIBLE, CRect(1, 1, 20, 100), this, kScrollBarId))
        AfxMessageBox(L"ERROR");
    CRect client;
    GetClientRect(&client);
    m_rcList = client;
    m_rcList.DeflateRect(2, 2, 2, 2);
}

// ---- rows ------------------------------------------------------------------------------------

int CZELList::FinishInsert(int result) {
    if (result < 0) return result;
    UpdataScrollBar();
    Repaint();
    return result;
}

int CZELList::InsertItem(const LVITEMW* pItem) {
    if (!pItem) return -1;
    bool wasEmpty = false;
    return FinishInsert(Rows().InsertItem(*pItem, wasEmpty));
}

int CZELList::InsertItem(int nItem, LPCTSTR lpszText) {
    bool wasEmpty = false;
    return FinishInsert(Rows().InsertRow(nItem, lpszText ? lpszText : L"", wasEmpty));
}

int CZELList::InsertItem(int nItem, LPCTSTR lpszText, int nImage) {
    bool wasEmpty = false;
    const int result = Rows().InsertRow(nItem, lpszText ? lpszText : L"", wasEmpty);
    if (result >= 0 && nImage >= 0 && nImage < m_nImageCount) m_ppRows[result]->nImage = nImage;
    return FinishInsert(result);
}

int CZELList::AddItem(CArray<CString, CString>& texts, int nImage) {
    if (texts.GetSize() != m_nColumnCount) return -1;
    const int row = InsertItem(GetItemCount(), texts[0], nImage);
    if (row < 0) return -1;
    for (int c = 1; c < m_nColumnCount; ++c) SetItemText(row, c, texts[c]);
    return row;
}

int CZELList::SetItemText(int nItem, int nSubItem, LPCTSTR lpszText) {
    if (!Rows().SetText(nItem, nSubItem, lpszText)) return 0;
    Repaint();
    return 1;
}

CString CZELList::GetItemText(int nItem, int nSubItem) { return Rows().Text(nItem, nSubItem); }

int CZELList::GetItemText(int, int, LPTSTR, int) { return 1; }

int CZELList::DelOneItem(int nItem) { return Rows().DeleteRow(nItem, m_nCurSel); }

int CZELList::DeleteItem(int nItem) {
    m_bStaleAll = true;
    if (!DelOneItem(nItem)) return 0;
    UpdataScrollBar();
    Repaint();
    return 1;
}

int CZELList::DeleteAllItems() {
    m_bStaleAll = true;
    Rows().DeleteAllRows(m_nCurSel);
    UpdataScrollBar();
    Repaint();
    return 1;
}

int CZELList::GetItemCount() { return m_nItemCount; }

int CZELList::GetItemHeight() { return m_nItemHeight; }

// ---- columns -------------------------------------------------------------------------------

int CZELList::InsertColumn(int nCol, const LVCOLUMNW* pColumn) {
    m_bStaleAll = true;
    if (!pColumn) return -1;
    return Rows().InsertColumn(nCol, *pColumn);
}

int CZELList::InsertColumn(int nCol, LPCTSTR lpszHeading, int, int nWidth, int) {
    m_bStaleAll = true;
    return Rows().InsertColumnCuttingRows(nCol, lpszHeading, nWidth);
}

int CZELList::DeleteColumn(int nCol) {
    m_bStaleAll = true;
    if (m_nStyle == 1 || m_bPlayStyle) return 0;
    if (nCol >= m_nColumnCount || nCol < 0 || m_nColumnCount < 1 || !m_pColumns) return 0;
    Rows().RemoveColumn(nCol);
    Repaint();
    return 1;
}

int CZELList::SetColumnWidth(int nCol, int cx) {
    m_bStaleAll = true;
    if (!Rows().SetColumnWidth(nCol, cx)) return 0;
    Repaint();
    return 1;
}

int CZELList::GetColumnWidth(int nCol) { return Rows().ColumnWidth(nCol); }

// The style setters reshape the column set whatever the style guards of DeleteColumn say.
void CZELList::TrimColumns(int keep) {
    m_bStaleAll = true;
    while (m_nColumnCount > keep && m_pColumns) Rows().RemoveColumn(m_nColumnCount - 1);
}

// Appends a descriptor without touching the rows' cells.
void CZELList::AppendColumn(LPCTSTR heading, int width) {
    m_bStaleAll = true;
    ++m_nColumnCount;
    Rows().LinkColumn(INT_MAX, heading, width);
}

// ---- lookups and selection -----------------------------------------------------------------

int CZELList::GetIndexByName(CString& s) {
    for (int i = 0; i < m_nItemCount; ++i)
        if (m_ppRows[i] && m_ppRows[i]->strText == s) return i;
    return -1;
}

int CZELList::GetIndexByState(CString& s) {
    for (int i = 0; i < m_nItemCount; ++i) {
        ListCell* state = m_ppRows[i] ? m_ppRows[i]->pNextCell : nullptr;
        if (!state) return -1;
        if (state->strText == s) return i;
    }
    return -1;
}

void CZELList::SetCurSel(int n) {
    m_bStaleAll = true;
    if (n >= 0 && n < m_nItemCount) m_nCurSel = n;
}

int CZELList::GetCurSel() { return m_nCurSel; }

int CZELList::SetItemState(int nItem, UINT nState, UINT) {
    if (nItem < 0 || nItem >= m_nItemCount) return 0;
    if (nState == 1) {
        const int previous = m_nCurSel;
        m_nCurSel = nItem;
        if (previous != nItem) InvalidateRows(previous, nItem);
    } else if (nState == 2) {
        m_ppRows[nItem]->nMark = 1;  // shown at the next paint: nothing is invalidated
        m_bStaleAll = true;
    }
    return 1;
}

int CZELList::SetItemState(int, LVITEMW*) { return 1; }

// Counted along the head chain from the first row ever inserted into the empty list, as
// the device does: rows inserted in front of it later are not walked.
int CZELList::GetSelectedCount() {
    int n = 0;
    for (ListCell* head = m_pFirstRow; head; head = head->pNextRow)
        if (head->nMark == 1) ++n;
    return n;
}

int CZELList::SetSelectionMark(int n) {
    Rows().MoveMark(n);
    Repaint();
    return 0;
}

int CZELList::GetSelect() { return Rows().MarkedRow(); }

// ---- styles and geometry ---------------------------------------------------------------------

void CZELList::SetSytle(int nStyle) {
    m_bStaleAll = true;
    if (nStyle < 1 || nStyle > 3) return;
    CRect client;
    if (::IsWindow(m_hWnd)) GetClientRect(&client);
    const int width = client.Width() - 2 * m_nMarginX - ScrollBarWidth();
    // Columns first, style after: in style 1 DeleteColumn would refuse to trim.
    if (m_nColumnCount >= nStyle) {
        TrimColumns(nStyle);
        SetColumnWidth(0, width);
    } else {
        TrimColumns(0);
        AppendColumn(L"name", width);
        if (nStyle == 2) AppendColumn(L"state", 0);
        if (nStyle == 3) {
            AppendColumn(L"data", 0);
            AppendColumn(L"time1", 0);
        }
    }
    m_nStyle = nStyle;
    Repaint();
}

int CZELList::SetPlayStyle(int bOn) {
    m_bStaleAll = true;
    if (!bOn) {
        m_bPlayStyle = 0;
        return 1;
    }
    CRect client;
    if (::IsWindow(m_hWnd)) GetClientRect(&client);
    const int w = client.Width();
    switch (m_nColumnCount) {
        case 0:
            AppendColumn(L"name", w - kPlayColumn);
            AppendColumn(L"Tname", kPlayColumn);
            AppendColumn(L"time", 0);
            m_bPlayStyle = 1;
            break;
        case 1:
            SetColumnWidth(0, w - kPlayColumn);
            AppendColumn(L"Tname", kPlayColumn);
            AppendColumn(L"time", 0);
            m_bPlayStyle = 1;
            break;
        case 2:
            SetColumnWidth(0, w - kPlayColumn);
            SetColumnWidth(1, kPlayColumn);
            AppendColumn(L"time", 0);
            m_bPlayStyle = 1;
            break;
        default:  // three or more: cut to three, and the layout flag stays as it was
            TrimColumns(3);
            SetColumnWidth(0, w - kPlayColumn);
            SetColumnWidth(1, kPlayColumn);
            SetColumnWidth(2, 0);
            break;
    }
    m_nRowInterval = 0;
    return 1;
}

int CZELList::SetInterval(int nRowInterval, int nMarginX, int nMarginY) {
    m_bStaleAll = true;
    nRowInterval = PixelDistance(nRowInterval);
    m_nItemHeight = PixelDistance(static_cast<long long>(m_nItemHeight) - m_nRowInterval + nRowInterval);
    m_nRowInterval = nRowInterval;
    m_nMarginX = nMarginX = PixelDistance(nMarginX);
    m_nMarginY = nMarginY = PixelDistance(nMarginY);
    if (::IsWindow(m_hWnd)) {
        CRect client;
        GetClientRect(&client);
        m_rcList.SetRect(client.left + nMarginX, client.top + nMarginY + 1, client.right - nMarginX,
                         client.bottom - nMarginY - 1);
    }
    Repaint();
    UpdataScrollBar();
    return m_nRowInterval;
}

void CZELList::SetItemHeight(int nHeight) {
    m_bStaleAll = true;
    m_nItemHeight = PixelDistance(nHeight);
    UpdataScrollBar();
    Repaint();
}

void CZELList::SetScrollInter(int n) {
    m_bStaleAll = true;
    if (n < 0) return;
    m_nScrollInter = n;
    PlaceBarForStyle();
    Repaint();
}

// Styles 2 and 3 put the bar against the right edge from 1 to the bottom - 1; the others
// 1 pixel inside it with m_nScrollInter shared above and below.
void CZELList::PlaceBarForStyle() {
    if (!::IsWindow(m_hWnd) || !HasBar()) return;
    CRect client;
    GetClientRect(&client);
    const int bw = ScrollBarWidth();
    if (m_nStyle == 2 || m_nStyle == 3)
        m_pScrollBar->MoveWindow(client.Width() - bw, 1, bw, client.Height() - 2, TRUE);
    else
        m_pScrollBar->MoveWindow(client.Width() - bw - 1, m_nScrollInter / 2, bw, client.Height() - m_nScrollInter,
                                 TRUE);
}

void CZELList::SetFontSizeAndClr(int (&heights)[4], COLORREF (&colours)[2]) {
    m_bStaleAll = true;
    for (int i = 0; i < 4; ++i) m_hFonts[i].Create(heights[i]);
    m_clrText = colours[0];
    m_clrSelText = colours[1];
}

void CZELList::ScrollTo(long pos) {
    m_bStaleAll = true;
    if (!::IsWindow(m_hWnd) || !HasBar()) return;
    long lo = 0, hi = 0;
    m_pScrollBar->GetRange(lo, hi);
    CRect client;
    GetClientRect(&client);
    if (static_cast<long long>(m_nItemHeight) * m_nItemCount <= client.Height()) return;
    m_pScrollBar->SetScrollPos(std::clamp(pos, lo, hi), TRUE);
}

// OnSize and MoveWindow: the list area by style, the bar by style, then the bar hidden
// until UpdataScrollBar shows it again. OnSize lets the bar of styles 0 and 1 reach the
// bottom edge (only half the inset is taken off); MoveWindow takes the whole inset.
void CZELList::LayOutList(bool fromSize) {
    m_bStaleAll = true;
    if (!::IsWindow(m_hWnd)) return;
    CRect client;
    GetClientRect(&client);
    const int d = m_nStyle == 1 ? m_nMarginY : m_nRowInterval / 8;
    m_rcList.SetRect(client.left + m_nMarginX, client.top + d + 1, client.right - m_nMarginX, client.bottom - d - 1);
    if (!HasBar()) return;
    const int bw = ScrollBarWidth();
    if (m_nStyle == 2 || m_nStyle == 3)
        m_pScrollBar->MoveWindow(client.Width() - bw, 1, bw, client.Height() - 2, TRUE);
    else
        m_pScrollBar->MoveWindow(client.Width() - bw - 1, m_nScrollInter / 2, bw,
                                 client.Height() - (fromSize ? m_nScrollInter / 2 : m_nScrollInter), TRUE);
    m_pScrollBar->ShowWindow(SW_HIDE);
    UpdataScrollBar();
}

void CZELList::MoveWindow(int x, int y, int cx, int cy, BOOL bRepaint) {
    m_bStaleAll = true;
    if (!::IsWindow(m_hWnd)) return;
    CWnd::MoveWindow(x, y, cx, cy, bRepaint);
    LayOutList(false);
}

void CZELList::UpdataScrollBar() {
    m_bStaleAll = true;
    if (!::IsWindow(m_hWnd) || !HasBar()) return;
    CRect client;
    GetClientRect(&client);
    m_pScrollBar->GetClientRect(&m_rcScroll);
    const int bw = m_rcScroll.Width();
    const int h = m_nItemHeight;
    const int visible = h > 0 ? m_rcList.Height() / h : 0;
    const int leftover = m_rcList.Height() - visible * h + m_nRowInterval;
    int threshold = h;
    if (m_nStyle == 0) threshold = m_skin->Size(kNormalMiddle).cy;
    if (m_nStyle == 1) threshold = m_skin->Size(kNormalLeft).cy;
    const int separator = m_skin->Size(kSeparator).cy;
    int excess = m_nItemCount - visible;
    if (leftover + separator >= threshold) --excess;  // the leftover space holds one more row
    if (excess > 0) {
        m_pScrollBar->SetScrollRange(0, excess);
        m_pScrollBar->SetPagesize(h > 0 ? client.Height() / h : 0);
        m_pScrollBar->ShowWindow(SW_SHOW);
        m_rcScroll.SetRect(client.right - bw, client.top, client.right, client.bottom);
        if (m_bPlayStyle)
            SetColumnWidth(0, client.Width() - bw - kPlayColumn);
        else if (m_nStyle >= 1)
            SetColumnWidth(0, client.Width() - 2 * m_nMarginX - bw);
    } else {
        m_pScrollBar->SetScrollRange(0, 0);  // the bar makes it 0..1 at position 0
        if (m_bPlayStyle) {
            SetColumnWidth(0, client.Width() - kPlayColumn);
        } else if (m_nStyle == 1) {
            m_pScrollBar->ShowWindow(SW_HIDE);
            SetColumnWidth(0, client.Width() - 2 * m_nMarginX);
        } else if (m_nStyle >= 2) {
            // Styles 2 and 3 keep the bar on show, disabled below.
            m_pScrollBar->ShowWindow(SW_SHOW);
            SetColumnWidth(0, client.Width() - 2 * m_nMarginX - bw);
        }
    }
    if (m_nStyle == 2 || m_nStyle == 3) m_pScrollBar->EnableWindow(excess > 0);
}

// ---- skins -----------------------------------------------------------------------------------

void CZELList::LoadScrollBitmap(UINT nThumb, UINT nThumbDown, UINT nTrack, UINT nUp, UINT nDown, UINT nDownDown,
                                UINT nUpDown, HINSTANCE hInst) {
    m_bStaleAll = true;
    m_pScrollBar->LoadBitmapW(nThumb, nThumbDown, nTrack, nUp, nDown, nDownDown, nUpDown, hInst);
    PlaceBarForStyle();
    UpdataScrollBar();
}

void CZELList::LoadNomalBmp(const UINT (&ids)[3], UINT nSeparator, HINSTANCE hInst) {
    m_skin->LoadIds({ids[0], ids[1], ids[2], nSeparator}, hInst, kNormalLeft);
    UpdataScrollBar();
    Repaint();
}

void CZELList::LoadSelectBmp(const UINT (&ids)[3], const UINT (&marks)[2], HINSTANCE hInst) {
    m_skin->LoadIds({ids[0], ids[1], ids[2], marks[0], marks[1]}, hInst, kSelLeft);
    Repaint();
}

void CZELList::LoadBitmapW(CString strLeft, CString strMiddle, CString strRight, CString strSeparator) {
    m_skin->LoadFiles({strLeft, strMiddle, strRight, strSeparator}, kNormalLeft);
    UpdataScrollBar();
    Repaint();
}

void CZELList::LoadSelBitmaps(CString strLeft, CString strMiddle, CString strRight, CString strMark,
                              CString strSelMark) {
    m_skin->LoadFiles({strLeft, strMiddle, strRight, strMark, strSelMark}, kSelLeft);
    Repaint();
}

void CZELList::LoadBkBitmap(CString strPanel) {
    m_skin->LoadFiles({strPanel}, kPanel);
    Repaint();
}

void CZELList::LoadClrBitmap(CString strListBack) {
    m_skin->LoadFiles({strListBack}, kListBack);
    Repaint();
}

void CZELList::LoadBitBmp2(CString strBadge, CString strSelBadge) {
    m_skin->LoadFiles({strBadge, strSelBadge}, kBadge);
    Repaint();
}

int CZELList::AddImage(const CString (&normal)[3], const CString (&selected)[3]) {
    auto* entry = new ImageEntry;
    entry->pieces = std::make_unique<zelctl::SkinSet>(6);
    entry->pieces->LoadFiles({normal[0], normal[1], normal[2], selected[0], selected[1], selected[2]});
    ImageEntry** tail = &m_pImages;
    while (*tail) tail = &(*tail)->pNext;
    *tail = entry;
    Repaint();
    return m_nImageCount++;
}

void CZELList::ClearImages() {
    m_bStaleAll = true;
    while (m_pImages) {
        ImageEntry* next = m_pImages->pNext;
        delete m_pImages;
        m_pImages = next;
    }
    m_nImageCount = 0;
}

void CZELList::ForMartLeng(HDC hdc, CString& text, int width, int) { zelctl::ShortenWithEllipsis(hdc, text, width); }

// ---- input -----------------------------------------------------------------------------------

void CZELList::OnLButtonDown(UINT nFlags, CPoint point) {
    SetFocus();
    if (!zelctl::ForwardPointer(*this, WM_LBUTTONDOWN, nFlags, point, zelctl::PointIn::Parent)) return;
    Default();
    if (m_rcScroll.PtInRect(point) && HasBar() && m_pScrollBar->IsWindowVisible()) {
        m_bClickArmed = 0;
        return;
    }
    const int previous = m_nCurSel;
    const zelctl::RowGeometry rows{m_rcList, m_nItemHeight, ScrollPos(), m_nItemCount};
    m_nCurSel = m_nItemHeight > 0 ? rows.RowAtY(point.y) : m_nItemCount;
    if (m_nCurSel >= m_nItemCount) {
        // Below the last row: the name list selects the last row, the name-and-state list
        // keeps its selection, the others drop it. No notification.
        m_nCurSel = m_nStyle == 1 ? m_nItemCount - 1 : m_nStyle == 2 ? previous : -1;
        // Only the rows whose look changes are repainted: the old selection and the new.
        if (m_nCurSel != previous) InvalidateRows(previous, m_nCurSel);
        KillTimer(kClickTimer);
        m_bClickArmed = 0;
        return;
    }
    if (m_nCurSel != previous) InvalidateRows(previous, m_nCurSel);
    zelctl::lists::PressRow(*this, m_bClickArmed, m_rcClick, kClickTimer, ListDoubleClickTime(), nFlags, point);
}

void CZELList::OnLButtonDblClk(UINT, CPoint) {
    KillTimer(kClickTimer);
    m_bClickArmed = 0;
    Default();
    zelctl::NotifyNmhdr(*this, NM_DBLCLK);
}

void CZELList::OnTimer(UINT_PTR nIDEvent) {
    if (nIDEvent == kClickTimer) {
        KillTimer(kClickTimer);
        m_bClickArmed = 0;
    }
    Default();
}

void CZELList::OnKillFocus(CWnd*) {
    Default();
    KillTimer(kClickTimer);
    m_bClickArmed = 0;
}

void CZELList::OnDoubleclicked() {}

BOOL CZELList::PreTranslateMessage(MSG* pMsg) {
    if (pMsg && pMsg->message == WM_KEYDOWN) {
        const int pos = ScrollPos();
        // A step that scrolls repaints the list; otherwise only the two rows change.
        const int previous = m_nCurSel;
        if (pMsg->wParam == VK_UP && m_nCurSel >= 1) {
            --m_nCurSel;
            if (m_nCurSel < pos && HasBar()) m_pScrollBar->SetScrollPos(m_nCurSel, TRUE);
            if (ScrollPos() != pos) Repaint(); else InvalidateRows(previous, m_nCurSel);
            return TRUE;
        }
        if (pMsg->wParam == VK_DOWN && m_nCurSel != -1 && m_nCurSel < m_nItemCount - 1) {
            ++m_nCurSel;
            const int whole = m_nItemHeight > 0 ? m_rcList.Height() / m_nItemHeight : 0;
            if (m_nCurSel - pos > whole && HasBar()) m_pScrollBar->SetScrollPos(pos + 1, TRUE);
            if (ScrollPos() != pos) Repaint(); else InvalidateRows(previous, m_nCurSel);
            return TRUE;
        }
    }
    return CWnd::PreTranslateMessage(pMsg);
}

void CZELList::OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar) {
    Repaint();
    CWnd::OnVScroll(nSBCode, nPos, pScrollBar);
}

void CZELList::OnMove(int, int) { Default(); }

void CZELList::OnSize(UINT, int, int) {
    Default();
    LayOutList(true);
}

void CZELList::OnDestroy() {
    KillTimer(kClickTimer);
    m_skin->ReleaseAll();
    for (int i = 0; i < 4; ++i) m_hFonts[i].Reset();
    ClearImages();
    m_canvas.reset();
    m_canvasSize = CSize(0, 0);
    CWnd::OnDestroy();
}

// ---- painting --------------------------------------------------------------------------------

// The list keeps one canvas of its client size and paints each pixel of it once: the panel
// around the list area with the list area cut out of the clip, then the list area's
// background and rows clipped to it. Only what the paint DC may draw on is painted (the
// kept pixels are right elsewhere), and a row outside that is neither laid out nor drawn.
void CZELList::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    if (!m_canvas) m_canvas = std::make_unique<zelctl::CanvasStore>();
    Canvas canvas(dc.GetSafeHdc(), client.Width(), client.Height(), *m_canvas);
    // A new bitmap takes the panel and the list area piece by piece without clearing itself
    // first. Style 1 rounds its panel's frame with RoundRect, and a shape makes a new bitmap
    // clear what is not drawn yet (the list area): that one is covered whole first.
    if (m_canvasSize != client.Size()) {
        if (m_nStyle == 1) canvas.Fill(client, m_clrBack);
        m_canvasSize = client.Size();
        m_bStaleAll = true;
    }
    // Only what is stale in the kept canvas is drawn again: a window uncovered or repainted
    // from outside (nothing of the list changed) is one blit.
    CRect todo;
    if (::GetClipBox(dc.GetSafeHdc(), &todo) == ERROR) todo = client;
    todo &= client;
    const CRect stale = m_bStaleAll ? client : m_rcStale & client;
    todo &= stale;
    if (!todo.IsRectEmpty()) {
        const COLORREF back = m_clrBack;
        ::IntersectClipRect(canvas.dc(), todo.left, todo.top, todo.right, todo.bottom);
        switch (m_nStyle) {
            case 1: Draw1(canvas); break;
            case 2: Draw2(canvas); break;
            case 3: Draw3(canvas); break;
            default: Draw(canvas); break;
        }
        if (todo == stale) {
            m_bStaleAll = false;
            m_rcStale.SetRectEmpty();
        }
        // The panel's first colour is the one sampled by the paint before: the next paint
        // draws it again in the colour sampled now.
        if (m_clrBack != back) m_bStaleAll = true;
    }
    canvas.Present();
}

int CZELList::ColumnZeroRight() { return GetColumnWidth(0); }

void CZELList::RowPieces(int row, bool selected, HBITMAP (&pieces)[3]) const {
    const int image = m_ppRows[row] ? m_ppRows[row]->nImage : -1;
    const ImageEntry* entry = nullptr;
    if (image >= 0 && image < m_nImageCount) {
        entry = m_pImages;
        for (int i = 0; i < image && entry; ++i) entry = entry->pNext;
    }
    const std::array<HBITMAP, 3> own = SkinRow(*m_skin, selected);
    for (int p = 0; p < 3; ++p) pieces[p] = entry ? (*entry->pieces)[(selected ? 3 : 0) + p] : own[p];
}

CRect CZELList::ListArea(const CRect& c) const {
    switch (m_nStyle) {
        case 1: return CRect(c.left + m_nMarginX, c.top + m_nMarginY + 1, c.right - m_nMarginX, c.bottom - m_nMarginY - 1);
        case 2:
        case 3: return CRect(c.left + m_nMarginX, c.top + 6, c.right - m_nMarginX, c.bottom - 4);
        default: {
            const int d = m_nRowInterval / 8;
            return CRect(c.left + m_nMarginX, c.top + d + 1, c.right - m_nMarginX, c.bottom - d - 1);
        }
    }
}

long long CZELList::RowTop(long long k, const CRect& listArea) const {
    const long long h = m_nItemHeight;
    switch (m_nStyle) {
        case 2: return (2 * m_nRowInterval) / 5 + k * h + listArea.top - 1;
        case 3: return k * h + (2 * m_nRowInterval) / 5;
        default: return k * h;
    }
}

// Everything a row draws, per style, as the Draw functions place it: the three pieces at
// the row's top, the text boxes, style 1's separator, style 2's mark, style 3's badge.
CZELList::RowReach CZELList::Reach() const {
    long long lo = 0, hi = 0;
    auto span = [&](long long y, long long h) {
        if (h <= 0) return;
        lo = std::min(lo, y);
        hi = std::max(hi, y + h);
    };
    const long long gapRow = static_cast<long long>(m_nItemHeight) - m_nRowInterval;
    auto look = [&](HBITMAP left, HBITMAP middle, HBITMAP right, bool selected) {
        const SIZE l = zelctl::BitmapSize(left), m = zelctl::BitmapSize(middle), r = zelctl::BitmapSize(right);
        span(0, l.cy);
        span(0, m.cy);
        span(0, r.cy);
        const long long rowH = m.cy > 0 ? m.cy : gapRow;
        switch (m_nStyle) {
            case 1: {
                const long long s = m_skin->Size(kSeparator).cy;
                span(m_nItemHeight - s - (m_nItemHeight - m.cy) / 2, s);
                break;
            }
            case 2: {
                const SIZE ms = zelctl::BitmapSize((*m_skin)[selected ? kSelMark : kMark]);
                span((r.cy - ms.cy) / 2 - (selected ? 2 : 0), ms.cy);
                break;
            }
            case 3: {
                span(0, rowH);
                const SIZE b = zelctl::BitmapSize((*m_skin)[selected ? kSelBadge : kBadge]);
                span((rowH - b.cy) / 2, b.cy);
                break;
            }
            default: span(0, rowH); break;
        }
    };
    for (const bool selected : {false, true}) {
        const std::array<HBITMAP, 3> own = SkinRow(*m_skin, selected);
        look(own[0], own[1], own[2], selected);
        if (m_nStyle == 0 || m_nStyle > 3 || m_nStyle < 0)
            for (const ImageEntry* e = m_pImages; e; e = e->pNext) {
                const size_t p = selected ? 3 : 0;
                look((*e->pieces)[p], (*e->pieces)[p + 1], (*e->pieces)[p + 2], selected);
            }
    }
    const auto clampInt = [](long long v) { return static_cast<int>(std::clamp<long long>(v, INT_MIN / 4, INT_MAX / 4)); };
    return {clampInt(lo), clampInt(hi)};
}

void CZELList::InvalidateRows(int a, int b) {
    if (!::IsWindow(m_hWnd)) return;
    CRect client;
    GetClientRect(&client);
    const CRect area = ListArea(client);
    if (area.IsRectEmpty()) return;
    const RowReach reach = Reach();
    const int first = ScrollPos();
    for (const int row : {a, b}) {
        // The paint draws rows from the scroll position on, only the first of them when the
        // row pitch is nothing.
        if (row < first || row >= m_nItemCount || (row > first && m_nItemHeight <= 0)) continue;
        const long long top = area.top + RowTop(row - first, area);
        const long long y0 = std::max<long long>(area.top, top + reach.lo);
        const long long y1 = std::min<long long>(area.bottom, top + reach.hi);
        if (y0 >= y1) continue;
        const CRect band(area.left, static_cast<int>(y0), area.right, static_cast<int>(y1));
        m_rcStale.UnionRect(m_rcStale, band);
        InvalidateRect(&band, FALSE);
    }
}

namespace {

// One phase of a paint on the canvas DC: its state (clip, font, colours, mode) is saved
// and comes back at the end of the phase.
class PaintPhase {
public:
    explicit PaintPhase(HDC dc) : dc_(dc), saved_(::SaveDC(dc)) {}
    ~PaintPhase() {
        if (saved_) ::RestoreDC(dc_, saved_);
    }
    PaintPhase(const PaintPhase&) = delete;
    PaintPhase& operator=(const PaintPhase&) = delete;

    // The panel: everything but the list area. False when none of it is to be painted.
    bool Around(const CRect& list) {
        if (!list.IsRectEmpty()) ::ExcludeClipRect(dc_, list.left, list.top, list.right, list.bottom);
        RECT box{};
        return ::GetClipBox(dc_, &box) > NULLREGION;
    }
    // The list area: the clip's box in list-area coordinates in `box`; false when nothing of
    // the area is to be painted.
    bool Inside(const CRect& list, RECT& box) {
        if (list.IsRectEmpty()) return false;
        ::IntersectClipRect(dc_, list.left, list.top, list.right, list.bottom);
        if (::GetClipBox(dc_, &box) <= NULLREGION) return false;
        ::OffsetRect(&box, -list.left, -list.top);
        return true;
    }

private:
    HDC dc_;
    int saved_;
};

// `rc` (list-area coordinates) on the canvas.
CRect At(const CRect& rc, POINT origin) {
    CRect moved = rc;
    moved.OffsetRect(origin.x, origin.y);
    return moved;
}

// The caps at their own size at either end of [0, right) and the middle stretched between
// them at its own height (styles 1 and 2, and the designed ones); list-area coordinates.
void DrawRowPieces(zelctl::OffscreenCanvas& canvas, POINT o, HBITMAP left, HBITMAP middle, HBITMAP right,
                   int rowRight, int top) {
    const SIZE l = zelctl::BitmapSize(left), m = zelctl::BitmapSize(middle), r = zelctl::BitmapSize(right);
    canvas.Blit(left, o.x, o.y + top, l.cx, l.cy);
    canvas.Blit(right, o.x + rowRight - r.cx, o.y + top, r.cx, r.cy);
    canvas.Stretch(middle, o.x + l.cx, o.y + top, rowRight - r.cx - l.cx, m.cy);
}

// Rows of one look (the same three pieces across the same width) have the same background.
// A look is drawn piece by piece until a row of it lies whole inside the canvas's clip;
// that row is kept in a strip before anything is drawn over it, and the rows after it copy
// the strip: the middle is stretched once per look and paint instead of once per row. A
// look whose pieces differ in height or do not meet end to end leaves part of its row to
// what lies under it, and is always drawn piece by piece.
class RowBackgrounds {
public:
    explicit RowBackgrounds(zelctl::OffscreenCanvas& canvas) : canvas_(canvas) {}
    RowBackgrounds(const RowBackgrounds&) = delete;
    RowBackgrounds& operator=(const RowBackgrounds&) = delete;

    // As DrawRowPieces.
    void Draw(POINT o, HBITMAP left, HBITMAP middle, HBITMAP right, int rowRight, int top) {
        const SIZE l = zelctl::BitmapSize(left), m = zelctl::BitmapSize(middle), r = zelctl::BitmapSize(right);
        const bool covers = l.cx > 0 && m.cx > 0 && r.cx > 0 && l.cy > 0 && l.cy == m.cy && m.cy == r.cy &&
                            rowRight - r.cx > l.cx;
        const RECT band{o.x, o.y + top, o.x + rowRight, o.y + top + l.cy};
        Look* look = nullptr;
        for (Look& k : looks_)
            if (k.left == left && k.middle == middle && k.right == right && k.width == rowRight) look = &k;
        if (covers && look && look->strip) {
            ::BitBlt(canvas_.dc(), band.left, band.top, rowRight, l.cy, look->strip->dc, 0, 0, SRCCOPY);
            return;
        }
        DrawRowPieces(canvas_, o, left, middle, right, rowRight, top);
        if (!covers) return;
        if (!look) look = &looks_.emplace_back(Look{left, middle, right, rowRight, nullptr});
        if (Shows(band)) {
            auto strip = std::make_unique<Strip>(canvas_.dc(), rowRight, l.cy);
            if (strip->dc && strip->bitmap &&
                ::BitBlt(strip->dc, 0, 0, rowRight, l.cy, canvas_.dc(), band.left, band.top, SRCCOPY))
                look->strip = std::move(strip);
        }
    }

private:
    // A memory DC with a bitmap of its own, both gone with it.
    struct Strip {
        Strip(HDC like, int width, int height)
            : dc(::CreateCompatibleDC(like)), bitmap(::CreateCompatibleBitmap(like, width, height)) {
            if (dc && bitmap) old = ::SelectObject(dc, bitmap);
        }
        ~Strip() {
            if (old) ::SelectObject(dc, old);
            if (bitmap) ::DeleteObject(bitmap);
            if (dc) ::DeleteDC(dc);
        }
        Strip(const Strip&) = delete;
        Strip& operator=(const Strip&) = delete;
        HDC dc;
        HBITMAP bitmap;
        HGDIOBJ old = nullptr;
    };
    struct Look {
        HBITMAP left, middle, right;
        int width;
        std::unique_ptr<Strip> strip;
    };

    // True when every pixel of `band` lies on the canvas and inside its clip: what the
    // canvas holds there is the row as drawn.
    bool Shows(const RECT& band) const {
        BITMAP bm{};
        HGDIOBJ surface = ::GetCurrentObject(canvas_.dc(), OBJ_BITMAP);
        if (!surface || ::GetObjectW(surface, sizeof bm, &bm) != sizeof bm) return false;
        if (band.left < 0 || band.top < 0 || band.right > bm.bmWidth || band.bottom > bm.bmHeight) return false;
        HRGN clip = ::CreateRectRgn(0, 0, 0, 0);
        HRGN outside = ::CreateRectRgnIndirect(&band);
        bool shows = false;
        if (clip && outside) {
            const int hasClip = ::GetClipRgn(canvas_.dc(), clip);
            shows = hasClip == 0 || (hasClip == 1 && ::CombineRgn(outside, outside, clip, RGN_DIFF) == NULLREGION);
        }
        if (outside) ::DeleteObject(outside);
        if (clip) ::DeleteObject(clip);
        return shows;
    }

    zelctl::OffscreenCanvas& canvas_;
    std::vector<Look> looks_;
};

// The list area's background: `colour`, or the stretched background bitmap, which covers
// it whole, when there is one.
void ListBackground(zelctl::OffscreenCanvas& canvas, const CRect& list, COLORREF colour, HBITMAP back) {
    const SIZE bs = zelctl::BitmapSize(back);
    if (bs.cx > 0 && bs.cy > 0)
        canvas.Stretch(back, list.left, list.top, list.Width(), list.Height());
    else
        canvas.Fill(list, colour);
}

// The panel bitmap of styles 2 and 3 at (0, 0) at its own size, its next-to-last column
// stretched from its right edge to the panel's (when `draw`), and the colour of its last
// column at half height (CLR_INVALID without a bitmap).
COLORREF PanelBackground(HDC panel, HBITMAP back, int panelWidth, bool draw) {
    const SIZE bs = zelctl::BitmapSize(back);
    if (bs.cx < 2 || bs.cy < 1) return CLR_INVALID;
    HDC source = ::CreateCompatibleDC(panel);
    COLORREF sampled = CLR_INVALID;
    {
        zelctl::SelectGuard useBack(source, back);
        if (draw) {
            ::BitBlt(panel, 0, 0, bs.cx, bs.cy, source, 0, 0, SRCCOPY);
            if (panelWidth > bs.cx)
                ::StretchBlt(panel, bs.cx, 0, panelWidth - bs.cx, bs.cy, source, bs.cx - 2, 0, 1, bs.cy, SRCCOPY);
        }
        sampled = ::GetPixel(source, bs.cx - 1, bs.cy / 2);
    }
    ::DeleteDC(source);
    return sampled;
}

// Styles 2 and 3: the background colour, the panel bitmap at its size with its next-to-last
// column stretched over the rest, the background colour then taken from its last column at
// half height. The list area is cut out of the clip: the list paints it.
void LayPanel(zelctl::OffscreenCanvas& canvas, HBITMAP back, const CRect& client, const CRect& list,
              COLORREF& background) {
    PaintPhase phase(canvas.dc());
    const bool draw = phase.Around(list);
    if (draw) canvas.Fill(client, background);
    const COLORREF sampled = PanelBackground(canvas.dc(), back, client.Width(), draw);
    if (sampled != CLR_INVALID) background = sampled;
}

}  // namespace

template <class Fill, class Row>
void CZELList::PaintRows(Canvas& canvas, Fill&& fill, Row&& row) {
    HDC dc = canvas.dc();
    PaintPhase phase(dc);
    RECT box{};
    const bool shown = phase.Inside(m_rcList, box);
    if (shown) fill();
    ::SetBkMode(dc, TRANSPARENT);
    zelctl::SelectGuard font(dc, m_hFonts[0]);
    const RowReach reach = Reach();
    const int listH = m_rcList.Height();
    const int first = ScrollPos();
    for (int i = first; i < m_nItemCount; ++i) {
        const int k = i - first;
        if (k > 0 && m_nItemHeight <= 0) break;  // a row pitch of nothing: one row, not them all
        const long long top = RowTop(k, m_rcList);
        if (top > listH) break;
        row(i, static_cast<int>(top), shown && RowShows(top, reach, box));
    }
}

void CZELList::Draw1(Canvas& canvas) {
    CRect client;
    GetClientRect(&client);
    m_rcList = ListArea(client);
    HDC dc = canvas.dc();
    if (PaintPhase panel(dc); panel.Around(m_rcList)) {
        canvas.Fill(client, m_clrBack);
        HPEN pen = ::CreatePen(PS_SOLID, 1, m_clrFrame);
        HBRUSH brush = ::CreateSolidBrush(m_clrFill);
        {
            zelctl::SelectGuard usePen(dc, pen), useBrush(dc, brush);
            ::RoundRect(dc, 0, 0, client.Width(), client.Height(), m_nRowInterval, m_nRowInterval);
        }
        ::DeleteObject(pen);
        ::DeleteObject(brush);
    }
    const POINT o{m_rcList.left, m_rcList.top};
    RowBackgrounds rows(canvas);
    const SIZE sep = m_skin->Size(kSeparator);
    ::SetTextColor(dc, m_clrText);
    const int right = ColumnZeroRight();
    PaintRows(canvas, [&] { canvas.Fill(m_rcList, m_clrFill); }, [&](int i, int top, bool drawn) {
        const int bottom = top + m_nItemHeight - sep.cy;
        const bool selected = i == m_nCurSel;
        if (selected) m_rcClick.SetRect(0, top, right, bottom);
        if (!drawn) return;
        const auto [left, middle, rightCap] = SkinRow(*m_skin, selected);
        rows.Draw(o, left, middle, rightCap, right, top);
        const SIZE l = zelctl::BitmapSize(left), m = zelctl::BitmapSize(middle), r = zelctl::BitmapSize(rightCap);
        if (i != m_nItemCount - 1)
            canvas.Stretch((*m_skin)[kSeparator], o.x, o.y + bottom - (bottom - m.cy - top + sep.cy) / 2, right,
                           sep.cy);
        CRect text(l.cx + 5, top, right - r.cx, top + r.cy);
        CString s = m_ppRows[i]->strText;
        ForMartLeng(dc, s, text.Width());
        if (selected) {
            ::SelectObject(dc, m_hFonts[1]);
            ::SetTextColor(dc, m_clrSelText);
        }
        RowText(dc, s, At(text, o), kRowText);
        if (selected) {
            ::SelectObject(dc, m_hFonts[0]);
            ::SetTextColor(dc, m_clrText);
        }
    });
}

void CZELList::Draw2(Canvas& canvas) {
    CRect client;
    GetClientRect(&client);
    m_rcList = ListArea(client);
    LayPanel(canvas, (*m_skin)[kPanel], client, m_rcList, m_clrBack);
    const POINT o{m_rcList.left, m_rcList.top};
    HDC dc = canvas.dc();
    RowBackgrounds rows(canvas);
    ::SetTextColor(dc, m_clrText);
    const int first = ScrollPos();
    const int right = ColumnZeroRight();
    // The list area's top counts again inside the list area (RowTop): rows sit that much
    // lower, and so does the click rectangle's bottom.
    PaintRows(canvas, [&] { canvas.Fill(m_rcList, m_clrBack); }, [&](int i, int top, bool drawn) {
        const int bottom = m_rcList.top + (i - first + 1) * m_nItemHeight;
        const bool selected = i == m_nCurSel;
        if (selected) m_rcClick.SetRect(0, top, right, bottom);
        if (!drawn) return;
        const auto [left, middle, rightCap] = SkinRow(*m_skin, selected);
        rows.Draw(o, left, middle, rightCap, right, top);
        const SIZE l = zelctl::BitmapSize(left), r = zelctl::BitmapSize(rightCap);
        if (m_ppRows[i]->nMark == 1) {
            const HBITMAP mark = (*m_skin)[selected ? kSelMark : kMark];
            const SIZE ms = zelctl::BitmapSize(mark);
            const int y = top + (r.cy - ms.cy) / 2 - (selected ? 2 : 0);
            canvas.Blit(mark, o.x + right - r.cx - ms.cx, o.y + y, ms.cx, ms.cy);
        }
        CRect text(l.cx + 5, top, right - r.cx, top + r.cy);
        CString s = m_ppRows[i]->strText;
        ForMartLeng(dc, s, text.Width());
        RowText(dc, s, At(text, o), kRowText);
    });
}

// Style 0: the image list. The panel is the background colour around the list area, the
// list area filled (or its background bitmap stretched over it); each row is drawn with
// the pieces of its image entry, or the list's own row pieces, h - m_nRowInterval high
// with the interval as the gap below it.
void CZELList::Draw(Canvas& canvas) {
    CRect client;
    GetClientRect(&client);
    m_rcList = ListArea(client);
    HDC dc = canvas.dc();
    if (PaintPhase panel(dc); panel.Around(m_rcList)) canvas.Fill(client, m_clrBack);
    const int listW = m_rcList.Width();
    const POINT o{m_rcList.left, m_rcList.top};
    RowBackgrounds rows(canvas);
    // The play layout's columns are counted from the client's width: rows stop 2 pixels
    // short of a visible bar rather than run under it.
    int limit = listW;
    if (HasBar() && m_pScrollBar->IsWindowVisible()) {
        CRect bar;
        m_pScrollBar->GetWindowRect(&bar);
        ScreenToClient(&bar);
        limit = std::min(limit, bar.left - m_rcList.left - 2);
    }
    const int right = std::min(ColumnZeroRight() + (m_bPlayStyle ? GetColumnWidth(1) : 0), limit);
    const auto fill = [&] { ListBackground(canvas, m_rcList, m_clrFill, (*m_skin)[kListBack]); };
    PaintRows(canvas, fill, [&](int i, int top, bool drawn) {
        const bool selected = i == m_nCurSel;
        if (selected) m_rcClick.SetRect(0, top, right, top + m_nItemHeight - m_nRowInterval);
        if (!drawn) return;
        HBITMAP pieces[3];
        RowPieces(i, selected, pieces);
        rows.Draw(o, pieces[0], pieces[1], pieces[2], right, top);
        const SIZE l = zelctl::BitmapSize(pieces[0]), m = zelctl::BitmapSize(pieces[1]);
        const SIZE r = zelctl::BitmapSize(pieces[2]);
        // Centred on the middle piece (on the row without one).
        CRect text(l.cx + 5, top, right - r.cx, top + (m.cy > 0 ? m.cy : m_nItemHeight - m_nRowInterval));
        ::SetTextColor(dc, selected ? m_clrSelText : m_clrText);
        if (m_bPlayStyle) {
            // The short second column at the right end, right-aligned.
            const int second = std::max(GetColumnWidth(1), 0);
            CRect box2(text.right - second, text.top, text.right, text.bottom);
            RowText(dc, GetItemText(i, 1), At(box2, o), kRowText | DT_RIGHT);
            text.right = box2.left;
        }
        CString s = m_ppRows[i]->strText;
        ForMartLeng(dc, s, text.Width());
        RowText(dc, s, At(text, o), kRowText);
    });
}

// Style 3: the panel and list area of style 2 (the background colour sampled the same way),
// the same caps, and four texts per row.
void CZELList::Draw3(Canvas& canvas) {
    CRect client;
    GetClientRect(&client);
    m_rcList = ListArea(client);
    LayPanel(canvas, (*m_skin)[kPanel], client, m_rcList, m_clrBack);
    const POINT o{m_rcList.left, m_rcList.top};
    HDC dc = canvas.dc();
    RowBackgrounds rows(canvas);
    const int right = ColumnZeroRight();
    const auto fill = [&] { ListBackground(canvas, m_rcList, m_clrBack, (*m_skin)[kListBack]); };
    PaintRows(canvas, fill, [&](int i, int top, bool drawn) {
        const bool selected = i == m_nCurSel;
        const auto [left, middle, rightCap] = SkinRow(*m_skin, selected);
        const SIZE l = zelctl::BitmapSize(left), m = zelctl::BitmapSize(middle), r = zelctl::BitmapSize(rightCap);
        const int rowH = m.cy > 0 ? m.cy : m_nItemHeight - m_nRowInterval;
        if (selected) m_rcClick.SetRect(0, top, right, top + rowH);
        if (!drawn) return;
        rows.Draw(o, left, middle, rightCap, right, top);
        ::SetTextColor(dc, selected ? m_clrSelText : m_clrText);
        // The number over its badge.
        const HBITMAP badge = (*m_skin)[selected ? kSelBadge : kBadge];
        const SIZE b = zelctl::BitmapSize(badge);
        const int numberW = b.cx > 0 ? b.cx : 32;
        const CRect number(l.cx, top, l.cx + numberW, top + rowH);
        canvas.Blit(badge, o.x + number.left, o.y + top + (rowH - b.cy) / 2, b.cx, b.cy);
        CString n;
        n.Format(L"%d.", i + 1);
        ::SelectObject(dc, m_hFonts[0]);
        RowText(dc, n, At(number, o), kCentredText);
        // Name above, detail below, up to 18 pixels before the right cap.
        const int capLeft = right - r.cx;
        const CRect name(number.right + 4, top, capLeft - 18, top + rowH / 2 + 2);
        const CRect detail(name.left, name.bottom, name.right, top + rowH);
        CString s = GetItemText(i, 0);
        ::SelectObject(dc, m_hFonts[1]);
        ForMartLeng(dc, s, name.Width());
        RowText(dc, s, At(name, o), kRowText);
        ::SelectObject(dc, m_hFonts[2]);
        CString d = GetItemText(i, 1);
        ForMartLeng(dc, d, detail.Width());
        RowText(dc, d, At(detail, o), kRowText);
        ::SelectObject(dc, m_hFonts[3]);
        RowText(dc, GetItemText(i, 2), At(CRect(capLeft - 18, top, capLeft + 42, top + rowH), o), kCentredText);
    });
}
