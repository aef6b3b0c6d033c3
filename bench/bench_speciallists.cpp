// The special lists with many rows: one screenful painted at scroll positions 0 and 99 990
// of 100 000 rows against the same list with 10 rows, for the play, telephone, Bluetooth
// and file lists and the table. Each draws only the rows it shows, so its paint must not
// grow with the row count (budgets in budgets.txt).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <utility>

#include "CBbgFileList.h"
#include "CZELBTList.h"
#include "CZELListCtrl.h"
#include "CZELPlayList.h"
#include "CZELTelList.h"
#include "bench_list_support.h"

namespace {

using zel::bench::kRows;

// Skin pieces written once into a temporary folder, and the same as a resource module for
// the file list.
class Skin : public zel::bench::SkinDir {
public:
    Skin() : SkinDir("zel_bench_speclists_") {
        for (const char* corner : {"tl", "bl", "tr", "br"}) Write(corner, 16, 16, RGB(226, 231, 238));
        Write("l", 12, 40, RGB(240, 243, 248));
        Write("m", 8, 40, RGB(232, 236, 242));
        Write("r", 12, 40, RGB(240, 243, 248));
        Write("cl", 12, 40, RGB(36, 146, 255));
        Write("cm", 8, 40, RGB(25, 115, 216));
        Write("cr", 12, 40, RGB(36, 146, 255));
        Write("icon", 24, 24, RGB(14, 84, 178));
        Write("head", 8, 30, RGB(198, 206, 218));
        Write("paper", 800, 480, RGB(226, 231, 238));
        std::string rc;
        for (auto [id, name] : {std::pair{101, "paper"}, std::pair{102, "cm"}})
            rc += std::to_string(id) + " BITMAP \"" + File(name).string() + "\"\n";
        const zel::bench::fs::path script = dir() / "skin.rc";
        FILE* f = std::fopen(script.string().c_str(), "w");
        std::fputs(rc.c_str(), f);
        std::fclose(f);
        module_ = zel::LoadResourceModule(script.string().c_str());
    }
    ~Skin() {
        if (module_) zel::FreeResourceModule(module_);
    }
    CArray<CString, CString>& Paths(std::initializer_list<const char*> names) const {
        static CArray<CString, CString> arrays[4];
        static int next = 0;
        CArray<CString, CString>& a = arrays[next++ % 4];
        a.RemoveAll();
        for (const char* n : names) a.Add(Path(n));
        return a;
    }
    HINSTANCE module() const { return module_; }

private:
    HINSTANCE module_ = nullptr;
};

const Skin& TheSkin() {
    static Skin skin;
    return skin;
}

// A list of 496 x 360 on a parent covering the screen, as the demo shows them; filled,
// current row one below the position, scrolled, painted once before the timing. The
// lists' debug lines cost nothing here.
template <class List>
class Fixture : public zel::bench::ListHost<List> {
public:
    Fixture() : zel::bench::ListHost<List>(true) {}
};

const CRect kPlace(24, 72, 520, 432);

template <class List>
void CreateOnListData(Fixture<List>& f) {
    f.list().CWnd::Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kPlace, &f.parent(), 1501, nullptr);
    const Skin& s = TheSkin();
    f.list().LoadScrollBitmap(s.Path("cm"), s.Path("cm"), s.Path("m"), s.Path("cl"), s.Path("cl"), s.Path("cl"),
                              s.Path("cl"));
}

template <class List>
void Finish(Fixture<List>& f, benchmark::State& state) {
    f.list().SetCurSel(static_cast<long>(state.range(1)) + 1);
    f.list().ScrollTo(static_cast<long>(state.range(1)));
    f.Paint();
    for (auto _ : state) f.Paint();
}

void BM_PlayListPaint(benchmark::State& state) {
    Fixture<CZELPlayList> f;
    CreateOnListData(f);
    const Skin& s = TheSkin();
    f.list().LoadBitmaps(s.Paths({"tl", "bl", "tr", "br"}), s.Paths({"l", "m", "r"}), s.Paths({"cl", "cm", "cr"}));
    for (int i = 0; i < state.range(0); ++i) {
        f.list().InsertItem(i, L"Rain on the Windscreen - Velvet Static.mp3", false);
        f.list().SetItemText(i, 1, L"3:25");
    }
    f.list().UpdataScrollBar();
    Finish(f, state);
}

