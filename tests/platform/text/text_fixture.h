// Shared helpers for the text tests: surfaces with a known background, fonts selected
// for a scope, and ink measurements.
//
// The faces are pinned by file: each test that depends on glyph shapes or metrics first
// checks which file its face resolved to, so a changed font package shows up as such and
// not as a pile of pixel differences.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "gdi/text/realized_font.h"
#include "support/leak_check.h"
#include "support/memory_surface.h"
#include "support/platform_rects.h"
#include "support/sentinel.h"

namespace zel::test {

inline constexpr const char* kLiberationSans = "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf";
inline constexpr const char* kLiberationSansBold = "/usr/share/fonts/truetype/liberation2/LiberationSans-Bold.ttf";
inline constexpr const char* kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
inline constexpr const char* kTahoma = "/usr/share/wine/fonts/tahoma.ttf";
inline constexpr const char* kTahomaBold = "/usr/share/wine/fonts/tahomabd.ttf";
inline constexpr const char* kWqyMicroHei = "/usr/share/fonts/truetype/wqy/wqy-microhei.ttc";

struct FontSpec {
    const wchar_t* face = L"Liberation Sans";
    LONG height = 14;
    LONG weight = FW_NORMAL;
    BYTE quality = DEFAULT_QUALITY;
    BYTE italic = 0;
    BYTE underline = 0;
    BYTE strikeOut = 0;
};

inline LOGFONTW MakeLogFont(const FontSpec& spec) {
    LOGFONTW lf{};
    lf.lfHeight = spec.height;
    lf.lfWeight = spec.weight;
    lf.lfQuality = spec.quality;
    lf.lfItalic = spec.italic;
    lf.lfUnderline = spec.underline;
    lf.lfStrikeOut = spec.strikeOut;
    lf.lfCharSet = DEFAULT_CHARSET;
    std::wcsncpy(lf.lfFaceName, spec.face, LF_FACESIZE - 1);
    return lf;
}

inline HFONT MakeFont(const FontSpec& spec) {
    LOGFONTW lf = MakeLogFont(spec);
    return CreateFontIndirectW(&lf);
}

// A memory DC with a bitmap of the given depth, filled with `fill`; optionally with a
// font created from `spec` selected. Everything is released on destruction.
class Surface : public MemorySurface {
public:
    Surface(int w, int h, COLORREF fill = kSentinel, bool mono = false) : MemorySurface(w, h, mono) { Fill(fill); }
    ~Surface() {
        if (font_) {
            SelectObject(dc_, oldFont_);
            DeleteObject(font_);
        }
    }

    HFONT Use(const FontSpec& spec) {
        HFONT f = MakeFont(spec);
        HGDIOBJ old = SelectObject(dc_, f);
        if (font_) {
            DeleteObject(font_);
        } else {
            oldFont_ = old;
        }
        font_ = f;
        return f;
    }
    HFONT font() const { return font_; }

    void Fill(COLORREF c) { FillBox(RECT{0, 0, w_, h_}, c); }
    void FillBox(const RECT& r, COLORREF c) {
        HBRUSH b = CreateSolidBrush(c);
        FillRect(dc_, &r, b);
        DeleteObject(b);
    }
    // Every pixel as a string of '#' (== ink) and '.', for comparing two drawings.
    std::string Picture(COLORREF ink) const {
        std::string s;
        for (int y = 0; y < h_; ++y) {
            for (int x = 0; x < w_; ++x) s += Pixel(x, y) == ink ? '#' : '.';
            s += '\n';
        }
        return s;
    }

private:
    HFONT font_ = nullptr;
    HGDIOBJ oldFont_ = nullptr;
};

inline int Width(HDC dc, const wchar_t* text) {
    SIZE s{};
    GetTextExtentPoint32W(dc, text, static_cast<int>(std::wcslen(text)), &s);
    return s.cx;
}

}  // namespace zel::test
