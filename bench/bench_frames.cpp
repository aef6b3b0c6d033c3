// Frame costs of the demo, screen by screen: a full repaint (everything invalidated, as
// when a window over the screen goes), a full redraw (the screen's content changed
// everywhere as well), showing the screen for the first time and returning to it (kept
// built while another screen was shown), and one input step (a tap, and a drag step while
// held) on the first control of each window class. For each step: instructions retired in
// user space (perf_event_open; "n/a" where the kernel refuses it -- then run
// scripts/bench_frames_callgrind), pixels written by the raster primitives (text not
// counted), the area invalidated (the union on the screen of every InvalidateRect,
// InvalidateRgn and RedrawWindow, seen by wrapping them, and of every update region a paint
// begins with: what the window manager itself invalidated, where a window was shown, grown
// or uncovered), pixels per invalidated pixel, and wall time; each the least of kRuns.
//
// Not a Google Benchmark program: it prints one table. Of the benchmark flags scripts/bench
// passes to every program it reads --benchmark_out=FILE, and writes there, in Google
// Benchmark's JSON shape, each step's pixels and pixels per invalidated pixel as "times"
// (and the constants frames/unit = 1 and frames/megapixel = 1e6), so that
// bench/budgets.txt can hold them to ratios.
#include <afxwin.h>
#include <dlfcn.h>
#include <linux/perf_event.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <zel/desktop.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cwchar>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#define ZEL_HAVE_CALLGRIND 1
#endif

#include "gdi/raster.h"
#include "host/demo_app.h"
#include "host/screens.h"

// ---- invalidated area ----------------------------------------------------------------
// The wrappers note each invalidated rectangle in screen coordinates, then call the
// platform's function. Nothing is noted under callgrind, whose counts stay the paint's own.
//
// In Win32 a window shown, grown or uncovered is painted because the window manager
// invalidated what became visible of it: that update region is the step's as much as an
// InvalidateRect is. It is read where a paint begins (BeginPaint, before it validates) and
// kept as a region in screen coordinates, rasterised only after the step.
namespace {

struct Noted {
    RECT rect;
    HRGN region = nullptr;  // screen coordinates; when set, rect is its box
};

bool g_noteInvalid = false;
std::vector<Noted> g_invalid;

void NoteInvalid(HWND hwnd, const RECT* rect) {
    if (!g_noteInvalid || !hwnd) return;
    RECT r;
    if (rect)
        r = *rect;
    else if (!::GetClientRect(hwnd, &r))
        return;
    POINT o{0, 0};
    ::ClientToScreen(hwnd, &o);
    ::OffsetRect(&r, o.x, o.y);
    g_invalid.push_back({r});
}

void NoteUpdateRegion(HWND hwnd) {
    if (!g_noteInvalid || !hwnd) return;
    HRGN update = ::CreateRectRgn(0, 0, 0, 0);
    RECT box;
    if (update && ::GetUpdateRgn(hwnd, update, FALSE) > NULLREGION) {
        POINT o{0, 0};
        ::ClientToScreen(hwnd, &o);
        ::OffsetRgn(update, o.x, o.y);
        if (::GetRgnBox(update, &box) > NULLREGION) {
            g_invalid.push_back({box, update});
            return;
        }
    }
    if (update) ::DeleteObject(update);
}

void ForgetInvalid() {
    for (const Noted& n : g_invalid)
        if (n.region) ::DeleteObject(n.region);
    g_invalid.clear();
}

template <class F>
F Real(const char* name) {
    return reinterpret_cast<F>(dlsym(RTLD_NEXT, name));
}

// Looked up before main, not inside a measured step.
const auto g_invalidateRect = Real<BOOL (*)(HWND, const RECT*, BOOL)>("InvalidateRect");
const auto g_invalidateRgn = Real<BOOL (*)(HWND, HRGN, BOOL)>("InvalidateRgn");
const auto g_redrawWindow = Real<BOOL (*)(HWND, const RECT*, HRGN, UINT)>("RedrawWindow");
const auto g_beginPaint = Real<HDC (*)(HWND, PAINTSTRUCT*)>("BeginPaint");

}  // namespace

