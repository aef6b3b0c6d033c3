// Hostile input for every class: windows of no size, absurd font heights and rectangles,
// stale and monochrome bitmaps, calls before Create and after DestroyWindow. Each must
// paint or refuse without a crash, a hang or a leaked handle (the fixture counts them).
#include <climits>
#include <functional>
#include <memory>

#include "CZELBkLable.h"
#include "CZELLable.h"
#include "CZELStatic.h"
#include "CZELTelLCD.h"
#include "label_fixture.h"

namespace {

class BadInput : public labeltest::LabelTest {};

const RECT kPlaces[] = {{10, 10, 10, 10}, {10, 10, 11, 11}, {300, 190, 400, 260}, {10, 10, 200, 60}};

TEST_F(BadInput, LabelsPaintAnywhereWithAnyFont) {
    skins.Solid("piece", 3, 3, RGB(1, 2, 3));
    const int heights[] = {0, -30, 1, INT_MAX, INT_MIN};
    for (const RECT& place : kPlaces)
        for (int height : heights) {
            SCOPED_TRACE(height);
            CZELLable label;
            CZELTelLCD lcd;
            CZELBkLable bk;
            ASSERT_TRUE(label.Create(nullptr, L"0123456789 0123456789", WS_CHILD | WS_VISIBLE, place, &parent, 1));
            ASSERT_TRUE(lcd.Create(nullptr, L"0123456789 0123456789", WS_CHILD | WS_VISIBLE, place, &parent, 2));
            ASSERT_TRUE(bk.Create(nullptr, L"0123456789", WS_CHILD | WS_VISIBLE, place, &parent, 3));
            label.SetFont(height, 0, DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING, CRect(-5, -5, INT_MAX / 2, 3));
            label.LoadSkin(skins.Skin({"piece", "piece", "piece"}), L"");
            CArray<CString, CString> frame, indicators;
            for (int i = 0; i < 3; ++i) frame.Add(SkinPath("piece"));
            for (int i = 0; i < 2; ++i) indicators.Add(SkinPath("piece"));
            DWORD colors[3] = {};
            int fonts[3] = {height, height, height};
            lcd.InitCtrl(frame, indicators, colors, fonts, height);
            bk.SetFont(height, 0, DT_MODIFYSTRING | DT_PATH_ELLIPSIS, CRect());
            desktop.RunUntilIdle();
        }
}

TEST_F(BadInput, StaleMonochromeAndTinyPictures) {
    HBITMAP stale = nullptr;
    {
        labeltest::ArtBitmap gone(4, 4, [](int, int) { return RGB(0, 0, 0); });
        stale = gone.get();
    }
    BYTE bits[4] = {0x80, 0, 0, 0};
    HBITMAP mono = ::CreateBitmap(2, 2, 1, 1, bits);
    labeltest::ArtBitmap tiny(1, 1, [](int, int) { return RGB(9, 9, 9); });
    CZELStatic picture;
    CZELBkLable bk;
    ASSERT_TRUE(picture.Create(L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_BITMAP, CRect(0, 0, 8, 8), &parent, 4));
    ASSERT_TRUE(bk.Create(nullptr, L"x", WS_CHILD | WS_VISIBLE, CRect(0, 0, 8, 8), &parent, 5));
    for (HBITMAP b : {stale, mono, tiny.get(), static_cast<HBITMAP>(nullptr)}) {
        picture.SetBitmap(b);
        bk.SetBitmap(b);
        bk.Invalidate();
        desktop.RunUntilIdle();
    }
    picture.DestroyWindow();
    bk.DestroyWindow();
    EXPECT_EQ(picture.SetBitmap(mono), nullptr);
    ::DeleteObject(mono);
}

// Everything a host may call on objects that never had a window, or whose window is gone.
TEST_F(BadInput, CallsWithoutAWindow) {
    CZELLable label;
    CZELTelLCD lcd;
    CZELStatic picture;
    CString time = L"1";
    for (int pass = 0; pass < 2; ++pass) {
        label.LoadBitmap(L"", L"", L"");
        label.LoadSkin(L"|||", L"");
        label.SetFont(20, 0, 0, CRect());
        lcd.SetszTime(time);
        UINT ids[3] = {1, 2, 3};
        DWORD colors[2] = {};
        int heights[2] = {10, 10};
        lcd.InitCtrl(ids, colors, heights, 1, nullptr);
        EXPECT_EQ(picture.SetBitmap(nullptr), nullptr);
        if (pass == 0) {
            ASSERT_TRUE(label.Create(nullptr, L"", WS_CHILD, CRect(0, 0, 9, 9), &parent, 1));
            ASSERT_TRUE(lcd.Create(nullptr, L"", WS_CHILD, CRect(0, 0, 9, 9), &parent, 2));
            label.DestroyWindow();
            lcd.DestroyWindow();
        }
    }
}

}  // namespace
