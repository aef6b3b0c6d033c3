// The scroll bar and the sliders in the message storm: a skinned bar, a nine-piece slider,
// the same vertical, and one in the progress style.
#include "CZELScrollbar.h"
#include "CZELSlider.h"
#include "storm_family.h"

namespace {

using namespace storm;

class Slider : public CZELSlider {
public:
    bool PositionInRange() const { return m_nMin <= m_nPos && m_nPos <= m_nMax; }
};

constexpr DWORD kVisibleChild = WS_CHILD | WS_VISIBLE;

StormControl ScrollBar() {
    StormControl c = MakeControl<CZELScrollbar>(kScrollBar, "scroll bar", {320, 10, 350, 100});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<CZELScrollbar>(w).Create(L"VSCrollBar", kVisibleChild, rc, &host, id);
    };
    c.skin = [](CWnd& w) {
        As<CZELScrollbar>(w).LoadSkin(
            JoinSkin({kBarUp, kBarUpDown, kBarTrack, kBarThumb, kBarThumbDown, kBarDown, kBarDownDown}), L"");
    };
    c.loadSkin = SkinLoader<CZELScrollbar>();
    c.calls = {
        Call<CZELScrollbar>([](CZELScrollbar& b, ScriptReader& in) {
            const long lo = ReadValue(in);
            b.SetScrollRange(lo, ReadValue(in));
        }),
        Call<CZELScrollbar>([](CZELScrollbar& b, ScriptReader& in) {
            const long pos = ReadValue(in);
            b.SetScrollPos(pos, in.U8() & 1);
        }),
        Call<CZELScrollbar>([](CZELScrollbar& b, ScriptReader& in) {
            SCROLLINFO si{};
            si.cbSize = sizeof si;
            si.fMask = in.U8() & 1 ? SIF_ALL : 0;
            si.nMin = static_cast<int>(ReadValue(in));
            si.nMax = static_cast<int>(ReadValue(in));
            si.nPage = static_cast<UINT>(ReadValue(in));
            si.nPos = static_cast<int>(ReadValue(in));
            si.nTrackPos = static_cast<int>(ReadValue(in));
            SCROLLINFO* info = in.U8() & 1 ? &si : nullptr;  // a host may pass none
            b.SetScrollInfo(info, in.U8() & 1);
        }),
        Call<CZELScrollbar>([](CZELScrollbar& b, ScriptReader& in) { b.SetPagesize(ReadValue(in)); }),
        Call<CZELScrollbar>([](CZELScrollbar& b, ScriptReader& in) { b.SetLineSize(ReadValue(in)); }),
        Call<CZELScrollbar>([](CZELScrollbar& b, ScriptReader& in) {
            const int x = ReadCoord(in), y = ReadCoord(in);
            int w = ReadCoord(in), h = ReadCoord(in);
            BoundFrame(w, h);
            b.MoveWindow(x, y, w, h, in.U8() & 1);
        }),
        Call<CZELScrollbar>([](CZELScrollbar& b, ScriptReader& in) {
            long lo = 0, hi = 0;
            b.GetRange(lo, hi);
            SCROLLINFO si{};
            si.fMask = in.U8() & 1 ? SIF_ALL : 0;
            b.GetScrollInfo(in.U8() & 1 ? &si : nullptr);
            (void)b.GetScrollPos();
        }),
        Call<CZELScrollbar>([](CZELScrollbar& b, ScriptReader& in) {
            HINSTANCE module = ReadModule(in);
            UINT ids[7];
            for (UINT& id : ids) id = ReadId(in);
            b.LoadBitmapW(ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], ids[6], module);
        }),
    };
    c.move = [](CWnd& w, const StormMove& m) {
        if (m.asRect)
            As<CZELScrollbar>(w).MoveWindow(&m.rect, m.repaint);
        else
            As<CZELScrollbar>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint);
    };
    return c;
}

