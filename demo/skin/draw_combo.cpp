// Combo box pieces, in its LoadSkin order: the box's left cap, middle and right cap (48
// high; the middle is stretched), the arrow key normal and pressed (the pressed key is
// shown while the list is open), and a list row normal and selected (40 high, stretched
// across the list). The list's scroll bar is the scroll bar's own skin.
#include "skin/pieces.h"
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr double kBoxH = 48, kCapW = 16, kMiddleW = 8, kArrowW = 48, kRowH = 40, kRowW = 16;
constexpr double kRadius = 10;

// One long rounded field seen through a window of the piece's width: `offset` is where the
// piece starts along the field.
void Field(Painter& p, double offset, double fieldWidth) {
    const Box field{2 - offset, 2, fieldWidth - 2 - offset, kBoxH - 2};
    p.RoundRect(field, kRadius, kFaceEdge);
    const Box face = field.Inset(1);
    p.Through([&](Painter& m) { m.RoundRect(face, kRadius - 1, kWhite); },
              [&](Painter& fill) { fill.VerticalGradient(face, kFaceBottom, kFaceTop); });
}

void ArrowKey(Painter& p, bool pressed) {
    const Box key{4, 4, kArrowW - 4, kBoxH - 4};
    p.RoundRect(key, 9, pressed ? kAccentLight : kFaceEdge);
    const Box face = key.Inset(1);
    p.Through([&](Painter& m) { m.RoundRect(face, 8, kWhite); },
              [&](Painter& fill) {
                  if (pressed)
                      fill.VerticalGradient(face, kAccent, kAccentDeep);
                  else
                      fill.VerticalGradient(face, kFaceTop, kFaceBottom);
              });
    // Points down closed, up while the list is open.
    const double tip = pressed ? 19 : 29, base = pressed ? 28 : 20;
    p.Stroke({{16, base}, {24, tip}, {32, base}}, 4, pressed ? kWhite : kText);
}

void Row(Painter& p, bool selected) {
    const Box row{0, 0, kRowW, kRowH};
    if (selected)
        p.VerticalGradient(row, kAccent, kAccentDeep);
    else
        p.Fill(row, RGB(28, 33, 42));
    p.Fill(Box{0, kRowH - 1, kRowW, kRowH}, kRule);
}

}  // namespace

void AddComboPieces(std::vector<SkinPiece>& out) {
    const int h = int(kBoxH);
    const double field = 2 * kCapW + kMiddleW;
    out.push_back({"combo_left", int(kCapW), h, [field](Painter& p) { Field(p, 0, field); }, {}});
    out.push_back({"combo_middle", int(kMiddleW), h, [field](Painter& p) { Field(p, kCapW, field); }, {}});
    out.push_back({"combo_right", int(kCapW), h, [field](Painter& p) { Field(p, kCapW + kMiddleW, field); }, {}});
    out.push_back({"combo_arrow", int(kArrowW), h, [](Painter& p) { ArrowKey(p, false); }, {}});
    out.push_back({"combo_arrow_pressed", int(kArrowW), h, [](Painter& p) { ArrowKey(p, true); }, {}});
    out.push_back({"combo_row", int(kRowW), int(kRowH), [](Painter& p) { Row(p, false); }, {}});
    out.push_back({"combo_row_selected", int(kRowW), int(kRowH), [](Painter& p) { Row(p, true); }, {}});
}

}  // namespace zel::demo
