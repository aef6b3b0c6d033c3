// DrawTextW: line breaking, word breaking, tab expansion, prefix underlines, ellipses,
// alignment, and measuring with DT_CALCRECT.
//
// The rules that callers rely on and that are easy to get wrong:
//  - DT_SINGLELINE cancels DT_WORDBREAK; DT_VCENTER and DT_BOTTOM act only with it.
//  - A word longer than the line is not split (it overflows and is clipped) unless
//    DT_EDITCONTROL is given without an ellipsis flag.
//  - At a word break a left-aligned line keeps the spaces that still fit; a centred or
//    right-aligned one keeps all but one of them; one space at the break is swallowed.
//  - DT_CALCRECT keeps left and top, sets right to left + the widest line and bottom to
//    the final y; nothing is drawn and nothing is clipped.
//  - The result is the final y minus top (vertical offset included), never 0.
//  - The background is painted only behind text cells (ExtTextOut without ETO_OPAQUE).
#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <cwctype>
#include <string>
#include <vector>

#include "gdi/dc.h"
#include "gdi/text/realized_font.h"
#include "gdi/text/text_render.h"

using namespace zel::gdi;

namespace {

constexpr WCHAR kTab = L'\t', kLf = L'\n', kCr = L'\r', kSpace = L' ', kPrefix = L'&';
constexpr WCHAR kAlphaPrefix = 0x1E;  // old-style prefix, acts like '&'
constexpr WCHAR kKanaPrefix = 0x1F;   // katakana access key: it and its letter vanish
constexpr WCHAR kSlash = L'/', kBackslash = L'\\';
const std::wstring kEllipsis = L"...";

struct Segment {
    size_t start = 0;  // in Line::text
    size_t length = 0;
    int x = 0;  // from the line's left edge
};

// One line as it will be drawn: display characters (prefixes removed, ellipses applied);
// with DT_EXPANDTABS, tabs separate segments that start at tab stops.
struct Line {
    std::wstring text;
    std::vector<uint8_t> marks;  // 1 under a character a prefix underlines
    std::vector<Segment> segments;
    std::vector<size_t> origin;  // scratch: source index of each display character of a segment
    int width = 0;
    int height = 0;
    int underline = -1;  // index in text of the underlined character

    void Clear() {
        text.clear();
        marks.clear();
        segments.clear();
        width = height = 0;
        underline = -1;
    }
};

bool IsBreak(WCHAR c, UINT format) { return (c == kCr || c == kLf) && !(format & DT_SINGLELINE); }

bool IsIdeograph(WCHAR c) {
    return (c >= 0x2E80 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7AF) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFF00 && c <= 0xFFEF) || (c >= 0x20000 && c <= 0x3FFFF);
}

// Closing punctuation never starts a line, opening punctuation never ends one.
bool IsClosing(WCHAR c) {
    return c == 0x3001 || c == 0x3002 || c == 0x300D || c == 0x300F || c == 0xFF09 || c == 0xFF0C ||
           c == 0xFF0E || c == 0xFF1A || c == 0xFF1B || c == 0xFF01 || c == 0xFF1F;
}
bool IsOpening(WCHAR c) { return c == 0x300C || c == 0x300E || c == 0xFF08; }

// Whether a line may break before s[i] (0 < i < n): after white space, after a hyphen
// inside a word, and around ideographs.
bool SoftBreakBefore(const WCHAR* s, size_t i) {
    WCHAR prev = s[i - 1], cur = s[i];
    bool curSpace = cur == kSpace || cur == kTab || cur == 0x3000;
    bool prevSpace = prev == kSpace || prev == kTab || prev == 0x3000;
    if (prevSpace) return !curSpace;
    if (curSpace) return false;
    if (prev == L'-') return i >= 2 && std::iswalnum(s[i - 2]) && !std::iswdigit(cur);
    if (IsIdeograph(prev) || IsIdeograph(cur)) return !IsClosing(cur) && !IsOpening(prev);
    return false;
}

