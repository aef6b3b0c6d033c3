// GDI object wrappers and CDC: ownership, permanent and temporary wrappers, selection,
// the solid-fill helpers.
#include <afxwin.h>
#include <gtest/gtest.h>

#include "mfc/handle_maps.h"
#include "support/leak_check.h"
#include "support/sentinel.h"

namespace {

using GdiWrappers = zel::test::LeakChecked;

using zel::test::kSentinel;

// A 32-bpp memory surface filled with the sentinel colour.
class Surface {
public:
    Surface(int w, int h) : w_(w), h_(h) {
        CClientDC screen(nullptr);
        dc.CreateCompatibleDC(&screen);
        bitmap.CreateCompatibleBitmap(&screen, w, h);
        old_ = dc.SelectObject(&bitmap);
        dc.FillSolidRect(0, 0, w, h, kSentinel);
    }
    ~Surface() { dc.SelectObject(old_); }

    // Row-major picture: '#' = colour c, '.' = sentinel, anything else = other.
    std::string Picture(COLORREF c) {
        std::string s;
        for (int y = 0; y < h_; ++y) {
            for (int x = 0; x < w_; ++x) {
                COLORREF p = dc.GetPixel(x, y);
                s += p == c ? '#' : (p == kSentinel ? '.' : '?');
            }
            s += '/';
        }
        return s;
    }

