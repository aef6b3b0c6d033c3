#include "kernel/dialog_template.h"

#include <cstring>
#include <optional>
#include <string>

#include "kernel/utf.h"

namespace zel::detail {

namespace {

constexpr uint16_t kOrdinalMark = 0xFFFF;
constexpr uint16_t kExtendedSignature = 0xFFFF;

// The predefined classes by ordinal, in Windows' order from 0x0080.
constexpr const wchar_t* kClassOrdinals[] = {L"Button", L"Edit", L"Static", L"ListBox", L"ScrollBar", L"ComboBox"};
constexpr uint16_t kFirstClassOrdinal = 0x0080;

// "#n" with n a 16-bit number names a resource or class by ordinal.
std::optional<uint16_t> Ordinal(const std::wstring& s) {
    if (s.size() < 2 || s.size() > 6 || s[0] != L'#' || (s[1] == L'0' && s.size() > 2)) return std::nullopt;
    uint32_t v = 0;
    for (size_t i = 1; i < s.size(); ++i) {
        if (s[i] < L'0' || s[i] > L'9') return std::nullopt;
        v = v * 10 + static_cast<uint32_t>(s[i] - L'0');
    }
    if (v > 0xFFFF) return std::nullopt;
    return static_cast<uint16_t>(v);
}

class Writer {
public:
    void Word(uint16_t v) { Put(&v, sizeof v); }
    void Dword(uint32_t v) { Put(&v, sizeof v); }
    void Short(int v) { Word(static_cast<uint16_t>(static_cast<int16_t>(v))); }
    void Byte(uint8_t v) { bytes_.push_back(v); }
    void Align(size_t n) {
        while (bytes_.size() % n) bytes_.push_back(0);
    }
    // A zero-terminated UTF-16 string; characters beyond the BMP take a surrogate pair.
    // The text ends at its first NUL, as a reader of the template will see it.
    void String(const std::wstring& s) {
        for (wchar_t c : s) {
            if (c == 0) break;
            auto cp = static_cast<uint32_t>(c);
            if (cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) cp = 0xFFFD;
            if (cp >= 0x10000) {
                Word(static_cast<uint16_t>(0xD800 + ((cp - 0x10000) >> 10)));
                Word(static_cast<uint16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF)));
            } else {
                Word(static_cast<uint16_t>(cp));
            }
        }
        Word(0);
    }
    // A class, menu or title: empty -> 0, "#n" or a predefined class -> ordinal, else text.
    void NameOrOrdinal(const std::wstring& s, bool classes) {
        if (s.empty() || s[0] == 0) return Word(0);
        if (classes)
            for (uint16_t i = 0; i < std::size(kClassOrdinals); ++i)
                if (s == kClassOrdinals[i]) {
                    Word(kOrdinalMark);
                    return Word(static_cast<uint16_t>(kFirstClassOrdinal + i));
                }
        if (std::optional<uint16_t> ordinal = Ordinal(s)) {
            Word(kOrdinalMark);
            return Word(*ordinal);
        }
        String(s);
    }
    std::vector<uint64_t> Take() {
        std::vector<uint64_t> out((bytes_.size() + 7) / 8);
        std::memcpy(out.data(), bytes_.data(), bytes_.size());
        return out;
    }

private:
    void Put(const void* p, size_t n) {
        auto* b = static_cast<const uint8_t*>(p);
        bytes_.insert(bytes_.end(), b, b + n);
    }
    std::vector<uint8_t> bytes_;
};

class Reader {
public:
    explicit Reader(const void* p) : base_(static_cast<const uint8_t*>(p)) {}
    uint16_t Word() { return Get<uint16_t>(); }
    uint32_t Dword() { return Get<uint32_t>(); }
    int Short() { return static_cast<int16_t>(Word()); }
    uint8_t Byte() { return base_[at_++]; }
    void Align(size_t n) { at_ = (at_ + n - 1) / n * n; }
    std::wstring String() {
        std::string utf16;
        for (uint16_t c; (c = Word()) != 0;) {
            utf16 += static_cast<char>(c & 0xFF);
            utf16 += static_cast<char>(c >> 8);
        }
        return kernel::Utf8ToWide(kernel::Utf16ToUtf8(utf16, false));
    }
    // Returns the ordinal through *ordinal when the field holds one.
    std::wstring NameOrOrdinal(bool classes, unsigned* ordinal = nullptr) {
        uint16_t first = Get<uint16_t>(false);
        if (first == 0) {
            Word();
            return {};
        }
        if (first != kOrdinalMark) return String();
        Word();
        uint16_t v = Word();
        if (ordinal) *ordinal = v;
        if (classes && v >= kFirstClassOrdinal && v < kFirstClassOrdinal + std::size(kClassOrdinals))
            return kClassOrdinals[v - kFirstClassOrdinal];
        return L"#" + std::to_wstring(v);
    }

private:
    template <class T>
    T Get(bool advance = true) {
        T v;
        std::memcpy(&v, base_ + at_, sizeof v);
        if (advance) at_ += sizeof v;
        return v;
    }
    const uint8_t* base_;
    size_t at_ = 0;
};

