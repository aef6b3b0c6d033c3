// The framework headers resource scripts include (afxres.h, winres.h, windows.h, ...):
// the platform supplies them, with the style, control and identifier constants that
// dialog templates use, so that a script written for Windows preprocesses unchanged.
#pragma once

#include <optional>
#include <string>

#include "kernel/resource_script.h"

namespace zel::detail::rc {

// The text of the framework header named by the last component of `path`, or nullopt.
std::optional<std::string> PlatformHeader(const std::string& path);

// A reader that prefers real files and falls back to the platform's headers.
FileReader WithPlatformHeaders(FileReader files);

}  // namespace zel::detail::rc
