#include "kernel/strings.h"

namespace zel::kernel {

namespace {

// Not std::isspace: its answer for bytes above 0x7F depends on the C locale.
bool IsAsciiSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace

std::string Trim(std::string_view s) {
    size_t b = 0, e = s.size();
    while (b < e && IsAsciiSpace(s[b])) ++b;
    while (e > b && IsAsciiSpace(s[e - 1])) --e;
    return std::string(s.substr(b, e - b));
}

std::string Upper(std::string s) {
    for (char& c : s)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return s;
}

std::string Lower(std::string s) {
    for (char& c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
}

}  // namespace zel::kernel
