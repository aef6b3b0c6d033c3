#include "CZELComBox.h"

#include <algorithm>
#include <climits>
#include <cwchar>

#include "ControlFont.h"
#include "DropLayout.h"
#include "Notify.h"
#include "OffscreenCanvas.h"
#include "RowGeometry.h"
#include "SkinList.h"
#include "SkinSet.h"
#include "SkinText.h"
#include "ThreePiece.h"

namespace {

constexpr UINT kScrollBarId = 9001;
constexpr UINT_PTR kAutoScrollTimer = 1;
constexpr UINT kAutoScrollMs = 100;   // one row per tick while the stylus is past an edge
constexpr int kDefaultRows = 5;
constexpr int kDefaultRowHeight = 24;  // without a row piece
constexpr int kDefaultFontHeight = 18;
constexpr int kTextInset = 6;          // text from the left of its cell
constexpr UINT kTextFormat = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
const COLORREF kBackground = RGB(255, 255, 255);  // under pieces that failed to load

bool ValidIndex(int index, size_t count) { return index >= 0 && static_cast<size_t>(index) < count; }

}  // namespace

// What a kept picture of the window shows: equal values draw equal pixels at one size.
// Pieces and the font are compared by handle (a reload makes new ones).
struct CZELComBox::Shown {
    BOOL dropped = FALSE;
    CRect box, arrow, rows;
    HBITMAP pieces[kPieces] = {};
    HFONT font = nullptr;
    COLORREF text = 0, lit = 0;
    int curSel = -1, litRow = -1, topRow = 0, shownRows = 0;
    std::vector<CString> captions;  // the box's, then each visible row's
    bool operator==(const Shown& o) const {
        return dropped == o.dropped && box == o.box && arrow == o.arrow && rows == o.rows &&
               std::equal(std::begin(pieces), std::end(pieces), std::begin(o.pieces)) && font == o.font &&
               text == o.text && lit == o.lit && curSel == o.curSel && litRow == o.litRow && topRow == o.topRow &&
               shownRows == o.shownRows && captions == o.captions;
    }
};

namespace {

// The closed box and the open list are kept apart: opening again shows the kept list
// unless something in it changed, and closing shows the kept box.
struct KeptPicture {
    zelctl::CanvasStore canvas;
    bool drawn = false;
};

}  // namespace

// A row kind (plain, lit) stretched once to the cell size.
struct CZELComBox::RowKind {
    KeptPicture picture;
    HBITMAP piece = nullptr;  // what it was stretched from
    void Release() {
        picture.canvas.Release();
        picture.drawn = false;
    }
};

struct CZELComBox::Skin {
    zelctl::SkinSet pieces{kPieces};
    zelctl::OwnedFont font{zelctl::CreateControlFont(kDefaultFontHeight)};
    KeptPicture closed, open;
    Shown closedShown, openShown;
    RowKind rowKinds[2];

    void Release() {
        for (KeptPicture* kept : {&closed, &open}) {
            kept->canvas.Release();
            kept->drawn = false;
        }
        for (RowKind& kind : rowKinds) kind.Release();
    }
};

BEGIN_MESSAGE_MAP(CZELComBox, CSkinWnd)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_WM_LBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_TIMER()
ON_WM_KILLFOCUS()
ON_WM_VSCROLL()
ON_WM_NCHITTEST()
ON_WM_SIZE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELComBox::CZELComBox()
    : m_nCurSel(-1),
      m_nLitRow(-1),
      m_nTopRow(0),
      m_nDroppedRows(kDefaultRows),
      m_nShownRows(0),
      m_bDropped(FALSE),
      m_bUpward(FALSE),
      m_nDrag(kNoDrag),
      m_nAutoScroll(0),
      m_hWndAbove(nullptr),
      m_crText(RGB(0, 0, 0)),
      m_crSelText(RGB(255, 255, 255)),
      m_pSkin(new Skin),
      m_bInCreate(FALSE),
      m_bClosing(FALSE) {}

// The window goes first, while the whole object still answers its messages (OnDestroy
// releases the capture and the timer); the pieces and the font go with m_pSkin.
CZELComBox::~CZELComBox() {
    if (::IsWindow(m_hWnd)) DestroyWindow();
    delete m_pSkin;
}

// ---- creation ------------------------------------------------------------------------------

BOOL CZELComBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    // The window must exist before it can own the bar: PreSubclassWindow runs too early
    // during creation, so it leaves the bar to this function.
    m_bInCreate = TRUE;
    const BOOL created = CWnd::Create(nullptr, L"", dwStyle, rect, pParentWnd, nID);
    m_bInCreate = FALSE;
    return created && CreateScrollBar();
}

