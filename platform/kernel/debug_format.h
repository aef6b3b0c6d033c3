// The wsprintf-style formatter behind NKDbgPrintfW.
#pragma once

#include <cstdarg>
#include <string>

namespace zel::kernel {

// Conversions: %d %i %u %x %X %c %s %S %%, flags '-' and '0', a width, and the size
// prefixes 'l' (32-bit, as LONG is on Windows), 'h', and "ll"/"I64" (64-bit). %s takes a
// wide string, %S a narrow one; a null string prints "(null)". Unknown conversions are
// copied through unchanged.
std::wstring FormatDebug(const wchar_t* format, va_list args);

// Writes one debug line to stderr and to the sink set with zel::SetDebugSink.
void EmitDebugLine(std::wstring line);

}  // namespace zel::kernel
