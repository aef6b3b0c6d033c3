// Prints where Windows puts each dialog of layouts.rc and its items: built with MinGW and
// run under Wine (see README.md beside it), its output is layouts.txt. Not part of the build.
#include <windows.h>

#include <cstdio>

namespace {

INT_PTR CALLBACK Quiet(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG ? FALSE : FALSE; }

void Print(int id) {
    HWND dlg = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), nullptr, Quiet, 0);
    if (!dlg) {
        std::printf("dialog id=%d missing\n", id);
        return;
    }
    RECT units{0, 0, 4, 8};
    MapDialogRect(dlg, &units);
    RECT client;
    GetClientRect(dlg, &client);
    std::printf("dialog id=%d base=%ld,%ld client=%ld,%ld\n", id, units.right, units.bottom, client.right,
                client.bottom);
    for (HWND c = GetWindow(dlg, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
        RECT r;
        GetWindowRect(c, &r);
        MapWindowPoints(nullptr, dlg, reinterpret_cast<POINT*>(&r), 2);
        std::printf("item dialog=%d id=%d rect=%ld,%ld,%ld,%ld\n", id, GetDlgCtrlID(c), r.left, r.top, r.right,
                    r.bottom);
    }
    DestroyWindow(dlg);
}

}  // namespace

int main() {
    for (int id = 1; id <= 3; ++id) Print(id);
    return 0;
}
