// CList and CMap: the usual walks, edits and lookups.
#include <afxtempl.h>
#include <afxwin.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<int> Forward(const CList<int, int>& list) {
    std::vector<int> out;
    for (POSITION p = list.GetHeadPosition(); p;) out.push_back(list.GetNext(p));
    return out;
}

std::vector<int> Backward(const CList<int, int>& list) {
    std::vector<int> out;
    for (POSITION p = list.GetTailPosition(); p;) out.push_back(list.GetPrev(p));
    return out;
}

TEST(CListTest, HeadTailInsertFindAndRemove) {
    CList<int, int> list;
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    list.AddTail(2);
    list.AddTail(3);
    POSITION one = list.AddHead(1);
    list.InsertAfter(one, 15);
    list.InsertBefore(list.Find(3), 25);
    EXPECT_EQ(Forward(list), (std::vector<int>{1, 15, 2, 25, 3}));
    EXPECT_EQ(Backward(list), (std::vector<int>{3, 25, 2, 15, 1}));
    EXPECT_EQ(list.GetAt(list.FindIndex(3)), 25);
    EXPECT_EQ(list.FindIndex(5), nullptr);
    EXPECT_EQ(list.FindIndex(-1), nullptr);
    list.AddTail(2);
    EXPECT_EQ(list.Find(2, list.Find(2)), list.GetTailPosition()) << "search after a position";
    EXPECT_EQ(list.Find(99), nullptr);
    list.SetAt(one, 10);
    list.RemoveAt(list.Find(25));
    EXPECT_EQ(list.RemoveHead(), 10);
    EXPECT_EQ(list.RemoveTail(), 2);
    EXPECT_EQ(Forward(list), (std::vector<int>{15, 2, 3}));
    list.RemoveAll();
    EXPECT_EQ(list.RemoveHead(), 0) << "an empty list reports and gives a default element";
}

TEST(CListTest, HoldsStrings) {
    CList<CString, const CString&> names;
    names.AddTail(CString(L"b"));
    names.AddHead(CString(L"a"));
    CList<CString, const CString&> more;
    more.AddTail(names);
    more.AddTail(CString(L"c"));
    EXPECT_EQ(more.GetCount(), 3);
    EXPECT_EQ(more.GetHead(), CString(L"a"));
    EXPECT_NE(more.Find(CString(L"c")), nullptr);
}

TEST(CMapTest, SetLookupRemoveAndWalk) {
    CMap<CString, LPCWSTR, int, int> map;
    int v = -1;
    EXPECT_FALSE(map.Lookup(L"x", v));
    EXPECT_EQ(map.GetStartPosition(), nullptr);
    map.SetAt(L"volume", 7);
    map[L"bass"] = 3;
    map[L"treble"] += 2;
    map.SetAt(L"volume", 8);
    EXPECT_EQ(map.GetCount(), 3);
    EXPECT_TRUE(map.Lookup(L"volume", v));
    EXPECT_EQ(v, 8);
    std::vector<std::string> walk;
    for (POSITION p = map.GetStartPosition(); p;) {
        CString key;
        int value = 0;
        map.GetNextAssoc(p, key, value);
        walk.push_back(key.ToUtf8() + "=" + std::to_string(value));
    }
    EXPECT_EQ(walk, (std::vector<std::string>{"bass=3", "treble=2", "volume=8"}));
    EXPECT_TRUE(map.RemoveKey(L"bass"));
    EXPECT_FALSE(map.RemoveKey(L"bass"));
    EXPECT_FALSE(map.Lookup(L"bass", v));
    EXPECT_EQ(v, 8) << "a failed lookup leaves the value";
    map.RemoveAll();
    EXPECT_EQ(map.GetStartPosition(), nullptr);

    CMap<int, int, CString, LPCWSTR> byId;
    byId.SetAt(2, L"two");
    byId.SetAt(1, L"one");
    CString s;
    EXPECT_TRUE(byId.Lookup(1, s));
    EXPECT_EQ(s, CString(L"one"));
}

}  // namespace
