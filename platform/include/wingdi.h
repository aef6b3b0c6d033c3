// GDI: objects, device contexts, raster operations, shapes, regions, text.
#pragma once

#include "zel/win/types.h"

// Ternary raster operations (index byte in bits 16..23).
#define SRCCOPY 0x00CC0020
#define SRCPAINT 0x00EE0086
#define SRCAND 0x008800C6
#define SRCINVERT 0x00660046
#define SRCERASE 0x00440328
#define NOTSRCCOPY 0x00330008
#define NOTSRCERASE 0x001100A6
#define MERGECOPY 0x00C000CA
#define MERGEPAINT 0x00BB0226
#define PATCOPY 0x00F00021
#define PATPAINT 0x00FB0A09
#define PATINVERT 0x005A0049
#define DSTINVERT 0x00550009
#define BLACKNESS 0x00000042
#define WHITENESS 0x00FF0062
#define MAKEROP4(fore, back) (DWORD)((((back) << 8) & 0xFF000000) | (fore))

// Binary raster operations (pens).
#define R2_BLACK 1
#define R2_NOTMERGEPEN 2
#define R2_MASKNOTPEN 3
#define R2_NOTCOPYPEN 4
#define R2_MASKPENNOT 5
#define R2_NOT 6
#define R2_XORPEN 7
#define R2_NOTMASKPEN 8
#define R2_MASKPEN 9
#define R2_NOTXORPEN 10
#define R2_NOP 11
#define R2_MERGENOTPEN 12
#define R2_COPYPEN 13
#define R2_MERGEPENNOT 14
#define R2_MERGEPEN 15
#define R2_WHITE 16

#define TRANSPARENT 1
#define OPAQUE 2

#define BLACKONWHITE 1
#define WHITEONBLACK 2
#define COLORONCOLOR 3
#define HALFTONE 4
#define STRETCH_ANDSCANS BLACKONWHITE
#define STRETCH_ORSCANS WHITEONBLACK
#define STRETCH_DELETESCANS COLORONCOLOR
#define STRETCH_HALFTONE HALFTONE
#define BILINEAR 4

#define CLR_INVALID 0xFFFFFFFF
#define GDI_ERROR 0xFFFFFFFFL
#define HGDI_ERROR ((HANDLE)(LONG_PTR)-1)

// Stock objects.
#define WHITE_BRUSH 0
#define LTGRAY_BRUSH 1
#define GRAY_BRUSH 2
#define DKGRAY_BRUSH 3
#define BLACK_BRUSH 4
#define NULL_BRUSH 5
#define HOLLOW_BRUSH NULL_BRUSH
#define WHITE_PEN 6
#define BLACK_PEN 7
#define NULL_PEN 8
#define OEM_FIXED_FONT 10
#define ANSI_FIXED_FONT 11
#define ANSI_VAR_FONT 12
#define SYSTEM_FONT 13
#define DEVICE_DEFAULT_FONT 14
#define DEFAULT_PALETTE 15
#define SYSTEM_FIXED_FONT 16
#define DEFAULT_GUI_FONT 17
#define DC_BRUSH 18
#define DC_PEN 19
#define STOCK_LAST 19

// Object types (GetObjectType).
#define OBJ_PEN 1
#define OBJ_BRUSH 2
#define OBJ_DC 3
#define OBJ_METADC 4
#define OBJ_PAL 5
#define OBJ_FONT 6
#define OBJ_BITMAP 7
#define OBJ_REGION 8
#define OBJ_MEMDC 10

// Pens.
#define PS_SOLID 0
#define PS_DASH 1
#define PS_DOT 2
#define PS_DASHDOT 3
#define PS_DASHDOTDOT 4
#define PS_NULL 5
#define PS_INSIDEFRAME 6
#define PS_STYLE_MASK 0x0000000F
#define PS_ENDCAP_ROUND 0x00000000
#define PS_JOIN_ROUND 0x00000000
#define PS_COSMETIC 0x00000000
#define PS_GEOMETRIC 0x00010000

