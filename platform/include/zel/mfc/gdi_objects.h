// The GDI object wrappers: CGdiObject, CPen, CBrush, CFont, CBitmap, CRgn.
//
// A wrapper owns the handle it holds: DeleteObject or the destructor deletes it. Attach
// makes the wrapper the permanent object for the handle (FromHandle returns it); for any
// other handle FromHandle hands out a temporary wrapper that never deletes the handle and
// is itself deleted at the next idle point of the message loop.
#pragma once

#include <windows.h>

#include "zel/mfc/geometry.h"
#include "zel/mfc/object.h"

class CDC;

class ZEL_API CGdiObject : public CObject {
public:
    CGdiObject() = default;
    ~CGdiObject() override;

    HGDIOBJ m_hObject = nullptr;

    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    operator HGDIOBJ() const { return m_hObject; }
    static CGdiObject* FromHandle(HGDIOBJ object);
    static void DeleteTempMap();

    // FALSE for a NULL handle, or when this wrapper already holds one (it would leak).
    BOOL Attach(HGDIOBJ object);
    HGDIOBJ Detach();
    BOOL DeleteObject();
    BOOL CreateStockObject(int index);
    int GetObject(int size, LPVOID buffer) const;
    UINT GetObjectType() const;

    bool operator==(const CGdiObject& o) const { return m_hObject == o.m_hObject; }
    bool operator!=(const CGdiObject& o) const { return m_hObject != o.m_hObject; }

protected:
    // Creation helpers: attach a freshly created handle, or report why not.
    BOOL AttachNew(HGDIOBJ object, const char* what);
};

class ZEL_API CPen : public CGdiObject {
public:
    CPen() = default;
    CPen(int style, int width, COLORREF color);
    static CPen* FromHandle(HPEN pen);
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
    BOOL CreatePen(int style, int width, COLORREF color);
    BOOL CreatePenIndirect(const LOGPEN* logPen);
    int GetLogPen(LOGPEN* logPen) const { return GetObject(sizeof(LOGPEN), logPen); }
};

class CBitmap;

class ZEL_API CBrush : public CGdiObject {
public:
    CBrush() = default;
    explicit CBrush(COLORREF color);
    explicit CBrush(CBitmap* pattern);
    static CBrush* FromHandle(HBRUSH brush);
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    BOOL CreateSolidBrush(COLORREF color);
    BOOL CreatePatternBrush(CBitmap* pattern);
    BOOL CreateBrushIndirect(const LOGBRUSH* logBrush);
    BOOL CreateSysColorBrush(int index);
    int GetLogBrush(LOGBRUSH* logBrush) const { return GetObject(sizeof(LOGBRUSH), logBrush); }
};

class ZEL_API CFont : public CGdiObject {
public:
    static CFont* FromHandle(HFONT font);
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    BOOL CreateFontIndirect(const LOGFONTW* logFont);
    BOOL CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic,
                    BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision,
                    BYTE quality, BYTE pitchAndFamily, LPCWSTR faceName);
    int GetLogFont(LOGFONTW* logFont) const { return GetObject(sizeof(LOGFONTW), logFont); }
};

class ZEL_API CBitmap : public CGdiObject {
public:
    static CBitmap* FromHandle(HBITMAP bitmap);
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    // Resources come from AfxGetResourceHandle(); identifiers use their low 16 bits.
    BOOL LoadBitmap(UINT id);
    BOOL LoadBitmap(LPCWSTR name);
    BOOL CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits);
    BOOL CreateBitmapIndirect(const BITMAP* bitmap);
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);
    int GetBitmap(BITMAP* bitmap) const { return GetObject(sizeof(BITMAP), bitmap); }
    DWORD GetBitmapBits(DWORD count, LPVOID bits) const;
    DWORD SetBitmapBits(DWORD count, const void* bits);
};

class ZEL_API CRgn : public CGdiObject {
public:
    static CRgn* FromHandle(HRGN region);
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
    BOOL CreateRectRgn(int left, int top, int right, int bottom);
    BOOL CreateRectRgnIndirect(LPCRECT rect);
    // NULLREGION, SIMPLEREGION, COMPLEXREGION or ERROR, as CombineRgn.
    int CombineRgn(const CRgn* src1, const CRgn* src2, int mode);
    int CopyRgn(const CRgn* src) { return CombineRgn(src, nullptr, RGN_COPY); }
    BOOL EqualRgn(const CRgn* other) const;
    int OffsetRgn(int dx, int dy);
    int OffsetRgn(POINT pt) { return OffsetRgn(pt.x, pt.y); }
    BOOL PtInRegion(int x, int y) const;
    BOOL PtInRegion(POINT pt) const { return PtInRegion(pt.x, pt.y); }
    BOOL RectInRegion(LPCRECT rect) const;
    int GetRgnBox(LPRECT rect) const;
    void SetRectRgn(int left, int top, int right, int bottom);
    void SetRectRgn(LPCRECT rect);
};
