// Golden images: painted pixels compared with PNGs under tests/golden/<class>/<state>.png.
//
// A missing golden fails. ZEL_UPDATE_GOLDENS=1 writes the goldens instead (an explicit
// act: look at them before committing). A mismatch writes <state>_actual.png and
// <state>_diff.png under the build's test output directory and names the first pixel
// that differs.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace zel::test {

struct Image {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> pixels;  // rows top to bottom

    COLORREF At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// The composed screen over `screenRect` (Desktop::Pixel).
Image CaptureScreen(const RECT& screenRect);

// The window's rectangle on the screen, widened by `margin` pixels on every side (a fence
// of what lies around it).
Image CaptureWindow(HWND hwnd, int margin = 1);

bool WritePng(const Image& image, const std::string& path);
std::optional<Image> ReadPng(const std::string& path);

::testing::AssertionResult MatchesGolden(const std::string& cls, const std::string& state, const Image& actual);

// The composed screen inside `screenRect`, or a window's own on-screen rectangle, against
// the golden.
inline ::testing::AssertionResult ScreenMatchesGolden(const std::string& cls, const std::string& state,
                                                      const RECT& screenRect) {
    return MatchesGolden(cls, state, CaptureScreen(screenRect));
}
inline ::testing::AssertionResult WindowMatchesGolden(const std::string& cls, const std::string& state, HWND hwnd) {
    return MatchesGolden(cls, state, CaptureWindow(hwnd, 0));
}

}  // namespace zel::test

// EXPECT_GOLDEN("CZELButton", "normal", image)
#define EXPECT_GOLDEN(cls, state, image) EXPECT_TRUE(::zel::test::MatchesGolden(cls, state, image))
