// What the desktop and the viewer share: the message loop's quit state and the viewer.
#pragma once

#include "zel/desktop.h"

namespace zel::display {

// A WM_QUIT was retrieved by the desktop's loop since the last call; its exit code.
bool TakeQuit(int* exitCode);

// The SDL2 viewer loop. False when no display can be opened (the caller goes headless).
bool RunViewer(Desktop& desktop, int* exitCode);

}  // namespace zel::display
