// What the controls decide from DrawTextW's measurements: for every height from 8 to 40,
// the rectangle DT_CALCRECT gives a caption in a fixed width (labels shrink their font
// until this fits), and where the end ellipsis cuts a list entry. Smoothed text is
// recorded by its ink box only: the shades of its edge pixels are the renderer's own.
#include "recorded.h"

namespace {

using recorded::Facts;
using recorded::TextSurface;
using recorded::Wide;

void Fit(Facts& facts, const char* text, LONG width, UINT format) {
    std::vector<WCHAR> w = Wide(text);
    for (LONG h = 8; h <= 40; ++h) {
        TextSurface s(4, 4, h);
        RECT r = {0, 0, width, 400};
        int ret = DrawTextW(s.dc(), w.data(), -1, &r, format | DT_CALCRECT);
        facts.Add("h" + std::to_string(h), std::to_string(ret) + ":" + std::to_string(r.right) + "x" +
                                               std::to_string(r.bottom));
    }
}

// The ink box of smoothed text; "empty" when nothing was drawn.
std::string InkBox(const std::string& ink) { return ink.substr(0, ink.find('/')); }

void Smoothed(Facts& facts, LONG height) {
    for (BYTE quality : {static_cast<BYTE>(ANTIALIASED_QUALITY), static_cast<BYTE>(NONANTIALIASED_QUALITY)}) {
        TextSurface s(120, 64, height, FW_NORMAL, quality);
        std::vector<WCHAR> w = Wide("Smooth Ag");
        RECT r = {2, 2, 118, 62};
        DrawTextW(s.dc(), w.data(), -1, &r, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
        facts.Add(quality == ANTIALIASED_QUALITY ? "aa" : "mono", InkBox(s.Ink()));
    }
}

}  // namespace

RECORDED_CASE(text_fitting, caption_wordbreak_80) { Fit(facts, "Repeat every track of the album", 80, DT_WORDBREAK); }
RECORDED_CASE(text_fitting, caption_wordbreak_center_120) {
    Fit(facts, "Shuffle the play list before it starts", 120, DT_WORDBREAK | DT_CENTER);
}
RECORDED_CASE(text_fitting, caption_single_line) { Fit(facts, "Volume 100%", 400, DT_SINGLELINE); }
RECORDED_CASE(text_fitting, entry_end_ellipsis_90) {
    Fit(facts, "03 - A very long track title.mp3", 90, DT_SINGLELINE | DT_END_ELLIPSIS);
}
RECORDED_CASE(text_fitting, digits_single_line) { Fit(facts, "0123456789 12:45", 400, DT_SINGLELINE); }

namespace {

// Smoothed text at every fourth height from 12 to 40.
struct Row {
    const char* name;
    LONG height;
};
const Row kSmoothed[] = {{"smoothed_12", 12}, {"smoothed_16", 16}, {"smoothed_20", 20}, {"smoothed_24", 24},
                         {"smoothed_28", 28}, {"smoothed_32", 32}, {"smoothed_36", 36}, {"smoothed_40", 40}};
void SmoothedRow(Facts& facts, const Row& row) { Smoothed(facts, row.height); }
const std::vector<recorded::Register> kSmoothedCases = recorded::RegisterTable<kSmoothed, SmoothedRow>("text_fitting");

}  // namespace
