// The soak: the default tour played over and over in one process, each time by a demo
// built from scratch, taken back through its screens (returns to kept screens, and
// screens dropped for others) and torn down again. Whatever a play leaves behind shows as
// GDI objects or windows that outlive it, or as resident memory that keeps growing once
// the caches (glyphs, realized fonts, the skin's images) have reached their working size.
// ZEL_SOAK_PLAYS changes the number of plays (scripts/fuzz-long plays 1000); the
// AddressSanitizer build plays 10 times and checks handles only (see kSanitized).
#include <gtest/gtest.h>

#include <malloc.h>

#include <cstdlib>
#include <string>

#include "demo_fixture.h"
#include "host/demo_app.h"
#include "host/desktop_target.h"
#include "host/screens.h"
#include "support/peak_memory.h"
#include "tour/player.h"
#include "tour/tour.h"

namespace zel::demo {
namespace {

// The host's own target with shots taken only as far as composing the screen.
class QuietTarget : public DesktopTarget {
public:
    explicit QuietTarget(DemoApp& app) : DesktopTarget(app, "") {}
    bool Shot(const std::string&, const std::string&) override {
        zel::Desktop::Get().RunUntilIdle();
        ++shots;
        return true;
    }
    int shots = 0;
};

// AddressSanitizer keeps freed memory in quarantine (hundreds of MiB), so resident size
// says nothing there, and a play costs some 2.5 s: that build plays a few times for the
// handle counts and leaves memory to its own leak check at exit.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif
#else
constexpr bool kSanitized = false;
#endif

int Plays() {
    const char* plays = std::getenv("ZEL_SOAK_PLAYS");
    int n = plays ? std::atoi(plays) : 0;
    return n > 0 ? n : kSanitized ? 10 : 100;
}

// Resident size with the allocator's free pages given back first. The kept screens' frames
// and canvases are large blocks freed out of order; the allocator keeps the free pages
// between them resident and how many depends on where each play's blocks land, which a
// leak check should not count.
uint64_t LiveResidentBytes() {
    malloc_trim(0);
    return zel::test::ResidentBytes();
}

class Soak : public DemoTest {};

TEST_F(Soak, TheDefaultTourPlayedManyTimesKeepsHandlesWindowsAndMemoryFlat) {
    std::string error;
    std::optional<Tour> tour = LoadTour(ZEL_DEMO_DEFAULT_TOUR, &error);
    ASSERT_TRUE(tour) << error;
    const int plays = Plays();
    const zel::GdiCounts gdiBefore = zel::LiveGdiObjects();
    const int windowsBefore = zel::test::LiveWindows();
    // The caches reach their working size within the first plays; after that a play may
    // not add to the resident size beyond allocator noise.
    constexpr int kWarmUp = 5;
    uint64_t warm = 0;
    int shotsPerPlay = 0;
    for (int play = 1; play <= plays; ++play) {
        {
            DemoApp app;
            ASSERT_TRUE(app.LoadSkin(ZEL_DEMO_SKIN_DIR)) << "play " << play;
            QuietTarget target(app);
            ASSERT_TRUE(PlayTour(*tour, target, &error)) << "play " << play << ": " << error;
            if (play == 1) shotsPerPlay = target.shots;
            ASSERT_GT(target.shots, 0);
            ASSERT_EQ(target.shots, shotsPerPlay) << "play " << play << " took other shots";
            // Back through the screens the other way: the last ones the tour showed are
            // returned to, the rest built again while the kept ones are dropped.
            for (auto s = Screens().rbegin(); s != Screens().rend(); ++s) {
                ASSERT_TRUE(app.Show(s->name)) << "play " << play << ": " << s->name;
                zel::Desktop::Get().RunUntilIdle();
            }
        }
        zel::Desktop::Get().RunUntilIdle();
        CWnd::DeleteTempMap();
        zel::GdiCounts gdi = zel::LiveGdiObjects();
        ASSERT_EQ(gdi.total(), gdiBefore.total()) << "GDI objects outlive play " << play << " (bitmaps " << gdi.bitmaps
                                                  << ", DCs " << gdi.dcs << ", fonts " << gdi.fonts << ")";
        ASSERT_EQ(zel::test::LiveWindows(), windowsBefore) << "windows outlive play " << play;
        if (play == std::min(kWarmUp, plays)) warm = LiveResidentBytes();
    }
    uint64_t last = LiveResidentBytes();
    uint64_t growth = last > warm ? last - warm : 0;
    RecordProperty("plays", plays);
    RecordProperty("resident_after_warm_up_kib", static_cast<int>(warm >> 10));
    RecordProperty("resident_at_end_kib", static_cast<int>(last >> 10));
    if (kSanitized) return;
    EXPECT_LE(growth, uint64_t{512} << 10) << plays << " plays: resident " << (warm >> 10) << " KiB after " << kWarmUp
                                         << ", " << (last >> 10) << " KiB at the end";
}

}  // namespace
}  // namespace zel::demo
