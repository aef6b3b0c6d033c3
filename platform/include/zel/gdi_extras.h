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

}  // namespace zel
