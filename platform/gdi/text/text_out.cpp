// Font objects and text output: CreateFont*, GetTextMetricsW, GetTextFaceW,
// GetTextExtent*, TextOutW and ExtTextOutW.
#include <algorithm>
#include <cstring>
#include <cwchar>

#include "gdi/dc.h"
#include "gdi/text/realized_font.h"
#include "gdi/text/text_render.h"

using namespace zel::gdi;

namespace {

RealizedFont* FontOf(DC& dc) { return dc.state.font ? &Realize(*dc.state.font) : nullptr; }

RECT ToDevice(const DC& dc, const RECT& r) { return RECT{dc.DevX(r.left), dc.DevY(r.top), dc.DevX(r.right), dc.DevY(r.bottom)}; }

RECT Normalized(RECT r) {
    if (r.left > r.right) std::swap(r.left, r.right);
    if (r.top > r.bottom) std::swap(r.top, r.bottom);
    return r;
}

RECT Intersect(const RECT& a, const RECT& b) {
    return RECT{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                std::min(a.bottom, b.bottom)};
}

int RunWidth(RealizedFont& font, const WCHAR* text, int count, const INT* dx) {
    if (!dx) return TextWidth(font, text, count);
    int width = 0;
    for (int i = 0; i < count; ++i) width += dx[i];
    return width;
}

// The font's underline and strike-out bands across the run.
void DrawDecorations(DC& dc, RealizedFont& font, int x, int baseline, int width, const RECT* limit) {
    auto band = [&](RealizedFont::Band b) {
        RECT r{x, baseline + b.offset, x + width, baseline + b.offset + b.thickness};
        if (limit) r = Intersect(r, *limit);
        FillSolid(dc, r, dc.state.textColor);
    };
    if (font.Underlined()) band(font.UnderlineBand());
    if (font.StruckOut()) band(font.StrikeoutBand());
}

}  // namespace

extern "C" {

HFONT CreateFontIndirectW(const LOGFONTW* lf) {
    if (!lf) return nullptr;
    auto font = std::make_unique<Font>();
    font->lf = *lf;  // GetObjectW reports the creation values, not the realized font
    return HandleOf<HFONT>(Register(std::move(font), kFont));
}

HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                  DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision,
                  DWORD quality, DWORD pitchAndFamily, LPCWSTR face) {
    LOGFONTW lf{};
    lf.lfHeight = height;
    lf.lfWidth = width;
    lf.lfEscapement = escapement;
    lf.lfOrientation = orientation;
    lf.lfWeight = weight;
    lf.lfItalic = static_cast<BYTE>(italic);
    lf.lfUnderline = static_cast<BYTE>(underline);
    lf.lfStrikeOut = static_cast<BYTE>(strikeOut);
    lf.lfCharSet = static_cast<BYTE>(charSet);
    lf.lfOutPrecision = static_cast<BYTE>(outPrecision);
    lf.lfClipPrecision = static_cast<BYTE>(clipPrecision);
    lf.lfQuality = static_cast<BYTE>(quality);
    lf.lfPitchAndFamily = static_cast<BYTE>(pitchAndFamily);
    if (face) {
        for (int i = 0; i < LF_FACESIZE - 1 && face[i]; ++i) lf.lfFaceName[i] = face[i];
    }
    return CreateFontIndirectW(&lf);
}

BOOL GetTextMetricsW(HDC hdc, LPTEXTMETRICW tm) {
    DC* dc = LookupDC(hdc);
    if (!dc || !tm) return FALSE;
    RealizedFont* font = FontOf(*dc);
    if (!font) return FALSE;
    *tm = font->Metrics();
    return TRUE;
}

int GetTextFaceW(HDC hdc, int count, LPWSTR face) {
    DC* dc = LookupDC(hdc);
    if (!dc) return 0;
    RealizedFont* font = FontOf(*dc);
    if (!font) return 0;
    const std::wstring& name = font->FaceName();
    int needed = static_cast<int>(name.size()) + 1;
    if (!face) return needed;
    if (count <= 0) return 0;
    int n = std::min(count - 1, static_cast<int>(name.size()));
    std::wmemcpy(face, name.data(), n);
    face[n] = 0;
    return n + 1;
}

