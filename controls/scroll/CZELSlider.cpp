#include "CZELSlider.h"

#include <algorithm>
#include <climits>

#include "Notify.h"
#include "OffscreenCanvas.h"
#include "ScrollMath.h"
#include "SkinList.h"
#include "SkinSet.h"

namespace {

constexpr UINT kPageRepeatMs = 500;
enum Timer : UINT_PTR { kTowardMinTimer = 1, kTowardMaxTimer = 2 };
enum ThumbState { kThumbNormal = 0, kThumbPressed = 1, kThumbReleased = 2 };
constexpr COLORREF kThumbKey = RGB(255, 0, 255);  // magenta shows what lies under the thumb

enum Piece {
    kLeft, kRight,                                  // the ends
    kThumb, kThumbUp, kThumbDown,                   // the thumb
    kChanFill, kChannel, kChanLeft, kChanRight,     // the channel
    kBack, kFill,                                   // the progress style
    kPieces
};
constexpr size_t kSliderPieces = kBack;

CString PathAt(const CArray<CString, CString>& paths, INT_PTR i) { return i < paths.GetSize() ? paths[i] : CString(); }

}  // namespace

BEGIN_MESSAGE_MAP(CZELSlider, CSkinWnd)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_ACTIVATE()
ON_WM_KILLFOCUS()
ON_WM_TIMER()
ON_WM_DESTROY()
ON_WM_SETFOCUS()
ON_WM_SIZE()
END_MESSAGE_MAP()

CZELSlider::CZELSlider()
    : m_nMin(0),
      m_nMax(100),
      m_nPage(-1),
      m_nLine(1),
      m_nPos(0),
      m_skin(std::make_unique<zelctl::SkinSet>(kPieces)),
      m_bVertical(FALSE),
      m_bMoveStyle(FALSE),
      m_bDragging(FALSE),
      m_nThumbState(kThumbNormal),
      m_nStyle(0),
      m_bSkinLoaded(FALSE),
      m_nLayerStyle(0),
      m_bLayerStale(true) {}

// The window is gone by now when the host destroyed it first; intended: OnDestroy leaves
// the bitmaps to the destructor (the skin set's).
CZELSlider::~CZELSlider() = default;

// ---- skin ---------------------------------------------------------------------------------

void CZELSlider::LoadBitmapW(const UINT* const pEnds, const UINT* const pThumb, const UINT* const pChannel,
                             HINSTANCE hInst) {
    for (size_t piece = 0; piece < kSliderPieces; ++piece) m_skin->Release(piece);
    m_bLayerStale = true;
    m_skin->LoadIds(pEnds, 2, hInst, kLeft);
    m_skin->LoadIds(pThumb, 3, hInst, kThumb);
    m_skin->LoadIds(pChannel, 4, hInst, kChanFill);
    LayOutSlider();
}

void CZELSlider::LoadBitmaps(CArray<CString, CString>& ends, CArray<CString, CString>& thumb,
                             CArray<CString, CString>& channel) {
    for (size_t piece = 0; piece < kSliderPieces; ++piece) m_skin->Release(piece);
    m_bLayerStale = true;
    m_skin->LoadFiles({PathAt(ends, 0), PathAt(ends, 1), PathAt(thumb, 0), PathAt(thumb, 1), PathAt(thumb, 2),
                       PathAt(channel, 0), PathAt(channel, 1), PathAt(channel, 2), PathAt(channel, 3)},
                      kLeft);
    LayOutSlider();
}

void CZELSlider::LoadBitmapW(UINT nBack, UINT nFill, HINSTANCE hInst) {
    m_skin->Release(kBack);
    m_skin->Release(kFill);
    m_bLayerStale = true;
    m_skin->LoadIds({nBack, nFill}, hInst, kBack);
    if (::IsWindow(m_hWnd)) GetClientRect(&m_rcClient);
    m_rcChannel = m_rcClient;
    m_rcThumb.SetRectEmpty();
    Redraw();
}

