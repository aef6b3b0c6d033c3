// Device contexts: target surface, origin, attributes, selected objects, clipping.
#pragma once

#include <functional>
#include <vector>

#include "gdi/objects.h"

namespace zel::gdi {

struct DCState {
    Bitmap* bitmap = nullptr;  // memory DCs only
    Brush* brush = nullptr;
    Pen* pen = nullptr;
    Font* font = nullptr;
    COLORREF textColor = RGB(0, 0, 0);
    COLORREF bkColor = RGB(255, 255, 255);
    int bkMode = OPAQUE;
    int stretchMode = BLACKONWHITE;
    int rop2 = R2_COPYPEN;
    UINT textAlign = TA_LEFT | TA_TOP | TA_NOUPDATECP;
    POINT brushOrg{0, 0};
    POINT curPos{0, 0};
    std::optional<PixRegion> clip;  // in DC coordinates (relative to the DC origin)
};

struct DC : GdiObject {
    enum Kind { kMemory, kScreen } kind = kMemory;
    HWND hwnd = nullptr;      // window DCs: the owner (set by the window manager)
    PixelBuffer* screen = nullptr;  // kScreen: the surface drawn on
    POINT origin{0, 0};       // where DC (0,0) lies on the surface
    std::optional<PixRegion> vis;  // window DCs: visible region in surface coordinates
    DCState state;
    std::vector<DCState> saved;

    ~DC() override;

    // The surface drawn on, or nullptr (a memory DC always has one selected).
    PixelBuffer* Target() const {
        return kind == kMemory ? (state.bitmap ? &state.bitmap->Pixels() : nullptr) : screen;
    }
    // The surface only to be read from (a source): a cached image is read in place.
    const PixelBuffer* Source() const {
        return kind == kMemory ? (state.bitmap ? &state.bitmap->Read() : nullptr) : screen;
    }
    // The same surface for its size and format only: its pixels may not be read or written.
    const PixelBuffer* TargetShape() const {
        return kind == kMemory ? (state.bitmap ? &state.bitmap->px : nullptr) : screen;
    }
    // The surface, for an operation that writes every pixel of `written` (surface
    // coordinates) inside the clip and nothing else, without reading the destination or
    // anything else on this surface first. A new bitmap's zero fill is left pending outside
    // that part; the whole of a cached image, unclipped, is not copied.
    PixelBuffer* Overwrite(const RECT& written);

    // The effective clip in surface coordinates: surface bounds ∩ visible region ∩ clip
    // region, as rectangles sorted top to bottom. Computed once per change.
    const std::vector<RECT>& ClipRects();
    void InvalidateClip() { clipValid_ = false; }

    // Calls f for each part of `deviceRect` (surface coordinates, half-open) inside the
    // clip. Primitives receive only such pre-clipped rectangles.
    template <class F>
    void ForEachClipped(const RECT& deviceRect, F&& f) {
        for (const RECT& c : ClipRects()) {
            RECT r{std::max(c.left, deviceRect.left), std::max(c.top, deviceRect.top),
                   std::min(c.right, deviceRect.right), std::min(c.bottom, deviceRect.bottom)};
            if (r.left < r.right && r.top < r.bottom) f(r);
        }
    }
    bool PointVisible(int deviceX, int deviceY);

    // Logical (DC) coordinates to surface coordinates.
    int DevX(int x) const { return x + origin.x; }
    int DevY(int y) const { return y + origin.y; }

    // Selection with reference counting (see objects.h).
    void SetBitmap(Bitmap* b);
    void SetBrush(Brush* b);
    void SetPen(Pen* p);
    void SetFont(Font* f);

private:
    std::vector<RECT> clipRects_;
    bool clipValid_ = false;
};

// Creates a DC drawing on a surface not owned by a bitmap (the screen).
DC* NewScreenDC(PixelBuffer* surface, POINT origin);

// The screen surface; GetDC(NULL) draws on it. Sized by the desktop (800 x 480 default).
PixelBuffer& Screen();
void ResizeScreen(int width, int height);

}  // namespace zel::gdi
