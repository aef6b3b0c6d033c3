#include "CZELTimeDate.h"

#include "DateMath.h"
#include "Notify.h"
#include "OffscreenCanvas.h"
#include "SkinList.h"
#include "SkinSet.h"

namespace {

constexpr UINT_PTR kClockTimer = 1;
constexpr UINT kClockPeriodMs = 500;  // the colon's blink; seconds count every second tick
constexpr DWORD kSpinStyle = WS_CHILD | WS_VISIBLE;
constexpr int kPlacedBottom = 115;  // the spinners' first bottom edge, until MoveCtrls
constexpr int kSecondLeft = 70, kThirdLeft = 120;
constexpr int kSeparatorPad = 8;    // room beside a separator image
constexpr int kSeparatorInset = 4;
constexpr WORD kFirstYear = 2000, kLastYear = 2999;

// The module's one half-rate toggle, shared by every clock (see the header).
int g_halfTick = 0;

}  // namespace

BEGIN_MESSAGE_MAP(CZELTimeDate, CSkinWnd)
ON_WM_PAINT()
ON_BN_CLICKED(CZELTimeDate::IDC_ONE, &CZELTimeDate::OnOne)
ON_BN_CLICKED(CZELTimeDate::IDC_TWO, &CZELTimeDate::OnTwo)
ON_BN_CLICKED(CZELTimeDate::IDC_THREE, &CZELTimeDate::OnThree)
ON_WM_TIMER()
ON_WM_SETFOCUS()
END_MESSAGE_MAP()

// Before a skin: separators 4 pixels wide plus their padding, a white control.
CZELTimeDate::CZELTimeDate()
    : m_time{},
      m_nStyle(0),
      m_nSepWidth(4 + kSeparatorPad),
      m_nSpinHeight(130),
      m_nYearWidth(66),
      m_nSpinWidth(48),
      m_bColon(true),
      m_nSecond(0),
      m_crBack(RGB(0xFF, 0xFF, 0xFF)) {
    ::GetLocalTime(&m_time);
    m_nSecond = m_time.wSecond;
}

CZELTimeDate::~CZELTimeDate() {
    if (::IsWindow(m_hWnd)) DestroyWindow();
}

void CZELTimeDate::PreSubclassWindow() {
    CSkinWnd::PreSubclassWindow();
    CRect client;
    GetClientRect(&client);
    const int y = (client.Height() - m_nSpinHeight) / 2;
    m_spin[0].Create(L"One", kSpinStyle, CRect(0, y, m_nYearWidth, kPlacedBottom), this, IDC_ONE);
    m_spin[1].Create(L"Two", kSpinStyle, CRect(kSecondLeft, y, kSecondLeft + m_nSpinWidth, kPlacedBottom), this, IDC_TWO);
    m_spin[2].Create(L"Three", kSpinStyle, CRect(kThirdLeft, y, kThirdLeft + m_nSpinWidth, kPlacedBottom), this,
                     IDC_THREE);
    m_spin[0].SetPos(0);
    m_spin[1].SetPos(1);
}

// ---- style and layout -------------------------------------------------------------------

void CZELTimeDate::SetStyle(int n) {
    m_nStyle = n != 0 ? 1 : 0;
    if (m_nStyle && ::IsWindow(m_hWnd)) SetTimer(kClockTimer, kClockPeriodMs, nullptr);
    MoveCtrls();
}

