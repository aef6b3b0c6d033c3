// The whole-screen background: title bar with an accent rule, a plain body with faint
// arcs in its lower right corner, and the status strip the host writes notifications in.
// Controls that show the background under themselves (background labels, the file list)
// look transparent over it; the arcs make that visible.
#include "skin/pieces.h"
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr double kW = kScreenWidth, kH = kScreenHeight;

// Rings centred on the body's lower right corner, largest first, each a disc of the arc
// colour with a disc of the body colour one pixel smaller inside it.
void DrawArcs(Painter& p) {
    const double cx = kW, cy = kStatusTop;
    for (double r : {372.0, 300.0, 232.0, 170.0, 116.0}) {
        p.Ellipse(Box::Centered(cx, cy, 2 * r + 3, 2 * r + 3), kScreenArc);
        p.Ellipse(Box::Centered(cx, cy, 2 * r, 2 * r), kScreen);
    }
}

void DrawTitleBar(Painter& p) {
    p.VerticalGradient(Box{0, 0, kW, kTitleBarHeight}, kBarTop, kBarBottom);
    // The accent rule glows in the middle and fades into the hairline colour at the ends.
    p.HorizontalGradient(Box{0, kTitleBarHeight, kW / 2, kTitleBarHeight + 1}, kRule, kAccent);
    p.HorizontalGradient(Box{kW / 2, kTitleBarHeight, kW, kTitleBarHeight + 1}, kAccent, kRule);
    p.Fill(Box{0, kTitleBarHeight + 1, kW, kTitleBarHeight + 2}, kGroove);
    // Signal strength at the right end of the bar: three of four bars lit.
    for (int i = 0; i < 4; ++i) {
        double h = 6 + 5 * i, x = 752 + 8 * i;
        p.RoundRect(Box{x, 38 - h, x + 5, 38}, 1.5, i < 3 ? kText : kTextDisabled);
    }
}

void DrawStatusStrip(Painter& p) {
    p.Fill(Box{0, kStatusTop, kW, kH}, kStatus);
    p.Fill(Box{0, kStatusTop, kW, kStatusTop + 1}, kRule);
}

}  // namespace

void AddScreenPieces(std::vector<SkinPiece>& out) {
    out.push_back({"background", kScreenWidth, kScreenHeight, [](Painter& p) {
                       DrawArcs(p);
                       DrawTitleBar(p);
                       DrawStatusStrip(p);
                   }, {}});
}

}  // namespace zel::demo
