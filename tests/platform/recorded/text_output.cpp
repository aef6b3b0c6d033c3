// ExtTextOutW and TextOutW with Tahoma: the reference point under every text alignment,
// the current position, clipping and opaque rectangles, explicit advances, underlined
// and struck-out faces, and GetTextExtentExPointW's fitting and partial extents.
#include "recorded.h"

namespace {

using recorded::Facts;
using recorded::TextSurface;
using recorded::Wide;

void Aligned(Facts& facts, UINT align) {
    TextSurface s(120, 64, 14);
    SetTextAlign(s.dc(), align);
    std::vector<WCHAR> text = Wide("Align");
    facts.Add("ret", ExtTextOutW(s.dc(), 60, 32, 0, nullptr, text.data(), 5, nullptr));
    facts.Add("ink", s.Ink());
}

void Decorated(Facts& facts, LONG height, bool underline, bool strikeout) {
    TextSurface s(120, 64, height, FW_NORMAL, NONANTIALIASED_QUALITY, 0, 0, underline, strikeout);
    std::vector<WCHAR> text = Wide("Decor");
    TextOutW(s.dc(), 4, 4, text.data(), 5);
    facts.Add("ink", s.Ink());
}

void Extents(Facts& facts, LONG height, const char* str, int maxExtent) {
    TextSurface s(8, 8, height);
    std::vector<WCHAR> text = Wide(str);
    int n = static_cast<int>(text.size()) - 1;
    std::vector<INT> dx(static_cast<size_t>(n) + 1, -1);
    INT fit = -1;
    SIZE size = {-1, -1};
    BOOL ok = GetTextExtentExPointW(s.dc(), text.data(), n, maxExtent, &fit, dx.data(), &size);
    std::string partial;
    for (int i = 0; i < n; ++i) partial += (i ? "." : "") + std::to_string(dx[static_cast<size_t>(i)]);
    facts.Add("ok", ok).Add("fit", fit).Add("size", std::to_string(size.cx) + "x" + std::to_string(size.cy));
    facts.Add("dx", partial);
}

// Two strings output with TA_UPDATECP from (x0, 6), each call passing (x, y), which the
// current position overrides; "cp" is where the position ends.
void CurrentPosition(Facts& facts, UINT align, int x0, int x, int y) {
    TextSurface s(120, 64, 14);
    SetTextAlign(s.dc(), align);
    MoveToEx(s.dc(), x0, 6, nullptr);
    std::vector<WCHAR> a = Wide("One"), b = Wide("Two");
    TextOutW(s.dc(), x, y, a.data(), 3);
    TextOutW(s.dc(), x, y, b.data(), 3);
    POINT p = {-1, -1};
    MoveToEx(s.dc(), 0, 0, &p);
    facts.Add("cp", std::to_string(p.x) + "," + std::to_string(p.y)).Add("ink", s.Ink());
}

// "abcd" with explicit, uneven advances from (x, 4).
void Advanced(Facts& facts, UINT align, int x) {
    TextSurface s(120, 64, 14);
    SetTextAlign(s.dc(), align);
    std::vector<WCHAR> text = Wide("abcd");
    INT dx[4] = {12, 3, 20, 1};
    ExtTextOutW(s.dc(), x, 4, 0, nullptr, text.data(), 4, dx);
    facts.Add("ink", s.Ink());
}

}  // namespace

RECORDED_CASE(text_output, align_left_top) { Aligned(facts, TA_LEFT | TA_TOP); }
RECORDED_CASE(text_output, align_center_top) { Aligned(facts, TA_CENTER | TA_TOP); }
RECORDED_CASE(text_output, align_right_top) { Aligned(facts, TA_RIGHT | TA_TOP); }
RECORDED_CASE(text_output, align_left_baseline) { Aligned(facts, TA_LEFT | TA_BASELINE); }
RECORDED_CASE(text_output, align_left_bottom) { Aligned(facts, TA_LEFT | TA_BOTTOM); }
RECORDED_CASE(text_output, align_center_baseline) { Aligned(facts, TA_CENTER | TA_BASELINE); }
RECORDED_CASE(text_output, align_right_bottom) { Aligned(facts, TA_RIGHT | TA_BOTTOM); }

