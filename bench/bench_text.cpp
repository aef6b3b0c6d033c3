// Text drawing throughput: DrawTextW of a 20-character label at 18 pixels per em (glyph
// cache warm), monochrome and antialiased, and DT_CALCRECT measuring; beside FreeType
// rendering the same glyphs with no cache and cairo showing the same text into an image
// surface of the same size. Every benchmark reports glyphs per second (items_per_second).
#include <benchmark/benchmark.h>
#include <windows.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstring>
#include <string>

#ifdef ZEL_HAVE_CAIRO
#include <cairo-ft.h>
#include <cairo.h>
#endif

namespace {

constexpr const wchar_t* kLabel = L"Skinned button label";
constexpr const char* kLabelUtf8 = "Skinned button label";
constexpr int kGlyphs = 20;
constexpr int kPpem = 18;
constexpr int kWidth = 240, kHeight = 30;
constexpr const char* kFontFile = "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf";

// A 32-bpp memory DC with the label's font (the same file as below) selected.
class Target {
public:
    explicit Target(BYTE quality) {
        HDC screen = GetDC(nullptr);
        dc_ = CreateCompatibleDC(screen);
        bmp_ = CreateCompatibleBitmap(screen, kWidth, kHeight);
        ReleaseDC(nullptr, screen);
        oldBmp_ = SelectObject(dc_, bmp_);
        LOGFONTW lf{};
        lf.lfHeight = -kPpem;
        lf.lfWeight = FW_NORMAL;
        lf.lfQuality = quality;
        std::wcscpy(lf.lfFaceName, L"Liberation Sans");
        font_ = CreateFontIndirectW(&lf);
        oldFont_ = SelectObject(dc_, font_);
        SetBkMode(dc_, TRANSPARENT);
        RECT r{0, 0, kWidth, kHeight};
        FillRect(dc_, &r, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }
    ~Target() {
        SelectObject(dc_, oldFont_);
        SelectObject(dc_, oldBmp_);
        DeleteObject(font_);
        DeleteObject(bmp_);
        DeleteDC(dc_);
    }
    HDC dc() const { return dc_; }

private:
    HDC dc_;
    HBITMAP bmp_;
    HFONT font_;
    HGDIOBJ oldBmp_, oldFont_;
};

void DrawLabel(benchmark::State& state, BYTE quality, UINT format) {
    Target target(quality);
    RECT r{2, 2, kWidth - 2, kHeight - 2};
    DrawTextW(target.dc(), kLabel, kGlyphs, &r, format);  // warms the glyph cache
    for (auto _ : state) {
        RECT box = r;
        benchmark::DoNotOptimize(DrawTextW(target.dc(), kLabel, kGlyphs, &box, format));
    }
    state.SetItemsProcessed(state.iterations() * kGlyphs);
}

void BM_DrawTextMono(benchmark::State& state) { DrawLabel(state, DEFAULT_QUALITY, DT_SINGLELINE | DT_VCENTER); }
void BM_DrawTextAntialiased(benchmark::State& state) {
    DrawLabel(state, ANTIALIASED_QUALITY, DT_SINGLELINE | DT_VCENTER);
}
void BM_DrawTextCalcRect(benchmark::State& state) {
    DrawLabel(state, DEFAULT_QUALITY, DT_SINGLELINE | DT_CALCRECT);
}
BENCHMARK(BM_DrawTextMono);
BENCHMARK(BM_DrawTextAntialiased);
BENCHMARK(BM_DrawTextCalcRect);

// ExtTextOutW of 60 different characters clipped to 100 x 30 pixels, at the argument's
// pixels per em: at 2048 only the first glyph reaches the box, and the glyphs are too
// large for the cache (60 of them would evict each other on every call), so each call
// rasterises just the visible part of the first; the rest are placed by their boxes.
void BM_ExtTextOutClipped(benchmark::State& state) {
    int ppem = static_cast<int>(state.range(0));
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, 120, 40);
    ReleaseDC(nullptr, screen);
    HGDIOBJ oldBmp = SelectObject(dc, bmp);
    LOGFONTW lf{};
    lf.lfHeight = -ppem;
    std::wcscpy(lf.lfFaceName, L"Liberation Sans");
    HFONT font = CreateFontIndirectW(&lf);
    HGDIOBJ oldFont = SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    const std::wstring text = L"HIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789ABCDE";
    RECT clip{0, 0, 100, 30};
    for (auto _ : state)
        benchmark::DoNotOptimize(ExtTextOutW(dc, -ppem / 10, -ppem * 3 / 4, ETO_CLIPPED, &clip, text.c_str(), 60, nullptr));
    state.SetItemsProcessed(state.iterations() * 60);
    SelectObject(dc, oldFont);
    SelectObject(dc, oldBmp);
    DeleteObject(font);
    DeleteObject(bmp);
    DeleteDC(dc);
}
BENCHMARK(BM_ExtTextOutClipped)->Arg(20)->Arg(2048);

// FreeType loading, hinting and rasterising every glyph each time (no cache).
void FreeTypeUncached(benchmark::State& state, FT_Int32 load, FT_Render_Mode mode) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    if (FT_Init_FreeType(&library) || FT_New_Face(library, kFontFile, 0, &face)) {
        state.SkipWithError("cannot open the font");
        return;
    }
    FT_Set_Pixel_Sizes(face, 0, kPpem);
    for (auto _ : state) {
        for (const char* p = kLabelUtf8; *p; ++p) {
            FT_Load_Char(face, static_cast<unsigned char>(*p), load);
            FT_Render_Glyph(face->glyph, mode);
            benchmark::DoNotOptimize(face->glyph->bitmap.buffer);
        }
    }
    state.SetItemsProcessed(state.iterations() * kGlyphs);
    FT_Done_Face(face);
    FT_Done_FreeType(library);
}
void BM_FreeTypeUncachedMono(benchmark::State& state) {
    FreeTypeUncached(state, FT_LOAD_TARGET_MONO, FT_RENDER_MODE_MONO);
}
void BM_FreeTypeUncachedAntialiased(benchmark::State& state) {
    FreeTypeUncached(state, FT_LOAD_TARGET_NORMAL, FT_RENDER_MODE_NORMAL);
}
BENCHMARK(BM_FreeTypeUncachedMono);
BENCHMARK(BM_FreeTypeUncachedAntialiased);

