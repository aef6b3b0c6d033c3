#include "speciallists_fixture.h"

namespace speclisttest {

void SpecialListTest::TearDown() {
    arrays_.clear();
    ListFixture::TearDown();
}

void SpecialListTest::WritePieces() {
    for (const char* name : {"bk0", "bk1", "bk2", "bk3"}) skins.Solid(name, 8, 8, kFrame);
    skins.Solid("l", 6, kRowHeight, kLeft);
    skins.Solid("m", 10, kRowHeight, kMiddle);
    skins.Solid("r", 6, kRowHeight, kRight);
    skins.Solid("cl", 6, kRowHeight, kCurLeft);
    skins.Solid("cm", 10, kRowHeight, kCurMiddle);
    skins.Solid("cr", 6, kRowHeight, kCurRight);
}

CArray<CString, CString>& SpecialListTest::Paths(std::initializer_list<std::string> names) {
    arrays_.push_back(std::make_unique<CArray<CString, CString>>());
    for (const std::string& n : names) arrays_.back()->Add(n.empty() ? CString() : CString(skins.Path(n).c_str()));
    return *arrays_.back();
}

bool SpecialListTest::InkInBand(HWND hwnd, COLORREF ink, int top, int h) {
    CRect client;
    ::GetClientRect(hwnd, &client);
    for (int y = std::max(0, top); y < std::min<int>(client.bottom, top + h); ++y)
        for (int x = 0; x < client.right; ++x) {
            POINT pt{x, y};
            ::ClientToScreen(hwnd, &pt);
            if (zel::test::ScreenPixel(pt.x, pt.y) == ink) return true;
        }
    return false;
}

}  // namespace speclisttest