RECORDED_CASE(text_output, update_cp) { CurrentPosition(facts, TA_UPDATECP, 5, 90, 40); }
RECORDED_CASE(text_output, update_cp_right) { CurrentPosition(facts, TA_UPDATECP | TA_RIGHT, 110, 0, 0); }

RECORDED_CASE(text_output, clipped_rect) {
    TextSurface s(120, 64, 18);
    std::vector<WCHAR> text = Wide("Clipped text");
    RECT r = {10, 8, 50, 20};
    facts.Add("ret", ExtTextOutW(s.dc(), 4, 4, ETO_CLIPPED, &r, text.data(), 12, nullptr)).Add("ink", s.Ink());
}

RECORDED_CASE(text_output, opaque_rect) {
    TextSurface s(120, 64, 14);
    SetBkColor(s.dc(), RGB(0, 128, 255));
    std::vector<WCHAR> text = Wide("Opaque");
    RECT r = {2, 30, 40, 60};
    facts.Add("ret", ExtTextOutW(s.dc(), 4, 4, ETO_OPAQUE, &r, text.data(), 6, nullptr)).Add("ink", s.Ink());
}

RECORDED_CASE(text_output, opaque_and_clipped) {
    TextSurface s(120, 64, 14);
    SetBkColor(s.dc(), RGB(0, 128, 255));
    std::vector<WCHAR> text = Wide("Opaque");
    RECT r = {10, 6, 40, 14};
    ExtTextOutW(s.dc(), 4, 4, ETO_OPAQUE | ETO_CLIPPED, &r, text.data(), 6, nullptr);
    facts.Add("ink", s.Ink());
}

RECORDED_CASE(text_output, opaque_mode_background) {
    TextSurface s(120, 64, 14);
    SetBkMode(s.dc(), OPAQUE);
    SetBkColor(s.dc(), RGB(255, 255, 0));
    std::vector<WCHAR> text = Wide("Cell box");
    TextOutW(s.dc(), 7, 9, text.data(), 8);
    facts.Add("ink", s.Ink());
}

RECORDED_CASE(text_output, empty_opaque_rect) {
    TextSurface s(120, 64, 14);
    SetBkColor(s.dc(), RGB(0, 128, 255));
    RECT r = {5, 5, 25, 15};
    facts.Add("ret", ExtTextOutW(s.dc(), 0, 0, ETO_OPAQUE, &r, nullptr, 0, nullptr)).Add("ink", s.Ink());
}

RECORDED_CASE(text_output, explicit_advances) { Advanced(facts, TA_LEFT, 4); }
RECORDED_CASE(text_output, explicit_advances_right) { Advanced(facts, TA_RIGHT, 100); }

RECORDED_CASE(text_output, underline_h14) { Decorated(facts, 14, true, false); }
RECORDED_CASE(text_output, strikeout_h14) { Decorated(facts, 14, false, true); }
RECORDED_CASE(text_output, underline_strikeout_h24) { Decorated(facts, 24, true, true); }
RECORDED_CASE(text_output, underline_h9) { Decorated(facts, 9, true, false); }

RECORDED_CASE(text_output, extent_fit_all) { Extents(facts, 14, "Hello World", 1000); }
RECORDED_CASE(text_output, extent_fit_some) { Extents(facts, 14, "Hello World", 30); }
RECORDED_CASE(text_output, extent_fit_none) { Extents(facts, 14, "Hello World", 2); }
RECORDED_CASE(text_output, extent_fit_exact) { Extents(facts, 18, "Hello", 33); }
RECORDED_CASE(text_output, extent_h11_punctuation) { Extents(facts, 11, "(a, b; c.)!?", 40); }

RECORDED_CASE(text_output, face_name) {
    TextSurface s(8, 8, 14);
    WCHAR face[64] = {0};
    int n = GetTextFaceW(s.dc(), 64, face);
    std::string name;
    for (int i = 0; face[i]; ++i) name += static_cast<char>(face[i]);
    facts.Add("n", n).Add("face", name).Add("need", GetTextFaceW(s.dc(), 0, nullptr));
    n = GetTextFaceW(s.dc(), 3, face);
    name.clear();
    for (int i = 0; face[i]; ++i) name += static_cast<char>(face[i]);
    facts.Add("short_n", n).Add("short", name);
}
