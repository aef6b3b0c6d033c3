#include "kernel/resource_script.h"

#include <cctype>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <vector>

#include "mfc/utf8.h"

namespace zel::detail {

namespace {

constexpr size_t kMaxFileBytes = 16u << 20;
constexpr int kMaxIncludeDepth = 16;
constexpr int kMaxExpressionDepth = 200;

struct ScriptError {
    std::string message;
};

struct Where {
    int file = 0;  // index into the file name table
    int line = 0;
};

// ---------------------------------------------------------------------------------------
// Text decoding and comment removal.

void AppendUtf8(std::string& out, char32_t cp) {
    wchar_t w = static_cast<wchar_t>(cp);
    out += mfc::WideToUtf8(std::wstring_view(&w, 1));
}

// Resource editors often save scripts as UTF-16 with a byte order mark.
std::string DecodeText(const std::string& bytes) {
    auto u8 = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    bool le = bytes.size() >= 2 && u8(0) == 0xFF && u8(1) == 0xFE;
    bool be = bytes.size() >= 2 && u8(0) == 0xFE && u8(1) == 0xFF;
    if (!le && !be) {
        if (bytes.size() >= 3 && u8(0) == 0xEF && u8(1) == 0xBB && u8(2) == 0xBF) return bytes.substr(3);
        return bytes;
    }
    std::string out;
    out.reserve(bytes.size() / 2);
    for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
        char32_t unit = le ? (u8(i) | (u8(i + 1) << 8)) : ((u8(i) << 8) | u8(i + 1));
        if (unit >= 0xD800 && unit < 0xDC00 && i + 3 < bytes.size()) {
            char32_t low = le ? (u8(i + 2) | (u8(i + 3) << 8)) : ((u8(i + 2) << 8) | u8(i + 3));
            if (low >= 0xDC00 && low < 0xE000) {
                AppendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00));
                i += 2;
                continue;
            }
        }
        AppendUtf8(out, unit);
    }
    return out;
}

// Removes // and /* */ comments outside string literals; newlines are kept so that line
// numbers stay right. A string ends at its closing quote or at the end of its line.
std::string StripComments(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    bool inString = false;
    for (size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (inString) {
            out += c;
            if (c == '\\' && next && next != '\n') {
                out += next;
                ++i;
            } else if (c == '"' || c == '\n') {
                inString = false;
            }
            continue;
        }
        if (c == '"') {
            inString = true;
            out += c;
        } else if (c == '/' && next == '/') {
            while (i < text.size() && text[i] != '\n') ++i;
            if (i < text.size()) out += '\n';
        } else if (c == '/' && next == '*') {
            i += 2;
            while (i < text.size() && !(text[i] == '*' && i + 1 < text.size() && text[i + 1] == '/')) {
                if (text[i] == '\n') out += '\n';
                ++i;
            }
            ++i;  // past the closing slash (or the end)
            out += ' ';
        } else {
            out += c;
        }
    }
    return out;
}

