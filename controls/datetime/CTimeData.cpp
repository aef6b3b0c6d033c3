#include "CTimeData.h"

#include "OffscreenCanvas.h"
#include "SkinList.h"

namespace {

constexpr int kCellWidth = 8;
constexpr UINT kCellFormat = DT_CENTER | DT_VCENTER | DT_SINGLELINE;
// The two dashes of "dd-mm-yy" are never highlighted.
constexpr int kFirstDash = 2, kSecondDash = 5;

}  // namespace

BEGIN_MESSAGE_MAP(CTimeData, CDataTimectrl)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

CTimeData::CTimeData() : m_bBmpLoaded(FALSE), m_rcCell{}, m_nCurChar(-1) {}

CTimeData::~CTimeData() { m_bmpBack.DeleteObject(); }

void CTimeData::LoadBitmapW(UINT nID, HINSTANCE hInst) {
    m_bmpBack.DeleteObject();
    m_bBmpLoaded = FALSE;
    if (HBITMAP bitmap = zelctl::LoadSkinBitmap(nID, hInst)) m_bBmpLoaded = m_bmpBack.Attach(bitmap);
}

void CTimeData::Add() {
    const int cur = GetCur(m_nCurChar);
    const int max = GetMax(m_nCurChar);
    Setcur(m_nCurChar, cur >= max ? 0 : cur + 1);
}

void CTimeData::Def() {}

void CTimeData::Setcur(int, int) {}

int CTimeData::GetCur(int) { return -1; }

int CTimeData::GetMax(int) { return -1; }

// Cells are counted from x = 0 with no upper bound: a tap right of the last character
// selects a cell no character has, so nothing is highlighted. Before the first paint the
// cell has no width and only the picker's own handling happens.
void CTimeData::OnLButtonDown(UINT nFlags, CPoint point) {
    const HWND self = m_hWnd;
    CDataTimectrl::OnLButtonDown(nFlags, point);
    if (!::IsWindow(self)) return;
    const int width = m_rcCell.right - m_rcCell.left;
    if (width == 0) return;
    m_nCurChar = point.x / width;
    InvalidateRect(nullptr, TRUE);
}

void CTimeData::OnPaint() {
    CPaintDC dc(this);
    if (!m_bBmpLoaded) return;
    CRect client;
    GetClientRect(&client);
    zelctl::OffscreenCanvas canvas(dc.GetSafeHdc(), client.Width(), client.Height());
    HDC mem = canvas.dc();
    ::SetRect(&m_rcCell, 0, 0, kCellWidth, client.Height());
    canvas.Stretch(static_cast<HBITMAP>(m_bmpBack.GetSafeHandle()), 0, 0, client.Width(), client.Height());
    ::SetBkMode(mem, TRANSPARENT);

    CString text;
    if (m_nStyle) {
        // Space-padded, not zero-padded: 9:05:07 reads " 9: 5: 7".
        text.Format(L"%2d:%2d:%2d", m_time.wHour, m_time.wMinute, m_time.wSecond);
    } else {
        CString year;
        year.Format(L"%d", m_time.wYear);
        text.Format(L"%02d-%02d-%s", m_time.wDay, m_time.wMonth, year.Right(2).GetString());
    }
    const int cw = m_rcCell.right - m_rcCell.left;
    for (int k = 0; k < text.GetLength(); ++k) {
        RECT cell{k * cw, m_rcCell.top, (k + 1) * cw, m_rcCell.bottom};
        const bool highlight = !m_nStyle && k == m_nCurChar && k != kFirstDash && k != kSecondDash;
        if (highlight) {
            ::SetBkMode(mem, OPAQUE);
            ::SetBkColor(mem, RGB(0, 0, 0));
            ::SetTextColor(mem, RGB(0xFF, 0xFF, 0xFF));
        }
        const wchar_t ch[2] = {text[k], 0};
        ::DrawTextW(mem, ch, 1, &cell, kCellFormat);
        if (highlight) {
            ::SetBkMode(mem, TRANSPARENT);
            ::SetTextColor(mem, RGB(0, 0, 0));
        }
    }
    canvas.Present();
}
