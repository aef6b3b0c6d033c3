// Regions: thin Win32 semantics over pixman's region algebra.
#include <algorithm>
#include <cstring>
#include <vector>

#include "gdi/stroke.h"

using namespace zel::gdi;

namespace {

// CreateRectRgn normalises swapped corners; an empty area is a NULLREGION.
RECT Normalised(int l, int t, int r, int b) {
    return RECT{std::min(l, r), std::min(t, b), std::max(l, r), std::max(t, b)};
}

}  // namespace

extern "C" {

HRGN CreateRectRgn(int left, int top, int right, int bottom) {
    auto r = std::make_unique<Region>();
    r->rgn = PixRegion(Normalised(left, top, right, bottom));
    return HandleOf<HRGN>(Register(std::move(r), kRegion));
}

// The union of the rectangles after the header; `count` is the size of the whole
// structure in bytes. No transformations (the device has none): a non-NULL one fails.
HRGN ExtCreateRegion(const XFORM* xform, DWORD count, const RGNDATA* data) {
    if (xform || !data || count < sizeof(RGNDATAHEADER)) return nullptr;
    const RGNDATAHEADER& h = data->rdh;
    if (h.dwSize != sizeof(RGNDATAHEADER) || h.iType != RDH_RECTANGLES) return nullptr;
    if ((count - sizeof(RGNDATAHEADER)) / sizeof(RECT) < h.nCount) return nullptr;
    std::vector<pixman_box32_t> boxes;
    boxes.reserve(h.nCount);
    const auto* at = reinterpret_cast<const unsigned char*>(data) + sizeof(RGNDATAHEADER);
    for (DWORD i = 0; i < h.nCount; ++i) {
        RECT rc;
        std::memcpy(&rc, at + i * sizeof(RECT), sizeof rc);
        const RECT n = Normalised(rc.left, rc.top, rc.right, rc.bottom);
        if (n.left < n.right && n.top < n.bottom) boxes.push_back({n.left, n.top, n.right, n.bottom});
    }
    auto r = std::make_unique<Region>();
    pixman_region32_fini(r->rgn.get());
    pixman_region32_init_rects(r->rgn.get(), boxes.data(), static_cast<int>(boxes.size()));
    return HandleOf<HRGN>(Register(std::move(r), kRegion));
}

HRGN CreateRectRgnIndirect(const RECT* rc) {
    if (!rc) return nullptr;
    return CreateRectRgn(rc->left, rc->top, rc->right, rc->bottom);
}

BOOL SetRectRgn(HRGN hrgn, int left, int top, int right, int bottom) {
    Region* r = LookupRegion(hrgn);
    if (!r) return FALSE;
    r->rgn = PixRegion(Normalised(left, top, right, bottom));
    return TRUE;
}

int CombineRgn(HRGN hdst, HRGN hsrc1, HRGN hsrc2, int mode) {
    Region* dst = LookupRegion(hdst);
    Region* a = LookupRegion(hsrc1);
    if (!dst || !a) return ERROR;
    if (mode == RGN_COPY) {
        dst->rgn = a->rgn;
        return RegionType(dst->rgn);
    }
    Region* b = LookupRegion(hsrc2);
    if (!b) return ERROR;
    PixRegion out;
    switch (mode) {
        case RGN_AND: pixman_region32_intersect(out.get(), a->rgn.mut(), b->rgn.mut()); break;
        case RGN_OR: pixman_region32_union(out.get(), a->rgn.mut(), b->rgn.mut()); break;
        case RGN_DIFF: pixman_region32_subtract(out.get(), a->rgn.mut(), b->rgn.mut()); break;
        case RGN_XOR: {
            PixRegion l, r;
            pixman_region32_subtract(l.get(), a->rgn.mut(), b->rgn.mut());
            pixman_region32_subtract(r.get(), b->rgn.mut(), a->rgn.mut());
            pixman_region32_union(out.get(), l.get(), r.get());
            break;
        }
        default: return ERROR;
    }
    dst->rgn = out;
    return RegionType(dst->rgn);
}

BOOL EqualRgn(HRGN ha, HRGN hb) {
    Region* a = LookupRegion(ha);
    Region* b = LookupRegion(hb);
    if (!a || !b) return ERROR;
    if (a->rgn.empty() && b->rgn.empty()) return TRUE;
    return pixman_region32_equal(a->rgn.mut(), b->rgn.mut()) ? TRUE : FALSE;
}

BOOL PtInRegion(HRGN hrgn, int x, int y) {
    Region* r = LookupRegion(hrgn);
    return r && r->rgn.contains(x, y) ? TRUE : FALSE;
}

BOOL RectInRegion(HRGN hrgn, const RECT* rc) {
    Region* r = LookupRegion(hrgn);
    if (!r || !rc) return FALSE;
    RECT n = Normalised(rc->left, rc->top, rc->right, rc->bottom);
    pixman_box32_t box{n.left, n.top, n.right, n.bottom};
    return pixman_region32_contains_rectangle(r->rgn.mut(), &box) != PIXMAN_REGION_OUT;
}

int GetRgnBox(HRGN hrgn, LPRECT rc) {
    Region* r = LookupRegion(hrgn);
    if (!r || !rc) return ERROR;
    *rc = r->rgn.box();
    return RegionType(r->rgn);
}

int OffsetRgn(HRGN hrgn, int x, int y) {
    Region* r = LookupRegion(hrgn);
    if (!r) return ERROR;
    r->rgn.translate(x, y);
    return RegionType(r->rgn);
}

// The DC's brush under its mix mode (unlike FillRgn, which always copies).
BOOL PaintRgn(HDC hdc, HRGN hrgn) {
    DC* dc = LookupDC(hdc);
    Region* rgn = LookupRegion(hrgn);
    if (!dc || !rgn) return FALSE;
    if (!dc->Target()) return TRUE;
    PixRegion device = rgn->rgn;
    device.translate(dc->origin.x, dc->origin.y);
    PaintBrush(*dc, device, RealizeBrush(*dc, dc->state.brush), dc->state.rop2);
    return TRUE;
}

}  // extern "C"
