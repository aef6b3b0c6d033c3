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

}  // namespace

#define HEIGHT_CASE(h) \
    RECORDED_CASE(text_heights, height_##h) { Height(facts, h); }
HEIGHT_CASE(8)
HEIGHT_CASE(9)
HEIGHT_CASE(10)
HEIGHT_CASE(11)
HEIGHT_CASE(12)
HEIGHT_CASE(13)
HEIGHT_CASE(14)
HEIGHT_CASE(15)
HEIGHT_CASE(16)
HEIGHT_CASE(17)
HEIGHT_CASE(18)
HEIGHT_CASE(19)
HEIGHT_CASE(20)
HEIGHT_CASE(21)
HEIGHT_CASE(22)
HEIGHT_CASE(23)
HEIGHT_CASE(24)
HEIGHT_CASE(25)
HEIGHT_CASE(26)
HEIGHT_CASE(27)
HEIGHT_CASE(28)
HEIGHT_CASE(29)
HEIGHT_CASE(30)
HEIGHT_CASE(31)
HEIGHT_CASE(32)
HEIGHT_CASE(33)
HEIGHT_CASE(34)
HEIGHT_CASE(35)
HEIGHT_CASE(36)
HEIGHT_CASE(37)
HEIGHT_CASE(38)
HEIGHT_CASE(39)
HEIGHT_CASE(40)

#define BOLD_CASE(h) \
    RECORDED_CASE(text_heights, bold_##h) { Bold(facts, h); }
BOLD_CASE(10)
BOLD_CASE(12)
BOLD_CASE(13)
BOLD_CASE(14)
BOLD_CASE(16)
BOLD_CASE(18)
BOLD_CASE(20)
BOLD_CASE(24)
BOLD_CASE(32)
