// Replays every recorded case against the platform: each case's line must equal the one
// recorded under Wine (expected/<group>.txt), and each case must release what it creates.
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
