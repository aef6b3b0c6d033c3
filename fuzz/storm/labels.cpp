// The labels in the message storm: the three-piece label, the telephone display, the label
// over a screen background and the picture shaped like its bitmap.
#include <algorithm>
#include <array>

#include "CZELBkLable.h"
#include "CZELLable.h"
#include "CZELStatic.h"
#include "CZELTelLCD.h"
#include "storm_family.h"

namespace {

using namespace storm;

constexpr DWORD kVisibleChild = WS_CHILD | WS_VISIBLE;

// Font heights far beyond a screen cost the platform's text layer seconds a paint; the
// storm keeps to heights a screen could show, negative (cell height) as well.
int ReadFontHeight(ScriptReader& in) { return std::clamp(ReadHeight(in), -200, 200); }

CRect ReadRect(ScriptReader& in) {
    const int l = ReadCoord(in), t = ReadCoord(in), r = ReadCoord(in);
    return CRect(l, t, r, ReadCoord(in));
}

// The texts a host shows: the script's own, or one far wider than the label.
CString ReadLabelText(ScriptReader& in) {
    CString text = FromUtf8(in.Text());
    if (in.U8() & 1) text += CString(L'8', 60);
    return text;
}

void SetTextAndInvalidate(CWnd& w, ScriptReader& in) {
    const CString text = ReadLabelText(in);
    w.SetWindowText(text);
    if (::IsWindow(w.m_hWnd)) w.Invalidate(in.U8() & 1);
}

// The bitmaps a host hands a label, owned here and released after the window: none, one
// already deleted, a monochrome one, one of the key colour only, a coloured figure, and one
// the host's size (a screen background).
class BitmapPool {
public:
    enum Kind { kNone, kStale, kMono, kAllKey, kFigure, kScreen, kKinds };

    ~BitmapPool() {
        for (HBITMAP& b : bitmaps_)
            if (b) ::DeleteObject(b);
    }

    HBITMAP Get(int kind) {
        if (kind == kNone) return nullptr;
        if (kind == kStale) {
            if (!stale_) {
                stale_ = Make(4, 4, RGB(9, 9, 9), RGB(9, 9, 9));
                ::DeleteObject(stale_);
            }
            return stale_;
        }
        HBITMAP& b = bitmaps_[static_cast<size_t>(kind)];
        if (!b) {
            if (kind == kMono) {
                static const WORD bits[] = {0x4000, 0x8000};
                b = ::CreateBitmap(2, 2, 1, 1, bits);
            } else if (kind == kAllKey) {
                b = Make(12, 12, RGB(255, 0, 255), RGB(255, 0, 255));
            } else if (kind == kFigure) {
                b = Make(30, 30, RGB(255, 255, 255), RGB(0, 90, 200));
            } else {
                b = Make(400, 300, RGB(20, 40, 60), RGB(200, 180, 160));
            }
        }
        return b;
    }

private:
    // A key-coloured ground with a block of `figure` in its middle.
    static HBITMAP Make(int w, int h, COLORREF key, COLORREF figure) {
        HDC screen = ::GetDC(nullptr);
        HBITMAP bitmap = ::CreateCompatibleBitmap(screen, w, h);
        HDC dc = ::CreateCompatibleDC(screen);
        ::ReleaseDC(nullptr, screen);
        HGDIOBJ old = ::SelectObject(dc, bitmap);
        for (auto [colour, inset] : {std::pair{key, 0}, std::pair{figure, std::min(w, h) / 4}}) {
            RECT rc{inset, inset, w - inset, h - inset};
            HBRUSH brush = ::CreateSolidBrush(colour);
            ::FillRect(dc, &rc, brush);
            ::DeleteObject(brush);
        }
        ::SelectObject(dc, old);
        ::DeleteDC(dc);
        return bitmap;
    }

