// Resource modules: a checked HINSTANCE per loaded resource script, LoadBitmapW and
// FreeLibrary.
#include "kernel/resource_module.h"

#include <cctype>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "gdi/handle_table.h"
#include "kernel/resource_script.h"
#include "kernel/utf.h"
#include "zel/resources.h"

namespace zel::detail {

namespace {

// Type tags of module handles, apart from the GDI object types and window handles.
constexpr uint8_t kApplicationTag = 0xA1;
constexpr uint8_t kScriptTag = 0xA2;

constexpr DWORD kErrorInvalidHandle = 6;
constexpr DWORD kErrorResourceNameNotFound = 1814;

struct Module {
    std::string script;  // empty for the application's module
    ResourceScript resources;
};

HandleTable<Module>& Modules() {
    static auto* table = new HandleTable<Module>();  // handles may outlive statics
    return *table;
}

Module* Lookup(HINSTANCE instance) {
    if (!instance) instance = ApplicationModule();
    return Modules().Lookup(reinterpret_cast<uintptr_t>(instance));
}

std::wstring UpperWide(LPCWSTR name) {
    std::wstring s;
    for (; *name; ++name) s.push_back(*name < 128 ? static_cast<wchar_t>(std::toupper(*name)) : *name);
    return s;
}

// "#123" is the string form of identifier 123.
std::optional<unsigned> NumericName(LPCWSTR name) {
    if (name[0] != L'#' || !name[1]) return std::nullopt;
    unsigned v = 0;
    for (LPCWSTR p = name + 1; *p; ++p) {
        if (*p < L'0' || *p > L'9') return std::nullopt;
        v = (v * 10 + static_cast<unsigned>(*p - L'0')) & 0xFFFFFF;
    }
    return v & 0xFFFF;
}

const std::string* FindBitmap(const Module& module, LPCWSTR name) {
    std::optional<unsigned> id;
    if (IS_INTRESOURCE(name)) {
        id = LOWORD(reinterpret_cast<ULONG_PTR>(name));
    } else {
        id = NumericName(name);
    }
    if (id) {
        auto it = module.resources.bitmapsById.find(*id);
        return it == module.resources.bitmapsById.end() ? nullptr : &it->second;
    }
    auto it = module.resources.bitmapsByName.find(UpperWide(name));
    return it == module.resources.bitmapsByName.end() ? nullptr : &it->second;
}

}  // namespace

HINSTANCE ApplicationModule() {
    static HINSTANCE app = reinterpret_cast<HINSTANCE>(Modules().Add(std::make_unique<Module>(), kApplicationTag));
    return app;
}

}  // namespace zel::detail

namespace zel {

HINSTANCE LoadResourceModule(const char* rcPath) {
    if (!rcPath || !*rcPath) {
        std::fprintf(stderr, "LoadResourceModule: no script path given\n");
        return nullptr;
    }
    std::string error;
    auto script = detail::ParseResourceScript(rcPath, &error);
    if (!script) {
        std::fprintf(stderr, "LoadResourceModule: %s\n", error.c_str());
        return nullptr;
    }
    auto module = std::make_unique<detail::Module>();
    module->script = rcPath;
    module->resources = std::move(*script);
    return reinterpret_cast<HINSTANCE>(detail::Modules().Add(std::move(module), detail::kScriptTag));
}

void FreeResourceModule(HINSTANCE module) { FreeLibrary(module); }

}  // namespace zel

extern "C" {

// The application's module stays; stale and foreign handles fail.
BOOL FreeLibrary(HMODULE module) {
    auto handle = reinterpret_cast<uintptr_t>(module);
    if (!module || zel::detail::Modules().TypeOf(handle) != zel::detail::kScriptTag) {
        SetLastError(zel::detail::kErrorInvalidHandle);
        return FALSE;
    }
    zel::detail::Modules().Remove(handle);
    return TRUE;
}

HBITMAP LoadBitmapW(HINSTANCE instance, LPCWSTR name) {
    const zel::detail::Module* module = zel::detail::Lookup(instance);
    if (!module) {
        SetLastError(zel::detail::kErrorInvalidHandle);
        return nullptr;
    }
    const std::string* path = zel::detail::FindBitmap(*module, name);
    if (!path) {
        SetLastError(zel::detail::kErrorResourceNameNotFound);
        return nullptr;
    }
    return SHLoadDIBitmap(zel::kernel::Utf8ToWide(*path).c_str());
}

}  // extern "C"