// Brushes.
#define BS_SOLID 0
#define BS_NULL 1
#define BS_HOLLOW BS_NULL
#define BS_HATCHED 2
#define BS_PATTERN 3
#define BS_DIBPATTERN 5

// Regions.
#define ERROR 0
#define NULLREGION 1
#define SIMPLEREGION 2
#define COMPLEXREGION 3
#define RGN_ERROR ERROR
#define RGN_AND 1
#define RGN_OR 2
#define RGN_XOR 3
#define RGN_DIFF 4
#define RGN_COPY 5
#define RDH_RECTANGLES 1

// Fonts.
#define LF_FACESIZE 32
#define FW_DONTCARE 0
#define FW_THIN 100
#define FW_LIGHT 300
#define FW_NORMAL 400
#define FW_REGULAR 400
#define FW_MEDIUM 500
#define FW_SEMIBOLD 600
#define FW_BOLD 700
#define FW_HEAVY 900
#define ANSI_CHARSET 0
#define DEFAULT_CHARSET 1
#define SYMBOL_CHARSET 2
#define SHIFTJIS_CHARSET 128
#define HANGUL_CHARSET 129
#define GB2312_CHARSET 134
#define CHINESEBIG5_CHARSET 136
#define OUT_DEFAULT_PRECIS 0
#define CLIP_DEFAULT_PRECIS 0
#define DEFAULT_QUALITY 0
#define DRAFT_QUALITY 1
#define PROOF_QUALITY 2
#define NONANTIALIASED_QUALITY 3
#define ANTIALIASED_QUALITY 4
#define CLEARTYPE_QUALITY 5
#define CLEARTYPE_NATURAL_QUALITY 6
#define DEFAULT_PITCH 0
#define FIXED_PITCH 1
#define VARIABLE_PITCH 2
#define FF_DONTCARE 0x00
#define FF_ROMAN 0x10
#define FF_SWISS 0x20
#define FF_MODERN 0x30

// Text output.
#define ETO_OPAQUE 0x0002
#define ETO_CLIPPED 0x0004
#define TA_NOUPDATECP 0
#define TA_UPDATECP 1
#define TA_LEFT 0
#define TA_RIGHT 2
#define TA_CENTER 6
#define TA_TOP 0
#define TA_BOTTOM 8
#define TA_BASELINE 24

// Bitmap headers.
#define BI_RGB 0L
#define BI_RLE8 1L
#define BI_RLE4 2L
#define BI_BITFIELDS 3L
#define DIB_RGB_COLORS 0

typedef struct _RGNDATAHEADER {
    DWORD dwSize;
    DWORD iType;
    DWORD nCount;
    DWORD nRgnSize;
    RECT rcBound;
} RGNDATAHEADER, *PRGNDATAHEADER;
typedef struct _RGNDATA {
    RGNDATAHEADER rdh;
    char Buffer[1];
} RGNDATA, *PRGNDATA, *LPRGNDATA;
typedef struct tagXFORM XFORM;

typedef struct tagBITMAP {
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    LPVOID bmBits;
} BITMAP, *PBITMAP, *LPBITMAP;

typedef struct tagLOGPEN {
    UINT lopnStyle;
    POINT lopnWidth;
    COLORREF lopnColor;
} LOGPEN, *PLOGPEN, *LPLOGPEN;

typedef struct tagLOGBRUSH {
    UINT lbStyle;
    COLORREF lbColor;
    ULONG_PTR lbHatch;
} LOGBRUSH, *PLOGBRUSH, *LPLOGBRUSH;

typedef struct tagLOGFONTW {
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    WCHAR lfFaceName[LF_FACESIZE];
} LOGFONTW, *PLOGFONTW, *LPLOGFONTW;
typedef LOGFONTW LOGFONT;

typedef struct tagTEXTMETRICW {
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;
    LONG tmExternalLeading;
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    WCHAR tmFirstChar;
    WCHAR tmLastChar;
    WCHAR tmDefaultChar;
    WCHAR tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
} TEXTMETRICW, *PTEXTMETRICW, *LPTEXTMETRICW;
typedef TEXTMETRICW TEXTMETRIC;