extern "C" {

BOOL InvalidateRect(HWND hwnd, const RECT* rect, BOOL erase) {
    const auto real = g_invalidateRect;
    NoteInvalid(hwnd, rect);
    return real ? real(hwnd, rect, erase) : FALSE;
}

BOOL InvalidateRgn(HWND hwnd, HRGN rgn, BOOL erase) {
    const auto real = g_invalidateRgn;
    RECT box;
    if (g_noteInvalid) NoteInvalid(hwnd, rgn && ::GetRgnBox(rgn, &box) != ERROR ? &box : nullptr);
    return real ? real(hwnd, rgn, erase) : FALSE;
}

HDC BeginPaint(HWND hwnd, PAINTSTRUCT* ps) {
    const auto real = g_beginPaint;
    NoteUpdateRegion(hwnd);
    return real ? real(hwnd, ps) : nullptr;
}

BOOL RedrawWindow(HWND hwnd, const RECT* rect, HRGN rgn, UINT flags) {
    const auto real = g_redrawWindow;
    RECT box;
    if (g_noteInvalid && (flags & RDW_INVALIDATE))
        NoteInvalid(hwnd, rgn && ::GetRgnBox(rgn, &box) != ERROR ? &box : rect);
    return real ? real(hwnd, rect, rgn, flags) : FALSE;
}

}  // extern "C"

