#include "StaticShape.h"

namespace zelctl {

void AddFigureSpans(HDC dc, int width, int height, HRGN region) {
    const COLORREF key = ::GetPixel(dc, 0, 0);
    auto figure = [&](int x, int y) { return KeyDifference(::GetPixel(dc, x, y), key) > kFigureThreshold; };
    for (int y = 0; y < height; ++y) {
        int left = 0;
        while (left < width && !figure(left, y)) ++left;
        if (left == width) continue;
        int right = left + 1;
        for (int x = width - 1; x > left; --x) {
            if (figure(x, y)) {
                right = x + 1;
                break;
            }
        }
        HRGN span = ::CreateRectRgn(left, y, right, y + 1);
        ::CombineRgn(region, region, span, RGN_OR);
        ::DeleteObject(span);
    }
}

}  // namespace zelctl
