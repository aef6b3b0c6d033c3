#include "kernel/rc/dialog.h"

#include <windows.h>

#include <cctype>
#include <optional>
#include <utility>

#include "kernel/rc/expression.h"
#include "kernel/strings.h"
#include "kernel/utf.h"

namespace zel::detail::rc {

namespace {

// A control statement's kind: its class, the styles the resource compiler gives it on top
// of WS_CHILD | WS_VISIBLE, and whether it starts with a text.
struct ControlKind {
    const char* keyword;
    const wchar_t* className;
    uint32_t style;
    bool hasText;
};

constexpr ControlKind kControlKinds[] = {
    {"LTEXT", L"Static", SS_LEFT | WS_GROUP, true},
    {"RTEXT", L"Static", SS_RIGHT | WS_GROUP, true},
    {"CTEXT", L"Static", SS_CENTER | WS_GROUP, true},
    {"ICON", L"Static", SS_ICON, true},
    {"PUSHBUTTON", L"Button", BS_PUSHBUTTON | WS_TABSTOP, true},
    {"DEFPUSHBUTTON", L"Button", BS_DEFPUSHBUTTON | WS_TABSTOP, true},
    {"PUSHBOX", L"Button", BS_PUSHBOX | WS_TABSTOP, true},
    {"CHECKBOX", L"Button", BS_CHECKBOX | WS_TABSTOP, true},
    {"AUTOCHECKBOX", L"Button", BS_AUTOCHECKBOX | WS_TABSTOP, true},
    {"RADIOBUTTON", L"Button", BS_RADIOBUTTON | WS_TABSTOP, true},
    {"AUTORADIOBUTTON", L"Button", BS_AUTORADIOBUTTON | WS_TABSTOP, true},
    {"STATE3", L"Button", BS_3STATE | WS_TABSTOP, true},
    {"AUTO3STATE", L"Button", BS_AUTO3STATE | WS_TABSTOP, true},
    {"GROUPBOX", L"Button", BS_GROUPBOX, true},
    {"EDITTEXT", L"Edit", ES_LEFT | WS_BORDER | WS_TABSTOP, false},
    {"LISTBOX", L"ListBox", LBS_NOTIFY | WS_BORDER, false},
    {"COMBOBOX", L"ComboBox", CBS_SIMPLE | WS_TABSTOP, false},
    {"SCROLLBAR", L"ScrollBar", SBS_HORZ, false},
};

// The predefined classes a CONTROL statement may name without quotes.
constexpr const wchar_t* kClassKeywords[] = {L"Button", L"Edit", L"Static", L"ListBox", L"ScrollBar", L"ComboBox"};

constexpr uint32_t kDefaultDialogStyle = WS_POPUP | WS_BORDER | WS_SYSMENU;

bool IsWord(const Token& t, const char* word) { return t.kind == Token::kIdent && kernel::Upper(t.text) == word; }
bool IsPunct(const Token& t, const char* p) { return t.kind == Token::kPunct && t.text == p; }
bool Opens(const Token& t) { return IsWord(t, "BEGIN") || IsPunct(t, "{"); }
bool Closes(const Token& t) { return IsWord(t, "END") || IsPunct(t, "}"); }

bool IsBinaryOperator(const Token& t) {
    if (t.kind != Token::kPunct) return false;
    static const std::string kOps = "|&+-*/%^<>";
    return kOps.find(t.text[0]) != std::string::npos;
}

class Reader {
public:
    explicit Reader(TokenCursor in) : in_(in) {}

    bool AtEnd() const { return in_.pos >= in_.tokens.size(); }
    const Token& Peek() const { return in_.tokens[in_.pos]; }
    const Token& Last() const { return in_.tokens[in_.pos > 0 ? in_.pos - 1 : 0]; }
    const Token& Next(const std::string& what) {
        if (AtEnd()) Fail(Last().where, "unexpected end of file: expected " + what);
        return in_.tokens[in_.pos++];
    }
    bool PeekIs(const char* punct) const { return !AtEnd() && IsPunct(Peek(), punct); }
    bool Accept(const char* punct) {
        if (!PeekIs(punct)) return false;
        ++in_.pos;
        return true;
    }
    void Expect(const char* punct, const std::string& what) {
        if (AtEnd()) Fail(Last().where, "unexpected end of file: expected '" + std::string(punct) + "' " + what);
        if (!Accept(punct))
            Fail(Peek().where, "expected '" + std::string(punct) + "' " + what + ", found '" + Peek().text + "'");
    }