void CZELTimeDate::MoveCtrls() {
    if (!::IsWindow(m_hWnd)) return;
    const int width = m_nStyle ? m_nSepWidth + 2 * m_nSpinWidth : m_nYearWidth + 2 * (m_nSpinWidth + m_nSepWidth);
    SetWindowPos(nullptr, 0, 0, width, m_nSpinHeight, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    CRect client;
    GetClientRect(&client);
    const int y = (client.Height() - m_nSpinHeight) / 2;
    if (m_nStyle) {
        m_spin[0].MoveWindow(0, y, m_nSpinWidth, m_nSpinHeight, true);
        m_spin[0].SetRang(0, 23);
        m_spin[0].SetPos(m_time.wHour);
        m_spin[1].MoveWindow(m_nSpinWidth + m_nSepWidth, y, m_nSpinWidth, m_nSpinHeight, true);
        m_spin[1].SetRang(0, 59);
        m_spin[1].SetPos(m_time.wMinute);
        if (::IsWindow(m_spin[2].m_hWnd)) m_spin[2].ShowWindow(SW_HIDE);
    } else {
        m_spin[0].MoveWindow(0, y, m_nYearWidth, m_nSpinHeight, true);
        m_spin[0].SetRang(kFirstYear, kLastYear);
        m_spin[0].SetPos(m_time.wYear);
        m_spin[1].MoveWindow(m_nYearWidth + m_nSepWidth, y, m_nSpinWidth, m_nSpinHeight, true);
        m_spin[1].SetRang(1, 12);
        m_spin[1].SetPos(m_time.wMonth);
        if (::IsWindow(m_spin[2].m_hWnd)) m_spin[2].ShowWindow(SW_SHOW);
        m_spin[2].MoveWindow(m_nYearWidth + 2 * m_nSepWidth + m_nSpinWidth, y, m_nSpinWidth, m_nSpinHeight, true);
        m_spin[2].SetRang(1, static_cast<int>(Monthdays(m_time.wYear, m_time.wMonth)));
        m_spin[2].SetPos(m_time.wDay);
    }
    Invalidate(TRUE);
}

void CZELTimeDate::MoveWindow(int x, int y, int cx, int cy, bool bRepaint) {
    if (!::IsWindow(m_hWnd)) return;
    CWnd::MoveWindow(x, y, cx, cy, bRepaint);
    MoveCtrls();
}

void CZELTimeDate::MoveWindow(CRect rc, bool bRepaint) { MoveWindow(rc.left, rc.top, rc.Width(), rc.Height(), bRepaint); }

// ---- value ------------------------------------------------------------------------------

UINT CZELTimeDate::Monthdays(UINT year, UINT month) { return zelctl::DaysInMonth(year, month); }

void CZELTimeDate::GetTime(SYSTEMTIME* p) {
    if (m_nStyle) {
        m_time.wHour = static_cast<WORD>(m_spin[0].GetCurValue());
        m_time.wMinute = static_cast<WORD>(m_spin[1].GetCurValue());
        m_time.wSecond = static_cast<WORD>(m_nSecond);
    } else {
        m_time.wYear = static_cast<WORD>(m_spin[0].GetCurValue());
        m_time.wMonth = static_cast<WORD>(m_spin[1].GetCurValue());
        m_time.wDay = static_cast<WORD>(m_spin[2].GetCurValue());
    }
    if (p) *p = m_time;
}

// Each spinner ignores a value outside its range; so does the seconds count.
bool CZELTimeDate::SetTime(SYSTEMTIME& t) {
    if (m_nStyle) {
        m_spin[0].SetCurValue(t.wHour);
        m_spin[1].SetCurValue(t.wMinute);
        if (t.wSecond < 60) m_nSecond = t.wSecond;
    } else {
        m_spin[0].SetCurValue(t.wYear);
        m_spin[1].SetCurValue(t.wMonth);
        m_spin[2].SetCurValue(t.wDay);
    }
    if (::IsWindow(m_hWnd)) Invalidate(TRUE);
    return true;
}

// ---- skin -------------------------------------------------------------------------------

void CZELTimeDate::AfterSkin(HBITMAP dash, HBITMAP colon, HBITMAP backSample) {
    m_bmpDash.DeleteObject();
    m_bmpColon.DeleteObject();
    if (dash) m_bmpDash.Attach(dash);
    if (colon) m_bmpColon.Attach(colon);
    m_nSepWidth = zelctl::BitmapSize(m_nStyle ? colon : dash).cx + kSeparatorPad;
    const COLORREF back = zelctl::TopLeftPixel(backSample);
    if (back != CLR_INVALID) m_crBack = back;
    const COLORREF digits = zelctl::TopLeftPixel(dash);
    if (digits != CLR_INVALID)
        for (CZELDate& spin : m_spin) spin.SetTextCol(digits);
    MoveCtrls();
}

void CZELTimeDate::LoadBitmaps(CArray<CString, CString>& add, CArray<CString, CString>& def,
                               CArray<CString, CString>& colours, CArray<CString, CString>& seps) {
    if (add.GetSize() < 3 || def.GetSize() < 3 || colours.GetSize() < 3 || seps.GetSize() < 2) return;
    for (CZELDate& spin : m_spin) spin.LoadBitmapW(add, def, colours);
    zelctl::SkinSet backSample(1);
    backSample.LoadFiles({colours[0]});
    AfterSkin(zelctl::LoadSkinFile(seps[0]), zelctl::LoadSkinFile(seps[1]), backSample[0]);
}

void CZELTimeDate::LoadBitmaps(const UINT* add, const UINT* def, const UINT* colours, const UINT* seps,
                               HINSTANCE hInst) {
    if (!add || !def || !colours || !seps) return;
    for (CZELDate& spin : m_spin) spin.LoadBitmapW(add, def, colours, hInst);
    zelctl::SkinSet backSample(1);
    backSample.LoadIds({colours[0]}, hInst);
    AfterSkin(zelctl::LoadSkinBitmap(seps[0], hInst), zelctl::LoadSkinBitmap(seps[1], hInst), backSample[0]);
}

void CZELTimeDate::LoadSkin(CString strFolder, CString strNames) {
    CStringArray names;
    zelctl::SplitSkinList(strNames, names);
    CArray<CString, CString> lists[4];
    for (INT_PTR i = 0; i < names.GetSize() && i < 11; ++i) lists[i / 3].Add(strFolder + names[i]);
    LoadBitmaps(lists[0], lists[1], lists[2], lists[3]);
}

// ---- steps and clock --------------------------------------------------------------------

// Editing the hour or minute stops the running clock for good (until SetStyle(1) again)
// and leaves the colon showing; a new year or month re-ranges (and so clamps) the day.
void CZELTimeDate::LeadingStep() {
    if (m_nStyle) {
        m_nSecond = 0;
        KillTimer(kClockTimer);
        if (!m_bColon) {
            m_bColon = true;
            Invalidate(TRUE);
        }
    } else {
        const UINT days = Monthdays(static_cast<UINT>(m_spin[0].GetCurValue()), static_cast<UINT>(m_spin[1].GetCurValue()));
        m_spin[2].SetRang(1, static_cast<int>(days));
    }
}

void CZELTimeDate::OnOne() {
    LeadingStep();
    zelctl::NotifyCommand(*this);
}

void CZELTimeDate::OnTwo() {
    LeadingStep();
    zelctl::NotifyCommand(*this);
}

void CZELTimeDate::OnThree() { zelctl::NotifyCommand(*this); }

void CZELTimeDate::OnTimer(UINT_PTR nIDEvent) {
    if (nIDEvent == kClockTimer && m_nStyle) {
        g_halfTick = (g_halfTick + 1) % 2;
        if (g_halfTick == 0) {
            m_nSecond = (m_nSecond + 1) % 60;
            if (m_nSecond == 0) {
                const int minute = (m_spin[1].GetCurValue() + 1) % 60;
                m_spin[1].SetPos(minute);
                if (minute == 0) m_spin[0].SetPos((m_spin[0].GetCurValue() + 1) % 24);
            }
        }
        m_bColon = !m_bColon;
        CRect client;
        GetClientRect(&client);
        const CRect strip(m_nSpinWidth, 0, m_nSpinWidth + m_nSepWidth, client.Height());
        InvalidateRect(&strip, TRUE);
    }
    Default();
}

void CZELTimeDate::OnSetFocus(CWnd*) {
    const HWND self = m_hWnd;
    Default();
    if (::IsWindow(self) && ::IsWindow(m_spin[0].m_hWnd)) m_spin[0].SetFocus();
}

// ---- painting ---------------------------------------------------------------------------

void CZELTimeDate::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    zelctl::OffscreenCanvas canvas(dc.GetSafeHdc(), client.Width(), client.Height());
    canvas.Fill(client, m_crBack);
    auto separator = [&](const CBitmap& bitmap, int x) {
        HBITMAP piece = static_cast<HBITMAP>(bitmap.GetSafeHandle());
        const SIZE size = zelctl::BitmapSize(piece);
        canvas.Blit(piece, x, client.Height() / 2 - size.cy / 2, size.cx, size.cy);
    };
    if (m_nStyle) {
        if (m_bColon) separator(m_bmpColon, m_nSpinWidth + kSeparatorInset);
    } else {
        separator(m_bmpDash, m_nYearWidth + kSeparatorInset);
        separator(m_bmpDash, m_nYearWidth + m_nSpinWidth + m_nSepWidth + kSeparatorInset);
    }
    canvas.Present();
}
