#include "CZELDate.h"

#include <algorithm>
#include <climits>

#include "Notify.h"
#include "OffscreenCanvas.h"
#include "SkinList.h"
#include "SkinSet.h"
#include "SkinText.h"
#include "StrokeDigits.h"

namespace {

// WS_CHILD | WS_TABSTOP | BS_OWNERDRAW: created hidden, shown when a skin arrives.
constexpr DWORD kButtonStyle = 0x4001000B;
constexpr RECT kButtonRect = {0, 0, 45, 40};
constexpr int kMoveMargin = 5, kSkinMargin = 10;
constexpr int kBoxHalfHeight = 13;
constexpr int kGlyphWidth = 8, kGlyphHeight = 15, kGlyphPen = 2;
constexpr UINT kStringFormat = DT_VCENTER | DT_SINGLELINE;

// Before a skin is loaded: a white control, a black frame, black digits.
constexpr COLORREF kDefaultBack = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF kDefaultFrame = RGB(0, 0, 0);
constexpr COLORREF kDefaultBox = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF kDefaultText = RGB(0, 0, 0);

}  // namespace

// What a picture shows: equal values draw equal pixels at one client size.
struct CZELDate::Shown {
    bool strings = false;
    CString text;  // the digits, or the string (empty: none)
    COLORREF back = 0, frame = 0, box = 0, ink = 0;
    CRect rcText;
    int gap = 0;
    bool operator==(const Shown& o) const {
        return strings == o.strings && text == o.text && back == o.back && frame == o.frame && box == o.box &&
               ink == o.ink && rcText == o.rcText && gap == o.gap;
    }
};

struct CZELDate::Picture {
    zelctl::CanvasStore canvas;
    Shown shown;
    bool drawn = false;
};

BEGIN_MESSAGE_MAP(CZELDate, CSkinWnd)
ON_WM_PAINT()
ON_WM_DESTROY()
ON_BN_CLICKED(CZELDate::IDC_ADD, &CZELDate::OnBtnAdd)
ON_BN_CLICKED(CZELDate::IDC_DEF, &CZELDate::OnBtnDef)
ON_WM_SETFOCUS()
END_MESSAGE_MAP()

CZELDate::CZELDate()
    : m_nMin(0),
      m_nMax(0),
      m_nValue(0),
      m_nCharGap(5),
      m_nBtnWidth(kButtonRect.right),
      m_nBtnHeight(kButtonRect.bottom),
      m_crBack(kDefaultBack),
      m_crFrame(kDefaultFrame),
      m_crBox(kDefaultBox),
      m_crText(kDefaultText),
      m_bCreated(FALSE),
      m_bStrings(FALSE),
      m_nCurIndex(-1),
      m_picture(std::make_unique<Picture>()) {}

// The window goes first, while this object and its buttons are still whole.
CZELDate::~CZELDate() {
    if (::IsWindow(m_hWnd)) DestroyWindow();
}

BOOL CZELDate::Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) {
    const BOOL created = CWnd::Create(nullptr, lpszText, dwStyle, rect, pParentWnd, nID);
    if (created && !m_bCreated) {
        m_btnAdd.Create(L"add", kButtonStyle, kButtonRect, this, IDC_ADD, false);
        m_btnDef.Create(L"Def", kButtonStyle, kButtonRect, this, IDC_DEF, false);
        m_bCreated = TRUE;
    }
    return created;
}

// A spinner taken over from a dialog template has no buttons until the host creates them.
void CZELDate::PreSubclassWindow() {
    CSkinWnd::PreSubclassWindow();
    CRect client;
    GetClientRect(&client);
    m_rcText.SetRect(2, client.Height() / 2 - kBoxHalfHeight, client.Width() - 2, client.Height() / 2 + kBoxHalfHeight);
}

// ---- skin -------------------------------------------------------------------------------