    // An integer field: C operators over numbers and #defined names, with the resource
    // compiler's "NOT x" clearing bits. Terms joined by '|' are applied in order to
    // `initial` (so "NOT WS_TABSTOP" takes a default style away).
    uint32_t Value(const std::string& what, uint32_t initial = 0) {
        uint32_t value = initial;
        bool first = true;
        do {
            bool negate = false;
            if (!AtEnd() && IsWord(Peek(), "NOT")) {
                negate = true;
                ++in_.pos;
            }
            std::string text = Term(what);
            std::string error;
            std::optional<int64_t> v = EvaluateExpression(text, in_.source.macros, &error, in_.cache);
            if (!v) Fail(Last().where, what + ": " + error);
            uint32_t bits = static_cast<uint32_t>(*v);
            if (negate) {
                value &= ~bits;
            } else if (first && initial == 0) {
                value = bits;
            } else {
                value |= bits;
            }
            first = false;
        } while (Accept("|"));
        return value;
    }

    int Number(const std::string& what) { return static_cast<int>(static_cast<int32_t>(Value(what))); }

    std::wstring Text(const std::string& what) {
        const Token& t = Next(what);
        if (t.kind != Token::kString) Fail(t.where, "expected " + what + " in quotes, found '" + t.text + "'");
        return UnescapeText(t.raw);
    }

    const MacroTable& Macros() const { return in_.source.macros; }
    void Back() { --in_.pos; }
    void SkipLine(const Token& from) {
        while (!AtEnd() && Peek().where.file == from.where.file && Peek().where.line == from.where.line) ++in_.pos;
    }

    [[noreturn]] void Fail(Where where, const std::string& message) const { rc::Fail(in_.source.files, where, message); }

private:
    // One operand chain without a top-level '|': operands joined by the other binary
    // operators. Every name must be #defined: the resource compiler has no implicit zero.
    std::string Term(const std::string& what) {
        std::string text;
        for (;;) {
            Operand(what, text);
            if (AtEnd() || !IsBinaryOperator(Peek()) || IsPunct(Peek(), "|")) break;
            text += Next(what).text;
            if (!AtEnd() && (IsPunct(Peek(), "<") || IsPunct(Peek(), ">"))) text += Next(what).text;  // << >>
            text += ' ';
        }
        return text;
    }

    void Operand(const std::string& what, std::string& text) {
        const Token& t = Next(what);
        // Unary operators and parentheses recurse; a hostile script must not exhaust the stack.
        if (++depth_ > kMaxNesting) Fail(t.where, what + ": expression nested too deeply");
        struct Leave {
            int& d;
            ~Leave() { --d; }
        } leave{depth_};
        if (t.kind == Token::kNumber) {
            text += t.text + ' ';
        } else if (t.kind == Token::kIdent) {
            if (!in_.source.macros.count(t.text)) Fail(t.where, what + ": undefined name '" + t.text + "'");
            text += t.text + ' ';
        } else if (IsPunct(t, "-") || IsPunct(t, "~") || IsPunct(t, "!") || IsPunct(t, "+")) {
            text += t.text;
            Operand(what, text);
        } else if (IsPunct(t, "(")) {
            text += "( ";
            std::string inner = Term(what);
            while (Accept("|")) inner += "| " + Term(what);
            text += inner;
            Expect(")", "to close '(' in " + what);
            text += ") ";
        } else {
            Fail(t.where, "expected " + what + ", found '" + t.text + "'");
        }
    }

    static constexpr int kMaxNesting = 64;
    TokenCursor in_;
    int depth_ = 0;
};

class DialogReader {
public:
    DialogReader(TokenCursor in, const Token& type, std::string what, bool extended)
        : r_(in), type_(type), what_(std::move(what)) {
        dlg_.extended = extended;
    }

    DialogTemplate Run() {
        dlg_.x = r_.Number("the dialog's x");
        r_.Expect(",", "after the dialog's x");
        dlg_.y = r_.Number("the dialog's y");
        r_.Expect(",", "after the dialog's y");
        dlg_.cx = r_.Number("the dialog's width");
        r_.Expect(",", "after the dialog's width");
        dlg_.cy = r_.Number("the dialog's height");
        if (dlg_.extended && r_.Accept(",")) dlg_.helpId = r_.Value("the dialog's help identifier");
        Options();
        if (r_.AtEnd()) r_.Fail(type_.where, what_ + ": missing BEGIN");
        Where opened = r_.Next("BEGIN").where;
        for (;;) {
            if (r_.AtEnd()) r_.Fail(opened, what_ + ": BEGIN without END");
            if (Closes(r_.Peek())) break;
            Control();
        }
        r_.Next("END");
        if (!styleGiven_) dlg_.style = kDefaultDialogStyle;
        if (captionGiven_) dlg_.style |= WS_CAPTION;
        if (dlg_.hasFont) dlg_.style |= DS_SETFONT;
        return std::move(dlg_);
    }

private:
    void Options() {
        while (!r_.AtEnd() && !Opens(r_.Peek())) {
            const Token& t = r_.Next("a dialog option");
            if (IsWord(t, "STYLE")) {
                dlg_.style = r_.Value("STYLE");
                styleGiven_ = true;
            } else if (IsWord(t, "EXSTYLE")) {
                dlg_.exStyle = r_.Value("EXSTYLE");
            } else if (IsWord(t, "CAPTION")) {
                dlg_.caption = r_.Text("the caption");
                captionGiven_ = true;
            } else if (IsWord(t, "CLASS")) {
                dlg_.className = NameOrText("the dialog class");
            } else if (IsWord(t, "MENU")) {
                dlg_.menu = NameOrText("the menu name");
            } else if (IsWord(t, "FONT")) {
                Font();
            } else if (IsWord(t, "LANGUAGE")) {
                r_.SkipLine(t);  // the script's LANGUAGE line decides; this one names the same
            } else if (IsWord(t, "VERSION") || IsWord(t, "CHARACTERISTICS")) {
                r_.Value(kernel::Upper(t.text));
            } else {
                r_.Fail(t.where, "expected a dialog option or BEGIN, found '" + t.text + "'");
            }
        }
    }

