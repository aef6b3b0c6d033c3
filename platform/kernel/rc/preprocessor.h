// The resource compiler's preprocessor: decodes a script (UTF-8, or UTF-16 with a byte
// order mark), removes comments, joins continued lines and runs #include, #define,
// #undef, #if/#ifdef/#ifndef/#elif/#else/#endif and #error. Included .h and .c files
// contribute only their directives.
#pragma once

#include <string>
#include <vector>

#include "kernel/rc/expression.h"
#include "kernel/rc/source.h"
#include "kernel/resource_script.h"

namespace zel::detail::rc {

struct SourceLine {
    Where where;
    std::string text;  // trimmed, continuation lines joined
};

struct Preprocessed {
    ScriptFiles files;
    MacroTable macros;              // as defined at the end of the script
    std::vector<SourceLine> lines;  // the active lines that are not directives
};

// Throws ScriptError naming the file and line of the first fault.
Preprocessed Preprocess(const std::string& path, const FileReader& reader);

}  // namespace zel::detail::rc
