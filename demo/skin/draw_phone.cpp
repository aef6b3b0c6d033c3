// The telephone screen's pieces.
//
// Dial keys: push buttons (78 x 76, four states) with stroke digits, "*" and "#".
// Number display (80 high): caps and a middle that tiles sideways, so the glass is one
// vertical gradient; two 34 x 20 indicators drawn on the glass's bottom rows.
// Label (40 high): the same three pieces as a raised pill.
// Portrait (96 x 96): a disc on the key colour, for the picture whose window takes its shape.
#include "skin/pieces.h"
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kGlassTop = RGB(178, 204, 166), kGlassBottom = RGB(136, 166, 126);
constexpr COLORREF kBezel = RGB(58, 66, 78), kBezelEdge = RGB(92, 102, 118);
constexpr COLORREF kInk = RGB(24, 40, 28);
constexpr double kLcdH = 80, kCapW = 12, kIndW = 34, kIndH = 20;

// ---- seven-segment digits, 18 x 30 around c ----

// Segments a (top), b, c (right, top to bottom), d (bottom), e, f (left, bottom to top), g.
constexpr unsigned char kSegments[10] = {0x3F, 0x06, 0x5B, 0x4F, 0x66, 0x6D, 0x7D, 0x07, 0x7F, 0x6F};

void Digit(Painter& p, Pt c, COLORREF ink, int digit) {
    const double l = c.x - 9, r = c.x + 9, t = c.y - 15, m = c.y, b = c.y + 15;
    const Pt ends[7][2] = {{{l, t}, {r, t}}, {{r, t}, {r, m}}, {{r, m}, {r, b}}, {{l, b}, {r, b}},
                           {{l, m}, {l, b}}, {{l, t}, {l, m}}, {{l, m}, {r, m}}};
    for (int s = 0; s < 7; ++s)
        if (kSegments[digit] >> s & 1) p.Stroke({ends[s][0], ends[s][1]}, 4, ink);
}

template <int N>
void DigitGlyph(Painter& p, Pt c, COLORREF ink) {
    Digit(p, c, ink, N);
}

void Star(Painter& p, Pt c, COLORREF ink) {
    p.Stroke({{c.x, c.y - 12}, {c.x, c.y + 12}}, 4, ink);
    p.Stroke({{c.x - 10, c.y - 6}, {c.x + 10, c.y + 6}}, 4, ink);
    p.Stroke({{c.x - 10, c.y + 6}, {c.x + 10, c.y - 6}}, 4, ink);
}

void Hash(Painter& p, Pt c, COLORREF ink) {
    p.Stroke({{c.x - 12, c.y - 5}, {c.x + 12, c.y - 5}}, 3, ink);
    p.Stroke({{c.x - 12, c.y + 5}, {c.x + 12, c.y + 5}}, 3, ink);
    p.Stroke({{c.x - 3, c.y - 13}, {c.x - 6, c.y + 13}}, 3, ink);
    p.Stroke({{c.x + 6, c.y - 13}, {c.x + 3, c.y + 13}}, 3, ink);
}

// ---- number display ----

void Glass(Painter& p, double width) { p.VerticalGradient(Box{0, 5, width, kLcdH - 5}, kGlassTop, kGlassBottom); }

// The bezel rows above and below the glass, then the glass: the middle is the same in
// every column, so it tiles without seams.
void LcdMiddle(Painter& p) {
    p.Fill(Box{0, 0, 8, kLcdH}, kBezel);
    p.Fill(Box{0, 0, 8, 1}, kBezelEdge);
    p.Fill(Box{0, kLcdH - 1, 8, kLcdH}, kBezelEdge);
    Glass(p, 8);
}

// A rounded bezel end; mirrored for the right cap.
void LcdCap(Painter& p, bool right) {
    const Box outer = right ? Box{-14, 0, kCapW, kLcdH} : Box{0, 0, kCapW + 14, kLcdH};
    p.RoundRect(outer, 10, kBezelEdge);
    p.RoundRect(outer.Inset(1), 9, kBezel);
    p.Through([&](Painter& m) { m.RoundRect(outer.Inset(5), 5, kWhite); }, [](Painter& g) { Glass(g, kCapW); });
}

// The glass's colour at an indicator's rows: it sits on the bottom of the display.
void IndicatorGlass(Painter& p) {
    for (int y = 0; y < int(kIndH); ++y) {
        const double row = kLcdH - kIndH + y;
        COLORREF c = row >= kLcdH - 5 ? (row >= kLcdH - 1 ? kBezelEdge : kBezel)
                                       : Mix(kGlassTop, kGlassBottom, (row + 0.5 - 5) / (kLcdH - 10));
        p.Fill(Box{0, double(y), kIndW, y + 1.0}, c);
    }
}

