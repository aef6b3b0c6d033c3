#include "CZELButton.h"

#include <cstdint>
#include <iterator>
#include <vector>

#include "Notify.h"
#include "SkinList.h"
#include "SkinPaint.h"
#include "SkinPixels.h"
#include "SkinSet.h"

namespace {

enum Piece { kNormal, kFocus, kDown, kDisable, kPieces };

constexpr UINT_PTR kRepeatTimer = 1;
constexpr UINT_PTR kDelayTimer = 2;
constexpr UINT kRepeatDelayMs = 300;
constexpr UINT kRepeatPeriodMs = 100;

// The one button size whose corners are cut: the region is the body (0, 4)-(78, 72) with
// three steps of rows at the top and at the bottom.
constexpr int kShapedWidth = 78;
constexpr int kShapedHeight = 76;
constexpr RECT kShapedBody = {0, 4, 78, 72};
constexpr RECT kShapedSteps[] = {
    {4, 0, 74, 1}, {2, 1, 76, 2}, {1, 2, 77, 4}, {4, 75, 74, 76}, {2, 74, 76, 75}, {1, 72, 77, 74},
};

// The caption strip: 21 pixels below the button, 8 wider on each side.
constexpr int kStripHeight = 21;
constexpr int kStripOverhang = 8;

// Coordinates add as the device's 32-bit integers do: a strip or a size beyond the
// coordinate range wraps around rather than being undefined.
int Wrap(int64_t v) { return static_cast<int>(v); }

}  // namespace

BEGIN_MESSAGE_MAP(CZELButton, CButton)
    ON_WM_KILLFOCUS()
    ON_WM_SETFOCUS()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_PAINT()
    ON_WM_TIMER()
    ON_WM_DESTROY()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_ENABLE()
    ON_WM_SIZE()
END_MESSAGE_MAP()

CZELButton::CZELButton()
    : m_skin(std::make_unique<zelctl::SkinSet>(kPieces)),
      m_bCaptionStrip(false),
      m_bAutoClick(false),
      m_ptLast(0, 0),
      m_bPressed(0) {
    m_rgnWindow.CreateRectRgnIndirect(&kShapedBody);
}

// The skin set releases what OnDestroy did not (an object whose window never existed).
CZELButton::~CZELButton() = default;

BOOL CZELButton::Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                        bool bCaptionStrip) {
    CRect rc(rect);
    m_bCaptionStrip = bCaptionStrip;
    if (bCaptionStrip) {
        rc.bottom = Wrap(int64_t{rect.bottom} - kStripHeight);
        m_rcCaption.SetRect(Wrap(int64_t{rect.left} - kStripOverhang), Wrap(int64_t{rect.bottom} - (kStripHeight - 1)),
                            Wrap(int64_t{rect.right} + kStripOverhang), rect.bottom);
    }
    // Intended as it is: callers pass BS_OWNERDRAW or a push style; a style sharing any bit with BS_OWNERDRAW
    // (a default push button, a check box) becomes owner-drawn.
    if (dwStyle & BS_OWNERDRAW) dwStyle |= BS_OWNERDRAW;
    return CButton::Create(lpszCaption, dwStyle, rc, pParentWnd, nID);
}

void CZELButton::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) {
    CWnd::MoveWindow(x, y, nWidth, nHeight, bRepaint);
    if (m_bCaptionStrip)
        m_rcCaption.SetRect(Wrap(int64_t{x} - kStripOverhang), Wrap(int64_t{y} + nHeight + 1),
                            Wrap(int64_t{x} + nWidth + kStripOverhang), Wrap(int64_t{y} + nHeight + kStripHeight));
}

// Intended: unlike the other overload, this one leaves the caption strip where it was.
void CZELButton::MoveWindow(CRect rect, BOOL bRepaint) {
    CWnd::MoveWindow(rect.left, rect.top, Wrap(int64_t{rect.right} - rect.left), Wrap(int64_t{rect.bottom} - rect.top),
                     bRepaint);
}

BOOL CZELButton::ShowWindow(int nCmdShow) { return CWnd::ShowWindow(nCmdShow); }

void CZELButton::SetWindowTextW(LPCTSTR lpszString) { CWnd::SetWindowTextW(lpszString); }

