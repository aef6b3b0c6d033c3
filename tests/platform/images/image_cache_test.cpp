// SHLoadDIBitmap's decoded-image cache: one decode per file version, a bitmap of its own per
// call, copy on first write, images freed with their last user once the cache lets go.
#include <fcntl.h>
#include <sys/stat.h>

#include <aygshell.h>
#include <zel/gdi_extras.h>
#include <zel/platform.h>

#include <filesystem>
#include <string>
#include <vector>

#include "gdi/image_cache.h"
#include "support/leak_check.h"
#include "support/memory_surface.h"
#include "support/platform_scratch.h"

namespace {

namespace fs = std::filesystem;
using zel::detail::ImageCacheState;

class ImageCache : public zel::test::LeakChecked {
protected:
    void SetUp() override {
        LeakChecked::SetUp();
        zel::detail::FlushImageCache();
    }
    void TearDown() override {
        zel::detail::FlushImageCache();
        EXPECT_EQ(ImageCacheState().images, 0u) << "an image outlived its last bitmap";
        LeakChecked::TearDown();
    }
    // Writes a 4 x 2 BMP whose pixels are `base` + index, with the given modification time.
    void Write(uint32_t base, time_t mtime) {
        std::vector<uint32_t> bits;
        for (uint32_t i = 0; i < 8; ++i) bits.push_back(base + i);
        HBITMAP b = CreateBitmap(4, 2, 1, 32, bits.data());
        ASSERT_TRUE(zel::SaveBitmap(b, path_.c_str()));
        DeleteObject(b);
        struct timespec times[2] = {{mtime, 0}, {mtime, 0}};
        ASSERT_EQ(utimensat(AT_FDCWD, path_.c_str(), times, 0), 0);
    }
    HBITMAP Load() {
        const std::wstring wide(path_.begin(), path_.end());
        return SHLoadDIBitmap(wide.c_str());
    }
    static COLORREF Pixel(HBITMAP b, int x, int y) { return GetPixel(zel::test::BitmapDC(b), x, y); }
    static void Paint(HBITMAP b, int x, int y, COLORREF c) { SetPixel(zel::test::BitmapDC(b), x, y, c); }
    zel::test::ScratchFolder scratch_;
    const fs::path& dir_ = scratch_.dir();
    const std::string path_ = scratch_.Path("skin.bmp");
};

constexpr uint32_t kFirst = 0x00102030, kSecond = 0x00405060;
// Stored pixel 0x00RRGGBB read back as a COLORREF.
COLORREF AsColor(uint32_t p) { return RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF); }

TEST_F(ImageCache, EachLoadIsAFreshBitmapButDecodesOnce) {
    Write(kFirst, 1000000);
    const auto before = ImageCacheState();
    const zel::GdiCounts gdi = zel::LiveGdiObjects();
    HBITMAP a = Load(), b = Load();
    ASSERT_TRUE(a && b);
    EXPECT_NE(a, b);
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, gdi.bitmaps + 2) << "one live bitmap per handle";
    EXPECT_EQ(ImageCacheState().decodes, before.decodes + 1);
    EXPECT_EQ(ImageCacheState().hits, before.hits + 1);
    BITMAP bm{};
    ASSERT_EQ(GetObjectW(b, sizeof bm, &bm), static_cast<int>(sizeof bm));
    EXPECT_TRUE(bm.bmWidth == 4 && bm.bmHeight == 2 && bm.bmBitsPixel == 32);
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(Pixel(a, i % 4, i / 4), AsColor(kFirst + i)) << i;
        EXPECT_EQ(Pixel(b, i % 4, i / 4), AsColor(kFirst + i)) << i;
    }
    DeleteObject(a);
    DeleteObject(b);
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, gdi.bitmaps);
    EXPECT_EQ(ImageCacheState().images, 1u) << "kept as recently used";
}

TEST_F(ImageCache, DrawingOnOneLoadLeavesTheOthersAlone) {
    Write(kFirst, 1000000);
    HBITMAP a = Load(), b = Load();
    Paint(a, 1, 0, RGB(255, 0, 0));
    EXPECT_EQ(Pixel(a, 1, 0), RGB(255, 0, 0));
    EXPECT_EQ(Pixel(b, 1, 0), AsColor(kFirst + 1));
    HBITMAP c = Load();
    EXPECT_EQ(Pixel(c, 1, 0), AsColor(kFirst + 1)) << "the cached image was written through";
    for (HBITMAP h : {a, b, c}) DeleteObject(h);
}

TEST_F(ImageCache, AChangedFileIsDecodedAgain) {
    Write(kFirst, 1000000);
    HBITMAP old = Load();
    Write(kSecond, 2000000);  // same size, new contents and time
    const auto before = ImageCacheState();
    HBITMAP fresh = Load();
    EXPECT_EQ(ImageCacheState().decodes, before.decodes + 1);
    EXPECT_EQ(Pixel(fresh, 0, 0), AsColor(kSecond));
    EXPECT_EQ(Pixel(old, 0, 0), AsColor(kFirst)) << "a bitmap keeps the version it was loaded from";
    DeleteObject(old);
    DeleteObject(fresh);
}

TEST_F(ImageCache, AnImageLivesWithItsLastBitmapOnceTheCacheLetsGo) {
    Write(kFirst, 1000000);
    HBITMAP a = Load();
    zel::detail::FlushImageCache();
    EXPECT_EQ(ImageCacheState().images, 1u);
    EXPECT_EQ(ImageCacheState().recentBytes, 0u);
    EXPECT_EQ(Pixel(a, 3, 1), AsColor(kFirst + 7));
    const auto before = ImageCacheState();
    HBITMAP b = Load();  // still found while a bitmap reads it
    EXPECT_EQ(ImageCacheState().decodes, before.decodes);
    zel::detail::FlushImageCache();
    DeleteObject(a);
    EXPECT_EQ(ImageCacheState().images, 1u);
    DeleteObject(b);
    EXPECT_EQ(ImageCacheState().images, 0u);
}

TEST_F(ImageCache, FailuresAreNotCached) {
    fs::create_directories(dir_);
    { std::FILE* f = std::fopen(path_.c_str(), "wb"); std::fputs("BM not really", f); std::fclose(f); }
    EXPECT_EQ(Load(), nullptr);
    EXPECT_EQ(Load(), nullptr);
    EXPECT_EQ(ImageCacheState().images, 0u);
    Write(kFirst, 3000000);
    HBITMAP ok = Load();
    EXPECT_EQ(Pixel(ok, 0, 0), AsColor(kFirst));
    DeleteObject(ok);
}

}  // namespace
