// The fixture every control family's tests derive from. Each test starts on a reset
// desktop (virtual clock at 0, 800 x 480 screen) with a RecordingParent (`parent`,
// painted kSentinel) and an empty SkinFolder (`skins`); at teardown the parent is
// destroyed, and no window and no GDI object created by the test may be left.
//
//   class Slider : public zel::test::ControlTest {
//   protected:
//       Slider() : ControlTest(CRect(0, 0, 120, 100)) {}   // parent's place on the screen
//       std::unique_ptr<CZELSlider> ctl;
//       void TearDown() override { ctl.reset(); ControlTest::TearDown(); }
//   };
//   TEST_F(Slider, TapPages) {
//       ctl = ...Create(..., &parent, 77); parent.Name(ctl->m_hWnd, "slider");
//       TapAt(ctl->m_hWnd, 70, 8);                           // the control's client coordinates
//       EXPECT_EQ(parent.Take(), "HSCROLL(SB_PAGEDOWN,0,slider)");
//   }
//
// A fixture that keeps a control alive in a member releases it in its own TearDown before
// calling this one's, so the leak check sees the control's bitmaps returned.
#pragma once

#include <afxwin.h>
#include <zel/desktop.h>

#include <cstdint>
#include <functional>
#include <string>

#include "support/leak_check.h"
#include "support/recording_parent.h"
#include "support/sentinel.h"
#include "support/skin_folder.h"

namespace zel::test {

class ControlTest : public LeakChecked {
protected:
    explicit ControlTest(const CRect& parentPlace = CRect(20, 30, 320, 230)) : parentPlace_(parentPlace) {}
    void SetUp() override;
    void TearDown() override;

    // Pointer input and screen pixels at (x, y) of a window's client area.
    POINT ScreenOf(HWND hwnd, int x, int y) const;
    COLORREF ShownAt(HWND hwnd, int x, int y) const;
    void TapAt(HWND hwnd, int x, int y);
    void DownAt(HWND hwnd, int x, int y);
    void MoveTo(HWND hwnd, int x, int y);
    void UpAt(HWND hwnd, int x, int y);
    void Press(UINT vk);  // key down and up
    // Walks a control through its four looks, calling look() in each with its name:
    // "normal" (the parent has the focus), "focus", "down" (pointer held at `at`, client
    // coordinates) and "disabled". It ends enabled, released and without the focus.
    void ForEachLook(CWnd& ctl, POINT at, const std::function<void(const char* look)>& look);
    // The pixels the raster writes for one repaint of the whole of `ctl` (the loop settled
    // first, so only that repaint counts).
    uint64_t RepaintPixels(CWnd& ctl);
    // That one repaint of `ctl` writes something, and at most `most` pixels (a control moved
    // far larger than the screen paints what shows, not its whole client).
    void ExpectRepaintWithin(CWnd& ctl, uint64_t most);

    zel::Desktop& desktop = zel::Desktop::Get();
    SkinFolder skins;
    RecordingParent parent;

private:
    CRect parentPlace_;
    int windowsBefore_ = 0;
};

// The composed screen, pixel by pixel.
COLORREF ScreenPixel(int x, int y);
// "rrggbb" of a colour, and the pixels of a screen row [left, right) as such strings
// joined by ' ', for compact asserts.
std::string Hex(COLORREF c);
std::string Row(int y, int left, int right);
// The bounding box (client coordinates) of the screen pixels of one colour inside a
// window's client area; empty when there are none.
CRect InkBox(HWND hwnd, COLORREF ink);

}  // namespace zel::test