// Intended: both arguments are ignored; the whole client area is invalidated with erase.
void CZELButton::InvalidateRect(const RECT*, BOOL) {
    if (m_hWnd) CWnd::InvalidateRect(nullptr, TRUE);
}

BOOL CZELButton::EnableWindow(BOOL bEnable) { return CWnd::EnableWindow(bEnable); }

// Intended no-op: resource skins are the other buttons' business.
void CZELButton::LoadBitmaps(UINT, UINT, UINT, HINSTANCE) {}

void CZELButton::LoadBitmaps(CString strNormal, CString strFocus, CString strDown, CString strDisable) {
    for (Piece piece : {kDown, kFocus, kNormal, kDisable}) m_skin->Release(piece);  // the order the device frees them
    ModifyStyle(0, BS_OWNERDRAW, 0);
    m_skin->LoadFiles({strNormal, strFocus, strDown, strDisable});
    // Without a window there is nothing to repaint (and a null window would mean all).
    if (m_hWnd) CWnd::InvalidateRect(nullptr, TRUE);
}

void CZELButton::LoadSkin(CString strSkin, CString) {
    CStringArray pieces;
    zelctl::SplitSkinList(strSkin, pieces);
    const INT_PTR n = pieces.GetSize();
    if (n == 0) return;
    LoadBitmaps(pieces[0], pieces[n > 1 ? 1 : 0], pieces[n > 2 ? 2 : 0], pieces[n > 3 ? 3 : 0]);
}

// Intended: auto-repeat works from the flag alone; the window class is left as it is (the BUTTON
// class is shared by every button of the process).
void CZELButton::SetAutoClick(bool bAuto) { m_bAutoClick = bAuto; }

// Intended no-op, kept call for call: it reads the client rectangle and makes and frees a
// memory DC, drawing nothing. All drawing is in OnPaint.
void CZELButton::DrawBitmap(HDC hDC, STATE) {
    if (!hDC) return;
    CRect rc;
    GetClientRect(&rc);
    (void)rc;
    HDC memDC = ::CreateCompatibleDC(hDC);
    ::DeleteDC(memDC);
}

// Intended to be empty: the BUTTON class asks, but the button paints in WM_PAINT.
void CZELButton::DrawItem(LPDRAWITEMSTRUCT) {}

// The BUTTON class would fill the background with the parent's button brush before
// every paint; the skin covers the button, so erasing would only flicker.
LRESULT CZELButton::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) return 0;
    return CButton::WindowProc(message, wParam, lParam);
}

BOOL CZELButton::PreTranslateMessage(MSG* pMsg) {
    if (pMsg && pMsg->message == WM_KEYDOWN && pMsg->wParam == VK_RETURN) {
        zelctl::NotifyCommand(*this);
        return TRUE;
    }
    return CButton::PreTranslateMessage(pMsg);
}

HBITMAP CZELButton::ChooseSkin() const {
    const zelctl::SkinSet& skin = *m_skin;
    if (IsWindowEnabled()) {
        const bool focused = ::GetFocus() == m_hWnd;
        if (focused && m_bPressed && skin[kDown]) return skin[kDown];
        if (focused && skin[kFocus]) return skin[kFocus];
    } else if (skin[kDisable]) {
        return skin[kDisable];
    }
    return skin[kNormal];
}

void CZELButton::OnPaint() {
    CPaintDC dc(this);
    zelctl::PaintSingleSkin(*this, dc, ChooseSkin());
}

// Intended: the parent sees presses and releases in screen coordinates, so a host can
// follow a drag across several buttons.
bool CZELButton::ForwardToParent(UINT message, UINT nFlags, CPoint point) {
    return zelctl::ForwardPointer(*this, message, nFlags, point, zelctl::PointIn::Screen);
}

void CZELButton::OnLButtonDown(UINT nFlags, CPoint point) {
    const zelctl::AliveCheck alive(*this);
    m_bPressed = 1;
    SetFocus();
    SetCapture();
    m_ptLast = point;
    if (m_bAutoClick) SetTimer(kDelayTimer, kRepeatDelayMs, nullptr);
    Default();
    if (!alive.Alive() || !ForwardToParent(WM_LBUTTONDOWN, nFlags, point)) return;
    Invalidate(TRUE);
    UpdateWindow();
}

