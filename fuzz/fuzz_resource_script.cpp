// Feeds arbitrary text to the resource script reader. The input is the script, and after
// a NUL byte the contents of "inc.h", which the script may #include. Beyond "no crash, no
// hang, no sanitizer report": a script that reads gives only paths in its directory, and
// one that fails says so in one line naming a file it read.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "kernel/resource_script.h"

namespace {

[[noreturn]] void Finding(const char* what, const std::string& detail) {
    std::fprintf(stderr, "fuzz_resource_script: %s: %s\n", what, detail.c_str());
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string input(reinterpret_cast<const char*>(data), size);
    size_t split = input.find('\0');
    std::string script = input.substr(0, split);
    std::string header = split == std::string::npos ? std::string() : input.substr(split + 1);
    zel::detail::FileReader memory = [&](const std::string& path) -> std::optional<std::string> {
        if (path == "skin/a.rc") return script;
        if (path == "skin/inc.h") return header;
        return std::nullopt;
    };
    std::string error;
    auto parsed = zel::detail::ParseResourceScript("skin/a.rc", &error, memory);
    if (!parsed) {
        if (error.find('\n') != std::string::npos) Finding("error spans lines", error);
        if (error.rfind("skin/a.rc:", 0) != 0 && error.rfind("skin/inc.h:", 0) != 0)
            Finding("error names no file", error);
        return 0;
    }
    for (const auto& [id, path] : parsed->bitmapsById) {
        if (id > 0xFFFF) Finding("identifier beyond 16 bits", path);
        if (path.empty()) Finding("empty path", std::to_string(id));
    }
    for (const auto& [name, path] : parsed->bitmapsByName)
        if (name.empty() || path.empty()) Finding("empty name or path", path);
    return 0;
}
