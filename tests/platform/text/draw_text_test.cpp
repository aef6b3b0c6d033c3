// DrawTextW: measuring, line and word breaking, alignment, prefixes, ellipses, tabs,
// clipping, background and return values.
//
// Absolute numbers are for Liberation Sans with lfHeight 14 (12 pixels per em, cell 14),
// whose advances are H 9, e 7, l 3, o 7, space 3, '.' 3, 'F' 8, 'i' 3.
#include <climits>
#include <gtest/gtest.h>

#include <vector>

#include "text_fixture.h"

namespace {

using zel::test::FontSpec;
using zel::test::RectText;
using zel::test::Surface;
namespace t = zel::test;

constexpr COLORREF kWhite = RGB(255, 255, 255), kBlack = RGB(0, 0, 0);

class DrawTextTest : public zel::test::LeakChecked {
protected:
    void SetUp() override {
        LeakChecked::SetUp();
        measure_ = std::make_unique<Surface>(1, 1);
        measure_->Use({L"Liberation Sans", 14});
        ASSERT_EQ(zel::text::ResolvedFontFile(measure_->font()), t::kLiberationSans);
    }
    void TearDown() override {
        measure_.reset();
        LeakChecked::TearDown();
    }

    // "ret:left,top,right,bottom" of a DT_CALCRECT call.
    std::string Calc(const wchar_t* text, RECT r, UINT format, int count = -1) {
        int ret = DrawTextW(measure_->dc(), text, count, &r, format | DT_CALCRECT);
        return std::to_string(ret) + ":" + RectText(r);
    }
    int Width(const wchar_t* text) { return t::Width(measure_->dc(), text); }