// A dialog item being subclassed already exists: the bar is made at once. During Create
// the window is still being built, so Create makes the bar when it returns.
void CZELComBox::PreSubclassWindow() {
    CWnd::PreSubclassWindow();
    if (!m_bInCreate) CreateScrollBar();
}

BOOL CZELComBox::CreateScrollBar() {
    if (m_ScrollBar.m_hWnd) return TRUE;
    TakeClosedRect();
    // Hidden until a list needs it; its size comes from its skin and the open list.
    return m_ScrollBar.Create(L"VSCrollBar", WS_CHILD, CRect(1, 1, 20, 100), this, kScrollBarId);
}

// The closed box is whatever the window is while closed: the host may move or size it.
void CZELComBox::TakeClosedRect() {
    CRect window;
    GetWindowRect(&window);
    if (CWnd* parent = GetParent()) parent->ScreenToClient(&window);
    m_rcClosed = window;
    LayOutBox(0, window.Width());
}

void CZELComBox::OnSize(UINT nType, int cx, int cy) {
    CSkinWnd::OnSize(nType, cx, cy);
    if (!m_bDropped) TakeClosedRect();
}

// ---- skin ----------------------------------------------------------------------------------

void CZELComBox::LoadBitmapW(UINT nBoxLeft, UINT nBoxMiddle, UINT nBoxRight, UINT nArrow, UINT nArrowDown, UINT nRow,
                             UINT nRowSelected, HINSTANCE hInst) {
    m_pSkin->pieces.LoadIds({nBoxLeft, nBoxMiddle, nBoxRight, nArrow, nArrowDown, nRow, nRowSelected}, hInst);
    ContentChanged();
}

void CZELComBox::LoadBitmapW(CString strBoxLeft, CString strBoxMiddle, CString strBoxRight, CString strArrow,
                             CString strArrowDown, CString strRow, CString strRowSelected) {
    m_pSkin->pieces.LoadFiles({strBoxLeft, strBoxMiddle, strBoxRight, strArrow, strArrowDown, strRow, strRowSelected});
    ContentChanged();
}

void CZELComBox::LoadScrollBitmap(UINT nThumb, UINT nThumbDown, UINT nTrack, UINT nUp, UINT nDown, UINT nDownDown,
                                  UINT nUpDown, HINSTANCE hInst) {
    m_ScrollBar.LoadBitmapW(nThumb, nThumbDown, nTrack, nUp, nDown, nDownDown, nUpDown, hInst);
    ContentChanged();
}

void CZELComBox::LoadScrollBitmap(CString strThumb, CString strThumbDown, CString strTrack, CString strUp,
                                  CString strDown, CString strDownDown, CString strUpDown) {
    m_ScrollBar.LoadBitmapW(strThumb, strThumbDown, strTrack, strUp, strDown, strDownDown, strUpDown);
    ContentChanged();
}

void CZELComBox::LoadSkin(CString strSkin, CString strReserved) {
    (void)strReserved;
    CStringArray pieces;
    zelctl::SplitSkinList(strSkin, pieces);
    if (pieces.GetSize() == 0) return;
    m_pSkin->pieces.LoadSkinString(strSkin, zelctl::MissingPiece::Empty);
    if (pieces.GetSize() > kPieces) {
        // The rest is the bar's own string, in its own top-to-bottom order.
        CString bar;
        for (INT_PTR i = kPieces; i < pieces.GetSize(); ++i) bar += pieces[i] + L"|";
        m_ScrollBar.LoadSkin(bar, L"");
    }
    ContentChanged();
}

void CZELComBox::SetTextColor(COLORREF crText, COLORREF crSelected) {
    if (crText == m_crText && crSelected == m_crSelText) return;
    m_crText = crText;
    m_crSelText = crSelected;
    if (m_hWnd) Invalidate();
}

BOOL CZELComBox::SetFontHeight(int nHeight) {
    HFONT font = zelctl::CreateControlFont(nHeight);
    if (!font) return FALSE;
    m_pSkin->font.Reset(font);
    if (m_hWnd) Invalidate();
    return TRUE;
}

// ---- contents ------------------------------------------------------------------------------

int CZELComBox::AddString(LPCTSTR lpszString) {
    if (!lpszString) return CB_ERR;
    int index = static_cast<int>(m_items.size());
    if (m_hWnd && (GetStyle() & CBS_SORT)) {
        // After every item that sorts before or equal to it, as the framework's list keeps
        // equal items in the order they came.
        auto at = std::upper_bound(m_items.begin(), m_items.end(), lpszString, [](LPCTSTR s, const Item& item) {
            return item.text.CompareNoCase(s) > 0;
        });
        index = static_cast<int>(at - m_items.begin());
    }
    return InsertString(index, lpszString);
}

