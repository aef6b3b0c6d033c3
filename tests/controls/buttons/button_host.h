// What the button tests stand on: a host dialog that records what its controls tell it,
// skins drawn with GDI into a temporary folder, and a fixture that starts each test from
// a reset desktop and proves every GDI object came back.
#pragma once

#include <afxwin.h>
#include <zel/desktop.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/leak_check.h"

namespace buttons_test {

inline constexpr COLORREF kSentinel = RGB(0xAA, 0xAA, 0xAA);

// A top-level host window painted in kSentinel. It logs WM_COMMAND, WM_NOTIFY,
// WM_VSCROLL, WM_HSCROLL, WM_LBUTTONDOWN and WM_LBUTTONUP with their parameters and the
// time they arrived, then handles them as any CWnd does (so owner-draw buttons get their
// WM_DRAWITEM reflected).
class RecordingParent : public CWnd {
public:
    struct Entry {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        DWORD time;
    };

    BOOL CreateAt(int x, int y, int width, int height);
    void Name(HWND hwnd, std::string name);
    // The log since the last call, e.g. "LBUTTONDOWN(1,35,46);COMMAND(7,0,btn)"; "-" if empty.
    std::string Take();
    // Arrival times of the WM_COMMANDs logged since the last Take.
    std::vector<DWORD> CommandTimes() const;

    // Runs after an entry is logged, before the message is handled.
    std::function<void(UINT message, WPARAM wParam, LPARAM lParam)> onMessage;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    std::string NameOf(HWND hwnd) const;
    std::vector<Entry> entries_;
    std::vector<std::pair<HWND, std::string>> names_;
};

// Skin images drawn with GDI and saved as .bmp files in a folder of their own.
class SkinFolder {
public:
    SkinFolder();
    ~SkinFolder();
    SkinFolder(const SkinFolder&) = delete;
    SkinFolder& operator=(const SkinFolder&) = delete;

    // Draws a width x height colour image with `paint` and saves it as <name>.bmp.
    std::string Draw(const std::string& name, int width, int height, const std::function<void(HDC)>& paint);
    std::string Solid(const std::string& name, int width, int height, COLORREF colour);
    // A resource script naming each image by identifier; returns the script's path.
    std::string Script(const std::vector<std::pair<int, std::string>>& bitmaps);
    std::filesystem::path Dir() const { return dir_; }

private:
    std::filesystem::path dir_;
};

// Fills (l, t, r, b) of dc with one colour.
void FillBox(HDC dc, int l, int t, int r, int b, COLORREF colour);

// The bounding box of the screen pixels of one colour inside a window's client area
// (empty when there are none).
CRect InkBox(HWND hwnd, COLORREF ink);

class ButtonsTest : public zel::test::LeakChecked {
protected:
    void SetUp() override;
    void TearDown() override;

    // Screen pixel under a point of a window's client area.
    COLORREF ShownAt(HWND hwnd, int x, int y) const;
    POINT ScreenOf(HWND hwnd, int x, int y) const;
    void TapAt(HWND hwnd, int x, int y);
    void DownAt(HWND hwnd, int x, int y);
    void MoveTo(HWND hwnd, int x, int y);
    void UpAt(HWND hwnd, int x, int y);

    zel::Desktop& desktop = zel::Desktop::Get();
    RecordingParent parent;  // at (20, 30) on the screen, 300 x 200
    SkinFolder skins;
};

}  // namespace buttons_test
