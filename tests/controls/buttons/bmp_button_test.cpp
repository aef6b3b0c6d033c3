// CZELBmpButton: resource skins, the window shaped from the normal skin's key colour,
// its own click on release, and the message box and debug lines of the shape builder.
#include <CZELBmpButton.h>
#include <zel/debug.h>
#include <zel/resources.h>

#include <array>
#include <memory>

#include "support/control_test.h"
#include "support/golden.h"

namespace {

using namespace zel::test;

constexpr COLORREF kKey = RGB(255, 255, 255);
constexpr COLORREF kRed = RGB(200, 40, 40);
constexpr COLORREF kGreen = RGB(40, 200, 40);
constexpr COLORREF kBlue = RGB(40, 40, 200);
constexpr COLORREF kGrey = RGB(120, 120, 120);
constexpr UINT kId = 7;
enum : UINT { kNormal = 101, kFocus, kDown, kDisable, kBlank, kRound };

// A 60 x 60 skin on the key colour: a square face (10, 10)-(50, 50) with a key-coloured
// hole (20, 20)-(40, 40), one pixel in the last column of row 5, and two pixels far apart
// on row 55. Its region, one span per row with the hole kept, is what the goldens show
// against the parent's sentinel.
void PaintShape(HDC dc, COLORREF face) {
    FillBox(dc, 0, 0, 60, 60, kKey);
    FillBox(dc, 10, 10, 50, 50, face);
    FillBox(dc, 20, 20, 40, 40, kKey);
    SetPixel(dc, 59, 5, face);
    SetPixel(dc, 5, 55, face);
    SetPixel(dc, 30, 55, face);
}

class BmpButton : public ControlTest {
protected:
    void SetUp() override {
        ControlTest::SetUp();
        for (auto [name, face] : {std::pair{"normal", kRed}, {"focus", kGreen}, {"down", kBlue}, {"disable", kGrey}})
            skins.Draw(name, 60, 60, [face = face](HDC dc) { PaintShape(dc, face); });
        skins.Solid("blank", 60, 60, kKey);
        skins.Draw("round", 60, 60, [](HDC dc) {
            FillBox(dc, 0, 0, 60, 60, kKey);
            HBRUSH brush = CreateSolidBrush(kRed);
            HGDIOBJ oldBrush = SelectObject(dc, brush);
            HGDIOBJ oldPen = SelectObject(dc, GetStockObject(NULL_PEN));
            Ellipse(dc, 0, 0, 61, 61);
            SelectObject(dc, oldPen);
            SelectObject(dc, oldBrush);
            DeleteObject(brush);
        });
        module = skins.Module({{kNormal, "normal"},
                               {kFocus, "focus"},
                               {kDown, "down"},
                               {kDisable, "disable"},
                               {kBlank, "blank"},
                               {kRound, "round"}});
        ASSERT_NE(module, nullptr);
    }
    void TearDown() override {
        zel::SetDebugSink(nullptr);
        ControlTest::TearDown();
    }

    std::unique_ptr<CZELBmpButton> Make() {
        auto button = std::make_unique<CZELBmpButton>();
        EXPECT_TRUE(button->Create(L"", WS_VISIBLE | BS_OWNERDRAW, CRect(10, 10, 70, 70), &parent, kId));
        parent.Name(button->m_hWnd, "btn");
        desktop.RunUntilIdle();
        return button;
    }

    // Normal (the parent has the focus), focused, pressed, disabled.
    std::array<COLORREF, 4> Shown(CZELBmpButton& button) {
        std::array<COLORREF, 4> shown{};
        size_t i = 0;
        ForEachLook(button, {15, 15}, [&](const char*) { shown[i++] = ShownAt(button.m_hWnd, 15, 15); });
        parent.Take();
        return shown;
    }

