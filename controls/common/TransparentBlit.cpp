#include "TransparentBlit.h"

#include <zel/gdi_extras.h>

namespace zelctl {

namespace {

// The colours the mask sequence leaves on the destination DC.
void LeaveMaskColours(HDC dst) {
    ::SetBkColor(dst, RGB(255, 255, 255));
    ::SetTextColor(dst, RGB(0, 0, 0));
}

}  // namespace

void TransparentBlit(HDC dst, int x, int y, int w, int h, HDC src, int sx, int sy, int sw, int sh, COLORREF key) {
    if (!dst || !src || w <= 0 || h <= 0) return;
    // Unstretched from inside a colour source: the platform's one-pass equivalent of the
    // mask sequence below.
    if (w == sw && h == sh && zel::KeyBlt(dst, x, y, w, h, src, sx, sy, key)) {
        LeaveMaskColours(dst);
        return;
    }
    // Scratch colour copy of the destination's size.
    HDC scratch = ::CreateCompatibleDC(dst);
    HBITMAP scratchBmp = ::CreateCompatibleBitmap(dst, w, h);
    HGDIOBJ oldScratch = ::SelectObject(scratch, scratchBmp);
    if (w == sw && h == sh)
        ::BitBlt(scratch, 0, 0, w, h, src, sx, sy, SRCCOPY);
    else
        ::StretchBlt(scratch, 0, 0, w, h, src, sx, sy, sw, sh, SRCCOPY);
    if (zel::KeyBlt(dst, x, y, w, h, scratch, 0, 0, key)) {
        LeaveMaskColours(dst);
        ::SelectObject(scratch, oldScratch);
        ::DeleteObject(scratchBmp);
        ::DeleteDC(scratch);
        return;
    }

    // Colour -> mono compares with the source DC's background: key pixels become 1.
    HDC mask = ::CreateCompatibleDC(dst);
    HBITMAP maskBmp = ::CreateBitmap(w, h, 1, 1, nullptr);
    HGDIOBJ oldMask = ::SelectObject(mask, maskBmp);
    ::SetBkColor(scratch, key);
    ::BitBlt(mask, 0, 0, w, h, scratch, 0, 0, SRCCOPY);

    // Mono -> colour uses the destination's colours: 1 (key) -> black, 0 -> white, so
    // SRCAND clears the key pixels of the scratch copy.
    ::SetBkColor(scratch, RGB(0, 0, 0));
    ::SetTextColor(scratch, RGB(255, 255, 255));
    ::BitBlt(scratch, 0, 0, w, h, mask, 0, 0, SRCAND);

    // On the destination the mask keeps key pixels (1 -> white) and clears the rest, then
    // the cleared scratch is ORed in.
    ::SetBkColor(dst, RGB(255, 255, 255));
    ::SetTextColor(dst, RGB(0, 0, 0));
    ::BitBlt(dst, x, y, w, h, mask, 0, 0, SRCAND);
    ::BitBlt(dst, x, y, w, h, scratch, 0, 0, SRCPAINT);

    ::SelectObject(mask, oldMask);
    ::DeleteObject(maskBmp);
    ::DeleteDC(mask);
    ::SelectObject(scratch, oldScratch);
    ::DeleteObject(scratchBmp);
    ::DeleteDC(scratch);
}

}  // namespace zelctl