    CDC dc;
    CBitmap bitmap;

private:
    int w_, h_;
    CBitmap* old_ = nullptr;
};

TEST_F(GdiWrappers, WrappersOwnTheirHandles) {
    int before = zel::LiveGdiObjects().total();
    {
        CPen pen(PS_SOLID, 1, RGB(1, 2, 3));
        CBrush brush(RGB(4, 5, 6));
        CRgn rgn;
        CBitmap bmp;
        ASSERT_TRUE(rgn.CreateRectRgn(0, 0, 4, 4));
        ASSERT_TRUE(bmp.CreateBitmap(8, 8, 1, 32, nullptr));
        EXPECT_EQ(zel::LiveGdiObjects().total(), before + 4);
    }
    EXPECT_EQ(zel::LiveGdiObjects().total(), before) << "destructors delete what the wrappers hold";

    CBrush brush;
    EXPECT_TRUE(brush.CreateSolidBrush(RGB(9, 9, 9)));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(brush.CreateSolidBrush(RGB(8, 8, 8))) << "a second handle would leak the first";
    EXPECT_NE(testing::internal::GetCapturedStderr().find("already holds"), std::string::npos);
    EXPECT_TRUE(brush.DeleteObject());
    EXPECT_FALSE(brush.DeleteObject());
    EXPECT_TRUE(brush.CreateSolidBrush(RGB(8, 8, 8)));
}

TEST_F(GdiWrappers, AttachedHandlesArePermanentOthersTemporary) {
    HBRUSH raw = CreateSolidBrush(RGB(1, 1, 1));
    CBrush* temp = CBrush::FromHandle(raw);
    ASSERT_NE(temp, nullptr);
    EXPECT_EQ(temp, CBrush::FromHandle(raw)) << "one temporary per handle until cleanup";
    EXPECT_EQ(temp->m_hObject, raw);
    EXPECT_EQ(CGdiObject::FromHandle(raw), temp) << "a CBrush is a CGdiObject";
    EXPECT_EQ(CBrush::FromHandle(nullptr), nullptr);

    CBrush owner;
    ASSERT_TRUE(owner.Attach(raw));
    EXPECT_EQ(CBrush::FromHandle(raw), &owner);
    EXPECT_NE(CPen::FromHandle(reinterpret_cast<HPEN>(raw)), nullptr) << "asked as another type: a fresh temporary";

    CGdiObject::DeleteTempMap();
    EXPECT_EQ(zel::mfc::TemporaryWrapperCount(), 0u);
    EXPECT_NE(GetObjectType(raw), 0u) << "deleting temporaries never deletes their handles";
    EXPECT_EQ(owner.Detach(), raw);
    EXPECT_NE(CBrush::FromHandle(raw), &owner);
    CGdiObject::DeleteTempMap();
    DeleteObject(raw);
}

TEST_F(GdiWrappers, SelectObjectReturnsThePreviousObjectAsItsWrapperType) {
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
    CBrush brush(RGB(0, 255, 0));
    CPen* oldPen = dc.SelectObject(&pen);
    ASSERT_NE(oldPen, nullptr);
    EXPECT_EQ(oldPen->m_hObject, GetStockObject(BLACK_PEN));
    CBrush* oldBrush = dc.SelectObject(&brush);
    EXPECT_EQ(oldBrush->m_hObject, GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(dc.SelectObject(oldPen), &pen) << "the permanent wrapper comes back";
    EXPECT_EQ(dc.GetCurrentBrush(), &brush);
    dc.SelectObject(oldBrush);
    EXPECT_EQ(dc.SelectObject(static_cast<CBrush*>(nullptr)), nullptr);
    CGdiObject* stock = dc.SelectStockObject(NULL_BRUSH);
    EXPECT_EQ(stock->m_hObject, GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(CDC::FromHandle(dc.m_hDC), &dc);
    CGdiObject::DeleteTempMap();
}

TEST_F(GdiWrappers, FillSolidRectLeavesTheBackgroundColourSet) {
    Surface s(6, 4);
    s.dc.SetBkColor(RGB(1, 1, 1));
    s.dc.FillSolidRect(CRect(1, 1, 4, 3), RGB(0, 0, 255));
    EXPECT_EQ(s.Picture(RGB(0, 0, 255)), "....../.###../.###../....../");
    EXPECT_EQ(s.dc.GetBkColor(), RGB(0, 0, 255));
}

TEST_F(GdiWrappers, Draw3dRectGivesBothFarCornersToTheBottomRightColour) {
    Surface s(7, 6);
    const COLORREF light = RGB(255, 255, 255), dark = RGB(0, 0, 0);
    s.dc.Draw3dRect(CRect(1, 1, 6, 5), light, dark);
    EXPECT_EQ(s.Picture(light),
              "......./"
              ".####?./"
              ".#...?./"
              ".#...?./"
              ".?????./"
              "......./");
    EXPECT_EQ(s.Picture(dark).substr(8 * 4, 8), ".#####./");
    EXPECT_EQ(s.dc.GetBkColor(), dark);
}

// DT_MODIFYSTRING would write the shortened text back; a CString is passed as const and
// must stay as it was, while the measured result is the same as with the raw call.
TEST_F(GdiWrappers, DrawTextLeavesAConstCStringAlone) {
    Surface s(60, 20);
    CFont font;
    ASSERT_TRUE(font.CreateFont(-12, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma"));
    CFont* old = s.dc.SelectObject(&font);
    const CString text(L"a rather long caption that cannot fit");
    CRect rc(0, 0, 40, 20), raw(rc);
    const UINT format = DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING | DT_CALCRECT;
    int height = s.dc.DrawText(text, &rc, format);
    std::wstring copy(text.GetString());
    copy.resize(copy.size() + 8);
    EXPECT_EQ(height, DrawTextW(s.dc.m_hDC, copy.data(), text.GetLength(), &raw, format & ~DT_MODIFYSTRING));
    EXPECT_EQ(rc, raw);
    EXPECT_STREQ(text, L"a rather long caption that cannot fit");
    EXPECT_EQ(s.dc.GetTextExtent(text), s.dc.GetTextExtent(text.GetString(), text.GetLength()));
    EXPECT_GT(s.dc.GetTextExtent(text).cx, 40);
    s.dc.SelectObject(old);
}

// The region wrappers forward to the region functions (tested with them); what is their
// own is the failure of an empty wrapper.
TEST_F(GdiWrappers, EmptyRegionWrappersFailLikeNullHandles) {
    CRgn b, both;
    b.CreateRectRgn(5, 5, 15, 15);
    both.CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(both.CombineRgn(nullptr, &b, RGN_OR), ERROR);
    EXPECT_EQ(both.CopyRgn(&b), SIMPLEREGION);
    EXPECT_TRUE(both.PtInRegion(14, 14));
    EXPECT_FALSE(CRgn().PtInRegion(0, 0));
}

}  // namespace