int CZELComBox::InsertString(int nIndex, LPCTSTR lpszString) {
    const int count = static_cast<int>(m_items.size());
    if (!lpszString || nIndex < -1 || nIndex > count) return CB_ERR;
    if (nIndex == -1) nIndex = count;
    m_items.insert(m_items.begin() + nIndex, Item{CString(lpszString), 0});
    if (m_nCurSel >= nIndex) ++m_nCurSel;
    if (m_nLitRow >= nIndex) ++m_nLitRow;
    ContentChanged();
    return nIndex;
}

int CZELComBox::DeleteString(UINT nIndex) {
    const int index = static_cast<int>(std::min<UINT>(nIndex, INT_MAX));
    if (!ValidIndex(index, m_items.size())) return CB_ERR;
    m_items.erase(m_items.begin() + index);
    // The selection follows its item; the deleted item's selection is gone.
    if (m_nCurSel == index) m_nCurSel = -1;
    else if (m_nCurSel > index) --m_nCurSel;
    if (m_nLitRow == index) m_nLitRow = -1;
    else if (m_nLitRow > index) --m_nLitRow;
    ContentChanged();
    return static_cast<int>(m_items.size());
}

void CZELComBox::ResetContent() {
    m_items.clear();
    m_nCurSel = m_nLitRow = -1;
    m_nTopRow = 0;
    ContentChanged();
}

int CZELComBox::GetCount() const { return static_cast<int>(m_items.size()); }

int CZELComBox::GetCurSel() const { return m_nCurSel >= 0 ? m_nCurSel : CB_ERR; }

int CZELComBox::SetCurSel(int nSelect) {
    const int sel = ValidIndex(nSelect, m_items.size()) ? nSelect : -1;
    if (sel != m_nCurSel) {
        m_nCurSel = sel;
        if (m_bDropped) {
            m_nLitRow = sel;
            ScrollTo(zelctl::ScrollToShow(sel, m_nTopRow, m_nShownRows, GetCount()));
        }
        if (m_hWnd) Invalidate();
    }
    return sel >= 0 ? sel : CB_ERR;
}

int CZELComBox::GetLBText(int nIndex, LPTSTR lpszText) const {
    if (!lpszText || !ValidIndex(nIndex, m_items.size())) return CB_ERR;
    const CString& text = m_items[static_cast<size_t>(nIndex)].text;
    std::wmemcpy(lpszText, text.GetString(), static_cast<size_t>(text.GetLength()) + 1);
    return text.GetLength();
}

void CZELComBox::GetLBText(int nIndex, CString& rString) const {
    rString = ValidIndex(nIndex, m_items.size()) ? m_items[static_cast<size_t>(nIndex)].text : CString();
}

int CZELComBox::GetLBTextLen(int nIndex) const {
    return ValidIndex(nIndex, m_items.size()) ? m_items[static_cast<size_t>(nIndex)].text.GetLength() : CB_ERR;
}

int CZELComBox::FindStringExact(int nIndexStart, LPCTSTR lpszFind) const {
    const int count = GetCount();
    if (!lpszFind || count == 0) return CB_ERR;
    const int start = ValidIndex(nIndexStart, m_items.size()) ? nIndexStart + 1 : 0;
    for (int n = 0; n < count; ++n) {
        const int i = (start + n) % count;
        if (m_items[static_cast<size_t>(i)].text.CompareNoCase(lpszFind) == 0) return i;
    }
    return CB_ERR;
}

int CZELComBox::SetItemData(int nIndex, DWORD_PTR dwItemData) {
    if (!ValidIndex(nIndex, m_items.size())) return CB_ERR;
    m_items[static_cast<size_t>(nIndex)].data = dwItemData;
    return CB_OKAY;
}

DWORD_PTR CZELComBox::GetItemData(int nIndex) const {
    return ValidIndex(nIndex, m_items.size()) ? m_items[static_cast<size_t>(nIndex)].data
                                              : static_cast<DWORD_PTR>(CB_ERR);
}

// ---- the list ------------------------------------------------------------------------------

void CZELComBox::ShowDropDown(BOOL bShowIt) {
    if (!::IsWindow(m_hWnd) || !bShowIt == !m_bDropped) return;
    if (bShowIt)
        DropDown();
    else
        CloseUp(FALSE, -1, FALSE);
}

BOOL CZELComBox::GetDroppedState() const { return m_bDropped; }

int CZELComBox::SetDroppedHeight(int nRows) {
    if (nRows < 1) return CB_ERR;
    if (nRows != m_nDroppedRows) {
        m_nDroppedRows = nRows;
        if (m_bDropped) LayOutOpen();
    }
    return nRows;
}

int CZELComBox::GetDroppedHeight() const { return m_nDroppedRows; }

