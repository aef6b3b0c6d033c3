#include "kernel/utf.h"

#include <cstdint>
#include <optional>

namespace zel::kernel {

namespace {

bool IsSurrogate(char32_t cp) { return cp >= 0xD800 && cp <= 0xDFFF; }

// Continuation bytes a lead byte announces, or -1 for a byte that cannot start a sequence
// (a continuation byte, or 0xF8 and above).
int ContinuationCount(unsigned char lead) {
    if ((lead >> 5) == 0x6) return 1;
    if ((lead >> 4) == 0xE) return 2;
    if ((lead >> 3) == 0x1E) return 3;
    return -1;
}

// The code point of the well-formed sequence of `extra` continuation bytes at text[i];
// nullopt when it is not one (an encoded U+FFFD is, and must consume its three bytes).
std::optional<char32_t> DecodeSequence(std::string_view text, size_t i, int extra) {
    if (extra < 0 || text.size() - i <= static_cast<size_t>(extra)) return std::nullopt;
    char32_t cp = static_cast<unsigned char>(text[i]) & (0x3F >> extra);
    for (int k = 1; k <= extra; ++k) {
        unsigned char d = static_cast<unsigned char>(text[i + static_cast<size_t>(k)]);
        if ((d & 0xC0) != 0x80) return std::nullopt;
        cp = (cp << 6) | (d & 0x3F);
    }
    // Overlong forms, surrogates and values beyond Unicode are not characters.
    static constexpr char32_t kMin[] = {0, 0x80, 0x800, 0x10000};  // by continuation count
    if (cp < kMin[extra] || cp > 0x10FFFF || IsSurrogate(cp)) return std::nullopt;
    return cp;
}

}  // namespace

std::wstring Utf8ToWide(std::string_view text) {
    // Paths and skin strings are mostly ASCII: an all-ASCII text is widened in one pass
    // (both loops are vector loops), otherwise its leading ASCII run is.
    unsigned char any = 0;
    for (char c : text) any |= static_cast<unsigned char>(c);
    size_t ascii = text.size();
    if (any >= 0x80) {
        ascii = 0;
        while (static_cast<unsigned char>(text[ascii]) < 0x80) ++ascii;
    }
    std::wstring out(ascii, L'\0');
    for (size_t k = 0; k < ascii; ++k) out[k] = static_cast<wchar_t>(text[k]);
    if (ascii == text.size()) return out;
    out.reserve(text.size());
    for (size_t i = ascii; i < text.size();) {
        unsigned char lead = static_cast<unsigned char>(text[i]);
        if (lead < 0x80) {
            out.push_back(static_cast<wchar_t>(lead));
            ++i;
            continue;
        }
        int extra = ContinuationCount(lead);
        std::optional<char32_t> cp = DecodeSequence(text, i, extra);
        out.push_back(static_cast<wchar_t>(cp.value_or(kReplacementChar)));
        // A bad sequence consumes only its lead byte, so the bytes after it get their own
        // chance to start a character.
        i += cp ? static_cast<size_t>(extra) + 1 : 1;
    }
    return out;
}

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp > 0x10FFFF || IsSurrogate(cp)) cp = kReplacementChar;
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

std::string WideToUtf8(std::wstring_view text) {
    uint32_t any = 0;
    for (wchar_t wc : text) any |= static_cast<uint32_t>(wc);
    size_t ascii = text.size();
    if (any >= 0x80) {
        ascii = 0;
        while (static_cast<uint32_t>(text[ascii]) < 0x80) ++ascii;
    }
    std::string out(ascii, '\0');
    for (size_t k = 0; k < ascii; ++k) out[k] = static_cast<char>(text[k]);
    if (ascii == text.size()) return out;
    out.reserve(text.size() + 3 * (text.size() - ascii));
    for (wchar_t wc : text.substr(ascii)) AppendUtf8(out, static_cast<char32_t>(wc));
    return out;
}

std::string Utf16ToUtf8(std::string_view bytes, bool bigEndian) {
    auto unitAt = [&](size_t i) -> char32_t {
        auto b0 = static_cast<unsigned char>(bytes[i]), b1 = static_cast<unsigned char>(bytes[i + 1]);
        return bigEndian ? (char32_t{b0} << 8) | b1 : (char32_t{b1} << 8) | b0;
    };
    std::string out;
    out.reserve(bytes.size() / 2);
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t unit = unitAt(i);
        if (unit >= 0xD800 && unit < 0xDC00 && i + 3 < bytes.size()) {
            char32_t low = unitAt(i + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                AppendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00));
                i += 2;
                continue;
            }
        }
        AppendUtf8(out, unit);  // a lone surrogate becomes U+FFFD here
    }
    return out;
}

}  // namespace zel::kernel
