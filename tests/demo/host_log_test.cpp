// The host's log lines, decoded from the messages exactly as controls send them, and its
// command line.
#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/notification.h"
#include "host/options.h"
#include "tour/tour.h"

namespace zel::demo {
namespace {

// Window handles in these tests are stand-ins; the host resolves real ones.
int FakeId(HWND hwnd) { return static_cast<int>(reinterpret_cast<uintptr_t>(hwnd)); }
HWND Handle(int id) { return reinterpret_cast<HWND>(static_cast<uintptr_t>(id)); }

std::string Line(UINT message, WPARAM wParam, LPARAM lParam) {
    return FormatNotification(DecodeNotification(message, wParam, lParam, FakeId));
}

// The lines the default tour makes (BN_CLICKED, the combo box's CBN_ codes, NM_CLICK and
// NM_DBLCLK, a thumb's position, a forwarded press) are in its golden log; here, the rest.
TEST(HostLog, CommandsCarryTheIdentifierAndCodeInWParam) {
    LPARAM button = reinterpret_cast<LPARAM>(Handle(77));
    EXPECT_EQ(Line(WM_COMMAND, MAKEWPARAM(1011, BN_DOUBLECLICKED), button), "1011 WM_COMMAND BN_DOUBLECLICKED");
    EXPECT_EQ(Line(WM_COMMAND, MAKEWPARAM(0xFFFF, 9), button), "65535 WM_COMMAND code=9");
    // A combo box's codes overlap the buttons': the host names them by the sender.
    EXPECT_EQ(NotificationCodeName(WM_COMMAND, 10, true), "CBN_SELENDCANCEL");
    EXPECT_EQ(NotificationCodeName(WM_COMMAND, 11, true), "code=11");
}

TEST(HostLog, NotifyReadsTheHeader) {
    NMHDR header{Handle(5), 1201, static_cast<UINT>(-100)};
    EXPECT_EQ(Line(WM_NOTIFY, 1201, reinterpret_cast<LPARAM>(&header)), "1201 WM_NOTIFY code=-100");
    // Without a header only the identifier in wParam is left.
    EXPECT_EQ(Line(WM_NOTIFY, 1300, 0), "1300 WM_NOTIFY code=0");
}

// A scroll message names its sender by window handle; only the thumb codes carry a
// position, which is 16 bits unsigned in the high word.
TEST(HostLog, ScrollMessagesNameTheBarByHandle) {
    LPARAM bar = reinterpret_cast<LPARAM>(Handle(9001));
    EXPECT_EQ(Line(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 65535), bar), "9001 WM_VSCROLL SB_THUMBPOSITION pos=65535");
    EXPECT_EQ(Line(WM_HSCROLL, MAKEWPARAM(SB_LINEUP, 0), bar), "9001 WM_HSCROLL SB_LINEUP");
    EXPECT_EQ(Line(WM_HSCROLL, MAKEWPARAM(SB_PAGEDOWN, 5), bar), "9001 WM_HSCROLL SB_PAGEDOWN");
    EXPECT_EQ(Line(WM_VSCROLL, MAKEWPARAM(12, 0), bar), "9001 WM_VSCROLL code=12");
    EXPECT_EQ(Line(WM_VSCROLL, SB_ENDSCROLL, 0), "0 WM_VSCROLL SB_ENDSCROLL");  // a window's own bar

    Notification n = DecodeNotification(WM_VSCROLL, SB_LINEDOWN, bar, FakeId);
    n.pos = 3;  // the host asks the control
    EXPECT_EQ(FormatNotification(n), "9001 WM_VSCROLL SB_LINEDOWN pos=3");
}

TEST(HostLog, PointerMessagesCarrySignedPoints) {
    Notification n = DecodeNotification(WM_LBUTTONUP, 0, MAKELPARAM(-3, -40), FakeId);
    n.id = 1001;  // the host names the control under the point
    EXPECT_EQ(FormatNotification(n), "1001 WM_LBUTTONUP x=-3 y=-40");
}

TEST(HostLog, KeepsLinesInOrderAndShowsTheLast) {
    NotificationLog log;
    EXPECT_TRUE(log.Last(2).empty());
    log.Add("a");
    EXPECT_EQ(log.Last(2), std::vector<std::string>{"a"});
    log.Add("b");
    log.Add("c");
    EXPECT_EQ(log.Last(2), (std::vector<std::string>{"b", "c"}));
    EXPECT_EQ(log.Lines().size(), 3u);

    std::string path = std::string(ZEL_TEST_OUT_DIR) + "/host_log_test.log";
    std::filesystem::create_directories(ZEL_TEST_OUT_DIR);
    ASSERT_TRUE(log.WriteTo(path));
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_EQ(text.str(), "a\nb\nc\n");
    std::remove(path.c_str());
    EXPECT_FALSE(log.WriteTo("/nonexistent/dir/tour.log"));
}

std::optional<Options> Parse(std::vector<const char*> args, std::string* error = nullptr) {
    args.insert(args.begin(), "zel-demo");
    return ParseOptions(static_cast<int>(args.size()), args.data(), error);
}

TEST(HostOptions, ReadsEveryOption) {
    std::optional<Options> none = Parse({});
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->tour.empty());
    EXPECT_FALSE(none->window);

    std::optional<Options> all = Parse({"--tour", "a.tour", "--out", "shots", "--skin", "s", "--window"});
    ASSERT_TRUE(all);
    EXPECT_EQ(all->tour, "a.tour");
    EXPECT_EQ(all->out, "shots");
    EXPECT_EQ(all->skin, "s");
    EXPECT_TRUE(all->window);
    EXPECT_TRUE(Parse({"--help"})->help);
}

TEST(HostOptions, RejectsUnknownOptionsAndMissingValues) {
    std::string error;
    EXPECT_FALSE(Parse({"--tuor", "a"}, &error));
    EXPECT_EQ(error, "unknown option '--tuor'");
    EXPECT_FALSE(Parse({"--tour"}, &error));
    EXPECT_EQ(error, "--tour needs a value");
    EXPECT_FALSE(Parse({"--out", ""}, &error));
    EXPECT_EQ(error, "--out needs a value");
    EXPECT_FALSE(Parse({"extra"}, &error));
    EXPECT_EQ(error, "unknown option 'extra'");
    const std::string huge(1 << 20, '-');
    EXPECT_FALSE(Parse({huge.c_str()}, &error));
    EXPECT_EQ(error, "unknown option '" + std::string(kMaxQuoted - 3, '-') + "...'") << "a megabyte is not echoed";
    EXPECT_FALSE(Parse({"\x1B[2J\xC3\xA9"}, &error));
    EXPECT_EQ(error, "unknown option '?[2J?" "?'") << "control bytes and non-ASCII are not echoed";
}

}  // namespace
}  // namespace zel::demo
