// Scroll bar, slider and progress pieces.
//
// Scroll bar (40 wide, in its LoadSkin order): up arrow, up arrow pressed, track, thumb,
// thumb pressed, down arrow, down arrow pressed. The track is stretched vertically, so it
// is drawn as columns; the thumb is blitted opaquely over the track and carries the
// track's groove in its corners.
//
// Slider (48 high): caps, the two channel ends, the empty channel (stretched
// horizontally), the filled channel (stretched, drawn centred at its own height) and three
// thumbs blitted with the key colour transparent. The groove sits in rows 20..27 of every
// channel piece, the filled channel is exactly those 8 rows.
//
// Progress (600 x 16): a background stretched over the control and a fill of the same size
// of which the control copies the left part.
#include "skin/pieces.h"
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr COLORREF kWhite = RGB(255, 255, 255);

// ---- scroll bar ----

constexpr double kBarW = 40;
constexpr double kGrooveL = 16, kGrooveR = 24;  // groove columns of the 40-wide track

void TrackColumns(Painter& p, double offsetX, double height) {
    p.Fill(Box{kGrooveL - 1 - offsetX, 0, kGrooveR + 1 - offsetX, height}, kGrooveEdge);
    p.Fill(Box{kGrooveL - offsetX, 0, kGrooveR - offsetX, height}, kGroove);
}

// A rounded key with a chevron; up = true points up.
void ArrowKey(Painter& p, bool up, bool pressed) {
    const Box key{2, 2, kBarW - 2, kBarW - 2};
    p.RoundRect(key, 9, pressed ? kAccentLight : kFaceEdge);
    Box face = key.Inset(1);
    p.Through([&](Painter& m) { m.RoundRect(face, 8, kWhite); },
              [&](Painter& fill) {
                  if (pressed)
                      fill.VerticalGradient(face, kAccent, kAccentDeep);
                  else
                      fill.VerticalGradient(face, kFaceTop, kFaceBottom);
              });
    double tip = up ? 15 : 25, base = up ? 24 : 16, drop = pressed ? 1 : 0;
    p.Stroke({{12, base + drop}, {20, tip + drop}, {28, base + drop}}, 4, pressed ? kWhite : kText);
}

constexpr double kThumbW = 24, kThumbH = 56;

void ScrollThumb(Painter& p, bool pressed) {
    TrackColumns(p, (kBarW - kThumbW) / 2, kThumbH);
    const Box pill{1, 1, kThumbW - 1, kThumbH - 1};
    p.RoundRect(pill, 11, pressed ? kAccentLight : kFaceEdge);
    Box face = pill.Inset(1);
    p.Through([&](Painter& m) { m.RoundRect(face, 10, kWhite); },
              [&](Painter& fill) {
                  // Lit from the left: a cylinder rather than a slab.
                  if (pressed)
                      fill.HorizontalGradient(face, kAccentLight, kAccentDeep);
                  else
                      fill.HorizontalGradient(face, kFaceShine, kFaceBottom);
              });
    for (double y : {23.0, 28.0, 33.0}) p.Fill(Box{7, y - 0.75, kThumbW - 7, y + 0.75}, pressed ? kWhite : kTextDim);
}

// ---- slider ----

constexpr double kSliderH = 48;
constexpr double kGrooveTop = 20, kGrooveBottom = 28;
constexpr double kEndW = 10;

void EmptyGroove(Painter& p, const Box& groove, double radius) {
    p.RoundRect(groove, radius, kGrooveEdge);
    p.RoundRect(groove.Inset(1), radius - 1, kGroove);
}

void FilledGroove(Painter& p, const Box& groove, double radius) {
    p.Through([&](Painter& m) { m.RoundRect(groove, radius, kWhite); },
              [&](Painter& fill) { fill.VerticalGradient(groove, kAccentLight, kAccentDeep); });
}

