// The special lists' pieces. The lists draw black text, so they are light panels on the
// dark screen: a frame of four corners (the lists stretch their edges and centre), rows as
// three-piece fields (ordinary, current, marked, and a rose set for missed calls), the
// device list's link icons, the file list's current-row bar and its whole-screen paper,
// and the table's headings, normal and pressed.
#include "skin/pieces.h"
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kPaper = RGB(226, 231, 238), kPaperArc = RGB(212, 219, 229), kPaperEdge = RGB(150, 160, 176);
constexpr COLORREF kRowTop = RGB(250, 251, 253), kRowBottom = RGB(222, 228, 236);
constexpr COLORREF kRoseTop = RGB(255, 236, 236), kRoseBottom = RGB(244, 206, 210);
constexpr COLORREF kMarkTop = RGB(255, 246, 214), kMarkBottom = RGB(246, 226, 160);
constexpr double kCorner = 16, kRowH = 40, kCapW = 12, kMiddleW = 8, kHeadH = 30;

// The panel's corner seen through a 16 x 16 window at (dx, dy) of a 40 x 40 panel.
void Corner(Painter& p, double dx, double dy) {
    const Box panel{-dx, -dy, 40 - dx, 40 - dy};
    p.RoundRect(panel, 12, kPaperEdge);
    p.RoundRect(panel.Inset(1), 11, kPaper);
}

// One long rounded field seen through a window of the piece's width: `offset` is where
// the piece starts along the field.
void Field(Painter& p, double offset, double width, double height, COLORREF top, COLORREF bottom, COLORREF edge) {
    const Box field{1 - offset, 2, width - 1 - offset, height - 2};
    p.Fill(Box{0, 0, width, height}, kPaper);
    p.RoundRect(field, 9, edge);
    const Box face = field.Inset(1);
    p.Through([&](Painter& m) { m.RoundRect(face, 8, kWhite); },
              [&](Painter& fill) { fill.VerticalGradient(face, top, bottom); });
}

void AddField(std::vector<SkinPiece>& out, const std::string& name, double height, COLORREF top, COLORREF bottom,
              COLORREF edge) {
    const double width = 2 * kCapW + kMiddleW;
    const int h = int(height);
    out.push_back({name + "_left", int(kCapW), h,
                   [=](Painter& p) { Field(p, 0, width, height, top, bottom, edge); }, {}});
    out.push_back({name + "_middle", int(kMiddleW), h,
                   [=](Painter& p) { Field(p, kCapW, width, height, top, bottom, edge); }, {}});
    out.push_back({name + "_right", int(kCapW), h,
                   [=](Painter& p) { Field(p, kCapW + kMiddleW, width, height, top, bottom, edge); }, {}});
}

// Two chain links: the device list's mark for the connected device.
void Link(Painter& p, COLORREF back, COLORREF ink) {
    p.Fill(Box{0, 0, 24, 24}, back);
    p.Stroke({{5, 15}, {5, 11}, {9, 7}, {13, 7}, {13, 11}}, 2.5, ink);
    p.Stroke({{19, 9}, {19, 13}, {15, 17}, {11, 17}, {11, 13}}, 2.5, ink);
}

void Paper(Painter& p) {
    p.Fill(Box{0, 0, double(kScreenWidth), double(kScreenHeight)}, kPaper);
    const double cx = kScreenWidth, cy = kStatusTop;
    for (double r : {372.0, 300.0, 232.0, 170.0, 116.0}) {
        p.Ellipse(Box::Centered(cx, cy, 2 * r + 3, 2 * r + 3), kPaperArc);
        p.Ellipse(Box::Centered(cx, cy, 2 * r, 2 * r), kPaper);
    }
}

}  // namespace

void AddSpecialListPieces(std::vector<SkinPiece>& out) {
    const int c = int(kCorner);
    out.push_back({"list_frame_tl", c, c, [](Painter& p) { Corner(p, 0, 0); }, {}});
    out.push_back({"list_frame_bl", c, c, [](Painter& p) { Corner(p, 0, 24); }, {}});
    out.push_back({"list_frame_tr", c, c, [](Painter& p) { Corner(p, 24, 0); }, {}});
    out.push_back({"list_frame_br", c, c, [](Painter& p) { Corner(p, 24, 24); }, {}});
    AddField(out, "list_row", kRowH, kRowTop, kRowBottom, RGB(196, 204, 216));
    AddField(out, "list_current", kRowH, kAccentLight, kAccent, kAccentDeep);
    AddField(out, "list_missed", kRowH, kRoseTop, kRoseBottom, RGB(214, 160, 168));
    AddField(out, "list_marked", kRowH, kMarkTop, kMarkBottom, RGB(214, 190, 120));
    out.push_back({"list_link", 24, 24, [](Painter& p) { Link(p, kRowBottom, kAccentDeep); }, {}});
    out.push_back({"list_link_current", 24, 24, [](Painter& p) { Link(p, kAccent, kWhite); }, {}});
    out.push_back({"file_row_current", 40, 34, [](Painter& p) {
                       p.Fill(Box{0, 0, 40, 34}, kPaper);
                       p.VerticalGradient(Box{0, 2, 40, 32}, kAccentLight, kAccent);
                   }, {}});
    out.push_back({"file_paper", kScreenWidth, kScreenHeight, Paper, {}});
    AddField(out, "table_head", kHeadH, RGB(240, 243, 248), RGB(198, 206, 218), RGB(160, 170, 186));
    AddField(out, "table_head_pressed", kHeadH, kAccentLight, kAccent, kAccentDeep);
}

}  // namespace zel::demo
