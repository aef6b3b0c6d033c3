#include "CZELBmpButton.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <optional>
#include <string>
#include <vector>

#include "Notify.h"
#include "OffscreenCanvas.h"
#include "SkinPixels.h"
#include "SkinList.h"
#include "SkinPaint.h"
#include "SkinSet.h"

namespace {

enum Piece { kNormal, kFocus, kDown, kDisable, kPieces };

// Looks kept besides the current one: a two-state key (play / pause) needs one.
constexpr size_t kKeptLooks = 2;

// n in decimal, as "%d" writes it.
void AppendDecimal(std::wstring& out, int n) {
    wchar_t digits[12];
    int k = 0;
    long long v = n;
    const bool negative = v < 0;
    if (negative) v = -v;
    do {
        digits[k++] = static_cast<wchar_t>(L'0' + v % 10);
        v /= 10;
    } while (v);
    if (negative) out += L'-';
    while (k) out += digits[--k];
}

// A span's trace line, "left-top-width-height": one per row of a shape, so formatted
// without a format string.
std::wstring SpanLine(const RECT& span) {
    std::wstring line;
    line.reserve(24);
    const int parts[] = {static_cast<int>(span.left), static_cast<int>(span.top),
                         static_cast<int>(span.right - span.left), static_cast<int>(span.bottom - span.top)};
    for (int i = 0; i < 4; ++i) {
        if (i) line += L'-';
        AppendDecimal(line, parts[i]);
    }
    return line;
}

}  // namespace

struct CZELBmpButton::Look {
    LookKey key;
    std::unique_ptr<zelctl::SkinSet> skin;
    HRGN shape = nullptr;
    std::vector<std::wstring> lines;
    ~Look() {
        if (shape) ::DeleteObject(shape);
    }
};

BEGIN_MESSAGE_MAP(CZELBmpButton, CButton)
    ON_WM_KILLFOCUS()
    ON_WM_SETFOCUS()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_PAINT()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CZELBmpButton::CZELBmpButton() : m_bPressed(FALSE), m_skin(std::make_unique<zelctl::SkinSet>(kPieces)) {}

CZELBmpButton::~CZELBmpButton() = default;

void CZELBmpButton::LoadBitmaps(UINT nNormal, UINT nFocus, UINT nDown, UINT nDisable, HINSTANCE hInst) {
    const LookKey key{{nNormal, nFocus, nDown, nDisable}, hInst ? hInst : AfxGetResourceHandle()};
    if (m_hWnd && ::IsWindow(m_hWnd) && (m_currentKey == key || TakeKeptLook(key))) {
        // The same images and shape as loading them again would give; the debug lines
        // of the trace are written again all the same.
        for (const std::wstring& line : m_shapeLines) ::OutputDebugStringW(line.c_str());
        SetWindowRgn(static_cast<HRGN>(m_rgnShape.m_hObject), TRUE);
        Invalidate();
        return;
    }
    KeepCurrentLook();
    m_rgnShape.DeleteObject();
    m_rgnShape.CreateRectRgn(0, 0, 0, 0);
    m_skin->ReleaseAll();
    // Identifier 0 means "no such skin": it is not even looked up.
    m_skin->LoadIds({nNormal}, hInst, kNormal);
    if (nFocus) m_skin->LoadIds({nFocus}, hInst, kFocus);
    if (nDown) m_skin->LoadIds({nDown}, hInst, kDown);
    if (nDisable) m_skin->LoadIds({nDisable}, hInst, kDisable);
    if (BuildShape()) m_currentKey = key;
    // A new region alone repaints only what it uncovers; the new skins need a paint too.
    if (m_hWnd) Invalidate();
}

void CZELBmpButton::KeepCurrentLook() {
    if (m_currentKey) {
        auto look = std::make_unique<Look>();
        look->key = *m_currentKey;
        look->skin = std::move(m_skin);
        look->shape = static_cast<HRGN>(m_rgnShape.Detach());
        look->lines = std::move(m_shapeLines);
        m_looks.insert(m_looks.begin(), std::move(look));
        if (m_looks.size() > kKeptLooks) m_looks.pop_back();
        m_skin = std::make_unique<zelctl::SkinSet>(kPieces);
    }
    m_currentKey.reset();
    m_shapeLines.clear();
}

bool CZELBmpButton::TakeKeptLook(const LookKey& key) {
    auto found = std::find_if(m_looks.begin(), m_looks.end(), [&](const auto& look) { return look->key == key; });
    if (found == m_looks.end()) return false;
    std::unique_ptr<Look> look = std::move(*found);
    m_looks.erase(found);
    KeepCurrentLook();
    m_skin = std::move(look->skin);
    m_rgnShape.DeleteObject();
    m_rgnShape.Attach(look->shape);
    look->shape = nullptr;
    m_shapeLines = std::move(look->lines);
    m_currentKey = key;
    return true;
}

