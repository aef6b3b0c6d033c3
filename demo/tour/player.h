// Plays a parsed tour on whatever shows the screens: the host's desktop, or a recorder in
// tests.
#pragma once

#include <windows.h>

#include <string>

#include "tour/tour.h"

namespace zel::demo {

class TourTarget {
public:
    virtual ~TourTarget() = default;
    virtual bool ShowScreen(const std::string& name) = 0;  // false: no such screen
    virtual void PointerDown(int x, int y) = 0;
    virtual void PointerMove(int x, int y) = 0;
    virtual void PointerUp(int x, int y) = 0;
    virtual void KeyDown(UINT vk) = 0;
    virtual void KeyUp(UINT vk) = 0;
    virtual void Advance(DWORD ms) = 0;
    // Writes the screen as it is now; false when it could not.
    virtual bool Shot(const std::string& screen, const std::string& shot) = 0;
};

// Runs the steps in order; stops at the first one the target refuses, with
// "file:line: message" in *error.
bool PlayTour(const Tour& tour, TourTarget& target, std::string* error);

// The point `step` of `steps` along a drag from (x1, y1) to (x2, y2), rounded to the
// nearest pixel; step == steps is exactly the end.
POINT DragPoint(int x1, int y1, int x2, int y2, int step, int steps);

}  // namespace zel::demo
