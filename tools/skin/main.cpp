// zel-skin: checks a skin before it ships and draws its contact sheet.
//
//   zel-skin check SKIN.rc|DIR
//   zel-skin sheet SKIN.rc|DIR -o sheet.png [--control NAME]
//
// check prints one line per finding, "path: control: problem", and exits 0 only for a
// clean skin (1 with findings, 2 when the skin or the command line cannot be read).
#include <zel/gdi_extras.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "check.h"
#include "sheet.h"

namespace {

using namespace zel::skintool;

// The controls' own debug lines (the shaped button's region trace, for one) go to stderr;
// a designer drawing a sheet wants only the tool's messages there.
class QuietStderr {
public:
    QuietStderr() {
        std::fflush(stderr);
        saved_ = dup(2);
        int null = open("/dev/null", O_WRONLY);
        if (saved_ >= 0 && null >= 0) dup2(null, 2);
        if (null >= 0) close(null);
    }
    ~QuietStderr() {
        std::fflush(stderr);
        if (saved_ >= 0) {
            dup2(saved_, 2);
            close(saved_);
        }
    }
    QuietStderr(const QuietStderr&) = delete;
    QuietStderr& operator=(const QuietStderr&) = delete;

private:
    int saved_ = -1;
};

int Usage() {
    std::fprintf(stderr,
                 "usage: zel-skin check SKIN.rc|DIR\n"
                 "       zel-skin sheet SKIN.rc|DIR -o sheet.png [--control NAME]\n");
    return 2;
}

std::optional<SkinSource> Open(const std::string& skinArg) {
    std::string error;
    std::optional<SkinSource> skin = LoadSkinSource(skinArg, &error);
    if (!skin) std::fprintf(stderr, "%s\n", error.c_str());
    return skin;
}

int Check(const std::string& skinArg) {
    std::optional<SkinSource> skin = Open(skinArg);
    if (!skin) return 2;
    std::vector<Finding> findings = CheckSkin(*skin);
    for (const Finding& f : findings) std::printf("%s\n", f.Line().c_str());
    return findings.empty() ? 0 : 1;
}

int Sheet(const std::string& skinArg, const std::string& out, const SheetOptions& options) {
    std::optional<SkinSource> skin = Open(skinArg);
    if (!skin) return 2;
    const zel::GdiCounts before = zel::LiveGdiObjects();
    SheetResult result;
    {
        QuietStderr quiet;
        result = WriteSheet(*skin, options, out);
    }
    for (const std::string& s : result.skipped) std::fprintf(stderr, "zel-skin: skipped %s\n", s.c_str());
    if (!result.ok) {
        std::fprintf(stderr, "zel-skin: %s\n", result.error.c_str());
        return 1;
    }
    if (int leaked = zel::LiveGdiObjects().total() - before.total()) {
        std::fprintf(stderr, "zel-skin: %d GDI objects leaked\n", leaked);
        return 1;
    }
    std::printf("zel-skin: %d states in %s\n", result.cells, out.c_str());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return Usage();
    const std::string command = argv[1], skin = argv[2];
    if (command == "check" && argc == 3) return Check(skin);
    if (command != "sheet") return Usage();
    std::string out;
    SheetOptions options;
    for (int i = 3; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "-o" && i + 1 < argc)
            out = argv[++i];
        else if (arg == "--control" && i + 1 < argc)
            options.control = argv[++i];
        else
            return Usage();
    }
    return out.empty() ? Usage() : Sheet(skin, out, options);
}
