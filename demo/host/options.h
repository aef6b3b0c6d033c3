// zel-demo's command line.
#pragma once

#include <optional>
#include <string>

namespace zel::demo {

struct Options {
    std::string tour;  // empty: the built-in tour headless, none in the viewer
    std::string out;   // empty: "out"
    std::string skin;  // folder holding default.rc and skin/; empty: the build's own
    bool window = false;
    bool help = false;
};

// nullopt with a one-line reason in *error for an unknown option or a missing value.
std::optional<Options> ParseOptions(int argc, const char* const* argv, std::string* error);

const char* Usage();

}  // namespace zel::demo
