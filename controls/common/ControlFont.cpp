#include "ControlFont.h"

#include <cwchar>

namespace zelctl {

HFONT CreateControlFont(int height, LONG weight, const wchar_t* face, BYTE quality) {
    LOGFONTW lf{};
    lf.lfHeight = height;
    lf.lfWeight = weight;
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfQuality = quality;
    std::wcsncpy(lf.lfFaceName, face ? face : L"Tahoma", LF_FACESIZE - 1);
    return ::CreateFontIndirectW(&lf);
}

void ReleaseFont(HFONT& font) {
    if (font) ::DeleteObject(font);
    font = nullptr;
}

void RecreateFont(HFONT& font, int height) {
    ReleaseFont(font);
    font = CreateControlFont(height);
}

}  // namespace zelctl
