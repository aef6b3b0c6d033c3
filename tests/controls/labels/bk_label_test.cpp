// CZELBkLable: the piece of the whole-screen bitmap under the label, white without one,
// the text 5 pixels in, and SetBitmap's previous handle.
#include <memory>

#include "CZELBkLable.h"
#include "label_fixture.h"

namespace {

using labeltest::Reference;

COLORREF Screen(int x, int y) { return RGB(x, y, (x * 7 + y * 13) & 0xFF); }

class BkLabelTest : public labeltest::LabelTest {
protected:
    void SetUp() override {
        LabelTest::SetUp();
        label = std::make_unique<CZELBkLable>();
        EXPECT_TRUE(label->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(100, 40, 180, 60), &parent, 9));
    }
    void TearDown() override {
        label.reset();
        LabelTest::TearDown();
    }

    std::unique_ptr<CZELBkLable> label;
};

// The label at (100, 40) of the screen, 80 x 20, shows the bitmap's (100, 40)-(180, 60).
TEST_F(BkLabelTest, ShowsThePieceUnderItself) {
    labeltest::ArtBitmap screen(240, 120, Screen);
    EXPECT_EQ(label->SetBitmap(screen.get()), nullptr);
    Reference want(80, 20);
    want.Pixels([](int x, int y) { return Screen(100 + x, 40 + y); });
    EXPECT_EQ(Shows(*label, want), "");

    // Screen coordinates, not the parent's: moving the parent moves the piece.
    parent.MoveWindow(20, 10, 320, 200);
    want.Pixels([](int x, int y) { return Screen(120 + x, 50 + y); });
    EXPECT_EQ(Shows(*label, want), "");
    EXPECT_EQ(label->SetBitmap(nullptr), screen.get());
}

TEST_F(BkLabelTest, WhiteWithoutABitmapAndTextFiveIn) {
    label->SetWindowText(L"Contacts and more");
    label->SetFont(16, RGB(0, 0, 160), DT_SINGLELINE | DT_VCENTER, CRect(30, 0, 40, 10));
    Reference want(80, 20, RGB(255, 255, 255));
    want.Text(L"Contacts and more", RECT{5, 0, 75, 20}, DT_SINGLELINE | DT_VCENTER, 16, RGB(0, 0, 160));
    EXPECT_EQ(Shows(*label, want), "");
}

// A bitmap that ends before the label leaves the fresh frame's black; half-covered, half.
TEST_F(BkLabelTest, BitmapSmallerThanThePosition) {
    labeltest::ArtBitmap small(50, 30, Screen);
    label->SetBitmap(small.get());
    EXPECT_EQ(Shows(*label, Reference(80, 20)), "");

    labeltest::ArtBitmap partial(140, 50, Screen);
    label->SetBitmap(partial.get());
    Reference want(80, 20);
    want.Pixels([](int x, int y) { return x < 40 && y < 10 ? Screen(100 + x, 40 + y) : RGB(0, 0, 0); });
    EXPECT_EQ(Shows(*label, want), "");
}

}  // namespace
