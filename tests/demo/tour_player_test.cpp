// Playing a tour: the input each command turns into, the screen a shot is named after,
// and where playing stops when the target refuses a step.
#include <gtest/gtest.h>

#include <set>

#include "tour/player.h"

namespace zel::demo {
namespace {

// Logs every call as one short line; screens outside `known` and shots named "fail" are
// refused.
class Recorder : public TourTarget {
public:
    std::vector<std::string> calls;
    std::set<std::string> known = {"buttons", "player"};

    bool ShowScreen(const std::string& name) override {
        calls.push_back("screen " + name);
        return known.count(name) > 0;
    }
    void PointerDown(int x, int y) override { Point("down", x, y); }
    void PointerMove(int x, int y) override { Point("move", x, y); }
    void PointerUp(int x, int y) override { Point("up", x, y); }
    void KeyDown(UINT vk) override { calls.push_back("keydown " + std::to_string(vk)); }
    void KeyUp(UINT vk) override { calls.push_back("keyup " + std::to_string(vk)); }
    void Advance(DWORD ms) override { calls.push_back("advance " + std::to_string(ms)); }
    bool Shot(const std::string& screen, const std::string& shot) override {
        calls.push_back("shot " + screen + "-" + shot);
        return shot != "fail";
    }

private:
    void Point(const char* what, int x, int y) {
        calls.push_back(std::string(what) + " " + std::to_string(x) + "," + std::to_string(y));
    }
};

std::vector<std::string> Play(const std::string& text, std::string* error = nullptr) {
    std::string parseError;
    std::optional<Tour> tour = ParseTour(text, "p.tour", &parseError);
    EXPECT_TRUE(tour) << parseError;
    Recorder r;
    std::string playError;
    bool ok = tour && PlayTour(*tour, r, &playError);
    if (error) *error = ok ? "" : playError;
    return r.calls;
}

TEST(TourPlayer, TurnsCommandsIntoInput) {
    std::vector<std::string> expected = {
        "screen buttons", "down 5,6",      "up 5,6",       "down 1,1",  "move 2,2",  "up 2,2",
        "keydown 13",     "keyup 13",      "advance 250",  "shot buttons-a", "screen player", "shot player-b",
    };
    EXPECT_EQ(Play("screen buttons\ntap 5 6\ndown 1 1\nmove 2 2\nup 2 2\nkey VK_RETURN\nwait 250\n"
                   "shot a\nscreen player\nshot b\n"),
              expected);
}

// Fractional steps round to the nearest pixel either way: the default tour's drags (down
// the play list, back along the volume) pin that through the positions in its golden log.
TEST(TourPlayer, DragPressesMovesInEvenStepsAndLiftsAtTheEnd) {
    std::vector<std::string> expected = {"screen player", "down 10,100", "move 20,95", "move 30,90",
                                         "move 40,85",    "move 50,80",  "up 50,80"};
    EXPECT_EQ(Play("screen player\ndrag 10 100 50 80 4\n"), expected);

    std::vector<std::string> calls = Play("screen player\ndrag 0 0 7 -3\n");
    ASSERT_EQ(calls.size(), 1u + 1 + kDefaultDragSteps + 1);
    EXPECT_EQ(calls[calls.size() - 2], "move 7,-3");  // the last move lands on the end point
}

TEST(TourPlayer, StopsAtAnUnknownScreenWithItsLine) {
    std::string error;
    std::vector<std::string> calls = Play("screen buttons\ntap 1 1\n\nscreen garage\ntap 2 2\n", &error);
    EXPECT_EQ(error, "p.tour:4: unknown screen 'garage'");
    EXPECT_EQ(calls.back(), "screen garage");  // nothing after it was played
}

TEST(TourPlayer, StopsWhenAShotCannotBeWritten) {
    std::string error;
    std::vector<std::string> calls = Play("screen player\nshot fail\nwait 10\n", &error);
    EXPECT_EQ(error, "p.tour:2: cannot write the shot 'player-fail'");
    EXPECT_EQ(calls.back(), "shot player-fail");
}

}  // namespace
}  // namespace zel::demo
