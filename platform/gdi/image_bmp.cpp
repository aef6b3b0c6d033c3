// BMP decoding: core (OS/2 1.x), info, V4 and V5 headers; 1/4/8/16/24/32 bpp; RLE8, RLE4,
// BI_BITFIELDS and the CE BI_ALPHABITFIELDS; bottom-up and top-down rows.
//
// The file is fully validated (header fields, colour table, offsets, pixel data size)
// before the pixel buffer is allocated; RLE streams are checked as they are replayed.
#include <bit>
#include <cstdio>

#include "gdi/image_codec.h"

namespace zel::detail {
namespace {

constexpr size_t kFileHeaderSize = 14;
constexpr uint32_t kCoreHeaderSize = 12;
constexpr uint32_t kInfoHeaderSize = 40;
constexpr uint32_t kV2HeaderSize = 52;  // info + red, green, blue masks (V3 adds alpha)
constexpr uint32_t kAlphaBitfields = 6;  // CE: BI_BITFIELDS with a fourth (alpha) mask

uint16_t U16(const uint8_t* p) { return static_cast<uint16_t>(p[0] | p[1] << 8); }
uint32_t U32(const uint8_t* p) {
    return p[0] | p[1] << 8 | p[2] << 16 | static_cast<uint32_t>(p[3]) << 24;
}
int32_t S32(const uint8_t* p) { return static_cast<int32_t>(U32(p)); }

template <class... Args>
std::string Format(const char* fmt, Args... args) {
    char buf[160];
    std::snprintf(buf, sizeof buf, fmt, args...);
    return buf;
}

// One colour channel of a 16- or 32-bpp pixel. Masks are taken as given: the field spans
// from the lowest to the highest set bit; fields narrower than 8 bits are widened by
// repeating their bits (so 5-bit 31 becomes 255), wider ones keep their top 8 bits.
struct Channel {
    uint32_t mask = 0;
    int shift = 0;
    int bits = 0;

