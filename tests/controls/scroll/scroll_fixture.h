// What the scroll bar and slider tests share: a recording parent window, skins drawn by
// the test into a temporary folder (as image files and as a resource script), and a
// fixture that resets the desktop and checks that every GDI object is released.
#pragma once

#include <afxwin.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/leak_check.h"

namespace scrolltest {

// Paints what lies around the controls, so a pixel test can prove nothing is drawn outside.
constexpr COLORREF kSentinel = RGB(0xAA, 0xAA, 0xAA);

// A top-level parent at the screen's origin that logs what its children tell it:
// "VSCROLL(PAGEDOWN,0,bar)" = message(code, high word, lParam's name), with "@ms" appended
// in timed mode; WM_COMMAND, WM_NOTIFY and pointer messages are logged too, so a test also
// sees what the controls must not send.
class Parent {
public:
    Parent(int width = 120, int height = 100);
    ~Parent();
    HWND hwnd() const { return hwnd_; }
    CWnd* wnd() const { return CWnd::FromHandle(hwnd_); }
    void Name(HWND child, const char* name) { names_.emplace_back(child, name); }
    std::string Take();  // everything since the last call, joined by ';' ("-" when nothing)

    bool timed = false;
    // Runs after each scroll message is logged (a parent that reacts to notifications).
    std::function<void(UINT message, WPARAM wParam, LPARAM lParam)> onScroll;

private:
    static LRESULT CALLBACK Proc(HWND, UINT, WPARAM, LPARAM);
    std::string NameOf(HWND hwnd) const;
    void Log(UINT message, WPARAM wParam, LPARAM lParam);

    HWND hwnd_ = nullptr;
    std::vector<std::pair<HWND, std::string>> names_;
    std::vector<std::string> log_;
};

// A piece of skin art: its size and the colour of each pixel.
struct Art {
    int width, height;
    std::function<COLORREF(int x, int y)> colour;
};

// Writes art into a temporary folder as .bmp files, and optionally a resource script
// naming them by identifier. The folder goes with the object.
class SkinFolder {
public:
    SkinFolder();
    ~SkinFolder();
    // Writes name.bmp and returns its path.
    std::string Write(const std::string& name, const Art& art);
    CString Path(const std::string& name) const;
    // A resource module with one BITMAP per (identifier, file name) pair.
    HINSTANCE Module(const std::vector<std::pair<UINT, std::string>>& bitmaps);

private:
    std::filesystem::path dir_;
    std::vector<HINSTANCE> modules_;
};

// Solid art with an optional one-pixel frame of another colour.
Art Solid(int width, int height, COLORREF fill);
Art Framed(int width, int height, COLORREF fill, COLORREF frame);

// Every test starts from a reset desktop and must release every GDI object it created.
class ControlTest : public zel::test::LeakChecked {
protected:
    void SetUp() override;
    void TearDown() override;
};

COLORREF ScreenPixel(int x, int y);
// Pixels of one screen column or row, as hex strings joined by ' ', for compact asserts.
std::string Column(int x, int top, int bottom);
std::string Row(int y, int left, int right);
std::string Hex(COLORREF c);

}  // namespace scrolltest
