// Virtual-key names as a tour writes them (VK_RETURN) and as the host logs them.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace zel::demo {

// "VK_DOWN" -> 0x28; names are case-sensitive, as in the headers. Letters and digits have
// no VK_ names in Win32: write them as numbers ("key 0x41" is A).
std::optional<UINT> VirtualKeyFromName(std::string_view name);

// 0x28 -> "VK_DOWN"; a key without a name is written in hex ("0x41").
std::string VirtualKeyName(UINT vk);

}  // namespace zel::demo
