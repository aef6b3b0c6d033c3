// What the resource script readers share: positions in the script's files, the one error
// type, and the lexical rules of C names and paths.
#pragma once

#include <string>
#include <vector>

namespace zel::detail::rc {

// Thrown inside the readers only; ParseResourceScript turns it into its error line.
struct ScriptError {
    std::string message;
};

struct Where {
    int file = 0;  // index into ScriptFiles
    int line = 0;
};

// Every file read so far, in reading order: the script first, then its includes.
using ScriptFiles = std::vector<std::string>;

// Throws the error "file:line: message".
[[noreturn]] void Fail(const ScriptFiles& files, Where where, const std::string& message);

inline bool IsIdentStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
inline bool IsIdentChar(char c) { return IsIdentStart(c) || (c >= '0' && c <= '9'); }

std::string DirectoryOf(const std::string& path);
// `path` as the script wrote it ('\' separators allowed), relative to `dir` unless absolute.
std::string JoinPath(const std::string& dir, std::string path);

}  // namespace zel::detail::rc
