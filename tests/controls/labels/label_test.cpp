// CZELLable: the frame's pieces and the fit rule of its text -- an exact fit keeps the
// font, the shrink goes 2 pixels a step from the height SetFont gave (40 by default) and
// stops at the first that fits or at the floor.
#include <functional>
#include <memory>


#include "CZELLable.h"
#include "label_fixture.h"

namespace {

using labeltest::Measure;
using labeltest::Reference;

const COLORREF kWhite = RGB(255, 255, 255);
constexpr RECT kBox{10, 10, 130, 40};

class Label : public labeltest::LabelTest {
protected:
    void TearDown() override {
        label.reset();
        LabelTest::TearDown();
    }
    // Caps that vary by column only (6 and 4 wide) and a 3 x 3 middle pattern, and what a
    // frame of them `width` wide shows at (x, y); without the right cap the middle runs to
    // the edge.
    void ColumnSkins() {
        skins.Pixels("left", 6, 10, [](int x, int y) { return FramePixel(x, y, 1000); });
        skins.Pixels("middle", 3, 3, [](int x, int y) { return FramePixel(6 + x, y, 1000); });
        skins.Pixels("right", 4, 10, [](int x, int y) { return FramePixel(996 + x, y, 1000); });
    }
    static COLORREF FramePixel(int x, int y, int width, bool rightCap = true) {
        if (x < 6) return RGB(200, 40 * x, 0);
        if (rightCap && x >= width - 4) return RGB(0, 40 * (x - width + 4), 200);
        return RGB(60 * (x % 3), 60 * (y % 3), 90);
    }
    CZELLable& Make(const wchar_t* text, RECT box = kBox) {
        label = std::make_unique<CZELLable>();
        EXPECT_TRUE(label->Create(nullptr, text, WS_CHILD | WS_VISIBLE, box, &parent, 7));
        return *label;
    }

