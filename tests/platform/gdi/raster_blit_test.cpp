// BitBlt: clipping, same-surface overlap and colour <-> mono conversion; brushes
// on monochrome surfaces. Plain, negative and out-of-bounds geometry is pinned against
// the recordings (recorded/blits.cpp).
#include <algorithm>
#include <string>

#include <zel/gdi_extras.h>

#include "raster_canvas.h"
#include "support/leak_check.h"

namespace {

using zel::test::Canvas;
using zel::test::kSentinel;
using Blit = zel::test::LeakChecked;

TEST_F(Blit, ZeroExtentDrawsNothing) {
    Canvas src(2, 2), dst(2, 2);
    src.Gradient();
    EXPECT_TRUE(BitBlt(dst.dc(), 0, 0, 0, 2, src.dc(), 0, 0, SRCCOPY));
    EXPECT_TRUE(BitBlt(dst.dc(), 0, 0, 2, 0, src.dc(), 0, 0, SRCCOPY));
    EXPECT_EQ(dst.FenceIntact(RECT{0, 0, 0, 0}), "");
}

// The destination clip region limits every ROP path; the fence shows nothing leaks.
TEST_F(Blit, DestinationClipRegionAppliesToEveryPath) {
    for (DWORD rop : std::initializer_list<DWORD>{SRCCOPY, SRCINVERT, PATCOPY, NOTSRCCOPY}) {
        Canvas src(8, 8), dst(8, 8);
        src.Gradient();
        HRGN a = CreateRectRgn(1, 1, 3, 7), b = CreateRectRgn(5, 2, 7, 4);
        CombineRgn(a, a, b, RGN_OR);
        SelectClipRgn(dst.dc(), a);
        EXPECT_TRUE(BitBlt(dst.dc(), 0, 0, 8, 8, src.dc(), 0, 0, rop));
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x) {
                bool inside = (x >= 1 && x < 3 && y >= 1 && y < 7) || (x >= 5 && x < 7 && y >= 2 && y < 4);
                EXPECT_EQ(dst.at(x, y) != kSentinel, inside) << "rop " << std::hex << rop << " at " << x << "," << y;
            }
        DeleteObject(a);
        DeleteObject(b);
    }
}

// Moves within one bitmap read every source pixel before overwriting it, in all eight
// directions, for the memmove path and the kernel path, also across a clip made of several
// rectangles.
TEST_F(Blit, OverlappingMovesOnOneSurface) {
    const int shifts[] = {-2, 0, 3};
    for (DWORD rop : std::initializer_list<DWORD>{SRCCOPY, SRCINVERT})
        for (int dx : shifts)
            for (int dy : shifts) {
                Canvas c(12, 10);
                c.Gradient();
                std::vector<uint32_t> before = c.Pixels();
                HRGN clip = CreateRectRgn(0, 0, 5, 10), right = CreateRectRgn(6, 2, 12, 9);
                CombineRgn(clip, clip, right, RGN_OR);
                SelectClipRgn(c.dc(), clip);
                DeleteObject(clip);
                DeleteObject(right);
                EXPECT_TRUE(BitBlt(c.dc(), 2 + dx, 2 + dy, 8, 6, c.dc(), 2, 2, rop));
                for (int y = 0; y < 10; ++y)
                    for (int x = 0; x < 12; ++x) {
                        uint32_t old = before[y * 12 + x];
                        bool clipped = !((x < 5) || (x >= 6 && y >= 2 && y < 9));
                        int sx = x - dx, sy = y - dy;
                        bool target = x >= 2 + dx && x < 10 + dx && y >= 2 + dy && y < 8 + dy;
                        uint32_t expect = old;
                        if (target && !clipped) {
                            uint32_t s = before[sy * 12 + sx];
                            expect = rop == SRCCOPY ? s : s ^ old;
                        }
                        ASSERT_EQ(c.at(x, y), expect) << "rop " << std::hex << rop << std::dec << " shift " << dx
                                                      << "," << dy << " at " << x << "," << y;
                    }
            }
}

