#include "host/paint_kit.h"

#include <climits>
#include <cwchar>

namespace zel::demo {

namespace {

// Selects a pen and brush for one shape and puts the DC's own back afterwards.
class ShapeTools {
public:
    ShapeTools(HDC dc, COLORREF fill, COLORREF edge)
        : dc_(dc), pen_(CreatePen(PS_SOLID, 1, edge)), brush_(CreateSolidBrush(fill)) {
        oldPen_ = SelectObject(dc_, pen_);
        oldBrush_ = SelectObject(dc_, brush_);
    }
    ~ShapeTools() {
        SelectObject(dc_, oldPen_);
        SelectObject(dc_, oldBrush_);
        DeleteObject(pen_);
        DeleteObject(brush_);
    }
    ShapeTools(const ShapeTools&) = delete;
    ShapeTools& operator=(const ShapeTools&) = delete;

private:
    HDC dc_;
    HPEN pen_;
    HBRUSH brush_;
    HGDIOBJ oldPen_ = nullptr, oldBrush_ = nullptr;
};

// Whether any of box can show through the DC's clipping: drawing that cannot is skipped
// (laying out text costs as much as drawing it). The clip's rectangles, not its box: a
// label between the art and the status strip is not drawn when only those changed.
bool Visible(HDC dc, const RECT& box) { return ::RectVisible(dc, &box) != FALSE; }

}  // namespace

Font::Font(int height, int weight) {
    LOGFONTW lf{};
    lf.lfHeight = height;
    lf.lfWeight = weight;
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfQuality = ANTIALIASED_QUALITY;
    std::wcsncpy(lf.lfFaceName, L"Tahoma", LF_FACESIZE - 1);
    font_ = CreateFontIndirectW(&lf);
}

Font::~Font() {
    if (font_) DeleteObject(font_);
}

void DrawLabel(HDC dc, std::wstring_view text, const RECT& box, const Font& font, COLORREF color, UINT format) {
    if (!Visible(dc, box)) return;  // DrawTextW clips to the box (no DT_NOCLIP here)
    HGDIOBJ oldFont = SelectObject(dc, font.get());
    COLORREF oldColor = SetTextColor(dc, color);
    int oldMode = SetBkMode(dc, TRANSPARENT);
    RECT r = box;
    DrawTextW(dc, text.data(), static_cast<int>(text.size()), &r, format | DT_NOPREFIX);
    SetBkMode(dc, oldMode);
    SetTextColor(dc, oldColor);
    SelectObject(dc, oldFont);
}

int InkWidth(HDC dc, std::wstring_view text, const Font& font) {
    if (text.empty()) return 0;
    if (!dc) return INT_MAX / 2;  // cannot be told: as far as the box lets it
    HGDIOBJ oldFont = SelectObject(dc, font.get());
    SIZE extent{};
    TEXTMETRICW tm{};
    const bool known = GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &extent) &&
                       GetTextMetricsW(dc, &tm);
    SelectObject(dc, oldFont);
    if (!known) return INT_MAX / 2;
    constexpr int kDriftPerGlyph = 2;
    return extent.cx + kDriftPerGlyph * static_cast<int>(text.size()) + tm.tmMaxCharWidth + tm.tmOverhang;
}

void FillBox(HDC dc, const RECT& box, COLORREF color) {
    if (!Visible(dc, box)) return;
    HBRUSH brush = CreateSolidBrush(color);
    FillRect(dc, &box, brush);
    DeleteObject(brush);
}

void Panel(HDC dc, const RECT& box, COLORREF fill, COLORREF edge, int corner) {
    if (!Visible(dc, box)) return;
    ShapeTools tools(dc, fill, edge);
    RoundRect(dc, box.left, box.top, box.right, box.bottom, corner, corner);
}

void Disc(HDC dc, const RECT& box, COLORREF fill, COLORREF edge) {
    if (!Visible(dc, box)) return;
    ShapeTools tools(dc, fill, edge);
    Ellipse(dc, box.left, box.top, box.right, box.bottom);
}

}  // namespace zel::demo
