// CGdiObject and the typed GDI wrappers.
#include "zel/mfc/gdi_objects.h"

#include <cstdio>

#include "mfc/handle_maps.h"
#include "zel/mfc/cdc.h"
#include "zel/mfc/cwinapp.h"

namespace zel::mfc {

HandleMap<CGdiObject>& GdiObjectMap() {
    static auto* map = new HandleMap<CGdiObject>();  // wrappers may be destroyed after statics
    return *map;
}

}  // namespace zel::mfc

using zel::mfc::GdiObjectMap;

namespace {

template <class T>
T* WrapperFor(HGDIOBJ object) {
    return GdiObjectMap().Get<T>(object, [](T* w, const void* h) { w->m_hObject = const_cast<void*>(h); });
}

HGDIOBJ HandleOf(const CGdiObject* object) { return object ? object->m_hObject : nullptr; }

}  // namespace

CGdiObject::~CGdiObject() { DeleteObject(); }

CGdiObject* CGdiObject::FromHandle(HGDIOBJ object) { return WrapperFor<CGdiObject>(object); }

void CGdiObject::DeleteTempMap() {
    GdiObjectMap().DeleteTemporaries([](CGdiObject* w) { w->m_hObject = nullptr; });
}

BOOL CGdiObject::Attach(HGDIOBJ object) {
    if (!object || m_hObject) return FALSE;
    m_hObject = object;
    GdiObjectMap().SetPermanent(object, this);
    return TRUE;
}

HGDIOBJ CGdiObject::Detach() {
    HGDIOBJ object = m_hObject;
    if (object) GdiObjectMap().RemovePermanent(object, this);
    m_hObject = nullptr;
    return object;
}

BOOL CGdiObject::DeleteObject() {
    if (!m_hObject) return FALSE;
    return ::DeleteObject(Detach());
}

BOOL CGdiObject::CreateStockObject(int index) { return Attach(::GetStockObject(index)); }

int CGdiObject::GetObject(int size, LPVOID buffer) const { return ::GetObjectW(m_hObject, size, buffer); }

UINT CGdiObject::GetObjectType() const { return m_hObject ? ::GetObjectType(m_hObject) : 0; }

// A wrapper that already holds a handle would lose it: the framework asserts there; we
// refuse, delete the new object and say why.
BOOL CGdiObject::AttachNew(HGDIOBJ object, const char* what) {
    if (!object) return FALSE;
    if (m_hObject) {
        std::fprintf(stderr, "%s: the object already holds a handle; call DeleteObject first\n", what);
        ::DeleteObject(object);
        return FALSE;
    }
    return Attach(object);
}

// ---- CPen ----

CPen::CPen(int style, int width, COLORREF color) { CreatePen(style, width, color); }
CPen* CPen::FromHandle(HPEN pen) { return WrapperFor<CPen>(pen); }
BOOL CPen::CreatePen(int style, int width, COLORREF color) {
    return AttachNew(::CreatePen(style, width, color), "CPen::CreatePen");
}
BOOL CPen::CreatePenIndirect(const LOGPEN* logPen) {
    return logPen && AttachNew(::CreatePenIndirect(logPen), "CPen::CreatePenIndirect");
}

// ---- CBrush ----

CBrush::CBrush(COLORREF color) { CreateSolidBrush(color); }
CBrush::CBrush(CBitmap* pattern) { CreatePatternBrush(pattern); }
CBrush* CBrush::FromHandle(HBRUSH brush) { return WrapperFor<CBrush>(brush); }
BOOL CBrush::CreateSolidBrush(COLORREF color) {
    return AttachNew(::CreateSolidBrush(color), "CBrush::CreateSolidBrush");
}
BOOL CBrush::CreatePatternBrush(CBitmap* pattern) {
    HBITMAP bitmap = static_cast<HBITMAP>(HandleOf(pattern));
    return bitmap && AttachNew(::CreatePatternBrush(bitmap), "CBrush::CreatePatternBrush");
}
BOOL CBrush::CreateBrushIndirect(const LOGBRUSH* logBrush) {
    return logBrush && AttachNew(::CreateBrushIndirect(logBrush), "CBrush::CreateBrushIndirect");
}
BOOL CBrush::CreateSysColorBrush(int index) {
    return AttachNew(::CreateSolidBrush(::GetSysColor(index)), "CBrush::CreateSysColorBrush");
}

