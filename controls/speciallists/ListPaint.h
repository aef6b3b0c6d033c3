// Drawing steps the device's own lists share: the four-image frame behind the rows, the
// three row pieces, stretching part of a bitmap, and the scroll-bar policy of the lists
// whose bar never goes away. All of them draw straight into a surface DC, because these
// lists keep the DC's text colour and mode as state across a row (a key blit resets the
// text colour, and that is visible).
#pragma once

#include <afxwin.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "OffscreenCanvas.h"

class CZELScrollbar;

namespace zelctl::speciallists {

// A memory DC that pieces are selected into one after another during a paint: one DC for
// all of a paint's pieces instead of one made and freed per piece. The DC's own bitmap is
// put back, and the DC freed, at the end of the scope.
class PieceDC {
public:
    PieceDC() = default;
    ~PieceDC();
    PieceDC(const PieceDC&) = delete;
    PieceDC& operator=(const PieceDC&) = delete;
    // The DC with `bitmap` selected (made compatible with `like` on first use); null when
    // the bitmap cannot be selected.
    HDC Select(HDC like, HBITMAP bitmap);

private:
    HDC dc_ = nullptr;
    HGDIOBJ original_ = nullptr;
};

// candidate for common/: (sx, sy, sw, sh) of `src` stretched into (x, y, w, h) of `dst`
// with SRCCOPY; nothing for a null bitmap or an empty rectangle. `pieces` is the paint's
// piece DC (a DC of its own is made for the call without one).
void StretchPart(HDC dst, int x, int y, int w, int h, HBITMAP src, int sx, int sy, int sw, int sh,
                 PieceDC* pieces = nullptr);

// candidate for common/: the same part drawn with `key` left transparent (the Overview's
// transparent blit; the destination's text colour is black afterwards).
void KeyedPart(HDC dst, int x, int y, int w, int h, HBITMAP src, int sx, int sy, int sw, int sh, COLORREF key,
               PieceDC* pieces = nullptr);

// The lists' frame from their four background images (0 top left, 1 bottom left, 2 top
// right, 3 bottom right) over `client` of `dst`:
//   right strip, image 2's width: image 2 at the top, image 3 at the bottom drawn with
//     image 2's width and image 1's height, image 2's last pixel row stretched between;
//   left strip, image 0's width: image 0 at the top, image 1 at the bottom, image 0's last
//     pixel row stretched between;
//   centre: the left strip's last pixel column stretched over the rest.
// Without all four images the client is filled with white instead. Returns whether the
// images were drawn.
bool PaintListFrame(HDC dst, const RECT& client, const HBITMAP (&images)[4], PieceDC* pieces = nullptr);

// The canvas every special list paints its rows on: the client size, text drawn
// transparent, kept in the list's store between paints. The list draws its frame
// (PaintFrame) and rows where its KeptRows finds the kept pixels stale.
class ListFrame : public OffscreenCanvas {
public:
    ListFrame(CWnd& list, HDC screen, const HBITMAP (&images)[4], CanvasStore& store)
        : ListFrame(ClientOf(list), screen, images, store) {}
    const CRect& client() const { return client_; }
    // Whether the canvas holds the last paint's pixels (false for a canvas made by this
    // paint, which is drawn whole).
    bool reused() const { return reused_; }
    // The frame from the list's four images (PaintListFrame), within the DC's clip, left
    // out under `covered` (rows whose pieces write every pixel of theirs: RowPiecesCover).
    void PaintFrame(const std::vector<RECT>& covered = {});
    PieceDC& pieces() { return pieces_; }

private:
    ListFrame(const CRect& client, HDC screen, const HBITMAP (&images)[4], CanvasStore& store);
    ListFrame(const CRect& client, HDC screen, const HBITMAP (&images)[4], CanvasStore& store, bool kept);
    static CRect ClientOf(CWnd& list);
    CRect client_;
    const HBITMAP (&images_)[4];
    bool reused_;
    PieceDC pieces_;
};

// One row's background: the right piece at (right - sizes[2].cx), the left piece at the
// row's left, both sizes[..].cx wide and the row's height, copied; the middle stretched
// between them from (0, 0, sizes[1].cx, min(row height, sizes[1].cy)). Drawn only when
// all three pieces exist; returns whether it was drawn.
bool PaintRowPieces(HDC dst, const RECT& row, const HBITMAP (&pieces)[3], const SIZE (&sizes)[3],
                    PieceDC* source = nullptr);

// Whether PaintRowPieces writes every pixel of `row`: all three pieces exist and each is
// at least as large as the part of it that is copied or stretched (a copy from outside a
// bitmap leaves the destination as it was). What lies under such a row is never seen.
bool RowPiecesCover(const RECT& row, const HBITMAP (&pieces)[3], const SIZE (&sizes)[3]);

// What a picture shows, as a sequence of values and texts appended in a fixed order and
// compared whole: two keys are equal exactly when the same things were appended.
class PictureKey {
public:
    PictureKey& operator<<(long long value);
    PictureKey& operator<<(const void* handle) {
        return *this << static_cast<long long>(reinterpret_cast<intptr_t>(handle));
    }
    PictureKey& operator<<(const RECT& rc) { return *this << rc.left << rc.top << rc.right << rc.bottom; }
    PictureKey& operator<<(SIZE size) { return *this << size.cx << size.cy; }
    PictureKey& operator<<(const CString& text);
    bool operator==(const PictureKey& other) const { return data_ == other.data_; }

private:
    std::wstring data_;
};

// Row backgrounds drawn once and copied: rows of one kind (the same three pieces at the
// same sizes, width and height) look alike, so the first is drawn into a kept bitmap and
// every row of that kind, in this paint and later ones, is a copy of it. Kept for the last
// few kinds; the list releases them with its canvas.
class RowBackdrops {
public:
    RowBackdrops() = default;
    ~RowBackdrops() { Release(); }
    RowBackdrops(const RowBackdrops&) = delete;
    RowBackdrops& operator=(const RowBackdrops&) = delete;

