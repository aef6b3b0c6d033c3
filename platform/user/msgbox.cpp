// MessageBoxW without a dialog: every box is printed and recorded, and answered at once
// with its default (first) button, so a headless host never blocks.
#include <cstdio>

#include "kernel/utf.h"
#include "zel/debug.h"

namespace zel {

namespace {
std::vector<MessageBoxRecord>& Records() {
    static auto* records = new std::vector<MessageBoxRecord>();
    return *records;
}
}  // namespace

const std::vector<MessageBoxRecord>& MessageBoxes() { return Records(); }
void ClearMessageBoxes() { Records().clear(); }

}  // namespace zel

extern "C" {

int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
    std::wstring t = text ? text : L"";
    std::wstring c = caption ? caption : L"Error";  // Windows' caption when none is given
    zel::Records().push_back(zel::MessageBoxRecord{owner, t, c, type});
    std::fprintf(stderr, "[MessageBox] %s: %s\n", zel::kernel::WideToUtf8(c).c_str(),
                 zel::kernel::WideToUtf8(t).c_str());
    switch (type & 0xF) {
        case MB_YESNO:
        case 0x3:  // MB_YESNOCANCEL
            return IDYES;
        case 0x2:  // MB_ABORTRETRYIGNORE
            return IDABORT;
        case 0x5:  // MB_RETRYCANCEL
            return IDRETRY;
        default:
            return IDOK;
    }
}

}  // extern "C"
