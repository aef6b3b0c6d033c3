#include "screens/clock_screen.h"

#include <cstdio>
#include <iterator>
#include <string>

#include "resource.h"  // generated with the skin
#include "screens/dialogs.h"
#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr UINT_PTR kReadoutTimer = 31;

// What the dialog paints itself, in its client coordinates (pixels; the dialog's top is
// the host's row 56). The readouts stand beside their controls.
constexpr RECT kDateReadout{234, 48, 396, 178};
constexpr RECT kClockReadout{534, 48, 776, 178};
constexpr RECT kPickerReadout{404, 228, 776, 262};
constexpr RECT kFormatReadout{284, 316, 776, 356};

struct Section {
    UINT title;
    RECT box;
};
constexpr Section kSections[] = {
    {IDS_CLOCK_DATE, {24, 16, 380, 40}},
    {IDS_CLOCK_RUNNING, {404, 16, 776, 40}},
    {IDS_CLOCK_PICKERS, {24, 202, 776, 226}},
    {IDS_CLOCK_FORMAT, {24, 284, 776, 308}},
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

bool SameClock(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    return a.wHour == b.wHour && a.wMinute == b.wMinute && a.wSecond == b.wSecond;
}

bool SameDay(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    return a.wYear == b.wYear && a.wMonth == b.wMonth && a.wDay == b.wDay;
}

std::wstring Format(const wchar_t* format, int a, int b, int c) {
    wchar_t text[64];
    std::swprintf(text, sizeof text / sizeof text[0], format, a, b, c);
    return text;
}

}  // namespace

bool ClockScreen::Build(HWND host, const SkinSource& skin) {
    dialog_ = std::make_unique<ClockDialog>(skin);
    return dialog_->Open(host);
}

// The host redraws its frame where its content changed (the frame clipped to that); the
// screen's content there is the dialog's, so the dialog is told the same.
void ClockScreen::Paint(HDC frame) {
    if (!dialog_ || !::IsWindow(dialog_->m_hWnd)) return;
    const HWND dialog = dialog_->m_hWnd;
    RECT place, clip, changed;
    ::GetWindowRect(dialog, &place);
    ::MapWindowPoints(nullptr, ::GetParent(dialog), reinterpret_cast<POINT*>(&place), 2);
    if (::GetClipBox(frame, &clip) <= NULLREGION || !::IntersectRect(&changed, &place, &clip)) return;
    ::OffsetRect(&changed, -place.left, -place.top);
    ContentChanged(dialog, changed);
}

void ClockScreen::Pause() {
    if (dialog_) dialog_->Pause();
}

void ClockScreen::Resume() {
    if (dialog_) dialog_->Resume();
}

BEGIN_MESSAGE_MAP(ClockDialog, ScreenDialog)
    ON_BN_CLICKED(IDC_CLOCK_DATE, &ClockDialog::OnDateStep)
    ON_BN_CLICKED(IDC_CLOCK_CLOCK, &ClockDialog::OnClockStep)
    ON_BN_CLICKED(IDC_CLOCK_FORMAT, &ClockDialog::OnFormatStep)
    ON_WM_TIMER()
END_MESSAGE_MAP()

ClockDialog::ClockDialog(const SkinSource& skin) : ScreenDialog(IDD_CLOCK, skin) {}

// The time-and-date controls make their spinners as they take over their items.
void ClockDialog::DoDataExchange(CDataExchange* dx) {
    ScreenDialog::DoDataExchange(dx);
    DDX_Control(dx, IDC_CLOCK_DATE, date_);
    DDX_Control(dx, IDC_CLOCK_CLOCK, clock_);
    DDX_Control(dx, IDC_CLOCK_DATE_PICKER, datePicker_);
    DDX_Control(dx, IDC_CLOCK_TIME_PICKER, timePicker_);
    DDX_Control(dx, IDC_CLOCK_TIME_FIELD, timeField_);
}

