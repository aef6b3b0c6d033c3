// The off-screen canvas a skinned control paints into: a memory bitmap of the client size
// that receives every piece and reaches the screen in one BitBlt, so nothing flickers.
#pragma once

#include <windows.h>

namespace zelctl {

// The size of a bitmap; 0 x 0 for a null or stale handle (a skin piece that failed to load).
SIZE BitmapSize(HBITMAP bitmap);

class SkinCanvas {
public:
    // `screen` is the paint DC: the memory bitmap is made compatible with it (a bitmap
    // compatible with a fresh memory DC would be monochrome).
    SkinCanvas(HDC screen, int width, int height);
    ~SkinCanvas();
    SkinCanvas(const SkinCanvas&) = delete;
    SkinCanvas& operator=(const SkinCanvas&) = delete;

    HDC dc() const { return mem_; }

    // Each copies a skin bitmap with SRCCOPY; a null bitmap is skipped.
    // (sx, sy) of `piece` to (x, y) at the given size, without stretching.
    void Blit(HBITMAP piece, int x, int y, int w, int h, int sx = 0, int sy = 0);
    // The whole of `piece` stretched into (x, y, w, h).
    void Stretch(HBITMAP piece, int x, int y, int w, int h);
    // The whole of `piece` into (x, y, w, h) with `key` left transparent.
    void Transparent(HBITMAP piece, int x, int y, int w, int h, COLORREF key);

    // Copies the canvas to (0, 0) of the screen DC.
    void Present();

private:
    bool Select(HBITMAP piece);

    HDC screen_;
    int width_, height_;
    HDC mem_ = nullptr, pieces_ = nullptr;
    HBITMAP surface_ = nullptr;
    HGDIOBJ oldSurface_ = nullptr, oldPiece_ = nullptr;
};

}  // namespace zelctl
