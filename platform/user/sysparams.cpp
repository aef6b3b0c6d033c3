// System metrics and system colours. Colours are the classic scheme a CE device ships
// with; the bare desktop is black, like a display nothing has drawn on.
#include <array>

#include "gdi/dc.h"
#include "user/wndmgr.h"

namespace zel::user {

namespace {

constexpr int kColorCount = 31;
// CE headers tag system colour indexes with this bit; the index is in the low bits.
constexpr DWORD kSysColorIndexFlag = 0x40000000;

const std::array<COLORREF, kColorCount> kColors = {
    RGB(192, 192, 192),  // COLOR_SCROLLBAR
    RGB(0, 0, 0),        // COLOR_BACKGROUND
    RGB(0, 0, 128),      // COLOR_ACTIVECAPTION
    RGB(128, 128, 128),  // COLOR_INACTIVECAPTION
    RGB(192, 192, 192),  // COLOR_MENU
    RGB(255, 255, 255),  // COLOR_WINDOW
    RGB(0, 0, 0),        // COLOR_WINDOWFRAME
    RGB(0, 0, 0),        // COLOR_MENUTEXT
    RGB(0, 0, 0),        // COLOR_WINDOWTEXT
    RGB(255, 255, 255),  // COLOR_CAPTIONTEXT
    RGB(192, 192, 192),  // COLOR_ACTIVEBORDER
    RGB(192, 192, 192),  // COLOR_INACTIVEBORDER
    RGB(128, 128, 128),  // COLOR_APPWORKSPACE
    RGB(0, 0, 128),      // COLOR_HIGHLIGHT
    RGB(255, 255, 255),  // COLOR_HIGHLIGHTTEXT
    RGB(192, 192, 192),  // COLOR_BTNFACE
    RGB(128, 128, 128),  // COLOR_BTNSHADOW
    RGB(128, 128, 128),  // COLOR_GRAYTEXT
    RGB(0, 0, 0),        // COLOR_BTNTEXT
    RGB(192, 192, 192),  // COLOR_INACTIVECAPTIONTEXT
    RGB(255, 255, 255),  // COLOR_BTNHIGHLIGHT
    RGB(0, 0, 0),        // COLOR_3DDKSHADOW
    RGB(192, 192, 192),  // COLOR_3DLIGHT
    RGB(0, 0, 0),        // COLOR_INFOTEXT
    RGB(255, 255, 225),  // COLOR_INFOBK
    RGB(0, 0, 0),        // (unused)
    RGB(0, 0, 255),      // COLOR_HOTLIGHT
    RGB(16, 132, 208),   // COLOR_GRADIENTACTIVECAPTION
    RGB(181, 181, 181),  // COLOR_GRADIENTINACTIVECAPTION
    RGB(0, 0, 128),      // COLOR_MENUHILIGHT
    RGB(192, 192, 192),  // COLOR_MENUBAR
};

int ColorIndex(int index) {
    int i = static_cast<int>(static_cast<DWORD>(index) & ~kSysColorIndexFlag);
    return i >= 0 && i < kColorCount ? i : -1;
}

}  // namespace

// System brushes belong to the system: never counted as live objects, never deleted.
HBRUSH SystemBrush(int index) {
    static std::array<HBRUSH, kColorCount> brushes{};
    int i = ColorIndex(index);
    if (i < 0) return nullptr;
    if (!brushes[i]) {
        brushes[i] = CreateSolidBrush(kColors[i]);
        if (gdi::Brush* b = gdi::LookupBrush(brushes[i])) b->stock = true;
    }
    return brushes[i];
}

// A class background of COLOR_xxx + 1 means that system colour's brush.
HBRUSH ResolveBrush(HBRUSH brush) {
    auto v = reinterpret_cast<uintptr_t>(brush);
    uintptr_t index = (v & ~static_cast<uintptr_t>(kSysColorIndexFlag));
    if (v && index <= kColorCount) return SystemBrush(static_cast<int>(index - 1));
    return brush;
}

COLORREF DesktopColor() { return kColors[COLOR_BACKGROUND]; }

}  // namespace zel::user

using namespace zel::user;

extern "C" {

DWORD GetSysColor(int index) {
    int i = ColorIndex(index);
    return i < 0 ? 0 : kColors[i];
}

HBRUSH GetSysColorBrush(int index) { return SystemBrush(index); }

int GetSystemMetrics(int index) {
    switch (index) {
        case SM_CXSCREEN:
        case SM_CXFULLSCREEN: return zel::gdi::Screen().width;
        case SM_CYSCREEN:
        case SM_CYFULLSCREEN: return zel::gdi::Screen().height;
        case SM_CXVSCROLL:
        case SM_CYHSCROLL:
        case SM_CYVSCROLL:
        case SM_CXHSCROLL:
        case SM_CYVTHUMB:
        case SM_CXHTHUMB: return 17;
        case SM_CYCAPTION: return 19;
        case SM_CYMENU: return 19;
        case SM_CXBORDER:
        case SM_CYBORDER: return 1;
        case SM_CXEDGE:
        case SM_CYEDGE: return 2;
        case SM_CXDLGFRAME:
        case SM_CYDLGFRAME: return 3;
        case SM_CXICON:
        case SM_CYICON:
        case SM_CXCURSOR:
        case SM_CYCURSOR: return 32;
        case SM_CXDOUBLECLK:
        case SM_CYDOUBLECLK: return 4;
        default: return 0;
    }
}

}  // extern "C"
