#include "skin/canvas.h"

#include <zel/gdi_extras.h>

#include <cstdint>
#include <utility>

namespace zel::demo {

Canvas::Canvas(int width, int height) : width_(width), height_(height) {
    if (width <= 0 || height <= 0) return;
    HDC screen = GetDC(nullptr);
    dc_ = CreateCompatibleDC(screen);
    // Compatible with the screen, not with the new DC: a fresh memory DC holds a 1x1
    // monochrome bitmap and would make the canvas monochrome too.
    bitmap_ = CreateCompatibleBitmap(screen, width, height);
    ReleaseDC(nullptr, screen);
    if (dc_ && bitmap_) original_ = SelectObject(dc_, bitmap_);
}

Canvas::~Canvas() { Release(); }

Canvas::Canvas(Canvas&& other) noexcept
    : dc_(std::exchange(other.dc_, nullptr)),
      bitmap_(std::exchange(other.bitmap_, nullptr)),
      original_(std::exchange(other.original_, nullptr)),
      width_(other.width_),
      height_(other.height_) {}

Canvas& Canvas::operator=(Canvas&& other) noexcept {
    if (this != &other) {
        Release();
        dc_ = std::exchange(other.dc_, nullptr);
        bitmap_ = std::exchange(other.bitmap_, nullptr);
        original_ = std::exchange(other.original_, nullptr);
        width_ = other.width_;
        height_ = other.height_;
    }
    return *this;
}

void Canvas::Release() {
    if (dc_ && original_) SelectObject(dc_, original_);
    if (bitmap_) DeleteObject(bitmap_);
    if (dc_) DeleteDC(dc_);
    dc_ = nullptr;
    bitmap_ = nullptr;
    original_ = nullptr;
}

Canvas Canvas::Reduced(int factor) const {
    if (factor <= 1 || !ok()) {
        Canvas copy(width_, height_);
        if (ok()) BitBlt(copy.dc(), 0, 0, width_, height_, dc_, 0, 0, SRCCOPY);
        return copy;
    }
    Canvas small(width_ / factor, height_ / factor);
    if (!small.ok()) return small;
    int oldMode = SetStretchBltMode(small.dc(), HALFTONE);
    StretchBlt(small.dc(), 0, 0, small.width(), small.height(), dc_, 0, 0, small.width() * factor,
               small.height() * factor, SRCCOPY);
    SetStretchBltMode(small.dc(), oldMode);
    return small;
}

std::vector<COLORREF> Canvas::Colors() const {
    std::vector<COLORREF> colors;
    if (!ok()) return colors;
    // A 32-bpp bitmap's bits are 0x00RRGGBB per pixel, rows packed.
    std::vector<uint32_t> bits(static_cast<size_t>(width_) * height_);
    GetBitmapBits(bitmap_, static_cast<LONG>(bits.size() * 4), bits.data());
    colors.reserve(bits.size());
    for (uint32_t p : bits) colors.push_back(RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF));
    return colors;
}

bool Canvas::Save(const std::string& path) const { return ok() && zel::SaveBitmap(bitmap_, path.c_str()); }

}  // namespace zel::demo