void CZELComBox::GetDroppedControlRect(LPRECT lprect) const {
    if (!lprect) return;
    CRect list;
    if (m_bDropped) {
        list = m_rcList;
        ClientToScreen(&list);
    } else if (::IsWindow(m_hWnd)) {
        CRect box;
        GetWindowRect(&box);
        const zelctl::DropLayout plan =
            zelctl::PlanDropList(box, ::GetSystemMetrics(SM_CYSCREEN), GetCount(), m_nDroppedRows, RowHeight());
        list.SetRect(box.left, plan.upward ? box.top - plan.listHeight : box.bottom, box.right,
                     plan.upward ? box.top : box.bottom + plan.listHeight);
    }
    *lprect = list;
}

int CZELComBox::GetTopIndex() const { return m_nTopRow; }

int CZELComBox::GetItemHeight() const { return RowHeight(); }

int CZELComBox::RowHeight() const {
    const int h = m_pSkin->pieces.Size(kRow).cy;
    return h > 0 ? h : kDefaultRowHeight;
}

// ---- geometry ------------------------------------------------------------------------------

void CZELComBox::LayOutBox(int top, int width) {
    const int arrow = std::min<int>(m_pSkin->pieces.Size(kArrow).cx, std::max(width, 0));
    m_rcBox.SetRect(0, top, width, top + ClosedHeight());
    m_rcArrow.SetRect(width - arrow, top, width, top + ClosedHeight());
}

// Grows (or re-grows, when the items or the dropped height change while open) the window
// from the closed box, raised above its siblings.
void CZELComBox::LayOutOpen() {
    CWnd* parent = GetParent();
    CRect box = m_rcClosed;
    if (parent) parent->ClientToScreen(&box);
    const int rowHeight = RowHeight(), count = GetCount();
    const zelctl::DropLayout plan =
        zelctl::PlanDropList(box, ::GetSystemMetrics(SM_CYSCREEN), count, m_nDroppedRows, rowHeight);
    m_nShownRows = plan.rows;
    m_bUpward = plan.upward;

    const int width = m_rcClosed.Width(), boxTop = m_bUpward ? plan.listHeight : 0;
    LayOutBox(boxTop, width);
    const int listTop = m_bUpward ? 0 : ClosedHeight();
    m_rcList.SetRect(0, listTop, width, listTop + plan.listHeight);
    m_rcRows = m_rcList;
    const int top = m_rcClosed.top - (m_bUpward ? plan.listHeight : 0);
    SetWindowPos(&CWnd::wndTop, m_rcClosed.left, top, width, ClosedHeight() + plan.listHeight, SWP_NOACTIVATE);
    PlaceScrollBar();
    ScrollTo(zelctl::ScrollToShow(m_nLitRow, m_nTopRow, m_nShownRows, count));
    Invalidate();
}

// The bar stands at the list's right edge when the items exceed the rows; its position is
// the first visible row.
void CZELComBox::PlaceScrollBar() {
    if (!m_ScrollBar.m_hWnd) return;
    const int excess = GetCount() - m_nShownRows;
    if (!m_bDropped || excess <= 0 || m_nShownRows <= 0) {
        m_ScrollBar.ShowWindow(SW_HIDE);
        return;
    }
    CRect bar;
    m_ScrollBar.GetClientRect(&bar);
    const int barWidth = std::min(bar.Width(), m_rcList.Width());
    m_rcRows.right = m_rcList.right - barWidth;
    m_ScrollBar.MoveWindow(m_rcRows.right, m_rcList.top, barWidth, m_rcList.Height(), TRUE);
    m_ScrollBar.SetScrollRange(0, excess);
    m_ScrollBar.SetPagesize(m_nShownRows);
    m_ScrollBar.ShowWindow(SW_SHOW);
}

void CZELComBox::ScrollTo(int nTop) {
    nTop = std::clamp(nTop, 0, std::max(0, GetCount() - std::max(m_nShownRows, 1)));
    m_nTopRow = nTop;
    // The bar answers with SB_THUMBPOSITION, which only repaints (OnVScroll).
    if (m_bDropped && m_ScrollBar.m_hWnd && m_ScrollBar.IsWindowVisible() && m_ScrollBar.GetScrollPos() != nTop)
        m_ScrollBar.SetScrollPos(nTop, TRUE);
    if (m_hWnd) Invalidate();
}

void CZELComBox::ContentChanged() {
    if (!::IsWindow(m_hWnd)) return;
    if (m_bDropped)
        LayOutOpen();
    else {
        ScrollTo(m_nTopRow);  // a list box's top index stays among its items, shown or not
        LayOutBox(0, m_rcClosed.Width());
        Invalidate();
    }
}

// ---- opening and closing -------------------------------------------------------------------

