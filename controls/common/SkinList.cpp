#include "SkinList.h"

#include <aygshell.h>

#include <cwchar>

namespace zelctl {

namespace {

// The white space CString::Trim removes.
bool IsTrimmed(WCHAR c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

}  // namespace

// Every control splits its skin string on each load, and a host's string may be long and
// hold thousands of bars: the bars are found with wmemchr, the array is sized once for
// them, and each piece is cut already trimmed, one allocation per piece.
void SplitSkinList(const CString& skin, CStringArray& out) {
    out.RemoveAll();
    const LPCWSTR text = skin.GetString();
    const LPCWSTR end = text + skin.GetLength();
    auto nextBar = [end](LPCWSTR from) { return std::wmemchr(from, L'|', static_cast<size_t>(end - from)); };
    INT_PTR bars = 0;
    for (LPCWSTR bar = nextBar(text); bar; bar = nextBar(bar + 1)) ++bars;
    if (bars == 0) return;
    out.SetSize(bars);
    CString* slots = out.GetData();
    INT_PTR piece = 0;
    LPCWSTR start = text;
    for (LPCWSTR bar = nextBar(text); bar; bar = nextBar(bar + 1)) {
        LPCWSTR first = start, last = bar;
        while (first < last && IsTrimmed(*first)) ++first;
        while (last > first && IsTrimmed(last[-1])) --last;
        slots[piece++] = CString(first, static_cast<int>(last - first));
        start = bar + 1;
    }
}

HBITMAP LoadSkinBitmap(UINT id, HINSTANCE instance) {
    HINSTANCE previous = AfxGetResourceHandle();
    if (instance) AfxSetResourceHandle(instance);
    HBITMAP bitmap = ::LoadBitmapW(AfxGetResourceHandle(), MAKEINTRESOURCEW(id & 0xFFFF));
    if (instance) AfxSetResourceHandle(previous);
    return bitmap;
}

HBITMAP LoadSkinFile(const CString& path) { return path.IsEmpty() ? nullptr : ::SHLoadDIBitmap(path); }

CString PathInBuffer(const CString& path, int capacity) {
    return path.GetLength() < capacity ? path : path.Left(capacity > 0 ? capacity - 1 : 0);
}

}  // namespace zelctl