// Nothing left, or exactly one line break (CR, LF, CR LF or LF CR).
bool RemainderIsNoneOrNewline(const WCHAR* s, size_t pos, size_t end) {
    size_t left = end - pos;
    if (left == 0) return true;
    if (s[pos] != kCr && s[pos] != kLf) return false;
    if (left == 1) return true;
    if (left > 2 || s[pos + 1] == s[pos]) return false;
    return s[pos + 1] == kCr || s[pos + 1] == kLf;
}

class LineBreaker {
public:
    LineBreaker(RealizedFont& font, UINT format, int width, int tabWidth, const WCHAR* src, size_t end)
        : font_(font), format_(format), width_(width), tabWidth_(std::max(1, tabWidth)), src_(src), end_(end) {}

    // Lays out the line starting at `pos` into `line`; returns where the next line starts.
    // When an ellipsis shortens a segment, `ellipsized` receives the segment as drawn.
    size_t Next(size_t pos, bool lastLine, Line& line, std::wstring* ellipsized);

private:
    struct Break {
        size_t length;  // characters kept on the line
        size_t used;    // characters consumed, including a swallowed space
    };

    int Measure(const WCHAR* s, size_t n) const { return TextWidth(font_, s, static_cast<int>(n)); }
    size_t Fit(const WCHAR* s, size_t n, int maxWidth) const;
    Break WordBreak(const WCHAR* s, size_t n, size_t fit) const;
    void EndEllipsis(Line& line, size_t start, int maxWidth) const;
    void PathEllipsis(Line& line, size_t start, int maxWidth) const;
    size_t CopySegment(size_t pos, Line& line);
    void Replace(Line& line, size_t start, const std::wstring& text, const std::vector<uint8_t>& marks) const;

    RealizedFont& font_;
    UINT format_;
    int width_;
    int tabWidth_;
    const WCHAR* src_;
    size_t end_;
};

size_t LineBreaker::Fit(const WCHAR* s, size_t n, int maxWidth) const {
    int w = 0;
    for (size_t i = 0; i < n; ++i) {
        w += font_.Advance(static_cast<char32_t>(s[i]));
        if (w > maxWidth) return i;
    }
    return n;
}

LineBreaker::Break LineBreaker::WordBreak(const WCHAR* s, size_t n, size_t fit) const {
    // The last break opportunity at or before the first character that does not fit.
    size_t at = 0;
    for (size_t k = fit; k >= 1 && at == 0; --k)
        if (SoftBreakBefore(s, k)) at = k;
    if (at > 0) {
        size_t last = at - 1;  // last character before the break
        size_t p = ((format_ & (DT_RIGHT | DT_CENTER)) && s[last] == kSpace) ? last : at;
        bool swallow = p < n && s[p] == kSpace;
        return Break{p, p + (swallow ? 1 : 0)};
    }
    if ((format_ & (DT_EDITCONTROL | DT_WORD_ELLIPSIS | DT_PATH_ELLIPSIS)) == DT_EDITCONTROL) {
        size_t keep = std::max<size_t>(fit, 1);  // break inside the word
        return Break{keep, keep};
    }
    // The whole word stays on the line and overflows; one following space is swallowed.
    size_t p = fit;
    while (p < n && s[p] != kSpace) ++p;
    return Break{p, p + (p < n ? 1 : 0)};
}

void LineBreaker::Replace(Line& line, size_t start, const std::wstring& text, const std::vector<uint8_t>& marks) const {
    line.text.resize(start);
    line.text += text;
    line.marks.resize(start);
    line.marks.insert(line.marks.end(), marks.begin(), marks.end());
}

// The longest head of the segment that fits together with "..." (only "..." if none does).
void LineBreaker::EndEllipsis(Line& line, size_t start, int maxWidth) const {
    std::wstring seg = line.text.substr(start);
    std::vector<uint8_t> marks(line.marks.begin() + static_cast<ptrdiff_t>(start), line.marks.end());
    size_t keep = std::min(Fit(seg.data(), seg.size(), maxWidth) + 1, seg.size());
    int dots = Measure(kEllipsis.data(), kEllipsis.size());
    while (keep > 0 && Measure(seg.data(), keep) + dots > maxWidth) --keep;
    seg.resize(keep);
    seg += kEllipsis;
    marks.resize(keep);
    marks.insert(marks.end(), kEllipsis.size(), 0);
    Replace(line, start, seg, marks);
}

