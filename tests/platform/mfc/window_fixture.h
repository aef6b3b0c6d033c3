// Shared pieces of the window tests: a fresh desktop per test, an event log, a raw
// recording window class.
#pragma once

#include <afxwin.h>
#include <gtest/gtest.h>
#include <zel/platform.h>

#include <string>
#include <vector>

#include "mfc/handle_maps.h"
#include "support/leak_check.h"

namespace mfc_test {

// What happened, in order, as short strings ("Derived:LBUTTONDOWN(3,-4)").
inline std::vector<std::string>& Log() {
    static std::vector<std::string> log;
    return log;
}
inline void Note(const std::string& s) { Log().push_back(s); }
inline std::string Joined() {
    std::string s;
    for (const std::string& e : Log()) s += (s.empty() ? "" : " ") + e;
    return s;
}

// Every test starts on an empty desktop and leaves no window, timer or GDI object behind.
class WindowTest : public zel::test::LeakChecked {
protected:
    void SetUp() override {
        zel::Desktop::Get().Reset();
        AfxUnlockTempMaps(TRUE);
        Log().clear();
        zel::test::LeakChecked::SetUp();
    }
    void TearDown() override {
        zel::Desktop::Get().Reset();
        AfxUnlockTempMaps(TRUE);
        EXPECT_EQ(zel::mfc::TemporaryWrapperCount(), 0u);
        zel::test::LeakChecked::TearDown();
    }
    static zel::Desktop& Desk() { return zel::Desktop::Get(); }
};

// A plain Win32 class whose procedure logs what it gets: it stands for the original
// window procedure a CWnd subclasses, or for a foreign window.
inline LRESULT CALLBACK RecordingProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
        case WM_LBUTTONDOWN:
            Note("raw:LBUTTONDOWN(" + std::to_string(GET_X_LPARAM(lParam)) + "," +
                 std::to_string(GET_Y_LPARAM(lParam)) + ")");
            return 0;
        case WM_COMMAND:
            Note("raw:COMMAND(" + std::to_string(LOWORD(wParam)) + "," + std::to_string(HIWORD(wParam)) + ")");
            return 0;
        case WM_USER + 7:
            Note("raw:USER7(" + std::to_string(wParam) + ")");
            return 77;
        default:
            return DefWindowProcW(hwnd, msg, wParam, lParam);
    }
}

inline LPCWSTR RecordingClass() {
    WNDCLASSW wc{};
    if (!GetClassInfoW(nullptr, L"MfcTestRecording", &wc)) {
        wc.style = CS_DBLCLKS;
        wc.lpfnWndProc = RecordingProc;
        wc.lpszClassName = L"MfcTestRecording";
        RegisterClassW(&wc);
    }
    return L"MfcTestRecording";
}

inline HWND RawWindow(HWND parent, int id, RECT rc, DWORD style = WS_VISIBLE) {
    return CreateWindowExW(0, RecordingClass(), L"", (parent ? WS_CHILD : WS_POPUP) | style, rc.left, rc.top,
                           rc.right - rc.left, rc.bottom - rc.top, parent,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
}

}  // namespace mfc_test
