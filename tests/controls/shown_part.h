// A control partly hidden past its parent's left or top edge paints what shows of it, and
// what shows must be what a paint of the whole control shows there: the check the control
// tests share for their paint of the visible part.
#pragma once

#include <afxwin.h>
#include <gtest/gtest.h>
#include <zel/desktop.h>

#include <algorithm>
#include <vector>

#include "support/control_test.h"

namespace zel::test {

// The screen pixels of `hwnd`'s client rectangle `client`, row by row.
inline std::vector<COLORREF> ShownPixels(HWND hwnd, const CRect& client) {
    std::vector<COLORREF> pixels;
    for (int y = client.top; y < client.bottom; ++y)
        for (int x = client.left; x < client.right; ++x) {
            POINT pt{x, y};
            ::ClientToScreen(hwnd, &pt);
            pixels.push_back(zel::Desktop::Get().Pixel(pt.x, pt.y));
        }
    return pixels;
}

// Paints `ctl` at `place` (its parent's client coordinates, where it shows whole), then
// moved by (dx, dy) past the parent's left or top edge, and compares the client pixels that
// show at both places. `ink` must be among them, so that the comparison reaches what matters.
inline ::testing::AssertionResult ShowsAsWhole(CWnd& ctl, const CRect& place, int dx, int dy, COLORREF ink) {
    const CRect both(std::max(0, -(place.left + dx)), std::max(0, -(place.top + dy)), place.Width(), place.Height());
    auto paintAt = [&](int x, int y) {
        ctl.MoveWindow(x, y, place.Width(), place.Height());
        zel::Desktop::Get().RunUntilIdle();
        return ShownPixels(ctl.m_hWnd, both);
    };
    const std::vector<COLORREF> whole = paintAt(place.left, place.top);
    if (std::find(whole.begin(), whole.end(), ink) == whole.end())
        return ::testing::AssertionFailure() << Hex(ink) << " is not among the compared pixels";
    const std::vector<COLORREF> part = paintAt(place.left + dx, place.top + dy);
    const auto differ = std::mismatch(whole.begin(), whole.end(), part.begin());
    if (differ.first == whole.end()) return ::testing::AssertionSuccess();
    const int i = static_cast<int>(differ.first - whole.begin());
    return ::testing::AssertionFailure() << "moved by " << dx << "," << dy << ": first differing pixel ("
                                         << both.left + i % both.Width() << "," << both.top + i / both.Width()
                                         << "): " << Hex(*differ.first) << " whole, " << Hex(*differ.second)
                                         << " partly hidden";
}

}  // namespace zel::test
