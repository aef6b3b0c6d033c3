// GetDC / ReleaseDC. GetDC(NULL) draws on the whole screen.
#include "gdi/dc.h"

using namespace zel::gdi;

extern "C" {

HDC GetDC(HWND hwnd) {
    if (hwnd) return nullptr;  // window DCs arrive with the window manager
    return HandleOf<HDC>(NewScreenDC(&Screen(), POINT{0, 0}));
}

HDC GetWindowDC(HWND hwnd) { return GetDC(hwnd); }

int ReleaseDC(HWND hwnd, HDC hdc) {
    DC* dc = LookupDC(hdc);
    if (!dc || dc->kind != DC::kScreen) return 0;
    return DeleteDC(hdc);
}

}  // extern "C"