void CZELSlider::LoadBitmaps(CString strBack, CString strFill) {
    m_skin->Release(kBack);
    m_skin->Release(kFill);
    m_bLayerStale = true;
    m_skin->LoadFiles({strBack, strFill}, kBack);
    if (::IsWindow(m_hWnd)) GetClientRect(&m_rcClient);
    m_rcChannel = m_rcClient;
    m_rcThumb.SetRectEmpty();
    Redraw();
}

void CZELSlider::LoadSkin(CString strSkin, CString strReserved) {
    CStringArray pieces;
    zelctl::SplitSkinList(strSkin, pieces);
    if (pieces.GetSize() == 2) {
        LoadBitmaps(pieces[0], pieces[1]);
        SetStyle(1);
        return;
    }
    CArray<CString, CString> ends, thumb, channel;
    for (INT_PTR i = 0; i < 9 && i < pieces.GetSize(); ++i) (i < 2 ? ends : i < 5 ? thumb : channel).Add(pieces[i]);
    LoadBitmaps(ends, thumb, channel);
    SetStyle(0);
}

// The nine-piece skin fixes the height to the left cap's (a skin without one keeps the
// window's height); the channel runs between the caps and the thumb starts at its left.
void CZELSlider::LayOutSlider() {
    const SIZE left = m_skin->Size(kLeft);
    if (::IsWindow(m_hWnd)) GetClientRect(&m_rcClient);
    if ((*m_skin)[kLeft]) {
        m_rcClient.bottom = m_rcClient.top + left.cy;
        if (::IsWindow(m_hWnd))
            SetWindowPos(nullptr, 0, 0, m_rcClient.Width(), m_rcClient.Height(),
                         SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    const SIZE right = m_skin->Size(kRight);
    const SIZE thumb = m_skin->Size(kThumb);
    m_rcChannel.SetRect(m_rcClient.left + left.cx, m_rcClient.top, m_rcClient.right - right.cx, m_rcClient.bottom);
    m_rcThumb.SetRect(m_rcChannel.left, 0, m_rcChannel.left + thumb.cx, thumb.cy);
    m_bSkinLoaded = TRUE;
    Redraw();
}

// After a size change: the progress style fills the client area; a nine-piece slider lays
// its channel out between the caps again.
void CZELSlider::ReLay() {
    if (::IsWindow(m_hWnd)) GetClientRect(&m_rcClient);
    if (m_nStyle == 1) {
        m_rcChannel = m_rcClient;
        m_rcThumb.SetRectEmpty();
    } else if (m_bSkinLoaded) {
        const SIZE left = m_skin->Size(kLeft);
        const SIZE right = m_skin->Size(kRight);
        const SIZE thumb = m_skin->Size(kThumb);
        m_rcChannel.SetRect(m_rcClient.left + left.cx, m_rcClient.top, m_rcClient.right - right.cx,
                            m_rcClient.bottom);
        m_rcThumb.SetRect(m_rcChannel.left, 0, m_rcChannel.left + thumb.cx, thumb.cy);
    }
}

void CZELSlider::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) {
    CWnd::MoveWindow(x, y, nWidth, nHeight, bRepaint);
    ReLay();
    Redraw();
}

void CZELSlider::MoveWindow(CRect rect, BOOL bRepaint) {
    MoveWindow(rect.left, rect.top, rect.Width(), rect.Height(), bRepaint);
}

void CZELSlider::SetChanRect(UINT cx, UINT cy) {
    const UINT width = static_cast<UINT>(std::max(0, m_rcClient.Width()));
    const UINT height = static_cast<UINT>(std::max(0, m_rcClient.Height()));
    if (cx > width) cx = width;
    if (cy > height) cy = height;
    const int left = m_rcClient.left + static_cast<int>((width - cx) / 2);
    const int top = m_rcClient.top + static_cast<int>((height - cy) / 2);
    m_rcChannel.SetRect(left, top, left + static_cast<int>(cx), top + static_cast<int>(cy));
    Redraw();
}

void CZELSlider::SetStyle(int nStyle) {
    m_nStyle = nStyle;
    if (nStyle == 1) {
        m_rcChannel = m_rcClient;
        m_rcThumb.SetRectEmpty();
    } else if (nStyle == 0 && m_bSkinLoaded) {
        ReLay();
    }
    Redraw();
}

void CZELSlider::SetvStyle(bool bVertical) {
    m_bVertical = bVertical;
    Redraw();
}

void CZELSlider::SetMoveStyle(bool bMove) { m_bMoveStyle = bMove; }

void CZELSlider::Redraw() {
    if (::IsWindow(m_hWnd)) Invalidate();
}

// ---- range, position, steps ------------------------------------------------------------------

// Intended: a new range nearly always restarts the position at the new minimum; hosts
// call SetPos after SetRange.
void CZELSlider::SetRange(long nMin, long nMax, BOOL bRedraw) {
    if (nMax > nMin) {
        m_nPos = zelctl::SliderRangePos(m_nPos, m_nMin, m_nMax, nMin, nMax);
        m_nMin = nMin;
        m_nMax = nMax;
    } else {
        m_nMin = m_nMax = m_nPos = 0;
    }
    if (bRedraw) Redraw();
}

void CZELSlider::GetRange(long& nMin, long& nMax) const {
    nMin = m_nMin;
    nMax = m_nMax;
}

void CZELSlider::SetPos(int nPos) {
    m_nPos = zelctl::ClampPos(nPos, m_nMin, m_nMax);
    Redraw();
}

UINT CZELSlider::SetPageSize(int nPage) {
    const long previous = m_nPage;
    m_nPage = nPage;
    return static_cast<UINT>(previous);
}

int CZELSlider::SetLineSize(int nLine) {
    const long previous = m_nLine;
    m_nLine = nLine;
    return static_cast<int>(previous);
}

// Without a window there is nobody to tell and nothing that could die: the step goes on.
BOOL CZELSlider::Notify(UINT nMessage, UINT nCode, long nPos) {
    if (!m_hWnd) return TRUE;
    return zelctl::NotifyScroll(*this, nMessage, nCode, nPos);
}

// A line step at the limit changes nothing and tells nobody.
BOOL CZELSlider::StepLine(int nDirection, UINT nMessage, UINT nCode) {
    if (nDirection < 0 ? m_nPos <= m_nMin : m_nPos >= m_nMax) return TRUE;
    m_nPos = zelctl::ClampPos(__int128(m_nPos) + __int128(nDirection) * m_nLine, m_nMin, m_nMax);
    if (!Notify(nMessage, nCode, 0)) return FALSE;
    Redraw();
    return TRUE;
}

// Intended: a page step always tells the parent, even at the limit, and always as WM_HSCROLL.
BOOL CZELSlider::StepPage(int nDirection, UINT nCode) {
    const __int128 step = m_nPage == -1 ? (__int128(m_nMax) - m_nMin) / 5 : __int128(m_nPage);
    m_nPos = zelctl::ClampPos(__int128(m_nPos) + nDirection * step, m_nMin, m_nMax);
    Redraw();
    return Notify(WM_HSCROLL, nCode, 0);
}

void CZELSlider::LineLeft() { StepLine(-1, WM_HSCROLL, SB_LINEUP); }
void CZELSlider::LineRight() { StepLine(+1, WM_HSCROLL, SB_LINEDOWN); }
void CZELSlider::LineUp() { StepLine(+1, WM_VSCROLL, SB_LINEUP); }
void CZELSlider::Linedown() { StepLine(-1, WM_VSCROLL, SB_LINEDOWN); }
void CZELSlider::LeftPage() { StepPage(-1, SB_PAGEUP); }
void CZELSlider::Rightpage() { StepPage(+1, SB_PAGEDOWN); }

// ---- input --------------------------------------------------------------------------------

void CZELSlider::OnLButtonDown(UINT nFlags, CPoint point) {
    m_ptLast = point;
    SetFocus();
    SetCapture();
    if (m_bMoveStyle && m_rcChannel.PtInRect(point)) {
        m_nPos = m_bVertical ? zelctl::SliderJumpVertical(point.y, m_rcChannel, m_nMin, m_nMax)
                             : zelctl::SliderJumpHorizontal(point.x, m_rcChannel, m_nMin, m_nMax);
        m_bDragging = TRUE;
        Invalidate();
        // Intended: a jump reads as a page step toward the maximum, without the position.
        if (!Notify(ScrollMessage(), m_bVertical ? SB_PAGEUP : SB_PAGEDOWN, 0)) return;
    } else if (m_bVertical ? point.y >= m_rcThumb.bottom : point.x >= m_rcThumb.right) {
        SetTimer(kTowardMaxTimer, kPageRepeatMs, nullptr);
        if (!StepPage(+1, SB_PAGEDOWN)) return;
    } else if (m_bVertical ? point.y < m_rcThumb.top : point.x < m_rcThumb.left) {
        SetTimer(kTowardMinTimer, kPageRepeatMs, nullptr);
        if (!StepPage(-1, SB_PAGEUP)) return;
    } else {
        m_nThumbState = kThumbPressed;
        m_bDragging = TRUE;
        Invalidate();
    }
    Default();
}

// The repeat pages while the pointer stays in the slider on its side of the thumb, judged
// by x alone, also on a vertical slider (intended); the timer runs on until the release.
void CZELSlider::OnTimer(UINT_PTR nIDEvent) {
    const bool inside = m_rcClient.PtInRect(m_ptLast) != FALSE;
    if (nIDEvent == kTowardMinTimer && inside && m_ptLast.x < m_rcThumb.left) {
        if (!StepPage(-1, SB_PAGEUP)) return;
    } else if (nIDEvent == kTowardMaxTimer && inside && m_ptLast.x >= m_rcThumb.right) {
        if (!StepPage(+1, SB_PAGEDOWN)) return;
    }
    Default();
}

void CZELSlider::OnMouseMove(UINT nFlags, CPoint point) {
    m_ptLast = point;
    if (m_bDragging) {
        m_nPos = m_bVertical ? zelctl::SliderDragVertical(point.y, m_rcChannel, m_rcThumb.Height(), m_nMin, m_nMax)
                             : zelctl::SliderDragHorizontal(point.x, m_rcChannel, m_rcThumb.Width(), m_nMin, m_nMax);
        if (!Notify(ScrollMessage(), SB_THUMBTRACK, m_nPos)) return;
        Invalidate();
    }
    Default();
}

void CZELSlider::OnLButtonUp(UINT nFlags, CPoint point) {
    ::ReleaseCapture();
    KillTimer(kTowardMinTimer);
    KillTimer(kTowardMaxTimer);
    m_nThumbState = kThumbReleased;
    Invalidate();
    if (m_bDragging) {
        m_bDragging = FALSE;
        if (!Notify(ScrollMessage(), SB_THUMBPOSITION, m_nPos)) return;
    }
    Default();
}

BOOL CZELSlider::PreTranslateMessage(MSG* pMsg) {
    if (pMsg && pMsg->message == WM_KEYDOWN) {
        const UINT key = static_cast<UINT>(pMsg->wParam);
        if (!m_bVertical) {
            switch (key) {
                case VK_LEFT: LineLeft(); return TRUE;
                case VK_RIGHT: LineRight(); return TRUE;
                case VK_PRIOR: LeftPage(); return TRUE;
                case VK_NEXT: Rightpage(); return TRUE;
                default: break;
            }
        } else {
            switch (key) {
                case VK_UP: LineUp(); return TRUE;
                case VK_DOWN: Linedown(); return TRUE;
                case VK_PRIOR: Rightpage(); return TRUE;
                case VK_NEXT: LeftPage(); return TRUE;
                default: break;
            }
        }
    }
    return CSkinWnd::PreTranslateMessage(pMsg);
}

// ---- focus, size and lifetime ----------------------------------------------------------------

void CZELSlider::OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized) { Default(); }