void Signal(Painter& p) {
    IndicatorGlass(p);
    for (int i = 0; i < 4; ++i) {
        const double h = 3 + 2.5 * i, x = 6 + 5 * i;
        p.Fill(Box{x, 14 - h, x + 3, 14}, i < 3 ? kInk : Mix(kInk, kGlassBottom, 0.7));
    }
}

void Battery(Painter& p) {
    IndicatorGlass(p);
    p.Fill(Box{4, 5, 26, 14}, kInk);
    p.Fill(Box{26, 7.5, 28, 11.5}, kInk);
    p.Fill(Box{5, 6, 25, 13}, kGlassBottom);
    p.Fill(Box{6, 7, 19, 12}, kInk);
}

// ---- label pill ----

constexpr double kPillH = 40, kPillCap = 14;

void PillFace(Painter& p, const Box& box) {
    p.VerticalGradient(box, kFaceTop, kFaceBottom);
    p.Fill(Box{box.left, 1, box.right, 2}, kFaceShine);
}

void PillMiddle(Painter& p) {
    p.Fill(Box{0, 0, 8, 1}, kFaceEdge);
    p.Fill(Box{0, kPillH - 1, 8, kPillH}, kFaceEdge);
    PillFace(p, Box{0, 1, 8, kPillH - 1});
}

void PillCap(Painter& p, bool right) {
    const Box outer = right ? Box{-kPillH, 0, kPillCap, kPillH} : Box{0, 0, kPillCap + kPillH, kPillH};
    p.RoundRect(outer, 18, kFaceEdge);
    p.Through([&](Painter& m) { m.RoundRect(outer.Inset(1), 17, kWhite); },
              [](Painter& f) { PillFace(f, Box{0, 1, kPillCap, kPillH - 1}); });
}

// ---- portrait ----

constexpr double kPortrait = 96;
const Box kPortraitDisc{2, 2, kPortrait - 2, kPortrait - 2};

void Portrait(Painter& p) {
    p.Ellipse(kPortraitDisc, kAccentLight);
    p.Through([](Painter& m) { m.Ellipse(kPortraitDisc.Inset(3), kWhite); },
              [](Painter& f) {
                  f.VerticalGradient(kPortraitDisc, kAccent, kAccentDeep);
                  f.Ellipse(Box::Centered(48, 40, 32, 34), kText);      // head
                  f.Ellipse(Box{18, 62, 78, 120}, kText);                // shoulders
              });
}

}  // namespace

void AddPhonePieces(std::vector<SkinPiece>& out) {
    using Glyph = void (*)(Painter&, Pt, COLORREF);
    const Glyph digits[10] = {DigitGlyph<0>, DigitGlyph<1>, DigitGlyph<2>, DigitGlyph<3>, DigitGlyph<4>,
                              DigitGlyph<5>, DigitGlyph<6>, DigitGlyph<7>, DigitGlyph<8>, DigitGlyph<9>};
    for (int d = 0; d < 10; ++d) AddPushButtonStates(out, "key" + std::to_string(d), digits[d]);
    AddPushButtonStates(out, "keystar", Star);
    AddPushButtonStates(out, "keyhash", Hash);

    out.push_back({"lcd_left", int(kCapW), int(kLcdH), [](Painter& p) { LcdCap(p, false); }, {}});
    out.push_back({"lcd_middle", 8, int(kLcdH), LcdMiddle, {}});
    out.push_back({"lcd_right", int(kCapW), int(kLcdH), [](Painter& p) { LcdCap(p, true); }, {}});
    out.push_back({"lcd_signal", int(kIndW), int(kIndH), Signal, {}});
    out.push_back({"lcd_battery", int(kIndW), int(kIndH), Battery, {}});

    out.push_back({"label_left", int(kPillCap), int(kPillH), [](Painter& p) { PillCap(p, false); }, {}});
    out.push_back({"label_middle", 8, int(kPillH), PillMiddle, {}});
    out.push_back({"label_right", int(kPillCap), int(kPillH), [](Painter& p) { PillCap(p, true); }, {}});

    out.push_back({"portrait", int(kPortrait), int(kPortrait), Portrait,
                   [](Painter& m) { m.Ellipse(kPortraitDisc, kWhite); }});
}

}  // namespace zel::demo
