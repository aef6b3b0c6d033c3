// Reading a skin's pixels and turning rows of them into a window shape, without a call per
// pixel or a region operation per row.
#pragma once

#include <windows.h>

#include <vector>

namespace zelctl {

// The colours of the bitmap selected into a memory DC, as GetPixel on that DC reports them
// (CLR_INVALID outside it), read with one GetBitmapBits (1- and 32-bit bitmaps; others are
// read through GetPixel).
class SkinPixels {
public:
    explicit SkinPixels(HDC memDC);
    COLORREF At(int x, int y) const;

private:
    HDC dc_;
    BITMAP bm_{};
    std::vector<unsigned char> bits_;
};

// One region made of the given spans (any order, may touch), in one ExtCreateRegion.
// nullptr when it cannot be made; the caller deletes it.
HRGN RegionFromSpans(const std::vector<RECT>& spans);

}  // namespace zelctl
