#include "screens/buttons_screen.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "host/placeholder.h"
#include "resource.h"  // generated with the skin
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

// Push buttons: the rectangles include the 21-pixel caption strip the button keeps below
// itself, so the windows come out at the 78 x 76 that gets stepped corners.
constexpr RECT kCooler{24, 100, 102, 197};
constexpr RECT kWarmer{262, 100, 340, 197};
constexpr RECT kDisabled{368, 100, 446, 197};
constexpr RECT kTemperature{102, 100, 262, 176};
constexpr RECT kRound{496, 102, 568, 174};
constexpr RECT kRoundReadout{588, 100, 776, 176};
constexpr RECT kTextButtons[] = {{24, 246, 204, 306}, {216, 246, 396, 306}, {408, 246, 588, 306}};
constexpr RECT kSourceReadout{604, 246, 776, 306};
constexpr RECT kShuffle{24, 350, 304, 398};
constexpr RECT kRepeat{320, 350, 600, 398};
constexpr RECT kChecksReadout{24, 402, 776, 430};

struct Section {
    const wchar_t* text;
    RECT box;
};
constexpr Section kSections[] = {
    {L"PUSH BUTTONS  \u00B7  HOLD TO REPEAT", {24, 72, 460, 96}},
    {L"SHAPED BUTTON  \u00B7  ROUND FACE", {496, 72, 776, 96}},
    {L"TEXT BUTTONS  \u00B7  SOURCE", {24, 218, 776, 242}},
    {L"CHECK BOXES", {24, 322, 776, 346}},
};

constexpr int kMinHalfDegrees = 32, kMaxHalfDegrees = 60;  // 16 to 30 degrees

CString SkinFile(const SkinSource& skin, const char* piece) { return CString(skin.Path(piece).c_str()); }

CString SkinList(const SkinSource& skin, std::initializer_list<const char*> pieces) {
    CString list;
    for (const char* piece : pieces) list += SkinFile(skin, piece) + L"|";
    return list;
}

std::wstring Temperature(int halfDegrees) {
    wchar_t text[32];
    std::swprintf(text, sizeof text / sizeof text[0], L"%d.%d \u00B0C", halfDegrees / 2, halfDegrees % 2 ? 5 : 0);
    return text;
}

}  // namespace

bool ButtonsScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    return BuildPushButtons(skin) && BuildRoundButton(skin) && BuildTextButtons() && BuildCheckBoxes(skin);
}

bool ButtonsScreen::BuildPushButtons(const SkinSource& skin) {
    CWnd* parent = CWnd::FromHandle(host_);
    const DWORD style = WS_CHILD | WS_VISIBLE | BS_OWNERDRAW;
    if (!cooler_.Create(L"", style, kCooler, parent, kCoolerId, true) ||
        !warmer_.Create(L"", style, kWarmer, parent, kWarmerId, true) ||
        !disabled_.Create(L"", style, kDisabled, parent, kDisabledId, true))
        return false;
    cooler_.LoadSkin(SkinList(skin, {"button_minus_normal", "button_minus_focus", "button_minus_pressed",
                                     "button_minus_disabled"}),
                     L"");
    warmer_.LoadBitmaps(SkinFile(skin, "button_plus_normal"), SkinFile(skin, "button_plus_focus"),
                        SkinFile(skin, "button_plus_pressed"), SkinFile(skin, "button_plus_disabled"));
    disabled_.LoadSkin(SkinList(skin, {"button_next_normal", "button_next_focus", "button_next_pressed",
                                       "button_next_disabled"}),
                       L"");
    cooler_.SetAutoClick(true);
    warmer_.SetAutoClick(true);
    disabled_.EnableWindow(FALSE);
    return true;
}

// The round button's window takes the shape of its skin: taps beside the disc fall
// through to the host.
bool ButtonsScreen::BuildRoundButton(const SkinSource& skin) {
    if (!round_.Create(L"", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, kRound, CWnd::FromHandle(host_), kRoundId))
        return false;
    round_.LoadBitmaps(IDB_ROUND_PLAY_NORMAL, IDB_ROUND_PLAY_FOCUS, IDB_ROUND_PLAY_PRESSED, IDB_ROUND_PLAY_DISABLED,
                       skin.module);
    return true;
}

