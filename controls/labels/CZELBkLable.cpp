#include "CZELBkLable.h"

#include "ControlFont.h"
#include "OffscreenCanvas.h"
#include "SkinText.h"

namespace {

constexpr int kDefaultFontHeight = 18;
constexpr int kTextInset = 5;  // pixels kept clear left and right of the text

}  // namespace

BEGIN_MESSAGE_MAP(CZELBkLable, CWnd)
    ON_WM_PAINT()
END_MESSAGE_MAP()

CZELBkLable::CZELBkLable()
    : m_hFont(zelctl::CreateControlFont(kDefaultFontHeight)),
      m_crText(RGB(0, 0, 0)),
      m_nFormat(0),
      m_rcText(0, 0, 0, 0),
      m_nFontHeight(40),
      m_hBkBitmap(nullptr) {}

CZELBkLable::~CZELBkLable() { zelctl::ReleaseFont(m_hFont); }

HBITMAP CZELBkLable::SetBitmap(HBITMAP hBitmap) {
    HBITMAP previous = m_hBkBitmap;
    m_hBkBitmap = hBitmap;
    return previous;
}

void CZELBkLable::SetFont(int nHeight, DWORD crText, UINT nFormat, CRect rcText) {
    zelctl::ReleaseFont(m_hFont);
    m_hFont = zelctl::CreateControlFont(nHeight);
    m_crText = crText;
    m_nFormat = nFormat;
    m_rcText = rcText;
    m_nFontHeight = nHeight;
}

void CZELBkLable::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    zelctl::OffscreenCanvas canvas(dc.GetSafeHdc(), client.Width(), client.Height());
    // Where the screen bitmap does not reach (a label beyond its edge) the frame stays the
    // black of a fresh bitmap.
    if (m_hBkBitmap)
        canvas.ScreenPiece(m_hBkBitmap, m_hWnd);
    else
        canvas.Fill(client, RGB(255, 255, 255));
    CString text;
    GetWindowText(text);
    CRect rc = client;
    rc.DeflateRect(kTextInset, 0, kTextInset, 0);
    // The text is a copy of the window's: DT_MODIFYSTRING would write past its end.
    zelctl::DrawSkinText(canvas.dc(), text, rc, m_nFormat & ~static_cast<UINT>(DT_MODIFYSTRING), m_crText, m_hFont);
    canvas.Present();
}
