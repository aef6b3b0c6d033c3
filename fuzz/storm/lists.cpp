// The plain lists in the message storm: CListData itself (through a probe that draws it,
// since the base draws nothing) over a plain child as a dialog would hold it, and the
// stand-alone CZELList in its name (1) and number-and-time (3) styles. Their promises: the
// selection and the selection mark stay within the rows, the image list keeps a drawable
// style, and the row chain from row 0 visits the rows in index order.
#include <commctrl.h>

#include "CListData.h"
#include "CZELList.h"
#include "storm_family.h"

namespace {

using namespace storm;

constexpr DWORD kVisibleChild = WS_CHILD | WS_VISIBLE;

// The two stores keep the same members under the same names; these checks read them.
template <class Base>
class ChainProbe : public Base {
public:
    // GetCurSel and GetSelect are not const in the classes; they only read.
    bool CurSelBelowCount() const {
        auto& self = const_cast<ChainProbe&>(*this);
        return self.GetCurSel() < self.GetItemCount();
    }
    bool MarkIsARow() const {
        auto& self = const_cast<ChainProbe&>(*this);
        const int mark = self.GetSelect();
        return mark >= -1 && mark < self.GetItemCount();
    }
    // Row 0's head links every row's head in index order and ends after the last.
    bool ChainInIndexOrder() const {
        if (this->m_nItemCount < 0) return false;
        if (this->m_nItemCount == 0) return true;
        if (!this->m_ppRows) return false;
        const ListCell* cell = this->m_ppRows[0];
        for (int i = 0; i < this->m_nItemCount; ++i, cell = cell->pNextRow)
            if (!cell || cell != this->m_ppRows[i]) return false;
        return cell == nullptr;
    }
};

// CListData draws nothing: the probe fills the client and records the selected row as the
// second click's area, as a derived list does when it draws.
class DataProbe : public ChainProbe<CListData> {
public:
    void DrawInterface(HDC hdc) override {
        CRect client;
        GetClientRect(&client);
        ::FillRect(hdc, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        m_rcClick.SetRectEmpty();
        if (m_nCurSel < 0 || m_nCurSel >= m_nItemCount || m_nItemHeight <= 0) return;
        const long top = m_rcList.top + static_cast<long>(m_nCurSel - ScrollPos()) * m_nItemHeight;
        if (top < INT_MIN / 2 || top > INT_MAX / 2) return;
        m_rcClick.SetRect(m_rcList.left, static_cast<int>(top), m_rcList.right, static_cast<int>(top) + m_nItemHeight);
        ::FillRect(hdc, &m_rcClick, static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH)));
    }
};

class ZelProbe : public ChainProbe<CZELList> {
public:
    bool StyleDrawable() const { return m_nStyle >= 0 && m_nStyle <= 3; }
};

CString ReadText(ScriptReader& in) { return FromUtf8(in.Text()); }

const CString& BarSkin() {
    static const CString skin =
        JoinSkin({kBarUp, kBarUpDown, kBarTrack, kBarThumb, kBarThumbDown, kBarDown, kBarDownDown});
    return skin;
}

