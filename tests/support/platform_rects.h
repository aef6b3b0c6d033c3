// Rectangles as "left,top,right,bottom" text, so a test compares a whole rectangle in one
// expectation and a failure prints all four edges.
#pragma once

#include <windows.h>

#include <string>

namespace zel::test {

inline std::string RectText(const RECT& r) {
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom);
}

// The window rectangle of `hwnd` in screen coordinates, as text ("" for a bad handle).
inline std::string WindowRectText(HWND hwnd) {
    RECT r;
    return GetWindowRect(hwnd, &r) ? RectText(r) : std::string();
}

}  // namespace zel::test
