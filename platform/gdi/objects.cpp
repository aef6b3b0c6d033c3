// The GDI object table, stock objects, creation of bitmaps, brushes and pens, and
// DeleteObject / GetObjectW / SelectObject.
#include "gdi/objects.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "gdi/dc.h"
#include "gdi/row_copy.h"
#include "zel/gdi_extras.h"

namespace zel::gdi {

zel::detail::HandleTable<GdiObject>& Objects() {
    static auto* table = new zel::detail::HandleTable<GdiObject>();  // lives until exit: handles may outlive statics
    return *table;
}

DC* LookupDC(const void* h) { return Lookup<DC>(h, kDC); }

namespace {

constexpr int kDefaultBitmap = STOCK_LAST + 1;

GdiObject* MakeStock(int index) {
    switch (index) {
        case WHITE_BRUSH:
        case LTGRAY_BRUSH:
        case GRAY_BRUSH:
        case DKGRAY_BRUSH:
        case BLACK_BRUSH:
        case NULL_BRUSH:
        case DC_BRUSH: {
            static const COLORREF colors[] = {RGB(255, 255, 255), RGB(192, 192, 192), RGB(128, 128, 128),
                                              RGB(64, 64, 64), RGB(0, 0, 0)};
            auto b = std::make_unique<Brush>();
            if (index == NULL_BRUSH) {
                b->style = BS_NULL;
            } else {
                b->color = index == DC_BRUSH ? RGB(255, 255, 255) : colors[index];
            }
            return Register(std::move(b), kBrush);
        }
        case WHITE_PEN:
        case BLACK_PEN:
        case NULL_PEN:
        case DC_PEN: {
            auto p = std::make_unique<Pen>();
            p->style = index == NULL_PEN ? PS_NULL : PS_SOLID;
            p->width = index == NULL_PEN ? 1 : 0;  // what GetObject reports for the stock pens
            p->color = index == WHITE_PEN ? RGB(255, 255, 255) : RGB(0, 0, 0);
            return Register(std::move(p), kPen);
        }
        case OEM_FIXED_FONT:
        case ANSI_FIXED_FONT:
        case ANSI_VAR_FONT:
        case SYSTEM_FONT:
        case DEVICE_DEFAULT_FONT:
        case SYSTEM_FIXED_FONT:
        case DEFAULT_GUI_FONT: {
            auto f = std::make_unique<Font>();
            f->lf.lfHeight = index == DEFAULT_GUI_FONT ? -11 : 16;
            f->lf.lfWeight = index == SYSTEM_FONT ? FW_BOLD : FW_NORMAL;
            f->lf.lfCharSet = ANSI_CHARSET;
            const wchar_t* face = index == SYSTEM_FONT ? L"System" : L"Tahoma";
            std::wcsncpy(f->lf.lfFaceName, face, LF_FACESIZE - 1);
            return Register(std::move(f), kFont);
        }
        case DEFAULT_PALETTE: {
            auto p = std::make_unique<GdiObject>();
            return Register(std::move(p), kPalette);
        }
        case kDefaultBitmap: {
            auto b = std::make_unique<Bitmap>();
            b->px = PixelBuffer(1, 1, 1, 0);
            return Register(std::move(b), kBitmap);
        }
        default:
            return nullptr;
    }
}

GdiObject* Stock(int index) {
    static GdiObject* stock[kDefaultBitmap + 1] = {};
    if (index < 0 || index > kDefaultBitmap) return nullptr;
    if (!stock[index]) {
        stock[index] = MakeStock(index);
        if (stock[index]) stock[index]->stock = true;
    }
    return stock[index];
}

void Destroy(GdiObject* object) { Objects().Remove(object->handle); }

// GetObjectW copies at most the structure and returns how much it wrote.
int CopyOut(const void* data, int size, int available, void* buffer) {
    if (!buffer) return size;
    int n = available < size ? available : size;
    if (n <= 0) return 0;
    std::memcpy(buffer, data, n);
    return n;
}

// 16-bpp DDB pixels are x555; each 5-bit channel widens by repeating its top bits.
uint32_t Rgb555ToPixel32(unsigned v) {
    auto widen = [](unsigned c) { return (c << 3) | (c >> 2); };
    return (widen((v >> 10) & 31) << 16) | (widen((v >> 5) & 31) << 8) | widen(v & 31);
}

}  // namespace

Bitmap* DefaultBitmap() { return static_cast<Bitmap*>(Stock(kDefaultBitmap)); }

void Retain(GdiObject* object) {
    if (object) ++object->selections;
}

void Release(GdiObject* object) {
    if (!object) return;
    if (--object->selections <= 0) {
        object->selections = 0;
        if (object->deletePending && !object->stock) Destroy(object);
    }
}

// A picture built of many small pieces would make the region of what is left ragged, and
// every later piece dearer to take out of it: past this many rectangles the rest is
// cleared at once.
constexpr int kMaxUnwrittenRects = 32;

PixelBuffer& Bitmap::Overwrite(const PixRegion& written) {
    if (shared || !zeroPending) return Pixels();
    if (!unwritten) unwritten.emplace(RECT{0, 0, px.width, px.height});
    pixman_region32_subtract(unwritten->get(), unwritten->get(), written.mut());
    if (unwritten->empty()) {
        zeroPending = false;
        unwritten.reset();
    } else if (pixman_region32_n_rects(unwritten->get()) > kMaxUnwrittenRects) {
        ZeroUnwritten();
    }
    return px;
}

void Bitmap::ZeroUnwritten() {
    if (!unwritten) {
        std::fill(px.pixels.begin(), px.pixels.end(), 0u);
    } else {
        int n = 0;
        const pixman_box32_t* boxes = pixman_region32_rectangles(unwritten->get(), &n);
        for (int i = 0; i < n; ++i)
            for (int y = boxes[i].y1; y < boxes[i].y2; ++y)
                std::fill(px.row(y) + boxes[i].x1, px.row(y) + boxes[i].x2, 0u);
    }
    zeroPending = false;
    unwritten.reset();
}

Bitmap* NewBitmap(int width, int height, int bpp) {
    auto b = std::make_unique<Bitmap>();
    b->px = PixelBuffer(width, height, bpp, PixelBuffer::Uninitialised{});
    b->zeroPending = true;
    return Register(std::move(b), kBitmap);
}

}  // namespace zel::gdi

