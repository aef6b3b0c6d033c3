// Stroke digits: the date and time controls draw "0"-"9", "-" and ":" as line strokes
// (MoveToEx/LineTo in the DC's current pen) inside a w x h box instead of as text, so the
// digits scale with the box and need no font. Characters outside "-" (45) to ":" (58) draw
// nothing and are 0 wide; so are "." and "/", which lie inside that range.
//
// candidate for common/: the picker and the spinner share it.
#pragma once

#include <windows.h>

namespace zelctl {

// The widths the glyphs take: digits and "-" are w wide except "1", which is always 6
// (its strokes sit at fixed offsets), ":" is 1, anything else 0.
int StrokeGlyphWidth(wchar_t ch, int w);

// Strokes `ch` with its box at (x, y), w wide and h high, and returns its width.
// Shapes (LineTo leaves out its end point, so each outline is closed by its next stroke or
// by running one pixel past its last corner):
//  "0"  the box outline, begun one pixel right of the top-left corner (that pixel stays
//       clear);
//  "1"  a flag along the top from w/3 to 2w/3, then a stem at 2w/3 down to one below h;
//  "-"  the middle bar, at y + (h - 3)/2 + 1, from x + w back to x;
//  ":"  two single black pixels (whatever the pen) at (x, y + h/4) and (x, y + 3h/4);
//  "2"-"9" seven-segment figures from the same top, middle and bottom bars and the two
//       sides split at the middle bar.
int DrawStrokeGlyph(HDC dc, wchar_t ch, int x, int y, int w, int h);

}  // namespace zelctl
