// Whole-file reads for the loaders (images, resource scripts). Every caller names its own
// size cap, so a hostile or mistaken path (a device, a FIFO, a huge file) is refused
// before any memory is spent on it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace zel::kernel {

// The bytes of the regular file at `path` (UTF-8), at most `maxBytes` long. On failure
// nullopt, and *error (when given) says why in a few words: "cannot open: <errno text>",
// "not a regular file", "file too large", "read error: ...", "file shrank while reading".
std::optional<std::string> ReadWholeFile(const std::string& path, size_t maxBytes, std::string* error = nullptr);

}  // namespace zel::kernel
