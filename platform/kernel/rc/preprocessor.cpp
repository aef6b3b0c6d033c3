#include "kernel/rc/preprocessor.h"

#include "kernel/rc/platform_headers.h"

#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

#include "kernel/strings.h"
#include "kernel/utf.h"

namespace zel::detail::rc {

namespace {

// What one load may read, far beyond any real script; a file that goes over is refused
// at the line that did, so include fan-outs without guards end quickly.
constexpr int kMaxIncludeDepth = 16;
constexpr int kMaxFiles = 256;                       // the script and every #include, guarded or not
constexpr size_t kMaxTotalBytes = size_t{32} << 20;  // of all the files read
constexpr size_t kMaxLines = size_t{1} << 20;        // resource lines kept for the parser

// Resource editors often save scripts as UTF-16 with a byte order mark.
std::string DecodeText(const std::string& bytes) {
    auto u8 = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    bool le = bytes.size() >= 2 && u8(0) == 0xFF && u8(1) == 0xFE;
    bool be = bytes.size() >= 2 && u8(0) == 0xFE && u8(1) == 0xFF;
    if (le || be) return kernel::Utf16ToUtf8(std::string_view(bytes).substr(2), be);
    if (bytes.size() >= 3 && u8(0) == 0xEF && u8(1) == 0xBB && u8(2) == 0xBF) return bytes.substr(3);
    return bytes;
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

class Preprocessor {
public:
    // `predefined`: with the resource compiler's own macros (all but the platform header's
    // reading, PlatformHeaderRead).
    explicit Preprocessor(const FileReader& reader, bool predefined = true) : reader_(reader) {
        if (!predefined) return;
        // What the resource compiler predefines; the device flavour of the headers.
        out_.macros["RC_INVOKED"] = Macro{false, "1"};
        out_.macros["_WIN32"] = Macro{false, "1"};
        out_.macros["UNDER_CE"] = Macro{false, "1"};
        out_.macros["_WIN32_WCE"] = Macro{false, "0x600"};
    }

    void Run(const std::string& path) {
        std::optional<std::string> bytes = reader_(path);
        if (!bytes) throw ScriptError{path + ": cannot open the file"};
        ProcessFile(path, *bytes, 0, false, Where{});
    }

    Preprocessed Take() { return std::move(out_); }

private:
    struct Condition {
        Where where;
        bool parentActive;
        bool active;
        bool taken;
        bool seenElse;
    };

    // Counts a file read against the load's budgets and numbers it for error messages.
    int AddFile(const std::string& path, size_t bytes, Where from) {
        if (static_cast<int>(out_.files.size()) >= kMaxFiles)
            Fail(from, "more than " + std::to_string(kMaxFiles) + " files included");
        totalBytes_ += bytes;
        if (totalBytes_ > kMaxTotalBytes)
            Fail(from, "included files exceed " + std::to_string(kMaxTotalBytes >> 20) + " MiB in all");
        out_.files.push_back(path);
        return static_cast<int>(out_.files.size()) - 1;
    }

    // The directive's name and what follows it, of a line (trimmed, comments gone) that
    // starts with '#'.
    static std::pair<std::string, std::string> Split(const std::string& line) {
        std::string body = kernel::Trim(line.substr(1));
        size_t n = 0;
        while (n < body.size() && IsIdentChar(body[n])) ++n;
        return {body.substr(0, n), kernel::Trim(body.substr(n))};
    }

    void ProcessFile(const std::string& path, const std::string& bytes, int depth, bool directivesOnly, Where from) {
        const int file = AddFile(path, bytes.size(), from);
        std::string text = StripComments(DecodeText(bytes));

        // A file wholly inside `#ifndef NAME` ... `#endif` (nothing but blank lines around)
        // reads as nothing while NAME is defined, so including it again then is skipped
        // unread, as C preprocessors do: a framework header included from every header of
        // a fan-out costs its lines once instead of once per inclusion.
        std::string guard;
        enum class Guard { None, Open, Closed, Broken } guardState = Guard::None;
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
            std::string line = kernel::Trim(raw);
            const bool directive = !line.empty() && line[0] == '#';
            // Only the first line and those at the guard's own level need their directive's
            // name here; the lines inside are not split twice.
            const bool guardLevel = guardState == Guard::None || (guardState == Guard::Open && conditions.size() == 1);
            if (!line.empty() && guardState == Guard::Closed) {
                guardState = Guard::Broken;  // something after the #endif
            } else if (!line.empty() && guardLevel) {
                const auto [name, arg] = directive ? Split(line) : std::pair<std::string, std::string>{};
                if (guardState == Guard::None && name == "ifndef" && !FirstWord(arg).empty()) {
                    guard = FirstWord(arg);
                    guardState = Guard::Open;
                } else if (guardState == Guard::None || name == "else" || name == "elif") {
                    guardState = Guard::Broken;  // something before it, or a branch taken when NAME is defined
                }
            }
            bool active = conditions.empty() || conditions.back().active;
            if (directive) {
                Directive(line, where, conditions, active, depth, path);
                if (guardState == Guard::Open && conditions.empty()) guardState = Guard::Closed;
            } else if (active && !directivesOnly && !line.empty()) {
                if (out_.lines.size() >= kMaxLines)
                    Fail(where, "more than " + std::to_string(kMaxLines) + " resource lines");
                out_.lines.push_back(SourceLine{where, line});
            }
        }
        if (!conditions.empty()) Fail(conditions.back().where, "#if without #endif");
        if (guardState == Guard::Closed) guards_[path] = guard;
    }

    void Directive(const std::string& line, Where where, std::vector<Condition>& conditions, bool active, int depth,
                   const std::string& path) {
        const auto [name, arg] = Split(line);
        if (name != "define" && name != "endif" && !(name == "ifndef" && conditions.empty())) plainDefinitions_ = false;

        if (name == "ifdef" || name == "ifndef") {
            bool defined = out_.macros.count(FirstWord(arg)) != 0;
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
            out_.macros.erase(FirstWord(arg));
            cache_.Forget();
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
        auto v = EvaluateExpression(text, out_.macros, &error, &cache_);
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
        m.body = kernel::Trim(rest);
        out_.macros[name] = m;
        cache_.Forget();
    }

    void Include(const std::string& arg, Where where, int depth, const std::string& path) {
        if (arg.size() < 2 || !((arg[0] == '"' && arg.find('"', 1) != std::string::npos) ||
                                (arg[0] == '<' && arg.find('>', 1) != std::string::npos)))
            Fail(where, "#include needs \"file\" or <file>");
        bool system = arg[0] == '<';
        std::string name = arg.substr(1, arg.find(system ? '>' : '"', 1) - 1);
        if (depth + 1 > kMaxIncludeDepth) Fail(where, "#include nested too deeply (a cycle?)");
        std::string here = JoinPath(DirectoryOf(path), name);
        std::string top = JoinPath(DirectoryOf(out_.files[0]), name);
        std::string found;
        std::optional<std::string> bytes;
        for (const std::string& candidate : {here, top}) {
            if (!found.empty()) break;
            if ((bytes = reader_(candidate))) found = candidate;
        }
        if (found.empty()) {
            // The platform's own headers are not needed to read resources.
            if (system || IsFrameworkHeader(name)) return;
            Fail(where, "cannot open include file '" + name + "'");
        }
        if (auto g = guards_.find(found); g != guards_.end() && out_.macros.count(g->second)) {
            AddFile(found, bytes->size(), where);  // still counts: fan-outs end at the same budget
            return;
        }
        if (const HeaderRead& platform = PlatformHeaderRead(); platform.usable && *bytes == platform.text) {
            // As reading it would: its definitions in order, once, unless its guard is defined.
            AddFile(found, bytes->size(), where);
            if (!out_.macros.count(platform.guard)) {
                for (const auto& [macro, definition] : platform.macros) out_.macros[macro] = definition;
                cache_.Forget();
            }
            guards_[found] = platform.guard;
            return;
        }
        size_t dot = found.rfind('.');
        std::string ext = kernel::Upper(found.substr(dot == std::string::npos ? found.size() : dot));
        ProcessFile(found, *bytes, depth + 1, ext == ".H" || ext == ".C", where);
    }

    // The platform's framework header (platform_headers.h) read once per process: every
    // script includes it, and its seven hundred lines were most of what a small script cost
    // to load. Usable when the text is one guard around plain definitions, so that what it
    // does depends on nothing but whether its guard is defined.
    struct HeaderRead {
        std::string text;
        std::string guard;
        MacroTable macros;
        bool usable = false;
    };
    static const HeaderRead& PlatformHeaderRead() {
        static const HeaderRead read = [] {
            HeaderRead r;
            r.text = PlatformHeader("afxres.h").value_or(std::string());
            const FileReader reader = [&r](const std::string&) { return std::optional<std::string>(r.text); };
            Preprocessor bare(reader, false);
            try {
                bare.Run("afxres.h");
            } catch (const ScriptError&) {
                return r;
            }
            if (bare.guards_.size() != 1 || !bare.plainDefinitions_) return r;
            r.guard = bare.guards_.begin()->second;
            r.macros = std::move(bare.out_.macros);
            r.usable = true;
            return r;
        }();
        return read;
    }

    static bool IsFrameworkHeader(std::string name) {
        for (char& c : name)
            if (c == '\\') c = '/';
        name = kernel::Upper(name.substr(name.rfind('/') == std::string::npos ? 0 : name.rfind('/') + 1));
        static const std::set<std::string> kKnown = {
            "AFXRES.H",  "AFXRES.RC", "WINRES.H",  "WINRESRC.H", "WINDOWS.H", "WINVER.H",   "COMMCTRL.H",
            "AYGSHELL.H", "NEWRES.H", "WCERES.RC", "WINUSER.H",  "WINNT.H",   "DLGS.H",     "RICHEDIT.H",
            "PRSHT.H",   "ATLRES.H",  "AFXPRINT.RC", "AFXOLECL.RC", "AFXOLESV.RC", "AFXDB.RC", "WINUSER.RH"};
        return kKnown.count(name) != 0;
    }

    [[noreturn]] void Fail(Where where, const std::string& message) const { rc::Fail(out_.files, where, message); }

    const FileReader& reader_;
    Preprocessed out_;
    ExpressionCache cache_;
    size_t totalBytes_ = 0;
    std::map<std::string, std::string> guards_;  // a file read whole inside #ifndef NAME: NAME
    bool plainDefinitions_ = true;  // no directive but #define and the outermost #ifndef / #endif so far
};

}  // namespace

Preprocessed Preprocess(const std::string& path, const FileReader& reader) {
    Preprocessor pp(reader);
    pp.Run(path);
    return pp.Take();
}

}  // namespace zel::detail::rc
