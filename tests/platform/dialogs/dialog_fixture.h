// Shared pieces of the dialog tests: a fresh desktop, scripts written to a scratch folder
// and loaded as resource modules, and the dialog-unit arithmetic derived from the
// platform's own font metrics.
#pragma once

#include <afxwin.h>
#include <gtest/gtest.h>
#include <zel/platform.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "platform/mfc/window_fixture.h"
#include "support/platform_scratch.h"

namespace dialog_test {

namespace fs = std::filesystem;

// The window tests' fixture (a reset desktop; no window, temporary wrapper or GDI object
// left behind), plus no idle hook and the loaded modules freed.
class DialogTest : public mfc_test::WindowTest {
protected:
    void SetUp() override {
        zel::SetModalIdleHook(nullptr);
        WindowTest::SetUp();
    }
    void TearDown() override {
        zel::SetModalIdleHook(nullptr);
        for (HINSTANCE m : modules_) zel::FreeResourceModule(m);
        WindowTest::TearDown();
    }

    std::string Write(const std::string& name, const std::string& text) { return scratch_.Write(name, text); }
    // The script as a resource module, released at the end of the test.
    HINSTANCE Load(const std::string& rc) {
        HINSTANCE m = zel::LoadResourceModule(Write("dialogs.rc", rc).c_str());
        EXPECT_NE(m, nullptr);
        if (m) modules_.push_back(m);
        return m;
    }

private:
    zel::test::ScratchFolder scratch_;
    std::vector<HINSTANCE> modules_;
};

// Dialog base units for a point size and face, measured the way the dialog manager must:
// the font's average Latin letter width (rounded) and its height, from the platform's
// metrics, so the expectations follow the text engine rather than fixed pixels.
inline SIZE ExpectedBaseUnits(int pointSize, const wchar_t* face) {
    HFONT font = CreateFontW(-MulDiv(pointSize, 96, 72), 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0,
                             face);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, font);
    TEXTMETRICW tm{};
    GetTextMetricsW(dc, &tm);
    SIZE letters{};
    GetTextExtentPoint32W(dc, L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", 52, &letters);
    SelectObject(dc, old);
    DeleteDC(dc);
    DeleteObject(font);
    return SIZE{(letters.cx / 26 + 1) / 2, tm.tmHeight};
}

// A dialog unit rectangle in pixels for given base units.
inline RECT Pixels(SIZE units, int x, int y, int cx, int cy) {
    int l = MulDiv(x, units.cx, 4), t = MulDiv(y, units.cy, 8);
    return RECT{l, t, l + MulDiv(cx, units.cx, 4), t + MulDiv(cy, units.cy, 8)};
}

// A child's rectangle in its parent's client coordinates.
inline RECT ChildRect(HWND child) {
    RECT r;
    GetWindowRect(child, &r);
    MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&r), 2);
    return r;
}

// A modal loop's user: each idle of the loop plays the next step (a tap, a key), and once
// none is left the loop has nothing to wait for. Whether the owner stayed enabled at every
// step is kept. Steps live in a static, as the idle hook is a plain function.
struct ModalTour {
    std::vector<std::function<void(HWND dlg)>> steps;
    size_t next = 0;
    bool ownerEnabledDuring = false;

    static ModalTour& Start(std::vector<std::function<void(HWND)>> steps) {
        static ModalTour tour;
        tour = ModalTour{std::move(steps)};
        zel::SetModalIdleHook([](HWND dlg) {
            if (tour.next >= tour.steps.size()) return false;
            tour.ownerEnabledDuring = tour.ownerEnabledDuring || IsWindowEnabled(GetWindow(dlg, GW_OWNER));
            tour.steps[tour.next++](dlg);
            return true;
        });
        return tour;
    }
};

// Taps the middle of a dialog's item.
inline void TapItem(HWND dlg, int id) {
    RECT r;
    GetWindowRect(GetDlgItem(dlg, id), &r);
    zel::Desktop::Get().Tap((r.left + r.right) / 2, (r.top + r.bottom) / 2);
}

inline std::string ClassOf(HWND hwnd) {
    wchar_t name[64] = {};
    GetClassNameW(hwnd, name, 64);
    std::string s;
    for (wchar_t* p = name; *p; ++p) s += static_cast<char>(*p);
    return s;
}

}  // namespace dialog_test