    void Font() {
        dlg_.hasFont = true;
        dlg_.pointSize = r_.Number("the font's point size");
        r_.Expect(",", "after the font's point size");
        dlg_.typeface = r_.Text("the font's typeface");
        if (!dlg_.extended) return;
        dlg_.weight = dlg_.italic = 0;
        dlg_.charset = DEFAULT_CHARSET;
        if (r_.Accept(",")) dlg_.weight = r_.Number("the font's weight");
        if (r_.Accept(",")) dlg_.italic = r_.Number("the font's italic flag") != 0;
        if (r_.Accept(",")) dlg_.charset = r_.Number("the font's character set") & 0xFF;
    }

    // A menu or class: a quoted name, a name that is not #defined, or a number.
    std::wstring NameOrText(const std::string& what) {
        const Token& t = r_.Next(what);
        if (t.kind == Token::kString) return UnescapeText(t.raw);
        if (t.kind == Token::kIdent && !r_.Macros().count(t.text)) return kernel::Utf8ToWide(kernel::Upper(t.text));
        r_.Back();
        return L"#" + std::to_wstring(r_.Value(what) & 0xFFFF);
    }

    void Control() {
        const Token& keyword = r_.Next("a control statement");
        if (keyword.kind != Token::kIdent)
            r_.Fail(keyword.where, "expected a control statement, found '" + keyword.text + "'");
        std::string upper = kernel::Upper(keyword.text);
        DialogItem item;
        if (upper == "CONTROL") {
            GenericControl(item);
        } else {
            const ControlKind* kind = nullptr;
            for (const ControlKind& k : kControlKinds)
                if (upper == k.keyword) kind = &k;
            if (!kind) r_.Fail(keyword.where, "unknown control statement '" + keyword.text + "'");
            KnownControl(*kind, item);
        }
        dlg_.items.push_back(std::move(item));
    }

    // A quoted text, or an icon or bitmap named by identifier (an undefined name is a
    // resource name).
    void ItemText(DialogItem& item) {
        const Token& t = r_.Next("the control's text");
        if (t.kind == Token::kString) {
            item.text = UnescapeText(t.raw);
        } else if (t.kind == Token::kIdent && !r_.Macros().count(t.text)) {
            item.text = kernel::Utf8ToWide(kernel::Upper(t.text));
        } else {
            r_.Back();
            item.textIsId = true;
            item.textId = r_.Value("the control's text") & 0xFFFF;
        }
        r_.Expect(",", "after the control's text");
    }

    void Rectangle(DialogItem& item, bool sizeOptional) {
        item.x = r_.Number("the control's x");
        r_.Expect(",", "after the control's x");
        item.y = r_.Number("the control's y");
        if (sizeOptional && !r_.PeekIs(",")) return;
        r_.Expect(",", "after the control's y");
        item.cx = r_.Number("the control's width");
        r_.Expect(",", "after the control's width");
        item.cy = r_.Number("the control's height");
    }

    void Trailer(DialogItem& item) {
        if (r_.Accept(",")) item.exStyle = r_.Value("the control's extended style");
        if (dlg_.extended && r_.Accept(",")) item.helpId = r_.Value("the control's help identifier");
    }

    void KnownControl(const ControlKind& kind, DialogItem& item) {
        item.className = kind.className;
        if (kind.hasText) ItemText(item);
        item.id = r_.Number("the control's identifier");
        r_.Expect(",", "after the control's identifier");
        bool icon = kind.style == SS_ICON;
        Rectangle(item, icon);
        item.style = WS_CHILD | WS_VISIBLE | kind.style;
        if (r_.Accept(",")) item.style = r_.Value("the control's style", item.style);
        Trailer(item);
    }

