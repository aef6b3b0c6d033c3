// Image list pieces (CZELList).
//
// Rows are three pieces -- left cap, middle (stretched across), right cap -- in a normal
// and a selected look, 34 pixels high, with a 2-pixel separator. The faces are square so
// they sit on any panel colour. The "list3" rows (44 high) have a wide right cap that
// carries the time column of the four-text style. Marks and number badges are drawn
// opaquely on the row face. The panel (styles 2 and 3) is one column of art that the list
// stretches to its width; its last column is the list area's colour.
#include "skin/pieces.h"
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr int kRowH = 34, kRow3H = 44;
constexpr int kCapW = 12, kMiddleW = 8, kTimeCapW = 44;
constexpr COLORREF kRowTop = RGB(52, 60, 72), kRowBottom = RGB(38, 44, 54);
constexpr COLORREF kAltTop = RGB(28, 86, 84), kAltBottom = RGB(18, 62, 62);
constexpr COLORREF kPanelColumn = RGB(22, 27, 35);
constexpr COLORREF kMarkDot = RGB(80, 220, 120);

struct RowLook {
    COLORREF top, bottom, edge;
};
constexpr RowLook kNormal{kRowTop, kRowBottom, kFaceEdge};
constexpr RowLook kSelected{kAccent, kAccentDeep, kAccentLight};
constexpr RowLook kAlternative{kAltTop, kAltBottom, RGB(40, 120, 116)};

// One piece of a row: `edge` marks the sides that carry the outline (left cap: left,
// right cap: right).
void RowPiece(Painter& p, double w, double h, const RowLook& look, bool leftEdge, bool rightEdge) {
    p.VerticalGradient(Box{0, 0, w, h}, look.top, look.bottom);
    p.Fill(Box{0, 0, w, 1}, look.edge);
    p.Fill(Box{0, h - 1, w, h}, look.edge);
    if (leftEdge) p.Fill(Box{0, 0, 3, h}, look.edge);
    if (rightEdge) p.Fill(Box{w - 1, 0, w, h}, look.edge);
}

void AddRow(std::vector<SkinPiece>& out, const std::string& prefix, const std::string& suffix, int h, int rightW,
            const RowLook& look) {
    out.push_back({prefix + "_left" + suffix, kCapW, h, [h, look](Painter& p) { RowPiece(p, kCapW, h, look, true, false); },
                   {}});
    out.push_back({prefix + "_middle" + suffix, kMiddleW, h,
                   [h, look](Painter& p) { RowPiece(p, kMiddleW, h, look, false, false); }, {}});
    out.push_back({prefix + "_right" + suffix, rightW, h, [h, rightW, look](Painter& p) {
                       RowPiece(p, rightW, h, look, false, true);
                   }, {}});
}

void Mark(Painter& p, const RowLook& look) {
    p.Fill(Box{0, 0, 16, 16}, look.top == kAccent ? RGB(25, 115, 216) : RGB(45, 52, 63));
    p.Ellipse(Box{3, 3, 13, 13}, look.top == kAccent ? RGB(255, 255, 255) : kMarkDot);
}

void Badge(Painter& p, bool selected) {
    p.Fill(Box{0, 0, 30, 26}, selected ? RGB(25, 115, 216) : RGB(45, 52, 63));
    p.RoundRect(Box{1, 2, 29, 24}, 6, selected ? kAccentLight : kFaceEdge);
    p.RoundRect(Box{2, 3, 28, 23}, 5, selected ? kAccentDeep : kGroove);
}

}  // namespace

void AddListPieces(std::vector<SkinPiece>& out) {
    AddRow(out, "list", "", kRowH, kCapW, kNormal);
    out.push_back({"list_separator", kMiddleW, 2, [](Painter& p) { p.Fill(Box{0, 0, kMiddleW, 2}, kRule); }, {}});
    AddRow(out, "list", "_sel", kRowH, kCapW, kSelected);
    out.push_back({"list_mark", 16, 16, [](Painter& p) { Mark(p, kNormal); }, {}});
    out.push_back({"list_mark_sel", 16, 16, [](Painter& p) { Mark(p, kSelected); }, {}});
    AddRow(out, "list_alt", "", kRowH, kCapW, kAlternative);
    AddRow(out, "list3", "", kRow3H, kTimeCapW, kNormal);
    AddRow(out, "list3", "_sel", kRow3H, kTimeCapW, kSelected);
    out.push_back({"list_badge", 30, 26, [](Painter& p) { Badge(p, false); }, {}});
    out.push_back({"list_badge_sel", 30, 26, [](Painter& p) { Badge(p, true); }, {}});
    // The panel: an accent stripe on the left, then the list area's colour.
    out.push_back({"list_panel", 24, 160, [](Painter& p) {
                       p.Fill(Box{0, 0, 24, 160}, kPanelColumn);
                       p.Fill(Box{0, 0, 4, 160}, kAccent);
                   }, {}});
    out.push_back({"list_back", 8, 8, [](Painter& p) { p.Fill(Box{0, 0, 8, 8}, kScreenArc); }, {}});
}

}  // namespace zel::demo
