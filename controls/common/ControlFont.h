// The controls' fonts: one description (face "Tahoma" unless a control says otherwise,
// DEFAULT_CHARSET, every other field 0), only the height and the weight vary.
#pragma once

#include <windows.h>

namespace zelctl {

// `height` as LOGFONTW's lfHeight (positive: cell height).
HFONT CreateControlFont(int height, LONG weight = FW_NORMAL, const wchar_t* face = L"Tahoma");

// Deletes a font handle and clears it. (Not DeleteFont: windowsx.h has a macro of that name.)
void ReleaseFont(HFONT& font);

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
    bool Create(int height, LONG weight = FW_NORMAL, const wchar_t* face = L"Tahoma") {
        Reset(CreateControlFont(height, weight, face));
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
