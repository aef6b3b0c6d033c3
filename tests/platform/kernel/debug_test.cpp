// Debug output formatting, message boxes and MulDiv.
#include <windows.h>

#include <gtest/gtest.h>
#include <zel/debug.h>

namespace {

class DebugOutput : public ::testing::Test {
protected:
    void SetUp() override {
        zel::SetDebugSink([this](const std::wstring& line) { lines.push_back(line); });
    }
    void TearDown() override { zel::SetDebugSink(nullptr); }
    std::vector<std::wstring> lines;
};

TEST_F(DebugOutput, FormatsTheWsprintfSubset) {
    struct Case {
        std::wstring want;
        std::function<void()> print;
    };
    const Case cases[] = {
        {L"n=-5 u=7 x=ff X=FF", [] { NKDbgPrintfW(L"n=%d u=%u x=%x X=%X", -5, 7u, 255u, 255u); }},
        {L"[   42][42   ][-0042][0007]", [] { NKDbgPrintfW(L"[%5d][%-5d][%05d][%04x]", 42, 42, -42, 7u); }},
        {L"s=abc c=Z S=narrow null=(null)",
         [] { NKDbgPrintfW(L"s=%s c=%c S=%S null=%s", L"abc", L'Z', "narrow", static_cast<const wchar_t*>(nullptr)); }},
        {L"l=-2147483648 lx=80000000 100%", [] { NKDbgPrintfW(L"l=%ld lx=%lx 100%%", LONG(0x80000000u), 0x80000000u); }},
        {L"big=12345678901 %q stays", [] { NKDbgPrintfW(L"big=%I64d %q stays", 12345678901LL); }},
    };
    for (const Case& c : cases) {
        lines.clear();
        c.print();
        ASSERT_EQ(lines.size(), 1u);
        EXPECT_EQ(lines[0], c.want);
    }
}

TEST_F(DebugOutput, TrailingLineBreaksAreNotPartOfTheLine) {
    NKDbgPrintfW(L"value %d\r\n", 3);
    OutputDebugStringW(L"plain\n");
    OutputDebugStringW(nullptr);
    EXPECT_EQ(lines, (std::vector<std::wstring>{L"value 3", L"plain", L""}));
}

TEST(MessageBox, IsRecordedAndAnsweredWithTheDefaultButton) {
    zel::ClearMessageBoxes();
    EXPECT_EQ(MessageBoxW(nullptr, L"Saved", L"Info", MB_OK), IDOK);
    EXPECT_EQ(MessageBoxW(nullptr, L"Delete?", nullptr, MB_YESNO | MB_ICONQUESTION), IDYES);
    ASSERT_EQ(zel::MessageBoxes().size(), 2u);
    EXPECT_EQ(zel::MessageBoxes()[0].text, L"Saved");
    EXPECT_EQ(zel::MessageBoxes()[1].caption, L"Error") << "the caption Windows uses when none is given";
    EXPECT_EQ(zel::MessageBoxes()[1].type, static_cast<UINT>(MB_YESNO | MB_ICONQUESTION));
    zel::ClearMessageBoxes();
    EXPECT_TRUE(zel::MessageBoxes().empty());
}

TEST(MulDiv, RoundsHalfAwayFromZeroAndFailsWithMinusOne) {
    EXPECT_EQ(MulDiv(10, 3, 4), 8);    // 7.5
    EXPECT_EQ(MulDiv(-10, 3, 4), -8);  // -7.5
    EXPECT_EQ(MulDiv(10, 3, -4), -8);
    EXPECT_EQ(MulDiv(7, 1, 3), 2);
    EXPECT_EQ(MulDiv(0x40000000, 0x40000000, 0x40000000), 0x40000000) << "64-bit intermediate";
    EXPECT_EQ(MulDiv(1, 1, 0), -1);
    EXPECT_EQ(MulDiv(0x7FFFFFFF, 4, 1), -1) << "overflow";
}

}  // namespace
