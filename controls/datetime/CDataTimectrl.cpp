#include "CDataTimectrl.h"

#include "DateMath.h"
#include "OffscreenCanvas.h"
#include "StrokeDigits.h"

namespace {

constexpr UINT_PTR kClockTimer = 1;
constexpr UINT kClockPeriodMs = 1000;
constexpr int kGlyphHeight = 11;
constexpr int kTextTop = 4;
constexpr int kTextLeft = 4;
constexpr WORD kFirstYear = 2000, kLastYear = 2999;

int GlyphWidth(int h) { return 6 * h / 11; }

}  // namespace

BEGIN_MESSAGE_MAP(CDataTimectrl, CWnd)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_TIMER()
ON_WM_DESTROY()
ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

CDataTimectrl::CDataTimectrl()
    : m_time{},
      m_nStyle(0),
      m_rcField{},
      m_nCurField(-1),
      m_crText(RGB(0, 0, 0)),
      m_crSelText(RGB(0xFF, 0xFF, 0xFF)),
      m_crBack(RGB(0xD1, 0xDD, 0xF3)),
      m_crSelBack(RGB(0x14, 0x14, 0xFF)),
      m_nCharGap(5) {
    ::GetLocalTime(&m_time);
}

// The window goes first, so that OnDestroy still runs as this class's (killing the timer).
CDataTimectrl::~CDataTimectrl() {
    m_wndAux.DestroyWindow();
    if (::IsWindow(m_hWnd)) DestroyWindow();
}

void CDataTimectrl::PreSubclassWindow() { CWnd::PreSubclassWindow(); }

void CDataTimectrl::Repaint() {
    if (::IsWindow(m_hWnd)) InvalidateRect(nullptr, TRUE);
}

// ---- value ------------------------------------------------------------------------------

DWORD CDataTimectrl::GetTime(CTime& t) const {
    t = CTime(m_time, -1);
    return 1;
}

DWORD CDataTimectrl::GetTime(SYSTEMTIME* p) const {
    if (p) *p = m_time;
    return 1;
}

BOOL CDataTimectrl::SetTime(const CTime*) { return 1; }

BOOL CDataTimectrl::SetTime(SYSTEMTIME* p) {
    if (p) m_time = *p;  // a null pointer is the one thing refused
    return 1;
}

void CDataTimectrl::SetStyle(int n) {
    m_nStyle = n != 0 ? 1 : 0;
    Repaint();
}

int CDataTimectrl::GetSyle() { return m_nStyle; }

void CDataTimectrl::SetAutoUpdate(BOOL b) {
    if (!::IsWindow(m_hWnd)) return;
    KillTimer(kClockTimer);
    if (b) SetTimer(kClockTimer, kClockPeriodMs, nullptr);
}

UINT CDataTimectrl::Monthdays(UINT year, UINT month) { return zelctl::DaysInMonth(year, month); }

// ---- keys -------------------------------------------------------------------------------

void CDataTimectrl::RightKey() {
    m_nCurField = (m_nCurField + 1) % 3;
    Repaint();
}

void CDataTimectrl::LeftKeydown() {
    m_nCurField -= 1;
    if (m_nCurField < 0) m_nCurField = 2;
    Repaint();
}

void CDataTimectrl::ClampDay() {
    const UINT days = Monthdays(m_time.wYear, m_time.wMonth);
    if (days < m_time.wDay) m_time.wDay = static_cast<WORD>(days);
}

// The date steps keep two quirks on purpose: the month goes up modulo 12, so November
// steps to 0 and 0 to 1 (December is reached only going down), and the day goes up
// modulo the month's length, so a month's last day is skipped going up.
void CDataTimectrl::Upkeydown() {
    SetAutoUpdate(FALSE);  // editing stops the clock following
    SYSTEMTIME& t = m_time;
    if (m_nCurField < 0 || m_nCurField > 2) return;
    if (m_nStyle) {
        if (m_nCurField == 0) t.wHour = static_cast<WORD>((t.wHour + 1) % 24);
        if (m_nCurField == 1) t.wMinute = static_cast<WORD>((t.wMinute + 1) % 60);
        if (m_nCurField == 2) t.wSecond = static_cast<WORD>((t.wSecond + 1) % 60);
    } else if (m_nCurField == 0) {
        t.wYear = static_cast<WORD>(t.wYear + 1 > kLastYear ? kLastYear : t.wYear + 1);
        ClampDay();
    } else if (m_nCurField == 1) {
        t.wMonth = static_cast<WORD>((t.wMonth + 1) % 12);
        ClampDay();
    } else {
        t.wDay = static_cast<WORD>((t.wDay + 1) % Monthdays(t.wYear, t.wMonth));
    }
    Repaint();
}

// Decrements are 16-bit unsigned: 0 - 1 is 65535, which the time fields turn into their
// top value. A month of 0 goes to 65535 and stays there (it counts as 30 days).
void CDataTimectrl::DownKeyDown() {
    SetAutoUpdate(FALSE);
    SYSTEMTIME& t = m_time;
    if (m_nCurField < 0 || m_nCurField > 2) return;
    if (m_nStyle) {
        WORD* field = m_nCurField == 0 ? &t.wHour : m_nCurField == 1 ? &t.wMinute : &t.wSecond;
        const WORD limit = m_nCurField == 0 ? 24 : 60;
        *field = static_cast<WORD>(*field - 1);
        if (*field >= limit) *field = static_cast<WORD>(limit - 1);
    } else if (m_nCurField == 0) {
        t.wYear = static_cast<WORD>(t.wYear - 1);
        if (t.wYear < kFirstYear) t.wYear = kFirstYear;
        ClampDay();
    } else if (m_nCurField == 1) {
        t.wMonth = static_cast<WORD>(t.wMonth - 1);
        if (t.wMonth == 0) t.wMonth = 12;
        ClampDay();
    } else {
        t.wDay = static_cast<WORD>(t.wDay - 1);
        if (t.wDay == 0) t.wDay = static_cast<WORD>(Monthdays(t.wYear, t.wMonth));
    }
    Repaint();
}