// "..." goes before the last slash or backslash; characters before it are dropped from
// the end until the result fits (or none are left).
void LineBreaker::PathEllipsis(Line& line, size_t start, int maxWidth) const {
    std::wstring seg = line.text.substr(start);
    std::vector<uint8_t> marks(line.marks.begin() + static_cast<ptrdiff_t>(start), line.marks.end());
    size_t slash = seg.find_last_of(std::wstring{kSlash, kBackslash});
    if (slash == std::wstring::npos) slash = 0;
    std::wstring tail = kEllipsis + seg.substr(slash);
    int tailWidth = Measure(tail.data(), tail.size());
    size_t keep = slash;
    while (keep > 0 && Measure(seg.data(), keep) + tailWidth > maxWidth) --keep;
    std::wstring out = seg.substr(0, keep) + tail;
    std::vector<uint8_t> outMarks(marks.begin(), marks.begin() + static_cast<ptrdiff_t>(keep));
    outMarks.insert(outMarks.end(), kEllipsis.size(), 0);
    outMarks.insert(outMarks.end(), marks.begin() + static_cast<ptrdiff_t>(slash), marks.end());
    Replace(line, start, out, outMarks);
}

// Copies display characters up to the next tab (with DT_EXPANDTABS), line break or end,
// removing prefixes. origin[j] is where display character j's source begins (its prefix
// included), so a break after j characters resumes at origin[j].
size_t LineBreaker::CopySegment(size_t pos, Line& line) {
    std::vector<size_t>& origin = line.origin;
    bool prefixes = !(format_ & DT_NOPREFIX);
    while (pos < end_ && !(src_[pos] == kTab && (format_ & DT_EXPANDTABS)) && !IsBreak(src_[pos], format_)) {
        WCHAR c = src_[pos];
        // A prefix as the very last character is shown as it is.
        if (!prefixes || pos + 1 == end_) {
            origin.push_back(pos);
            line.text += c;
            line.marks.push_back(0);
            ++pos;
        } else if (c == kPrefix || c == kAlphaPrefix) {
            size_t at = pos++;
            if (src_[pos] == kPrefix) {  // "&&" shows one '&'
                origin.push_back(at);
                line.text += kPrefix;
                line.marks.push_back(0);
                ++pos;
            } else if (!IsBreak(src_[pos], format_) && !(src_[pos] == kTab && (format_ & DT_EXPANDTABS))) {
                origin.push_back(at);
                line.text += src_[pos];
                line.marks.push_back(1);
                ++pos;
            }
        } else if (c == kKanaPrefix) {
            pos = std::min(pos + 2, end_);
        } else {
            origin.push_back(pos);
            line.text += c;
            line.marks.push_back(0);
            ++pos;
        }
    }
    return pos;
}

