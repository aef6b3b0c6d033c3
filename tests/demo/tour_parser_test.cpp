// The tour language: what each command reads into, and a clear "file:line: message" for
// every way a line can be wrong, before anything is played.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tour/keys.h"
#include "tour/tour.h"

namespace zel::demo {
namespace {

using Kind = TourStep::Kind;

Tour Parse(const std::string& text) {
    std::string error;
    std::optional<Tour> tour = ParseTour(text, "t.tour", &error);
    EXPECT_TRUE(tour) << error;
    return tour ? *tour : Tour{};
}

std::string ErrorOf(const std::string& text) {
    std::string error;
    EXPECT_FALSE(ParseTour(text, "tour.txt", &error)) << text;
    return error;
}

TEST(TourParser, ReadsEveryCommand) {
    Tour t = Parse(
        "screen buttons\n"
        "tap 10 20\n"
        "down -5 7\n"
        "move 6 +8\n"
        "up 7 9\n"
        "drag 1 2 301 -2\n"
        "drag 0 0 10 10 3\n"
        "key VK_RETURN\n"
        "key 0x41\n"
        "key 40\n"
        "wait 350\n"
        "shot pressed-1\n");
    ASSERT_EQ(t.steps.size(), 12u);
    EXPECT_EQ(t.file, "t.tour");
    const TourStep& s = t.steps[0];
    EXPECT_EQ(s.kind, Kind::kScreen);
    EXPECT_EQ(s.name, "buttons");
    EXPECT_EQ(s.line, 1);

    EXPECT_EQ(t.steps[1].kind, Kind::kTap);
    EXPECT_EQ(std::pair(t.steps[1].x, t.steps[1].y), std::pair(10, 20));
    EXPECT_EQ(t.steps[2].kind, Kind::kDown);
    EXPECT_EQ(std::pair(t.steps[2].x, t.steps[2].y), std::pair(-5, 7));
    EXPECT_EQ(t.steps[3].kind, Kind::kMove);
    EXPECT_EQ(t.steps[3].y, 8);
    EXPECT_EQ(t.steps[4].kind, Kind::kUp);

    const TourStep& drag = t.steps[5];
    EXPECT_EQ(drag.kind, Kind::kDrag);
    EXPECT_EQ((std::array{drag.x, drag.y, drag.x2, drag.y2}), (std::array{1, 2, 301, -2}));
    EXPECT_EQ(drag.steps, kDefaultDragSteps);
    EXPECT_EQ(t.steps[6].steps, 3);

    EXPECT_EQ(t.steps[7].vk, UINT(VK_RETURN));
    EXPECT_EQ(t.steps[8].vk, 0x41u);
    EXPECT_EQ(t.steps[9].vk, UINT(VK_DOWN));
    EXPECT_EQ(t.steps[10].kind, Kind::kWait);
    EXPECT_EQ(t.steps[10].ms, 350u);
    EXPECT_EQ(t.steps[11].kind, Kind::kShot);
    EXPECT_EQ(t.steps[11].name, "pressed-1");
    EXPECT_EQ(t.steps[11].line, 12);
}

TEST(TourParser, SkipsCommentsAndBlankLinesAndKeepsLineNumbers) {
    Tour t = Parse(
        "\xEF\xBB\xBF# a tour saved with a byte order mark\r\n"
        "\r\n"
        "   \t \n"
        "screen player   # comments may follow a command\r\n"
        "\ttap\t1   2\n"
        "wait 0");  // no newline at the end
    ASSERT_EQ(t.steps.size(), 3u);
    EXPECT_EQ(t.steps[0].name, "player");
    EXPECT_EQ(t.steps[0].line, 4);
    EXPECT_EQ(t.steps[1].line, 5);
    EXPECT_EQ(t.steps[1].y, 2);
    EXPECT_EQ(t.steps[2].line, 6);
    EXPECT_TRUE(Parse("").steps.empty());
    EXPECT_TRUE(Parse("# only a comment").steps.empty());
}

TEST(TourParser, NamesTheFileAndLineOfTheFirstBadLine) {
    struct Case {
        std::string text, message;
    } cases[] = {
        {"screen a\ntap 1 2\n\n\n\n\ntapp 3 4\n", "tour.txt:7: unknown command 'tapp'"},
        {"Tap 1 2\n", "tour.txt:1: unknown command 'Tap'"},
        {"tap 1\n", "tour.txt:1: usage: tap X Y"},
        {"tap 1 2 3\n", "tour.txt:1: usage: tap X Y"},
        {"drag 1 2 3\n", "tour.txt:1: usage: drag X1 Y1 X2 Y2 [STEPS]"},
        {"screen\n", "tour.txt:1: usage: screen NAME"},
        {"screen a b\n", "tour.txt:1: usage: screen NAME"},
        {"wait\n", "tour.txt:1: usage: wait MS"},
        {"key\n", "tour.txt:1: usage: key VK_NAME|NUMBER"},
        {"tap 1 y\n", "tour.txt:1: 'y' is not a whole number"},
        {"tap 1.5 2\n", "tour.txt:1: '1.5' is not a whole number"},
        {"tap 0x 2\n", "tour.txt:1: '0x' is not a whole number"},
        {"tap +-1 2\n", "tour.txt:1: '+-1' is not a whole number"},
        {"tap 1 40000\n", "tour.txt:1: coordinate 40000 is out of range (-32768..32767)"},
        {"tap 99999999999999999999 1\n", "tour.txt:1: '99999999999999999999' is not a whole number"},
        {"wait -1\n", "tour.txt:1: wait -1 is out of range (0..600000)"},
        {"drag 0 0 1 1 0\n", "tour.txt:1: step count 0 is out of range (1..1000)"},
        {"key VK_NOPE\n", "tour.txt:1: unknown key 'VK_NOPE'"},
        {"key vk_return\n", "tour.txt:1: unknown key 'vk_return'"},
        {"key 0\n", "tour.txt:1: key 0 is out of range (1..254)"},
        {"key 0x100\n", "tour.txt:1: key 0x100 is out of range (1..254)"},
        {"screen ../etc\n", "tour.txt:1: screen name '../etc' may only use letters, digits, '-' and '_'"},
        {"screen a\nshot x/y\n", "tour.txt:2: shot name 'x/y' may only use letters, digits, '-' and '_'"},
        {"shot early\n", "tour.txt:1: shot before any screen"},
    };
    for (const Case& c : cases) EXPECT_EQ(ErrorOf(c.text), c.message) << c.text;
}

// The stylus is a single finger: it goes down before it moves or lifts, and it is lifted
// before the next press or a change of screen.
TEST(TourParser, FollowsTheStylus) {
    struct Case {
        std::string text, message;
    } cases[] = {
        {"move 1 1\n", "tour.txt:1: 'move' while the stylus is up"},
        {"up 1 1\n", "tour.txt:1: 'up' while the stylus is up"},
        {"down 1 1\nup 1 1\nup 1 1\n", "tour.txt:3: 'up' while the stylus is up"},
        {"down 1 1\ndown 2 2\n", "tour.txt:2: 'down' while the stylus is down (since line 1)"},
        {"down 1 1\nwait 5\ntap 2 2\n", "tour.txt:3: 'tap' while the stylus is down (since line 1)"},
        {"down 1 1\ndrag 1 1 2 2\n", "tour.txt:2: 'drag' while the stylus is down (since line 1)"},
        {"screen a\ndown 1 1\nscreen b\n", "tour.txt:3: 'screen' while the stylus is down (since line 2)"},
        {"screen a\n\ndown 1 1\nmove 2 2\nwait 10\n", "tour.txt:3: the stylus is never lifted after this 'down'"},
    };
    for (const Case& c : cases) EXPECT_EQ(ErrorOf(c.text), c.message) << c.text;

    // Held: time passes, keys go down and shots catch the pressed look.
    Tour held = Parse("screen a\ndown 1 1\nwait 400\nkey VK_UP\nshot held\nmove 2 2\nup 2 2\n");
    EXPECT_EQ(held.steps.size(), 7u);
}

// Whatever a bad token holds, its message stays one short printable line.
TEST(TourParser, QuotesABadTokenAsAtMostSixtyPrintableCharacters) {
    const std::string huge(1 << 20, 'x');
    const std::string cut = "'" + std::string(kMaxQuoted - 3, 'x') + "...'";
    struct Case {
        std::string text, message;
    } cases[] = {
        {huge + "\n", "tour.txt:1: unknown command " + cut},
        {"key " + huge + "\n", "tour.txt:1: unknown key " + cut},
        {"screen \x01\xFF" "a\x7F\n", "tour.txt:1: screen name '??a?' may only use letters, digits, '-' and '_'"},
        {"tap " + std::string(1 << 20, '0') + "40000 1\n",
         "tour.txt:1: coordinate " + std::string(kMaxQuoted - 3, '0') + "... is out of range (-32768..32767)"},
        {"tap " + std::string(kMaxQuoted, 'y') + " 1\n", "tour.txt:1: '" + std::string(kMaxQuoted, 'y') + "' is not a whole number"},
    };
    for (const Case& c : cases) EXPECT_EQ(ErrorOf(c.text), c.message) << c.text.substr(0, 80);
    EXPECT_EQ(Quoted(std::string(kMaxQuoted + 1, 'z')).size(), kMaxQuoted + 2) << "60 characters and the quotes";
}

// A tour is read only from a regular file of reasonable size; anything else is a clear
// error before a byte is read (opening a FIFO would wait for a writer for ever).
TEST(TourParser, LoadTourReadsOnlyRegularFiles) {
    const std::filesystem::path dir = std::filesystem::path(ZEL_TEST_OUT_DIR) / "tour_files";
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir / "a.tour");
    const std::string fifo = (dir / "fifo.tour").string();
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const std::string big = (dir / "big.tour").string();
    std::ofstream(big) << std::string(kMaxTourBytes + 1, '#');
    const std::string good = (dir / "good.tour").string();
    std::ofstream(good) << "wait 1\n";

