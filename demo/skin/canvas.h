// A 32-bpp memory bitmap selected into its own memory DC: the surface every skin piece is
// painted on and saved from.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace zel::demo {

class Canvas {
public:
    // Starts black, as a fresh compatible bitmap does. A canvas whose DC or bitmap could
    // not be made is !ok() and every drawing call on it fails harmlessly.
    Canvas(int width, int height);
    ~Canvas();
    Canvas(Canvas&& other) noexcept;
    Canvas& operator=(Canvas&& other) noexcept;
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    bool ok() const { return dc_ && bitmap_; }
    HDC dc() const { return dc_; }
    HBITMAP bitmap() const { return bitmap_; }
    int width() const { return width_; }
    int height() const { return height_; }

    COLORREF Pixel(int x, int y) const { return GetPixel(dc_, x, y); }
    // Every pixel as a COLORREF, row by row.
    std::vector<COLORREF> Colors() const;
    void SetPixelColor(int x, int y, COLORREF color) { SetPixelV(dc_, x, y, color); }

    // A copy 1/factor the size, each pixel the average of the factor x factor block it
    // covers (HALFTONE shrinking): how shapes drawn large come out antialiased.
    Canvas Reduced(int factor) const;

    bool Save(const std::string& path) const;  // .bmp or .png by extension

private:
    void Release();

    HDC dc_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ original_ = nullptr;  // the DC's default bitmap, put back before deletion
    int width_ = 0, height_ = 0;
};

}  // namespace zel::demo
