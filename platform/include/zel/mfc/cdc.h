// CDC and the window DCs: CPaintDC (BeginPaint/EndPaint), CClientDC (GetDC/ReleaseDC),
// CWindowDC (GetWindowDC/ReleaseDC).
//
// A CDC owns an attached or created DC and deletes it on destruction; the window DC
// classes release theirs instead. SelectObject returns the previously selected object as
// a wrapper of the same type (a temporary one unless the handle has a permanent wrapper).
#pragma once

#include <windows.h>

#include "zel/mfc/cstring.h"
#include "zel/mfc/gdi_objects.h"
#include "zel/mfc/geometry.h"
#include "zel/mfc/object.h"

class CWnd;

class ZEL_API CDC : public CObject {
public:
    CDC() = default;
    ~CDC() override;

    HDC m_hDC = nullptr;
    HDC m_hAttribDC = nullptr;

    HDC GetSafeHdc() const { return m_hDC; }
    operator HDC() const { return m_hDC; }
    static CDC* FromHandle(HDC dc);
    static void DeleteTempMap();
    BOOL Attach(HDC dc);
    HDC Detach();

    BOOL CreateCompatibleDC(CDC* dc);  // dc may be NULL: compatible with the screen
    BOOL DeleteDC();
    int SaveDC();
    BOOL RestoreDC(int saved);

    // Selection.
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CFont* SelectObject(CFont* font);
    CBitmap* SelectObject(CBitmap* bitmap);
    int SelectObject(CRgn* region);  // selects a copy as the clip region; returns its type
    CGdiObject* SelectObject(CGdiObject* object);
    HGDIOBJ SelectObject(HGDIOBJ object);
    CGdiObject* SelectStockObject(int index);
    CPen* GetCurrentPen() const;
    CBrush* GetCurrentBrush() const;
    CFont* GetCurrentFont() const;
    CBitmap* GetCurrentBitmap() const;

    // Attributes.
    COLORREF SetBkColor(COLORREF color);
    COLORREF GetBkColor() const;
    int SetBkMode(int mode);
    int GetBkMode() const;
    COLORREF SetTextColor(COLORREF color);
    COLORREF GetTextColor() const;
    UINT SetTextAlign(UINT align);
    UINT GetTextAlign() const;
    int SetROP2(int rop2);
    int GetROP2() const;
    int SetStretchBltMode(int mode);
    int GetStretchBltMode() const;
    CPoint SetBrushOrg(int x, int y);
    CPoint SetBrushOrg(POINT pt) { return SetBrushOrg(pt.x, pt.y); }
    CPoint GetBrushOrg() const;
    int GetDeviceCaps(int index) const;

    // Clipping.
    int SelectClipRgn(CRgn* region);
    int SelectClipRgn(CRgn* region, int mode);
    int IntersectClipRect(int left, int top, int right, int bottom);
    int IntersectClipRect(LPCRECT rect);
    int ExcludeClipRect(int left, int top, int right, int bottom);
    int ExcludeClipRect(LPCRECT rect);
    int GetClipBox(LPRECT rect) const;

    // Raster operations.
    BOOL BitBlt(int x, int y, int width, int height, CDC* src, int xSrc, int ySrc, DWORD rop);
    BOOL StretchBlt(int x, int y, int width, int height, CDC* src, int xSrc, int ySrc, int srcWidth,
                    int srcHeight, DWORD rop);
    BOOL PatBlt(int x, int y, int width, int height, DWORD rop);
    COLORREF SetPixel(int x, int y, COLORREF color);
    COLORREF SetPixel(POINT pt, COLORREF color) { return SetPixel(pt.x, pt.y, color); }
    BOOL SetPixelV(int x, int y, COLORREF color);
    COLORREF GetPixel(int x, int y) const;
    COLORREF GetPixel(POINT pt) const { return GetPixel(pt.x, pt.y); }

    // Rectangles and shapes.
    void FillRect(LPCRECT rect, CBrush* brush);
    // Fills with a solid colour and, as the framework does, leaves the DC's background
    // colour set to it.
    void FillSolidRect(LPCRECT rect, COLORREF color);
    void FillSolidRect(int x, int y, int width, int height, COLORREF color);
    void FrameRect(LPCRECT rect, CBrush* brush);
    void InvertRect(LPCRECT rect);
    // Top and left edges in topLeft, bottom and right edges in bottomRight (which also
    // owns the top-right and bottom-left corner pixels).
    void Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight);
    void Draw3dRect(int x, int y, int width, int height, COLORREF topLeft, COLORREF bottomRight);
    void DrawFocusRect(LPCRECT rect);
    BOOL FillRgn(CRgn* region, CBrush* brush);
    BOOL PaintRgn(CRgn* region);
    BOOL Rectangle(int left, int top, int right, int bottom);
    BOOL Rectangle(LPCRECT rect);
    BOOL RoundRect(int left, int top, int right, int bottom, int width, int height);
    BOOL RoundRect(LPCRECT rect, POINT corner);
    BOOL Ellipse(int left, int top, int right, int bottom);
    BOOL Ellipse(LPCRECT rect);

    // Lines.
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT pt) { return MoveTo(pt.x, pt.y); }
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT pt) { return LineTo(pt.x, pt.y); }
    BOOL Polyline(const POINT* points, int count);
    CPoint GetCurrentPosition() const;

    // Text.
    int DrawText(LPCWSTR text, int count, LPRECT rect, UINT format);
    int DrawText(const CString& text, LPRECT rect, UINT format);
    BOOL TextOut(int x, int y, LPCWSTR text, int count);
    BOOL TextOut(int x, int y, const CString& text);
    BOOL ExtTextOut(int x, int y, UINT options, LPCRECT rect, LPCWSTR text, UINT count, LPINT dx);
    BOOL ExtTextOut(int x, int y, UINT options, LPCRECT rect, const CString& text, LPINT dx);
    CSize GetTextExtent(LPCWSTR text, int count) const;
    CSize GetTextExtent(const CString& text) const;
    BOOL GetTextMetrics(LPTEXTMETRICW metrics) const;
    int GetTextFace(int count, LPWSTR face) const;

private:
    template <class T, class H>
    T* Select(T* object);
};

class ZEL_API CPaintDC : public CDC {
public:
    explicit CPaintDC(CWnd* wnd);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps{};
    HWND m_hWnd = nullptr;
};

class ZEL_API CClientDC : public CDC {
public:
    explicit CClientDC(CWnd* wnd);  // NULL: the screen
    ~CClientDC() override;

    HWND m_hWnd = nullptr;
};

class ZEL_API CWindowDC : public CDC {
public:
    explicit CWindowDC(CWnd* wnd);  // NULL: the screen
    ~CWindowDC() override;

    HWND m_hWnd = nullptr;
};