BOOL CZELComBox::DropDown() {
    // The host hears first and may fill or resize the list before it shows.
    if (!zelctl::NotifyCommand(*this, CBN_DROPDOWN)) return FALSE;
    if (m_bDropped) return TRUE;  // the host opened it from inside the notification
    TakeClosedRect();
    CWnd* above = GetWindow(GW_HWNDPREV);
    m_hWndAbove = above ? above->m_hWnd : nullptr;
    m_bDropped = TRUE;
    m_nLitRow = m_nCurSel;
    m_nTopRow = std::max(m_nCurSel, 0);  // the selection heads the list where it can
    LayOutOpen();
    SetFocus();
    SetCapture();
    return TRUE;
}

// The selection changes before CBN_SELENDOK, so the host reads the new one there.
BOOL CZELComBox::CloseUp(BOOL bOk, int nChosen, BOOL bForceSelChange) {
    SetAutoScroll(0);
    m_nDrag = kNoDrag;
    if (GetCapture() == this) ::ReleaseCapture();
    const BOOL changed = bOk && nChosen >= 0 && nChosen != m_nCurSel;
    if (bOk && nChosen >= 0) m_nCurSel = nChosen;
    // A parent that destroys the box in a notification takes the focus from it first.
    m_bClosing = TRUE;
    if (!zelctl::NotifyCommand(*this, bOk ? CBN_SELENDOK : CBN_SELENDCANCEL)) return FALSE;
    m_bClosing = FALSE;
    if (!m_bDropped) return TRUE;  // closed from inside the notification
    RollUp();
    m_bClosing = TRUE;
    if (!zelctl::NotifyCommand(*this, CBN_CLOSEUP)) return FALSE;
    m_bClosing = FALSE;
    if (changed || (bOk && nChosen >= 0 && bForceSelChange)) return zelctl::NotifyCommand(*this, CBN_SELCHANGE);
    return TRUE;
}

// Back to the closed box: size, place and the Z order it had; the window manager repaints
// what the list covered.
void CZELComBox::RollUp() {
    m_bDropped = FALSE;
    m_nLitRow = -1;
    m_nShownRows = 0;
    m_rcList.SetRectEmpty();
    m_rcRows.SetRectEmpty();
    if (m_ScrollBar.m_hWnd) m_ScrollBar.ShowWindow(SW_HIDE);
    HWND after = m_hWndAbove && ::IsWindow(m_hWndAbove) && ::GetParent(m_hWndAbove) == ::GetParent(m_hWnd)
                     ? m_hWndAbove
                     : HWND_TOP;
    ::SetWindowPos(m_hWnd, after, m_rcClosed.left, m_rcClosed.top, m_rcClosed.Width(), m_rcClosed.Height(),
                   SWP_NOACTIVATE);
    m_hWndAbove = nullptr;
    LayOutBox(0, m_rcClosed.Width());
    Invalidate();
}

BOOL CZELComBox::StepSelection(int nDelta) {
    const int count = GetCount();
    if (count == 0) return TRUE;
    const int next = m_nCurSel < 0 ? 0 : std::clamp(m_nCurSel + nDelta, 0, count - 1);
    if (next == m_nCurSel) return TRUE;
    m_nCurSel = next;
    Invalidate();
    if (!zelctl::NotifyCommand(*this, CBN_SELENDOK)) return FALSE;
    return zelctl::NotifyCommand(*this, CBN_SELCHANGE);
}

void CZELComBox::MoveLitRow(int nDelta) {
    const int count = GetCount();
    if (count == 0) return;
    m_nLitRow = m_nLitRow < 0 ? m_nTopRow : std::clamp(m_nLitRow + nDelta, 0, count - 1);
    ScrollTo(zelctl::ScrollToShow(m_nLitRow, m_nTopRow, m_nShownRows, count));
    Invalidate();
}

// ---- input ---------------------------------------------------------------------------------

BOOL CZELComBox::IsOwnWindow(HWND hwnd) const {
    return hwnd && (hwnd == m_hWnd || hwnd == m_ScrollBar.m_hWnd);
}

BOOL CZELComBox::PreTranslateMessage(MSG* pMsg) {
    if (!pMsg || pMsg->message != WM_KEYDOWN || !IsOwnWindow(pMsg->hwnd)) return CSkinWnd::PreTranslateMessage(pMsg);
    switch (pMsg->wParam) {
        case VK_UP:
        case VK_DOWN: {
            const int delta = pMsg->wParam == VK_UP ? -1 : 1;
            if (m_bDropped)
                MoveLitRow(delta);
            else
                StepSelection(delta);
            return TRUE;
        }
        case VK_RETURN:
            if (m_bDropped)
                CloseUp(TRUE, m_nLitRow, FALSE);
            else
                DropDown();
            return TRUE;
        case VK_F4:
            if (m_bDropped)
                CloseUp(FALSE, -1, FALSE);
            else
                DropDown();
            return TRUE;
        case VK_ESCAPE:
            if (!m_bDropped) break;
            CloseUp(FALSE, -1, FALSE);
            return TRUE;
        default: break;
    }
    return CSkinWnd::PreTranslateMessage(pMsg);
}

