#include "support/list_fixture.h"

#include <zel/debug.h>

namespace zel::test {

namespace {
constexpr wchar_t kItemClass[] = L"ZelListTestItem";
}

void ListFixture::SetUp() {
    ControlTest::SetUp();
    lines_.clear();
    zel::SetDebugSink([this](const std::wstring& line) { lines_.push_back(line); });
}

void ListFixture::TearDown() {
    zel::SetDebugSink(nullptr);
    ControlTest::TearDown();
}

HWND ListFixture::ItemWindow(const CRect& rc, int id) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = ::DefWindowProcW;
    wc.lpszClassName = kItemClass;
    ::RegisterClassW(&wc);  // again after each desktop reset; a repeat fails harmlessly
    return ::CreateWindowExW(0, kItemClass, L"", WS_CHILD | WS_VISIBLE, rc.left, rc.top, rc.Width(), rc.Height(),
                             parent.m_hWnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

CString ListFixture::BarSkin() {
    skins.Solid("up", kBarWidth, 8, kBarArrow);
    skins.Solid("up_down", kBarWidth, 8, kBarArrow);
    skins.Solid("track", kBarWidth, 24, kBarTrack);
    skins.Solid("thumb", 10, 8, kBarThumb);
    skins.Solid("thumb_down", 10, 8, kBarThumb);
    skins.Solid("down", kBarWidth, 8, kBarArrow);
    skins.Solid("down_down", kBarWidth, 8, kBarArrow);
    return skins.Skin({"up", "up_down", "track", "thumb", "thumb_down", "down", "down_down"});
}

std::string ListFixture::DebugLines() {
    std::string s;
    for (const std::wstring& w : lines_) s += (s.empty() ? "" : "|") + std::string(w.begin(), w.end());
    lines_.clear();
    return s;
}

}  // namespace zel::test
