// Putting glyphs on a DC's surface.
#pragma once

#include "gdi/dc.h"
#include "gdi/text/realized_font.h"

namespace zel::gdi {

// Draws `count` characters with the pen starting at surface coordinates (penX, baseline),
// in the DC's text colour, through the DC's clip and, when given, inside `limit` (surface
// coordinates). `dx` overrides the advances. Returns the pen movement.
//
// Deliberate quirk, kept for pixel compatibility with the reference rasteriser: without
// `dx`, each glyph is placed by the advance of its own rendering (monochrome hinting may
// make a glyph a pixel wider or narrower) while measuring, alignment and the background
// box use the advances GetTextExtent reports. Faces with embedded bitmaps (Tahoma up to
// 16 pixels per em) have the same advance either way.
int DrawGlyphs(DC& dc, RealizedFont& font, int penX, int baseline, const WCHAR* text, int count, const INT* dx,
               const RECT* limit);

// Fills a surface rectangle with a colour through the DC's clip.
void FillSolid(DC& dc, const RECT& device, COLORREF color);

// The sum of the advances of `count` characters.
int TextWidth(RealizedFont& font, const WCHAR* text, int count);

}  // namespace zel::gdi
