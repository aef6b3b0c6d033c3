#include "StrokeDigits.h"

#include <initializer_list>

namespace zelctl {
namespace {

constexpr int kOneWidth = 6;

// One polyline in the current pen.
void Stroke(HDC dc, std::initializer_list<POINT> points) {
    const POINT* p = points.begin();
    ::MoveToEx(dc, p->x, p->y, nullptr);
    for (++p; p != points.end(); ++p) ::LineTo(dc, p->x, p->y);
}

// The seven-segment figures "2" to "9". Corners: left l, right r, top t, middle m,
// bottom b. A polyline ending on a corner no other stroke covers runs one pixel past it.
void SevenSegment(HDC dc, wchar_t ch, int l, int t, int w, int h) {
    const int r = l + w, m = t + (h - 3) / 2 + 1, b = t + h;
    switch (ch) {
        case L'2': Stroke(dc, {{l, t}, {r, t}, {r, m}, {l, m}, {l, b}, {r + 1, b}}); break;
        case L'3':
            Stroke(dc, {{l, t}, {r, t}, {r, b}, {l - 1, b}});
            Stroke(dc, {{l, m}, {r, m}});
            break;
        case L'4':
            Stroke(dc, {{l, t}, {l, m}, {r, m}});
            Stroke(dc, {{r, t}, {r, b + 1}});
            break;
        case L'5': Stroke(dc, {{r, t}, {l, t}, {l, m}, {r, m}, {r, b}, {l - 1, b}}); break;
        case L'6': Stroke(dc, {{r, t}, {l, t}, {l, b}, {r, b}, {r, m}, {l, m}}); break;
        case L'7': Stroke(dc, {{l, t}, {r, t}, {r, b + 1}}); break;
        case L'8':
            Stroke(dc, {{l, t}, {r, t}, {r, b}, {l, b}, {l, t - 1}});
            Stroke(dc, {{l, m}, {r, m}});
            break;
        case L'9': Stroke(dc, {{r, m}, {l, m}, {l, t}, {r, t}, {r, b}, {l - 1, b}}); break;
        default: break;
    }
}

}  // namespace

int StrokeGlyphWidth(wchar_t ch, int w) {
    if (ch == L'1') return kOneWidth;
    if (ch == L'-' || (ch >= L'0' && ch <= L'9')) return w;
    if (ch == L':') return 1;
    return 0;
}

int DrawStrokeGlyph(HDC dc, wchar_t ch, int x, int y, int w, int h) {
    switch (ch) {
        case L'0': Stroke(dc, {{x + 1, y}, {x + w, y}, {x + w, y + h}, {x, y + h}, {x, y}}); break;
        case L'1': Stroke(dc, {{x + w / 3, y}, {x + 2 * w / 3, y}, {x + 2 * w / 3, y + h + 1}}); break;
        case L'-': Stroke(dc, {{x + w, y + (h - 3) / 2 + 1}, {x - 1, y + (h - 3) / 2 + 1}}); break;
        case L':':
            // The dots are set in black, not in the pen's colour.
            ::SetPixel(dc, x, y + h / 4, RGB(0, 0, 0));
            ::SetPixel(dc, x, y + (3 * h) / 4, RGB(0, 0, 0));
            break;
        default: SevenSegment(dc, ch, x, y, w, h); break;
    }
    return StrokeGlyphWidth(ch, w);
}

}  // namespace zelctl
