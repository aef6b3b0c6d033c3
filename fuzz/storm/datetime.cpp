// The date and time controls in the message storm: the picker and the time field, each
// made with CWnd::Create and taken over from a plain child, the up-down spinner, and the
// three-spinner date and clock editor.
#include "CDataTimectrl.h"
#include "CTimeData.h"
#include "CZELDate.h"
#include "CZELTimeDate.h"
#include "storm_family.h"

namespace {

using namespace storm;

constexpr DWORD kVisibleChild = WS_CHILD | WS_VISIBLE;
constexpr UINT kMissingId = 0x7A7A;  // names no bitmap of the skin module

// The date steps re-clamp the day to its month; the picker keeps a step's outcome until
// the storm asks, since SetTime may store any day afterwards (it takes values unchecked).
template <class Base>
class Picker : public Base {
public:
    bool FieldInRange() const { return this->m_nCurField >= -1 && this->m_nCurField <= 2; }
    bool DayFitsAfterStep() const { return !dayOverran_; }

    // A year or month step made directly, as a host's own buttons make it.
    void Step(bool up) {
        const bool dateStep = IsDateStep();
        up ? this->Upkeydown() : this->DownKeyDown();
        if (dateStep) NoteStep();
    }

    // The arrow keys reach the picker here, whichever window has the focus.
    BOOL PreTranslateMessage(MSG* msg) override {
        const bool dateStep =
            msg && msg->message == WM_KEYDOWN && (msg->wParam == VK_UP || msg->wParam == VK_DOWN) && IsDateStep();
        const BOOL handled = Base::PreTranslateMessage(msg);
        if (dateStep) NoteStep();
        return handled;
    }

private:
    bool IsDateStep() const { return this->m_nStyle == 0 && (this->m_nCurField == 0 || this->m_nCurField == 1); }
    void NoteStep() {
        if (this->m_time.wDay > this->Monthdays(this->m_time.wYear, this->m_time.wMonth)) dayOverran_ = true;
    }
    bool dayOverran_ = false;
};

using PlainPicker = Picker<CDataTimectrl>;
using FieldPicker = Picker<CTimeData>;

class Spinner : public CZELDate {
public:
    bool ValueInRange() const { return m_bStrings || (m_nMin <= m_nValue && m_nValue <= m_nMax); }
};

// Watches the year and month steps pass through on their way to the parent: by then the
// day spinner must have been re-ranged to the month.
class TimeDate : public CZELTimeDate {
public:
    bool SecondsInRange() const { return m_nSecond >= 0 && m_nSecond <= 59; }
    bool DayFitsAfterStep() const { return !dayOverran_; }
    CZELDate& Spin(int i) { return m_spin[i]; }

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        const UINT id = LOWORD(wParam);
        const bool dateStep = HIWORD(wParam) == BN_CLICKED && (id == IDC_ONE || id == IDC_TWO) && m_nStyle == 0;
        const BOOL result = CZELTimeDate::OnCommand(wParam, lParam);
        if (dateStep) {
            const int year = m_spin[0].GetCurValue(), month = m_spin[1].GetCurValue();
            if (year > 0 && month > 0 &&
                m_spin[2].GetCurValue() > static_cast<int>(Monthdays(static_cast<UINT>(year), static_cast<UINT>(month))))
                dayOverran_ = true;
        }
        return result;
    }

private:
    bool dayOverran_ = false;
};

// ---- skins ----------------------------------------------------------------------------------

CString Folder() {
    const CString path = Skins().Path(kTiny);
    return path.Left(path.ReverseFind(L'/') + 1);
}

CString Name(int file) {
    const CString path = Skins().Path(file);
    return path.Mid(path.ReverseFind(L'/') + 1);
}

// add normal, focus, pressed; Def normal, focus, pressed; back, frame and box samples;
// dash and colon.
constexpr int kSpinSkin[] = {kBtnNormal, kBtnFocus, kBtnDown,  kRound,    kRoundDown, kRoundDown,
                             kChkBack,   kBarTrack, kChkOff,   kBarThumb, kSlThumb};

// The first `count` names of the skin, each followed by "|".
CString Names(int count) {
    CString names;
    for (int i = 0; i < count && i < static_cast<int>(std::size(kSpinSkin)); ++i) (names += Name(kSpinSkin[i])) += L"|";
    return names;
}

// The folder as a careless host passes it: right, empty, missing, or without its slash.
CString ReadFolder(ScriptReader& in) {
    switch (in.Pick(4)) {
        case 0: return Folder();
        case 1: return CString();
        case 2: return Folder() + L"nowhere/";
        default: return Folder().Left(Folder().GetLength() - 1);
    }
}

