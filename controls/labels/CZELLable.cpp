#include "CZELLable.h"

#include "ControlFont.h"
#include "LabelPaint.h"
#include "SkinList.h"
#include "SkinText.h"

namespace {

constexpr int kDefaultFontHeight = 18;
// Shrinking starts here until SetFont gives a height: a label whose text does not fit its
// 18-pixel font first tries 38, 36, ... and only fits again once below 18.
constexpr int kDefaultShrinkFrom = 40;

}  // namespace

BEGIN_MESSAGE_MAP(CZELLable, CSkinWnd)
    ON_WM_PAINT()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELLable::CZELLable()
    : m_frame(std::make_unique<zelctl::SkinSet>(zelctl::kLabelPieces)),
      m_kept(std::make_unique<zelctl::LabelCanvases>()),
      m_hFont(zelctl::CreateControlFont(kDefaultFontHeight)),
      m_crText(RGB(0, 0, 0)),
      m_nFormat(0),
      m_rcText(0, 0, 0, 0),
      m_nFontHeight(kDefaultShrinkFrom) {}

CZELLable::~CZELLable() { zelctl::ReleaseFont(m_hFont); }

void CZELLable::LoadBitmap(CString strLeft, CString strMiddle, CString strRight) {
    m_frame->LoadFiles({strLeft, strMiddle, strRight}, zelctl::kLabelLeft);
    m_kept->Forget();
    if (!::IsWindow(m_hWnd)) return;
    Invalidate(TRUE);
    UpdateWindow();
}

void CZELLable::SetFont(int nHeight, DWORD crText, UINT nFormat, CRect rcText) {
    zelctl::LabelText{m_hFont, m_crText, m_nFormat, m_rcText, m_nFontHeight}.Set(nHeight, crText, nFormat, rcText);
}

void CZELLable::LoadSkin(CString strSkin, CString) {
    CStringArray pieces;
    zelctl::SplitSkinList(strSkin, pieces);
    const INT_PTR n = pieces.GetSize();
    if (n == 0) return;
    LoadBitmap(pieces[0], n > 1 ? pieces[1] : CString(), n > 2 ? pieces[2] : CString());
}

void CZELLable::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    const CRect rcText = m_rcText.IsRectEmpty() ? client : m_rcText;
    CString text;
    GetWindowText(text);
    m_kept->Paint(
        dc.GetSafeHdc(), client.Width(), client.Height(), (m_nFormat & DT_CENTER) != 0,
        [&](zelctl::OffscreenCanvas& c) { zelctl::PaintLabelFrame(c, *m_frame, client); },
        [&](zelctl::OffscreenCanvas& c) {
            zelctl::DrawShrunkText(c.dc(), text, c.Local(rcText), m_nFormat, m_crText, m_hFont, m_nFontHeight);
        });
}

void CZELLable::OnDestroy() {
    m_kept->Release();
    CSkinWnd::OnDestroy();
}
