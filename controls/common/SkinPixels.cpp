#include "SkinPixels.h"

#include <cstring>

namespace zelctl {

SkinPixels::SkinPixels(HDC memDC) : dc_(memDC) {
    HBITMAP bitmap = static_cast<HBITMAP>(::GetCurrentObject(memDC, OBJ_BITMAP));
    if (!bitmap || ::GetObjectW(bitmap, sizeof bm_, &bm_) != sizeof bm_) return;
    if (bm_.bmBitsPixel != 1 && bm_.bmBitsPixel != 32) return;  // read through GetPixel
    bits_.resize(static_cast<size_t>(bm_.bmWidthBytes) * bm_.bmHeight);
    if (::GetBitmapBits(bitmap, static_cast<LONG>(bits_.size()), bits_.data()) != static_cast<LONG>(bits_.size()))
        bits_.clear();
}

COLORREF SkinPixels::At(int x, int y) const {
    if (bits_.empty()) return ::GetPixel(dc_, x, y);
    if (x < 0 || y < 0 || x >= bm_.bmWidth || y >= bm_.bmHeight) return CLR_INVALID;
    const unsigned char* row = bits_.data() + static_cast<size_t>(y) * bm_.bmWidthBytes;
    if (bm_.bmBitsPixel == 1) return (row[x >> 3] >> (7 - (x & 7))) & 1 ? RGB(255, 255, 255) : RGB(0, 0, 0);
    return RGB(row[x * 4 + 2], row[x * 4 + 1], row[x * 4]);  // 0x00RRGGBB, little-endian
}

HRGN RegionFromSpans(const std::vector<RECT>& spans) {
    RECT bounds{};
    for (const RECT& r : spans) ::UnionRect(&bounds, &bounds, &r);
    std::vector<unsigned char> data(sizeof(RGNDATAHEADER) + spans.size() * sizeof(RECT));
    const RGNDATAHEADER header{sizeof(RGNDATAHEADER), RDH_RECTANGLES, static_cast<DWORD>(spans.size()),
                               static_cast<DWORD>(spans.size() * sizeof(RECT)), bounds};
    std::memcpy(data.data(), &header, sizeof header);
    if (!spans.empty()) std::memcpy(data.data() + sizeof header, spans.data(), spans.size() * sizeof(RECT));
    return ::ExtCreateRegion(nullptr, static_cast<DWORD>(data.size()), reinterpret_cast<const RGNDATA*>(data.data()));
}

}  // namespace zelctl
