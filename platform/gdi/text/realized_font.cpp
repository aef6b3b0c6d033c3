// Realizing LOGFONTs: pixel size, text metrics, glyph lookup with fall-back faces, and
// glyph rasterisation.
#include "gdi/text/realized_font.h"

#include FT_TRUETYPE_TABLES_H
#include FT_SIZES_H
#include FT_OUTLINE_H
#include FT_BITMAP_H

#include <algorithm>
#include <cmath>
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
constexpr BYTE kVariablePitch = 0x01;      // TMPF_FIXED_PITCH, which despite its name marks variable pitch

// Rendering flags that make a distinct strike in the glyph cache.
constexpr uint32_t kGray = 1, kEmbolden = 2, kOblique = 4;

// GDI scales font units to pixels with one 16.16 factor per size, ppem / unitsPerEm as
// FreeType's MulDiv rounds it, and rounds each product to the nearest pixel (FT_MulFix).
FT_Fixed EmScale(int ppem, int unitsPerEm) { return FT_MulDiv(ppem, 1 << 16, std::max(1, unitsPerEm)); }
int Scale(long units, FT_Fixed emScale) { return static_cast<int>(FT_MulFix(units, emScale)); }

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

// The face's VDMX table gives, per pixel size, the exact top and bottom of the tallest
// glyphs as the font's maker measured them; GDI takes a positive (cell) height from it
// when it can, and the ascent and descent of any size it lists.
struct VdmxSize {
    int ppem = 0;  // 0: the table has no answer
    int yMax = 0, yMin = 0;
};

VdmxSize FromVdmx(FT_Face face, LONG height) {
    VdmxSize none;
    FT_ULong length = 0;
    if (FT_Load_Sfnt_Table(face, FT_MAKE_TAG('V', 'D', 'M', 'X'), 0, nullptr, &length) != 0 || length < 6) return none;
    std::vector<FT_Byte> t(length);
    if (FT_Load_Sfnt_Table(face, FT_MAKE_TAG('V', 'D', 'M', 'X'), 0, t.data(), &length) != 0) return none;
    auto u8 = [&](size_t at) -> unsigned { return at < length ? t[at] : 0; };
    auto u16 = [&](size_t at) -> unsigned { return u8(at) << 8 | u8(at + 1); };
    auto s16 = [&](size_t at) { return static_cast<int>(static_cast<int16_t>(u16(at))); };
    unsigned ratios = u16(4);
    size_t group = 0;
    for (unsigned i = 0; i < ratios && group == 0; ++i) {
        size_t r = 6 + size_t{i} * 4;
        if (u8(r) == 0) continue;  // the "all glyphs" character set is not what GDI reads
        unsigned x = u8(r + 1), yStart = u8(r + 2), yEnd = u8(r + 3);
        // The device is square: a 1:1 ratio, or the record that matches any ratio.
        if ((x == 0 && yStart == 0 && yEnd == 0) || (x == 1 && yStart <= 1 && yEnd >= 1))
            group = u16(6 + size_t{ratios} * 4 + size_t{i} * 2);
    }
    if (group == 0 || group + 4 > length) return none;
    unsigned records = u16(group);
    unsigned startSize = u8(group + 2), endSize = u8(group + 3);
    auto entry = [&](unsigned i) {
        size_t at = group + 4 + size_t{i} * 6;
        return VdmxSize{static_cast<int>(u16(at)), s16(at + 2), s16(at + 4)};
    };
    if (group + 4 + size_t{records} * 6 > length) return none;
    if (height > 0) {
        // The largest size whose glyphs still fit the cell height.
        for (unsigned i = 0; i < records; ++i) {
            VdmxSize e = entry(i);
            if (e.yMax - e.yMin == height) return e;
            if (e.yMax - e.yMin > height) return i == 0 ? none : entry(i - 1);
        }
        return none;
    }
    int ppem = static_cast<int>(std::min<int64_t>(-static_cast<int64_t>(height), 0xFFFF));
    if (ppem < static_cast<int>(startSize) || ppem > static_cast<int>(endSize)) return none;
    for (unsigned i = 0; i < records; ++i) {
        VdmxSize e = entry(i);
        if (e.ppem > ppem) break;
        if (e.ppem == ppem) return e;
    }
    return none;
}