    std::unique_ptr<Surface> measure_;
};

// Draws black text, transparent, on white; returns the surface for inspection.
std::unique_ptr<Surface> Draw(const wchar_t* text, RECT r, UINT format, int* ret = nullptr, int w = 120, int h = 60,
                              FontSpec spec = {L"Liberation Sans", 14}) {
    auto s = std::make_unique<Surface>(w, h, kWhite);
    s->Use(spec);
    SetBkMode(s->dc(), TRANSPARENT);
    int result = DrawTextW(s->dc(), text, -1, &r, format);
    if (ret) *ret = result;
    return s;
}

TEST_F(DrawTextTest, CalcRectMeasuresOneLine) {
    EXPECT_EQ(Calc(L"Hello World", {0, 0, 200, 100}, DT_SINGLELINE), "14:0,0,64,14");
    EXPECT_EQ(Calc(L"Hello World", {7, 9, 8, 10}, DT_SINGLELINE), "14:7,9,71,23") << "keeps left and top";
    EXPECT_EQ(Calc(L"Hello World", {10, 10, 110, 60}, DT_SINGLELINE | DT_RIGHT), "14:10,10,74,24")
        << "alignment does not move the measured rectangle";
    EXPECT_EQ(Calc(L"Hello", {0, 0, 200, 100}, DT_SINGLELINE, 3), Calc(L"Hel", {0, 0, 200, 100}, DT_SINGLELINE));
}

TEST_F(DrawTextTest, VerticalAlignmentNeedsSingleLineAndCountsInTheResult) {
    // y = top + (bottom - top) / 2 - height / 2 = 20 - 7. The measured forms are pinned
    // against the recordings (single_vcenter, vcenter_without_singleline, ...).
    Surface s(100, 40);
    s.Use({L"Liberation Sans", 14});
    RECT r{0, 0, 100, 40};
    EXPECT_EQ(DrawTextW(s.dc(), L"Hello", -1, &r, DT_SINGLELINE), 14);
    EXPECT_EQ(DrawTextW(s.dc(), L"Hello", -1, &r, DT_SINGLELINE | DT_VCENTER), 27);
    EXPECT_EQ(DrawTextW(s.dc(), L"Hello", -1, &r, DT_SINGLELINE | DT_BOTTOM), 40);
    EXPECT_EQ(RectText(r), "0,0,100,40") << "drawing leaves the rectangle alone";
    RECT flat{0, 5, 100, 5};
    EXPECT_EQ(DrawTextW(s.dc(), L"Hello", -1, &flat, DT_SINGLELINE | DT_BOTTOM), 1) << "a zero height reads as 1";
    // A rectangle at the bottom of the int range still gives the line's height.
    RECT low{0, INT_MIN, 100, INT_MIN + 40};
    EXPECT_EQ(DrawTextW(s.dc(), L"Hello", -1, &low, DT_SINGLELINE), 14);
    // One across the whole int range: widths and positions wrap as Win32's 32-bit
    // arithmetic does (a sanitizer build reports any overflow here).
    for (UINT format : {DT_CENTER, DT_RIGHT, DT_WORDBREAK | DT_CENTER, DT_SINGLELINE | DT_BOTTOM}) {
        RECT wide{INT_MIN + 1, INT_MIN + 1, INT_MAX, INT_MAX};
        DrawTextW(s.dc(), L"Hello", -1, &wide, format);
    }
    RECT wide{INT_MAX - 10, 0, INT_MAX, 40};
    EXPECT_EQ(DrawTextW(s.dc(), L"Hello", -1, &wide, DT_CALCRECT | DT_SINGLELINE), 14);
    EXPECT_EQ(wide.right, static_cast<int>(static_cast<unsigned>(INT_MAX - 10) + t::Width(s.dc(), L"Hello")));
}

// LF, CR LF, blank lines, a trailing break and DT_SINGLELINE over breaks are pinned
// against the recordings (line_breaks*, blank_lines, empty_*); here LF CR, and a count of
// zero.
TEST_F(DrawTextTest, LineBreaksAndEmptyText) {
    EXPECT_EQ(Calc(L"ab\n\rcd", {0, 0, 200, 100}, 0), "28:0,0,14,28") << "LF CR is one break";
    RECT r{0, 0, 50, 50};
    EXPECT_EQ(DrawTextW(measure_->dc(), L"abc", 0, &r, DT_CALCRECT), 14) << "count 0: one line height";
    EXPECT_EQ(RectText(r), "0,0,50,50") << "and nothing measured";
}

// Word breaking itself is pinned against the recordings (wordbreak_*); these are the
// cases around an over-long word.
TEST_F(DrawTextTest, LongWordsOverflowUnlessEditControl) {
    EXPECT_EQ(Calc(L"Supercalifragilistic is ok", {0, 0, 40, 100}, DT_WORDBREAK), "28:0,0,100,28");
    // A width too small for one character still advances.
    RECT r{0, 0, 1, 100};
    EXPECT_EQ(DrawTextW(measure_->dc(), L"abc", -1, &r, DT_WORDBREAK | DT_EDITCONTROL | DT_CALCRECT), 42);
}

TEST_F(DrawTextTest, IdeographsBreakBetweenCharacters) {
    const wchar_t* cjk = L"\u4E2D\u6587\u4E2D\u6587\u4E2D\u6587";
    int one = Width(L"\u4E2D");
    EXPECT_GT(one, 0) << "the fall-back face measures them";
    RECT r{0, 0, one * 2 + 1, 200};
    int ret = DrawTextW(measure_->dc(), cjk, -1, &r, DT_WORDBREAK | DT_CALCRECT);
    EXPECT_EQ(ret, 3 * 14);
    EXPECT_EQ(r.right, one * 2);

    auto s = Draw(cjk, {2, 2, 118, 58}, DT_SINGLELINE);
    RECT ink = s->InkBox(kWhite);
    EXPECT_GT(ink.right - ink.left, 4 * one) << "glyphs drawn from the fall-back face";
}

// Prefix removal and the underline of the first character are pinned against the
// recordings (prefix_*); here the underline of a later character and the two flags that
// split text from underline.
TEST_F(DrawTextTest, PrefixesAreRemovedAndUnderline) {
    // The underline: one pixel below the baseline (ascent 11 + 1), the prefixed
    // character's advance less one pixel wide.
    auto plain = Draw(L"File", {0, 0, 120, 60}, DT_SINGLELINE);
    int f = Width(L"F");
    auto second = Draw(L"F&ile", {0, 0, 120, 60}, DT_SINGLELINE);
    int i = Width(L"i");
    for (int x = 0; x < 30; ++x) EXPECT_EQ(second->Pixel(x, 12), x >= f && x < f + i - 1 ? kBlack : kWhite) << x;

    auto hidden = Draw(L"&File", {0, 0, 120, 60}, DT_SINGLELINE | DT_HIDEPREFIX);
    EXPECT_EQ(hidden->Picture(kBlack), plain->Picture(kBlack));
    auto only = Draw(L"&File", {0, 0, 120, 60}, DT_SINGLELINE | DT_PREFIXONLY);
    EXPECT_EQ(RectText(only->InkBox(kWhite)), RectText(RECT{0, 12, f - 1, 13}));
    auto none = Draw(L"&File", {0, 0, 120, 60}, DT_SINGLELINE | DT_NOPREFIX);
    EXPECT_EQ(none->Pixel(0, 12), kWhite);
}

// Where the ellipsis goes, a line that fits and the dots alone are pinned against the
// recordings (end_ellipsis*); here the caller's text with and without DT_MODIFYSTRING.
TEST_F(DrawTextTest, EndEllipsisShortensTheLineToFit) {
    std::vector<wchar_t> buffer(32, L'#');
    std::wcscpy(buffer.data(), L"Hello World");
    RECT r{0, 0, 40, 20};
    DrawTextW(measure_->dc(), buffer.data(), -1, &r, DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING);
    EXPECT_EQ(std::wstring(buffer.data()), L"Hello...") << "\"Hello...\" is 38 wide, \"Hello ...\" 41";
    // Without DT_MODIFYSTRING the caller's text is not touched.
    std::wcscpy(buffer.data(), L"Hello World");
    DrawTextW(measure_->dc(), buffer.data(), -1, &r, DT_SINGLELINE | DT_END_ELLIPSIS);
    EXPECT_EQ(std::wstring(buffer.data()), L"Hello World");
}

TEST_F(DrawTextTest, EndEllipsisMarksTheLastVisibleLine) {
    std::vector<wchar_t> buffer(32, 0);
    std::wcscpy(buffer.data(), L"aaa\nbbb\nccc");
    auto s = std::make_unique<Surface>(100, 40, kWhite);
    s->Use({L"Liberation Sans", 14});
    RECT r{0, 0, 100, 20};  // the second line is the last one that shows
    int ret = DrawTextW(s->dc(), buffer.data(), -1, &r, DT_END_ELLIPSIS | DT_MODIFYSTRING);
    EXPECT_EQ(ret, 28);
    EXPECT_EQ(std::wstring(buffer.data()), L"bbb...") << "text remains after it";
}

TEST_F(DrawTextTest, PathEllipsisKeepsTheFileName) {
    const wchar_t* path = L"C:\\Program Files\\Vendor\\Product\\file.txt";
    int room = Width(L"...\\file.txt") + Width(L"C:\\Prog");
    std::vector<wchar_t> buffer(64, 0);
    std::wcscpy(buffer.data(), path);
    RECT r{0, 0, room, 20};
    DrawTextW(measure_->dc(), buffer.data(), -1, &r, DT_SINGLELINE | DT_PATH_ELLIPSIS | DT_MODIFYSTRING | DT_CALCRECT);
    std::wstring out(buffer.data());
    ASSERT_GE(out.size(), 12u);
    EXPECT_EQ(out.substr(out.size() - 12), L"...\\file.txt");
    std::wstring head = out.substr(0, out.size() - 12);
    EXPECT_EQ(std::wstring(path).substr(0, head.size()), head) << "the head is the start of the path";
    EXPECT_LE(Width(out.c_str()), room);
    EXPECT_GT(Width((std::wstring(path).substr(0, head.size() + 1) + L"...\\file.txt").c_str()), room)
        << "as much of the head as fits";
    EXPECT_LE(r.right, room);
}

TEST_F(DrawTextTest, ExternalLeadingOnlyWhenAsked) {
    Surface s(1, 1);
    s.Use({L"Liberation Sans", 30});  // cell 30, external leading 1
    RECT r{0, 0, 200, 200};
    EXPECT_EQ(DrawTextW(s.dc(), L"a\nb", -1, &r, DT_CALCRECT), 60);
    r = RECT{0, 0, 200, 200};
    EXPECT_EQ(DrawTextW(s.dc(), L"a\nb", -1, &r, DT_CALCRECT | DT_EXTERNALLEADING), 62);
}

TEST_F(DrawTextTest, OutputIsClippedToTheRectangleUnlessNoClip) {
    Surface a(120, 60, t::kSentinel), b(120, 60, t::kSentinel);
    for (Surface* s : {&a, &b}) {
        s->Use({L"Liberation Sans", 30});
        SetBkMode(s->dc(), TRANSPARENT);
        s->FillBox(RECT{10, 10, 30, 30}, kWhite);
    }
    RECT r{10, 10, 30, 30};
    DrawTextW(a.dc(), L"WWW", -1, &r, DT_SINGLELINE);
    DrawTextW(b.dc(), L"WWW", -1, &r, DT_SINGLELINE | DT_NOCLIP);
    EXPECT_EQ(RectText(a.InkBox(t::kSentinel)), RectText(r)) << "only the white box changed";
    RECT spill = b.InkBox(t::kSentinel);
    EXPECT_GT(spill.right, 30);
}

TEST_F(DrawTextTest, APartlyVisibleLastLineIsDrawnExceptForEditControls) {
    int ret = 0;
    auto plain = Draw(L"aaa\nbbb", {0, 0, 100, 20}, 0, &ret);
    EXPECT_EQ(ret, 28);
    RECT ink = plain->InkBox(kWhite);
    EXPECT_EQ(ink.bottom, 20) << "the second line is cut at the bottom";
    auto edit = Draw(L"aaa\nbbb", {0, 0, 100, 20}, DT_EDITCONTROL, &ret);
    EXPECT_EQ(ret, 14);
    EXPECT_LE(edit->InkBox(kWhite).bottom, 14);
    // Lines after the one that crosses the bottom are not processed at all.
    auto many = Draw(L"a\nb\nc\nd", {0, 0, 100, 20}, 0, &ret);
    EXPECT_EQ(ret, 28);
}

TEST_F(DrawTextTest, OpaqueBackgroundFillsOnlyTextCells) {
    Surface s(100, 40, t::kSentinel);
    s.Use({L"Liberation Sans", 14});
    SetBkColor(s.dc(), RGB(0, 0, 255));
    SetTextColor(s.dc(), RGB(255, 255, 0));
    RECT r{0, 0, 100, 40};
    int w1 = t::Width(s.dc(), L"ab"), w2 = t::Width(s.dc(), L"abcd");
    DrawTextW(s.dc(), L"ab\nabcd", -1, &r, DT_CENTER);
    int x1 = (100 - w1) / 2, x2 = (100 - w2) / 2;
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 100; ++x) {
            bool inCell = (y < 14 && x >= x1 && x < x1 + w1) || (y >= 14 && y < 28 && x >= x2 && x < x2 + w2);
            COLORREF c = s.Pixel(x, y);
            if (inCell)
                ASSERT_TRUE(c == RGB(0, 0, 255) || c == RGB(255, 255, 0)) << x << "," << y;
            else
                ASSERT_EQ(c, t::kSentinel) << x << "," << y;
        }
}

TEST_F(DrawTextTest, WorksOnMonochromeSurfaces) {
    Surface colour(80, 30, kWhite), mono(80, 30, kWhite, /*mono=*/true);
    for (Surface* s : {&colour, &mono}) {
        s->Use({L"Tahoma", 14});
        SetBkMode(s->dc(), TRANSPARENT);
        RECT r{2, 2, 78, 28};
        DrawTextW(s->dc(), L"&Mono text", -1, &r, DT_SINGLELINE | DT_VCENTER);
    }
    EXPECT_EQ(colour.Picture(kBlack), mono.Picture(kBlack));
    EXPECT_GT(mono.Count(kBlack), 30);
}

TEST_F(DrawTextTest, BadArgumentsReturnZero) {
    RECT r{0, 0, 10, 10};
    EXPECT_EQ(DrawTextW(nullptr, L"a", -1, &r, 0), 0);
    EXPECT_EQ(DrawTextW(measure_->dc(), nullptr, -1, &r, 0), 0);
    EXPECT_EQ(DrawTextW(measure_->dc(), L"a", -1, nullptr, 0), 0);
    EXPECT_EQ(DrawTextW(measure_->dc(), L"a", -2, &r, 0), 0);
}

}  // namespace
