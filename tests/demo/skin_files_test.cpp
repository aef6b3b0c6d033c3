// The skin as the build leaves it: the resource script and header pair every piece with
// one identifier and one file, and each file holds exactly the pixels the piece draws.
#include <aygshell.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "skin/catalogue.h"
#include "skin/resource_files.h"
#include "support/leak_check.h"

namespace zel::demo {
namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

std::map<std::string, int> Defines(const std::string& header) {
    std::map<std::string, int> ids;
    const std::regex define(R"(#define (IDB_\w+) +(\d+))");
    for (std::sregex_iterator it(header.begin(), header.end(), define), end; it != end; ++it)
        ids[(*it)[1]] = std::stoi((*it)[2]);
    return ids;
}

std::map<std::string, std::string> Bitmaps(const std::string& script) {
    std::map<std::string, std::string> files;
    const std::regex line(R"((IDB_\w+) +BITMAP +"([^"]*)\")");
    for (std::sregex_iterator it(script.begin(), script.end(), line), end; it != end; ++it)
        files[(*it)[1]] = (*it)[2];
    return files;
}

TEST(SkinResourceFiles, EveryPieceHasOneIdentifierAndOneFileInCatalogueOrder) {
    const std::vector<SkinPiece>& pieces = DefaultSkin();
    std::string header = ResourceHeaderText(pieces);
    std::string script = ResourceScriptText(pieces);
    std::map<std::string, int> ids = Defines(header);
    std::map<std::string, std::string> files = Bitmaps(script);
    ASSERT_EQ(ids.size(), pieces.size());
    ASSERT_EQ(files.size(), pieces.size());
    EXPECT_NE(script.find("#include \"resource.h\""), std::string::npos);
    for (size_t i = 0; i < pieces.size(); ++i) {
        const std::string id = ResourceName(pieces[i].name);
        EXPECT_EQ(ids[id], kFirstResourceId + static_cast<int>(i)) << id;
        // Inside the script's string literal a backslash is written twice.
        EXPECT_EQ(files[id], "skin\\\\" + pieces[i].name + ".bmp") << id;
    }
}

class GeneratedSkin : public zel::test::LeakChecked {};

// A stale or partial build output would dress the demo in old art.
TEST_F(GeneratedSkin, BuildOutputMatchesTheCatalogue) {
    const std::string dir = ZEL_DEMO_SKIN_DIR;
    EXPECT_EQ(ReadFile(dir + "/resource.h"), ResourceHeaderText(DefaultSkin()));
    EXPECT_EQ(ReadFile(dir + "/default.rc"), ResourceScriptText(DefaultSkin()));
    for (const SkinPiece& piece : DefaultSkin()) {
        std::string path = dir + "/skin/" + piece.name + ".bmp";
        std::wstring wide(path.begin(), path.end());
        HBITMAP loaded = SHLoadDIBitmap(wide.c_str());
        ASSERT_NE(loaded, nullptr) << path;
        BITMAP info{};
        GetObjectW(loaded, sizeof info, &info);
        EXPECT_EQ(info.bmWidth, piece.width) << path;
        EXPECT_EQ(info.bmHeight, piece.height) << path;

        Canvas expected = RenderPiece(piece);
        Canvas actual(piece.width, piece.height);
        HDC source = CreateCompatibleDC(actual.dc());
        HGDIOBJ old = SelectObject(source, loaded);
        BitBlt(actual.dc(), 0, 0, piece.width, piece.height, source, 0, 0, SRCCOPY);
        SelectObject(source, old);
        DeleteDC(source);
        DeleteObject(loaded);

        std::vector<COLORREF> want = expected.Colors(), got = actual.Colors();
        auto [w, g] = std::mismatch(want.begin(), want.end(), got.begin());
        if (w != want.end()) {
            size_t i = static_cast<size_t>(w - want.begin());
            ADD_FAILURE() << path << " differs first at " << i % piece.width << "," << i / piece.width;
        }
    }
}

}  // namespace
}  // namespace zel::demo
