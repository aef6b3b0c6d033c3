// PNG decoding: every colour type and bit depth to 0x00RRGGBB, alpha and tRNS dropped,
// interlacing, and refusal of damaged files.
#include <string>

#include "platform/images/bitmap_pixels.h"
#include "platform/images/image_builders.h"
#include "support/leak_check.h"
#include "support/peak_memory.h"

namespace {

using zel::test::BuildPng;
using zel::test::Bytes;
using zel::test::Decode;
using zel::test::PngParts;
using zel::test::SamePixels;
using Samples = std::vector<std::vector<std::vector<uint16_t>>>;  // rows x pixels x channels
using Rows = std::vector<std::vector<uint32_t>>;

using PngLoad = zel::test::LeakChecked;

enum : uint8_t { kGrey = 0, kRgb = 2, kPalette = 3, kGreyAlpha = 4, kRgba = 6 };

PngParts Png(uint8_t colorType, uint8_t depth, Samples pixels) {
    PngParts s;
    s.colorType = colorType;
    s.depth = depth;
    s.height = static_cast<uint32_t>(pixels.size());
    s.width = static_cast<uint32_t>(pixels[0].size());
    s.pixels = std::move(pixels);
    return s;
}

struct Variant {
    const char* name;
    PngParts parts;
    Rows expected;
};

std::vector<Variant> Variants() {
    std::vector<Variant> v;
    // Grey below 8 bits is widened by bit repetition; 16 bits round to the nearest 8-bit value.
    v.push_back({"grey 1", Png(kGrey, 1, {{{0}, {1}, {1}}, {{1}, {0}, {0}}}),
                 {{0x000000, 0xFFFFFF, 0xFFFFFF}, {0xFFFFFF, 0x000000, 0x000000}}});
    v.push_back({"grey 2", Png(kGrey, 2, {{{0}, {1}, {2}, {3}, {1}}}),
                 {{0x000000, 0x555555, 0xAAAAAA, 0xFFFFFF, 0x555555}}});
    v.push_back({"grey 4", Png(kGrey, 4, {{{0}, {5}, {15}}}), {{0x000000, 0x555555, 0xFFFFFF}}});
    v.push_back({"grey 8", Png(kGrey, 8, {{{0x12}, {0xFE}}}), {{0x121212, 0xFEFEFE}}});
    v.push_back({"grey 16 rounds", Png(kGrey, 16, {{{0x12FF}, {0x0081}, {0x0080}, {0xFFFF}}}),
                 {{0x131313, 0x010101, 0x000000, 0xFFFFFF}}});
    v.push_back({"grey + alpha 8: alpha dropped, not blended", Png(kGreyAlpha, 8, {{{0x40, 0x00}, {0xC0, 0x80}}}),
                 {{0x404040, 0xC0C0C0}}});
    v.push_back({"grey + alpha 16", Png(kGreyAlpha, 16, {{{0xFFFF, 0}, {0x0100, 0xFFFF}}}), {{0xFFFFFF, 0x010101}}});
    v.push_back({"RGB 8", Png(kRgb, 8, {{{0x10, 0x20, 0x30}, {0xFF, 0x00, 0x80}}, {{1, 2, 3}, {0, 0, 0}}}),
                 {{0x102030, 0xFF0080}, {0x010203, 0x000000}}});
    v.push_back({"RGB 16", Png(kRgb, 16, {{{0x12FF, 0x0081, 0xFFFF}}}), {{0x1301FF}}});
    v.push_back({"RGBA 8", Png(kRgba, 8, {{{1, 2, 3, 0}, {0xAA, 0xBB, 0xCC, 0xFF}}}), {{0x010203, 0xAABBCC}}});
    v.push_back({"RGBA 16", Png(kRgba, 16, {{{0x0100, 0x0200, 0x0300, 0}}}), {{0x010203}}});

    auto palette = [&](const char* name, uint8_t depth, std::vector<uint32_t> colours, Samples idx, Rows want,
                       Bytes trns = {}) {
        PngParts s = Png(kPalette, depth, std::move(idx));
        s.palette = std::move(colours);
        s.trns = std::move(trns);
        v.push_back({name, s, std::move(want)});
    };
    palette("palette 1", 1, {0x123456, 0xABCDEF}, {{{1}, {0}, {1}}}, {{0xABCDEF, 0x123456, 0xABCDEF}});
    palette("palette 2", 2, {0x000001, 0x000002, 0x000003, 0x000004}, {{{3}, {2}, {1}, {0}, {3}}},
            {{0x000004, 0x000003, 0x000002, 0x000001, 0x000004}});
    std::vector<uint32_t> sixteen;
    for (uint32_t i = 0; i < 16; ++i) sixteen.push_back(i * 0x111111u);  // every entry different
    palette("palette 4", 4, sixteen, {{{15}, {0}, {7}}}, {{0xFFFFFF, 0x000000, 0x777777}});
    palette("palette 8 with tRNS: transparency ignored", 8, {0xFF0000, 0x00FF00, 0x0000FF}, {{{2}, {1}, {0}}},
            {{0x0000FF, 0x00FF00, 0xFF0000}}, {0, 0x80});

    PngParts keyed = Png(kRgb, 8, {{{9, 8, 7}, {1, 1, 1}}});
    keyed.trns = {0, 9, 0, 8, 0, 7};  // colour key of the first pixel
    v.push_back({"RGB with a tRNS colour key", keyed, {{0x090807, 0x010101}}});
    PngParts greyKeyed = Png(kGrey, 8, {{{0x33}}});
    greyKeyed.trns = {0, 0x33};
    v.push_back({"grey with a tRNS key", greyKeyed, {{0x333333}}});
    return v;
}

TEST_F(PngLoad, DecodesEveryColourTypeAndDepth) {
    for (const Variant& v : Variants()) {
        SCOPED_TRACE(v.name);
        EXPECT_TRUE(SamePixels(Decode(BuildPng(v.parts)), v.expected));
    }
}

TEST_F(PngLoad, InterlacedImagesMatchTheirProgressiveForm) {
    // 9 x 9 touches every Adam7 pass, including partial blocks at the right and bottom.
    for (uint8_t depth : {2, 8}) {
        SCOPED_TRACE(depth);
        Samples grey(9, std::vector<std::vector<uint16_t>>(9));
        Rows want(9, std::vector<uint32_t>(9));
        for (int y = 0; y < 9; ++y)
            for (int x = 0; x < 9; ++x) {
                uint16_t v = depth == 2 ? (x + 2 * y) % 4 : static_cast<uint16_t>(x * 16 + y);
                grey[y][x] = {v};
                uint32_t g = depth == 2 ? v * 0x55u : v;
                want[y][x] = g * 0x010101u;
            }
        PngParts s = Png(kGrey, depth, grey);
        s.interlaced = true;
        EXPECT_TRUE(SamePixels(Decode(BuildPng(s)), want));
    }
}

Bytes Damaged(Bytes file, size_t at, uint8_t value) {
    file[at] = value;
    return file;
}

Bytes PngWithData(uint32_t w, uint32_t h, uint8_t depth, uint8_t type, const Bytes& zlib) {
    Bytes png = zel::test::PngSignature();
    zel::test::PutChunk(png, "IHDR", zel::test::PngHeaderChunk(w, h, depth, type, false));
    zel::test::PutChunk(png, "IDAT", zlib);
    zel::test::PutChunk(png, "IEND", {});
    return png;
}

Bytes WithHeader(uint32_t w, uint32_t h, uint8_t depth, uint8_t type) {
    return PngWithData(w, h, depth, type, zel::test::ZlibStored(Bytes(16, 0)));
}

TEST_F(PngLoad, RejectsDamagedFilesWithAReasonAndNoBitmap) {
    PngParts small = Png(kRgb, 8, {{{1, 2, 3}, {4, 5, 6}}, {{7, 8, 9}, {10, 11, 12}}});
    Bytes good = BuildPng(small);
    PngParts oneRow = small;
    oneRow.height = 1;
    Bytes shortData = PngWithData(2, 2, 8, kRgb, zel::test::ZlibStored(zel::test::PngImageData(oneRow)));
    Bytes zlib = zel::test::ZlibStored(zel::test::PngImageData(small));
    zlib[5] ^= 0xFF;  // the stored block's NLEN no longer complements LEN
    Bytes badZlib = PngWithData(2, 2, 8, kRgb, zlib);
    PngParts noPalette = Png(kPalette, 8, {{{0}}});

    struct Case {
        const char* name;
        Bytes file;
        const char* reason;
    } cases[] = {
        {"signature only", zel::test::PngSignature(), "truncated PNG data"},
        {"cut inside the image data", Bytes(good.begin(), good.begin() + 50), "truncated PNG data"},
        {"IHDR CRC", Damaged(good, 29, good[29] ^ 1), "bad PNG data: IHDR: CRC error"},
        {"too little image data", shortData, "bad PNG data: Not enough image data"},
        {"corrupt deflate stream", badZlib, "bad PNG data: IDAT: invalid stored block lengths"},
        {"palette image without PLTE", BuildPng(noPalette), "Missing PLTE"},
        {"zero width", WithHeader(0, 1, 8, kRgb), "bad PNG data"},
        {"width 2^31", WithHeader(0x80000000u, 1, 8, kRgb), "bad PNG data"},
        {"RGB at 4 bits", WithHeader(1, 1, 4, kRgb), "bad PNG data"},
        {"colour type 7", WithHeader(1, 1, 8, 7), "bad PNG data"},
        {"wider than 16384", WithHeader(16385, 1, 8, kRgb), "image too large (16385x1, at most 16384"},
        {"16384 x 16384", WithHeader(16384, 16384, 1, kGrey), "more than 256 MiB"},
        {"16384 x 4096 from 27 bytes of image data", WithHeader(16384, 4096, 1, kGrey), "truncated PNG data"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        zel::test::ExpectRefused(c.file, c.reason);
    }
}

TEST_F(PngLoad, EveryPrefixIsRefused) {
    PngParts s = Png(kPalette, 4, {{{1}, {2}, {3}}, {{4}, {5}, {6}}});
    s.palette = std::vector<uint32_t>(16, 0x445566);
    s.interlaced = true;
    Bytes file = BuildPng(s);
    ASSERT_TRUE(Decode(file).ok());
    size_t iend = file.size() - 12;  // the decoder stops after the image data
    for (size_t n = 0; n < iend; ++n) {
        Bytes prefix(file.begin(), file.begin() + n);
        EXPECT_FALSE(Decode(prefix).ok()) << "prefix of " << n << " bytes";
    }
}

// A chunk whose length runs past the end of the file is refused when its header is read,
// before libpng allocates what the length says. 44 bytes: signature, IHDR, the header of
// a chunk claiming nearly 2 GiB, and three bytes of it.
Bytes ChunkLongerThanTheFile(const char* type) {
    Bytes png = zel::test::PngSignature();
    zel::test::PutChunk(png, "IHDR", zel::test::PngHeaderChunk(1, 1, 8, kRgb, false));
    zel::test::PutBE(png, 0x7FFFFFF0u);
    png.insert(png.end(), type, type + 4);
    png.insert(png.end(), {'a', 0, 'b'});
    return png;
}

TEST_F(PngLoad, AChunkLongerThanTheFileCostsNothing) {
    for (const char* type : {"tEXt", "zTXt", "iTXt", "sPLT", "iCCP", "prVt", "IDAT", "PLTE"}) {
        SCOPED_TRACE(type);
        Bytes file = ChunkLongerThanTheFile(type);
        ASSERT_EQ(file.size(), 44u);
        zel::detail::DecodedImage d = Decode(file);
        EXPECT_NE(d.error.find(std::string("truncated PNG data: ") + type + " chunk of 2147483632 bytes, 3 left"),
                  std::string::npos)
            << "error: " << d.error;
        uint64_t growth = zel::test::PeakGrowthOf([&] { Decode(file); });
        EXPECT_LT(growth, uint64_t{64} << 20) << "peak resident growth of " << (growth >> 20) << " MiB";
    }
}

TEST_F(PngLoad, AncillaryChunksAreSkippedUnread) {
    // Text, a profile and private chunks, some damaged, none of which changes a bitmap.
    PngParts s = Png(kRgb, 8, {{{1, 2, 3}, {4, 5, 6}}});
    Bytes good = BuildPng(s);
    Bytes file(good.begin(), good.begin() + 33);  // signature and IHDR
    zel::test::PutChunk(file, "tEXt", {'K', 'e', 'y', 0, 'v', 'a', 'l', 'u', 'e'});
    zel::test::PutChunk(file, "zTXt", {'K', 0, 0, 0xFF, 0xFF, 0xFF});  // not a zlib stream
    zel::test::PutChunk(file, "iCCP", {'p', 0, 0, 0x78});
    Bytes badCrc;
    zel::test::PutChunk(badCrc, "gAMA", {0, 0, 0, 0});
    badCrc.back() ^= 1;
    file.insert(file.end(), badCrc.begin(), badCrc.end());
    zel::test::PutChunk(file, "prVt", Bytes(5000, 0xAB));
    file.insert(file.end(), good.begin() + 33, good.end());
    EXPECT_TRUE(SamePixels(Decode(file), {{0x010203, 0x040506}}));
}

}  // namespace
