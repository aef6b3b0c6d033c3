// The media player's model: time as the screen writes it, playing through and past the
// end of tracks, the skip-back rule, seeking, and which row of the list a tap lands on.
#include <gtest/gtest.h>

#include "screens/playback.h"

namespace zel::demo {
namespace {

const std::vector<Track> kThree = {{L"a", L"x", 5}, {L"b", L"y", 3}, {L"c", L"z", 4}};

TEST(Playback, TimesAreMinutesAndTwoDigitSeconds) {
    EXPECT_EQ(FormatTime(0), L"0:00");
    EXPECT_EQ(FormatTime(7), L"0:07");
    EXPECT_EQ(FormatTime(60), L"1:00");
    EXPECT_EQ(FormatTime(754), L"12:34");
    EXPECT_EQ(FormatTime(-65), L"-1:05");
}

TEST(Playback, TicksRunToTheEndAndOnIntoTheNextTrackWrappingAfterTheLast) {
    Playback p(kThree);
    ASSERT_TRUE(p.Select(2));
    for (int i = 1; i < 4; ++i) {
        EXPECT_FALSE(p.Tick());
        EXPECT_EQ(p.elapsed(), i);
    }
    EXPECT_EQ(p.remaining(), 1);
    EXPECT_TRUE(p.Tick()) << "the last second ends the track";
    EXPECT_EQ(p.track(), 0);
    EXPECT_EQ(p.elapsed(), 0);

    p.SetPlaying(false);
    EXPECT_FALSE(p.Tick());
    EXPECT_EQ(p.elapsed(), 0) << "paused, time stands still";
}

TEST(Playback, PreviousRestartsUnlessInTheFirstThreeSeconds) {
    Playback p(kThree);
    p.Seek(2);
    p.Previous();
    EXPECT_EQ(p.track(), 2) << "from the first track back to the last";
    p.Seek(3);
    p.Previous();
    EXPECT_EQ(p.track(), 2);
    EXPECT_EQ(p.elapsed(), 0);
    p.Next();
    EXPECT_EQ(p.track(), 0);
}

TEST(Playback, SeekClampsAndBadSelectionsChangeNothing) {
    Playback p(kThree);
    p.Seek(99);
    EXPECT_EQ(p.elapsed(), 5);
    p.Seek(-4);
    EXPECT_EQ(p.elapsed(), 0);
    p.Seek(2);
    EXPECT_FALSE(p.Select(3));
    EXPECT_FALSE(p.Select(-1));
    EXPECT_EQ(p.track(), 0);
    EXPECT_EQ(p.elapsed(), 2);
}

// Rows of 10 in an area 35 high: three whole rows, and the part-row below them is nobody's.
TEST(Playback, ListRowsUnderAPoint) {
    const ListGeometry list{RECT{100, 50, 200, 85}, 10};
    EXPECT_EQ(list.VisibleRows(), 3);
    struct Case {
        POINT p;
        int first, expected;
    };
    for (const Case& c : {Case{{100, 50}, 0, 0}, Case{{199, 59}, 0, 0}, Case{{150, 60}, 0, 1}, Case{{150, 79}, 4, 6},
                          Case{{150, 80}, 0, -1}, Case{{99, 55}, 0, -1}, Case{{200, 55}, 0, -1},
                          Case{{150, 75}, 8, -1}}) {
        EXPECT_EQ(list.RowAt(c.p, c.first, 10), c.expected) << c.p.x << "," << c.p.y << " first " << c.first;
    }
    EXPECT_EQ(list.RowRect(2).top, 70);
    EXPECT_EQ(list.RowRect(2).bottom, 80);
    EXPECT_EQ(list.LastFirstRow(10), 7);
    EXPECT_EQ(list.LastFirstRow(2), 0) << "a short list never scrolls";
}

}  // namespace
}  // namespace zel::demo
