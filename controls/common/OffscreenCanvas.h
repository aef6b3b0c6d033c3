// The off-screen canvas every control paints into: a memory bitmap of the client size
// that receives every piece and reaches the screen in one BitBlt, so nothing flickers.
// It owns its two memory DCs and its bitmap and restores every selection it made, so a
// paint handler never frees or deselects anything by hand.
#pragma once

#include <windows.h>

namespace zelctl {

// The size of a bitmap; 0 x 0 for a null or stale handle (a skin piece that failed to
// load). The one answer every control uses, so a missing piece is "0 wide" everywhere.
SIZE BitmapSize(HBITMAP bitmap);

// The colour of a bitmap's top-left pixel (skins carry colours as one-colour samples);
// CLR_INVALID for a null or stale handle.
COLORREF TopLeftPixel(HBITMAP bitmap);

// Selects an object into a DC for the guard's lifetime and puts the previous one back.
class SelectGuard {
public:
    SelectGuard(HDC dc, HGDIOBJ object) : dc_(dc), old_(dc && object ? ::SelectObject(dc, object) : nullptr) {}
    ~SelectGuard() {
        if (old_) ::SelectObject(dc_, old_);
    }
    SelectGuard(const SelectGuard&) = delete;
    SelectGuard& operator=(const SelectGuard&) = delete;
    bool selected() const { return old_ != nullptr; }

private:
    HDC dc_;
    HGDIOBJ old_;
};

// A control's canvas kept from one paint to the next: the memory DCs and the bitmap are
// made by the first paint and reused while the size stays the same, so a repaint neither
// allocates nor clears a bitmap. The pixels of the last paint stay, so only a control that
// covers its whole canvas on every paint may keep one. The control releases it on
// WM_DESTROY (and the destructor does, for a control never created).
class CanvasStore {
public:
    CanvasStore() = default;
    ~CanvasStore() { Release(); }
    CanvasStore(const CanvasStore&) = delete;
    CanvasStore& operator=(const CanvasStore&) = delete;

    void Release();
    // The memory DC holding the kept bitmap (null before the first paint or after Release):
    // a control may keep a layer it paints rarely in a store and copy from it.
    HDC dc() const { return mem_; }

private:
    friend class OffscreenCanvas;
    HDC mem_ = nullptr, pieces_ = nullptr;
    HBITMAP surface_ = nullptr;
    HGDIOBJ oldSurface_ = nullptr;
    int width_ = 0, height_ = 0;
};

class OffscreenCanvas {
public:
    // `screen` is the paint DC: the memory bitmap is made compatible with it (a bitmap
    // compatible with a fresh memory DC would be monochrome).
    OffscreenCanvas(HDC screen, int width, int height);
    // The same on the store's bitmap and DCs (made or remade to this size first). The
    // memory DC's state (objects, colours, modes, clipping) is put back at the end, so each
    // paint starts from the same DC as a fresh canvas; the pixels are the last paint's.
    OffscreenCanvas(HDC screen, int width, int height, CanvasStore& store);
    // A canvas for `area` of the client area only (client coordinates, PaintArea's answer):
    // it gets the pixels the whole-client canvas would get there and costs what the area
    // covers, however large the window. Drawing calls still take client coordinates.
    OffscreenCanvas(HDC screen, const RECT& area);
    ~OffscreenCanvas();
    OffscreenCanvas(const OffscreenCanvas&) = delete;
    OffscreenCanvas& operator=(const OffscreenCanvas&) = delete;

    // The part of a width x height client area that a paint through `screen` can change:
    // the DC's clip box (the update area as far as the window shows through its parents and
    // on the screen), within the client area. A window moved to 32767 x 32767 paints what
    // shows of it, not a gigabyte canvas.
    static RECT PaintArea(HDC screen, int width, int height);

    // The memory DC; it is in canvas coordinates, so drawing on it directly goes through
    // Local().
    HDC dc() const { return mem_; }
    RECT Local(const RECT& client) const {
        return RECT{client.left - origin_.x, client.top - origin_.y, client.right - origin_.x, client.bottom - origin_.y};
    }
    int width() const { return width_; }
    int height() const { return height_; }

    // Each copies a skin bitmap with SRCCOPY; a null bitmap or an empty cell is skipped.
    // (sx, sy) of `piece` to (x, y) at the given size, without stretching.
    void Blit(HBITMAP piece, int x, int y, int w, int h, int sx = 0, int sy = 0);
    // The whole of `piece` stretched into (x, y, w, h).
    void Stretch(HBITMAP piece, int x, int y, int w, int h);
    // The whole of `piece` into (x, y, w, h) with `key` left transparent.
    void Transparent(HBITMAP piece, int x, int y, int w, int h, COLORREF key);
    // `piece` repeated from the canvas origin across `rc` (a pattern brush, as the
    // three-piece frames tile their middle).
    void Tile(HBITMAP piece, const RECT& rc);
    // A solid fill.
    void Fill(const RECT& rc, COLORREF colour);
    // The part of a whole-screen bitmap that lies under `window`, drawn over the whole
    // canvas: a control on a skinned screen looks transparent this way. The bitmap stays
    // the caller's.
    void ScreenPiece(HBITMAP screenBitmap, HWND window);

    // Copies the canvas to (0, 0) of the screen DC.
    void Present();
    // For a control whose whole picture is one piece: the piece is already off screen, so
    // it goes from its origin straight to (0, 0) of the screen DC at the canvas size, and
    // the canvas itself is not presented.
    void PresentPiece(HBITMAP piece);

private:
    bool Select(HBITMAP piece, bool needsSurface = true);

    HDC screen_;
    int width_, height_;
    POINT origin_{0, 0};  // the client point at the canvas's (0, 0)
    HDC mem_ = nullptr, pieces_ = nullptr;
    HBITMAP surface_ = nullptr;
    HGDIOBJ oldSurface_ = nullptr, oldPiece_ = nullptr;
    bool stored_ = false;  // the DCs and bitmap are a CanvasStore's
    int savedState_ = 0;
};

}  // namespace zelctl