    std::array<HBITMAP, kKinds> bitmaps_{};
    HBITMAP stale_ = nullptr;
};

// ---- the label --------------------------------------------------------------------------------

const CString& LabelSkin() {
    static const CString skin = JoinSkin({kSlLeft, kSlFill, kSlRight});
    return skin;
}

template <class L>
std::vector<StormCall> LabelCalls() {
    return {
        Call<L>([](L& l, ScriptReader& in) {
            const int height = ReadFontHeight(in);
            const DWORD colour = static_cast<DWORD>(in.I32());
            const UINT format = static_cast<UINT>(in.I32());
            l.SetFont(height, colour, format, ReadRect(in));
        }),
        // The three paths as a careless host cuts them from a skin string.
        Call<L>([](L& l, ScriptReader& in) {
            const CString skin = ReadSkinString(in);
            CString pieces[3];
            for (int i = 0, start = 0; i < 3; ++i) {
                const int bar = skin.Find(L'|', start);
                pieces[i] = bar < 0 ? skin.Mid(start) : skin.Mid(start, bar - start);
                start = bar < 0 ? skin.GetLength() : bar + 1;
            }
            l.LoadBitmap(pieces[0], pieces[1], pieces[2]);
        }),
        Call<L>([](L& l, ScriptReader& in) { SetTextAndInvalidate(l, in); }),
    };
}

StormControl LabelControl() {
    StormControl c = MakeControl<CZELLable>(kLabel, "label", {10, 210, 190, 240});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<CZELLable>(w).Create(nullptr, L"Favourites", kVisibleChild, rc, &host, id);
    };
    c.skin = [](CWnd& w) { As<CZELLable>(w).LoadSkin(LabelSkin(), L""); };
    c.loadSkin = SkinLoader<CZELLable>();
    c.calls = LabelCalls<CZELLable>();
    return c;
}

// ---- the telephone display ----------------------------------------------------------------------

// Keeps what the display's mode and status text must be: the mode moves only through
// InitCtrl, the status text only through SetszTime in mode 1.
class TelLcd : public CZELTelLCD {
public:
    bool ModeAsInitialised() const { return m_nMode == expectedMode_; }
    bool StatusTextAsSet() const { return !statusWrong_; }

    void InitIds(UINT* ids, DWORD* colours, int* heights, int mode, HINSTANCE module) {
        if (ids && colours && heights && (mode == 1 || mode == 2)) expectedMode_ = mode;
        InitCtrl(ids, colours, heights, mode, module);
    }
    void InitFiles(CArray<CString, CString>& frame, CArray<CString, CString>& indicators, DWORD (&colours)[3],
                   int (&heights)[3], int mode) {
        if (frame.GetSize() >= 3 && indicators.GetSize() >= 2) expectedMode_ = mode;
        InitCtrl(frame, indicators, colours, heights, mode);
    }
    void SetStatus(CString text) {
        const CString before = m_strTime;
        const bool takes = m_nMode == 1;
        SetszTime(text);
        if (m_strTime != (takes ? text : before)) statusWrong_ = true;
    }

private:
    int expectedMode_ = 0;
    bool statusWrong_ = false;
};

StormControl TelLcdControl() {
    StormControl c = MakeControl<TelLcd>(kTelLcd, "telephone display", {10, 245, 190, 295});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<TelLcd>(w).Create(nullptr, L"+49 89 1234 5678", kVisibleChild, rc, &host, id);
    };
    c.skin = [](CWnd& w) {
        CArray<CString, CString> frame, indicators;
        for (int f : {kSlLeft, kSlChannel, kSlRight}) frame.Add(Skins().Path(f));
        for (int f : {kChkOn, kChkOff}) indicators.Add(Skins().Path(f));
        DWORD colours[3] = {RGB(0, 0, 0), RGB(255, 255, 255), 0};
        int heights[3] = {24, 12, 0};
        As<TelLcd>(w).InitFiles(frame, indicators, colours, heights, 1);
    };
    c.loadSkin = SkinLoader<TelLcd>();
    c.calls = LabelCalls<TelLcd>();
    c.calls.push_back(Call<TelLcd>([](TelLcd& l, ScriptReader& in) {
        const uint8_t missing = in.U8();  // a host may pass no array at all
        UINT ids[3];
        for (UINT& id : ids) id = ReadId(in);
        DWORD colours[2] = {static_cast<DWORD>(in.I32()), static_cast<DWORD>(in.I32())};
        int heights[2] = {ReadFontHeight(in), ReadFontHeight(in)};
        const int mode = static_cast<int>(ReadValue(in));
        l.InitIds(missing & 1 ? nullptr : ids, missing & 2 ? nullptr : colours, missing & 4 ? nullptr : heights, mode,
                  ReadModule(in));
    }));
    c.calls.push_back(Call<TelLcd>([](TelLcd& l, ScriptReader& in) {
        CArray<CString, CString> frame, indicators;
        for (uint8_t n = in.U8() % 5; n; --n) frame.Add(Skins().Path(in.U8() % kFileCount));
        for (uint8_t n = in.U8() % 4; n; --n) indicators.Add(Skins().Path(in.U8() % kFileCount));
        DWORD colours[3] = {static_cast<DWORD>(in.I32()), static_cast<DWORD>(in.I32()), 0};
        int heights[3] = {ReadFontHeight(in), ReadFontHeight(in), 0};
        l.InitFiles(frame, indicators, colours, heights, static_cast<int>(ReadValue(in)));
    }));
    c.calls.push_back(Call<TelLcd>([](TelLcd& l, ScriptReader& in) { l.SetStatus(ReadLabelText(in)); }));
    c.invariants = {
        Promise<TelLcd>("the display's mode changed outside InitCtrl", &TelLcd::ModeAsInitialised),
        Promise<TelLcd>("the status text changed outside mode 1 or ignored SetszTime in it", &TelLcd::StatusTextAsSet),
    };
    return c;
}

