// What a control family gives fuzz_message_storm: how to make and place each of its
// controls, the calls of its own API the storm may make with hostile arguments, and the
// promises (invariants) that must hold after every operation. The storm itself only knows
// what every window takes (pointer, keys, time, focus, enable, show, move, text, skin
// strings, destruction, re-entrant reactions); everything class-specific is here.
//
// How a new family registers (say, the lists):
//  1. Claim slots: add one enumerator per control the host should hold to `enum Control`
//     in storm_script.h, before kControlCount (two variants of one class are two slots),
//     and an enum of your calls' indices beside the others there, so seeds can name them.
//  2. Write fuzz/storm/<family>.cpp (every .cpp there is linked into the fuzzer):
//
//         #include "CZELListBox.h"
//         #include "storm_family.h"
//
//         namespace {
//         using namespace storm;
//         class ListProbe : public CZELListBox {  // reads protected state for the promises
//         public:
//             bool SelectionInRange() const { return m_nSel >= -1 && m_nSel < m_nCount; }
//         };
//         StormControl ListBox() {
//             StormControl c = MakeControl<ListProbe>(kListBox, "list box", {10, 200, 210, 290});
//             c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
//                 As<ListProbe>(w).Create(nullptr, L"", WS_CHILD | WS_VISIBLE, rc, &host, id);
//             };
//             c.skin = [](CWnd& w) { As<ListProbe>(w).LoadSkin(JoinSkin({kListBack, kListRow}), L""); };
//             c.loadSkin = SkinLoader<ListProbe>();
//             c.calls = {   // in the order of your call enum
//                 Call<ListProbe>([](ListProbe& l, ScriptReader& in) { l.SetCurSel(static_cast<int>(ReadValue(in))); }),
//             };
//             c.invariants = {Promise<ListProbe>("the selection left the rows", &ListProbe::SelectionInRange)};
//             return c;
//         }
//         }  // namespace
//
//         STORM_FAMILY("lists", ListBox());
//
//  3. Add seeds that play the controls (fuzz/seeds.cpp, with your slot and call names).
//
// A call reads its own arguments from the script; a reader past the end reads zeros, so a
// call never fails for lack of input. Calls and hooks run while the control's window may
// be gone (the storm destroys and recreates at will): that is part of what is tested.
#pragma once

#include <afxwin.h>

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "skin_files.h"
#include "storm_script.h"