// Colour -> mono: 1 exactly where the raw source pixel equals the SOURCE DC's background
// colour; the destination's colours play no part, and a pixel with a top byte never matches.
TEST_F(Blit, ColourToMonoMatchesTheSourceBackground) {
    Canvas src(5, 1), mono(7, 1, true, 0);
    const uint32_t key = 0x00FF00FF;  // RGB(255, 0, 255)
    const uint32_t px[5] = {key, 0x00FF00FE, 0xFFFF00FF, key, 0x00000000};
    for (int x = 0; x < 5; ++x) src.at(x, 0) = px[x];
    SetBkColor(src.dc(), RGB(255, 0, 255));
    SetTextColor(src.dc(), RGB(0, 255, 0));
    SetBkColor(mono.dc(), RGB(0, 0, 0));
    SetTextColor(mono.dc(), RGB(255, 255, 255));
    EXPECT_TRUE(BitBlt(mono.dc(), 1, 0, 5, 1, src.dc(), 0, 0, SRCCOPY));
    const uint32_t expected[7] = {0, 1, 0, 0, 1, 0, 0};
    for (int x = 0; x < 7; ++x) EXPECT_EQ(mono.at(x, 0), expected[x]) << x;
}

// Mono -> colour: 0 bits take the DESTINATION DC's text colour, 1 bits its background
// colour, for copies and for the mask ROPs of a transparent blit.
TEST_F(Blit, MonoToColourUsesTheDestinationColours) {
    Canvas mono(4, 1, true, 0), dst(6, 1);
    mono.at(1, 0) = mono.at(2, 0) = 1;
    SetTextColor(mono.dc(), RGB(1, 2, 3));
    SetBkColor(mono.dc(), RGB(4, 5, 6));
    SetTextColor(dst.dc(), RGB(0x11, 0x22, 0x33));
    SetBkColor(dst.dc(), RGB(0xCC, 0xBB, 0xAA));
    EXPECT_TRUE(BitBlt(dst.dc(), 1, 0, 4, 1, mono.dc(), 0, 0, SRCCOPY));
    const uint32_t expected[6] = {kSentinel, 0x00112233, 0x00CCBBAA, 0x00CCBBAA, 0x00112233, kSentinel};
    for (int x = 0; x < 6; ++x) EXPECT_EQ(dst.at(x, 0), expected[x]) << x;

    SetTextColor(dst.dc(), RGB(0, 0, 0));
    SetBkColor(dst.dc(), RGB(255, 255, 255));
    dst.Fill(0x00406080);
    EXPECT_TRUE(BitBlt(dst.dc(), 0, 0, 4, 1, mono.dc(), 0, 0, SRCAND));
    EXPECT_EQ(dst.at(0, 0), 0u);
    EXPECT_EQ(dst.at(1, 0), 0x00406080u);
    EXPECT_TRUE(BitBlt(dst.dc(), 0, 0, 4, 1, mono.dc(), 0, 0, SRCPAINT));
    EXPECT_EQ(dst.at(0, 0), 0u);
    EXPECT_EQ(dst.at(1, 0), 0x00FFFFFFu);
}

TEST_F(Blit, MonoToMonoCopiesBitsWhateverTheColours) {
    Canvas a(9, 2, true, 0), b(9, 2, true, 1);
    a.Gradient();
    SetTextColor(b.dc(), RGB(255, 255, 255));
    SetBkColor(b.dc(), RGB(0, 0, 0));
    SetBkColor(a.dc(), RGB(255, 0, 0));
    EXPECT_TRUE(BitBlt(b.dc(), 0, 0, 9, 2, a.dc(), 0, 0, SRCCOPY));
    EXPECT_EQ(a.Pixels(), b.Pixels());
    EXPECT_TRUE(BitBlt(b.dc(), 0, 0, 9, 2, a.dc(), 0, 0, NOTSRCCOPY));
    for (int x = 0; x < 9; ++x) EXPECT_EQ(b.at(x, 1), a.at(x, 1) ^ 1) << "mono results keep bit 0 only";
}

