// SetPixel / GetPixel.
#include "gdi/stroke.h"

using namespace zel::gdi;

extern "C" {

// Returns the colour actually stored (black or white on a monochrome surface). A clipped
// point still reports the colour: Win32 display drivers behave so.
COLORREF SetPixel(HDC hdc, int x, int y, COLORREF color) {
    DC* dc = LookupDC(hdc);
    if (!dc) return CLR_INVALID;
    PixelBuffer* t = dc->Target();
    if (!t) return CLR_INVALID;
    uint32_t p = ColorToPixel(*t, ResolveColor(color));
    int dx = dc->DevX(x), dy = dc->DevY(y);
    if (dc->PointVisible(dx, dy)) t->row(dy)[dx] = p;
    return PixelToColor(*t, p);
}

BOOL SetPixelV(HDC hdc, int x, int y, COLORREF color) { return SetPixel(hdc, x, y, color) != CLR_INVALID; }

// Outside the surface or the clip region: CLR_INVALID. Only RGB is reported.
COLORREF GetPixel(HDC hdc, int x, int y) {
    DC* dc = LookupDC(hdc);
    if (!dc) return CLR_INVALID;
    const PixelBuffer* t = dc->Source();
    int dx = dc->DevX(x), dy = dc->DevY(y);
    if (!t || !dc->PointVisible(dx, dy)) return CLR_INVALID;
    return PixelToColor(*t, t->row(dy)[dx] & t->mask());
}

}  // extern "C"
