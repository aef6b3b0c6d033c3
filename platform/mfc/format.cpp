#include "mfc/format.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>

#include "kernel/utf.h"

namespace zel::mfc {

namespace {

enum class Width { kDefault, kChar, kShort, k32, k64 };

struct Spec {
    std::string flags;
    int width = -1;
    int precision = -1;
    Width size = Width::kDefault;
    bool narrow = false;  // h on a string or character
    bool wide = false;    // l or w on a string or character
    wchar_t conv = 0;
};

class Formatter {
public:
    Formatter(const wchar_t* format, va_list* args) : f_(format), args_(args) {}

    std::wstring Run() {
        while (*f_) {
            if (*f_ != L'%') {
                out_.push_back(*f_++);
                continue;
            }
            const wchar_t* start = f_++;
            if (*f_ == L'%') {
                out_.push_back(L'%');
                ++f_;
                continue;
            }
            Spec spec;
            if (!Parse(spec)) {
                out_.append(start, f_);  // copied as written
                continue;
            }
            Convert(spec, start);
        }
        return std::move(out_);
    }

private:
    bool Parse(Spec& spec) {
        while (*f_ && std::wcschr(L"-+ #0", *f_)) spec.flags.push_back(static_cast<char>(*f_++));
        if (*f_ == L'*') {
            ++f_;
            spec.width = va_arg(*args_, int);
            if (spec.width < 0) {
                spec.flags.push_back('-');
                spec.width = -spec.width;
            }
        } else {
            spec.width = ReadNumber(-1);
        }
        if (*f_ == L'.') {
            ++f_;
            if (*f_ == L'*') {
                ++f_;
                spec.precision = va_arg(*args_, int);
                if (spec.precision < 0) spec.precision = -1;
            } else {
                spec.precision = ReadNumber(0);
            }
        }
        ParseSize(spec);
        if (!*f_) return false;
        spec.conv = *f_++;
        return true;
    }

    void ParseSize(Spec& spec) {
        if (f_[0] == L'h' && f_[1] == L'h') {
            spec.size = Width::kChar, f_ += 2;
        } else if (f_[0] == L'h') {
            spec.size = Width::kShort, spec.narrow = true, ++f_;
        } else if (f_[0] == L'l' && f_[1] == L'l') {
            spec.size = Width::k64, f_ += 2;
        } else if (f_[0] == L'l' || f_[0] == L'w') {
            spec.size = Width::k32, spec.wide = true, ++f_;
        } else if (f_[0] == L'I' && f_[1] == L'6' && f_[2] == L'4') {
            spec.size = Width::k64, f_ += 3;
        } else if (f_[0] == L'I' && f_[1] == L'3' && f_[2] == L'2') {
            spec.size = Width::k32, f_ += 3;
        } else if (f_[0] == L'I' || f_[0] == L'z' || f_[0] == L'j' || f_[0] == L't' || f_[0] == L'q') {
            spec.size = Width::k64, ++f_;
        } else if (f_[0] == L'L') {
            ++f_;  // long double is double here, as on the device
        }
    }

    int ReadNumber(int none) {
        if (*f_ < L'0' || *f_ > L'9') return none;
        long n = 0;
        while (*f_ >= L'0' && *f_ <= L'9') {
            if (n < 100000) n = n * 10 + (*f_ - L'0');
            ++f_;
        }
        return static_cast<int>(n);
    }

    void Convert(const Spec& spec, const wchar_t* start) {
        switch (spec.conv) {
            case L'd':
            case L'i':
                return Integer(spec, true);
            case L'u':
            case L'o':
            case L'x':
            case L'X':
                return Integer(spec, false);
            case L'c':
            case L'C':
                return Character(spec);
            case L's':
            case L'S':
                return String(spec);
            case L'p':
                return Pointer(spec);
            case L'e':
            case L'E':
            case L'f':
            case L'F':
            case L'g':
            case L'G':
            case L'a':
            case L'A':
                return Floating(spec);
            case L'n':
                (void)va_arg(*args_, void*);  // never written through
                return;
            default:
                out_.append(start, f_);
        }
    }

    std::string NarrowSpec(const Spec& spec, const char* length, char conv) const {
        std::string s = "%" + spec.flags;
        if (spec.width >= 0) s += std::to_string(spec.width);
        if (spec.precision >= 0) s += "." + std::to_string(spec.precision);
        return s + length + conv;
    }

