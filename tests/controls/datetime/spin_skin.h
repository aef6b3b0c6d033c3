// What the date-time tests share. The spinner skin: 45 x 40 buttons ("add" reds, "Def" blues,
// each normal, focus, pressed), three colour samples and the two separators.
#pragma once

#include <afxwin.h>

#include <string>

#include "support/skin_folder.h"

namespace datetimetest {

constexpr COLORREF kAdd = RGB(200, 60, 60), kAddFocus = RGB(230, 120, 120), kAddDown = RGB(120, 20, 20);
constexpr COLORREF kDef = RGB(60, 60, 200), kDefFocus = RGB(120, 120, 230), kDefDown = RGB(20, 20, 120);
constexpr COLORREF kBack = RGB(210, 230, 210), kFrame = RGB(0, 100, 0), kBox = RGB(250, 250, 220);
constexpr COLORREF kDash = RGB(90, 0, 90), kColon = RGB(200, 120, 0);

// Writes the pieces and returns the nine names the spinner's LoadSkin takes ("add.bmp|...|"),
// or eleven with the separators.
inline CString WriteSpinSkin(zel::test::SkinFolder& skins, bool separators) {
    skins.Framed("add", 45, 40, kAdd, RGB(0, 0, 0));
    skins.Framed("add_f", 45, 40, kAddFocus, RGB(0, 0, 0));
    skins.Framed("add_d", 45, 40, kAddDown, RGB(0, 0, 0));
    skins.Framed("def", 45, 40, kDef, RGB(0, 0, 0));
    skins.Framed("def_f", 45, 40, kDefFocus, RGB(0, 0, 0));
    skins.Framed("def_d", 45, 40, kDefDown, RGB(0, 0, 0));
    skins.Solid("back", 2, 2, kBack);
    skins.Solid("frame", 2, 2, kFrame);
    skins.Solid("box", 2, 2, kBox);
    skins.Solid("dash", 6, 4, kDash);
    skins.Keyed("colon", 4, 14, kColon, kBack, {{0, 4, 4, 10}});
    CString names = L" add.bmp |add_f.bmp|add_d.bmp|def.bmp|def_f.bmp|def_d.bmp|back.bmp|frame.bmp|box.bmp|";
    if (separators) names += L"dash.bmp|colon.bmp|";
    return names;
}

// A time's date as "y-m-d" and its clock as "h:m:s", unpadded.
inline std::string Ymd(const SYSTEMTIME& t) {
    return std::to_string(t.wYear) + "-" + std::to_string(t.wMonth) + "-" + std::to_string(t.wDay);
}
inline std::string Hms(const SYSTEMTIME& t) {
    return std::to_string(t.wHour) + ":" + std::to_string(t.wMinute) + ":" + std::to_string(t.wSecond);
}

inline CString Folder(const zel::test::SkinFolder& skins) { return CString((skins.Dir().string() + "/").c_str()); }

}  // namespace datetimetest
