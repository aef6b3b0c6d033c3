#include "ThreePiece.h"

namespace zelctl {

namespace {

void PaintCap(OffscreenCanvas& canvas, HBITMAP cap, const RECT& cell, CapFit fit) {
    const int w = cell.right - cell.left, h = cell.bottom - cell.top;
    if (fit == CapFit::Stretch)
        canvas.Stretch(cap, cell.left, cell.top, w, h);
    else
        canvas.Blit(cap, cell.left, cell.top, w, h);
}

}  // namespace

RECT PaintThreePiece(OffscreenCanvas& canvas, const RECT& area, const ThreePieceSkin& skin, ThreePieceStyle style) {
    const bool horizontal = style.axis == Axis::Horizontal;
    const SIZE firstSize = BitmapSize(skin.first), lastSize = BitmapSize(skin.last);
    const bool fixed = style.capLength >= 0;
    const int firstLen = fixed ? style.capLength : horizontal ? firstSize.cx : firstSize.cy;
    const int lastLen = fixed ? style.capLength : horizontal ? lastSize.cx : lastSize.cy;

    RECT first = area, last = area, middle = area;
    if (horizontal) {
        first.right = area.left + firstLen;
        last.left = area.right - lastLen;
        middle.left = first.right;
        middle.right = last.left;
    } else {
        first.bottom = area.top + firstLen;
        last.top = area.bottom - lastLen;
        middle.top = first.bottom;
        middle.bottom = last.top;
    }

    PaintCap(canvas, skin.first, first, style.caps);
    PaintCap(canvas, skin.last, last, style.caps);
    if (style.middle == MiddleFit::Tile)
        canvas.Tile(skin.middle, middle);
    else
        canvas.Stretch(skin.middle, middle.left, middle.top, middle.right - middle.left, middle.bottom - middle.top);
    return middle;
}

}  // namespace zelctl