std::string Upper(std::string s) {
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

std::string Trim(const std::string& s) {
    size_t b = 0, e = s.size();
    while (b < e && std::isspace(static_cast<unsigned char>(s[b]))) ++b;
    while (e > b && std::isspace(static_cast<unsigned char>(s[e - 1]))) --e;
    return s.substr(b, e - b);
}

bool IsIdentStart(char c) { return std::isalpha(static_cast<unsigned char>(c)) || c == '_'; }
bool IsIdentChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

std::string DirectoryOf(const std::string& path) {
    size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string JoinPath(const std::string& dir, std::string path) {
    for (char& c : path)
        if (c == '\\') c = '/';
    if (path.empty() || path[0] == '/' || dir.empty()) return path;
    return dir + "/" + path;
}

// Number literals as C writes them: decimal, 0x hex, 0 octal, optional U/L suffixes.
std::optional<int64_t> ParseNumber(const std::string& text) {
    size_t i = 0;
    int base = 10;
    if (text.size() > 1 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        i = 2;
    } else if (text.size() > 1 && text[0] == '0') {
        base = 8;
        i = 1;
    }
    size_t digits = 0;
    uint64_t v = 0;
    for (; i < text.size(); ++i, ++digits) {
        char c = static_cast<char>(std::tolower(static_cast<unsigned char>(text[i])));
        int d = c >= '0' && c <= '9' ? c - '0' : (c >= 'a' && c <= 'f' ? c - 'a' + 10 : 99);
        if (d >= base) break;
        v = v * static_cast<uint64_t>(base) + static_cast<uint64_t>(d);
    }
    if (digits == 0 && base == 16) return std::nullopt;
    for (; i < text.size(); ++i)
        if (!std::strchr("uUlL", text[i])) return std::nullopt;
    return static_cast<int64_t>(v);
}

// ---------------------------------------------------------------------------------------
// Preprocessor expressions.

struct Macro {
    bool functionLike = false;
    std::string body;
};
using MacroTable = std::map<std::string, Macro>;

class Expression {
public:
    Expression(const std::string& text, const MacroTable& macros, int depth)
        : macros_(macros), depth_(depth) {
        Lex(text);
    }

    // The value, or an error message through *error.
    std::optional<int64_t> Evaluate(std::string* error) {
        try {
            if (depth_ > kMaxExpressionDepth) throw ScriptError{"expression nested too deeply"};
            if (tokens_.empty()) throw ScriptError{"empty expression"};
            int64_t v = Conditional(0);
            if (pos_ != tokens_.size()) throw ScriptError{"unexpected '" + tokens_[pos_] + "' in expression"};
            return v;
        } catch (const ScriptError& e) {
            if (error) *error = e.message;
            return std::nullopt;
        }
    }

private:
    void Lex(const std::string& text) {
        static const char* const kTwoChar[] = {"<<", ">>", "<=", ">=", "==", "!=", "&&", "||"};
        for (size_t i = 0; i < text.size();) {
            char c = text[i];
            if (std::isspace(static_cast<unsigned char>(c))) {
                ++i;
            } else if (IsIdentChar(c)) {
                size_t b = i;
                while (i < text.size() && IsIdentChar(text[i])) ++i;
                tokens_.push_back(text.substr(b, i - b));
            } else if (c == '\'' && i + 2 < text.size() && text[i + 2] == '\'') {
                tokens_.push_back(std::to_string(static_cast<unsigned char>(text[i + 1])));
                i += 3;
            } else {
                std::string two = text.substr(i, 2);
                bool matched = false;
                for (const char* op : kTwoChar)
                    if (two == op) matched = true;
                tokens_.push_back(matched ? two : std::string(1, c));
                i += matched ? 2 : 1;
            }
        }
    }

    const std::string* Peek() const { return pos_ < tokens_.size() ? &tokens_[pos_] : nullptr; }
    bool Accept(const char* op) {
        if (Peek() && *Peek() == op) {
            ++pos_;
            return true;
        }
        return false;
    }
    void Expect(const char* op) {
        if (!Accept(op)) throw ScriptError{std::string("expected '") + op + "' in expression"};
    }

    int64_t Conditional(int level) {
        Guard(level);
        int64_t cond = Binary(0, level + 1);
        if (!Accept("?")) return cond;
        int64_t a = Conditional(level + 1);
        Expect(":");
        int64_t b = Conditional(level + 1);
        return cond ? a : b;
    }

    // Precedence levels from loosest to tightest.
    int64_t Binary(int prec, int level) {
        static const std::vector<std::vector<std::string>> kLevels = {
            {"||"}, {"&&"}, {"|"}, {"^"}, {"&"}, {"==", "!="}, {"<", ">", "<=", ">="}, {"<<", ">>"}, {"+", "-"},
            {"*", "/", "%"}};
        Guard(level);
        if (prec == static_cast<int>(kLevels.size())) return Unary(level + 1);
        int64_t lhs = Binary(prec + 1, level + 1);
        for (;;) {
            const std::string* op = Peek();
            bool found = false;
            for (const std::string& candidate : kLevels[prec])
                if (op && *op == candidate) found = true;
            if (!found) return lhs;
            std::string o = *op;
            ++pos_;
            int64_t rhs = Binary(prec + 1, level + 1);
            lhs = Apply(o, lhs, rhs);
        }
    }

    static int64_t Apply(const std::string& o, int64_t a, int64_t b) {
        auto ua = static_cast<uint64_t>(a), ub = static_cast<uint64_t>(b);
        if (o == "||") return a || b;
        if (o == "&&") return a && b;
        if (o == "|") return a | b;
        if (o == "^") return a ^ b;
        if (o == "&") return a & b;
        if (o == "==") return a == b;
        if (o == "!=") return a != b;
        if (o == "<") return a < b;
        if (o == ">") return a > b;
        if (o == "<=") return a <= b;
        if (o == ">=") return a >= b;
        if (o == "<<") return static_cast<int64_t>(ua << (ub & 63));
        if (o == ">>") return a >> (ub & 63);
        if (o == "+") return static_cast<int64_t>(ua + ub);
        if (o == "-") return static_cast<int64_t>(ua - ub);
        if (o == "*") return static_cast<int64_t>(ua * ub);
        if (b == 0) throw ScriptError{"division by zero in expression"};
        if (a == INT64_MIN && b == -1) return a;
        return o == "/" ? a / b : a % b;
    }

    int64_t Unary(int level) {
        Guard(level);
        if (Accept("!")) return !Unary(level + 1);
        if (Accept("~")) return ~Unary(level + 1);
        if (Accept("-")) return static_cast<int64_t>(0 - static_cast<uint64_t>(Unary(level + 1)));
        if (Accept("+")) return Unary(level + 1);
        if (Accept("(")) {
            int64_t v = Conditional(level + 1);
            Expect(")");
            return v;
        }
        const std::string* t = Peek();
        if (!t) throw ScriptError{"expression ends too early"};
        std::string tok = *t;
        ++pos_;
        if (std::isdigit(static_cast<unsigned char>(tok[0]))) {
            auto v = ParseNumber(tok);
            if (!v) throw ScriptError{"bad number '" + tok + "'"};
            return *v;
        }
        if (!IsIdentStart(tok[0])) throw ScriptError{"unexpected '" + tok + "' in expression"};
        if (tok == "defined") return Defined();
        return Identifier(tok, level);
    }

    int64_t Defined() {
        bool paren = Accept("(");
        const std::string* name = Peek();
        if (!name || !IsIdentStart((*name)[0])) throw ScriptError{"defined needs a name"};
        bool known = macros_.count(*name) != 0;
        ++pos_;
        if (paren) Expect(")");
        return known;
    }

    // Undefined names are 0, as in the C preprocessor; function-like macros cannot be
    // evaluated here and count as 0 with their arguments skipped.
    int64_t Identifier(const std::string& name, int level) {
        auto it = macros_.find(name);
        if (it == macros_.end()) return 0;
        if (it->second.functionLike) {
            if (Accept("(")) {
                for (int depth = 1; depth > 0 && Peek(); ++pos_) {
                    if (*Peek() == "(") ++depth;
                    if (*Peek() == ")") --depth;
                }
            }
            return 0;
        }
        std::string error;
        auto v = Expression(it->second.body, macros_, depth_ + level + 1).Evaluate(&error);
        if (!v) throw ScriptError{name + ": " + error};
        return *v;
    }

    void Guard(int level) const {
        if (depth_ + level > kMaxExpressionDepth) throw ScriptError{"expression nested too deeply"};
    }

    const MacroTable& macros_;
    int depth_;
    std::vector<std::string> tokens_;
    size_t pos_ = 0;
};

// ---------------------------------------------------------------------------------------
// Preprocessing: directives are executed, active statement lines are collected.

struct SourceLine {
    Where where;
    std::string text;
};

class Preprocessor {
public:
    Preprocessor(const FileReader& reader, std::vector<std::string>& files) : reader_(reader), files_(files) {
        // What the resource compiler predefines; the device flavour of the headers.
        macros_["RC_INVOKED"] = Macro{false, "1"};
        macros_["_WIN32"] = Macro{false, "1"};
        macros_["UNDER_CE"] = Macro{false, "1"};
        macros_["_WIN32_WCE"] = Macro{false, "0x600"};
    }

    void Run(const std::string& path) { ProcessFile(path, 0, false, Where{}); }

    const MacroTable& macros() const { return macros_; }
    std::vector<SourceLine>& lines() { return lines_; }

    [[noreturn]] void Fail(Where where, const std::string& message) const {
        throw ScriptError{files_[static_cast<size_t>(where.file)] + ":" + std::to_string(where.line) + ": " + message};
    }

private:
    struct Condition {
        Where where;
        bool parentActive;
        bool active;
        bool taken;
        bool seenElse;
    };

    void ProcessFile(const std::string& path, int depth, bool directivesOnly, Where from) {
        std::optional<std::string> bytes = reader_(path);
        if (!bytes) {
            if (depth == 0) throw ScriptError{path + ": cannot open the file"};
            Fail(from, "cannot open include file '" + path + "'");
        }
        int file = static_cast<int>(files_.size());
        files_.push_back(path);
        std::string text = StripComments(DecodeText(*bytes));

        std::vector<Condition> conditions;
        std::istringstream in(text);
        std::string raw;
        int lineNo = 0;
        while (std::getline(in, raw)) {
            ++lineNo;
            Where where{file, lineNo};
            // A backslash at the end of a line continues it.
            while (!raw.empty() && raw.back() == '\\') {
                std::string more;
                raw.pop_back();
                if (!std::getline(in, more)) break;
                ++lineNo;
                raw += more;
            }
            if (!raw.empty() && raw.back() == '\r') raw.pop_back();
            std::string line = Trim(raw);
            bool active = conditions.empty() || conditions.back().active;
            if (!line.empty() && line[0] == '#') {
                Directive(line.substr(1), where, conditions, active, depth, path);
            } else if (active && !directivesOnly && !line.empty()) {
                lines_.push_back(SourceLine{where, line});
            }
        }
        if (!conditions.empty()) Fail(conditions.back().where, "#if without #endif");
    }

    void Directive(const std::string& rest, Where where, std::vector<Condition>& conditions, bool active, int depth,
                   const std::string& path) {
        std::string body = Trim(rest);
        size_t n = 0;
        while (n < body.size() && IsIdentChar(body[n])) ++n;
        std::string name = body.substr(0, n);
        std::string arg = Trim(body.substr(n));

        if (name == "ifdef" || name == "ifndef") {
            bool defined = macros_.count(FirstWord(arg)) != 0;
            bool cond = name == "ifdef" ? defined : !defined;
            conditions.push_back(Condition{where, active, active && cond, active && cond, false});
        } else if (name == "if") {
            bool cond = active && Evaluate(arg, where) != 0;
            conditions.push_back(Condition{where, active, cond, cond, false});
        } else if (name == "elif") {
            if (conditions.empty() || conditions.back().seenElse) Fail(where, "#elif without #if");
            Condition& c = conditions.back();
            c.active = c.parentActive && !c.taken && Evaluate(arg, where) != 0;
            c.taken = c.taken || c.active;
        } else if (name == "else") {
            if (conditions.empty() || conditions.back().seenElse) Fail(where, "#else without #if");
            Condition& c = conditions.back();
            c.seenElse = true;
            c.active = c.parentActive && !c.taken;
            c.taken = true;
        } else if (name == "endif") {
            if (conditions.empty()) Fail(where, "#endif without #if");
            conditions.pop_back();
        } else if (!active) {
            return;  // other directives in skipped sections do nothing
        } else if (name == "define") {
            Define(arg, where);
        } else if (name == "undef") {
            macros_.erase(FirstWord(arg));
        } else if (name == "include") {
            Include(arg, where, depth, path);
        } else if (name == "error") {
            Fail(where, "#error " + arg);
        }
        // #pragma, #line and anything else: nothing to do for resources.
    }

    static std::string FirstWord(const std::string& s) {
        size_t n = 0;
        while (n < s.size() && IsIdentChar(s[n])) ++n;
        return s.substr(0, n);
    }

    int64_t Evaluate(const std::string& text, Where where) {
        std::string error;
        auto v = Expression(text, macros_, 0).Evaluate(&error);
        if (!v) Fail(where, "#if " + text + ": " + error);
        return *v;
    }

    void Define(const std::string& arg, Where where) {
        if (arg.empty() || !IsIdentStart(arg[0])) Fail(where, "#define needs a name");
        std::string name = FirstWord(arg);
        Macro m;
        std::string rest = arg.substr(name.size());
        if (!rest.empty() && rest[0] == '(') {
            m.functionLike = true;
            size_t close = rest.find(')');
            if (close == std::string::npos) Fail(where, "#define " + name + ": unclosed parameter list");
            rest = rest.substr(close + 1);
        }
        m.body = Trim(rest);
        macros_[name] = m;
    }

    void Include(const std::string& arg, Where where, int depth, const std::string& path) {
        if (arg.size() < 2 || !((arg[0] == '"' && arg.find('"', 1) != std::string::npos) ||
                                (arg[0] == '<' && arg.find('>', 1) != std::string::npos)))
            Fail(where, "#include needs \"file\" or <file>");
        bool system = arg[0] == '<';
        std::string name = arg.substr(1, arg.find(system ? '>' : '"', 1) - 1);
        if (depth + 1 > kMaxIncludeDepth) Fail(where, "#include nested too deeply (a cycle?)");
        std::string here = JoinPath(DirectoryOf(path), name);
        std::string top = JoinPath(DirectoryOf(files_[0]), name);
        std::string found;
        for (const std::string& candidate : {here, top}) {
            if (found.empty() && reader_(candidate)) found = candidate;
        }
        if (found.empty()) {
            // The platform's own headers are not needed to read resources.
            if (system || IsFrameworkHeader(name)) return;
            Fail(where, "cannot open include file '" + name + "'");
        }
        std::string ext = Upper(found.substr(found.rfind('.') == std::string::npos ? found.size() : found.rfind('.')));
        ProcessFile(found, depth + 1, ext == ".H" || ext == ".C", where);
    }

    static bool IsFrameworkHeader(std::string name) {
        for (char& c : name)
            if (c == '\\') c = '/';
        name = Upper(name.substr(name.rfind('/') == std::string::npos ? 0 : name.rfind('/') + 1));
        static const std::set<std::string> kKnown = {
            "AFXRES.H",  "AFXRES.RC", "WINRES.H",  "WINRESRC.H", "WINDOWS.H", "WINVER.H",   "COMMCTRL.H",
            "AYGSHELL.H", "NEWRES.H", "WCERES.RC", "WINUSER.H",  "WINNT.H",   "DLGS.H",     "RICHEDIT.H",
            "PRSHT.H",   "ATLRES.H",  "AFXPRINT.RC", "AFXOLECL.RC", "AFXOLESV.RC", "AFXDB.RC", "WINUSER.RH"};
        return kKnown.count(name) != 0;
    }

    const FileReader& reader_;
    std::vector<std::string>& files_;
    MacroTable macros_;
    std::vector<SourceLine> lines_;
};

// ---------------------------------------------------------------------------------------
// Statements.

struct Token {
    enum Kind { kIdent, kNumber, kString, kPunct } kind;
    std::string text;  // strings: their value with the path escapes applied
    Where where;
};

// Escapes in strings: \\ and \" (and "" for a quote, the resource compiler's own form);
// any other backslash is kept as written, so "res\new.bmp" still names a path.
std::vector<Token> Tokenize(std::vector<SourceLine>& lines, const Preprocessor& pp) {
    std::vector<Token> tokens;
    for (const SourceLine& sl : lines) {
        const std::string& s = sl.text;
        for (size_t i = 0; i < s.size();) {
            char c = s[i];
            if (std::isspace(static_cast<unsigned char>(c))) {
                ++i;
            } else if (c == '"' || ((c == 'L' || c == 'l') && i + 1 < s.size() && s[i + 1] == '"')) {
                if (c != '"') ++i;
                std::string value;
                bool closed = false;
                for (++i; i < s.size(); ++i) {
                    if (s[i] == '\\' && i + 1 < s.size() && (s[i + 1] == '\\' || s[i + 1] == '"')) {
                        value += s[++i];
                    } else if (s[i] == '"' && i + 1 < s.size() && s[i + 1] == '"') {
                        value += '"';
                        ++i;
                    } else if (s[i] == '"') {
                        closed = true;
                        ++i;
                        break;
                    } else {
                        value += s[i];
                    }
                }
                if (!closed) pp.Fail(sl.where, "unterminated string");
                tokens.push_back(Token{Token::kString, value, sl.where});
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

class StatementParser {
public:
    StatementParser(std::vector<Token> tokens, const Preprocessor& pp, std::string baseDir)
        : tokens_(std::move(tokens)), pp_(pp), baseDir_(std::move(baseDir)) {}

    ResourceScript Run() {
        while (pos_ < tokens_.size()) Statement();
        return std::move(script_);
    }

private:
    struct Seen {
        std::string language;
        Where where;
    };

    bool AtEnd() const { return pos_ >= tokens_.size(); }
    const Token& Next(const Token& after, const std::string& what) {
        if (AtEnd()) pp_.Fail(after.where, "unexpected end of file: " + what);
        return tokens_[pos_++];
    }
    static bool IsWord(const Token& t, const char* word) { return t.kind == Token::kIdent && Upper(t.text) == word; }
    static bool Opens(const Token& t) { return IsWord(t, "BEGIN") || (t.kind == Token::kPunct && t.text == "{"); }
    static bool Closes(const Token& t) { return IsWord(t, "END") || (t.kind == Token::kPunct && t.text == "}"); }

    void SkipLine(const Token& first) {
        while (!AtEnd() && tokens_[pos_].where.file == first.where.file && tokens_[pos_].where.line == first.where.line)
            ++pos_;
    }

    void Statement() {
        const Token& first = tokens_[pos_++];
        if (IsWord(first, "LANGUAGE")) {
            size_t from = pos_;
            SkipLine(first);
            language_.clear();
            for (size_t i = from; i < pos_; ++i) language_ += tokens_[i].text;
            return;
        }
        if (IsWord(first, "VERSION") || IsWord(first, "CHARACTERISTICS")) return SkipLine(first);
        if (IsWord(first, "STRINGTABLE")) return SkipToBlock(first, "STRINGTABLE");
        if (Opens(first) || Closes(first) || (first.kind == Token::kPunct && first.text != "("))
            pp_.Fail(first.where, "unexpected '" + first.text + "' where a resource statement should start");

        Name name = ReadName(first);
        const Token& type = Next(first, "a resource type after '" + name.display + "'");
        std::string typeName = type.kind == Token::kNumber ? type.text : Upper(type.text);
        std::string what = name.display + " " + typeName;
        if (type.kind != Token::kIdent && type.kind != Token::kNumber)
            pp_.Fail(type.where, "'" + type.text + "' is not a resource type");
        SkipMemoryOptions();

        bool bitmap = typeName == "BITMAP" || typeName == "2";  // RT_BITMAP
        if (bitmap) {
            if (AtEnd() || tokens_[pos_].kind != Token::kString)
                pp_.Fail(type.where, what + ": expected a quoted file name");
            return AddBitmap(name, tokens_[pos_++]);
        }
        static const std::set<std::string> kBlockTypes = {"DIALOG",      "DIALOGEX", "MENU",       "MENUEX",
                                                          "ACCELERATORS", "VERSIONINFO", "TOOLBAR", "DESIGNINFO",
                                                          "TEXTINCLUDE", "DLGINIT",  "AFX_DIALOG_LAYOUT"};
        if (!kBlockTypes.count(typeName) && !AtEnd() && tokens_[pos_].kind == Token::kString) {
            ++pos_;  // a resource read from a file (ICON, CURSOR, FONT, HTML, custom types)
            return;
        }
        if (!kBlockTypes.count(typeName) && (AtEnd() || !Opens(tokens_[pos_])) && typeName != "RCDATA")
            pp_.Fail(type.where, what + ": expected a file name or a BEGIN block");
        SkipToBlock(type, what);
    }

    struct Name {
        bool numeric = false;
        unsigned id = 0;
        std::wstring text;
        std::string display;
    };

    // A number, a #defined name (its value), an undefined name or a string (a named
    // resource, case-insensitive), or a parenthesised expression.
    Name ReadName(const Token& t) {
        Name n;
        n.display = t.text;
        std::string expression;
        if (t.kind == Token::kNumber) {
            expression = t.text;
        } else if (t.kind == Token::kPunct) {  // "("
            int depth = 1;
            expression = "(";
            while (depth > 0) {
                const Token& e = Next(t, "')' to close the resource name");
                if (e.text == "(") ++depth;
                if (e.text == ")") --depth;
                expression += " " + e.text;
            }
            n.display = expression;
        } else if (t.kind == Token::kIdent) {
            auto it = pp_.macros().find(t.text);
            if (it != pp_.macros().end() && !it->second.functionLike) expression = it->second.body;
        }
        if (expression.empty()) {
            n.text = mfc::Utf8ToWide(Upper(t.text));
            return n;
        }
        std::string error;
        auto v = Expression(expression, pp_.macros(), 0).Evaluate(&error);
        if (!v) pp_.Fail(t.where, "resource name '" + n.display + "': " + error);
        n.numeric = true;
        n.id = static_cast<unsigned>(*v) & 0xFFFF;  // resource identifiers are 16 bits
        return n;
    }

    void SkipMemoryOptions() {
        static const std::set<std::string> kOptions = {"PRELOAD", "LOADONCALL", "FIXED",  "MOVEABLE", "DISCARDABLE",
                                                       "PURE",    "IMPURE",     "SHARED", "NONSHARED"};
        while (!AtEnd() && tokens_[pos_].kind == Token::kIdent && kOptions.count(Upper(tokens_[pos_].text))) ++pos_;
    }

    void SkipToBlock(const Token& from, const std::string& what) {
        while (!AtEnd() && !Opens(tokens_[pos_])) ++pos_;
        if (AtEnd()) pp_.Fail(from.where, what + ": missing BEGIN");
        Where opened = tokens_[pos_++].where;
        for (int depth = 1; depth > 0;) {
            if (AtEnd()) pp_.Fail(opened, what + ": BEGIN without END");
            const Token& t = tokens_[pos_++];
            if (Opens(t)) ++depth;
            if (Closes(t)) --depth;
        }
    }

    void AddBitmap(const Name& name, const Token& file) {
        if (file.text.empty()) pp_.Fail(file.where, name.display + " BITMAP: empty file name");
        std::string key = name.numeric ? "#" + std::to_string(name.id) : mfc::WideToUtf8(name.text);
        auto [it, fresh] = seen_.emplace(key, Seen{language_, file.where});
        if (!fresh) {
            if (it->second.language == language_)
                pp_.Fail(file.where, "duplicate BITMAP resource " + name.display);
            return;  // another language's copy: the first one stays
        }
        std::string path = JoinPath(baseDir_, file.text);
        if (name.numeric) {
            script_.bitmapsById[name.id] = path;
        } else {
            script_.bitmapsByName[name.text] = path;
        }
    }

    std::vector<Token> tokens_;
    const Preprocessor& pp_;
    std::string baseDir_;
    size_t pos_ = 0;
    std::string language_;
    std::map<std::string, Seen> seen_;
    ResourceScript script_;
};

std::optional<std::string> ReadWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    in.seekg(0, std::ios::end);
    std::streamoff size = in.tellg();
    if (size < 0 || static_cast<uint64_t>(size) > kMaxFileBytes) return std::nullopt;
    in.seekg(0, std::ios::beg);
    std::string bytes(static_cast<size_t>(size), '\0');
    if (size && !in.read(bytes.data(), size)) return std::nullopt;
    return bytes;
}

}  // namespace

std::optional<ResourceScript> ParseResourceScript(const std::string& path, std::string* error,
                                                  const FileReader& reader) {
    FileReader read = reader ? reader : FileReader(ReadWholeFile);
    std::vector<std::string> files;
    try {
        Preprocessor pp(read, files);
        pp.Run(path);
        StatementParser parser(Tokenize(pp.lines(), pp), pp, DirectoryOf(path));
        return parser.Run();
    } catch (const ScriptError& e) {
        if (error) *error = e.message;
        return std::nullopt;
    }
}

}  // namespace zel::detail
