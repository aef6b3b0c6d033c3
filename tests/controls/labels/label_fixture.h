// What the label tests add to the shared support: a control fixture with the parent at the
// screen's origin, bitmaps drawn in memory (the whole-screen backgrounds and pictures the
// labels are handed), and a reference surface on which a test draws, with plain GDI, what
// a control should show.
#pragma once

#include <afxwin.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "support/control_test.h"
#include "support/golden.h"
#include "support/memory_surface.h"

namespace labeltest {

class Reference;

// The parent covers (0, 0)-(320, 200) of the screen: client and screen coordinates agree.
class LabelTest : public zel::test::ControlTest {
protected:
    LabelTest() : ControlTest(CRect(0, 0, 320, 200)) {}
    CString SkinPath(const std::string& name) const { return CString(skins.Path(name).c_str()); }
    // Repaints `control` and says where its pixels differ from `want` ("" when equal).
    std::string Shows(CWnd& control, const Reference& want);
    // The same for the pixels of `window` that show within the parent, for a window too
    // large or too far out to show whole; fails when none show.
    std::string ShowsWhereVisible(HWND window, const Reference& want);
};

using Paint = std::function<COLORREF(int x, int y)>;

// A screen-compatible width x height bitmap, pixel by pixel; deleted with the object.
class ArtBitmap {
public:
    ArtBitmap(int width, int height, const Paint& colour);
    ~ArtBitmap();
    ArtBitmap(const ArtBitmap&) = delete;
    ArtBitmap& operator=(const ArtBitmap&) = delete;
    HBITMAP get() const { return bitmap_; }

private:
    HBITMAP bitmap_;
};

// A colour surface the size of a control, on which a test draws the expected picture.
class Reference : public zel::test::MemorySurface {
public:
    Reference(int w, int h, COLORREF fill = RGB(0, 0, 0));
    void Fill(const RECT& rc, COLORREF colour);
    void Pixels(const Paint& colour);
    // DrawTextW in a fresh "Tahoma" font of `height` (quality 0), transparent, in `colour`.
    void Text(const CString& text, RECT rc, UINT format, int height, COLORREF colour);
    // Where the window's on-screen pixels differ from this; empty when they are equal.
    std::string Diff(HWND window) const;
};

// The DT_CALCRECT size of `text` in a "Tahoma" font of `height`, on a screen DC.
SIZE Measure(const CString& text, int height, UINT format = DT_SINGLELINE);

}  // namespace labeltest
