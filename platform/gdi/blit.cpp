// BitBlt: unstretched source-to-destination raster operations.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "gdi/raster.h"
#include "gdi/row_copy.h"
#include "zel/gdi_extras.h"

namespace zel::gdi {

uint64_t pixelsWritten = 0;

namespace {

void ColorToMonoRow(const uint32_t* in, uint32_t* out, int n, uint32_t key, uint32_t) {
    for (int i = 0; i < n; ++i) out[i] = in[i] == key ? 1u : 0u;
}

void MonoToColorRow(const uint32_t* in, uint32_t* out, int n, uint32_t fg, uint32_t bg) {
    for (int i = 0; i < n; ++i) out[i] = (in[i] & 1) ? bg : fg;
}

RECT Intersect(const RECT& a, const RECT& b) {
    return RECT{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                std::min(a.bottom, b.bottom)};
}
bool Empty(const RECT& r) { return r.left >= r.right || r.top >= r.bottom; }

// How the rows of one blit are produced, chosen once per call.
enum class RowMode {
    kMove,     // SRCCOPY between equal formats: a row copy
    kConvert,  // SRCCOPY between formats: convert straight into the destination
    kRop,      // anything else: source row (converted if needed) through the ROP kernel
};

}  // namespace

RowConverter::RowConverter(const DC& dst, const PixelBuffer& target, const DC& src, const PixelBuffer& source)
    : source_(source) {
    if (source.mono() == target.mono()) return;
    if (target.mono()) {
        // Compared as raw pixels: a 32-bpp pixel with a non-zero top byte never matches.
        convert_ = &ColorToMonoRow;
        a_ = ColorToPixel32(src.state.bkColor & 0xFFFFFF);
    } else {
        convert_ = &MonoToColorRow;
        a_ = ColorToPixel(target, dst.state.textColor);
        b_ = ColorToPixel(target, dst.state.bkColor);
    }
}

void BlitCore(DC& dst, DC& src, const RECT& device, int dx, int dy, uint8_t rop) {
    // The destination is materialised before the source is looked at: on one bitmap that
    // is still a cached image, the source is then the bitmap's own copy.
    const PixelBuffer* s = src.TargetShape();
    if (!dst.TargetShape() || !s) return;
    // Destination pixels whose source lies outside the source surface stay untouched.
    RECT area = Intersect(device, RECT{-dx, -dy, s->width - dx, s->height - dy});
    if (Empty(area)) return;

    RopApplier applier(dst, rop);
    if (applier.Skip()) return;
    // Within one surface the source may lie in what is written: that surface is
    // materialised whole first.
    const bool oneSurface = dst.TargetShape() == s;
    PixelBuffer* t = RopReadsDest(rop) || oneSurface ? dst.Target() : dst.Overwrite(area);
    s = src.Source();
    RowConverter conv(dst, *t, src, *s);
    const RowMode mode = rop != 0xCC ? RowMode::kRop : conv.Identity() ? RowMode::kMove : RowMode::kConvert;

    std::vector<RECT> rects;
    for (const RECT& c : dst.ClipRects()) {
        RECT r = Intersect(c, area);
        if (!Empty(r)) rects.push_back(r);
    }
    std::vector<uint32_t> scratch(mode == RowMode::kRop ? static_cast<size_t>(t->width) : 0);
    auto row = [&](const RECT& r, int y, bool stage) {
        const int n = r.right - r.left;
        pixelsWritten += static_cast<uint64_t>(n);
        uint32_t* d = t->row(y) + r.left;
        switch (mode) {
            case RowMode::kMove:
                // Only a row moved along itself can overlap.
                if (stage)
                    std::memmove(d, s->row(y + dy) + r.left + dx, static_cast<size_t>(n) * sizeof *d);
                else
                    CopyPixels(d, s->row(y + dy) + r.left + dx, static_cast<size_t>(n));
                break;
            case RowMode::kConvert:
                conv.Into(r.left + dx, y + dy, n, d);
                break;
            case RowMode::kRop: {
                const uint32_t* in = conv.Row(r.left + dx, y + dy, n, scratch.data());
                if (stage && in != scratch.data()) {
                    CopyPixels(scratch.data(), in, static_cast<size_t>(n));
                    in = scratch.data();
                }
                applier.Apply(d, in, r.left, y, n);
                break;
            }
        }
    };

    if (t != s) {
        for (const RECT& r : rects)
            for (int y = r.top; y < r.bottom; ++y) row(r, y, false);
        return;
    }
    // On one surface, work away from the side the source lies on so that every source pixel
    // is read before it is overwritten: rows bottom-up when the source is above; on the same
    // rows, right to left when it is to the left, staging each row (memmove for copies).
    // Rows go across all clip rectangles at once, since one rectangle may read another's.
    const bool upward = dy < 0, leftward = dy == 0 && dx < 0;
    if (upward || leftward) std::reverse(rects.begin(), rects.end());
    const int rows = area.bottom - area.top;
    for (int i = 0; i < rows; ++i) {
        const int y = upward ? area.bottom - 1 - i : area.top + i;
        for (const RECT& r : rects)
            if (y >= r.top && y < r.bottom) row(r, y, dy == 0);
    }
}

}  // namespace zel::gdi

