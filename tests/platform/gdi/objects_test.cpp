// Handles, object lifetime, selection and DC state.
#include <windows.h>

#include "support/leak_check.h"

namespace {

using Objects = zel::test::LeakChecked;

TEST_F(Objects, StaleNullAndWrongTypedHandlesFail) {
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    ASSERT_NE(brush, nullptr);
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_FALSE(DeleteObject(brush)) << "a stale handle must not resolve";
    LOGBRUSH lb;
    EXPECT_EQ(GetObjectW(brush, sizeof lb, &lb), 0);
    EXPECT_FALSE(DeleteObject(nullptr));

    HPEN pen = CreatePen(PS_SOLID, 1, 0);
    HDC dc = CreateCompatibleDC(nullptr);
    // A pen handle is not a DC, nor a region.
    EXPECT_EQ(SetBkColor(reinterpret_cast<HDC>(pen), 0), CLR_INVALID);
    EXPECT_EQ(GetRgnBox(reinterpret_cast<HRGN>(pen), nullptr), ERROR);
    // Forged values never crash.
    EXPECT_EQ(SelectObject(dc, reinterpret_cast<HGDIOBJ>(0x1234)), nullptr);
    EXPECT_EQ(GetPixel(reinterpret_cast<HDC>(~uintptr_t{0}), 0, 0), CLR_INVALID);
    DeleteObject(pen);
    DeleteDC(dc);
}

TEST_F(Objects, DeletingASelectedObjectIsDeferredUntilDeselected) {
    HDC dc = CreateCompatibleDC(nullptr);
    HBRUSH brush = CreateSolidBrush(RGB(10, 20, 30));
    HGDIOBJ old = SelectObject(dc, brush);
    int live = zel::LiveGdiObjects().brushes;
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_EQ(zel::LiveGdiObjects().brushes, live) << "still selected, still alive";
    LOGBRUSH lb{};
    EXPECT_EQ(GetObjectW(brush, sizeof lb, &lb), static_cast<int>(sizeof lb));
    EXPECT_EQ(lb.lbColor, RGB(10, 20, 30));
    EXPECT_EQ(SelectObject(dc, old), brush);
    EXPECT_EQ(zel::LiveGdiObjects().brushes, live - 1) << "deselection completes the deletion";
    DeleteDC(dc);
}

TEST_F(Objects, StockObjectsSurviveDeletion) {
    HGDIOBJ white = GetStockObject(WHITE_BRUSH);
    EXPECT_TRUE(DeleteObject(white));
    EXPECT_TRUE(DeleteObject(white));
    EXPECT_EQ(GetStockObject(WHITE_BRUSH), white);
    EXPECT_EQ(GetObjectType(white), static_cast<DWORD>(OBJ_BRUSH));
    EXPECT_EQ(CreatePen(PS_NULL, 3, RGB(1, 1, 1)), GetStockObject(NULL_PEN));
}

TEST_F(Objects, FreshMemoryDcHasMonochromeDefaultsAndColours) {
    HDC dc = CreateCompatibleDC(nullptr);
    BITMAP bm{};
    HGDIOBJ current = GetCurrentObject(dc, OBJ_BITMAP);
    ASSERT_EQ(GetObjectW(current, sizeof bm, &bm), static_cast<int>(sizeof bm));
    EXPECT_EQ(bm.bmWidth, 1);
    EXPECT_EQ(bm.bmBitsPixel, 1);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(GetCurrentObject(dc, OBJ_PEN), GetStockObject(BLACK_PEN));
    EXPECT_EQ(GetTextColor(dc), RGB(0, 0, 0));
    EXPECT_EQ(GetBkColor(dc), RGB(255, 255, 255));
    EXPECT_EQ(GetBkMode(dc), OPAQUE);
    EXPECT_EQ(GetStretchBltMode(dc), BLACKONWHITE);

    // Compatible with a fresh memory DC means monochrome.
    HBITMAP mono = CreateCompatibleBitmap(dc, 8, 8);
    ASSERT_EQ(GetObjectW(mono, sizeof bm, &bm), static_cast<int>(sizeof bm));
    EXPECT_EQ(bm.bmBitsPixel, 1);
    EXPECT_EQ(bm.bmWidthBytes, 2);
    HDC screen = GetDC(nullptr);
    HBITMAP colour = CreateCompatibleBitmap(screen, 5, 3);
    ReleaseDC(nullptr, screen);
    ASSERT_EQ(GetObjectW(colour, sizeof bm, &bm), static_cast<int>(sizeof bm));
    EXPECT_EQ(bm.bmBitsPixel, 32);
    EXPECT_EQ(bm.bmWidthBytes, 20);
    DeleteObject(mono);
    DeleteObject(colour);
    DeleteDC(dc);
}

TEST_F(Objects, ABitmapIsSelectedIntoOneDcAtATime) {
    HDC a = CreateCompatibleDC(nullptr);
    HDC b = CreateCompatibleDC(nullptr);
    HBITMAP bmp = CreateBitmap(4, 4, 1, 1, nullptr);
    HGDIOBJ oldA = SelectObject(a, bmp);
    EXPECT_NE(oldA, nullptr);
    EXPECT_EQ(SelectObject(b, bmp), nullptr);
    SelectObject(a, oldA);
    HGDIOBJ oldB = SelectObject(b, bmp);
    EXPECT_NE(oldB, nullptr);
    SelectObject(b, oldB);
    DeleteObject(bmp);
    DeleteDC(a);
    DeleteDC(b);
}

TEST_F(Objects, SaveAndRestoreDcRestoreSelectionsAndAttributes) {
    HDC dc = CreateCompatibleDC(nullptr);
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    int level = SaveDC(dc);
    EXPECT_EQ(level, 1);
    SelectObject(dc, red);
    SetTextColor(dc, RGB(1, 2, 3));
    IntersectClipRect(dc, 0, 0, 0, 0);
    EXPECT_TRUE(DeleteObject(red));  // deferred: still selected
    EXPECT_TRUE(RestoreDC(dc, -1));
    EXPECT_EQ(GetCurrentObject(dc, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(GetTextColor(dc), RGB(0, 0, 0));
    RECT box;
    EXPECT_EQ(GetClipBox(dc, &box), SIMPLEREGION);
    EXPECT_FALSE(RestoreDC(dc, 1)) << "nothing left to restore";
    DeleteDC(dc);
}

TEST_F(Objects, GetObjectSizesShortBuffersAndNullBuffers) {
    HBITMAP bmp = CreateBitmap(3, 3, 1, 1, nullptr);
    HPEN pen = CreatePen(PS_DASH, 1, RGB(1, 2, 3));
    HBRUSH brush = CreateSolidBrush(RGB(4, 5, 6));
    EXPECT_EQ(GetObjectW(bmp, 0, nullptr), static_cast<int>(sizeof(BITMAP)));
    EXPECT_EQ(GetObjectW(pen, 0, nullptr), static_cast<int>(sizeof(LOGPEN)));
    EXPECT_EQ(GetObjectW(brush, 0, nullptr), static_cast<int>(sizeof(LOGBRUSH)));
    EXPECT_EQ(GetObjectW(GetStockObject(SYSTEM_FONT), 0, nullptr), static_cast<int>(sizeof(LOGFONTW)));

    // Bitmaps and pens want the whole structure; brushes copy what fits.
    BITMAP bm{};
    EXPECT_EQ(GetObjectW(bmp, sizeof bm - 1, &bm), 0);
    LOGPEN lp{};
    EXPECT_EQ(GetObjectW(pen, sizeof lp - 1, &lp), 0);
    EXPECT_EQ(GetObjectW(pen, sizeof lp + 8, &lp), static_cast<int>(sizeof lp));
    EXPECT_EQ(lp.lopnStyle, static_cast<UINT>(PS_DASH));
    EXPECT_EQ(lp.lopnColor, RGB(1, 2, 3));
    LOGBRUSH lb{99, 99, 99};
    EXPECT_EQ(GetObjectW(brush, 4, &lb), 4);
    EXPECT_EQ(lb.lbStyle, static_cast<UINT>(BS_SOLID));
    EXPECT_EQ(lb.lbColor, 99u) << "only the first four bytes were written";

    HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_EQ(GetObjectW(dc, sizeof bm, &bm), 0) << "a DC has no object description";
    DeleteDC(dc);
    DeleteObject(bmp);
    DeleteObject(pen);
    DeleteObject(brush);
}

TEST_F(Objects, StockPensAndBrushesDescribeThemselves) {
    LOGPEN lp{};
    GetObjectW(GetStockObject(NULL_PEN), sizeof lp, &lp);
    EXPECT_EQ(lp.lopnStyle, static_cast<UINT>(PS_NULL));
    EXPECT_EQ(lp.lopnWidth.x, 1);
    GetObjectW(GetStockObject(WHITE_PEN), sizeof lp, &lp);
    EXPECT_EQ(lp.lopnWidth.x, 0);
    EXPECT_EQ(lp.lopnColor, RGB(255, 255, 255));
    LOGBRUSH lb{};
    GetObjectW(GetStockObject(NULL_BRUSH), sizeof lb, &lb);
    EXPECT_EQ(lb.lbStyle, static_cast<UINT>(BS_NULL));
    GetObjectW(GetStockObject(GRAY_BRUSH), sizeof lb, &lb);
    EXPECT_EQ(lb.lbColor, RGB(128, 128, 128));
    EXPECT_EQ(GetStockObject(-1), nullptr);
    EXPECT_EQ(GetStockObject(100), nullptr);
}

TEST_F(Objects, BitmapSizeEdgeCases) {
    HDC screen = GetDC(nullptr);
    HDC mem = CreateCompatibleDC(screen);
    HGDIOBJ stock = GetCurrentObject(mem, OBJ_BITMAP);
    // Zero sizes give the stock 1x1 monochrome bitmap, negative ones their magnitude.
    EXPECT_EQ(CreateCompatibleBitmap(screen, 0, 5), stock);
    EXPECT_EQ(CreateBitmap(4, 0, 1, 32, nullptr), stock);
    EXPECT_EQ(CreateBitmap(0, 0, 0, 0, nullptr), stock);
    HBITMAP neg = CreateCompatibleBitmap(screen, -3, 4);
    BITMAP bm{};
    ASSERT_EQ(GetObjectW(neg, sizeof bm, &bm), static_cast<int>(sizeof bm));
    EXPECT_EQ(bm.bmWidth, 3);
    EXPECT_EQ(bm.bmHeight, 4);
    EXPECT_EQ(bm.bmWidthBytes, 12);
    EXPECT_EQ(CreateBitmap(2, 2, 2, 1, nullptr), nullptr) << "one plane only";
    EXPECT_EQ(CreateBitmap(2, 2, 1, 33, nullptr), nullptr);
    EXPECT_EQ(CreateBitmap(1 << 20, 1 << 20, 1, 32, nullptr), nullptr) << "refused, not allocated";
    EXPECT_EQ(CreateCompatibleBitmap(nullptr, 4, 4), nullptr);
    EXPECT_TRUE(DeleteObject(stock)) << "deleting the stock bitmap is a no-op";
    DeleteObject(neg);
    DeleteDC(mem);
    ReleaseDC(nullptr, screen);
}

TEST_F(Objects, BitmapBitsRoundTrip) {
    // Monochrome rows are WORD aligned, most significant bit first.
    const uint8_t mono[4] = {0xB1, 0x80, 0x7F, 0xC0};
    HBITMAP m = CreateBitmap(10, 2, 1, 1, nullptr);
    EXPECT_EQ(SetBitmapBits(m, sizeof mono, mono), 4);
    uint8_t back[4] = {};
    EXPECT_EQ(GetBitmapBits(m, 0, nullptr), 4);
    EXPECT_EQ(GetBitmapBits(m, sizeof back, back), 4);
    EXPECT_EQ(back[0], 0xB1);
    EXPECT_EQ(back[1], 0x80) << "bits past the width read as 0";
    EXPECT_EQ(back[2], 0x7F);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, m);
    EXPECT_EQ(GetPixel(dc, 0, 0), RGB(255, 255, 255));
    EXPECT_EQ(GetPixel(dc, 1, 0), RGB(0, 0, 0));
    EXPECT_EQ(GetPixel(dc, 8, 0), RGB(255, 255, 255));
    EXPECT_EQ(GetPixel(dc, 0, 1), RGB(0, 0, 0));
    SelectObject(dc, old);
    EXPECT_EQ(SetBitmapBits(m, 1, mono), 1) << "a short buffer sets what it holds";
    EXPECT_EQ(SetBitmapBits(m, 4, nullptr), 0);
    EXPECT_EQ(SetBitmapBits(static_cast<HBITMAP>(GetCurrentObject(dc, OBJ_BITMAP)), 4, mono), 0)
        << "the stock bitmap is read-only";
    DeleteDC(dc);
    DeleteObject(m);
}

TEST_F(Objects, PixelsOutsideTheSurfaceOrTheClip) {
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, 4, 3);
    ReleaseDC(nullptr, screen);
    HGDIOBJ old = SelectObject(dc, bmp);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x) SetPixel(dc, x, y, RGB(10, 20, 30));
    EXPECT_EQ(GetPixel(dc, -1, 0), CLR_INVALID);
    EXPECT_EQ(GetPixel(dc, 4, 0), CLR_INVALID);
    EXPECT_EQ(GetPixel(dc, 0, 3), CLR_INVALID);
    EXPECT_EQ(SetPixel(dc, 4, 0, RGB(1, 2, 3)), RGB(1, 2, 3)) << "the colour is reported even when clipped";
    // A clip region hides pixels from both calls.
    IntersectClipRect(dc, 1, 1, 3, 2);
    EXPECT_EQ(GetPixel(dc, 0, 0), CLR_INVALID);
    EXPECT_EQ(GetPixel(dc, 1, 1), RGB(10, 20, 30));
    SetPixel(dc, 0, 0, RGB(1, 2, 3));
    SelectClipRgn(dc, nullptr);
    EXPECT_EQ(GetPixel(dc, 0, 0), RGB(10, 20, 30));
    // The top byte of a COLORREF: 1 picks a default-palette entry (13 is red).
    EXPECT_EQ(SetPixel(dc, 2, 2, 0x0100000D), RGB(255, 0, 0));
    EXPECT_EQ(SetPixel(dc, 2, 2, 0x01ABCDEF), RGB(0, 0, 0)) << "out of range: the first entry";
    EXPECT_EQ(SetPixel(dc, 2, 2, 0x02123456), RGB(0x56, 0x34, 0x12));
    SelectObject(dc, old);
    DeleteObject(bmp);
    DeleteDC(dc);
}

