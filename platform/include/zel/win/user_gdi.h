// The USER functions that only paint or compute rectangles: rectangle helpers,
// FillRect, DrawFocusRect, DrawTextW and window/screen device contexts.
#pragma once

#include "zel/win/types.h"

// DrawTextW formats.
#define DT_TOP 0x00000000
#define DT_LEFT 0x00000000
#define DT_CENTER 0x00000001
#define DT_RIGHT 0x00000002
#define DT_VCENTER 0x00000004
#define DT_BOTTOM 0x00000008
#define DT_WORDBREAK 0x00000010
#define DT_SINGLELINE 0x00000020
#define DT_EXPANDTABS 0x00000040
#define DT_TABSTOP 0x00000080
#define DT_NOCLIP 0x00000100
#define DT_EXTERNALLEADING 0x00000200
#define DT_CALCRECT 0x00000400
#define DT_NOPREFIX 0x00000800
#define DT_INTERNAL 0x00001000
#define DT_EDITCONTROL 0x00002000
#define DT_PATH_ELLIPSIS 0x00004000
#define DT_END_ELLIPSIS 0x00008000
#define DT_MODIFYSTRING 0x00010000
#define DT_RTLREADING 0x00020000
#define DT_WORD_ELLIPSIS 0x00040000
#define DT_NOFULLWIDTHCHARBREAK 0x00080000
#define DT_HIDEPREFIX 0x00100000
#define DT_PREFIXONLY 0x00200000

#ifdef __cplusplus
extern "C" {
#endif

ZEL_API BOOL SetRect(LPRECT rect, int left, int top, int right, int bottom);
ZEL_API BOOL SetRectEmpty(LPRECT rect);
ZEL_API BOOL CopyRect(LPRECT dst, const RECT* src);
ZEL_API BOOL IsRectEmpty(const RECT* rect);
ZEL_API BOOL PtInRect(const RECT* rect, POINT pt);
ZEL_API BOOL OffsetRect(LPRECT rect, int dx, int dy);
ZEL_API BOOL InflateRect(LPRECT rect, int dx, int dy);
ZEL_API BOOL IntersectRect(LPRECT dst, const RECT* a, const RECT* b);
ZEL_API BOOL UnionRect(LPRECT dst, const RECT* a, const RECT* b);
ZEL_API BOOL SubtractRect(LPRECT dst, const RECT* a, const RECT* b);
ZEL_API BOOL EqualRect(const RECT* a, const RECT* b);

ZEL_API int FillRect(HDC dc, const RECT* rect, HBRUSH brush);
ZEL_API int FrameRect(HDC dc, const RECT* rect, HBRUSH brush);
ZEL_API BOOL InvertRect(HDC dc, const RECT* rect);
ZEL_API BOOL DrawFocusRect(HDC dc, const RECT* rect);
ZEL_API int DrawTextW(HDC dc, LPCWSTR text, int count, LPRECT rect, UINT format);

// GetDC(NULL) is the whole screen; GetDC(hwnd) a window's client area.
ZEL_API HDC GetDC(HWND hwnd);
ZEL_API HDC GetWindowDC(HWND hwnd);
ZEL_API int ReleaseDC(HWND hwnd, HDC dc);

#ifdef __cplusplus
}
#endif

#define DrawText DrawTextW
