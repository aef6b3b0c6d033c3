// Tahoma at every cell height from 8 to 40 pixels and the same as character heights:
// the text metrics, advances of characters and strings, DrawTextW's measured rectangle,
// and where monochrome ink lands, pixel for pixel.
#include "recorded.h"

namespace {

using recorded::Facts;
using recorded::TextSurface;
using recorded::Wide;

void Metrics(Facts& facts, const char* prefix, HDC dc) {
    TEXTMETRICW tm;
    std::memset(&tm, 0, sizeof tm);
    GetTextMetricsW(dc, &tm);
    std::string p = prefix;
    facts.Add(p + "cell", std::to_string(tm.tmHeight) + "=" + std::to_string(tm.tmAscent) + "+" +
                              std::to_string(tm.tmDescent))
        .Add(p + "leading", std::to_string(tm.tmInternalLeading) + "/" + std::to_string(tm.tmExternalLeading))
        .Add(p + "avemax", std::to_string(tm.tmAveCharWidth) + "/" + std::to_string(tm.tmMaxCharWidth))
        .Add(p + "weight", tm.tmWeight)
        .Add(p + "pitch", tm.tmPitchAndFamily)
        .Add(p + "chars", std::to_string(tm.tmFirstChar) + "-" + std::to_string(tm.tmLastChar) + "/d" +
                              std::to_string(tm.tmDefaultChar) + "/b" + std::to_string(tm.tmBreakChar));
}

// Advances of the printable ASCII characters, joined by '.'.
void Advances(Facts& facts, const char* key, HDC dc) {
    std::string all;
    for (WCHAR c = 0x20; c < 0x7F; ++c) {
        SIZE s = {0, 0};
        GetTextExtentPoint32W(dc, &c, 1, &s);
        if (!all.empty()) all += '.';
        all += std::to_string(s.cx);
    }
    facts.Add(key, all);
}

void Height(Facts& facts, LONG height) {
    for (LONG h : {height, -height}) {
        const char* sign = h > 0 ? "" : "neg.";
        TextSurface s(96, 64, h);
        Metrics(facts, sign, s.dc());
        Advances(facts, (std::string(sign) + "adv").c_str(), s.dc());
        std::vector<WCHAR> hello = Wide("Hello, World!");
        RECT r = {0, 0, 300, 100};
        int ret = DrawTextW(s.dc(), hello.data(), -1, &r, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
        facts.Add(std::string(sign) + "calc", std::to_string(ret) + ":" + std::to_string(r.right) + "x" +
                                                  std::to_string(r.bottom));
        std::vector<WCHAR> sample = Wide("Ag,jy");
        r = {1, 1, 95, 63};
        DrawTextW(s.dc(), sample.data(), -1, &r, DT_SINGLELINE | DT_NOPREFIX);
        facts.Add(std::string(sign) + "ink", s.Ink());
    }
}

void Bold(Facts& facts, LONG height) {
    TextSurface s(96, 64, height, FW_BOLD);
    Metrics(facts, "", s.dc());
    Advances(facts, "adv", s.dc());
    std::vector<WCHAR> sample = Wide("Bold Ag");
    RECT r = {1, 1, 95, 63};
    DrawTextW(s.dc(), sample.data(), -1, &r, DT_SINGLELINE | DT_NOPREFIX);
    facts.Add("ink", s.Ink());
}

// Every cell height from 8 to 40 (each also as a character height), and bold at the
// heights the controls use; one case per row, registered in this order.
struct Row {
    const char* name;
    LONG height;
};
const Row kHeights[] = {
    {"height_8", 8}, {"height_9", 9}, {"height_10", 10}, {"height_11", 11}, {"height_12", 12}, {"height_13", 13},
    {"height_14", 14}, {"height_15", 15}, {"height_16", 16}, {"height_17", 17}, {"height_18", 18}, {"height_19", 19},
    {"height_20", 20}, {"height_21", 21}, {"height_22", 22}, {"height_23", 23}, {"height_24", 24}, {"height_25", 25},
    {"height_26", 26}, {"height_27", 27}, {"height_28", 28}, {"height_29", 29}, {"height_30", 30}, {"height_31", 31},
    {"height_32", 32}, {"height_33", 33}, {"height_34", 34}, {"height_35", 35}, {"height_36", 36}, {"height_37", 37},
    {"height_38", 38}, {"height_39", 39}, {"height_40", 40},
};
const Row kBold[] = {
    {"bold_10", 10}, {"bold_12", 12}, {"bold_13", 13}, {"bold_14", 14}, {"bold_16", 16}, {"bold_18", 18},
    {"bold_20", 20}, {"bold_24", 24}, {"bold_32", 32},
};

void HeightRow(Facts& facts, const Row& row) { Height(facts, row.height); }
void BoldRow(Facts& facts, const Row& row) { Bold(facts, row.height); }
const std::vector<recorded::Register> kHeightCases = recorded::RegisterTable<kHeights, HeightRow>("text_heights");
const std::vector<recorded::Register> kBoldCases = recorded::RegisterTable<kBold, BoldRow>("text_heights");

}  // namespace