// SetPixel on monochrome takes the nearer of black and white (pens do not; see lines).
TEST_F(Objects, SetPixelOnMonochromeIsNearest) {
    HDC dc = CreateCompatibleDC(nullptr);
    HBITMAP m = CreateBitmap(1, 1, 1, 1, nullptr);
    HGDIOBJ old = SelectObject(dc, m);
    const struct {
        COLORREF in, out;
    } cases[] = {{RGB(128, 128, 128), RGB(255, 255, 255)}, {RGB(127, 127, 127), RGB(0, 0, 0)},
                 {RGB(0, 255, 0), RGB(0, 0, 0)},         {RGB(255, 0, 255), RGB(255, 255, 255)}};
    for (const auto& t : cases) {
        EXPECT_EQ(SetPixel(dc, 0, 0, t.in), t.out) << std::hex << t.in;
        EXPECT_EQ(GetPixel(dc, 0, 0), t.out) << std::hex << t.in;
    }
    SelectObject(dc, old);
    DeleteObject(m);
    DeleteDC(dc);
}

TEST_F(Objects, DeletedSelectedPenAndBrushKeepDrawingUntilDeselected) {
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, 4, 3);
    ReleaseDC(nullptr, screen);
    HGDIOBJ oldBmp = SelectObject(dc, bmp);
    HPEN pen = CreatePen(PS_SOLID, 1, RGB(255, 0, 0));
    HBRUSH brush = CreateSolidBrush(RGB(0, 0, 255));
    HGDIOBJ oldPen = SelectObject(dc, pen), oldBrush = SelectObject(dc, brush);
    EXPECT_TRUE(DeleteObject(pen));
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_TRUE(Rectangle(dc, 0, 0, 4, 3));
    EXPECT_EQ(GetPixel(dc, 0, 0), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(dc, 1, 1), RGB(0, 0, 255));
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
    EXPECT_EQ(GetObjectW(pen, 0, nullptr), 0);
    EXPECT_EQ(GetObjectW(brush, 0, nullptr), 0);
    SelectObject(dc, oldBmp);
    DeleteObject(bmp);
    DeleteDC(dc);
}

}  // namespace
