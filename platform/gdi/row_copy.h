// The one copy of pixel rows that do not overlap, used by every blit, stretch and
// conversion that moves whole rows; and the one fill of a row with one pixel value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zel::gdi {

// Rows shorter than this go to memcpy, which is at its best there; longer ones take a
// vector loop. glibc copies 2 KiB and more with `rep movsb`, which slows down many times
// over when the destination lies a few bytes ahead of the source modulo 4096 -- exactly
// where two bitmaps allocated one after the other put their rows.
constexpr size_t kWideRowBytes = 1024;

namespace detail {
using CopyFn = void (*)(void* d, const void* s, size_t bytes);
extern CopyFn wideRowCopy;  // AVX2 where the CPU has it, SSE2 otherwise
}  // namespace detail

// Copies n pixels from s to d; the ranges must not overlap (rows of one surface may,
// so same-surface blits stage them or use memmove).
inline void CopyPixels(uint32_t* d, const uint32_t* s, size_t n) {
    const size_t bytes = n * sizeof *d;
    if (bytes < kWideRowBytes)
        std::memcpy(d, s, bytes);
    else
        detail::wideRowCopy(d, s, bytes);
}

// Writes n copies of v from d, four at a time (the compiler leaves a plain loop scalar);
// the last four may overlap the ones before.
inline void FillPixels(uint32_t* d, size_t n, uint32_t v) {
    using Quad = uint32_t __attribute__((vector_size(16)));
    const Quad q = {v, v, v, v};
    size_t k = 0;
    for (; k + 8 <= n; k += 8) {
        std::memcpy(d + k, &q, sizeof q);
        std::memcpy(d + k + 4, &q, sizeof q);
    }
    if (k + 4 <= n) std::memcpy(d + k, &q, sizeof q), k += 4;
    if (k < n && n >= 4) {
        std::memcpy(d + n - 4, &q, sizeof q);
        return;
    }
    for (; k < n; ++k) d[k] = v;
}

}  // namespace zel::gdi
