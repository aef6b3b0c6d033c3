// Raster operations against the memory traffic they cannot beat (memcpy of the same rows)
// and against pixman's nearest-neighbour scaling. Budgets: bench/budgets.txt.
#include <benchmark/benchmark.h>
#include <pixman.h>

#include <cstring>
#include <vector>
#include <windows.h>

#include "gdi/objects.h"

namespace {

// A 32-bpp memory DC with its own bitmap, filled with a pattern.
class Surface {
public:
    Surface(int w, int h) {
        HDC screen = GetDC(nullptr);
        dc_ = CreateCompatibleDC(screen);
        bmp_ = CreateCompatibleBitmap(screen, w, h);
        ReleaseDC(nullptr, screen);
        old_ = SelectObject(dc_, bmp_);
        std::vector<uint32_t>& pixels = px().pixels;
        for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<uint32_t>(i * 2654435761u) >> 8;
    }
    ~Surface() {
        SelectObject(dc_, old_);
        DeleteObject(bmp_);
        DeleteDC(dc_);
    }
    HDC dc() const { return dc_; }
    zel::gdi::PixelBuffer& px() const { return zel::gdi::LookupBitmap(bmp_)->px; }

private:
    HDC dc_;
    HBITMAP bmp_;
    HGDIOBJ old_;
};

// Pieces of w x h blitted into a full 800 x 480 screen-sized canvas at (dx, dy).
constexpr int kScreenW = 800, kScreenH = 480;

int OffsetFor(int w, int h) { return w == kScreenW && h == kScreenH ? 0 : 16; }

void BM_BitBlt(benchmark::State& state, DWORD rop, int w, int h) {
    Surface src(w, h), dst(kScreenW, kScreenH);
    const int at = OffsetFor(w, h);
    for (auto _ : state) {
        BitBlt(dst.dc(), at, at, w, h, src.dc(), 0, 0, rop);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * int64_t{w} * h * 4);
}

// The floor for any blit: the same rows copied with memcpy between the same buffers.
void BM_MemcpyRows(benchmark::State& state, int w, int h) {
    Surface src(w, h), dst(kScreenW, kScreenH);
    const int at = OffsetFor(w, h);
    zel::gdi::PixelBuffer &s = src.px(), &d = dst.px();
    for (auto _ : state) {
        for (int y = 0; y < h; ++y) std::memcpy(d.row(at + y) + at, s.row(y), static_cast<size_t>(w) * 4);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * int64_t{w} * h * 4);
}

// Stretches a source of sw x sh to the full canvas.
void BM_StretchBlt(benchmark::State& state, int sw, int sh) {
    Surface src(sw, sh), dst(kScreenW, kScreenH);
    SetStretchBltMode(dst.dc(), COLORONCOLOR);
    for (auto _ : state) {
        StretchBlt(dst.dc(), 0, 0, kScreenW, kScreenH, src.dc(), 0, 0, sw, sh, SRCCOPY);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * int64_t{kScreenW} * kScreenH);
}

// The same scaling by pixman: nearest filter, SRC operator, images over the same pixels.
void BM_PixmanNearest(benchmark::State& state, int sw, int sh) {
    Surface src(sw, sh), dst(kScreenW, kScreenH);
    pixman_image_t* s = pixman_image_create_bits(PIXMAN_x8r8g8b8, sw, sh, src.px().pixels.data(), sw * 4);
    pixman_image_t* d =
        pixman_image_create_bits(PIXMAN_x8r8g8b8, kScreenW, kScreenH, dst.px().pixels.data(), kScreenW * 4);
    pixman_transform_t scale;
    pixman_transform_init_scale(&scale, pixman_double_to_fixed(static_cast<double>(sw) / kScreenW),
                                pixman_double_to_fixed(static_cast<double>(sh) / kScreenH));
    pixman_image_set_transform(s, &scale);
    pixman_image_set_filter(s, PIXMAN_FILTER_NEAREST, nullptr, 0);
    for (auto _ : state) {
        pixman_image_composite32(PIXMAN_OP_SRC, s, nullptr, d, 0, 0, 0, 0, 0, 0, kScreenW, kScreenH);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * int64_t{kScreenW} * kScreenH);
    pixman_image_unref(s);
    pixman_image_unref(d);
}

BENCHMARK_CAPTURE(BM_BitBlt, srccopy_800x480, SRCCOPY, 800, 480);
BENCHMARK_CAPTURE(BM_BitBlt, srccopy_78x76, SRCCOPY, 78, 76);
BENCHMARK_CAPTURE(BM_BitBlt, srccopy_400x40, SRCCOPY, 400, 40);
BENCHMARK_CAPTURE(BM_BitBlt, srcand_800x480, SRCAND, 800, 480);
BENCHMARK_CAPTURE(BM_BitBlt, srcpaint_800x480, SRCPAINT, 800, 480);
BENCHMARK_CAPTURE(BM_MemcpyRows, 800x480, 800, 480);
BENCHMARK_CAPTURE(BM_MemcpyRows, 78x76, 78, 76);
BENCHMARK_CAPTURE(BM_MemcpyRows, 400x40, 400, 40);
BENCHMARK_CAPTURE(BM_StretchBlt, x2, 400, 240);
BENCHMARK_CAPTURE(BM_StretchBlt, x0_5, 1600, 960);
BENCHMARK_CAPTURE(BM_StretchBlt, x1_37, 584, 350);
BENCHMARK_CAPTURE(BM_PixmanNearest, x2, 400, 240);
BENCHMARK_CAPTURE(BM_PixmanNearest, x0_5, 1600, 960);
BENCHMARK_CAPTURE(BM_PixmanNearest, x1_37, 584, 350);

}  // namespace

BENCHMARK_MAIN();
