#include "CBmpTextButton.h"

#include "ControlFont.h"
#include "OffscreenCanvas.h"
#include "SkinSet.h"
#include "SkinText.h"

namespace {

enum Piece { kNormal, kFocus, kDown, kPieces };

constexpr LONG kCaptionWeight = FW_BOLD;
constexpr int kNormalHeight = 14;
// Intended: the caption grows when the button is focused or pressed.
constexpr int kActiveHeight = 25;

}  // namespace

BEGIN_MESSAGE_MAP(CBmpTextButton, CButton)
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CBmpTextButton::CBmpTextButton()
    : m_skin(std::make_unique<zelctl::SkinSet>(kPieces)),
      m_fontNormal(std::make_unique<zelctl::OwnedFont>(zelctl::CreateControlFont(kNormalHeight, kCaptionWeight))),
      m_fontActive(std::make_unique<zelctl::OwnedFont>(zelctl::CreateControlFont(kActiveHeight, kCaptionWeight))),
      m_crNormal(RGB(0, 0, 0)),
      m_crActive(RGB(255, 255, 255)) {}

// The fonts of a button that never had a window, and the skins, go with their owners.
CBmpTextButton::~CBmpTextButton() = default;

void CBmpTextButton::LoadBitmaps(UINT nNormal, UINT nFocus, UINT nDown, HINSTANCE hInst) {
    m_skin->ReleaseAll();
    ModifyStyle(0, BS_OWNERDRAW, 0);
    m_skin->LoadIds({nNormal, nFocus, nDown}, hInst);
    if (m_hWnd) Invalidate();
}

// Intended: nHeightActive is not used, so after this call both states draw at nHeight.
void CBmpTextButton::SetFont(int nHeight, int, DWORD crNormal, DWORD crActive) {
    m_fontNormal->Reset();
    m_fontActive->Reset();
    m_fontNormal->Create(nHeight, kCaptionWeight);
    m_fontActive->Create(nHeight, kCaptionWeight);
    m_crNormal = crNormal;
    m_crActive = crActive;
    if (m_hWnd) Invalidate();
}

void CBmpTextButton::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) {
    CWnd::MoveWindow(x, y, nWidth, nHeight, bRepaint);
}

void CBmpTextButton::MoveWindow(CRect& rect, BOOL bRepaint) { CWnd::MoveWindow(&rect, bRepaint); }

BOOL CBmpTextButton::ShowWindow(int nCmdShow) { return CWnd::ShowWindow(nCmdShow); }

// Intended: pushed without the focus (BM_SETSTATE from elsewhere) draws as normal.
void CBmpTextButton::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) {
    if (!lpDrawItemStruct) return;
    const UINT itemState = lpDrawItemStruct->itemState;
    STATE state = STATE_NORMAL;
    if (itemState & ODS_FOCUS) state = (itemState & ODS_SELECTED) ? STATE_DOWN : STATE_FOCUS;
    CDC dc;
    dc.Attach(lpDrawItemStruct->hDC);
    DrawBitmap(&dc, state);
    dc.Detach();
}

// The skin stretched over the client area, the caption centred on it, one copy out.
void CBmpTextButton::DrawBitmap(CDC* pDC, STATE state) {
    if (!pDC || !pDC->m_hDC) return;
    CString text;
    GetWindowText(text);
    CRect rc;
    GetClientRect(&rc);

    const bool active = state == STATE_FOCUS || state == STATE_DOWN;
    const HBITMAP skin = (*m_skin)[state == STATE_FOCUS ? kFocus : state == STATE_DOWN ? kDown : kNormal];
    const HFONT font = active ? m_fontActive->get() : m_fontNormal->get();
    // The canvas covers what the paint can change; the caption is placed in its coordinates.
    zelctl::OffscreenCanvas canvas(*pDC, zelctl::OffscreenCanvas::PaintArea(*pDC, rc.Width(), rc.Height()));
    canvas.Stretch(skin, 0, 0, rc.Width(), rc.Height());
    RECT textRect = canvas.Local(rc);
    if (textRect.left < 0) {
        // DrawText centres at (left + right - width) / 2, rounded toward zero. A caption that
        // starts left of the canvas gets a negative sum there where the client area has a
        // positive one, and an odd sum would round the other way: a pixel more on the left
        // keeps the caption where a whole-client canvas puts it.
        const zelctl::SelectGuard guard(canvas.dc(), font);
        const long long sum = static_cast<long long>(rc.left) + rc.right - zelctl::TextWidth(canvas.dc(), text);
        if (sum >= 0 && (sum & 1) && sum < -2LL * textRect.left) --textRect.left;
    }
    zelctl::DrawSkinText(canvas.dc(), text, textRect, DT_CENTER | DT_VCENTER | DT_SINGLELINE,
                         active ? m_crActive : m_crNormal, font);
    canvas.Present();
}

void CBmpTextButton::OnDestroy() {
    m_fontNormal->Reset();
    m_fontActive->Reset();
    CButton::OnDestroy();
}
