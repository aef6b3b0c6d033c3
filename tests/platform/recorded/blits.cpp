// BitBlt and StretchBlt with negative and mirrored extents, sources and destinations
// partly outside their surfaces, and the one-pixel edges of mirrored stretching.
#include "recorded.h"

namespace {

using recorded::Facts;

using recorded::TextSurface;  // white, its font unused

// Every pixel its own colour.
void Gradient(HDC dc, int w, int h) {
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) SetPixel(dc, x, y, RGB(16 + x * 24, 8 + y * 24, 128));
}

// Rows of "bbggrr" joined by '/', runs as *n.
std::string Pixels(HDC dc, int w, int h) {
    std::string out;
    for (int y = 0; y < h; ++y) {
        if (y) out += '/';
        COLORREF last = 0xFFFFFFFF;
        int run = 0;
        auto flush = [&] {
            if (!run) return;
            char b[24];
            std::snprintf(b, sizeof b, "%s%06lx", out.empty() || out.back() == '/' ? "" : ",",
                          static_cast<unsigned long>(last));
            out += b;
            if (run > 1) out += "*" + std::to_string(run);
        };
        for (int x = 0; x < w; ++x) {
            COLORREF c = GetPixel(dc, x, y) & 0xFFFFFF;
            if (c == last) {
                ++run;
                continue;
            }
            flush();
            last = c;
            run = 1;
        }
        flush();
    }
    return out;
}

void Blit(Facts& facts, int dx, int dy, int w, int h, int sx, int sy) {
    TextSurface src(6, 5, 14), dst(10, 8, 14);
    Gradient(src.dc(), 6, 5);
    facts.Add("ret", BitBlt(dst.dc(), dx, dy, w, h, src.dc(), sx, sy, SRCCOPY));
    facts.Add("px", Pixels(dst.dc(), 10, 8));
}

void Stretch(Facts& facts, int dx, int dy, int dw, int dh, int sx, int sy, int sw, int sh) {
    TextSurface src(6, 5, 14), dst(12, 10, 14);
    Gradient(src.dc(), 6, 5);
    SetStretchBltMode(dst.dc(), COLORONCOLOR);
    facts.Add("ret", StretchBlt(dst.dc(), dx, dy, dw, dh, src.dc(), sx, sy, sw, sh, SRCCOPY));
    facts.Add("px", Pixels(dst.dc(), 12, 10));
}

}  // namespace

RECORDED_CASE(blits, bitblt_plain) { Blit(facts, 2, 1, 4, 3, 1, 1); }
RECORDED_CASE(blits, bitblt_negative_width) { Blit(facts, 6, 1, -4, 3, 1, 1); }
RECORDED_CASE(blits, bitblt_negative_height) { Blit(facts, 2, 5, 4, -3, 1, 1); }
RECORDED_CASE(blits, bitblt_negative_both) { Blit(facts, 6, 5, -4, -3, 1, 1); }
RECORDED_CASE(blits, bitblt_source_left_outside) { Blit(facts, 2, 1, 5, 3, -2, 1); }
RECORDED_CASE(blits, bitblt_source_right_outside) { Blit(facts, 2, 1, 5, 3, 3, 1); }
RECORDED_CASE(blits, bitblt_dest_outside) { Blit(facts, -2, -1, 6, 5, 0, 0); }
RECORDED_CASE(blits, stretch_mirror_x) { Stretch(facts, 8, 1, -6, 5, 0, 0, 6, 5); }
RECORDED_CASE(blits, stretch_mirror_y) { Stretch(facts, 1, 7, 6, -5, 0, 0, 6, 5); }
RECORDED_CASE(blits, stretch_mirror_source_x) { Stretch(facts, 1, 1, 6, 5, 6, 0, -6, 5); }
RECORDED_CASE(blits, stretch_mirror_both_sides) { Stretch(facts, 8, 1, -6, 5, 6, 0, -6, 5); }
RECORDED_CASE(blits, stretch_mirror_x_grow) { Stretch(facts, 11, 0, -11, 9, 0, 0, 6, 5); }
RECORDED_CASE(blits, stretch_mirror_y_shrink) { Stretch(facts, 0, 4, 4, -3, 0, 0, 6, 5); }
RECORDED_CASE(blits, stretch_mirror_source_partly_outside) { Stretch(facts, 1, 1, 8, 6, 5, 0, -8, 5); }
RECORDED_CASE(blits, stretch_grow_odd) { Stretch(facts, 0, 0, 11, 7, 1, 1, 4, 3); }
RECORDED_CASE(blits, stretch_shrink_odd) { Stretch(facts, 1, 1, 4, 3, 0, 0, 6, 5); }

// The general rule behind the negative extents: width -w at x covers x - w + 1 .. x, the
// origin pixel counted back, on each surface on its own; the copy mirrors only when the
// two signs differ.
RECORDED_CASE(blits, bitblt_negative_source_inside) { Blit(facts, 7, 4, -3, -2, 4, 3); }
RECORDED_CASE(blits, bitblt_negative_dest_edge) { Blit(facts, 1, 1, -4, 3, 3, 1); }
RECORDED_CASE(blits, bitblt_negative_one) { Blit(facts, 4, 2, -1, -1, 2, 2); }

// Every sign combination of a 2x2 copy onto a 3x3 surface, one key per combination:
// "dw,dh,sw,sh" with the origins chosen so that each extent counts back from pixel 1.
RECORDED_CASE(blits, stretch_sign_combinations) {
    for (int bits = 0; bits < 16; ++bits) {
        const int dw = bits & 8 ? -2 : 2, dh = bits & 4 ? -2 : 2, sw = bits & 2 ? -2 : 2, sh = bits & 1 ? -2 : 2;
        TextSurface src(3, 3, 14), dst(3, 3, 14);
        Gradient(src.dc(), 3, 3);
        SetStretchBltMode(dst.dc(), COLORONCOLOR);
        StretchBlt(dst.dc(), 1, 1, dw, dh, src.dc(), 1, 1, sw, sh, SRCCOPY);
        facts.Add(std::to_string(dw) + "," + std::to_string(dh) + "," + std::to_string(sw) + "," + std::to_string(sh),
                  Pixels(dst.dc(), 3, 3));
    }
}

// Mirrored copies whose source lies partly outside the source surface, on every side.
RECORDED_CASE(blits, stretch_mirror_dest_source_left_outside) { Stretch(facts, 8, 1, -8, 6, -2, 0, 8, 5); }
RECORDED_CASE(blits, stretch_mirror_dest_source_right_outside) { Stretch(facts, 8, 1, -8, 6, 2, 0, 8, 5); }
RECORDED_CASE(blits, stretch_mirror_source_right_outside) { Stretch(facts, 1, 1, 8, 6, 7, 0, -8, 5); }
RECORDED_CASE(blits, stretch_mirror_source_both_outside) { Stretch(facts, 0, 1, 10, 5, 7, 0, -10, 5); }
RECORDED_CASE(blits, stretch_mirror_source_y_outside) { Stretch(facts, 1, 1, 6, 8, 0, 5, 6, -8); }
RECORDED_CASE(blits, stretch_mirror_source_outside_grow) { Stretch(facts, 0, 0, 12, 5, 5, 0, -8, 5); }
RECORDED_CASE(blits, stretch_mirror_dest_outside) { Stretch(facts, 4, 1, -8, 5, 0, 0, 6, 5); }
RECORDED_CASE(blits, stretch_plain_source_left_outside) { Stretch(facts, 1, 1, 8, 6, -2, 0, 8, 5); }
