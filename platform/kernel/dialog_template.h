// Dialog templates in their Win32 memory form (DLGTEMPLATE or DLGTEMPLATEEX and their
// items), as resource modules hand them out and CreateDialogIndirectParamW reads them.
#pragma once

#include <cstdint>
#include <vector>

#include "kernel/resource_script.h"

namespace zel::detail {

// The bytes of the memory form: DLGTEMPLATE for a DIALOG statement, DLGTEMPLATEEX for
// DIALOGEX. The storage is 8-byte aligned, as the template's DWORD fields need.
std::vector<uint64_t> EncodeDialogTemplate(const DialogTemplate& dialog);

// Reads a template in either form. Item classes given as ordinals become their names
// ("Button", "Edit", "Static", "ListBox", "ScrollBar", "ComboBox"); another ordinal becomes
// "#n". Like Windows it trusts the caller for the template's extent.
DialogTemplate DecodeDialogTemplate(const void* bytes);

}  // namespace zel::detail
