// Window device contexts: GetDC / ReleaseDC and the DCs BeginPaint hands out.
//
// A window DC draws straight onto the screen surface. Its origin is the client area's
// top-left corner and its visible region is what the window shows (children and covering
// windows removed, the window region applied); a paint DC is further limited to the update
// region it was opened for. Every live window DC is re-clipped when windows move.
#include <algorithm>

#include "gdi/dc.h"
#include "user/wndmgr.h"

namespace zel::user {

namespace {

struct WindowDC {
    HDC dc;
    HWND hwnd;
    std::optional<PixRegion> clip;  // client coordinates (paint DCs)
};

std::vector<WindowDC>& Registry() {
    static auto* dcs = new std::vector<WindowDC>();
    return *dcs;
}

void Reclip(const WindowDC& e, gdi::DC* dc) {
    Window* w = Get(e.hwnd);
    PixRegion vis;
    if (w) {
        dc->origin = ScreenOrigin(w);
        if (e.clip) {
            // Only siblings and children that meet the update region itself (not just its
            // box: a readout and the status strip far apart) can take from it.
            PixRegion c = *e.clip;
            c.translate(dc->origin.x, dc->origin.y);
            vis = VisibleRegionWithin(w, c.box(), &c);
        } else {
            vis = VisibleRegion(w);
        }
    }
    dc->vis = std::move(vis);
    dc->InvalidateClip();
}

}  // namespace

HDC NewWindowDC(Window* w, const PixRegion* clientClip) {
    gdi::DC* dc = gdi::NewScreenDC(&gdi::Screen(), ScreenOrigin(w));
    dc->hwnd = w->handle;
    HDC h = gdi::HandleOf<HDC>(dc);
    WindowDC entry{h, w->handle, clientClip ? std::optional<PixRegion>(*clientClip) : std::nullopt};
    Reclip(entry, dc);
    Registry().push_back(std::move(entry));
    return h;
}

BOOL ReleaseWindowDC(HDC hdc) {
    auto& reg = Registry();
    auto it = std::find_if(reg.begin(), reg.end(), [hdc](const WindowDC& e) { return e.dc == hdc; });
    if (it == reg.end()) return FALSE;
    reg.erase(it);
    return DeleteDC(hdc);
}

void RefreshWindowDCs() {
    auto& reg = Registry();
    for (auto it = reg.begin(); it != reg.end();) {
        gdi::DC* dc = gdi::LookupDC(it->dc);
        if (!dc) {
            it = reg.erase(it);  // deleted with DeleteDC instead of ReleaseDC
            continue;
        }
        Reclip(*it, dc);
        ++it;
    }
}

}  // namespace zel::user

using namespace zel::user;
using namespace zel::gdi;

extern "C" {

// GetDC(NULL) (or the desktop window) draws on the whole screen, over every window.
HDC GetDC(HWND hwnd) {
    if (!hwnd || hwnd == GetDesktopWindow()) return HandleOf<HDC>(NewScreenDC(&Screen(), POINT{0, 0}));
    Window* w = Get(hwnd);
    if (!w) {
        SetLastError(kErrorInvalidWindowHandle);
        return nullptr;
    }
    return NewWindowDC(w, nullptr);
}

HDC GetWindowDC(HWND hwnd) { return GetDC(hwnd); }

int ReleaseDC(HWND, HDC hdc) {
    if (ReleaseWindowDC(hdc)) return 1;
    DC* dc = LookupDC(hdc);
    if (!dc || dc->kind != DC::kScreen) return 0;  // memory DCs are deleted with DeleteDC
    return DeleteDC(hdc);
}

}  // extern "C"
