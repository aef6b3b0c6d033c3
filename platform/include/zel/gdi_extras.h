// Extensions to GDI that hosts and tests use: live object counts and image writing.
#pragma once

#include <windows.h>

namespace zel {

// Objects created and not yet deleted (stock objects are not counted).
struct ZEL_API GdiCounts {
    int dcs = 0, bitmaps = 0, brushes = 0, pens = 0, fonts = 0, regions = 0;
    int total() const { return dcs + bitmaps + brushes + pens + fonts + regions; }
};
ZEL_API GdiCounts LiveGdiObjects();

// Writes a bitmap as .png or .bmp (chosen by the extension). FALSE on failure.
ZEL_API bool SaveBitmap(HBITMAP bitmap, const char* path);

// In one pass, what the classic transparent blit gives with a monochrome mask (source ==
// key -> 1, then SRCAND of the mask and SRCPAINT of the masked source onto the
// destination): over (x, y, w, h) of `dst`, inside its clip, each source pixel of (sx, sy)
// that is not exactly `key` replaces the destination pixel, and every pixel of the
// rectangle, replaced or kept, has its top byte cleared. Only for colour surfaces, two
// different ones, with the source rectangle inside the source: false (nothing drawn)
// otherwise, and the caller falls back to the mask.
ZEL_API bool KeyBlt(HDC dst, int x, int y, int w, int h, HDC src, int sx, int sy, COLORREF key);

}  // namespace zel