void CZELBmpButton::OnDestroy() {
    m_looks.clear();
    CButton::OnDestroy();
}

// One span per row, from the first to the last pixel that is not the key colour (the
// skin's top-left pixel); holes inside a row stay part of the button.
//
// Intended: the debug lines and the "fjie" box on a missing device context are the
// device's own output, kept as they are; tests and tools read them.
bool CZELBmpButton::BuildShape() {
    m_shapeLines.clear();
    // Each line goes out as the device's NKDbgPrintfW writes it (one debug line, no line
    // break) and is kept for a reload of the same skins.
    auto trace = [this](std::wstring line) {
        ::OutputDebugStringW(line.c_str());
        m_shapeLines.push_back(std::move(line));
    };
    trace(L"fjeif");
    {
        std::optional<CClientDC> windowDC;  // never the screen's DC for a missing window
        if (m_hWnd) windowDC.emplace(this);
        if (!windowDC || !windowDC->m_hDC) {
            AfxMessageBox(L"fjie");
            return false;
        }
        trace(L"hDC");
        CDC memDC;
        memDC.CreateCompatibleDC(&*windowDC);
        trace(L"MemDC");
        const zelctl::SelectGuard select(memDC, (*m_skin)[kNormal]);
        CRect rc;
        GetClientRect(&rc);
        const int width = rc.Width();
        const zelctl::SkinPixels pixels(memDC);
        const COLORREF key = pixels.At(0, 0);
        trace(L"for");
        std::vector<RECT> spans;
        for (int y = 0; y < rc.Height(); ++y) {
            int first = 0;
            while (first < width && pixels.At(first, y) == key) ++first;
            if (first == width) continue;
            int last = width - 1;
            while (last > first && pixels.At(last, y) == key) --last;
            CRect span(rc.left + first, rc.top + y, rc.left + last + 1, rc.top + y + 1);
            trace(SpanLine(span));
            spans.push_back(span);
        }
        // All rows join the shape in one region operation.
        CRgn rows;
        rows.Attach(zelctl::RegionFromSpans(spans));
        m_rgnShape.CombineRgn(&m_rgnShape, &rows, RGN_OR);
    }  // the skin is deselected and both DCs are gone before the window takes the region
    // The window keeps a copy; the handle left here is deleted with the object.
    SetWindowRgn(static_cast<HRGN>(m_rgnShape.m_hObject), TRUE);
    return true;
}

HBITMAP CZELBmpButton::ChooseSkin() const {
    const zelctl::SkinSet& skin = *m_skin;
    if (m_bPressed) return skin[kDown] ? skin[kDown] : skin[kNormal];
    if (::GetFocus() != m_hWnd) return !IsWindowEnabled() && skin[kDisable] ? skin[kDisable] : skin[kNormal];
    return skin[kFocus] ? skin[kFocus] : skin[kNormal];
}

void CZELBmpButton::OnPaint() {
    CPaintDC dc(this);
    zelctl::PaintSingleSkin(*this, dc, ChooseSkin());
}

// No default processing: the BUTTON logic must not see the press, or it would send a
// click of its own on the release.
void CZELBmpButton::OnLButtonDown(UINT, CPoint) {
    SetFocus();
    SetCapture();
    m_bPressed = TRUE;
    Invalidate();
}

void CZELBmpButton::OnMouseMove(UINT, CPoint point) {
    CRect rc;
    GetClientRect(&rc);
    const bool inside = rc.PtInRect(point) != FALSE;
    if (inside != (m_bPressed != FALSE)) {
        m_bPressed = inside ? TRUE : FALSE;
        Invalidate();
    }
    Default();
}

// Intended: the release point decides, not the last move (unlike CZELButton).
void CZELBmpButton::OnLButtonUp(UINT, CPoint point) {
    const zelctl::AliveCheck alive(*this);
    ::ReleaseCapture();
    m_bPressed = FALSE;
    CRect rc;
    GetClientRect(&rc);
    if (rc.PtInRect(point) && !zelctl::NotifyCommand(*this)) return;
    Default();
    if (alive.Alive()) Invalidate();
}

void CZELBmpButton::OnKillFocus(CWnd*) {
    const zelctl::AliveCheck alive(*this);
    m_bPressed = FALSE;
    Default();
    ::ReleaseCapture();
    if (alive.Alive()) Invalidate();
}

void CZELBmpButton::OnSetFocus(CWnd*) {
    const zelctl::AliveCheck alive(*this);
    Default();
    if (alive.Alive()) Invalidate();
}