// UpdateData rather than the base's OnInitDialog, whose answer says nothing of the
// exchange; controls that did not take over their items are left alone. FALSE: showing
// the screen moves the focus nowhere.
BOOL ClockDialog::OnInitDialog() {
    bool built = UpdateData(FALSE) != FALSE;
    for (size_t i = 0; i < std::size(kSections); ++i) built = titles_[i].LoadString(kSections[i].title) && built;
    if (built) {
        SkinSpinners();
        built = PlaceFormat();
        SkinPickers();
    }
    clock_.GetTime(&tickClock_);
    datePicker_.GetTime(&tickPicked_);
    SetTimer(kReadoutTimer, 500, nullptr);
    SetBuilt(built);
    return FALSE;
}

// The clock's separator room is fixed when its skin loads, so it becomes a clock first.
void ClockDialog::SkinSpinners() {
    date_.LoadSkin(Folder(skin()), SpinNames(true));
    clock_.SetStyle(1);
    clock_.LoadSkin(Folder(skin()), SpinNames(true));
}

// The string spinner makes its two buttons only when it creates its window, so it takes
// its item's place, identifier and tab position instead of the item itself.
bool ClockDialog::PlaceFormat() {
    CWnd* item = GetDlgItem(IDC_CLOCK_FORMAT);
    if (!item) return false;
    CRect place;
    item->GetWindowRect(&place);
    ScreenToClient(&place);
    const HWND before = ::GetWindow(item->m_hWnd, GW_HWNDPREV);
    const DWORD style = item->GetStyle();
    item->DestroyWindow();
    if (!format_.Create(L"Format", style, place, this, IDC_CLOCK_FORMAT)) return false;
    ::SetWindowPos(format_.m_hWnd, before ? before : HWND_TOP, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOREDRAW);
    format_.SetVStyle(false);
    for (const wchar_t* s : {L"24-hour", L"12-hour", L"Automatic"}) format_.InsertStr(s);
    format_.LoadSkin(Folder(skin()), SpinNames(false));
    format_.MoveWindow(place, true);
    format_.SetTextCol(kText);
    return true;
}

void ClockDialog::SkinPickers() {
    timePicker_.SetStyle(1);
    timePicker_.SetAutoUpdate(TRUE);
    timeField_.SetStyle(1);
    timeField_.SetAutoUpdate(TRUE);
    timeField_.LoadBitmapW(IDB_TIMEFIELD_BACK, skin().module);
}

void ClockDialog::PaintContent(HDC frame) {
    for (size_t i = 0; i < std::size(kSections); ++i)
        DrawLabel(frame, titles_[i].GetString(), kSections[i].box, sectionFont_, kTextDim);

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

void ClockDialog::OnDateStep() { Changed(kDateReadout); }
void ClockDialog::OnClockStep() { Changed(kClockReadout); }
void ClockDialog::OnFormatStep() { Changed(kFormatReadout); }

// The clock tells its parent only about steps; its running seconds and the picker edits
// are read back twice a second, and a readout is drawn again only when what it shows moved
// since the last look (a step of the clock announces itself).
void ClockDialog::OnTimer(UINT_PTR id) {
    if (id == kReadoutTimer) ReadBack();
}

void ClockDialog::Pause() {
    if (::IsWindow(m_hWnd)) KillTimer(kReadoutTimer);
}

// Read back before the first paint after the return: the running clock counted on while
// hidden, and its readout shows where it is now, not up to half a second later.
void ClockDialog::Resume() {
    if (!::IsWindow(m_hWnd)) return;
    ReadBack();
    SetTimer(kReadoutTimer, 500, nullptr);
}

void ClockDialog::ReadBack() {
    SYSTEMTIME clock{}, picked{};
    clock_.GetTime(&clock);
    datePicker_.GetTime(&picked);
    if (!SameClock(clock, tickClock_)) Changed(kClockReadout);
    if (!SameDay(picked, tickPicked_)) Changed(kPickerReadout);
    tickClock_ = clock;
    tickPicked_ = picked;
}

}  // namespace zel::demo
