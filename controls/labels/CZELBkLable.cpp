#include "CZELBkLable.h"

#include "ControlFont.h"
#include "LabelPaint.h"
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
    zelctl::LabelText{m_hFont, m_crText, m_nFormat, m_rcText, m_nFontHeight}.Set(nHeight, crText, nFormat, rcText);
}

void CZELBkLable::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    // The canvas covers what the paint can change, so a label moved to 32767 pixels wide
    // paints what shows of it. A centred caption is the exception on the left: DrawText
    // centres at (left + right - width) / 2 rounded toward zero, which moves a line by a
    // pixel where that sum is odd and the canvas origin takes it below zero, so such a
    // canvas starts at the client's left edge.
    const UINT format = zelctl::WithoutModifyString(m_nFormat);
    RECT area = zelctl::OffscreenCanvas::PaintArea(dc.GetSafeHdc(), client.Width(), client.Height());
    if ((format & DT_CENTER) && area.left < area.right) area.left = 0;
    zelctl::OffscreenCanvas canvas(dc.GetSafeHdc(), area);
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
    zelctl::DrawSkinText(canvas.dc(), text, canvas.Local(rc), format, m_crText, m_hFont);
    canvas.Present();
}
