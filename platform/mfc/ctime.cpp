// CTime and CTimeSpan. Local time follows the C library's time zone (TZ).
#include "zel/mfc/ctime.h"

#include <cwchar>
#include <string>

CTimeSpan::CTimeSpan(LONG days, int hours, int minutes, int seconds)
    : span_(((static_cast<int64_t>(days) * 24 + hours) * 60 + minutes) * 60 + seconds) {}

CTime::CTime(int year, int month, int day, int hour, int minute, int second, int daylight) {
    if (year < 1900 || year > 3000 || month < 1 || month > 12 || day < 1 || day > 31 || hour < 0 || hour > 23 ||
        minute < 0 || minute > 59 || second < 0 || second > 59) {
        time_ = -1;
        return;
    }
    struct tm t = {};
    t.tm_year = year - 1900;
    t.tm_mon = month - 1;
    t.tm_mday = day;
    t.tm_hour = hour;
    t.tm_min = minute;
    t.tm_sec = second;
    t.tm_isdst = daylight < 0 ? -1 : (daylight > 0 ? 1 : 0);
    time_ = static_cast<int64_t>(mktime(&t));
}

CTime::CTime(const SYSTEMTIME& st, int daylight)
    : CTime(st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond, daylight) {}

CTime CTime::GetCurrentTime() {
    SYSTEMTIME st{};
    GetLocalTime(&st);
    return CTime(st);
}

struct tm* CTime::GetLocalTm(struct tm* out) const {
    if (!out) return nullptr;
    time_t t = static_cast<time_t>(time_);
    return localtime_r(&t, out);
}

struct tm* CTime::GetGmtTm(struct tm* out) const {
    if (!out) return nullptr;
    time_t t = static_cast<time_t>(time_);
    return gmtime_r(&t, out);
}

struct tm CTime::Local() const {
    struct tm t = {};
    GetLocalTm(&t);
    return t;
}

bool CTime::GetAsSystemTime(SYSTEMTIME& st) const {
    struct tm t = {};
    if (!GetLocalTm(&t)) return false;
    st.wYear = static_cast<WORD>(t.tm_year + 1900);
    st.wMonth = static_cast<WORD>(t.tm_mon + 1);
    st.wDayOfWeek = static_cast<WORD>(t.tm_wday);
    st.wDay = static_cast<WORD>(t.tm_mday);
    st.wHour = static_cast<WORD>(t.tm_hour);
    st.wMinute = static_cast<WORD>(t.tm_min);
    st.wSecond = static_cast<WORD>(t.tm_sec);
    st.wMilliseconds = 0;
    return true;
}

namespace {

// The device's "%#d" (no leading zero) is "%-d" for the C library.
std::wstring PortableFormat(LPCWSTR format) {
    std::wstring f = format ? format : L"";
    for (size_t i = 0; i + 1 < f.size(); ++i) {
        if (f[i] != L'%') continue;
        if (f[i + 1] == L'#') f[i + 1] = L'-';
        ++i;
    }
    return f;
}

CString FormatTm(const struct tm* t, LPCWSTR format) {
    if (!t || !format || !*format) return CString();
    std::wstring f = PortableFormat(format);
    std::wstring buf(256, L'\0');
    for (int attempt = 0; attempt < 6; ++attempt) {
        size_t n = wcsftime(buf.data(), buf.size(), f.c_str(), t);
        if (n > 0) return CString(buf.c_str(), static_cast<int>(n));
        buf.resize(buf.size() * 4);
    }
    return CString();
}

}  // namespace

CString CTime::Format(LPCWSTR format) const {
    struct tm t = {};
    return FormatTm(GetLocalTm(&t), format);
}

CString CTime::FormatGmt(LPCWSTR format) const {
    struct tm t = {};
    return FormatTm(GetGmtTm(&t), format);
}
