#include "kept_frame.h"

namespace zel::demo {

void KeptFrame::Free() {
    if (bitmap_) ::DeleteObject(bitmap_);
    if (stale_) ::DeleteObject(stale_);
    bitmap_ = nullptr;
    stale_ = nullptr;
}

bool KeptFrame::Fit(HDC like, const RECT& client) {
    const int width = client.right - client.left, height = client.bottom - client.top;
    BITMAP size{};
    if (bitmap_ && (::GetObjectW(bitmap_, sizeof size, &size) != sizeof size || size.bmWidth != width ||
                    size.bmHeight != height))
        Free();
    if (bitmap_) return false;
    bitmap_ = ::CreateCompatibleBitmap(like, width, height);
    stale_ = ::CreateRectRgnIndirect(&client);
    return true;
}

void KeptFrame::MarkStale(const RECT& area) {
    if (!stale_) return;
    if (HRGN add = ::CreateRectRgnIndirect(&area)) {
        ::CombineRgn(stale_, stale_, add, RGN_OR);
        ::DeleteObject(add);
    }
}

HRGN KeptFrame::Redraw(HRGN update, bool trusted) const {
    HRGN redraw = ::CreateRectRgn(0, 0, 0, 0);
    const bool keeps = trusted && stale_;
    if (redraw && update) ::CombineRgn(redraw, update, keeps ? stale_ : nullptr, keeps ? RGN_AND : RGN_COPY);
    return redraw;
}

}  // namespace zel::demo