namespace storm {

using StormCall = std::function<void(CWnd& control, ScriptReader& in)>;

// A promise of the class: `holds` is asked after every operation, whether or not the
// control's window exists; `violation` is the finding's text when it does not hold.
struct StormInvariant {
    const char* violation;
    std::function<bool(CWnd& control)> holds;
};

// A move as the script gives it: the four numbers, and the same scaled down into a
// rectangle for the overloads that take one (a CRect of extreme values would overflow its
// own arithmetic).
struct StormMove {
    int x, y, width, height;
    BOOL repaint;
    bool asRect;  // the script asks for the class's rectangle overload
    CRect rect;
};

// One control of the host.
struct StormControl {
    uint8_t slot = kControlCount;  // its Control enumerator
    const char* name = "";
    RECT place{};                   // where the host puts it
    // A new object without a window.
    std::function<std::unique_ptr<CWnd>()> make;
    // Creates the window in `place` on `host` with identifier `id` and sets what a host sets
    // once (styles, auto-repeat); the storm then calls `skin`.
    std::function<void(CWnd& control, CWnd& host, const RECT& place, UINT id)> create;
    // Loads the control's usual skin (also a reaction from inside a notification).
    std::function<void(CWnd& control)> skin;
    // LoadSkin(skin, reserved); empty for a class without one.
    std::function<void(CWnd& control, const CString& skin, const CString& reserved)> loadSkin;
    std::vector<StormCall> calls;
    std::vector<StormInvariant> invariants;
    // The class's own forms of operations it redeclares (they hide CWnd's, not override
    // them); left empty, registration fills in the CWnd operation.
    std::function<void(CWnd& control, const StormMove& move)> move;
    std::function<void(CWnd& control, int command)> show;
    std::function<void(CWnd& control, BOOL enable)> enable;
    std::function<void(CWnd& control, const CString& text)> setText;
};

struct StormFamily {
    const char* name;
    std::vector<StormControl> controls;
};

// The registered controls by slot (null for a slot nobody filled).
inline std::vector<const StormControl*>& Slots() {
    static std::vector<const StormControl*> slots(kControlCount, nullptr);
    return slots;
}

// Keeps the family and puts its controls into their slots; a slot filled twice or out of
// range is a mistake in the fuzzer and stops it at start-up.
inline bool RegisterFamily(StormFamily family) {
    static std::vector<std::unique_ptr<StormFamily>> families;
    for (StormControl& control : family.controls) {
        if (!control.move)
            control.move = [](CWnd& w, const StormMove& m) { w.MoveWindow(m.x, m.y, m.width, m.height, m.repaint); };
        if (!control.show) control.show = [](CWnd& w, int command) { w.ShowWindow(command); };
        if (!control.enable) control.enable = [](CWnd& w, BOOL enable) { w.EnableWindow(enable); };
        if (!control.setText) control.setText = [](CWnd& w, const CString& text) { w.SetWindowText(text); };
    }
    families.push_back(std::make_unique<StormFamily>(std::move(family)));
    for (const StormControl& control : families.back()->controls) {
        if (control.slot >= kControlCount || Slots()[control.slot] || !control.make || !control.create) {
            std::fprintf(stderr, "fuzz_message_storm: family %s: control %s has a bad or taken slot or no creator\n",
                         families.back()->name, control.name);
            std::abort();
        }
        Slots()[control.slot] = &control;
    }
    return true;
}

#define STORM_FAMILY_CONCAT2(a, b) a##b
#define STORM_FAMILY_CONCAT(a, b) STORM_FAMILY_CONCAT2(a, b)
// Registers a family at start-up: STORM_FAMILY("name", control, control, ...).
#define STORM_FAMILY(name, ...)                                                    \
    [[maybe_unused]] static const bool STORM_FAMILY_CONCAT(stormFamily, __LINE__) = \
        ::storm::RegisterFamily(::storm::StormFamily{name, {__VA_ARGS__}})

// ---- typed helpers ---------------------------------------------------------------------------

template <class T>
T& As(CWnd& control) {
    return static_cast<T&>(control);
}

template <class T>
StormControl MakeControl(uint8_t slot, const char* name, RECT place) {
    StormControl c;
    c.slot = slot;
    c.name = name;
    c.place = place;
    c.make = [] { return std::unique_ptr<CWnd>(new T); };
    return c;
}

template <class T, class F>
StormCall Call(F f) {
    return [f](CWnd& control, ScriptReader& in) { f(As<T>(control), in); };
}

template <class T>
StormInvariant Promise(const char* violation, bool (T::*holds)() const) {
    return {violation, [holds](CWnd& control) { return (As<T>(control).*holds)(); }};
}

template <class T>
std::function<void(CWnd&, const CString&, const CString&)> SkinLoader() {
    return [](CWnd& control, const CString& skin, const CString& reserved) { As<T>(control).LoadSkin(skin, reserved); };
}

// ---- reading arguments -------------------------------------------------------------------------

inline constexpr long kValues[] = {0,        1,           -1,          2,           5,           10,      20,
                                   50,       99,          100,         101,         255,         1000,    65535,
                                   65536,    -100,        INT_MAX,     INT_MIN,     INT_MAX - 1, INT_MIN + 1,
                                   LONG_MAX, LONG_MIN,    LONG_MAX - 1, LONG_MIN + 1, 1L << 32, -(1L << 32)};

// An "extreme" value: a pick of kValues, or kRawValue and a raw 64-bit value.
inline long ReadValue(ScriptReader& in) {
    const uint8_t pick = in.U8();
    if (pick == kRawValue) return static_cast<long>(in.I64());
    return kValues[pick % std::size(kValues)];
}

inline constexpr int kCoords[] = {0, -1, 1, 5, 20, 40, 76, 78, 100, 300, -300, 2000, 1 << 20, -(1 << 20), INT_MAX, INT_MIN};

inline int ReadCoord(ScriptReader& in) {
    const uint8_t pick = in.U8();
    if (pick == kRawValue) return in.I32();
    return kCoords[pick % std::size(kCoords)];
}

inline constexpr int kHeights[] = {0, 1, -1, 12, 18, 25, -25, 100, 1000, -1000, 100000, INT_MAX, INT_MIN};

// A font height.
inline int ReadHeight(ScriptReader& in) {
    const uint8_t pick = in.U8();
    if (pick == kRawValue) return in.I32();
    return kHeights[pick % std::size(kHeights)];
}

// Identifiers 1..kDrawnCount name the generated images; the rest name nothing, and a
// raw value tests that only the low 16 bits count.
inline UINT ReadId(ScriptReader& in) {
    const uint8_t pick = in.U8();
    if (pick == kRawValue) return static_cast<UINT>(in.I32());
    return pick % (kDrawnCount + 8);
}

inline HINSTANCE ReadModule(ScriptReader& in) {
    switch (in.Pick(3)) {
        case 0: return nullptr;  // the current resource handle, which holds no bitmaps
        case 1: return Skins().module;
        default: return reinterpret_cast<HINSTANCE>(static_cast<uintptr_t>(0x5A5A0000u | in.U8()));  // forged
    }
}

inline CString FromUtf8(const std::string& bytes) { return CString(bytes.data(), static_cast<int>(bytes.size())); }

inline CString ReadSkinString(ScriptReader& in) {
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

// A well-formed skin string of generated files, each followed by "|".
inline CString JoinSkin(std::initializer_list<int> files) {
    CString skin;
    for (int f : files) (skin += Skins().Path(f)) += L"|";
    return skin;
}

// Window sizes whose off-screen frame would need more than this many pixels are cut down:
// each paint allocates and fills one, and a gigabyte frame per paint would only measure
// the machine. Sizes beyond the platform's bitmap limit stay, since they test how the
// controls live with a failed allocation.
inline constexpr int64_t kMaxFramePixels = int64_t{4} << 20;
inline constexpr int64_t kBitmapLimitPixels = int64_t{1} << 28;

inline void BoundFrame(int& width, int& height) {
    const int64_t w = std::llabs(static_cast<int64_t>(width)), h = std::llabs(static_cast<int64_t>(height));
    if (w * h > kMaxFramePixels && w * h <= kBitmapLimitPixels) height = static_cast<int>(kMaxFramePixels / w);
}

}  // namespace storm
