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

}  // namespace