// The transparent blit the controls build from these rules: key-coloured sprite pixels
// keep the backdrop, all others replace it.
TEST_F(Blit, MaskSequenceMakesKeyPixelsTransparent) {
    const uint32_t key = 0x00FF00FF;
    Canvas sprite(4, 3), dst(6, 5, false, 0x00203040), mask(4, 3, true);
    sprite.Gradient();
    sprite.at(0, 0) = sprite.at(3, 1) = sprite.at(2, 2) = key;
    SetBkColor(sprite.dc(), RGB(255, 0, 255));
    ASSERT_TRUE(BitBlt(mask.dc(), 0, 0, 4, 3, sprite.dc(), 0, 0, SRCCOPY));
    SetBkColor(sprite.dc(), RGB(0, 0, 0));
    SetTextColor(sprite.dc(), RGB(255, 255, 255));
    std::vector<uint32_t> art = sprite.Pixels();
    ASSERT_TRUE(BitBlt(sprite.dc(), 0, 0, 4, 3, mask.dc(), 0, 0, SRCAND));
    ASSERT_TRUE(BitBlt(dst.dc(), 1, 1, 4, 3, mask.dc(), 0, 0, SRCAND));
    ASSERT_TRUE(BitBlt(dst.dc(), 1, 1, 4, 3, sprite.dc(), 0, 0, SRCPAINT));
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x) {
            uint32_t a = art[y * 4 + x];
            EXPECT_EQ(dst.at(1 + x, 1 + y), a == key ? 0x00203040u : a) << x << "," << y;
        }
    EXPECT_EQ(dst.FenceIntact(RECT{1, 1, 5, 4}, 0x00203040), "");
}

// KeyBlt is that sequence in one pass: the same pixels, top bytes included, under a clip;
// and it declines (drawing nothing) where it cannot stand in for it.
TEST_F(Blit, KeyBltMatchesTheMaskSequence) {
    const COLORREF key = RGB(255, 0, 255);
    struct Case {
        int x, y, w, h, sx, sy;
        bool clip;
    } cases[] = {{1, 1, 4, 3, 0, 0, false}, {0, 0, 6, 5, 1, 0, true}, {2, 1, 3, 3, 2, 1, true}, {-1, 2, 5, 4, 3, 2, false}};
    for (const Case& c : cases) {
        Canvas sprite(8, 6), viaMask(7, 6), direct(7, 6), mask(c.w, c.h, true), scratch(c.w, c.h);
        sprite.Gradient();
        sprite.at(c.sx, c.sy) = sprite.at(c.sx + 1, c.sy + 1) = 0x00FF00FF;
        sprite.at(c.sx + 2, c.sy) = 0xFFFF00FF;  // the key with a top byte is no key
        viaMask.Gradient();
        direct.Gradient();
        viaMask.at(2, 2) = direct.at(2, 2) = 0xFF102030;  // a kept pixel loses its top byte
        for (Canvas* d : {&viaMask, &direct})
            if (c.clip) IntersectClipRect(d->dc(), 1, 0, 5, 4);
        ASSERT_TRUE(BitBlt(scratch.dc(), 0, 0, c.w, c.h, sprite.dc(), c.sx, c.sy, SRCCOPY));
        SetBkColor(scratch.dc(), key);
        ASSERT_TRUE(BitBlt(mask.dc(), 0, 0, c.w, c.h, scratch.dc(), 0, 0, SRCCOPY));
        SetBkColor(scratch.dc(), RGB(0, 0, 0));
        SetTextColor(scratch.dc(), RGB(255, 255, 255));
        ASSERT_TRUE(BitBlt(scratch.dc(), 0, 0, c.w, c.h, mask.dc(), 0, 0, SRCAND));
        SetBkColor(viaMask.dc(), RGB(255, 255, 255));
        SetTextColor(viaMask.dc(), RGB(0, 0, 0));
        ASSERT_TRUE(BitBlt(viaMask.dc(), c.x, c.y, c.w, c.h, mask.dc(), 0, 0, SRCAND));
        ASSERT_TRUE(BitBlt(viaMask.dc(), c.x, c.y, c.w, c.h, scratch.dc(), 0, 0, SRCPAINT));
        EXPECT_TRUE(zel::KeyBlt(direct.dc(), c.x, c.y, c.w, c.h, sprite.dc(), c.sx, c.sy, key));
        EXPECT_EQ(direct.Pixels(), viaMask.Pixels()) << c.x << "," << c.y << " " << c.w << "x" << c.h;
    }
    Canvas sprite(4, 4), dst(4, 4), mono(4, 4, true);
    EXPECT_FALSE(zel::KeyBlt(dst.dc(), 0, 0, 4, 4, sprite.dc(), 1, 0, key)) << "source past its bitmap";
    EXPECT_FALSE(zel::KeyBlt(dst.dc(), 0, 0, 4, 4, mono.dc(), 0, 0, key)) << "monochrome source";
    EXPECT_FALSE(zel::KeyBlt(mono.dc(), 0, 0, 4, 4, sprite.dc(), 0, 0, key)) << "monochrome destination";
    EXPECT_FALSE(zel::KeyBlt(dst.dc(), 0, 0, 4, 4, dst.dc(), 0, 0, key)) << "one surface";
    EXPECT_FALSE(zel::KeyBlt(nullptr, 0, 0, 4, 4, sprite.dc(), 0, 0, key));
    EXPECT_EQ(dst.FenceIntact(RECT{0, 0, 0, 0}), "");
}