void CZELComBox::OnLButtonDown(UINT nFlags, CPoint point) {
    Default();
    if (!m_bDropped) {
        SetFocus();
        if (!DropDown()) return;
        if (m_bDropped) m_nDrag = kOpeningPress;
        return;
    }
    CRect client;
    GetClientRect(&client);
    if (!client.PtInRect(point) || m_rcBox.PtInRect(point)) {
        // A tap outside or on the box chooses nothing, and its release is kept from the
        // window beneath, which never saw the press.
        if (!CloseUp(FALSE, -1, FALSE) || m_bDropped) return;
        SetCapture();
        m_nDrag = kSwallowUp;
        return;
    }
    if (m_ScrollBar.IsWindowVisible()) {
        CRect bar;
        m_ScrollBar.GetWindowRect(&bar);
        ScreenToClient(&bar);
        if (bar.PtInRect(point)) {
            m_nDrag = kLentToBar;
            LendToBar(WM_LBUTTONDOWN, nFlags, point);
            return;
        }
    }
    m_nDrag = kTrackRows;
    TrackRows(point);
}

// A quick second tap is the same tap to a combo box (the framework's class asks for
// double clicks).
void CZELComBox::OnLButtonDblClk(UINT nFlags, CPoint point) { OnLButtonDown(nFlags, point); }

void CZELComBox::OnMouseMove(UINT nFlags, CPoint point) {
    Default();
    if (!m_bDropped) return;
    switch (m_nDrag) {
        case kLentToBar: LendToBar(WM_MOUSEMOVE, nFlags, point); break;
        case kOpeningPress:
            if (!m_rcRows.PtInRect(point)) break;
            m_nDrag = kTrackRows;
            TrackRows(point);
            break;
        case kTrackRows: TrackRows(point); break;
        case kNoDrag:
        case kSwallowUp: break;
    }
}

void CZELComBox::OnLButtonUp(UINT nFlags, CPoint point) {
    Default();
    const Drag drag = m_nDrag;
    m_nDrag = kNoDrag;
    SetAutoScroll(0);
    if (drag == kSwallowUp && GetCapture() == this) ::ReleaseCapture();
    if (!m_bDropped) return;
    if (drag == kLentToBar) {
        LendToBar(WM_LBUTTONUP, nFlags, point);
        return;
    }
    if (drag != kTrackRows) return;
    const zelctl::RowGeometry rows{m_rcRows, RowHeight(), m_nTopRow, GetCount()};
    const int row = rows.RowAt(point);
    if (row >= 0) {
        CloseUp(TRUE, row, TRUE);
        return;
    }
    // Released off the rows: the list stays open and lights the selection again.
    m_nLitRow = m_nCurSel;
    Invalidate();
}

// Over the rows the lit row follows the stylus; above or below the list it scrolls.
void CZELComBox::TrackRows(CPoint point) {
    if (m_nShownRows <= 0) return;
    if (point.y < m_rcList.top) {
        SetAutoScroll(-1);
    } else if (point.y >= m_rcList.bottom) {
        SetAutoScroll(1);
    } else {
        SetAutoScroll(0);
        const zelctl::RowGeometry rows{m_rcRows, RowHeight(), m_nTopRow, GetCount()};
        const int row = std::min(rows.RowAtY(point.y), GetCount() - 1);
        if (row != m_nLitRow) {
            m_nLitRow = row;
            Invalidate();
        }
    }
}

void CZELComBox::SetAutoScroll(int nDirection) {
    if (nDirection == m_nAutoScroll) return;
    m_nAutoScroll = nDirection;
    if (!::IsWindow(m_hWnd)) return;
    if (nDirection)
        SetTimer(kAutoScrollTimer, kAutoScrollMs, nullptr);
    else
        KillTimer(kAutoScrollTimer);
}

void CZELComBox::OnTimer(UINT_PTR nIDEvent) {
    if (nIDEvent != kAutoScrollTimer) {
        Default();
        return;
    }
    if (!m_bDropped || !m_nAutoScroll) {
        SetAutoScroll(0);
        return;
    }
    const int top = m_nTopRow + m_nAutoScroll;
    ScrollTo(top);
    // The row that came into view at the edge the stylus is past lights.
    m_nLitRow = std::min(GetCount() - 1, m_nAutoScroll < 0 ? m_nTopRow : m_nTopRow + m_nShownRows - 1);
    Invalidate();
}

