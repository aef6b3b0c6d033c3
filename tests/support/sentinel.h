// The one colour that stands for "nothing was drawn here": the recording parent paints its
// client area with it, and pixel tests fence their targets with it. Compare a pixel outside
// a control with kSentinel to prove the control drew nothing there.
#pragma once

#include <windows.h>

namespace zel::test {

inline constexpr COLORREF kSentinel = RGB(0xAA, 0xAA, 0xAA);

}  // namespace zel::test
