// CString: construction, formatting rules of the wide framework, trimming, searching and
// editing, buffers.
#include <afx.h>
#include <gtest/gtest.h>

namespace {

TEST(CStringFormat, PrintfRulesOfTheWideFramework) {
    struct Case {
        const char* name;
        CString got;
        const wchar_t* want;
    };
    auto fmt = [](LPCWSTR f, auto... args) {
        CString s;
        s.Format(f, args...);
        return s;
    };
    const Case cases[] = {
        {"%d negative", fmt(L"%d|%5d|%-5d|", -42, 7, 7), L"-42|    7|7    |"},
        {"%02d clock", fmt(L"%02d:%02d", 9, 5), L"09:05"},
        {"%u of -1", fmt(L"%u", -1), L"4294967295"},
        {"%x %X %#x", fmt(L"%x %X %#x", 255, 255, 255), L"ff FF 0xff"},
        {"%ld is 32 bits", fmt(L"%ld %lu", LONG(-5), DWORD(0xFFFFFFFF)), L"-5 4294967295"},
        {"%I64d and %lld", fmt(L"%I64d %lld", int64_t(1) << 40, -(int64_t(1) << 40)), L"1099511627776 -1099511627776"},
        {"%s is wide", fmt(L"[%s]", L"wide"), L"[wide]"},
        {"%S is narrow UTF-8", fmt(L"[%S]", "n\xc3\xa4"), L"[n\u00e4]"},
        {"%hs and %ls", fmt(L"%hs/%ls", "a", L"b"), L"a/b"},
        {"%c wide, %C narrow", fmt(L"%c%C", L'\u00e9', 'x'), L"\u00e9x"},
        {"%% literal", fmt(L"100%%"), L"100%"},
        {"precision on strings", fmt(L"%.3s|%6.2s|", L"abcdef", L"xyz"), L"abc|    xy|"},
        {"star width", fmt(L"%*d|%-*d|", 4, 1, 3, 2), L"   1|2  |"},
        {"null string", fmt(L"%s", static_cast<const wchar_t*>(nullptr)), L"(null)"},
        {"floating", fmt(L"%.2f %g", 3.14159, 0.5), L"3.14 0.5"},
        {"unknown conversion kept", fmt(L"a%yb"), L"a%yb"},
        {"pointer", fmt(L"%p", reinterpret_cast<void*>(0xABC)), L"0000000000000ABC"},
    };
    for (const Case& c : cases) EXPECT_STREQ(c.got, c.want) << c.name;
}

TEST(CStringFormat, AppendFormatAndCStringArguments) {
    CString name(L"deck");
    CString s(L"<");
    s.AppendFormat(L"%s:%d", static_cast<LPCTSTR>(name), 3);
    s.AppendFormat(L"%s%s>", name, CString(L"!"));
    EXPECT_STREQ(s, L"<deck:3deck!>");
    wchar_t path[MAX_PATH] = L"skin";
    s.Format(L"%s/%s", path, name);
    EXPECT_STREQ(s, L"skin/deck");
    s.Format(L"%s", s);  // its own text as the argument
    EXPECT_STREQ(s, L"skin/deck");
    s.Format(nullptr);
    EXPECT_TRUE(s.IsEmpty());
}

TEST(CStringTrim, WhiteSpaceCharactersAndSets) {
    CString s(L" \t\r\n x y \v\f ");
    EXPECT_STREQ(CString(s).TrimLeft(), L"x y \v\f ");
    EXPECT_STREQ(CString(s).TrimRight(), L" \t\r\n x y");
    EXPECT_STREQ(CString(L"-=a=-").Trim(L"=-"), L"a");
    EXPECT_STREQ(CString(L"   ").Trim(), L"");
    EXPECT_STREQ(CString(L"\u3000a").Trim(), L"\u3000a") << "only ASCII white space is trimmed";
}

TEST(CStringSearch, FindReverseFindAndClampedExtraction) {
    CString s(L"a|bb|ccc|");
    EXPECT_EQ(s.Find(L'|', 2), 4);
    EXPECT_EQ(s.Find(L"cc"), 5);
    EXPECT_EQ(s.Find(L'a', 99), -1);
    EXPECT_EQ(s.Find(L'a', -1), -1);
    EXPECT_EQ(s.ReverseFind(L'|'), 8);
    EXPECT_EQ(s.FindOneOf(L"cb"), 2);
    // Out-of-range counts and starts are clamped, never read past the text.
    EXPECT_STREQ(s.Left(-2), L"");
    EXPECT_STREQ(s.Left(100), s);
    EXPECT_STREQ(s.Mid(-3, 2), L"a|");
    EXPECT_STREQ(s.Mid(8, 10), L"|");
    EXPECT_STREQ(s.Mid(20), L"");
    EXPECT_STREQ(s.Right(50), s);

    int pos = 0;
    EXPECT_STREQ(s.Tokenize(L"|", pos), L"a");
    EXPECT_STREQ(s.Tokenize(L"|", pos), L"bb");
    EXPECT_STREQ(s.Tokenize(L"|", pos), L"ccc");
    EXPECT_STREQ(s.Tokenize(L"|", pos), L"");
    EXPECT_EQ(pos, -1);
}

TEST(CStringEdit, ReplaceRemoveInsertDeleteAndCase) {
    CString s(L"one two one");
    EXPECT_EQ(s.Replace(L"one", L"1"), 2);
    EXPECT_STREQ(s, L"1 two 1");
    EXPECT_EQ(s.Replace(L"", L"x"), 0);
    EXPECT_EQ(s.Replace(L'1', L'1'), 0) << "nothing changed";
    EXPECT_EQ(s.Replace(L' ', L'_'), 2);
    EXPECT_EQ(s.Remove(L'_'), 2);
    EXPECT_STREQ(s, L"1two1");
    EXPECT_EQ(s.Insert(1, L"-"), 6);
    EXPECT_EQ(s.Insert(99, L'!'), 7);
    EXPECT_EQ(s.Delete(0, 2), 5);
    EXPECT_EQ(s.Delete(4, 10), 4);
    EXPECT_STREQ(s, L"two1");
    EXPECT_STREQ(s.MakeUpper().MakeReverse(), L"1OWT");
    s.SetAt(0, L'X');
    s.SetAt(40, L'Y');
    EXPECT_EQ(s.GetAt(0), L'X');
    EXPECT_EQ(s.GetAt(-1), 0);
    EXPECT_EQ(s[99], 0);
}

TEST(CStringConstruct, NarrowTextIsUtf8AndResourceIdsAreNotText) {
    EXPECT_STREQ(CString("caf\xc3\xa9"), L"caf\u00e9");
    EXPECT_STREQ(CString("bad\xff"), L"bad\ufffd");
    EXPECT_STREQ(CString("abcdef", 3), L"abc");
    EXPECT_EQ(CString(L"Apple").CompareNoCase(L"apple"), 0);
    EXPECT_LT(CString(L"Apple").Compare(L"apple"), 0);
    EXPECT_EQ(CString(L"").Compare(nullptr), 0);
    EXPECT_TRUE(CString(MAKEINTRESOURCEW(101)).IsEmpty()) << "a resource id must never be read as text";
    CString s = L"x";
    s = static_cast<LPCWSTR>(nullptr);
    EXPECT_TRUE(s.IsEmpty());
    s = "\xe2\x82\xac";
    s += L'1';
    s += "2";
    EXPECT_STREQ(L"<" + s + CString(L"3"), L"<\u20ac123");
    EXPECT_EQ(CString(L"\u20ac").ToUtf8(), "\xe2\x82\xac");
}

TEST(CStringBuffer, GetBufferAndReleaseBuffer) {
    CString s(L"ab");
    wchar_t* p = s.GetBuffer(10);
    wcscpy(p, L"hello");
    s.ReleaseBuffer();
    EXPECT_STREQ(s, L"hello");
    EXPECT_EQ(s.GetLength(), 5);
    p = s.GetBuffer(0);
    p[1] = L'a';
    s.ReleaseBuffer(3);
    EXPECT_STREQ(s, L"hal");
    p = s.GetBufferSetLength(2);
    s.ReleaseBuffer();
    EXPECT_STREQ(s, L"ha");
}

}  // namespace