void CZELDate::LoadSkin(CString strFolder, CString strNames) {
    CStringArray names;
    zelctl::SplitSkinList(strNames, names);
    CArray<CString, CString> lists[3];
    for (INT_PTR i = 0; i < names.GetSize() && i < 9; ++i) lists[i / 3].Add(strFolder + names[i]);
    LoadBitmapW(lists[0], lists[1], lists[2]);
}

void CZELDate::ShowButtons() {
    for (CZELButton* button : {&m_btnAdd, &m_btnDef}) {
        button->EnableWindow(TRUE);
        button->ShowWindow(SW_SHOW);
        button->SetAutoClick(true);
    }
}

// Only the top-left pixel of each sample counts. A sample that did not load keeps the
// colour the spinner had.
void CZELDate::ReadColours(const zelctl::SkinSet& samples) {
    COLORREF* targets[3] = {&m_crBack, &m_crFrame, &m_crBox};
    for (size_t i = 0; i < 3; ++i) {
        const COLORREF pixel = zelctl::TopLeftPixel(samples[i]);
        if (pixel != CLR_INVALID) *targets[i] = pixel;
    }
}

void CZELDate::LoadBitmapW(CArray<CString, CString>& add, CArray<CString, CString>& def,
                           CArray<CString, CString>& colours) {
    if (add.GetSize() < 3 || def.GetSize() < 3 || colours.GetSize() < 3) return;
    if (m_bCreated) {
        m_btnAdd.LoadBitmaps(add[0], add[1], add[2], L"");
        m_btnDef.LoadBitmaps(def[0], def[1], def[2], L"");
        ShowButtons();
    }
    zelctl::SkinSet samples(kSamples);
    samples.LoadFiles({colours[0], colours[1], colours[2], add[0]});
    AfterSkin(samples);
}

// The colour samples and the button's size are read once and the samples dropped.
void CZELDate::AfterSkin(const zelctl::SkinSet& samples) {
    ReadColours(samples);
    const SIZE size = samples.Size(kButtonSample);
    m_nBtnWidth = size.cx;
    m_nBtnHeight = size.cy;
    LayOut(kSkinMargin, m_bStrings != FALSE);
}

void CZELDate::LoadBitmapW(const UINT* add, const UINT* def, const UINT* colours, HINSTANCE hInst) {
    if (!add || !def || !colours) return;
    if (m_bCreated) {
        m_btnAdd.LoadBitmaps(add[0], add[1], add[2], hInst);
        m_btnDef.LoadBitmaps(def[0], def[1], def[2], hInst);
        ShowButtons();
    }
    zelctl::SkinSet samples(kSamples);
    samples.LoadIds({colours[0], colours[1], colours[2], add[0]}, hInst);
    AfterSkin(samples);
}

// ---- layout -----------------------------------------------------------------------------

void CZELDate::LayOut(int margin, bool textBox) {
    if (!::IsWindow(m_hWnd)) return;
    CRect client;
    GetClientRect(&client);
    const int w = client.Width(), h = client.Height(), bw = m_nBtnWidth, bh = m_nBtnHeight;
    if (m_bStrings) {
        if (m_bCreated) {
            m_btnAdd.MoveWindow(w - bw, 0, bw, bh, TRUE);
            m_btnDef.MoveWindow(0, 0, bw, bh, TRUE);
        }
        if (textBox) m_rcText.SetRect(bw + margin, 6, w - bw - margin, h - 6);
    } else {
        if (m_bCreated) {
            m_btnAdd.MoveWindow((w - bw) / 2, 0, bw, bh, TRUE);
            m_btnDef.MoveWindow((w - bw) / 2, h - bh, bw, bh, TRUE);
        }
        if (textBox) m_rcText.SetRect(2, h / 2 - kBoxHalfHeight, w - 2, h / 2 + kBoxHalfHeight);
    }
    Invalidate(TRUE);
}

