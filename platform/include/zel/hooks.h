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

// Called by a modal dialog's loop (DialogBoxParamW, CDialog::DoModal) whenever its queue
// is empty: the place where a test or a scripted tour gives the dialog its input (taps and
// keys through zel::Desktop). Return true to keep the loop running, false when no more
// input will come; the loop then cancels the dialog as Escape would.
using ModalIdleHook = bool (*)(HWND dialog);
ZEL_API void SetModalIdleHook(ModalIdleHook hook);

}  // namespace zel
