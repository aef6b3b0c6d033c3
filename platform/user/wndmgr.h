// The window manager's internal model: windows, classes, the tree, and the services the
// USER sources share (painting, window DCs, timers, input, the queue).
//
// Rules every source here follows:
// - Window* pointers never outlive a call into a window procedure unchecked: after any Send,
//   re-fetch with Get(handle) (a destroyed window no longer resolves). The memory of a
//   destroyed window is kept until the outermost USER call returns (see Busy), so a stale
//   pointer is never a crash, only a window to stop working on.
// - Coordinates: Window::rect is relative to the parent's client area (screen for top-level
//   windows). Windows have no non-client area, so client and window origins coincide.
// - Every window clips its children and the siblings above it (the CE painting model).
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "gdi/handle_table.h"
#include "gdi/objects.h"

namespace zel::user {

using gdi::PixRegion;

// Private state of a system class control (BUTTON, STATIC), owned by its window.
struct ControlData {
    virtual ~ControlData() = default;
};

struct WindowClass {
    std::wstring name;
    ATOM atom = 0;
    UINT style = 0;
    WNDPROC proc = nullptr;
    int wndExtra = 0;
    HINSTANCE instance = nullptr;
    HICON icon = nullptr;
    HCURSOR cursor = nullptr;
    HBRUSH background = nullptr;  // a brush, or COLOR_xxx + 1
    std::vector<BYTE> extra;      // cbClsExtra bytes
    int windows = 0;              // live windows of this class
    bool system = false;
};

struct Window {
    HWND handle = nullptr;
    std::shared_ptr<WindowClass> cls;
    WNDPROC proc = nullptr;
    DWORD style = 0, exStyle = 0;
    Window* parent = nullptr;       // WS_CHILD windows; nullptr for top-level windows
    Window* owner = nullptr;        // top-level windows created with a parent handle
    std::vector<Window*> children;  // z-order, topmost first
    RECT rect{};                    // in the parent's client coordinates
    UINT_PTR id = 0;                // control id (the menu parameter)
    LONG_PTR userData = 0;
    HINSTANCE instance = nullptr;
    std::wstring text;
    std::vector<BYTE> extra;        // cbWndExtra bytes
    std::optional<PixRegion> shape; // SetWindowRgn, window coordinates
    PixRegion update;               // client coordinates
    bool erase = false;             // the update region still needs WM_ERASEBKGND
    bool eraseDeclined = false;     // an early WM_ERASEBKGND returned 0: BeginPaint reports fErase
    bool internalPaint = false;     // WM_PAINT is due although nothing is invalid
    bool destroying = false;        // WM_DESTROY has been sent (or NCCREATE refused): never sent again
    int owned = 0;                  // windows whose owner this is
    // Paint bookkeeping: paintPending mirrors "update not empty or internalPaint" and
    // paintBelow counts such windows in the subtree (itself included), kept by SyncPaint,
    // so that finding the next window to paint skips quiet subtrees.
    bool paintPending = false;
    int paintBelow = 0;
    // VisibleRegion's last answer (screen coordinates), good while visEpoch is TreeEpoch().
    uint64_t visEpoch = 0;
    PixRegion vis;
    std::vector<std::pair<std::wstring, HANDLE>> props;  // SetPropW; atoms as "#n"
    std::unique_ptr<ControlData> control;

