// Drives a host window holding the registered controls (storm_family.h: every button,
// check box, scroll bar, slider, date and time control, label and the combo box today)
// through a script decoded from the input
// (storm_script.h): pointer presses, drags and taps anywhere (off the screen too), keys,
// time, and API calls with hostile arguments: extreme and inverted ranges, odd skin
// strings, missing and malformed skin files, sizes of zero, negative or huge, destruction
// of a control in the middle of things and from inside its own notification, nested
// message loops inside a handler.
//
// Beyond "no crash, no sanitizer report": every GDI object an input created is released
// once its windows and objects are gone, the message loop always settles, and the
// promises each family registers hold (a slider's position inside its range, a check box
// checked or not): after every step for the controls the step touched, after every paint
// for all of them.
//
// Paints are held back but at a script's kPaint and its end (zel::user::HoldPaints): a
// step runs its messages, input and timers, and what it invalidates adds up until the
// script's next kPaint and its end, where the loop runs with its paints. Painting after
// every step was most of the time, and a timer stepped through Advance repainted at every
// step. Building and putting the host back paint at their end, so every input finds its
// controls painted: left for the next input's paints (8% less time), a control's first
// paint would count as that input's coverage, which then depended on the input before.
//
// libFuzzer's leak check after every input is off (-detect_leaks=0): an input adds to the
// platform's bounded caches, so it always allocates more than it frees, and libFuzzer then
// ran it a second time to see (a third of the time). LeakSanitizer checks the whole heap
// at every full check instead (fuzzing::CheckLeaks), and at exit.
//
// One host serves every input: it is built once, and after each input put back as it was
// built (see Storm::Reset): the controls the input touched are made anew, the rest stay.
// Every kFullCheckEvery inputs, and at exit, everything is torn down and the GDI objects and
// windows counted against the start.
//
// This file knows no control class: a family registers its controls, calls and promises
// in fuzz/storm/<family>.cpp (see storm_family.h for how).
#include <afxwin.h>
#include <zel/debug.h>
#include <zel/desktop.h>

#include <array>
#include <bitset>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "control_fuzzing.h"
#include "kernel/clock.h"
#include "skin_files.h"
#include "storm_family.h"
#include "storm_script.h"

namespace {

using namespace storm;

constexpr const char* kName = "fuzz_message_storm";
constexpr int kMaxOps = 200;
constexpr UINT kFirstId = 101;
constexpr int kHostWidth = 400, kHostHeight = 300;
// The full check (everything torn down, GDI objects and windows counted against the start)
// runs after this many inputs: about a second of fuzzing at the usual rate, and a rebuild
// costs about as much as ten inputs.
constexpr int kFullCheckEvery = 500;

// ZEL_FUZZ_TRACE=1 prints each operation and each notification the host gets, for reading
// what a finding's input does.
bool Tracing() {
    static const bool on = std::getenv("ZEL_FUZZ_TRACE") != nullptr;
    return on;
}

void Trace(const char* format, long a = 0, long b = 0, long c = 0) {
    if (!Tracing()) return;
    fuzzing::RestoreStderr();
    std::fprintf(stderr, format, a, b, c);
    std::fputc('\n', stderr);
}

constexpr UINT kKeys[] = {VK_UP,   VK_DOWN, VK_LEFT,   VK_RIGHT, VK_PRIOR, VK_NEXT,
                          VK_HOME, VK_END,  VK_RETURN, VK_SPACE, VK_ESCAPE};

// A screen just the host's size: every pixel painted costs, and most of the time goes to
// painting. The full check leaves the desktop reset (no window, no timer, the clock at 0).
void ResetDesktop() {
    zel::DesktopConfig config;
    config.width = kHostWidth;
    config.height = kHostHeight;
    zel::Desktop::Get().Reset(config);
    CWnd::DeleteTempMap();
    zel::ClearMessageBoxes();
}

// ---- the host ------------------------------------------------------------------------------------

class Storm;

// The dialog the controls live on. It reflects owner-draw requests as any host does and,
// when the script armed a reaction, acts from inside the next matching notification.
class Host : public CWnd {
public:
    explicit Host(Storm& storm) : storm_(storm) {}

