// Drives a host window holding one of every button, check box, scroll bar and slider
// through a script decoded from the input (storm_script.h): pointer presses, drags and
// taps anywhere (off the screen too), keys, time, and API calls with hostile arguments:
// extreme and inverted ranges, odd skin strings, missing and malformed skin files, sizes
// of zero, negative or huge, destruction of a control in the middle of things and from
// inside its own notification, nested message loops inside a handler.
//
// Beyond "no crash, no sanitizer report": every GDI object an input created is released
// once its windows and objects are gone, the message loop always settles, and the states
// the controls promise hold after every step (a slider's position inside its range, a
// check box checked or not).
#include <afxwin.h>
#include <zel/debug.h>
#include <zel/desktop.h>

#include <array>
#include <cstdio>
#include <climits>
#include <cstdlib>
#include <memory>
#include <string>

#include "CBmpTextButton.h"
#include "CZELBmpButton.h"
#include "CZELButton.h"
#include "CZELChkBox.h"
#include "CZELScrollbar.h"
#include "CZELSlider.h"
#include "control_fuzzing.h"
#include "skin_files.h"
#include "storm_script.h"

namespace {

using namespace storm;

constexpr const char* kName = "fuzz_message_storm";
constexpr int kMaxOps = 200;
constexpr UINT kFirstId = 101;
constexpr int kHostWidth = 400, kHostHeight = 300;

// ---- the controls, with their promises readable ---------------------------------------------

class Slider : public CZELSlider {
public:
    bool PositionInRange() const { return m_nMin <= m_nPos && m_nPos <= m_nMax; }
};

class CheckBox : public CZELChkBox {
public:
    bool CheckIsBoolean() const { return m_bChecked == 0 || m_bChecked == 1; }
};

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

// ---- decoding helpers ------------------------------------------------------------------------

constexpr long kValues[] = {0,       1,       -1,        2,           5,           10,          20,
                            50,      99,      100,       101,         255,         1000,        65535,
                            65536,   -100,    INT_MAX,   INT_MIN,     INT_MAX - 1, INT_MIN + 1, LONG_MAX,
                            LONG_MIN, LONG_MAX - 1, LONG_MIN + 1, 1L << 32, -(1L << 32)};

long ReadValue(ScriptReader& in) {
    const uint8_t pick = in.U8();
    if (pick == kRawValue) return static_cast<long>(in.I64());
    return kValues[pick % std::size(kValues)];
}

constexpr int kCoords[] = {0, -1, 1, 5, 20, 40, 76, 78, 100, 300, -300, 2000, 1 << 20, -(1 << 20), INT_MAX, INT_MIN};

int ReadCoord(ScriptReader& in) {
    const uint8_t pick = in.U8();
    if (pick == kRawValue) return in.I32();
    return kCoords[pick % std::size(kCoords)];
}

// Identifiers 1..kDrawnCount name the generated images; the rest name nothing, and a
// raw value tests that only the low 16 bits count.
UINT ReadId(ScriptReader& in) {
    const uint8_t pick = in.U8();
    if (pick == kRawValue) return static_cast<UINT>(in.I32());
    return pick % (kDrawnCount + 8);
}

HINSTANCE ReadModule(ScriptReader& in) {
    switch (in.Pick(3)) {
        case 0: return nullptr;  // the current resource handle, which holds no bitmaps
        case 1: return Skins().module;
        default: return reinterpret_cast<HINSTANCE>(static_cast<uintptr_t>(0x5A5A0000u | in.U8()));  // forged
    }
}

constexpr UINT kKeys[] = {VK_UP,   VK_DOWN, VK_LEFT,   VK_RIGHT, VK_PRIOR, VK_NEXT,
                          VK_HOME, VK_END,  VK_RETURN, VK_SPACE, VK_ESCAPE};

CString FromUtf8(const std::string& bytes) { return CString(bytes.data(), static_cast<int>(bytes.size())); }

CString ReadSkinString(ScriptReader& in) {
    CString skin;
    for (int n = 0; n < 24 && !in.Done(); ++n) {
        switch (in.Pick(kTokenCount)) {
            case kTokenFile: skin += Skins().Path(in.U8() % kFileCount); break;
            case kTokenBar: skin += L"|"; break;
            case kTokenSpace: skin += L" \t"; break;
            case kTokenText: skin += FromUtf8(in.Text()); break;
            case kTokenWide:
                for (uint8_t count = in.U8(); count && !in.Done(); --count)
                    skin.AppendChar(static_cast<WCHAR>(in.I32()));
                break;
            case kTokenLong: skin += CString(L'x', 64 * in.U8()); break;
            default: return skin;
        }
    }
    return skin;
}

// Window sizes whose off-screen frame would need more than this many pixels are cut down:
// each paint allocates and fills one, and a gigabyte frame per paint would only measure
// the machine. Sizes beyond the platform's bitmap limit stay, since they test how the
// controls live with a failed allocation.
constexpr int64_t kMaxFramePixels = int64_t{4} << 20;
constexpr int64_t kBitmapLimitPixels = int64_t{1} << 28;

void BoundFrame(int& width, int& height) {
    const int64_t w = std::llabs(static_cast<int64_t>(width)), h = std::llabs(static_cast<int64_t>(height));
    if (w * h > kMaxFramePixels && w * h <= kBitmapLimitPixels) height = static_cast<int>(kMaxFramePixels / w);
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
    Storm() : host_(*this) {}
    ~Storm();

    void Build();
    void Run(ScriptReader& in);
    void React(const Host::Armed& armed, UINT message, LPARAM lParam);

private:
    CWnd* Wnd(int control);
    bool Alive(int control) { return Wnd(control) && ::IsWindow(Wnd(control)->m_hWnd); }
    CRect ScreenRectOf(int control);
    void Create(int control, const RECT* place = nullptr);
    void LoadStandardSkin(int control);
    void CheckPromises(uint8_t op);

    void DoPoint(Op op, ScriptReader& in);
    void DoKey(ScriptReader& in);
    void DoScrollCall(ScriptReader& in);
    void DoSliderCall(ScriptReader& in);
    void DoLoadSkin(ScriptReader& in);
    void DoResourceSkin(ScriptReader& in);
    void DoMove(ScriptReader& in);
    void DoFont(ScriptReader& in);
    void DoRecreate(ScriptReader& in);
    void DoArm(ScriptReader& in);
    void DoText(ScriptReader& in);
    void DoRawMessage(ScriptReader& in);
    void DoButtonCall(ScriptReader& in);
    void DoCheck(ScriptReader& in);

    zel::Desktop& desktop_ = zel::Desktop::Get();
    Host host_;
    CZELButton button_;
    CZELBmpButton shaped_;
    CBmpTextButton text_;
    CheckBox check_;
    CZELScrollbar bar_;
    std::array<Slider, 3> sliders_;  // normal, vertical, progress
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

Storm::~Storm() {
    // Controls first, as a dialog's members die after its window; whatever is still a
    // window goes with the host.
    if (host_.m_hWnd) host_.DestroyWindow();
}

CWnd* Storm::Wnd(int control) {
    switch (control) {
        case kRepeatButton: return &button_;
        case kShapedButton: return &shaped_;
        case kTextButton: return &text_;
        case kCheckBox: return &check_;
        case kScrollBar: return &bar_;
        case kSlider:
        case kVSlider:
        case kProgress: return &sliders_[control - kSlider];
        default: return nullptr;
    }
}

CRect Storm::ScreenRectOf(int control) {
    CRect rc(0, 0, kHostWidth, kHostHeight);
    CWnd* wnd = control == kOnHost ? &host_ : Wnd(control);
    if (wnd && ::IsWindow(wnd->m_hWnd)) ::GetWindowRect(wnd->m_hWnd, &rc);
    return rc;
}

CString Join(std::initializer_list<int> files) {
    CString skin;
    for (int f : files) (skin += Skins().Path(f)) += L"|";
    return skin;
}

void Storm::LoadStandardSkin(int control) {
    HINSTANCE module = Skins().module;
    switch (control) {
        case kRepeatButton: button_.LoadSkin(Join({kBtnNormal, kBtnFocus, kBtnDown, kBtnDisable}), L""); break;
        case kShapedButton: shaped_.LoadBitmaps(kRound + 1, kRoundDown + 1, kRoundDown + 1, kAllKey + 1, module); break;
        case kTextButton: text_.LoadBitmaps(kBtnNormal + 1, kBtnFocus + 1, kBtnDown + 1, module); break;
        case kCheckBox: check_.LoadSkin(Join({kChkOn, kChkOff, kChkBack}), L""); break;
        case kScrollBar:
            bar_.LoadSkin(Join({kBarUp, kBarUpDown, kBarTrack, kBarThumb, kBarThumbDown, kBarDown, kBarDownDown}), L"");
            break;
        case kSlider:
        case kVSlider:
            sliders_[control - kSlider].LoadSkin(Join({kSlLeft, kSlRight, kSlThumb, kSlThumbUp, kSlThumbDown, kSlFill,
                                                       kSlChannel, kSlChanLeft, kSlChanRight}),
                                                  L"");
            break;
        case kProgress: sliders_[2].LoadSkin(Join({kProgBack, kProgFill}), L""); break;
        default: break;
    }
}

constexpr RECT kPlaces[kControlCount] = {
    {10, 10, 88, 107},  {100, 10, 140, 50},  {150, 10, 250, 40},   {150, 50, 300, 80},
    {320, 10, 350, 100}, {10, 120, 210, 140}, {220, 120, 260, 280}, {10, 160, 210, 175},
};

// `place` replaces the control's usual rectangle (a host may pass an inverted or absurd one).
void Storm::Create(int control, const RECT* place) {
    const UINT id = kFirstId + control;
    const DWORD visible = WS_CHILD | WS_VISIBLE;
    const RECT& rc = place ? *place : kPlaces[control];
    switch (control) {
        case kRepeatButton:
            button_.Create(L"Repeat", visible | BS_OWNERDRAW, rc, &host_, id, true);
            button_.SetAutoClick(true);
            break;
        case kShapedButton: shaped_.Create(L"", visible | BS_OWNERDRAW, rc, &host_, id); break;
        case kTextButton: text_.Create(L"Text", visible | BS_PUSHBUTTON, rc, &host_, id); break;
        case kCheckBox: check_.Create(nullptr, L"Check me", visible, rc, &host_, id); break;
        case kScrollBar: bar_.Create(L"VSCrollBar", visible, rc, &host_, id); break;
        case kSlider:
        case kVSlider:
        case kProgress: sliders_[control - kSlider].Create(nullptr, L"", visible, rc, &host_, id); break;
        default: return;
    }
    if (control == kVSlider) sliders_[1].SetvStyle(true);
    LoadStandardSkin(control);
}

void Storm::Build() {
    if (!host_.m_hWnd && !host_.CreateEx(0, nullptr, L"storm", WS_POPUP | WS_VISIBLE, 0, 0, kHostWidth, kHostHeight, nullptr, nullptr))
        fuzzing::Finding(kName, "the host window cannot be created");
    for (int c = 0; c < kControlCount; ++c)
        if (!Alive(c)) Create(c);
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

void Storm::DoScrollCall(ScriptReader& in) {
    switch (in.Pick(7)) {
        case 0: {
            const long lo = ReadValue(in);
            bar_.SetScrollRange(lo, ReadValue(in));
            break;
        }
        case 1: {
            const long pos = ReadValue(in);
            bar_.SetScrollPos(pos, in.U8() & 1);
            break;
        }
        case 2: {
            SCROLLINFO si{};
            si.cbSize = sizeof si;
            si.fMask = in.U8() & 1 ? SIF_ALL : 0;
            si.nMin = static_cast<int>(ReadValue(in));
            si.nMax = static_cast<int>(ReadValue(in));
            si.nPage = static_cast<UINT>(ReadValue(in));
            si.nPos = static_cast<int>(ReadValue(in));
            si.nTrackPos = static_cast<int>(ReadValue(in));
            SCROLLINFO* info = in.U8() & 1 ? &si : nullptr;  // a host may pass none
            bar_.SetScrollInfo(info, in.U8() & 1);
            break;
        }
        case 3: bar_.SetPagesize(ReadValue(in)); break;
        case 4: bar_.SetLineSize(ReadValue(in)); break;
        case 5: {
            const int x = ReadCoord(in), y = ReadCoord(in);
            int w = ReadCoord(in), h = ReadCoord(in);
            BoundFrame(w, h);
            bar_.MoveWindow(x, y, w, h, in.U8() & 1);
            break;
        }
        default: {
            long lo = 0, hi = 0;
            bar_.GetRange(lo, hi);
            SCROLLINFO si{};
            si.fMask = in.U8() & 1 ? SIF_ALL : 0;
            bar_.GetScrollInfo(in.U8() & 1 ? &si : nullptr);
            (void)bar_.GetScrollPos();
            break;
        }
    }
}

void Storm::DoSliderCall(ScriptReader& in) {
    Slider& s = sliders_[in.Pick(3)];
    switch (in.Pick(15)) {
        case 0: {
            const long lo = ReadValue(in);
            const long hi = ReadValue(in);
            s.SetRange(lo, hi, in.U8() & 1);
            break;
        }
        case 1: s.SetPos(static_cast<int>(ReadValue(in))); break;
        case 2: s.SetPageSize(static_cast<int>(ReadValue(in))); break;
        case 3: s.SetLineSize(static_cast<int>(ReadValue(in))); break;
        case 4: s.LineLeft(); break;
        case 5: s.LineRight(); break;
        case 6: s.LineUp(); break;
        case 7: s.Linedown(); break;
        case 8: s.LeftPage(); break;
        case 9: s.Rightpage(); break;
        case 10: {
            const UINT cx = static_cast<UINT>(ReadValue(in));
            s.SetChanRect(cx, static_cast<UINT>(ReadValue(in)));
            break;
        }
        case 11: s.SetStyle(static_cast<int>(in.Pick(4)) - 1); break;
        case 12: s.SetvStyle(in.U8() & 1); break;
        case 13: s.SetMoveStyle(in.U8() & 1); break;
        default: {
            long lo = 0, hi = 0;
            s.GetRange(lo, hi);
            (void)s.GetPos();
            (void)s.GetPageSize();
            break;
        }
    }
}

void Storm::DoLoadSkin(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount);
    const CString skin = ReadSkinString(in);
    const CString reserved = in.U8() & 1 ? skin : CString();
    switch (control) {
        case kRepeatButton: button_.LoadSkin(skin, reserved); break;
        case kCheckBox: check_.LoadSkin(skin, reserved); break;
        case kScrollBar: bar_.LoadSkin(skin, reserved); break;
        case kSlider:
        case kVSlider:
        case kProgress: sliders_[control - kSlider].LoadSkin(skin, reserved); break;
        default: {
            // The buttons without LoadSkin take the same files through their path loaders.
            CStringArray pieces;
            for (int i = 0, start = 0, bar; (bar = skin.Find(L'|', start)) >= 0 && i < 4; ++i, start = bar + 1)
                pieces.Add(skin.Mid(start, bar - start));
            while (pieces.GetSize() < 4) pieces.Add(skin);
            button_.LoadBitmaps(pieces[0], pieces[1], pieces[2], pieces[3]);
            break;
        }
    }
}

void Storm::DoResourceSkin(ScriptReader& in) {
    const uint8_t control = in.Pick(5);
    HINSTANCE module = ReadModule(in);
    switch (control) {
        case 0: {
            const UINT a = ReadId(in), b = ReadId(in), c = ReadId(in), d = ReadId(in);
            shaped_.LoadBitmaps(a, b, c, d, module);
            break;
        }
        case 1: {
            const UINT a = ReadId(in), b = ReadId(in), c = ReadId(in);
            text_.LoadBitmaps(a, b, c, module);
            break;
        }
        case 2: {
            UINT ids[7];
            for (UINT& id : ids) id = ReadId(in);
            bar_.LoadBitmapW(ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], ids[6], module);
            break;
        }
        case 3: {
            Slider& s = sliders_[in.Pick(3)];
            UINT ends[2], thumb[3], channel[4];
            for (UINT& id : ends) id = ReadId(in);
            for (UINT& id : thumb) id = ReadId(in);
            for (UINT& id : channel) id = ReadId(in);
            const uint8_t missing = in.U8();  // a host may pass no array at all
            s.LoadBitmapW(missing & 1 ? nullptr : ends, missing & 2 ? nullptr : thumb, missing & 4 ? nullptr : channel,
                          module);
            break;
        }
        default: {
            Slider& s = sliders_[in.Pick(3)];
            const UINT back = ReadId(in), fill = ReadId(in);
            s.LoadBitmapW(back, fill, module);
            break;
        }
    }
}

void Storm::DoMove(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount);
    int x = ReadCoord(in), y = ReadCoord(in), w = ReadCoord(in), h = ReadCoord(in);
    BoundFrame(w, h);
    const BOOL repaint = in.U8() & 1;
    const bool asRect = in.U8() & 1;
    // A CRect of such values would overflow its own arithmetic; the overloads taking one
    // get coordinates that fit.
    const CRect rect(x / 4, y / 4, x / 4 + w / 4, y / 4 + h / 4);
    switch (control) {
        case kRepeatButton:
            if (asRect)
                button_.MoveWindow(rect, repaint);
            else
                button_.MoveWindow(x, y, w, h, repaint);
            break;
        case kTextButton: {
            CRect r = rect;
            if (asRect)
                text_.MoveWindow(r, repaint);
            else
                text_.MoveWindow(x, y, w, h, repaint);
            break;
        }
        case kScrollBar:
            if (asRect)
                bar_.MoveWindow(&rect, repaint);
            else
                bar_.MoveWindow(x, y, w, h, repaint);
            break;
        case kSlider:
        case kVSlider:
        case kProgress:
            if (asRect)
                sliders_[control - kSlider].MoveWindow(rect, repaint);
            else
                sliders_[control - kSlider].MoveWindow(x, y, w, h, repaint);
            break;
        default: Wnd(control)->MoveWindow(x, y, w, h, repaint); break;
    }
}