    void GenericControl(DialogItem& item) {
        ItemText(item);
        item.id = r_.Number("the control's identifier");
        r_.Expect(",", "after the control's identifier");
        const Token& cls = r_.Next("the control's class");
        if (cls.kind == Token::kString) {
            item.className = UnescapeText(cls.raw);
        } else {
            for (const wchar_t* k : kClassKeywords)
                if (kernel::Upper(cls.text) == kernel::Upper(kernel::WideToUtf8(k))) item.className = k;
            if (item.className.empty()) r_.Fail(cls.where, "expected the control's class, found '" + cls.text + "'");
        }
        r_.Expect(",", "after the control's class");
        item.style = r_.Value("the control's style", WS_CHILD | WS_VISIBLE);
        r_.Expect(",", "after the control's style");
        Rectangle(item, false);
        Trailer(item);
    }

    Reader r_;
    const Token& type_;
    std::string what_;
    DialogTemplate dlg_;
    bool styleGiven_ = false, captionGiven_ = false;
};

}  // namespace

DialogTemplate ReadDialog(TokenCursor in, const Token& type, const std::string& what, bool extended) {
    return DialogReader(in, type, what, extended).Run();
}

void ReadStringTable(TokenCursor in, const Token& keyword, std::map<unsigned, std::wstring>& strings) {
    Reader r(in);
    while (!r.AtEnd() && !Opens(r.Peek())) {
        const Token& t = r.Next("BEGIN");
        if (IsWord(t, "LANGUAGE")) {
            r.SkipLine(t);
        } else if (IsWord(t, "VERSION") || IsWord(t, "CHARACTERISTICS")) {
            r.Value(kernel::Upper(t.text));
        } else if (!IsWord(t, "DISCARDABLE") && !IsWord(t, "PRELOAD") && !IsWord(t, "LOADONCALL") &&
                   !IsWord(t, "MOVEABLE") && !IsWord(t, "PURE") && !IsWord(t, "IMPURE") && !IsWord(t, "FIXED")) {
            r.Fail(t.where, "STRINGTABLE: expected BEGIN, found '" + t.text + "'");
        }
    }
    if (r.AtEnd()) r.Fail(keyword.where, "STRINGTABLE: missing BEGIN");
    Where opened = r.Next("BEGIN").where;
    for (;;) {
        if (r.AtEnd()) r.Fail(opened, "STRINGTABLE: BEGIN without END");
        if (Closes(r.Peek())) break;
        Where at = r.Peek().where;
        unsigned id = r.Value("a string identifier") & 0xFFFF;
        r.Accept(",");
        std::wstring text = r.Text("the string");
        if (!strings.emplace(id, std::move(text)).second)
            r.Fail(at, "STRINGTABLE: duplicate string identifier " + std::to_string(id));
    }
    r.Next("END");
}

std::wstring UnescapeText(const std::string& raw) {
    std::string out;
    for (size_t i = 0; i < raw.size(); ++i) {
        char c = raw[i];
        if (c == '"' && i + 1 < raw.size() && raw[i + 1] == '"') {
            out += '"';
            ++i;
            continue;
        }
        if (c != '\\' || i + 1 >= raw.size()) {
            out += c;
            continue;
        }
        char e = raw[++i];
        switch (e) {
            case 'n': out += '\n'; break;
            case 't': out += '\t'; break;
            case 'r': out += '\r'; break;
            case 'a': out += '\b'; break;  // the resource compiler's \a is a backspace (right-alignment mark)
            case '\\': out += '\\'; break;
            case '"': out += '"'; break;
            case 'x':
            case 'X': {
                unsigned v = 0;
                int n = 0;
                while (n < 4 && i + 1 < raw.size() && std::isxdigit(static_cast<unsigned char>(raw[i + 1]))) {
                    char h = raw[++i];
                    v = v * 16 + static_cast<unsigned>(std::isdigit(static_cast<unsigned char>(h)) ? h - '0'
                                                                                              : (h | 0x20) - 'a' + 10);
                    ++n;
                }
                out += kernel::WideToUtf8(std::wstring(1, static_cast<wchar_t>(v)));
                break;
            }
            default:
                if (e >= '0' && e <= '7') {
                    unsigned v = static_cast<unsigned>(e - '0');
                    for (int n = 1; n < 3 && i + 1 < raw.size() && raw[i + 1] >= '0' && raw[i + 1] <= '7'; ++n)
                        v = v * 8 + static_cast<unsigned>(raw[++i] - '0');
                    out += kernel::WideToUtf8(std::wstring(1, static_cast<wchar_t>(v)));
                } else {
                    out += '\\';
                    out += e;
                }
        }
    }
    return kernel::Utf8ToWide(out);
}

}  // namespace zel::detail::rc
