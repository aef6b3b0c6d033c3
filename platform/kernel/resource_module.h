// Resource modules behind HINSTANCE: the application's own module and the scripts loaded
// with zel::LoadResourceModule.
#pragma once

#include <windows.h>

namespace zel::detail {

// The application's module: created on first use, never freed.
HINSTANCE ApplicationModule();

// The memory form of a module's dialog template, or nullptr with the last error set. The
// template lives as long as the module.
const void* FindDialogTemplate(HINSTANCE instance, LPCWSTR name);

}  // namespace zel::detail
