// CArray and CStringArray: growth, insertion, removal, bad indices.
#include <afxtempl.h>
#include <afx.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

template <class A>
std::vector<int> Values(const A& a) {
    std::vector<int> v;
    for (INT_PTR i = 0; i < a.GetSize(); ++i) v.push_back(a[i]);
    return v;
}

TEST(CArray, SizeInsertAndRemove) {
    CArray<int, int> a;
    for (int i = 0; i < 100; ++i) EXPECT_EQ(a.Add(i * 2), i);
    EXPECT_EQ(a.GetUpperBound(), 99);
    EXPECT_EQ(a[57], 114);
    a.SetSize(5, 16);
    a[4] = 9;
    a.SetSize(2);
    a.SetSize(4);
    EXPECT_EQ(Values(a), (std::vector<int>{0, 2, 0, 0})) << "regrown elements start fresh";
    a.InsertAt(1, 7, 2);
    EXPECT_EQ(Values(a), (std::vector<int>{0, 7, 7, 2, 0, 0}));
    a.InsertAt(7, 5);
    EXPECT_EQ(Values(a), (std::vector<int>{0, 7, 7, 2, 0, 0, 0, 5})) << "inserting past the end extends";
    a.RemoveAt(1, 2);
    a.RemoveAt(5);
    EXPECT_EQ(Values(a), (std::vector<int>{0, 2, 0, 0, 0}));
    a.InsertAt(0, &a);  // inserting an array into itself copies it first
    EXPECT_EQ(a.GetSize(), 10);
    EXPECT_EQ(a[1], 2);
    EXPECT_EQ(a[6], 2);
    a.SetSize(0);
    EXPECT_EQ(a.GetData(), nullptr) << "SetSize(0) frees the storage";
}

TEST(CArray, BadIndicesNeverTouchOutsideTheArray) {
    CArray<int, int> a;
    a.Add(10);
    testing::internal::CaptureStderr();
    EXPECT_EQ(a.GetAt(5), 0);
    EXPECT_EQ(a[-1], 0);
    a[7] = 123;  // goes nowhere
    a.SetAt(1, 5);
    a.RemoveAt(0, 3);
    a.RemoveAt(-1);
    a.InsertAt(-2, 1);
    a.SetSize(-3);
    EXPECT_EQ(a[3], 0) << "writes through a bad index do not stick";
    std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(Values(a), (std::vector<int>{10}));
    EXPECT_NE(err.find("CArray::GetAt: index 5 out of range (size 1)"), std::string::npos) << err;
    EXPECT_NE(err.find("CArray::RemoveAt"), std::string::npos) << err;
    EXPECT_NE(err.find("CArray::SetSize"), std::string::npos) << err;
}

TEST(CArray, ElementsThatAreNotBitwiseRelocatable) {
    CArray<CString, CString> paths;  // the form the controls take their skin lists in
    for (int i = 0; i < 40; ++i) {
        CString s;
        s.Format(L"skin/piece_%02d_with_a_name_longer_than_any_small_buffer.bmp", i);
        paths.Add(s);
    }
    paths.InsertAt(0, CString(L"first"));
    paths.RemoveAt(10, 5);
    paths.Add(paths[0]);  // an element of the array itself, while the array grows
    EXPECT_STREQ(paths[1], L"skin/piece_00_with_a_name_longer_than_any_small_buffer.bmp");
    EXPECT_STREQ(paths[10], L"skin/piece_14_with_a_name_longer_than_any_small_buffer.bmp");
    EXPECT_STREQ(paths[paths.GetUpperBound()], L"first");

    CArray<CString, CString> copy;
    copy.Copy(paths);
    EXPECT_EQ(copy.Append(paths), paths.GetSize());
    EXPECT_STREQ(copy[paths.GetSize()], L"first");

    CStringArray names;
    names.Add(L"alpha");
    names.SetAtGrow(3, L"delta");
    EXPECT_TRUE(names[2].IsEmpty());
    EXPECT_STREQ(names.GetAt(3), L"delta");
}

}  // namespace
