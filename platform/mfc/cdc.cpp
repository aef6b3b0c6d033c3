// CDC, CPaintDC, CClientDC, CWindowDC.
#include "zel/mfc/cdc.h"

#include <cstdio>

#include "mfc/handle_maps.h"
#include "zel/mfc/cwnd.h"

namespace zel::mfc {

HandleMap<CDC>& DcMap() {
    static auto* map = new HandleMap<CDC>();  // wrappers may be destroyed after statics
    return *map;
}

}  // namespace zel::mfc

using zel::mfc::DcMap;

namespace {

HDC HdcOf(const CDC* dc) { return dc ? dc->m_hDC : nullptr; }
template <class H>
H HandleOf(const CGdiObject* object) {
    return static_cast<H>(object ? object->m_hObject : nullptr);
}

}  // namespace

CDC::~CDC() {
    if (m_hDC) ::DeleteDC(Detach());
}

CDC* CDC::FromHandle(HDC dc) {
    return DcMap().Get<CDC>(dc, [](CDC* w, const void* h) {
        w->m_hDC = w->m_hAttribDC = static_cast<HDC>(const_cast<void*>(h));
    });
}

void CDC::DeleteTempMap() {
    DcMap().DeleteTemporaries([](CDC* w) { w->m_hDC = w->m_hAttribDC = nullptr; });
}

BOOL CDC::Attach(HDC dc) {
    if (!dc || m_hDC) return FALSE;
    m_hDC = m_hAttribDC = dc;
    DcMap().SetPermanent(dc, this);
    return TRUE;
}

HDC CDC::Detach() {
    HDC dc = m_hDC;
    if (dc) DcMap().RemovePermanent(dc, this);
    m_hDC = m_hAttribDC = nullptr;
    return dc;
}

BOOL CDC::CreateCompatibleDC(CDC* dc) {
    if (m_hDC) {
        std::fprintf(stderr, "CDC::CreateCompatibleDC: the object already holds a DC; call DeleteDC first\n");
        return FALSE;
    }
    return Attach(::CreateCompatibleDC(HdcOf(dc)));
}

BOOL CDC::DeleteDC() {
    if (!m_hDC) return FALSE;
    return ::DeleteDC(Detach());
}

int CDC::SaveDC() { return ::SaveDC(m_hDC); }
BOOL CDC::RestoreDC(int saved) { return ::RestoreDC(m_hDC, saved); }

// ---- selection ----

template <class T, class H>
T* CDC::Select(T* object) {
    HGDIOBJ old = ::SelectObject(m_hDC, HandleOf<HGDIOBJ>(object));
    return old ? T::FromHandle(static_cast<H>(old)) : nullptr;
}

CPen* CDC::SelectObject(CPen* pen) { return Select<CPen, HPEN>(pen); }
CBrush* CDC::SelectObject(CBrush* brush) { return Select<CBrush, HBRUSH>(brush); }
CFont* CDC::SelectObject(CFont* font) { return Select<CFont, HFONT>(font); }
CBitmap* CDC::SelectObject(CBitmap* bitmap) { return Select<CBitmap, HBITMAP>(bitmap); }
CGdiObject* CDC::SelectObject(CGdiObject* object) { return Select<CGdiObject, HGDIOBJ>(object); }
HGDIOBJ CDC::SelectObject(HGDIOBJ object) { return ::SelectObject(m_hDC, object); }

// Selecting a region into a DC makes a copy of it the clip region.
int CDC::SelectObject(CRgn* region) {
    if (!region || !region->m_hObject) return ERROR;
    return ::SelectClipRgn(m_hDC, HandleOf<HRGN>(region));
}

CGdiObject* CDC::SelectStockObject(int index) {
    HGDIOBJ stock = ::GetStockObject(index);
    if (!stock) return nullptr;
    HGDIOBJ old = ::SelectObject(m_hDC, stock);
    return old ? CGdiObject::FromHandle(old) : nullptr;
}

CPen* CDC::GetCurrentPen() const { return CPen::FromHandle(static_cast<HPEN>(::GetCurrentObject(m_hDC, OBJ_PEN))); }
CBrush* CDC::GetCurrentBrush() const {
    return CBrush::FromHandle(static_cast<HBRUSH>(::GetCurrentObject(m_hDC, OBJ_BRUSH)));
}
CFont* CDC::GetCurrentFont() const {
    return CFont::FromHandle(static_cast<HFONT>(::GetCurrentObject(m_hDC, OBJ_FONT)));
}
CBitmap* CDC::GetCurrentBitmap() const {
    return CBitmap::FromHandle(static_cast<HBITMAP>(::GetCurrentObject(m_hDC, OBJ_BITMAP)));
}

// ---- attributes ----

