// Replays every recorded case against the platform: each case's line must equal the one
// recorded under Wine (expected/<group>.txt), and each case must release what it creates.
// Cases listed in expected/known-differences.txt ("group/case reason") differ on purpose;
// those in expected/open-differences.txt differ by a fault not fixed yet. Both are skipped
// with their reason, and fail once they stop differing, so neither list outlives the
// differences it explains.
#include <gtest/gtest.h>
#include <zel/platform.h>

#include <fstream>
#include <map>
#include <sstream>

#include "recorded.h"

namespace {

std::map<std::string, std::string> Fields(const std::string& line) {
    std::map<std::string, std::string> fields;
    std::istringstream in(line);
    std::string token;
    in >> token;  // the case name
    while (in >> token) {
        size_t eq = token.find('=');
        fields[token.substr(0, eq)] = eq == std::string::npos ? "" : token.substr(eq + 1);
    }
    return fields;
}

// The recorded line of every case of `group`, by case name.
std::map<std::string, std::string> Expected(const std::string& group) {
    std::map<std::string, std::string> lines;
    std::ifstream in(std::string(ZEL_TEST_DATA_DIR) + "/platform/recorded/expected/" + group + ".txt");
    for (std::string line; std::getline(in, line);)
        if (!line.empty()) lines[line.substr(0, line.find(' '))] = line;
    return lines;
}

// Reason by "group/case" for every listed difference, prefixed with the list's meaning.
const std::map<std::string, std::string>& ListedDifferences() {
    static const std::map<std::string, std::string> listed = [] {
        std::map<std::string, std::string> m;
        for (const char* list : {"known", "open"}) {
            std::ifstream in(std::string(ZEL_TEST_DATA_DIR) + "/platform/recorded/expected/" + list +
                             "-differences.txt");
            for (std::string line; std::getline(in, line);) {
                if (line.empty() || line[0] == '#') continue;
                size_t space = line.find(' ');
                m[line.substr(0, space)] = std::string(list[0] == 'k' ? "differs on purpose: " : "open fault: ") +
                                           (space == std::string::npos ? "" : line.substr(space + 1));
            }
        }
        return m;
    }();
    return listed;
}

class Recorded : public ::testing::TestWithParam<recorded::Case> {};

TEST_P(Recorded, MatchesTheRecording) {
    const recorded::Case& c = GetParam();
    std::map<std::string, std::string> expected = Expected(c.group);
    auto it = expected.find(c.name);
    ASSERT_NE(it, expected.end()) << c.group << "/" << c.name << " has no recording; run record/record.sh";
    zel::GdiCounts before = zel::LiveGdiObjects();
    std::string actual = recorded::Run(c);
    zel::GdiCounts after = zel::LiveGdiObjects();
    EXPECT_EQ(after.dcs + after.bitmaps + after.brushes + after.pens + after.fonts + after.regions,
              before.dcs + before.bitmaps + before.brushes + before.pens + before.fonts + before.regions)
        << "the case leaks GDI objects";
    auto listed = ListedDifferences().find(std::string(c.group) + "/" + c.name);
    if (listed != ListedDifferences().end()) {
        EXPECT_NE(actual, it->second) << "no longer differs: remove it from its differences list";
        GTEST_SKIP() << listed->second;
    }
    if (actual == it->second) return;
    // Name the differing keys rather than print two long lines.
    std::map<std::string, std::string> want = Fields(it->second), got = Fields(actual);
    for (const auto& [key, value] : want) {
        auto g = got.find(key);
        EXPECT_TRUE(g != got.end() && g->second == value)
            << key << ": recorded " << value << ", platform " << (g == got.end() ? "(missing)" : g->second);
    }
    for (const auto& [key, value] : got) EXPECT_TRUE(want.count(key)) << key << " is not in the recording";
}

std::string CaseName(const ::testing::TestParamInfo<recorded::Case>& info) {
    return std::string(info.param.group) + "_" + info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Cases, Recorded, ::testing::ValuesIn(recorded::Registry()), CaseName);

}  // namespace
