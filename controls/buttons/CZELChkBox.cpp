#include "CZELChkBox.h"

#include "ControlFont.h"
#include "Notify.h"
#include "OffscreenCanvas.h"
#include "SkinList.h"
#include "SkinSet.h"
#include "SkinText.h"

namespace {

enum Piece { kChecked, kUnchecked, kBack, kPieces };

constexpr int kDefaultFontHeight = 18;
constexpr int kCaptionGap = 5;             // between the box and the caption
constexpr int kWrappedCaptionHeight = 31;  // from this measured height on, the caption wraps

}  // namespace

BEGIN_MESSAGE_MAP(CZELChkBox, CSkinWnd)
    ON_WM_PAINT()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDOWN()
    ON_WM_KILLFOCUS()
    ON_WM_SETFOCUS()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELChkBox::CZELChkBox()
    : m_bChecked(0),
      m_skin(std::make_unique<zelctl::SkinSet>(kPieces)),
      m_bPressed(FALSE),
      m_bClickable(TRUE),
      m_font(std::make_unique<zelctl::OwnedFont>(zelctl::CreateControlFont(kDefaultFontHeight, FW_NORMAL))),
      m_crText(RGB(0, 0, 0)) {}

// OnDestroy leaves the unchecked image and the font behind; they, and everything of a
// check box whose window never existed, go with the skin set and the font.
CZELChkBox::~CZELChkBox() = default;

// Intended to do nothing: the check box needs no set-up when a window is attached.
void CZELChkBox::PreSubclassWindow() {}

int CZELChkBox::GetCheck() { return m_bChecked; }

void CZELChkBox::SetCheck(int n) {
    m_bChecked = n != 0;
    if (m_hWnd) Invalidate();  // a null window would mean every window
}

void CZELChkBox::SetAutoClick(bool b) { m_bClickable = b; }

// Intended: the face is not used; every check box caption is in "Tahoma".
void CZELChkBox::SetFont(int nHeight, CString, DWORD crText) {
    m_font->Reset();
    m_font->Create(nHeight, FW_NORMAL);
    m_crText = crText;
    if (m_hWnd) Invalidate();
}

// Paths pass through a MAX_PATH buffer: longer ones are cut there.
void CZELChkBox::LoadBitmapW(CString strChecked, CString strUnchecked, CString strBack) {
    m_skin->ReleaseAll();
    m_skin->LoadFiles({zelctl::PathInBuffer(strChecked), zelctl::PathInBuffer(strUnchecked),
                       zelctl::PathInBuffer(strBack)});
    if ((*m_skin)[kUnchecked]) {
        const SIZE box = m_skin->Size(kUnchecked);
        m_rcBox.SetRect(0, 0, box.cx, box.cy);
    }
    if (m_hWnd) Invalidate();
}

void CZELChkBox::LoadSkin(CString strSkin, CString) {
    CStringArray pieces;
    zelctl::SplitSkinList(strSkin, pieces);
    const INT_PTR n = pieces.GetSize();
    if (n == 0) return;
    LoadBitmapW(pieces[0], pieces[n > 1 ? 1 : 0], pieces[n > 2 ? 2 : 0]);
}

BOOL CZELChkBox::PreTranslateMessage(MSG* pMsg) {
    if (pMsg && pMsg->message == WM_KEYDOWN && pMsg->wParam == VK_RETURN) {
        Toggle();
        return TRUE;
    }
    return CSkinWnd::PreTranslateMessage(pMsg);
}

bool CZELChkBox::Toggle() {
    m_bChecked = m_bChecked ? 0 : 1;
    Invalidate();
    return zelctl::NotifyCommand(*this);
}

void CZELChkBox::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    // The canvas covers what the paint can change: a box moved to 32767 pixels wide paints
    // what shows of it.
    zelctl::OffscreenCanvas canvas(dc, zelctl::OffscreenCanvas::PaintArea(dc, client.Width(), client.Height()));
    ::SetTextColor(canvas.dc(), m_crText);
    canvas.Stretch((*m_skin)[kBack], 0, 0, client.Width(), client.Height());
    const int boxTop = (client.Height() - m_rcBox.Height()) / 2;
    canvas.Blit((*m_skin)[m_bChecked == 1 ? kChecked : kUnchecked], 0, boxTop, m_rcBox.Width(), m_rcBox.Height());
    const RECT origin = canvas.Local(RECT{});
    PaintCaption(canvas.dc(), client, CPoint(origin.left, origin.top));
    canvas.Present();
}

// The caption, the hit area that follows the measured text, and the focus rectangle. All
// are placed in client coordinates and drawn `toCanvas` from there (the canvas may start
// inside the client area): the caption is left-aligned and centred only vertically, by
// half its rectangle's height, so it lands on the same pixels as on a whole-client canvas.
void CZELChkBox::PaintCaption(HDC dc, const CRect& client, CPoint toCanvas) {
    CString text;
    GetWindowText(text);
    const zelctl::SelectGuard font(dc, m_font->get());
    ::SetBkMode(dc, TRANSPARENT);
    const CRect rcText(m_rcBox.Width() + kCaptionGap, client.top + 1, client.right - 1, client.bottom - 1);
    const CRect measured(zelctl::MeasureText(dc, text, rcText, DT_WORDBREAK));
    const int textHeight = measured.Height();
    CRect drawn = rcText + toCanvas;
    ::DrawTextW(dc, text, text.GetLength(), &drawn, textHeight < kWrappedCaptionHeight ? DT_SINGLELINE | DT_VCENTER : DT_WORDBREAK);

    // Taps count on the box's rows, from the box to just past the text; the blank rest of
    // the caption rectangle does not toggle.
    const int boxTop = (client.Height() - m_rcBox.Height()) / 2;
    m_rcHit.SetRect(0, boxTop, measured.right + 1, boxTop + m_rcBox.Height());

    // Intended: centred on the caption rectangle even when a wrapped caption is drawn from its top.
    if (::GetFocus() == m_hWnd) {
        const int top = rcText.top + (rcText.Height() - textHeight) / 2;
        const CRect focus = CRect(measured.left - 2, top - 1, measured.right + 1, top + textHeight + 1) + toCanvas;
        ::DrawFocusRect(dc, &focus);
    }
}

void CZELChkBox::OnLButtonDown(UINT, CPoint point) {
    if (!m_bClickable || !m_rcHit.PtInRect(point)) return;
    m_bPressed = TRUE;
    SetFocus();
    Default();
}

void CZELChkBox::OnLButtonUp(UINT, CPoint point) {
    if (m_bPressed && m_rcHit.PtInRect(point) && !Toggle()) return;
    m_bPressed = FALSE;
    Default();
}

void CZELChkBox::OnSetFocus(CWnd*) {
    const zelctl::AliveCheck alive(*this);
    Default();
    if (alive.Alive()) Invalidate();
}

void CZELChkBox::OnKillFocus(CWnd*) {
    const zelctl::AliveCheck alive(*this);
    Default();
    if (alive.Alive()) Invalidate();
}

// Intended, call for call: the background is deleted twice and the unchecked image and
// the font are left to the destructor. The set then forgets the two it no longer owns.
void CZELChkBox::OnDestroy() {
    ::DeleteObject((*m_skin)[kBack]);
    ::DeleteObject((*m_skin)[kChecked]);
    ::DeleteObject((*m_skin)[kBack]);
    m_skin->Detach(kBack);
    m_skin->Detach(kChecked);
    CSkinWnd::OnDestroy();
}
