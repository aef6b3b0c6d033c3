// The DIALOG, DIALOGEX and STRINGTABLE statements: what follows the resource name and
// type up to the END of the block.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "kernel/rc/preprocessor.h"
#include "kernel/rc/tokenizer.h"
#include "kernel/resource_script.h"

namespace zel::detail::rc {

// The position in a token list that the statement readers advance.
struct TokenCursor {
    const std::vector<Token>& tokens;
    size_t& pos;
    const Preprocessed& source;
    ExpressionCache* cache;  // the load's: macro values and the expression token budget
};

// Reads a template from the first token after the type (and memory options) to its END;
// errors start with `what` ("IDD_MAIN DIALOGEX").
DialogTemplate ReadDialog(TokenCursor in, const Token& type, const std::string& what, bool extended);

// Reads a STRINGTABLE from the token after the keyword to its END; a string identifier
// already in `strings` is an error, as with the resource compiler.
void ReadStringTable(TokenCursor in, const Token& keyword, std::map<unsigned, std::wstring>& strings);

// The text escapes of dialog and string table strings: \n \t \r \a \\ \" \0ooo \xhh and
// "" for a quote; other backslashes stay as written.
std::wstring UnescapeText(const std::string& raw);

}  // namespace zel::detail::rc
