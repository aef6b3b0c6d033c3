// Skin strings and skin bitmaps shared by the controls.
#pragma once

#include <afxwin.h>

namespace zelctl {

// Splits a skin string: every piece before a "|" is trimmed on both sides and taken;
// text after the last "|" is not taken ("a|b" gives just "a"; "a" gives nothing).
void SplitSkinList(const CString& skin, CStringArray& out);

// Loads a bitmap by resource identifier (low 16 bits) from `instance`, which is made the
// resource handle for the load when non-null and restored afterwards.
HBITMAP LoadSkinBitmap(UINT id, HINSTANCE instance);

// Loads an image file with SHLoadDIBitmap; an empty path loads nothing (NULL).
HBITMAP LoadSkinFile(const CString& path);

// The path as a fixed buffer of `capacity` characters holds it: cut to capacity - 1
// characters (a control that copies paths into a MAX_PATH buffer loads the cut path).
CString PathInBuffer(const CString& path, int capacity = MAX_PATH);

}  // namespace zelctl
