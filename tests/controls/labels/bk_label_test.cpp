// CZELBkLable: the piece of the whole-screen bitmap under the label, white without one,
// the text 5 pixels in, and SetBitmap's previous handle.
#include <algorithm>
#include <memory>
#include <vector>

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

// White without a bitmap, the text 5 pixels in; a bitmap that ends before the label leaves
// the fresh frame's black; half-covered, half.
TEST_F(BkLabelTest, WhiteWithoutABitmapBlackBeyondIt) {
    label->SetWindowText(L"Contacts and more");
    label->SetFont(16, RGB(0, 0, 160), DT_SINGLELINE | DT_VCENTER, CRect(30, 0, 40, 10));
    Reference white(80, 20, RGB(255, 255, 255));
    white.Text(L"Contacts and more", RECT{5, 0, 75, 20}, DT_SINGLELINE | DT_VCENTER, 16, RGB(0, 0, 160));
    EXPECT_EQ(Shows(*label, white), "");

    label->SetWindowText(L"");
    labeltest::ArtBitmap small(50, 30, Screen);
    label->SetBitmap(small.get());
    EXPECT_EQ(Shows(*label, Reference(80, 20)), "");

    labeltest::ArtBitmap partial(140, 50, Screen);
    label->SetBitmap(partial.get());
    Reference want(80, 20);
    want.Pixels([](int x, int y) { return x < 40 && y < 10 ? Screen(100 + x, 40 + y) : RGB(0, 0, 0); });
    EXPECT_EQ(Shows(*label, want), "");
}

// A paint costs what shows of the label. Pushed past the parent's left edge, the label
// shows the pixels it shows whole, left-aligned, right-aligned or centred text over the
// screen's piece (a centred line is placed by a sum that rounds toward zero, so the odd
// and even shifts both count); 32767 wide, of which the parent shows 220 columns, a
// repaint writes a few layers of those, not a white canvas of the window.
TEST_F(BkLabelTest, PaintCostsWhatShowsAndShowsWhatAWholePaintWould) {
    labeltest::ArtBitmap screen(240, 120, Screen);
    label->SetBitmap(screen.get());
    label->SetWindowText(L"Contacts and more");
    for (const UINT format : {UINT{DT_SINGLELINE | DT_VCENTER}, UINT{DT_SINGLELINE | DT_RIGHT},
                              UINT{DT_CENTER | DT_WORDBREAK}, UINT{DT_SINGLELINE | DT_CENTER | DT_BOTTOM}}) {
        label->SetFont(12, RGB(0, 0, 160), format, CRect(0, 0, 80, 20));
        for (const int hidden : {31, 32}) {
            auto shown = [&] {
                std::vector<COLORREF> pixels;
                for (int y = 0; y < 20; ++y)
                    for (int x = hidden; x < 80; ++x) pixels.push_back(ShownAt(label->m_hWnd, x, y));
                return pixels;
            };
            label->MoveWindow(100, 40, 80, 20);
            desktop.RunUntilIdle();
            const std::vector<COLORREF> whole = shown();
            label->MoveWindow(-hidden, 40, 80, 20);
            desktop.RunUntilIdle();
            const std::vector<COLORREF> part = shown();
            // The screen's piece moves with the label; only the text must land alike.
            std::vector<bool> textWhole, textPart;
            for (size_t i = 0; i < whole.size(); ++i) {
                textWhole.push_back(whole[i] == RGB(0, 0, 160));
                textPart.push_back(part[i] == RGB(0, 0, 160));
            }
            EXPECT_NE(std::count(textWhole.begin(), textWhole.end(), true), 0) << format << ": no text compared";
            EXPECT_EQ(textWhole, textPart) << "format " << format << ", " << hidden << " columns hidden";
        }
    }

    label->SetBitmap(nullptr);  // the white fill covers the canvas
    label->MoveWindow(100, 40, 32767, 20);
    ExpectRepaintWithin(*label, 4u * 220 * 20);
}

}  // namespace
