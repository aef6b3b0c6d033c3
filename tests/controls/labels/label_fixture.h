// What the label tests share: a parent that paints a sentinel colour around its children,
// skin art written into a temporary folder, a reset and leak-checked fixture, and a
// reference surface on which a test draws what a control should show, with plain GDI.
#pragma once

#include <afxwin.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/golden.h"
#include "support/leak_check.h"
#include "support/memory_surface.h"

namespace labeltest {

constexpr COLORREF kSentinel = RGB(0xAA, 0xAA, 0xAA);

// A top-level window at the screen's origin, 320 x 200, erased to the sentinel colour.
class Parent {
public:
    Parent();
    ~Parent();
    HWND hwnd() const { return hwnd_; }
    CWnd* wnd() const { return CWnd::FromHandle(hwnd_); }

private:
    HWND hwnd_ = nullptr;
};

struct Art {
    int width, height;
    std::function<COLORREF(int x, int y)> colour;
};
inline Art Solid(int w, int h, COLORREF c) {
    return Art{w, h, [c](int, int) { return c; }};
}

// Art as .bmp files in a folder of the test's own, removed with the object.
class SkinFolder {
public:
    SkinFolder();
    ~SkinFolder();
    CString Write(const std::string& name, const Art& art);
    CString Path(const std::string& name) const;
    HINSTANCE Module(const std::vector<std::pair<UINT, std::string>>& bitmaps);

private:
    std::filesystem::path dir_;
    std::vector<HINSTANCE> modules_;
};

// A screen-compatible bitmap drawn from art; deleted with the object.
class ArtBitmap {
public:
    explicit ArtBitmap(const Art& art);
    ~ArtBitmap();
    HBITMAP get() const { return bitmap_; }

private:
    HBITMAP bitmap_;
};

class ControlTest : public zel::test::LeakChecked {
protected:
    void SetUp() override;
    void TearDown() override;
};

// A colour surface the size of a control, on which a test draws the expected picture.
class Reference : public zel::test::MemorySurface {
public:
    Reference(int w, int h, COLORREF fill = RGB(0, 0, 0));
    void Fill(const RECT& rc, COLORREF colour);
    // DrawTextW in a fresh "Tahoma" font of `height` (quality 0), transparent, in `colour`.
    void Text(const CString& text, RECT rc, UINT format, int height, COLORREF colour);
    // Where this differs from `actual` (a window capture without margin); empty when equal.
    std::string Diff(const zel::test::Image& actual) const;
};

// The DT_CALCRECT size of `text` in a "Tahoma" font of `height`, on a screen DC.
SIZE Measure(const CString& text, int height, UINT format = DT_SINGLELINE);

}  // namespace labeltest
