// Debug output (NKDbgPrintfW, OutputDebugStringW) and message boxes, capturable by tests.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <windows.h>

namespace zel {

// Every formatted debug line goes to stderr and, when set, to the sink as well.
using DebugSink = std::function<void(const std::wstring& line)>;
ZEL_API void SetDebugSink(DebugSink sink);

// MessageBoxW never blocks: each call is printed and recorded here.
struct MessageBoxRecord {
    HWND owner;
    std::wstring text;
    std::wstring caption;
    UINT type;
};
ZEL_API const std::vector<MessageBoxRecord>& MessageBoxes();
ZEL_API void ClearMessageBoxes();

}  // namespace zel