BOOL GetTextExtentExPointW(HDC hdc, LPCWSTR text, int count, int maxExtent, LPINT fit, LPINT dx, LPSIZE size) {
    DC* dc = LookupDC(hdc);
    if (!dc || !size || count < 0 || (count > 0 && !text)) return FALSE;
    if (fit && maxExtent < -1) return FALSE;  // -1 asks for no limit
    RealizedFont* font = FontOf(*dc);
    if (!font) return FALSE;
    int width = 0, fitting = 0;
    bool within = true;
    for (int i = 0; i < count; ++i) {
        width += font->Advance(static_cast<char32_t>(text[i]));
        if (dx) dx[i] = width;  // partial extents for every character
        if (within && (maxExtent < 0 || width <= maxExtent))
            ++fitting;
        else
            within = false;
    }
    if (fit) *fit = fitting;
    size->cx = width;
    size->cy = font->Metrics().tmHeight;
    return TRUE;
}

BOOL GetTextExtentPoint32W(HDC hdc, LPCWSTR text, int count, LPSIZE size) {
    return GetTextExtentExPointW(hdc, text, count, 0, nullptr, nullptr, size);
}

BOOL ExtTextOutW(HDC hdc, int x, int y, UINT options, const RECT* rect, LPCWSTR text, UINT count, const INT* dx) {
    DC* dc = LookupDC(hdc);
    if (!dc || (count > 0 && !text) || count > (1u << 24)) return FALSE;
    RealizedFont* font = FontOf(*dc);
    if (!font) return FALSE;
    if (!rect) options &= ~(ETO_OPAQUE | ETO_CLIPPED);  // both need the rectangle
    RECT limit{};
    if (rect) limit = ToDevice(*dc, Normalized(*rect));
    if (options & ETO_OPAQUE) FillSolid(*dc, limit, dc->state.bkColor);
    if (count == 0) return TRUE;

    const TEXTMETRICW& tm = font->Metrics();
    int n = static_cast<int>(count);
    int width = RunWidth(*font, text, n, dx);
    UINT align = dc->state.textAlign;
    if (align & TA_UPDATECP) {
        x = dc->state.curPos.x;
        y = dc->state.curPos.y;
    }
    int left = x;
    if ((align & TA_CENTER) == TA_CENTER)
        left = x - width / 2;
    else if (align & TA_RIGHT)
        left = x - width;
    int baseline = y;
    if ((align & TA_BASELINE) == TA_BASELINE)
        baseline = y;
    else if (align & TA_BOTTOM)
        baseline = y - tm.tmDescent;
    else
        baseline = y + tm.tmAscent;

    bool clipped = (options & ETO_CLIPPED) != 0;
    int devLeft = dc->DevX(left), devBase = dc->DevY(baseline);
    // An opaque background paints the text's cell box, not the rectangle; with an opaque
    // clipping rectangle already painted there is nothing left to fill.
    if (dc->state.bkMode == OPAQUE && !(clipped && (options & ETO_OPAQUE))) {
        RECT box{devLeft, devBase - tm.tmAscent, devLeft + width, devBase + tm.tmDescent};
        if (clipped) box = Intersect(box, limit);
        FillSolid(*dc, box, dc->state.bkColor);
    }
    DrawGlyphs(*dc, *font, devLeft, devBase, text, n, dx, clipped ? &limit : nullptr);
    DrawDecorations(*dc, *font, devLeft, devBase, width, clipped ? &limit : nullptr);

    // The current position moves to the text's far end; centred text leaves it in place.
    if ((align & TA_UPDATECP) && (align & TA_CENTER) != TA_CENTER)
        dc->state.curPos.x = (align & TA_RIGHT) ? x - width : x + width;
    return TRUE;
}

BOOL TextOutW(HDC hdc, int x, int y, LPCWSTR text, int count) {
    if (count < 0) return FALSE;
    return ExtTextOutW(hdc, x, y, 0, nullptr, text, static_cast<UINT>(count), nullptr);
}

}  // extern "C"
