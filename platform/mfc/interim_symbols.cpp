// Weak placeholders for USER, GDI and image functions that other parts of the platform
// provide; they keep the framework linkable until those parts are merged, and are
// removed then. Each fails as for a NULL handle.
#include <windows.h>

#include "zel/desktop.h"
#include "zel/hooks.h"

extern "C" {

__attribute__((weak)) HDC BeginPaint(HWND hwnd, LPPAINTSTRUCT ps) { return {}; }
__attribute__((weak)) BOOL BitBlt(HDC dst, int x, int y, int cx, int cy, HDC src, int x1, int y1, DWORD rop) { return {}; }
__attribute__((weak)) LRESULT CallWindowProcW(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) { return {}; }
__attribute__((weak)) BOOL ClientToScreen(HWND hwnd, LPPOINT pt) { return {}; }
__attribute__((weak)) HFONT CreateFontIndirectW(const LOGFONTW* lf) { return {}; }
__attribute__((weak)) HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality, DWORD pitchAndFamily, LPCWSTR face) { return {}; }
__attribute__((weak)) HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, int x, int y, int width, int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID param) { return {}; }
__attribute__((weak)) LRESULT DefWindowProcW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) { return {}; }
__attribute__((weak)) BOOL DestroyWindow(HWND hwnd) { return {}; }
__attribute__((weak)) BOOL DrawFocusRect(HDC dc, const RECT* rect) { return {}; }
__attribute__((weak)) int DrawTextW(HDC dc, LPCWSTR text, int count, LPRECT rect, UINT format) { return {}; }
__attribute__((weak)) BOOL Ellipse(HDC dc, int left, int top, int right, int bottom) { return {}; }
__attribute__((weak)) BOOL EnableWindow(HWND hwnd, BOOL enable) { return {}; }
__attribute__((weak)) BOOL EndPaint(HWND hwnd, const PAINTSTRUCT* ps) { return {}; }
__attribute__((weak)) BOOL ExtTextOutW(HDC dc, int x, int y, UINT options, const RECT* rect, LPCWSTR text, UINT count, const INT* dx) { return {}; }
__attribute__((weak)) int FrameRect(HDC dc, const RECT* rect, HBRUSH brush) { return {}; }
__attribute__((weak)) HWND GetCapture(void) { return {}; }
__attribute__((weak)) BOOL GetClassInfoW(HINSTANCE instance, LPCWSTR className, LPWNDCLASSW wc) { return {}; }
__attribute__((weak)) BOOL GetClientRect(HWND hwnd, LPRECT rect) { return {}; }
__attribute__((weak)) int GetDlgCtrlID(HWND hwnd) { return {}; }
__attribute__((weak)) HWND GetDlgItem(HWND dialog, int id) { return {}; }
__attribute__((weak)) HWND GetFocus(void) { return {}; }
__attribute__((weak)) void GetLocalTime(LPSYSTEMTIME time) {}
__attribute__((weak)) DWORD GetMessagePos(void) { return {}; }
__attribute__((weak)) LONG GetMessageTime(void) { return {}; }
__attribute__((weak)) HWND GetParent(HWND hwnd) { return {}; }
__attribute__((weak)) DWORD GetSysColor(int index) { return {}; }
__attribute__((weak)) BOOL GetTextExtentPoint32W(HDC dc, LPCWSTR text, int count, LPSIZE size) { return {}; }
__attribute__((weak)) int GetTextFaceW(HDC dc, int count, LPWSTR face) { return {}; }
__attribute__((weak)) BOOL GetTextMetricsW(HDC dc, LPTEXTMETRICW tm) { return {}; }
__attribute__((weak)) BOOL GetUpdateRect(HWND hwnd, LPRECT rect, BOOL erase) { return {}; }
__attribute__((weak)) HWND GetWindow(HWND hwnd, UINT cmd) { return {}; }
__attribute__((weak)) LONG GetWindowLongW(HWND hwnd, int index) { return {}; }
__attribute__((weak)) BOOL GetWindowRect(HWND hwnd, LPRECT rect) { return {}; }
__attribute__((weak)) int GetWindowRgn(HWND hwnd, HRGN rgn) { return {}; }
__attribute__((weak)) int GetWindowTextLengthW(HWND hwnd) { return {}; }
__attribute__((weak)) int GetWindowTextW(HWND hwnd, LPWSTR text, int max) { return {}; }
__attribute__((weak)) BOOL InvalidateRect(HWND hwnd, const RECT* rect, BOOL erase) { return {}; }
__attribute__((weak)) BOOL InvalidateRgn(HWND hwnd, HRGN rgn, BOOL erase) { return {}; }
__attribute__((weak)) BOOL InvertRect(HDC dc, const RECT* rect) { return {}; }
__attribute__((weak)) BOOL IsChild(HWND parent, HWND hwnd) { return {}; }
__attribute__((weak)) BOOL IsWindow(HWND hwnd) { return {}; }
__attribute__((weak)) BOOL IsWindowEnabled(HWND hwnd) { return {}; }
__attribute__((weak)) BOOL IsWindowVisible(HWND hwnd) { return {}; }
__attribute__((weak)) BOOL KillTimer(HWND hwnd, UINT_PTR id) { return {}; }
__attribute__((weak)) BOOL LineTo(HDC dc, int x, int y) { return {}; }
__attribute__((weak)) int MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count) { return {}; }
__attribute__((weak)) int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) { return {}; }
__attribute__((weak)) BOOL MoveWindow(HWND hwnd, int x, int y, int width, int height, BOOL repaint) { return {}; }
__attribute__((weak)) void OutputDebugStringW(LPCWSTR text) {}
__attribute__((weak)) BOOL PaintRgn(HDC dc, HRGN rgn) { return {}; }
__attribute__((weak)) BOOL Polyline(HDC dc, const POINT* points, int count) { return {}; }
__attribute__((weak)) BOOL PostMessageW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) { return {}; }
__attribute__((weak)) void PostQuitMessage(int exitCode) {}
__attribute__((weak)) BOOL Rectangle(HDC dc, int left, int top, int right, int bottom) { return {}; }
__attribute__((weak)) BOOL RedrawWindow(HWND hwnd, const RECT* rect, HRGN rgn, UINT flags) { return {}; }
__attribute__((weak)) ATOM RegisterClassW(const WNDCLASSW* wc) { return {}; }
__attribute__((weak)) BOOL RoundRect(HDC dc, int left, int top, int right, int bottom, int width, int height) { return {}; }
__attribute__((weak)) HBITMAP SHLoadDIBitmap(LPCWSTR path) { return {}; }
__attribute__((weak)) BOOL ScreenToClient(HWND hwnd, LPPOINT pt) { return {}; }
__attribute__((weak)) LRESULT SendMessageW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) { return {}; }
__attribute__((weak)) LONG SetBitmapBits(HBITMAP bitmap, DWORD size, const void* bits) { return {}; }
__attribute__((weak)) HWND SetCapture(HWND hwnd) { return {}; }
__attribute__((weak)) HWND SetFocus(HWND hwnd) { return {}; }
__attribute__((weak)) void SetLastError(DWORD error) {}
__attribute__((weak)) HWND SetParent(HWND hwnd, HWND parent) { return {}; }
__attribute__((weak)) UINT_PTR SetTimer(HWND hwnd, UINT_PTR id, UINT elapse, TIMERPROC proc) { return {}; }
__attribute__((weak)) LONG_PTR SetWindowLongPtrW(HWND hwnd, int index, LONG_PTR value) { return {}; }
__attribute__((weak)) LONG SetWindowLongW(HWND hwnd, int index, LONG value) { return {}; }
__attribute__((weak)) BOOL SetWindowPos(HWND hwnd, HWND insertAfter, int x, int y, int cx, int cy, UINT flags) { return {}; }
__attribute__((weak)) int SetWindowRgn(HWND hwnd, HRGN rgn, BOOL redraw) { return {}; }
__attribute__((weak)) BOOL SetWindowTextW(HWND hwnd, LPCWSTR text) { return {}; }
__attribute__((weak)) BOOL ShowWindow(HWND hwnd, int cmd) { return {}; }
__attribute__((weak)) BOOL StretchBlt(HDC dst, int xDst, int yDst, int wDst, int hDst, HDC src, int xSrc, int ySrc, int wSrc, int hSrc, DWORD rop) { return {}; }
__attribute__((weak)) BOOL TextOutW(HDC dc, int x, int y, LPCWSTR text, int count) { return {}; }
__attribute__((weak)) BOOL UpdateWindow(HWND hwnd) { return {}; }
__attribute__((weak)) BOOL ValidateRect(HWND hwnd, const RECT* rect) { return {}; }
__attribute__((weak)) BOOL ValidateRgn(HWND hwnd, HRGN rgn) { return {}; }

}  // extern "C"

namespace zel {
__attribute__((weak)) void SetPreTranslateHook(PreTranslateHook) {}
__attribute__((weak)) void SetCreateWindowHook(CreateWindowHook) {}
__attribute__((weak)) Desktop& Desktop::Get() {
    alignas(Desktop) static unsigned char storage[sizeof(Desktop)];
    return *reinterpret_cast<Desktop*>(storage);
}
__attribute__((weak)) int Desktop::Run() { return 0; }
}  // namespace zel
