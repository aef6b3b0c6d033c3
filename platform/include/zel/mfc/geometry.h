// CPoint, CSize and CRect: the POINT, SIZE and RECT structures with their framework
// operations. CRect keeps Win32's half-open convention: right and bottom are outside.
#pragma once

#include <utility>

#include <windows.h>

class CSize;
class CRect;

class CPoint : public tagPOINT {
public:
    CPoint() : tagPOINT{0, 0} {}
    CPoint(int initX, int initY) : tagPOINT{initX, initY} {}
    CPoint(POINT pt) : tagPOINT(pt) {}
    CPoint(SIZE size) : tagPOINT{size.cx, size.cy} {}
    // Signed client coordinates packed in a message's lParam.
    explicit CPoint(LPARAM packed) : tagPOINT{GET_X_LPARAM(packed), GET_Y_LPARAM(packed)} {}

    void Offset(int dx, int dy) { x += dx, y += dy; }
    void Offset(POINT pt) { Offset(pt.x, pt.y); }
    void Offset(SIZE size) { Offset(size.cx, size.cy); }
    void SetPoint(int initX, int initY) { x = initX, y = initY; }

    bool operator==(POINT pt) const { return x == pt.x && y == pt.y; }
    bool operator!=(POINT pt) const { return !(*this == pt); }
    void operator+=(SIZE size) { Offset(size); }
    void operator-=(SIZE size) { Offset(-size.cx, -size.cy); }
    void operator+=(POINT pt) { Offset(pt); }
    void operator-=(POINT pt) { Offset(-pt.x, -pt.y); }
    CPoint operator+(SIZE size) const { return CPoint(x + size.cx, y + size.cy); }
    CPoint operator-(SIZE size) const { return CPoint(x - size.cx, y - size.cy); }
    CPoint operator-() const { return CPoint(-x, -y); }
    CPoint operator+(POINT pt) const { return CPoint(x + pt.x, y + pt.y); }
    inline CSize operator-(POINT pt) const;
    inline CRect operator+(const RECT* rect) const;
    inline CRect operator-(const RECT* rect) const;
};

class CSize : public tagSIZE {
public:
    CSize() : tagSIZE{0, 0} {}
    CSize(int initCX, int initCY) : tagSIZE{initCX, initCY} {}
    CSize(SIZE size) : tagSIZE(size) {}
    CSize(POINT pt) : tagSIZE{pt.x, pt.y} {}

    void SetSize(int cx_, int cy_) { cx = cx_, cy = cy_; }
    bool operator==(SIZE size) const { return cx == size.cx && cy == size.cy; }
    bool operator!=(SIZE size) const { return !(*this == size); }
    void operator+=(SIZE size) { cx += size.cx, cy += size.cy; }
    void operator-=(SIZE size) { cx -= size.cx, cy -= size.cy; }
    CSize operator+(SIZE size) const { return CSize(cx + size.cx, cy + size.cy); }
    CSize operator-(SIZE size) const { return CSize(cx - size.cx, cy - size.cy); }
    CSize operator-() const { return CSize(-cx, -cy); }
    CPoint operator+(POINT pt) const { return CPoint(cx + pt.x, cy + pt.y); }
    CPoint operator-(POINT pt) const { return CPoint(cx - pt.x, cy - pt.y); }
};

inline CSize CPoint::operator-(POINT pt) const { return CSize(x - pt.x, y - pt.y); }

class CRect : public tagRECT {
public:
    CRect() : tagRECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : tagRECT{l, t, r, b} {}
    CRect(const RECT& rc) : tagRECT(rc) {}
    CRect(LPCRECT rc) : tagRECT(rc ? *rc : RECT{0, 0, 0, 0}) {}
    CRect(POINT pt, SIZE size) : tagRECT{pt.x, pt.y, pt.x + size.cx, pt.y + size.cy} {}
    CRect(POINT topLeft, POINT bottomRight) : tagRECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

