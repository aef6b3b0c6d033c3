// Drawing steps the device's own lists share: the four-image frame behind the rows, the
// three row pieces, stretching part of a bitmap, and the scroll-bar policy of the lists
// whose bar never goes away. All of them draw straight into a surface DC, because these
// lists keep the DC's text colour and mode as state across a row (a key blit resets the
// text colour, and that is visible).
#pragma once

#include <afxwin.h>

#include "OffscreenCanvas.h"

class CZELScrollbar;

namespace zelctl::speciallists {

// candidate for common/: (sx, sy, sw, sh) of `src` stretched into (x, y, w, h) of `dst`
// with SRCCOPY; nothing for a null bitmap or an empty rectangle.
void StretchPart(HDC dst, int x, int y, int w, int h, HBITMAP src, int sx, int sy, int sw, int sh);

// candidate for common/: the same part drawn with `key` left transparent (the Overview's
// transparent blit; the destination's text colour is black afterwards).
void KeyedPart(HDC dst, int x, int y, int w, int h, HBITMAP src, int sx, int sy, int sw, int sh, COLORREF key);

// The lists' frame from their four background images (0 top left, 1 bottom left, 2 top
// right, 3 bottom right) over `client` of `dst`:
//   right strip, image 2's width: image 2 at the top, image 3 at the bottom drawn with
//     image 2's width and image 1's height, image 2's last pixel row stretched between;
//   left strip, image 0's width: image 0 at the top, image 1 at the bottom, image 0's last
//     pixel row stretched between;
//   centre: the left strip's last pixel column stretched over the rest.
// Without all four images the client is filled with white instead. Returns whether the
// images were drawn.
bool PaintListFrame(HDC dst, const RECT& client, const HBITMAP (&images)[4]);

// The canvas every special list paints its rows on: the client size, text drawn
// transparent, the list's frame (PaintListFrame) already in place. It lives in the list's
// store: the frame covers the whole canvas each time.
class ListFrame : public OffscreenCanvas {
public:
    ListFrame(CWnd& list, HDC screen, const HBITMAP (&images)[4], CanvasStore& store)
        : ListFrame(ClientOf(list), screen, images, store) {}
    const CRect& client() const { return client_; }

private:
    ListFrame(const CRect& client, HDC screen, const HBITMAP (&images)[4], CanvasStore& store);
    static CRect ClientOf(CWnd& list);
    CRect client_;
};

// One row's background: the right piece at (right - sizes[2].cx), the left piece at the
// row's left, both sizes[..].cx wide and the row's height, copied; the middle stretched
// between them from (0, 0, sizes[1].cx, min(row height, sizes[1].cy)). Drawn only when
// all three pieces exist; returns whether it was drawn.
bool PaintRowPieces(HDC dst, const RECT& row, const HBITMAP (&pieces)[3], const SIZE (&sizes)[3]);

// The bar policy of the telephone and Bluetooth lists: with `max` > 0 the bar takes the
// range 0..max and a page of client height / row height, is shown and enabled, and
// `rcScroll` becomes its strip at the client's right edge over the full height; otherwise
// it is disabled, its range 0..100 and position 0, and still shown.
void ApplyAlwaysShownBar(CWnd& list, CZELScrollbar& bar, CRect& rcScroll, int max, int rowHeight);

// The text formats the lists draw with.
constexpr UINT kCentredLine = DT_VCENTER | DT_SINGLELINE;              // 0x24
constexpr UINT kCentredRight = DT_VCENTER | DT_SINGLELINE | DT_RIGHT;  // 0x26
constexpr UINT kMeasureLine = DT_CALCRECT | DT_SINGLELINE;             // 0x420

// A marked row's text colour in the lists on CListData.
constexpr COLORREF kMarkedText = 0x003214C8;

// The play list's name rule: the extension (from the last "." to the end; none without a
// ".") keeps its place at the end, and only the text before it is shortened with the
// lists' "..." rule to `width` less the extension's width.
CString ShortenKeepingExtension(HDC dc, const CString& name, int width);

// The height DT_CALCRECT | DT_SINGLELINE gives `text` in the DC's font.
int LineHeight(HDC dc, const CString& text);

// Draws a single line of a row cut by the list's bottom: vertically where it would stand
// centred in a row of `rowHeight` from `top`, between `left` and `right`, clipped at
// `bottom`, with `format` (DT_SINGLELINE and its horizontal alignment).
void DrawCutLine(HDC dc, const CString& text, int left, int right, int top, int rowHeight, int bottom, UINT format);

}  // namespace zelctl::speciallists
