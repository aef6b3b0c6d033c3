#include "host/placeholder.h"

namespace zel::demo {

namespace {
constexpr wchar_t kClassName[] = L"ZelDemoPlaceholder";
}  // namespace

HWND CreatePlaceholder(HWND parent, int id, const RECT& rect, LPCWSTR text) {
    WNDCLASSW wc{};
    if (!GetClassInfoW(nullptr, kClassName, &wc)) {
        wc.style = CS_DBLCLKS;
        wc.lpfnWndProc = DefWindowProcW;
        wc.lpszClassName = kClassName;
        if (!RegisterClassW(&wc)) return nullptr;
    }
    return CreateWindowExW(0, kClassName, text, WS_CHILD | WS_VISIBLE, rect.left, rect.top, rect.right - rect.left,
                           rect.bottom - rect.top, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr,
                           nullptr);
}

}  // namespace zel::demo