    struct Armed {
        Trigger trigger = kTriggerCount;  // none
        Reaction reaction = kDestroySender;
        uint8_t target = 0;
        int count = 0;
        int64_t arg = 0;
        uint8_t call = 0;          // kCallTarget: which of the target's calls
        std::string callInput;     // and the script it reads its arguments from
    } armed;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool Matches(UINT message) const;
    Storm& storm_;
    bool reacting_ = false;
};

class Storm {
public:
    Storm();
    ~Storm();

    // The host as every input finds it: built, painted and watched.
    void Start();
    // Back to what Start left after an input (Reset), or nothing at all (TearDown).
    void Reset();
    void TearDown();
    bool Started() const { return started_; }
    void Run(ScriptReader& in);
    void React(const Host::Armed& armed, UINT message, LPARAM lParam);
    // A message reached `hwnd`: the control it belongs to is no longer as built.
    void Touched(HWND hwnd);

private:
    void Build();
    // The control named by an operation, marked as touched.
    uint8_t Touch(uint8_t control) {
        if (control < kControlCount) {
            touched_.set(control);
            unchecked_.set(control);
        }
        return control;
    }
    bool HostAsBuilt();
    void Renew(int control);
    void RestoreOrder(const std::bitset<kControlCount>& renewed);
    HWND BuiltFocus() {
        if (builtFocus_ == kFocusHost) return host_.m_hWnd;
        return builtFocus_ >= 0 && Alive(builtFocus_) ? Wnd(builtFocus_)->m_hWnd : nullptr;
    }
    std::vector<HWND> ChildrenOfHost() const;

    // The registered control in a slot, or null.
    const StormControl* Kind(int control) const {
        return control >= 0 && control < kControlCount ? Slots()[control] : nullptr;
    }
    CWnd* Wnd(int control) { return Kind(control) ? controls_[control].get() : nullptr; }
    bool Alive(int control) { return Wnd(control) && ::IsWindow(Wnd(control)->m_hWnd); }
    CRect ScreenRectOf(int control);
    void Create(int control, const RECT* place = nullptr);
    void LoadStandardSkin(int control);
    void RunCall(int control, uint8_t call, ScriptReader& in);
    // The promises of the controls touched since the last check, or of every control
    // (after painting, which touches nothing).
    void CheckPromises(uint8_t op, bool all = false);
    // Runs the loop with its paints, then holds them again.
    void Paint(const char* after);

    void DoPoint(Op op, ScriptReader& in);
    void DoKey(ScriptReader& in);
    void DoCall(ScriptReader& in);
    void DoLoadSkin(ScriptReader& in);
    void DoEnable(ScriptReader& in);
    void DoShow(ScriptReader& in);
    void DoMove(ScriptReader& in);
    void DoDestroy(ScriptReader& in);
    void DoRecreate(ScriptReader& in);
    void DoArm(ScriptReader& in);
    void DoText(ScriptReader& in);
    void DoRawMessage(ScriptReader& in);