using namespace zel::gdi;

extern "C" {

HGDIOBJ GetStockObject(int index) {
    GdiObject* o = Stock(index);
    return o ? reinterpret_cast<HGDIOBJ>(o->handle) : nullptr;
}

DWORD GetObjectType(HGDIOBJ handle) {
    GdiObject* o = Objects().Lookup(reinterpret_cast<uintptr_t>(handle));
    if (!o) return 0;
    if (o->type == kDC) return static_cast<DC*>(o)->kind == DC::kMemory ? OBJ_MEMDC : OBJ_DC;
    return o->type;
}

BOOL DeleteObject(HGDIOBJ handle) {
    GdiObject* o = Objects().Lookup(reinterpret_cast<uintptr_t>(handle));
    if (!o || o->type == kDC) return FALSE;
    if (o->stock) return TRUE;
    if (o->selections > 0) {
        o->deletePending = true;  // dies when deselected; drawing keeps working meanwhile
        return TRUE;
    }
    Objects().Remove(o->handle);
    return TRUE;
}

int GetObjectW(HANDLE handle, int size, LPVOID buffer) {
    GdiObject* o = Objects().Lookup(reinterpret_cast<uintptr_t>(handle));
    if (!o) return 0;
    switch (o->type) {
        case kBitmap: {
            auto* b = static_cast<Bitmap*>(o);
            if (!buffer) return sizeof(BITMAP);
            if (size < static_cast<int>(sizeof(BITMAP))) return 0;
            BITMAP bm{};
            bm.bmWidth = b->px.width;
            bm.bmHeight = b->px.height;
            bm.bmWidthBytes = ((b->px.width * b->px.bpp + 15) >> 3) & ~1;  // DDB rows are WORD-aligned
            bm.bmPlanes = 1;
            bm.bmBitsPixel = static_cast<WORD>(b->px.bpp);
            std::memcpy(buffer, &bm, sizeof bm);
            return sizeof(BITMAP);
        }
        case kPen: {
            auto* p = static_cast<Pen*>(o);
            if (!buffer) return sizeof(LOGPEN);
            if (size < static_cast<int>(sizeof(LOGPEN))) return 0;
            LOGPEN lp{p->style, {p->width, 0}, p->color};
            std::memcpy(buffer, &lp, sizeof lp);
            return sizeof(LOGPEN);
        }
        case kBrush: {
            auto* b = static_cast<Brush*>(o);
            LOGBRUSH lb{b->style, b->style == BS_SOLID ? b->color : 0, b->style == BS_PATTERN ? b->hatch : 0};
            return CopyOut(&lb, sizeof lb, size, buffer);
        }
        case kFont:
            return CopyOut(&static_cast<Font*>(o)->lf, sizeof(LOGFONTW), size, buffer);
        default:
            return 0;
    }
}

namespace {
// Bitmaps store 4 bytes a pixel; larger requests fail as out of memory would, instead of
// letting a bad size take the process down. Same bound as the image loaders.
constexpr int64_t kMaxBitmapPixels = int64_t{64} << 20;
}  // namespace

HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bpp, const void* bits) {
    // An empty size gives the stock 1x1 bitmap whatever the other arguments; negative
    // sizes count by their magnitude; depths round up to the next DDB depth.
    const int64_t w = std::llabs(width), h = std::llabs(height);
    if (w == 0 || h == 0) return HandleOf<HBITMAP>(DefaultBitmap());
    if (planes != 1 || bpp > 32 || w * h > kMaxBitmapPixels) return nullptr;
    width = static_cast<int>(w);
    height = static_cast<int>(h);
    bpp = bpp <= 1 ? 1 : bpp <= 4 ? 4 : bpp <= 8 ? 8 : bpp <= 16 ? 16 : bpp <= 24 ? 24 : 32;
    // Everything that is not monochrome is stored as 32 bpp, the screen's format.
    int storeBpp = bpp == 1 ? 1 : 32;
    Bitmap* b = NewBitmap(width, height, storeBpp);
    if (bits) {
        b->zeroPending = false;  // every pixel is written below
        auto* src = static_cast<const uint8_t*>(bits);
        int stride = ((width * static_cast<int>(bpp) + 15) >> 3) & ~1;
        for (int y = 0; y < height; ++y) {
            const uint8_t* row = src + static_cast<size_t>(y) * stride;
            uint32_t* dst = b->px.row(y);
            for (int x = 0; x < width; ++x) {
                switch (bpp) {
                    case 1: dst[x] = (row[x >> 3] >> (7 - (x & 7))) & 1; break;
                    case 32: std::memcpy(&dst[x], row + x * 4, 4); break;
                    case 24: dst[x] = row[x * 3] | (row[x * 3 + 1] << 8) | (row[x * 3 + 2] << 16); break;
                    case 16: dst[x] = Rgb555ToPixel32(row[x * 2] | (row[x * 2 + 1] << 8)); break;
                    default: dst[x] = 0; break;  // 4/8 bpp index a palette we do not keep: black
                }
            }
        }
    }
    return HandleOf<HBITMAP>(b);
}