// ---- CFont ----

CFont* CFont::FromHandle(HFONT font) { return WrapperFor<CFont>(font); }
BOOL CFont::CreateFontIndirect(const LOGFONTW* logFont) {
    return logFont && AttachNew(::CreateFontIndirectW(logFont), "CFont::CreateFontIndirect");
}
BOOL CFont::CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic,
                       BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision,
                       BYTE quality, BYTE pitchAndFamily, LPCWSTR faceName) {
    return AttachNew(::CreateFontW(height, width, escapement, orientation, weight, italic, underline, strikeOut,
                                   charSet, outPrecision, clipPrecision, quality, pitchAndFamily, faceName),
                     "CFont::CreateFont");
}

// ---- CBitmap ----

CBitmap* CBitmap::FromHandle(HBITMAP bitmap) { return WrapperFor<CBitmap>(bitmap); }
BOOL CBitmap::LoadBitmap(UINT id) { return LoadBitmap(MAKEINTRESOURCEW(id)); }
BOOL CBitmap::LoadBitmap(LPCWSTR name) {
    return AttachNew(::LoadBitmapW(AfxGetResourceHandle(), name), "CBitmap::LoadBitmap");
}
BOOL CBitmap::CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits) {
    return AttachNew(::CreateBitmap(width, height, planes, bitsPerPixel, bits), "CBitmap::CreateBitmap");
}
BOOL CBitmap::CreateBitmapIndirect(const BITMAP* bitmap) {
    return bitmap && AttachNew(::CreateBitmapIndirect(bitmap), "CBitmap::CreateBitmapIndirect");
}
BOOL CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height) {
    HDC hdc = dc ? dc->m_hDC : nullptr;
    return AttachNew(::CreateCompatibleBitmap(hdc, width, height), "CBitmap::CreateCompatibleBitmap");
}
DWORD CBitmap::GetBitmapBits(DWORD count, LPVOID bits) const {
    return static_cast<DWORD>(::GetBitmapBits(static_cast<HBITMAP>(m_hObject), static_cast<LONG>(count), bits));
}
DWORD CBitmap::SetBitmapBits(DWORD count, const void* bits) {
    return static_cast<DWORD>(::SetBitmapBits(static_cast<HBITMAP>(m_hObject), count, bits));
}

// ---- CRgn ----

CRgn* CRgn::FromHandle(HRGN region) { return WrapperFor<CRgn>(region); }
BOOL CRgn::CreateRectRgn(int left, int top, int right, int bottom) {
    return AttachNew(::CreateRectRgn(left, top, right, bottom), "CRgn::CreateRectRgn");
}
BOOL CRgn::CreateRectRgnIndirect(LPCRECT rect) {
    return rect && AttachNew(::CreateRectRgnIndirect(rect), "CRgn::CreateRectRgnIndirect");
}
int CRgn::CombineRgn(const CRgn* src1, const CRgn* src2, int mode) {
    return ::CombineRgn(static_cast<HRGN>(m_hObject), static_cast<HRGN>(HandleOf(src1)),
                        static_cast<HRGN>(HandleOf(src2)), mode);
}
BOOL CRgn::EqualRgn(const CRgn* other) const {
    return ::EqualRgn(static_cast<HRGN>(m_hObject), static_cast<HRGN>(HandleOf(other)));
}
int CRgn::OffsetRgn(int dx, int dy) { return ::OffsetRgn(static_cast<HRGN>(m_hObject), dx, dy); }
BOOL CRgn::PtInRegion(int x, int y) const { return ::PtInRegion(static_cast<HRGN>(m_hObject), x, y); }
BOOL CRgn::RectInRegion(LPCRECT rect) const {
    return rect && ::RectInRegion(static_cast<HRGN>(m_hObject), rect);
}
int CRgn::GetRgnBox(LPRECT rect) const { return ::GetRgnBox(static_cast<HRGN>(m_hObject), rect); }
void CRgn::SetRectRgn(int left, int top, int right, int bottom) {
    ::SetRectRgn(static_cast<HRGN>(m_hObject), left, top, right, bottom);
}
void CRgn::SetRectRgn(LPCRECT rect) {
    if (rect) SetRectRgn(rect->left, rect->top, rect->right, rect->bottom);
}