// The calls both classes take (PlainListCall order); `insertText` is the class's own
// two-argument insert form.
template <class T, class InsertText>
std::vector<StormCall> PlainCalls(InsertText insertText) {
    return {
        Call<T>([](T& l, ScriptReader& in) {
            const bool null = in.U8() & 1;
            LVITEMW item{};
            item.mask = LVIF_TEXT | LVIF_IMAGE;
            item.iItem = static_cast<int>(ReadValue(in));
            item.iSubItem = static_cast<int>(ReadValue(in));
            CString text = ReadText(in);
            item.pszText = text.GetBuffer();
            item.iImage = static_cast<int>(ReadValue(in));
            l.InsertItem(null ? nullptr : &item);
            text.ReleaseBuffer();
        }),
        Call<T>([insertText](T& l, ScriptReader& in) { insertText(l, in); }),
        Call<T>([](T& l, ScriptReader& in) {
            const int at = static_cast<int>(ReadValue(in));
            CString text = ReadText(in);
            l.InsertItem(at, text, static_cast<int>(ReadValue(in)));
        }),
        Call<T>([](T& l, ScriptReader& in) {
            const int row = static_cast<int>(ReadValue(in)), cell = static_cast<int>(ReadValue(in));
            l.SetItemText(row, cell, ReadText(in));
        }),
        Call<T>([](T& l, ScriptReader& in) {
            const int row = static_cast<int>(ReadValue(in)), cell = static_cast<int>(ReadValue(in));
            (void)l.GetItemText(row, cell);
        }),
        Call<T>([](T& l, ScriptReader& in) { l.DeleteItem(static_cast<int>(ReadValue(in))); }),
        Call<T>([](T& l, ScriptReader&) { l.DeleteAllItems(); }),
        Call<T>([](T& l, ScriptReader& in) {
            const bool null = in.U8() & 1;
            const int at = static_cast<int>(ReadValue(in));
            CString heading = ReadText(in);
            LVCOLUMNW column{};
            column.mask = LVCF_TEXT | LVCF_WIDTH;
            column.pszText = heading.GetBuffer();
            column.cx = static_cast<int>(ReadValue(in));
            l.InsertColumn(at, null ? nullptr : &column);
            heading.ReleaseBuffer();
        }),
        Call<T>([](T& l, ScriptReader& in) {
            const int at = static_cast<int>(ReadValue(in));
            CString heading = ReadText(in);
            l.InsertColumn(at, heading, LVCFMT_LEFT, static_cast<int>(ReadValue(in)), at);
        }),
        Call<T>([](T& l, ScriptReader& in) { l.DeleteColumn(static_cast<int>(ReadValue(in))); }),
        Call<T>([](T& l, ScriptReader& in) { l.SetCurSel(static_cast<int>(ReadValue(in))); }),
        Call<T>([](T& l, ScriptReader& in) { l.SetSelectionMark(static_cast<int>(ReadValue(in))); }),
        Call<T>([](T& l, ScriptReader& in) { l.ScrollTo(ReadValue(in)); }),
    };
}

template <class T>
void MovesAsTheClass(StormControl& c) {
    c.move = [](CWnd& w, const StormMove& m) { As<T>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint); };
}

int Extent(long from, long to) { return static_cast<int>(std::clamp<long>(to - from, INT_MIN, INT_MAX)); }

StormControl ListData() {
    StormControl c = MakeControl<DataProbe>(kListData, "list data", {10, 110, 140, 180});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        DataProbe& l = As<DataProbe>(w);
        HWND plain = ::CreateWindowExW(0, L"STATIC", L"", kVisibleChild, rc.left, rc.top, Extent(rc.left, rc.right),
                                       Extent(rc.top, rc.bottom), host.m_hWnd,
                                       reinterpret_cast<HMENU>(static_cast<uintptr_t>(id)), nullptr, nullptr);
        if (plain && !l.SubclassWindow(plain)) ::DestroyWindow(plain);
        l.InsertColumn(0, L"Name", LVCFMT_LEFT, 70, 0);
        l.InsertColumn(1, L"Value", LVCFMT_LEFT, 40, 1);
    };
    c.move = [](CWnd& w, const StormMove& m) {
        if (m.asRect)
            As<DataProbe>(w).MoveWindow(m.rect, m.repaint);
        else
            As<DataProbe>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint);
    };
    c.skin = [](CWnd& w) {
        DataProbe& l = As<DataProbe>(w);
        l.LoadScrollBitmap(BarSkin(), L"");
        for (int i = 0; i < 7; ++i) {
            const int row = l.InsertItem(i, L"Row", true);
            l.SetItemText(row, 1, i % 2 ? L"on" : L"off");
        }
        l.SetCurSel(2);
    };
    c.loadSkin = SkinLoader<DataProbe>();
    c.calls = PlainCalls<DataProbe>([](DataProbe& l, ScriptReader& in) {
        const bool update = in.U8() & 1;
        const int at = static_cast<int>(ReadValue(in));
        l.InsertItem(at, ReadText(in), update);
    });
    c.calls.push_back(Call<DataProbe>([](DataProbe& l, ScriptReader& in) {
        CArray<CString, CString> paths;
        for (int n = in.U8() % 6; n > 0; --n) paths.Add(Skins().Path(in.U8() % kFileCount));
        l.LoadBkImage(paths);
    }));
    c.calls.push_back(
        Call<DataProbe>([](DataProbe& l, ScriptReader& in) { l.LoadScrollBitmap(ReadSkinString(in), CString()); }));
    c.invariants = {
        Promise<DataProbe>("the list data's selection passed its rows", &DataProbe::CurSelBelowCount),
        Promise<DataProbe>("the list data's selection mark is no row", &DataProbe::MarkIsARow),
        Promise<DataProbe>("the list data's row chain left the index order", &DataProbe::ChainInIndexOrder)};
    return c;
}