// A solid brush that is neither black nor white is dithered on a monochrome surface with
// an 8x8 ordered pattern anchored at the brush origin; pens keep one pixel value.
TEST_F(Blit, SolidBrushesDitherOnMonochrome) {
    auto whites = [](COLORREF colour, POINT org) {
        Canvas m(16, 16, true, 0);
        SetBrushOrgEx(m.dc(), org.x, org.y, nullptr);
        HBRUSH br = CreateSolidBrush(colour);
        RECT all{0, 0, 16, 16};
        FillRect(m.dc(), &all, br);
        DeleteObject(br);
        std::string bits;
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 16; ++x) bits += m.at(x, y) ? '1' : '0';
        return bits;
    };
    const std::string grey = whites(RGB(128, 128, 128), {0, 0});
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x) ASSERT_EQ(grey[y * 16 + x], (x + y) % 2 ? '1' : '0') << x << "," << y;
    const std::string shifted = whites(RGB(128, 128, 128), {1, 0});
    EXPECT_EQ(shifted[0], '1') << "the pattern moves with the brush origin";

    EXPECT_EQ(whites(RGB(255, 255, 255), {0, 0}), std::string(256, '1'));
    EXPECT_EQ(whites(RGB(0, 0, 0), {0, 0}), std::string(256, '0'));
    // More light, more white cells; the 8x8 tile repeats.
    int last = -1;
    for (int level : {16, 64, 100, 160, 230}) {
        std::string bits = whites(RGB(level, level, level), {3, 5});
        int count = static_cast<int>(std::count(bits.begin(), bits.end(), '1'));
        EXPECT_GT(count, last) << "level " << level;
        last = count;
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 8; ++x) ASSERT_EQ(bits[y * 16 + x], bits[(y + 8) * 16 + x + 8]);
    }
}

// Pattern brushes through the ROP kernels: mono patterns take the target DC's text (0) and
// background (1) colours, tiled from the brush origin.
TEST_F(Blit, MonoPatternBrushWithAPatternRop) {
    Canvas pat(2, 2, true, 0), dst(5, 3, false, 0x000F0F0F);
    pat.at(1, 0) = pat.at(0, 1) = 1;
    HBITMAP bits = reinterpret_cast<HBITMAP>(GetCurrentObject(pat.dc(), OBJ_BITMAP));
    HBRUSH br = CreatePatternBrush(bits);
    HGDIOBJ old = SelectObject(dst.dc(), br);
    SetTextColor(dst.dc(), RGB(0xF0, 0, 0));
    SetBkColor(dst.dc(), RGB(0, 0, 0xF0));
    SetBrushOrgEx(dst.dc(), 1, 0, nullptr);
    EXPECT_TRUE(PatBlt(dst.dc(), 0, 0, 4, 2, PATINVERT));
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 4; ++x) {
            bool one = ((x + 1) + y) % 2 == 1;  // pattern (x - 1, y) mod 2
            EXPECT_EQ(dst.at(x, y), (one ? 0x000000F0u : 0x00F00000u) ^ 0x000F0F0Fu) << x << "," << y;
        }
    EXPECT_EQ(dst.FenceIntact(RECT{0, 0, 4, 2}, 0x000F0F0F), "");
    SelectObject(dst.dc(), old);
    DeleteObject(br);
}

}  // namespace
