#include "label_fixture.h"

#include <cstdio>

#include "ControlFont.h"

namespace labeltest {

ArtBitmap::ArtBitmap(int width, int height, const Paint& colour) {
    HDC screen = ::GetDC(nullptr);
    bitmap_ = ::CreateCompatibleBitmap(screen, width, height);
    HDC dc = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(dc, bitmap_);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) ::SetPixel(dc, x, y, colour(x, y));
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
}

ArtBitmap::~ArtBitmap() { ::DeleteObject(bitmap_); }

Reference::Reference(int w, int h, COLORREF fill) : MemorySurface(w, h, false) { Fill(RECT{0, 0, w, h}, fill); }

void Reference::Fill(const RECT& rc, COLORREF colour) { zel::test::FillBox(dc(), rc, colour); }

void Reference::Pixels(const Paint& colour) {
    for (int y = 0; y < h(); ++y)
        for (int x = 0; x < w(); ++x) ::SetPixel(dc(), x, y, colour(x, y));
}

void Reference::Text(const CString& text, RECT rc, UINT format, int height, COLORREF colour) {
    HFONT font = zelctl::CreateControlFont(height);
    HGDIOBJ old = ::SelectObject(dc(), font);
    ::SetBkMode(dc(), TRANSPARENT);
    ::SetTextColor(dc(), colour);
    ::DrawTextW(dc(), text, text.GetLength(), &rc, format);
    ::SelectObject(dc(), old);
    ::DeleteObject(font);
}

std::string Reference::Diff(HWND window) const {
    const zel::test::Image actual = zel::test::CaptureWindow(window, 0);
    if (actual.width != w() || actual.height != h())
        return "size " + std::to_string(actual.width) + "x" + std::to_string(actual.height);
    int count = 0;
    char first[96] = "";
    for (int y = 0; y < h(); ++y)
        for (int x = 0; x < w(); ++x) {
            const COLORREF want = ::GetPixel(dc(), x, y), got = actual.At(x, y);
            if (want != got && count++ == 0)
                std::snprintf(first, sizeof first, "first at (%d,%d): %06x, expected %06x", x, y,
                              static_cast<unsigned>(got), static_cast<unsigned>(want));
        }
    return count ? std::to_string(count) + " pixels differ, " + first : std::string();
}

SIZE Measure(const CString& text, int height, UINT format) {
    HDC screen = ::GetDC(nullptr);
    HFONT font = zelctl::CreateControlFont(height);
    HGDIOBJ old = ::SelectObject(screen, font);
    RECT rc{0, 0, 0, 0};
    ::DrawTextW(screen, text, text.GetLength(), &rc, format | DT_CALCRECT);
    ::SelectObject(screen, old);
    ::DeleteObject(font);
    ::ReleaseDC(nullptr, screen);
    return SIZE{rc.right - rc.left, rc.bottom - rc.top};
}

std::string LabelTest::Shows(CWnd& control, const Reference& want) {
    control.Invalidate();
    desktop.RunUntilIdle();
    return want.Diff(control.m_hWnd);
}

std::string LabelTest::ShowsWhereVisible(HWND window, const Reference& want) {
    CRect shown;  // the window's client area that lies within the parent's, in client coordinates
    ::GetWindowRect(window, &shown);
    shown.IntersectRect(shown, CRect(0, 0, 320, 200));
    shown.OffsetRect(-ScreenOf(window, 0, 0).x, -ScreenOf(window, 0, 0).y);
    if (shown.IsRectEmpty()) return "nothing shows";
    int count = 0;
    std::string first;
    for (int y = shown.top; y < shown.bottom; ++y)
        for (int x = shown.left; x < shown.right; ++x) {
            const COLORREF expected = ::GetPixel(want.dc(), x, y), got = ShownAt(window, x, y);
            if (expected != got && count++ == 0)
                first = "first at (" + std::to_string(x) + "," + std::to_string(y) + "): " + zel::test::Hex(got) +
                        ", expected " + zel::test::Hex(expected);
        }
    return count ? std::to_string(count) + " pixels differ, " + first : std::string();
}

}  // namespace labeltest
