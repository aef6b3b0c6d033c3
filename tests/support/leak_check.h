// Test fixture that proves a test releases every GDI object it created; LiveWindows()
// counts the windows that exist, for fixtures that also prove every window went.
#pragma once

#include <gtest/gtest.h>
#include <zel/platform.h>

namespace zel::test {

// Every window below the desktop window, children included.
int LiveWindows();

class LeakChecked : public ::testing::Test {
protected:
    void SetUp() override { before_ = zel::LiveGdiObjects(); }
    void TearDown() override {
        zel::GdiCounts after = zel::LiveGdiObjects();
        EXPECT_EQ(after.dcs, before_.dcs) << "device contexts leaked";
        EXPECT_EQ(after.bitmaps, before_.bitmaps) << "bitmaps leaked";
        EXPECT_EQ(after.brushes, before_.brushes) << "brushes leaked";
        EXPECT_EQ(after.pens, before_.pens) << "pens leaked";
        EXPECT_EQ(after.fonts, before_.fonts) << "fonts leaked";
        EXPECT_EQ(after.regions, before_.regions) << "regions leaked";
    }

private:
    zel::GdiCounts before_;
};

}  // namespace zel::test
