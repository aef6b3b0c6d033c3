// The platform's one set of Unicode conversions. WCHAR is wchar_t, 32 bits here, so wide
// text is UTF-32; files, paths, logs and narrow arguments are UTF-8, and resource scripts
// may arrive as UTF-16. Every conversion is total: what cannot be decoded or encoded
// becomes U+FFFD, never an exception or a read past the input.
#pragma once

#include <string>
#include <string_view>

namespace zel::kernel {

inline constexpr char32_t kReplacementChar = 0xFFFD;

// Malformed sequences (stray continuation bytes, truncated or overlong forms, encoded
// surrogates, values beyond U+10FFFF) become U+FFFD, one per bad lead byte; decoding
// resumes at the next byte.
std::wstring Utf8ToWide(std::string_view text);

// Code points that cannot be encoded (surrogates, values beyond U+10FFFF) become U+FFFD.
std::string WideToUtf8(std::wstring_view text);
void AppendUtf8(std::string& out, char32_t cp);

// UTF-16 code units stored as bytes in the given order, without a byte order mark, to
// UTF-8. Unpaired surrogates become U+FFFD; an odd last byte is not a code unit and is
// dropped.
std::string Utf16ToUtf8(std::string_view bytes, bool bigEndian);

}  // namespace zel::kernel