    std::unique_ptr<CZELLable> label;
};

// Caps vary by column only, so stretching them to the client height keeps each column's
// colour; the middle is a 3 x 3 pattern tiled from the frame's origin.
TEST_F(Label, CapsStretchAndTheMiddleTilesBetweenThem) {
    ColumnSkins();
    CZELLable& l = Make(L"");
    l.LoadSkin(L" " + SkinPath("left") + L" |" + SkinPath("middle") + L"|" + SkinPath("right") + L"|", L"");
    Reference want(120, 30);
    want.Pixels([](int x, int y) { return FramePixel(x, y, 120); });
    EXPECT_EQ(want.Diff(label->m_hWnd), "") << "loading the pieces repaints at once";

    // Two pieces leave the right cap out: the middle runs to the edge.
    l.LoadSkin(skins.Skin({"left", "middle"}), L"");
    want.Pixels([](int x, int y) { return FramePixel(x, y, 120, false); });
    EXPECT_EQ(Shows(*label, want), "");
}

// Without a skin (or with pieces that do not load) the frame is black under the text.
TEST_F(Label, WithoutSkinTheFrameIsBlackUnderTheText) {
    const UINT format = DT_SINGLELINE | DT_VCENTER | DT_CENTER;
    CZELLable& l = Make(L"Hello");
    l.LoadBitmap(L"/nonexistent/left.bmp", L"", L"/nonexistent/right.bmp");
    l.LoadSkin(L"no bar at all", L"");
    l.SetFont(18, kWhite, format, CRect());
    Reference want(120, 30);
    want.Text(L"Hello", RECT{0, 0, 120, 30}, format, 18, kWhite);
    EXPECT_EQ(Shows(*label, want), "");
    l.SetWindowText(L"");
    EXPECT_EQ(Shows(*label, Reference(120, 30)), "");
}

// Each case: the font height SetFont gives, the text rectangle, and the height the text
// must be drawn at. Widths come from the platform's own measurements, so the cases hold
// for any metrics.
struct FitCase {
    const char* name;
    const wchar_t* text;
    int setHeight;
    std::function<RECT()> rect;
    int drawnAt;
};

TEST_F(Label, FitRuleAndShrinkSteps) {
    const wchar_t* word = L"Exactly";
    const wchar_t* longText = L"A caption far too long for this label at any height at all";
    const SIZE at18 = Measure(word, 18);
    const RECT small{0, 0, 120, 30};
    const FitCase cases[] = {
        {"an exact fit keeps the font", word, 18, [&] { return RECT{0, 0, at18.cx, at18.cy}; }, 18},
        {"one pixel short shrinks one step", word, 18, [&] { return RECT{0, 0, at18.cx - 1, at18.cy}; }, 16},
        {"one pixel too low shrinks one step", word, 18, [&] { return RECT{0, 0, at18.cx, at18.cy - 1}; }, 16},
        {"the first height from 30 down that fits", word, 30, [&] { return RECT{0, 0, Measure(word, 22).cx, 30}; },
         22},
        {"from 40 it stops at 12", longText, 40, [&] { return small; }, 12},
        {"an odd start stops at 11", longText, 13, [&] { return small; }, 11},
        {"an absurd start ends at the floor, and soon", longText, 1 << 30, [&] { return small; }, 12},
        {"a start at the floor still takes one step", longText, 12, [&] { return small; }, 10},
    };
    ASSERT_LT(Measure(word, 16).cx, at18.cx) << "the cases need a smaller font to be narrower";
    ASSERT_GT(Measure(word, 24).cx, Measure(word, 22).cx);
    for (const FitCase& c : cases) {
        SCOPED_TRACE(c.name);
        const RECT rc = c.rect();
        Make(c.text).SetFont(c.setHeight, kWhite, DT_SINGLELINE, rc);
        Reference want(120, 30);
        want.Text(c.text, rc, DT_SINGLELINE, c.drawnAt, kWhite);
        EXPECT_EQ(Shows(*label, want), "");
        label.reset();
    }
}

// The label as made draws black text in 18 over the whole client area and shrinks from 40.
TEST_F(Label, DefaultFontIs18AndShrinksFrom40) {
    const wchar_t* text = L"1234567890";
    const SIZE at18 = Measure(text, 18, 0);
    skins.Solid("white", 1, 1, kWhite);
    Make(text, RECT{10, 10, 10 + at18.cx, 10 + at18.cy}).LoadBitmap(L"", SkinPath("white"), L"");
    Reference fits(at18.cx, at18.cy, kWhite);
    fits.Text(text, RECT{0, 0, at18.cx, at18.cy}, 0, 18, RGB(0, 0, 0));
    EXPECT_EQ(Shows(*label, fits), "");

    label->MoveWindow(10, 10, at18.cx - 1, at18.cy);
    Reference shrunk(at18.cx - 1, at18.cy, kWhite);
    shrunk.Text(text, RECT{0, 0, at18.cx - 1, at18.cy}, 0, 16, RGB(0, 0, 0));
    EXPECT_EQ(Shows(*label, shrunk), "");
}

// The picture under the text is kept between paints: a new text, a new size and new pieces
// each show as on a label painted for the first time, with nothing left of the last paint.
TEST_F(Label, RepaintsShowTheTextSizeAndPiecesOfNow) {
    const COLORREF red = RGB(200, 0, 0), green = RGB(0, 120, 0), blue = RGB(0, 0, 200);
    skins.Solid("left", 6, 4, red);
    skins.Solid("middle", 2, 2, green);
    skins.Solid("right", 5, 4, blue);
    const UINT format = DT_SINGLELINE | DT_VCENTER | DT_CENTER;
    CZELLable& l = Make(L"Wide");
    l.SetFont(16, kWhite, format, CRect());
    l.LoadSkin(skins.Skin({"left", "middle", "right"}), L"");
    struct Step {
        const wchar_t* text;
        int w, h;
        bool rightCap;
    } steps[] = {{L"Wide", 120, 30, true}, {L"Hi", 120, 30, true}, {L"Hi", 80, 24, true}, {L"Hi", 80, 24, false}};
    for (const Step& s : steps) {
        SCOPED_TRACE(testing::Message() << s.w << " " << s.rightCap);
        l.SetWindowText(s.text);
        if (s.w != 120) l.MoveWindow(kBox.left, kBox.top, s.w, s.h);
        if (!s.rightCap) l.LoadSkin(skins.Skin({"left", "middle"}), L"");
        Reference want(s.w, s.h, green);
        want.Fill(RECT{0, 0, 6, s.h}, red);
        if (s.rightCap) want.Fill(RECT{s.w - 5, 0, s.w, s.h}, blue);
        want.Text(s.text, RECT{0, 0, s.w, s.h}, format, 16, kWhite);
        EXPECT_EQ(Shows(*label, want), "");
    }
}

// The canvases kept between paints belong to the window: destroying it returns them, while
// the pieces stay with the object.
TEST_F(Label, DestroyReleasesTheKeptCanvases) {
    skins.Solid("middle", 2, 2, kWhite);
    label = std::make_unique<CZELLable>();
    label->LoadSkin(skins.Skin({"middle"}), L"");
    const zel::GdiCounts before = zel::LiveGdiObjects();
    ASSERT_TRUE(label->Create(nullptr, L"x", WS_CHILD | WS_VISIBLE, kBox, &parent, 7));
    label->Invalidate();
    desktop.RunUntilIdle();
    EXPECT_GT(zel::LiveGdiObjects().bitmaps, before.bitmaps) << "a painted label keeps its canvas";
    label->DestroyWindow();
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps);
    EXPECT_EQ(zel::LiveGdiObjects().dcs, before.dcs);
}

