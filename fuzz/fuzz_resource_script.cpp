// Feeds arbitrary text to the resource script reader. The input is the script, and after
// a NUL byte the contents of "inc.h", which the script may #include. Beyond "no crash, no
// hang, no sanitizer report": a script that reads gives only paths in its directory, and
// one that fails says so in one line naming a file it read. Every dialog template read
// survives its memory form unchanged in shape (the form CreateDialogIndirectParamW reads).
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "kernel/dialog_template.h"
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
    for (const auto& [id, text] : parsed->strings)
        if (id > 0xFFFF) Finding("string identifier beyond 16 bits", std::to_string(id));
    auto checkDialog = [](const zel::detail::DialogTemplate& d) {
        std::vector<uint64_t> bytes = zel::detail::EncodeDialogTemplate(d);
        zel::detail::DialogTemplate back = zel::detail::DecodeDialogTemplate(bytes.data());
        if (back.items.size() != (d.items.size() & 0xFFFF)) Finding("dialog items lost", std::to_string(d.items.size()));
        if (back.style != d.style || back.extended != d.extended) Finding("dialog header changed", "");
        for (size_t i = 0; i < back.items.size(); ++i)
            // Text ends at a NUL in the memory form; "#n" beyond 16 bits stays a name.
            if (back.items[i].style != d.items[i].style ||
                std::wstring(back.items[i].className.c_str()) != std::wstring(d.items[i].className.c_str()))
                Finding("dialog item changed", std::to_string(i));
    };
    for (const auto& [id, dialog] : parsed->dialogsById) checkDialog(dialog);
    for (const auto& [name, dialog] : parsed->dialogsByName) checkDialog(dialog);
    return 0;
}
