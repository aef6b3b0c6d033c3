// Byte-level writers of BMP and PNG files for the image tests and the fuzzer's seed
// corpus. They write exactly the fields they are given (including wrong ones), so tests
// can build every variant and every kind of damage. PNGs use stored (uncompressed) deflate
// blocks, so no compressor is involved.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zel::test {

using Bytes = std::vector<uint8_t>;

inline void PutLE(Bytes& b, uint32_t v, int n) {
    for (int i = 0; i < n; ++i) b.push_back(static_cast<uint8_t>(v >> (8 * i)));
}
inline void PutBE(Bytes& b, uint32_t v) {
    for (int i = 3; i >= 0; --i) b.push_back(static_cast<uint8_t>(v >> (8 * i)));
}

// ---- BMP ----------------------------------------------------------------------------

struct BmpParts {
    uint32_t headerSize = 40;  // 12 (core), 40 (info), 52, 56, 108 (V4), 124 (V5)
    int32_t width = 0;
    int32_t height = 0;        // negative: top row stored first
    uint16_t planes = 1;
    uint16_t bpp = 24;
    uint32_t compression = 0;  // BI_RGB
    uint32_t clrUsed = 0;
    std::vector<uint32_t> palette;  // 0x00RRGGBB; RGBTRIPLEs for core headers, else RGBQUADs
    std::vector<uint32_t> masks;    // inside V2+ headers, else right after a 40-byte header
    Bytes bits;                     // pixel data exactly as stored
    std::optional<uint32_t> offBits;  // default: where the pixel data is written
};

inline Bytes BuildBmp(const BmpParts& s) {
    Bytes h;  // DIB header
    if (s.headerSize == 12) {
        PutLE(h, 12, 4);
        PutLE(h, static_cast<uint32_t>(s.width), 2);
        PutLE(h, static_cast<uint32_t>(s.height), 2);
        PutLE(h, s.planes, 2);
        PutLE(h, s.bpp, 2);
    } else {
        PutLE(h, s.headerSize, 4);
        PutLE(h, static_cast<uint32_t>(s.width), 4);
        PutLE(h, static_cast<uint32_t>(s.height), 4);
        PutLE(h, s.planes, 2);
        PutLE(h, s.bpp, 2);
        PutLE(h, s.compression, 4);
        PutLE(h, static_cast<uint32_t>(s.bits.size()), 4);
        PutLE(h, 2835, 4);
        PutLE(h, 2835, 4);
        PutLE(h, s.clrUsed, 4);
        PutLE(h, 0, 4);
        size_t inHeader = s.headerSize >= 52 ? (s.headerSize - 40) / 4 : 0;
        for (size_t i = 0; i < inHeader && i < 4; ++i) PutLE(h, i < s.masks.size() ? s.masks[i] : 0, 4);
        while (h.size() < s.headerSize) h.push_back(0);  // colour space, gamma, profile: unused
        if (s.headerSize < 52)
            for (uint32_t m : s.masks) PutLE(h, m, 4);
    }
    for (uint32_t c : s.palette) {
        h.push_back(static_cast<uint8_t>(c));
        h.push_back(static_cast<uint8_t>(c >> 8));
        h.push_back(static_cast<uint8_t>(c >> 16));
        if (s.headerSize != 12) h.push_back(0);
    }
    Bytes file;
    uint32_t bitsAt = static_cast<uint32_t>(14 + h.size());
    file.push_back('B');
    file.push_back('M');
    PutLE(file, static_cast<uint32_t>(14 + h.size() + s.bits.size()), 4);
    PutLE(file, 0, 4);
    PutLE(file, s.offBits.value_or(bitsAt), 4);
    file.insert(file.end(), h.begin(), h.end());
    file.insert(file.end(), s.bits.begin(), s.bits.end());
    return file;
}

// Packs rows of values (top row first) as an uncompressed DIB stores them: indices for
// 1/4/8 bpp (leftmost pixel in the high bits), little-endian words for 16 and 32 bpp,
// 0x00RRGGBB as blue, green, red for 24 bpp; each row padded to 4 bytes.
inline Bytes PackDibRows(const std::vector<std::vector<uint32_t>>& rows, int bpp, bool topDown) {
    Bytes out;
    for (size_t r = 0; r < rows.size(); ++r) {
        const auto& row = rows[topDown ? r : rows.size() - 1 - r];
        size_t start = out.size();
        uint32_t acc = 0;
        int accBits = 0;
        for (uint32_t v : row) {
            if (bpp < 8) {
                acc = acc << bpp | v;
                accBits += bpp;
                if (accBits == 8) out.push_back(static_cast<uint8_t>(acc)), acc = 0, accBits = 0;
            } else if (bpp == 24) {
                out.push_back(v & 0xFF), out.push_back((v >> 8) & 0xFF), out.push_back((v >> 16) & 0xFF);
            } else {
                PutLE(out, v, bpp / 8);
            }
        }
        if (accBits) out.push_back(static_cast<uint8_t>(acc << (8 - accBits)));
        while ((out.size() - start) % 4) out.push_back(0);
    }
    return out;
}

