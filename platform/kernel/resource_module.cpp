// Resource modules: a checked HINSTANCE per loaded resource script, LoadBitmapW and
// FreeLibrary.
#include "kernel/resource_module.h"

#include <cctype>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include <algorithm>
#include <cwchar>
#include <map>
#include <vector>

#include "gdi/handle_table.h"
#include "gdi/image_codec.h"
#include "kernel/dialog_template.h"
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
    std::map<const DialogTemplate*, std::vector<uint64_t>> encodedDialogs;  // on first use
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

// A resource by identifier (MAKEINTRESOURCE or "#n") or by case-insensitive name.
template <class T>
const T* FindResourceIn(const std::map<unsigned, T>& byId, const std::map<std::wstring, T>& byName, LPCWSTR name) {
    if (!name) return nullptr;
    std::optional<unsigned> id;
    if (IS_INTRESOURCE(name)) {
        id = LOWORD(reinterpret_cast<ULONG_PTR>(name));
    } else {
        id = NumericName(name);
    }
    if (id) {
        auto it = byId.find(*id);
        return it == byId.end() ? nullptr : &it->second;
    }
    auto it = byName.find(UpperWide(name));
    return it == byName.end() ? nullptr : &it->second;
}

const std::string* FindBitmap(const Module& module, LPCWSTR name) {
    return FindResourceIn(module.resources.bitmapsById, module.resources.bitmapsByName, name);
}

}  // namespace

const void* FindDialogTemplate(HINSTANCE instance, LPCWSTR name) {
    Module* module = Lookup(instance);
    if (!module) {
        SetLastError(kErrorInvalidHandle);
        return nullptr;
    }
    const DialogTemplate* dialog =
        FindResourceIn(module->resources.dialogsById, module->resources.dialogsByName, name);
    if (!dialog) {
        SetLastError(kErrorResourceNameNotFound);
        return nullptr;
    }
    std::vector<uint64_t>& encoded = module->encodedDialogs[dialog];
    if (encoded.empty()) encoded = EncodeDialogTemplate(*dialog);
    return encoded.data();
}

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
    return zel::detail::LoadBitmapFile(*path);  // the path is UTF-8 already
}

int LoadStringW(HINSTANCE instance, UINT id, LPWSTR buffer, int max) {
    const zel::detail::Module* module = zel::detail::Lookup(instance);
    if (!module) {
        SetLastError(zel::detail::kErrorInvalidHandle);
        return 0;
    }
    if (!buffer || max < 0) return 0;
    const auto& strings = module->resources.strings;
    auto it = strings.find(id & 0xFFFF);
    if (it == strings.end()) {
        SetLastError(zel::detail::kErrorResourceNameNotFound);
        if (max > 0) buffer[0] = 0;
        return 0;
    }
    const std::wstring& text = it->second;
    if (max == 0) {
        // The read-only form: a pointer to the resource itself.
        *reinterpret_cast<LPCWSTR*>(buffer) = text.c_str();
        return static_cast<int>(text.size());
    }
    size_t n = std::min(text.size(), static_cast<size_t>(max - 1));
    std::wmemcpy(buffer, text.c_str(), n);
    buffer[n] = 0;
    return static_cast<int>(n);
}

}  // extern "C"
