#include "host/options.h"

#include <string_view>

#include "tour/tour.h"

namespace zel::demo {

const char* Usage() {
    return "usage: zel-demo [--tour FILE] [--out DIR] [--skin DIR] [--window]\n"
           "  --tour FILE  play this tour (default: the built-in tour)\n"
           "  --out DIR    write <screen>-<shot>.png and tour.log here (default: out)\n"
           "  --skin DIR   take default.rc and skin/*.bmp from here (default: the build's)\n"
           "  --window     open the viewer: the mouse is the stylus, keys are keys;\n"
           "               with --tour the tour plays first; Esc or closing the window\n"
           "               leaves it and writes tour.log and <screen>-last.png\n";
}

std::optional<Options> ParseOptions(int argc, const char* const* argv, std::string* error) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        std::string_view arg = argv[i];
        auto value = [&](std::string& into) {
            if (i + 1 >= argc || std::string_view(argv[i + 1]).empty()) {
                if (error) *error = std::string(arg) + " needs a value";
                return false;
            }
            into = argv[++i];
            return true;
        };
        if (arg == "--tour") {
            if (!value(options.tour)) return std::nullopt;
        } else if (arg == "--out") {
            if (!value(options.out)) return std::nullopt;
        } else if (arg == "--skin") {
            if (!value(options.skin)) return std::nullopt;
        } else if (arg == "--window") {
            options.window = true;
        } else if (arg == "--help" || arg == "-h") {
            options.help = true;
        } else {
            if (error) *error = "unknown option " + Quoted(arg);
            return std::nullopt;
        }
    }
    return options;
}

}  // namespace zel::demo