using namespace zel::gdi;

namespace {
constexpr int64_t kFarOffset = int64_t{1} << 29;
}  // namespace

namespace zel {

bool KeyBlt(HDC hdcDst, int x, int y, int w, int h, HDC hdcSrc, int sx, int sy, COLORREF key) {
    DC* dst = LookupDC(hdcDst);
    DC* src = LookupDC(hdcSrc);
    if (!dst || !src || w <= 0 || h <= 0) return false;
    const PixelBuffer* shape = dst->TargetShape();
    const PixelBuffer* s = src->TargetShape();
    if (!shape || !s || shape->mono() || s->mono()) return false;
    const int64_t sl = int64_t{sx} + src->origin.x, st = int64_t{sy} + src->origin.y;
    if (sl < 0 || st < 0 || sl + w > s->width || st + h > s->height) return false;
    const int64_t dl = int64_t{x} + dst->origin.x, dt = int64_t{y} + dst->origin.y;
    if (std::abs(sl - dl) > kFarOffset || std::abs(st - dt) > kFarOffset) return false;
    const int dx = static_cast<int>(sl - dl), dy = static_cast<int>(st - dt);
    const RECT device = DeviceRect(*dst, x, y, int64_t{x} + w, int64_t{y} + h);
    // The destination first: on a bitmap still reading a cached image it gets its own copy.
    PixelBuffer* t = dst->Target();
    s = src->Source();
    if (!t || !s || t == s) return false;
    const uint32_t k = ColorToPixel32(key & 0xFFFFFF);
    for (const RECT& c : dst->ClipRects()) {
        const RECT r = Intersect(c, device);
        if (Empty(r)) continue;
        const int n = r.right - r.left;
        pixelsWritten += static_cast<uint64_t>(n) * static_cast<uint64_t>(r.bottom - r.top);
        for (int row = r.top; row < r.bottom; ++row) {
            const uint32_t* in = s->row(row + dy) + r.left + dx;
            uint32_t* d = t->row(row) + r.left;
            int i = 0;
            // Four pixels at a time: the key test becomes a lane mask choosing between them.
            using Quad = uint32_t __attribute__((vector_size(16)));
            const Quad keys = {k, k, k, k}, low = {0x00FFFFFFu, 0x00FFFFFFu, 0x00FFFFFFu, 0x00FFFFFFu};
            for (; i + 4 <= n; i += 4) {
                Quad a, b;
                std::memcpy(&a, in + i, sizeof a);
                std::memcpy(&b, d + i, sizeof b);
                const Quad keep = reinterpret_cast<Quad>(a == keys);
                const Quad out = ((b & keep) | (a & ~keep)) & low;
                std::memcpy(d + i, &out, sizeof out);
            }
            for (; i < n; ++i) d[i] = (in[i] == k ? d[i] : in[i]) & 0x00FFFFFFu;
        }
    }
    return true;
}

}  // namespace zel

extern "C" {

BOOL BitBlt(HDC hdcDst, int x, int y, int cx, int cy, HDC hdcSrc, int x1, int y1, DWORD rop) {
    DC* dst = LookupDC(hdcDst);
    if (!dst) return FALSE;
    // Without a source the call is a PatBlt; the source DC is not even looked at.
    if (!RopUsesSource(rop)) return PatBlt(hdcDst, x, y, cx, cy, rop);
    DC* src = LookupDC(hdcSrc);
    if (!src) return FALSE;
    // Equal signs never mirror. A negative extent counts back from the origin pixel, as in
    // PatBlt: width -w at x covers x - w + 1 .. x on both surfaces.
    int64_t dl = x, sl = x1, dt = y, st = y1, w = cx, h = cy;
    if (w < 0) dl += w + 1, sl += w + 1, w = -w;
    if (h < 0) dt += h + 1, st += h + 1, h = -h;
    // Source offset in surface units; one beyond any surface size leaves nothing to copy.
    int64_t dx = sl + src->origin.x - (dl + dst->origin.x), dy = st + src->origin.y - (dt + dst->origin.y);
    if (std::abs(dx) > kFarOffset || std::abs(dy) > kFarOffset) return TRUE;
    BlitCore(*dst, *src, DeviceRect(*dst, dl, dt, dl + w, dt + h), static_cast<int>(dx), static_cast<int>(dy),
             RopIndex(rop));
    return TRUE;
}

}  // extern "C"
