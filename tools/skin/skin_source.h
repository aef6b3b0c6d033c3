// A skin as zel-skin sees it: the bitmaps a resource script (or a folder) holds, and the
// control list that says which control wears which of them.
//
// The control list sits beside the script (default.rc -> default.controls) or, for a
// folder without a script, is the folder's skin.controls. One control a line:
//
//     # class       name         pieces in the class's skin-string order ("-": left out)
//     CZELButton    volume_down  IDB_BUTTON_MINUS_NORMAL IDB_BUTTON_MINUS_FOCUS ...
//
// A piece is a resource name the script defines or a file path relative to the list's
// folder, as a LoadSkin string would name it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zel::skintool {

struct PieceRef {
    std::string token;  // as written; "-" for a piece left out
    std::string path;   // the file it names; empty when left out or unresolved
    bool resolved = false;
    unsigned id = 0;  // its resource identifier (low 16 bits), 0 when named otherwise
};

struct ControlEntry {
    std::string className, name;
    int line = 0;
    std::vector<PieceRef> pieces;
    std::string Label() const { return className + " " + name; }  // "CZELButton volume_down"
};

struct SkinSource {
    std::string scriptPath;                             // empty for a folder skin
    std::string manifestPath;                           // the control list
    std::string folder;                                 // where unused files are looked for
    std::map<std::string, std::string> resourceOfFile;  // file -> its resource name (script skins)
    std::vector<ControlEntry> controls;
};

// Reads SKIN.rc or DIR. On failure nullopt and *error is one line "path: problem" (or the
// script reader's "file:line: problem").
std::optional<SkinSource> LoadSkinSource(const std::string& skinArg, std::string* error);

// Every image file (.bmp, .png, any case) under `folder`, sorted; bounded in depth and count.
std::vector<std::string> ImageFilesUnder(const std::string& folder);

}  // namespace zel::skintool
