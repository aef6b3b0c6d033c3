#include "CZELScrollbar.h"

#include <algorithm>
#include <climits>

#include "Notify.h"
#include "OffscreenCanvas.h"
#include "ScrollMath.h"
#include "SkinList.h"
#include "SkinSet.h"
#include "ThreePiece.h"

namespace {

constexpr UINT kRepeatMs = 100;  // every repeat, with no longer first delay
enum Timer : UINT_PTR { kUpArrowTimer = 1, kDownArrowTimer = 2, kPageUpTimer = 3, kPageDownTimer = 4 };
enum Part { kNoPart = 0, kThumbPart = 1, kUpPart = 2, kDownPart = 3 };
enum Piece { kThumb, kThumbDown, kTrack, kUp, kDown, kDownDown, kUpDown, kPieces };

}  // namespace

BEGIN_MESSAGE_MAP(CZELScrollbar, CSkinWnd)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_TIMER()
ON_WM_MOUSEMOVE()
ON_WM_DESTROY()
ON_WM_KILLFOCUS()
ON_WM_VSCROLL()
END_MESSAGE_MAP()

CZELScrollbar::CZELScrollbar()
    : m_skin(std::make_unique<zelctl::SkinSet>(kPieces)),
      m_bVertical(FALSE),
      m_nPressedPart(kNoPart),
      m_nMax(100),
      m_nMin(0),
      m_nPos(0),
      m_nPage(-1),
      m_nLine(1) {}

CZELScrollbar::~CZELScrollbar() = default;

BOOL CZELScrollbar::Create(LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    return CWnd::Create(nullptr, lpszWindowName, dwStyle, rect, pParentWnd, nID);
}

// ---- skin -------------------------------------------------------------------------------

void CZELScrollbar::LoadBitmapW(UINT nThumb, UINT nThumbDown, UINT nTrack, UINT nUp, UINT nDown, UINT nDownDown,
                                UINT nUpDown, HINSTANCE hInst) {
    m_skin->ReleaseAll();
    m_skin->LoadIds({nThumb, nThumbDown, nTrack, nUp, nDown, nDownDown, nUpDown}, hInst);
    m_bVertical = TRUE;
    LayOut();
}

void CZELScrollbar::LoadBitmapW(CString strThumb, CString strThumbDown, CString strTrack, CString strUp,
                                CString strDown, CString strDownDown, CString strUpDown) {
    m_skin->ReleaseAll();
    m_skin->LoadFiles({strThumb, strThumbDown, strTrack, strUp, strDown, strDownDown, strUpDown});
    m_bVertical = TRUE;
    LayOut();
}

void CZELScrollbar::LoadSkin(CString strSkin, CString strReserved) {
    CStringArray pieces;
    zelctl::SplitSkinList(strSkin, pieces);
    CString piece[7];
    for (INT_PTR i = 0; i < 7 && i < pieces.GetSize(); ++i) piece[i] = pieces[i];
    // The list runs from the top of the bar down; the loader takes its own order.
    LoadBitmapW(piece[3], piece[4], piece[2], piece[0], piece[5], piece[6], piece[1]);
}

