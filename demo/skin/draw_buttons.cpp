// Buttons and the check box. Each button comes in the states its control shows: normal,
// focus (accent rim), pressed (accent face, glyph one pixel lower) and disabled (flat,
// dimmed glyph).
#include <windows.h>

#include <string>
#include <utility>

#include "skin/pieces.h"
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr COLORREF kWhite = RGB(255, 255, 255);

struct FaceStyle {
    const char* state;
    COLORREF edge, top, bottom, shine, glyph;
    double rim;   // edge width in piece pixels
    double drop;  // glyph offset of a pressed button
};

const FaceStyle kFaces[] = {
    {"normal", kFaceEdge, kFaceTop, kFaceBottom, kFaceShine, kText, 1, 0},
    {"focus", kAccent, Mix(kFaceTop, kAccent, 0.15), kFaceBottom, kFaceShine, kWhite, 2, 0},
    {"pressed", kAccentLight, kAccent, kAccentDeep, kAccentLight, kWhite, 1, 1},
    {"disabled", kDisabledEdge, kDisabledFace, kDisabledFace, kDisabledFace, kTextDisabled, 1, 0},
};

// Owns a region handle.
class Region {
public:
    explicit Region(HRGN handle) : handle_(handle) {}
    ~Region() {
        if (handle_) DeleteObject(handle_);
    }
    Region(Region&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Region(const Region&) = delete;
    Region& operator=(const Region&) = delete;
    HRGN get() const { return handle_; }

private:
    HRGN handle_;
};

// The push button's window region at 78 x 76: a rectangle whose corners are cut into three
// steps. The face follows it exactly, so no pixel of the bitmap is lost to the region and
// no background shows inside it. `inset` piece pixels are eroded from the whole outline
// (the region ANDed with itself shifted one pixel each way, per pixel of inset).
constexpr int kPushWidth = 78, kPushHeight = 76;

Region SteppedOutline(int scale, int inset) {
    static const RECT kParts[] = {{0, 4, 78, 72}, {4, 0, 74, 1},  {2, 1, 76, 2},  {1, 2, 77, 4},
                                  {4, 75, 74, 76}, {2, 74, 76, 75}, {1, 72, 77, 74}};
    Region outline(CreateRectRgn(0, 0, 0, 0));
    for (const RECT& r : kParts) {
        Region part(CreateRectRgn(r.left * scale, r.top * scale, r.right * scale, r.bottom * scale));
        CombineRgn(outline.get(), outline.get(), part.get(), RGN_OR);
    }
    const POINT shifts[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
    for (int i = 0; i < inset; ++i) {
        Region eroded(CreateRectRgn(0, 0, 0, 0));
        CombineRgn(eroded.get(), outline.get(), nullptr, RGN_COPY);
        for (const POINT& s : shifts) {
            Region shifted(CreateRectRgn(0, 0, 0, 0));
            CombineRgn(shifted.get(), outline.get(), nullptr, RGN_COPY);
            OffsetRgn(shifted.get(), s.x * scale, s.y * scale);
            CombineRgn(eroded.get(), eroded.get(), shifted.get(), RGN_AND);
        }
        CombineRgn(outline.get(), eroded.get(), nullptr, RGN_COPY);
    }
    return outline;
}

// ---- glyphs, centred on c ----

void Plus(Painter& p, Pt c, COLORREF ink) {
    p.Stroke({{c.x - 12, c.y}, {c.x + 12, c.y}}, 6, ink);
    p.Stroke({{c.x, c.y - 12}, {c.x, c.y + 12}}, 6, ink);
}

void Minus(Painter& p, Pt c, COLORREF ink) { p.Stroke({{c.x - 12, c.y}, {c.x + 12, c.y}}, 6, ink); }

// Skip to the previous or next track: a bar and two triangles; dir = -1 points left.
void Skip(Painter& p, Pt c, COLORREF ink, int dir) {
    double d = dir;
    p.Polygon({{c.x - 2 * d, c.y - 10}, {c.x - 2 * d, c.y + 10}, {c.x + 8 * d, c.y}}, ink);
    p.Polygon({{c.x - 12 * d, c.y - 10}, {c.x - 12 * d, c.y + 10}, {c.x - 2 * d, c.y}}, ink);
    double bar = c.x + 8 * d + (dir > 0 ? 0 : -3);
    p.Fill(Box{bar, c.y - 10, bar + 3, c.y + 10}, ink);
}

void Play(Painter& p, Pt c, COLORREF ink) {
    // The triangle's centroid, not its box, sits on the centre: it reads as centred.
    p.Polygon({{c.x - 7, c.y - 13}, {c.x - 7, c.y + 13}, {c.x + 14, c.y}}, ink);
}

// Two upright bars, each 7 wide and 24 high.
void Pause(Painter& p, Pt c, COLORREF ink) {
    p.Fill(Box{c.x - 10, c.y - 12, c.x - 3, c.y + 12}, ink);
    p.Fill(Box{c.x + 3, c.y - 12, c.x + 10, c.y + 12}, ink);
}

using Glyph = void (*)(Painter&, Pt, COLORREF);

// ---- push button, 78 x 76 ----

void PushFace(Painter& p, const FaceStyle& f, Glyph glyph) {
    const int s = p.scale();
    Region outline = SteppedOutline(s, 0);
    Region inner = SteppedOutline(s, static_cast<int>(f.rim));
    p.FillRegion(outline.get(), f.edge);
    p.Through([&](Painter& m) { m.FillRegion(inner.get(), kWhite); },
              [&](Painter& face) {
                  face.VerticalGradient(Box{0, 0, kPushWidth, kPushHeight}, f.top, f.bottom);
                  face.Fill(Box{0, f.rim, kPushWidth, f.rim + 1}, f.shine);
              });
    glyph(p, Pt{kPushWidth / 2.0, kPushHeight / 2.0 + f.drop}, f.glyph);
}

void AddPushButton(std::vector<SkinPiece>& out, const std::string& name, Glyph glyph) {
    for (const FaceStyle& f : kFaces)
        out.push_back({"button_" + name + "_" + f.state, kPushWidth, kPushHeight,
                       [&f, glyph](Painter& p) { PushFace(p, f, glyph); }, {}});
}

// ---- shaped round button, 72 x 72 on the key colour ----

constexpr double kRound = 72;
const Box kRoundDisc = Box{2, 2, kRound - 2, kRound - 2};

// The play triangle sits 2 pixels right of the centre, where it reads as centred.
void RoundFace(Painter& p, const FaceStyle& f, Glyph glyph, double nudge) {
    p.Ellipse(kRoundDisc, f.edge);
    Box face = kRoundDisc.Inset(f.rim + 1);
    p.Through([&](Painter& m) { m.Ellipse(face, kWhite); },
              [&](Painter& fill) { fill.VerticalGradient(face, f.top, f.bottom); });
    glyph(p, Pt{kRound / 2 + nudge, kRound / 2 + f.drop}, f.glyph);
}

void AddRoundButton(std::vector<SkinPiece>& out, const std::string& name, Glyph glyph, double nudge) {
    for (const FaceStyle& f : kFaces)
        out.push_back({"round_" + name + "_" + f.state, int(kRound), int(kRound),
                       [&f, glyph, nudge](Painter& p) { RoundFace(p, f, glyph, nudge); },
                       [](Painter& m) { m.Ellipse(kRoundDisc, kWhite); }});
}

// ---- text button, 180 x 60, stretched by its control to any size ----

constexpr double kTextW = 180, kTextH = 60;

void TextFace(Painter& p, const FaceStyle& f) {
    const Box pill{1, 1, kTextW - 1, kTextH - 1};
    p.RoundRect(pill, 14, f.edge);
    Box face = pill.Inset(f.rim);
    p.Through([&](Painter& m) { m.RoundRect(face, 14 - f.rim, kWhite); },
              [&](Painter& fill) {
                  fill.VerticalGradient(face, f.top, f.bottom);
                  fill.Fill(Box{0, face.top, kTextW, face.top + 1}, f.shine);
              });
}

// ---- check box: 40 x 40 boxes and a background stretched under the caption ----

constexpr double kBox = 40;
const Box kBoxFrame = Box{5, 5, kBox - 5, kBox - 5};

void UncheckedBox(Painter& p) {
    p.RoundRect(kBoxFrame, 7, kFaceEdge);
    p.RoundRect(kBoxFrame.Inset(2), 5, kGroove);
}

void CheckedBox(Painter& p) {
    p.RoundRect(kBoxFrame, 7, kAccentLight);
    p.Through([](Painter& m) { m.RoundRect(kBoxFrame.Inset(1), 6, kWhite); },
              [](Painter& fill) { fill.VerticalGradient(kBoxFrame, kAccent, kAccentDeep); });
    p.Stroke({{12.5, 20.5}, {18, 26.5}, {28, 14}}, 4, kWhite);
}

}  // namespace

void AddPushButtonStates(std::vector<SkinPiece>& out, const std::string& name, void (*glyph)(Painter&, Pt, COLORREF)) {
    AddPushButton(out, name, glyph);
}

void AddButtonPieces(std::vector<SkinPiece>& out) {
    AddPushButton(out, "plus", Plus);
    AddPushButton(out, "minus", Minus);
    AddPushButton(out, "prev", [](Painter& p, Pt c, COLORREF ink) { Skip(p, c, ink, -1); });
    AddPushButton(out, "next", [](Painter& p, Pt c, COLORREF ink) { Skip(p, c, ink, +1); });

    AddRoundButton(out, "play", Play, 2);
    AddRoundButton(out, "pause", Pause, 0);

    // The text button has no disabled skin: its control draws only three states.
    for (const FaceStyle& f : kFaces)
        if (std::string(f.state) != "disabled")
            out.push_back({std::string("textbutton_") + f.state, int(kTextW), int(kTextH),
                           [&f](Painter& p) { TextFace(p, f); }, {}});

    out.push_back({"check_unchecked", int(kBox), int(kBox), UncheckedBox, {}});
    out.push_back({"check_checked", int(kBox), int(kBox), CheckedBox, {}});
    out.push_back({"check_back", 16, 48, [](Painter&) {}, {}});  // the plain screen colour
}

}  // namespace zel::demo