constexpr int kHeights[] = {0, 1, -1, 12, 18, 25, -25, 100, 1000, -1000, 100000, INT_MAX, INT_MIN};

int ReadHeight(ScriptReader& in) {
    const uint8_t pick = in.U8();
    if (pick == kRawValue) return in.I32();
    return kHeights[pick % std::size(kHeights)];
}

void Storm::DoFont(ScriptReader& in) {
    if (in.U8() & 1) {
        const int height = ReadHeight(in);
        const CString face = FromUtf8(in.Text());
        check_.SetFont(height, face, static_cast<DWORD>(in.I32()));
    } else {
        const int normal = ReadHeight(in), active = ReadHeight(in);
        const DWORD a = static_cast<DWORD>(in.I32());
        text_.SetFont(normal, active, a, static_cast<DWORD>(in.I32()));
    }
}

void Storm::DoRecreate(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount + 1);
    const bool elsewhere = in.U8() & 1;
    if (control == kControlCount || !host_.m_hWnd) {
        Build();
        return;
    }
    if (Alive(control)) return;
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
}

void Storm::DoText(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount);
    CString text = FromUtf8(in.Text());
    if (in.U8() & 1) text = CString(L'W', 40 * in.U8()) + text;  // captions far wider than the control
    if (control == kRepeatButton)
        button_.SetWindowTextW(text);
    else
        Wnd(control)->SetWindowText(text);
}

