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

// Far more than any real script holds; each token costs a string and its position.
constexpr size_t kMaxTokens = size_t{1} << 22;

// Throws ScriptError for an unterminated string, or past kMaxTokens.
std::vector<Token> Tokenize(const Preprocessed& source);

}  // namespace zel::detail::rc