COLORREF CDC::SetBkColor(COLORREF color) { return ::SetBkColor(m_hDC, color); }
COLORREF CDC::GetBkColor() const { return ::GetBkColor(m_hDC); }
int CDC::SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }
int CDC::GetBkMode() const { return ::GetBkMode(m_hDC); }
COLORREF CDC::SetTextColor(COLORREF color) { return ::SetTextColor(m_hDC, color); }
COLORREF CDC::GetTextColor() const { return ::GetTextColor(m_hDC); }
UINT CDC::SetTextAlign(UINT align) { return ::SetTextAlign(m_hDC, align); }
UINT CDC::GetTextAlign() const { return ::GetTextAlign(m_hDC); }
int CDC::SetROP2(int rop2) { return ::SetROP2(m_hDC, rop2); }
int CDC::GetROP2() const { return ::GetROP2(m_hDC); }
int CDC::SetStretchBltMode(int mode) { return ::SetStretchBltMode(m_hDC, mode); }
int CDC::GetStretchBltMode() const { return ::GetStretchBltMode(m_hDC); }
CPoint CDC::SetBrushOrg(int x, int y) {
    POINT old{0, 0};
    ::SetBrushOrgEx(m_hDC, x, y, &old);
    return old;
}
CPoint CDC::GetBrushOrg() const {
    POINT org{0, 0};
    ::GetBrushOrgEx(m_hDC, &org);
    return org;
}
int CDC::GetDeviceCaps(int index) const { return ::GetDeviceCaps(m_hDC, index); }

// ---- clipping ----

int CDC::SelectClipRgn(CRgn* region) { return ::SelectClipRgn(m_hDC, HandleOf<HRGN>(region)); }
int CDC::SelectClipRgn(CRgn* region, int mode) { return ::ExtSelectClipRgn(m_hDC, HandleOf<HRGN>(region), mode); }
int CDC::IntersectClipRect(int left, int top, int right, int bottom) {
    return ::IntersectClipRect(m_hDC, left, top, right, bottom);
}
int CDC::IntersectClipRect(LPCRECT rect) {
    return rect ? IntersectClipRect(rect->left, rect->top, rect->right, rect->bottom) : ERROR;
}
int CDC::ExcludeClipRect(int left, int top, int right, int bottom) {
    return ::ExcludeClipRect(m_hDC, left, top, right, bottom);
}
int CDC::ExcludeClipRect(LPCRECT rect) {
    return rect ? ExcludeClipRect(rect->left, rect->top, rect->right, rect->bottom) : ERROR;
}
int CDC::GetClipBox(LPRECT rect) const { return ::GetClipBox(m_hDC, rect); }

// ---- raster ----

BOOL CDC::BitBlt(int x, int y, int width, int height, CDC* src, int xSrc, int ySrc, DWORD rop) {
    return ::BitBlt(m_hDC, x, y, width, height, HdcOf(src), xSrc, ySrc, rop);
}
BOOL CDC::StretchBlt(int x, int y, int width, int height, CDC* src, int xSrc, int ySrc, int srcWidth,
                     int srcHeight, DWORD rop) {
    return ::StretchBlt(m_hDC, x, y, width, height, HdcOf(src), xSrc, ySrc, srcWidth, srcHeight, rop);
}
BOOL CDC::PatBlt(int x, int y, int width, int height, DWORD rop) { return ::PatBlt(m_hDC, x, y, width, height, rop); }
COLORREF CDC::SetPixel(int x, int y, COLORREF color) { return ::SetPixel(m_hDC, x, y, color); }
BOOL CDC::SetPixelV(int x, int y, COLORREF color) { return ::SetPixelV(m_hDC, x, y, color); }
COLORREF CDC::GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }

// ---- rectangles and shapes ----

void CDC::FillRect(LPCRECT rect, CBrush* brush) {
    if (rect) ::FillRect(m_hDC, rect, HandleOf<HBRUSH>(brush));
}

void CDC::FillSolidRect(LPCRECT rect, COLORREF color) {
    if (!rect || !m_hDC) return;
    ::SetBkColor(m_hDC, color);
    HBRUSH brush = ::CreateSolidBrush(color);
    ::FillRect(m_hDC, rect, brush);
    ::DeleteObject(brush);
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF color) {
    RECT rc{x, y, x + width, y + height};
    FillSolidRect(&rc, color);
}

void CDC::FrameRect(LPCRECT rect, CBrush* brush) {
    if (rect) ::FrameRect(m_hDC, rect, HandleOf<HBRUSH>(brush));
}

void CDC::InvertRect(LPCRECT rect) {
    if (rect) ::InvertRect(m_hDC, rect);
}

void CDC::Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight) {
    if (rect) Draw3dRect(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, topLeft, bottomRight);
}

void CDC::Draw3dRect(int x, int y, int width, int height, COLORREF topLeft, COLORREF bottomRight) {
    FillSolidRect(x, y, width - 1, 1, topLeft);
    FillSolidRect(x, y, 1, height - 1, topLeft);
    FillSolidRect(x + width - 1, y, 1, height, bottomRight);
    FillSolidRect(x, y + height - 1, width, 1, bottomRight);
}

