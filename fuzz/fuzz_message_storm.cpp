// Drives a host window holding the registered controls (storm_family.h: every button,
// check box, scroll bar and slider today) through a script decoded from the input
// (storm_script.h): pointer presses, drags and taps anywhere (off the screen too), keys,
// time, and API calls with hostile arguments: extreme and inverted ranges, odd skin
// strings, missing and malformed skin files, sizes of zero, negative or huge, destruction
// of a control in the middle of things and from inside its own notification, nested
// message loops inside a handler.
//
// Beyond "no crash, no sanitizer report": every GDI object an input created is released
// once its windows and objects are gone, the message loop always settles, and the
// promises each family registers hold after every step (a slider's position inside its
// range, a check box checked or not).
//
// This file knows no control class: a family registers its controls, calls and promises
// in fuzz/storm/<family>.cpp (see storm_family.h for how).
#include <afxwin.h>
#include <zel/debug.h>
#include <zel/desktop.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "control_fuzzing.h"
#include "skin_files.h"
#include "storm_family.h"
#include "storm_script.h"

namespace {

using namespace storm;

constexpr const char* kName = "fuzz_message_storm";
constexpr int kMaxOps = 200;
constexpr UINT kFirstId = 101;
constexpr int kHostWidth = 400, kHostHeight = 300;

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

    void Build();
    void Run(ScriptReader& in);
    void React(const Host::Armed& armed, UINT message, LPARAM lParam);

private:
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
    void CheckPromises(uint8_t op);

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
};

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

Storm::Storm() : host_(*this) {
    for (int c = 0; c < kControlCount; ++c)
        if (const StormControl* kind = Kind(c)) controls_[c] = kind->make();
}

Storm::~Storm() {
    // Controls first, as a dialog's members die after its window; whatever is still a
    // window goes with the host.
    if (host_.m_hWnd) host_.DestroyWindow();
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

void Storm::Build() {
    if (!host_.m_hWnd && !host_.CreateEx(0, nullptr, L"storm", WS_POPUP | WS_VISIBLE, 0, 0, kHostWidth, kHostHeight, nullptr, nullptr))
        fuzzing::Finding(kName, "the host window cannot be created");
    for (int c = 0; c < kControlCount; ++c)
        if (Kind(c) && !Alive(c)) Create(c);
    desktop_.RunUntilIdle();
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
    const uint8_t control = in.Pick(kControlCount);
    const uint8_t call = in.U8();
    RunCall(control, call, in);
}

void Storm::DoLoadSkin(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount);
    const CString skin = ReadSkinString(in);
    const CString reserved = in.U8() & 1 ? skin : CString();
    const StormControl* kind = Kind(control);
    if (kind && kind->loadSkin) kind->loadSkin(*Wnd(control), skin, reserved);
}

void Storm::DoEnable(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount);
    const BOOL enable = in.U8() & 1;
    if (const StormControl* kind = Kind(control)) kind->enable(*Wnd(control), enable);
}

void Storm::DoShow(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount);
    const int command = in.Pick(12);
    if (const StormControl* kind = Kind(control)) kind->show(*Wnd(control), command);
}

void Storm::DoMove(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount);
    StormMove move{};
    move.x = ReadCoord(in);
    move.y = ReadCoord(in);
    move.width = ReadCoord(in);
    move.height = ReadCoord(in);
    BoundFrame(move.width, move.height);
    move.repaint = in.U8() & 1;
    move.asRect = in.U8() & 1;
    move.rect.SetRect(move.x / 4, move.y / 4, move.x / 4 + move.width / 4, move.y / 4 + move.height / 4);
    if (const StormControl* kind = Kind(control)) kind->move(*Wnd(control), move);
}

void Storm::DoDestroy(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount + 1);
    CWnd* wnd = control == kControlCount ? &host_ : Wnd(control);
    if (wnd) wnd->DestroyWindow();
}

void Storm::DoRecreate(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount + 1);
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
    host_.armed.target = in.Pick(kControlCount);
    host_.armed.count = 1 + in.Pick(3);
    host_.armed.arg = ReadValue(in);
    host_.armed.call = in.U8();
    host_.armed.callInput = in.Text();
}

void Storm::DoText(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount);
    CString text = FromUtf8(in.Text());
    if (in.U8() & 1) text = CString(L'W', 40 * in.U8()) + text;  // captions far wider than the control
    if (const StormControl* kind = Kind(control)) kind->setText(*Wnd(control), text);
}

void Storm::DoRawMessage(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount);
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
    CWnd* target = Wnd(armed.target);
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

void Storm::CheckPromises(uint8_t op) {
    for (int c = 0; c < kControlCount; ++c) {
        const StormControl* kind = Kind(c);
        if (!kind) continue;
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
                if (CWnd* wnd = Wnd(in.Pick(kControlCount))) wnd->SetFocus();
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
            default: DoRawMessage(in); break;
        }
        desktop_.RunUntilIdle();
        fuzzing::CheckLoopSettled(kName, ("op " + std::to_string(op)).c_str());
        CheckPromises(op);
    }
}

// A screen just the host's size: every pixel painted costs, and most of the time goes to
// painting. Each input leaves the desktop reset (no window, no timer, the clock at 0) for
// the next.
void ResetDesktop() {
    zel::DesktopConfig config;
    config.width = kHostWidth;
    config.height = kHostHeight;
    zel::Desktop::Get().Reset(config);
    CWnd::DeleteTempMap();
    zel::ClearMessageBoxes();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::TheOutput();
    ResetDesktop();
    Skins();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzzing::QuietInput quiet;
    const zel::GdiCounts before = zel::LiveGdiObjects();
    {
        Storm storm;
        storm.Build();
        ScriptReader in(data, size);
        storm.Run(in);
    }
    ResetDesktop();
    fuzzing::CheckGdiBalance(kName, before);
    return 0;
}