void CZELSlider::OnSetFocus(CWnd* pOldWnd) { Default(); }

void CZELSlider::OnKillFocus(CWnd* pNewWnd) {
    m_nThumbState = kThumbNormal;
    KillTimer(kTowardMinTimer);
    KillTimer(kTowardMaxTimer);
    Invalidate();
    Default();
}

void CZELSlider::OnSize(UINT nType, int cx, int cy) {
    Default();
    ReLay();
}

BOOL CZELSlider::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    return CSkinWnd::OnNotify(wParam, lParam, pResult);
}

void CZELSlider::OnDestroy() {
    KillTimer(kTowardMinTimer);
    KillTimer(kTowardMaxTimer);
    DropKept();
    Default();
}

// The kept canvas and layer go with the window (a window made again paints them anew).
void CZELSlider::DropKept() {
    m_canvas.reset();
    m_layer.reset();
    m_bLayerStale = true;
}

// ---- painting ------------------------------------------------------------------------------

// Value to pixel: the thumb is centred on the position's point of the channel, keeping its
// top and bottom. Returns the centre, where the filled channel ends.
int CZELSlider::PlaceThumb() {
    const int width = m_rcThumb.Width();
    const int centre = zelctl::SliderThumbCentre(m_rcChannel, width, m_nPos, m_nMin, m_nMax);
    m_rcThumb.left = centre - width / 2;
    m_rcThumb.right = m_rcThumb.left + width;
    return centre;
}

