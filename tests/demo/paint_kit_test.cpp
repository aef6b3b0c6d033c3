// The ink bound the status strip repaints by: wherever a line's glyphs land, no pixel of it
// lies right of where it starts plus InkWidth -- for the strip's own font and the others
// the host writes with, for the log's lines and for runs of the glyphs drawn widest.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "demo_fixture.h"
#include "host/paint_kit.h"

namespace zel::demo {
namespace {

constexpr int kLeft = 10, kWidth = 1600, kHeight = 40;

class InkBound : public DemoTest {};

// The rightmost column (exclusive) holding ink in dc, or kLeft when none does.
int InkRight(HDC dc) {
    for (int x = kWidth - 1; x >= 0; --x)
        for (int y = 0; y < kHeight; ++y)
            if (::GetPixel(dc, x, y) != RGB(0, 0, 0)) return x + 1;
    return kLeft;
}

TEST_F(InkBound, NoInkLiesPastTheBound) {
    struct FontCase {
        int height, weight;
    };
    const FontCase fonts[] = {{15, FW_NORMAL}, {17, FW_BOLD}, {26, FW_BOLD}};
    std::vector<std::wstring> lines = {L"1001 WM_COMMAND BN_CLICKED", L"9001 WM_VSCROLL SB_THUMBTRACK pos=65535",
                                       L"0 WM_LBUTTONDOWN x=799 y=479", L"1201 WM_NOTIFY code=-4294967295", L"j", L"W"};
    // The glyphs drawn a pixel wider than measured at 15 pixels, run to the longest line
    // the strip can take.
    for (wchar_t c : {L'A', L'T', L'W', L'.', L'w', L'}'}) lines.emplace_back(60, c);

    HDC screen = ::GetDC(nullptr);
    HDC dc = ::CreateCompatibleDC(screen);
    HBITMAP canvas = ::CreateCompatibleBitmap(screen, kWidth, kHeight);
    ::ReleaseDC(nullptr, screen);
    ASSERT_TRUE(dc && canvas);
    HGDIOBJ old = ::SelectObject(dc, canvas);
    for (const FontCase& f : fonts) {
        const Font font(f.height, f.weight);
        for (const std::wstring& line : lines) {
            SCOPED_TRACE(std::to_string(f.height) + " px: " + std::string(line.begin(), line.end()));
            FillBox(dc, RECT{0, 0, kWidth, kHeight}, RGB(0, 0, 0));
            DrawLabel(dc, line, RECT{kLeft, 0, kWidth, kHeight}, font, RGB(255, 255, 255));
            const int ink = InkWidth(dc, line, font);
            EXPECT_LE(InkRight(dc), kLeft + ink);
            if (f.height == 15 && line.size() < 60) {
                EXPECT_LT(ink, 400) << "in the strip's font a log line's bound is under half a row";
            }
        }
    }
    EXPECT_EQ(InkWidth(dc, L"", Font(15)), 0);
    EXPECT_GT(InkWidth(nullptr, L"x", Font(15)), kWidth) << "without a DC nothing is known: all of the box";
    ::SelectObject(dc, old);
    ::DeleteObject(canvas);
    ::DeleteDC(dc);
}

}  // namespace
}  // namespace zel::demo
