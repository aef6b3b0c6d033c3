// Small narrow-string helpers shared by the platform's text readers (resource scripts,
// font substitutes, environment settings).
#pragma once

#include <string>
#include <string_view>

namespace zel::kernel {

// `s` without leading and trailing ASCII white space (space, \t, \n, \v, \f, \r); bytes
// of UTF-8 sequences are never white space.
std::string Trim(std::string_view s);

// ASCII case mapping; other bytes, UTF-8 sequences included, stay as they are.
std::string Upper(std::string s);
std::string Lower(std::string s);

}  // namespace zel::kernel
