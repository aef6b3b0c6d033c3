// The controls' fonts: one description (face "Tahoma" unless a control says otherwise,
// DEFAULT_CHARSET, every other field 0), only the height, the weight and the quality vary.
#pragma once

#include <windows.h>

namespace zelctl {

// `height` as LOGFONTW's lfHeight (positive: cell height). `quality` is lfQuality: the
// default renders as the device does (monochrome); ANTIALIASED_QUALITY is for the fonts a
// control makes before any host asks for a size (the telephone display's).
HFONT CreateControlFont(int height, LONG weight = FW_NORMAL, const wchar_t* face = L"Tahoma",
                        BYTE quality = DEFAULT_QUALITY);

// Deletes a font handle and clears it. (Not DeleteFont: windowsx.h has a macro of that name.)
void ReleaseFont(HFONT& font);

// A control's SetFont on a raw handle member: the old font is deleted first, then the new
// one of the control description made in its place.
void RecreateFont(HFONT& font, int height);

// A font the control owns: deleted when replaced and at destruction.
class OwnedFont {
public:
    OwnedFont() = default;
    explicit OwnedFont(HFONT font) : font_(font) {}
    ~OwnedFont() { ReleaseFont(font_); }
    OwnedFont(OwnedFont&& other) noexcept : font_(other.font_) { other.font_ = nullptr; }
    OwnedFont& operator=(OwnedFont&& other) noexcept {
        if (this != &other) Reset(other.Detach());
        return *this;
    }
    OwnedFont(const OwnedFont&) = delete;
    OwnedFont& operator=(const OwnedFont&) = delete;

    // Replaces the font with a new one of the control description; false if creation failed.
    bool Create(int height, LONG weight = FW_NORMAL, const wchar_t* face = L"Tahoma",
                BYTE quality = DEFAULT_QUALITY) {
        Reset(CreateControlFont(height, weight, face, quality));
        return font_ != nullptr;
    }
    void Reset(HFONT font = nullptr) {
        if (font != font_) ReleaseFont(font_);
        font_ = font;
    }
    HFONT Detach() {
        HFONT f = font_;
        font_ = nullptr;
        return f;
    }
    HFONT get() const { return font_; }
    operator HFONT() const { return font_; }

private:
    HFONT font_ = nullptr;
};

}  // namespace zelctl
