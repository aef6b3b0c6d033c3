// Resource modules behind HINSTANCE: the application's own module and the scripts loaded
// with zel::LoadResourceModule.
#pragma once

#include <windows.h>

namespace zel::detail {

// The application's module: created on first use, never freed.
HINSTANCE ApplicationModule();

}  // namespace zel::detail
