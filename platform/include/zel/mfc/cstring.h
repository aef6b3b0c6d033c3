// CString: a wide (UTF-32 on Linux) string with the framework's interface. Narrow text
// given to it is UTF-8.
#pragma once

#include <cstdarg>
#include <string>
#include <type_traits>

#include <windows.h>

class ZEL_API CString {
public:
    CString() = default;
    CString(const CString& other) = default;
    CString(CString&& other) noexcept = default;
    // A small integer posing as a pointer (MAKEINTRESOURCE) names a string resource; we
    // have no string tables, so it yields an empty string instead of a wild read.
    CString(LPCWSTR text);
    CString(LPCWSTR text, int length);
    CString(LPCSTR utf8);
    CString(LPCSTR utf8, int length);
    explicit CString(WCHAR ch, int repeat = 1);
    ~CString() = default;

    CString& operator=(const CString& other) = default;
    CString& operator=(CString&& other) noexcept = default;
    CString& operator=(LPCWSTR text);
    CString& operator=(LPCSTR utf8);
    CString& operator=(WCHAR ch);

    int GetLength() const { return static_cast<int>(s_.size()); }
    BOOL IsEmpty() const { return s_.empty(); }
    void Empty() { s_.clear(); }
    LPCWSTR GetString() const { return s_.c_str(); }
    operator LPCWSTR() const { return s_.c_str(); }

    // Out-of-range indices read as 0 and write nothing.
    WCHAR GetAt(int index) const;
    void SetAt(int index, WCHAR ch);
    WCHAR operator[](int index) const { return GetAt(index); }

    CString& operator+=(const CString& text);
    CString& operator+=(LPCWSTR text);
    CString& operator+=(LPCSTR utf8);
    CString& operator+=(WCHAR ch);
    CString& operator+=(char ch);
    void Append(LPCWSTR text);
    void Append(LPCWSTR text, int length);
    void AppendChar(WCHAR ch) { s_.push_back(ch); }

    // <0, 0, >0 as wcscmp; NoCase folds case character by character.
    int Compare(LPCWSTR text) const;
    int CompareNoCase(LPCWSTR text) const;
    int Collate(LPCWSTR text) const;
    int CollateNoCase(LPCWSTR text) const;

    // Extraction clamps its arguments to the string, as the framework does.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;
    CString SpanIncluding(LPCWSTR set) const;
    CString SpanExcluding(LPCWSTR set) const;
    CString Tokenize(LPCWSTR delimiters, int& start) const;

    // -1 when not found or when start lies beyond the string.
    int Find(WCHAR ch, int start = 0) const;
    int Find(LPCWSTR sub, int start = 0) const;
    int ReverseFind(WCHAR ch) const;
    int FindOneOf(LPCWSTR set) const;

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();
    int Replace(WCHAR oldCh, WCHAR newCh);
    int Replace(LPCWSTR oldText, LPCWSTR newText);
    int Remove(WCHAR ch);
    int Insert(int index, WCHAR ch);
    int Insert(int index, LPCWSTR text);
    int Delete(int index, int count = 1);

    // White space is space, tab, CR, LF, VT and FF.
    CString& Trim();
    CString& Trim(WCHAR target);
    CString& Trim(LPCWSTR targets);
    CString& TrimLeft();
    CString& TrimLeft(WCHAR target);
    CString& TrimLeft(LPCWSTR targets);
    CString& TrimRight();
    CString& TrimRight(WCHAR target);
    CString& TrimRight(LPCWSTR targets);

    // printf rules of the wide framework: %s is a wide string, %S a narrow (UTF-8) one,
    // %ls/%hs are explicit; %c wide, %C narrow; l is 32 bits (LONG/DWORD), ll/I64 64 bits,
    // I pointer-sized. A CString argument may be passed as it is, as the framework's
    // single-pointer strings allow: it is handed on as its LPCTSTR. Other class types do
    // not compile.
    template <class... Args>
    void Format(LPCWSTR format, const Args&... args);
    template <class... Args>
    void AppendFormat(LPCWSTR format, const Args&... args);
    void FormatV(LPCWSTR format, va_list args);
    void AppendFormatV(LPCWSTR format, va_list args);

