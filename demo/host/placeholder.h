// Plain child windows standing in for controls, as a dialog template creates them before
// the dialog subclasses each with its control object (control.SubclassWindow(hwnd)).
#pragma once

#include <windows.h>

namespace zel::demo {

// The placeholder class (the default window procedure, double clicks on), registered on
// first use; dialog templates name it for their items. NULL when it cannot be registered.
LPCWSTR PlaceholderClass();

// A visible child of the placeholder class with identifier id and window text; NULL when
// it cannot be made.
HWND CreatePlaceholder(HWND parent, int id, const RECT& rect, LPCWSTR text = L"");

}  // namespace zel::demo
