// An outside program built against the installed packages: Win32 GDI from <windows.h>,
// a control from <zelctl.h>, run on the desktop.
#include <afxwin.h>
#include <zel/desktop.h>
#include <zel/platform.h>
#include <zelctl.h>

#include <cstdio>

int main() {
    zel::Desktop::Get().Reset();
    HDC screen = GetDC(NULL);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, 4, 4);
    ReleaseDC(NULL, screen);
    HGDIOBJ old = SelectObject(dc, bmp);
    PatBlt(dc, 0, 0, 4, 4, WHITENESS);
    BitBlt(dc, 1, 1, 2, 2, NULL, 0, 0, DSTINVERT);
    COLORREF inner = GetPixel(dc, 1, 1), outer = GetPixel(dc, 0, 0);
    SelectObject(dc, old);
    DeleteObject(bmp);
    DeleteDC(dc);

    HWND host = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, NULL, NULL, NULL, NULL);
    CZELButton button;
    BOOL created = button.Create(L"", BS_OWNERDRAW | WS_VISIBLE, CRect(10, 10, 88, 86), CWnd::FromHandle(host), 7, false);
    button.DestroyWindow();
    DestroyWindow(host);

    bool ok = inner == RGB(0, 0, 0) && outer == RGB(255, 255, 255) && created && zel::LiveGdiObjects().total() == 0;
    std::printf("consumer: %s\n", ok ? "ok" : "FAILED");
    return ok ? 0 : 1;
}
