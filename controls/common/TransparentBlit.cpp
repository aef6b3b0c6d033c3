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
    // Only the part of the destination that its clip lets through is worked on: a thumb
    // stretched over a 32767-pixel slider costs what shows of it. The stretch is still
    // planned over the whole destination, so every pixel is the one a full copy would give.
    const RECT whole{x, y, x + w, y + h};
    RECT box{}, part = whole;
    if (::GetClipBox(dst, &box) != ERROR && !::IntersectRect(&part, &whole, &box)) {
        LeaveMaskColours(dst);
        return;
    }
    const int px = part.left - x, py = part.top - y;
    x = part.left;
    y = part.top;
    const int fw = w, fh = h;
    w = part.right - part.left;
    h = part.bottom - part.top;
    // Unstretched from inside a colour source: the platform's one-pass equivalent of the
    // mask sequence below.
    if (fw == sw && fh == sh && zel::KeyBlt(dst, x, y, w, h, src, sx + px, sy + py, key)) {
        LeaveMaskColours(dst);
        return;
    }
    // Scratch colour copy of the visible part.
    HDC scratch = ::CreateCompatibleDC(dst);
    HBITMAP scratchBmp = ::CreateCompatibleBitmap(dst, w, h);
    HGDIOBJ oldScratch = ::SelectObject(scratch, scratchBmp);
    if (fw == sw && fh == sh)
        ::BitBlt(scratch, 0, 0, w, h, src, sx + px, sy + py, SRCCOPY);
    else
        ::StretchBlt(scratch, -px, -py, fw, fh, src, sx, sy, sw, sh, SRCCOPY);
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
