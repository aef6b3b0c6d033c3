// Draws a small scene with the platform's GDI. Replaced by the demo host.
#include <windows.h>

#include <cstdio>

int main() {
    HDC screen = GetDC(NULL);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, 320, 200);
    ReleaseDC(NULL, screen);
    HGDIOBJ old = SelectObject(dc, bmp);
    SelectObject(dc, old);
    DeleteObject(bmp);
    DeleteDC(dc);
    std::puts("scene: nothing to draw yet");
    return 0;
}
