// The clock settings screen's pieces: the spinners' step buttons (a plus above or right of
// the box, a minus below or left of it) in their three states, the three colour samples
// the spinners read their scheme from, the date dash and the clock colon, and the time
// field's panel.
#include <windows.h>

#include <string>

#include "skin/pieces.h"
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr double kStepW = 45, kStepH = 40;
constexpr COLORREF kWhite = RGB(255, 255, 255);
// The digits take the dash's colour, the clock's colon is drawn in it too.
constexpr COLORREF kDigits = kAccentLight;

struct StepStyle {
    const char* state;
    COLORREF edge, top, bottom, glyph;
    double drop;
};

const StepStyle kSteps[] = {
    {"normal", kFaceEdge, kFaceTop, kFaceBottom, kText, 0},
    {"focus", kAccent, Mix(kFaceTop, kAccent, 0.15), kFaceBottom, kWhite, 0},
    {"pressed", kAccentLight, kAccent, kAccentDeep, kWhite, 1},
};

void StepFace(Painter& p, const StepStyle& s, bool plus) {
    const Box pad{2, 2, kStepW - 2, kStepH - 2};
    p.RoundRect(pad, 10, s.edge);
    const Box face = pad.Inset(1.5);
    p.Through([&](Painter& m) { m.RoundRect(face, 9, kWhite); },
              [&](Painter& fill) { fill.VerticalGradient(face, s.top, s.bottom); });
    const Pt c{kStepW / 2, kStepH / 2 + s.drop};
    p.Stroke({{c.x - 8, c.y}, {c.x + 8, c.y}}, 4, s.glyph);
    if (plus) p.Stroke({{c.x, c.y - 8}, {c.x, c.y + 8}}, 4, s.glyph);
}

void Sample(std::vector<SkinPiece>& out, const char* name, COLORREF colour) {
    out.push_back({name, 4, 4, [colour](Painter& p) { p.Fill(Box{0, 0, 4, 4}, colour); }, {}});
}

}  // namespace

void AddClockPieces(std::vector<SkinPiece>& out) {
    for (const char* kind : {"add", "def"})
        for (const StepStyle& s : kSteps) {
            const bool plus = std::string(kind) == "add";
            out.push_back({std::string("spin_") + kind + "_" + s.state, int(kStepW), int(kStepH),
                           [&s, plus](Painter& p) { StepFace(p, s, plus); }, {}});
        }
    Sample(out, "spin_back", kScreen);
    Sample(out, "spin_frame", kFaceEdge);
    Sample(out, "spin_box", kGroove);
    out.push_back({"spin_dash", 12, 4, [](Painter& p) { p.Fill(Box{0, 0, 12, 4}, kDigits); }, {}});
    out.push_back({"spin_colon", 6, 26, [](Painter& p) {
                       p.Ellipse(Box{0, 2, 6, 8}, kDigits);
                       p.Ellipse(Box{0, 18, 6, 24}, kDigits);
                   }, {}});
    // Light, so the time field's black characters read on it.
    out.push_back({"timefield_back", 64, 20, [](Painter& p) {
                       p.Fill(Box{0, 0, 64, 20}, kFaceEdge);
                       p.VerticalGradient(Box{1, 1, 63, 19}, RGB(226, 232, 240), RGB(196, 206, 220));
                   }, {}});
}

}  // namespace zel::demo
