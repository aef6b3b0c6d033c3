// LoadCursorW. Nothing draws a cursor on a touch screen, but window classes and frameworks
// ask for the standard ones: they get stable tokens that are never mistaken for a window
// or GDI object handle. Cursor resources of modules do not exist here (NULL).
#include <windows.h>

namespace {
constexpr uintptr_t kCursorTag = 0xC0;  // high byte as in the handle tables, a kind of its own
constexpr ULONG_PTR kFirstSystemCursor = 32512;  // IDC_ARROW
constexpr ULONG_PTR kLastSystemCursor = 32651;   // IDC_HELP
}  // namespace

extern "C" {

HCURSOR LoadCursorW(HINSTANCE instance, LPCWSTR name) {
    auto id = reinterpret_cast<ULONG_PTR>(name);
    if (instance || !IS_INTRESOURCE(name) || id < kFirstSystemCursor || id > kLastSystemCursor) {
        SetLastError(1813);  // ERROR_RESOURCE_TYPE_NOT_FOUND
        return nullptr;
    }
    return reinterpret_cast<HCURSOR>((kCursorTag << 48) | id);
}

}  // extern "C"