// A window of ordinary size keeps its canvas and its still layer (PaintKept); a huge one
// paints only what shows of it on a canvas made for the paint.
void CZELSlider::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    if (PaintKept(dc, client.Width(), client.Height())) return;
    zelctl::OffscreenCanvas canvas(dc, zelctl::OffscreenCanvas::PaintArea(dc, client.Width(), client.Height()));
    PaintLayer(canvas, client.Width(), client.Height());
    PaintMoving(canvas, client.Width(), client.Height());
    canvas.Present();
}

// The layer is painted whole once per size, style, channel and skin; each paint copies the
// part of it the paint DC may draw on, draws the fill and the thumb over that part only,
// and presents that part. FALSE when the window is too large to keep bitmaps of, or a
// bitmap could not be made: the caller then paints the plain way.
bool CZELSlider::PaintKept(HDC screen, int width, int height) {
    constexpr long long kKeepPixels = 1 << 20;
    if (width <= 0 || height <= 0 || static_cast<long long>(width) * height > kKeepPixels) return false;
    if (!m_canvas) m_canvas = std::make_unique<zelctl::CanvasStore>();
    if (!m_layer) m_layer = std::make_unique<zelctl::CanvasStore>();
    const CSize size(width, height);
    if (m_bLayerStale || !m_layer->dc() || m_layerSize != size || m_rcLayerChannel != m_rcChannel ||
        m_nLayerStyle != m_nStyle) {
        // Remade rather than reused: a reused store paints only this paint's area.
        m_layer->Release();
        {
            zelctl::OffscreenCanvas layer(screen, width, height, *m_layer);
            PaintLayer(layer, width, height);
        }
        if (!m_layer->dc()) return false;
        m_layerSize = size;
        m_rcLayerChannel = m_rcChannel;
        m_nLayerStyle = m_nStyle;
        m_bLayerStale = false;
    }
    const RECT box = zelctl::OffscreenCanvas::PaintArea(screen, width, height);
    if (::IsRectEmpty(&box)) return true;  // nothing of the window shows
    zelctl::OffscreenCanvas canvas(screen, width, height, *m_canvas);
    if (!m_canvas->dc()) return false;
    const int boxWidth = box.right - box.left, boxHeight = box.bottom - box.top;
    ::IntersectClipRect(canvas.dc(), box.left, box.top, box.right, box.bottom);
    ::BitBlt(canvas.dc(), box.left, box.top, boxWidth, boxHeight, m_layer->dc(), box.left, box.top, SRCCOPY);
    PaintMoving(canvas, width, height);
    ::BitBlt(screen, box.left, box.top, boxWidth, boxHeight, canvas.dc(), box.left, box.top, SRCCOPY);
    return true;
}

