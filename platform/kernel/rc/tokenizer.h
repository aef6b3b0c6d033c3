// Statement tokens: names, numbers, strings and single punctuation characters, each with
// the file and line it came from (statements such as LANGUAGE end at their line).
#pragma once

#include <string>
#include <vector>

#include "kernel/rc/preprocessor.h"

namespace zel::detail::rc {

struct Token {
    enum Kind { kIdent, kNumber, kString, kPunct } kind;
    std::string text;  // strings: their value with the path escapes applied
    Where where;
};

// Throws ScriptError for an unterminated string.
std::vector<Token> Tokenize(const Preprocessed& source);

}  // namespace zel::detail::rc
