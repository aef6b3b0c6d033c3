// zel-demo: the host application of the demo. Headless it plays a tour (the built-in one
// by default) and writes a PNG per shot and the log of every notification the host heard;
// with --window it opens the viewer.
#include <windows.h>
#include <zel/platform.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "host/demo_app.h"
#include "host/desktop_target.h"
#include "host/options.h"
#include "tour/player.h"
#include "tour/tour.h"

namespace {

using namespace zel::demo;

bool PlayTourFile(DemoApp& app, const std::string& tourPath, const std::string& outDir) {
    std::string error;
    std::optional<Tour> tour = LoadTour(tourPath, &error);
    if (!tour) {
        std::fprintf(stderr, "zel-demo: %s\n", error.c_str());
        return false;
    }
    std::error_code ec;
    std::filesystem::create_directories(outDir, ec);
    if (ec) {
        std::fprintf(stderr, "zel-demo: cannot create %s: %s\n", outDir.c_str(), ec.message().c_str());
        return false;
    }
    DesktopTarget target(app, outDir);
    bool played = PlayTour(*tour, target, &error);
    if (!played) std::fprintf(stderr, "zel-demo: %s\n", error.c_str());
    std::string logPath = outDir + "/tour.log";
    if (!app.log().WriteTo(logPath)) {
        std::fprintf(stderr, "zel-demo: cannot write %s\n", logPath.c_str());
        return false;
    }
    auto shots = std::count_if(tour->steps.begin(), tour->steps.end(),
                               [](const TourStep& s) { return s.kind == TourStep::Kind::kShot; });
    if (played)
        std::printf("zel-demo: played %s: %zu notifications, %ld shots in %s\n", tourPath.c_str(),
                    app.log().Lines().size(), static_cast<long>(shots), outDir.c_str());
    return played;
}

int Run(const Options& options) {
    zel::DesktopConfig config;
    config.virtualClock = !options.window;  // a person at the viewer lives in real time
    zel::Desktop::Get().Reset(config);

    DemoApp app;
    if (!app.LoadSkin(options.skin.empty() ? ZEL_DEMO_SKIN_DIR : options.skin)) return 1;
    std::string tour = options.tour;
    if (tour.empty() && !options.window) tour = ZEL_DEMO_DEFAULT_TOUR;
    if (!tour.empty() && !PlayTourFile(app, tour, options.out.empty() ? "out" : options.out)) return 1;
    if (!options.window) return 0;

    if (app.screen().empty() && !app.Show("home")) return 1;
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY"))
        std::fprintf(stderr, "zel-demo: no display; the viewer cannot open\n");
    return zel::Desktop::Get().Run();
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
