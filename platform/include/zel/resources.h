// Resource modules: a Windows resource script (.rc with BITMAP lines and the #defines of
// its resource header) loaded as an HINSTANCE that LoadBitmapW reads from.
#pragma once

#include <windows.h>

namespace zel {

ZEL_API HINSTANCE LoadResourceModule(const char* rcPath);  // NULL on failure, reason on stderr
ZEL_API void FreeResourceModule(HINSTANCE module);

}  // namespace zel
