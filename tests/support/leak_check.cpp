#include "support/leak_check.h"

#include <windows.h>

namespace zel::test {

namespace {

int CountFrom(HWND first) {
    int n = 0;
    for (HWND w = first; w; w = ::GetWindow(w, GW_HWNDNEXT)) n += 1 + CountFrom(::GetWindow(w, GW_CHILD));
    return n;
}

}  // namespace

int LiveWindows() { return CountFrom(::GetWindow(::GetDesktopWindow(), GW_CHILD)); }

}  // namespace zel::test
