// ReadWholeFile: whole regular files up to the caller's cap, and a short reason for
// everything else, without ever blocking on a FIFO.
#include <sys/stat.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "kernel/file.h"
#include "kernel/strings.h"
#include "support/platform_scratch.h"

namespace {

namespace fs = std::filesystem;
using zel::kernel::ReadWholeFile;

class WholeFiles : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& bytes) const { return scratch_.Write(name, bytes); }
    // The reason a read fails; "" when it succeeds.
    static std::string Reason(const std::string& path, size_t cap) {
        std::string error;
        return ReadWholeFile(path, cap, &error) ? std::string() : error;
    }
    zel::test::ScratchFolder scratch_;
    const fs::path& dir_ = scratch_.dir();
};

TEST_F(WholeFiles, ReadsEveryByteUpToTheCap) {
    const std::string bytes("BM\0\xFF\r\n tail", 11);
    std::string path = Write("a.bin", bytes);
    EXPECT_EQ(ReadWholeFile(path, bytes.size()), bytes);
    EXPECT_EQ(Reason(path, bytes.size() - 1), "file too large");
    EXPECT_EQ(ReadWholeFile(Write("empty", ""), 0), std::string());
}

TEST_F(WholeFiles, RefusesWhatIsNotARegularFile) {
    EXPECT_EQ(Reason((dir_ / "absent").string(), 100), "cannot open: No such file or directory");
    EXPECT_EQ(Reason(dir_.string(), 100), "not a regular file");
    std::string fifo = (dir_ / "fifo").string();
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(Reason(fifo, 100), "not a regular file");  // returns at once: no writer is waited for
    EXPECT_FALSE(ReadWholeFile(fifo, 100));              // the reason is optional
}

TEST(KernelStrings, TrimAndCaseTouchOnlyAscii) {
    struct Case {
        std::string in, trimmed;
    };
    const Case cases[] = {
        {"", ""}, {" \t\r\n\v\f", ""}, {"  a b  ", "a b"}, {"\tx\r", "x"}, {"\xC2\xA0y\xC2\xA0", "\xC2\xA0y\xC2\xA0"},
    };
    for (const Case& c : cases) EXPECT_EQ(zel::kernel::Trim(c.in), c.trimmed) << '"' << c.in << '"';
    EXPECT_EQ(zel::kernel::Upper("Tahoma \xC3\xA4z_9"), "TAHOMA \xC3\xA4Z_9");
    EXPECT_EQ(zel::kernel::Lower("MS Shell \xC3\x84Z"), "ms shell \xC3\x84z");
}

}  // namespace
