// Resource statements: keeps BITMAP statements and skips every other statement whole
// (LANGUAGE, VERSION, STRINGTABLE, block resources, resources read from files).
#pragma once

#include <string>
#include <vector>

#include "kernel/rc/preprocessor.h"
#include "kernel/rc/tokenizer.h"
#include "kernel/resource_script.h"

namespace zel::detail::rc {

// `source` supplies the macros resource names are evaluated with and the file table for
// errors; bitmap paths are joined to `baseDir`. Throws ScriptError.
ResourceScript ParseStatements(std::vector<Token> tokens, const Preprocessed& source, std::string baseDir);

}  // namespace zel::detail::rc
