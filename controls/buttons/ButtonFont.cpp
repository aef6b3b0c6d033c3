#include "ButtonFont.h"

#include <cwchar>

namespace zelctl {

HFONT CreateTahomaFont(int height, LONG weight) {
    LOGFONTW lf{};
    lf.lfHeight = height;
    lf.lfWeight = weight;
    lf.lfCharSet = DEFAULT_CHARSET;
    std::wcsncpy(lf.lfFaceName, L"Tahoma", LF_FACESIZE - 1);
    return ::CreateFontIndirectW(&lf);
}

void ReleaseFont(HFONT& font) {
    if (font) ::DeleteObject(font);
    font = nullptr;
}

}  // namespace zelctl
