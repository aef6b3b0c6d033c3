// GDI objects behind the handles: bitmaps, brushes, pens, fonts, regions, DCs.
//
// Lifetime rule (Win32): DeleteObject on an object that is selected into a DC succeeds but
// only marks it; the object dies when its last selection ends. Stock objects never die.
#pragma once

#include <pixman.h>

#include <algorithm>
#include <memory>
#include <optional>

#include "gdi/handle_table.h"
#include "gdi/surface.h"

namespace zel::gdi {

enum ObjType : uint8_t {
    kNone = 0,
    kPen = OBJ_PEN,
    kBrush = OBJ_BRUSH,
    kDC = OBJ_DC,
    kFont = OBJ_FONT,
    kBitmap = OBJ_BITMAP,
    kRegion = OBJ_REGION,
    kPalette = OBJ_PAL,
};

struct DC;

struct GdiObject {
    virtual ~GdiObject() = default;
    ObjType type = kNone;
    uintptr_t handle = 0;
    bool stock = false;
    bool deletePending = false;
    int selections = 0;  // how many DC states (current or saved) hold it
};

// A pixman region with value semantics.
class PixRegion {
public:
    PixRegion() { pixman_region32_init(&r_); }
    explicit PixRegion(const RECT& rc) {
        if (rc.left < rc.right && rc.top < rc.bottom)
            pixman_region32_init_rect(&r_, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top);
        else
            pixman_region32_init(&r_);
    }
    PixRegion(const PixRegion& o) {
        pixman_region32_init(&r_);
        pixman_region32_copy(&r_, const_cast<pixman_region32_t*>(&o.r_));
    }
    PixRegion& operator=(const PixRegion& o) {
        if (this != &o) pixman_region32_copy(&r_, const_cast<pixman_region32_t*>(&o.r_));
        return *this;
    }
    ~PixRegion() { pixman_region32_fini(&r_); }
    pixman_region32_t* get() { return &r_; }
    const pixman_region32_t* get() const { return &r_; }
    pixman_region32_t* mut() const { return const_cast<pixman_region32_t*>(&r_); }  // pixman takes non-const
    bool empty() const { return !pixman_region32_not_empty(mut()); }
    bool contains(int x, int y) const { return pixman_region32_contains_point(mut(), x, y, nullptr); }
    void translate(int dx, int dy) { pixman_region32_translate(&r_, dx, dy); }
    void intersect(const PixRegion& o) { pixman_region32_intersect(&r_, &r_, o.mut()); }
    RECT box() const {
        const pixman_box32_t* b = pixman_region32_extents(mut());
        if (empty()) return RECT{0, 0, 0, 0};
        return RECT{b->x1, b->y1, b->x2, b->y2};
    }

private:
    pixman_region32_t r_;
};

// Contents are materialised only when someone could see them:
// - a new bitmap reads as zero (as CE's CreateBitmap and CreateCompatibleBitmap give), but
//   while `zeroPending` the storage of its unwritten part is undefined until Pixels() or
//   Read() fills it;
// - a bitmap loaded from a decoded image that is still cached reads that image (`shared`,
//   immutable, shared by every bitmap loaded from the same file) until the first write
//   gives it a copy of its own.
// An operation that writes every pixel of an area without reading them (DC::Overwrite)
// takes that area out of the pending fill, so a picture built piece by piece (a frame's
// caps and middle) is never cleared first; overwriting all of a cached image skips its copy.
struct Bitmap : GdiObject {
    PixelBuffer px;  // size and format always valid; pixels through Pixels() or Read()
    DC* selectedIn = nullptr;  // a bitmap is selected into at most one DC
    bool zeroPending = false;
    // While zeroPending: the pixels not written yet, or all of them (nullopt).
    std::optional<PixRegion> unwritten;
    std::shared_ptr<const PixelBuffer> shared;

    // The pixels, to be read or written.
    PixelBuffer& Pixels() {
        if (shared) {
            px.pixels = shared->pixels;
            shared.reset();
        } else if (zeroPending) {
            ZeroUnwritten();
        }
        return px;
    }
    // The pixels, only to be read; valid until the next Pixels() or DropContents().
    const PixelBuffer& Read() { return shared ? *shared : Pixels(); }
    // The pixels for a write of every pixel of `written` (bitmap coordinates) and of
    // nothing else, none of them read first: they leave the pending fill, the rest of it
    // stays pending. A cached image is copied as by Pixels().
    PixelBuffer& Overwrite(const PixRegion& written);
    // The old contents will never be read: skips a pending fill or copy.
    void DropContents() {
        if (shared) {
            px.pixels = PixelStore(shared->pixels.size());
            shared.reset();
        }
        zeroPending = false;
        unwritten.reset();
    }

private:
    void ZeroUnwritten();
};

struct Brush : GdiObject {
    UINT style = BS_SOLID;  // BS_SOLID, BS_NULL or BS_PATTERN
    COLORREF color = 0;
    // Pattern brushes copy the bitmap's pixels at creation (the bitmap may be deleted).
    std::shared_ptr<const PixelBuffer> pattern;
    // The bitmap it was made from, as GetObjectW reports it in lbHatch (a value only, even
    // after the bitmap is deleted).
    ULONG_PTR hatch = 0;
};

struct Pen : GdiObject {
    UINT style = PS_SOLID;
    int width = 0;  // 0 and 1 are both the one-pixel cosmetic pen
    COLORREF color = 0;
};

class RealizedFont;  // owned by the text engine

struct Font : GdiObject {
    LOGFONTW lf{};
    std::shared_ptr<RealizedFont> realized;  // resolved lazily on first use
};

struct Region : GdiObject {
    PixRegion rgn;
};

// The one table of every GDI object.
detail::HandleTable<GdiObject>& Objects();

template <class T>
T* Lookup(const void* handle, ObjType type) {
    return static_cast<T*>(Objects().Lookup(reinterpret_cast<uintptr_t>(handle), type));
}
inline Bitmap* LookupBitmap(const void* h) { return Lookup<Bitmap>(h, kBitmap); }
inline Brush* LookupBrush(const void* h) { return Lookup<Brush>(h, kBrush); }
inline Pen* LookupPen(const void* h) { return Lookup<Pen>(h, kPen); }
inline Font* LookupFont(const void* h) { return Lookup<Font>(h, kFont); }
inline Region* LookupRegion(const void* h) { return Lookup<Region>(h, kRegion); }
DC* LookupDC(const void* h);

// Registers a new object and returns its handle.
template <class T>
T* Register(std::unique_ptr<T> object, ObjType type) {
    T* raw = object.get();
    raw->type = type;
    raw->handle = Objects().Add(std::move(object), type);
    return raw;
}
template <class H, class T>
H HandleOf(const T* object) {
    return object ? reinterpret_cast<H>(object->handle) : nullptr;
}

// Selection bookkeeping for DC states; Release frees an object whose deletion was deferred.
void Retain(GdiObject* object);
void Release(GdiObject* object);

// Creates a bitmap object (no size checks: callers validate), reading as zero.
Bitmap* NewBitmap(int width, int height, int bpp);

// NULLREGION, SIMPLEREGION or COMPLEXREGION.
int RegionType(const PixRegion& rgn);

// The stock 1x1 monochrome bitmap every memory DC starts with.
Bitmap* DefaultBitmap();

}  // namespace zel::gdi
