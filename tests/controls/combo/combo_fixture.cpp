#include "combo_fixture.h"

namespace combotest {

std::string Commands(std::initializer_list<int> codes) {
    std::string s;
    for (int code : codes) s += (s.empty() ? "" : ";") + std::string("COMMAND(77,") + std::to_string(code) + ",combo)";
    return s.empty() ? "-" : s;
}

void ComboTest::TearDown() {
    ctl.reset();
    ControlTest::TearDown();
}

void ComboTest::SetUp() {
    ControlTest::SetUp();
    WriteSkin();
}

void ComboTest::WriteSkin() {
    skins.Solid("left", 4, kBoxH, kCap);
    skins.Solid("middle", 8, kBoxH, kMiddle);
    skins.Solid("right", 4, kBoxH, kCap);
    skins.Framed("arrow", kArrowW, kBoxH, kArrow, kCap);
    skins.Framed("arrow_down", kArrowW, kBoxH, kArrowDown, kCap);
    skins.Solid("row", 10, kRowH, kRow);
    skins.Solid("row_lit", 10, kRowH, kRowLit);
    skins.Solid("up", kBarW, 8, RGB(200, 60, 60));
    skins.Solid("up_down", kBarW, 8, RGB(255, 140, 140));
    skins.Striped("track", kBarW, 24, RGB(220, 220, 220), RGB(190, 190, 190), 4);
    skins.Framed("thumb", 8, 6, RGB(40, 160, 40), RGB(0, 90, 0));
    skins.Framed("thumb_down", 8, 6, RGB(120, 230, 120), RGB(0, 90, 0));
    skins.Solid("down", kBarW, 8, RGB(60, 60, 200));
    skins.Solid("down_down", kBarW, 8, RGB(140, 140, 255));
}

CString ComboTest::BoxSkin() const {
    return skins.Skin({"left", "middle", "right", "arrow", "arrow_down", "row", "row_lit"});
}

CString ComboTest::BarSkin() const {
    return skins.Skin({"up", "up_down", "track", "thumb", "thumb_down", "down", "down_down"});
}

CZELComBox& ComboTest::Make(const CRect& rect, int items, DWORD style) {
    ctl = std::make_unique<CZELComBox>();
    EXPECT_TRUE(ctl->Create(style, rect, &parent, kId));
    parent.Name(ctl->m_hWnd, "combo");
    parent.Name(ctl->GetScrollBar()->m_hWnd, "bar");
    ctl->LoadSkin(BoxSkin() + BarSkin(), L"");
    for (int i = 0; i < items; ++i) {
        CString text;
        text.Format(L"item %d", i);
        ctl->AddString(text);
    }
    desktop.RunUntilIdle();
    parent.Take();
    return *ctl;
}

POINT ComboTest::RowOnScreen(int visibleRow) const {
    CRect list;
    ctl->GetDroppedControlRect(&list);
    return POINT{list.left + 40, list.top + visibleRow * kRowH + kRowH / 2};
}

CRect ComboTest::WindowRect() const {
    CRect r;
    ctl->GetWindowRect(&r);
    return r;
}

void ComboTest::TapRow(int visibleRow) {
    const POINT p = RowOnScreen(visibleRow);
    desktop.Tap(p.x, p.y);
}

}  // namespace combotest