// The first is a BUTTON child made beforehand, taken over as a dialog takes over its
// template's buttons; the skins come from the application's resource handle.
bool ButtonsScreen::BuildTextButtons() {
    const RECT& first = kTextButtons[0];
    HWND plain = CreateWindowExW(0, L"BUTTON", L"Radio", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, first.left, first.top,
                                 first.right - first.left, first.bottom - first.top, host_,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(kRadioId)), nullptr, nullptr);
    if (!plain || !radio_.SubclassWindow(plain)) return false;
    CWnd* parent = CWnd::FromHandle(host_);
    if (!media_.Create(L"Media", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, kTextButtons[1], parent, kMediaId) ||
        !phone_.Create(L"Phone", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, kTextButtons[2], parent, kPhoneId))
        return false;
    for (CBmpTextButton* b : {&radio_, &media_, &phone_}) {
        b->LoadBitmaps(IDB_TEXTBUTTON_NORMAL, IDB_TEXTBUTTON_FOCUS, IDB_TEXTBUTTON_PRESSED, nullptr);
        b->SetFont(20, 20, kText, RGB(255, 255, 255));
    }
    return true;
}

bool ButtonsScreen::BuildCheckBoxes(const SkinSource& skin) {
    if (!shuffle_.Create(nullptr, L"Shuffle", WS_CHILD | WS_VISIBLE, kShuffle, CWnd::FromHandle(host_), kShuffleId))
        return false;
    shuffle_.LoadSkin(SkinList(skin, {"check_checked", "check_unchecked", "check_back"}), L"");
    HWND plain = CreatePlaceholder(host_, kRepeatId, kRepeat, L"Repeat all");
    if (!plain || !repeat_.SubclassWindow(plain)) return false;
    repeat_.LoadBitmapW(SkinFile(skin, "check_checked"), SkinFile(skin, "check_unchecked"),
                        SkinFile(skin, "check_back"));
    repeat_.SetCheck(1);
    for (CZELChkBox* box : {&shuffle_, &repeat_}) box->SetFont(20, L"Tahoma", kText);
    return true;
}

void ButtonsScreen::Invalidate(const RECT& area) const { ContentChanged(host_, area); }

void ButtonsScreen::Heard(UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_COMMAND) return;
    switch (LOWORD(wParam)) {
        case kCoolerId:
        case kWarmerId: {
            const int step = LOWORD(wParam) == kWarmerId ? 1 : -1;
            halfDegrees_ = std::clamp(halfDegrees_ + step, kMinHalfDegrees, kMaxHalfDegrees);
            Invalidate(kTemperature);
            break;
        }
        case kRoundId:
            ++roundTaps_;
            Invalidate(kRoundReadout);
            break;
        case kRadioId: source_ = L"Radio"; Invalidate(kSourceReadout); break;
        case kMediaId: source_ = L"Media"; Invalidate(kSourceReadout); break;
        case kPhoneId: source_ = L"Phone"; Invalidate(kSourceReadout); break;
        case kShuffleId:
        case kRepeatId: Invalidate(kChecksReadout); break;
        default: break;
    }
}

void ButtonsScreen::Paint(HDC frame) {
    for (const Section& s : kSections) DrawLabel(frame, s.text, s.box, sectionFont_, kTextDim);

    DrawLabel(frame, Temperature(halfDegrees_), kTemperature, valueFont_, kText, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    const std::pair<const CZELButton*, const wchar_t*> captions[] = {
        {&cooler_, L"Cooler"}, {&warmer_, L"Warmer"}, {&disabled_, L"Disabled"}};
    for (const auto& [button, text] : captions)
        DrawLabel(frame, text, button->m_rcCaption, captionFont_, button == &disabled_ ? kTextDisabled : kTextDim,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE);

    std::wstring taps = roundTaps_ == 1 ? L"Pressed once" : L"Pressed " + std::to_wstring(roundTaps_) + L" times";
    DrawLabel(frame, taps, kRoundReadout, textFont_, kText);
    DrawLabel(frame, std::wstring(L"Source: ") + source_, kSourceReadout, textFont_, kAccentLight,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE);

    std::wstring checks = std::wstring(L"Shuffle ") + (shuffle_.GetCheck() ? L"on" : L"off") + L"   \u00B7   Repeat all " +
                          (repeat_.GetCheck() ? L"on" : L"off");
    DrawLabel(frame, checks, kChecksReadout, captionFont_, kTextDim);
}

}  // namespace zel::demo