    int Width() const { return rect.right - rect.left; }
    int Height() const { return rect.bottom - rect.top; }
    RECT ClientRect() const { return RECT{0, 0, Width(), Height()}; }
};

// Window coordinates live in 16 bits, as on Windows: CreateWindowExW and SetWindowPos clamp
// positions into [-32768, 32767] and sizes into [0, 32767], so no rectangle arithmetic on
// a window (right = left + width, screen origins summed over ancestors) can overflow.
inline constexpr int kMinWindowCoord = -32768;
inline constexpr int kMaxWindowCoord = 32767;

// Windows nest at most this deep, counting a top-level window as level 1 and following
// parents and owners, as on Windows (50 since XP); CreateWindowExW and SetParent fail past
// it. Every tree walk is therefore bounded in depth.
inline constexpr int kMaxNesting = 50;

struct UserState {
    detail::HandleTable<Window> table;
    Window* desktop = nullptr;  // the root; its children are the top-level windows
    HWND focus = nullptr, active = nullptr, capture = nullptr;
    std::vector<std::unique_ptr<Window>> graveyard;
    int busy = 0;
};
UserState& State();

// A live window (also while it is being destroyed), or nullptr.
Window* Get(HWND hwnd);
Window* Desktop();
inline HWND H(const Window* w) { return w ? w->handle : nullptr; }

// Scope of a USER call that may reach window procedures: destroyed windows stay in memory
// until the outermost scope ends.
class Busy {
public:
    Busy();
    ~Busy();
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
};

// ---- tree and geometry (window.cpp, winpos.cpp) ----
std::vector<Window*>& Siblings(Window* w);  // the parent's children, or the top-level list
Window* TopLevel(Window* w);
bool IsInside(const Window* ancestor, const Window* w);  // w is a descendant of ancestor
POINT ScreenOrigin(const Window* w);
RECT ScreenRect(const Window* w);
bool Visible(const Window* w);           // it and every ancestor have WS_VISIBLE
int NestingLevel(const Window* w);       // 1 for a top-level window without owner
PixRegion Shape(const Window* w);        // screen coordinates: rect ∩ window region
PixRegion VisibleRegion(const Window* w);  // screen coordinates, children and covering windows removed
// The visible region within `bounds` (screen), and within `within` when given (screen):
// only windows meeting what is left are subtracted.
PixRegion VisibleRegionWithin(const Window* w, const RECT& bounds, const PixRegion* within = nullptr);
void PreOrder(Window* root, std::vector<HWND>& out);  // root first, then children in z-order
bool MatchesFilter(HWND filter, HWND target);  // the hwnd filter of PeekMessage

// Unlinks a window from its sibling list and inserts it at `index` (clamped; 0 = top).
void Restack(Window* w, size_t index);
// Where a top-level window goes when raised: above everything but WS_EX_TOPMOST windows
// (unless it is topmost itself).
size_t TopIndexFor(const Window* w);
// Raises a top-level window and the windows it owns, repainting what they uncover.
void BringToTop(Window* top);

// Counts changes that can move any window's visible region: geometry, visibility, window
// regions, z-order and the tree itself. Every such change calls TreeChanged(), which
// drops every cached visible region at once (it starts at 1; a new window's cache is 0).
uint64_t& TreeEpoch();
inline void TreeChanged() { ++TreeEpoch(); }

// Windows the manager has worked on one by one (a region computed against them, a paint
// or erase candidate examined, a window invalidated by a tree walk). Tests read the
// difference across one call to prove its cost follows what it changes, not what exists.
uint64_t& WindowVisits();

// ---- painting (painting.cpp) ----
void Invalidate(Window* w, const PixRegion* clientArea, bool erase);  // nullptr = whole client
void InvalidateTree(Window* w, bool erase);                            // w and all descendants
void Validate(Window* w, const PixRegion* clientArea);
void ClearUpdateTree(Window* w);  // a hidden subtree has nothing pending
// Brings paintPending and the paintBelow counts of w's ancestors up to date after its
// update region or internalPaint changed.
void SyncPaint(Window* w);
// Moves w's paintBelow count from the ancestors of `oldParent` to w's current ancestors
// (after SetParent); nullptr stands for the desktop.
void MovePaintCount(Window* w, Window* oldParent);
bool NeedsPaint(const Window* w);
Window* FindPaintWindow(HWND filter);
// Sends WM_ERASEBKGND now to windows of the subtree with a pending erase; a window that
// still has to paint keeps its children waiting for their own BeginPaint.
void EraseNow(Window* w);
// The same for the windows in `changed` only (those an operation invalidated), parents
// before children as listed: a window waits while an ancestor up to `root` still has to
// paint, and windows outside `root` are left to BeginPaint.
void EraseChanged(Window* root, const std::vector<HWND>& changed);

// Records what the windows around `subjects` show, so that after the subjects change
// (move, resize, show, hide, restack, reshape) the parts that became visible can be
// invalidated and the bare desktop repainted. Only the subjects may change in between:
// then nothing outside their former rectangles can have been uncovered, and when no
// subject was visible nothing at all (showing a window only covers), so nothing but the
// subjects is looked at.
class ExposureSnapshot {
public:
    explicit ExposureSnapshot(std::vector<const Window*> subjects);
    // Invalidates what became visible; returns the windows invalidated, in tree order.
    std::vector<HWND> Apply();

private:
    std::vector<const Window*> subjects_;
    bool covered_ = false;  // some subject was visible: others may be uncovered
    RECT bounds_{};  // screen: the union of the visible subjects' former rectangles
    std::vector<std::pair<HWND, PixRegion>> windows_;
    PixRegion desktop_;
};
void PaintDesktop(const PixRegion& screenArea);

// ---- window DCs (window_dc.cpp) ----
HDC NewWindowDC(Window* w, const PixRegion* clientClip);
BOOL ReleaseWindowDC(HDC dc);
void RefreshWindowDCs();

// ---- messages (queue.cpp) ----
LRESULT Send(Window* w, UINT msg, WPARAM wParam, LPARAM lParam);
void PurgePosted(HWND hwnd);
void PurgePostedTimer(HWND hwnd, UINT_PTR id);
void ResetQueue();
// Holds WM_PAINT back from the queue (true) or lets it come again (false).
void HoldPaints(bool hold);
// Retrieves and dispatches one message through the pre-translate hook and the innermost
// modal dialog's IsDialogMessageW. False when the queue is empty; a retrieved WM_QUIT is
// stored in *quit and not dispatched.
bool PumpOne(MSG* quit);
// With nothing queued, what can still produce a message: a timer falling due (real clock).
// Waits for it; false when nothing can arrive.
bool WaitForWork();

// ---- dialogs (dialog.cpp) ----
// Offers a retrieved message to the innermost running modal dialog; true when taken.
bool RouteToModalDialog(MSG* msg);
LRESULT CALLBACK PlainControlProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

// ---- timers (timer.cpp) ----
std::optional<MSG> TakeDueTimer(HWND filter, bool remove);
std::optional<DWORD> NextTimerDue();
bool TimerProcRegistered(HWND hwnd, UINT_PTR id, TIMERPROC proc);
void KillWindowTimers(HWND hwnd);
void KillAllTimers();

// ---- input, focus, capture, activation (input.cpp) ----
enum class PointerKind { kDown, kUp, kMove };
void QueuePointer(PointerKind kind, POINT screen);
void QueueKey(UINT vk, bool down);
std::optional<MSG> TakeInput(HWND filter, UINT first, UINT last, bool remove);
void ResetInput(UINT doubleClickMs);
void Activate(Window* top);
void AfterHide(Window* w);      // focus and activation leave a window that was hidden
void ForgetWindow(Window* w);   // a destroyed window silently loses capture, focus, activation
bool StylusDown();
POINT CursorPos();

// ---- classes and system classes ----
std::shared_ptr<WindowClass> FindClass(LPCWSTR name);
void RegisterSystemClasses();
LRESULT CALLBACK ButtonProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
LRESULT CALLBACK StaticProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

// ---- system parameters (sysparams.cpp) ----
HBRUSH ResolveBrush(HBRUSH brushOrColorIndex);  // COLOR_xxx + 1 becomes the system brush
COLORREF DesktopColor();

// SetWindowPos flags the window manager computes: the client area did not move / resize.
constexpr UINT kNoClientSize = 0x0800;
constexpr UINT kNoClientMove = 0x1000;

// Last-error values set by the USER calls.
constexpr DWORD kErrorInvalidWindowHandle = 1400;
constexpr DWORD kErrorInvalidIndex = 1413;
constexpr DWORD kErrorClassAlreadyExists = 1410;
constexpr DWORD kErrorClassDoesNotExist = 1411;
constexpr DWORD kErrorClassHasWindows = 1412;
constexpr DWORD kErrorCannotFindWndClass = 1407;
constexpr DWORD kErrorTlwWithWschild = 1406;
constexpr DWORD kErrorInvalidParameter = 87;

}  // namespace zel::user