#ifdef ZEL_HAVE_CAIRO
// cairo_show_text with the same font file and size into an image surface of the same
// size; cairo keeps its own glyph cache, warmed first.
void CairoShowText(benchmark::State& state, cairo_antialias_t antialias) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    if (FT_Init_FreeType(&library) || FT_New_Face(library, kFontFile, 0, &face)) {
        state.SkipWithError("cannot open the font");
        return;
    }
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight);
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_rgb(cr, 1, 1, 1);
    cairo_paint(cr);
    cairo_font_face_t* font = cairo_ft_font_face_create_for_ft_face(face, 0);
    cairo_set_font_face(cr, font);
    cairo_set_font_size(cr, kPpem);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, antialias);
    cairo_set_font_options(cr, options);
    cairo_set_source_rgb(cr, 0, 0, 0);
    cairo_move_to(cr, 2, 20);
    cairo_show_text(cr, kLabelUtf8);
    for (auto _ : state) {
        cairo_move_to(cr, 2, 20);
        cairo_show_text(cr, kLabelUtf8);
    }
    cairo_surface_flush(surface);
    state.SetItemsProcessed(state.iterations() * kGlyphs);
    cairo_font_options_destroy(options);
    cairo_destroy(cr);
    cairo_font_face_destroy(font);
    cairo_surface_destroy(surface);
    FT_Done_Face(face);
    FT_Done_FreeType(library);
}
void BM_CairoShowTextMono(benchmark::State& state) { CairoShowText(state, CAIRO_ANTIALIAS_NONE); }
void BM_CairoShowTextAntialiased(benchmark::State& state) { CairoShowText(state, CAIRO_ANTIALIAS_GRAY); }
BENCHMARK(BM_CairoShowTextMono);
BENCHMARK(BM_CairoShowTextAntialiased);
#endif

}  // namespace

BENCHMARK_MAIN();
