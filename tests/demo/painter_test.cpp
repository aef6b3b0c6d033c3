// The skin's drawing kit at its edges. What it draws -- coverage at a scale, masks, gradients,
// the smoothing reduction -- is every piece of the generated skin, pinned pixel for pixel by
// the demo's goldens (the default tour, the skin sheet) and by the art checks in
// skin_pieces_test; here, the shares outside 0..1 and a canvas that could not be made.
#include <gtest/gtest.h>

#include "skin/painter.h"
#include "support/leak_check.h"

namespace zel::demo {
namespace {

TEST(Mix, EndsAreExactAndSharesAreClamped) {
    EXPECT_EQ(Mix(RGB(10, 20, 30), RGB(110, 220, 130), 0), RGB(10, 20, 30));
    EXPECT_EQ(Mix(RGB(10, 20, 30), RGB(110, 220, 130), 1), RGB(110, 220, 130));
    EXPECT_EQ(Mix(RGB(10, 20, 30), RGB(110, 220, 130), 0.5), RGB(60, 120, 80));
    EXPECT_EQ(Mix(RGB(10, 20, 30), RGB(110, 220, 130), 7), RGB(110, 220, 130));
    EXPECT_EQ(Mix(RGB(10, 20, 30), RGB(110, 220, 130), -1), RGB(10, 20, 30));
}

TEST(CanvasTest, ABadSizeGivesADeadCanvasThatFailsQuietly) {
    zel::GdiCounts before = zel::LiveGdiObjects();
    {
        Canvas dead(0, 5);
        EXPECT_FALSE(dead.ok());
        EXPECT_FALSE(dead.Save("/tmp/never-written.bmp"));
        EXPECT_TRUE(dead.Colors().empty());
        Painter(dead, 2).Fill(Box{0, 0, 1, 1}, RGB(255, 0, 0));
        EXPECT_FALSE(dead.Reduced(2).ok());
    }
    EXPECT_EQ(zel::LiveGdiObjects().total(), before.total());
}

}  // namespace
}  // namespace zel::demo
