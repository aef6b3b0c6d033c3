// Colours and screen geometry of the demo's default (dark) theme, shared by the skin
// generator and the host that paints around the skinned controls.
#pragma once

#include <windows.h>

namespace zel::demo::theme {

// The screen body behind every control. Opaque skins fill the corners around their
// rounded shapes with it, so they sit seamlessly on the host's background.
constexpr COLORREF kScreen = RGB(16, 20, 26);
constexpr COLORREF kScreenArc = RGB(23, 28, 36);  // faint decoration of the body
constexpr COLORREF kBarTop = RGB(36, 43, 54);      // title bar gradient
constexpr COLORREF kBarBottom = RGB(24, 29, 37);
constexpr COLORREF kStatus = RGB(9, 11, 15);       // status strip with the last notifications
constexpr COLORREF kRule = RGB(46, 54, 66);        // hairlines between areas

constexpr COLORREF kAccent = RGB(36, 146, 255);
constexpr COLORREF kAccentDeep = RGB(14, 84, 178);
constexpr COLORREF kAccentLight = RGB(120, 196, 255);

constexpr COLORREF kFaceTop = RGB(64, 72, 85);  // raised control faces
constexpr COLORREF kFaceBottom = RGB(36, 41, 50);
constexpr COLORREF kFaceEdge = RGB(82, 92, 108);
constexpr COLORREF kFaceShine = RGB(96, 106, 122);
constexpr COLORREF kDisabledFace = RGB(32, 35, 41);
constexpr COLORREF kDisabledEdge = RGB(48, 52, 60);
constexpr COLORREF kGroove = RGB(8, 10, 14);  // channels and tracks
constexpr COLORREF kGrooveEdge = RGB(40, 46, 56);

constexpr COLORREF kText = RGB(228, 234, 242);
constexpr COLORREF kTextDim = RGB(136, 147, 163);
constexpr COLORREF kTextDisabled = RGB(78, 84, 94);

// Transparent pixels of keyed pieces (the slider thumb's key, and the top-left colour the
// shaped button takes its outline from).
constexpr COLORREF kKey = RGB(255, 0, 255);

constexpr int kScreenWidth = 800;
constexpr int kScreenHeight = 480;
constexpr int kTitleBarHeight = 56;  // title bar rows [0, 56), its accent rule in row 56
constexpr int kStatusTop = 444;      // status strip rows [444, 480)

}  // namespace zel::demo::theme