// The press belongs to the bar: it gets the message in its own coordinates, then the
// capture and the focus come back so that the next tap outside still closes the list.
void CZELComBox::LendToBar(UINT message, UINT nFlags, CPoint point) {
    HWND self = m_hWnd;
    MapWindowPoints(&m_ScrollBar, &point, 1);
    m_ScrollBar.SendMessage(message, nFlags, MAKELPARAM(static_cast<short>(point.x), static_cast<short>(point.y)));
    if (!::IsWindow(self) || !m_bDropped) return;
    if (GetCapture() != this) SetCapture();
    if (message == WM_LBUTTONUP && GetFocus() != this) SetFocus();
}

void CZELComBox::OnKillFocus(CWnd* pNewWnd) {
    Default();
    // The bar takes the focus while it is lent the stylus: that is not leaving the box.
    if (!m_bDropped || m_bClosing || (pNewWnd && IsOwnWindow(pNewWnd->m_hWnd))) return;
    CloseUp(FALSE, -1, FALSE);
}

void CZELComBox::OnVScroll(UINT, UINT, CScrollBar*) {
    if (m_ScrollBar.m_hWnd) m_nTopRow = std::clamp<int>(m_ScrollBar.GetScrollPos(), 0, std::max(0, GetCount() - 1));
    Invalidate();
}

// The whole window takes the stylus, whatever it was before: a subclassed static item
// would otherwise stay transparent to taps.
LRESULT CZELComBox::OnNcHitTest(CPoint) { return HTCLIENT; }

void CZELComBox::OnDestroy() {
    KillTimer(kAutoScrollTimer);
    m_nAutoScroll = 0;
    if (GetCapture() == this) ::ReleaseCapture();
    m_bDropped = FALSE;
    m_pSkin->Release();
    CSkinWnd::OnDestroy();
}

// ---- painting ------------------------------------------------------------------------------

CZELComBox::Shown CZELComBox::Showing() const {
    Shown shown;
    shown.dropped = m_bDropped;
    shown.box = m_rcBox;
    shown.arrow = m_rcArrow;
    for (int i = 0; i < kPieces; ++i) shown.pieces[i] = m_pSkin->pieces[static_cast<size_t>(i)];
    shown.font = m_pSkin->font;
    shown.text = m_crText;
    shown.lit = m_crSelText;
    shown.curSel = m_nCurSel;
    shown.captions.push_back(ValidIndex(m_nCurSel, m_items.size()) ? m_items[static_cast<size_t>(m_nCurSel)].text
                                                                   : CString());
    if (m_bDropped && m_nShownRows > 0) {
        shown.rows = m_rcRows;
        shown.litRow = m_nLitRow;
        shown.topRow = m_nTopRow;
        shown.shownRows = m_nShownRows;
        const int last = std::min(GetCount(), m_nTopRow + m_nShownRows);
        for (int row = m_nTopRow; row < last; ++row) shown.captions.push_back(m_items[static_cast<size_t>(row)].text);
    }
    return shown;
}

// The row kind stretched to w x h, kept while the piece and the size stay; null without a
// piece (the background then shows, as under any piece that failed to load).
const CZELComBox::RowKind* CZELComBox::KeptRowKind(HDC screen, bool lit, int w, int h) {
    HBITMAP piece = m_pSkin->pieces[lit ? kRowSelected : kRow];
    RowKind& kind = m_pSkin->rowKinds[lit ? 1 : 0];
    if (!piece || w <= 0 || h <= 0) return nullptr;
    KeptPicture& kept = kind.picture;
    if (!kept.drawn || kind.piece != piece || kept.canvas.width() != w || kept.canvas.height() != h) {
        kind.Release();
        {
            zelctl::OffscreenCanvas canvas(screen, w, h, kept.canvas);
            ::SelectClipRgn(canvas.dc(), nullptr);  // the paint's clip means nothing here
            canvas.Stretch(piece, 0, 0, w, h);
        }
        kind.piece = piece;
        kept.drawn = kept.canvas.dc() != nullptr;
    }
    return kept.drawn ? &kind : nullptr;
}

