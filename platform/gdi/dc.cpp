// Device contexts: creation, selection, saved states, attributes and clipping.
#include "gdi/dc.h"

#include <algorithm>

namespace zel::gdi {

namespace {

void RetainState(DCState& s) {
    Retain(s.bitmap);
    Retain(s.brush);
    Retain(s.pen);
    Retain(s.font);
}

// Releasing may destroy objects whose deletion was deferred, so read the pointers first.
void ReleaseState(DCState& s) {
    if (s.bitmap && s.bitmap->selectedIn && s.bitmap->selections == 1) s.bitmap->selectedIn = nullptr;
    Bitmap* b = s.bitmap;
    Brush* br = s.brush;
    Pen* p = s.pen;
    Font* f = s.font;
    s.bitmap = nullptr;
    s.brush = nullptr;
    s.pen = nullptr;
    s.font = nullptr;
    Release(b);
    Release(br);
    Release(p);
    Release(f);
}

template <class T>
void Swap(T*& slot, T* object) {
    Retain(object);
    T* old = slot;
    slot = object;
    Release(old);
}

void InitDefaults(DC* dc) {
    dc->SetBrush(static_cast<Brush*>(Objects().Lookup(reinterpret_cast<uintptr_t>(GetStockObject(WHITE_BRUSH)))));
    dc->SetPen(static_cast<Pen*>(Objects().Lookup(reinterpret_cast<uintptr_t>(GetStockObject(BLACK_PEN)))));
    dc->SetFont(static_cast<Font*>(Objects().Lookup(reinterpret_cast<uintptr_t>(GetStockObject(SYSTEM_FONT)))));
}

// The whole target surface in DC coordinates: what "no clip region" means.
PixRegion DrawableArea(const DC& dc) {
    const PixelBuffer* t = dc.TargetShape();
    if (!t) return PixRegion();
    return PixRegion(RECT{-dc.origin.x, -dc.origin.y, t->width - dc.origin.x, t->height - dc.origin.y});
}

}  // namespace

DC::~DC() {
    ReleaseState(state);
    for (DCState& s : saved) ReleaseState(s);
}

const std::vector<RECT>& DC::ClipRects() {
    if (clipValid_) return clipRects_;
    clipRects_.clear();
    clipValid_ = true;
    const PixelBuffer* t = TargetShape();
    if (!t) return clipRects_;
    PixRegion r(RECT{0, 0, t->width, t->height});
    if (vis) r.intersect(*vis);
    if (state.clip) {
        PixRegion c = *state.clip;
        c.translate(origin.x, origin.y);
        r.intersect(c);
    }
    int n = 0;
    const pixman_box32_t* boxes = pixman_region32_rectangles(r.mut(), &n);
    clipRects_.reserve(n);
    for (int i = 0; i < n; ++i) clipRects_.push_back(RECT{boxes[i].x1, boxes[i].y1, boxes[i].x2, boxes[i].y2});
    return clipRects_;
}

PixelBuffer* DC::Overwrite(const RECT& written) {
    Bitmap* b = kind == kMemory ? state.bitmap : nullptr;
    if (!b || (!b->zeroPending && !b->shared)) return Target();
    const RECT whole{0, 0, b->px.width, b->px.height};
    auto covers = [&](const RECT& r) {
        return r.left <= 0 && r.top <= 0 && r.right >= whole.right && r.bottom >= whole.bottom;
    };
    const std::vector<RECT>& clip = ClipRects();
    if (covers(written) && clip.size() == 1 && covers(clip[0])) {
        b->DropContents();
        return Target();
    }
    if (b->shared) return Target();
    std::vector<pixman_box32_t> boxes;
    boxes.reserve(clip.size());
    for (const RECT& c : clip) {
        const pixman_box32_t box{std::max(c.left, written.left), std::max(c.top, written.top),
                                 std::min(c.right, written.right), std::min(c.bottom, written.bottom)};
        if (box.x1 < box.x2 && box.y1 < box.y2) boxes.push_back(box);
    }
    PixRegion area;
    pixman_region32_fini(area.get());
    pixman_region32_init_rects(area.get(), boxes.data(), static_cast<int>(boxes.size()));
    return &b->Overwrite(area);
}

bool DC::PointVisible(int x, int y) {
    for (const RECT& c : ClipRects())
        if (x >= c.left && x < c.right && y >= c.top && y < c.bottom) return true;
    return false;
}

void DC::SetBitmap(Bitmap* b) {
    if (state.bitmap && state.bitmap->selectedIn == this) state.bitmap->selectedIn = nullptr;
    Swap(state.bitmap, b);
    if (b && !b->stock) b->selectedIn = this;
    InvalidateClip();
}
void DC::SetBrush(Brush* b) { Swap(state.brush, b); }
void DC::SetPen(Pen* p) { Swap(state.pen, p); }
void DC::SetFont(Font* f) { Swap(state.font, f); }

DC* NewScreenDC(PixelBuffer* surface, POINT origin) {
    auto dc = std::make_unique<DC>();
    dc->kind = DC::kScreen;
    dc->screen = surface;
    dc->origin = origin;
    DC* raw = Register(std::move(dc), kDC);
    InitDefaults(raw);
    return raw;
}

PixelBuffer& Screen() {
    static PixelBuffer* screen = new PixelBuffer(800, 480, 32, 0);
    return *screen;
}

void ResizeScreen(int width, int height) {
    PixelBuffer& s = Screen();
    s = PixelBuffer(width, height, 32, 0);
    // Every DC drawing on the screen must recompute its clip.
    Objects().ForEach([](uint8_t type, GdiObject& o) {
        if (type == kDC) static_cast<DC&>(o).InvalidateClip();
    });
}

int RegionType(const PixRegion& rgn) {
    int n = pixman_region32_n_rects(rgn.mut());
    return n == 0 ? NULLREGION : n == 1 ? SIMPLEREGION : COMPLEXREGION;
}

}  // namespace zel::gdi