void BM_TelListPaint(benchmark::State& state) {
    Fixture<CZELTelList> f;
    CreateOnListData(f);
    const Skin& s = TheSkin();
    f.list().LoadBkImage(s.Paths({"tl", "bl", "tr", "br"}));
    f.list().AddImage(s.Paths({"l", "m", "r"}), s.Paths({"cl", "cm", "cr"}));
    for (int i = 0; i < state.range(0); ++i) f.list().InsertItem(i, L"Dana Okafor-Whitfield", false);
    f.Paint();  // lays m_rcList out for the bar
    f.list().UpdataScrollBar();
    Finish(f, state);
}

void BM_BTListPaint(benchmark::State& state) {
    Fixture<CZELBTList> f;
    CreateOnListData(f);
    const Skin& s = TheSkin();
    f.list().LoadBitmaps(s.Paths({"tl", "bl", "tr", "br"}), s.Paths({"l", "m", "r"}), s.Paths({"cl", "cm", "cr"}),
                         s.Paths({"icon", "icon"}));
    for (int i = 0; i < state.range(0); ++i) {
        f.list().InsertItem(i, L"Headset HS-20", false);
        f.list().SetItemText(i, 1, L"Paired");
    }
    f.list().SetSelectionMark(static_cast<int>(state.range(1)) + 2);
    f.Paint();
    f.list().UpdataScrollBar();
    Finish(f, state);
}

void BM_ListCtrlPaint(benchmark::State& state) {
    Fixture<CZELListCtrl> f;
    const Skin& s = TheSkin();
    f.list().Create(WS_CHILD | WS_VISIBLE, kPlace, &f.parent(), 1504);
    f.list().LoadSkin(s.Path("head") + L"|" + s.Path("head") + L"|" + s.Path("head") + L"||||" + s.Path("l") + L"|" +
                          s.Path("m") + L"|" + s.Path("r") + L"|" + s.Path("cl") + L"|" + s.Path("cm") + L"|" +
                          s.Path("cr") + L"|",
                      L"");
    f.list().InsertColumn(0, L"Name", LVCFMT_LEFT, 250);
    f.list().InsertColumn(1, L"Size", LVCFMT_RIGHT, 110);
    f.list().InsertColumn(2, L"Kind", LVCFMT_CENTER, 130);
    for (int i = 0; i < state.range(0); ++i) {
        f.list().CListData::InsertItem(i, L"Recording 01.wav", false);
        f.list().SetItemText(i, 1, L"10240 kB");
        f.list().SetItemText(i, 2, L"Audio");
    }
    f.list().UpdataScrollBar();
    Finish(f, state);
}

void BM_FileListPaint(benchmark::State& state) {
    Fixture<CBbgFileList> f;
    const Skin& s = TheSkin();
    f.list().CWnd::Create(nullptr, L"", WS_CHILD | WS_VISIBLE, kPlace, &f.parent(), 1503, nullptr);
    f.list().LoadBkBitmap(101, 102, s.module());
    for (int i = 0; i < state.range(0); ++i) f.list().InsertItem(i, L"Map of the coast road.png", i);
    f.Paint();
    f.list().UpdataScrollBar();
    f.list().SetCurSel(static_cast<int>(state.range(1)) + 1);
    f.list().ScrollTo(static_cast<int>(state.range(1)));
    f.Paint();
    for (auto _ : state) f.Paint();
}

#define SPECIAL_PAINT(bm) BENCHMARK(bm)->Args({10, 0})->Args({kRows, 0})->Args({kRows, 99990})->Unit(benchmark::kMicrosecond)
SPECIAL_PAINT(BM_PlayListPaint);
SPECIAL_PAINT(BM_TelListPaint);
SPECIAL_PAINT(BM_BTListPaint);
SPECIAL_PAINT(BM_ListCtrlPaint);
SPECIAL_PAINT(BM_FileListPaint);

}  // namespace

BENCHMARK_MAIN();
