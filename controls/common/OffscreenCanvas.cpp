#include "OffscreenCanvas.h"

#include "TransparentBlit.h"

namespace zelctl {

SIZE BitmapSize(HBITMAP bitmap) {
    BITMAP info{};
    if (!bitmap || ::GetObjectW(bitmap, sizeof info, &info) != static_cast<int>(sizeof info)) return SIZE{0, 0};
    return SIZE{info.bmWidth, info.bmHeight};
}

COLORREF TopLeftPixel(HBITMAP bitmap) {
    if (!bitmap) return CLR_INVALID;
    HDC mem = ::CreateCompatibleDC(nullptr);
    COLORREF pixel = CLR_INVALID;
    {
        const SelectGuard guard(mem, bitmap);
        if (guard.selected()) pixel = ::GetPixel(mem, 0, 0);
    }
    ::DeleteDC(mem);
    return pixel;
}

OffscreenCanvas::OffscreenCanvas(HDC screen, int width, int height) : screen_(screen), width_(width), height_(height) {
    mem_ = ::CreateCompatibleDC(screen);
    pieces_ = ::CreateCompatibleDC(screen);
    if (width > 0 && height > 0) surface_ = ::CreateCompatibleBitmap(screen, width, height);
    if (surface_) oldSurface_ = ::SelectObject(mem_, surface_);
}

void CanvasStore::Release() {
    if (oldSurface_) ::SelectObject(mem_, oldSurface_);
    if (surface_) ::DeleteObject(surface_);
    if (pieces_) ::DeleteDC(pieces_);
    if (mem_) ::DeleteDC(mem_);
    mem_ = pieces_ = nullptr;
    surface_ = nullptr;
    oldSurface_ = nullptr;
    width_ = height_ = 0;
}

OffscreenCanvas::OffscreenCanvas(HDC screen, int width, int height, CanvasStore& store)
    : screen_(screen), width_(width), height_(height) {
    if (width <= 0 || height <= 0) {
        // Nothing to keep: a canvas without a surface, as the plain constructor makes.
        mem_ = ::CreateCompatibleDC(screen);
        pieces_ = ::CreateCompatibleDC(screen);
        return;
    }
    const bool reused = store.surface_ && store.width_ == width && store.height_ == height;
    if (!reused) {
        store.Release();
        store.mem_ = ::CreateCompatibleDC(screen);
        store.pieces_ = ::CreateCompatibleDC(screen);
        store.surface_ = ::CreateCompatibleBitmap(screen, width, height);
        if (store.mem_ && store.surface_) store.oldSurface_ = ::SelectObject(store.mem_, store.surface_);
        if (!store.oldSurface_) {
            store.Release();
            mem_ = ::CreateCompatibleDC(screen);
            pieces_ = ::CreateCompatibleDC(screen);
            return;
        }
        store.width_ = width;
        store.height_ = height;
    }
    stored_ = true;
    mem_ = store.mem_;
    pieces_ = store.pieces_;
    surface_ = store.surface_;
    savedState_ = ::SaveDC(mem_);
    // The kept pixels are the last paint's, right wherever the window was not invalidated
    // since: only the part the paint DC may draw on (the update region, for BeginPaint's
    // DC) needs painting again. A new bitmap is painted whole.
    RECT box{};
    if (reused && ::GetClipBox(screen, &box) != ERROR && (box.left > 0 || box.top > 0 || box.right < width || box.bottom < height))
        ::IntersectClipRect(mem_, box.left, box.top, box.right, box.bottom);
}

OffscreenCanvas::OffscreenCanvas(HDC screen, const RECT& area)
    : OffscreenCanvas(screen, area.right - area.left, area.bottom - area.top) {
    origin_ = POINT{area.left, area.top};
    // Pattern brushes keep their phase to the client area, as on a whole-client canvas.
    if (surface_) ::SetBrushOrgEx(mem_, -area.left, -area.top, nullptr);
}

RECT OffscreenCanvas::PaintArea(HDC screen, int width, int height) {
    const RECT client{0, 0, width > 0 ? width : 0, height > 0 ? height : 0};
    RECT box{}, area{};
    if (::GetClipBox(screen, &box) == ERROR) return client;
    ::IntersectRect(&area, &client, &box);  // empty when nothing of the window shows
    return area;
}

OffscreenCanvas::~OffscreenCanvas() {
    if (oldPiece_) ::SelectObject(pieces_, oldPiece_);
    if (stored_) {
        if (savedState_) ::RestoreDC(mem_, savedState_);
        return;
    }
    if (oldSurface_) ::SelectObject(mem_, oldSurface_);
    if (surface_) ::DeleteObject(surface_);
    if (pieces_) ::DeleteDC(pieces_);
    if (mem_) ::DeleteDC(mem_);
}

bool OffscreenCanvas::Select(HBITMAP piece, bool needsSurface) {
    if (!piece || (needsSurface && !surface_)) return false;
    HGDIOBJ previous = ::SelectObject(pieces_, piece);
    if (!previous) return false;
    if (!oldPiece_) oldPiece_ = previous;
    return true;
}

void OffscreenCanvas::Blit(HBITMAP piece, int x, int y, int w, int h, int sx, int sy) {
    if (w <= 0 || h <= 0) return;
    if (Select(piece)) ::BitBlt(mem_, x - origin_.x, y - origin_.y, w, h, pieces_, sx, sy, SRCCOPY);
}

void OffscreenCanvas::Stretch(HBITMAP piece, int x, int y, int w, int h) {
    // A cell squeezed to nothing (a window smaller than its fixed pieces) is skipped rather
    // than drawn mirrored by a negative extent.
    if (w <= 0 || h <= 0) return;
    const SIZE size = BitmapSize(piece);
    if (Select(piece)) ::StretchBlt(mem_, x - origin_.x, y - origin_.y, w, h, pieces_, 0, 0, size.cx, size.cy, SRCCOPY);
}

void OffscreenCanvas::Transparent(HBITMAP piece, int x, int y, int w, int h, COLORREF key) {
    const SIZE size = BitmapSize(piece);
    if (Select(piece)) TransparentBlit(mem_, x - origin_.x, y - origin_.y, w, h, pieces_, 0, 0, size.cx, size.cy, key);
}

void OffscreenCanvas::Tile(HBITMAP piece, const RECT& rc) {
    if (!piece || !surface_ || rc.right <= rc.left || rc.bottom <= rc.top) return;
    HBRUSH brush = ::CreatePatternBrush(piece);
    if (!brush) return;
    const RECT local = Local(rc);
    ::FillRect(mem_, &local, brush);
    ::DeleteObject(brush);
}

void OffscreenCanvas::Fill(const RECT& rc, COLORREF colour) {
    if (!surface_) return;
    HBRUSH brush = ::CreateSolidBrush(colour);
    const RECT local = Local(rc);
    ::FillRect(mem_, &local, brush);
    ::DeleteObject(brush);
}

void OffscreenCanvas::ScreenPiece(HBITMAP screenBitmap, HWND window) {
    RECT rc{};
    if (!::GetWindowRect(window, &rc)) return;
    Blit(screenBitmap, origin_.x, origin_.y, width_, height_, rc.left + origin_.x, rc.top + origin_.y);
}

void OffscreenCanvas::PresentPiece(HBITMAP piece) {
    if (Select(piece, false)) ::BitBlt(screen_, origin_.x, origin_.y, width_, height_, pieces_, origin_.x, origin_.y, SRCCOPY);
}

void OffscreenCanvas::Present() {
    if (surface_) ::BitBlt(screen_, origin_.x, origin_.y, width_, height_, mem_, 0, 0, SRCCOPY);
}

}  // namespace zelctl