    // Width and height may be negative for a rectangle that is not normalised.
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CSize Size() const { return CSize(Width(), Height()); }
    // The corners alias the structure's fields, as the framework's do.
    CPoint& TopLeft() { return *reinterpret_cast<CPoint*>(&left); }
    CPoint& BottomRight() { return *reinterpret_cast<CPoint*>(&right); }
    const CPoint& TopLeft() const { return *reinterpret_cast<const CPoint*>(&left); }
    const CPoint& BottomRight() const { return *reinterpret_cast<const CPoint*>(&right); }
    CPoint CenterPoint() const { return CPoint((left + right) / 2, (top + bottom) / 2); }

    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }

    // Empty: no area (width or height <= 0). Null: all four coordinates are zero.
    BOOL IsRectEmpty() const { return ::IsRectEmpty(this); }
    BOOL IsRectNull() const { return left == 0 && right == 0 && top == 0 && bottom == 0; }
    BOOL PtInRect(POINT pt) const { return ::PtInRect(this, pt); }
    BOOL EqualRect(LPCRECT rc) const { return rc && ::EqualRect(this, rc); }

    void SetRect(int l, int t, int r, int b) { left = l, top = t, right = r, bottom = b; }
    void SetRect(POINT topLeft, POINT bottomRight) { SetRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y); }
    void SetRectEmpty() { SetRect(0, 0, 0, 0); }
    void CopyRect(LPCRECT rc) {
        if (rc) *static_cast<RECT*>(this) = *rc;
    }

    void InflateRect(int dx, int dy) { left -= dx, top -= dy, right += dx, bottom += dy; }
    void InflateRect(SIZE size) { InflateRect(size.cx, size.cy); }
    void InflateRect(LPCRECT rc) {
        if (rc) left -= rc->left, top -= rc->top, right += rc->right, bottom += rc->bottom;
    }
    void InflateRect(int l, int t, int r, int b) { left -= l, top -= t, right += r, bottom += b; }
    void DeflateRect(int dx, int dy) { InflateRect(-dx, -dy); }
    void DeflateRect(SIZE size) { InflateRect(-size.cx, -size.cy); }
    void DeflateRect(LPCRECT rc) {
        if (rc) left += rc->left, top += rc->top, right -= rc->right, bottom -= rc->bottom;
    }
    void DeflateRect(int l, int t, int r, int b) { InflateRect(-l, -t, -r, -b); }

    void OffsetRect(int dx, int dy) { left += dx, top += dy, right += dx, bottom += dy; }
    void OffsetRect(POINT pt) { OffsetRect(pt.x, pt.y); }
    void OffsetRect(SIZE size) { OffsetRect(size.cx, size.cy); }
    void MoveToX(int x) { right += x - left, left = x; }
    void MoveToY(int y) { bottom += y - top, top = y; }
    void MoveToXY(int x, int y) { MoveToX(x), MoveToY(y); }
    void MoveToXY(POINT pt) { MoveToXY(pt.x, pt.y); }
    void NormalizeRect() {
        if (left > right) std::swap(left, right);
        if (top > bottom) std::swap(top, bottom);
    }
    void SwapLeftRight() { std::swap(left, right); }

    // The results follow the Win32 functions: empty inputs give an all-zero rectangle.
    BOOL IntersectRect(LPCRECT a, LPCRECT b) { return a && b ? ::IntersectRect(this, a, b) : Fail(); }
    BOOL UnionRect(LPCRECT a, LPCRECT b) { return a && b ? ::UnionRect(this, a, b) : Fail(); }
    BOOL SubtractRect(LPCRECT a, LPCRECT b) { return a && b ? ::SubtractRect(this, a, b) : Fail(); }

    void operator=(const RECT& rc) { CopyRect(&rc); }
    bool operator==(const RECT& rc) const { return ::EqualRect(this, &rc); }
    bool operator!=(const RECT& rc) const { return !(*this == rc); }
    void operator+=(POINT pt) { OffsetRect(pt); }
    void operator+=(SIZE size) { OffsetRect(size); }
    void operator+=(LPCRECT rc) { InflateRect(rc); }
    void operator-=(POINT pt) { OffsetRect(-pt.x, -pt.y); }
    void operator-=(SIZE size) { OffsetRect(-size.cx, -size.cy); }
    void operator-=(LPCRECT rc) { DeflateRect(rc); }
    void operator&=(const RECT& rc) { ::IntersectRect(this, this, &rc); }
    void operator|=(const RECT& rc) { ::UnionRect(this, this, &rc); }
    CRect operator+(POINT pt) const { return Offset(pt.x, pt.y); }
    CRect operator-(POINT pt) const { return Offset(-pt.x, -pt.y); }
    CRect operator+(SIZE size) const { return Offset(size.cx, size.cy); }
    CRect operator-(SIZE size) const { return Offset(-size.cx, -size.cy); }
    CRect operator+(LPCRECT rc) const {
        CRect r(*this);
        r.InflateRect(rc);
        return r;
    }
    CRect operator-(LPCRECT rc) const {
        CRect r(*this);
        r.DeflateRect(rc);
        return r;
    }
    CRect operator&(const RECT& rc) const {
        CRect r;
        ::IntersectRect(&r, this, &rc);
        return r;
    }
    CRect operator|(const RECT& rc) const {
        CRect r;
        ::UnionRect(&r, this, &rc);
        return r;
    }

private:
    CRect Offset(int dx, int dy) const {
        CRect r(*this);
        r.OffsetRect(dx, dy);
        return r;
    }
    BOOL Fail() {
        SetRectEmpty();
        return FALSE;
    }
};

inline CRect CPoint::operator+(const RECT* rect) const {
    CRect r(rect);
    r.OffsetRect(x, y);
    return r;
}
inline CRect CPoint::operator-(const RECT* rect) const {
    CRect r(rect);
    r.OffsetRect(-x, -y);
    return r;
}