    void AppendPrintf(const std::string& spec, auto value) {
        char buf[512];
        int n = std::snprintf(buf, sizeof buf, spec.c_str(), value);
        if (n < 0) return;
        if (static_cast<size_t>(n) < sizeof buf) {
            out_.append(buf, buf + n);
            return;
        }
        std::string big(static_cast<size_t>(n) + 1, '\0');
        std::snprintf(big.data(), big.size(), spec.c_str(), value);
        out_.append(big.begin(), big.begin() + n);
    }

    void Integer(const Spec& spec, bool isSigned) {
        char conv = static_cast<char>(spec.conv);
        if (isSigned) {
            long long v;
            switch (spec.size) {
                case Width::kChar: v = static_cast<signed char>(va_arg(*args_, int)); break;
                case Width::kShort: v = static_cast<short>(va_arg(*args_, int)); break;
                case Width::k64: v = va_arg(*args_, long long); break;
                default: v = va_arg(*args_, int); break;
            }
            AppendPrintf(NarrowSpec(spec, "ll", conv), v);
        } else {
            unsigned long long v;
            switch (spec.size) {
                case Width::kChar: v = static_cast<unsigned char>(va_arg(*args_, unsigned)); break;
                case Width::kShort: v = static_cast<unsigned short>(va_arg(*args_, unsigned)); break;
                case Width::k64: v = va_arg(*args_, unsigned long long); break;
                default: v = va_arg(*args_, unsigned); break;
            }
            AppendPrintf(NarrowSpec(spec, "ll", conv), v);
        }
    }

    void Floating(const Spec& spec) {
        double v = va_arg(*args_, double);
        AppendPrintf(NarrowSpec(spec, "", static_cast<char>(spec.conv)), v);
    }

    void Pointer(const Spec& spec) {
        void* p = va_arg(*args_, void*);
        char digits[2 * sizeof(void*) + 1];
        std::snprintf(digits, sizeof digits, "%016llX", static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(p)));
        Pad(spec, std::wstring(digits, digits + 2 * sizeof(void*)));
    }

    bool WantsNarrow(const Spec& spec) const {
        bool upper = spec.conv == L'S' || spec.conv == L'C';
        if (spec.narrow) return true;
        if (spec.wide) return false;
        return upper;
    }

    void Character(const Spec& spec) {
        int v = va_arg(*args_, int);
        wchar_t ch = WantsNarrow(spec) ? static_cast<wchar_t>(static_cast<unsigned char>(v)) : static_cast<wchar_t>(v);
        Pad(spec, std::wstring(1, ch));
    }

    void String(const Spec& spec) {
        std::wstring text;
        if (WantsNarrow(spec)) {
            const char* s = va_arg(*args_, const char*);
            if (s) {
                size_t n = spec.precision >= 0 ? strnlen(s, static_cast<size_t>(spec.precision)) : std::strlen(s);
                text = kernel::Utf8ToWide(std::string_view(s, n));
            } else {
                text = L"(null)";
            }
        } else {
            const wchar_t* s = va_arg(*args_, const wchar_t*);
            if (!s) {
                text = L"(null)";
            } else if (spec.precision >= 0) {
                text.assign(s, wcsnlen(s, static_cast<size_t>(spec.precision)));
            } else {
                text = s;
            }
        }
        if (spec.precision >= 0 && text.size() > static_cast<size_t>(spec.precision)) text.resize(spec.precision);
        Pad(spec, text);
    }

    void Pad(const Spec& spec, const std::wstring& text) {
        size_t width = spec.width > 0 ? static_cast<size_t>(spec.width) : 0;
        size_t fill = width > text.size() ? width - text.size() : 0;
        bool left = spec.flags.find('-') != std::string::npos;
        if (!left) out_.append(fill, L' ');
        out_ += text;
        if (left) out_.append(fill, L' ');
    }

    const wchar_t* f_;
    va_list* args_;
    std::wstring out_;
};

}  // namespace

std::wstring FormatWide(const wchar_t* format, va_list args) {
    if (!format) return {};
    va_list copy;
    va_copy(copy, args);
    std::wstring out = Formatter(format, &copy).Run();
    va_end(copy);
    return out;
}

}  // namespace zel::mfc