size_t LineBreaker::Next(size_t pos, bool lastLine, Line& line, std::wstring* ellipsized) {
    line.Clear();
    int x = 0;
    while (pos < end_) {
        if (src_[pos] == kTab && (format_ & DT_EXPANDTABS)) {
            // The first tab goes to the next stop, each further one a whole stop on.
            x = (x / tabWidth_ + 1) * tabWidth_;
            line.text += kTab;
            line.marks.push_back(0);
            for (++pos; pos < end_ && src_[pos] == kTab; ++pos) {
                x += tabWidth_;
                line.text += kTab;
                line.marks.push_back(0);
            }
        }
        size_t start = line.text.size();
        line.origin.clear();
        size_t segEnd = CopySegment(pos, line);
        pos = segEnd;
        const WCHAR* seg = line.text.data() + start;
        size_t n = line.text.size() - start;
        int room = width_ - x;
        size_t fit = Fit(seg, n, room);
        int w = Measure(seg, n);
        bool fits = fit >= n;
        bool broken = false;
        if (!fits && (format_ & DT_WORDBREAK)) {
            Break b = WordBreak(seg, n, fit);
            pos = b.used < n ? line.origin[b.used] : segEnd;
            line.text.resize(start + b.length);
            line.marks.resize(start + b.length);
            w = Measure(line.text.data() + start, b.length);
            fits = w <= room;
            broken = true;
        }
        bool ellipsis = false;
        if (!fits && (format_ & DT_PATH_ELLIPSIS)) {
            PathEllipsis(line, start, room);
            w = Measure(line.text.data() + start, line.text.size() - start);
            fits = w <= room;
            ellipsis = true;
        }
        // The last visible line gets "..." when text remains after it, any line when
        // its text does not fit and nothing but a line break follows.
        if ((!fits && (format_ & DT_WORD_ELLIPSIS)) ||
            ((format_ & DT_END_ELLIPSIS) &&
             ((lastLine && pos < end_) || (!fits && RemainderIsNoneOrNewline(src_, pos, end_))))) {
            EndEllipsis(line, start, room);
            w = Measure(line.text.data() + start, line.text.size() - start);
            ellipsis = true;
        }
        if (ellipsis && ellipsized) *ellipsized = line.text.substr(start);
        if (ellipsis && (format_ & DT_EXPANDTABS)) {
            // Nothing after an ellipsis is shown: skip to the end of the line.
            if (format_ & DT_SINGLELINE) pos = end_;
            while (pos < end_ && !IsBreak(src_[pos], format_)) ++pos;
        }
        line.segments.push_back(Segment{start, line.text.size() - start, x});
        x += w;
        line.height = font_.Metrics().tmHeight;
        if (broken || pos >= end_) break;
        if (IsBreak(src_[pos], format_)) {
            WCHAR first = src_[pos++];
            if (pos < end_ && IsBreak(src_[pos], format_) && src_[pos] != first) ++pos;  // CR LF or LF CR
            break;
        }
        // Otherwise a tab: the next segment.
    }
    line.width = x;
    // The first segment with an underlined character decides; in it, the last one.
    for (const Segment& s : line.segments) {
        for (size_t i = s.start + s.length; i-- > s.start;)
            if (line.marks[i]) {
                line.underline = static_cast<int>(i);
                break;
            }
        if (line.underline >= 0) break;
    }
    return pos;
}

// The underline below a prefixed character: one pixel below the baseline, as wide as the
// character's advance less one; a clip rectangle trims it (its bottom edge included).
// Rectangles near the ends of the int range: Win32 computes text positions in 32-bit
// arithmetic, which wraps; done in 64 bits and wrapped back so it stays defined.
int Wrap32(int64_t v) { return static_cast<int>(static_cast<uint32_t>(v)); }

void DrawUnderscore(DC& dc, RealizedFont& font, int x, int y, const WCHAR* seg, int offset, const RECT* clip) {
    int from = x + TextWidth(font, seg, offset);
    int to = x + TextWidth(font, seg, offset + 1) - 1;
    if (clip) {
        if (from > clip->right || to < clip->left || y < clip->top || y > clip->bottom) return;
        from = std::max<int>(from, clip->left);
        to = std::min<int>(to, clip->right);
    }
    if (from >= to) return;
    FillSolid(dc, RECT{dc.DevX(from), dc.DevY(y), dc.DevX(to), dc.DevY(y + 1)}, dc.state.textColor);
}

void DrawLine(HDC hdc, DC& dc, RealizedFont& font, const Line& line, int x, int y, const RECT& rect, UINT format) {
    bool clip = !(format & DT_NOCLIP);
    for (const Segment& s : line.segments) {
        const WCHAR* text = line.text.data() + s.start;
        if (!(format & DT_PREFIXONLY))
            ExtTextOutW(hdc, x + s.x, y, clip ? ETO_CLIPPED : 0, &rect, text, static_cast<UINT>(s.length), nullptr);
        int u = line.underline - static_cast<int>(s.start);
        if (line.underline >= 0 && u >= 0 && u < static_cast<int>(s.length) && !(format & DT_HIDEPREFIX))
            DrawUnderscore(dc, font, x + s.x, y + font.Metrics().tmAscent + 1, text, u, clip ? &rect : nullptr);
    }
}

