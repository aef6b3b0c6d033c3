// Pixel storage of bitmaps and the screen.
//
// Every surface stores one uint32_t per pixel so that one set of primitives serves all
// formats: 32-bpp pixels are 0x00RRGGBB (GDI writes 0 into the top byte), 1-bpp pixels are
// 0 or 1 (1 = white). What differs per format is only how a COLORREF becomes a pixel and
// how results are masked (a 1-bpp ROP result keeps bit 0).
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

#include <windows.h>

namespace zel::gdi {

// Pixel storage starts on a 64-byte boundary: a cache line, and a whole vector for every
// row copy and ROP loop, whatever the allocator would have given.
template <class T>
struct PixelAllocator {
    using value_type = T;
    static constexpr std::align_val_t kAlign{64};
    PixelAllocator() = default;
    template <class U>
    PixelAllocator(const PixelAllocator<U>&) {}
    T* allocate(size_t n) { return static_cast<T*>(::operator new(n * sizeof(T), kAlign)); }
    void deallocate(T* p, size_t) { ::operator delete(p, kAlign); }
    // A sized store without a fill value is left uninitialised: a new bitmap's zero fill is
    // decided by its owner (see Bitmap::Pixels).
    template <class U>
    void construct(U* p) noexcept {
        ::new (static_cast<void*>(p)) U;
    }
    template <class U, class... Args>
    void construct(U* p, Args&&... args) {
        ::new (static_cast<void*>(p)) U(std::forward<Args>(args)...);
    }
    template <class U>
    bool operator==(const PixelAllocator<U>&) const { return true; }
};
using PixelStore = std::vector<uint32_t, PixelAllocator<uint32_t>>;

struct PixelBuffer {
    int width = 0;
    int height = 0;
    int bpp = 32;  // 1 or 32
    PixelStore pixels;

    PixelBuffer() = default;
    PixelBuffer(int w, int h, int bitsPerPixel, uint32_t fill = 0)
        : width(w), height(h), bpp(bitsPerPixel), pixels(static_cast<size_t>(w) * h, fill) {}
    struct Uninitialised {};
    PixelBuffer(int w, int h, int bitsPerPixel, Uninitialised)
        : width(w), height(h), bpp(bitsPerPixel), pixels(static_cast<size_t>(w) * h) {}

    uint32_t* row(int y) { return pixels.data() + static_cast<size_t>(y) * width; }
    const uint32_t* row(int y) const { return pixels.data() + static_cast<size_t>(y) * width; }
    uint32_t mask() const { return bpp == 1 ? 1u : 0xFFFFFFFFu; }
    bool mono() const { return bpp == 1; }
};

inline uint32_t ColorToPixel32(COLORREF c) {
    return ((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF);
}
inline COLORREF Pixel32ToColor(uint32_t p) {
    return ((p & 0xFF) << 16) | (p & 0xFF00) | ((p >> 16) & 0xFF);
}
// Nearest of black (0) and white (1), first entry winning a tie: what a monochrome
// bitmap's two-entry colour table gives for a solid colour.
inline uint32_t ColorToMono(COLORREF c) {
    unsigned sum = GetRValue(c) + GetGValue(c) + GetBValue(c);
    return sum > 382 ? 1u : 0u;
}
inline uint32_t ColorToPixel(const PixelBuffer& surface, COLORREF c) {
    return surface.mono() ? ColorToMono(c) : ColorToPixel32(c & 0xFFFFFF);
}
inline COLORREF PixelToColor(const PixelBuffer& surface, uint32_t p) {
    if (surface.mono()) return p ? 0xFFFFFF : 0;
    return Pixel32ToColor(p);
}

}  // namespace zel::gdi
