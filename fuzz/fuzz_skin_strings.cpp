// Feeds arbitrary skin strings to the LoadSkin of every control kind (one kind an input,
// fresh, with and without a window), and checks the splitting rule they all share: SplitSkinList gives one piece per "|", no
// piece holds a "|" or starts or ends with white space, and each piece comes from its own
// stretch of the string.
//
// Input: one mode byte, then the string. Mode bit 0 set: the rest is raw 32-bit code
// units (any value: surrogates, beyond U+10FFFF, negative, NUL). Clear: the rest is UTF-8
// in which byte 0x01 followed by n stands for the path of generated skin file n, and byte
// 0x02 followed by n repeats the previous character 64 x n times (very long pieces). The
// text stops at kMaxText characters, enough for a piece past PATH_MAX: longer text only
// costs time (a string of 16 000 bars took 10 to 20 ms an input, against 0.3 ms for a
// usual one, and such strings were a twentieth of the inputs but most of the time).
// Mode bit 1 gives the reserved second string the same text. The mode byte's bits 2 and up
// pick the control that loads the string: (mode >> 2) % 10 is the button, the check box,
// the scroll bar, the slider, the combo box, the label, the list control, the play list,
// the date spinner or the time and date spinners (Kind).
#include <afxwin.h>
#include <zel/debug.h>
#include <zel/desktop.h>

#include <algorithm>
#include <cwchar>
#include <string>
#include <string_view>
#include <vector>

#include "CZELButton.h"
#include "CZELChkBox.h"
#include "CZELComBox.h"
#include "CZELDate.h"
#include "CZELLable.h"
#include "CZELListCtrl.h"
#include "CZELPlayList.h"
#include "CZELScrollbar.h"
#include "CZELSlider.h"
#include "CZELTimeDate.h"
#include "SkinList.h"
#include "control_fuzzing.h"
#include "skin_files.h"