    // What PaintRowPieces draws into `row`, whose uncut height is `height` (a row cut by
    // the list's bottom is the top of a whole one when the middle piece is as tall as a
    // row). Rows whose pieces leave pixels of theirs unwritten (RowPiecesCover), and cut
    // rows whose middle is stretched downwards, are drawn directly.
    bool Paint(HDC dst, const RECT& row, int height, const HBITMAP (&pieces)[3], const SIZE (&sizes)[3],
               PieceDC& source);
    // The same for any kind of row: `kind` names everything its picture depends on but the
    // size, `paint` draws a whole row (0, 0, width, height) writing every pixel of it, and a
    // cut row is the top of a whole one when `cutIsTop`; otherwise a cut row is painted
    // directly, at its place.
    using Painter = std::function<void(HDC dst, const RECT& row)>;
    void Paint(HDC dst, const RECT& row, int height, const PictureKey& kind, bool cutIsTop, const Painter& paint);
    void Release();

private:
    struct Kind {
        PictureKey key;
        int width, height;
        HBITMAP picture;
    };
    HDC Picture(HDC like, const Kind& kind);
    std::vector<Kind> kinds_;  // the most recently used last
    HDC dc_ = nullptr;
    HGDIOBJ original_ = nullptr;
};

// What of a list's kept canvas still shows the list as it is. A paint describes what it
// would draw -- the layout (everything the frame and every row depend on) and, per row
// slot from the top, the pixels the row may reach and a key of what it shows -- and draws
// only where that differs from what the canvas holds, or was never drawn, within the
// paint's clip. A repaint from outside with nothing changed is then one blit of the kept
// canvas, and a press repaints the rows whose look changed.
//
// A paint: Begin, Row for each slot, Clip (false: nothing to draw), the frame and every
// row whose reach Draws, End. Rows carry no drawing state into the next, so a row left
// out changes nothing of the others.
class KeptRows {
public:
    // `fresh`: the canvas is new (or not the kept one), so all of it is drawn.
    void Begin(HDC paint, const CRect& client, bool fresh, PictureKey layout);
    void Row(const RECT& reach, PictureKey key);
    // Limits `canvas`'s clip to what is stale within the paint; false when nothing is.
    bool Clip(HDC canvas);
    // Whether a row reaching `reach` has pixels to draw in this paint (after Clip).
    bool Draws(HDC canvas, const RECT& reach) const { return ::RectVisible(canvas, &reach) != FALSE; }
    // What the paint drew is current now.
    void End();
    // The row backgrounds kept with the canvas.
    RowBackdrops& backdrops() { return backdrops_; }
    // Forgets the canvas's picture and frees the kept row backgrounds (WM_DESTROY).
    void Release();

private:
    struct Slot {
        RECT reach;
        PictureKey key;
    };
    void Stale(const RECT& rc);

    PictureKey layout_;
    std::vector<Slot> slots_, next_;
    std::vector<RECT> stale_;  // client coordinates; overlapping allowed
    RECT client_{0, 0, 0, 0};
    RECT painted_{0, 0, 0, 0};  // what this paint covers
    bool known_ = false;        // the canvas holds a paint described by layout_ and slots_
    RowBackdrops backdrops_;
};

// How far a line of text drawn in a row of `rowHeight` may stand out above or below it where
// a list places it by its measured height (the rows cut by the list's bottom): what the
// tallest of the fonts given (null: the DC's own) exceeds the row by, plus 2 for rounding.
int TextOverhang(HDC dc, int rowHeight, std::initializer_list<HFONT> fonts);

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
