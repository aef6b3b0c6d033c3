#include "CZELChkBox.h"

#include <aygshell.h>

#include <cwchar>

#include "ControlFont.h"
#include "SkinList.h"

namespace {

constexpr int kDefaultFontHeight = 18;
constexpr int kCaptionGap = 5;             // between the box and the caption
constexpr int kWrappedCaptionHeight = 31;  // from this measured height on, the caption wraps

// Paths pass through a MAX_PATH buffer: longer ones are cut there.
HBITMAP LoadImagePath(const CString& path) {
    WCHAR buffer[MAX_PATH];
    std::wcsncpy(buffer, path, MAX_PATH - 1);
    buffer[MAX_PATH - 1] = L'\0';
    return ::SHLoadDIBitmap(buffer);
}

CSize BitmapSize(HBITMAP bitmap) {
    BITMAP bm{};
    if (!bitmap || !::GetObjectW(bitmap, sizeof bm, &bm)) return CSize(0, 0);
    return CSize(bm.bmWidth, bm.bmHeight);
}

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
      m_hBmpUnchecked(nullptr),
      m_hBmpChecked(nullptr),
      m_hBmpBack(nullptr),
      m_bPressed(FALSE),
      m_bClickable(TRUE),
      m_hFont(zelctl::CreateControlFont(kDefaultFontHeight, FW_NORMAL)),
      m_crText(RGB(0, 0, 0)) {}

// OnDestroy leaves the unchecked image and the font behind; they, and everything of a
// check box whose window never existed, are released here.
CZELChkBox::~CZELChkBox() {
    zelctl::DeleteSkin(m_hBmpUnchecked);
    zelctl::DeleteSkin(m_hBmpChecked);
    zelctl::DeleteSkin(m_hBmpBack);
    zelctl::ReleaseFont(m_hFont);
}

void CZELChkBox::PreSubclassWindow() {}

int CZELChkBox::GetCheck() { return m_bChecked; }

void CZELChkBox::SetCheck(int n) {
    m_bChecked = n != 0;
    if (m_hWnd) Invalidate();  // a null window would mean every window
}

void CZELChkBox::SetAutoClick(bool b) { m_bClickable = b; }

void CZELChkBox::SetFont(int nHeight, CString, DWORD crText) {
    zelctl::ReleaseFont(m_hFont);
    m_hFont = zelctl::CreateControlFont(nHeight, FW_NORMAL);
    m_crText = crText;
    if (m_hWnd) Invalidate();
}

void CZELChkBox::LoadBitmapW(CString strChecked, CString strUnchecked, CString strBack) {
    zelctl::DeleteSkin(m_hBmpChecked);
    zelctl::DeleteSkin(m_hBmpUnchecked);
    zelctl::DeleteSkin(m_hBmpBack);
    m_hBmpChecked = LoadImagePath(strChecked);
    m_hBmpUnchecked = LoadImagePath(strUnchecked);
    m_hBmpBack = LoadImagePath(strBack);
    if (m_hBmpUnchecked) {
        const CSize box = BitmapSize(m_hBmpUnchecked);
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

void CZELChkBox::Toggle() {
    m_bChecked = m_bChecked ? 0 : 1;
    Invalidate();
    HWND parent = ::GetParent(m_hWnd);
    if (parent && ::IsWindow(parent))
        ::SendMessageW(parent, WM_COMMAND, static_cast<WPARAM>(GetDlgCtrlID() & 0xFFFF), reinterpret_cast<LPARAM>(m_hWnd));
}

void CZELChkBox::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    CBitmap frame;
    frame.CreateCompatibleBitmap(&dc, client.Width(), client.Height());
    CDC memDC, skinDC;
    memDC.CreateCompatibleDC(&dc);
    skinDC.CreateCompatibleDC(&dc);
    HGDIOBJ oldFrame = memDC.SelectObject(static_cast<HGDIOBJ>(frame.m_hObject));
    HGDIOBJ oldSkin = nullptr;
    auto selectSkin = [&](HBITMAP skin) {
        HGDIOBJ previous = skinDC.SelectObject(static_cast<HGDIOBJ>(skin));
        if (!oldSkin) oldSkin = previous;
    };
    memDC.SetTextColor(m_crText);

    if (m_hBmpBack) {
        const CSize back = BitmapSize(m_hBmpBack);
        selectSkin(m_hBmpBack);
        memDC.StretchBlt(0, 0, client.Width(), client.Height(), &skinDC, 0, 0, back.cx, back.cy, SRCCOPY);
    }
    const int boxTop = (client.Height() - m_rcBox.Height()) / 2;
    if (HBITMAP box = m_bChecked == 1 ? m_hBmpChecked : m_hBmpUnchecked) {
        selectSkin(box);
        memDC.BitBlt(0, boxTop, m_rcBox.Width(), m_rcBox.Height(), &skinDC, 0, 0, SRCCOPY);
    }
    PaintCaption(memDC, client);
    dc.BitBlt(0, 0, client.Width(), client.Height(), &memDC, 0, 0, SRCCOPY);

    if (oldSkin) skinDC.SelectObject(oldSkin);
    memDC.SelectObject(oldFrame);
}

// The caption, the hit area that follows the measured text, and the focus rectangle.
void CZELChkBox::PaintCaption(CDC& dc, const CRect& client) {
    CString text;
    GetWindowText(text);
    HGDIOBJ oldFont = dc.SelectObject(static_cast<HGDIOBJ>(m_hFont));
    dc.SetBkMode(TRANSPARENT);
    CRect rcText(m_rcBox.Width() + kCaptionGap, client.top + 1, client.right - 1, client.bottom - 1);
    CRect measured(rcText);
    dc.DrawText(text, &measured, DT_CALCRECT | DT_WORDBREAK);
    const int textHeight = measured.Height();
    if (textHeight < kWrappedCaptionHeight)
        dc.DrawText(text, &rcText, DT_SINGLELINE | DT_VCENTER);
    else
        dc.DrawText(text, &rcText, DT_WORDBREAK);

    // Taps count on the box's rows, from the box to just past the text; the blank rest of
    // the caption rectangle does not toggle.
    const int boxTop = (client.Height() - m_rcBox.Height()) / 2;
    m_rcHit.SetRect(0, boxTop, measured.right + 1, boxTop + m_rcBox.Height());

    // Centred on the caption rectangle even when a wrapped caption is drawn from its top.
    if (::GetFocus() == m_hWnd) {
        const int top = rcText.top + (rcText.Height() - textHeight) / 2;
        CRect focus(measured.left - 2, top - 1, measured.right + 1, top + textHeight + 1);
        dc.DrawFocusRect(&focus);
    }
    if (oldFont) dc.SelectObject(oldFont);
}

void CZELChkBox::OnLButtonDown(UINT, CPoint point) {
    if (!m_bClickable || !m_rcHit.PtInRect(point)) return;
    m_bPressed = TRUE;
    SetFocus();
    Default();
}

void CZELChkBox::OnLButtonUp(UINT, CPoint point) {
    const HWND self = m_hWnd;
    if (m_bPressed && m_rcHit.PtInRect(point)) {
        Toggle();  // the parent may destroy us here
        if (!::IsWindow(self)) return;
    }
    m_bPressed = FALSE;
    Default();
}

void CZELChkBox::OnSetFocus(CWnd*) {
    const HWND self = m_hWnd;
    Default();
    if (::IsWindow(self)) Invalidate();
}

void CZELChkBox::OnKillFocus(CWnd*) {
    const HWND self = m_hWnd;
    Default();
    if (::IsWindow(self)) Invalidate();
}

// Deliberately releases the background twice and leaves the unchecked image and the font
// to the destructor.
void CZELChkBox::OnDestroy() {
    ::DeleteObject(m_hBmpBack);
    ::DeleteObject(m_hBmpChecked);
    ::DeleteObject(m_hBmpBack);
    m_hBmpBack = nullptr;
    m_hBmpChecked = nullptr;
    CSkinWnd::OnDestroy();
}