// The storm's skin strings go in as the names, with the folder empty or the string itself.
template <class T>
std::function<void(CWnd&, const CString&, const CString&)> NamesLoader() {
    return [](CWnd& w, const CString& skin, const CString& reserved) { As<T>(w).LoadSkin(reserved, skin); };
}

// ---- arguments ------------------------------------------------------------------------------

SYSTEMTIME ReadTime(ScriptReader& in) {
    SYSTEMTIME t{};
    for (WORD* field : {&t.wYear, &t.wMonth, &t.wDayOfWeek, &t.wDay, &t.wHour, &t.wMinute, &t.wSecond, &t.wMilliseconds})
        *field = in.U16();
    return t;
}

// A window rectangle's size without overflow, for the plain child a host makes itself.
int Extent(LONG from, LONG to) {
    const int64_t d = int64_t{to} - from;
    return static_cast<int>(d > INT_MAX ? INT_MAX : d < INT_MIN ? INT_MIN : d);
}

// ---- the pickers ----------------------------------------------------------------------------

template <class P>
std::vector<StormCall> PickerCalls() {
    return {
        Call<P>([](P& p, ScriptReader& in) {
            SYSTEMTIME t = ReadTime(in);
            p.SetTime(in.U8() & 1 ? nullptr : &t);
            p.SetTime(static_cast<const CTime*>(nullptr));
            if (in.U8() & 1 && ::IsWindow(p.m_hWnd)) p.Invalidate();
        }),
        Call<P>([](P& p, ScriptReader& in) {
            p.SetStyle(static_cast<int>(ReadValue(in)));
            (void)p.GetSyle();
        }),
        Call<P>([](P& p, ScriptReader& in) { p.SetAutoUpdate(in.U8() & 1); }),
        Call<P>([](P& p, ScriptReader& in) {
            for (uint8_t n = in.U8() % 16; n && !in.Done(); --n) {
                switch (in.Pick(4)) {
                    case 0: p.LeftKeydown(); break;
                    case 1: p.RightKey(); break;
                    case 2: p.Step(true); break;
                    default: p.Step(false); break;
                }
            }
        }),
        Call<P>([](P& p, ScriptReader& in) {
            SYSTEMTIME t{};
            p.GetTime(in.U8() & 1 ? nullptr : &t);
            (void)p.Monthdays(t.wYear, t.wMonth);
        }),
        Call<P>([](P& p, ScriptReader& in) {
            if constexpr (std::is_base_of_v<CTimeData, P>) {
                const UINT id = in.U8() & 1 ? kChkBack + 1 : kMissingId;
                p.LoadBitmapW(id, ReadModule(in));
            }
        }),
        Call<P>([](P& p, ScriptReader& in) {
            if constexpr (std::is_base_of_v<CTimeData, P>) {
                p.Add();
                p.Def();
                const int field = static_cast<int>(ReadValue(in));
                p.Setcur(field, static_cast<int>(ReadValue(in)));
            }
        }),
    };
}

// The plain child a dialog template would have made, taken over.
template <class P>
void SubclassPlainChild(P& p, CWnd& host, const RECT& rc, UINT id) {
    HWND plain = ::CreateWindowExW(0, L"STATIC", L"", kVisibleChild, rc.left, rc.top, Extent(rc.left, rc.right),
                                   Extent(rc.top, rc.bottom), host.m_hWnd,
                                   reinterpret_cast<HMENU>(static_cast<uintptr_t>(id)), nullptr, nullptr);
    if (plain && !p.SubclassWindow(plain)) ::DestroyWindow(plain);
}

template <class P>
StormControl PickerControl(uint8_t slot, const char* name, RECT place, bool subclassed) {
    StormControl c = MakeControl<P>(slot, name, place);
    c.create = [subclassed](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        P& p = As<P>(w);
        if (subclassed)
            SubclassPlainChild(p, host, rc, id);
        else
            p.Create(nullptr, L"", kVisibleChild, rc, &host, id);
        if constexpr (std::is_base_of_v<CTimeData, P>) p.LoadBitmapW(kMissingId, Skins().module);
    };
    if constexpr (std::is_base_of_v<CTimeData, P>)
        c.skin = [](CWnd& w) { As<P>(w).LoadBitmapW(kChkBack + 1, Skins().module); };
    c.calls = PickerCalls<P>();
    c.invariants = {
        Promise<P>("the picker's field is none of its three", &P::FieldInRange),
        Promise<P>("a year or month step left a day past the month's end", &P::DayFitsAfterStep),
    };
    return c;
}

// ---- the spinner ----------------------------------------------------------------------------

