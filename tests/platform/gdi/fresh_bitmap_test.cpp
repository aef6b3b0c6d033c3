// A new bitmap reads as zero wherever anyone can look, even though its zero fill is
// skipped when the first operation overwrites every pixel. Each case starts from a fresh
// 8 x 8 bitmap whose not-yet-filled storage is poisoned, so a skipped fill shows.
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "gdi/objects.h"
#include "support/leak_check.h"

namespace zel::test {
namespace {

constexpr int kSize = 8;
constexpr uint32_t kPoison = 0x00DEADBEu;
constexpr COLORREF kInk = RGB(0x12, 0x34, 0x56);

class FreshBitmap : public LeakChecked {
protected:
    void SetUp() override {
        LeakChecked::SetUp();
        screen_ = GetDC(nullptr);
        dc_ = CreateCompatibleDC(screen_);
        source_ = CreateCompatibleDC(screen_);
        sourceBmp_ = CreateCompatibleBitmap(screen_, kSize, kSize);
        oldSource_ = SelectObject(source_, sourceBmp_);
        RECT all{0, 0, kSize, kSize};
        HBRUSH ink = CreateSolidBrush(kInk);
        FillRect(source_, &all, ink);
        DeleteObject(ink);
    }
    void TearDown() override {
        if (old_) SelectObject(dc_, old_);
        DeleteObject(bmp_);
        SelectObject(source_, oldSource_);
        DeleteObject(sourceBmp_);
        DeleteDC(source_);
        DeleteDC(dc_);
        ReleaseDC(nullptr, screen_);
        LeakChecked::TearDown();
    }
    // A fresh colour bitmap selected into dc_, its undefined storage made visible.
    void Fresh() {
        bmp_ = CreateCompatibleBitmap(screen_, kSize, kSize);
        gdi::Bitmap* b = gdi::LookupBitmap(bmp_);
        ASSERT_TRUE(b->zeroPending);
        for (uint32_t& p : b->px.pixels) p = kPoison;
        old_ = SelectObject(dc_, bmp_);
    }
    HDC screen_, dc_, source_;
    HBITMAP bmp_ = nullptr, sourceBmp_;
    HGDIOBJ old_ = nullptr, oldSource_;
};

struct Case {
    const char* name;
    std::function<void(HDC dc, HDC source)> op;
    RECT inked;  // where the ink colour must be; zero everywhere else
};

const Case kCases[] = {
    {"nothing drawn", [](HDC, HDC) {}, {0, 0, 0, 0}},
    {"whole SRCCOPY", [](HDC d, HDC s) { BitBlt(d, 0, 0, kSize, kSize, s, 0, 0, SRCCOPY); }, {0, 0, kSize, kSize}},
    {"partial SRCCOPY", [](HDC d, HDC s) { BitBlt(d, 2, 1, 3, 4, s, 0, 0, SRCCOPY); }, {2, 1, 5, 5}},
    {"SRCCOPY from beyond the source's edge",
     [](HDC d, HDC s) { BitBlt(d, 0, 0, kSize, kSize, s, 3, 0, SRCCOPY); }, {0, 0, kSize - 3, kSize}},
    {"whole SRCCOPY through a clip",
     [](HDC d, HDC s) {
         IntersectClipRect(d, 1, 1, 7, 7);
         BitBlt(d, 0, 0, kSize, kSize, s, 0, 0, SRCCOPY);
     },
     {1, 1, 7, 7}},
    {"whole SRCPAINT reads the zeroes",
     [](HDC d, HDC s) { BitBlt(d, 0, 0, kSize, kSize, s, 0, 0, SRCPAINT); }, {0, 0, kSize, kSize}},
    {"whole FillRect",
     [](HDC d, HDC) {
         RECT all{0, 0, kSize, kSize};
         HBRUSH ink = CreateSolidBrush(kInk);
         FillRect(d, &all, ink);
         DeleteObject(ink);
     },
     {0, 0, kSize, kSize}},
    {"PATCOPY with the NULL brush paints nothing",
     [](HDC d, HDC) {
         HGDIOBJ old = SelectObject(d, GetStockObject(NULL_BRUSH));
         PatBlt(d, 0, 0, kSize, kSize, PATCOPY);
         SelectObject(d, old);
     },
     {0, 0, 0, 0}},
    {"whole StretchBlt", [](HDC d, HDC s) { StretchBlt(d, 0, 0, kSize, kSize, s, 0, 0, 4, 4, SRCCOPY); },
     {0, 0, kSize, kSize}},
    {"shrunk StretchBlt", [](HDC d, HDC s) { StretchBlt(d, 0, 0, 4, 2, s, 0, 0, 8, 8, SRCCOPY); }, {0, 0, 4, 2}},
    // Pieces: each leaves the rest of the fill pending, and what reads afterwards must
    // still see zeroes there.
    {"two pieces, then SRCPAINT over both and the unwritten rest",
     [](HDC d, HDC s) {
         BitBlt(d, 0, 0, 2, kSize, s, 0, 0, SRCCOPY);
         StretchBlt(d, 6, 0, 2, 4, s, 0, 0, 1, 1, SRCCOPY);
         BitBlt(d, 0, 0, kSize, kSize, s, 0, 0, SRCPAINT);
     },
     {0, 0, kSize, kSize}},
    {"a piece, then a copy within the bitmap from its unwritten part onto the piece",
     [](HDC d, HDC s) {
         BitBlt(d, 0, 0, 4, 4, s, 0, 0, SRCCOPY);
         BitBlt(d, 2, 2, 4, 4, d, 4, 4, SRCCOPY);
     },
     {0, 0, 2, 4}},  // and {2, 0, 4, 2}: the rows above the copy keep the piece (checked below)
    {"a piece, then a stretch within the bitmap reading the unwritten part",
     [](HDC d, HDC s) {
         BitBlt(d, 0, 0, 8, 2, s, 0, 0, SRCCOPY);
         StretchBlt(d, 0, 1, 8, 7, d, 0, 4, 4, 4, SRCCOPY);
     },
     {0, 0, kSize, 1}},
    {"a piece through a clip of two rectangles, then the unwritten part read by a ROP",
     [](HDC d, HDC s) {
         HRGN two = CreateRectRgn(0, 0, 3, 3);
         HRGN other = CreateRectRgn(5, 5, 8, 8);
         CombineRgn(two, two, other, RGN_OR);
         SelectClipRgn(d, two);
         BitBlt(d, 0, 0, kSize, kSize, s, 0, 0, SRCCOPY);
         SelectClipRgn(d, nullptr);
         PatBlt(d, 0, 0, kSize, kSize, DSTINVERT);
         PatBlt(d, 0, 0, kSize, kSize, DSTINVERT);
         DeleteObject(other);
         DeleteObject(two);
     },
     {0, 0, 3, 3}},  // and {5, 5, 8, 8} (checked below)
    {"single pixels past what is kept as pending pieces",
     [](HDC d, HDC s) {
         for (int i = 0; i < kSize * kSize; i += 2) BitBlt(d, i % kSize, i / kSize, 1, 1, s, 0, 0, SRCCOPY);
         for (int i = 0; i < kSize * kSize; i += 2) PatBlt(d, i % kSize, i / kSize, 1, 1, BLACKNESS);
         BitBlt(d, 0, 0, kSize, kSize, s, 0, 0, SRCPAINT);
     },
     {0, 0, kSize, kSize}},
    {"pieces covering all of it, then text-like writes that read nothing",
     [](HDC d, HDC s) {
         BitBlt(d, 0, 0, 3, kSize, s, 0, 0, SRCCOPY);
         StretchBlt(d, 3, 0, 5, kSize, s, 0, 0, 1, 1, SRCCOPY);
         SetPixel(d, 0, 0, kInk);
     },
     {0, 0, kSize, kSize}},
};

// Pixels of the cases above inked outside their one rectangle.
bool AlsoInked(const std::string& name, int x, int y) {
    if (name.find("copy within the bitmap") != std::string::npos) return x >= 2 && x < 4 && y < 2;
    if (name.find("clip of two") != std::string::npos) return x >= 5 && y >= 5;
    return false;
}

TEST_F(FreshBitmap, ReadsAsZeroWhereverNotWritten) {
    for (const Case& c : kCases) {
        Fresh();
        c.op(dc_, source_);
        SelectClipRgn(dc_, nullptr);
        for (int y = 0; y < kSize; ++y)
            for (int x = 0; x < kSize; ++x) {
                const bool in = (x >= c.inked.left && x < c.inked.right && y >= c.inked.top && y < c.inked.bottom) ||
                                AlsoInked(c.name, x, y);
                ASSERT_EQ(GetPixel(dc_, x, y), in ? kInk : RGB(0, 0, 0)) << c.name << " at " << x << "," << y;
            }
        SelectObject(dc_, old_);
        old_ = nullptr;
        DeleteObject(bmp_);
        bmp_ = nullptr;
    }
}

// Reading a fresh bitmap that is not selected anywhere sees the zeroes too.
TEST_F(FreshBitmap, UnselectedReadsSeeZeroes) {
    Fresh();
    SelectObject(dc_, old_);
    old_ = nullptr;
    std::vector<uint8_t> bits(kSize * kSize * 4, 0xFF);
    ASSERT_EQ(GetBitmapBits(bmp_, static_cast<LONG>(bits.size()), bits.data()), static_cast<LONG>(bits.size()));
    EXPECT_EQ(bits, std::vector<uint8_t>(bits.size(), 0));
    DeleteObject(bmp_);

    Fresh();
    SelectObject(dc_, old_);
    old_ = nullptr;
    HBRUSH pattern = CreatePatternBrush(bmp_);
    HGDIOBJ oldBrush = SelectObject(source_, pattern);
    PatBlt(source_, 0, 0, kSize, kSize, PATCOPY);
    SelectObject(source_, oldBrush);
    DeleteObject(pattern);
    EXPECT_EQ(GetPixel(source_, 3, 3), RGB(0, 0, 0)) << "pattern brush from a fresh bitmap";
}

}  // namespace
}  // namespace zel::test
