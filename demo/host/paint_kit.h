// What the host and its screens paint around the controls: fonts, text in a box, panels.
// Everything here draws on the host's off-screen frame inside WM_PAINT.
#pragma once

#include <windows.h>

#include <string_view>
#include <utility>

namespace zel::demo {

// An owned font of the theme's face ("Tahoma"), antialiased. height is the cell height in
// pixels (a positive lfHeight).
class Font {
public:
    Font(int height, int weight = FW_NORMAL);
    ~Font();
    Font(Font&& other) noexcept : font_(std::exchange(other.font_, nullptr)) {}
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;
    Font& operator=(Font&&) = delete;
    HFONT get() const { return font_; }

private:
    HFONT font_;
};

// Writes text into box on a transparent background; the DC's font and text colour are
// restored afterwards. format is DrawTextW's (DT_SINGLELINE | DT_VCENTER is usual).
void DrawLabel(HDC dc, std::wstring_view text, const RECT& box, const Font& font, COLORREF color,
               UINT format = DT_LEFT | DT_VCENTER | DT_SINGLELINE);

// How far right of where it starts one line of text in `font` may leave ink (0 for none).
// Not the measured extent: text is measured with the greyscale-hinted advances and drawn
// glyph by glyph with the advances of the rendering it gets, which may be a pixel or two
// wider each (a run of 'A's at 15 pixels ends a pixel per glyph past its extent); and the
// last glyph may reach past its advance, never by more than the font's widest glyph.
int InkWidth(HDC dc, std::wstring_view text, const Font& font);

void FillBox(HDC dc, const RECT& box, COLORREF color);

// A rounded panel: a one-pixel outline of `edge`, filled with `fill`; corner is the
// diameter of the corner ellipses, as RoundRect takes it.
void Panel(HDC dc, const RECT& box, COLORREF fill, COLORREF edge, int corner);

// An ellipse filled with `fill` and outlined with `edge`.
void Disc(HDC dc, const RECT& box, COLORREF fill, COLORREF edge);

}  // namespace zel::demo