    zel::Desktop& desktop_ = zel::Desktop::Get();
    Host host_;
    std::array<std::unique_ptr<CWnd>, kControlCount> controls_;  // by slot; null for an empty slot
    // What Start saw: the host's window and style, the host's children by slot (topmost
    // first), the window with the focus (a slot, kFocusHost or kFocusNone) and the number
    // of windows.
    bool started_ = false;
    HWND builtHost_ = nullptr;
    LONG builtStyle_ = 0;
    std::vector<int> builtOrder_;
    int builtFocus_ = kFocusNone;
    size_t builtWindows_ = 0;
    std::bitset<kControlCount> touched_;
    std::bitset<kControlCount> unchecked_;  // touched since the promises were last checked
    static constexpr int kFocusHost = -1, kFocusNone = -2;
};

// ---- watching -------------------------------------------------------------------------------
//
// Every window but the host runs under Spy, which marks the control a window belongs to as
// touched when the window gets anything but painting and queries. Operations mark the
// controls they name (their own API changes a control without a message). A control
// neither touched nor named is as it was built, and stays for the next input.

Storm* gStorm = nullptr;

std::unordered_map<HWND, WNDPROC>& SpiedProcs() {
    static auto* procs = new std::unordered_map<HWND, WNDPROC>;  // still there for the check at exit
    return *procs;
}

bool Touches(UINT message) {
    switch (message) {
        case WM_PAINT:
        case WM_ERASEBKGND:
        case WM_NCPAINT:
        case WM_GETTEXT:
        case WM_GETTEXTLENGTH:
        case WM_NCHITTEST:
        case WM_SETCURSOR:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORSCROLLBAR: return false;
        default: return true;
    }
}

LRESULT CALLBACK Spy(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto it = SpiedProcs().find(hwnd);
    const WNDPROC next = it != SpiedProcs().end() ? it->second : ::DefWindowProcW;
    if (gStorm && Touches(message)) gStorm->Touched(hwnd);
    const LRESULT result = ::CallWindowProcW(next, hwnd, message, wParam, lParam);
    if (message == WM_NCDESTROY) SpiedProcs().erase(hwnd);
    return result;
}

std::vector<HWND> AllWindows() {
    std::vector<HWND> all;
    zel::user::PreOrder(zel::user::Desktop(), all);
    all.erase(all.begin());  // the desktop window
    return all;
}

// Puts every window not yet watched (but `except`) under Spy: called after each operation,
// so windows a control makes for itself are watched from then on.
void WatchWindows(HWND except) {
    for (HWND hwnd : AllWindows()) {
        if (hwnd == except) continue;
        const auto proc = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(hwnd, GWLP_WNDPROC));
        if (proc == Spy) continue;
        SpiedProcs()[hwnd] = proc;
        ::SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Spy));
    }
}

bool Host::Matches(UINT message) const {
    switch (armed.trigger) {
        case kOnCommand: return message == WM_COMMAND;
        case kOnVScroll: return message == WM_VSCROLL;
        case kOnHScroll: return message == WM_HSCROLL;
        case kOnLButtonDown: return message == WM_LBUTTONDOWN;
        case kOnLButtonUp: return message == WM_LBUTTONUP;
        case kOnAny:
            return message == WM_COMMAND || message == WM_VSCROLL || message == WM_HSCROLL ||
                   message == WM_LBUTTONDOWN || message == WM_LBUTTONUP;
        default: return false;
    }
}

LRESULT Host::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    // Nobody looks at the host's background; painting it would cost more than the controls.
    if (message == WM_ERASEBKGND) return 1;
    if (message == WM_COMMAND || message == WM_VSCROLL || message == WM_HSCROLL || message == WM_LBUTTONDOWN ||
        message == WM_LBUTTONUP)
        Trace("  host gets message 0x%lx wParam 0x%lx lParam 0x%lx", static_cast<long>(message),
              static_cast<long>(wParam), static_cast<long>(lParam));
    // One reaction at a time: what a reaction causes (a re-entrant SetScrollPos notifies
    // again) is not reacted to.
    if (armed.count > 0 && !reacting_ && Matches(message)) {
        --armed.count;
        reacting_ = true;
        Trace("  reaction %ld on target %ld", armed.reaction, armed.target);
        storm_.React(armed, message, lParam);
        reacting_ = false;
    }
    // Even when the reaction destroyed this window: the framework must cope, as it does
    // for a dialog that ends itself from a button's handler.
    return CWnd::WindowProc(message, wParam, lParam);
}

// ---- building -------------------------------------------------------------------------------

Storm::Storm() : host_(*this) { gStorm = this; }

Storm::~Storm() {
    TearDown();
    gStorm = nullptr;
}

CRect Storm::ScreenRectOf(int control) {
    CRect rc(0, 0, kHostWidth, kHostHeight);
    CWnd* wnd = control == kOnHost ? &host_ : Wnd(control);
    if (wnd && ::IsWindow(wnd->m_hWnd)) ::GetWindowRect(wnd->m_hWnd, &rc);
    return rc;
}

