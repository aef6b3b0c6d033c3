// zel-skin sheet: the demo's skin drawn by the controls themselves in every state the
// families paint, against its golden; --control keeps one control or one class.
#include <gtest/gtest.h>

#include <filesystem>

#include "sheet.h"
#include "support/golden.h"
#include "support/leak_check.h"

namespace zel::skintool {
namespace {

namespace fs = std::filesystem;

class SkinSheet : public zel::test::LeakChecked {
protected:
    void SetUp() override {
        LeakChecked::SetUp();
        std::string error;
        std::optional<SkinSource> loaded = LoadSkinSource(std::string(ZEL_DEMO_SKIN_DIR) + "/default.rc", &error);
        ASSERT_TRUE(loaded) << error;
        skin = *loaded;
        fs::create_directories(out);
    }

    SkinSource skin;
    const fs::path out = fs::path(ZEL_TEST_OUT_DIR) / "skintool";
};

TEST_F(SkinSheet, DemoSkinMatchesGolden) {
    const std::string png = (out / "demo_sheet.png").string();
    SheetResult result = WriteSheet(skin, {}, png);
    ASSERT_TRUE(result.ok) << result.error;
    // Push buttons 16 x 4, shaped 2 x 4, text button 4, check box 2, scroll bar 4, slider 2,
    // progress 1, spinner 2, time-and-date 3, time field 1, display, label, picture and
    // background label 1 each, combo box 2, two lists 3 each, the five special lists 3 each.
    EXPECT_EQ(result.cells, 64 + 8 + 4 + 2 + 4 + 2 + 1 + 2 + 3 + 1 + 4 + 2 + 6 + 15);
    EXPECT_TRUE(result.skipped.empty());
    std::optional<zel::test::Image> sheet = zel::test::ReadPng(png);
    ASSERT_TRUE(sheet);
    EXPECT_GOLDEN("skintool", "demo_sheet", *sheet);
}

TEST_F(SkinSheet, ControlOptionKeepsOneControlOrClass) {
    struct Case {
        const char* control;
        int cells;
    };
    for (const Case& c : {Case{"plus", 4}, Case{"CZELScrollbar", 4}, Case{"language", 2}, Case{"CZELChkBox", 2}}) {
        SCOPED_TRACE(c.control);
        SheetResult result = WriteSheet(skin, {c.control}, (out / "one.png").string());
        EXPECT_TRUE(result.ok) << result.error;
        EXPECT_EQ(result.cells, c.cells);
        EXPECT_TRUE(result.skipped.empty());
    }
    SheetResult none = WriteSheet(skin, {"no_such_control"}, (out / "none.png").string());
    EXPECT_FALSE(none.ok);
    EXPECT_EQ(none.error, "nothing to show");
    EXPECT_FALSE(fs::exists(out / "none.png"));
}

// A control of a class the tool does not know is named, not silently left out.
TEST_F(SkinSheet, UnknownClassesAreReported) {
    SkinSource odd = skin;
    odd.controls.push_back({"CZELKnob", "dial", 99, {}});
    SheetResult result = WriteSheet(odd, {"dial"}, (out / "dial.png").string());
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.skipped, std::vector<std::string>{"CZELKnob dial: no sheet states"});
}

}  // namespace
}  // namespace zel::skintool
