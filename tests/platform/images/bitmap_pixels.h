// Reading a bitmap back through the public API, an owner for loaded bitmaps, and the
// decoder's answers checked against expected pixels or an expected refusal.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "gdi/image_codec.h"

namespace zel::test {

inline detail::DecodedImage Decode(const std::vector<uint8_t>& file) {
    return detail::DecodeImage(file.data(), file.size());
}

// Decoded to 32 bpp with exactly `want` (0x00RRGGBB, top row first).
inline ::testing::AssertionResult SamePixels(const detail::DecodedImage& got,
                                             const std::vector<std::vector<uint32_t>>& want) {
    if (!got.ok()) return ::testing::AssertionFailure() << "decoding failed: " << got.error;
    const auto& px = got.pixels;
    int h = static_cast<int>(want.size()), w = static_cast<int>(want[0].size());
    if (px.bpp != 32 || px.width != w || px.height != h)
        return ::testing::AssertionFailure() << "got " << px.width << "x" << px.height << "x" << px.bpp << ", want "
                                             << w << "x" << h << "x32";
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            if (px.row(y)[x] != want[y][x])
                return ::testing::AssertionFailure() << "pixel (" << x << "," << y << ") is " << std::hex
                                                     << px.row(y)[x] << ", want " << want[y][x];
    return ::testing::AssertionSuccess();
}

// Refused with `reason` in its error, no pixels, and no bitmap from the loader.
inline void ExpectRefused(const std::vector<uint8_t>& file, const char* reason) {
    detail::DecodedImage d = Decode(file);
    EXPECT_NE(d.error.find(reason), std::string::npos) << "error: " << d.error;
    EXPECT_TRUE(d.pixels.pixels.empty());
    EXPECT_EQ(detail::LoadImageFromMemory(file.data(), file.size(), nullptr), nullptr);
}

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