// A label wider than the screen paints what shows of it, without keeping a picture of it
// all: each part that shows at odd and even offsets is the whole label's, for centred and
// right-aligned text; and moved to 32767 x 1000, its paints write a few layers of the
// 310 x 190 pixels that show.
TEST_F(Label, PaintCostsWhatShowsAndShowsWhatAWholePaintWould) {
    ColumnSkins();
    constexpr int w = 1000, h = 41;
    CZELLable& l = Make(L"Calls waiting in the queue", RECT{0, 0, w, h});
    l.LoadSkin(skins.Skin({"left", "middle", "right"}), L"");
    struct Case {
        UINT format;
        RECT text;
    } cases[] = {{DT_SINGLELINE | DT_VCENTER | DT_CENTER, RECT{}},
                 {DT_CENTER | DT_WORDBREAK, RECT{300, 3, 460, 40}},
                 {DT_SINGLELINE | DT_RIGHT | DT_BOTTOM, RECT{0, 0, 695, 37}}};
    for (const Case& c : cases) {
        l.SetFont(16, kWhite, c.format, CRect(c.text));
        Reference want(w, h);
        want.Pixels([](int x, int y) { return FramePixel(x, y, w); });
        const RECT rc = IsRectEmpty(&c.text) ? RECT{0, 0, w, h} : c.text;
        want.Text(L"Calls waiting in the queue", rc, c.format, 16, kWhite);
        for (const POINT at : {POINT{0, 0}, POINT{-341, 0}, POINT{-342, -7}, POINT{-523, 0}, POINT{-690, -6}}) {
            l.MoveWindow(at.x, at.y, w, h);
            l.Invalidate();
            desktop.RunUntilIdle();
            EXPECT_EQ(ShowsWhereVisible(l.m_hWnd, want), "") << "format " << c.format << " at " << at.x << "," << at.y;
        }
    }

    l.MoveWindow(10, 10, 32767, 1000);
    EXPECT_LE(RepaintPixels(l), 4u * 310 * 190) << "pixels written by one repaint";
}

}  // namespace
