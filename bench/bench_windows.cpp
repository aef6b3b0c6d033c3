// Window manager costs as the number of windows grows: creating, showing, painting and
// destroying visible siblings, and a nesting as deep as the manager allows. Each should
// grow in proportion to the windows an operation touches; the per-window time of the
// 1000- and 4000-sibling runs shows it (a pass over every window per creation makes the
// second four times the first, a region pass per sibling sixteen times).
#include <benchmark/benchmark.h>
#include <windows.h>

#include <zel/desktop.h>

#include "user/wndmgr.h"

namespace {

LRESULT CALLBACK PaintingProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_PAINT) {
        PAINTSTRUCT ps;
        BeginPaint(hwnd, &ps);
        EndPaint(hwnd, &ps);
        return 0;
    }
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

const wchar_t* ClassName() {
    static bool registered = [] {
        WNDCLASSW wc{};
        wc.lpfnWndProc = PaintingProc;
        wc.lpszClassName = L"BenchWindow";
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        return RegisterClassW(&wc) != 0;
    }();
    (void)registered;
    return L"BenchWindow";
}

HWND Child(HWND parent, int x, int y, int w, int h) {
    return CreateWindowExW(0, ClassName(), L"", WS_CHILD | WS_VISIBLE, x, y, w, h, parent, nullptr, nullptr, nullptr);
}

// Siblings on a grid of 20 x 12 pixel cells, overlapping their neighbours by 4 pixels.
void BM_VisibleSiblings(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    zel::Desktop::Get().Reset();
    for (auto _ : state) {
        HWND top = CreateWindowExW(0, ClassName(), L"", WS_POPUP | WS_VISIBLE, 0, 0, 800, 480, nullptr, nullptr,
                                   nullptr, nullptr);
        for (int i = 0; i < n; ++i) Child(top, (i % 40) * 20, (i / 40 % 40) * 12, 24, 16);
        zel::Desktop::Get().RunUntilIdle();
        DestroyWindow(top);
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_VisibleSiblings)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);

// Siblings of 200 x 150 stacked a few pixels apart: each covers most of the others, the
// case where a region pass over the siblings per creation is most expensive.
void BM_StackedSiblings(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    zel::Desktop::Get().Reset();
    for (auto _ : state) {
        HWND top = CreateWindowExW(0, ClassName(), L"", WS_POPUP | WS_VISIBLE, 0, 0, 800, 480, nullptr, nullptr,
                                   nullptr, nullptr);
        for (int i = 0; i < n; ++i) Child(top, (i % 50) * 4, (i % 40) * 3, 200, 150);
        zel::Desktop::Get().RunUntilIdle();
        DestroyWindow(top);
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_StackedSiblings)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);

void BM_DeepestNesting(benchmark::State& state) {
    zel::Desktop::Get().Reset();
    for (auto _ : state) {
        HWND top = CreateWindowExW(0, ClassName(), L"", WS_POPUP | WS_VISIBLE, 0, 0, 800, 480, nullptr, nullptr,
                                   nullptr, nullptr);
        HWND w = top;
        for (int level = 2; level <= zel::user::kMaxNesting; ++level) w = Child(w, 1, 1, 700, 400);
        zel::Desktop::Get().RunUntilIdle();
        DestroyWindow(top);
    }
}
BENCHMARK(BM_DeepestNesting)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
