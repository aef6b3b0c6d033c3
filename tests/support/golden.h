// Golden images: a control's painted pixels compared with a PNG kept under
// tests/golden/<group>/<name>.png.
//
// A missing golden fails. Setting ZEL_UPDATE_GOLDENS=1 writes the golden from the current
// pixels instead (an explicit act: look at the image before committing it). A mismatch
// writes <group>_<name>_actual.png and <group>_<name>_diff.png (differing pixels red, the
// rest dimmed) into the test output directory and names the first differing pixel.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace zel::test {

// Compares the composed screen inside `screenRect` with the golden.
::testing::AssertionResult ScreenMatchesGolden(const std::string& group, const std::string& name,
                                               const RECT& screenRect);

// Compares a window's on-screen rectangle with the golden.
::testing::AssertionResult WindowMatchesGolden(const std::string& group, const std::string& name, HWND window);

}  // namespace zel::test
