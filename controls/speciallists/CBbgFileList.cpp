#include "CBbgFileList.h"

#include <commctrl.h>

#include <algorithm>
#include <climits>

#include "CZELScrollbar.h"
#include "ControlFont.h"
#include "Notify.h"
#include "OffscreenCanvas.h"
#include "SkinList.h"
#include "SkinSet.h"

namespace {

constexpr UINT kScrollBarId = 9001;
constexpr DWORD kSingleSelectStyle = 4;
constexpr UINT kMarkedState = 2;  // LVIS_SELECTED

// GetDoubleClickTime, read on first use and kept for the life of the process.
UINT DoubleTapMs() {
    static const UINT ms = ::GetDoubleClickTime();
    return ms;
}

}  // namespace

BEGIN_MESSAGE_MAP(CBbgFileList, CWnd)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_MOUSEMOVE()
ON_WM_LBUTTONUP()
ON_WM_TIMER()
ON_WM_VSCROLL()
ON_WM_LBUTTONDBLCLK()
END_MESSAGE_MAP()

CBbgFileList::CBbgFileList()
    : m_skin(std::make_unique<zelctl::SkinSet>(kPieces)),
      m_bMultiSelect(TRUE),
      m_ptAnchor(0, 0),
      m_ptDrag(0, 0),
      m_nAnchor(-1),
      m_nDrag(-1),
      m_rcHit(0, 0, 0, 0),
      m_bDragging(false),
      m_fontRow(std::make_unique<zelctl::OwnedFont>(zelctl::CreateControlFont(14, FW_NORMAL, L"arial"))),
      m_fontCurrent(std::make_unique<zelctl::OwnedFont>(zelctl::CreateControlFont(18, FW_NORMAL, L"arial"))),
      m_clrText(RGB(0, 0, 0)),
      m_nCurSel(-1),
      m_clrMarked(RGB(255, 255, 255)),
      m_rcList(0, 0, 0, 0),
      m_pScrollBar(new CZELScrollbar),
      m_nColumnWidth(0),
      m_rcScroll(0, 0, 0, 0),
      m_nItemHeight(0),
      m_rcCurRow(0, 0, 0, 0),
      m_bPressedOnce(false) {}

CBbgFileList::~CBbgFileList() {
    delete m_pScrollBar;
    m_pScrollBar = nullptr;
}

bool CBbgFileList::HasBar() const { return m_pScrollBar && ::IsWindow(m_pScrollBar->m_hWnd); }

int CBbgFileList::ScrollPos() const { return HasBar() ? static_cast<int>(m_pScrollBar->GetScrollPos()) : 0; }

int CBbgFileList::RowAtY(int y) const {
    if (m_nItemHeight <= 0) return -1;
    return (y - m_rcList.top) / m_nItemHeight + ScrollPos();
}

// ---- creation and skins -----------------------------------------------------------------

void CBbgFileList::PreSubclassWindow() {
    CWnd::PreSubclassWindow();
    ::SetClassLongW(m_hWnd, GCL_STYLE, static_cast<LONG>(::GetClassLongW(m_hWnd, GCL_STYLE) | CS_DBLCLKS));
    if (!m_pScrollBar->Create(L"VSCrollBar", WS_CHILD | WS_VISIBLE, CRect(1, 1, 20, 100), this, kScrollBarId))
        AfxMessageBox(L"ERROR");
    GetClientRect(&m_rcList);
    m_rcList.DeflateRect(2, 2, 2, 2);
}

void CBbgFileList::LoadBkBitmap(UINT nBkID, UINT nSelID, HINSTANCE hInst) {
    m_skin->Set(kBackground, zelctl::LoadSkinBitmap(nBkID, hInst));
    m_skin->Set(kCurrentRow, zelctl::LoadSkinBitmap(nSelID, hInst));
    if ((*m_skin)[kCurrentRow]) m_nItemHeight = m_skin->Size(kCurrentRow).cy;
}

