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

// C's operators on 64-bit values (wrapping, with division by zero an error), defined(),
// character constants and number literals. Undefined names are 0, as in the C
// preprocessor; object-like macros expand recursively up to a fixed depth. On failure
// nullopt, and *error says why.
std::optional<int64_t> EvaluateExpression(const std::string& text, const MacroTable& macros, std::string* error);

}  // namespace zel::detail::rc