void Storm::DoRawMessage(ScriptReader& in) {
    const uint8_t control = in.Pick(kControlCount);
    HWND hwnd = Wnd(control)->m_hWnd;
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

void Storm::DoButtonCall(ScriptReader& in) {
    switch (in.Pick(5)) {
        case 0: button_.SetAutoClick(in.U8() & 1); break;
        case 1: button_.InvalidateRect(nullptr, in.U8() & 1); break;
        case 2: {
            const UINT a = ReadId(in), b = ReadId(in), c = ReadId(in);
            button_.LoadBitmaps(a, b, c, ReadModule(in));
            break;
        }
        case 3: shaped_.SetWindowText(FromUtf8(in.Text())); break;
        default: text_.DrawItem(nullptr); break;  // a host calling the painter by hand
    }
}

void Storm::DoCheck(ScriptReader& in) {
    const int value = static_cast<int>(ReadValue(in));
    check_.SetCheck(value);
    check_.SetAutoClick(in.U8() & 1);
    (void)check_.GetCheck();
}

void Storm::React(const Host::Armed& armed, UINT message, LPARAM lParam) {
    // The sender: the control in lParam for commands and scroll messages; presses and
    // releases are forwarded by the repeating button.
    HWND sender = message == WM_LBUTTONDOWN || message == WM_LBUTTONUP ? button_.m_hWnd : reinterpret_cast<HWND>(lParam);
    CWnd* target = Wnd(armed.target);
    switch (armed.reaction) {
        case kDestroySender: ::DestroyWindow(sender); break;
        case kDestroyTarget: target->DestroyWindow(); break;
        case kDestroyHost: host_.DestroyWindow(); break;
        case kSetScrollPos: bar_.SetScrollPos(static_cast<long>(armed.arg), TRUE); break;
        case kMoveSender: {
            const int v = static_cast<int>(armed.arg);
            ::MoveWindow(sender, v % 400, v % 300, (v >> 4) % 500, (v >> 8) % 500, TRUE);
            break;
        }
        case kDisableSender: ::EnableWindow(sender, FALSE); break;
        case kHideSender: ::ShowWindow(sender, SW_HIDE); break;
        case kReskinTarget: LoadStandardSkin(armed.target); break;
        case kResetRange:
            bar_.SetScrollRange(0, static_cast<long>(armed.arg));
            sliders_[armed.target % 3].SetRange(0, static_cast<long>(armed.arg));
            break;
        case kFocusTarget: target->SetFocus(); break;
        default: desktop_.Advance(static_cast<DWORD>(armed.arg & 0x3FF)); break;  // nested loop
    }
}

void Storm::CheckPromises(uint8_t op) {
    for (const Slider& s : sliders_)
        if (!s.PositionInRange())
            fuzzing::Finding(kName, "a slider's position left its range after op " + std::to_string(op));
    if (!check_.CheckIsBoolean()) fuzzing::Finding(kName, "the check box is neither checked nor unchecked");
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
            case kFocus: Wnd(in.Pick(kControlCount))->SetFocus(); break;
            case kScrollCall: DoScrollCall(in); break;
            case kSliderCall: DoSliderCall(in); break;
            case kLoadSkin: DoLoadSkin(in); break;
            case kResourceSkin: DoResourceSkin(in); break;
            case kCheck: DoCheck(in); break;
            case kEnable: {
                const uint8_t control = in.Pick(kControlCount);
                const BOOL enable = in.U8() & 1;
                if (control == kRepeatButton)
                    button_.EnableWindow(enable);
                else
                    Wnd(control)->EnableWindow(enable);
                break;
            }
            case kShow: {
                const uint8_t control = in.Pick(kControlCount);
                const int command = in.Pick(12);
                if (control == kRepeatButton)
                    button_.ShowWindow(command);
                else if (control == kTextButton)
                    text_.ShowWindow(command);
                else
                    Wnd(control)->ShowWindow(command);
                break;
            }
            case kMove: DoMove(in); break;
            case kFont: DoFont(in); break;
            case kDestroy: {
                const uint8_t control = in.Pick(kControlCount + 1);
                (control == kControlCount ? static_cast<CWnd*>(&host_) : Wnd(control))->DestroyWindow();
                break;
            }
            case kRecreate: DoRecreate(in); break;
            case kArm: DoArm(in); break;
            case kText: DoText(in); break;
            case kRawMessage: DoRawMessage(in); break;
            default: DoButtonCall(in); break;
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
