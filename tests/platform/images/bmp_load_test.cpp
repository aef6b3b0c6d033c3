// BMP decoding: every header, depth, compression and row order, and refusal of damaged
// files with the reason and without a bitmap left behind.
#include <climits>
#include <string>

#include "platform/images/bitmap_pixels.h"
#include "platform/images/image_builders.h"
#include "support/leak_check.h"

namespace {

using zel::test::BmpParts;
using zel::test::BuildBmp;
using zel::test::Bytes;
using zel::test::Decode;
using zel::test::PackDibRows;
using zel::test::SamePixels;
using Rows = std::vector<std::vector<uint32_t>>;

using BmpLoad = zel::test::LeakChecked;

// Distinct, easily told apart colour-table entries.
std::vector<uint32_t> Ramp(int n) {
    std::vector<uint32_t> p;
    for (int i = 0; i < n; ++i) p.push_back((0x102030u + 0x030507u * i) & 0xFFFFFF);
    return p;
}

Rows Lookup(const std::vector<uint32_t>& palette, const Rows& indices) {
    Rows out = indices;
    for (auto& row : out)
        for (auto& v : row) v = v < palette.size() ? palette[v] : 0;
    return out;
}

struct Variant {
    std::string name;
    BmpParts parts;
    Rows expected;  // top row first
};

Variant Indexed(std::string name, uint32_t headerSize, int bpp, const std::vector<uint32_t>& palette,
                const Rows& indices, uint32_t clrUsed = 0, bool topDown = false) {
    Variant v{std::move(name), {}, Lookup(palette, indices)};
    v.parts.headerSize = headerSize;
    v.parts.width = static_cast<int32_t>(indices[0].size());
    v.parts.height = static_cast<int32_t>(indices.size()) * (topDown ? -1 : 1);
    v.parts.bpp = static_cast<uint16_t>(bpp);
    v.parts.clrUsed = clrUsed;
    v.parts.palette = palette;
    v.parts.bits = PackDibRows(indices, bpp, topDown);
    return v;
}

Variant Direct(std::string name, uint32_t headerSize, int bpp, uint32_t compression, std::vector<uint32_t> masks,
               const Rows& stored, const Rows& expected, bool topDown = false) {
    Variant v{std::move(name), {}, expected};
    v.parts.headerSize = headerSize;
    v.parts.width = static_cast<int32_t>(stored[0].size());
    v.parts.height = static_cast<int32_t>(stored.size()) * (topDown ? -1 : 1);
    v.parts.bpp = static_cast<uint16_t>(bpp);
    v.parts.compression = compression;
    v.parts.masks = std::move(masks);
    v.parts.bits = PackDibRows(stored, bpp, topDown);
    return v;
}

std::vector<Variant> Variants() {
    const Rows rgb = {{0x102030, 0xFFFFFF, 0x000000}, {0xC08040, 0x0000FF, 0x00FF00}};
    std::vector<Variant> v;
    // Indexed: widths that end inside a byte test bit order and row padding.
    v.push_back(Indexed("info 1 bpp", 40, 1, {0x112233, 0xAABBCC},
                        {{1, 0, 1, 1, 0, 0, 1, 0, 1}, {0, 1, 0, 0, 1, 1, 0, 1, 0}}));
    v.push_back(Indexed("info 4 bpp", 40, 4, Ramp(16), {{15, 0, 7}, {1, 14, 8}}));
    v.push_back(Indexed("info 8 bpp", 40, 8, Ramp(256), {{0, 255, 128, 1, 77}, {200, 3, 4, 5, 6}}));
    v.push_back(Indexed("8 bpp, 3 colours used", 40, 8, Ramp(3), {{0, 1, 2}, {2, 1, 0}}, 3));
    v.push_back(Indexed("index past a short colour table is black", 40, 8, Ramp(2), {{0, 1, 2, 255}}, 2));
    v.push_back(Indexed("4 bpp, 2 colours used", 40, 4, Ramp(2), {{1, 15, 0}}, 2));
    v.push_back(Indexed("biClrUsed beyond 2^bpp reads 2^bpp entries", 40, 1, Ramp(2), {{1, 0, 1}}, 0xFFFFFFFF));
    v.push_back(Indexed("top-down 8 bpp", 40, 8, Ramp(8), {{1, 2}, {3, 4}, {5, 6}}, 8, true));
    v.push_back(Indexed("core 1 bpp", 12, 1, {0x123456, 0xFEDCBA}, {{0, 1, 1}, {1, 0, 0}}));
    v.push_back(Indexed("core 4 bpp", 12, 4, Ramp(16), {{3, 12, 5}, {9, 0, 15}}));
    v.push_back(Indexed("core 8 bpp", 12, 8, Ramp(256), {{0, 255}, {7, 128}}));
    v.push_back(Indexed("V5 8 bpp", 124, 8, Ramp(256), {{9, 250}, {17, 33}}));

    // Direct colour.
    v.push_back(Direct("info 24 bpp", 40, 24, BI_RGB, {}, rgb, rgb));
    v.push_back(Direct("core 24 bpp", 12, 24, BI_RGB, {}, rgb, rgb));
    v.push_back(Direct("V5 24 bpp", 124, 24, BI_RGB, {}, rgb, rgb));
    v.push_back(Direct("top-down 24 bpp", 40, 24, BI_RGB, {}, rgb, rgb, true));
    v.push_back(Direct("info 16 bpp is x555, short fields widened by bit repetition", 40, 16, BI_RGB, {},
                       {{0x7FFF, 0x7C00, 0x03E0, 0x001F}, {0x4210, 0x8000, 0x0001, 0x0421}},
                       {{0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF}, {0x848484, 0x000000, 0x000008, 0x080808}}));
    v.push_back(Direct("info 32 bpp ignores the top byte", 40, 32, BI_RGB, {}, {{0xFF102030, 0x80FFFFFF}},
                       {{0x102030, 0xFFFFFF}}));
    v.push_back(Direct("bit fields 16 bpp 565", 40, 16, BI_BITFIELDS, {0xF800, 0x07E0, 0x001F},
                       {{0xFFFF, 0x07E0, 0x0020, 0xF800}}, {{0xFFFFFF, 0x00FF00, 0x000400, 0xFF0000}}));
    v.push_back(Direct("bit fields 32 bpp, 10-bit fields in reverse order", 40, 32, BI_BITFIELDS,
                       {0x000003FF, 0x000FFC00, 0x3FF00000},
                       {{0x3FFu, 0x200u | 0x155u << 10 | 0x004u << 20 | 0xC0000000u}}, {{0xFF0000, 0x805501}}));
    v.push_back(Direct("V2 header holds the masks", 52, 32, BI_BITFIELDS, {0x0000FF00, 0x00FF0000, 0xFF000000},
                       {{0x563412FF}}, {{0x123456}}));
    v.push_back(Direct("V4 bit fields 16 bpp 4444, alpha dropped", 108, 16, BI_BITFIELDS,
                       {0x0F00, 0x00F0, 0x000F, 0xF000}, {{0xFA5C, 0x0001}}, {{0xAA55CC, 0x000011}}));
    v.push_back(Direct("V5 bit fields 32 bpp ARGB, alpha dropped", 124, 32, BI_BITFIELDS,
                       {0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000}, {{0x7F123456, 0x00000000}},
                       {{0x123456, 0x000000}}));
    v.push_back(Direct("CE alpha bit fields: four masks after an info header", 40, 32, 6,
                       {0xFF0000, 0x00FF00, 0x0000FF, 0xFF000000}, {{0x80ABCDEF}}, {{0xABCDEF}}));
    v.push_back(Direct("top-down bit fields 16 bpp", 40, 16, BI_BITFIELDS, {0xF800, 0x07E0, 0x001F},
                       {{0xF800}, {0x001F}}, {{0xFF0000}, {0x0000FF}}, true));
    return v;
}

TEST_F(BmpLoad, DecodesEveryHeaderDepthAndLayout) {
    for (const Variant& v : Variants()) {
        SCOPED_TRACE(v.name);
        Bytes file = BuildBmp(v.parts);
        EXPECT_TRUE(SamePixels(Decode(file), v.expected));
    }
}

TEST_F(BmpLoad, LastRowMayOmitItsPadding) {
    BmpParts parts;
    parts.width = 1, parts.height = 2, parts.bpp = 24;
    parts.bits = PackDibRows({{0xABCDEF}, {0x123456}}, 24, false);
    parts.bits.resize(parts.bits.size() - 1);  // 4 + 3 bytes: the top row's pad byte is missing
    EXPECT_TRUE(SamePixels(Decode(BuildBmp(parts)), {{0xABCDEF}, {0x123456}}));
    parts.bits.resize(parts.bits.size() - 1);
    EXPECT_EQ(Decode(BuildBmp(parts)).error, "truncated pixel data");
}

// RLE streams are written by hand; entry 0 of their colour table is not black, so pixels
// the stream skips are told apart from pixels written black.
constexpr uint32_t kEntry0 = 0xAA0000;

BmpParts Rle(uint32_t compression, int width, int height, Bytes stream) {
    BmpParts s;
    s.width = width, s.height = height;
    s.bpp = compression == BI_RLE8 ? 8 : 4;
    s.compression = compression;
    s.palette = Ramp(compression == BI_RLE8 ? 4 : 16);
    s.palette[0] = kEntry0;
    s.clrUsed = static_cast<uint32_t>(s.palette.size());
    s.bits = std::move(stream);
    return s;
}

TEST_F(BmpLoad, Rle8RunsLiteralsDeltasAndEscapes) {
    BmpParts s = Rle(BI_RLE8, 6, 3,
                    {2, 1,                 // bottom row: two of index 1,
                     0, 3, 2, 3, 1, 0,     // a literal block of three, padded to a word,
                     0, 0,                 // end of line: the last pixel stays entry 0
                     0, 2, 3, 1,           // delta right 3, up 1: the middle row is skipped
                     3, 2,                 // three of index 2 at the top row's right
                     0, 1});               // end of bitmap
    auto p = s.palette;
    const uint32_t e = kEntry0;
    EXPECT_TRUE(SamePixels(Decode(BuildBmp(s)), {{e, e, e, p[2], p[2], p[2]},
                                                 {e, e, e, e, e, e},
                                                 {p[1], p[1], p[2], p[3], p[1], e}}));
}

TEST_F(BmpLoad, Rle4AlternatesNibblesAndPadsOddLiterals) {
    BmpParts s = Rle(BI_RLE4, 5, 2,
                    {0, 5, 0x12, 0x12, 0x10, 0,  // literal of five nibbles: three bytes and a pad
                     0, 0,                       // end of line
                     2, 0x34,                    // run of two: 3, 4
                     0, 2, 1, 0,                 // delta right 1
                     1, 0x56,                    // run of one: the high nibble only
                     0, 1});
    auto p = s.palette;
    const uint32_t e = kEntry0;
    EXPECT_TRUE(SamePixels(Decode(BuildBmp(s)), {{p[3], p[4], e, p[5], e}, {p[1], p[2], p[1], p[2], p[1]}}));
}

TEST_F(BmpLoad, RleStreamMayEndWithoutEndOfBitmap) {
    BmpParts s = Rle(BI_RLE8, 2, 2, {2, 3, 0, 0, 1, 2});
    auto p = s.palette;
    EXPECT_TRUE(SamePixels(Decode(BuildBmp(s)), {{p[2], kEntry0}, {p[3], p[3]}}));
}

void Patch(Bytes& b, size_t at, uint32_t v, int n = 4) {
    for (int i = 0; i < n; ++i) b[at + i] = static_cast<uint8_t>(v >> (8 * i));
}

BmpParts Good24() {
    BmpParts s;
    s.width = 3, s.height = 2, s.bpp = 24;
    s.bits = PackDibRows({{1, 2, 3}, {4, 5, 6}}, 24, false);
    return s;
}

BmpParts Good8() {
    BmpParts s;
    s.width = 3, s.height = 2, s.bpp = 8;
    s.palette = Ramp(256);
    s.bits = PackDibRows({{1, 2, 3}, {4, 5, 6}}, 8, false);
    return s;
}

struct Broken {
    const char* name;
    Bytes file;
    const char* reason;  // what the one stderr line says
};

template <class F>
Bytes Mutated(BmpParts parts, F change) {
    change(parts);
    return BuildBmp(parts);
}

// Offsets into the file: bfOffBits 10, biSize 14, biWidth 18, biHeight 22.
std::vector<Broken> BrokenFiles() {
    std::vector<Broken> b;
    Bytes good = BuildBmp(Good24());
    auto patched = [&](size_t at, uint32_t v) {
        Bytes f = good;
        Patch(f, at, v);
        return f;
    };
    b.push_back({"empty", {}, "empty file"});
    b.push_back({"only the signature", {'B', 'M', 0, 0}, "truncated file header"});
    b.push_back({"other signature", {'B', 'A', 0, 0, 0, 0, 0, 0}, "not a BMP or PNG file"});
    b.push_back({"header cut short", Bytes(good.begin(), good.begin() + 40), "truncated bitmap header"});
    b.push_back({"header size 20", patched(14, 20), "unsupported header size 20"});
    b.push_back({"header size 0xFFFFFFFF", patched(14, 0xFFFFFFFF), "truncated bitmap header"});
    b.push_back({"zero width", patched(18, 0), "bad dimensions 0x2"});
    b.push_back({"negative width", patched(18, static_cast<uint32_t>(-3)), "bad dimensions -3x2"});
    b.push_back({"zero height", patched(22, 0), "bad dimensions 3x0"});
    b.push_back({"height INT_MIN", patched(22, 0x80000000u), "image too large (3x2147483648"});
    b.push_back({"width 16385", patched(18, 16385), "image too large (16385x2, at most 16384"});
    b.push_back({"16384 x 16384", Mutated(Good8(), [](BmpParts& s) { s.width = s.height = 16384; }),
                 "more than 256 MiB"});
    b.push_back({"width 2^31-1 at 32 bpp", Mutated(Good24(), [](BmpParts& s) { s.width = INT_MAX, s.bpp = 32; }),
                 "image too large"});
    b.push_back({"two planes", Mutated(Good24(), [](BmpParts& s) { s.planes = 2; }), "bad plane count 2"});
    b.push_back({"7 bpp", Mutated(Good24(), [](BmpParts& s) { s.bpp = 7; }), "unsupported bit depth 7"});
    b.push_back({"0 bpp (embedded JPEG or PNG)", Mutated(Good24(), [](BmpParts& s) { s.bpp = 0; }),
                 "unsupported bit depth 0"});
    b.push_back({"core header with 32 bpp", Mutated(Good24(), [](BmpParts& s) { s.headerSize = 12, s.bpp = 32; }),
                 "unsupported bit depth 32"});
    b.push_back({"BI_JPEG", Mutated(Good24(), [](BmpParts& s) { s.compression = 4; }), "unsupported compression 4"});
    b.push_back({"compression 9", Mutated(Good24(), [](BmpParts& s) { s.compression = 9; }),
                 "unsupported compression 9"});
    b.push_back({"RLE8 at 4 bpp", Mutated(Good8(), [](BmpParts& s) { s.compression = BI_RLE8, s.bpp = 4; }),
                 "RLE8 compression with 4 bpp"});
    b.push_back({"RLE4 at 8 bpp", Mutated(Good8(), [](BmpParts& s) { s.compression = BI_RLE4; }),
                 "RLE4 compression with 8 bpp"});
    b.push_back({"bit fields at 24 bpp", Mutated(Good24(), [](BmpParts& s) { s.compression = BI_BITFIELDS; }),
                 "bit-field compression with 24 bpp"});
    b.push_back({"top-down RLE8", Mutated(Good8(), [](BmpParts& s) { s.compression = BI_RLE8, s.height = -2; }),
                 "top-down bitmap with RLE compression"});
    b.push_back({"masks cut short", Mutated(Good24(), [](BmpParts& s) {
                     s.bpp = 32, s.compression = BI_BITFIELDS, s.masks = {0xFF0000, 0xFF00}, s.bits.clear();
                 }), "truncated colour masks"});
    b.push_back({"colour table past the end", Mutated(Good8(), [](BmpParts& s) {
                     s.palette.resize(4), s.bits.clear();
                 }), "truncated colour table"});
    b.push_back({"core colour table past the end", Mutated(Good8(), [](BmpParts& s) {
                     s.headerSize = 12, s.palette.resize(100), s.bits.clear();
                 }), "truncated colour table"});
    b.push_back({"bfOffBits past the end", patched(10, static_cast<uint32_t>(good.size())),
                 "pixel data offset 78 past the end of the file"});
    b.push_back({"bfOffBits 0xFFFFFFFF", patched(10, 0xFFFFFFFF), "past the end of the file"});
    b.push_back({"bfOffBits inside the headers", patched(10, 20), "pixel data offset 20 inside the headers"});
    b.push_back({"pixel data cut short", Bytes(good.begin(), good.end() - 4), "truncated pixel data"});
    b.push_back({"pixel data of a 3x3000 image", Mutated(Good24(), [](BmpParts& s) { s.height = 3000; }),
                 "truncated pixel data"});
    // RLE damage.
    auto rle = [](int w, int h, Bytes stream) { return BuildBmp(Rle(BI_RLE8, w, h, std::move(stream))); };
    b.push_back({"RLE run past the row", rle(4, 2, {5, 1}), "RLE run past the end of a row"});
    b.push_back({"RLE run after a delta", rle(4, 2, {0, 2, 3, 0, 2, 1}), "RLE run past the end of a row"});
    b.push_back({"RLE literal past the row", rle(4, 2, {0, 5, 1, 2, 3, 4, 5, 0}), "RLE run past the end of a row"});
    b.push_back({"RLE4 literal past the row", BuildBmp(Rle(BI_RLE4, 2, 1, {0, 3, 0x12, 0x30})),
                 "RLE run past the end of a row"});
    b.push_back({"RLE run above the top row", rle(4, 1, {0, 0, 1, 1}), "RLE data past the end of the bitmap"});
    b.push_back({"RLE end of line above the top row", rle(4, 1, {0, 0, 0, 0}), "RLE data past the end of the bitmap"});
    b.push_back({"RLE delta past the right edge", rle(4, 2, {0, 2, 5, 0}), "RLE delta past the end of the bitmap"});
    b.push_back({"RLE delta past the top", rle(4, 2, {0, 2, 0, 3}), "RLE delta past the end of the bitmap"});
    b.push_back({"RLE odd byte at the end", rle(4, 2, {2, 1, 0}), "truncated RLE data"});
    b.push_back({"RLE delta without offsets", rle(4, 2, {0, 2, 1}), "truncated RLE data"});
    b.push_back({"RLE literal cut short", rle(4, 2, {0, 4, 1, 2}), "truncated RLE data"});
    return b;
}

TEST_F(BmpLoad, RejectsMalformedFilesWithAReasonAndNoBitmap) {
    for (const Broken& b : BrokenFiles()) {
        SCOPED_TRACE(b.name);
        zel::test::ExpectRefused(b.file, b.reason);
    }
}

TEST_F(BmpLoad, LimitsApplyToEachSideAndToThePixelCount) {
    zel::detail::ImageLimits limits;
    limits.maxSide = 1024;
    limits.maxPixelBytes = 1 << 20;
    auto decode = [&](int w, int h) {
        BmpParts s;
        s.width = w, s.height = h, s.bpp = 24;
        s.bits.assign(static_cast<size_t>((w * 3 + 3) & ~3) * h, 0);
        Bytes f = BuildBmp(s);
        return zel::detail::DecodeBmp(f.data(), f.size(), limits);
    };
    EXPECT_TRUE(decode(1024, 1).ok());
    EXPECT_EQ(decode(1025, 1).error, "image too large (1025x1, at most 1024 pixels a side)");
    EXPECT_TRUE(decode(512, 512).ok());
    EXPECT_EQ(decode(512, 513).error, "image too large (512x513, more than 1 MiB of pixels)");
    // The default limits: 16384 a side.
    BmpParts wide;
    wide.width = 16384, wide.height = 1, wide.bpp = 1;
    wide.palette = {0, 0xFFFFFF};
    wide.bits.assign(16384 / 8, 0xFF);
    Bytes f = BuildBmp(wide);
    zel::detail::DecodedImage d = Decode(f);
    ASSERT_TRUE(d.ok()) << d.error;
    EXPECT_EQ(d.pixels.row(0)[16383], 0xFFFFFFu);
}

// Every prefix of a valid file is refused or decodes to the same pixels (only padding was
// missing); an RLE stream cut at a command boundary may also decode, to fewer pixels. No
// prefix makes the decoder read past the bytes it was given.
void CheckPrefixes(const Bytes& file, bool rle) {
    zel::detail::DecodedImage whole = Decode(file);
    ASSERT_TRUE(whole.ok()) << whole.error;
    int accepted = 0;
    for (size_t n = 0; n < file.size(); ++n) {
        Bytes prefix(file.begin(), file.begin() + n);  // its own allocation, so ASan sees overreads
        zel::detail::DecodedImage d = Decode(prefix);
        if (!d.ok()) continue;
        ++accepted;
        if (rle)
            EXPECT_EQ(d.pixels.width * d.pixels.height, whole.pixels.width * whole.pixels.height);
        else
            EXPECT_EQ(d.pixels.pixels, whole.pixels.pixels) << "prefix of " << n << " bytes";
    }
    if (!rle) {
        EXPECT_LE(accepted, 3) << "only a missing pad of the last row is forgiven";
    }
}

TEST_F(BmpLoad, EveryPrefixIsRefusedOrComplete) {
    CheckPrefixes(BuildBmp(Good8()), false);
    CheckPrefixes(BuildBmp(Good24()), false);
    CheckPrefixes(BuildBmp(Rle(BI_RLE8, 6, 3, {2, 1, 0, 3, 2, 3, 1, 0, 0, 0, 0, 2, 3, 1, 3, 2, 0, 1})), true);
    CheckPrefixes(BuildBmp(Rle(BI_RLE4, 5, 2, {0, 5, 0x12, 0x12, 0x10, 0, 0, 0, 2, 0x34, 0, 1})), true);
}

}  // namespace
