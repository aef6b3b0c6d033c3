// Rectangle helpers. Rectangles are half-open: right and bottom are outside.
#include <windows.h>

#include <algorithm>
#include <cstdint>

namespace {

// Coordinates wrap on overflow as 32-bit Win32 arithmetic does (no undefined behaviour).
LONG Add(LONG a, int b) { return static_cast<LONG>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b)); }
LONG Sub(LONG a, int b) { return static_cast<LONG>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b)); }

}  // namespace

extern "C" {

BOOL SetRect(LPRECT r, int left, int top, int right, int bottom) {
    if (!r) return FALSE;
    *r = RECT{left, top, right, bottom};
    return TRUE;
}

BOOL SetRectEmpty(LPRECT r) {
    if (!r) return FALSE;
    *r = RECT{0, 0, 0, 0};
    return TRUE;
}

BOOL CopyRect(LPRECT dst, const RECT* src) {
    if (!dst || !src) return FALSE;
    *dst = *src;
    return TRUE;
}

// A rectangle with no area, including an inverted one, is empty.
BOOL IsRectEmpty(const RECT* r) { return !r || r->left >= r->right || r->top >= r->bottom; }

BOOL PtInRect(const RECT* r, POINT pt) {
    return r && pt.x >= r->left && pt.x < r->right && pt.y >= r->top && pt.y < r->bottom;
}

BOOL OffsetRect(LPRECT r, int dx, int dy) {
    if (!r) return FALSE;
    r->left = Add(r->left, dx);
    r->right = Add(r->right, dx);
    r->top = Add(r->top, dy);
    r->bottom = Add(r->bottom, dy);
    return TRUE;
}

// Negative amounts shrink; shrinking past the centre leaves an inverted rect, not an
// empty one.
BOOL InflateRect(LPRECT r, int dx, int dy) {
    if (!r) return FALSE;
    r->left = Sub(r->left, dx);
    r->right = Add(r->right, dx);
    r->top = Sub(r->top, dy);
    r->bottom = Add(r->bottom, dy);
    return TRUE;
}

// Empty results are stored as (0,0,0,0) and return FALSE.
BOOL IntersectRect(LPRECT dst, const RECT* a, const RECT* b) {
    if (!dst || !a || !b) return FALSE;
    if (IsRectEmpty(a) || IsRectEmpty(b) || a->left >= b->right || b->left >= a->right || a->top >= b->bottom ||
        b->top >= a->bottom) {
        SetRectEmpty(dst);
        return FALSE;
    }
    *dst = RECT{std::max(a->left, b->left), std::max(a->top, b->top), std::min(a->right, b->right),
                std::min(a->bottom, b->bottom)};
    return TRUE;
}

// An empty operand is ignored; two empty operands give an empty result and FALSE.
BOOL UnionRect(LPRECT dst, const RECT* a, const RECT* b) {
    if (!dst || !a || !b) return FALSE;
    bool ea = IsRectEmpty(a), eb = IsRectEmpty(b);
    if (ea && eb) {
        SetRectEmpty(dst);
        return FALSE;
    }
    if (ea) {
        *dst = *b;
    } else if (eb) {
        *dst = *a;
    } else {
        *dst = RECT{std::min(a->left, b->left), std::min(a->top, b->top), std::max(a->right, b->right),
                    std::max(a->bottom, b->bottom)};
    }
    return TRUE;
}

// Only a subtraction that removes a full band along one side shrinks the result.
BOOL SubtractRect(LPRECT dst, const RECT* a, const RECT* b) {
    if (!dst || !a || !b) return FALSE;
    if (IsRectEmpty(a)) {
        SetRectEmpty(dst);
        return FALSE;
    }
    RECT r = *a, i;
    if (IntersectRect(&i, a, b)) {
        if (EqualRect(&i, a)) {
            SetRectEmpty(dst);
            return FALSE;
        }
        if (i.top == r.top && i.bottom == r.bottom) {
            if (i.left == r.left) r.left = i.right;
            else if (i.right == r.right) r.right = i.left;
        } else if (i.left == r.left && i.right == r.right) {
            if (i.top == r.top) r.top = i.bottom;
            else if (i.bottom == r.bottom) r.bottom = i.top;
        }
    }
    *dst = r;
    return TRUE;
}

BOOL EqualRect(const RECT* a, const RECT* b) {
    return a && b && a->left == b->left && a->top == b->top && a->right == b->right && a->bottom == b->bottom;
}

}  // extern "C"
