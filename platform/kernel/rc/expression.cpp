#include "kernel/rc/expression.h"

#include <cctype>
#include <cstring>
#include <vector>

#include "kernel/rc/source.h"

namespace zel::detail::rc {

namespace {

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

class Expression {
public:
    Expression(const std::string& text, const MacroTable& macros, ExpressionCache& cache, int depth)
        : macros_(macros), cache_(cache), depth_(depth), text_(text) {}

    // The value, or an error message through *error.
    std::optional<int64_t> Evaluate(std::string* error) {
        try {
            if (depth_ > kMaxExpressionNesting) throw ScriptError{"expression nested too deeply"};
            Lex(text_);
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
            if (++cache_.tokens > kMaxExpressionTokens)
                throw ScriptError{"macros expand to more than " + std::to_string(kMaxExpressionTokens) + " tokens"};
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

    // `level` counts the nesting that grows the stack: parentheses, unary operators, ?:
    // branches (the walk through the precedence levels is a bounded factor on it).
    int64_t Conditional(int level) {
        Guard(level);
        int64_t cond = Binary(0, level);
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
        if (prec == static_cast<int>(kLevels.size())) return Unary(level);
        int64_t lhs = Binary(prec + 1, level);
        for (;;) {
            const std::string* op = Peek();
            bool found = false;
            for (const std::string& candidate : kLevels[prec])
                if (op && *op == candidate) found = true;
            if (!found) return lhs;
            std::string o = *op;
            ++pos_;
            int64_t rhs = Binary(prec + 1, level);
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
        if (auto known = cache_.values.find(name); known != cache_.values.end()) return known->second;
        std::string error;
        auto v = Expression(it->second.body, macros_, cache_, depth_ + level + 1).Evaluate(&error);
        // Only the macro the expression itself used is named: a chain of them would make
        // the line as long as the chain.
        if (!v) throw ScriptError{depth_ == 0 ? name + ": " + error : error};
        cache_.values.emplace(name, *v);
        return *v;
    }

    void Guard(int level) const {
        if (depth_ + level > kMaxExpressionNesting) throw ScriptError{"expression nested too deeply"};
    }

    const MacroTable& macros_;
    ExpressionCache& cache_;
    int depth_;
    const std::string& text_;
    std::vector<std::string> tokens_;
    size_t pos_ = 0;
};

}  // namespace

std::optional<int64_t> EvaluateExpression(const std::string& text, const MacroTable& macros, std::string* error,
                                          ExpressionCache* cache) {
    ExpressionCache own;
    return Expression(text, macros, cache ? *cache : own, 0).Evaluate(error);
}

}  // namespace zel::detail::rc
