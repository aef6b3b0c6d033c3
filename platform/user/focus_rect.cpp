// DrawFocusRect, FrameRect and InvertRect: the USER helpers that paint rectangle frames.
#include <algorithm>

#include "gdi/stroke.h"

using namespace zel::gdi;

extern "C" {

// A dotted frame inverted along the rectangle's inside edge pixels: every other pixel of
// the outline path, which starts at the top-right corner and runs anticlockwise with the
// dot pattern carried round the corners. Inverting makes a second call erase the first;
// where the path covers a pixel twice (a frame one pixel thick) the two inversions cancel.
BOOL DrawFocusRect(HDC hdc, const RECT* rc) {
    DC* dc = LookupDC(hdc);
    if (!dc || !rc) return FALSE;
    const int l = ClampCoord(std::min(rc->left, rc->right)), r = ClampCoord(std::max(rc->left, rc->right));
    const int t = ClampCoord(std::min(rc->top, rc->bottom)), b = ClampCoord(std::max(rc->top, rc->bottom));
    if (l == r || t == b || !dc->Target()) return TRUE;
    const int x0 = dc->DevX(l), y0 = dc->DevY(t), x1 = dc->DevX(r) - 1, y1 = dc->DevY(b) - 1;
    const POINT outline[4] = {{x1, y0}, {x0, y0}, {x0, y1}, {x1, y1}};
    StrokeCosmetic(*dc, FocusPen(*dc), outline, true);
    return TRUE;
}

// Four one-pixel strips of the brush along the inside edges; nothing for an empty rect.
int FrameRect(HDC hdc, const RECT* rc, HBRUSH hbrush) {
    DC* dc = LookupDC(hdc);
    Brush* brush = LookupBrush(hbrush);
    if (!dc || !rc || !brush || rc->right <= rc->left || rc->bottom <= rc->top) return 0;
    PatternSource pat = RealizeBrush(*dc, brush);
    if (pat.kind == PatternSource::kNull || !dc->Target()) return 1;
    const int l = dc->DevX(ClampCoord(rc->left)), t = dc->DevY(ClampCoord(rc->top));
    const int r = dc->DevX(ClampCoord(rc->right)), b = dc->DevY(ClampCoord(rc->bottom));
    const RECT strips[4] = {{l, t, r, t + 1}, {l, b - 1, r, b}, {l, t, l + 1, b}, {r - 1, t, r, b}};
    for (const RECT& s : strips) PatFill(*dc, pat, s, 0xF0);  // PATCOPY
    return 1;
}

// DSTINVERT over the extents, with PatBlt's rules for negative extents.
BOOL InvertRect(HDC hdc, const RECT* rc) {
    if (!rc) return FALSE;
    const int l = ClampCoord(rc->left), t = ClampCoord(rc->top);
    return PatBlt(hdc, l, t, ClampCoord(rc->right) - l, ClampCoord(rc->bottom) - t, DSTINVERT);
}

}  // extern "C"