HBITMAP CreateBitmapIndirect(const BITMAP* bm) {
    if (!bm) return nullptr;
    return CreateBitmap(bm->bmWidth, bm->bmHeight, bm->bmPlanes, bm->bmBitsPixel, bm->bmBits);
}

HBITMAP CreateCompatibleBitmap(HDC hdc, int width, int height) {
    DC* dc = LookupDC(hdc);
    if (!dc) return nullptr;
    // Negative sizes count by their magnitude; an empty size gives the stock 1x1 bitmap.
    const int64_t w = std::llabs(width), h = std::llabs(height);
    if (w == 0 || h == 0) return HandleOf<HBITMAP>(DefaultBitmap());
    if (w * h > kMaxBitmapPixels) return nullptr;
    width = static_cast<int>(w);
    height = static_cast<int>(h);
    // A memory DC is as deep as its selected bitmap: a fresh one gives monochrome.
    const PixelBuffer* target = dc->TargetShape();
    int bpp = target ? target->bpp : 32;
    return HandleOf<HBITMAP>(NewBitmap(width, height, bpp));
}

LONG GetBitmapBits(HBITMAP hbm, LONG size, LPVOID bits) {
    Bitmap* b = LookupBitmap(hbm);
    if (!b) return 0;
    const PixelBuffer& px = b->Read();
    LONG stride = ((px.width * px.bpp + 15) >> 3) & ~1;
    LONG total = stride * px.height;
    if (!bits) return total;
    if (size <= 0) return 0;  // nothing to copy into
    if (size > total) size = total;
    auto* out = static_cast<uint8_t*>(bits);
    // Only whole rows are written; the bytes of a last row that does not fit are zero.
    const int rows = static_cast<int>(std::min<LONG>(px.height, size / stride));
    if (px.bpp == 1) {
        std::memset(out, 0, size);
        for (int y = 0; y < rows; ++y) {
            const uint32_t* row = px.row(y);
            uint8_t* dst = out + y * stride;
            for (int x = 0; x < px.width; ++x) dst[x >> 3] |= (row[x] & 1) << (7 - (x & 7));
        }
        return size;
    }
    // A 32-bpp row is stored as the bytes B, G, R, 0 of each pixel: the pixels themselves.
    for (int y = 0; y < rows; ++y)
        CopyPixels(reinterpret_cast<uint32_t*>(out + y * stride), px.row(y), static_cast<size_t>(px.width));
    std::memset(out + rows * stride, 0, static_cast<size_t>(size - rows * stride));
    return size;
}

