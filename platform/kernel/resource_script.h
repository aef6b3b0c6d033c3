// The Windows resource script (.rc) reader behind resource modules.
//
// It keeps what the loaders need - BITMAP statements and DIALOG/DIALOGEX templates by
// numeric identifier (low 16 bits) or by upper-cased name, STRINGTABLE strings by
// identifier - and understands enough of the rest to skip it: the
// preprocessor (#include, #define, #undef, #if/#ifdef/#ifndef/#elif/#else/#endif with
// integer expressions and defined()), comments, LANGUAGE lines and every
// statement that has a BEGIN/END (or {}) block or a file name. Included .h and .c files
// contribute only their directives, as with the resource compiler.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zel::detail {

// A control statement, with the default styles of its kind already applied. Sizes are in
// dialog units.
struct DialogItem {
    std::wstring className;  // "Button", "Static", ... or the CONTROL statement's class
    std::wstring text;
    unsigned textId = 0;     // a control text given as a number (an icon or bitmap name)
    bool textIsId = false;
    int id = 0;
    uint32_t style = 0, exStyle = 0, helpId = 0;
    int x = 0, y = 0, cx = 0, cy = 0;
};

struct DialogTemplate {
    bool extended = false;   // DIALOGEX
    uint32_t style = 0, exStyle = 0, helpId = 0;
    int x = 0, y = 0, cx = 0, cy = 0;
    std::wstring caption, className, menu;
    bool hasFont = false;    // DS_SETFONT is in style then
    int pointSize = 0, weight = 0, italic = 0, charset = 1;
    std::wstring typeface;
    std::vector<DialogItem> items;
};

struct ResourceScript {
    // Resolved file paths (UTF-8, '/' separators, relative paths joined to the script's
    // directory).
    std::map<unsigned, std::string> bitmapsById;
    std::map<std::wstring, std::string> bitmapsByName;
    std::map<unsigned, DialogTemplate> dialogsById;
    std::map<std::wstring, DialogTemplate> dialogsByName;
    std::map<unsigned, std::wstring> strings;  // STRINGTABLE, by 16-bit identifier
};

// Reads a whole file; nullopt if it cannot be opened or is unreasonably large.
using FileReader = std::function<std::optional<std::string>(const std::string& path)>;

// Parses the script at path. On failure returns nullopt and sets *error to one line of
// the form "file:line: what went wrong".
std::optional<ResourceScript> ParseResourceScript(const std::string& path, std::string* error,
                                                  const FileReader& reader = {});

}  // namespace zel::detail
