// The message queue: sending, posting, retrieval in Win32 order (posted, WM_QUIT, input,
// WM_PAINT, WM_TIMER), dispatching, key translation, and the pump the desktop runs.
#include <deque>

#include "kernel/clock.h"
#include "user/wndmgr.h"
#include "zel/hooks.h"

namespace zel::user {

namespace {

struct Queue {
    std::deque<MSG> posted;
    bool quit = false;
    int quitCode = 0;
    MSG last{};  // the message most recently retrieved (GetMessagePos/GetMessageTime)
};

Queue& Q() {
    static auto* q = new Queue();
    return *q;
}

PreTranslateHook& Hook() {
    static PreTranslateHook hook = nullptr;
    return hook;
}

bool InRange(UINT msg, UINT first, UINT last) { return (first == 0 && last == 0) || (msg >= first && msg <= last); }

MSG Make(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    return MSG{hwnd, msg, wParam, lParam, kernel::Ticks(), CursorPos()};
}

wchar_t CharForKey(UINT vk) {
    bool shift = (GetKeyState(VK_SHIFT) & 0x8000) != 0;
    if (vk >= 'A' && vk <= 'Z') return shift ? static_cast<wchar_t>(vk) : static_cast<wchar_t>(vk - 'A' + 'a');
    if (vk >= '0' && vk <= '9') return static_cast<wchar_t>(vk);
    switch (vk) {
        case VK_SPACE: return L' ';
        case VK_RETURN: return L'\r';
        case VK_BACK: return L'\b';
        case VK_TAB: return L'\t';
        case VK_ESCAPE: return 0x1B;
        default: return 0;
    }
}

}  // namespace

// With nothing queued, what can still produce a message: a timer falling due (real
// clock) or whatever the display's wait brings in. False when nothing can.
bool WaitForWork() {
    if (kernel::IsVirtualClock()) return false;  // virtual time moves only through the desktop
    std::optional<DWORD> due = NextTimerDue();
    if (!due) return false;
    DWORD now = kernel::Ticks();
    if (!kernel::TickReached(*due, now)) Sleep(*due - now);
    return true;
}

LRESULT Send(Window* w, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (!w || !w->proc) return 0;
    Busy busy;
    return w->proc(w->handle, msg, wParam, lParam);
}

void PurgePosted(HWND hwnd) {
    auto& p = Q().posted;
    std::erase_if(p, [hwnd](const MSG& m) { return m.hwnd == hwnd; });
}

// A killed timer leaves nothing behind, not even a WM_TIMER already in the queue (CE).
void PurgePostedTimer(HWND hwnd, UINT_PTR id) {
    auto& p = Q().posted;
    std::erase_if(p, [hwnd, id](const MSG& m) { return m.hwnd == hwnd && m.message == WM_TIMER && m.wParam == id; });
}

// While held, PeekMessageW makes no WM_PAINT: a harness that drives many steps between
// looks at the screen runs them without painting and paints once when it lets go. Invalid
// regions keep accumulating, so the paint that follows covers everything the steps
// invalidated. UpdateWindow and RedrawWindow(RDW_UPDATENOW) still paint at once.
static bool& PaintsHeld() {
    static bool held = false;
    return held;
}

void HoldPaints(bool hold) { PaintsHeld() = hold; }

void ResetQueue() {
    Queue& q = Q();
    q.posted.clear();
    q.quit = false;
    q.quitCode = 0;
    q.last = MSG{};
}

bool PumpOne(MSG* quit) {
    MSG m;
    if (!PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) return false;
    if (m.message == WM_QUIT) {
        if (quit) *quit = m;
        return true;
    }
    if (Hook() && Hook()(&m)) return true;
    if (RouteToModalDialog(&m)) return true;
    TranslateMessage(&m);
    DispatchMessageW(&m);
    return true;
}

}  // namespace zel::user

namespace zel {
void SetPreTranslateHook(PreTranslateHook hook) { user::Hook() = hook; }
}  // namespace zel

using namespace zel::user;

