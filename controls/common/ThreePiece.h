// The three-piece frame: a cap, a middle that stretches or tiles, and a cap, laid along
// one axis. Labels draw their frame this way horizontally; the scroll bar draws its
// arrows and track this way vertically, the slider its caps and channel horizontally.
#pragma once

#include <windows.h>

#include "OffscreenCanvas.h"

namespace zelctl {

enum class Axis { Horizontal, Vertical };

enum class CapFit {
    Natural,  // copied at the cap bitmap's own size along the axis and the area's across it, unstretched
    Stretch,  // the whole cap stretched to its own length along the axis and the area's extent across
};

enum class MiddleFit {
    Stretch,  // the whole middle bitmap stretched between the caps
    Tile,     // repeated between the caps with a pattern brush (aligned to the canvas origin)
};

struct ThreePieceSkin {
    HBITMAP first = nullptr;   // left or top cap
    HBITMAP middle = nullptr;
    HBITMAP last = nullptr;    // right or bottom cap
};

struct ThreePieceStyle {
    Axis axis = Axis::Horizontal;
    CapFit caps = CapFit::Natural;
    MiddleFit middle = MiddleFit::Stretch;
    // >= 0: both caps are this long along the axis, whatever their bitmaps' lengths (a bar
    // lays out its bottom arrow as tall as its top one). -1: each cap its bitmap's length.
    int capLength = -1;
};

// Paints `skin` into `area` of the canvas and returns the middle's rectangle (the area
// less the caps' lengths; a missing cap is 0 long unless `capLength` says otherwise). Missing pieces are not drawn.
RECT PaintThreePiece(OffscreenCanvas& canvas, const RECT& area, const ThreePieceSkin& skin, ThreePieceStyle style);

}  // namespace zelctl