StormControl SpinnerControl() {
    StormControl c = MakeControl<Spinner>(kSpinner, "spinner", {270, 110, 330, 240});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<Spinner>(w).Create(L"spin", kVisibleChild, rc, &host, id);
    };
    c.skin = [](CWnd& w) { As<Spinner>(w).LoadSkin(Folder(), Names(9)); };
    c.loadSkin = NamesLoader<Spinner>();
    c.calls = {
        Call<Spinner>([](Spinner& s, ScriptReader& in) {
            const long lo = ReadValue(in);
            s.SetRang(static_cast<int>(lo), static_cast<int>(ReadValue(in)));
        }),
        Call<Spinner>([](Spinner& s, ScriptReader& in) { s.SetPos(static_cast<int>(ReadValue(in))); }),
        Call<Spinner>([](Spinner& s, ScriptReader& in) { s.SetCurValue(static_cast<int>(ReadValue(in))); }),
        Call<Spinner>([](Spinner& s, ScriptReader& in) { s.InsertStr(FromUtf8(in.Text())); }),
        Call<Spinner>([](Spinner& s, ScriptReader& in) { s.SetVStyle(in.U8() & 1); }),
        Call<Spinner>([](Spinner& s, ScriptReader&) { s.OnBtnAdd(); }),
        Call<Spinner>([](Spinner& s, ScriptReader&) { s.OnBtnDef(); }),
        Call<Spinner>([](Spinner& s, ScriptReader&) {
            CString text;
            s.GetCurValue(text);
            (void)s.GetCurValue();
        }),
        Call<Spinner>([](Spinner& s, ScriptReader& in) {
            const CString folder = ReadFolder(in);
            s.LoadSkin(folder, Names(in.U8() % 13));
        }),
    };
    c.invariants = {Promise<Spinner>("the spinner's value left its range", &Spinner::ValueInRange)};
    c.move = [](CWnd& w, const StormMove& m) {
        if (m.asRect)
            As<Spinner>(w).MoveWindow(m.rect, m.repaint != FALSE);
        else
            As<Spinner>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint != FALSE);
    };
    return c;
}

// ---- the date and clock editor --------------------------------------------------------------

StormControl TimeDateControl() {
    StormControl c = MakeControl<TimeDate>(kTimeDate, "date and clock editor", {200, 170, 390, 300});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<TimeDate>(w).Create(nullptr, L"", kVisibleChild, rc, &host, id);
    };
    c.skin = [](CWnd& w) { As<TimeDate>(w).LoadSkin(Folder(), Names(11)); };
    c.loadSkin = NamesLoader<TimeDate>();
    c.calls = {
        Call<TimeDate>([](TimeDate& t, ScriptReader& in) {
            SYSTEMTIME time = ReadTime(in);
            t.SetTime(time);
        }),
        Call<TimeDate>([](TimeDate& t, ScriptReader& in) { t.SetStyle(static_cast<int>(ReadValue(in))); }),
        Call<TimeDate>([](TimeDate& t, ScriptReader& in) {
            SYSTEMTIME time{};
            t.GetTime(in.U8() & 1 ? nullptr : &time);
        }),
        Call<TimeDate>([](TimeDate& t, ScriptReader&) { t.MoveCtrls(); }),
        // A step of one spinner as its button makes it: the editor hears it as a command.
        Call<TimeDate>([](TimeDate& t, ScriptReader& in) {
            CZELDate& spin = t.Spin(in.Pick(3));
            if (in.U8() & 1)
                spin.OnBtnAdd();
            else
                spin.OnBtnDef();
        }),
        Call<TimeDate>([](TimeDate& t, ScriptReader& in) {
            const CString folder = ReadFolder(in);
            t.LoadSkin(folder, Names(in.U8() % 14));
        }),
    };
    c.invariants = {
        Promise<TimeDate>("the clock's seconds left 0..59", &TimeDate::SecondsInRange),
        Promise<TimeDate>("a year or month step left the day past the month's end", &TimeDate::DayFitsAfterStep),
    };
    c.move = [](CWnd& w, const StormMove& m) {
        if (m.asRect)
            As<TimeDate>(w).MoveWindow(m.rect, m.repaint != FALSE);
        else
            As<TimeDate>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint != FALSE);
    };
    return c;
}

}  // namespace

STORM_FAMILY("datetime", PickerControl<PlainPicker>(kPicker, "picker", {270, 250, 380, 270}, false),
             PickerControl<PlainPicker>(kPickerSub, "subclassed picker", {270, 275, 380, 295}, true),
             PickerControl<FieldPicker>(kTimeField, "time field", {10, 185, 110, 205}, false),
             PickerControl<FieldPicker>(kTimeFieldSub, "subclassed time field", {120, 185, 210, 205}, true),
             SpinnerControl(), TimeDateControl());
