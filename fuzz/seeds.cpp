// Writes the seed corpus of a fuzzer: zel-fuzz-seeds <fuzzer name> <directory>.
// fuzz_images gets one small file of each BMP and PNG variant the decoders know; other
// fuzzers get none and start from scratch.
#include <cstdio>
#include <cstring>
#include <string>

#include "platform/images/image_builders.h"

namespace {

using namespace zel::test;

struct Seeds {
    std::string dir;
    int written = 0;
    bool ok = true;
    void Write(const std::string& name, const Bytes& bytes) {
        std::string path = dir + "/" + name;
        std::FILE* f = std::fopen(path.c_str(), "wb");
        ok = f && std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size() && ok;
        if (f) ok = std::fclose(f) == 0 && ok;
        ++written;
    }
};

// A 5 x 3 image of indices (for <= 8 bpp) or raw pixel words, top row first.
std::vector<std::vector<uint32_t>> Pattern(int bpp) {
    uint32_t top = bpp >= 32 ? 0xFFFFFFFF : (1u << bpp) - 1;
    std::vector<std::vector<uint32_t>> rows(3, std::vector<uint32_t>(5));
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x) rows[y][x] = (0x9E3779B9u * (y * 5 + x + 1)) & top;
    return rows;
}

BmpParts Bmp(uint32_t headerSize, int bpp, uint32_t compression = 0, bool topDown = false) {
    BmpParts s;
    s.headerSize = headerSize;
    s.width = 5;
    s.height = topDown ? -3 : 3;
    s.bpp = static_cast<uint16_t>(bpp);
    s.compression = compression;
    if (bpp <= 8)
        for (uint32_t i = 0; i < (1u << bpp); ++i) s.palette.push_back(i * 0x010203u);
    s.bits = PackDibRows(Pattern(bpp), bpp, topDown);
    return s;
}

void ImageSeeds(Seeds& out) {
    for (int bpp : {1, 4, 8, 16, 24, 32}) out.Write("info" + std::to_string(bpp) + ".bmp", BuildBmp(Bmp(40, bpp)));
    for (int bpp : {1, 4, 8, 24}) out.Write("core" + std::to_string(bpp) + ".bmp", BuildBmp(Bmp(12, bpp)));
    out.Write("topdown24.bmp", BuildBmp(Bmp(40, 24, 0, true)));
    BmpParts fields16 = Bmp(40, 16, 3);
    fields16.masks = {0xF800, 0x07E0, 0x001F};
    out.Write("bitfields16.bmp", BuildBmp(fields16));
    BmpParts v4 = Bmp(108, 32, 3);
    v4.masks = {0x3FF00000, 0x000FFC00, 0x000003FF, 0xC0000000};
    out.Write("v4bitfields32.bmp", BuildBmp(v4));
    BmpParts v5 = Bmp(124, 8);
    v5.clrUsed = 20;
    v5.palette.resize(20);
    out.Write("v5clrused.bmp", BuildBmp(v5));
    BmpParts ce = Bmp(40, 32, 6);
    ce.masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
    out.Write("alphabitfields.bmp", BuildBmp(ce));
    BmpParts rle8 = Bmp(40, 8, 1);
    rle8.bits = {2, 1, 0, 3, 4, 5, 6, 0, 0, 0, 0, 2, 1, 0, 2, 7, 0, 0, 5, 9, 0, 1};
    out.Write("rle8.bmp", BuildBmp(rle8));
    BmpParts rle4 = Bmp(40, 4, 2);
    rle4.bits = {0, 5, 0x12, 0x34, 0x50, 0, 0, 0, 0, 2, 2, 0, 3, 0xAB, 0, 0, 5, 0xCD, 0, 1};
    out.Write("rle4.bmp", BuildBmp(rle4));

    struct PngKind {
        uint8_t type, depth, channels;
    } kinds[] = {{0, 1, 1}, {0, 2, 1}, {0, 4, 1}, {0, 8, 1}, {0, 16, 1}, {2, 8, 3}, {2, 16, 3}, {3, 1, 1},
                 {3, 2, 1}, {3, 4, 1}, {3, 8, 1}, {4, 8, 2}, {4, 16, 2}, {6, 8, 4}, {6, 16, 4}};
    for (const PngKind& k : kinds) {
        for (bool interlaced : {false, true}) {
            PngParts s;
            s.width = 9, s.height = 9;
            s.depth = k.depth, s.colorType = k.type, s.interlaced = interlaced;
            uint32_t top = k.depth == 16 ? 0xFFFF : (1u << k.depth) - 1;
            s.pixels.assign(9, std::vector<std::vector<uint16_t>>(9));
            for (int y = 0; y < 9; ++y)
                for (int x = 0; x < 9; ++x)
                    for (int c = 0; c < k.channels; ++c)
                        s.pixels[y][x].push_back(static_cast<uint16_t>((0x9E3779B9u * (y * 9 + x) >> (8 * c)) & top));
            if (k.type == 3) {
                for (uint32_t i = 0; i <= top; ++i) s.palette.push_back(i * 0x030507u);
                s.trns = {0x00, 0x80};
            }
            char name[64];
            std::snprintf(name, sizeof name, "type%d-depth%d%s.png", k.type, k.depth, interlaced ? "-adam7" : "");
            out.Write(name, BuildPng(s));
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s FUZZER DIRECTORY\n", argv[0]);
        return 2;
    }
    Seeds seeds{argv[2]};
    if (std::strcmp(argv[1], "fuzz_images") == 0) ImageSeeds(seeds);
    if (!seeds.ok) {
        std::fprintf(stderr, "%s: cannot write seeds into %s\n", argv[0], argv[2]);
        return 1;
    }
    std::printf("%s: %d seeds for %s\n", argv[0], seeds.written, argv[1]);
    return 0;
}