using namespace zel::gdi;

extern "C" {

HDC CreateCompatibleDC(HDC hdc) {
    if (hdc && !LookupDC(hdc)) return nullptr;
    auto dc = std::make_unique<DC>();
    dc->kind = DC::kMemory;
    DC* raw = Register(std::move(dc), kDC);
    InitDefaults(raw);
    raw->SetBitmap(DefaultBitmap());
    return HandleOf<HDC>(raw);
}

BOOL DeleteDC(HDC hdc) {
    DC* dc = LookupDC(hdc);
    if (!dc) return FALSE;
    Objects().Remove(dc->handle);  // ~DC releases the selections
    return TRUE;
}

HGDIOBJ SelectObject(HDC hdc, HGDIOBJ handle) {
    DC* dc = LookupDC(hdc);
    GdiObject* o = Objects().Lookup(reinterpret_cast<uintptr_t>(handle));
    if (!dc || !o) return nullptr;
    // A region selects as a clip region (a copy) and returns the region type.
    if (o->type == kRegion) {
        int r = SelectClipRgn(hdc, static_cast<HRGN>(handle));
        return reinterpret_cast<HGDIOBJ>(static_cast<intptr_t>(r));
    }
    HGDIOBJ previous = nullptr;
    switch (o->type) {
        case kBitmap: {
            auto* b = static_cast<Bitmap*>(o);
            if (dc->kind != DC::kMemory) return nullptr;
            if (b->selectedIn && b->selectedIn != dc) return nullptr;  // one DC at a time
            previous = HandleOf<HGDIOBJ>(dc->state.bitmap);
            dc->SetBitmap(b);
            break;
        }
        case kBrush:
            previous = HandleOf<HGDIOBJ>(dc->state.brush);
            dc->SetBrush(static_cast<Brush*>(o));
            break;
        case kPen:
            previous = HandleOf<HGDIOBJ>(dc->state.pen);
            dc->SetPen(static_cast<Pen*>(o));
            break;
        case kFont:
            previous = HandleOf<HGDIOBJ>(dc->state.font);
            dc->SetFont(static_cast<Font*>(o));
            break;
        default:
            return nullptr;
    }
    return previous;
}

HGDIOBJ GetCurrentObject(HDC hdc, UINT type) {
    DC* dc = LookupDC(hdc);
    if (!dc) return nullptr;
    switch (type) {
        case OBJ_BITMAP: return HandleOf<HGDIOBJ>(dc->state.bitmap);
        case OBJ_BRUSH: return HandleOf<HGDIOBJ>(dc->state.brush);
        case OBJ_PEN: return HandleOf<HGDIOBJ>(dc->state.pen);
        case OBJ_FONT: return HandleOf<HGDIOBJ>(dc->state.font);
        default: return nullptr;
    }
}

int SaveDC(HDC hdc) {
    DC* dc = LookupDC(hdc);
    if (!dc) return 0;
    dc->saved.push_back(dc->state);
    RetainState(dc->saved.back());
    return static_cast<int>(dc->saved.size());
}

BOOL RestoreDC(HDC hdc, int level) {
    DC* dc = LookupDC(hdc);
    if (!dc) return FALSE;
    int depth = static_cast<int>(dc->saved.size());
    if (level < 0) level = depth + level + 1;  // -1 is the most recent
    if (level <= 0 || level > depth) return FALSE;
    // The bitmap of the restored state may now be selected elsewhere; keep ours then.
    DCState restored = dc->saved[level - 1];
    for (int i = depth - 1; i >= level - 1; --i) ReleaseState(dc->saved[i]);
    dc->saved.resize(level - 1);
    RetainState(restored);
    if (restored.bitmap && restored.bitmap->selectedIn && restored.bitmap->selectedIn != dc) {
        Release(restored.bitmap);
        restored.bitmap = dc->state.bitmap;
        Retain(restored.bitmap);
    }
    if (dc->state.bitmap && dc->state.bitmap->selectedIn == dc) dc->state.bitmap->selectedIn = nullptr;
    DCState old = dc->state;
    dc->state = restored;
    if (dc->state.bitmap && !dc->state.bitmap->stock) dc->state.bitmap->selectedIn = dc;
    ReleaseState(old);
    dc->InvalidateClip();
    return TRUE;
}

#define ZEL_DC_ATTR(Setter, Getter, Type, field, failure)  \
    Type Setter(HDC hdc, Type value) {                      \
        DC* dc = LookupDC(hdc);                             \
        if (!dc) return failure;                            \
        Type old = dc->state.field;                         \
        dc->state.field = value;                            \
        return old;                                         \
    }                                                       \
    Type Getter(HDC hdc) {                                  \
        DC* dc = LookupDC(hdc);                             \
        return dc ? dc->state.field : failure;              \
    }

ZEL_DC_ATTR(SetBkColor, GetBkColor, COLORREF, bkColor, CLR_INVALID)
ZEL_DC_ATTR(SetTextColor, GetTextColor, COLORREF, textColor, CLR_INVALID)
ZEL_DC_ATTR(SetTextAlign, GetTextAlign, UINT, textAlign, GDI_ERROR)
#undef ZEL_DC_ATTR

int SetBkMode(HDC hdc, int mode) {
    DC* dc = LookupDC(hdc);
    if (!dc || (mode != OPAQUE && mode != TRANSPARENT)) return 0;
    int old = dc->state.bkMode;
    dc->state.bkMode = mode;
    return old;
}
int GetBkMode(HDC hdc) {
    DC* dc = LookupDC(hdc);
    return dc ? dc->state.bkMode : 0;
}

int SetStretchBltMode(HDC hdc, int mode) {
    DC* dc = LookupDC(hdc);
    if (!dc || mode < BLACKONWHITE || mode > HALFTONE) return 0;
    int old = dc->state.stretchMode;
    dc->state.stretchMode = mode;
    return old;
}
int GetStretchBltMode(HDC hdc) {
    DC* dc = LookupDC(hdc);
    return dc ? dc->state.stretchMode : 0;
}

int SetROP2(HDC hdc, int rop2) {
    DC* dc = LookupDC(hdc);
    if (!dc || rop2 < R2_BLACK || rop2 > R2_WHITE) return 0;
    int old = dc->state.rop2;
    dc->state.rop2 = rop2;
    return old;
}
int GetROP2(HDC hdc) {
    DC* dc = LookupDC(hdc);
    return dc ? dc->state.rop2 : 0;
}

BOOL SetBrushOrgEx(HDC hdc, int x, int y, LPPOINT old) {
    DC* dc = LookupDC(hdc);
    if (!dc) return FALSE;
    if (old) *old = dc->state.brushOrg;
    dc->state.brushOrg = POINT{x, y};
    return TRUE;
}
BOOL GetBrushOrgEx(HDC hdc, LPPOINT org) {
    DC* dc = LookupDC(hdc);
    if (!dc || !org) return FALSE;
    *org = dc->state.brushOrg;
    return TRUE;
}

BOOL MoveToEx(HDC hdc, int x, int y, LPPOINT old) {
    DC* dc = LookupDC(hdc);
    if (!dc) return FALSE;
    if (old) *old = dc->state.curPos;
    dc->state.curPos = POINT{x, y};
    return TRUE;
}
BOOL GetCurrentPositionEx(HDC hdc, LPPOINT pos) {
    DC* dc = LookupDC(hdc);
    if (!dc || !pos) return FALSE;
    *pos = dc->state.curPos;
    return TRUE;
}

// Clip regions are given in DC coordinates; the DC keeps its own copy. Combining with a
// DC that has no clip region combines with everything the DC can draw on.
int ExtSelectClipRgn(HDC hdc, HRGN hrgn, int mode) {
    DC* dc = LookupDC(hdc);
    if (!dc) return ERROR;
    Region* rgn = LookupRegion(hrgn);
    if (!rgn) {
        if (hrgn || mode != RGN_COPY) return ERROR;
        dc->state.clip.reset();  // NULL with RGN_COPY removes the clip region
    } else if (mode == RGN_COPY) {
        dc->state.clip = rgn->rgn;
    } else {
        if (mode < RGN_AND || mode > RGN_DIFF) return ERROR;
        PixRegion c = dc->state.clip ? *dc->state.clip : DrawableArea(*dc);
        PixRegion out;
        switch (mode) {
            case RGN_AND: pixman_region32_intersect(out.get(), c.get(), rgn->rgn.mut()); break;
            case RGN_OR: pixman_region32_union(out.get(), c.get(), rgn->rgn.mut()); break;
            case RGN_DIFF: pixman_region32_subtract(out.get(), c.get(), rgn->rgn.mut()); break;
            default: {  // RGN_XOR
                PixRegion a, b;
                pixman_region32_subtract(a.get(), c.get(), rgn->rgn.mut());
                pixman_region32_subtract(b.get(), rgn->rgn.mut(), c.get());
                pixman_region32_union(out.get(), a.get(), b.get());
                break;
            }
        }
        dc->state.clip = out;
    }
    dc->InvalidateClip();
    RECT box;
    return GetClipBox(hdc, &box);
}

int SelectClipRgn(HDC hdc, HRGN hrgn) { return ExtSelectClipRgn(hdc, hrgn, RGN_COPY); }

int IntersectClipRect(HDC hdc, int left, int top, int right, int bottom) {
    DC* dc = LookupDC(hdc);
    if (!dc) return ERROR;
    PixRegion r(RECT{std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)});
    if (dc->state.clip)
        dc->state.clip->intersect(r);
    else
        dc->state.clip = r;
    dc->InvalidateClip();
    RECT box;
    return GetClipBox(hdc, &box);
}