// The bar takes the track's width and the height of the track bitmap plus two arrows;
// intended: the down arrow is taken to be as tall as the up arrow. Missing pieces count
// as 0 x 0.
void CZELScrollbar::LayOut() {
    const SIZE track = m_skin->Size(kTrack);
    const SIZE up = m_skin->Size(kUp);
    const SIZE thumb = m_skin->Size(kThumb);
    const int width = track.cx, arrow = up.cy, total = track.cy + 2 * arrow;

    m_rcUpArrow.SetRect(0, 0, up.cx, arrow);
    if (::IsWindow(m_hWnd)) SetWindowPos(nullptr, 0, 0, width, total, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    m_rcDownArrow.SetRect(0, total - arrow, width, total);
    m_rcTrack.SetRect(0, arrow, width, total - arrow);
    const int left = (width - thumb.cx) / 2;
    m_rcThumb.SetRect(left, arrow, left + thumb.cx, arrow + thumb.cy);
    m_rcClient.SetRect(0, 0, width, total);
    PlaceThumb();
    if (::IsWindow(m_hWnd)) Invalidate();
}

void CZELScrollbar::PlaceThumb() {
    if (!m_bVertical) return;
    const int height = m_rcThumb.Height();
    const int top = m_rcTrack.top + zelctl::ScrollThumbOffset(m_rcTrack.Height(), height, m_nPos, m_nMin, m_nMax);
    m_rcThumb.top = top;
    m_rcThumb.bottom = top + height;
    m_rcPageUp.SetRect(m_rcTrack.left, m_rcTrack.top, m_rcTrack.right, m_rcThumb.top);
    m_rcPageDown.SetRect(m_rcTrack.left, m_rcThumb.bottom, m_rcTrack.right, m_rcTrack.bottom);
}

// The cells follow the size the window really got: the window manager clamps an absurd
// size (a negative one is none), and cells laid out for the arguments would not fit it.
void CZELScrollbar::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) {
    CWnd::MoveWindow(x, y, nWidth, nHeight, bRepaint);
    if (m_bVertical) {
        CSize size(std::max(nWidth, 0), std::max(nHeight, 0));
        if (::IsWindow(m_hWnd)) {
            CRect client;
            GetClientRect(&client);
            size = client.Size();
        }
        const int w = size.cx, h = size.cy, arrow = m_rcUpArrow.Height();
        m_rcUpArrow.SetRect(0, 0, w, arrow);
        m_rcTrack.SetRect(0, arrow, w, h - arrow);
        m_rcDownArrow.SetRect(0, m_rcTrack.bottom, w, h);
        m_rcClient.SetRect(0, 0, w, h);
        m_rcPageUp.SetRect(0, arrow, w, m_rcThumb.top);
        m_rcPageDown.SetRect(0, m_rcThumb.bottom, w, m_rcDownArrow.top);
    }
    if (::IsWindow(m_hWnd)) Invalidate();
}

void CZELScrollbar::MoveWindow(LPCRECT lpRect, BOOL bRepaint) {
    if (lpRect) MoveWindow(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top, bRepaint);
}

// ---- range, page, line, position ----------------------------------------------------------

void CZELScrollbar::SetScrollRange(long nMin, long nMax) {
    if (nMin >= nMax) {
        // Intended, never stored: an empty range would divide by zero when the thumb is placed.
        m_nMin = 0;
        m_nMax = 1;
        m_nPos = 0;
    } else {
        m_nMin = nMin;
        m_nMax = nMax;
        m_nPos = zelctl::ClampPos(m_nPos, nMin, nMax);
    }
    if (::IsWindow(m_hWnd)) Invalidate();
}

// Intended: reading the range also repaints the bar.
void CZELScrollbar::GetRange(long& nMin, long& nMax) {
    nMin = m_nMin;
    nMax = m_nMax;
    if (::IsWindow(m_hWnd)) Invalidate();
}

// Intended: the parent hears SB_THUMBPOSITION even when the host itself set the position.
void CZELScrollbar::SetScrollPos(long nPos, BOOL bRedraw) {
    m_nPos = zelctl::ClampPos(nPos, m_nMin, m_nMax);
    if (bRedraw && ::IsWindow(m_hWnd)) Invalidate();
    Notify(SB_THUMBPOSITION, m_nPos);
}

long CZELScrollbar::SetPagesize(long nPage) {
    const __int128 span = __int128(m_nMax) - m_nMin;
    if (nPage >= 1 && nPage <= span - 1)
        m_nPage = nPage;
    else if (nPage == -1)
        m_nPage = -1;
    else if (nPage >= span)
        m_nPage = zelctl::ClampPos(span, LONG_MIN, LONG_MAX);
    else
        m_nPage = 0;
    return m_nPage;
}

long CZELScrollbar::SetLineSize(long nLine) {
    const __int128 span = __int128(m_nMax) - m_nMin;
    if (nLine >= span)
        m_nLine = zelctl::ClampPos(span, LONG_MIN, LONG_MAX);
    else if (nLine < 1)
        return -1;
    else
        m_nLine = nLine;
    return m_nLine;
}

// Intended: range and page are taken unchecked, as the device takes them.
BOOL CZELScrollbar::SetScrollInfo(SCROLLINFO* psi, BOOL bRedraw) {
    if (!psi) return FALSE;
    m_nMin = psi->nMin;
    m_nMax = psi->nMax;
    // A 32-bit long on the device reads a UINT page of 0xFFFFFFFF as -1, "not set".
    m_nPage = static_cast<LONG>(psi->nPage);
    int& source = psi->fMask ? psi->nTrackPos : psi->nPos;
    m_nPos = zelctl::ClampPos(source, m_nMin, m_nMax);
    source = static_cast<int>(m_nPos);
    if (bRedraw && ::IsWindow(m_hWnd)) Invalidate();
    return TRUE;
}