template <int kStyle>
StormControl ZelList(uint8_t slot, const char* name, RECT place) {
    StormControl c = MakeControl<ZelProbe>(slot, name, place);
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        ZelProbe& l = As<ZelProbe>(w);
        l.Create(nullptr, L"", kVisibleChild, rc, &host, id);
        l.SetSytle(kStyle);
    };
    MovesAsTheClass<ZelProbe>(c);
    c.skin = [](CWnd& w) {
        ZelProbe& l = As<ZelProbe>(w);
        const HINSTANCE module = Skins().module;
        // Identifiers name the generated images from 1 (storm_family.h's ReadId).
        l.LoadScrollBitmap(kBarThumb + 1, kBarThumbDown + 1, kBarTrack + 1, kBarUp + 1, kBarDown + 1,
                           kBarDownDown + 1, kBarUpDown + 1, module);
        const auto path = [](int f) { return Skins().Path(f); };
        l.LoadBitmapW(path(kSlLeft), path(kSlChannel), path(kSlRight), path(kTiny));
        l.LoadSelBitmaps(path(kSlChanLeft), path(kSlFill), path(kSlChanRight), path(kChkOn), path(kChkOff));
        l.LoadBkBitmap(path(kWide));
        l.LoadClrBitmap(path(kProgBack));
        l.LoadBitBmp2(path(kRound), path(kRoundDown));
        for (int i = 0; i < 6; ++i) {
            const int row = l.InsertItem(i, L"Caller");
            l.SetItemText(row, 1, L"0123 456");
            l.SetItemText(row, 2, L"12:00");
        }
        l.SetCurSel(1);
    };
    c.calls = PlainCalls<ZelProbe>([](ZelProbe& l, ScriptReader& in) {
        const int at = static_cast<int>(ReadValue(in));
        l.InsertItem(at, ReadText(in));
    });
    c.calls.push_back(Call<ZelProbe>([](ZelProbe& l, ScriptReader& in) {
        CArray<CString, CString> texts;
        for (int n = in.U8() % 5; n > 0; --n) texts.Add(ReadText(in));
        l.AddItem(texts, static_cast<int>(ReadValue(in)));
    }));
    c.calls.push_back(Call<ZelProbe>([](ZelProbe& l, ScriptReader& in) { l.SetSytle(in.U8() % 6 - 1); }));
    c.calls.push_back(
        Call<ZelProbe>([](ZelProbe& l, ScriptReader& in) { l.SetItemHeight(static_cast<int>(ReadValue(in))); }));
    c.invariants = {Promise<ZelProbe>("the image list's selection passed its rows", &ZelProbe::CurSelBelowCount),
                    Promise<ZelProbe>("the image list's selection mark is no row", &ZelProbe::MarkIsARow),
                    Promise<ZelProbe>("the image list's style is none it draws", &ZelProbe::StyleDrawable),
                    Promise<ZelProbe>("the image list's row chain left the index order", &ZelProbe::ChainInIndexOrder)};
    return c;
}

}  // namespace

STORM_FAMILY("lists", ListData(), ZelList<1>(kNameList, "name list", {150, 110, 265, 180}),
             ZelList<3>(kTimeList, "number and time list", {150, 185, 300, 260}));
