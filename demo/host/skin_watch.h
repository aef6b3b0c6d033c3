// The files of a skin folder with their sizes and modification times: what the viewer polls
// to reload a skin while a designer edits it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace zel::demo {

class SkinWatch {
public:
    // Takes the folder's first picture now; a folder that does not exist is empty.
    explicit SkinWatch(std::string dir);

    // True when a file was added, removed or rewritten since the last call (or since
    // construction). The folder is walked at most 4 levels deep and 10000 files far.
    bool Changed();

private:
    struct Stamp {
        std::filesystem::file_time_type written;
        std::uintmax_t size = 0;
        bool operator==(const Stamp&) const = default;
    };
    std::map<std::string, Stamp> Scan() const;

    std::string dir_;
    std::map<std::string, Stamp> files_;
};

}  // namespace zel::demo