BOOL CZELScrollbar::GetScrollInfo(SCROLLINFO* psi, UINT nMask) {
    if (!psi) return FALSE;
    if (psi->fMask == 0) return TRUE;
    psi->nMin = static_cast<int>(m_nMin);
    psi->nMax = static_cast<int>(m_nMax);
    psi->nPage = static_cast<UINT>(m_nPage);
    psi->nPos = static_cast<int>(m_nPos);
    psi->nTrackPos = static_cast<int>(m_nPos);
    return TRUE;
}

// ---- steps and notifications ----------------------------------------------------------------

// Without a window there is nobody to tell and nothing that could die: the step goes on.
BOOL CZELScrollbar::Notify(UINT nCode, long nPos) {
    if (!m_hWnd) return TRUE;
    return zelctl::NotifyScroll(*this, m_bVertical ? WM_VSCROLL : WM_HSCROLL, nCode, nPos);
}

long CZELScrollbar::PageStep() const {
    if (m_nPage == -1) return static_cast<long>((__int128(m_nMax) - m_nMin) / 5);
    return m_nPage > 0 ? m_nPage : 0;
}

// Intended: a line up at the minimum still tells the parent, with the position unchanged.
BOOL CZELScrollbar::LeftLine() {
    if (m_nPos > m_nMin) m_nPos = zelctl::ClampPos(__int128(m_nPos) - m_nLine, m_nMin, LONG_MAX);
    Invalidate();
    return Notify(SB_LINEUP, 0);
}

BOOL CZELScrollbar::RightLine() {
    if (m_nPos < m_nMax) m_nPos = zelctl::ClampPos(__int128(m_nPos) + m_nLine, LONG_MIN, m_nMax);
    if (!Notify(SB_LINEDOWN, 0)) return FALSE;
    Invalidate();
    return TRUE;
}

// Intended: unlike the line steps, a page step at the limit does nothing at all.
BOOL CZELScrollbar::LeftPage() {
    if (m_nPos == m_nMin) return TRUE;
    const long step = PageStep();
    m_nPos = __int128(m_nPos) > __int128(m_nMin) + step ? m_nPos - step : m_nMin;
    Invalidate();
    return Notify(SB_PAGEUP, 0);
}

BOOL CZELScrollbar::RightPage() {
    if (m_nPos == m_nMax) return TRUE;
    const long step = PageStep();
    m_nPos = __int128(m_nPos) < __int128(m_nMax) - step ? m_nPos + step : m_nMax;
    Invalidate();
    return Notify(SB_PAGEDOWN, 0);
}

// ---- input ------------------------------------------------------------------------------

void CZELScrollbar::OnLButtonDown(UINT nFlags, CPoint point) {
    Default();
    SetFocus();
    SetCapture();
    m_ptLast = point;
    if (m_rcUpArrow.PtInRect(point)) {
        m_nPressedPart = kUpPart;
        if (LeftLine()) SetTimer(kUpArrowTimer, kRepeatMs, nullptr);
    } else if (m_rcThumb.PtInRect(point)) {
        m_nPressedPart = kThumbPart;
        Invalidate();
    } else if (m_rcDownArrow.PtInRect(point)) {
        m_nPressedPart = kDownPart;
        if (RightLine()) SetTimer(kDownArrowTimer, kRepeatMs, nullptr);
    } else if (m_rcPageUp.PtInRect(point)) {
        if (LeftPage()) SetTimer(kPageUpTimer, kRepeatMs, nullptr);
    } else if (m_rcPageDown.PtInRect(point)) {
        if (RightPage()) SetTimer(kPageDownTimer, kRepeatMs, nullptr);
    }
}

// The arrow timers keep running while the pointer is outside their cell, so sliding back
// onto the arrow resumes the repeat; the page timers stop themselves at the limit.
void CZELScrollbar::OnTimer(UINT_PTR nIDEvent) {
    switch (nIDEvent) {
        case kUpArrowTimer:
        case kDownArrowTimer: {
            const bool up = nIDEvent == kUpArrowTimer;
            if ((up ? m_rcUpArrow : m_rcDownArrow).PtInRect(m_ptLast)) {
                m_nPressedPart = up ? kUpPart : kDownPart;
                if (!(up ? LeftLine() : RightLine())) return;
            } else if (m_nPressedPart != kNoPart) {
                m_nPressedPart = kNoPart;
                Invalidate();
            }
            break;
        }
        case kPageUpTimer:
            if (m_nPos == m_nMin)
                KillTimer(kPageUpTimer);
            else if (m_rcPageUp.PtInRect(m_ptLast) && !LeftPage())
                return;
            break;
        case kPageDownTimer:
            if (m_nPos == m_nMax)
                KillTimer(kPageDownTimer);
            else if (m_rcPageDown.PtInRect(m_ptLast) && !RightPage())
                return;
            break;
        default: break;
    }
    Default();
}

