// CString.
#include "zel/mfc/cstring.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <cwctype>

#include "kernel/utf.h"
#include "mfc/format.h"

namespace {

bool IsSpace(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

bool InSet(wchar_t c, LPCWSTR set) { return set && c && std::wcschr(set, c); }

std::wstring FromNarrow(LPCSTR text, size_t length) {
    if (!text) return {};
    return zel::kernel::Utf8ToWide(std::string_view(text, length));
}

// A pointer below 64K is a resource identifier, not text.
bool IsText(const void* p) { return p && !IS_INTRESOURCE(p); }

int Clamp(int v, int lo, int hi) { return v < lo ? lo : (v > hi ? hi : v); }

int CompareFolded(const wchar_t* a, const wchar_t* b) {
    for (;; ++a, ++b) {
        wint_t ca = std::towlower(*a), cb = std::towlower(*b);
        if (ca != cb || !ca) return ca < cb ? -1 : (ca > cb ? 1 : 0);
    }
}

}  // namespace

CString::CString(LPCWSTR text) {
    if (IsText(text)) s_ = text;
}
CString::CString(LPCWSTR text, int length) {
    if (IsText(text) && length > 0) s_.assign(text, static_cast<size_t>(length));
}
CString::CString(LPCSTR utf8) {
    if (IsText(utf8)) s_ = FromNarrow(utf8, std::strlen(utf8));
}
CString::CString(LPCSTR utf8, int length) {
    if (IsText(utf8) && length > 0) s_ = FromNarrow(utf8, static_cast<size_t>(length));
}
CString::CString(WCHAR ch, int repeat) {
    if (repeat > 0) s_.assign(static_cast<size_t>(repeat), ch);
}

CString& CString::operator=(LPCWSTR text) {
    if (IsText(text)) {
        s_ = text;  // std::wstring::assign copes with text inside s_
    } else {
        s_.clear();
    }
    return *this;
}
CString& CString::operator=(LPCSTR utf8) {
    s_ = IsText(utf8) ? FromNarrow(utf8, std::strlen(utf8)) : std::wstring();
    return *this;
}
CString& CString::operator=(WCHAR ch) {
    s_.assign(1, ch);
    return *this;
}

WCHAR CString::GetAt(int index) const {
    return index >= 0 && index < GetLength() ? s_[static_cast<size_t>(index)] : 0;
}
void CString::SetAt(int index, WCHAR ch) {
    if (index >= 0 && index < GetLength()) s_[static_cast<size_t>(index)] = ch;
}

CString& CString::operator+=(const CString& text) {
    s_ += text.s_;
    return *this;
}
CString& CString::operator+=(LPCWSTR text) {
    if (IsText(text)) s_ += text;
    return *this;
}
CString& CString::operator+=(LPCSTR utf8) {
    if (IsText(utf8)) s_ += FromNarrow(utf8, std::strlen(utf8));
    return *this;
}
CString& CString::operator+=(WCHAR ch) {
    s_.push_back(ch);
    return *this;
}
CString& CString::operator+=(char ch) {
    s_.push_back(static_cast<unsigned char>(ch));
    return *this;
}
void CString::Append(LPCWSTR text) { *this += text; }
void CString::Append(LPCWSTR text, int length) {
    if (IsText(text) && length > 0) s_.append(text, wcsnlen(text, static_cast<size_t>(length)));
}

int CString::Compare(LPCWSTR text) const {
    int r = s_.compare(IsText(text) ? text : L"");
    return r < 0 ? -1 : (r > 0 ? 1 : 0);
}
int CString::CompareNoCase(LPCWSTR text) const { return CompareFolded(s_.c_str(), IsText(text) ? text : L""); }
int CString::Collate(LPCWSTR text) const {
    int r = std::wcscoll(s_.c_str(), IsText(text) ? text : L"");
    return r < 0 ? -1 : (r > 0 ? 1 : 0);
}
int CString::CollateNoCase(LPCWSTR text) const {
    CString a(*this), b(text);
    return a.MakeLower().Collate(b.MakeLower());
}

CString CString::Mid(int first) const { return Mid(first, GetLength()); }
CString CString::Mid(int first, int count) const {
    first = Clamp(first, 0, GetLength());
    count = Clamp(count, 0, GetLength() - first);
    return CString(s_.c_str() + first, count);
}
CString CString::Left(int count) const { return Mid(0, count); }
CString CString::Right(int count) const {
    count = Clamp(count, 0, GetLength());
    return Mid(GetLength() - count, count);
}
CString CString::SpanIncluding(LPCWSTR set) const {
    int n = 0;
    while (n < GetLength() && InSet(s_[n], set)) ++n;
    return Left(n);
}
CString CString::SpanExcluding(LPCWSTR set) const {
    int n = 0;
    while (n < GetLength() && !InSet(s_[n], set)) ++n;
    return Left(n);
}
CString CString::Tokenize(LPCWSTR delimiters, int& start) const {
    if (start < 0 || start >= GetLength()) {
        start = -1;
        return CString();
    }
    int i = start;
    while (i < GetLength() && InSet(s_[i], delimiters)) ++i;
    if (i >= GetLength()) {
        start = -1;
        return CString();
    }
    int end = i;
    while (end < GetLength() && !InSet(s_[end], delimiters)) ++end;
    start = end + 1;
    return Mid(i, end - i);
}

int CString::Find(WCHAR ch, int start) const {
    if (start < 0 || start >= GetLength()) return -1;
    size_t at = s_.find(ch, static_cast<size_t>(start));
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}
int CString::Find(LPCWSTR sub, int start) const {
    if (!IsText(sub) || start < 0 || start > GetLength()) return -1;
    size_t at = s_.find(sub, static_cast<size_t>(start));
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}
int CString::ReverseFind(WCHAR ch) const {
    size_t at = s_.rfind(ch);
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}
int CString::FindOneOf(LPCWSTR set) const {
    if (!IsText(set) || !*set) return -1;
    size_t at = s_.find_first_of(set);
    return at == std::wstring::npos ? -1 : static_cast<int>(at);
}

CString& CString::MakeUpper() {
    for (wchar_t& c : s_) c = static_cast<wchar_t>(std::towupper(c));
    return *this;
}
CString& CString::MakeLower() {
    for (wchar_t& c : s_) c = static_cast<wchar_t>(std::towlower(c));
    return *this;
}
CString& CString::MakeReverse() {
    std::reverse(s_.begin(), s_.end());
    return *this;
}

// Counts what changed: replacing a character by itself changes nothing.
int CString::Replace(WCHAR oldCh, WCHAR newCh) {
    if (oldCh == newCh) return 0;
    int n = 0;
    for (wchar_t& c : s_)
        if (c == oldCh) c = newCh, ++n;
    return n;
}
int CString::Replace(LPCWSTR oldText, LPCWSTR newText) {
    if (!IsText(oldText) || !*oldText) return 0;
    std::wstring_view from(oldText);
    std::wstring to = IsText(newText) ? newText : L"";
    std::wstring out;
    int n = 0;
    size_t pos = 0;
    for (size_t at; (at = s_.find(from, pos)) != std::wstring::npos; pos = at + from.size(), ++n) {
        out.append(s_, pos, at - pos);
        out += to;
    }
    if (n) {
        out.append(s_, pos, std::wstring::npos);
        s_ = std::move(out);
    }
    return n;
}
int CString::Remove(WCHAR ch) {
    size_t before = s_.size();
    s_.erase(std::remove(s_.begin(), s_.end(), ch), s_.end());
    return static_cast<int>(before - s_.size());
}
int CString::Insert(int index, WCHAR ch) {
    s_.insert(static_cast<size_t>(Clamp(index, 0, GetLength())), 1, ch);
    return GetLength();
}
int CString::Insert(int index, LPCWSTR text) {
    if (IsText(text)) s_.insert(static_cast<size_t>(Clamp(index, 0, GetLength())), text);
    return GetLength();
}
int CString::Delete(int index, int count) {
    if (index < 0) index = 0;
    if (count > 0 && index < GetLength()) s_.erase(static_cast<size_t>(index), static_cast<size_t>(count));
    return GetLength();
}

CString& CString::TrimLeft() {
    size_t i = 0;
    while (i < s_.size() && IsSpace(s_[i])) ++i;
    s_.erase(0, i);
    return *this;
}
CString& CString::TrimLeft(WCHAR target) {
    size_t i = 0;
    while (i < s_.size() && s_[i] == target) ++i;
    s_.erase(0, i);
    return *this;
}
CString& CString::TrimLeft(LPCWSTR targets) {
    size_t i = 0;
    while (i < s_.size() && InSet(s_[i], targets)) ++i;
    s_.erase(0, i);
    return *this;
}
CString& CString::TrimRight() {
    size_t n = s_.size();
    while (n && IsSpace(s_[n - 1])) --n;
    s_.resize(n);
    return *this;
}
CString& CString::TrimRight(WCHAR target) {
    size_t n = s_.size();
    while (n && s_[n - 1] == target) --n;
    s_.resize(n);
    return *this;
}
CString& CString::TrimRight(LPCWSTR targets) {
    size_t n = s_.size();
    while (n && InSet(s_[n - 1], targets)) --n;
    s_.resize(n);
    return *this;
}
CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::Trim(WCHAR target) { return TrimRight(target).TrimLeft(target); }
CString& CString::Trim(LPCWSTR targets) { return TrimRight(targets).TrimLeft(targets); }

void CString::FormatArgs(LPCWSTR format, ...) {
    va_list args;
    va_start(args, format);
    FormatV(format, args);
    va_end(args);
}
void CString::FormatV(LPCWSTR format, va_list args) { s_ = zel::mfc::FormatWide(IsText(format) ? format : L"", args); }
void CString::AppendFormatArgs(LPCWSTR format, ...) {
    va_list args;
    va_start(args, format);
    AppendFormatV(format, args);
    va_end(args);
}
void CString::AppendFormatV(LPCWSTR format, va_list args) {
    s_ += zel::mfc::FormatWide(IsText(format) ? format : L"", args);
}

LPWSTR CString::GetBuffer() { return s_.data(); }
LPWSTR CString::GetBuffer(int minLength) {
    if (minLength > GetLength()) s_.resize(static_cast<size_t>(minLength));
    return s_.data();
}
LPWSTR CString::GetBufferSetLength(int length) {
    s_.resize(static_cast<size_t>(length > 0 ? length : 0));
    return s_.data();
}
void CString::ReleaseBuffer(int newLength) {
    if (newLength < 0) {
        s_.resize(wcsnlen(s_.c_str(), s_.size()));
    } else if (static_cast<size_t>(newLength) <= s_.size()) {
        s_.resize(static_cast<size_t>(newLength));
    }
}
void CString::Preallocate(int length) {
    if (length > 0) s_.reserve(static_cast<size_t>(length));
}

BOOL CString::LoadString(UINT) { return FALSE; }

std::string CString::ToUtf8() const { return zel::kernel::WideToUtf8(s_); }

CString operator+(const CString& a, const CString& b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(const CString& a, LPCWSTR b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(LPCWSTR a, const CString& b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(const CString& a, WCHAR b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(WCHAR a, const CString& b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(const CString& a, char b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(const CString& a, LPCSTR b) {
    CString r(a);
    r += b;
    return r;
}
CString operator+(LPCSTR a, const CString& b) {
    CString r(a);
    r += b;
    return r;
}