void CBbgFileList::LoadScrollBitmap(UINT nThumb, UINT nThumbDown, UINT nTrack, UINT nUp, UINT nDown,
                                    UINT nDownDown, UINT nUpDown, HINSTANCE hInst) {
    if (HasBar()) m_pScrollBar->LoadBitmapW(nThumb, nThumbDown, nTrack, nUp, nDown, nDownDown, nUpDown, hInst);
    PlaceBarAtRightEdge();
    UpdataScrollBar();
}

void CBbgFileList::PlaceBarAtRightEdge() {
    if (!::IsWindow(m_hWnd) || !HasBar()) return;
    CRect client, bar;
    GetClientRect(&client);
    m_pScrollBar->GetWindowRect(&bar);
    m_pScrollBar->MoveWindow(client.right - bar.Width() - client.left, 0, bar.Width(), client.Height(), TRUE);
}

void CBbgFileList::MoveWindow(int x, int y, int cx, int cy, BOOL bRepaint) {
    if (!::IsWindow(m_hWnd)) return;
    CWnd::MoveWindow(x, y, cx, cy, bRepaint);
    GetClientRect(&m_rcList);
    PlaceBarAtRightEdge();
    if (HasBar()) m_pScrollBar->ShowWindow(SW_HIDE);
    UpdataScrollBar();
}

DWORD CBbgFileList::SetExtendedStyle(DWORD dwStyle) {
    m_bMultiSelect = dwStyle == kSingleSelectStyle ? FALSE : TRUE;
    return 1;
}

// ---- items ------------------------------------------------------------------------------

int CBbgFileList::InsertItem(int nItem, CString strText, long lData) {
    if (nItem < 0) return -1;
    Item item{strText, 0, lData};
    int result;
    if (nItem >= static_cast<int>(m_items.size())) {
        m_items.push_back(item);
        result = static_cast<int>(m_items.size()) - 1;
    } else {
        m_items.insert(m_items.begin() + nItem, item);
        result = nItem;
    }
    UpdataScrollBar();
    return result;
}

BOOL CBbgFileList::DeleteAllItems() {
    m_items.clear();
    // A drag held over rows that are gone marks nothing more: rows inserted while the
    // finger is still down are not marked from an anchor that no longer exists.
    m_bDragging = false;
    return TRUE;
}

int CBbgFileList::GetItemCount() const { return static_cast<int>(m_items.size()); }

CString CBbgFileList::GetItemText(int nItem, int) const {
    if (nItem < 0 || nItem >= GetItemCount()) return CString();
    return m_items[nItem].strText;
}

long CBbgFileList::GetItemData(int nItem) const {
    if (nItem < 0 || nItem >= GetItemCount()) return -1;
    return m_items[nItem].lData;
}

int CBbgFileList::InsertColumn(int, CString, int, int) { return -1; }

BOOL CBbgFileList::SetColumnWidth(int, int cx) {
    m_nColumnWidth = cx;
    return TRUE;
}

void CBbgFileList::ForMartLeng(HDC, CString&, int) {}

// ---- current row and marks -----------------------------------------------------------------

int CBbgFileList::SetCurSel(int n) {
    m_nCurSel = n >= 0 && n < GetItemCount() ? n : -1;
    if (::IsWindow(m_hWnd)) InvalidateRect(nullptr, TRUE);
    return m_nCurSel;
}

int CBbgFileList::GetCurSel() const { return m_nCurSel; }

int CBbgFileList::GetSelectionMark() const { return m_nCurSel; }

int CBbgFileList::SetSelectionMark(int n) {
    m_nCurSel = n;
    if (::IsWindow(m_hWnd)) InvalidateRect(nullptr, TRUE);
    return n;
}

BOOL CBbgFileList::SetItemState(UINT nItem, UINT nState, UINT) {
    // The bound is count - 1, compared unsigned: the last row is out of reach, and on an
    // empty list the bound wraps, so the row is checked against the array as well.
    if (nItem >= static_cast<UINT>(GetItemCount() - 1) || nItem >= m_items.size()) return FALSE;
    m_items[nItem].nState = nState == kMarkedState ? 1 : 0;
    if (::IsWindow(m_hWnd)) InvalidateRect(nullptr, TRUE);
    return TRUE;
}

int CBbgFileList::GetFirstSelectedItemIndex() const {
    for (int i = 0; i < GetItemCount(); ++i)
        if (m_items[i].nState == 1) return i;
    return -1;
}

