// The off-screen frame a window keeps between paints, and what of it is out of date. The
// host window and the screen dialog draw only the stale part of an update region and copy
// the rest from here.
#pragma once

#include <windows.h>

namespace zel::demo {

class KeptFrame {
public:
    KeptFrame() = default;
    ~KeptFrame() { Free(); }
    KeptFrame(const KeptFrame&) = delete;
    KeptFrame& operator=(const KeptFrame&) = delete;

    void Free();
    // The bitmap for a client area of `client`'s size, made (all of it stale) when there is
    // none or it has another size; true when it was made now.
    bool Fit(HDC like, const RECT& client);
    HBITMAP bitmap() const { return bitmap_; }
    // Notes `area` (client coordinates) as out of date. Before the first paint there is
    // nothing to note: all of the frame is drawn then; without a stale region (regions ran
    // out) nothing in the frame is trusted.
    void MarkStale(const RECT& area);
    void MarkStale(HRGN area) {
        if (stale_ && area) ::CombineRgn(stale_, stale_, area, RGN_OR);
    }
    // The part of `update` to draw: what of it is stale, or all of it when `trusted` is
    // false or nothing is known. A new region the caller deletes; null when out of regions.
    HRGN Redraw(HRGN update, bool trusted = true) const;
    // `drawn` is up to date now.
    void Drawn(HRGN drawn) {
        if (stale_ && drawn) ::CombineRgn(stale_, stale_, drawn, RGN_DIFF);
    }

private:
    HBITMAP bitmap_ = nullptr;
    HRGN stale_ = nullptr;
};

}  // namespace zel::demo
