// Recorded Win32 behaviour: small case functions that exercise GDI and print one line
// of `key=value` facts each. The same sources build twice: with MinGW for Windows, run
// under Wine to record what a real implementation answers (record/record.sh writes
// expected/<group>.txt), and natively into this folder's test, which replays every case
// against the platform and compares its line with the recorded one. Only the Win32 API
// is used here, so nothing in a case can lean on the platform's internals.
#pragma once

#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace recorded {

// One case's output: "name key=value key=value ...", values without spaces.
class Facts {
public:
    Facts& Add(const std::string& key, const std::string& value) {
        text_ += ' ';
        text_ += key;
        text_ += '=';
        text_ += value;
        return *this;
    }
    Facts& Add(const std::string& key, long long value) { return Add(key, std::to_string(value)); }
    Facts& Rect(const std::string& key, const RECT& r) {
        return Add(key, std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
                            std::to_string(r.bottom));
    }
    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

using CaseFn = void (*)(Facts&);
struct Case {
    const char* group;
    const char* name;
    CaseFn fn;
};

inline std::vector<Case>& Registry() {
    static std::vector<Case> cases;
    return cases;
}

struct Register {
    Register(const char* group, const char* name, CaseFn fn) { Registry().push_back(Case{group, name, fn}); }
};

// A table of cases: one case per row of `Rows` (rows have a `name`), registered in row
// order, each running Fn(facts, row).
//   const std::vector<Register> registered = RegisterTable<kRows, Measure>("group");
template <const auto& Rows, auto Fn, std::size_t I>
void RunRow(Facts& facts) {
    Fn(facts, Rows[I]);
}
template <const auto& Rows, auto Fn, std::size_t... I>
std::vector<Register> RegisterRows(const char* group, std::index_sequence<I...>) {
    return {Register(group, Rows[I].name, &RunRow<Rows, Fn, I>)...};
}
template <const auto& Rows, auto Fn>
std::vector<Register> RegisterTable(const char* group) {
    return RegisterRows<Rows, Fn>(group, std::make_index_sequence<std::size(Rows)>());
}

// Runs the named case and returns its whole line.
inline std::string Run(const Case& c) {
    Facts facts;
    c.fn(facts);
    return std::string(c.name) + facts.Text();
}

// A 32-bpp memory surface compatible with the screen, filled white, with a font of the
// "Tahoma" face selected (height, weight, quality, average width, italic, underline and
// strike-out as the LOGFONT fields) and black text on a transparent background.
// Everything it creates it releases.
class TextSurface {
public:
    TextSurface(int width, int height, LONG fontHeight, LONG weight = FW_NORMAL,
                BYTE quality = NONANTIALIASED_QUALITY, LONG fontWidth = 0, BYTE italic = 0, BYTE underline = 0,
                BYTE strikeOut = 0)
        : width_(width), height_(height) {
        HDC screen = GetDC(nullptr);
        dc_ = CreateCompatibleDC(screen);
        bitmap_ = CreateCompatibleBitmap(screen, width, height);
        ReleaseDC(nullptr, screen);
        oldBitmap_ = SelectObject(dc_, bitmap_);
        LOGFONTW lf;
        std::memset(&lf, 0, sizeof lf);
        lf.lfHeight = fontHeight;
        lf.lfWidth = fontWidth;
        lf.lfWeight = weight;
        lf.lfItalic = italic;
        lf.lfUnderline = underline;
        lf.lfStrikeOut = strikeOut;
        lf.lfCharSet = DEFAULT_CHARSET;
        lf.lfQuality = quality;
        const char* face = "Tahoma";
        for (int i = 0; face[i]; ++i) lf.lfFaceName[i] = static_cast<WCHAR>(face[i]);
        font_ = CreateFontIndirectW(&lf);
        oldFont_ = SelectObject(dc_, font_);
        SetBkMode(dc_, TRANSPARENT);
        SetTextColor(dc_, RGB(0, 0, 0));
        Clear();
    }
    ~TextSurface() {
        SelectObject(dc_, oldFont_);
        DeleteObject(font_);
        SelectObject(dc_, oldBitmap_);
        DeleteObject(bitmap_);
        DeleteDC(dc_);
    }
    TextSurface(const TextSurface&) = delete;
    TextSurface& operator=(const TextSurface&) = delete;

    HDC dc() const { return dc_; }
    void Clear() {
        RECT all = {0, 0, width_, height_};
        HBRUSH white = CreateSolidBrush(RGB(255, 255, 255));
        FillRect(dc_, &all, white);
        DeleteObject(white);
    }
    // "l,t,r,b" of the non-white pixels ("empty" when none) and an FNV-1a hash of all
    // pixels, as "bbox/hash"; the hash takes each pixel's first `channels` bytes (blue,
    // green, red).
    std::string Ink(int channels = 3) const {
        RECT box = {width_, height_, -1, -1};
        uint32_t hash = 2166136261u;
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x) {
                COLORREF c = GetPixel(dc_, x, y) & 0xFFFFFF;
                for (int k = 0; k < channels; ++k) {
                    hash ^= (c >> (8 * k)) & 0xFF;
                    hash *= 16777619u;
                }
                if (c == RGB(255, 255, 255)) continue;
                if (x < box.left) box.left = x;
                if (y < box.top) box.top = y;
                if (x + 1 > box.right) box.right = x + 1;
                if (y + 1 > box.bottom) box.bottom = y + 1;
            }
        char buf[64];
        if (box.right < 0)
            std::snprintf(buf, sizeof buf, "empty/%08x", static_cast<unsigned>(hash));
        else
            std::snprintf(buf, sizeof buf, "%ld,%ld,%ld,%ld/%08x", static_cast<long>(box.left),
                          static_cast<long>(box.top), static_cast<long>(box.right), static_cast<long>(box.bottom),
                          static_cast<unsigned>(hash));
        return buf;
    }

private:
    int width_, height_;
    HDC dc_;
    HBITMAP bitmap_;
    HGDIOBJ oldBitmap_;
    HFONT font_;
    HGDIOBJ oldFont_;
};

// UTF-16 from ASCII (WCHAR is 16-bit on Windows and wchar_t here).
inline std::vector<WCHAR> Wide(const char* s) {
    std::vector<WCHAR> w;
    for (; *s; ++s) w.push_back(static_cast<WCHAR>(static_cast<unsigned char>(*s)));
    w.push_back(0);
    return w;
}

}  // namespace recorded

#define RECORDED_CAT2(a, b) a##b
#define RECORDED_CAT(a, b) RECORDED_CAT2(a, b)
// RECORDED_CASE(group, name) { facts.Add(...); }
#define RECORDED_CASE(group, name)                                                              \
    static void RECORDED_CAT(case_, name)(recorded::Facts & facts);                            \
    static recorded::Register RECORDED_CAT(reg_, name)(#group, #name, RECORDED_CAT(case_, name)); \
    static void RECORDED_CAT(case_, name)(recorded::Facts & facts)
