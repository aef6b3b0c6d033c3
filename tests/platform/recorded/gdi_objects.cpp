// GetObjectW on every kind of GDI object, with null, short, exact and long buffers, on
// stock objects and on deleted handles; GetObjectType-free, as the controls use it.
#include "recorded.h"

namespace {

using recorded::Facts;

// "n<return>" and the bytes written, for a buffer of `size` bytes prefilled with 0xCD.
template <class T>
std::string Query(HGDIOBJ object, int size, T* out) {
    std::vector<unsigned char> buf(sizeof(T) + 16, 0xCD);
    int n = GetObjectW(object, size, size < 0 ? nullptr : buf.data());
    int written = 0;
    for (size_t i = 0; i < buf.size(); ++i)
        if (buf[i] != 0xCD) written = static_cast<int>(i) + 1;
    if (out && n > 0) std::memcpy(out, buf.data(), sizeof(T));
    return "n" + std::to_string(n) + "w" + std::to_string(written);
}

std::string Pen(HGDIOBJ pen) {
    LOGPEN lp;
    std::memset(&lp, 0, sizeof lp);
    std::string n = Query(pen, sizeof lp, &lp);
    char b[96];
    std::snprintf(b, sizeof b, "%s:s%u:w%ld:c%06lx", n.c_str(), static_cast<unsigned>(lp.lopnStyle),
                  static_cast<long>(lp.lopnWidth.x), static_cast<unsigned long>(lp.lopnColor));
    return b;
}

std::string Brush(HGDIOBJ brush) {
    LOGBRUSH lb;
    std::memset(&lb, 0, sizeof lb);
    std::string n = Query(brush, sizeof lb, &lb);
    char b[96];
    std::snprintf(b, sizeof b, "%s:s%u:c%06lx:h%s", n.c_str(), static_cast<unsigned>(lb.lbStyle),
                  static_cast<unsigned long>(lb.lbColor), lb.lbHatch ? "set" : "0");
    return b;
}

std::string Bitmap(HGDIOBJ bitmap) {
    BITMAP bm;
    std::memset(&bm, 0, sizeof bm);
    std::string n = Query(bitmap, sizeof bm, &bm);
    char b[128];
    std::snprintf(b, sizeof b, "%s:%ldx%ld:wb%ld:p%u:b%u:%s", n.c_str(), static_cast<long>(bm.bmWidth),
                  static_cast<long>(bm.bmHeight), static_cast<long>(bm.bmWidthBytes), static_cast<unsigned>(bm.bmPlanes),
                  static_cast<unsigned>(bm.bmBitsPixel), bm.bmBits ? "bits" : "nobits");
    return b;
}

}  // namespace

RECORDED_CASE(gdi_objects, pens) {
    HPEN solid = CreatePen(PS_SOLID, 3, RGB(1, 2, 3));
    HPEN zero = CreatePen(PS_SOLID, 0, RGB(10, 20, 30));
    HPEN negative = CreatePen(PS_SOLID, -4, RGB(10, 20, 30));
    HPEN null = CreatePen(PS_NULL, 5, RGB(9, 9, 9));
    facts.Add("solid", Pen(solid)).Add("zero", Pen(zero)).Add("negative", Pen(negative)).Add("null", Pen(null));
    facts.Add("stock_black", Pen(GetStockObject(BLACK_PEN))).Add("stock_white", Pen(GetStockObject(WHITE_PEN)));
    facts.Add("stock_null", Pen(GetStockObject(NULL_PEN)));
    LOGPEN lp;
    facts.Add("null_buffer", GetObjectW(solid, sizeof lp, nullptr)).Add("short", Query(solid, 4, &lp));
    facts.Add("long", Query(solid, sizeof lp + 8, &lp));
    DeleteObject(solid);
    DeleteObject(zero);
    DeleteObject(negative);
    DeleteObject(null);
    facts.Add("deleted", GetObjectW(solid, sizeof lp, &lp));
}