int CBbgFileList::GetNextSelectedItemIndex(int& nPos) const {
    if (nPos < 0 || nPos >= GetItemCount()) return -1;
    for (int i = nPos; i < GetItemCount(); ++i) {
        if (m_items[i].nState == 1) {
            nPos = i + 1;
            return i;
        }
    }
    return -1;
}

// ---- scrolling ----------------------------------------------------------------------------

int CBbgFileList::GetCountPerPage() const { return m_nItemHeight > 0 ? m_rcList.Height() / m_nItemHeight : 0; }

void CBbgFileList::ScrollTo(int nPos) {
    if (!::IsWindow(m_hWnd) || !HasBar()) return;
    CRect client;
    GetClientRect(&client);
    if (static_cast<long long>(m_nItemHeight) * GetItemCount() <= client.Height()) return;
    long lo = 0, hi = 0;
    m_pScrollBar->GetRange(lo, hi);
    m_pScrollBar->SetScrollPos(std::clamp<long>(nPos, lo, hi), TRUE);
}

void CBbgFileList::UpdataScrollBar() {
    if (m_nItemHeight <= 0 || !::IsWindow(m_hWnd)) return;
    CRect client;
    GetClientRect(&client);
    m_rcHit = client;
    if (!HasBar()) {
        m_nColumnWidth = client.Width();
        return;
    }
    m_pScrollBar->GetClientRect(&m_rcScroll);
    const int perPage = m_rcList.Height() / m_nItemHeight;
    const int rem = m_rcList.bottom - perPage * m_nItemHeight - m_rcList.top;
    const int h = (*m_skin)[kCurrentRow] ? m_skin->Size(kCurrentRow).cy : m_nItemHeight;
    const int max = GetItemCount() - perPage - (rem >= h ? 1 : 0);
    const int barWidth = m_rcScroll.Width();
    if (max > 0) {
        m_pScrollBar->SetScrollRange(0, max);
        m_pScrollBar->SetPagesize(client.Height() / m_nItemHeight);
        m_pScrollBar->ShowWindow(SW_SHOW);
        m_rcScroll.SetRect(client.right - barWidth, client.top, client.right, client.bottom);
        m_nColumnWidth = client.Width() - barWidth - 5;
        m_rcHit.right -= barWidth;
    } else {
        m_pScrollBar->SetScrollRange(0, 0);
        m_pScrollBar->ShowWindow(SW_HIDE);
        m_nColumnWidth = client.Width();
    }
}

void CBbgFileList::OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar) {
    InvalidateRect(nullptr, TRUE);
    CWnd::OnVScroll(nSBCode, nPos, pScrollBar);
}

// ---- input --------------------------------------------------------------------------------

void CBbgFileList::OnLButtonDown(UINT nFlags, CPoint point) {
    Default();
    if (!m_rcHit.PtInRect(point)) return;
    if (m_bPressedOnce && m_rcCurRow.PtInRect(point)) {
        // The second tap on the current row is a double click; the list may not survive it.
        SendMessage(WM_LBUTTONDBLCLK, nFlags, MAKELPARAM(point.x, point.y));
        return;
    }
    m_bPressedOnce = true;
    KillTimer(kDoubleTapTimer);
    SetTimer(kDoubleTapTimer, DoubleTapMs(), nullptr);
    const int row = RowAtY(point.y);
    // Below the last row, or no row at all without a row height.
    if (row < 0 || row > GetItemCount() - 1) {
        Default();
        return;
    }
    // The selection and the marks change together; only the rows that look different
    // are repainted.
    const int oldCurrent = m_nCurSel;
    std::vector<int> oldStates;
    oldStates.reserve(m_items.size());
    for (const Item& item : m_items) oldStates.push_back(item.nState);
    m_nCurSel = row;
    for (Item& item : m_items) item.nState = 0;
    m_items[m_nCurSel].nState = 1;
    InvalidateChangedRows(oldCurrent, oldStates);
    m_nAnchor = m_nDrag = row;
    m_ptAnchor = point;
    m_bDragging = true;
    if (m_bMultiSelect) SetCapture();
}