namespace {

constexpr const char* kName = "fuzz_skin_strings";

// The white space CString::Trim removes.
bool IsTrimmed(WCHAR c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

constexpr int kMaxText = 4096 + 64;

CString Decode(const uint8_t* data, size_t size, bool wide) {
    CString text;
    if (wide) {
        for (size_t i = 0; i + 4 <= size; i += 4) {
            uint32_t unit = 0;
            for (int b = 0; b < 4; ++b) unit |= static_cast<uint32_t>(data[i + b]) << (8 * b);
            text.AppendChar(static_cast<WCHAR>(unit));
        }
        return text.GetLength() > kMaxText ? text.Left(kMaxText) : text;
    }
    std::string utf8;
    auto flush = [&] {
        text += CString(utf8.data(), static_cast<int>(utf8.size()));
        utf8.clear();
    };
    for (size_t i = 0; i < size; ++i) {
        if ((data[i] == 1 || data[i] == 2) && i + 1 < size) {
            flush();
            const uint8_t n = data[++i];
            if (data[i - 1] == 1) {
                text += storm::Skins().Path(n % storm::kFileCount);
            } else if (text.GetLength() > 0) {
                text += CString(text[text.GetLength() - 1], std::clamp(kMaxText - text.GetLength(), 0, 64 * n));
            }
            continue;
        }
        utf8.push_back(static_cast<char>(data[i]));
    }
    flush();
    return text.GetLength() > kMaxText ? text.Left(kMaxText) : text;
}

void CheckSplit(const CString& skin) {
    CStringArray pieces;
    pieces.Add(L"left over from before");  // the split starts from an empty list
    zelctl::SplitSkinList(skin, pieces);
    int bars = 0;
    const LPCWSTR end = skin.GetString() + skin.GetLength();
    for (LPCWSTR at = skin.GetString(); (at = std::wmemchr(at, L'|', static_cast<size_t>(end - at))); ++at) ++bars;
    if (pieces.GetSize() != bars) fuzzing::Finding(kName, "piece count differs from the number of bars");
    int start = 0;
    for (INT_PTR i = 0; i < pieces.GetSize(); ++i) {
        const CString& piece = pieces[i];
        if (piece.Find(L'|') >= 0) fuzzing::Finding(kName, "a piece holds a bar");
        if (piece.GetLength() > 0 && (IsTrimmed(piece[0]) || IsTrimmed(piece[piece.GetLength() - 1])))
            fuzzing::Finding(kName, "a piece is not trimmed");
        const int bar = skin.Find(L'|', start);
        const std::wstring_view stretch(skin.GetString() + start, static_cast<size_t>(bar - start));
        if (stretch.find(std::wstring_view(piece.GetString(), static_cast<size_t>(piece.GetLength()))) ==
            std::wstring_view::npos)
            fuzzing::Finding(kName, "a piece is not part of its own stretch of the string");
        start = bar + 1;
    }
}

class Host : public CWnd {
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_ERASEBKGND) return 1;
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

// One host for every input (made once: a host and a desktop reset per input cost more
// than the loads), on a screen of its size.
constexpr int kHostSize = 200;

Host& TheHost() {
    static Host* host = [] {
        auto* h = new Host;
        h->CreateEx(0, nullptr, L"host", WS_POPUP | WS_VISIBLE, 0, 0, kHostSize, kHostSize, nullptr, nullptr);
        return h;
    }();
    return *host;
}

// Every window below the desktop.
int LiveWindows() {
    std::vector<HWND> all;
    zel::user::PreOrder(zel::user::Desktop(), all);
    return static_cast<int>(all.size()) - 1;
}

// The controls that take a skin string. The mode byte picks one kind per input, which
// loads the string into a fresh control without a window (the parsing, the file loads, the
// pieces kept) and, for the first five kinds, into a fresh one with a window on the host
// too (its layout, the paint with the new pieces, the combo box's open list). Every kind
// on every input cost five times as much, and the kinds share nothing but the splitting
// rule, which every input checks itself; the fuzzer meets the kinds one at a time and
// keeps what each finds.
enum Kind {
    kButton, kCheckBox, kScrollBar, kSlider, kComboBox,
    // These load without a window only: each needs a host of its own kind around it (a
    // dialog item to subclass, spinner children), which the message storm builds.
    kLabel, kListCtrl, kPlayList, kDate, kTimeDate,
    kKinds
};

// Runs the loop until idle (the paints); a loop that does not settle is a finding.
void Settle(const char* after) {
    zel::Desktop::Get().RunUntilIdle();
    fuzzing::CheckLoopSettled(kName, after);
}

// The string into a fresh control without a window, then into a fresh one that `create`
// puts on the host, painted; `then` does what the kind does more with its pieces.
template <class Control, class Create, class Then>
void LoadBoth(const CString& skin, const CString& reserved, Create create, Then then) {
    Control().LoadSkin(skin, reserved);
    Control control;
    create(control, TheHost());
    control.LoadSkin(skin, reserved);
    Settle("loading a skin");
    then(control);
}

void LoadKind(Kind kind, const CString& skin, const CString& reserved) {
    const auto nothing = [](auto&) {};
    switch (kind) {
        case kButton:
            return LoadBoth<CZELButton>(
                skin, reserved,
                [](CZELButton& c, CWnd& host) {
                    c.Create(L"", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, CRect(0, 0, 78, 76), &host, 1, false);
                },
                nothing);
        case kCheckBox:
            return LoadBoth<CZELChkBox>(
                skin, reserved,
                [](CZELChkBox& c, CWnd& host) {
                    c.Create(nullptr, L"caption", WS_CHILD | WS_VISIBLE, CRect(80, 0, 180, 30), &host, 2);
                },
                nothing);
        case kScrollBar:
            return LoadBoth<CZELScrollbar>(
                skin, reserved,
                [](CZELScrollbar& c, CWnd& host) {
                    c.Create(L"VSCrollBar", WS_CHILD | WS_VISIBLE, CRect(0, 80, 20, 180), &host, 3);
                },
                nothing);
        case kSlider:
            return LoadBoth<CZELSlider>(
                skin, reserved,
                [](CZELSlider& c, CWnd& host) {
                    c.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(30, 80, 190, 100), &host, 4);
                },
                nothing);
        case kComboBox:
            return LoadBoth<CZELComBox>(
                skin, reserved,
                [](CZELComBox& c, CWnd& host) {
                    c.Create(WS_CHILD | WS_VISIBLE, CRect(0, 110, 150, 140), &host, 5);
                    c.AddString(L"one");
                    c.AddString(L"two");
                },
                [](CZELComBox& c) {
                    c.ShowDropDown(TRUE);  // the open list paints rows and the bar from the same skin
                    Settle("opening the combo box's list");
                });
        case kLabel:
            return CZELLable().LoadSkin(skin, reserved);
        case kListCtrl:
            return CZELListCtrl().LoadSkin(skin, reserved);
        case kPlayList:
            return CZELPlayList().LoadSkin(skin, reserved);
        // The date spinners take a folder and a list of names in it: the string is the list.
        case kDate:
            return CZELDate().LoadSkin(reserved, skin);
        case kTimeDate:
            return CZELTimeDate().LoadSkin(reserved, skin);
        case kKinds:
            break;
    }
}

}  // namespace

extern "C" const char* __asan_default_options() { return fuzzing::kAsanDefaults; }

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::TheOutput();
    zel::DesktopConfig config;
    config.width = config.height = kHostSize;
    zel::Desktop::Get().Reset(config);
    storm::Skins();
    TheHost();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    fuzzing::QuietInput quiet;
    const uint8_t mode = data[0];
    const CString skin = Decode(data + 1, size - 1, mode & 1);
    CheckSplit(skin);
    const zel::GdiCounts before = zel::LiveGdiObjects();
    const int windowsBefore = LiveWindows();
    const CString reserved = mode & 2 ? skin : CString();
    LoadKind(static_cast<Kind>((mode >> 2) % kKinds), skin, reserved);
    zel::Desktop::Get().RunUntilIdle();  // the host's area where the controls were
    CWnd::DeleteTempMap();
    fuzzing::CheckGdiBalance(kName, before);
    if (LiveWindows() != windowsBefore)
        fuzzing::Finding(kName, "windows left after the controls were destroyed: " +
                                    std::to_string(LiveWindows() - windowsBefore));
    return 0;
}
