#include "screens/clock_screen.h"

#include <cstdio>
#include <string>

#include "host/placeholder.h"
#include "resource.h"  // generated with the skin
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr UINT_PTR kReadoutTimer = 31;

// The time-and-date controls size themselves from the skin: the date is 202 x 130
// (66 + 2 x (48 + 12 + 8)), the clock 110 x 130 (6 + 8 + 2 x 48).
constexpr RECT kDate{24, 104, 226, 234};
constexpr RECT kDateReadout{234, 104, 396, 234};
constexpr RECT kClock{404, 104, 514, 234};
constexpr RECT kClockReadout{534, 104, 776, 234};
constexpr RECT kDatePicker{24, 290, 148, 312};
constexpr RECT kTimePicker{172, 290, 296, 312};
constexpr RECT kTimeField{320, 290, 384, 310};
constexpr RECT kPickerReadout{404, 284, 776, 318};
constexpr RECT kFormat{24, 372, 264, 412};
constexpr RECT kFormatReadout{284, 372, 776, 412};

struct Section {
    const wchar_t* text;
    RECT box;
};
constexpr Section kSections[] = {
    {L"DATE  \u00B7  THE DAY FOLLOWS THE MONTH", {24, 72, 380, 96}},
    {L"CLOCK  \u00B7  RUNNING", {404, 72, 776, 96}},
    {L"PICKERS  \u00B7  TAP A FIELD, THEN UP / DOWN", {24, 258, 776, 282}},
    {L"TIME FORMAT", {24, 340, 776, 364}},
};

constexpr const char* kSpinPieces[] = {"spin_add_normal", "spin_add_focus", "spin_add_pressed",
                                       "spin_def_normal", "spin_def_focus", "spin_def_pressed",
                                       "spin_back",       "spin_frame",     "spin_box"};

CString Folder(const SkinSource& skin) { return CString((skin.bitmapDir + "/").c_str()); }

// The spinner's nine names, then the time-and-date control's dash and colon.
CString SpinNames(bool separators) {
    CString names;
    for (const char* piece : kSpinPieces) names += CString(piece) + L".bmp|";
    if (separators) names += L"spin_dash.bmp|spin_colon.bmp|";
    return names;
}

std::wstring Format(const wchar_t* format, int a, int b, int c) {
    wchar_t text[64];
    std::swprintf(text, sizeof text / sizeof text[0], format, a, b, c);
    return text;
}

}  // namespace

bool ClockScreen::Build(HWND host, const SkinSource& skin) {
    host_ = host;
    if (!BuildSpinners(skin) || !BuildPickers(skin)) return false;
    SetTimer(host_, kReadoutTimer, 500, nullptr);
    return true;
}

// The date is taken over from a plain child (its spinners are made as it is subclassed);
// the clock is created. The clock's separator room is fixed when its skin loads, so it
// becomes a clock first.
bool ClockScreen::BuildSpinners(const SkinSource& skin) {
    HWND plain = CreatePlaceholder(host_, kDateId, kDate);
    if (!plain || !date_.SubclassWindow(plain)) return false;
    date_.LoadSkin(Folder(skin), SpinNames(true));

    if (!clock_.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kClock, CWnd::FromHandle(host_), kClockId)) return false;
    clock_.SetStyle(1);
    clock_.LoadSkin(Folder(skin), SpinNames(true));

    if (!format_.Create(L"Format", WS_CHILD | WS_VISIBLE, kFormat, CWnd::FromHandle(host_), kFormatId)) return false;
    format_.SetVStyle(false);
    for (const wchar_t* s : {L"24-hour", L"12-hour", L"Automatic"}) format_.InsertStr(s);
    format_.LoadSkin(Folder(skin), SpinNames(false));
    format_.MoveWindow(CRect(kFormat), true);
    format_.SetTextCol(kText);
    return true;
}

bool ClockScreen::BuildPickers(const SkinSource& skin) {
    HWND plain = CreatePlaceholder(host_, kDatePickerId, kDatePicker);
    if (!plain || !datePicker_.SubclassWindow(plain)) return false;
    CWnd* parent = CWnd::FromHandle(host_);
    if (!timePicker_.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kTimePicker, parent, kTimePickerId) ||
        !timeField_.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kTimeField, parent, kTimeFieldId))
        return false;
    timePicker_.SetStyle(1);
    timePicker_.SetAutoUpdate(TRUE);
    timeField_.SetStyle(1);
    timeField_.SetAutoUpdate(TRUE);
    timeField_.LoadBitmapW(IDB_TIMEFIELD_BACK, skin.module);
    return true;
}

void ClockScreen::Paint(HDC frame) {
    for (const Section& s : kSections) DrawLabel(frame, s.text, s.box, sectionFont_, kTextDim);

    SYSTEMTIME date{}, clock{}, picked{};
    date_.GetTime(&date);
    clock_.GetTime(&clock);
    datePicker_.GetTime(&picked);
    DrawLabel(frame, Format(L"%04d-%02d-%02d", date.wYear, date.wMonth, date.wDay), kDateReadout, valueFont_, kText,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    DrawLabel(frame, Format(L"%02d:%02d:%02d", clock.wHour, clock.wMinute, clock.wSecond), kClockReadout, valueFont_,
              kText, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    DrawLabel(frame, Format(L"Picked: %d-%02d-%02d", picked.wYear, picked.wMonth, picked.wDay), kPickerReadout,
              textFont_, kTextDim);
    CString format;
    format_.GetCurValue(format);
    DrawLabel(frame, std::wstring(L"Clock shown as ") + format.GetString(), kFormatReadout, textFont_, kTextDim);
}

void ClockScreen::Heard(UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_COMMAND) return;
    switch (LOWORD(wParam)) {
        case kDateId: InvalidateRect(host_, &kDateReadout, FALSE); break;
        case kClockId: InvalidateRect(host_, &kClockReadout, FALSE); break;
        case kFormatId: InvalidateRect(host_, &kFormatReadout, FALSE); break;
        default: break;
    }
}

// The clock tells its parent only about steps; its running seconds and the picker edits
// are read back twice a second.
void ClockScreen::Timer(UINT_PTR id) {
    if (id != kReadoutTimer) return;
    InvalidateRect(host_, &kClockReadout, FALSE);
    InvalidateRect(host_, &kPickerReadout, FALSE);
}

}  // namespace zel::demo