void CBbgFileList::InvalidateChangedRows(int oldCurrent, const std::vector<int>& oldStates) {
    if (m_nItemHeight <= 0) {
        InvalidateRect(nullptr, TRUE);
        return;
    }
    CRect client;
    GetClientRect(&client);
    const int first = ScrollPos();
    for (int i = 0; i < GetItemCount(); ++i) {
        const bool changed = (i == oldCurrent) != (i == m_nCurSel) ||
                             (static_cast<size_t>(i) < oldStates.size() && oldStates[i] != m_items[i].nState);
        if (!changed) continue;
        const long long top = m_rcList.top + static_cast<long long>(i - first) * m_nItemHeight;
        if (top >= client.bottom || top + m_nItemHeight <= client.top) continue;
        const CRect band(client.left, static_cast<int>(top), client.right, static_cast<int>(top + m_nItemHeight));
        InvalidateRect(band, TRUE);
    }
}

// Sets `state` on the rows from..to in either order. The device's guard (row >= 0 OR
// row < count - 1) lets every index through; only rows that exist are written.
void CBbgFileList::MarkSpan(int from, int to, int state) {
    const int count = GetItemCount();
    for (int i = std::min(from, to); i <= std::max(from, to); ++i)
        if ((i >= 0 || i < count - 1) && i >= 0 && i < count) m_items[i].nState = state;
}

void CBbgFileList::OnMouseMove(UINT, CPoint point) {
    if (point.y < m_rcList.top) {
        const int pos = ScrollPos();
        if (pos > 0) {
            ScrollTo(pos - 1);
            m_ptAnchor.y += m_nItemHeight;
        }
        SetTimer(kAutoScrollTimer, kAutoScrollMs, nullptr);
    }
    if (point.y > m_rcList.bottom) {
        long lo = 0, hi = 0;
        if (HasBar()) m_pScrollBar->GetRange(lo, hi);
        const int pos = ScrollPos();
        if (pos < hi) {
            ScrollTo(pos + 1);
            m_ptAnchor.y -= m_nItemHeight;
        }
        SetTimer(kAutoScrollTimer, kAutoScrollMs, nullptr);
    }
    if (!m_bDragging || !m_bMultiSelect) return;
    m_ptDrag = point;
    int row = RowAtY(point.y);
    if (m_nItemHeight <= 0) return;
    row = std::min(row, GetItemCount() - 1);
    if (row == m_nDrag) return;
    MarkSpan(m_nAnchor, m_nDrag, 0);
    m_nDrag = row;
    MarkSpan(m_nAnchor, row, 1);
    Default();
    InvalidateRect(nullptr, TRUE);
}

void CBbgFileList::OnLButtonUp(UINT, CPoint) {
    m_bDragging = false;
    ::ReleaseCapture();
    m_ptAnchor = m_ptDrag = CPoint(0, 0);
    // Nothing drawn changes on the release: the press and the drag have invalidated the
    // rows they changed.
    KillTimer(kAutoScrollTimer);
    Default();
}

void CBbgFileList::OnTimer(UINT_PTR nIDEvent) {
    if (nIDEvent == kAutoScrollTimer) {
        OnMouseMove(0, m_ptDrag);
    } else if (nIDEvent == kDoubleTapTimer) {
        KillTimer(kDoubleTapTimer);
        m_bPressedOnce = false;
        Default();
    }
}

void CBbgFileList::OnLButtonDblClk(UINT, CPoint) {
    KillTimer(kDoubleTapTimer);
    m_bPressedOnce = false;
    Default();
    zelctl::NotifyNmhdr(*this, NM_DBLCLK);
}

LRESULT CBbgFileList::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) return 0;  // the paint covers everything; no flicker
    if (message == WM_DESTROY) m_canvas.reset();
    return CWnd::WindowProc(message, wParam, lParam);
}

// ---- painting -----------------------------------------------------------------------------