// Slider: caps at both ends over the full height; the channel's end pieces beside the caps
// (the right one drawn at the left one's width); the empty channel stretched between the
// end pieces. Progress: the background over the whole client area.
//
// Not a three-piece frame: the channel's end pieces stay beside the caps while the empty
// channel follows SetChanRect, the right piece takes the left one's width (intended), and
// in a slider narrower than its pieces the right cap covers the left channel piece.
void CZELSlider::PaintLayer(zelctl::OffscreenCanvas& canvas, int width, int height) {
    const zelctl::SkinSet& skin = *m_skin;
    if (m_nStyle) {
        canvas.Stretch(skin[kBack], 0, 0, width, height);
        return;
    }
    const SIZE leftCap = skin.Size(kLeft);
    const SIZE rightCap = skin.Size(kRight);
    const int piece = skin.Size(kChanLeft).cx;
    const CRect& ch = m_rcChannel;
    canvas.Blit(skin[kLeft], 0, 0, leftCap.cx, height);
    canvas.Blit(skin[kChanLeft], leftCap.cx, ch.top, piece, ch.Height());
    canvas.Blit(skin[kChanRight], width - piece - rightCap.cx, ch.top, piece, ch.Height());
    canvas.Blit(skin[kRight], width - rightCap.cx, 0, rightCap.cx, height);
    canvas.Stretch(skin[kChannel], ch.left + piece, ch.top, ch.Width() - 2 * piece, ch.Height());
}

