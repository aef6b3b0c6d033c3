// A memory DC with a bitmap of its own selected, for pixel tests: 32-bpp (compatible with
// the screen) or 1-bpp; and a memory DC holding someone else's bitmap for a scope. Both
// release what they made on destruction.
#pragma once

#include <windows.h>

#include <algorithm>

namespace zel::test {

class MemorySurface {
public:
    MemorySurface(int w, int h, bool mono) : w_(w), h_(h) {
        HDC screen = GetDC(nullptr);
        dc_ = CreateCompatibleDC(screen);
        bmp_ = mono ? CreateBitmap(w, h, 1, 1, nullptr) : CreateCompatibleBitmap(screen, w, h);
        ReleaseDC(nullptr, screen);
        oldBmp_ = SelectObject(dc_, bmp_);
    }
    ~MemorySurface() {
        SelectObject(dc_, oldBmp_);
        DeleteObject(bmp_);
        DeleteDC(dc_);
    }
    MemorySurface(const MemorySurface&) = delete;
    MemorySurface& operator=(const MemorySurface&) = delete;

    HDC dc() const { return dc_; }
    HBITMAP bitmap() const { return bmp_; }
    int w() const { return w_; }
    int h() const { return h_; }
    COLORREF Pixel(int x, int y) const { return GetPixel(dc_, x, y); }

    // How many pixels are `c`, and the bounding box (exclusive right and bottom) of those
    // that are not `background` (0,0,0,0 when none are).
    int Count(COLORREF c) const {
        int n = 0;
        for (int y = 0; y < h_; ++y)
            for (int x = 0; x < w_; ++x) n += Pixel(x, y) == c;
        return n;
    }
    RECT InkBox(COLORREF background) const {
        RECT r{0, 0, 0, 0};
        bool any = false;
        for (int y = 0; y < h_; ++y)
            for (int x = 0; x < w_; ++x)
                if (Pixel(x, y) != background) {
                    r = any ? RECT{std::min<LONG>(r.left, x), std::min<LONG>(r.top, y), std::max<LONG>(r.right, x + 1),
                                   std::max<LONG>(r.bottom, y + 1)}
                            : RECT{x, y, x + 1, y + 1};
                    any = true;
                }
        return r;
    }

protected:
    int w_, h_;
    HDC dc_;
    HBITMAP bmp_;
    HGDIOBJ oldBmp_;
};

class BitmapDC {
public:
    explicit BitmapDC(HBITMAP bitmap) : dc_(CreateCompatibleDC(nullptr)), old_(SelectObject(dc_, bitmap)) {}
    ~BitmapDC() {
        SelectObject(dc_, old_);
        DeleteDC(dc_);
    }
    BitmapDC(const BitmapDC&) = delete;
    BitmapDC& operator=(const BitmapDC&) = delete;
    operator HDC() const { return dc_; }

private:
    HDC dc_;
    HGDIOBJ old_;
};

}  // namespace zel::test
