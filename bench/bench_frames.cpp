// Frame costs of the demo, screen by screen: a full repaint, showing the screen, and one
// input step (a tap, and a drag step while held) on the first control of each window
// class. For each step: instructions retired in user space (perf_event_open; "n/a" where
// the kernel refuses it -- then run scripts/bench_frames_callgrind), pixels written by the
// raster primitives (text not counted), and wall time; each the least of kRuns.
//
// Not a Google Benchmark program: it prints one table and ignores the benchmark flags
// scripts/bench passes to every program.
#include <afxwin.h>
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
#include <functional>
#include <map>
#include <string>
#include <vector>

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#define ZEL_HAVE_CALLGRIND 1
#endif

#include "gdi/raster.h"
#include "host/demo_app.h"
#include "host/screens.h"

namespace {

constexpr int kRuns = 5;

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
        const auto t0 = std::chrono::steady_clock::now();
#ifdef ZEL_HAVE_CALLGRIND
        if (dump) CALLGRIND_ZERO_STATS;
#endif
        Counter().Start();
        step();
        zel::Desktop::Get().RunUntilIdle();
        const long long n = Counter().Stop();
#ifdef ZEL_HAVE_CALLGRIND
        if (dump) CALLGRIND_DUMP_STATS_AT(g_stepName.c_str());
#endif
        const auto t1 = std::chrono::steady_clock::now();
        best.micros = std::min(best.micros, std::chrono::duration<double, std::micro>(t1 - t0).count());
        if (n >= 0 && (best.instructions < 0 || n < best.instructions)) best.instructions = n;
        const uint64_t pixels = zel::gdi::pixelsWritten - pixels0;
        if (run == 0 || pixels < best.pixels) best.pixels = pixels;
        finish();
        zel::Desktop::Get().RunUntilIdle();
    }
    return best;
}

std::vector<std::string> g_rows;

void Row(const std::string& screen, const std::string& step, const Cost& c) {
    char instr[32], line[200];
    if (c.instructions < 0)
        std::snprintf(instr, sizeof instr, "n/a");
    else
        std::snprintf(instr, sizeof instr, "%.2f M", c.instructions / 1e6);
    std::snprintf(line, sizeof line, "| %-9s | %-28s | %10s | %8.3f M | %9.0f |", screen.c_str(), step.c_str(), instr,
                  c.pixels / 1e6, c.micros);
    g_rows.push_back(line);
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

int main() {
    using zel::demo::DemoApp;
    zel::Desktop& desk = zel::Desktop::Get();
    const char* only = std::getenv("ZEL_FRAMES_ONLY");  // one screen, e.g. under callgrind
    for (const zel::demo::ScreenInfo& info : zel::demo::Screens()) {
        const std::string name = info.name;
        if (only && *only && name != only) continue;
        desk.Reset();
        DemoApp app;
        if (!app.LoadSkin(ZEL_DEMO_SKIN_DIR)) return 1;
        // Showing: from another screen, as a tab tap does (the first show decodes the skins).
        const std::string other = name == "home" ? "player" : "home";
        Step(name, "show", [&] { app.Show(other); }, [&] { app.Show(name); });
        HWND host = HostWindow();
        Step(name, "full repaint", [] {}, [&] {
            ::RedrawWindow(host, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        });
        for (const auto& [cls, control] : ControlKinds(host)) {
            const POINT p = CentreOnScreen(control);
            Step(name, "tap " + cls, [] {}, [&] { desk.Tap(p.x, p.y); });
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
    std::printf("| screen    | step                         | instr      | pixels     | wall (us) |\n");
    std::printf("|---|---|---|---|---|\n");
    for (const std::string& line : g_rows) std::printf("%s\n", line.c_str());
    return 0;
}
