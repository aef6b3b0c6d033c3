// The 256 ternary raster operations as row kernels.
//
// Each row of the table is the boolean function of pattern p, source s and destination d
// whose truth table is its index: evaluated on the bit columns P = 0xF0, S = 0xCC,
// D = 0xAA it yields the index itself, which MakeRow checks at compile time. Every row is
// instantiated as two loops (solid pattern, pattern row) over four pixels at a time, so
// the common operations need no special casing to be as fast as the memory allows.
#include <cstring>

#include "gdi/raster.h"

namespace zel::gdi {

namespace {

using Quad = uint32_t __attribute__((vector_size(16)));

inline Quad Load(const uint32_t* p) {
    Quad v;
    std::memcpy(&v, p, sizeof v);
    return v;
}
inline void Store(uint32_t* p, Quad v) { std::memcpy(p, &v, sizeof v); }

template <class F>
void SolidRow(uint32_t* d, const uint32_t* s, uint32_t p, int n, uint32_t mask) {
    constexpr F f{};
    const Quad pv = {p, p, p, p}, mv = {mask, mask, mask, mask};
    int i = 0;
    for (; i + 8 <= n; i += 8) {
        Quad a = f(pv, Load(s + i), Load(d + i)) & mv;
        Quad b = f(pv, Load(s + i + 4), Load(d + i + 4)) & mv;
        Store(d + i, a);
        Store(d + i + 4, b);
    }
    for (; i < n; ++i) d[i] = f(p, s[i], d[i]) & mask;
}

template <class F>
void PatternRow(uint32_t* d, const uint32_t* s, const uint32_t* p, int n, uint32_t mask) {
    constexpr F f{};
    const Quad mv = {mask, mask, mask, mask};
    int i = 0;
    for (; i + 4 <= n; i += 4) Store(d + i, f(Load(p + i), Load(s + i), Load(d + i)) & mv);
    for (; i < n; ++i) d[i] = f(p[i], s[i], d[i]) & mask;
}

template <unsigned Index, class F>
constexpr RopRow MakeRow(F) {
    static_assert((F{}(0xF0u, 0xCCu, 0xAAu) & 0xFFu) == Index, "formula does not match its ROP3 index");
    return RopRow{&SolidRow<F>, &PatternRow<F>};
}

#define ZEL_ROP3(index, formula) MakeRow<index>([](auto p, auto s, auto d) { return formula; })

const RopRow kRows[256] = {
    ZEL_ROP3(0x00, d & 0),                          // BLACKNESS
    ZEL_ROP3(0x01, ~(p | (s | d))),
    ZEL_ROP3(0x02, d & ~(p | s)),
    ZEL_ROP3(0x03, ~(p | s)),
    ZEL_ROP3(0x04, s & ~(p | d)),
    ZEL_ROP3(0x05, ~(p | d)),
    ZEL_ROP3(0x06, ~p & (s ^ d)),
    ZEL_ROP3(0x07, ~(p | (s & d))),
    ZEL_ROP3(0x08, s & (d & ~p)),
    ZEL_ROP3(0x09, ~(p | (s ^ d))),
    ZEL_ROP3(0x0A, d & ~p),
    ZEL_ROP3(0x0B, ~p & (d | ~s)),
    ZEL_ROP3(0x0C, s & ~p),
    ZEL_ROP3(0x0D, ~p & (s | ~d)),
    ZEL_ROP3(0x0E, ~p & (s | d)),
    ZEL_ROP3(0x0F, ~p),
    ZEL_ROP3(0x10, p & ~(s | d)),
    ZEL_ROP3(0x11, ~(s | d)),                       // NOTSRCERASE
    ZEL_ROP3(0x12, ~s & (p ^ d)),
    ZEL_ROP3(0x13, ~(s | (p & d))),
    ZEL_ROP3(0x14, ~d & (p ^ s)),
    ZEL_ROP3(0x15, ~(d | (p & s))),
    ZEL_ROP3(0x16, p ^ ((p & s) | (s ^ d))),
    ZEL_ROP3(0x17, p ^ ((p ^ ~s) | (s ^ d))),
    ZEL_ROP3(0x18, (p ^ s) & (p ^ d)),
    ZEL_ROP3(0x19, ~((p & s) | (s ^ d))),
    ZEL_ROP3(0x1A, p ^ (d | (p & s))),
    ZEL_ROP3(0x1B, (p & d) ^ (d | ~s)),
    ZEL_ROP3(0x1C, p ^ (s | (p & d))),
    ZEL_ROP3(0x1D, (p & s) ^ (s | ~d)),
    ZEL_ROP3(0x1E, p ^ (s | d)),
    ZEL_ROP3(0x1F, ~(p & (s | d))),
    ZEL_ROP3(0x20, p & (d & ~s)),
    ZEL_ROP3(0x21, ~(s | (p ^ d))),
    ZEL_ROP3(0x22, d & ~s),
    ZEL_ROP3(0x23, ~s & (d | ~p)),
    ZEL_ROP3(0x24, (p ^ s) & (s ^ d)),
    ZEL_ROP3(0x25, ~((p & s) | (p ^ d))),
    ZEL_ROP3(0x26, s ^ (d | (p & s))),
    ZEL_ROP3(0x27, (p | d) ^ (s | ~d)),
    ZEL_ROP3(0x28, d & (p ^ s)),
    ZEL_ROP3(0x29, p ^ ((p & s) | (s ^ ~d))),
    ZEL_ROP3(0x2A, d & ~(p & s)),
    ZEL_ROP3(0x2B, p ^ ((p ^ d) | (p ^ ~s))),
    ZEL_ROP3(0x2C, (p ^ s) & (s | d)),
    ZEL_ROP3(0x2D, p ^ (s | ~d)),
    ZEL_ROP3(0x2E, (p & s) ^ (s | d)),
    ZEL_ROP3(0x2F, ~p | (d & ~s)),
    ZEL_ROP3(0x30, p & ~s),
    ZEL_ROP3(0x31, ~s & (p | ~d)),
    ZEL_ROP3(0x32, ~s & (p | d)),
    ZEL_ROP3(0x33, ~s),                             // NOTSRCCOPY
    ZEL_ROP3(0x34, s ^ (p | (s & d))),
    ZEL_ROP3(0x35, (p & s) ^ (p | ~d)),
    ZEL_ROP3(0x36, s ^ (p | d)),
    ZEL_ROP3(0x37, ~(s & (p | d))),
    ZEL_ROP3(0x38, (p ^ s) & (p | d)),
    ZEL_ROP3(0x39, s ^ (p | ~d)),
    ZEL_ROP3(0x3A, (p & s) ^ (p | d)),
    ZEL_ROP3(0x3B, ~s | (d & ~p)),
    ZEL_ROP3(0x3C, p ^ s),
    ZEL_ROP3(0x3D, (p ^ s) | ~(p | d)),
    ZEL_ROP3(0x3E, (p ^ s) | (d & ~p)),
    ZEL_ROP3(0x3F, ~(p & s)),
    ZEL_ROP3(0x40, p & (s & ~d)),
    ZEL_ROP3(0x41, ~(d | (p ^ s))),
    ZEL_ROP3(0x42, (p ^ d) & (s ^ d)),
    ZEL_ROP3(0x43, ~((p ^ s) | (p & d))),
    ZEL_ROP3(0x44, s & ~d),                         // SRCERASE
    ZEL_ROP3(0x45, ~d & (s | ~p)),
    ZEL_ROP3(0x46, d ^ (s | (p & d))),
    ZEL_ROP3(0x47, (p | s) ^ (d | ~s)),
    ZEL_ROP3(0x48, s & (p ^ d)),
    ZEL_ROP3(0x49, p ^ ((p & d) | (s ^ ~d))),
    ZEL_ROP3(0x4A, (p ^ d) & (s | d)),
    ZEL_ROP3(0x4B, p ^ (d | ~s)),
    ZEL_ROP3(0x4C, s & ~(p & d)),
    ZEL_ROP3(0x4D, p ^ ((p ^ s) | (p ^ ~d))),
    ZEL_ROP3(0x4E, (p & d) ^ (s | d)),
    ZEL_ROP3(0x4F, ~p | (s & ~d)),
    ZEL_ROP3(0x50, p & ~d),
    ZEL_ROP3(0x51, ~d & (p | ~s)),
    ZEL_ROP3(0x52, d ^ (p | (s & d))),
    ZEL_ROP3(0x53, (p | s) ^ (d | ~p)),
    ZEL_ROP3(0x54, ~d & (p | s)),
    ZEL_ROP3(0x55, ~d),                             // DSTINVERT
    ZEL_ROP3(0x56, d ^ (p | s)),
    ZEL_ROP3(0x57, ~(d & (p | s))),
    ZEL_ROP3(0x58, (p | s) & (p ^ d)),
    ZEL_ROP3(0x59, d ^ (p | ~s)),
    ZEL_ROP3(0x5A, p ^ d),                          // PATINVERT
    ZEL_ROP3(0x5B, (p ^ d) | ~(p | s)),
    ZEL_ROP3(0x5C, (p | s) ^ (p & d)),
    ZEL_ROP3(0x5D, ~d | (s & ~p)),
    ZEL_ROP3(0x5E, (p ^ d) | (s & ~p)),
    ZEL_ROP3(0x5F, ~(p & d)),
    ZEL_ROP3(0x60, p & (s ^ d)),
    ZEL_ROP3(0x61, s ^ ((p ^ ~d) | (s & d))),
    ZEL_ROP3(0x62, (p | d) & (s ^ d)),
    ZEL_ROP3(0x63, s ^ (d | ~p)),
    ZEL_ROP3(0x64, (p | s) & (s ^ d)),
    ZEL_ROP3(0x65, d ^ (s | ~p)),
    ZEL_ROP3(0x66, s ^ d),                          // SRCINVERT
    ZEL_ROP3(0x67, (s ^ d) | ~(p | s)),
    ZEL_ROP3(0x68, (p & s) ^ (d & (p | s))),
    ZEL_ROP3(0x69, p ^ (s ^ ~d)),
    ZEL_ROP3(0x6A, d ^ (p & s)),
    ZEL_ROP3(0x6B, p ^ ~((p | s) & (s ^ d))),
    ZEL_ROP3(0x6C, s ^ (p & d)),
    ZEL_ROP3(0x6D, p ^ ~((p | d) & (s ^ d))),
    ZEL_ROP3(0x6E, (s ^ d) | (s & ~p)),
    ZEL_ROP3(0x6F, ~p | (s ^ d)),
    ZEL_ROP3(0x70, p & ~(s & d)),
    ZEL_ROP3(0x71, p ^ ~((p ^ s) | (p ^ d))),
    ZEL_ROP3(0x72, (p | d) ^ (s & d)),
    ZEL_ROP3(0x73, ~s | (p & ~d)),
    ZEL_ROP3(0x74, (p | s) ^ (s & d)),
    ZEL_ROP3(0x75, ~d | (p & ~s)),
    ZEL_ROP3(0x76, (p & ~s) | (s ^ d)),
    ZEL_ROP3(0x77, ~(s & d)),
    ZEL_ROP3(0x78, p ^ (s & d)),
    ZEL_ROP3(0x79, s ^ ~((p ^ d) & (s | d))),
    ZEL_ROP3(0x7A, (p ^ d) | (p & ~s)),
    ZEL_ROP3(0x7B, ~s | (p ^ d)),
    ZEL_ROP3(0x7C, (p ^ s) | (p & ~d)),
    ZEL_ROP3(0x7D, ~d | (p ^ s)),
    ZEL_ROP3(0x7E, (p ^ s) | (p ^ d)),
    ZEL_ROP3(0x7F, ~(p & (s & d))),
    ZEL_ROP3(0x80, p & (s & d)),
    ZEL_ROP3(0x81, ~((p ^ s) | (p ^ d))),
    ZEL_ROP3(0x82, d & (p ^ ~s)),
    ZEL_ROP3(0x83, (p ^ ~s) & (d | ~p)),
    ZEL_ROP3(0x84, s & (p ^ ~d)),
    ZEL_ROP3(0x85, (p ^ ~d) & (s | ~p)),
    ZEL_ROP3(0x86, s ^ ((p ^ d) & (s | d))),
    ZEL_ROP3(0x87, p ^ ~(s & d)),
    ZEL_ROP3(0x88, s & d),                          // SRCAND
    ZEL_ROP3(0x89, (s | ~p) & (s ^ ~d)),
    ZEL_ROP3(0x8A, d & (s | ~p)),
    ZEL_ROP3(0x8B, (p | s) ^ ~(s & d)),
    ZEL_ROP3(0x8C, s & (d | ~p)),
    ZEL_ROP3(0x8D, (p | d) ^ ~(s & d)),
    ZEL_ROP3(0x8E, p ^ ((p ^ s) | (p ^ d))),
    ZEL_ROP3(0x8F, ~p | (s & d)),
    ZEL_ROP3(0x90, p & (s ^ ~d)),
    ZEL_ROP3(0x91, (p | ~s) & (s ^ ~d)),
    ZEL_ROP3(0x92, p ^ ((p | d) & (s ^ d))),
    ZEL_ROP3(0x93, s ^ ~(p & d)),
    ZEL_ROP3(0x94, p ^ ((p | s) & (s ^ d))),
    ZEL_ROP3(0x95, d ^ ~(p & s)),
    ZEL_ROP3(0x96, p ^ (s ^ d)),
    ZEL_ROP3(0x97, p ^ ((s ^ d) | ~(p | s))),
    ZEL_ROP3(0x98, (p | s) & (s ^ ~d)),
    ZEL_ROP3(0x99, s ^ ~d),
    ZEL_ROP3(0x9A, d ^ (p & ~s)),
    ZEL_ROP3(0x9B, ~((p | s) & (s ^ d))),
    ZEL_ROP3(0x9C, s ^ (p & ~d)),
    ZEL_ROP3(0x9D, ~((p | d) & (s ^ d))),
    ZEL_ROP3(0x9E, (s & d) | (p ^ (s | d))),
    ZEL_ROP3(0x9F, ~(p & (s ^ d))),
    ZEL_ROP3(0xA0, p & d),
    ZEL_ROP3(0xA1, (p | ~s) & (p ^ ~d)),
    ZEL_ROP3(0xA2, d & (p | ~s)),
    ZEL_ROP3(0xA3, (p | s) ^ ~(p & d)),
    ZEL_ROP3(0xA4, (p | s) & (p ^ ~d)),
    ZEL_ROP3(0xA5, p ^ ~d),
    ZEL_ROP3(0xA6, d ^ (s & ~p)),
    ZEL_ROP3(0xA7, ~((p | s) & (p ^ d))),
    ZEL_ROP3(0xA8, d & (p | s)),
    ZEL_ROP3(0xA9, d ^ ~(p | s)),
    ZEL_ROP3(0xAA, d),
    ZEL_ROP3(0xAB, d | ~(p | s)),
    ZEL_ROP3(0xAC, s ^ (p & (s ^ d))),
    ZEL_ROP3(0xAD, (p ^ ~d) | (s & d)),
    ZEL_ROP3(0xAE, d | (s & ~p)),
    ZEL_ROP3(0xAF, d | ~p),
    ZEL_ROP3(0xB0, p & (d | ~s)),
    ZEL_ROP3(0xB1, (p & d) | ~(s | d)),
    ZEL_ROP3(0xB2, p ^ ((p ^ d) & (s ^ d))),
    ZEL_ROP3(0xB3, ~s | (p & d)),
    ZEL_ROP3(0xB4, p ^ (s & ~d)),
    ZEL_ROP3(0xB5, ~((p ^ d) & (s | d))),
    ZEL_ROP3(0xB6, (p & d) | (p ^ (s ^ d))),
    ZEL_ROP3(0xB7, ~(s & (p ^ d))),
    ZEL_ROP3(0xB8, p ^ (s & (p ^ d))),
    ZEL_ROP3(0xB9, (p & d) | (s ^ ~d)),
    ZEL_ROP3(0xBA, d | (p & ~s)),
    ZEL_ROP3(0xBB, d | ~s),                         // MERGEPAINT
    ZEL_ROP3(0xBC, (p ^ s) | (p & d)),
    ZEL_ROP3(0xBD, (p ^ s) | (p ^ ~d)),
    ZEL_ROP3(0xBE, d | (p ^ s)),
    ZEL_ROP3(0xBF, d | ~(p & s)),
    ZEL_ROP3(0xC0, p & s),                          // MERGECOPY
    ZEL_ROP3(0xC1, (p ^ ~s) & (p | ~d)),
    ZEL_ROP3(0xC2, (p | d) & (p ^ ~s)),
    ZEL_ROP3(0xC3, p ^ ~s),
    ZEL_ROP3(0xC4, s & (p | ~d)),
    ZEL_ROP3(0xC5, (p & s) | ~(p | d)),
    ZEL_ROP3(0xC6, s ^ (d & ~p)),
    ZEL_ROP3(0xC7, ~((p ^ s) & (p | d))),
    ZEL_ROP3(0xC8, s & (p | d)),
    ZEL_ROP3(0xC9, s ^ ~(p | d)),
    ZEL_ROP3(0xCA, d ^ (p & (s ^ d))),
    ZEL_ROP3(0xCB, (p ^ ~s) | (s & d)),
    ZEL_ROP3(0xCC, s),                              // SRCCOPY
    ZEL_ROP3(0xCD, s | ~(p | d)),
    ZEL_ROP3(0xCE, s | (d & ~p)),
    ZEL_ROP3(0xCF, s | ~p),
    ZEL_ROP3(0xD0, p & (s | ~d)),
    ZEL_ROP3(0xD1, (p & s) | ~(s | d)),
    ZEL_ROP3(0xD2, p ^ (d & ~s)),
    ZEL_ROP3(0xD3, ~((p ^ s) & (s | d))),
    ZEL_ROP3(0xD4, p ^ ((p ^ s) & (s ^ d))),
    ZEL_ROP3(0xD5, ~d | (p & s)),
    ZEL_ROP3(0xD6, (p & s) | (p ^ (s ^ d))),
    ZEL_ROP3(0xD7, ~(d & (p ^ s))),
    ZEL_ROP3(0xD8, p ^ (d & (p ^ s))),
    ZEL_ROP3(0xD9, (p & s) | (s ^ ~d)),
    ZEL_ROP3(0xDA, (p & s) | (p ^ d)),
    ZEL_ROP3(0xDB, (p ^ d) | (p ^ ~s)),
    ZEL_ROP3(0xDC, s | (p & ~d)),
    ZEL_ROP3(0xDD, s | ~d),
    ZEL_ROP3(0xDE, s | (p ^ d)),
    ZEL_ROP3(0xDF, s | ~(p & d)),
    ZEL_ROP3(0xE0, p & (s | d)),
    ZEL_ROP3(0xE1, p ^ ~(s | d)),
    ZEL_ROP3(0xE2, d ^ (s & (p ^ d))),
    ZEL_ROP3(0xE3, (p & d) | (p ^ ~s)),
    ZEL_ROP3(0xE4, s ^ (d & (p ^ s))),
    ZEL_ROP3(0xE5, (p & s) | (p ^ ~d)),
    ZEL_ROP3(0xE6, (p & s) | (s ^ d)),
    ZEL_ROP3(0xE7, (p ^ ~s) | (s ^ d)),
    ZEL_ROP3(0xE8, p ^ ((p ^ s) & (p ^ d))),
    ZEL_ROP3(0xE9, p ^ ~((p & s) | (s ^ d))),
    ZEL_ROP3(0xEA, d | (p & s)),
    ZEL_ROP3(0xEB, d | (p ^ ~s)),
    ZEL_ROP3(0xEC, s | (p & d)),
    ZEL_ROP3(0xED, s | (p ^ ~d)),
    ZEL_ROP3(0xEE, s | d),                          // SRCPAINT
    ZEL_ROP3(0xEF, s | (d | ~p)),
    ZEL_ROP3(0xF0, p),                              // PATCOPY
    ZEL_ROP3(0xF1, p | ~(s | d)),
    ZEL_ROP3(0xF2, p | (d & ~s)),
    ZEL_ROP3(0xF3, p | ~s),
    ZEL_ROP3(0xF4, p | (s & ~d)),
    ZEL_ROP3(0xF5, p | ~d),
    ZEL_ROP3(0xF6, p | (s ^ d)),
    ZEL_ROP3(0xF7, p | ~(s & d)),
    ZEL_ROP3(0xF8, p | (s & d)),
    ZEL_ROP3(0xF9, p | (s ^ ~d)),
    ZEL_ROP3(0xFA, p | d),
    ZEL_ROP3(0xFB, p | (d | ~s)),                   // PATPAINT
    ZEL_ROP3(0xFC, p | s),
    ZEL_ROP3(0xFD, p | (s | ~d)),
    ZEL_ROP3(0xFE, p | (s | d)),
    ZEL_ROP3(0xFF, d | ~0u),                        // WHITENESS
};

#undef ZEL_ROP3

}  // namespace

const RopRow& RopRowFor(uint8_t index) { return kRows[index]; }

}  // namespace zel::gdi
