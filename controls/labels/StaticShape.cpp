#include "StaticShape.h"

#include <vector>

#include "SkinPixels.h"

namespace zelctl {

void AddFigureSpans(HDC dc, int width, int height, HRGN region) {
    const SkinPixels pixels(dc);
    const COLORREF key = pixels.At(0, 0);
    auto figure = [&](int x, int y) { return KeyDifference(pixels.At(x, y), key) > kFigureThreshold; };
    std::vector<RECT> spans;
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
        spans.push_back(RECT{left, y, right, y + 1});
    }
    if (spans.empty()) return;
    // All rows join the shape in one region operation.
    if (HRGN rows = RegionFromSpans(spans)) {
        ::CombineRgn(region, region, rows, RGN_OR);
        ::DeleteObject(rows);
    }
}

}  // namespace zelctl