namespace {

constexpr int kRuns = 5;

// Between two input events of one step (a tap's down and up): each is its own frame.
constexpr RECT kNextFrame{1, 1, 0, 0};

void NextFrame() {
    if (g_noteInvalid) g_invalid.push_back({kNextFrame});
}

// Per frame, the pixels of the screen that some noted rectangle or region covers; summed
// over the step's frames.
uint64_t InvalidArea() {
    const int w = zel::gdi::Screen().width, h = zel::gdi::Screen().height;
    std::vector<uint8_t> mask(static_cast<size_t>(w) * static_cast<size_t>(h), 0);
    uint64_t n = 0;
    auto count = [&] {
        for (uint8_t& m : mask) n += std::exchange(m, 0);
    };
    for (const Noted& noted : g_invalid) {
        const RECT& r = noted.rect;
        if (std::memcmp(&r, &kNextFrame, sizeof r) == 0) {
            count();
            continue;
        }
        for (int y = std::max(0, static_cast<int>(r.top)); y < std::min(h, static_cast<int>(r.bottom)); ++y) {
            const RECT row{r.left, y, r.right, y + 1};
            if (noted.region && !::RectInRegion(noted.region, &row)) continue;
            for (int x = std::max(0, static_cast<int>(r.left)); x < std::min(w, static_cast<int>(r.right)); ++x)
                if (!noted.region || ::PtInRegion(noted.region, x, y))
                    mask[static_cast<size_t>(y) * static_cast<size_t>(w) + static_cast<size_t>(x)] = 1;
        }
    }
    count();
    return n;
}

// User-space instructions of this thread, or -1 when the counter is unavailable.
class Instructions {
public:
    Instructions() {
        perf_event_attr attr{};
        attr.type = PERF_TYPE_HARDWARE;
        attr.size = sizeof attr;
        attr.config = PERF_COUNT_HW_INSTRUCTIONS;
        attr.disabled = 1;
        attr.exclude_kernel = 1;
        attr.exclude_hv = 1;
        fd_ = static_cast<int>(syscall(SYS_perf_event_open, &attr, 0, -1, -1, 0));
    }
    ~Instructions() {
        if (fd_ >= 0) close(fd_);
    }
    void Start() {
        if (fd_ < 0) return;
        ioctl(fd_, PERF_EVENT_IOC_RESET, 0);
        ioctl(fd_, PERF_EVENT_IOC_ENABLE, 0);
    }
    long long Stop() {
        if (fd_ < 0) return -1;
        ioctl(fd_, PERF_EVENT_IOC_DISABLE, 0);
        long long n = 0;
        return read(fd_, &n, sizeof n) == sizeof n ? n : -1;
    }

private:
    int fd_ = -1;
};

struct Cost {
    long long instructions = -1;
    uint64_t pixels = 0;
    uint64_t invalid = 0;  // of the run that wrote the fewest pixels
    double micros = 1e30;
};

Instructions& Counter() {
    static Instructions counter;
    return counter;
}

bool UnderCallgrind() {
#ifdef ZEL_HAVE_CALLGRIND
    return RUNNING_ON_VALGRIND;
#else
    return false;
#endif
}

// The name of the step being measured, for callgrind's dump of it.
std::string g_stepName;

// Runs `prepare` (not measured), then `step` and the message pump until idle (measured);
// kRuns times, keeping the fewest instructions and the least wall time. Under callgrind,
// the measured part of the last run is dumped on its own, named after the step.
Cost Measure(const std::function<void()>& prepare, const std::function<void()>& step,
             const std::function<void()>& finish = [] {}) {
    Cost best;
    for (int run = 0; run < kRuns; ++run) {
        const bool dump = UnderCallgrind() && run == kRuns - 1;
        prepare();
        zel::Desktop::Get().RunUntilIdle();
        const uint64_t pixels0 = zel::gdi::pixelsWritten;
        ForgetInvalid();
        g_noteInvalid = !UnderCallgrind();
        const auto t0 = std::chrono::steady_clock::now();
#ifdef ZEL_HAVE_CALLGRIND
        if (dump) CALLGRIND_ZERO_STATS;
#endif
        Counter().Start();
        step();
        zel::Desktop::Get().RunUntilIdle();
        const long long n = Counter().Stop();
        g_noteInvalid = false;
#ifdef ZEL_HAVE_CALLGRIND
        if (dump) CALLGRIND_DUMP_STATS_AT(g_stepName.c_str());
#endif
        const auto t1 = std::chrono::steady_clock::now();
        best.micros = std::min(best.micros, std::chrono::duration<double, std::micro>(t1 - t0).count());
        if (n >= 0 && (best.instructions < 0 || n < best.instructions)) best.instructions = n;
        const uint64_t pixels = zel::gdi::pixelsWritten - pixels0;
        if (run == 0 || pixels < best.pixels) {
            best.pixels = pixels;
            best.invalid = InvalidArea();
        }
        ForgetInvalid();
        finish();
        zel::Desktop::Get().RunUntilIdle();
    }
    return best;
}

std::vector<std::string> g_rows;
// (name, value) for the JSON file.
std::vector<std::pair<std::string, double>> g_figures;

std::string NoSpaces(std::string s) {
    for (char& c : s)
        if (c == ' ') c = '_';
    return s;
}

void Row(const std::string& screen, const std::string& step, const Cost& c) {
    char instr[32], ratio[32], line[240];
    if (c.instructions < 0)
        std::snprintf(instr, sizeof instr, "n/a");
    else
        std::snprintf(instr, sizeof instr, "%.2f M", c.instructions / 1e6);
    if (c.invalid)
        std::snprintf(ratio, sizeof ratio, "%.2f", static_cast<double>(c.pixels) / static_cast<double>(c.invalid));
    else
        std::snprintf(ratio, sizeof ratio, "-");
    std::snprintf(line, sizeof line, "| %-9s | %-28s | %10s | %8.3f M | %8.3f M | %6s | %9.0f |", screen.c_str(),
                  step.c_str(), instr, c.pixels / 1e6, c.invalid / 1e6, ratio, c.micros);
    g_rows.push_back(line);
    const std::string name = "frames/" + screen + "/" + NoSpaces(step);
    g_figures.emplace_back(name + "/pixels", static_cast<double>(c.pixels));
    if (c.invalid)
        g_figures.emplace_back(name + "/pixels_per_invalid",
                               static_cast<double>(c.pixels) / static_cast<double>(c.invalid));
}

// Google Benchmark's JSON shape, enough for scripts/bench_budgets.py.
void WriteJson(const std::string& path) {
    std::ofstream out(path, std::ios::trunc);
    out << "{\n  \"benchmarks\": [\n";
    std::vector<std::pair<std::string, double>> all = {{"frames/unit", 1.0}, {"frames/megapixel", 1e6}};
    all.insert(all.end(), g_figures.begin(), g_figures.end());
    for (size_t i = 0; i < all.size(); ++i) {
        char value[64];
        std::snprintf(value, sizeof value, "%.6f", all[i].second);
        out << "    {\"name\": \"" << all[i].first << "\", \"run_name\": \"" << all[i].first
            << "\", \"run_type\": \"iteration\", \"iterations\": 1, \"real_time\": " << value
            << ", \"cpu_time\": " << value << ", \"time_unit\": \"ns\"}" << (i + 1 < all.size() ? ",\n" : "\n");
    }
    out << "  ]\n}\n";
    if (!out) std::fprintf(stderr, "bench_frames: cannot write %s\n", path.c_str());
}

// Names the next measured step (for callgrind) and measures it.
Cost Step(const std::string& screen, const std::string& step, const std::function<void()>& prepare,
          const std::function<void()>& body, const std::function<void()>& finish = [] {}) {
    g_stepName = screen + "/" + step;
    const Cost c = Measure(prepare, body, finish);
    Row(screen, step, c);
    return c;
}

HWND HostWindow() {
    POINT body{400, 240};
    HWND h = ::WindowFromPoint(body);
    while (HWND parent = ::GetParent(h)) h = parent;
    return h;
}

// The first child of each window class, in z order.
std::vector<std::pair<std::string, HWND>> ControlKinds(HWND host) {
    std::vector<std::pair<std::string, HWND>> kinds;
    for (HWND c = ::GetWindow(host, GW_CHILD); c; c = ::GetWindow(c, GW_HWNDNEXT)) {
        if (!::IsWindowVisible(c)) continue;
        wchar_t name[64] = {};
        ::GetClassNameW(c, name, 64);
        std::string cls(name, name + std::wcslen(name));
        if (std::none_of(kinds.begin(), kinds.end(), [&](const auto& k) { return k.first == cls; }))
            kinds.emplace_back(cls, c);
    }
    return kinds;
}

POINT CentreOnScreen(HWND w) {
    RECT r;
    ::GetWindowRect(w, &r);
    return POINT{(r.left + r.right) / 2, (r.top + r.bottom) / 2};
}

}  // namespace

