#include "kernel/rc/parser.h"

#include <map>
#include <set>
#include <utility>

#include "kernel/strings.h"
#include "kernel/utf.h"

namespace zel::detail::rc {

namespace {

class StatementParser {
public:
    StatementParser(std::vector<Token> tokens, const Preprocessed& source, std::string baseDir)
        : tokens_(std::move(tokens)), source_(source), baseDir_(std::move(baseDir)) {}

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
        if (AtEnd()) Fail(after.where, "unexpected end of file: " + what);
        return tokens_[pos_++];
    }
    static bool IsWord(const Token& t, const char* word) {
        return t.kind == Token::kIdent && kernel::Upper(t.text) == word;
    }
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
            Fail(first.where, "unexpected '" + first.text + "' where a resource statement should start");

        Name name = ReadName(first);
        const Token& type = Next(first, "a resource type after '" + name.display + "'");
        std::string typeName = type.kind == Token::kNumber ? type.text : kernel::Upper(type.text);
        std::string what = name.display + " " + typeName;
        if (type.kind != Token::kIdent && type.kind != Token::kNumber)
            Fail(type.where, "'" + type.text + "' is not a resource type");
        SkipMemoryOptions();

        bool bitmap = typeName == "BITMAP" || typeName == "2";  // RT_BITMAP
        if (bitmap) {
            if (AtEnd() || tokens_[pos_].kind != Token::kString)
                Fail(type.where, what + ": expected a quoted file name");
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
            Fail(type.where, what + ": expected a file name or a BEGIN block");
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
            auto it = source_.macros.find(t.text);
            if (it != source_.macros.end() && !it->second.functionLike) expression = it->second.body;
        }
        if (expression.empty()) {
            n.text = kernel::Utf8ToWide(kernel::Upper(t.text));
            return n;
        }
        std::string error;
        auto v = EvaluateExpression(expression, source_.macros, &error, &cache_);
        if (!v) Fail(t.where, "resource name '" + n.display + "': " + error);
        n.numeric = true;
        n.id = static_cast<unsigned>(*v) & 0xFFFF;  // resource identifiers are 16 bits
        return n;
    }

    void SkipMemoryOptions() {
        static const std::set<std::string> kOptions = {"PRELOAD", "LOADONCALL", "FIXED",  "MOVEABLE", "DISCARDABLE",
                                                       "PURE",    "IMPURE",     "SHARED", "NONSHARED"};
        while (!AtEnd() && tokens_[pos_].kind == Token::kIdent && kOptions.count(kernel::Upper(tokens_[pos_].text)))
            ++pos_;
    }

    void SkipToBlock(const Token& from, const std::string& what) {
        while (!AtEnd() && !Opens(tokens_[pos_])) ++pos_;
        if (AtEnd()) Fail(from.where, what + ": missing BEGIN");
        Where opened = tokens_[pos_++].where;
        for (int depth = 1; depth > 0;) {
            if (AtEnd()) Fail(opened, what + ": BEGIN without END");
            const Token& t = tokens_[pos_++];
            if (Opens(t)) ++depth;
            if (Closes(t)) --depth;
        }
    }

    void AddBitmap(const Name& name, const Token& file) {
        if (file.text.empty()) Fail(file.where, name.display + " BITMAP: empty file name");
        std::string key = name.numeric ? "#" + std::to_string(name.id) : kernel::WideToUtf8(name.text);
        auto [it, fresh] = seen_.emplace(key, Seen{language_, file.where});
        if (!fresh) {
            if (it->second.language == language_)
                Fail(file.where, "duplicate BITMAP resource " + name.display);
            return;  // another language's copy: the first one stays
        }
        std::string path = JoinPath(baseDir_, file.text);
        if (name.numeric) {
            script_.bitmapsById[name.id] = path;
        } else {
            script_.bitmapsByName[name.text] = path;
        }
    }

    [[noreturn]] void Fail(Where where, const std::string& message) const { rc::Fail(source_.files, where, message); }

    std::vector<Token> tokens_;
    const Preprocessed& source_;
    std::string baseDir_;
    size_t pos_ = 0;
    std::string language_;
    std::map<std::string, Seen> seen_;
    ResourceScript script_;
    ExpressionCache cache_;  // the macro table is final here
};

}  // namespace

ResourceScript ParseStatements(std::vector<Token> tokens, const Preprocessed& source, std::string baseDir) {
    return StatementParser(std::move(tokens), source, std::move(baseDir)).Run();
}

}  // namespace zel::detail::rc
