// A memory DC with a bitmap of its own selected, for pixel tests: 32-bpp (compatible with
// the screen) or 1-bpp; and a memory DC holding someone else's bitmap for a scope. Both
// release what they made on destruction.
#pragma once

#include <windows.h>

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
