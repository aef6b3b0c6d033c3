#include "SkinList.h"

#include <aygshell.h>

namespace zelctl {

void SplitSkinList(const CString& skin, CStringArray& out) {
    out.RemoveAll();
    int start = 0;
    for (int bar = skin.Find(L'|'); bar >= 0; bar = skin.Find(L'|', start)) {
        CString piece = skin.Mid(start, bar - start);
        piece.Trim();
        out.Add(piece);
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
