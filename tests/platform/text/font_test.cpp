// Font objects: creation values, face resolution, height rules and text metrics.
#include <gtest/gtest.h>

#include "text_fixture.h"

namespace {

using zel::test::FontSpec;
using zel::test::Surface;
using zel::text::ResolvedFontFile;
namespace t = zel::test;

using Fonts = zel::test::LeakChecked;

std::string FileOf(const FontSpec& spec, char32_t ch = 0) {
    HFONT f = t::MakeFont(spec);
    std::string file = ResolvedFontFile(f, ch);
    DeleteObject(f);
    return file;
}

TEXTMETRICW MetricsOf(const FontSpec& spec) {
    Surface s(1, 1);
    s.Use(spec);
    TEXTMETRICW tm{};
    EXPECT_TRUE(GetTextMetricsW(s.dc(), &tm));
    return tm;
}

std::wstring FaceOf(const FontSpec& spec) {
    Surface s(1, 1);
    s.Use(spec);
    wchar_t face[LF_FACESIZE] = {};
    GetTextFaceW(s.dc(), LF_FACESIZE, face);
    return face;
}

TEST_F(Fonts, GetObjectReturnsTheCreationValuesNotTheRealizedFont) {
    LOGFONTW lf = t::MakeLogFont({L"No Such Face", -13, 650, ANTIALIASED_QUALITY, 1, 1, 0});
    lf.lfEscapement = 900;
    lf.lfPitchAndFamily = FF_ROMAN | VARIABLE_PITCH;
    HFONT f = CreateFontIndirectW(&lf);
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(GetObjectType(f), static_cast<DWORD>(OBJ_FONT));

    Surface s(1, 1);
    HGDIOBJ old = SelectObject(s.dc(), f);
    TEXTMETRICW tm{};
    GetTextMetricsW(s.dc(), &tm);  // realizes it
    SelectObject(s.dc(), old);

    LOGFONTW back{};
    EXPECT_EQ(GetObjectW(f, sizeof back, &back), static_cast<int>(sizeof(LOGFONTW)));
    EXPECT_EQ(std::memcmp(&back, &lf, sizeof lf), 0);
    EXPECT_EQ(GetObjectW(f, 0, nullptr), static_cast<int>(sizeof(LOGFONTW))) << "NULL buffer: the size needed";
    DeleteObject(f);
    EXPECT_EQ(GetObjectW(f, sizeof back, &back), 0) << "stale handle";

    // CreateFontW puts each of its fourteen arguments in its LOGFONT field.
    HFONT byArgs = CreateFontW(-20, 7, 1, 2, FW_BOLD, TRUE, TRUE, FALSE, ANSI_CHARSET, 3, 4, NONANTIALIASED_QUALITY,
                               FIXED_PITCH | FF_MODERN, L"Tahoma");
    LOGFONTW want = t::MakeLogFont({L"Tahoma", -20, FW_BOLD, NONANTIALIASED_QUALITY, 1, 1, 0});
    want.lfWidth = 7, want.lfEscapement = 1, want.lfOrientation = 2, want.lfCharSet = ANSI_CHARSET;
    want.lfOutPrecision = 3, want.lfClipPrecision = 4, want.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    ASSERT_EQ(GetObjectW(byArgs, sizeof back, &back), static_cast<int>(sizeof back));
    EXPECT_EQ(std::memcmp(&back, &want, sizeof want), 0);
    DeleteObject(byArgs);

    HFONT unnamed = CreateFontW(12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, nullptr);
    ASSERT_NE(unnamed, nullptr);
    GetObjectW(unnamed, sizeof back, &back);
    EXPECT_EQ(back.lfFaceName[0], L'\0');
    DeleteObject(unnamed);
    EXPECT_EQ(CreateFontIndirectW(nullptr), nullptr);
}

TEST_F(Fonts, FaceNamesResolveToThePinnedFiles) {
    EXPECT_EQ(FileOf({L"Tahoma"}), t::kTahoma);
    EXPECT_EQ(FileOf({L"TAHOMA"}), t::kTahoma) << "face names are case-insensitive";
    EXPECT_EQ(FileOf({L"Tahoma", 14, FW_BOLD}), t::kTahomaBold) << "bold selects the bold file";
    EXPECT_EQ(FileOf({L"arial"}), t::kLiberationSans);
    EXPECT_EQ(FileOf({L"Arial", 14, FW_BOLD}), t::kLiberationSansBold);
    EXPECT_EQ(FileOf({L"Liberation Sans"}), t::kLiberationSans);
    EXPECT_EQ(FileOf({L"DejaVu Sans"}), t::kDejaVuSans);
}

TEST_F(Fonts, AMissingFaceFallsBackAndNeverFails) {
    std::string sans = FileOf({L"sans-serif"});
    ASSERT_FALSE(sans.empty());
    EXPECT_EQ(FileOf({L"No Such Face 123"}), sans);
    EXPECT_EQ(FileOf({L""}), sans) << "an empty name is the default sans face";

    // The pitch and family bits choose the generic family a missing face falls back to.
    LOGFONTW lf = t::MakeLogFont({L"No Such Face 123"});
    lf.lfPitchAndFamily = FF_ROMAN;
    HFONT roman = CreateFontIndirectW(&lf);
    lf.lfPitchAndFamily = FIXED_PITCH;
    HFONT fixed = CreateFontIndirectW(&lf);
    std::string romanFile = ResolvedFontFile(roman), fixedFile = ResolvedFontFile(fixed);
    EXPECT_NE(romanFile, sans);
    EXPECT_NE(fixedFile, sans);
    EXPECT_NE(romanFile, fixedFile);
    DeleteObject(roman);
    DeleteObject(fixed);

    // The face name then reports what is really used.
    EXPECT_EQ(FaceOf({L"No Such Face 123"}), FaceOf({L"sans-serif"}));
}

TEST_F(Fonts, TheSystemFontIsBoldTahoma) {
    Surface s(1, 1);
    HGDIOBJ stock = GetStockObject(SYSTEM_FONT);
    EXPECT_EQ(GetCurrentObject(s.dc(), OBJ_FONT), stock) << "a new DC starts with the system font";
    EXPECT_EQ(ResolvedFontFile(static_cast<HFONT>(stock)), t::kTahomaBold);
    TEXTMETRICW tm{};
    ASSERT_TRUE(GetTextMetricsW(s.dc(), &tm));
    EXPECT_EQ(tm.tmHeight, 16) << "a cell height of 16";
    EXPECT_EQ(tm.tmWeight, FW_BOLD);
}

TEST_F(Fonts, GlyphsTheFaceLacksComeFromAFontThatHasThem) {
    FontSpec spec{L"Liberation Sans"};
    EXPECT_EQ(FileOf(spec, U'A'), t::kLiberationSans);
    EXPECT_EQ(FileOf(spec, U'\u4E2D'), t::kWqyMicroHei) << "CJK falls back to the installed CJK face";
    EXPECT_EQ(FileOf(spec, U'\u65E5'), t::kWqyMicroHei);
    EXPECT_EQ(FileOf(spec, 0x10FFFD), "") << "a private-use code point no font has";
}

// Liberation Sans: unitsPerEm 2048, usWinAscent 1854, usWinDescent 434, hhea line gap 67.
TEST_F(Fonts, PositiveHeightIsTheCellNegativeTheEm) {
    struct Case {
        LONG lfHeight;
        LONG height, ascent, descent, internalLeading, externalLeading;
    };
    const Case cases[] = {
        // MulDiv(2048, 14, 2288) = 13 ppem would round to a 15-pixel cell, so 12 ppem.
        {14, 14, 11, 3, 1, 0},
        {12, 12, 10, 2, 1, 0},  // 11 ppem
        {18, 17, 14, 3, 2, 1},  // 16 ppem: never taller than asked, so 17
        {30, 30, 24, 6, 3, 1},  // 27 ppem
        {-12, 14, 11, 3, 1, 0},  // 12 ppem exactly
        {-14, 16, 13, 3, 2, 0},
        {-30, 33, 27, 6, 4, 1},
        {0, 16, 13, 3, 2, 0},  // the default: a 16-pixel cell (14 ppem)
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("lfHeight " + std::to_string(c.lfHeight));
        TEXTMETRICW tm = MetricsOf({L"Liberation Sans", c.lfHeight});
        EXPECT_EQ(tm.tmHeight, c.height);
        EXPECT_EQ(tm.tmAscent, c.ascent);
        EXPECT_EQ(tm.tmDescent, c.descent);
        EXPECT_EQ(tm.tmHeight, tm.tmAscent + tm.tmDescent);
        EXPECT_EQ(tm.tmInternalLeading, c.internalLeading);
        EXPECT_EQ(tm.tmExternalLeading, c.externalLeading);
    }
    // Tahoma (usWinAscent 2049, usWinDescent 423) fills asked-for cells exactly.
    for (LONG h : {12, 14, 18, 25, 30}) EXPECT_EQ(MetricsOf({L"Tahoma", h}).tmHeight, h) << h;
    EXPECT_EQ(MetricsOf({L"Tahoma", -12}).tmHeight, 14);
}

// Weight, italic, pitch bits and lfWidth are pinned for Tahoma against the recordings
// (recorded/text_heights, recorded/font_variants); here the other faces' families.
TEST_F(Fonts, TextMetricsDescribeTheFace) {
    TEXTMETRICW tm = MetricsOf({L"Liberation Sans", 14});
    EXPECT_EQ(tm.tmAveCharWidth, 7) << "xAvgCharWidth 1187 at 12 ppem";
    EXPECT_EQ(tm.tmCharSet, ANSI_CHARSET) << "DEFAULT_CHARSET realizes as ANSI";
    EXPECT_EQ(tm.tmBreakChar, L' ');
    EXPECT_EQ(tm.tmPitchAndFamily & 0xF5, FF_SWISS | 0x01 | 0x04) << "variable pitch (bit set), TrueType";
    TEXTMETRICW styled = MetricsOf({L"Liberation Sans", 14, FW_BOLD, 0, 1, 1, 1});
    EXPECT_TRUE(styled.tmUnderlined == 255 && styled.tmStruckOut == 255);

    TEXTMETRICW mono = MetricsOf({L"DejaVu Sans Mono", 14});
    EXPECT_EQ(mono.tmPitchAndFamily & 0x01, 0) << "fixed pitch";
    EXPECT_EQ(mono.tmPitchAndFamily & 0xF0, FF_MODERN);
}

TEST_F(Fonts, BoldWithoutABoldFileIsSynthesised) {
    // The CJK face has no bold file: its outlines are thickened.
    FontSpec regular{L"WenQuanYi Micro Hei", 20}, bold{L"WenQuanYi Micro Hei", 20, FW_BOLD};
    EXPECT_EQ(FileOf(bold), t::kWqyMicroHei);
    EXPECT_EQ(MetricsOf(bold).tmWeight, FW_BOLD);

    Surface a(60, 30, RGB(255, 255, 255)), b(60, 30, RGB(255, 255, 255));
    a.Use(regular);
    b.Use(bold);
    SetBkMode(a.dc(), TRANSPARENT);
    SetBkMode(b.dc(), TRANSPARENT);
    TextOutW(a.dc(), 2, 2, L"H", 1);
    TextOutW(b.dc(), 2, 2, L"H", 1);
    EXPECT_GT(b.Count(RGB(0, 0, 0)), a.Count(RGB(0, 0, 0))) << "thicker strokes";
    EXPECT_GT(t::Width(b.dc(), L"HHHH"), t::Width(a.dc(), L"HHHH")) << "and wider advances";
}

TEST_F(Fonts, GetTextFaceReportsTheFaceOrTheNameItSubstitutes) {
    EXPECT_EQ(FaceOf({L"Tahoma"}), L"Tahoma");
    EXPECT_EQ(FaceOf({L"arial"}), L"arial") << "a substituted name is reported as asked for";
    EXPECT_EQ(FaceOf({L"Liberation Sans"}), L"Liberation Sans");

    // Buffer sizes and truncation are pinned against the recordings (face_name).
    wchar_t small[4] = {};
    EXPECT_EQ(GetTextFaceW(nullptr, 4, small), 0);
}

TEST_F(Fonts, BadHandlesFailWithoutCrashing) {
    TEXTMETRICW tm{};
    EXPECT_FALSE(GetTextMetricsW(nullptr, &tm));
    Surface s(1, 1);
    EXPECT_FALSE(GetTextMetricsW(s.dc(), nullptr));
    HFONT f = t::MakeFont({});
    DeleteObject(f);
    EXPECT_EQ(SelectObject(s.dc(), f), nullptr) << "stale font";
    EXPECT_EQ(ResolvedFontFile(f), "");
    // Absurd heights are clamped, not allocated.
    TEXTMETRICW huge = MetricsOf({L"Liberation Sans", -2000000000});
    EXPECT_GT(huge.tmHeight, 0);
    EXPECT_LT(huge.tmHeight, 4000);
}

TEST_F(Fonts, ManyFontsCreatedSelectedAndDeletedLeaveNothingBehind) {
    Surface s(40, 20);
    int before = zel::LiveGdiObjects().fonts;
    for (int i = 0; i < 50; ++i) {
        HFONT f = t::MakeFont({i % 2 ? L"Tahoma" : L"Liberation Sans", 8 + i});
        HGDIOBJ old = SelectObject(s.dc(), f);
        TextOutW(s.dc(), 0, 0, L"Ag", 2);
        if (i % 3 == 0) DeleteObject(f);  // deleted while selected: freed on deselection
        SelectObject(s.dc(), old);
        if (i % 3 != 0) DeleteObject(f);
    }
    EXPECT_EQ(zel::LiveGdiObjects().fonts, before);
}

}  // namespace
