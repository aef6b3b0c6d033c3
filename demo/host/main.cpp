// zel-demo: the host application of the demo. Headless it plays a tour (the built-in one
// by default) and writes a PNG per shot and the log of every notification the host heard;
// with --window it opens the viewer, reloads the skin whenever a file of its folder changes,
// and on leaving it (Esc, or closing the window) writes the log and the last screen.
#include <afxwin.h>
#include <zel/desktop.h>
#include <zel/platform.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "host/demo_app.h"
#include "host/desktop_target.h"
#include "host/options.h"
#include "host/skin_watch.h"
#include "tour/player.h"
#include "tour/tour.h"

namespace {

using namespace zel::demo;

// The application object. Esc is the device's back key here: it leaves the viewer, from
// whichever window has the focus, before any control sees it.
class DemoWinApp : public CWinApp {
public:
    DemoWinApp() : CWinApp(L"ZEL demo") {}
    BOOL PreTranslateMessage(MSG* msg) override {
        if (msg->message == WM_KEYDOWN && msg->wParam == VK_ESCAPE) {
            AfxPostQuitMessage(0);
            return TRUE;
        }
        return CWinApp::PreTranslateMessage(msg);
    }
};

// Live reload in the viewer: the skin's folder is polled, and an edited piece rebuilds the
// screen on show with the new skin.
constexpr UINT kSkinPollMs = 300;
DemoApp* g_reloadApp = nullptr;
SkinWatch* g_skinWatch = nullptr;

void CALLBACK PollSkin(HWND, UINT, UINT_PTR, DWORD) {
    if (!g_reloadApp || !g_skinWatch || !g_skinWatch->Changed()) return;
    if (g_reloadApp->ReloadSkin()) std::printf("zel-demo: skin reloaded\n");
}

bool WriteLog(DemoApp& app, const std::string& outDir) {
    std::string logPath = outDir + "/tour.log";
    if (app.log().WriteTo(logPath)) return true;
    std::fprintf(stderr, "zel-demo: cannot write %s\n", logPath.c_str());
    return false;
}

bool MakeOutDir(const std::string& outDir) {
    std::error_code ec;
    std::filesystem::create_directories(outDir, ec);
    if (ec) std::fprintf(stderr, "zel-demo: cannot create %s: %s\n", outDir.c_str(), ec.message().c_str());
    return !ec;
}

bool PlayTourFile(DemoApp& app, const std::string& tourPath, const std::string& outDir) {
    std::string error;
    std::optional<Tour> tour = LoadTour(tourPath, &error);
    if (!tour) {
        std::fprintf(stderr, "zel-demo: %s\n", error.c_str());
        return false;
    }
    if (!MakeOutDir(outDir)) return false;
    DesktopTarget target(app, outDir);
    bool played = PlayTour(*tour, target, &error);
    if (!played) std::fprintf(stderr, "zel-demo: %s\n", error.c_str());
    if (!WriteLog(app, outDir)) return false;
    auto shots = std::count_if(tour->steps.begin(), tour->steps.end(),
                               [](const TourStep& s) { return s.kind == TourStep::Kind::kShot; });
    // The log also marks where each screen begins ("-- screen NAME"); those are not heard.
    auto heard = std::count_if(app.log().Lines().begin(), app.log().Lines().end(),
                               [](const std::string& line) { return line.rfind("--", 0) != 0; });
    if (played)
        std::printf("zel-demo: played %s: %ld notifications, %ld shots in %s\n", tourPath.c_str(),
                    static_cast<long>(heard), static_cast<long>(shots), outDir.c_str());
    return played;
}

int Run(const Options& options) {
    zel::DesktopConfig config;
    config.virtualClock = !options.window;  // a person at the viewer lives in real time
    zel::Desktop::Get().Reset(config);

    DemoWinApp winApp;
    DemoApp app;
    const std::string skinDir = options.skin.empty() ? ZEL_DEMO_SKIN_DIR : options.skin;
    if (!app.LoadSkin(skinDir)) return 1;
    const std::string outDir = options.out.empty() ? "out" : options.out;
    std::string tour = options.tour;
    if (tour.empty() && !options.window) tour = ZEL_DEMO_DEFAULT_TOUR;
    if (!tour.empty() && !PlayTourFile(app, tour, outDir)) return 1;
    if (!options.window) return 0;

    // Without a display the desktop would run headless, for ever on a screen with a timer.
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY") && !std::getenv("SDL_VIDEODRIVER")) {
        std::fprintf(stderr, "zel-demo: no display; the viewer cannot open\n");
        return 1;
    }
    if (app.screen().empty() && !app.Show("home")) return 1;
    SkinWatch watch(skinDir);
    g_reloadApp = &app;
    g_skinWatch = &watch;
    const UINT_PTR poll = SetTimer(nullptr, 0, kSkinPollMs, PollSkin);
    const int status = winApp.Run();
    KillTimer(nullptr, poll);
    g_reloadApp = nullptr;
    g_skinWatch = nullptr;
    if (!MakeOutDir(outDir) || !WriteLog(app, outDir)) return 1;
    const std::string last = outDir + "/" + app.screen() + "-last.png";
    if (!zel::Desktop::Get().SavePng(last.c_str())) std::fprintf(stderr, "zel-demo: cannot write %s\n", last.c_str());
    std::printf("zel-demo: left the viewer on '%s'; %s and tour.log in %s\n", app.screen().c_str(), last.c_str(),
                outDir.c_str());
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    std::string error;
    std::optional<Options> options = ParseOptions(argc, argv, &error);
    if (!options) {
        std::fprintf(stderr, "zel-demo: %s\n%s", error.c_str(), Usage());
        return 2;
    }
    if (options->help) {
        std::printf("%s", Usage());
        return 0;
    }
    zel::GdiCounts before = zel::LiveGdiObjects();
    int status = Run(*options);
    zel::Desktop::Get().Reset();
    int leaked = zel::LiveGdiObjects().total() - before.total();
    if (leaked) {
        std::fprintf(stderr, "zel-demo: %d GDI objects leaked\n", leaked);
        if (status == 0) status = 1;
    }
    return status;
}
