// DrawTextW with Tahoma: every format flag the controls use and the ones around them,
// each measured (DT_CALCRECT) and painted into the same rectangle, with the return value,
// the measured rectangle and where the ink lands.
#include "recorded.h"

namespace {

using recorded::Facts;
using recorded::TextSurface;
using recorded::Wide;

struct Layout {
    LONG height;
    const char* text;
    RECT rect;
    UINT format;
    int count = -1;
};

// "calc" = return:rect after DT_CALCRECT, "draw" = return of the painting call, "ink" =
// the painted pixels (monochrome, black on white).
void Measure(Facts& facts, const Layout& l, BYTE bkMode = TRANSPARENT) {
    TextSurface s(120, 64, l.height);
    std::vector<WCHAR> text = Wide(l.text);
    RECT r = l.rect;
    int ret = DrawTextW(s.dc(), text.data(), l.count, &r, l.format | DT_CALCRECT);
    facts.Add("calc", std::to_string(ret) + ":" + std::to_string(r.left) + "," + std::to_string(r.top) + "," +
                          std::to_string(r.right) + "," + std::to_string(r.bottom));
    if (bkMode == OPAQUE) {
        SetBkMode(s.dc(), OPAQUE);
        SetBkColor(s.dc(), RGB(0, 0, 255));
    }
    r = l.rect;
    facts.Add("draw", DrawTextW(s.dc(), text.data(), l.count, &r, l.format));
    facts.Add("after", std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
                           std::to_string(r.bottom));
    facts.Add("ink", s.Ink());
}

const RECT kBox = {4, 4, 116, 60};
const RECT kNarrow = {2, 2, 62, 62};

}  // namespace

