// The non-template arrays: CStringArray and the arrays of plain values.
#pragma once

#include "zel/mfc/carray.h"
#include "zel/mfc/cstring.h"

class CStringArray : public CArray<CString, const CString&> {
public:
    using CArray::Add;
    INT_PTR Add(LPCWSTR text) { return CArray::Add(CString(text)); }
};

class CPtrArray : public CArray<void*, void*> {};
class CDWordArray : public CArray<DWORD, DWORD> {};
class CUIntArray : public CArray<UINT, UINT> {};
class CWordArray : public CArray<WORD, WORD> {};
class CByteArray : public CArray<BYTE, BYTE> {};
