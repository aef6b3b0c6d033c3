// Skin strings and the transparent blit.
#include <afxwin.h>

#include "SkinList.h"
#include "TransparentBlit.h"
#include "support/leak_check.h"

namespace {

std::vector<std::wstring> Split(const wchar_t* skin) {
    CStringArray pieces;
    zelctl::SplitSkinList(CString(skin), pieces);
    std::vector<std::wstring> out;
    for (INT_PTR i = 0; i < pieces.GetSize(); ++i) out.emplace_back(static_cast<LPCWSTR>(pieces[i]));
    return out;
}

TEST(SkinList, PiecesBeforeEachBarAreTrimmedAndTheTailIsDropped) {
    using V = std::vector<std::wstring>;
    EXPECT_EQ(Split(L" a.bmp |\tb.bmp|"), (V{L"a.bmp", L"b.bmp"}));
    EXPECT_EQ(Split(L"a.bmp|b.bmp"), (V{L"a.bmp"})) << "no closing bar: the last path is not taken";
    EXPECT_EQ(Split(L"a.bmp"), V{});
    EXPECT_EQ(Split(L""), V{});
    EXPECT_EQ(Split(L"||x|"), (V{L"", L"", L"x"})) << "empty pieces keep their places";
}

class TransparentBlitTest : public zel::test::LeakChecked {};

TEST_F(TransparentBlitTest, KeyPixelsKeepTheDestination) {
    HDC screen = GetDC(nullptr);
    HDC dst = CreateCompatibleDC(screen);
    HDC src = CreateCompatibleDC(screen);
    HBITMAP dstBmp = CreateCompatibleBitmap(screen, 6, 3);
    HBITMAP srcBmp = CreateCompatibleBitmap(screen, 2, 1);
    ReleaseDC(nullptr, screen);
    HGDIOBJ od = SelectObject(dst, dstBmp), os = SelectObject(src, srcBmp);
    const COLORREF bg = RGB(0xAA, 0xAA, 0xAA), key = RGB(255, 0, 255), ink = RGB(10, 200, 30);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 6; ++x) SetPixel(dst, x, y, bg);
    SetPixel(src, 0, 0, key);
    SetPixel(src, 1, 0, ink);

    zelctl::TransparentBlit(dst, 1, 1, 4, 1, src, 0, 0, 2, 1, key);  // stretched 2x
    const COLORREF row1[6] = {bg, bg, bg, ink, ink, bg};
    for (int x = 0; x < 6; ++x) {
        EXPECT_EQ(GetPixel(dst, x, 0), bg) << x;
        EXPECT_EQ(GetPixel(dst, x, 1), row1[x]) << x;
        EXPECT_EQ(GetPixel(dst, x, 2), bg) << x;
    }
    EXPECT_EQ(GetTextColor(dst), RGB(0, 0, 0));

    SelectObject(dst, od);
    SelectObject(src, os);
    DeleteObject(dstBmp);
    DeleteObject(srcBmp);
    DeleteDC(dst);
    DeleteDC(src);
}

}  // namespace
