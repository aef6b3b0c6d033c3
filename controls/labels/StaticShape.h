// The shaped static's rule for which pixels of a picture are figure, as a free function so
// that it can be checked on its own.
#pragma once

#include <windows.h>

namespace zelctl {

// The difference the shaped static measures: the two colours as whole 0x00BBGGRR numbers,
// subtracted. A pixel is figure when this is above 120.
inline long long KeyDifference(COLORREF pixel, COLORREF key) {
    const long long d = static_cast<long long>(pixel) - static_cast<long long>(key);
    return d < 0 ? -d : d;
}
constexpr long long kFigureThreshold = 120;

// For every row of the width x height picture selected into `dc`: the span from the
// leftmost to the rightmost figure pixel (a lone figure pixel is one pixel wide), ORed into
// `region`. The key is the pixel at (0, 0).
void AddFigureSpans(HDC dc, int width, int height, HRGN region);

}  // namespace zelctl