// The whole window on the canvas. A new canvas is filled whole first (a first write that
// leaves part of a new bitmap makes the platform clear it beforehand, which costs more); a
// kept one is filled only where no row is copied over the fill.
//
// Every row of a kind is the same stretch. On a kept canvas each row is a copy of its kind
// kept stretched aside; on a new one (the first paint at this size) the first row of a kind
// is stretched in place and the others copied from it, two rows fewer written than
// stretching the kinds aside first.
void CZELComBox::PaintWindow(zelctl::OffscreenCanvas& canvas, HDC screen, const CRect& client, bool fresh) {
    const zelctl::SkinSet& pieces = m_pSkin->pieces;
    HFONT font = m_pSkin->font;
    HDC mem = canvas.dc();
    const bool rows = m_bDropped && m_nShownRows > 0;
    const zelctl::RowGeometry geometry{m_rcRows, RowHeight(), m_nTopRow, GetCount()};
    const int last = rows ? std::min(GetCount(), m_nTopRow + m_nShownRows) : m_nTopRow;
    struct Source {
        HDC dc = nullptr;
        POINT at{0, 0};
    } kinds[2];  // where each kind's rows are copied from
    CRect covered;  // the rows' cells, when every row has its kind kept
    bool allCovered = !fresh;
    for (int row = m_nTopRow; row < last && !fresh; ++row) {
        const CRect cell = geometry.RowRect(row);
        Source& kind = kinds[row == m_nLitRow ? 1 : 0];
        if (!kind.dc)
            if (const RowKind* kept = KeptRowKind(screen, row == m_nLitRow, cell.Width(), cell.Height()))
                kind.dc = kept->picture.canvas.dc();
        allCovered = allCovered && kind.dc;
        covered.UnionRect(covered, cell);
    }
    {
        const int saved = ::SaveDC(mem);
        if (allCovered && !covered.IsRectEmpty())
            ::ExcludeClipRect(mem, covered.left, covered.top, covered.right, covered.bottom);
        canvas.Fill(client, kBackground);
        ::RestoreDC(mem, saved);
    }

    CRect box = m_rcBox;
    box.right = m_rcArrow.left;
    RECT text = zelctl::PaintThreePiece(canvas, box, {pieces[kBoxLeft], pieces[kBoxMiddle], pieces[kBoxRight]}, {});
    canvas.Stretch(pieces[m_bDropped ? kArrowDown : kArrow], m_rcArrow.left, m_rcArrow.top, m_rcArrow.Width(),
                   m_rcArrow.Height());
    if (m_nCurSel >= 0) {
        CString caption = m_items[static_cast<size_t>(m_nCurSel)].text;
        text.left += kTextInset;
        zelctl::SelectGuard select(mem, font);
        zelctl::ShortenWithEllipsis(mem, caption, text.right - text.left);
        zelctl::DrawSkinText(mem, caption, text, kTextFormat, m_crText, font);
    }
    if (!rows) return;

    // The captions come after all the rows; DrawText clips each to its own row.
    for (int row = m_nTopRow; row < last; ++row) {
        const bool lit = row == m_nLitRow;
        Source& kind = kinds[lit ? 1 : 0];
        const CRect cell = geometry.RowRect(row);
        if (kind.dc) {
            ::BitBlt(mem, cell.left, cell.top, cell.Width(), cell.Height(), kind.dc, kind.at.x, kind.at.y, SRCCOPY);
            continue;
        }
        if (!fresh) continue;  // no piece: the background shows
        canvas.Stretch(pieces[lit ? kRowSelected : kRow], cell.left, cell.top, cell.Width(), cell.Height());
        // Copied from only when wholly on the canvas (a source past its edge is no picture).
        CRect inside;
        if (pieces[lit ? kRowSelected : kRow] && inside.IntersectRect(cell, client) && inside == cell)
            kind = Source{mem, cell.TopLeft()};
    }
    zelctl::SelectGuard select(mem, font);
    for (int row = m_nTopRow; row < last; ++row) {
        const CRect cell = geometry.RowRect(row);
        const bool lit = row == m_nLitRow;
        CString caption = m_items[static_cast<size_t>(row)].text;
        CRect area = cell;
        area.left += kTextInset;
        area.right -= kTextInset / 2;
        zelctl::ShortenWithEllipsis(mem, caption, area.Width());
        zelctl::DrawSkinText(mem, caption, area, kTextFormat, lit ? m_crSelText : m_crText, font);
    }
}

// The window's picture is kept, one for the closed box and one for the open list: a paint
// where nothing shown changed (the list opened again as it was, the box uncovered) only
// presents it. A change redraws the whole picture, whatever part was invalidated.
void CZELComBox::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    KeptPicture& kept = m_bDropped ? m_pSkin->open : m_pSkin->closed;
    Shown& keptShown = m_bDropped ? m_pSkin->openShown : m_pSkin->closedShown;
    const bool sameSize =
        kept.canvas.dc() && kept.canvas.width() == client.Width() && kept.canvas.height() == client.Height();
    zelctl::OffscreenCanvas canvas(dc.GetSafeHdc(), client.Width(), client.Height(), kept.canvas);
    Shown shown = Showing();
    if (!sameSize || !kept.drawn || !(shown == keptShown)) {
        ::SelectClipRgn(canvas.dc(), nullptr);  // a kept canvas comes clipped to the update
        PaintWindow(canvas, dc.GetSafeHdc(), client, !sameSize);
        kept.drawn = kept.canvas.dc() != nullptr;
        keptShown = std::move(shown);
    }
    canvas.Present();
}
