// Shell helpers of the device: image loading by path.
#pragma once

#include "zel/win/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// Loads a .bmp (1/4/8/16/24/32 bpp, RLE4/RLE8, BITFIELDS, top-down) or .png file into a
// new 32-bpp bitmap the caller deletes. NULL on any failure, with one line on stderr.
ZEL_API HBITMAP SHLoadDIBitmap(LPCWSTR path);

#ifdef __cplusplus
}
#endif