// The filled side starts at the left end, so the left end piece is always accent blue
// and the right end always empty.
void ChannelLeft(Painter& p) { FilledGroove(p, Box{2, kGrooveTop, 2 * kEndW, kGrooveBottom}, 4); }
void ChannelRight(Painter& p) { EmptyGroove(p, Box{-kEndW, kGrooveTop, kEndW - 2, kGrooveBottom}, 4); }
void Channel(Painter& p) { EmptyGroove(p, Box{-4, kGrooveTop, 12, kGrooveBottom}, 0); }
void ChannelFill(Painter& p) {
    p.VerticalGradient(Box{0, 0, 8, kGrooveBottom - kGrooveTop}, kAccentLight, kAccentDeep);
}

constexpr double kKnobW = 36;
const Box kKnob = Box::Centered(kKnobW / 2, kSliderH / 2, 30, 30);

struct KnobStyle {
    const char* state;
    COLORREF ring, top, bottom, dot;
};
const KnobStyle kKnobs[] = {
    {"", kAccent, kFaceShine, kFaceBottom, kAccent},                      // state 0
    {"_released", kAccent, kFaceShine, kFaceBottom, kAccentLight},         // state 2, after a drag
    {"_pressed", kAccentLight, kAccent, kAccentDeep, kWhite},              // state 1
};

void Knob(Painter& p, const KnobStyle& k) {
    p.Ellipse(kKnob, k.ring);
    Box face = kKnob.Inset(2.5);
    p.Through([&](Painter& m) { m.Ellipse(face, kWhite); },
              [&](Painter& fill) { fill.VerticalGradient(face, k.top, k.bottom); });
    p.Ellipse(Box::Centered(kKnob.CenterX(), kKnob.CenterY(), 10, 10), k.dot);
}

// ---- progress ----

constexpr double kProgressW = 600, kProgressH = 16;

}  // namespace

void AddBarPieces(std::vector<SkinPiece>& out) {
    const int bar = int(kBarW);
    out.push_back({"scroll_up", bar, bar, [](Painter& p) { ArrowKey(p, true, false); }, {}});
    out.push_back({"scroll_up_pressed", bar, bar, [](Painter& p) { ArrowKey(p, true, true); }, {}});
    out.push_back({"scroll_track", bar, 32, [](Painter& p) { TrackColumns(p, 0, 32); }, {}});
    out.push_back({"scroll_thumb", int(kThumbW), int(kThumbH), [](Painter& p) { ScrollThumb(p, false); }, {}});
    out.push_back({"scroll_thumb_pressed", int(kThumbW), int(kThumbH), [](Painter& p) { ScrollThumb(p, true); }, {}});
    out.push_back({"scroll_down", bar, bar, [](Painter& p) { ArrowKey(p, false, false); }, {}});
    out.push_back({"scroll_down_pressed", bar, bar, [](Painter& p) { ArrowKey(p, false, true); }, {}});

    const int h = int(kSliderH);
    out.push_back({"slider_left_cap", 12, h, [](Painter&) {}, {}});
    out.push_back({"slider_right_cap", 12, h, [](Painter&) {}, {}});
    for (const KnobStyle& k : kKnobs)
        out.push_back({std::string("slider_thumb") + k.state, int(kKnobW), h, [&k](Painter& p) { Knob(p, k); },
                       [](Painter& m) { m.Ellipse(kKnob, kWhite); }});
    out.push_back({"slider_channel_fill", 8, int(kGrooveBottom - kGrooveTop), ChannelFill, {}});
    out.push_back({"slider_channel", 8, h, Channel, {}});
    out.push_back({"slider_channel_left", int(kEndW), h, ChannelLeft, {}});
    out.push_back({"slider_channel_right", int(kEndW), h, ChannelRight, {}});

    const Box track{0, 0, kProgressW, kProgressH};
    out.push_back({"progress_back", int(kProgressW), int(kProgressH), [track](Painter& p) {
                       EmptyGroove(p, track.Inset(0, 3), 5);
                   }, {}});
    out.push_back({"progress_fill", int(kProgressW), int(kProgressH), [track](Painter& p) {
                       EmptyGroove(p, track.Inset(0, 3), 5);
                       FilledGroove(p, track.Inset(0, 3), 5);
                   }, {}});
}

}  // namespace zel::demo