    // The buffer holds at least minLength characters plus the terminator; after writing,
    // ReleaseBuffer(-1) takes the length up to the first NUL, ReleaseBuffer(n) takes n.
    LPWSTR GetBuffer();
    LPWSTR GetBuffer(int minLength);
    LPWSTR GetBufferSetLength(int length);
    void ReleaseBuffer(int newLength = -1);
    void ReleaseBufferSetLength(int newLength) { ReleaseBuffer(newLength); }
    void Preallocate(int length);
    void FreeExtra() { s_.shrink_to_fit(); }
    int GetAllocLength() const { return static_cast<int>(s_.capacity()); }

    // String tables are not supported: always FALSE, the string is left unchanged.
    BOOL LoadString(UINT id);

    // Conversions at the edge: UTF-8 for files, logs and the command line.
    std::string ToUtf8() const;
    const std::wstring& str() const { return s_; }

private:
    void FormatArgs(LPCWSTR format, ...);
    void AppendFormatArgs(LPCWSTR format, ...);

    std::wstring s_;
};

namespace zel::mfc {
inline LPCWSTR FormatArg(const CString& s) { return s.GetString(); }
template <class T>
const T& FormatArg(const T& value) {
    static_assert(std::is_trivially_copyable_v<T>, "only numbers, pointers and CString can be formatted");
    return value;
}
}  // namespace zel::mfc

template <class... Args>
void CString::Format(LPCWSTR format, const Args&... args) {
    FormatArgs(format, zel::mfc::FormatArg(args)...);
}
template <class... Args>
void CString::AppendFormat(LPCWSTR format, const Args&... args) {
    AppendFormatArgs(format, zel::mfc::FormatArg(args)...);
}

ZEL_API CString operator+(const CString& a, const CString& b);
ZEL_API CString operator+(const CString& a, LPCWSTR b);
ZEL_API CString operator+(LPCWSTR a, const CString& b);
ZEL_API CString operator+(const CString& a, WCHAR b);
ZEL_API CString operator+(WCHAR a, const CString& b);
ZEL_API CString operator+(const CString& a, char b);
ZEL_API CString operator+(const CString& a, LPCSTR b);
ZEL_API CString operator+(LPCSTR a, const CString& b);

inline bool operator==(const CString& a, const CString& b) { return a.str() == b.str(); }
inline bool operator==(const CString& a, LPCWSTR b) { return a.Compare(b) == 0; }
inline bool operator!=(const CString& a, const CString& b) { return !(a == b); }
inline bool operator!=(const CString& a, LPCWSTR b) { return a.Compare(b) != 0; }
inline bool operator<(const CString& a, const CString& b) { return a.Compare(b) < 0; }
inline bool operator<(const CString& a, LPCWSTR b) { return a.Compare(b) < 0; }
inline bool operator<(LPCWSTR a, const CString& b) { return b.Compare(a) > 0; }
inline bool operator>(const CString& a, const CString& b) { return a.Compare(b) > 0; }
inline bool operator>(const CString& a, LPCWSTR b) { return a.Compare(b) > 0; }
inline bool operator>(LPCWSTR a, const CString& b) { return b.Compare(a) < 0; }
inline bool operator<=(const CString& a, const CString& b) { return a.Compare(b) <= 0; }
inline bool operator<=(const CString& a, LPCWSTR b) { return a.Compare(b) <= 0; }
inline bool operator<=(LPCWSTR a, const CString& b) { return b.Compare(a) >= 0; }
inline bool operator>=(const CString& a, const CString& b) { return a.Compare(b) >= 0; }
inline bool operator>=(const CString& a, LPCWSTR b) { return a.Compare(b) >= 0; }
inline bool operator>=(LPCWSTR a, const CString& b) { return b.Compare(a) <= 0; }

typedef CString CStringW;