// Intended: tracks the pointer whether or not the stylus went down on this button (no
// look at the flags or the capture).
void CZELButton::OnMouseMove(UINT, CPoint point) {
    const zelctl::AliveCheck alive(*this);
    m_ptLast = point;
    Default();
    if (!alive.Alive()) return;
    CRect rc;
    GetClientRect(&rc);
    const bool inside = rc.PtInRect(point) != FALSE;
    if (inside == (m_bPressed != 0)) return;
    m_bPressed = inside ? 1 : 0;
    Invalidate(TRUE);
    UpdateWindow();
}

// Intended: whether the release clicks is decided by where the pointer was last seen, not by the
// release point; an outside release never reaches the BUTTON logic, which is what would
// send BN_CLICKED.
void CZELButton::OnLButtonUp(UINT nFlags, CPoint point) {
    const zelctl::AliveCheck alive(*this);
    m_bPressed = 0;
    KillTimer(kRepeatTimer);
    KillTimer(kDelayTimer);
    CRect rc;
    GetClientRect(&rc);
    if (rc.PtInRect(m_ptLast)) Default();  // the parent may destroy us in its BN_CLICKED
    ::ReleaseCapture();
    if (!alive.Alive() || !ForwardToParent(WM_LBUTTONUP, nFlags, point)) return;
    Invalidate(TRUE);
}

// Intended: the BUTTON class would turn a double tap into BN_DOUBLECLICKED; here the second tap
// is a click of its own.
void CZELButton::OnLButtonDblClk(UINT, CPoint) { zelctl::NotifyCommand(*this); }

void CZELButton::OnTimer(UINT_PTR nIDEvent) {
    if (nIDEvent == kDelayTimer) {
        KillTimer(kDelayTimer);
        SetTimer(kRepeatTimer, kRepeatPeriodMs, nullptr);
    }
    if (nIDEvent == kDelayTimer || nIDEvent == kRepeatTimer) {
        // Held outside the button: skip the repeat but keep the timer running, so that
        // sliding back in resumes it.
        CRect rc;
        GetClientRect(&rc);
        if (rc.PtInRect(m_ptLast) && !zelctl::NotifyCommand(*this)) return;
    }
    Default();
}

void CZELButton::OnKillFocus(CWnd*) {
    const zelctl::AliveCheck alive(*this);
    m_bPressed = 0;
    KillTimer(kRepeatTimer);
    KillTimer(kDelayTimer);
    Default();
    if (!alive.Alive()) return;
    Invalidate(TRUE);
    UpdateWindow();
}

void CZELButton::OnSetFocus(CWnd*) {
    const zelctl::AliveCheck alive(*this);
    Default();
    if (alive.Alive()) Invalidate(TRUE);
}

void CZELButton::OnEnable(BOOL) {
    const zelctl::AliveCheck alive(*this);
    Default();
    if (!alive.Alive()) return;
    Invalidate(TRUE);
    UpdateWindow();
}

// SetWindowRgn hands the region to the window; the handle kept here is only deleted again
// (a harmless no-op once the window has taken it).
void CZELButton::OnSize(UINT, int cx, int cy) {
    Default();
    m_rgnWindow.DeleteObject();
    if (cx == kShapedWidth && cy == kShapedHeight) {
        // The body and its steps share no pixel: one region made of all of them at once.
        std::vector<RECT> parts(std::begin(kShapedSteps), std::end(kShapedSteps));
        parts.push_back(kShapedBody);
        m_rgnWindow.Attach(zelctl::RegionFromSpans(parts));
    } else {
        m_rgnWindow.CreateRectRgn(0, 0, cx, cy);
    }
    SetWindowRgn(static_cast<HRGN>(m_rgnWindow.m_hObject), TRUE);
}

void CZELButton::OnDestroy() {
    for (Piece piece : {kNormal, kDown, kFocus, kDisable}) m_skin->Release(piece);  // the device's order
    KillTimer(kRepeatTimer);
    KillTimer(kDelayTimer);
    m_rgnWindow.DeleteObject();  // the region the window was given, as on every size change
    CButton::OnDestroy();
}
