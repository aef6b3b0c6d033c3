// Kernel services: time, debug output, modules.
#pragma once

#include "zel/win/types.h"

// ---- language identifiers (the LANGUAGE statements of resource scripts) ----
#define LANG_NEUTRAL 0x00
#define LANG_CHINESE 0x04
#define LANG_GERMAN 0x07
#define LANG_ENGLISH 0x09
#define LANG_SPANISH 0x0a
#define LANG_FRENCH 0x0c
#define LANG_ITALIAN 0x10
#define LANG_JAPANESE 0x11
#define LANG_KOREAN 0x12
#define SUBLANG_NEUTRAL 0x00
#define SUBLANG_DEFAULT 0x01
#define SUBLANG_SYS_DEFAULT 0x02
#define SUBLANG_ENGLISH_US 0x01
#define SUBLANG_ENGLISH_UK 0x02
#define SUBLANG_CHINESE_TRADITIONAL 0x01
#define SUBLANG_CHINESE_SIMPLIFIED 0x02
#define SUBLANG_GERMAN 0x01
#define SUBLANG_FRENCH 0x01
#define SUBLANG_KOREAN 0x01

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
