// Live reload: the watch sees a skin folder's edits, and the app rebuilds the screen on
// show from the edited skin (or keeps the old one when the new one does not load).
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "demo_fixture.h"
#include "host/demo_app.h"
#include "host/skin_watch.h"
#include "support/skin_folder.h"

namespace zel::demo {
namespace {

namespace fs = std::filesystem;

// A copy of the generated skin in a folder of its own.
class SkinCopy {
public:
    SkinCopy() {
        static int serial = 0;
        dir_ = fs::temp_directory_path() /
               ("zel-demo-reload-" + std::to_string(getpid()) + "-" + std::to_string(serial++));
        fs::create_directories(dir_);
        for (const char* file : {"default.rc", "resource.h", "dialogs.rc2", "dialogs.h"})
            fs::copy_file(fs::path(ZEL_DEMO_SKIN_DIR) / file, dir_ / file);
        fs::copy(fs::path(ZEL_DEMO_SKIN_DIR) / "skin", dir_ / "skin", fs::copy_options::recursive);
    }
    ~SkinCopy() { fs::remove_all(dir_); }
    const fs::path& Dir() const { return dir_; }

private:
    fs::path dir_;
};

TEST(SkinWatch, SeesRewrittenAddedAndRemovedFiles) {
    SkinCopy skin;
    SkinWatch watch(skin.Dir().string());
    EXPECT_FALSE(watch.Changed());
    std::ofstream(skin.Dir() / "skin" / "background.bmp", std::ios::binary | std::ios::trunc) << "BM";
    EXPECT_TRUE(watch.Changed());
    EXPECT_FALSE(watch.Changed()) << "one edit is reported once";
    std::ofstream(skin.Dir() / "skin" / "new.bmp") << "x";
    EXPECT_TRUE(watch.Changed());
    fs::remove(skin.Dir() / "skin" / "new.bmp");
    EXPECT_TRUE(watch.Changed());
    EXPECT_FALSE(SkinWatch((skin.Dir() / "absent").string()).Changed());
}

class SkinReload : public DemoTest {};

int CountPixels(COLORREF colour) {
    int n = 0;
    for (int y = 0; y < 480; ++y)
        for (int x = 0; x < 800; ++x) n += zel::Desktop::Get().Pixel(x, y) == colour;
    return n;
}

TEST_F(SkinReload, EditedPieceShowsOnTheScreenOnShow) {
    constexpr COLORREF kEdited = RGB(250, 10, 200);
    SkinCopy skin;
    zel::test::SkinFolder made;
    {
        DemoApp app;
        ASSERT_TRUE(app.LoadSkin(skin.Dir().string()));
        ASSERT_TRUE(app.Show("buttons"));
        zel::Desktop::Get().RunUntilIdle();
        ASSERT_EQ(CountPixels(kEdited), 0);

        const std::string solid = made.Solid("edited", 78, 76, kEdited);
        for (const char* state : {"normal", "focus", "pressed", "disabled"})
            fs::copy_file(solid, skin.Dir() / "skin" / (std::string("button_plus_") + state + ".bmp"),
                          fs::copy_options::overwrite_existing);
        ASSERT_TRUE(app.ReloadSkin());
        zel::Desktop::Get().RunUntilIdle();
        EXPECT_EQ(app.screen(), "buttons");
        EXPECT_GT(CountPixels(kEdited), 78 * 76 / 2) << "the plus button wears the edited piece";

        // A skin that no longer loads leaves the screen as it is.
        fs::remove(skin.Dir() / "skin" / "background.bmp");
        EXPECT_FALSE(app.ReloadSkin());
        EXPECT_EQ(app.screen(), "buttons");
    }
    zel::Desktop::Get().Reset();
}

// A skin folder whose dialog script lacks one of the clock's items, or the whole template,
// fails that screen alone: Show reports it, the half-made dialog and its bitmaps go, and
// the other screens still come up.
TEST_F(SkinReload, ClockTemplateWithoutAnItemFailsOnlyThatScreen) {
    SkinCopy skin;
    std::ifstream in(skin.Dir() / "dialogs.rc2");
    std::string script((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const std::string clockItem = "IDC_CLOCK_CLOCK,";
    const size_t line = script.find(clockItem);
    ASSERT_NE(line, std::string::npos);
    const std::string withoutItem =
        script.substr(0, script.rfind('\n', line) + 1) + script.substr(script.find('\n', line) + 1);
    const std::string withoutDialog = "STRINGTABLE\nBEGIN\n    1 \"x\"\nEND\n";
    for (const std::string& broken : {withoutItem, withoutDialog}) {
        std::ofstream(skin.Dir() / "dialogs.rc2", std::ios::trunc) << broken;
        DemoApp app;
        ASSERT_TRUE(app.LoadSkin(skin.Dir().string()));
        testing::internal::CaptureStderr();
        EXPECT_FALSE(app.Show("clock"));
        EXPECT_NE(testing::internal::GetCapturedStderr().find("cannot build the screen 'clock'"), std::string::npos);
        EXPECT_EQ(app.screen(), "");
        EXPECT_TRUE(app.Show("buttons"));
    }
}

}  // namespace
}  // namespace zel::demo
