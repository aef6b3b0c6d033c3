#include "ControlFont.h"

#include <cwchar>

namespace zelctl {

HFONT CreateControlFont(int height, LONG weight, const wchar_t* face) {
    LOGFONTW lf{};
    lf.lfHeight = height;
    lf.lfWeight = weight;
    lf.lfCharSet = DEFAULT_CHARSET;
    std::wcsncpy(lf.lfFaceName, face ? face : L"Tahoma", LF_FACESIZE - 1);
    return ::CreateFontIndirectW(&lf);
}

void ReleaseFont(HFONT& font) {
    if (font) ::DeleteObject(font);
    font = nullptr;
}

}  // namespace zelctl
