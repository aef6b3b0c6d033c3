// Draws part of a bitmap with one key colour left transparent.
#pragma once

#include <windows.h>

namespace zelctl {

// Copies (sx, sy, sw, sh) of `src` into (x, y, w, h) of `dst`, stretching when the sizes
// differ, leaving pixels of colour `key` transparent. Done with a mono mask and
// SRCAND/SRCPAINT, so the destination's text colour is black and its background white
// afterwards.
void TransparentBlit(HDC dst, int x, int y, int w, int h, HDC src, int sx, int sy, int sw, int sh, COLORREF key);

}  // namespace zelctl