    explicit Channel(uint32_t m) : mask(m) {
        if (!m) return;
        shift = std::countr_zero(m);
        bits = 32 - std::countl_zero(m) - shift;
    }
    uint32_t To8(uint32_t pixel) const {
        if (!bits) return 0;
        uint32_t v = (pixel & mask) >> shift;
        if (bits >= 8) return v >> (bits - 8);
        uint32_t out = 0;
        int filled = 0;
        for (; filled < 8; filled += bits) out = out << bits | v;
        return out >> (filled - 8);
    }
};

struct BmpLayout {
    bool core = false;
    int width = 0;
    int height = 0;  // rows, always positive
    bool topDown = false;
    int bpp = 0;
    uint32_t compression = BI_RGB;
    uint32_t masks[3] = {0, 0, 0};   // red, green, blue
    std::vector<uint32_t> palette;   // 0x00RRGGBB, at most 2^bpp entries
    size_t bitsOffset = 0;
    size_t stride = 0;               // bytes per uncompressed row, DWORD-aligned
};

bool KnownBitDepth(int bpp) {
    return bpp == 1 || bpp == 4 || bpp == 8 || bpp == 16 || bpp == 24 || bpp == 32;
}

// Checks that the compression fits the bit depth; an empty string when it does.
std::string CheckCompression(const BmpLayout& bmp) {
    switch (bmp.compression) {
        case BI_RGB:
            return {};
        case BI_RLE8:
            return bmp.bpp == 8 ? std::string() : Format("RLE8 compression with %d bpp", bmp.bpp);
        case BI_RLE4:
            return bmp.bpp == 4 ? std::string() : Format("RLE4 compression with %d bpp", bmp.bpp);
        case BI_BITFIELDS:
        case kAlphaBitfields:
            return bmp.bpp == 16 || bmp.bpp == 32 ? std::string()
                                                  : Format("bit-field compression with %d bpp", bmp.bpp);
        default:
            return Format("unsupported compression %u", bmp.compression);
    }
}

// Reads the headers and colour masks; returns where the colour table starts (0 on error).
size_t ParseHeaders(const uint8_t* data, size_t size, const ImageLimits& limits, BmpLayout& bmp,
                    std::string& error) {
    const uint8_t* h = data + kFileHeaderSize;
    uint32_t headerSize = U32(h);
    if (headerSize != kCoreHeaderSize && headerSize < kInfoHeaderSize) {
        error = Format("unsupported header size %u", headerSize);
        return 0;
    }
    if (headerSize > size - kFileHeaderSize) {
        error = "truncated bitmap header";
        return 0;
    }
    int64_t width, height;
    unsigned planes;
    if (headerSize == kCoreHeaderSize) {
        bmp.core = true;
        width = U16(h + 4);
        height = U16(h + 6);
        planes = U16(h + 8);
        bmp.bpp = U16(h + 10);
    } else {
        width = S32(h + 4);
        height = S32(h + 8);
        planes = U16(h + 12);
        bmp.bpp = U16(h + 14);
        bmp.compression = U32(h + 16);
    }
    if (planes != 1) {
        error = Format("bad plane count %u", planes);
        return 0;
    }
    if (!KnownBitDepth(bmp.bpp) || (bmp.core && (bmp.bpp == 16 || bmp.bpp == 32))) {
        error = Format("unsupported bit depth %d", bmp.bpp);
        return 0;
    }
    error = CheckCompression(bmp);
    if (!error.empty()) return 0;
    // A negative height means rows are stored top row first; compressed bitmaps are
    // always bottom-up.
    bmp.topDown = height < 0;
    if (bmp.topDown && (bmp.compression == BI_RLE8 || bmp.compression == BI_RLE4)) {
        error = "top-down bitmap with RLE compression";
        return 0;
    }
    if (height < 0) height = -height;
    error = CheckDimensions(width, height, limits);
    if (!error.empty()) return 0;
    bmp.width = static_cast<int>(width);
    bmp.height = static_cast<int>(height);

    size_t tableStart = kFileHeaderSize + headerSize;
    if (bmp.compression == BI_BITFIELDS || bmp.compression == kAlphaBitfields) {
        // Info headers keep the masks after the header; V2 and later hold them inside it.
        const uint8_t* m = h + kInfoHeaderSize;
        if (headerSize < kV2HeaderSize) {
            size_t maskBytes = bmp.compression == kAlphaBitfields ? 16 : 12;
            if (maskBytes > size - tableStart) {
                error = "truncated colour masks";
                return 0;
            }
            tableStart += maskBytes;
        }
        for (int i = 0; i < 3; ++i) bmp.masks[i] = U32(m + 4 * i);  // alpha, if any, is dropped
    } else if (bmp.bpp == 16) {
        bmp.masks[0] = 0x7C00, bmp.masks[1] = 0x03E0, bmp.masks[2] = 0x001F;  // x555
    } else if (bmp.bpp == 32) {
        bmp.masks[0] = 0xFF0000, bmp.masks[1] = 0x00FF00, bmp.masks[2] = 0x0000FF;
    }
    return tableStart;
}

// Reads the colour table of an indexed bitmap: biClrUsed entries (all 2^bpp when zero,
// never more), RGBQUADs, or RGBTRIPLEs for core headers.
bool ReadColourTable(const uint8_t* data, size_t size, size_t tableStart, uint32_t clrUsed, BmpLayout& bmp,
                     std::string& error) {
    if (bmp.bpp > 8) return true;
    uint32_t maxEntries = 1u << bmp.bpp;
    uint32_t entries = clrUsed == 0 || clrUsed > maxEntries ? maxEntries : clrUsed;
    size_t entrySize = bmp.core ? 3 : 4;
    if (tableStart > size || entries * entrySize > size - tableStart) {
        error = "truncated colour table";
        return false;
    }
    bmp.palette.resize(entries);
    for (uint32_t i = 0; i < entries; ++i) {
        const uint8_t* q = data + tableStart + i * entrySize;
        bmp.palette[i] = static_cast<uint32_t>(q[2]) << 16 | q[1] << 8 | q[0];
    }
    return true;
}

// Indices past the end of a short colour table read as black.
uint32_t PaletteColour(const BmpLayout& bmp, uint32_t index) {
    return index < bmp.palette.size() ? bmp.palette[index] : 0;
}

void DecodeRow(const BmpLayout& bmp, const Channel* channels, const uint8_t* src, uint32_t* dst) {
    int w = bmp.width;
    switch (bmp.bpp) {
        case 1:
            for (int x = 0; x < w; ++x) dst[x] = PaletteColour(bmp, (src[x >> 3] >> (7 - (x & 7))) & 1);
            break;
        case 4:
            for (int x = 0; x < w; ++x) dst[x] = PaletteColour(bmp, (src[x >> 1] >> (x & 1 ? 0 : 4)) & 15);
            break;
        case 8:
            for (int x = 0; x < w; ++x) dst[x] = PaletteColour(bmp, src[x]);
            break;
        case 16:
            for (int x = 0; x < w; ++x) {
                uint32_t v = U16(src + 2 * x);
                dst[x] = channels[0].To8(v) << 16 | channels[1].To8(v) << 8 | channels[2].To8(v);
            }
            break;
        case 24:
            for (int x = 0; x < w; ++x)
                dst[x] = static_cast<uint32_t>(src[3 * x + 2]) << 16 | src[3 * x + 1] << 8 | src[3 * x];
            break;
        case 32:
            for (int x = 0; x < w; ++x) {
                uint32_t v = U32(src + 4 * x);
                dst[x] = channels[0].To8(v) << 16 | channels[1].To8(v) << 8 | channels[2].To8(v);
            }
            break;
    }
}

std::string DecodeUncompressed(const uint8_t* data, size_t size, const BmpLayout& bmp, gdi::PixelBuffer& out) {
    // The last row may omit its DWORD padding: only the bytes that hold pixels must exist.
    uint64_t rowBytes = (static_cast<uint64_t>(bmp.width) * bmp.bpp + 7) / 8;
    uint64_t needed = static_cast<uint64_t>(bmp.stride) * (bmp.height - 1) + rowBytes;
    if (needed > size - bmp.bitsOffset) return "truncated pixel data";
    out = gdi::PixelBuffer(bmp.width, bmp.height, 32);
    const Channel channels[3] = {Channel(bmp.masks[0]), Channel(bmp.masks[1]), Channel(bmp.masks[2])};
    for (int y = 0; y < bmp.height; ++y) {
        const uint8_t* src = data + bmp.bitsOffset + bmp.stride * y;
        DecodeRow(bmp, channels, src, out.row(bmp.topDown ? y : bmp.height - 1 - y));
    }
    return {};
}

// Replays an RLE8 or RLE4 stream. Pixels the stream skips (deltas, early end of line or
// bitmap) keep colour-table entry 0, what zeroed index bits mean. A run, literal block or
// delta that leaves the bitmap is an error; the stream may end without end-of-bitmap.
std::string DecodeRle(const uint8_t* src, size_t n, const BmpLayout& bmp, gdi::PixelBuffer& out) {
    const bool rle4 = bmp.compression == BI_RLE4;
    const int w = bmp.width, h = bmp.height;
    int x = 0, y = 0;  // y counts rows from the bottom
    size_t i = 0;
    // Why a run or literal block of `count` pixels does not fit at (x, y), or nullptr.
    auto misfit = [&](int count) -> const char* {
        if (y >= h) return "RLE data past the end of the bitmap";
        return count > w - x ? "RLE run past the end of a row" : nullptr;
    };
    auto put = [&](uint32_t index) { out.row(h - 1 - y)[x++] = PaletteColour(bmp, index); };
    while (i < n) {
        if (n - i < 2) return "truncated RLE data";
        uint8_t count = src[i], value = src[i + 1];
        i += 2;
        if (count > 0) {  // encoded run: one index repeated, or two nibbles alternating
            if (const char* why = misfit(count)) return why;
            for (int k = 0; k < count; ++k) put(rle4 ? (k & 1 ? value & 15 : value >> 4) : value);
            continue;
        }
        switch (value) {
            case 0:  // end of line
                if (y >= h) return "RLE data past the end of the bitmap";
                x = 0, ++y;
                break;
            case 1:  // end of bitmap
                return {};
            case 2: {  // delta: move right and up (rows are bottom-up)
                if (n - i < 2) return "truncated RLE data";
                int dx = src[i], dy = src[i + 1];
                i += 2;
                if (dx > w - x || dy > h - y) return "RLE delta past the end of the bitmap";
                x += dx, y += dy;
                break;
            }
            default: {  // literal block of `value` indices, padded to a 16-bit boundary
                size_t bytes = rle4 ? (value + 1) / 2 : value;
                if (n - i < bytes) return "truncated RLE data";
                if (const char* why = misfit(value)) return why;
                const uint8_t* lit = src + i;
                for (int k = 0; k < value; ++k) put(rle4 ? (k & 1 ? lit[k / 2] & 15 : lit[k / 2] >> 4) : lit[k]);
                i += bytes + (bytes & 1);
                break;
            }
        }
    }
    return {};
}

}  // namespace

std::string CheckDimensions(int64_t width, int64_t height, const ImageLimits& limits) {
    if (width <= 0 || height <= 0)
        return Format("bad dimensions %lldx%lld", static_cast<long long>(width), static_cast<long long>(height));
    if (width > limits.maxSide || height > limits.maxSide)
        return Format("image too large (%lldx%lld, at most %d pixels a side)", static_cast<long long>(width),
                      static_cast<long long>(height), limits.maxSide);
    if (static_cast<uint64_t>(width) * static_cast<uint64_t>(height) * 4 > limits.maxPixelBytes)
        return Format("image too large (%lldx%lld, more than %llu MiB of pixels)", static_cast<long long>(width),
                      static_cast<long long>(height),
                      static_cast<unsigned long long>(limits.maxPixelBytes >> 20));
    return {};
}

DecodedImage DecodeBmp(const uint8_t* data, size_t size, const ImageLimits& limits) {
    DecodedImage result;
    std::string& error = result.error;
    if (size < kFileHeaderSize + 4) {
        error = "truncated file header";
        return result;
    }
    if (data[0] != 'B' || data[1] != 'M') {
        error = "not a BMP file";
        return result;
    }
    BmpLayout bmp;
    size_t tableStart = ParseHeaders(data, size, limits, bmp, error);
    if (!tableStart) return result;
    uint32_t clrUsed = bmp.core ? 0 : U32(data + kFileHeaderSize + 32);
    if (!ReadColourTable(data, size, tableStart, clrUsed, bmp, error)) return result;

    uint32_t offBits = U32(data + 10);
    if (offBits < kFileHeaderSize + U32(data + kFileHeaderSize)) {
        error = Format("pixel data offset %u inside the headers", offBits);
        return result;
    }
    if (offBits >= size) {
        error = Format("pixel data offset %u past the end of the file", offBits);
        return result;
    }
    bmp.bitsOffset = offBits;
    bmp.stride = static_cast<size_t>((static_cast<uint64_t>(bmp.width) * bmp.bpp + 31) / 32 * 4);

    if (bmp.compression == BI_RLE8 || bmp.compression == BI_RLE4) {
        result.pixels = gdi::PixelBuffer(bmp.width, bmp.height, 32, PaletteColour(bmp, 0));
        error = DecodeRle(data + offBits, size - offBits, bmp, result.pixels);
    } else {
        error = DecodeUncompressed(data, size, bmp, result.pixels);
    }
    if (!result.ok()) result.pixels = {};
    return result;
}

}  // namespace zel::detail
