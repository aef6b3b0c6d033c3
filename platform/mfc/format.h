// printf-style formatting with the wide framework's rules (CString::Format, TRACE).
#pragma once

#include <cstdarg>
#include <string>

namespace zel::mfc {

// %s/%c are wide and %S/%C narrow (UTF-8); h forces narrow, l/w wide for strings and
// characters. For integers h is 16 bits, l and I32 are 32 bits (LONG, DWORD), ll and I64
// are 64 bits and I, z, j, t pointer-sized. %p prints 16 upper-case hex digits. A NULL
// string prints "(null)". An unknown conversion is copied literally.
std::wstring FormatWide(const wchar_t* format, va_list args);

}  // namespace zel::mfc
