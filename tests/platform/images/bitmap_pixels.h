// Reading a bitmap back through the public API, and an owner for loaded bitmaps.
#pragma once

#include <windows.h>

#include <cstring>
#include <vector>

namespace zel::test {

struct BitmapPixels {
    int width = 0, height = 0, bpp = 0;
    std::vector<uint32_t> px;  // top row first; 0x00RRGGBB for 32 bpp
};

// GetObjectW + GetBitmapBits: 32-bpp rows are width * 4 bytes, already WORD-aligned.
inline BitmapPixels ReadBitmap(HBITMAP bitmap) {
    BitmapPixels out;
    BITMAP bm{};
    if (GetObjectW(bitmap, sizeof bm, &bm) != static_cast<int>(sizeof bm) || bm.bmBitsPixel != 32) return out;
    out.width = bm.bmWidth, out.height = bm.bmHeight, out.bpp = bm.bmBitsPixel;
    std::vector<uint8_t> bytes(static_cast<size_t>(bm.bmWidthBytes) * bm.bmHeight);
    GetBitmapBits(bitmap, static_cast<LONG>(bytes.size()), bytes.data());
    out.px.resize(static_cast<size_t>(out.width) * out.height);
    std::memcpy(out.px.data(), bytes.data(), bytes.size());
    return out;
}

class OwnedBitmap {
public:
    explicit OwnedBitmap(HBITMAP h) : h_(h) {}
    ~OwnedBitmap() {
        if (h_) DeleteObject(h_);
    }
    OwnedBitmap(const OwnedBitmap&) = delete;
    OwnedBitmap& operator=(const OwnedBitmap&) = delete;
    HBITMAP get() const { return h_; }
    explicit operator bool() const { return h_ != nullptr; }

private:
    HBITMAP h_;
};

}  // namespace zel::test
