// The special lists in the message storm: the play, telephone and Bluetooth lists and the
// general table (all on CListData, sharing the base's calls), and the file list with its
// resource skins. Their promises: the row index matches the count, the table keeps one
// format per column, the file list's drag stays within its rows.
#include "CBbgFileList.h"
#include "CZELBTList.h"
#include "CZELListCtrl.h"
#include "CZELPlayList.h"
#include "CZELTelList.h"
#include "storm_family.h"

namespace {

using namespace storm;

constexpr DWORD kVisibleChild = WS_CHILD | WS_VISIBLE;

// The row index holds exactly the count's rows and a NULL after them (the base's storage
// invariant, which every insert and delete of these lists keeps).
template <class Base>
class RowsProbe : public Base {
public:
    bool RowIndexMatchesCount() const {
        if (this->m_nItemCount < 0 || !this->m_ppRows) return false;
        for (int i = 0; i < this->m_nItemCount; ++i)
            if (!this->m_ppRows[i]) return false;
        return this->m_ppRows[this->m_nItemCount] == nullptr;
    }
};

class Play : public RowsProbe<CZELPlayList> {};
class Tel : public RowsProbe<CZELTelList> {
public:
    using CZELTelList::m_ppRows;
    bool ImageCountNotNegative() const { return m_nImageCount >= 0; }
};
class BT : public RowsProbe<CZELBTList> {};
class Table : public RowsProbe<CZELListCtrl> {
public:
    bool OneFormatPerColumn() const { return static_cast<int>(m_formats.size()) == m_nColumnCount; }
    bool PressedHeadingExists() const { return m_nPressedColumn < m_nColumnCount; }
};
class Files : public CBbgFileList {
public:
    bool DragWithinRows() const { return !m_bDragging || m_nDrag <= static_cast<int>(m_items.size()) - 1; }
    bool PageCountNotNegative() const { return GetCountPerPage() >= 0; }
};

CArray<CString, CString>* FilePaths(ScriptReader& in, int count) {
    static CArray<CString, CString> arrays[4];
    static int next = 0;
    CArray<CString, CString>& a = arrays[next++ % 4];
    a.RemoveAll();
    for (int i = 0; i < count; ++i) a.Add(Skins().Path(in.U8() % kFileCount));
    return &a;
}

CString ReadText(ScriptReader& in) { return FromUtf8(in.Text()); }

// The calls of CListData every list here takes first (ListDataCall order).
template <class T>
std::vector<StormCall> ListDataCalls() {
    return {
        Call<T>([](T& l, ScriptReader& in) {
            const int at = static_cast<int>(ReadValue(in));
            l.InsertItem(at, ReadText(in), true);
        }),
        Call<T>([](T& l, ScriptReader& in) {
            const int row = static_cast<int>(ReadValue(in)), cell = static_cast<int>(ReadValue(in));
            l.SetItemText(row, cell, ReadText(in));
        }),
        Call<T>([](T& l, ScriptReader& in) { l.DeleteItem(static_cast<int>(ReadValue(in))); }),
        Call<T>([](T& l, ScriptReader&) { l.DeleteAllItems(); }),
        Call<T>([](T& l, ScriptReader& in) { l.SetCurSel(ReadValue(in)); }),
        Call<T>([](T& l, ScriptReader& in) { l.SetSelectionMark(static_cast<int>(ReadValue(in))); }),
        Call<T>([](T& l, ScriptReader& in) { l.ScrollTo(ReadValue(in)); }),
        Call<T>([](T& l, ScriptReader& in) {
            const bool insert = in.U8() & 1;
            const int col = static_cast<int>(ReadValue(in));
            if (insert)
                l.InsertColumn(col, ReadText(in), 0, 40, 0);
            else
                l.DeleteColumn(col);
        }),
        Call<T>([](T& l, ScriptReader& in) { l.LoadScrollBitmap(ReadSkinString(in), CString()); }),
    };
}

template <class T>
void CreateOnListData(StormControl& c) {
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<T>(w).CWnd::Create(nullptr, L"", kVisibleChild, rc, &host, id, nullptr);
    };
    c.move = [](CWnd& w, const StormMove& m) {
        if (m.asRect)
            As<T>(w).MoveWindow(m.rect, m.repaint);
        else
            As<T>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint);
    };
}

