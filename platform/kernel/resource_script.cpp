// The reader runs in three stages, each in kernel/rc/: the preprocessor (decoding,
// comments, directives), the tokenizer and the statement parser.
#include "kernel/resource_script.h"

#include <utility>
#include <vector>

#include "kernel/file.h"
#include "kernel/rc/parser.h"
#include "kernel/rc/preprocessor.h"
#include "kernel/rc/tokenizer.h"

namespace zel::detail {

namespace {

// Far beyond any real script; refuses a device or a mistaken huge file before reading.
constexpr size_t kMaxFileBytes = 16u << 20;

std::optional<std::string> ReadScriptFile(const std::string& path) {
    return kernel::ReadWholeFile(path, kMaxFileBytes);
}

}  // namespace

std::optional<ResourceScript> ParseResourceScript(const std::string& path, std::string* error,
                                                  const FileReader& reader) {
    FileReader read = reader ? reader : FileReader(ReadScriptFile);
    try {
        rc::Preprocessed source = rc::Preprocess(path, read);
        std::vector<rc::Token> tokens = rc::Tokenize(source);
        return rc::ParseStatements(std::move(tokens), source, rc::DirectoryOf(path));
    } catch (const rc::ScriptError& e) {
        if (error) *error = e.message;
        return std::nullopt;
    }
}

}  // namespace zel::detail