RECORDED_CASE(gdi_objects, brushes) {
    HBRUSH solid = CreateSolidBrush(RGB(200, 100, 50));
    HBRUSH sysLike = CreateSolidBrush(0x80000005);
    facts.Add("solid", Brush(solid)).Add("high_bits", Brush(sysLike));
    facts.Add("stock_white", Brush(GetStockObject(WHITE_BRUSH))).Add("stock_black", Brush(GetStockObject(BLACK_BRUSH)));
    facts.Add("stock_null", Brush(GetStockObject(NULL_BRUSH)));
    unsigned short rows[8] = {0xAA00, 0x5500, 0xAA00, 0x5500, 0xAA00, 0x5500, 0xAA00, 0x5500};
    std::vector<unsigned char> bits(16);
    for (int y = 0; y < 8; ++y) bits[static_cast<size_t>(y) * 2] = static_cast<unsigned char>(rows[y] >> 8);
    HBITMAP pattern = CreateBitmap(8, 8, 1, 1, bits.data());
    HBRUSH patterned = CreatePatternBrush(pattern);
    facts.Add("pattern", Brush(patterned));
    LOGBRUSH lb;
    facts.Add("null_buffer", GetObjectW(solid, 0, nullptr)).Add("short", Query(solid, 6, &lb));
    DeleteObject(patterned);
    DeleteObject(pattern);
    DeleteObject(solid);
    DeleteObject(sysLike);
    facts.Add("deleted", GetObjectW(solid, sizeof lb, &lb));
}

RECORDED_CASE(gdi_objects, bitmaps) {
    HDC screen = GetDC(nullptr);
    HBITMAP colour = CreateCompatibleBitmap(screen, 13, 7);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP fromMemory = CreateCompatibleBitmap(memory, 9, 3);
    ReleaseDC(nullptr, screen);
    HBITMAP mono = CreateBitmap(17, 5, 1, 1, nullptr);
    HBITMAP deep = CreateBitmap(3, 2, 1, 32, nullptr);
    HBITMAP empty = CreateCompatibleBitmap(memory, 0, 0);
    facts.Add("colour", Bitmap(colour)).Add("memory_dc", Bitmap(fromMemory)).Add("mono", Bitmap(mono));
    facts.Add("deep", Bitmap(deep)).Add("empty", Bitmap(empty));
    BITMAP bm;
    facts.Add("null_buffer", GetObjectW(mono, sizeof bm, nullptr)).Add("short", Query(mono, 10, &bm));
    facts.Add("long", Query(mono, sizeof bm + 8, &bm));
    DeleteDC(memory);
    DeleteObject(colour);
    DeleteObject(fromMemory);
    DeleteObject(mono);
    DeleteObject(deep);
    if (empty) DeleteObject(empty);
    facts.Add("deleted", GetObjectW(mono, sizeof bm, &bm));
}

RECORDED_CASE(gdi_objects, fonts) {
    LOGFONTW in;
    std::memset(&in, 0, sizeof in);
    in.lfHeight = -17;
    in.lfWidth = 3;
    in.lfWeight = 650;
    in.lfItalic = 5;
    in.lfCharSet = DEFAULT_CHARSET;
    in.lfQuality = NONANTIALIASED_QUALITY;
    const char* face = "No Such Face";
    for (int i = 0; face[i]; ++i) in.lfFaceName[i] = static_cast<WCHAR>(face[i]);
    HFONT font = CreateFontIndirectW(&in);
    LOGFONTW out;
    std::memset(&out, 0, sizeof out);
    int n = GetObjectW(font, sizeof out, &out);
    std::string name;
    for (int i = 0; i < LF_FACESIZE && out.lfFaceName[i]; ++i) name += static_cast<char>(out.lfFaceName[i]);
    // The size itself is a deliberate difference (WCHAR is wchar_t); the fields are not.
    facts.Add("full", n == static_cast<int>(sizeof out) ? "all" : std::to_string(n));
    facts.Add("fields", std::to_string(out.lfHeight) + "/" + std::to_string(out.lfWidth) + "/" +
                            std::to_string(out.lfWeight) + "/" + std::to_string(out.lfItalic) + "/" +
                            std::to_string(out.lfQuality) + "/" + name);
    LOGFONTW stock;
    std::memset(&stock, 0, sizeof stock);
    facts.Add("stock_system", GetObjectW(GetStockObject(SYSTEM_FONT), sizeof stock, &stock) > 0 ? "ok" : "fail");
    DeleteObject(font);
    facts.Add("deleted", GetObjectW(font, sizeof out, &out));
}