// Rows are read in GetBitmapBits' layout; a short buffer fills the leading rows and
// the first bytes of the next one. Returns the number of bytes used.
LONG SetBitmapBits(HBITMAP hbm, DWORD size, const void* bits) {
    Bitmap* b = LookupBitmap(hbm);
    if (!b || !bits || b->stock) return 0;
    b->Pixels();  // a short buffer leaves the rest as it was
    const int64_t stride = ((int64_t{b->px.width} * b->px.bpp + 15) >> 3) & ~int64_t{1};
    const int64_t used = std::min<int64_t>(size, stride * b->px.height);
    const auto* in = static_cast<const uint8_t*>(bits);
    for (int y = 0; y < b->px.height; ++y) {
        const int64_t base = y * stride;
        uint32_t* row = b->px.row(y);
        for (int x = 0; x < b->px.width; ++x) {
            if (b->px.bpp == 1) {
                if (base + (x >> 3) >= used) return static_cast<LONG>(used);
                row[x] = (in[base + (x >> 3)] >> (7 - (x & 7))) & 1;
            } else {
                if (base + x * 4 + 4 > used) return static_cast<LONG>(used);
                std::memcpy(&row[x], in + base + x * 4, 4);
            }
        }
    }
    return static_cast<LONG>(used);
}

HPEN CreatePen(int style, int width, COLORREF color) {
    if ((style & PS_STYLE_MASK) == PS_NULL) return static_cast<HPEN>(GetStockObject(NULL_PEN));
    auto p = std::make_unique<Pen>();
    p->style = static_cast<UINT>(style);
    // A negative width is kept as its magnitude: reported so, and drawn that wide.
    p->width = width < 0 ? static_cast<int>(std::min<int64_t>(-int64_t{width}, INT_MAX)) : width;
    p->color = color;
    return HandleOf<HPEN>(Register(std::move(p), kPen));
}

HPEN CreatePenIndirect(const LOGPEN* lp) {
    return lp ? CreatePen(static_cast<int>(lp->lopnStyle), lp->lopnWidth.x, lp->lopnColor) : nullptr;
}

HBRUSH CreateSolidBrush(COLORREF color) {
    auto b = std::make_unique<Brush>();
    b->style = BS_SOLID;
    b->color = color;
    return HandleOf<HBRUSH>(Register(std::move(b), kBrush));
}

HBRUSH CreatePatternBrush(HBITMAP hbm) {
    Bitmap* bitmap = LookupBitmap(hbm);
    if (!bitmap) return nullptr;
    auto b = std::make_unique<Brush>();
    b->style = BS_PATTERN;
    b->pattern = std::make_shared<const PixelBuffer>(bitmap->Read());  // later bitmap changes do not show
    b->hatch = reinterpret_cast<ULONG_PTR>(hbm);
    return HandleOf<HBRUSH>(Register(std::move(b), kBrush));
}

HBRUSH CreateBrushIndirect(const LOGBRUSH* lb) {
    if (!lb) return nullptr;
    switch (lb->lbStyle) {
        case BS_SOLID: return CreateSolidBrush(lb->lbColor);
        case BS_NULL: return static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
        case BS_PATTERN: return CreatePatternBrush(reinterpret_cast<HBITMAP>(lb->lbHatch));
        default: return nullptr;
    }
}

}  // extern "C"

namespace zel {

GdiCounts LiveGdiObjects() {
    GdiCounts c;
    Objects().ForEach([&c](uint8_t type, const GdiObject& o) {
        if (o.stock) return;
        switch (type) {
            case kDC: ++c.dcs; break;
            case kBitmap: ++c.bitmaps; break;
            case kBrush: ++c.brushes; break;
            case kPen: ++c.pens; break;
            case kFont: ++c.fonts; break;
            case kRegion: ++c.regions; break;
            default: break;
        }
    });
    return c;
}

}  // namespace zel
