// SHLoadDIBitmap and zel::SaveBitmap on real files: round trips, the formats written,
// path conversion (backslashes, non-ASCII names), and failures with their one stderr line.
#include <sys/stat.h>
#include <unistd.h>

#include <aygshell.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/images/bitmap_pixels.h"
#include "platform/images/image_builders.h"
#include "gdi/image_codec.h"
#include "support/leak_check.h"
#include "support/platform_scratch.h"

namespace {

namespace fs = std::filesystem;
using zel::test::Bytes;
using zel::test::OwnedBitmap;
using zel::test::ReadBitmap;

class ImageFiles : public zel::test::LeakChecked {
protected:
    std::string Path(const std::string& name) const { return scratch_.Path(name); }
    zel::test::ScratchFolder scratch_;
    const fs::path& dir_ = scratch_.dir();
};

std::wstring Wide(const std::string& ascii) { return std::wstring(ascii.begin(), ascii.end()); }

Bytes ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

uint32_t BE32(const Bytes& b, size_t at) { return b[at] << 24 | b[at + 1] << 16 | b[at + 2] << 8 | b[at + 3]; }
uint32_t LE32(const Bytes& b, size_t at) { return b[at] | b[at + 1] << 8 | b[at + 2] << 16 | b[at + 3] << 24; }

// A 5 x 3 colour bitmap (odd width: BMP rows need padding) whose top bytes are not zero.
HBITMAP MakeColourBitmap(std::vector<uint32_t>& expected) {
    std::vector<uint32_t> bits;
    for (uint32_t i = 0; i < 15; ++i) bits.push_back(0xA5000000u | (i * 0x112233u + 0x0A0B0Cu));
    expected.clear();
    for (uint32_t p : bits) expected.push_back(p & 0xFFFFFF);
    return CreateBitmap(5, 3, 1, 32, bits.data());
}

std::string LoadErrorOf(const std::wstring& path) {
    ::testing::internal::CaptureStderr();
    HBITMAP h = SHLoadDIBitmap(path.c_str());
    std::string err = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(h, nullptr);
    if (h) DeleteObject(h);
    return err;
}

TEST_F(ImageFiles, ColourBitmapRoundTripsThroughPngAndBmp) {
    std::vector<uint32_t> expected;
    OwnedBitmap original(MakeColourBitmap(expected));
    ASSERT_TRUE(original);
    for (const char* name : {"colour.png", "colour.bmp", "COLOUR.PNG"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(zel::SaveBitmap(original.get(), Path(name).c_str()));
        OwnedBitmap loaded(SHLoadDIBitmap(Wide(Path(name)).c_str()));
        ASSERT_TRUE(loaded);
        zel::test::BitmapPixels px = ReadBitmap(loaded.get());
        EXPECT_EQ(px.width, 5);
        EXPECT_EQ(px.height, 3);
        EXPECT_EQ(px.px, expected) << "top byte dropped, colours exact";
    }
}

TEST_F(ImageFiles, WritesRgbPngAnd24BppBottomUpBmp) {
    std::vector<uint32_t> expected;
    OwnedBitmap bitmap(MakeColourBitmap(expected));
    ASSERT_TRUE(zel::SaveBitmap(bitmap.get(), Path("a.png").c_str()));
    ASSERT_TRUE(zel::SaveBitmap(bitmap.get(), Path("a.bmp").c_str()));

    Bytes png = ReadAll(Path("a.png"));
    ASSERT_GE(png.size(), 33u);
    EXPECT_EQ(Bytes(png.begin(), png.begin() + 8), zel::test::PngSignature());
    EXPECT_EQ(BE32(png, 16), 5u);
    EXPECT_EQ(BE32(png, 20), 3u);
    EXPECT_EQ(png[24], 8) << "bit depth";
    EXPECT_EQ(png[25], 2) << "colour type RGB";
    EXPECT_EQ(png[28], 0) << "not interlaced";

    Bytes bmp = ReadAll(Path("a.bmp"));
    const size_t stride = 16;  // 5 * 3 bytes padded to 4
    ASSERT_EQ(bmp.size(), 54 + stride * 3);
    EXPECT_EQ(LE32(bmp, 2), bmp.size()) << "bfSize";
    EXPECT_EQ(LE32(bmp, 10), 54u) << "bfOffBits";
    EXPECT_EQ(LE32(bmp, 14), 40u) << "BITMAPINFOHEADER";
    EXPECT_EQ(LE32(bmp, 22), 3u) << "positive height: bottom-up";
    EXPECT_EQ(bmp[28], 24) << "bpp";
    EXPECT_EQ(LE32(bmp, 30), 0u) << "BI_RGB";
    // The first stored row is the bottom one; pixels are blue, green, red.
    const uint32_t bottomLeft = expected[10];
    EXPECT_EQ(Bytes(bmp.begin() + 54, bmp.begin() + 57),
              (Bytes{uint8_t(bottomLeft), uint8_t(bottomLeft >> 8), uint8_t(bottomLeft >> 16)}));
    EXPECT_EQ(bmp[54 + 15], 0) << "row padding";
}

TEST_F(ImageFiles, MonochromeBitmapsSaveAsBlackAndWhite) {
    const uint8_t bits[] = {0xA0, 0, 0x40, 0};  // rows "1 0 1", "0 1 0"; WORD-aligned
    OwnedBitmap mono(CreateBitmap(3, 2, 1, 1, bits));
    ASSERT_TRUE(mono);
    const std::vector<uint32_t> want = {0xFFFFFF, 0, 0xFFFFFF, 0, 0xFFFFFF, 0};
    for (const char* name : {"mono.png", "mono.bmp"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(zel::SaveBitmap(mono.get(), Path(name).c_str()));
        OwnedBitmap loaded(SHLoadDIBitmap(Wide(Path(name)).c_str()));
        ASSERT_TRUE(loaded);
        EXPECT_EQ(ReadBitmap(loaded.get()).px, want);
    }
}

TEST_F(ImageFiles, SaveFailsOnBadHandlesExtensionsAndPaths) {
    std::vector<uint32_t> expected;
    HBITMAP stale = MakeColourBitmap(expected);
    DeleteObject(stale);
    OwnedBitmap bitmap(MakeColourBitmap(expected));
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));

    EXPECT_FALSE(zel::SaveBitmap(nullptr, Path("null.png").c_str()));
    EXPECT_FALSE(zel::SaveBitmap(stale, Path("stale.png").c_str()));
    EXPECT_FALSE(zel::SaveBitmap(reinterpret_cast<HBITMAP>(brush), Path("brush.png").c_str()));
    EXPECT_FALSE(zel::SaveBitmap(bitmap.get(), Path("a.jpg").c_str()));
    EXPECT_FALSE(zel::SaveBitmap(bitmap.get(), Path("png").c_str()));
    EXPECT_FALSE(zel::SaveBitmap(bitmap.get(), nullptr));
    EXPECT_FALSE(zel::SaveBitmap(bitmap.get(), Path("missing/dir/a.png").c_str()));
    EXPECT_FALSE(zel::SaveBitmap(bitmap.get(), dir_.string().c_str()));
    EXPECT_TRUE(fs::is_empty(dir_)) << "a failed save leaves no file";
    DeleteObject(brush);
}

TEST_F(ImageFiles, LoadFailuresSayWhyInOneLineNamingTheFile) {
    scratch_.Write("junk.bmp", Bytes{'B', 'M', 1, 2, 3});
    scratch_.Write("text.png", Bytes{'h', 'i'});
    EXPECT_EQ(LoadErrorOf(Wide(Path("none.bmp"))),
              "SHLoadDIBitmap: " + Path("none.bmp") + ": cannot open: No such file or directory\n");
    EXPECT_EQ(LoadErrorOf(Wide(dir_.string())), "SHLoadDIBitmap: " + dir_.string() + ": not a regular file\n");
    ASSERT_EQ(mkfifo(Path("fifo.bmp").c_str(), 0600), 0);
    EXPECT_EQ(LoadErrorOf(Wide(Path("fifo.bmp"))), "SHLoadDIBitmap: " + Path("fifo.bmp") + ": not a regular file\n")
        << "refused without waiting for a writer";
    EXPECT_EQ(LoadErrorOf(Wide(Path("junk.bmp"))), "SHLoadDIBitmap: " + Path("junk.bmp") + ": truncated file header\n");
    EXPECT_EQ(LoadErrorOf(Wide(Path("text.png"))), "SHLoadDIBitmap: " + Path("text.png") + ": not a BMP or PNG file\n");

    ::testing::internal::CaptureStderr();
    EXPECT_EQ(SHLoadDIBitmap(nullptr), nullptr);
    EXPECT_EQ(zel::detail::LoadImageFromMemory(nullptr, 0, nullptr), nullptr);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "SHLoadDIBitmap: (null): no path\n")
        << "no name, no message";
}

