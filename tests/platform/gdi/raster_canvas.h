// A memory DC with its own bitmap for raster tests, with raw pixel access.
#pragma once

#include <windows.h>

#include "support/memory_surface.h"
#include "support/sentinel.h"

#include <cstdio>
#include <string>
#include <vector>

#include "gdi/objects.h"

namespace zel::test {

class Canvas : public MemorySurface {
public:
    // 32-bpp (compatible with the screen) or 1-bpp, every pixel raw `fill`.
    Canvas(int w, int h, bool mono = false, uint32_t fill = kSentinel) : MemorySurface(w, h, mono) { Fill(fill); }
    uint32_t& at(int x, int y) { return px().row(y)[x]; }
    void Fill(uint32_t raw) {
        for (uint32_t& p : px().pixels) p = raw;
    }
    // Every pixel a different raw value (1-bpp: a fixed bit pattern).
    void Gradient() {
        for (int y = 0; y < h_; ++y)
            for (int x = 0; x < w_; ++x) at(x, y) = mono() ? ((x * 3 + y * 5) % 7) & 1 : Distinct(x, y);
    }
    static uint32_t Distinct(int x, int y) { return 0x00100000u + static_cast<uint32_t>(x) * 0x0101u + y * 0x1000u; }
    bool mono() const { return const_cast<Canvas*>(this)->px().mono(); }
    std::vector<uint32_t> Pixels() { return {px().pixels.begin(), px().pixels.end()}; }

    // "" when every pixel outside `inside` is still `raw`, else where the first one differs.
    std::string FenceIntact(const RECT& inside, uint32_t raw = kSentinel) {
        for (int y = 0; y < h_; ++y)
            for (int x = 0; x < w_; ++x) {
                bool in = x >= inside.left && x < inside.right && y >= inside.top && y < inside.bottom;
                if (!in && at(x, y) != raw) {
                    char msg[80];
                    std::snprintf(msg, sizeof msg, "pixel (%d,%d) = %08X outside the target", x, y, at(x, y));
                    return msg;
                }
            }
        return "";
    }

private:
    gdi::PixelBuffer& px() { return gdi::LookupBitmap(bmp_)->Pixels(); }
};

}  // namespace zel::test
