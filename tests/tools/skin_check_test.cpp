// zel-skin check against the demo's skin: clean as generated, and each kind of fault a
// designer makes found in a copy broken on purpose, with its exact line and the exit status.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "check.h"
#include "family.h"
#include "support/leak_check.h"
#include "support/skin_folder.h"

namespace zel::skintool {
namespace {

// The demo's controls that wear the scroll bar's pieces as their own bar, in list order.
const char* const kBarWearers[] = {"CZELComBox language", "CZELPlayList player_tracks", "CZELTelList contacts",
                                   "CZELBTList devices", "CBbgFileList files", "CZELListCtrl table"};

namespace fs = std::filesystem;

const fs::path kDemoSkin = ZEL_DEMO_SKIN_DIR;

struct ToolRun {
    int status = -1;
    std::vector<std::string> lines;  // stdout and stderr, in order
};

ToolRun RunTool(const std::string& args) {
    ToolRun run;
    const std::string command = std::string("'") + ZEL_SKIN_TOOL + "' " + args + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return run;
    std::string line;
    for (int c; (c = std::fgetc(pipe)) != EOF;) {
        if (c != '\n') {
            line += char(c);
            continue;
        }
        run.lines.push_back(line);
        line.clear();
    }
    const int status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

SIZE PieceSize(const std::string& path) {
    SIZE size = {0, 0};
    HBITMAP bitmap = static_cast<HBITMAP>(SHLoadDIBitmap(CString(path.c_str())));
    BITMAP info{};
    if (bitmap && GetObjectW(bitmap, sizeof info, &info)) size = {info.bmWidth, info.bmHeight};
    if (bitmap) DeleteObject(bitmap);
    return size;
}

std::string Quoted(const fs::path& p) { return "'" + p.string() + "'"; }

// A copy of the demo's skin (scripts, headers, control list, pieces) in a folder of its own.
class SkinCopy {
public:
    SkinCopy() {
        static int serial = 0;
        dir_ =
            fs::temp_directory_path() / ("zel-skin-check-" + std::to_string(getpid()) + "-" + std::to_string(serial++));
        fs::create_directories(dir_);
        for (const char* file : {"default.rc", "resource.h", "default.controls", "dialogs.rc2", "dialogs.h"})
            fs::copy_file(kDemoSkin / file, dir_ / file);
        fs::copy(kDemoSkin / "skin", dir_ / "skin", fs::copy_options::recursive);
    }
    ~SkinCopy() { fs::remove_all(dir_); }
    SkinCopy(const SkinCopy&) = delete;
    SkinCopy& operator=(const SkinCopy&) = delete;

    const fs::path& Dir() const { return dir_; }
    std::string Piece(const std::string& name) const { return (dir_ / "skin" / (name + ".bmp")).generic_string(); }
    void Replace(const std::string& name, const std::string& madeFile) const {
        fs::copy_file(madeFile, Piece(name), fs::copy_options::overwrite_existing);
    }
    void Write(const std::string& relative, const std::string& bytes) const {
        std::ofstream(dir_ / relative, std::ios::binary | std::ios::trunc) << bytes;
    }
    void DropControlLine(const std::string& prefix) const {
        std::ifstream in(dir_ / "default.controls");
        std::string text, line;
        while (std::getline(in, line))
            if (line.rfind(prefix, 0) != 0) text += line + "\n";
        Write("default.controls", text);
    }

private:
    fs::path dir_;
};

class SkinCheck : public zel::test::LeakChecked {
protected:
    zel::test::SkinFolder made;  // pieces drawn to break the copy with
};

TEST_F(SkinCheck, DemoSkinIsCleanAsScriptAndAsFolder) {
    for (const fs::path& arg : {kDemoSkin / "default.rc", kDemoSkin}) {
        ToolRun run = RunTool("check " + Quoted(arg));
        EXPECT_EQ(run.status, 0) << arg;
        EXPECT_TRUE(run.lines.empty()) << arg << ": " << (run.lines.empty() ? "" : run.lines.front());
    }
}

// Each fault alone in a fresh copy: the exact lines, and exit status 1.
TEST_F(SkinCheck, EachFaultIsOneExactLine) {
    const COLORREF blue = RGB(20, 90, 200), grey = RGB(60, 60, 60);
    struct Case {
        const char* fault;
        std::function<void(const SkinCopy&)> breakIt;
        std::function<std::vector<std::string>(const SkinCopy&)> expected;
    };
    const std::vector<Case> cases = {
        {"missing file", [](const SkinCopy& s) { fs::remove(s.Piece("button_plus_focus")); },
         [](const SkinCopy& s) {
             return std::vector<std::string>{
                 s.Piece("button_plus_focus") +
                 ": CZELButton plus: focus: missing file (cannot open: No such file or directory)"};
         }},
        {"undecodable file", [](const SkinCopy& s) { s.Write("skin/check_back.bmp", "BMnot really a bitmap"); },
         [](const SkinCopy& s) {
             return std::vector<std::string>{
                 s.Piece("check_back") + ": CZELChkBox shuffle: background: does not decode: truncated bitmap header"};
         }},
        {"states of one size disagree",
         [&](const SkinCopy& s) { s.Replace("button_minus_pressed", made.Solid("short", 78, 70, blue)); },
         [](const SkinCopy& s) {
             return std::vector<std::string>{s.Piece("button_minus_pressed") +
                                             ": CZELButton minus: pressed is 78 x 70, normal is 78 x 76"};
         }},
        {"not the size the control expects",
         [&](const SkinCopy& s) {
             for (const char* state : {"normal", "focus", "pressed", "disabled"})
                 s.Replace(std::string("button_prev_") + state, made.Solid("wide", 80, 76, blue));
         },
         [](const SkinCopy& s) {
             return std::vector<std::string>{s.Piece("button_prev_normal") +
                                             ": CZELButton prev: normal is 80 x 76, expected 78 x 76"};
         }},
        {"scroll bar cells",
         [&](const SkinCopy& s) { s.Replace("scroll_thumb_pressed", made.Solid("thumb", 40, 56, blue)); },
         [](const SkinCopy& s) {
             // The bar itself, the combo box's bar and the special lists' bars wear it.
             const std::string file = s.Piece("scroll_thumb_pressed");
             std::vector<std::string> lines{file + ": CZELScrollbar list_bar: thumb pressed is 40 x 56, thumb is 24 x 56"};
             for (const char* control : kBarWearers)
                 lines.push_back(file + ": " + control + ": bar thumb pressed is 40 x 56, bar thumb is 24 x 56");
             return lines;
         }},
        {"thumb wider than its track",
         [&](const SkinCopy& s) {
             s.Replace("scroll_thumb", made.Solid("wide_thumb", 200, 56, blue));
             s.Replace("scroll_thumb_pressed", made.Solid("wide_thumb", 200, 56, blue));
         },
         [](const SkinCopy& s) {
             const std::string track = std::to_string(PieceSize(s.Piece("scroll_track")).cx);
             const std::string file = s.Piece("scroll_thumb");
             std::vector<std::string> lines{file + ": CZELScrollbar list_bar: thumb is 200 wide, wider than the track (" +
                                            track + ")"};
             for (const char* control : kBarWearers)
                 lines.push_back(file + ": " + control + ": bar thumb is 200 wide, wider than the bar track (" + track +
                                 ")");
             return lines;
         }},
        {"more pieces than the class takes",
         [](const SkinCopy& s) {
             std::ofstream(s.Dir() / "default.controls", std::ios::app)
                 << "CZELLable extra IDB_LABEL_LEFT IDB_LABEL_MIDDLE IDB_LABEL_RIGHT IDB_LABEL_LEFT\n";
         },
         [](const SkinCopy& s) {
             const std::string list = (s.Dir() / "default.controls").generic_string();
             std::ifstream in(list);
             int lines = 0;
             for (std::string line; std::getline(in, line);) ++lines;
             return std::vector<std::string>{list + ":" + std::to_string(lines) +
                                             ": CZELLable extra: 4 pieces, the class takes 3"};
         }},
        {"three-piece frame", [&](const SkinCopy& s) { s.Replace("label_middle", made.Solid("middle", 8, 20, grey)); },
         [](const SkinCopy& s) {
             return std::vector<std::string>{s.Piece("label_middle") +
                                             ": CZELLable caption: middle is 20 high, left cap is 40 high"};
         }},
        {"keyed thumb without its key colour",
         [&](const SkinCopy& s) {
             const SIZE size = PieceSize(s.Piece("slider_thumb"));
             s.Replace("slider_thumb", made.Solid("unkeyed", size.cx, size.cy, blue));
         },
         [](const SkinCopy& s) {
             return std::vector<std::string>{s.Piece("slider_thumb") +
                                             ": CZELSlider volume: thumb has no key colour pixel (FF00FF)"};
         }},
        {"shaped button without a key background",
         [&](const SkinCopy& s) { s.Replace("round_play_focus", made.Striped("stripes", 72, 72, blue, grey, 9)); },
         [](const SkinCopy& s) {
             return std::vector<std::string>{
                 s.Piece("round_play_focus") +
                 ": CZELBmpButton play: focus has no key colour: its corners differ from its top-left pixel"};
         }},
        {"file no control wears",
         [&](const SkinCopy& s) { fs::copy_file(made.Solid("spare", 4, 4, blue), s.Piece("spare")); },
         [](const SkinCopy& s) { return std::vector<std::string>{s.Piece("spare") + ": skin: unused file"}; }},
        {"resource no control wears", [](const SkinCopy& s) { s.DropControlLine("CZELStatic portrait"); },
         [](const SkinCopy& s) {
             return std::vector<std::string>{s.Piece("portrait") + ": IDB_PORTRAIT: unused file"};
         }},
        {"unknown resource and class",
         [](const SkinCopy& s) {
             std::ofstream(s.Dir() / "default.controls", std::ios::app) << "CZELLable title IDB_NO_SUCH_PIECE - -\n"
                                                                           "CZELKnob dial IDB_PORTRAIT\n";
         },
         [](const SkinCopy& s) {
             const std::string list = (s.Dir() / "default.controls").generic_string();
             std::ifstream in(list);
             int lines = 0;
             for (std::string line; std::getline(in, line);) ++lines;
             lines -= 2;  // the generated list's own lines, before the two appended
             return std::vector<std::string>{
                 list + ":" + std::to_string(lines + 1) +
                     ": CZELLable title: left cap: IDB_NO_SUCH_PIECE is not in the skin",
                 list + ":" + std::to_string(lines + 2) + ": CZELKnob dial: unknown control class"};
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fault);
        SkinCopy skin;
        c.breakIt(skin);
        ToolRun run = RunTool("check " + Quoted(skin.Dir() / "default.rc"));
        EXPECT_EQ(run.lines, c.expected(skin));
        EXPECT_EQ(run.status, 1);
    }
}

TEST_F(SkinCheck, UnreadableSkinIsStatusTwo) {
    SkinCopy skin;
    fs::remove(skin.Dir() / "default.controls");
    ToolRun run = RunTool("check " + Quoted(skin.Dir()));
    EXPECT_EQ(run.status, 2);
    ASSERT_EQ(run.lines.size(), 1u);
    EXPECT_EQ(run.lines[0], (skin.Dir() / "default.controls").generic_string() +
                                ": skin: no control list (cannot open: No such file or directory)");
    EXPECT_EQ(RunTool("check").status, 2);
    EXPECT_EQ(RunTool("sheet " + Quoted(kDemoSkin)).status, 2);  // no -o
}

// A folder skin: pieces named by path in skin.controls, no script.
TEST_F(SkinCheck, FolderSkinNamesPiecesByPath) {
    made.Solid("left", 10, 32, RGB(1, 2, 3));
    made.Solid("middle", 8, 30, RGB(1, 2, 3));
    made.Solid("right", 10, 32, RGB(1, 2, 3));
    made.Solid("stray", 4, 4, RGB(1, 2, 3));
    std::ofstream(made.Dir() / "skin.controls") << "# a label\nCZELLable title left.bmp middle.bmp right.bmp\n";
    ToolRun run = RunTool("check " + Quoted(made.Dir()));
    EXPECT_EQ(run.status, 1);
    const std::string dir = made.Dir().lexically_normal().generic_string() + "/";
    EXPECT_EQ(run.lines,
              (std::vector<std::string>{dir + "middle.bmp: CZELLable title: middle is 30 high, left cap is 32 high",
                                        dir + "stray.bmp: skin: unused file"}));
}

// The table itself: every rule names pieces the family has, and a family the sheet shows
// says how big it is and how it is made.
TEST(SkinFamilies, RulesAndStatesAreWhole) {
    for (const Family& f : Families()) {
        SCOPED_TRACE(f.className);
        EXPECT_EQ(FindFamily(f.className), &f) << "two families share a class name";
        for (const SizeRule& rule : f.rules) {
            EXPECT_FALSE(rule.pieces.empty());
            for (int piece : rule.pieces) EXPECT_TRUE(piece >= 0 && size_t(piece) < f.pieces.size()) << piece;
        }
        if (!f.states.empty()) {
            EXPECT_TRUE(f.make != nullptr);
            EXPECT_TRUE(f.windowSize != nullptr);
        }
    }
}

}  // namespace
}  // namespace zel::skintool
