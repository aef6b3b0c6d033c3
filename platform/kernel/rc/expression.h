// The integer expressions of #if and #elif, and of resource names written as expressions.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace zel::detail::rc {

struct Macro {
    bool functionLike = false;
    std::string body;
};
using MacroTable = std::map<std::string, Macro>;

// Parentheses, unary operators, ?: branches and macro expansions nest at most this deep
// together, far beyond real headers (which chain a few dozen parenthesised #defines) and
// well within the stack.
constexpr int kMaxExpressionNesting = 128;
// Tokens one load may lex in expressions, macro bodies included; with macro values
// remembered, real scripts use a few thousand.
constexpr uint64_t kMaxExpressionTokens = uint64_t{1} << 22;

// What evaluations share within one load: the values of object-like macros, valid while
// the macro table does not change (Forget() after every #define and #undef), and the
// tokens lexed so far. Remembering values keeps a macro defined as ten uses of another,
// repeated, linear instead of exponential.
struct ExpressionCache {
    std::map<std::string, int64_t> values;
    uint64_t tokens = 0;
    void Forget() { values.clear(); }
};

// C's operators on 64-bit values (wrapping, with division by zero an error), defined(),
// character constants and number literals. Undefined names are 0, as in the C
// preprocessor; object-like macros expand recursively. On failure nullopt, and *error
// says why. Without a cache the call has one of its own.
std::optional<int64_t> EvaluateExpression(const std::string& text, const MacroTable& macros, std::string* error,
                                          ExpressionCache* cache = nullptr);

}  // namespace zel::detail::rc