int ExcludeClipRect(HDC hdc, int left, int top, int right, int bottom) {
    DC* dc = LookupDC(hdc);
    if (!dc) return ERROR;
    if (!dc->state.clip) dc->state.clip = DrawableArea(*dc);
    PixRegion r(RECT{std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)});
    pixman_region32_subtract(dc->state.clip->get(), dc->state.clip->get(), r.get());
    dc->InvalidateClip();
    RECT box;
    return GetClipBox(hdc, &box);
}

int GetClipBox(HDC hdc, LPRECT rect) {
    DC* dc = LookupDC(hdc);
    if (!dc || !rect) return ERROR;
    const std::vector<RECT>& rects = dc->ClipRects();
    if (rects.empty()) {
        *rect = RECT{0, 0, 0, 0};
        return NULLREGION;
    }
    RECT box = rects.front();
    for (const RECT& r : rects) {
        box.left = std::min(box.left, r.left);
        box.top = std::min(box.top, r.top);
        box.right = std::max(box.right, r.right);
        box.bottom = std::max(box.bottom, r.bottom);
    }
    *rect = RECT{box.left - dc->origin.x, box.top - dc->origin.y, box.right - dc->origin.x,
                 box.bottom - dc->origin.y};
    return rects.size() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

// Whether any of rect lies within the clipping region (the clip rectangles themselves, not
// their box: a rectangle between two strips is not visible).
BOOL RectVisible(HDC hdc, const RECT* rect) {
    DC* dc = LookupDC(hdc);
    if (!dc || !rect) return FALSE;
    const RECT r{dc->DevX(std::min(rect->left, rect->right)), dc->DevY(std::min(rect->top, rect->bottom)),
                 dc->DevX(std::max(rect->left, rect->right)), dc->DevY(std::max(rect->top, rect->bottom))};
    for (const RECT& c : dc->ClipRects())
        if (std::max(r.left, c.left) < std::min(r.right, c.right) && std::max(r.top, c.top) < std::min(r.bottom, c.bottom))
            return TRUE;
    return FALSE;
}

int GetClipRgn(HDC hdc, HRGN hrgn) {
    DC* dc = LookupDC(hdc);
    Region* rgn = LookupRegion(hrgn);
    if (!dc || !rgn) return -1;
    if (!dc->state.clip) return 0;
    rgn->rgn = *dc->state.clip;
    return 1;
}

int GetDeviceCaps(HDC hdc, int index) {
    DC* dc = LookupDC(hdc);
    if (!dc) return 0;
    PixelBuffer* t = dc->Target();
    switch (index) {
        case 8: return t ? t->width : 0;    // HORZRES
        case 10: return t ? t->height : 0;  // VERTRES
        case 12: return t ? t->bpp : 0;     // BITSPIXEL
        case 14: return 1;                  // PLANES
        case 88:                            // LOGPIXELSX
        case 90: return 96;                 // LOGPIXELSY
        default: return 0;
    }
}

}  // extern "C"
