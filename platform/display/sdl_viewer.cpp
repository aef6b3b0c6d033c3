// The SDL2 viewer: shows the screen surface in a window, the mouse is the stylus and keys
// are keys. Without SDL2 (or without a display) the desktop runs headless.
#include <cstdlib>

#include "display/runtime.h"

#if defined(ZEL_HAVE_SDL2)

#include <SDL.h>

#include "gdi/dc.h"
#include "kernel/clock.h"
#include "user/wndmgr.h"

namespace zel::display {

namespace {

bool DisplayAvailable() {
    return std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY") || std::getenv("SDL_VIDEODRIVER");
}

UINT VirtualKey(SDL_Keycode k) {
    if (k >= SDLK_a && k <= SDLK_z) return static_cast<UINT>('A' + (k - SDLK_a));
    if (k >= SDLK_0 && k <= SDLK_9) return static_cast<UINT>('0' + (k - SDLK_0));
    if (k >= SDLK_F1 && k <= SDLK_F12) return static_cast<UINT>(VK_F1 + (k - SDLK_F1));
    switch (k) {
        case SDLK_RETURN:
        case SDLK_KP_ENTER: return VK_RETURN;
        case SDLK_ESCAPE: return VK_ESCAPE;
        case SDLK_BACKSPACE: return VK_BACK;
        case SDLK_TAB: return VK_TAB;
        case SDLK_SPACE: return VK_SPACE;
        case SDLK_LEFT: return VK_LEFT;
        case SDLK_RIGHT: return VK_RIGHT;
        case SDLK_UP: return VK_UP;
        case SDLK_DOWN: return VK_DOWN;
        case SDLK_HOME: return VK_HOME;
        case SDLK_END: return VK_END;
        case SDLK_PAGEUP: return VK_PRIOR;
        case SDLK_PAGEDOWN: return VK_NEXT;
        case SDLK_INSERT: return VK_INSERT;
        case SDLK_DELETE: return VK_DELETE;
        case SDLK_LSHIFT:
        case SDLK_RSHIFT: return VK_SHIFT;
        case SDLK_LCTRL:
        case SDLK_RCTRL: return VK_CONTROL;
        case SDLK_LALT:
        case SDLK_RALT: return VK_MENU;
        default: return 0;
    }
}

struct Viewer {
    SDL_Window* window = nullptr;
    SDL_Renderer* renderer = nullptr;
    SDL_Texture* texture = nullptr;
    int width = 0, height = 0;

    ~Viewer() {
        if (texture) SDL_DestroyTexture(texture);
        if (renderer) SDL_DestroyRenderer(renderer);
        if (window) SDL_DestroyWindow(window);
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
    }

    bool Open() {
        const gdi::PixelBuffer& s = gdi::Screen();
        window = SDL_CreateWindow("ZEL controls", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, s.width, s.height,
                                  SDL_WINDOW_RESIZABLE);
        if (!window) return false;
        renderer = SDL_CreateRenderer(window, -1, 0);
        if (!renderer) renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
        return renderer && Fit();
    }

    // The texture follows the screen size (Desktop::Reset may change it); mouse positions
    // arrive in screen pixels through the logical size, whatever the window's size.
    bool Fit() {
        const gdi::PixelBuffer& s = gdi::Screen();
        if (texture && s.width == width && s.height == height) return true;
        if (texture) SDL_DestroyTexture(texture);
        width = s.width;
        height = s.height;
        SDL_RenderSetLogicalSize(renderer, width, height);
        texture = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGB888, SDL_TEXTUREACCESS_STREAMING, width, height);
        return texture != nullptr;
    }

    void Present() {
        if (!Fit()) return;
        const gdi::PixelBuffer& s = gdi::Screen();
        SDL_UpdateTexture(texture, nullptr, s.pixels.data(), s.width * 4);  // 0x00RRGGBB is RGB888
        SDL_RenderClear(renderer);
        SDL_RenderCopy(renderer, texture, nullptr, nullptr);
        SDL_RenderPresent(renderer);
    }
};

// False when the window asked to close.
bool Feed(Desktop& desktop) {
    SDL_Event ev;
    while (SDL_PollEvent(&ev)) {
        switch (ev.type) {
            case SDL_QUIT: return false;
            case SDL_MOUSEBUTTONDOWN:
                if (ev.button.button == SDL_BUTTON_LEFT) desktop.PointerDown(ev.button.x, ev.button.y);
                break;
            case SDL_MOUSEBUTTONUP:
                if (ev.button.button == SDL_BUTTON_LEFT) desktop.PointerUp(ev.button.x, ev.button.y);
                break;
            case SDL_MOUSEMOTION: desktop.PointerMove(ev.motion.x, ev.motion.y); break;
            case SDL_KEYDOWN:
                if (UINT vk = VirtualKey(ev.key.keysym.sym)) desktop.KeyDown(vk);
                break;
            case SDL_KEYUP:
                if (UINT vk = VirtualKey(ev.key.keysym.sym)) desktop.KeyUp(vk);
                break;
            default: break;
        }
    }
    return true;
}

}  // namespace

bool RunViewer(Desktop& desktop, int* exitCode) {
    if (!DisplayAvailable() || SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) return false;
    Viewer viewer;
    if (!viewer.Open()) return false;
    *exitCode = 0;
    while (Feed(desktop)) {
        desktop.RunUntilIdle();
        if (TakeQuit(exitCode)) break;
        viewer.Present();
        // Sleep until the next event, at the latest when a timer falls due (and at least
        // every 50 ms so a resized window is redrawn).
        int wait = 50;
        if (std::optional<DWORD> due = user::NextTimerDue()) {
            auto left = static_cast<int32_t>(*due - kernel::Ticks());
            wait = left < 0 ? 0 : left < wait ? left : wait;
        }
        SDL_WaitEventTimeout(nullptr, wait);
    }
    return true;
}

}  // namespace zel::display

#else

namespace zel::display {
bool RunViewer(Desktop&, int*) { return false; }
}  // namespace zel::display

#endif