const CString& BarSkin() {
    static const CString skin =
        JoinSkin({kBarUp, kBarUpDown, kBarTrack, kBarThumb, kBarThumbDown, kBarDown, kBarDownDown});
    return skin;
}

StormControl PlayList() {
    StormControl c = MakeControl<Play>(kPlayList, "play list", {270, 110, 395, 170});
    CreateOnListData<Play>(c);
    c.skin = [](CWnd& w) {
        Play& l = As<Play>(w);
        l.LoadScrollBitmap(BarSkin(), L"");
        l.LoadSkin(JoinSkin({kSlLeft, kSlRight, kSlChanLeft, kSlChanRight, kBtnNormal, kBtnFocus, kBtnDown, kRound,
                             kAllKey, kRoundDown}),
                   L"");
        for (int i = 0; i < 6; ++i) l.InsertItem(i, i % 2 ? L"Track.mp3" : L"A long track name.ogg", true);
    };
    c.loadSkin = SkinLoader<Play>();
    c.calls = ListDataCalls<Play>();
    c.calls.push_back(Call<Play>([](Play& l, ScriptReader& in) {
        const int nb = in.U8() % 6, nr = in.U8() % 5, nc = in.U8() % 5;
        CArray<CString, CString>* bk = FilePaths(in, nb);
        CArray<CString, CString>* row = FilePaths(in, nr);
        l.LoadBitmaps(*bk, *row, *FilePaths(in, nc));
    }));
    c.invariants = {Promise<Play>("the play list's row index left its count", &Play::RowIndexMatchesCount)};
    return c;
}

StormControl TelList() {
    StormControl c = MakeControl<Tel>(kTelList, "telephone list", {270, 175, 395, 235});
    CreateOnListData<Tel>(c);
    c.skin = [](CWnd& w) {
        Tel& l = As<Tel>(w);
        l.LoadScrollBitmap(BarSkin(), L"");
        CArray<CString, CString> normal, current, other;
        for (int f : {kBtnNormal, kBtnFocus, kBtnDown}) normal.Add(Skins().Path(f));
        for (int f : {kRound, kRoundDown, kAllKey}) current.Add(Skins().Path(f));
        for (int f : {kTiny, kWide, kTiny}) other.Add(Skins().Path(f));
        l.AddImage(normal, current);
        l.AddImage(other, normal);
        for (int i = 0; i < 5; ++i) {
            CArray<CString, CString> cells;
            cells.Add(L"Contact");
            cells.Add(L"0123");
            cells.Add(L"12:00");
            l.AddItem(cells, i % 2);
        }
    };
    c.calls = ListDataCalls<Tel>();
    c.calls.push_back(Call<Tel>([](Tel& l, ScriptReader& in) {
        const int nn = in.U8() % 5;
        CArray<CString, CString>* normal = FilePaths(in, nn);
        l.AddImage(*normal, *FilePaths(in, in.U8() % 5));
    }));
    c.calls.push_back(Call<Tel>([](Tel& l, ScriptReader&) { l.ClearImages(); }));
    c.calls.push_back(Call<Tel>([](Tel& l, ScriptReader& in) {
        CArray<CString, CString> cells;
        for (int n = in.U8() % 5; n > 0; --n) cells.Add(ReadText(in));
        l.AddItem(cells, static_cast<int>(ReadValue(in)));
    }));
    c.calls.push_back(Call<Tel>([](Tel& l, ScriptReader& in) {
        const long row = ReadValue(in), image = ReadValue(in);
        if (row >= 0 && row < l.GetItemCount()) l.m_ppRows[row]->nImage = static_cast<int>(image);
    }));
    c.invariants = {Promise<Tel>("the telephone list's row index left its count", &Tel::RowIndexMatchesCount),
                    Promise<Tel>("the telephone list counts fewer than no image sets", &Tel::ImageCountNotNegative)};
    return c;
}