// ---- the label over a background ----------------------------------------------------------------

class BkLabel : public CZELBkLable {
public:
    ~BkLabel() override {
        if (::IsWindow(m_hWnd)) DestroyWindow();  // before the pool lets the bitmaps go
    }
    bool ReturnedPrevious() const { return !wrongReturn_; }

    void Set(int kind) {
        HBITMAP next = pool_.Get(kind);
        if (SetBitmap(next) != given_) wrongReturn_ = true;
        given_ = next;
    }

private:
    BitmapPool pool_;
    HBITMAP given_ = nullptr;
    bool wrongReturn_ = false;
};

StormControl BkLabelControl() {
    StormControl c = MakeControl<BkLabel>(kBkLabel, "background label", {200, 110, 265, 130});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<BkLabel>(w).Create(nullptr, L"Settings", kVisibleChild, rc, &host, id);
    };
    c.skin = [](CWnd& w) { As<BkLabel>(w).Set(BitmapPool::kScreen); };
    c.calls = {
        Call<BkLabel>([](BkLabel& l, ScriptReader& in) {
            l.Set(in.Pick(BitmapPool::kKinds));
            if (::IsWindow(l.m_hWnd) && in.U8() & 1) l.Invalidate();
        }),
        Call<BkLabel>([](BkLabel& l, ScriptReader& in) {
            const int height = ReadFontHeight(in);
            const DWORD colour = static_cast<DWORD>(in.I32());
            const UINT format = static_cast<UINT>(in.I32());
            l.SetFont(height, colour, format, ReadRect(in));
        }),
        Call<BkLabel>([](BkLabel& l, ScriptReader& in) { SetTextAndInvalidate(l, in); }),
    };
    c.invariants = {Promise<BkLabel>("SetBitmap did not return the bitmap given before", &BkLabel::ReturnedPrevious)};
    return c;
}

// ---- the shaped picture -------------------------------------------------------------------------

class Picture : public CZELStatic {
public:
    ~Picture() override {
        if (::IsWindow(m_hWnd)) DestroyWindow();
    }
    void Set(int kind) { SetBitmap(pool_.Get(kind)); }

private:
    BitmapPool pool_;
};

StormControl PictureControl() {
    StormControl c = MakeControl<Picture>(kPicture, "shaped picture", {340, 110, 380, 150});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<Picture>(w).Create(L"STATIC", L"", kVisibleChild | SS_BITMAP, rc, &host, id);
    };
    c.skin = [](CWnd& w) { As<Picture>(w).Set(BitmapPool::kFigure); };
    c.calls = {
        Call<Picture>([](Picture& p, ScriptReader& in) { p.Set(in.Pick(BitmapPool::kKinds)); }),
        Call<Picture>([](Picture& p, ScriptReader& in) { p.Set(in.Pick(BitmapPool::kKinds)); }),
        Call<Picture>([](Picture& p, ScriptReader& in) { SetTextAndInvalidate(p, in); }),
    };
    return c;
}

}  // namespace

STORM_FAMILY("labels", LabelControl(), TelLcdControl(), BkLabelControl(), PictureControl());