// The arrow keys are taken before dispatch (whichever window they were posted to) and
// eaten; everything else goes the usual way.
BOOL CDataTimectrl::PreTranslateMessage(MSG* pMsg) {
    if (pMsg && pMsg->message == WM_KEYDOWN) {
        const HWND self = m_hWnd;
        bool handled = true;
        switch (pMsg->wParam) {
            case VK_LEFT: LeftKeydown(); break;
            case VK_UP: Upkeydown(); break;
            case VK_RIGHT: RightKey(); break;
            case VK_DOWN: DownKeyDown(); break;
            default: handled = false; break;
        }
        if (handled) return TRUE;
        if (!::IsWindow(self)) return FALSE;
    }
    return CWnd::PreTranslateMessage(pMsg);
}

// ---- input ------------------------------------------------------------------------------

void CDataTimectrl::OnLButtonDown(UINT, CPoint point) {
    const HWND self = m_hWnd;
    SetFocus();
    Default();
    if (!::IsWindow(self)) return;
    for (int i = 0; i < 3; ++i) {
        if (!::PtInRect(&m_rcField[i], point)) continue;
        if (m_nCurField != i) {
            m_nCurField = i;
            Repaint();
        }
        return;
    }
}

// The selection survives only focus moving to the auxiliary window; that window is never
// created, so a NULL new focus (focus leaving the program's windows) must not match it.
void CDataTimectrl::OnKillFocus(CWnd* pNewWnd) {
    const HWND self = m_hWnd;
    Default();
    if (!::IsWindow(self)) return;
    const HWND next = pNewWnd ? pNewWnd->GetSafeHwnd() : nullptr;
    if (next && next == m_wndAux.GetSafeHwnd()) return;
    m_nCurField = -1;
    Repaint();
}

void CDataTimectrl::OnTimer(UINT_PTR nIDEvent) {
    if (nIDEvent == kClockTimer) {
        ::GetLocalTime(&m_time);
        Repaint();
    }
    Default();
}

void CDataTimectrl::OnDestroy() {
    KillTimer(kClockTimer);
    CWnd::OnDestroy();
}

// ---- painting ---------------------------------------------------------------------------

UINT CDataTimectrl::DrawCh(HDC hdc, WORD ch, POINT pt, int h) {
    return static_cast<UINT>(zelctl::DrawStrokeGlyph(hdc, static_cast<wchar_t>(ch), pt.x, pt.y, GlyphWidth(h), h));
}

UINT CDataTimectrl::DrawStr(HDC hdc, CString str, int h, POINT pt, DWORD crBack, DWORD crText) {
    HPEN pen = ::CreatePen(PS_SOLID, 1, crText);
    UINT advance = 0;
    {
        const zelctl::SelectGuard penGuard(hdc, pen);
        const int n = str.GetLength();
        // Only the selected field (drawn in other colours than the control's) gets a
        // background box, 2 pixels wider than its glyphs all round.
        if ((crBack != m_crBack || crText != m_crText) && n > 0) {
            int measured = 0;
            for (int i = 0; i < n; ++i) {
                const wchar_t c = str[i];
                if (c == L':') measured += 1;
                else if (c == L'-' || (c >= L'0' && c <= L'9')) measured += GlyphWidth(h);
            }
            const RECT box{pt.x - 2, pt.y - 2, pt.x + (n - 1) * m_nCharGap + measured + 3, pt.y + h + 3};
            HBRUSH brush = ::CreateSolidBrush(crBack);
            ::FillRect(hdc, &box, brush);
            ::DeleteObject(brush);
        }
        for (int i = 0; i < n; ++i) {
            const POINT at{pt.x + static_cast<LONG>(advance), pt.y};
            advance += DrawCh(hdc, static_cast<WORD>(str[i]), at, h) + m_nCharGap;
        }
    }
    ::DeleteObject(pen);
    return advance;
}

void CDataTimectrl::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    zelctl::OffscreenCanvas canvas(dc.GetSafeHdc(), client.Width(), client.Height());
    HDC mem = canvas.dc();
    HBRUSH back = ::CreateSolidBrush(m_crBack);
    {
        const zelctl::SelectGuard brushGuard(mem, back);
        ::Rectangle(mem, 0, 0, client.Width(), client.Height());  // default pen: a black frame

        const WORD values[3] = {m_nStyle ? m_time.wHour : m_time.wYear, m_nStyle ? m_time.wMinute : m_time.wMonth,
                                m_nStyle ? m_time.wSecond : m_time.wDay};
        const wchar_t* separator = m_nStyle ? L":" : L"-";
        int x = kTextLeft;
        for (int i = 0; i < 3; ++i) {
            CString text;
            text.Format(i == 0 && !m_nStyle ? L"%d" : L"%02d", static_cast<int>(values[i]));
            const bool selected = i == m_nCurField;
            const UINT advance = DrawStr(mem, text, kGlyphHeight, POINT{x, kTextTop}, selected ? m_crSelBack : m_crBack,
                                         selected ? m_crSelText : m_crText);
            ::SetRect(&m_rcField[i], x, 0, x + static_cast<int>(advance), client.Height());
            x += static_cast<int>(advance);
            if (i < 2) x += static_cast<int>(DrawStr(mem, separator, kGlyphHeight, POINT{x, kTextTop}, m_crBack, m_crText));
        }
    }
    ::DeleteObject(back);
    canvas.Present();
}