StormControl BTList() {
    StormControl c = MakeControl<BT>(kBTList, "device list", {270, 240, 395, 298});
    CreateOnListData<BT>(c);
    c.skin = [](CWnd& w) {
        BT& l = As<BT>(w);
        l.LoadScrollBitmap(BarSkin(), L"");
        CArray<CString, CString> bk, normal, current, icons;
        for (int f : {kSlLeft, kSlRight, kSlChanLeft, kSlChanRight}) bk.Add(Skins().Path(f));
        for (int f : {kBtnNormal, kBtnFocus, kBtnDown}) normal.Add(Skins().Path(f));
        for (int f : {kRound, kRoundDown, kAllKey}) current.Add(Skins().Path(f));
        for (int f : {kChkOn, kChkOff}) icons.Add(Skins().Path(f));
        l.LoadBitmaps(bk, normal, current, icons);
        for (int i = 0; i < 4; ++i) {
            l.InsertItem(i, L"Headset", true);
            l.SetItemText(i, 1, i == 1 ? L"Connected" : L"Paired");
        }
        l.SetSelectionMark(1);
    };
    c.calls = ListDataCalls<BT>();
    c.calls.push_back(Call<BT>([](BT& l, ScriptReader& in) {
        const int nb = in.U8() % 6, nn = in.U8() % 5, nc = in.U8() % 5, ni = in.U8() % 4;
        CArray<CString, CString>* bk = FilePaths(in, nb);
        CArray<CString, CString>* normal = FilePaths(in, nn);
        CArray<CString, CString>* current = FilePaths(in, nc);
        l.LoadBitmaps(*bk, *normal, *current, *FilePaths(in, ni));
    }));
    c.calls.push_back(Call<BT>([](BT& l, ScriptReader& in) {
        const bool byName = in.U8() & 1;
        CString text = ReadText(in);
        (void)(byName ? l.GetIndexByName(text) : l.GetIndexByState(text));
    }));
    c.invariants = {Promise<BT>("the device list's row index left its count", &BT::RowIndexMatchesCount)};
    return c;
}

StormControl ListCtrl() {
    StormControl c = MakeControl<Table>(kListCtrl, "table", {115, 185, 215, 298});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        Table& t = As<Table>(w);
        t.Create(kVisibleChild, rc, &host, id);
        t.InsertColumn(0, L"Name", LVCFMT_LEFT, 50);
        t.InsertColumn(1, L"Size", LVCFMT_RIGHT, 30);
        t.InsertColumn(2, L"Kind", LVCFMT_CENTER, 40);
    };
    c.move = [](CWnd& w, const StormMove& m) {
        if (m.asRect)
            As<Table>(w).MoveWindow(m.rect, m.repaint);
        else
            As<Table>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint);
    };
    c.skin = [](CWnd& w) {
        Table& t = As<Table>(w);
        t.LoadScrollBitmap(BarSkin(), L"");
        t.LoadSkin(JoinSkin({kBtnNormal, kBtnFocus, kBtnDown, kBtnDown, kBtnDown, kBtnDown, kSlLeft, kSlChannel,
                             kSlRight, kRound, kRoundDown, kRound, kChkOn, kChkOff, kChkOn}),
                   L"");
        for (int i = 0; i < 8; ++i) {
            const int row = t.InsertItem(i, L"Item");
            t.SetItemText(row, 1, L"12 kB");
        }
    };
    c.loadSkin = SkinLoader<Table>();
    c.calls = ListDataCalls<Table>();
    // The table's own column form (the base's is hidden by it).
    c.calls[kListColumn] = Call<Table>([](Table& t, ScriptReader& in) {
        const bool insert = in.U8() & 1;
        const int col = static_cast<int>(ReadValue(in));
        if (insert)
            t.InsertColumn(col, ReadText(in), LVCFMT_LEFT, 40);
        else
            t.DeleteColumn(col);
    });
    c.calls.push_back(Call<Table>([](Table& t, ScriptReader& in) {
        const int col = static_cast<int>(ReadValue(in));
        CString heading = ReadText(in);
        const int format = static_cast<int>(ReadValue(in));
        t.InsertColumn(col, heading, format, static_cast<int>(ReadValue(in)));
    }));
    c.calls.push_back(Call<Table>([](Table& t, ScriptReader& in) {
        const int col = static_cast<int>(ReadValue(in));
        t.SetColumnWidth(col, static_cast<int>(ReadValue(in)));
    }));
    c.calls.push_back(Call<Table>([](Table& t, ScriptReader& in) {
        const int row = static_cast<int>(ReadValue(in));
        t.EnsureVisible(row, in.U8() & 1);
    }));
    c.invariants = {Promise<Table>("the table's row index left its count", &Table::RowIndexMatchesCount),
                    Promise<Table>("the table lost a column's format", &Table::OneFormatPerColumn),
                    Promise<Table>("the table's pressed heading is no column", &Table::PressedHeadingExists)};
    return c;
}