void EncodeItem(Writer& w, const DialogItem& item, bool extended) {
    w.Align(4);
    if (extended) {
        w.Dword(item.helpId);
        w.Dword(item.exStyle);
        w.Dword(item.style);
    } else {
        w.Dword(item.style);
        w.Dword(item.exStyle);
    }
    w.Short(item.x);
    w.Short(item.y);
    w.Short(item.cx);
    w.Short(item.cy);
    if (extended) {
        w.Dword(static_cast<uint32_t>(item.id));
    } else {
        w.Word(static_cast<uint16_t>(item.id));
    }
    w.NameOrOrdinal(item.className, true);
    if (item.textIsId) {
        w.Word(kOrdinalMark);
        w.Word(static_cast<uint16_t>(item.textId));
    } else {
        w.String(item.text);
    }
    w.Word(0);  // no creation data
}

DialogItem DecodeItem(Reader& r, bool extended) {
    DialogItem item;
    r.Align(4);
    if (extended) {
        item.helpId = r.Dword();
        item.exStyle = r.Dword();
        item.style = r.Dword();
    } else {
        item.style = r.Dword();
        item.exStyle = r.Dword();
    }
    item.x = r.Short();
    item.y = r.Short();
    item.cx = r.Short();
    item.cy = r.Short();
    item.id = extended ? static_cast<int>(static_cast<int32_t>(r.Dword())) : static_cast<int16_t>(r.Word());
    item.className = r.NameOrOrdinal(true);
    unsigned ordinal = 0;
    std::wstring text = r.NameOrOrdinal(false, &ordinal);
    if (ordinal || text.rfind(L"#", 0) == 0) {
        item.textIsId = ordinal != 0 || text == L"#0";
        item.textId = ordinal;
        if (!item.textIsId) item.text = text;
    } else {
        item.text = text;
    }
    uint16_t extra = r.Word();
    for (uint16_t i = 0; i < extra; ++i) r.Byte();  // creation data goes unused
    return item;
}

}  // namespace

std::vector<uint64_t> EncodeDialogTemplate(const DialogTemplate& d) {
    Writer w;
    if (d.extended) {
        w.Word(1);
        w.Word(kExtendedSignature);
        w.Dword(d.helpId);
        w.Dword(d.exStyle);
        w.Dword(d.style);
    } else {
        w.Dword(d.style);
        w.Dword(d.exStyle);
    }
    w.Word(static_cast<uint16_t>(d.items.size()));
    w.Short(d.x);
    w.Short(d.y);
    w.Short(d.cx);
    w.Short(d.cy);
    w.NameOrOrdinal(d.menu, false);
    w.NameOrOrdinal(d.className, false);
    w.String(d.caption);
    if (d.style & 0x40 /* DS_SETFONT */) {
        w.Word(static_cast<uint16_t>(d.pointSize));
        if (d.extended) {
            w.Word(static_cast<uint16_t>(d.weight));
            w.Byte(static_cast<uint8_t>(d.italic));
            w.Byte(static_cast<uint8_t>(d.charset));
        }
        w.String(d.typeface);
    }
    for (const DialogItem& item : d.items) EncodeItem(w, item, d.extended);
    return w.Take();
}

DialogTemplate DecodeDialogTemplate(const void* bytes) {
    Reader r(bytes);
    DialogTemplate d;
    uint16_t version = r.Word();
    uint16_t signature = r.Word();
    d.extended = version == 1 && signature == kExtendedSignature;
    if (d.extended) {
        d.helpId = r.Dword();
        d.exStyle = r.Dword();
        d.style = r.Dword();
    } else {
        d.style = static_cast<uint32_t>(version) | (static_cast<uint32_t>(signature) << 16);
        d.exStyle = r.Dword();
    }
    uint16_t count = r.Word();
    d.x = r.Short();
    d.y = r.Short();
    d.cx = r.Short();
    d.cy = r.Short();
    d.menu = r.NameOrOrdinal(false);
    d.className = r.NameOrOrdinal(false);
    d.caption = r.String();
    if (d.style & 0x40 /* DS_SETFONT */) {
        d.hasFont = true;
        d.pointSize = r.Word();
        if (d.extended) {
            d.weight = r.Word();
            d.italic = r.Byte();
            d.charset = r.Byte();
        }
        d.typeface = r.String();
    }
    for (uint16_t i = 0; i < count; ++i) d.items.push_back(DecodeItem(r, d.extended));
    return d;
}

}  // namespace zel::detail