// ---- PNG ----------------------------------------------------------------------------

inline uint32_t Crc32(const uint8_t* p, size_t n, uint32_t crc = 0) {
    crc = ~crc;
    for (size_t i = 0; i < n; ++i) {
        crc ^= p[i];
        for (int k = 0; k < 8; ++k) crc = crc & 1 ? (crc >> 1) ^ 0xEDB88320u : crc >> 1;
    }
    return ~crc;
}

inline void PutChunk(Bytes& png, const char* type, const Bytes& data) {
    PutBE(png, static_cast<uint32_t>(data.size()));
    size_t start = png.size();
    png.insert(png.end(), type, type + 4);
    png.insert(png.end(), data.begin(), data.end());
    PutBE(png, Crc32(png.data() + start, png.size() - start));
}

// A zlib stream of stored deflate blocks.
inline Bytes ZlibStored(const Bytes& raw) {
    Bytes z = {0x78, 0x01};
    size_t pos = 0;
    do {
        size_t n = raw.size() - pos < 65535 ? raw.size() - pos : 65535;
        z.push_back(pos + n == raw.size() ? 1 : 0);
        PutLE(z, static_cast<uint32_t>(n), 2);
        PutLE(z, static_cast<uint32_t>(~n & 0xFFFF), 2);
        z.insert(z.end(), raw.begin() + pos, raw.begin() + pos + n);
        pos += n;
    } while (pos < raw.size());
    uint32_t a = 1, b = 0;
    for (uint8_t c : raw) a = (a + c) % 65521, b = (b + a) % 65521;
    PutBE(z, b << 16 | a);
    return z;
}

struct PngParts {
    uint32_t width = 0, height = 0;
    uint8_t depth = 8;
    uint8_t colorType = 2;  // 0 grey, 2 RGB, 3 palette, 4 grey+alpha, 6 RGBA
    bool interlaced = false;
    std::vector<uint32_t> palette;  // 0x00RRGGBB
    Bytes trns;
    // Samples of each pixel in channel order, top row first (rows x width x channels).
    std::vector<std::vector<std::vector<uint16_t>>> pixels;
};

// Filter-0 scanlines of the pixels in [x0, ...) step dx, rows y0 step dy (Adam7 passes).
inline void PngScanlines(const PngParts& s, int x0, int dx, int y0, int dy, Bytes& raw) {
    for (size_t y = y0; y < s.height; y += dy) {
        if (static_cast<size_t>(x0) >= s.width) return;
        raw.push_back(0);
        uint32_t acc = 0;
        int accBits = 0;
        for (size_t x = x0; x < s.width; x += dx) {
            for (uint16_t v : s.pixels[y][x]) {
                if (s.depth == 16) {
                    raw.push_back(v >> 8), raw.push_back(v & 0xFF);
                } else {
                    acc = acc << s.depth | v;
                    accBits += s.depth;
                    if (accBits == 8) raw.push_back(static_cast<uint8_t>(acc)), acc = 0, accBits = 0;
                }
            }
        }
        if (accBits) raw.push_back(static_cast<uint8_t>(acc << (8 - accBits)));
    }
}

inline Bytes PngImageData(const PngParts& s) {
    Bytes raw;
    if (!s.interlaced) {
        PngScanlines(s, 0, 1, 0, 1, raw);
    } else {
        static const int pass[7][4] = {{0, 8, 0, 8}, {4, 8, 0, 8}, {0, 4, 4, 8}, {2, 4, 0, 4},
                                       {0, 2, 2, 4}, {1, 2, 0, 2}, {0, 1, 1, 2}};
        for (const auto& p : pass) PngScanlines(s, p[0], p[1], p[2], p[3], raw);
    }
    return raw;
}

inline Bytes PngSignature() { return {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'}; }

inline Bytes PngHeaderChunk(uint32_t width, uint32_t height, uint8_t depth, uint8_t colorType, bool interlaced) {
    Bytes ihdr;
    PutBE(ihdr, width);
    PutBE(ihdr, height);
    ihdr.push_back(depth);
    ihdr.push_back(colorType);
    ihdr.push_back(0);
    ihdr.push_back(0);
    ihdr.push_back(interlaced ? 1 : 0);
    return ihdr;
}

inline Bytes BuildPng(const PngParts& s) {
    Bytes png = PngSignature();
    PutChunk(png, "IHDR", PngHeaderChunk(s.width, s.height, s.depth, s.colorType, s.interlaced));
    if (!s.palette.empty()) {
        Bytes plte;
        for (uint32_t c : s.palette) plte.push_back(c >> 16), plte.push_back((c >> 8) & 0xFF), plte.push_back(c & 0xFF);
        PutChunk(png, "PLTE", plte);
    }
    if (!s.trns.empty()) PutChunk(png, "tRNS", s.trns);
    PutChunk(png, "IDAT", ZlibStored(PngImageData(s)));
    PutChunk(png, "IEND", {});
    return png;
}

}  // namespace zel::test
