// Position arithmetic shared by the scroll bar and the slider, including the cases the
// controls cannot reach through their windows (the horizontal scroll bar's drag) and
// ranges at the ends of `long`.
#include <gtest/gtest.h>

#include <climits>

#include "ScrollMath.h"

namespace {

using namespace zelctl;

TEST(ScrollMath, ScalingTruncatesTowardZeroAndNeverOverflows) {
    EXPECT_EQ(ScaleTrunc(7, 1, 2), 3);
    EXPECT_EQ(ScaleTrunc(-7, 1, 2), -3) << "toward zero, not down";
    EXPECT_EQ(ScaleTrunc(7, -1, 2), -3);
    EXPECT_EQ(ScaleTrunc(5, 9, 0), 0) << "an empty range or span scales to 0";
    EXPECT_EQ(ScaleTrunc(LONG_MAX, LONG_MAX, LONG_MAX), LONG_MAX) << "the product is formed wide";
    EXPECT_EQ(ScaleTrunc(LONG_MAX, LONG_MAX, 1), LONG_MAX) << "saturated";
    EXPECT_EQ(ScaleTrunc(LONG_MIN, LONG_MAX, 1), LONG_MIN);
    EXPECT_EQ(ScaleTrunc(LONG_MIN, 1, -1), LONG_MAX);
    EXPECT_EQ(ScaleTrunc(-9, -9, -2), -40);
    EXPECT_EQ(ClampPos(__int128(LONG_MAX) + 5, LONG_MIN, LONG_MAX), LONG_MAX);
    EXPECT_EQ(ClampPos(-4, 0, 10), 0);
    EXPECT_EQ(ClampPos(11, 0, 10), 10);
}

TEST(ScrollMath, ScrollBarThumbOffset) {
    EXPECT_EQ(ScrollThumbOffset(24, 6, 0, 0, 100), 0);
    EXPECT_EQ(ScrollThumbOffset(24, 6, 33, 0, 100), 5);
    EXPECT_EQ(ScrollThumbOffset(24, 6, 100, 0, 100), 18);
    EXPECT_EQ(ScrollThumbOffset(24, 6, -25, -50, 50), 4);
    EXPECT_EQ(ScrollThumbOffset(24, 6, 40, 40, 40), 0) << "an empty range puts the thumb at the top";
    EXPECT_EQ(ScrollThumbOffset(100, 10, LONG_MAX, LONG_MIN, LONG_MAX), 90) << "the widest range";
    EXPECT_EQ(ScrollThumbOffset(100, 10, 0, LONG_MIN, LONG_MAX), 45);
}

TEST(ScrollMath, ScrollBarDragMarginsAndMiddleFormulas) {
    const RECT vtrack{0, 10, 12, 110};  // 100 tall
    // Within half a thumb (5) of either end: the limits, whatever the minimum.
    EXPECT_EQ(ScrollDragVertical(14, vtrack, 10, 20, 220), 20);
    EXPECT_EQ(ScrollDragVertical(-300, vtrack, 10, 20, 220), 20);
    EXPECT_EQ(ScrollDragVertical(106, vtrack, 10, 20, 220), 220);
    EXPECT_EQ(ScrollDragVertical(9000, vtrack, 10, 20, 220), 220);
    // In between, measured from the track's top without the minimum: (60 - 5 - 10) x 200 / 90.
    EXPECT_EQ(ScrollDragVertical(60, vtrack, 10, 20, 220), 100);
    EXPECT_EQ(ScrollDragVertical(15, vtrack, 10, 0, 100), 0);
    EXPECT_EQ(ScrollDragVertical(105, vtrack, 10, 0, 100), 100);

    // Horizontal adds the half thumb: (60 + 5 - 10) x 200 / 90, where vertical gave 100.
    const RECT htrack{10, 0, 110, 12};
    EXPECT_EQ(ScrollDragHorizontal(60, htrack, 10, 20, 220), 122);
    EXPECT_EQ(ScrollDragHorizontal(14, htrack, 10, 20, 220), 20);
    EXPECT_EQ(ScrollDragHorizontal(106, htrack, 10, 20, 220), 220);
    EXPECT_EQ(ScrollDragHorizontal(105, htrack, 10, 0, 100), 111) << "the quirk overshoots the maximum unclamped";

    // A thumb as tall as the track leaves no span to divide by.
    const RECT tight{0, 0, 12, 10};
    EXPECT_EQ(ScrollDragVertical(5, tight, 10, 0, 100), 0);
}

TEST(ScrollMath, SliderValueToPixelAndBack) {
    const RECT channel{6, 0, 74, 16};  // 68 wide, thumb 8: 60 pixels of travel
    EXPECT_EQ(SliderThumbCentre(channel, 8, 0, 0, 100), 10);
    EXPECT_EQ(SliderThumbCentre(channel, 8, 50, 0, 100), 40);
    EXPECT_EQ(SliderThumbCentre(channel, 8, 100, 0, 100), 70);
    EXPECT_EQ(SliderThumbCentre(channel, 8, 0, 0, 0), 10) << "an empty range: the channel's left";
    EXPECT_EQ(SliderThumbCentre(channel, 8, -10, -10, -5), 10);

    EXPECT_EQ(SliderDragHorizontal(40, channel, 8, 0, 100), 50);
    EXPECT_EQ(SliderDragHorizontal(-500, channel, 8, 0, 100), 0);
    EXPECT_EQ(SliderDragHorizontal(500, channel, 8, 0, 100), 100);
    EXPECT_EQ(SliderDragHorizontal(40, channel, 8, 1000, 1100), 1050) << "the slider adds its minimum";
    EXPECT_EQ(SliderDragHorizontal(40, RECT{6, 0, 14, 16}, 8, 0, 100), 0) << "no travel: the minimum";

    const RECT column{0, 0, 10, 40};  // progress: no thumb
    EXPECT_EQ(SliderDragVertical(30, column, 0, 0, 100), 25) << "the minimum is at the bottom";
    EXPECT_EQ(SliderDragVertical(-10, column, 0, 0, 100), 100);
    EXPECT_EQ(SliderDragVertical(50, column, 0, 0, 100), 0);
}

TEST(ScrollMath, SliderRangeChangeKeepsThePositionOnlyOnTheNewMaximum) {
    struct Case {
        long pos, oldMin, oldMax, newMin, newMax, expected;
    };
    const Case cases[] = {
        {50, 0, 100, 0, 10, 0},       // rescaled to 500, beyond the new maximum
        {100, 0, 100, 0, 100, 100},   // lands on the maximum
        {25, 0, 100, 0, 50, 50},      // 25 x 100 / 50 = 50, the new maximum
        {100, 0, 100, 20, 120, 20},   // 100 is not 120
        {10, 0, 100, 0, 1000, 0},     // 1: below the maximum
        {0, 0, 100, -5, 5, -5},
        {LONG_MAX, LONG_MIN, LONG_MAX, 0, 1, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(SliderRangePos(c.pos, c.oldMin, c.oldMax, c.newMin, c.newMax), c.expected)
            << c.pos << " of " << c.oldMin << ".." << c.oldMax << " -> " << c.newMin << ".." << c.newMax;
}

}  // namespace
