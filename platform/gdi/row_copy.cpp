// Wide row copies: vector loops with aligned stores and unaligned loads.
#include "gdi/row_copy.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace zel::gdi::detail {

namespace {

#if defined(__x86_64__) || defined(__i386__)
// Both loops first copy one unaligned vector, then continue from the first aligned
// destination address, and finish with one unaligned vector ending at the last byte;
// the few bytes written twice are written with the same values. A block's loads are all
// issued before its stores, so a destination a few bytes ahead of the source (modulo
// 4096) costs at most one false store-to-load dependency per block. `bytes` >= 64.
void CopySse2(void* dst, const void* src, size_t bytes) {
    auto* d = static_cast<char*>(dst);
    const auto* s = static_cast<const char*>(src);
    const __m128i first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
    const __m128i last = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + bytes - 16));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d), first);
    const size_t skip = 16 - (reinterpret_cast<uintptr_t>(d) & 15);
    char* out = d + skip;
    const char* in = s + skip;
    char* const end = d + bytes - 16;
    for (; out + 64 <= end; out += 64, in += 64) {
        const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
        const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 16));
        const __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 32));
        const __m128i e = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 48));
        _mm_store_si128(reinterpret_cast<__m128i*>(out), a);
        _mm_store_si128(reinterpret_cast<__m128i*>(out + 16), b);
        _mm_store_si128(reinterpret_cast<__m128i*>(out + 32), c);
        _mm_store_si128(reinterpret_cast<__m128i*>(out + 48), e);
    }
    for (; out < end; out += 16, in += 16)
        _mm_store_si128(reinterpret_cast<__m128i*>(out),
                        _mm_loadu_si128(reinterpret_cast<const __m128i*>(in)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(end), last);
}

__attribute__((target("avx2"))) void CopyAvx2(void* dst, const void* src, size_t bytes) {
    auto* d = static_cast<char*>(dst);
    const auto* s = static_cast<const char*>(src);
    const __m256i first = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(s));
    const __m256i last = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(s + bytes - 32));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(d), first);
    const size_t skip = 32 - (reinterpret_cast<uintptr_t>(d) & 31);
    char* out = d + skip;
    const char* in = s + skip;
    char* const end = d + bytes - 32;
    for (; out + 128 <= end; out += 128, in += 128) {
        const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
        const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + 32));
        const __m256i c = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + 64));
        const __m256i e = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + 96));
        _mm256_store_si256(reinterpret_cast<__m256i*>(out), a);
        _mm256_store_si256(reinterpret_cast<__m256i*>(out + 32), b);
        _mm256_store_si256(reinterpret_cast<__m256i*>(out + 64), c);
        _mm256_store_si256(reinterpret_cast<__m256i*>(out + 96), e);
    }
    for (; out < end; out += 32, in += 32)
        _mm256_store_si256(reinterpret_cast<__m256i*>(out),
                           _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in)));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(end), last);
}

CopyFn Best() { return __builtin_cpu_supports("avx2") ? &CopyAvx2 : &CopySse2; }
#else
void CopyPlain(void* d, const void* s, size_t bytes) { std::memcpy(d, s, bytes); }
CopyFn Best() { return &CopyPlain; }
#endif

// The first call picks the loop for this CPU; being constant-initialised, the pointer is
// valid even for copies made by other static initialisers.
void Resolve(void* d, const void* s, size_t bytes) {
    wideRowCopy = Best();
    wideRowCopy(d, s, bytes);
}

}  // namespace

constinit CopyFn wideRowCopy = &Resolve;

}  // namespace zel::gdi::detail
