// CZELStatic: which pixels are figure (the whole-COLORREF difference from the key above
// 120), one span per row, the all-key picture, and the image message.
#include <memory>
#include <string>

#include "CZELStatic.h"
#include "label_fixture.h"

namespace {

const COLORREF kKey = 0x000000FF;
constexpr int kWidth = 12;

// One row per case: the pixels that are not key, and the span the row must give ("" for
// none). The picture's (0, 0) is key, so row 0 holds only key.
struct Row {
    const char* name;
    std::vector<std::pair<int, COLORREF>> pixels;
    const char* span;
};
const Row kRows[] = {
    {"all key", {}, ""},
    {"difference 127 is figure", {{5, 0x00000080}}, "5-6"},
    {"difference 111 is key", {{5, 0x00000090}}, ""},
    {"green moves by 256", {{5, 0x000100FF}}, "5-6"},
    {"difference 120 is key", {{5, 0x00000087}}, ""},
    {"difference 121 is figure", {{5, 0x00000086}}, "5-6"},
    {"a hole inside a row stays", {{3, 0}, {9, 0}}, "3-10"},
    {"a lone leftmost pixel is one wide", {{0, 0}}, "0-1"},
    {"a lone rightmost pixel", {{11, 0x00FF0000}}, "11-12"},
    {"a full row", {{0, 0}, {4, 0x00FFFFFF}, {11, 0}}, "0-12"},
};
constexpr int kHeight = sizeof kRows / sizeof kRows[0];

COLORREF Picture(int x, int y) {
    for (const auto& [px, colour] : kRows[y].pixels)
        if (px == x) return colour;
    return kKey;
}

class StaticTest : public labeltest::LabelTest {
protected:
    void SetUp() override {
        LabelTest::SetUp();
        picture = std::make_unique<CZELStatic>();
        EXPECT_TRUE(
            picture->Create(L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_BITMAP, CRect(20, 20, 60, 60), &parent, 10));
    }
    void TearDown() override {
        picture.reset();
        LabelTest::TearDown();
    }
    // The window region's span on row y as "left-right", "" when the row is cut out;
    // "no region" when the window is unshaped.
    std::string Span(int y) {
        HRGN rgn = ::CreateRectRgn(0, 0, 0, 0);
        std::string s;
        if (::GetWindowRgn(picture->m_hWnd, rgn) == ERROR) {
            s = "no region";
        } else {
            int left = -1, right = -1;
            for (int x = 0; x < kWidth + 2; ++x)
                if (::PtInRegion(rgn, x, y)) {
                    if (left < 0) left = x;
                    if (right >= 0 && right != x) s = "gap";
                    right = x + 1;
                }
            if (s.empty() && left >= 0) s = std::to_string(left) + "-" + std::to_string(right);
        }
        ::DeleteObject(rgn);
        return s;
    }

    std::unique_ptr<CZELStatic> picture;
};

TEST_F(StaticTest, OneSpanPerRowFromTheKeyDifference) {
    labeltest::ArtBitmap art(kWidth, kHeight, Picture);
    EXPECT_EQ(picture->SetBitmap(art.get()), nullptr);
    for (int y = 0; y < kHeight; ++y) EXPECT_EQ(Span(y), kRows[y].span) << kRows[y].name;
    EXPECT_EQ(::SendMessageW(picture->m_hWnd, STM_GETIMAGE, IMAGE_BITMAP, 0), reinterpret_cast<LRESULT>(art.get()));
    picture->SetBitmap(nullptr);
}

// A picture of key only gives an empty shape: the window keeps the shape it had.
TEST_F(StaticTest, AllKeyPictureKeepsThePreviousShape) {
    labeltest::ArtBitmap blank(8, 8, [](int, int) { return kKey; });
    EXPECT_EQ(picture->SetBitmap(blank.get()), nullptr);
    EXPECT_EQ(Span(3), "no region");

    labeltest::ArtBitmap art(kWidth, kHeight, Picture);
    EXPECT_EQ(picture->SetBitmap(art.get()), blank.get());
    EXPECT_EQ(picture->SetBitmap(blank.get()), art.get());
    EXPECT_EQ(Span(6), "3-10");
    EXPECT_EQ(picture->SetBitmap(nullptr), blank.get());
    EXPECT_EQ(Span(6), "3-10");
}

TEST_F(StaticTest, AStaleHandleGivesNoShape) {
    HBITMAP stale = nullptr;
    {
        labeltest::ArtBitmap gone(4, 4, [](int, int) { return RGB(0, 0, 0); });
        stale = gone.get();
    }
    EXPECT_EQ(picture->SetBitmap(stale), nullptr);
    EXPECT_EQ(Span(0), "no region");
}

}  // namespace
