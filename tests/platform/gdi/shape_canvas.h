// A small memory surface for exact pixel tests, pre-filled with a sentinel colour so that
// a stray pixel outside the expected shape shows up.
#pragma once

#include <windows.h>

#include "support/memory_surface.h"
#include "support/sentinel.h"

#include <set>
#include <string>
#include <utility>

namespace zel::test {

using Ink = std::set<std::pair<int, int>>;

class ShapeCanvas : public MemorySurface {
public:
    ShapeCanvas(int w, int h, bool mono = false, COLORREF fill = kSentinel) : MemorySurface(w, h, mono) { Fill(fill); }
    void Fill(COLORREF c) {
        for (int y = 0; y < h_; ++y)
            for (int x = 0; x < w_; ++x) SetPixel(dc_, x, y, c);
    }
    // One text line per row: '.' sentinel, '#' black, 'o' white, 'r' red, 'b' blue, '?' other.
    std::string Picture() const {
        std::string s;
        for (int y = 0; y < h_; ++y) {
            for (int x = 0; x < w_; ++x) s += Glyph(GetPixel(dc_, x, y));
            s += '\n';
        }
        return s;
    }
    Ink Pixels(COLORREF background = kSentinel) const {
        Ink ink;
        for (int y = 0; y < h_; ++y)
            for (int x = 0; x < w_; ++x)
                if (GetPixel(dc_, x, y) != background) ink.insert({x, y});
        return ink;
    }
    static char Glyph(COLORREF c) {
        switch (c) {
            case kSentinel: return '.';
            case RGB(0, 0, 0): return '#';
            case RGB(255, 255, 255): return 'o';
            case RGB(255, 0, 0): return 'r';
            case RGB(0, 0, 255): return 'b';
            default: return '?';
        }
    }
};

// Selects a pen and a brush for a scope, then restores and deletes them.
class Selected {
public:
    Selected(HDC dc, HPEN pen, HBRUSH brush)
        : dc_(dc), pen_(pen), brush_(brush), oldPen_(SelectObject(dc, pen)), oldBrush_(SelectObject(dc, brush)) {}
    ~Selected() {
        SelectObject(dc_, oldPen_);
        SelectObject(dc_, oldBrush_);
        DeleteObject(pen_);  // stock objects ignore this
        DeleteObject(brush_);
    }

private:
    HDC dc_;
    HPEN pen_;
    HBRUSH brush_;
    HGDIOBJ oldPen_, oldBrush_;
};

inline HPEN Pen(COLORREF c, int width = 1, int style = PS_SOLID) { return CreatePen(style, width, c); }
inline HPEN NullPen() { return static_cast<HPEN>(GetStockObject(NULL_PEN)); }
inline HBRUSH NullBrush() { return static_cast<HBRUSH>(GetStockObject(NULL_BRUSH)); }

}  // namespace zel::test