StormControl FileList() {
    StormControl c = MakeControl<Files>(kFileList, "file list", {10, 185, 110, 298});
    c.create = [](CWnd& w, CWnd& host, const RECT& rc, UINT id) {
        As<Files>(w).CWnd::Create(nullptr, L"", kVisibleChild, rc, &host, id, nullptr);
    };
    c.move = [](CWnd& w, const StormMove& m) { As<Files>(w).MoveWindow(m.x, m.y, m.width, m.height, m.repaint); };
    c.skin = [](CWnd& w) {
        Files& f = As<Files>(w);
        // Identifiers name the generated images from 1 (storm_family.h's ReadId).
        f.LoadBkBitmap(kWide + 1, kBtnNormal + 1, Skins().module);
        f.LoadScrollBitmap(kBarThumb + 1, kBarThumbDown + 1, kBarTrack + 1, kBarUp + 1, kBarDown + 1,
                           kBarDownDown + 1, kBarUpDown + 1, Skins().module);
        for (int i = 0; i < 12; ++i) f.InsertItem(i, L"file.txt", i);
    };
    c.calls = {
        Call<Files>([](Files& f, ScriptReader& in) {
            const int at = static_cast<int>(ReadValue(in));
            CString text = ReadText(in);
            f.InsertItem(at, text, ReadValue(in));
        }),
        Call<Files>([](Files& f, ScriptReader&) { f.DeleteAllItems(); }),
        Call<Files>([](Files& f, ScriptReader& in) { f.SetCurSel(static_cast<int>(ReadValue(in))); }),
        Call<Files>([](Files& f, ScriptReader& in) { f.SetSelectionMark(static_cast<int>(ReadValue(in))); }),
        Call<Files>([](Files& f, ScriptReader& in) {
            const UINT item = static_cast<UINT>(ReadValue(in));
            f.SetItemState(item, static_cast<UINT>(ReadValue(in)), 0);
        }),
        Call<Files>([](Files& f, ScriptReader& in) { f.SetExtendedStyle(static_cast<DWORD>(ReadValue(in))); }),
        Call<Files>([](Files& f, ScriptReader& in) { f.ScrollTo(static_cast<int>(ReadValue(in))); }),
        Call<Files>([](Files& f, ScriptReader& in) { f.SetColumnWidth(0, static_cast<int>(ReadValue(in))); }),
        Call<Files>([](Files& f, ScriptReader& in) {
            HINSTANCE module = ReadModule(in);
            const UINT back = ReadId(in), row = ReadId(in);
            f.LoadBkBitmap(back, row, module);
        }),
        Call<Files>([](Files& f, ScriptReader& in) {
            HINSTANCE module = ReadModule(in);
            UINT ids[7];
            for (UINT& id : ids) id = ReadId(in);
            f.LoadScrollBitmap(ids[0], ids[1], ids[2], ids[3], ids[4], ids[5], ids[6], module);
        }),
        Call<Files>([](Files& f, ScriptReader& in) {
            int pos = static_cast<int>(ReadValue(in));
            (void)f.GetNextSelectedItemIndex(pos);
            (void)f.GetFirstSelectedItemIndex();
            (void)f.GetItemText(pos, 0);
            (void)f.GetItemData(pos);
            (void)f.GetCountPerPage();
        }),
    };
    c.invariants = {Promise<Files>("the file list's drag passed its last row", &Files::DragWithinRows),
                    Promise<Files>("the file list counts fewer than no rows a page", &Files::PageCountNotNegative)};
    return c;
}

}  // namespace

STORM_FAMILY("special lists", PlayList(), TelList(), BTList(), FileList(), ListCtrl());
