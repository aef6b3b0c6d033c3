// The Windows resource script (.rc) reader behind resource modules.
//
// It keeps what LoadBitmapW needs - BITMAP statements, by numeric identifier (low 16
// bits) or by upper-cased name - and understands enough of the rest to skip it: the
// preprocessor (#include, #define, #undef, #if/#ifdef/#ifndef/#elif/#else/#endif with
// integer expressions and defined()), comments, LANGUAGE lines, STRINGTABLE and every
// statement that has a BEGIN/END (or {}) block or a file name. Included .h and .c files
// contribute only their directives, as with the resource compiler.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace zel::detail {

struct ResourceScript {
    // Resolved file paths (UTF-8, '/' separators, relative paths joined to the script's
    // directory).
    std::map<unsigned, std::string> bitmapsById;
    std::map<std::wstring, std::string> bitmapsByName;
};

// Reads a whole file; nullopt if it cannot be opened or is unreasonably large.
using FileReader = std::function<std::optional<std::string>(const std::string& path)>;

// Parses the script at path. On failure returns nullopt and sets *error to one line of
// the form "file:line: what went wrong".
std::optional<ResourceScript> ParseResourceScript(const std::string& path, std::string* error,
                                                  const FileReader& reader = {});

}  // namespace zel::detail
