#include "CBmpTextButton.h"

#include "ControlFont.h"
#include "SkinList.h"

namespace {

constexpr LONG kCaptionWeight = FW_BOLD;
constexpr int kNormalHeight = 14;
constexpr int kActiveHeight = 25;  // the caption grows when the button is focused or pressed

}  // namespace

BEGIN_MESSAGE_MAP(CBmpTextButton, CButton)
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CBmpTextButton::CBmpTextButton()
    : m_hFontNormal(zelctl::CreateControlFont(kNormalHeight, kCaptionWeight)),
      m_hFontActive(zelctl::CreateControlFont(kActiveHeight, kCaptionWeight)),
      m_crNormal(RGB(0, 0, 0)),
      m_crActive(RGB(255, 255, 255)) {}

// OnDestroy releases the fonts of a button that had a window; this covers one that never
// had one. The skins go with their wrappers.
CBmpTextButton::~CBmpTextButton() {
    zelctl::ReleaseFont(m_hFontNormal);
    zelctl::ReleaseFont(m_hFontActive);
}

void CBmpTextButton::LoadBitmaps(UINT nNormal, UINT nFocus, UINT nDown, HINSTANCE hInst) {
    m_bmpNormal.DeleteObject();
    m_bmpFocus.DeleteObject();
    m_bmpDown.DeleteObject();
    ModifyStyle(0, BS_OWNERDRAW, 0);
    m_bmpNormal.Attach(zelctl::LoadSkinBitmap(nNormal, hInst));
    m_bmpFocus.Attach(zelctl::LoadSkinBitmap(nFocus, hInst));
    m_bmpDown.Attach(zelctl::LoadSkinBitmap(nDown, hInst));
    if (m_hWnd) Invalidate();
}

void CBmpTextButton::SetFont(int nHeight, int, DWORD crNormal, DWORD crActive) {
    zelctl::ReleaseFont(m_hFontNormal);
    zelctl::ReleaseFont(m_hFontActive);
    m_hFontNormal = zelctl::CreateControlFont(nHeight, kCaptionWeight);
    m_hFontActive = zelctl::CreateControlFont(nHeight, kCaptionWeight);
    m_crNormal = crNormal;
    m_crActive = crActive;
    if (m_hWnd) Invalidate();
}

void CBmpTextButton::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) {
    CWnd::MoveWindow(x, y, nWidth, nHeight, bRepaint);
}

void CBmpTextButton::MoveWindow(CRect& rect, BOOL bRepaint) { CWnd::MoveWindow(&rect, bRepaint); }

BOOL CBmpTextButton::ShowWindow(int nCmdShow) { return CWnd::ShowWindow(nCmdShow); }

// Pushed without the focus (BM_SETSTATE from elsewhere) draws as normal.
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

void CBmpTextButton::DrawBitmap(CDC* pDC, STATE state) {
    if (!pDC || !pDC->m_hDC) return;
    CString text;
    GetWindowText(text);
    CRect rc;
    GetClientRect(&rc);

    CBitmap canvas;
    CDC skinDC, canvasDC;
    skinDC.CreateCompatibleDC(pDC);
    canvasDC.CreateCompatibleDC(pDC);
    canvasDC.SetBkMode(TRANSPARENT);

    HFONT font = m_hFontNormal;
    COLORREF colour = m_crNormal;
    CBitmap* skin = &m_bmpNormal;
    if (state == STATE_FOCUS || state == STATE_DOWN) {
        font = m_hFontActive;
        colour = m_crActive;
        skin = state == STATE_FOCUS ? &m_bmpFocus : &m_bmpDown;
    }
    HGDIOBJ oldFont = canvasDC.SelectObject(static_cast<HGDIOBJ>(font));
    canvasDC.SetTextColor(colour);
    HGDIOBJ oldSkin = skinDC.SelectObject(skin->m_hObject);
    BITMAP bm{};
    if (skin->m_hObject) skin->GetBitmap(&bm);

    canvas.CreateCompatibleBitmap(pDC, rc.Width(), rc.Height());
    HGDIOBJ oldCanvas = canvasDC.SelectObject(static_cast<HGDIOBJ>(canvas.m_hObject));
    if (skin->m_hObject)
        canvasDC.StretchBlt(0, 0, rc.Width(), rc.Height(), &skinDC, 0, 0, bm.bmWidth, bm.bmHeight, SRCCOPY);
    canvasDC.DrawText(text, &rc, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    pDC->BitBlt(rc.left, rc.top, rc.Width(), rc.Height(), &canvasDC, 0, 0, SRCCOPY);

    if (oldCanvas) canvasDC.SelectObject(oldCanvas);
    if (oldSkin) skinDC.SelectObject(oldSkin);
    if (oldFont) canvasDC.SelectObject(oldFont);
}

void CBmpTextButton::OnDestroy() {
    zelctl::ReleaseFont(m_hFontNormal);
    zelctl::ReleaseFont(m_hFontActive);
    CButton::OnDestroy();
}