std::vector<StormCall> SliderCalls() {
    return {
        Call<Slider>([](Slider& s, ScriptReader& in) {
            const long lo = ReadValue(in);
            const long hi = ReadValue(in);
            s.SetRange(lo, hi, in.U8() & 1);
        }),
        Call<Slider>([](Slider& s, ScriptReader& in) { s.SetPos(static_cast<int>(ReadValue(in))); }),
        Call<Slider>([](Slider& s, ScriptReader& in) { s.SetPageSize(static_cast<int>(ReadValue(in))); }),
        Call<Slider>([](Slider& s, ScriptReader& in) { s.SetLineSize(static_cast<int>(ReadValue(in))); }),
        Call<Slider>([](Slider& s, ScriptReader&) { s.LineLeft(); }),
        Call<Slider>([](Slider& s, ScriptReader&) { s.LineRight(); }),
        Call<Slider>([](Slider& s, ScriptReader&) { s.LineUp(); }),
        Call<Slider>([](Slider& s, ScriptReader&) { s.Linedown(); }),
        Call<Slider>([](Slider& s, ScriptReader&) { s.LeftPage(); }),
        Call<Slider>([](Slider& s, ScriptReader&) { s.Rightpage(); }),
        Call<Slider>([](Slider& s, ScriptReader& in) {
            const UINT cx = static_cast<UINT>(ReadValue(in));
            s.SetChanRect(cx, static_cast<UINT>(ReadValue(in)));
        }),
        Call<Slider>([](Slider& s, ScriptReader& in) { s.SetStyle(static_cast<int>(in.Pick(4)) - 1); }),
        Call<Slider>([](Slider& s, ScriptReader& in) { s.SetvStyle(in.U8() & 1); }),
        Call<Slider>([](Slider& s, ScriptReader& in) { s.SetMoveStyle(in.U8() & 1); }),
        Call<Slider>([](Slider& s, ScriptReader&) {
            long lo = 0, hi = 0;
            s.GetRange(lo, hi);
            (void)s.GetPos();
            (void)s.GetPageSize();
        }),
        Call<Slider>([](Slider& s, ScriptReader& in) {
            HINSTANCE module = ReadModule(in);
            UINT ends[2], thumb[3], channel[4];
            for (UINT& id : ends) id = ReadId(in);
            for (UINT& id : thumb) id = ReadId(in);
            for (UINT& id : channel) id = ReadId(in);
            const uint8_t missing = in.U8();  // a host may pass no array at all
            s.LoadBitmapW(missing & 1 ? nullptr : ends, missing & 2 ? nullptr : thumb, missing & 4 ? nullptr : channel,
                          module);
        }),
        Call<Slider>([](Slider& s, ScriptReader& in) {
            HINSTANCE module = ReadModule(in);
            const UINT back = ReadId(in), fill = ReadId(in);
            s.LoadBitmapW(back, fill, module);
        }),
    };
}

const CString& NinePieceSkin() {
    static const CString skin = JoinSkin(
        {kSlLeft, kSlRight, kSlThumb, kSlThumbUp, kSlThumbDown, kSlFill, kSlChannel, kSlChanLeft, kSlChanRight});
    return skin;
}

StormControl SliderControl(uint8_t slot, const char* name, RECT place) {
    StormControl c = MakeControl<Slider>(slot, name, place);
    c.create = [slot](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<Slider>(w).Create(nullptr, L"", kVisibleChild, rc, &host, id);
        if (slot == kVSlider) As<Slider>(w).SetvStyle(true);
    };
    c.skin = [slot](CWnd& w) {
        As<Slider>(w).LoadSkin(slot == kProgress ? JoinSkin({kProgBack, kProgFill}) : NinePieceSkin(), L"");
    };
    c.loadSkin = SkinLoader<Slider>();
    c.calls = SliderCalls();
    c.invariants = {Promise<Slider>("a slider's position left its range", &Slider::PositionInRange)};
    c.move = [](CWnd& w, const StormMove& m) {
        if (m.asRect)
            As<Slider>(w).MoveWindow(m.rect, m.repaint);
        else
            As<Slider>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint);
    };
    return c;
}

}  // namespace

STORM_FAMILY("scroll", ScrollBar(), SliderControl(kSlider, "slider", {10, 120, 210, 140}),
             SliderControl(kVSlider, "vertical slider", {220, 120, 260, 280}),
             SliderControl(kProgress, "progress bar", {10, 160, 210, 175}));
