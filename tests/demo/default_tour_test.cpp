// The built-in tour, played headless as zel-demo plays it: the host must hear exactly the
// notifications of tests/golden/demo/default_tour.log, and every shot must match its
// golden tests/golden/demo/<screen>-<shot>.png. ZEL_UPDATE_GOLDENS=1 rewrites both (an
// explicit act: look at the images and the log before committing them).
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "demo_fixture.h"
#include "host/demo_app.h"
#include "host/desktop_target.h"
#include "support/golden.h"
#include "tour/player.h"
#include "tour/tour.h"

namespace zel::demo {
namespace {

namespace fs = std::filesystem;

const fs::path kExpectedLog = fs::path(ZEL_TEST_DATA_DIR) / "golden" / "demo" / "default_tour.log";

bool Updating() {
    const char* update = std::getenv("ZEL_UPDATE_GOLDENS");
    return update && std::string(update) == "1";
}

// Plays on the desktop like the host's own target; each shot is compared instead of saved.
class GoldenShots : public DesktopTarget {
public:
    explicit GoldenShots(DemoApp& app) : DesktopTarget(app, "") {}

    bool Shot(const std::string& screen, const std::string& shot) override {
        zel::Desktop::Get().RunUntilIdle();
        names.push_back(screen + "-" + shot);
        ::testing::AssertionResult match = zel::test::ScreenMatchesGolden("demo", names.back(), RECT{0, 0, 800, 480});
        if (!match) failures.push_back(match.message());
        return true;
    }

    std::vector<std::string> names;
    std::vector<std::string> failures;
};

std::vector<std::string> ReadLines(const fs::path& path) {
    std::vector<std::string> lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

::testing::AssertionResult LogMatches(const std::vector<std::string>& actual) {
    if (Updating()) {
        std::ofstream out(kExpectedLog, std::ios::trunc);
        for (const std::string& line : actual) out << line << '\n';
        return ::testing::AssertionSuccess();
    }
    if (!fs::exists(kExpectedLog))
        return ::testing::AssertionFailure() << "missing " << kExpectedLog << " (ZEL_UPDATE_GOLDENS=1 writes it)";
    const std::vector<std::string> expected = ReadLines(kExpectedLog);
    for (size_t i = 0; i < std::max(expected.size(), actual.size()); ++i) {
        const std::string want = i < expected.size() ? expected[i] : "(end of log)";
        const std::string got = i < actual.size() ? actual[i] : "(end of log)";
        if (want != got)
            return ::testing::AssertionFailure() << kExpectedLog.filename() << " line " << i + 1 << ": expected '"
                                                 << want << "', the host heard '" << got << "'";
    }
    return ::testing::AssertionSuccess();
}

class DefaultTour : public DemoTest {};

TEST_F(DefaultTour, HostHearsTheExpectedNotificationsAndTheScreensMatchTheirGoldens) {
    DemoApp app;
    ASSERT_TRUE(app.LoadSkin(ZEL_DEMO_SKIN_DIR));
    std::string error;
    std::optional<Tour> tour = LoadTour(ZEL_DEMO_DEFAULT_TOUR, &error);
    ASSERT_TRUE(tour) << error;

    GoldenShots target(app);
    ASSERT_TRUE(PlayTour(*tour, target, &error)) << error;
    EXPECT_EQ(target.names, (std::vector<std::string>{"home-start", "player-playing", "player-paused",
                                                       "buttons-holding", "buttons-pressed", "clock-date",
                                                       "clock-picker", "clock-running", "phone-ready",
                                                       "phone-short", "phone-long", "settings-language",
                                                       "settings-region", "settings-chosen", "lists-opened",
                                                       "lists-chosen", "contacts-call", "devices-connected",
                                                       "files-marked", "table-by-size", "table-by-kind"}));
    for (const std::string& failure : target.failures) ADD_FAILURE() << failure;
    EXPECT_TRUE(LogMatches(app.log().Lines()));
}

}  // namespace
}  // namespace zel::demo