void CZELDate::MoveWindow(int x, int y, int cx, int cy, bool bRepaint) {
    if (!::IsWindow(m_hWnd)) return;
    CWnd::MoveWindow(x, y, cx, cy, bRepaint);
    LayOut(kMoveMargin, true);
}

void CZELDate::MoveWindow(CRect rc, bool bRepaint) { MoveWindow(rc.left, rc.top, rc.Width(), rc.Height(), bRepaint); }

// ---- value ------------------------------------------------------------------------------

void CZELDate::InvalidateText() {
    if (::IsWindow(m_hWnd)) InvalidateRect(&m_rcText, TRUE);
}

BOOL CZELDate::SetRang(int min, int max) {
    if (m_bStrings || max < min) return FALSE;
    m_nMin = min;
    m_nMax = max;
    if (m_nValue < min) m_nValue = min;
    if (m_nValue > max) m_nValue = max;
    InvalidateText();
    return TRUE;
}

bool CZELDate::SetPos(int n) {
    if (n < m_nMin || n > m_nMax) return false;
    (m_bStrings ? m_nCurIndex : m_nValue) = n;
    InvalidateText();
    return true;
}

void CZELDate::SetCurValue(int n) {
    if (n >= m_nMin && n <= m_nMax) m_nValue = n;
    if (::IsWindow(m_hWnd)) Invalidate(TRUE);
}

int CZELDate::GetCurValue() { return m_bStrings ? m_nCurIndex : m_nValue; }

void CZELDate::GetCurValue(CString& s) {
    s = m_nCurIndex >= 0 && m_nCurIndex < m_strings.GetSize() ? m_strings[m_nCurIndex] : CString();
}

// A range already ending at INT_MAX (set in value style) keeps its end: the string is
// added all the same.
void CZELDate::InsertStr(CString s) {
    if (!s.IsEmpty()) {
        m_strings.Add(s);
        if (m_nMax < INT_MAX) ++m_nMax;
    }
    if (m_nCurIndex == -1) m_nCurIndex = 0;
}

void CZELDate::SetVStyle(bool b) { m_bStrings = b ? FALSE : TRUE; }

void CZELDate::SetTextCol(COLORREF cr) {
    m_crText = cr;
    InvalidateText();
}

// ---- steps ------------------------------------------------------------------------------

// Value style runs over [min, max]; string style over [min, max - 1], which with the
// default bounds is every string InsertStr added. (A range set in value style may reach
// INT_MIN, so max - 1 is taken in 64 bits and kept at INT_MIN.)
int CZELDate::LastIndex() const { return static_cast<int>(std::max<long long>(static_cast<long long>(m_nMax) - 1, INT_MIN)); }

void CZELDate::OnBtnAdd() {
    if (m_bStrings)
        m_nCurIndex = m_nCurIndex >= LastIndex() ? m_nMin : m_nCurIndex + 1;
    else
        m_nValue = m_nValue < m_nMax ? m_nValue + 1 : m_nMin;
    InvalidateText();
    zelctl::NotifyCommand(*this);
}

void CZELDate::OnBtnDef() {
    if (m_bStrings)
        m_nCurIndex = m_nCurIndex > m_nMin ? m_nCurIndex - 1 : LastIndex();
    else
        m_nValue = m_nValue > m_nMin ? m_nValue - 1 : m_nMax;
    InvalidateText();
    zelctl::NotifyCommand(*this);
}

void CZELDate::OnSetFocus(CWnd*) {
    const HWND self = m_hWnd;
    Default();
    if (::IsWindow(self) && ::IsWindow(m_btnAdd.m_hWnd)) m_btnAdd.SetFocus();
}

// ---- painting ---------------------------------------------------------------------------

// Every glyph advances by the glyph width plus the gap, so a "1" takes as much room as
// any digit and the centring below holds.
void CZELDate::DrawStr(HDC hdc, const CString& str, int h, int w, POINT pt, COLORREF crText, int penWidth) {
    HPEN pen = ::CreatePen(PS_SOLID, penWidth, crText);
    {
        const zelctl::SelectGuard guard(hdc, pen);
        for (int i = 0; i < str.GetLength(); ++i)
            zelctl::DrawStrokeGlyph(hdc, str[i], pt.x + i * (w + m_nCharGap), pt.y, w, h);
    }
    ::DeleteObject(pen);
}

