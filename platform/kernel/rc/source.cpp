#include "kernel/rc/source.h"

namespace zel::detail::rc {

void Fail(const ScriptFiles& files, Where where, const std::string& message) {
    throw ScriptError{files[static_cast<size_t>(where.file)] + ":" + std::to_string(where.line) + ": " + message};
}

std::string DirectoryOf(const std::string& path) {
    size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string JoinPath(const std::string& dir, std::string path) {
    for (char& c : path)
        if (c == '\\') c = '/';
    if (path.empty() || path[0] == '/' || dir.empty()) return path;
    return dir + "/" + path;
}

}  // namespace zel::detail::rc
