// Realizing LOGFONTs: pixel size, text metrics, glyph lookup with fall-back faces, and
// glyph rasterisation.
#include "gdi/text/realized_font.h"

#include FT_TRUETYPE_TABLES_H
#include FT_SIZES_H
#include FT_SYNTHESIS_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>

#include "gdi/text/font_resolver.h"

namespace zel::gdi {

namespace {

using text::FaceFile;
using text::GlyphImage;

constexpr int kMaxPpem = 2048;               // beyond this a glyph image alone would be huge
constexpr size_t kMaxGlyphPixels = 4u << 20;  // a glyph larger than this draws nothing
constexpr size_t kSharedFonts = 32;          // realized fonts kept alive after their last user

// Rendering flags that make a distinct strike in the glyph cache.
constexpr uint32_t kGray = 1, kEmbolden = 2, kOblique = 4;

// Win32 MulDiv: the product over the quotient, rounded half away from zero.
int MulDivRound(int64_t number, int64_t numerator, int64_t denominator) {
    if (denominator == 0) return -1;
    int64_t p = number * numerator;
    bool negative = (p < 0) != (denominator < 0);
    int64_t q = (std::llabs(p) + std::llabs(denominator) / 2) / std::llabs(denominator);
    return static_cast<int>(negative ? -q : q);
}

// Font units to pixels exactly as a FreeType size scales them, rounded to the nearest pixel.
int Scale(long units, FT_Fixed scale) { return static_cast<int>((FT_MulFix(units, scale) + 32) >> 6); }
FT_Fixed ScaleFor(int ppem, int unitsPerEm) { return FT_DivFix(static_cast<FT_Long>(ppem) << 6, unitsPerEm); }

struct VerticalMetrics {
    long ascent = 0, descent = 0;  // font units, both positive
    long lineGap = 0, hheaAscent = 0, hheaDescent = 0;
};

VerticalMetrics ReadVertical(FT_Face face) {
    VerticalMetrics v;
    auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    auto* hhea = static_cast<TT_HoriHeader*>(FT_Get_Sfnt_Table(face, FT_SFNT_HHEA));
    v.hheaAscent = hhea ? hhea->Ascender : face->ascender;
    v.hheaDescent = hhea ? hhea->Descender : face->descender;
    v.lineGap = hhea ? hhea->Line_Gap : 0;
    // Some fonts store usWinDescent as a negative number; its magnitude is meant.
    long winDescent = os2 && os2->version != 0xFFFF ? std::abs(static_cast<FT_Short>(os2->usWinDescent)) : 0;
    long winAscent = os2 && os2->version != 0xFFFF ? os2->usWinAscent : 0;
    if (winAscent + winDescent == 0) {
        v.ascent = v.hheaAscent;
        v.descent = -v.hheaDescent;
    } else {
        v.ascent = winAscent;
        v.descent = winDescent;
    }
    return v;
}

int CellHeight(const VerticalMetrics& v, int ppem, int unitsPerEm) {
    FT_Fixed s = ScaleFor(ppem, unitsPerEm);
    return Scale(v.ascent, s) + Scale(v.descent, s);
}

int PpemFor(FT_Face face, LONG lfHeight) {
    LONG height = lfHeight == 0 ? 16 : lfHeight;
    if (height < 0) return static_cast<int>(std::min<int64_t>(-static_cast<int64_t>(height), kMaxPpem));
    VerticalMetrics v = ReadVertical(face);
    long cell = v.ascent + v.descent;
    if (cell <= 0) return std::clamp<int>(height, 1, kMaxPpem);
    int ppem = std::clamp(MulDivRound(face->units_per_EM, std::min<LONG>(height, 1 << 20), cell), 1, kMaxPpem);
    // The cell may round up past the request; GDI never gives a taller cell than asked for.
    while (ppem > 1 && CellHeight(v, ppem, face->units_per_EM) > height) --ppem;
    return ppem;
}

// lfWidth asks for an average character width: the horizontal pixel size that scales the
// face's OS/2 xAvgCharWidth to it. 0 keeps the face's own proportions.
int XPpemFor(FT_Face face, LONG lfWidth, int ppem) {
    if (lfWidth == 0) return ppem;
    auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    long average = os2 && os2->version != 0xFFFF && os2->xAvgCharWidth > 0 ? os2->xAvgCharWidth : face->units_per_EM / 2;
    int64_t width = std::min<int64_t>(std::llabs(static_cast<int64_t>(lfWidth)), 1 << 20);
    return std::clamp(MulDivRound(width, face->units_per_EM, average), 1, kMaxPpem);
}

// Pitch and family byte of TEXTMETRIC: the TMPF_FIXED_PITCH bit (1) is set for
// variable-pitch fonts (the name is historical); TMPF_VECTOR (2) | TMPF_TRUETYPE (4).
BYTE PitchAndFamily(FT_Face face) {
    BYTE bits = FT_IS_FIXED_WIDTH(face) ? 0x06 : 0x07;
    auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    BYTE family = FF_SWISS;
    if (FT_IS_FIXED_WIDTH(face)) {
        family = FF_MODERN;
    } else if (os2 && os2->version != 0xFFFF && os2->panose[0] == 2 /* Latin text */) {
        // Panose serif style 11..13 are the sans-serif styles.
        family = (os2->panose[1] >= 11 && os2->panose[1] <= 13) ? FF_SWISS : FF_ROMAN;
    }
    return static_cast<BYTE>(bits | family);
}

// Coverage bytes from a FreeType bitmap of any of the formats it renders.
std::unique_ptr<GlyphImage> ToImage(const FT_GlyphSlot slot) {
    const FT_Bitmap& bm = slot->bitmap;
    auto image = std::make_unique<GlyphImage>();
    if (bm.width == 0 || bm.rows == 0 || bm.width > 0xFFFF || static_cast<size_t>(bm.width) * bm.rows > kMaxGlyphPixels)
        return image;
    image->left = slot->bitmap_left;
    image->top = slot->bitmap_top;
    image->width = static_cast<int>(bm.width);
    image->height = static_cast<int>(bm.rows);
    image->coverage.assign(static_cast<size_t>(bm.width) * bm.rows, 0);
    for (unsigned y = 0; y < bm.rows; ++y) {
        const unsigned char* src = bm.buffer + static_cast<ptrdiff_t>(y) * bm.pitch;
        uint8_t* dst = image->coverage.data() + static_cast<size_t>(y) * bm.width;
        for (unsigned x = 0; x < bm.width; ++x) {
            switch (bm.pixel_mode) {
                case FT_PIXEL_MODE_MONO: dst[x] = (src[x >> 3] >> (7 - (x & 7))) & 1 ? 255 : 0; break;
                case FT_PIXEL_MODE_GRAY:
                    dst[x] = bm.num_grays == 256 ? src[x]
                                                 : static_cast<uint8_t>(src[x] * 255 / std::max(1, bm.num_grays - 1));
                    break;
                case FT_PIXEL_MODE_BGRA: dst[x] = src[x * 4 + 3]; break;
                default: dst[x] = 0; break;
            }
        }
    }
    return image;
}

struct FontKey {
    LONG height, width, weight;
    BYTE italic, underline, strikeout, charset, quality, pitchAndFamily, smoothing;
    std::string face;
    auto operator<=>(const FontKey&) const = default;
};

FontKey KeyOf(const LOGFONTW& lf) {
    std::string face = text::FaceNameUtf8(lf);
    std::transform(face.begin(), face.end(), face.begin(), [](unsigned char c) { return std::tolower(c); });
    return FontKey{lf.lfHeight,
                   lf.lfWidth,
                   lf.lfWeight,
                   static_cast<BYTE>(lf.lfItalic != 0),
                   static_cast<BYTE>(lf.lfUnderline != 0),
                   static_cast<BYTE>(lf.lfStrikeOut != 0),
                   lf.lfCharSet,
                   lf.lfQuality,
                   lf.lfPitchAndFamily,
                   static_cast<BYTE>(text::FontSmoothing()),
                   std::move(face)};
}

// The face's gasp table may ask for greyscale only from some size on (small sizes are
// hinted for crisp monochrome). No table: greyscale everywhere.
bool GaspAllowsGray(FT_Face face, int ppem) {
    FT_ULong length = 0;
    if (FT_Load_Sfnt_Table(face, FT_MAKE_TAG('g', 'a', 's', 'p'), 0, nullptr, &length) != 0 || length < 4) return true;
    std::vector<FT_Byte> gasp(length);
    if (FT_Load_Sfnt_Table(face, FT_MAKE_TAG('g', 'a', 's', 'p'), 0, gasp.data(), &length) != 0) return true;
    auto u16 = [&](size_t at) { return static_cast<unsigned>(gasp[at] << 8 | gasp[at + 1]); };
    unsigned ranges = u16(2);
    for (unsigned i = 0; i < ranges && 4 + i * 4 + 3 < length; ++i)
        if (static_cast<unsigned>(ppem) <= u16(4 + i * 4)) return (u16(4 + i * 4 + 2) & 0x0002) != 0;  // GASP_DOGRAY
    return true;
}

bool AntialiasedFor(BYTE quality, FT_Face face, int ppem) {
    if (quality >= ANTIALIASED_QUALITY && quality <= CLEARTYPE_NATURAL_QUALITY) return true;
    if (quality == NONANTIALIASED_QUALITY) return false;
    return text::FontSmoothing() && face && GaspAllowsGray(face, ppem);
}

}  // namespace

std::shared_ptr<RealizedFont> RealizedFont::For(const LOGFONTW& lf) {
    static auto* fonts = new std::map<FontKey, std::weak_ptr<RealizedFont>>();
    static auto* recent = new std::deque<std::shared_ptr<RealizedFont>>();
    FontKey key = KeyOf(lf);
    std::shared_ptr<RealizedFont> font;
    if (auto it = fonts->find(key); it != fonts->end()) font = it->second.lock();
    if (!font) {
        font.reset(new RealizedFont());
        font->Realize(lf);
        (*fonts)[key] = font;
    }
    // Keep a few recently used ones alive so that create-draw-delete loops stay cheap.
    if (std::find(recent->begin(), recent->end(), font) == recent->end()) {
        recent->push_front(font);
        if (recent->size() > kSharedFonts) {
            recent->pop_back();
            std::erase_if(*fonts, [](const auto& entry) { return entry.second.expired(); });
        }
    }
    return font;
}

RealizedFont::~RealizedFont() {
    for (Slot& s : slots_)
        if (s.size) FT_Done_Size(s.size);
}

void RealizedFont::Realize(const LOGFONTW& lf) {
    wantBold_ = lf.lfWeight >= FW_BOLD;
    wantItalic_ = lf.lfItalic != 0;
    text::FaceChoice choice = text::ResolveFace(lf);
    faceName_ = choice.faceName;
    if (choice.file) {
        ppem_ = PpemFor(choice.file->face, lf.lfHeight);
        xPpem_ = XPpemFor(choice.file->face, lf.lfWidth, ppem_);
        gray_ = AntialiasedFor(lf.lfQuality, choice.file->face, ppem_);
        if (!AddSlot(choice.file, choice.embolden, choice.oblique)) slots_.clear();
    }
    ComputeMetrics(lf);
}

bool RealizedFont::AddSlot(std::shared_ptr<text::FaceFile> file, bool embolden, bool oblique) {
    Slot slot;
    if (FT_New_Size(file->face, &slot.size) != 0) return false;
    FT_Activate_Size(slot.size);
    if (FT_Set_Pixel_Sizes(file->face, xPpem_, ppem_) != 0) {
        FT_Done_Size(slot.size);
        return false;
    }
    slot.embolden = embolden;
    slot.oblique = oblique;
    uint32_t flags = (gray_ ? kGray : 0) | (embolden ? kEmbolden : 0) | (oblique ? kOblique : 0);
    slot.strike = text::StrikeId(file->id, xPpem_, ppem_, flags);
    slot.file = std::move(file);
    slots_.push_back(std::move(slot));
    return true;
}

bool RealizedFont::Activate(const Slot& slot) { return FT_Activate_Size(slot.size) == 0; }

void RealizedFont::ComputeMetrics(const LOGFONTW& lf) {
    tm_ = TEXTMETRICW{};
    tm_.tmItalic = lf.lfItalic ? 255 : 0;
    tm_.tmUnderlined = lf.lfUnderline ? 255 : 0;
    tm_.tmStruckOut = lf.lfStrikeOut ? 255 : 0;
    tm_.tmDigitizedAspectX = tm_.tmDigitizedAspectY = 96;
    tm_.tmCharSet = lf.lfCharSet == DEFAULT_CHARSET ? ANSI_CHARSET : lf.lfCharSet;
    tm_.tmWeight = wantBold_ ? FW_BOLD : FW_NORMAL;
    if (slots_.empty()) {
        // No usable face: an empty font of the requested height, so layout still works.
        LONG h = lf.lfHeight == 0 ? 16 : static_cast<LONG>(std::min<int64_t>(std::llabs(lf.lfHeight), kMaxPpem));
        tm_.tmHeight = h;
        tm_.tmAscent = h - h / 5;
        tm_.tmDescent = h / 5;
        tm_.tmBreakChar = L' ';
        tm_.tmLastChar = 0xFFFF;
        return;
    }
    const Slot& primary = slots_[0];
    FT_Face face = primary.file->face;
    Activate(primary);
    FT_Fixed ys = face->size->metrics.y_scale, xs = face->size->metrics.x_scale;
    VerticalMetrics v = ReadVertical(face);
    tm_.tmAscent = Scale(v.ascent, ys);
    tm_.tmDescent = Scale(v.descent, ys);
    tm_.tmHeight = tm_.tmAscent + tm_.tmDescent;
    tm_.tmInternalLeading = Scale(v.ascent + v.descent - face->units_per_EM, ys);
    long gap = v.lineGap - ((v.ascent + v.descent) - (v.hheaAscent - v.hheaDescent));
    tm_.tmExternalLeading = std::max(0, Scale(gap, ys));
    auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    bool hasOs2 = os2 && os2->version != 0xFFFF;
    tm_.tmAveCharWidth = hasOs2 && os2->xAvgCharWidth > 0 ? Scale(os2->xAvgCharWidth, xs) : Advance(U'x');
    tm_.tmMaxCharWidth = Scale(face->bbox.xMax - face->bbox.xMin, xs);
    tm_.tmWeight = primary.embolden ? FW_BOLD : primary.file->weight;
    tm_.tmFirstChar = hasOs2 ? os2->usFirstCharIndex : 0x20;
    tm_.tmLastChar = hasOs2 ? os2->usLastCharIndex : 0xFFFF;
    tm_.tmBreakChar = hasOs2 && os2->version >= 2 && os2->usBreakChar ? os2->usBreakChar : L' ';
    tm_.tmDefaultChar = hasOs2 && os2->version >= 2 ? os2->usDefaultChar : 0;
    tm_.tmPitchAndFamily = PitchAndFamily(face);

    int thickness = std::max(1, Scale(face->underline_thickness, ys));
    underline_ = Band{std::max(1, Scale(-face->underline_position, ys)) - thickness / 2, thickness};
    if (hasOs2 && os2->yStrikeoutSize > 0)
        strikeout_ = Band{-Scale(os2->yStrikeoutPosition, ys), std::max(1, Scale(os2->yStrikeoutSize, ys))};
    else
        strikeout_ = Band{-tm_.tmAscent / 3, thickness};
}

const GlyphInfo& RealizedFont::GlyphSlow(char32_t ch) {
    if (ch < latin_.size()) {
        if (!latinKnown_[ch]) {
            latin_[ch] = LookUp(ch);
            latinKnown_[ch] = true;
        }
        return latin_[ch];
    }
    auto it = others_.find(ch);
    if (it == others_.end()) it = others_.emplace(ch, LookUp(ch)).first;
    return it->second;
}

GlyphInfo RealizedFont::LookUp(char32_t ch) {
    GlyphInfo info;
    if (slots_.empty()) return info;
    uint16_t slot = 0;
    FT_UInt glyph = FT_Get_Char_Index(slots_[0].file->face, ch);
    if (glyph == 0 && ch >= 0x20) {
        // Another installed face draws what this one lacks (CJK and other scripts).
        for (size_t i = 1; i < slots_.size() && glyph == 0; ++i)
            if ((glyph = FT_Get_Char_Index(slots_[i].file->face, ch)) != 0) slot = static_cast<uint16_t>(i);
        if (glyph == 0) {
            if (auto file = text::FallbackFace(ch, wantBold_); file && file != slots_[0].file) {
                bool embolden = wantBold_ && file->weight < 600;
                if (AddSlot(file, embolden, wantItalic_ && !file->italic)) {
                    slot = static_cast<uint16_t>(slots_.size() - 1);
                    glyph = FT_Get_Char_Index(file->face, ch);
                }
            }
        }
    }
    const Slot& s = slots_[slot];
    info.glyph = glyph;
    info.slot = slot;
    if (!Activate(s)) return info;
    FT_Int32 flags = FT_LOAD_DEFAULT | ((s.embolden || s.oblique) ? FT_LOAD_NO_BITMAP : 0);
    if (FT_Load_Glyph(s.file->face, glyph, flags) == 0) {
        if (s.embolden) FT_GlyphSlot_Embolden(s.file->face->glyph);
        info.advance = static_cast<int16_t>((s.file->face->glyph->advance.x + 32) >> 6);
    }
    return info;
}

const text::GlyphImage* RealizedFont::Image(char32_t ch, const GlyphInfo& glyph) {
    // Latin text skips the cache's hash lookup while nothing has been evicted (such hits
    // do not refresh the glyph's recency; an eviction sends every lookup back through it).
    if (ch < latinImages_.size()) {
        uint64_t epoch = text::GlyphCache::Get().Epoch();
        if (epoch != latinEpoch_) {
            latinImages_.fill(nullptr);
            latinEpoch_ = epoch;
        }
        if (const text::GlyphImage* image = latinImages_[ch]) return image;
        const text::GlyphImage* image = Image(glyph);
        if (text::GlyphCache::Get().Epoch() == latinEpoch_) latinImages_[ch] = image;
        return image;
    }
    return Image(glyph);
}

const text::GlyphImage* RealizedFont::Image(const GlyphInfo& glyph) {
    if (glyph.slot >= slots_.size()) return nullptr;
    const Slot& slot = slots_[glyph.slot];
    const GlyphImage* image = text::GlyphCache::Get().Find(text::GlyphCache::Key(slot.strike, glyph.glyph),
                                                           [&] { return Render(slot, glyph.glyph); });
    return image;
}

std::unique_ptr<text::GlyphImage> RealizedFont::Render(const Slot& slot, uint32_t glyph) {
    FT_Face face = slot.file->face;
    if (!Activate(slot)) return nullptr;
    FT_Int32 flags = FT_LOAD_DEFAULT | (gray_ ? FT_LOAD_TARGET_NORMAL : FT_LOAD_TARGET_MONO);
    if (slot.embolden || slot.oblique) flags |= FT_LOAD_NO_BITMAP;
    if (FT_Load_Glyph(face, glyph, flags) != 0) return nullptr;
    if (slot.oblique) FT_GlyphSlot_Oblique(face->glyph);
    if (slot.embolden) FT_GlyphSlot_Embolden(face->glyph);
    if (face->glyph->format != FT_GLYPH_FORMAT_BITMAP &&
        FT_Render_Glyph(face->glyph, gray_ ? FT_RENDER_MODE_NORMAL : FT_RENDER_MODE_MONO) != 0)
        return nullptr;
    auto image = ToImage(face->glyph);
    image->advance = static_cast<int>((face->glyph->advance.x + 32) >> 6);
    if (!gray_)  // an embedded grey strike still draws monochrome
        for (uint8_t& c : image->coverage) c = c >= 128 ? 255 : 0;
    image->BuildRuns();
    return image;
}

std::string RealizedFont::FileFor(char32_t ch) {
    if (slots_.empty()) return {};
    if (ch == 0) return slots_[0].file->path;
    const GlyphInfo& g = Glyph(ch);
    if (g.glyph == 0) return {};
    return slots_[g.slot].file->path;
}

RealizedFont& Realize(Font& font) {
    if (!font.realized) font.realized = RealizedFont::For(font.lf);
    return *font.realized;
}

}  // namespace zel::gdi

namespace zel::text {

namespace {
// Like the registry key that enables it, font smoothing is off unless ZEL_FONT_SMOOTHING
// is set (to anything but "0").
bool& Smoothing() {
    static bool on = [] {
        const char* v = std::getenv("ZEL_FONT_SMOOTHING");
        return v && *v && std::strcmp(v, "0") != 0;
    }();
    return on;
}
}  // namespace

bool FontSmoothing() { return Smoothing(); }
void SetFontSmoothing(bool on) { Smoothing() = on; }

std::string ResolvedFontFile(HFONT handle, char32_t ch) {
    gdi::Font* font = gdi::LookupFont(handle);
    return font ? gdi::Realize(*font).FileFor(ch) : std::string();
}

}  // namespace zel::text