int main(int argc, char** argv) {
    using zel::demo::DemoApp;
    std::string jsonOut;
    for (int i = 1; i < argc; ++i)
        if (std::strncmp(argv[i], "--benchmark_out=", 16) == 0) jsonOut = argv[i] + 16;
    zel::Desktop& desk = zel::Desktop::Get();
    const char* only = std::getenv("ZEL_FRAMES_ONLY");  // one screen, e.g. under callgrind
    for (const zel::demo::ScreenInfo& info : zel::demo::Screens()) {
        const std::string name = info.name;
        if (only && *only && name != only) continue;
        desk.Reset();
        DemoApp app;
        if (!app.LoadSkin(ZEL_DEMO_SKIN_DIR)) return 1;
        // Showing, from another screen as a tab tap does. A first show builds the screen (it
        // was never shown, or was dropped: the kept one is dropped before each run; the
        // skins come from the cache after the first run). A return shows the screen kept
        // since it was last shown: what a person sees every time after the first.
        const std::string other = name == "home" ? "player" : "home";
        Step(name, "first show", [&] {
            app.Show(other);
            app.DropKeptScreens();
        }, [&] { app.Show(name); });
        Step(name, "return show", [&] { app.Show(other); }, [&] { app.Show(name); });
        HWND host = HostWindow();
        Step(name, "full repaint", [] {}, [&] {
            ::RedrawWindow(host, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        });
        // As if everything the screen draws had changed: the host draws its frame afresh.
        Step(name, "full redraw", [] {}, [&] {
            RECT client;
            ::GetClientRect(host, &client);
            zel::demo::ContentChanged(host, client);
            ::RedrawWindow(host, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        });
        for (const auto& [cls, control] : ControlKinds(host)) {
            const POINT p = CentreOnScreen(control);
            Step(name, "tap " + cls, [] {}, [&] {  // as desk.Tap, a frame each for down and up
                desk.PointerDown(p.x, p.y);
                NextFrame();
                desk.PointerUp(p.x, p.y);
            });
            if (app.screen() != name) {  // the tap went to another screen
                app.Show(name);
                desk.RunUntilIdle();
                host = HostWindow();
                break;
            }
            Step(name, "drag step " + cls, [&] { desk.PointerDown(p.x, p.y); }, [&] { desk.PointerMove(p.x + 4, p.y); },
                 [&] { desk.PointerUp(p.x + 4, p.y); });
            if (app.screen() != name) {
                app.Show(name);
                desk.RunUntilIdle();
                host = HostWindow();
                break;
            }
        }
    }
    desk.Reset();
    CWnd::DeleteTempMap();
    std::fflush(stdout);
    std::printf("| screen    | step                         | instr      | pixels     | invalid    | ratio  | wall (us) |\n");
    std::printf("|---|---|---|---|---|---|---|\n");
    for (const std::string& line : g_rows) std::printf("%s\n", line.c_str());
    if (!jsonOut.empty()) WriteJson(jsonOut);
    return 0;
}
