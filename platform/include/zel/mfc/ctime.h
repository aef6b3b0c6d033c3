// CTime and CTimeSpan: seconds since 1970 (UTC) read and written in local time.
#pragma once

#include <cstdint>
#include <ctime>

#include <windows.h>

#include "zel/mfc/cstring.h"

class ZEL_API CTimeSpan {
public:
    CTimeSpan() = default;
    CTimeSpan(int64_t seconds) : span_(seconds) {}
    CTimeSpan(LONG days, int hours, int minutes, int seconds);

    int64_t GetDays() const { return span_ / 86400; }
    int64_t GetTotalHours() const { return span_ / 3600; }
    LONG GetHours() const { return static_cast<LONG>(GetTotalHours() - GetDays() * 24); }
    int64_t GetTotalMinutes() const { return span_ / 60; }
    LONG GetMinutes() const { return static_cast<LONG>(GetTotalMinutes() - GetTotalHours() * 60); }
    int64_t GetTotalSeconds() const { return span_; }
    LONG GetSeconds() const { return static_cast<LONG>(span_ - GetTotalMinutes() * 60); }
    int64_t GetTimeSpan() const { return span_; }

    CTimeSpan operator+(CTimeSpan o) const { return span_ + o.span_; }
    CTimeSpan operator-(CTimeSpan o) const { return span_ - o.span_; }
    CTimeSpan& operator+=(CTimeSpan o) { span_ += o.span_; return *this; }
    CTimeSpan& operator-=(CTimeSpan o) { span_ -= o.span_; return *this; }
    auto operator<=>(const CTimeSpan&) const = default;

private:
    int64_t span_ = 0;
};

class ZEL_API CTime {
public:
    CTime() = default;
    CTime(int64_t time) : time_(time) {}
    // Local date and time. daylight < 0 lets the C library decide whether daylight saving
    // applies; 0 reads the fields as standard time and > 0 as daylight time, so a summer
    // time given with 0 reads back one hour later. Fields out of range (month 1-12, day
    // 1-31, hour 0-23, minute and second 0-59, year 1900-3000) give the invalid time -1.
    CTime(int year, int month, int day, int hour, int minute, int second, int daylight = -1);
    CTime(const SYSTEMTIME& st, int daylight = -1);

    static CTime GetCurrentTime();  // GetLocalTime, i.e. the platform's clock
    static BOOL IsValidFILETIME(const FILETIME&) { return FALSE; }

    int64_t GetTime() const { return time_; }
    int GetYear() const { return Local().tm_year + 1900; }
    int GetMonth() const { return Local().tm_mon + 1; }
    int GetDay() const { return Local().tm_mday; }
    int GetHour() const { return Local().tm_hour; }
    int GetMinute() const { return Local().tm_min; }
    int GetSecond() const { return Local().tm_sec; }
    int GetDayOfWeek() const { return Local().tm_wday + 1; }  // 1 = Sunday ... 7 = Saturday
    struct tm* GetLocalTm(struct tm* out) const;
    struct tm* GetGmtTm(struct tm* out) const;
    bool GetAsSystemTime(SYSTEMTIME& st) const;

    // strftime codes; the "#" flag (no leading zeros) is accepted as well.
    CString Format(LPCWSTR format) const;
    CString FormatGmt(LPCWSTR format) const;

    CTimeSpan operator-(CTime o) const { return time_ - o.time_; }
    CTime operator+(CTimeSpan s) const { return time_ + s.GetTimeSpan(); }
    CTime operator-(CTimeSpan s) const { return time_ - s.GetTimeSpan(); }
    CTime& operator+=(CTimeSpan s) { time_ += s.GetTimeSpan(); return *this; }
    CTime& operator-=(CTimeSpan s) { time_ -= s.GetTimeSpan(); return *this; }
    auto operator<=>(const CTime&) const = default;

private:
    struct tm Local() const;
    int64_t time_ = 0;
};