// The pixel size for a LOGFONT height when the VDMX table has none: a cell height scales
// winAscent + winDescent to it, and one size less is taken when that cell, rounded, would
// still be taller than asked.
int PpemFor(FT_Face face, LONG lfHeight) {
    LONG height = lfHeight == 0 ? 16 : lfHeight;
    if (height < 0) return static_cast<int>(std::min<int64_t>(-static_cast<int64_t>(height), kMaxPpem));
    VerticalMetrics v = ReadVertical(face);
    long cell = v.ascent + v.descent;
    if (cell <= 0) return std::clamp<int>(height, 1, kMaxPpem);
    long h = std::min<LONG>(height, 1 << 20);
    long ppem = FT_MulDiv(face->units_per_EM, h, cell);
    if (ppem > 1 && FT_MulDiv(cell, ppem, face->units_per_EM) > h) --ppem;
    return static_cast<int>(std::clamp<long>(ppem, 1, kMaxPpem));
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

// Coverage bytes from a FreeType bitmap of any format, top-left aligned with the image
// box; what lies outside the box is dropped.
void CopyCoverage(const FT_Bitmap& bm, GlyphImage& image) {
    unsigned cols = std::min<unsigned>(bm.width, static_cast<unsigned>(image.width));
    unsigned rows = std::min<unsigned>(bm.rows, static_cast<unsigned>(image.height));
    for (unsigned y = 0; y < rows; ++y) {
        const unsigned char* src = bm.buffer + static_cast<ptrdiff_t>(y) * bm.pitch;
        uint8_t* dst = image.coverage.data() + static_cast<size_t>(y) * image.width;
        for (unsigned x = 0; x < cols; ++x) {
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

// The face's gasp table may forbid greyscale at some sizes (small sizes are hinted for
// crisp monochrome): the first range reaching the size decides, the last one beyond all
// ranges. No table, or one of a version GDI does not know: greyscale everywhere.
bool GaspAllowsGray(FT_Face face, int ppem) {
    FT_ULong length = 0;
    if (FT_Load_Sfnt_Table(face, FT_MAKE_TAG('g', 'a', 's', 'p'), 0, nullptr, &length) != 0 || length < 8) return true;
    std::vector<FT_Byte> gasp(length);
    if (FT_Load_Sfnt_Table(face, FT_MAKE_TAG('g', 'a', 's', 'p'), 0, gasp.data(), &length) != 0) return true;
    auto u16 = [&](size_t at) { return static_cast<unsigned>(gasp[at] << 8 | gasp[at + 1]); };
    unsigned version = u16(0), ranges = u16(2);
    if (version > 1 || length < (size_t{ranges} * 2 + 2) * 2) return true;
    unsigned flags = 0;
    for (unsigned i = 0; i < ranges; ++i) {
        flags = u16(4 + size_t{i} * 4 + 2);
        if (static_cast<unsigned>(ppem) <= u16(4 + size_t{i} * 4)) break;
    }
    return (flags & 0x0002) != 0;  // GASP_DOGRAY
}

// NONANTIALIASED_QUALITY is monochrome; ANTIALIASED_QUALITY greyscale where the gasp table
// allows it; the ClearType qualities always smooth (greyscale here: the device has no
// subpixel order); DEFAULT, DRAFT and PROOF follow the font smoothing switch and then the
// gasp table. Synthesised bold and italics ignore the table: it was made for the face's
// own outlines, not thickened or slanted ones.
bool AntialiasedFor(BYTE quality, FT_Face face, int ppem, bool synthesised) {
    if (quality == CLEARTYPE_QUALITY || quality == CLEARTYPE_NATURAL_QUALITY) return true;
    if (quality == NONANTIALIASED_QUALITY) return false;
    if (quality != ANTIALIASED_QUALITY && !text::FontSmoothing()) return false;
    return !face || synthesised || GaspAllowsGray(face, ppem);
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
        VdmxSize vdmx = FromVdmx(choice.file->face, lf.lfHeight);
        ppem_ = vdmx.ppem > 0 ? std::min(vdmx.ppem, kMaxPpem) : PpemFor(choice.file->face, lf.lfHeight);
        if (vdmx.ppem > 0 && vdmx.yMax > 0) {
            vdmxYMax_ = vdmx.yMax;
            vdmxYMin_ = vdmx.yMin;
        }
        gray_ = AntialiasedFor(lf.lfQuality, choice.file->face, ppem_, choice.embolden || choice.oblique);
        if (!AddSlot(choice.file, choice.embolden, choice.oblique)) slots_.clear();
    }
    ComputeMetrics(lf);
}

bool RealizedFont::AddSlot(std::shared_ptr<text::FaceFile> file, bool embolden, bool oblique) {
    Slot slot;
    if (FT_New_Size(file->face, &slot.size) != 0) return false;
    FT_Activate_Size(slot.size);
    if (FT_Set_Pixel_Sizes(file->face, 0, ppem_) != 0) {
        FT_Done_Size(slot.size);
        return false;
    }
    slot.embolden = embolden;
    slot.oblique = oblique;
    slot.flags = (gray_ ? kGray : 0) | (embolden ? kEmbolden : 0) | (oblique ? kOblique : 0);
    slot.strike = text::StrikeId(file->id, widthScale_, ppem_, slot.flags);
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
    FT_Fixed ys = EmScale(ppem_, face->units_per_EM), xs = ys;
    VerticalMetrics v = ReadVertical(face);
    if (vdmxYMax_ > 0) {
        tm_.tmAscent = vdmxYMax_;
        tm_.tmDescent = -vdmxYMin_;
        tm_.tmInternalLeading = tm_.tmAscent + tm_.tmDescent - ppem_;
    } else {
        tm_.tmAscent = Scale(v.ascent, ys);
        tm_.tmDescent = Scale(v.descent, ys);
        tm_.tmInternalLeading = Scale(v.ascent + v.descent - face->units_per_EM, ys);
    }
    tm_.tmHeight = tm_.tmAscent + tm_.tmDescent;
    long gap = v.lineGap - ((v.ascent + v.descent) - (v.hheaAscent - v.hheaDescent));
    tm_.tmExternalLeading = std::max(0, Scale(gap, ys));
    auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    bool hasOs2 = os2 && os2->version != 0xFFFF;
    tm_.tmPitchAndFamily = PitchAndFamily(face);
    tm_.tmAveCharWidth = hasOs2 ? std::max(1, Scale(os2->xAvgCharWidth, xs)) : 1;
    tm_.tmMaxCharWidth = Scale(face->bbox.xMax - face->bbox.xMin, xs);
    if (lf.lfWidth != 0) {
        // An average width stretches or squeezes the glyphs hinted at the cell's own size
        // (lfWidth's sign does not matter); the widths scale with them, rounded.
        double ratio = std::min(std::abs(static_cast<double>(lf.lfWidth)) / tm_.tmAveCharWidth, 256.0);
        widthScale_ = static_cast<FT_Fixed>(ratio * 65536);
        tm_.tmAveCharWidth = static_cast<LONG>(std::floor(tm_.tmAveCharWidth * ratio + 0.5));
        tm_.tmMaxCharWidth = static_cast<LONG>(std::floor(tm_.tmMaxCharWidth * ratio + 0.5));
        for (Slot& slot : slots_) slot.strike = text::StrikeId(slot.file->id, widthScale_, ppem_, slot.flags);
    }
    tm_.tmWeight = primary.embolden ? FW_BOLD : primary.file->weight;
    // The break character is the first character the face declares (the space for a
    // Latin face), never a control code; the default character is the one before it.
    unsigned first = hasOs2 ? os2->usFirstCharIndex : 0x20;
    tm_.tmFirstChar = static_cast<WCHAR>(first);
    tm_.tmLastChar = hasOs2 ? os2->usLastCharIndex : 0xFFFF;
    tm_.tmBreakChar = static_cast<WCHAR>(first <= 1 ? first + 2 : first > 0xFF ? 0x20 : first);
    tm_.tmDefaultChar = static_cast<WCHAR>(tm_.tmBreakChar - 1);
    // A monospaced face gives a character twice the average width (an ideograph among
    // Latin letters) exactly twice the Latin advance, whatever its own rounding says.
    if (!(tm_.tmPitchAndFamily & kVariablePitch) && hasOs2 && os2->xAvgCharWidth > 0) {
        halfWidth_ = Scale(os2->xAvgCharWidth, xs);
        fullWidthRounded_ = Scale(os2->xAvgCharWidth * 2L, xs);
    }

    // A band is centred on its position (the post table's underline position, OS/2's
    // strike-out position, both scaled and rounded like every metric), its thickness at
    // least one pixel.
    auto band = [&](long position, long size) {
        int thickness = std::max(1, std::abs(Scale(size, ys)));
        return Band{-(Scale(position, ys) + thickness / 2), thickness};
    };
    auto* post = static_cast<TT_Postscript*>(FT_Get_Sfnt_Table(face, FT_SFNT_POST));
    if (post)
        underline_ = band(post->underlinePosition, post->underlineThickness);
    else
        underline_ = Band{-((tm_.tmAscent / 20 + 1) / 2), tm_.tmAscent / 20 + 1};
    if (hasOs2)
        strikeout_ = band(os2->yStrikeoutPosition, os2->yStrikeoutSize);
    else
        strikeout_ = Band{-(tm_.tmAscent / 2 + (tm_.tmAscent / 20 + 1) / 2), tm_.tmAscent / 20 + 1};
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
    // Measuring loads the outline hinted for greyscale, as GDI measures for every
    // rendering; the advance is rounded up to whole pixels.
    FT_Int32 flags = FT_LOAD_IGNORE_GLOBAL_ADVANCE_WIDTH | FT_LOAD_NO_BITMAP;
    FT_Face face = s.file->face;
    if (FT_Load_Glyph(face, glyph, flags) == 0 || FT_Load_Glyph(face, glyph, flags | FT_LOAD_NO_HINTING) == 0)
        info.advance =
            static_cast<int16_t>(CellAdvance(FT_MulFix(face->glyph->metrics.horiAdvance, widthScale_), s.embolden));
    return info;
}

// The outline transform of a slot: the average-width stretch, then synthesised italics'
// lean of a quarter pixel per pixel of height.
FT_Matrix RealizedFont::Transform(const Slot& slot) const {
    return FT_Matrix{widthScale_, slot.oblique ? 0x4000 : 0, 0, 0x10000};
}

int RealizedFont::CellAdvance(FT_Pos advance, bool embolden) const {
    if (halfWidth_ > 0 && (advance + 63) >> 6 == fullWidthRounded_) advance = static_cast<FT_Pos>(2 * halfWidth_) << 6;
    if (embolden) advance += 64;  // the thickened outline is one pixel wider
    return static_cast<int>(std::clamp<FT_Pos>((advance + 63) >> 6, -0x7FFF, 0x7FFF));
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

// A glyph image as GDI's rasteriser makes it: the outline hinted for the rendering (an
// embedded bitmap strike for monochrome when the face has one at this size), its box
// widened to whole pixels and clipped to the cell's ascent and descent, the outline drawn
// into that box. Monochrome pixels are the ones whose centres the outline covers, with
// the face's own dropout rules; the pen then moves by this rendering's own advance.
std::unique_ptr<text::GlyphImage> RealizedFont::Render(const Slot& slot, uint32_t glyph) {
    FT_Face face = slot.file->face;
    if (!Activate(slot)) return nullptr;
    FT_Int32 flags = FT_LOAD_IGNORE_GLOBAL_ADVANCE_WIDTH | (gray_ ? FT_LOAD_TARGET_NORMAL | FT_LOAD_NO_BITMAP
                                                                  : FT_LOAD_TARGET_MONO);
    if (slot.embolden || slot.oblique || widthScale_ != 0x10000) flags |= FT_LOAD_NO_BITMAP;
    if (FT_Load_Glyph(face, glyph, flags) != 0 && FT_Load_Glyph(face, glyph, flags | FT_LOAD_NO_HINTING) != 0)
        return nullptr;
    FT_GlyphSlot g = face->glyph;
    FT_Glyph_Metrics m = g->metrics;
    bool outline = g->format == FT_GLYPH_FORMAT_OUTLINE;
    if (slot.embolden) {
        if (outline && FT_Outline_Embolden(&g->outline, FT_MulDiv(ppem_, 1 << 6, 24)) == 0) {
            FT_BBox box;
            FT_Outline_Get_CBox(&g->outline, &box);
            m.width = box.xMax - box.xMin;
            m.height = box.yMax - box.yMin;
            m.horiBearingX = box.xMin;
            m.horiBearingY = box.yMax;
        } else if (m.width) {
            m.width += 64;
        }
    }
    // Nothing is drawn above the ascent or below the descent.
    FT_Pos top = std::min<FT_Pos>(m.horiBearingY, FT_Pos{tm_.tmAscent} * 64);
    FT_Pos bottom = std::max<FT_Pos>(m.horiBearingY - m.height, -FT_Pos{tm_.tmDescent} * 64);
    FT_Pos x0 = m.horiBearingX & -64, x1 = (m.horiBearingX + m.width + 63) & -64;
    FT_Pos y0 = bottom & -64, y1 = (top + 63) & -64;
    FT_Matrix matrix = Transform(slot);
    if (matrix.xx != 0x10000 || matrix.xy != 0) {
        // The box of the transformed corners of the glyph's box, widened to whole pixels.
        FT_Pos lo = 0, hi = 0;
        for (int corner = 0; corner < 4; ++corner) {
            FT_Vector v{m.horiBearingX + (corner & 1 ? m.width : 0), corner & 2 ? bottom : top};
            FT_Vector_Transform(&v, &matrix);
            lo = corner == 0 ? v.x : std::min(lo, v.x);
            hi = corner == 0 ? v.x : std::max(hi, v.x);
        }
        x0 = lo & -64;
        x1 = (hi + 63) & -64;
        if (outline) FT_Outline_Transform(&g->outline, &matrix);
    }
    auto image = std::make_unique<GlyphImage>();
    image->advance = CellAdvance(FT_MulFix(m.horiAdvance, matrix.xx), slot.embolden);
    int64_t width = (x1 - x0) >> 6, height = (y1 - y0) >> 6;
    if (width <= 0 || height <= 0 || width > 0xFFFF || static_cast<size_t>(width * height) > kMaxGlyphPixels) {
        image->BuildRuns();
        return image;
    }
    image->left = static_cast<int>(x0 >> 6);
    image->top = static_cast<int>(y1 >> 6);
    image->width = static_cast<int>(width);
    image->height = static_cast<int>(height);
    image->coverage.assign(static_cast<size_t>(width * height), 0);
    if (outline) {
        FT_Bitmap target;
        FT_Bitmap_Init(&target);
        target.width = static_cast<unsigned>(width);
        target.rows = static_cast<unsigned>(height);
        target.pixel_mode = gray_ ? FT_PIXEL_MODE_GRAY : FT_PIXEL_MODE_MONO;
        target.num_grays = gray_ ? 256 : 2;
        target.pitch = gray_ ? static_cast<int>(width) : static_cast<int>((width + 31) >> 5 << 2);
        std::vector<unsigned char> bits(static_cast<size_t>(target.pitch) * static_cast<size_t>(height), 0);
        target.buffer = bits.data();
        FT_Outline_Translate(&g->outline, -x0, -y0);
        FT_Outline_Get_Bitmap(text::Library(), &g->outline, &target);
        CopyCoverage(target, *image);
    } else {
        // An embedded bitmap: its rows from the top, as far as the box reaches.
        CopyCoverage(g->bitmap, *image);
    }
    if (!gray_) {
        for (uint8_t& c : image->coverage) c = c >= 128 ? 255 : 0;
    } else {
        // GDI smooths with 17 levels of coverage (0..16), so the faintest edge pixels vanish.
        for (uint8_t& c : image->coverage) c = static_cast<uint8_t>((c * 17 / 256) * 255 / 16);
    }
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