#pragma pack(push, 2)
typedef struct tagBITMAPFILEHEADER {
    WORD bfType;
    DWORD bfSize;
    WORD bfReserved1;
    WORD bfReserved2;
    DWORD bfOffBits;
} BITMAPFILEHEADER;
#pragma pack(pop)

typedef struct tagBITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    LONG biHeight;
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
} BITMAPINFOHEADER, *PBITMAPINFOHEADER, *LPBITMAPINFOHEADER;

typedef struct tagRGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
} RGBQUAD;

#ifdef __cplusplus
extern "C" {
#endif

// Objects.
ZEL_API HGDIOBJ GetStockObject(int object);
ZEL_API BOOL DeleteObject(HGDIOBJ object);
ZEL_API int GetObjectW(HANDLE object, int size, LPVOID buffer);
ZEL_API DWORD GetObjectType(HGDIOBJ object);
ZEL_API HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);
ZEL_API HGDIOBJ GetCurrentObject(HDC dc, UINT type);

// Device contexts.
ZEL_API HDC CreateCompatibleDC(HDC dc);
ZEL_API BOOL DeleteDC(HDC dc);
ZEL_API int SaveDC(HDC dc);
ZEL_API BOOL RestoreDC(HDC dc, int saved);
ZEL_API int SetBkMode(HDC dc, int mode);
ZEL_API int GetBkMode(HDC dc);
ZEL_API COLORREF SetBkColor(HDC dc, COLORREF color);
ZEL_API COLORREF GetBkColor(HDC dc);
ZEL_API COLORREF SetTextColor(HDC dc, COLORREF color);
ZEL_API COLORREF GetTextColor(HDC dc);
ZEL_API int SetStretchBltMode(HDC dc, int mode);
ZEL_API int GetStretchBltMode(HDC dc);
ZEL_API int SetROP2(HDC dc, int rop2);
ZEL_API int GetROP2(HDC dc);
ZEL_API BOOL SetBrushOrgEx(HDC dc, int x, int y, LPPOINT old);
ZEL_API BOOL GetBrushOrgEx(HDC dc, LPPOINT org);
ZEL_API UINT SetTextAlign(HDC dc, UINT align);
ZEL_API UINT GetTextAlign(HDC dc);
ZEL_API int SelectClipRgn(HDC dc, HRGN rgn);
ZEL_API int ExtSelectClipRgn(HDC dc, HRGN rgn, int mode);
ZEL_API int IntersectClipRect(HDC dc, int left, int top, int right, int bottom);
ZEL_API int ExcludeClipRect(HDC dc, int left, int top, int right, int bottom);
ZEL_API int GetClipBox(HDC dc, LPRECT rect);
ZEL_API BOOL RectVisible(HDC dc, const RECT* rect);
ZEL_API int GetClipRgn(HDC dc, HRGN rgn);
ZEL_API int GetDeviceCaps(HDC dc, int index);
#ifndef LOGPIXELSY
#define LOGPIXELSX 88
#define LOGPIXELSY 90
#endif

// Bitmaps.
ZEL_API HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits);
ZEL_API HBITMAP CreateBitmapIndirect(const BITMAP* bm);
ZEL_API HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height);
ZEL_API LONG GetBitmapBits(HBITMAP bitmap, LONG size, LPVOID bits);
ZEL_API LONG SetBitmapBits(HBITMAP bitmap, DWORD size, const void* bits);

// Raster operations.
ZEL_API BOOL BitBlt(HDC dst, int x, int y, int cx, int cy, HDC src, int x1, int y1, DWORD rop);
ZEL_API BOOL StretchBlt(HDC dst, int xDst, int yDst, int wDst, int hDst, HDC src, int xSrc, int ySrc,
                        int wSrc, int hSrc, DWORD rop);
