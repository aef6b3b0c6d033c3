// Hooks through which the window framework layer (CWnd & co.) joins the window manager.
#pragma once

#include <windows.h>

namespace zel {

// Called by the message pump for every message it retrieves (posted and input messages,
// not sent ones) before TranslateMessage/DispatchMessageW; returning true consumes it.
using PreTranslateHook = bool (*)(MSG* msg);
ZEL_API void SetPreTranslateHook(PreTranslateHook hook);

// Called by CreateWindowExW once the window exists and before WM_NCCREATE is sent: the
// point where a creation hook can attach an object and subclass the window.
using CreateWindowHook = void (*)(HWND hwnd, CREATESTRUCTW* cs);
ZEL_API void SetCreateWindowHook(CreateWindowHook hook);

}  // namespace zel