void CZELDate::DrawRect(HDC hdc, CString str, RECT rc, UINT format) {
    zelctl::ShortenWithEllipsis(hdc, str, rc.right - rc.left);
    zelctl::DrawSkinText(hdc, str, rc, format, m_crText, nullptr);
}

CZELDate::Shown CZELDate::Showing() {
    Shown shown;
    shown.strings = m_bStrings != FALSE;
    if (!m_bStrings)
        shown.text.Format(L"%02d", m_nValue);
    else if (m_nCurIndex >= 0 && m_nCurIndex < m_strings.GetSize())
        shown.text = m_strings[m_nCurIndex];
    shown.back = m_crBack;
    shown.frame = m_crFrame;
    shown.box = m_crBox;
    shown.ink = m_crText;
    shown.rcText = m_rcText;
    shown.gap = m_nCharGap;
    return shown;
}

// The whole picture: the client fill, the framed box and the value. The digits are wide-pen
// strokes, the costliest part, which is why the picture is kept.
void CZELDate::DrawPicture(HDC mem, const CRect& client, const Shown& shown) {
    HBRUSH fill = ::CreateSolidBrush(shown.back);
    ::FillRect(mem, &client, fill);
    ::DeleteObject(fill);
    HBRUSH box = ::CreateSolidBrush(shown.box);
    HPEN frame = ::CreatePen(PS_SOLID, 1, shown.frame);
    {
        const zelctl::SelectGuard brushGuard(mem, box);
        const zelctl::SelectGuard penGuard(mem, frame);
        ::Rectangle(mem, shown.rcText.left, shown.rcText.top, shown.rcText.right, shown.rcText.bottom);
    }
    ::DeleteObject(box);
    ::DeleteObject(frame);

    if (shown.strings) {
        if (!shown.text.IsEmpty()) {
            CRect rc = shown.rcText;
            rc.left += 5;
            DrawRect(mem, shown.text, rc, kStringFormat);
        }
    } else {
        const int n = shown.text.GetLength();
        const int x = shown.rcText.left + (shown.rcText.Width() - ((kGlyphWidth + shown.gap) * n - shown.gap)) / 2;
        const int y = shown.rcText.top + (shown.rcText.Height() - kGlyphHeight) / 2 + 1;
        DrawStr(mem, shown.text, kGlyphHeight, kGlyphWidth, POINT{x, y}, shown.ink, kGlyphPen);
    }
}

// A repaint of an unchanged spinner (the screen under it repainted, a popup closed over
// it) presents the kept picture. A changed one is drawn whole, not only where it was
// invalidated: the change is what the picture is compared with, not the update region.
void CZELDate::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    Picture& picture = *m_picture;
    const bool sameSize = picture.canvas.dc() && picture.canvas.width() == client.Width() &&
                          picture.canvas.height() == client.Height();
    zelctl::OffscreenCanvas canvas(dc.GetSafeHdc(), client.Width(), client.Height(), picture.canvas);
    Shown shown = Showing();
    if (!sameSize || !picture.drawn || !(shown == picture.shown)) {
        HDC mem = canvas.dc();
        ::SelectClipRgn(mem, nullptr);  // the canvas limits a kept one to the update's box
        DrawPicture(mem, client, shown);
        // Kept only when there is a canvas to keep it in (a window of no size has none).
        picture.drawn = picture.canvas.dc() != nullptr;
        picture.shown = std::move(shown);
    }
    canvas.Present();
}

void CZELDate::OnDestroy() {
    m_picture->canvas.Release();
    m_picture->drawn = false;
    CSkinWnd::OnDestroy();
}