TEST_F(ImageFiles, PathsTakeBackslashesAndWideNames) {
    std::vector<uint32_t> expected;
    OwnedBitmap bitmap(MakeColourBitmap(expected));
    fs::create_directories(dir_ / "skin");
    ASSERT_TRUE(zel::SaveBitmap(bitmap.get(), Path("skin/a.bmp").c_str()));

    std::wstring absolute = Wide(Path("skin/a.bmp"));
    for (wchar_t& c : absolute)
        if (c == L'/') c = L'\\';
    ASSERT_EQ(absolute[0], L'\\');
    OwnedBitmap fromRoot(SHLoadDIBitmap(absolute.c_str()));
    EXPECT_TRUE(fromRoot);

    fs::path cwd = fs::current_path();
    fs::current_path(dir_);
    OwnedBitmap relative(SHLoadDIBitmap(L"skin\\a.bmp"));
    fs::current_path(cwd);
    ASSERT_TRUE(relative);
    EXPECT_EQ(ReadBitmap(relative.get()).px, expected);

    // Wide paths become UTF-8: U+00E4, U+20AC and U+1F600 take two, three and four bytes.
    ASSERT_TRUE(zel::SaveBitmap(bitmap.get(), Path("bild-\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80.png").c_str()));
    OwnedBitmap wide(SHLoadDIBitmap((Wide(dir_.string()) + L"/bild-\u00E4\u20AC\U0001F600.png").c_str()));
    ASSERT_TRUE(wide);
    EXPECT_EQ(ReadBitmap(wide.get()).px, expected);
}

}  // namespace
