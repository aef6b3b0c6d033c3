// A LOGFONTW realized for drawing: the resolved face at a pixel size, its TEXTMETRICW,
// per-character advances and glyph images (through the shared glyph cache).
//
// Height rules (as GDI's TrueType mapper):
//   a size the face's VDMX table lists for the height wins (and gives ascent and descent);
//   lfHeight > 0  cell height: ppem = MulDiv(unitsPerEm, lfHeight, winAscent + winDescent),
//                 one less when that cell, rounded, would be taller than asked;
//   lfHeight < 0  character height: ppem = -lfHeight;
//   lfHeight = 0  as a cell height of 16;
//   lfWidth != 0  the average character width: glyphs hinted at ppem are stretched or
//                 squeezed to it.
// Every metric is font units times ppem / unitsPerEm (one 16.16 factor), rounded.
//
// Two advances per glyph, as GDI has them: text is measured (GetTextExtent*, DrawTextW's
// layout and alignment) with the outline hinted for greyscale, its advance rounded up to
// a whole pixel; glyphs are drawn hinted for the rendering they get (monochrome uses the
// face's embedded bitmaps where it has them) and the pen moves by that rendering's own
// advance. The two may differ by a pixel or two per glyph, so painted text can end a
// little before or after its measured extent, as on the device.
// NONANTIALIASED_QUALITY renders monochrome; ANTIALIASED_QUALITY greyscale at the sizes
// the face's gasp table allows it (Tahoma: above 16 ppem), monochrome below; CLEARTYPE
// and CLEARTYPE_NATURAL greyscale at every size; DEFAULT, DRAFT and PROOF follow the
// device's font smoothing switch (off by default: monochrome), then the gasp table.
#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "gdi/objects.h"
#include "gdi/text/font_library.h"
#include "gdi/text/glyph_cache.h"

namespace zel::gdi {

struct GlyphInfo {
    uint32_t glyph = 0;  // glyph index in the face of `slot`
    uint16_t slot = 0;   // 0 = the font's own face, others fall-back faces
    int16_t advance = 0; // pixels, for measuring (see above)
};

class RealizedFont {
public:
    // The realized form of `lf`; recently used ones are shared between equal LOGFONTs.
    static std::shared_ptr<RealizedFont> For(const LOGFONTW& lf);

    RealizedFont(const RealizedFont&) = delete;
    RealizedFont& operator=(const RealizedFont&) = delete;
    ~RealizedFont();

    const TEXTMETRICW& Metrics() const { return tm_; }
    const GlyphInfo& Glyph(char32_t ch) {
        return ch < latin_.size() && latinKnown_[ch] ? latin_[ch] : GlyphSlow(ch);
    }
    int Advance(char32_t ch) { return Glyph(ch).advance; }
    // The rasterised glyph (its coverage may be empty), valid until the next call;
    // nullptr when the face cannot load it. `ch` is the character `glyph` was found for.
    const text::GlyphImage* Image(char32_t ch, const GlyphInfo& glyph);
    const text::GlyphImage* Image(const GlyphInfo& glyph);

    bool Antialiased() const { return gray_; }
    int Ppem() const { return ppem_; }
    const std::wstring& FaceName() const { return faceName_; }
    // The file the glyph of `ch` comes from ("" when none); ch = 0: the font's own face.
    std::string FileFor(char32_t ch);
    bool Underlined() const { return tm_.tmUnderlined != 0; }
    bool StruckOut() const { return tm_.tmStruckOut != 0; }
    // Decoration bands relative to the baseline (positive offsets go down).
    struct Band {
        int offset = 0;
        int thickness = 1;
    };
    Band UnderlineBand() const { return underline_; }
    Band StrikeoutBand() const { return strikeout_; }

private:
    struct Slot {
        std::shared_ptr<text::FaceFile> file;
        FT_Size size = nullptr;
        uint32_t strike = 0;
        uint32_t flags = 0;  // rendering flags of the strike
        bool embolden = false;
        bool oblique = false;
    };

    RealizedFont() = default;
    void Realize(const LOGFONTW& lf);
    void ComputeMetrics(const LOGFONTW& lf);
    bool AddSlot(std::shared_ptr<text::FaceFile> file, bool embolden, bool oblique);
    bool Activate(const Slot& slot);
    const GlyphInfo& GlyphSlow(char32_t ch);
    GlyphInfo LookUp(char32_t ch);
    std::unique_ptr<text::GlyphImage> Render(const Slot& slot, uint32_t glyph);
    int CellAdvance(FT_Pos advance, bool embolden) const;
    FT_Matrix Transform(const Slot& slot) const;

    TEXTMETRICW tm_{};
    int ppem_ = 0;
    FT_Fixed widthScale_ = 0x10000;            // lfWidth's stretch, 16.16
    int vdmxYMax_ = 0, vdmxYMin_ = 0;          // the VDMX table's cell for this size, if any
    int halfWidth_ = 0, fullWidthRounded_ = 0;  // monospaced faces: see ComputeMetrics
    bool gray_ = false;
    bool wantBold_ = false;
    bool wantItalic_ = false;
    std::wstring faceName_;
    Band underline_, strikeout_;
    std::vector<Slot> slots_;
    std::array<GlyphInfo, 256> latin_{};
    std::array<bool, 256> latinKnown_{};
    std::array<const text::GlyphImage*, 256> latinImages_{};
    uint64_t latinEpoch_ = 0;
    std::unordered_map<char32_t, GlyphInfo> others_;
};

// The realized form of a font object, created on first use.
RealizedFont& Realize(Font& font);

}  // namespace zel::gdi

namespace zel::text {
// The device's font smoothing switch (fonts realized afterwards follow it): with it on,
// default-quality text is antialiased where the face's gasp table asks for greyscale.
bool FontSmoothing();
void SetFontSmoothing(bool on);

// Which file a font handle resolved to, and which file serves `ch` (for tests and
// diagnostics); "" for an invalid handle or a character no installed font has.
std::string ResolvedFontFile(HFONT font, char32_t ch = 0);
}  // namespace zel::text