RECORDED_CASE(draw_text_flags, single_left) { Measure(facts, {14, "Hello World", kBox, DT_SINGLELINE}); }
RECORDED_CASE(draw_text_flags, single_center) { Measure(facts, {14, "Hello World", kBox, DT_SINGLELINE | DT_CENTER}); }
RECORDED_CASE(draw_text_flags, single_right) { Measure(facts, {14, "Hello World", kBox, DT_SINGLELINE | DT_RIGHT}); }
RECORDED_CASE(draw_text_flags, single_vcenter) {
    Measure(facts, {14, "Hello World", kBox, DT_SINGLELINE | DT_VCENTER});
}
RECORDED_CASE(draw_text_flags, single_center_vcenter) {
    Measure(facts, {14, "Hello World", kBox, DT_SINGLELINE | DT_CENTER | DT_VCENTER});
}
RECORDED_CASE(draw_text_flags, single_bottom_right) {
    Measure(facts, {14, "Hello World", kBox, DT_SINGLELINE | DT_BOTTOM | DT_RIGHT});
}
RECORDED_CASE(draw_text_flags, vcenter_odd_room) {
    Measure(facts, {13, "Label", {0, 0, 120, 31}, DT_SINGLELINE | DT_CENTER | DT_VCENTER});
}
RECORDED_CASE(draw_text_flags, vcenter_taller_than_room) {
    Measure(facts, {18, "Label", {0, 10, 120, 20}, DT_SINGLELINE | DT_CENTER | DT_VCENTER});
}
RECORDED_CASE(draw_text_flags, center_wider_than_room) {
    Measure(facts, {14, "A caption far too wide", {30, 4, 70, 40}, DT_SINGLELINE | DT_CENTER});
}
RECORDED_CASE(draw_text_flags, vcenter_without_singleline) {
    Measure(facts, {14, "Hello", kBox, DT_VCENTER | DT_CENTER});
}
RECORDED_CASE(draw_text_flags, wordbreak_left) {
    Measure(facts, {14, "The quick brown fox jumps over", kNarrow, DT_WORDBREAK});
}
RECORDED_CASE(draw_text_flags, wordbreak_center) {
    Measure(facts, {14, "The quick brown fox jumps over", kNarrow, DT_WORDBREAK | DT_CENTER});
}
RECORDED_CASE(draw_text_flags, wordbreak_right) {
    Measure(facts, {14, "The quick brown fox jumps over", kNarrow, DT_WORDBREAK | DT_RIGHT});
}
RECORDED_CASE(draw_text_flags, wordbreak_h12) {
    Measure(facts, {12, "Repeat every track of the album", kNarrow, DT_WORDBREAK});
}
RECORDED_CASE(draw_text_flags, wordbreak_h18) {
    Measure(facts, {18, "Repeat every track of the album", {2, 2, 100, 62}, DT_WORDBREAK});
}
RECORDED_CASE(draw_text_flags, wordbreak_long_word) {
    Measure(facts, {14, "Supercalifragilistic word", {2, 2, 40, 62}, DT_WORDBREAK});
}
RECORDED_CASE(draw_text_flags, wordbreak_runs_of_spaces) {
    Measure(facts, {14, "a    b     c", {2, 2, 20, 62}, DT_WORDBREAK});
}
RECORDED_CASE(draw_text_flags, wordbreak_hyphen) {
    Measure(facts, {14, "well-known self-made", {2, 2, 50, 62}, DT_WORDBREAK});
}
RECORDED_CASE(draw_text_flags, wordbreak_clipped_at_bottom) {
    Measure(facts, {14, "one two three four five six seven", {2, 2, 40, 30}, DT_WORDBREAK});
}
RECORDED_CASE(draw_text_flags, wordbreak_noclip) {
    Measure(facts, {14, "one two three four five six seven", {2, 2, 40, 30}, DT_WORDBREAK | DT_NOCLIP});
}
RECORDED_CASE(draw_text_flags, wordbreak_singleline_ignored) {
    Measure(facts, {14, "one two three four", {2, 2, 40, 62}, DT_WORDBREAK | DT_SINGLELINE});
}
RECORDED_CASE(draw_text_flags, wordbreak_edit_control) {
    Measure(facts, {14, "Supercalifragilistic", {2, 2, 40, 62}, DT_WORDBREAK | DT_EDITCONTROL});
}
RECORDED_CASE(draw_text_flags, end_ellipsis) {
    Measure(facts, {14, "Hello World again", {2, 2, 60, 30}, DT_SINGLELINE | DT_END_ELLIPSIS});
}
RECORDED_CASE(draw_text_flags, end_ellipsis_fits) {
    Measure(facts, {14, "Hi", {2, 2, 60, 30}, DT_SINGLELINE | DT_END_ELLIPSIS});
}
RECORDED_CASE(draw_text_flags, end_ellipsis_tiny) {
    Measure(facts, {14, "Hello", {2, 2, 8, 30}, DT_SINGLELINE | DT_END_ELLIPSIS});
}
RECORDED_CASE(draw_text_flags, end_ellipsis_wordbreak) {
    Measure(facts, {14, "one two three four five six", {2, 2, 50, 30}, DT_WORDBREAK | DT_END_ELLIPSIS});
}
RECORDED_CASE(draw_text_flags, path_ellipsis) {
    Measure(facts, {14, "C:\\music\\albums\\track01.mp3", {2, 2, 90, 30}, DT_SINGLELINE | DT_PATH_ELLIPSIS});
}
RECORDED_CASE(draw_text_flags, word_ellipsis) {
    Measure(facts, {14, "Extraordinary words", {2, 2, 50, 30}, DT_SINGLELINE | DT_WORD_ELLIPSIS});
}
RECORDED_CASE(draw_text_flags, prefix_underline) { Measure(facts, {14, "&File &Open", kBox, DT_SINGLELINE}); }
RECORDED_CASE(draw_text_flags, prefix_double) { Measure(facts, {14, "A&&B", kBox, DT_SINGLELINE}); }
RECORDED_CASE(draw_text_flags, prefix_last_char) { Measure(facts, {14, "Save&", kBox, DT_SINGLELINE}); }
RECORDED_CASE(draw_text_flags, noprefix) { Measure(facts, {14, "&File", kBox, DT_SINGLELINE | DT_NOPREFIX}); }
RECORDED_CASE(draw_text_flags, prefix_wordbreak) {
    Measure(facts, {14, "Open &recent files now", kNarrow, DT_WORDBREAK});
}
RECORDED_CASE(draw_text_flags, expand_tabs) { Measure(facts, {14, "a\tbb\tccc", kBox, DT_EXPANDTABS}); }
RECORDED_CASE(draw_text_flags, tabs_unexpanded) { Measure(facts, {14, "a\tbb", kBox, 0}); }
RECORDED_CASE(draw_text_flags, tab_stop_4) {
    Measure(facts, {14, "a\tbb\tc", kBox, DT_EXPANDTABS | DT_TABSTOP | (4 << 8)});
}
RECORDED_CASE(draw_text_flags, line_breaks) { Measure(facts, {14, "one\ntwo\r\nthree", kBox, 0}); }
RECORDED_CASE(draw_text_flags, line_breaks_center) {
    Measure(facts, {14, "one\ntwo\r\nthree", kBox, DT_CENTER});
}
RECORDED_CASE(draw_text_flags, line_breaks_singleline) {
    Measure(facts, {14, "one\ntwo", kBox, DT_SINGLELINE});
}
RECORDED_CASE(draw_text_flags, blank_lines) { Measure(facts, {14, "a\n\nb\n", kBox, 0}); }
RECORDED_CASE(draw_text_flags, external_leading) {
    Measure(facts, {14, "one\ntwo", kBox, DT_EXTERNALLEADING});
}
RECORDED_CASE(draw_text_flags, partial_count) { Measure(facts, {14, "Hello World", kBox, DT_SINGLELINE, 5}); }
RECORDED_CASE(draw_text_flags, empty_single) { Measure(facts, {14, "", kBox, DT_SINGLELINE}); }
RECORDED_CASE(draw_text_flags, empty_multi) { Measure(facts, {14, "", kBox, 0}); }
RECORDED_CASE(draw_text_flags, reversed_rect) {
    Measure(facts, {14, "Hello", {100, 40, 20, 10}, DT_SINGLELINE});
}
RECORDED_CASE(draw_text_flags, reversed_rect_center) {
    Measure(facts, {14, "Hello", {100, 40, 20, 10}, DT_SINGLELINE | DT_CENTER | DT_VCENTER});
}
RECORDED_CASE(draw_text_flags, opaque_background) {
    Measure(facts, {14, "Hi there", {6, 6, 110, 50}, DT_SINGLELINE | DT_CENTER | DT_VCENTER}, OPAQUE);
}
RECORDED_CASE(draw_text_flags, opaque_wordbreak) {
    Measure(facts, {14, "one two three", {6, 6, 50, 50}, DT_WORDBREAK | DT_CENTER}, OPAQUE);
}
RECORDED_CASE(draw_text_flags, clipped_partially) {
    Measure(facts, {18, "Clipped", {10, 10, 40, 20}, DT_SINGLELINE});
}
RECORDED_CASE(draw_text_flags, bold_center_vcenter) {
    TextSurface s(120, 64, 16, FW_BOLD);
    std::vector<WCHAR> text = Wide("Bold caption");
    RECT r = kBox;
    int ret = DrawTextW(s.dc(), text.data(), -1, &r, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_CALCRECT);
    facts.Add("calc", ret).Rect("calcrect", r);
    r = kBox;
    facts.Add("draw", DrawTextW(s.dc(), text.data(), -1, &r, DT_SINGLELINE | DT_CENTER | DT_VCENTER));
    facts.Add("ink", s.Ink());
}
