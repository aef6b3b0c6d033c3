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
    int bkMode = TRANSPARENT;
};

std::string Corners(const RECT& r) {
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom);
}

// "calc" = return:rect after DT_CALCRECT, "draw" = return of the painting call, "ink" =
// the painted pixels (monochrome, black on white).
void Measure(Facts& facts, const Layout& l) {
    TextSurface s(120, 64, l.height);
    std::vector<WCHAR> text = Wide(l.text);
    RECT r = l.rect;
    int ret = DrawTextW(s.dc(), text.data(), l.count, &r, l.format | DT_CALCRECT);
    facts.Add("calc", std::to_string(ret) + ":" + Corners(r));
    if (l.bkMode == OPAQUE) {
        SetBkMode(s.dc(), OPAQUE);
        SetBkColor(s.dc(), RGB(0, 0, 255));
    }
    r = l.rect;
    facts.Add("draw", DrawTextW(s.dc(), text.data(), l.count, &r, l.format));
    facts.Add("after", Corners(r));
    facts.Add("ink", s.Ink());
}

const RECT kBox = {4, 4, 116, 60};
const RECT kNarrow = {2, 2, 62, 62};

// Every case is one row, registered in this order.
struct Row {
    const char* name;
    Layout layout;
};
const Row kRows[] = {
    {"single_left", {14, "Hello World", kBox, DT_SINGLELINE}},
    {"single_center", {14, "Hello World", kBox, DT_SINGLELINE | DT_CENTER}},
    {"single_right", {14, "Hello World", kBox, DT_SINGLELINE | DT_RIGHT}},
    {"single_vcenter", {14, "Hello World", kBox, DT_SINGLELINE | DT_VCENTER}},
    {"single_center_vcenter", {14, "Hello World", kBox, DT_SINGLELINE | DT_CENTER | DT_VCENTER}},
    {"single_bottom_right", {14, "Hello World", kBox, DT_SINGLELINE | DT_BOTTOM | DT_RIGHT}},
    {"vcenter_odd_room", {13, "Label", {0, 0, 120, 31}, DT_SINGLELINE | DT_CENTER | DT_VCENTER}},
    {"vcenter_taller_than_room", {18, "Label", {0, 10, 120, 20}, DT_SINGLELINE | DT_CENTER | DT_VCENTER}},
    {"center_wider_than_room", {14, "A caption far too wide", {30, 4, 70, 40}, DT_SINGLELINE | DT_CENTER}},
    {"vcenter_without_singleline", {14, "Hello", kBox, DT_VCENTER | DT_CENTER}},
    {"wordbreak_left", {14, "The quick brown fox jumps over", kNarrow, DT_WORDBREAK}},
    {"wordbreak_center", {14, "The quick brown fox jumps over", kNarrow, DT_WORDBREAK | DT_CENTER}},
    {"wordbreak_right", {14, "The quick brown fox jumps over", kNarrow, DT_WORDBREAK | DT_RIGHT}},
    {"wordbreak_h12", {12, "Repeat every track of the album", kNarrow, DT_WORDBREAK}},
    {"wordbreak_h18", {18, "Repeat every track of the album", {2, 2, 100, 62}, DT_WORDBREAK}},
    {"wordbreak_long_word", {14, "Supercalifragilistic word", {2, 2, 40, 62}, DT_WORDBREAK}},
    {"wordbreak_runs_of_spaces", {14, "a    b     c", {2, 2, 20, 62}, DT_WORDBREAK}},
    {"wordbreak_hyphen", {14, "well-known self-made", {2, 2, 50, 62}, DT_WORDBREAK}},
    {"wordbreak_clipped_at_bottom", {14, "one two three four five six seven", {2, 2, 40, 30}, DT_WORDBREAK}},
    {"wordbreak_noclip", {14, "one two three four five six seven", {2, 2, 40, 30}, DT_WORDBREAK | DT_NOCLIP}},
    {"wordbreak_singleline_ignored", {14, "one two three four", {2, 2, 40, 62}, DT_WORDBREAK | DT_SINGLELINE}},
    {"wordbreak_edit_control", {14, "Supercalifragilistic", {2, 2, 40, 62}, DT_WORDBREAK | DT_EDITCONTROL}},
    {"end_ellipsis", {14, "Hello World again", {2, 2, 60, 30}, DT_SINGLELINE | DT_END_ELLIPSIS}},
    {"end_ellipsis_fits", {14, "Hi", {2, 2, 60, 30}, DT_SINGLELINE | DT_END_ELLIPSIS}},
    {"end_ellipsis_tiny", {14, "Hello", {2, 2, 8, 30}, DT_SINGLELINE | DT_END_ELLIPSIS}},
    {"end_ellipsis_wordbreak", {14, "one two three four five six", {2, 2, 50, 30}, DT_WORDBREAK | DT_END_ELLIPSIS}},
    {"path_ellipsis", {14, "C:\\music\\albums\\track01.mp3", {2, 2, 90, 30}, DT_SINGLELINE | DT_PATH_ELLIPSIS}},
    {"word_ellipsis", {14, "Extraordinary words", {2, 2, 50, 30}, DT_SINGLELINE | DT_WORD_ELLIPSIS}},
    {"prefix_underline", {14, "&File &Open", kBox, DT_SINGLELINE}},
    {"prefix_double", {14, "A&&B", kBox, DT_SINGLELINE}},
    {"prefix_last_char", {14, "Save&", kBox, DT_SINGLELINE}},
    {"noprefix", {14, "&File", kBox, DT_SINGLELINE | DT_NOPREFIX}},
    {"prefix_wordbreak", {14, "Open &recent files now", kNarrow, DT_WORDBREAK}},
    {"expand_tabs", {14, "a\tbb\tccc", kBox, DT_EXPANDTABS}},
    {"tabs_unexpanded", {14, "a\tbb", kBox, 0}},
    {"tab_stop_4", {14, "a\tbb\tc", kBox, DT_EXPANDTABS | DT_TABSTOP | (4 << 8)}},
    {"line_breaks", {14, "one\ntwo\r\nthree", kBox, 0}},
    {"line_breaks_center", {14, "one\ntwo\r\nthree", kBox, DT_CENTER}},
    {"line_breaks_singleline", {14, "one\ntwo", kBox, DT_SINGLELINE}},
    {"blank_lines", {14, "a\n\nb\n", kBox, 0}},
    {"external_leading", {14, "one\ntwo", kBox, DT_EXTERNALLEADING}},
    {"partial_count", {14, "Hello World", kBox, DT_SINGLELINE, 5}},
    {"empty_single", {14, "", kBox, DT_SINGLELINE}},
    {"empty_multi", {14, "", kBox, 0}},
    {"reversed_rect", {14, "Hello", {100, 40, 20, 10}, DT_SINGLELINE}},
    {"reversed_rect_center", {14, "Hello", {100, 40, 20, 10}, DT_SINGLELINE | DT_CENTER | DT_VCENTER}},
    {"opaque_background", {14, "Hi there", {6, 6, 110, 50}, DT_SINGLELINE | DT_CENTER | DT_VCENTER, -1, OPAQUE}},
    {"opaque_wordbreak", {14, "one two three", {6, 6, 50, 50}, DT_WORDBREAK | DT_CENTER, -1, OPAQUE}},
    {"clipped_partially", {18, "Clipped", {10, 10, 40, 20}, DT_SINGLELINE}},
};

void MeasureRow(Facts& facts, const Row& row) { Measure(facts, row.layout); }
const std::vector<recorded::Register> kRegistered = recorded::RegisterTable<kRows, MeasureRow>("draw_text_flags");

}  // namespace

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
