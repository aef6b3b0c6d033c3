#include "host/placeholder.h"

namespace zel::demo {

LPCWSTR PlaceholderClass() {
    static constexpr wchar_t kClassName[] = L"ZelDemoPlaceholder";
    WNDCLASSW wc{};
    if (!GetClassInfoW(nullptr, kClassName, &wc)) {
        wc.style = CS_DBLCLKS;
        wc.lpfnWndProc = DefWindowProcW;
        wc.lpszClassName = kClassName;
        if (!RegisterClassW(&wc)) return nullptr;
    }
    return kClassName;
}

HWND CreatePlaceholder(HWND parent, int id, const RECT& rect, LPCWSTR text) {
    LPCWSTR cls = PlaceholderClass();
    if (!cls) return nullptr;
    return CreateWindowExW(0, cls, text, WS_CHILD | WS_VISIBLE, rect.left, rect.top, rect.right - rect.left,
                           rect.bottom - rect.top, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr,
                           nullptr);
}

}  // namespace zel::demo
