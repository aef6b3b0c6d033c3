// Tahoma asked for in ways the face has no file for: italics (slanted outlines), weights
// between and beyond regular and bold, an average character width (lfWidth), and
// underlined or struck-out text measured like plain text.
#include "recorded.h"

namespace {

using recorded::Facts;
using recorded::Wide;

void Variant(Facts& facts, LONG height, LONG width, LONG weight, BYTE italic) {
    recorded::TextSurface s(120, 48, height, weight, NONANTIALIASED_QUALITY, width, italic);
    TEXTMETRICW tm;
    std::memset(&tm, 0, sizeof tm);
    GetTextMetricsW(s.dc(), &tm);
    facts.Add("cell", std::to_string(tm.tmHeight) + "=" + std::to_string(tm.tmAscent) + "+" +
                          std::to_string(tm.tmDescent))
        .Add("avemax", std::to_string(tm.tmAveCharWidth) + "/" + std::to_string(tm.tmMaxCharWidth))
        .Add("weight", tm.tmWeight)
        .Add("italic", tm.tmItalic)
        .Add("overhang", tm.tmOverhang);
    std::vector<WCHAR> text = Wide("Hello World");
    SIZE size = {0, 0};
    GetTextExtentPoint32W(s.dc(), text.data(), 11, &size);
    facts.Add("extent", std::to_string(size.cx) + "x" + std::to_string(size.cy));
    TextOutW(s.dc(), 4, 4, text.data(), 11);
    facts.Add("ink", s.Ink(1));  // recorded with the hash of each pixel's blue byte
}

}  // namespace

RECORDED_CASE(font_variants, italic_14) { Variant(facts, 14, 0, FW_NORMAL, 1); }
RECORDED_CASE(font_variants, italic_24) { Variant(facts, 24, 0, FW_NORMAL, 1); }
RECORDED_CASE(font_variants, bold_italic_18) { Variant(facts, 18, 0, FW_BOLD, 1); }
RECORDED_CASE(font_variants, weight_100) { Variant(facts, 14, 0, 100, 0); }
RECORDED_CASE(font_variants, weight_500) { Variant(facts, 14, 0, 500, 0); }
RECORDED_CASE(font_variants, weight_600) { Variant(facts, 14, 0, 600, 0); }
RECORDED_CASE(font_variants, weight_900) { Variant(facts, 14, 0, 900, 0); }
RECORDED_CASE(font_variants, weight_0) { Variant(facts, 14, 0, 0, 0); }
RECORDED_CASE(font_variants, width_4) { Variant(facts, 14, 4, FW_NORMAL, 0); }
RECORDED_CASE(font_variants, width_10) { Variant(facts, 14, 10, FW_NORMAL, 0); }
RECORDED_CASE(font_variants, width_negative) { Variant(facts, 14, -10, FW_NORMAL, 0); }
