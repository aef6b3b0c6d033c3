// Writes a 32-bpp surface as an 8-bit RGB PNG.
#pragma once

#include "gdi/surface.h"

namespace zel::display {

bool WritePng(const gdi::PixelBuffer& surface, const char* path);

}  // namespace zel::display
