// UTF-8 <-> UTF-32 conversion at the edges (files, logs, narrow arguments).
#pragma once

#include <string>
#include <string_view>

namespace zel::mfc {

// Malformed sequences become U+FFFD, one per bad byte.
std::wstring Utf8ToWide(std::string_view text);
// Code points that cannot be encoded (surrogates, > U+10FFFF) become U+FFFD.
std::string WideToUtf8(std::wstring_view text);

}  // namespace zel::mfc