ZEL_API BOOL PatBlt(HDC dc, int x, int y, int w, int h, DWORD rop);
ZEL_API COLORREF SetPixel(HDC dc, int x, int y, COLORREF color);
ZEL_API BOOL SetPixelV(HDC dc, int x, int y, COLORREF color);
ZEL_API COLORREF GetPixel(HDC dc, int x, int y);

// Pens and brushes.
ZEL_API HPEN CreatePen(int style, int width, COLORREF color);
ZEL_API HPEN CreatePenIndirect(const LOGPEN* pen);
ZEL_API HBRUSH CreateSolidBrush(COLORREF color);
ZEL_API HBRUSH CreatePatternBrush(HBITMAP bitmap);
ZEL_API HBRUSH CreateBrushIndirect(const LOGBRUSH* brush);

// Shapes and lines.
ZEL_API BOOL Rectangle(HDC dc, int left, int top, int right, int bottom);
ZEL_API BOOL RoundRect(HDC dc, int left, int top, int right, int bottom, int width, int height);
ZEL_API BOOL Ellipse(HDC dc, int left, int top, int right, int bottom);
ZEL_API BOOL MoveToEx(HDC dc, int x, int y, LPPOINT old);
ZEL_API BOOL LineTo(HDC dc, int x, int y);
ZEL_API BOOL Polyline(HDC dc, const POINT* points, int count);
ZEL_API BOOL GetCurrentPositionEx(HDC dc, LPPOINT pos);

// Regions.
ZEL_API HRGN CreateRectRgn(int left, int top, int right, int bottom);
ZEL_API HRGN CreateRectRgnIndirect(const RECT* rect);
ZEL_API int CombineRgn(HRGN dst, HRGN src1, HRGN src2, int mode);
ZEL_API HRGN ExtCreateRegion(const XFORM* xform, DWORD count, const RGNDATA* data);
ZEL_API BOOL EqualRgn(HRGN a, HRGN b);
ZEL_API BOOL PtInRegion(HRGN rgn, int x, int y);
ZEL_API BOOL RectInRegion(HRGN rgn, const RECT* rect);
ZEL_API int GetRgnBox(HRGN rgn, LPRECT rect);
ZEL_API int OffsetRgn(HRGN rgn, int x, int y);
ZEL_API BOOL SetRectRgn(HRGN rgn, int left, int top, int right, int bottom);
ZEL_API BOOL FillRgn(HDC dc, HRGN rgn, HBRUSH brush);
ZEL_API BOOL PaintRgn(HDC dc, HRGN rgn);

// Fonts and text.
ZEL_API HFONT CreateFontIndirectW(const LOGFONTW* lf);
ZEL_API HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                          DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision,
                          DWORD clipPrecision, DWORD quality, DWORD pitchAndFamily, LPCWSTR face);
ZEL_API BOOL GetTextMetricsW(HDC dc, LPTEXTMETRICW tm);
ZEL_API BOOL GetTextExtentPoint32W(HDC dc, LPCWSTR text, int count, LPSIZE size);
ZEL_API BOOL GetTextExtentExPointW(HDC dc, LPCWSTR text, int count, int maxExtent, LPINT fit, LPINT dx,
                                   LPSIZE size);
ZEL_API BOOL TextOutW(HDC dc, int x, int y, LPCWSTR text, int count);
ZEL_API BOOL ExtTextOutW(HDC dc, int x, int y, UINT options, const RECT* rect, LPCWSTR text, UINT count,
                         const INT* dx);
ZEL_API int GetTextFaceW(HDC dc, int count, LPWSTR face);

#ifdef __cplusplus
}
#endif

#define GetObject GetObjectW
#define CreateFontIndirect CreateFontIndirectW
#define CreateFont CreateFontW
#define GetTextMetrics GetTextMetricsW
#define GetTextExtentPoint32 GetTextExtentPoint32W
#define GetTextExtentExPoint GetTextExtentExPointW
#define TextOut TextOutW
#define ExtTextOut ExtTextOutW
#define GetTextFace GetTextFaceW
