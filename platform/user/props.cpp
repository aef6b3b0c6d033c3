// Window properties: SetPropW, GetPropW, RemovePropW. Names compare case-insensitively, as
// atoms do; an integer name (an atom) is kept as "#n".
#include <algorithm>
#include <cwctype>
#include <string>

#include "user/wndmgr.h"

namespace zel::user {

namespace {

std::wstring Key(LPCWSTR name) {
    if (IS_INTRESOURCE(name)) return L"#" + std::to_wstring(LOWORD(reinterpret_cast<ULONG_PTR>(name)));
    std::wstring key(name);
    for (wchar_t& c : key) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
    return key;
}

auto Find(Window* w, const std::wstring& key) {
    return std::find_if(w->props.begin(), w->props.end(), [&](const auto& p) { return p.first == key; });
}

}  // namespace

}  // namespace zel::user

using namespace zel::user;

extern "C" {

BOOL SetPropW(HWND hwnd, LPCWSTR name, HANDLE data) {
    Window* w = Get(hwnd);
    if (!w || !name) {
        SetLastError(w ? kErrorInvalidParameter : kErrorInvalidWindowHandle);
        return FALSE;
    }
    std::wstring key = Key(name);
    auto it = Find(w, key);
    if (it != w->props.end()) {
        it->second = data;
    } else {
        w->props.emplace_back(std::move(key), data);
    }
    return TRUE;
}

HANDLE GetPropW(HWND hwnd, LPCWSTR name) {
    Window* w = Get(hwnd);
    if (!w || !name) return nullptr;
    auto it = Find(w, Key(name));
    return it == w->props.end() ? nullptr : it->second;
}

HANDLE RemovePropW(HWND hwnd, LPCWSTR name) {
    Window* w = Get(hwnd);
    if (!w || !name) return nullptr;
    auto it = Find(w, Key(name));
    if (it == w->props.end()) return nullptr;
    HANDLE data = it->second;
    w->props.erase(it);
    return data;
}

}  // extern "C"