    HINSTANCE module = nullptr;
};

using Skins = std::array<COLORREF, 4>;

TEST_F(BmpButton, RoundSkinGivesARoundButtonAndAnAllKeySkinNone) {
    auto button = Make();
    CRgn region;
    region.CreateRectRgn(0, 0, 0, 0);
    button->LoadBitmaps(kBlank, 0, 0, 0, module);
    EXPECT_EQ(button->GetWindowRgn(region), NULLREGION);
    button->LoadBitmaps(kRound, 0, 0, 0, module);
    ASSERT_EQ(button->GetWindowRgn(region), COMPLEXREGION);
    for (POINT corner : {POINT{0, 0}, POINT{59, 0}, POINT{0, 59}, POINT{59, 59}, POINT{8, 8}, POINT{52, 52}})
        EXPECT_FALSE(region.PtInRegion(corner)) << corner.x << "," << corner.y;
    for (POINT face : {POINT{30, 1}, POINT{1, 30}, POINT{58, 30}, POINT{30, 58}, POINT{30, 30}})
        EXPECT_TRUE(region.PtInRegion(face)) << face.x << "," << face.y;
}

// Outside the shape a tap reaches the parent below; inside it clicks, holes within a row
// included.
TEST_F(BmpButton, TapsOutsideTheShapeReachTheWindowBelow) {
    const struct {
        UINT skin;
        POINT at;
        const char* log;
    } cases[] = {
        {kRound, {3, 3}, "LBUTTONDOWN(1,13,13);LBUTTONUP(0,13,13)"},
        {kRound, {30, 30}, "COMMAND(7,0,btn)"},
        {kNormal, {2, 2}, "LBUTTONDOWN(1,12,12);LBUTTONUP(0,12,12)"},
        {kNormal, {30, 30}, "COMMAND(7,0,btn)"},  // the key-coloured hole
        {kBlank, {30, 30}, "LBUTTONDOWN(1,40,40);LBUTTONUP(0,40,40)"},
    };
    for (const auto& c : cases) {
        auto button = Make();
        button->LoadBitmaps(c.skin, 0, 0, 0, module);
        TapAt(button->m_hWnd, c.at.x, c.at.y);
        EXPECT_EQ(parent.Take(), c.log) << "skin " << c.skin << " at " << c.at.x << "," << c.at.y;
        desktop.Advance(1000);
    }
}

// The full set is the goldens'; absent skins show the normal one. The module serves the
// call only, and identifiers count by their low 16 bits.
TEST_F(BmpButton, AbsentSkinsShowTheNormalOne) {
    auto button = Make();
    const HINSTANCE before = AfxGetResourceHandle();
    button->LoadBitmaps(0x10000 | kNormal, 0, 0, 0, module);
    EXPECT_EQ(AfxGetResourceHandle(), before);
    EXPECT_EQ(Shown(*button), (Skins{kRed, kRed, kRed, kRed}));
}

TEST_F(BmpButton, ClicksOnReleaseInsideOnly) {
    auto button = Make();
    button->LoadBitmaps(kNormal, kFocus, kDown, kDisable, module);
    const HWND hwnd = button->m_hWnd;
    DownAt(hwnd, 15, 15);
    EXPECT_EQ(GetCapture(), hwnd);
    MoveTo(hwnd, 100, 15);
    EXPECT_EQ(ShownAt(hwnd, 15, 15), kGreen) << "dragged off, it shows focused";
    UpAt(hwnd, 100, 15);
    EXPECT_EQ(parent.Take(), "-");
    EXPECT_EQ(GetCapture(), nullptr);

    desktop.Advance(1000);
    DownAt(hwnd, 15, 15);
    MoveTo(hwnd, 100, 15);
    MoveTo(hwnd, 45, 45);
    EXPECT_EQ(ShownAt(hwnd, 15, 15), kBlue);
    UpAt(hwnd, 45, 45);
    EXPECT_EQ(parent.Take(), "COMMAND(7,0,btn)");

    // The press never reaches the BUTTON logic, but a second tap does: it reports a double
    // click, and the release clicks again.
    desktop.Advance(1000);
    TapAt(hwnd, 15, 15);
    TapAt(hwnd, 15, 15);
    EXPECT_EQ(parent.Take(), "COMMAND(7,0,btn);COMMAND(7,5,btn);COMMAND(7,0,btn)");
}

TEST_F(BmpButton, ShapeBuilderWritesItsDebugLines) {
    auto button = Make();
    std::vector<std::wstring> lines;
    zel::SetDebugSink([&](const std::wstring& line) { lines.push_back(line); });
    button->LoadBitmaps(kNormal, 0, 0, 0, module);
    zel::SetDebugSink(nullptr);
    std::vector<std::wstring> expected = {L"fjeif", L"hDC", L"MemDC", L"for", L"59-5-1-1"};
    for (int y = 10; y < 50; ++y) expected.push_back(L"10-" + std::to_wstring(y) + L"-40-1");
    expected.push_back(L"5-55-26-1");
    EXPECT_EQ(lines, expected);
}

// A host switching between skin sets (a play / pause key) gets each set back as it first
// loaded it: the same shape, pixels and debug lines, without new bitmaps; the sets kept
// aside go with the window.
TEST_F(BmpButton, SwitchingBackToASetLoadedBeforeGivesItAsItWas) {
    auto button = Make();
    const HWND hwnd = button->m_hWnd;
    struct Seen {
        std::vector<std::wstring> lines;
        bool inShape[2];  // (15, 15) and (2, 2): the square face's corner, the disc's outside
        COLORREF shown;
    };
    auto load = [&](UINT normal) {
        Seen seen{};
        zel::SetDebugSink([&](const std::wstring& line) { seen.lines.push_back(line); });
        button->LoadBitmaps(normal, kFocus, kDown, 0, module);
        zel::SetDebugSink(nullptr);
        desktop.RunUntilIdle();
        CRgn shape;
        shape.CreateRectRgn(0, 0, 0, 0);
        button->GetWindowRgn(shape);
        seen.inShape[0] = shape.PtInRegion(15, 15) != FALSE;
        seen.inShape[1] = shape.PtInRegion(2, 2) != FALSE;
        seen.shown = ShownAt(hwnd, 30, 12);
        return seen;
    };
    const int none = zel::LiveGdiObjects().bitmaps;
    const Seen square = load(kNormal);
    const int one = zel::LiveGdiObjects().bitmaps;
    const Seen round = load(kRound);
    EXPECT_EQ(zel::LiveGdiObjects().bitmaps - none, 2 * (one - none)) << "both sets stay loaded";
    EXPECT_TRUE(square.inShape[0] && !square.inShape[1]);
    EXPECT_NE(square.lines, round.lines);
    for (int toggle = 0; toggle < 3; ++toggle) {
        const zel::GdiCounts before = zel::LiveGdiObjects();
        for (const Seen* expected : {&square, &round}) {
            const Seen again = load(expected == &square ? kNormal : kRound);
            EXPECT_EQ(again.lines, expected->lines) << toggle;
            EXPECT_EQ(again.inShape[0], expected->inShape[0]) << toggle;
            EXPECT_EQ(again.inShape[1], expected->inShape[1]) << toggle;
            EXPECT_EQ(again.shown, expected->shown) << toggle;
        }
        EXPECT_EQ(zel::LiveGdiObjects().bitmaps, before.bitmaps);
    }
    load(kBlank);  // a third set: all three kept
    const zel::GdiCounts kept = zel::LiveGdiObjects();
    button->DestroyWindow();
    EXPECT_LT(zel::LiveGdiObjects().bitmaps, kept.bitmaps) << "the sets kept aside go with the window";
}

TEST_F(BmpButton, LoadingBeforeTheWindowExistsShowsTheMessageAndKeepsTheSkins) {
    zel::ClearMessageBoxes();
    auto button = std::make_unique<CZELBmpButton>();
    button->LoadBitmaps(kNormal, kFocus, kDown, kDisable, module);
    ASSERT_EQ(zel::MessageBoxes().size(), 1u);
    EXPECT_EQ(zel::MessageBoxes()[0].text, L"fjie");
    ASSERT_TRUE(button->Create(L"", WS_VISIBLE | BS_OWNERDRAW, CRect(10, 10, 70, 70), &parent, kId));
    desktop.RunUntilIdle();
    CRgn region;
    region.CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(button->GetWindowRgn(region), ERROR) << "no shape";
    EXPECT_EQ(ShownAt(button->m_hWnd, 2, 2), kKey) << "the skin still paints, key colour and all";
    zel::ClearMessageBoxes();
}

TEST_F(BmpButton, UnknownIdentifiersAndModulesDoNotBreakIt) {
    auto button = Make();
    zel::ClearMessageBoxes();
    button->LoadBitmaps(999, 998, 0, 0, module);
    button->LoadBitmaps(kNormal, kFocus, kDown, kDisable, reinterpret_cast<HINSTANCE>(0x1234));
    desktop.RunUntilIdle();
    TapAt(button->m_hWnd, 30, 15);
    parent.Take();
    EXPECT_TRUE(zel::MessageBoxes().empty());
    button->LoadBitmaps(kNormal, kFocus, kDown, kDisable, module);
    parent.SetFocus();
    desktop.RunUntilIdle();
    EXPECT_EQ(ShownAt(button->m_hWnd, 15, 15), kRed) << "and it recovers with good skins";
}

TEST_F(BmpButton, GoldenStates) {
    auto button = Make();
    button->LoadBitmaps(kNormal, kFocus, kDown, kDisable, module);
    ForEachLook(*button, {15, 15},
                [&](const char* look) { EXPECT_GOLDEN("CZELBmpButton", look, CaptureWindow(button->m_hWnd, 2)); });
}

}  // namespace