extern "C" {

LRESULT SendMessageW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    Window* w = Get(hwnd);
    if (!w) {
        SetLastError(kErrorInvalidWindowHandle);
        return 0;
    }
    return Send(w, msg, wParam, lParam);
}

BOOL PostMessageW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (hwnd && !Get(hwnd)) {
        SetLastError(kErrorInvalidWindowHandle);
        return FALSE;
    }
    Q().posted.push_back(Make(hwnd, msg, wParam, lParam));
    return TRUE;
}

void PostQuitMessage(int exitCode) {
    Q().quit = true;
    Q().quitCode = exitCode;
}

BOOL PeekMessageW(LPMSG msg, HWND hwnd, UINT first, UINT last, UINT remove) {
    if (!msg) return FALSE;
    Busy busy;
    Queue& q = Q();
    bool take = (remove & PM_REMOVE) != 0;
    for (auto it = q.posted.begin(); it != q.posted.end(); ++it) {
        if (!MatchesFilter(hwnd, it->hwnd) || !InRange(it->message, first, last)) continue;
        *msg = *it;
        if (take) q.posted.erase(it);
        q.last = *msg;
        return TRUE;
    }
    if (q.quit && InRange(WM_QUIT, first, last)) {
        *msg = Make(nullptr, WM_QUIT, static_cast<WPARAM>(q.quitCode), 0);
        if (take) q.quit = false;
        q.last = *msg;
        return TRUE;
    }
    std::optional<MSG> found = TakeInput(hwnd, first, last, take);
    if (!found && !PaintsHeld() && InRange(WM_PAINT, first, last))
        if (Window* w = FindPaintWindow(hwnd)) found = Make(w->handle, WM_PAINT, 0, 0);
    if (!found && InRange(WM_TIMER, first, last)) found = TakeDueTimer(hwnd, take);
    if (!found) return FALSE;
    *msg = *found;
    q.last = *msg;
    return TRUE;
}

// Without a message to return, the wait ends only if something can still arrive; when
// nothing can (virtual clock, no timer), GetMessageW returns FALSE as if WM_QUIT came.
BOOL GetMessageW(LPMSG msg, HWND hwnd, UINT first, UINT last) {
    if (!msg) return -1;
    for (;;) {
        if (PeekMessageW(msg, hwnd, first, last, PM_REMOVE)) return msg->message != WM_QUIT;
        if (!WaitForWork()) {
            *msg = Make(nullptr, WM_QUIT, 0, 0);
            return FALSE;
        }
    }
}

LRESULT DispatchMessageW(const MSG* msg) {
    if (!msg) return 0;
    Busy busy;
    if (msg->message == WM_TIMER && msg->lParam) {
        // Only a procedure a live timer was set with is called.
        auto proc = reinterpret_cast<TIMERPROC>(msg->lParam);
        if (TimerProcRegistered(msg->hwnd, msg->wParam, proc)) proc(msg->hwnd, WM_TIMER, msg->wParam, GetTickCount());
        return 0;
    }
    Window* w = Get(msg->hwnd);
    if (!w) return 0;
    return Send(w, msg->message, msg->wParam, msg->lParam);
}

// WM_KEYDOWN of a key that types a character also posts WM_CHAR.
BOOL TranslateMessage(const MSG* msg) {
    if (!msg) return FALSE;
    if (msg->message != WM_KEYDOWN && msg->message != WM_KEYUP && msg->message != WM_SYSKEYDOWN &&
        msg->message != WM_SYSKEYUP)
        return FALSE;
    if (msg->message == WM_KEYDOWN)
        if (wchar_t c = CharForKey(static_cast<UINT>(msg->wParam)))
            PostMessageW(msg->hwnd, WM_CHAR, static_cast<WPARAM>(c), msg->lParam);
    return TRUE;
}

DWORD GetMessagePos(void) {
    const MSG& m = Q().last;
    return static_cast<DWORD>(MAKELONG(m.pt.x, m.pt.y));
}

LONG GetMessageTime(void) { return static_cast<LONG>(Q().last.time); }

}  // extern "C"