void CZELScrollbar::OnMouseMove(UINT nFlags, CPoint point) {
    Default();
    m_ptLast = point;
    if (m_nPressedPart == kThumbPart) {
        m_nPos = m_bVertical ? zelctl::ScrollDragVertical(point.y, m_rcTrack, m_rcThumb.Height(), m_nMin, m_nMax)
                             : zelctl::ScrollDragHorizontal(point.x, m_rcTrack, m_rcThumb.Width(), m_nMin, m_nMax);
        // The device sends the thumb track without testing the parent first; a parent
        // that is not a window cannot receive it, so the tested send is the same.
        if (!Notify(SB_THUMBTRACK, m_nPos)) return;
    }
    Invalidate();
    UpdateWindow();
}

void CZELScrollbar::OnLButtonUp(UINT nFlags, CPoint point) {
    Default();
    ::ReleaseCapture();
    KillTimer(kPageDownTimer);
    KillTimer(kDownArrowTimer);
    KillTimer(kUpArrowTimer);
    KillTimer(kPageUpTimer);
    if (m_nPressedPart == kNoPart) return;
    if (m_nPressedPart == kThumbPart && !Notify(SB_THUMBPOSITION, m_nPos)) return;
    m_nPressedPart = kNoPart;
    Invalidate();
}

BOOL CZELScrollbar::PreTranslateMessage(MSG* pMsg) {
    if (pMsg && pMsg->message == WM_KEYDOWN) {
        switch (pMsg->wParam) {
            case VK_PRIOR: LeftPage(); return TRUE;
            case VK_NEXT: RightPage(); return TRUE;
            case VK_UP:
                if (!m_bVertical) break;
                LeftLine();
                return TRUE;
            case VK_DOWN:
                if (!m_bVertical) break;
                RightLine();
                return TRUE;
            case VK_LEFT:
                if (m_bVertical) break;
                LeftLine();
                return TRUE;
            case VK_RIGHT:
                if (m_bVertical) break;
                RightLine();
                return TRUE;
            default: break;
        }
    }
    return CSkinWnd::PreTranslateMessage(pMsg);
}

void CZELScrollbar::OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar) { Invalidate(); }

// ---- focus and lifetime -------------------------------------------------------------------

void CZELScrollbar::KillRepeatTimers() {
    for (UINT_PTR id : {kUpArrowTimer, kDownArrowTimer, kPageUpTimer, kPageDownTimer}) KillTimer(id);
}

void CZELScrollbar::OnKillFocus(CWnd* pNewWnd) {
    Default();
    KillRepeatTimers();
}

void CZELScrollbar::OnDestroy() {
    m_skin->ReleaseAll();
    KillRepeatTimers();
    Default();
}

// ---- painting ----------------------------------------------------------------------------

// A bar without a skin (the horizontal state) has no drawing of its own: the paint only
// validates it.
void CZELScrollbar::OnPaint() {
    CPaintDC dc(this);
    if (!m_bVertical) return;
    CRect client;
    GetClientRect(&client);
    PlaceThumb();
    const zelctl::SkinSet& skin = *m_skin;
    // The canvas covers what the paint can change: a bar moved to 32767 pixels long paints
    // what shows of it.
    zelctl::OffscreenCanvas canvas(dc, zelctl::OffscreenCanvas::PaintArea(dc, client.Width(), client.Height()));
    // Arrows and track as one vertical frame; both arrows are as tall as the up arrow's
    // cell, as the layout assumed.
    const zelctl::ThreePieceSkin frame{skin[m_nPressedPart == kUpPart ? kUpDown : kUp], skin[kTrack],
                                       skin[m_nPressedPart == kDownPart ? kDownDown : kDown]};
    zelctl::ThreePieceStyle style;
    style.axis = zelctl::Axis::Vertical;
    style.capLength = m_rcUpArrow.Height();
    zelctl::PaintThreePiece(canvas, m_rcClient, frame, style);
    canvas.Blit(skin[m_nPressedPart == kThumbPart ? kThumbDown : kThumb], m_rcThumb.left, m_rcThumb.top,
                m_rcThumb.Width(), m_rcThumb.Height());
    canvas.Present();
}
