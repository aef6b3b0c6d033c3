// The caption fonts of the buttons and check boxes: one description, only the height and
// the weight vary.
#pragma once

#include <windows.h>

namespace zelctl {

// "Tahoma" at `height` (cell height, as LOGFONTW's positive heights), DEFAULT_CHARSET,
// every other field 0.
HFONT CreateTahomaFont(int height, LONG weight);

// Deletes a font handle and clears it. (Not DeleteFont: windowsx.h has a macro of that name.)
void ReleaseFont(HFONT& font);

}  // namespace zelctl