void CDC::DrawFocusRect(LPCRECT rect) {
    if (rect) ::DrawFocusRect(m_hDC, rect);
}
BOOL CDC::FillRgn(CRgn* region, CBrush* brush) {
    return ::FillRgn(m_hDC, HandleOf<HRGN>(region), HandleOf<HBRUSH>(brush));
}
BOOL CDC::PaintRgn(CRgn* region) { return ::PaintRgn(m_hDC, HandleOf<HRGN>(region)); }
BOOL CDC::Rectangle(int left, int top, int right, int bottom) { return ::Rectangle(m_hDC, left, top, right, bottom); }
BOOL CDC::Rectangle(LPCRECT rect) { return rect && Rectangle(rect->left, rect->top, rect->right, rect->bottom); }
BOOL CDC::RoundRect(int left, int top, int right, int bottom, int width, int height) {
    return ::RoundRect(m_hDC, left, top, right, bottom, width, height);
}
BOOL CDC::RoundRect(LPCRECT rect, POINT corner) {
    return rect && RoundRect(rect->left, rect->top, rect->right, rect->bottom, corner.x, corner.y);
}
BOOL CDC::Ellipse(int left, int top, int right, int bottom) { return ::Ellipse(m_hDC, left, top, right, bottom); }
BOOL CDC::Ellipse(LPCRECT rect) { return rect && Ellipse(rect->left, rect->top, rect->right, rect->bottom); }

// ---- lines ----

CPoint CDC::MoveTo(int x, int y) {
    POINT old{0, 0};
    ::MoveToEx(m_hDC, x, y, &old);
    return old;
}
BOOL CDC::LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
BOOL CDC::Polyline(const POINT* points, int count) { return ::Polyline(m_hDC, points, count); }
CPoint CDC::GetCurrentPosition() const {
    POINT pos{0, 0};
    ::GetCurrentPositionEx(m_hDC, &pos);
    return pos;
}

// ---- text ----

int CDC::DrawText(LPCWSTR text, int count, LPRECT rect, UINT format) {
    return ::DrawTextW(m_hDC, text, count, rect, format);
}
// The CString stays const: DT_MODIFYSTRING would write into it.
int CDC::DrawText(const CString& text, LPRECT rect, UINT format) {
    return ::DrawTextW(m_hDC, text.GetString(), text.GetLength(), rect, format & ~static_cast<UINT>(DT_MODIFYSTRING));
}
BOOL CDC::TextOut(int x, int y, LPCWSTR text, int count) { return ::TextOutW(m_hDC, x, y, text, count); }
BOOL CDC::TextOut(int x, int y, const CString& text) {
    return ::TextOutW(m_hDC, x, y, text.GetString(), text.GetLength());
}
BOOL CDC::ExtTextOut(int x, int y, UINT options, LPCRECT rect, LPCWSTR text, UINT count, LPINT dx) {
    return ::ExtTextOutW(m_hDC, x, y, options, rect, text, count, dx);
}
BOOL CDC::ExtTextOut(int x, int y, UINT options, LPCRECT rect, const CString& text, LPINT dx) {
    return ::ExtTextOutW(m_hDC, x, y, options, rect, text.GetString(), static_cast<UINT>(text.GetLength()), dx);
}
CSize CDC::GetTextExtent(LPCWSTR text, int count) const {
    SIZE size{0, 0};
    ::GetTextExtentPoint32W(m_hDC, text, count, &size);
    return size;
}
CSize CDC::GetTextExtent(const CString& text) const { return GetTextExtent(text.GetString(), text.GetLength()); }
BOOL CDC::GetTextMetrics(LPTEXTMETRICW metrics) const { return ::GetTextMetricsW(m_hDC, metrics); }
int CDC::GetTextFace(int count, LPWSTR face) const { return ::GetTextFaceW(m_hDC, count, face); }

// ---- window DCs ----

CPaintDC::CPaintDC(CWnd* wnd) : m_hWnd(wnd ? wnd->m_hWnd : nullptr) { Attach(::BeginPaint(m_hWnd, &m_ps)); }

CPaintDC::~CPaintDC() {
    if (m_hDC) {
        ::EndPaint(m_hWnd, &m_ps);
        Detach();
    }
}

CClientDC::CClientDC(CWnd* wnd) : m_hWnd(wnd ? wnd->m_hWnd : nullptr) { Attach(::GetDC(m_hWnd)); }

CClientDC::~CClientDC() {
    if (m_hDC) ::ReleaseDC(m_hWnd, Detach());
}

CWindowDC::CWindowDC(CWnd* wnd) : m_hWnd(wnd ? wnd->m_hWnd : nullptr) { Attach(::GetWindowDC(m_hWnd)); }

CWindowDC::~CWindowDC() {
    if (m_hDC) ::ReleaseDC(m_hWnd, Detach());
}
