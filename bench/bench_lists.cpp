// The image list with many rows: appending 100 000 rows, deleting from the middle of
// them, and painting one screenful (style 1, skinned) at scroll positions 0 and 99 990 of
// 100 000 rows against a list of 10. Painting draws only the visible rows, so its time
// must not grow with the row count (budget in budgets.txt); the append reports rows per
// second.
#include <benchmark/benchmark.h>

#include <memory>

#include "CZELList.h"
#include "bench_list_support.h"

namespace {

using zel::bench::kRows;

// Skin pieces written once into a temporary folder.
class Skin : public zel::bench::SkinDir {
public:
    Skin() : SkinDir("zel_bench_lists_") {
        Write("l", 12, 34, RGB(52, 60, 72));
        Write("m", 8, 34, RGB(45, 52, 63));
        Write("r", 12, 34, RGB(52, 60, 72));
        Write("sep", 8, 2, RGB(46, 54, 66));
        Write("sl", 12, 34, RGB(36, 146, 255));
        Write("sm", 8, 34, RGB(25, 115, 216));
        Write("sr", 12, 34, RGB(36, 146, 255));
    }
};

// A style-1 list of 376 x 152 on a parent covering the screen, as the demo shows it.
class Fixture : public zel::bench::ListHost<CZELList> {
public:
    explicit Fixture(const Skin& skin) {
        CZELList& l = list();
        l.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, CRect(16, 88, 392, 240), &parent(), 1401);
        l.LoadBitmapW(skin.Path("l"), skin.Path("m"), skin.Path("r"), skin.Path("sep"));
        l.LoadSelBitmaps(skin.Path("sl"), skin.Path("sm"), skin.Path("sr"), L"", L"");
        int fonts[4] = {18, 18, 14, 14};
        COLORREF colours[2] = {RGB(228, 234, 242), RGB(255, 255, 255)};
        l.SetFontSizeAndClr(fonts, colours);
        l.SetSytle(1);
        l.SetInterval(12, 8, 4);
        l.SetItemHeight(36);
        zel::Desktop::Get().RunUntilIdle();
    }
    void Fill(int rows) {
        for (int i = 0; i < rows; ++i) list().InsertItem(i, L"Contact name for the row");
    }
};

const Skin& TheSkin() {
    static Skin skin;
    return skin;
}

void BM_ListAppend(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto fixture = std::make_unique<Fixture>(TheSkin());
        state.ResumeTiming();
        fixture->Fill(rows);
        benchmark::DoNotOptimize(fixture->list().GetItemCount());
        state.PauseTiming();
        fixture.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * rows);
}
BENCHMARK(BM_ListAppend)->Arg(kRows)->Unit(benchmark::kMillisecond);

// Each deleted row is appended again outside the timing, so the list keeps its size.
void BM_ListDeleteMiddle(benchmark::State& state) {
    Fixture fixture(TheSkin());
    fixture.Fill(kRows);
    for (auto _ : state) {
        fixture.list().DeleteItem(kRows / 2);
        state.PauseTiming();
        fixture.list().InsertItem(kRows, L"Contact name for the row");
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ListDeleteMiddle)->Unit(benchmark::kMicrosecond);

// One screenful: rows from the scroll position to the bottom of the list area.
void BM_ListPaint(benchmark::State& state) {
    Fixture fixture(TheSkin());
    fixture.Fill(static_cast<int>(state.range(0)));
    fixture.list().SetCurSel(static_cast<int>(state.range(1)) + 1);
    fixture.list().ScrollTo(state.range(1));
    fixture.Paint();
    for (auto _ : state) fixture.Paint();
}
BENCHMARK(BM_ListPaint)->Args({10, 0})->Args({kRows, 0})->Args({kRows, 99990})->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
