// CTime: local time from SYSTEMTIME with the daylight flag, fields, formatting.
#include <afx.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

namespace {

// Pins the time zone for the test and restores the previous one.
class TimeZone {
public:
    explicit TimeZone(const char* tz) {
        const char* old = std::getenv("TZ");
        had_ = old != nullptr;
        if (had_) old_ = old;
        setenv("TZ", tz, 1);
        tzset();
    }
    ~TimeZone() {
        if (had_) {
            setenv("TZ", old_.c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

private:
    bool had_ = false;
    std::string old_;
};

SYSTEMTIME Sys(int y, int mo, int d, int h, int mi, int s) {
    SYSTEMTIME st{};
    st.wYear = static_cast<WORD>(y);
    st.wMonth = static_cast<WORD>(mo);
    st.wDay = static_cast<WORD>(d);
    st.wHour = static_cast<WORD>(h);
    st.wMinute = static_cast<WORD>(mi);
    st.wSecond = static_cast<WORD>(s);
    st.wDayOfWeek = 6;  // ignored, as by the framework
    return st;
}

TEST(CTime, FieldsComeBackInLocalTime) {
    TimeZone tz("UTC0");
    CTime t(Sys(2026, 1, 1, 12, 0, 0));
    EXPECT_EQ(t.GetTime(), 1767268800);
    EXPECT_EQ(t.GetDayOfWeek(), 5) << "Thursday, counting Sunday as 1";
    EXPECT_EQ(CTime(Sys(2026, 1, 4, 0, 0, 0)).GetDayOfWeek(), 1);
    SYSTEMTIME back{};
    ASSERT_TRUE((t + CTimeSpan(1, 2, 3, 4)).GetAsSystemTime(back));
    EXPECT_EQ(std::vector<int>({back.wDay, back.wHour, back.wMinute, back.wSecond, back.wDayOfWeek}),
              std::vector<int>({2, 14, 3, 4, 5}));
}

TEST(CTime, DaylightFlagDecidesHowTheFieldsAreRead) {
    TimeZone tz("CET-1CEST,M3.5.0,M10.5.0/3");
    SYSTEMTIME summer = Sys(2026, 7, 1, 12, 0, 0);
    CTime decide(summer, -1), standard(summer, 0), daylight(summer, 1);
    EXPECT_EQ(decide.GetTime(), daylight.GetTime());
    EXPECT_EQ(decide.GetHour(), 12);
    EXPECT_EQ((standard - decide).GetTotalSeconds(), 3600) << "summer fields read as standard time";
    EXPECT_EQ(standard.GetHour(), 13);
    SYSTEMTIME winter = Sys(2026, 1, 15, 8, 30, 0);
    EXPECT_EQ(CTime(winter, -1).GetTime(), CTime(winter, 0).GetTime());
    EXPECT_EQ(CTime(winter, -1).GetHour(), 8);
}

TEST(CTime, OutOfRangeFieldsGiveTheInvalidTime) {
    TimeZone tz("UTC0");
    for (SYSTEMTIME st : {Sys(2026, 13, 1, 0, 0, 0), Sys(2026, 0, 1, 0, 0, 0), Sys(2026, 2, 32, 0, 0, 0),
                          Sys(2026, 2, 1, 24, 0, 0), Sys(1899, 2, 1, 0, 0, 0)})
        EXPECT_EQ(CTime(st).GetTime(), -1) << st.wYear << "-" << st.wMonth << "-" << st.wDay << " " << st.wHour;
    EXPECT_EQ(CTime(2026, 2, 30, 0, 0, 0).GetDay(), 2) << "a day past the month's end rolls over, as mktime does";
}

TEST(CTime, FormatAndSpans) {
    TimeZone tz("UTC0");
    CTime t(2026, 3, 7, 9, 5, 3);
    EXPECT_STREQ(t.Format(L"%Y-%m-%d %H:%M:%S"), L"2026-03-07 09:05:03");
    EXPECT_STREQ(t.Format(L"%#d.%#m."), L"7.3.");
    EXPECT_STREQ(t.Format(L""), L"");
    CTimeSpan span = CTime(2026, 3, 8, 10, 6, 4) - t;
    EXPECT_EQ(span.GetTotalSeconds(), 86400 + 3600 + 60 + 1);
    EXPECT_EQ(span.GetHours() * 100 + span.GetMinutes() * 10 + span.GetSeconds(), 111);
    EXPECT_TRUE(t < t + CTimeSpan(1));
}

}  // namespace
