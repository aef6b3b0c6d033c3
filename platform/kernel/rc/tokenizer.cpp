#include "kernel/rc/tokenizer.h"

#include <cctype>
#include <optional>

namespace zel::detail::rc {

namespace {

// The string literal whose opening quote is at s[i], leaving i past its closing quote;
// nullopt when the line ends first. Escapes: \\ and \" (and "" for a quote, the resource
// compiler's own form); any other backslash is kept as written, so "res\new.bmp" still
// names a path.
std::optional<std::string> ReadString(const std::string& s, size_t& i) {
    std::string value;
    for (++i; i < s.size(); ++i) {
        if (s[i] == '\\' && i + 1 < s.size() && (s[i + 1] == '\\' || s[i + 1] == '"')) {
            value += s[++i];
        } else if (s[i] == '"' && i + 1 < s.size() && s[i + 1] == '"') {
            value += '"';
            ++i;
        } else if (s[i] == '"') {
            ++i;
            return value;
        } else {
            value += s[i];
        }
    }
    return std::nullopt;
}

}  // namespace

std::vector<Token> Tokenize(const Preprocessed& source) {
    std::vector<Token> tokens;
    for (const SourceLine& sl : source.lines) {
        const std::string& s = sl.text;
        for (size_t i = 0; i < s.size();) {
            if (tokens.size() >= kMaxTokens) Fail(source.files, sl.where, "more than " + std::to_string(kMaxTokens) + " tokens");
            char c = s[i];
            if (std::isspace(static_cast<unsigned char>(c))) {
                ++i;
            } else if (c == '"' || ((c == 'L' || c == 'l') && i + 1 < s.size() && s[i + 1] == '"')) {
                if (c != '"') ++i;  // a wide string is the same path to us
                std::optional<std::string> value = ReadString(s, i);
                if (!value) Fail(source.files, sl.where, "unterminated string");
                tokens.push_back(Token{Token::kString, *value, sl.where});
            } else if (IsIdentStart(c)) {
                size_t b = i;
                while (i < s.size() && IsIdentChar(s[i])) ++i;
                tokens.push_back(Token{Token::kIdent, s.substr(b, i - b), sl.where});
            } else if (std::isdigit(static_cast<unsigned char>(c))) {
                size_t b = i;
                while (i < s.size() && IsIdentChar(s[i])) ++i;
                tokens.push_back(Token{Token::kNumber, s.substr(b, i - b), sl.where});
            } else {
                tokens.push_back(Token{Token::kPunct, std::string(1, c), sl.where});
                ++i;
            }
        }
    }
    return tokens;
}

}  // namespace zel::detail::rc