// Scratch buffers reused across calls so that drawing a label allocates nothing.
struct Scratch {
    Line line;
    std::wstring ellipsized;
};

}  // namespace

extern "C" int DrawTextW(HDC hdc, LPCWSTR text, int count, LPRECT rect, UINT format) {
    DC* dc = LookupDC(hdc);
    if (!dc || !text || !rect || count < -1 || !dc->state.font) return 0;
    RealizedFont& font = Realize(*dc->state.font);
    int tabStop = 8;
    if (format & DT_TABSTOP) {
        // The tab stop count shares bits 8-15 with other flags, which it switches off.
        tabStop = static_cast<int>((format >> 8) & 0xFF);
        if (tabStop == 0) tabStop = 8;
        format &= 0xFFFF00FF;
    }
    if (format & DT_SINGLELINE) format &= ~DT_WORDBREAK;
    const TEXTMETRICW& tm = font.Metrics();
    int lh = tm.tmHeight + ((format & DT_EXTERNALLEADING) ? tm.tmExternalLeading : 0);

    if (count == 0 && text[0]) return lh;
    if (count == -1) {
        count = static_cast<int>(std::wcslen(text));
        if (count == 0) {
            if (format & DT_CALCRECT) {
                rect->right = rect->left;
                rect->bottom = rect->top + ((format & DT_SINGLELINE) ? lh : 0);
            }
            return lh;
        }
    }
    if (format & DT_CALCRECT) format |= DT_NOCLIP;

    static Scratch scratch;
    Line& line = scratch.line;
    std::wstring* ellipsized = (format & DT_MODIFYSTRING) ? &scratch.ellipsized : nullptr;
    if (ellipsized) ellipsized->clear();
    LineBreaker breaker(font, format, Wrap32(int64_t{rect->right} - rect->left), tm.tmAveCharWidth * tabStop, text,
                        static_cast<size_t>(count));
    RECT box = *rect;
    int x = box.left, y = box.top, widest = 0;
    size_t pos = 0;
    bool lastLine = false;
    do {
        // With clipping, the line that reaches the bottom is the last one drawn (with
        // DT_EDITCONTROL the last one that is wholly visible).
        lastLine = !(format & DT_NOCLIP) && y + ((format & DT_EDITCONTROL) ? 2 * lh - 1 : lh) > box.bottom;
        pos = breaker.Next(pos, lastLine, line, ellipsized);
        if (format & DT_CENTER)
            x = Wrap32(int64_t{box.left} + box.right - line.width) / 2;
        else if (format & DT_RIGHT)
            x = Wrap32(int64_t{box.right} - line.width);
        if (format & DT_SINGLELINE) {
            if (format & DT_VCENTER)
                y = Wrap32(int64_t{box.top} + Wrap32(int64_t{box.bottom} - box.top) / 2 - line.height / 2);
            else if (format & DT_BOTTOM)
                y = Wrap32(int64_t{box.bottom} - line.height);
        }
        if (format & DT_CALCRECT)
            widest = std::max(widest, line.width);
        else
            DrawLine(hdc, *dc, font, line, x, y, box, format);
        y = Wrap32(int64_t{y} + lh);
    } while (pos < static_cast<size_t>(count) && !lastLine);

    if (format & DT_CALCRECT) {
        rect->right = Wrap32(int64_t{rect->left} + widest);
        rect->bottom = y;
    }
    if (ellipsized && !ellipsized->empty()) {
        // The caller's buffer has room for four more characters than it holds.
        auto* out = const_cast<LPWSTR>(text);
        size_t n = std::min(ellipsized->size(), static_cast<size_t>(count) + 3);
        std::wmemcpy(out, ellipsized->data(), n);
        out[n] = 0;
    }
    const int height = Wrap32(int64_t{y} - box.top);
    return height == 0 ? 1 : height;
}