void CBbgFileList::OnPaint() {
    CPaintDC paint(this);
    CRect client;
    GetClientRect(&client);
    // With a background under the whole window the canvas is covered on every paint and
    // may be kept; otherwise the rows are drawn over a new bitmap's black.
    const HBITMAP background = (*m_skin)[kBackground];
    CRect onScreen;
    GetWindowRect(&onScreen);
    const SIZE backSize = zelctl::BitmapSize(background);
    const bool covered = background && onScreen.left >= 0 && onScreen.top >= 0 && onScreen.right <= backSize.cx &&
                         onScreen.bottom <= backSize.cy;
    if (covered && !m_canvas)
        m_canvas = std::make_unique<zelctl::CanvasStore>();
    else if (!covered)
        m_canvas.reset();
    // From the first paint on the rows cover the whole client. The device drew them on a
    // list surface of the list rectangle over a copy of the frame and copied that back; the
    // list rectangle is the client itself, so one canvas holds both and every pixel is
    // written once: the background, then the rows over it.
    m_rcList = client;
    const int listW = m_rcList.Width(), listH = m_rcList.Height();
    HDC screen = paint.GetSafeHdc();
    const bool reused = m_canvas && m_canvas->dc() && m_canvas->width() == listW && m_canvas->height() == listH;
    const auto listPtr = m_canvas ? std::make_unique<zelctl::OffscreenCanvas>(screen, listW, listH, *m_canvas)
                                  : std::make_unique<zelctl::OffscreenCanvas>(screen, listW, listH);
    zelctl::OffscreenCanvas& list = *listPtr;
    HDC dc = list.dc();
    ::SetBkMode(dc, TRANSPARENT);
    ::SetBkColor(dc, RGB(0, 0, 0));
    zelctl::SelectGuard rowFont(dc, m_fontRow->get());
    ::SetTextColor(dc, m_clrText);
    const HBITMAP currentRow = (*m_skin)[kCurrentRow];
    if (HBITMAP back = background) {
        // The current row's bitmap is stretched over its whole band: the background is not
        // copied under it. A new canvas takes the background whole all the same: a first
        // write that leaves part of a new bitmap makes the platform clear all of it first.
        const int saved = ::SaveDC(dc);
        const int first = std::max(0, ScrollPos());
        if (reused && currentRow && m_nItemHeight > 0 && m_nCurSel >= first && m_nCurSel < GetItemCount()) {
            const long long top = static_cast<long long>(m_nCurSel - first) * m_nItemHeight;
            if (top < listH)
                ::ExcludeClipRect(dc, 0, static_cast<int>(top), listW, static_cast<int>(top + m_nItemHeight));
        }
        list.ScreenPiece(back, m_hWnd);
        ::RestoreDC(dc, saved);
    }

    CRect text(0, 0, 0, 0);
    int y = 0;
    for (int i = std::max(0, ScrollPos()); i < GetItemCount() && m_nItemHeight > 0; ++i) {
        const Item& item = m_items[i];
        const bool current = i == m_nCurSel;
        const bool marked = item.nState == 1;
        if (marked && !current) {
            ::SetBkMode(dc, OPAQUE);
            ::SetTextColor(dc, m_clrMarked);
        }
        if (current) {
            if (m_fontCurrent->get()) ::SelectObject(dc, m_fontCurrent->get());
            m_rcCurRow.SetRect(0, y, listW, y + m_nItemHeight);
            list.Stretch(currentRow, m_rcCurRow.left, m_rcCurRow.top, m_rcCurRow.Width(), m_rcCurRow.Height());
        }
        // The right edge grows by the column width on every row (the surface clips it).
        const long long right = static_cast<long long>(text.right) + m_nColumnWidth;
        text.SetRect(text.left, y, static_cast<int>(std::clamp<long long>(right, INT_MIN, INT_MAX)),
                     y + m_nItemHeight);
        if (y > listH) break;
        if (!item.strText.IsEmpty()) {
            CString s = item.strText;
            ForMartLeng(dc, s, text.Width());
            ::DrawTextW(dc, s, s.GetLength(), &text, DT_VCENTER | DT_SINGLELINE);
        }
        y += m_nItemHeight;
        if (marked) {
            ::SetTextColor(dc, m_clrText);
            ::SetBkMode(dc, TRANSPARENT);
        }
        if (current && m_fontRow->get()) ::SelectObject(dc, m_fontRow->get());
    }
    list.Present();
}
