#include "kernel/rc/platform_headers.h"

#include <set>
#include <utility>

#include "kernel/strings.h"

namespace zel::detail::rc {

namespace {

// One text serves every name: the headers include each other on Windows, so a script may
// name any of them and expects all of the constants. It is the plain constants of the
// platform's own headers, gathered at build time.
constexpr const char* kResourceHeader =
#include "rc_platform_header.inc"
    ;

std::string BaseName(const std::string& path) {
    size_t cut = path.find_last_of("/\\");
    return cut == std::string::npos ? path : path.substr(cut + 1);
}

}  // namespace

std::optional<std::string> PlatformHeader(const std::string& path) {
    static const std::set<std::string> kNames = {"AFXRES.H", "WINRES.H",  "WINRESRC.H", "WINDOWS.H",
                                                 "WINUSER.H", "WINUSER.RH", "COMMCTRL.H", "NEWRES.H"};
    if (!kNames.count(kernel::Upper(BaseName(path)))) return std::nullopt;
    return std::string(kResourceHeader);
}

FileReader WithPlatformHeaders(FileReader files) {
    return [files = std::move(files)](const std::string& path) -> std::optional<std::string> {
        if (std::optional<std::string> bytes = files(path)) return bytes;
        return PlatformHeader(path);
    };
}

}  // namespace zel::detail::rc
