// Raster operations against the memory traffic they cannot beat (memcpy of the same rows)
// and against pixman's nearest-neighbour scaling. Budgets: bench/budgets.txt.
#include <benchmark/benchmark.h>
#include <pixman.h>

#include <cstdint>
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
        zel::gdi::PixelStore& pixels = px().pixels;
        for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<uint32_t>(i * 2654435761u) >> 8;
    }
    ~Surface() {
        SelectObject(dc_, old_);
        DeleteObject(bmp_);
        DeleteDC(dc_);
    }
    HDC dc() const { return dc_; }
    zel::gdi::PixelBuffer& px() const { return zel::gdi::LookupBitmap(bmp_)->Pixels(); }

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

// The C library's memcpy, called through a pointer the compiler cannot see through, so
// that it cannot substitute its own inline copy for the baselines.
void* (*volatile g_memcpy)(void*, const void*, size_t) = &std::memcpy;

// The floor for any blit: the same rows copied with memcpy between the same buffers.
void BM_MemcpyRows(benchmark::State& state, int w, int h) {
    Surface src(w, h), dst(kScreenW, kScreenH);
    const int at = OffsetFor(w, h);
    zel::gdi::PixelBuffer &s = src.px(), &d = dst.px();
    auto* const copy = g_memcpy;
    for (auto _ : state) {
        for (int y = 0; y < h; ++y) copy(d.row(at + y) + at, s.row(y), static_cast<size_t>(w) * 4);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * int64_t{w} * h * 4);
}

// The blit's worst case is about placement, not size: where the destination row lies a
// few bytes ahead of the source row modulo 4096, some memcpy strategies slow down many
// times over. Placement k copies 800 x 480 from source column k to destination column 2k,
// with the destination's first row chosen so that, modulo 4096, it starts exactly where
// the source's does: the destination then lies 4k bytes ahead, and both sides' alignment
// varies. The budget takes the worst of the eight.
constexpr int kPlacedW = 800 + 16, kSlackRows = 64;

// The destination row of `dst` whose start is congruent to source row 0 modulo 4096
// (pixel buffers are 64-byte aligned and the stride is 51 x 64 bytes, so one of 64 is).
int CongruentRow(zel::gdi::PixelBuffer& dst, zel::gdi::PixelBuffer& src) {
    const auto s = reinterpret_cast<uintptr_t>(src.row(0));
    for (int r = 0; r < kSlackRows; ++r)
        if ((reinterpret_cast<uintptr_t>(dst.row(r)) - s) % 4096 == 0) return r;
    return 0;
}

void BM_BitBltAt(benchmark::State& state, int k) {
    Surface src(kPlacedW, kScreenH), dst(kPlacedW, kScreenH + kSlackRows);
    const int row = CongruentRow(dst.px(), src.px());
    for (auto _ : state) {
        BitBlt(dst.dc(), 2 * k, row, kScreenW, kScreenH, src.dc(), k, 0, SRCCOPY);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * int64_t{kScreenW} * kScreenH * 4);
}

// The floor it is measured against: the same rows copied by the C library's memcpy
// between rows 2 KiB apart modulo 4096 (no aliasing at all).

void BM_MemcpyUnaliased(benchmark::State& state) {
    Surface src(kPlacedW, kScreenH), dst(kPlacedW, kScreenH + kSlackRows);
    zel::gdi::PixelBuffer &s = src.px(), &d = dst.px();
    const int row = CongruentRow(d, s);
    auto* const copy = g_memcpy;
    for (auto _ : state) {
        for (int y = 0; y < kScreenH; ++y) copy(d.row(row + y) + 512, s.row(y), size_t{kScreenW} * 4);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * int64_t{kScreenW} * kScreenH * 4);
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
BENCHMARK_CAPTURE(BM_BitBltAt, srccopy_800x480_0, 0);
BENCHMARK_CAPTURE(BM_BitBltAt, srccopy_800x480_1, 1);
BENCHMARK_CAPTURE(BM_BitBltAt, srccopy_800x480_2, 2);
BENCHMARK_CAPTURE(BM_BitBltAt, srccopy_800x480_3, 3);
BENCHMARK_CAPTURE(BM_BitBltAt, srccopy_800x480_4, 4);
BENCHMARK_CAPTURE(BM_BitBltAt, srccopy_800x480_5, 5);
BENCHMARK_CAPTURE(BM_BitBltAt, srccopy_800x480_6, 6);
BENCHMARK_CAPTURE(BM_BitBltAt, srccopy_800x480_7, 7);
BENCHMARK(BM_MemcpyUnaliased);
BENCHMARK_CAPTURE(BM_StretchBlt, x2, 400, 240);
BENCHMARK_CAPTURE(BM_StretchBlt, x0_5, 1600, 960);
BENCHMARK_CAPTURE(BM_StretchBlt, x1_37, 584, 350);
BENCHMARK_CAPTURE(BM_PixmanNearest, x2, 400, 240);
BENCHMARK_CAPTURE(BM_PixmanNearest, x0_5, 1600, 960);
BENCHMARK_CAPTURE(BM_PixmanNearest, x1_37, 584, 350);

}  // namespace

BENCHMARK_MAIN();