// Over the layer, what follows the position. Slider: the filled channel stretched up to the
// thumb's centre at its own height, centred in the channel; the thumb for its state with
// magenta transparent. Progress: the part of the fill bitmap that stands for the position,
// from the left, or upward from the bottom in vertical mode.
void CZELSlider::PaintMoving(zelctl::OffscreenCanvas& canvas, int width, int height) {
    const zelctl::SkinSet& skin = *m_skin;
    if (m_nStyle) {
        if (!m_bVertical) {
            canvas.Blit(skin[kFill], 0, 0, zelctl::ProgressSpan(width, m_nPos, m_nMin, m_nMax), height);
        } else {
            const int filled = zelctl::ProgressSpan(height, m_nPos, m_nMin, m_nMax);
            const int fillHeight = skin.Size(kFill).cy;
            canvas.Blit(skin[kFill], 0, height - filled, width, filled, 0, fillHeight - filled);
        }
        return;
    }
    const int piece = skin.Size(kChanLeft).cx;
    const int fill = skin.Size(kChanFill).cy;
    const CRect& ch = m_rcChannel;
    const int centre = PlaceThumb();
    canvas.Stretch(skin[kChanFill], ch.left + piece, ch.top + (ch.Height() - fill) / 2, centre - (ch.left + piece), fill);
    const HBITMAP thumb = skin[m_nThumbState == kThumbPressed    ? kThumbDown
                               : m_nThumbState == kThumbReleased ? kThumbUp
                                                                 : kThumb];
    canvas.Transparent(thumb, m_rcThumb.left, m_rcThumb.top, m_rcThumb.Width(), m_rcThumb.Height(), kThumbKey);
}