RECORDED_CASE(gdi_objects, regions_and_dcs) {
    HRGN region = CreateRectRgn(0, 0, 5, 5);
    char buf[64];
    std::memset(buf, 0xCD, sizeof buf);
    facts.Add("region", GetObjectW(region, sizeof buf, buf));
    HDC memory = CreateCompatibleDC(nullptr);
    facts.Add("dc", GetObjectW(memory, sizeof buf, buf));
    facts.Add("null_handle", GetObjectW(nullptr, sizeof buf, buf));
    DeleteDC(memory);
    DeleteObject(region);
}

// A negative pen width is kept as its magnitude: reported by GetObjectW and drawn that wide.
RECORDED_CASE(gdi_objects, pen_negative_width) {
    recorded::TextSurface surface(16, 16, -12);
    HPEN pen = CreatePen(PS_SOLID, -5, RGB(0, 0, 0));
    LOGPEN given = {PS_SOLID, {-3, 0}, RGB(0, 0, 0)};
    HPEN indirect = CreatePenIndirect(&given);
    facts.Add("pen", Pen(pen)).Add("indirect", Pen(indirect));
    HGDIOBJ old = SelectObject(surface.dc(), pen);
    MoveToEx(surface.dc(), 3, 8, nullptr);
    LineTo(surface.dc(), 13, 8);
    facts.Add("line", surface.Ink());
    SelectObject(surface.dc(), old);
    DeleteObject(pen);
    DeleteObject(indirect);
}

// A pattern brush reports the bitmap it was made from in lbHatch, also after the bitmap
// is gone; CreateBrushIndirect makes the same brush from that handle.
RECORDED_CASE(gdi_objects, pattern_brush_bitmap) {
    HBITMAP pattern = CreateBitmap(8, 8, 1, 1, nullptr);
    HBRUSH brush = CreatePatternBrush(pattern);
    LOGBRUSH lb;
    std::memset(&lb, 0, sizeof lb);
    facts.Add("n", GetObjectW(brush, sizeof lb, &lb));
    facts.Add("style", lb.lbStyle).Add("colour", static_cast<long long>(lb.lbColor));
    facts.Add("hatch", lb.lbHatch == reinterpret_cast<ULONG_PTR>(pattern) ? "bitmap" : lb.lbHatch ? "other" : "0");
    LOGBRUSH again = {BS_PATTERN, 0, reinterpret_cast<ULONG_PTR>(pattern)};
    HBRUSH indirect = CreateBrushIndirect(&again);
    std::memset(&lb, 0, sizeof lb);
    GetObjectW(indirect, sizeof lb, &lb);
    facts.Add("indirect", lb.lbHatch == reinterpret_cast<ULONG_PTR>(pattern) ? "bitmap" : lb.lbHatch ? "other" : "0");
    DeleteObject(pattern);
    std::memset(&lb, 0, sizeof lb);
    facts.Add("after_delete_n", GetObjectW(brush, sizeof lb, &lb));
    facts.Add("after_delete", lb.lbHatch == reinterpret_cast<ULONG_PTR>(pattern) ? "bitmap" : lb.lbHatch ? "other" : "0");
    DeleteObject(indirect);
    DeleteObject(brush);
}
