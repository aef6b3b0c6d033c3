// The kernel's Unicode conversions: malformed input of every kind becomes U+FFFD at the
// right place and decoding resumes after it; every scalar value survives a round trip.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "kernel/utf.h"

namespace {

using zel::kernel::AppendUtf8;
using zel::kernel::Utf16ToUtf8;
using zel::kernel::Utf8ToWide;
using zel::kernel::WideToUtf8;

constexpr wchar_t kBad = 0xFFFD;

template <class In, class Out>
struct Conversion {
    const char* name;
    In in;
    Out want;
};

TEST(Utf8ToWide, DecodesWellFormedAndReplacesEachBadLeadByte) {
    const Conversion<std::string, std::wstring> cases[] = {
        {"ascii and NUL", std::string("a\0b", 3), std::wstring(L"a\0b", 3)},
        {"one of each length", "\x41\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", L"A\u00E4\u20AC\U0001F600"},
        {"smallest and largest of each length", "\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
         L"\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF"},
        {"stray continuation bytes", "a\x80\xBF" "b", {L'a', kBad, kBad, L'b'}},
        {"overlong slash", "\xC0\xAF", {kBad, kBad}},
        {"overlong three-byte NUL", "\xE0\x80\x80", {kBad, kBad, kBad}},
        {"overlong four-byte", "\xF0\x8F\xBF\xBF", {kBad, kBad, kBad, kBad}},
        {"encoded surrogate", "\xED\xA0\x80", {kBad, kBad, kBad}},
        {"beyond U+10FFFF", "\xF4\x90\x80\x80", {kBad, kBad, kBad, kBad}},
        {"bytes that start nothing", "\xF8\xFE\xFF", {kBad, kBad, kBad}},
        {"lead byte then ASCII resumes at the ASCII", "\xE2" "ab", {kBad, L'a', L'b'}},
        {"sequence cut by the next lead", "\xE2\x82\xC3\xA4", {kBad, kBad, L'\u00E4'}},
        {"truncated at the end", "x\xF0\x9F\x98", {L'x', kBad, kBad, kBad}},
        {"U+FFFD itself is a character", "\xEF\xBF\xBD" "a", {kBad, L'a'}},
        {"lone lead at the end", "\xC3", {kBad}},
        {"empty", "", L""},
        {"an ASCII run, a character, ASCII again", "skin/dial\xC3\xA4_key.bmp", L"skin/dial\u00E4_key.bmp"},
        {"a bad byte after an ASCII run", "skin/key\xFF.bmp", {L's', L'k', L'i', L'n', L'/', L'k', L'e', L'y', kBad, L'.', L'b', L'm', L'p'}},
    };
    for (const auto& c : cases) EXPECT_EQ(Utf8ToWide(c.in), c.want) << c.name;
}

TEST(WideToUtf8, ReplacesWhatUtf8CannotCarry) {
    const Conversion<std::wstring, std::string> cases[] = {
        {"one of each length", L"A\u00E4\u20AC\U0001F600", "\x41\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
        {"high surrogate", {L'a', static_cast<wchar_t>(0xD800), L'b'}, "a\xEF\xBF\xBD" "b"},
        {"low surrogate", {static_cast<wchar_t>(0xDFFF)}, "\xEF\xBF\xBD"},
        {"just beyond Unicode", {static_cast<wchar_t>(0x110000)}, "\xEF\xBF\xBD"},
        {"negative wchar_t", {static_cast<wchar_t>(-1)}, "\xEF\xBF\xBD"},
        {"NUL is a character", std::wstring(L"\0", 1), std::string("\0", 1)},
        {"an ASCII run, a character, ASCII again", L"skin/dial\u00E4_key.bmp", "skin/dial\xC3\xA4_key.bmp"},
        {"a surrogate after an ASCII run", {L'k', L'e', L'y', static_cast<wchar_t>(0xDC00)}, "key\xEF\xBF\xBD"},
    };
    for (const auto& c : cases) EXPECT_EQ(WideToUtf8(c.in), c.want) << c.name;
}

TEST(Utf8RoundTrip, EveryScalarValueSurvives) {
    std::string encoded;
    std::wstring all;
    for (char32_t cp = 0; cp <= 0x10FFFF; ++cp) {
        if (cp >= 0xD800 && cp <= 0xDFFF) continue;
        all.push_back(static_cast<wchar_t>(cp));
        AppendUtf8(encoded, cp);
    }
    EXPECT_TRUE(WideToUtf8(all) == encoded);
    std::wstring decoded = Utf8ToWide(encoded);
    ASSERT_EQ(decoded.size(), all.size());
    auto [got, want] = std::mismatch(decoded.begin(), decoded.end(), all.begin());
    EXPECT_TRUE(got == decoded.end()) << "U+" << std::hex << static_cast<uint32_t>(*want) << " decodes as U+"
                                      << static_cast<uint32_t>(*got);
}

TEST(Utf16ToUtf8, PairsSurrogatesAndReplacesLoneOnes) {
    // Each input is little-endian; the big-endian run swaps each byte pair.
    const Conversion<std::string, std::string> cases[] = {
        {"BMP text", std::string("a\0\xE4\0\xAC\x20", 6), "a\xC3\xA4\xE2\x82\xAC"},
        {"surrogate pair", std::string("\x3D\xD8\x00\xDE", 4), "\xF0\x9F\x98\x80"},
        {"high then not a low", std::string("\x3D\xD8" "b\0", 4), "\xEF\xBF\xBD" "b"},
        {"high at the end", std::string("a\0\x3D\xD8", 4), "a\xEF\xBF\xBD"},
        {"lone low", std::string("\x00\xDE" "c\0", 4), "\xEF\xBF\xBD" "c"},
        {"two highs then a low", std::string("\x3D\xD8\x3D\xD8\x00\xDE", 6), "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
        {"odd last byte dropped", std::string("a\0b", 3), "a"},
        {"nothing", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Utf16ToUtf8(c.in, false), c.want) << c.name;
        std::string big = c.in;
        for (size_t i = 0; i + 1 < big.size(); i += 2) std::swap(big[i], big[i + 1]);
        EXPECT_EQ(Utf16ToUtf8(big, true), c.want) << c.name << " (big-endian)";
    }
}

}  // namespace