void Storm::LoadStandardSkin(int control) {
    const StormControl* kind = Kind(control);
    if (kind && kind->skin) kind->skin(*Wnd(control));
}

// `place` replaces the control's usual rectangle (a host may pass an inverted or absurd one).
void Storm::Create(int control, const RECT* place) {
    const StormControl* kind = Kind(control);
    if (!kind) return;
    kind->create(*Wnd(control), host_, place ? *place : kind->place, kFirstId + control);
    LoadStandardSkin(control);
}

// Makes the host if it is gone and every control whose window is gone (also the script's
// "recreate the host").
void Storm::Build() {
    if (!host_.m_hWnd && !host_.CreateEx(0, nullptr, L"storm", WS_POPUP | WS_VISIBLE, 0, 0, kHostWidth, kHostHeight, nullptr, nullptr))
        fuzzing::Finding(kName, "the host window cannot be created");
    for (int c = 0; c < kControlCount; ++c)
        if (Kind(c) && !Alive(c)) Create(c);
    desktop_.RunUntilIdle();
}

std::vector<HWND> Storm::ChildrenOfHost() const {
    std::vector<HWND> children;
    for (HWND child = ::GetWindow(host_.m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    return children;
}

void Storm::Start() {
    for (int c = 0; c < kControlCount; ++c)
        if (const StormControl* kind = Kind(c)) controls_[c] = kind->make();
    Build();
    Paint("building the host");
    builtHost_ = host_.m_hWnd;
    builtStyle_ = ::GetWindowLongW(host_.m_hWnd, GWL_STYLE);
    builtOrder_.clear();
    for (HWND child : ChildrenOfHost())
        for (int c = 0; c < kControlCount; ++c)
            if (Wnd(c) && Wnd(c)->m_hWnd == child) builtOrder_.push_back(c);
    const HWND focus = ::GetFocus();
    builtFocus_ = focus == host_.m_hWnd ? kFocusHost : kFocusNone;
    for (int c = 0; c < kControlCount; ++c)
        if (focus && Wnd(c) && Wnd(c)->m_hWnd == focus) builtFocus_ = c;
    WatchWindows(host_.m_hWnd);
    builtWindows_ = AllWindows().size();
    touched_.reset();
    started_ = true;
}

// Everything gone: the host, the controls' windows and objects, and the desktop's windows,
// timers, queue and clock.
void Storm::TearDown() {
    if (host_.m_hWnd) host_.DestroyWindow();
    for (std::unique_ptr<CWnd>& control : controls_) control.reset();  // their constructors make fonts
    host_.armed = {};
    SpiedProcs().clear();
    ResetDesktop();
    started_ = false;
}

void Storm::Touched(HWND hwnd) {
    for (HWND h = hwnd; h && h != host_.m_hWnd; h = ::GetParent(h))
        for (int c = 0; c < kControlCount; ++c)
            if (controls_[c] && controls_[c]->m_hWnd == h) {
                touched_.set(c);
                unchecked_.set(c);
                return;
            }
}

bool Storm::HostAsBuilt() {
    if (host_.m_hWnd != builtHost_ || !::IsWindow(builtHost_)) return false;
    // A reaction may have moved, disabled or hidden the host through a control's
    // notification: put it back (what its controls get from that touches them).
    CRect rc;
    ::GetWindowRect(builtHost_, &rc);
    if (!rc.EqualRect(CRect(0, 0, kHostWidth, kHostHeight)))
        ::SetWindowPos(builtHost_, nullptr, 0, 0, kHostWidth, kHostHeight, SWP_NOZORDER | SWP_NOACTIVATE);
    if (!::IsWindowEnabled(builtHost_)) ::EnableWindow(builtHost_, TRUE);
    if (!::IsWindowVisible(builtHost_)) ::ShowWindow(builtHost_, SW_SHOW);
    if (::GetActiveWindow() != builtHost_) ::SetActiveWindow(builtHost_);
    return ::GetWindowRect(builtHost_, &rc) &&
           rc.EqualRect(CRect(0, 0, kHostWidth, kHostHeight)) && ::GetWindowLongW(builtHost_, GWL_STYLE) == builtStyle_ &&
           ::GetActiveWindow() == builtHost_;
}

// A new object for the slot, its old window gone with the old one.
void Storm::Renew(int control) {
    CWnd* old = Wnd(control);
    if (old && old->m_hWnd && ::IsWindow(old->m_hWnd)) old->DestroyWindow();
    controls_[control] = Kind(control)->make();
}

// New windows go on top of their siblings; put the renewed controls back where they were
// in the order of building, which decides which of two overlapping controls takes a press.
void Storm::RestoreOrder(const std::bitset<kControlCount>& renewed) {
    HWND above = HWND_TOP;
    for (int c : builtOrder_) {
        if (!Alive(c)) continue;
        const HWND hwnd = Wnd(c)->m_hWnd;
        if (renewed[c] && ::GetWindow(hwnd, GW_HWNDPREV) != (above == HWND_TOP ? nullptr : above))
            ::SetWindowPos(hwnd, above, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        above = hwnd;
    }
}

// After an input: the host as Start left it, or, when the input changed the host itself,
// built again from nothing.
void Storm::Reset() {
    host_.armed = {};
    if (!HostAsBuilt()) {
        TearDown();
        Start();
        return;
    }
    if (::GetCapture()) ::ReleaseCapture();
    if (::GetFocus() != BuiltFocus()) ::SetFocus(BuiltFocus());  // the loser is touched by its WM_KILLFOCUS
    const std::bitset<kControlCount> renew = touched_;
    for (int c = 0; c < kControlCount; ++c)
        if (renew[c] && Kind(c)) Renew(c);
    // The built host has no timer, nothing queued and its clock at 0: the renewed controls
    // are made at the time they were first made.
    zel::user::KillAllTimers();
    zel::user::ResetQueue();
    zel::user::ResetInput(zel::DesktopConfig().doubleClickMs);
    zel::kernel::UseVirtualClock(zel::DesktopConfig().localStart);
    for (int c = 0; c < kControlCount; ++c)
        if (renew[c] && Kind(c)) Create(c);
    RestoreOrder(renew);
    Paint("putting the host back");
    WatchWindows(host_.m_hWnd);
    touched_.reset();
    if (::GetFocus() != BuiltFocus()) ::SetFocus(BuiltFocus());
    const size_t windows = AllWindows().size();
    if (windows != builtWindows_)
        fuzzing::Finding(kName, "windows leaked: " + std::to_string(builtWindows_) + " when built, " +
                                    std::to_string(windows) + " after the input's controls were made anew");
    CWnd::DeleteTempMap();
    zel::ClearMessageBoxes();
}

// ---- operations ------------------------------------------------------------------------------

void Storm::DoPoint(Op op, ScriptReader& in) {
    const uint8_t target = in.Pick(kControlCount + 2);
    POINT pt;
    if (target == kAnywhere) {
        pt.x = static_cast<int16_t>(in.U16());
        pt.y = static_cast<int16_t>(in.U16());
    } else {
        const CRect rc = ScreenRectOf(target);
        pt.x = rc.left - 8 + static_cast<int>(in.U8() * (int64_t{rc.Width()} + 16) / 255);
        pt.y = rc.top - 8 + static_cast<int>(in.U8() * (int64_t{rc.Height()} + 16) / 255);
    }
    switch (op) {
        case kPointerDown: desktop_.PointerDown(pt.x, pt.y); break;
        case kPointerMove: desktop_.PointerMove(pt.x, pt.y); break;
        case kPointerUp: desktop_.PointerUp(pt.x, pt.y); break;
        default: desktop_.Tap(pt.x, pt.y); break;
    }
}

void Storm::DoKey(ScriptReader& in) {
    const UINT vk = kKeys[in.Pick(std::size(kKeys))];
    const uint8_t flags = in.U8();
    desktop_.KeyDown(vk);
    if (flags & 2) desktop_.KeyDown(vk);  // auto-repeat
    if (flags & 1) desktop_.KeyUp(vk);
}

void Storm::RunCall(int control, uint8_t call, ScriptReader& in) {
    const StormControl* kind = Kind(control);
    if (!kind || kind->calls.empty()) return;
    const size_t which = call % kind->calls.size();
    Trace("  call %ld of control %ld", static_cast<long>(which), control);
    kind->calls[which](*Wnd(control), in);
}

void Storm::DoCall(ScriptReader& in) {
    const uint8_t control = Touch(in.Pick(kControlCount));
    const uint8_t call = in.U8();
    RunCall(control, call, in);
}

void Storm::DoLoadSkin(ScriptReader& in) {
    const uint8_t control = Touch(in.Pick(kControlCount));
    const CString skin = ReadSkinString(in);
    const CString reserved = in.U8() & 1 ? skin : CString();
    const StormControl* kind = Kind(control);
    if (kind && kind->loadSkin) kind->loadSkin(*Wnd(control), skin, reserved);
}

void Storm::DoEnable(ScriptReader& in) {
    const uint8_t control = Touch(in.Pick(kControlCount));
    const BOOL enable = in.U8() & 1;
    if (const StormControl* kind = Kind(control)) kind->enable(*Wnd(control), enable);
}

void Storm::DoShow(ScriptReader& in) {
    const uint8_t control = Touch(in.Pick(kControlCount));
    const int command = in.Pick(12);
    if (const StormControl* kind = Kind(control)) kind->show(*Wnd(control), command);
}

void Storm::DoMove(ScriptReader& in) {
    const uint8_t control = Touch(in.Pick(kControlCount));
    StormMove move{};
    move.x = ReadCoord(in);
    move.y = ReadCoord(in);
    move.width = ReadCoord(in);
    move.height = ReadCoord(in);
    BoundFrame(move.width, move.height);
    move.repaint = in.U8() & 1;
    move.asRect = in.U8() & 1;
    move.rect.SetRect(move.x / 4, move.y / 4, move.x / 4 + move.width / 4, move.y / 4 + move.height / 4);
    Trace("  move control %ld to %ld x %ld", control, move.width, move.height);
    if (const StormControl* kind = Kind(control)) kind->move(*Wnd(control), move);
}

void Storm::DoDestroy(ScriptReader& in) {
    const uint8_t control = Touch(in.Pick(kControlCount + 1));
    CWnd* wnd = control == kControlCount ? &host_ : Wnd(control);
    if (wnd) wnd->DestroyWindow();
}

void Storm::DoRecreate(ScriptReader& in) {
    const uint8_t control = Touch(in.Pick(kControlCount + 1));
    const bool elsewhere = in.U8() & 1;
    if (control == kControlCount || !host_.m_hWnd) {
        Build();
        return;
    }
    if (!Kind(control) || Alive(control)) return;
    if (elsewhere) {
        RECT place{ReadCoord(in), ReadCoord(in), ReadCoord(in), ReadCoord(in)};
        int w = static_cast<int>(int64_t{place.right} - place.left), h = static_cast<int>(int64_t{place.bottom} - place.top);
        BoundFrame(w, h);
        place.bottom = static_cast<int>(int64_t{place.top} + h);
        Create(control, &place);
    } else {
        Create(control, nullptr);
    }
}

void Storm::DoArm(ScriptReader& in) {
    host_.armed.trigger = static_cast<Trigger>(in.Pick(kTriggerCount));
    host_.armed.reaction = static_cast<Reaction>(in.Pick(kReactionCount));
    host_.armed.target = in.Pick(kControlCount);  // touched when a reaction acts on it
    host_.armed.count = 1 + in.Pick(3);
    host_.armed.arg = ReadValue(in);
    host_.armed.call = in.U8();
    host_.armed.callInput = in.Text();
}

void Storm::DoText(ScriptReader& in) {
    const uint8_t control = Touch(in.Pick(kControlCount));
    CString text = FromUtf8(in.Text());
    if (in.U8() & 1) text = CString(L'W', 40 * in.U8()) + text;  // captions far wider than the control
    if (const StormControl* kind = Kind(control)) kind->setText(*Wnd(control), text);
}

void Storm::DoRawMessage(ScriptReader& in) {
    const uint8_t control = Touch(in.Pick(kControlCount));
    HWND hwnd = Wnd(control) ? Wnd(control)->m_hWnd : nullptr;
    const uint16_t x = in.U16();
    const LPARAM point = MAKELPARAM(x, in.U16());
    switch (in.Pick(9)) {
        case 0: ::SendMessageW(hwnd, WM_TIMER, in.Pick(6), 0); break;
        case 1: ::SendMessageW(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, point); break;
        case 2: ::SendMessageW(hwnd, WM_LBUTTONUP, 0, point); break;
        case 3: ::SendMessageW(hwnd, WM_MOUSEMOVE, MK_LBUTTON, point); break;
        case 4: ::SendMessageW(hwnd, WM_LBUTTONDBLCLK, MK_LBUTTON, point); break;
        case 5: ::SendMessageW(hwnd, WM_KILLFOCUS, 0, 0); break;
        case 6: ::SendMessageW(hwnd, WM_SETFOCUS, 0, 0); break;
        case 7: ::PostMessageW(hwnd, WM_KEYDOWN, kKeys[in.Pick(std::size(kKeys))], 0); break;
        default: ::SendMessageW(hwnd, WM_VSCROLL, in.U8(), reinterpret_cast<LPARAM>(hwnd)); break;
    }
    desktop_.RunUntilIdle();
}

void Storm::React(const Host::Armed& armed, UINT message, LPARAM lParam) {
    // The sender: the control in lParam for commands and scroll messages; a forwarded press
    // or release comes from the control that took the focus for it.
    HWND sender = message == WM_LBUTTONDOWN || message == WM_LBUTTONUP ? ::GetFocus() : reinterpret_cast<HWND>(lParam);
    // What a reaction does to the sender reaches it as messages; the target may be changed
    // through its own API.
    CWnd* target = Wnd(armed.target);
    if (armed.reaction == kDestroyTarget || armed.reaction == kCallTarget || armed.reaction == kReskinTarget ||
        armed.reaction == kFocusTarget)
        Touch(armed.target);
    switch (armed.reaction) {
        case kDestroySender: ::DestroyWindow(sender); break;
        case kDestroyTarget:
            if (target) target->DestroyWindow();
            break;
        case kDestroyHost: host_.DestroyWindow(); break;
        case kCallTarget: {
            ScriptReader in(reinterpret_cast<const uint8_t*>(armed.callInput.data()), armed.callInput.size());
            RunCall(armed.target, armed.call, in);
            break;
        }
        case kMoveSender: {
            const int v = static_cast<int>(armed.arg);
            ::MoveWindow(sender, v % 400, v % 300, (v >> 4) % 500, (v >> 8) % 500, TRUE);
            break;
        }
        case kDisableSender: ::EnableWindow(sender, FALSE); break;
        case kHideSender: ::ShowWindow(sender, SW_HIDE); break;
        case kReskinTarget: LoadStandardSkin(armed.target); break;
        case kFocusTarget:
            if (target) target->SetFocus();
            break;
        default: desktop_.Advance(static_cast<DWORD>(armed.arg & 0x3FF)); break;  // nested loop
    }
}

void Storm::CheckPromises(uint8_t op, bool all) {
    const std::bitset<kControlCount> check = all ? ~std::bitset<kControlCount>() : unchecked_;
    unchecked_.reset();
    for (int c = 0; c < kControlCount; ++c) {
        const StormControl* kind = Kind(c);
        if (!kind || !check[c]) continue;
        for (const StormInvariant& invariant : kind->invariants)
            if (!invariant.holds(*Wnd(c)))
                fuzzing::Finding(kName, std::string(kind->name) + ": " + invariant.violation + " after op " +
                                            std::to_string(op));
    }
}

void Storm::Run(ScriptReader& in) {
    for (int n = 0; n < kMaxOps && !in.Done(); ++n) {
        const uint8_t op = in.Pick(kOpCount);
        Trace("op %ld", op);
        switch (op) {
            case kPointerDown:
            case kPointerMove:
            case kPointerUp:
            case kTap: DoPoint(static_cast<Op>(op), in); break;
            case kKey: DoKey(in); break;
            case kAdvance: desktop_.Advance(in.U16() % 2001); break;
            case kFocus:
                if (CWnd* wnd = Wnd(Touch(in.Pick(kControlCount)))) wnd->SetFocus();
                break;
            case kCall: DoCall(in); break;
            case kLoadSkin: DoLoadSkin(in); break;
            case kEnable: DoEnable(in); break;
            case kShow: DoShow(in); break;
            case kMove: DoMove(in); break;
            case kDestroy: DoDestroy(in); break;
            case kRecreate: DoRecreate(in); break;
            case kArm: DoArm(in); break;
            case kText: DoText(in); break;
            case kPaint: break;  // below, once the operation's messages are handled
            default: DoRawMessage(in); break;
        }
        desktop_.RunUntilIdle();
        fuzzing::CheckLoopSettled(kName, ("op " + std::to_string(op)).c_str());
        CheckPromises(op);
        WatchWindows(host_.m_hWnd);
        if (op == kPaint) {
            Paint("a paint the input asked for");
            CheckPromises(op, true);
        }
    }
    Paint("the input's last paint");
    CheckPromises(kPaint, true);
    WatchWindows(host_.m_hWnd);
}

void Storm::Paint(const char* after) {
    zel::user::HoldPaints(false);
    desktop_.RunUntilIdle();
    fuzzing::CheckLoopSettled(kName, after);
    zel::user::HoldPaints(true);
}

// The counts everything is checked against: the desktop reset and the skin files written,
// nothing built.
zel::GdiCounts& StartCounts() {
    static zel::GdiCounts counts;
    return counts;
}

Storm& TheStorm() {
    static Storm* storm = new Storm;  // torn down by FullCheck at exit, never destroyed
    return *storm;
}

// Everything torn down: no window left, every GDI object made since the start released and,
// mid-run, no allocation left that nothing points to (at exit LeakSanitizer's own check
// follows).
void FullCheck(bool atExit) {
    TheStorm().TearDown();
    const size_t windows = AllWindows().size();
    if (windows != 0) fuzzing::Finding(kName, std::to_string(windows) + " windows left after tearing the host down");
    fuzzing::CheckGdiBalance(kName, StartCounts());
    if (!atExit) fuzzing::CheckLeaks(kName);
}

}  // namespace

extern "C" const char* __asan_default_options() { return fuzzing::kAsanDefaults; }
extern "C" const char* __lsan_default_suppressions() { return fuzzing::kLsanSuppressions; }

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    fuzzing::DefaultFlags(argc, argv, {"-entropic=0", "-detect_leaks=0"});
    fuzzing::TheOutput();
    ResetDesktop();
    Skins();
    StartCounts() = zel::LiveGdiObjects();
    // Paints are held from here on but where Storm::Paint lets them come.
    zel::user::HoldPaints(true);
    return 0;
}

// The check at exit. Exit handlers run in the reverse order of registration, mixed with the
// destructors of function-local statics in the reverse order of their construction; a
// control's static made after the handler was registered would be gone before it tears the
// controls down. So the handler is registered again whenever the host is built from nothing
// (the first input, and after every full check): the latest registration runs first, and
// only it does the work.
void CheckAtExit() {
    static bool done = false;
    if (done) return;
    done = true;
    fuzzing::QuietInput quiet;
    FullCheck(true);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static int inputs = 0;
    fuzzing::QuietInput quiet;
    Storm& storm = TheStorm();
    if (!storm.Started()) {
        storm.Start();
        std::atexit(CheckAtExit);
    }
    ScriptReader in(data, size);
    storm.Run(in);
    storm.Reset();
    if (++inputs % kFullCheckEvery == 0) FullCheck(false);
    return 0;
}
