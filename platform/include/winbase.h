// Kernel services: time, debug output, modules.
#pragma once

#include "zel/win/types.h"

#ifdef __cplusplus
extern "C" {
#endif

ZEL_API DWORD GetTickCount(void);
ZEL_API void GetLocalTime(LPSYSTEMTIME time);
ZEL_API void GetSystemTime(LPSYSTEMTIME time);
ZEL_API void Sleep(DWORD ms);
ZEL_API void OutputDebugStringW(LPCWSTR text);
// CE kernel debug output: wsprintf-style format, one line to stderr.
ZEL_API void NKDbgPrintfW(LPCWSTR format, ...);
ZEL_API BOOL FreeLibrary(HMODULE module);
ZEL_API DWORD GetLastError(void);
ZEL_API void SetLastError(DWORD error);
ZEL_API int MulDiv(int number, int numerator, int denominator);

#ifdef __cplusplus
}
#endif

#define OutputDebugString OutputDebugStringW