    struct Case {
        std::string path, message;
    } cases[] = {
        {(dir / "a.tour").string(), "is a directory, not a tour"},
        {fifo, "is not a regular file"},
        {"/dev/null", "is not a regular file"},
        {big, "is larger than 1 MiB, too large for a tour"},
        {(dir / "missing.tour").string(), "cannot open the tour"},
    };
    for (const Case& c : cases) {
        std::string error;
        EXPECT_FALSE(LoadTour(c.path, &error)) << c.path;
        EXPECT_EQ(error, c.path + ": " + c.message);
    }
    std::string error;
    std::optional<Tour> tour = LoadTour(good, &error);
    ASSERT_TRUE(tour) << error;
    EXPECT_EQ(tour->steps.size(), 1u);
    if (geteuid() != 0) {  // root reads whatever the mode says
        chmod(good.c_str(), 0);
        EXPECT_FALSE(LoadTour(good, &error));
        EXPECT_EQ(error, good + ": cannot open the tour (Permission denied)");
    }
    std::filesystem::remove_all(dir);
}

TEST(VirtualKeys, NamesAndNumbersRoundTrip) {
    for (UINT vk : {UINT(VK_RETURN), UINT(VK_DOWN), UINT(VK_PRIOR), UINT(VK_F1), UINT(VK_F1 + 11), UINT(VK_ESCAPE)}) {
        std::optional<UINT> back = VirtualKeyFromName(VirtualKeyName(vk));
        ASSERT_TRUE(back) << VirtualKeyName(vk);
        EXPECT_EQ(*back, vk);
    }
    EXPECT_EQ(VirtualKeyName(VK_NEXT), "VK_NEXT");
    EXPECT_EQ(VirtualKeyName(0x41), "0x41");
    EXPECT_FALSE(VirtualKeyFromName("VK_return"));
    EXPECT_FALSE(VirtualKeyFromName(""));
}

}  // namespace
}  // namespace zel::demo
