#include "host/notification.h"

#include <commctrl.h>

#include <cstdio>
#include <fstream>
#include <iterator>

namespace zel::demo {

namespace {

const char* ButtonCode(UINT code) {
    static const char* const kNames[] = {"BN_CLICKED", "BN_PAINT",         "BN_HILITE",   "BN_UNHILITE",
                                         "BN_DISABLE", "BN_DOUBLECLICKED", "BN_SETFOCUS", "BN_KILLFOCUS"};
    return code < std::size(kNames) ? kNames[code] : nullptr;
}

// The combo box's codes, 1 to 10 (they overlap the button codes: the sender decides).
const char* ComboCode(UINT code) {
    static const char* const kNames[] = {"CBN_SELCHANGE",  "CBN_DBLCLK",     "CBN_SETFOCUS", "CBN_KILLFOCUS",
                                         "CBN_EDITCHANGE", "CBN_EDITUPDATE", "CBN_DROPDOWN", "CBN_CLOSEUP",
                                         "CBN_SELENDOK",   "CBN_SELENDCANCEL"};
    return code >= 1 && code <= std::size(kNames) ? kNames[code - 1] : nullptr;
}

const char* CommonCode(UINT code) {
    switch (code) {
        case NM_OUTOFMEMORY: return "NM_OUTOFMEMORY";
        case NM_CLICK: return "NM_CLICK";
        case NM_DBLCLK: return "NM_DBLCLK";
        case NM_RETURN: return "NM_RETURN";
        case NM_RCLICK: return "NM_RCLICK";
        case NM_RDBLCLK: return "NM_RDBLCLK";
        case NM_SETFOCUS: return "NM_SETFOCUS";
        case NM_KILLFOCUS: return "NM_KILLFOCUS";
        default: return nullptr;
    }
}

// The controls send SB_LINEUP and SB_LINEDOWN on horizontal bars too (the values of
// SB_LINELEFT and SB_LINERIGHT), so one set of names serves both messages.
const char* ScrollCode(UINT code) {
    static const char* const kNames[] = {"SB_LINEUP",        "SB_LINEDOWN",   "SB_PAGEUP",
                                         "SB_PAGEDOWN",      "SB_THUMBPOSITION", "SB_THUMBTRACK",
                                         "SB_TOP",           "SB_BOTTOM",     "SB_ENDSCROLL"};
    return code < std::size(kNames) ? kNames[code] : nullptr;
}

const char* MessageName(UINT message) {
    switch (message) {
        case WM_COMMAND: return "WM_COMMAND";
        case WM_NOTIFY: return "WM_NOTIFY";
        case WM_VSCROLL: return "WM_VSCROLL";
        case WM_HSCROLL: return "WM_HSCROLL";
        case WM_LBUTTONDOWN: return "WM_LBUTTONDOWN";
        case WM_LBUTTONUP: return "WM_LBUTTONUP";
        default: return nullptr;
    }
}

bool IsScroll(UINT message) { return message == WM_VSCROLL || message == WM_HSCROLL; }
bool IsPointer(UINT message) { return message == WM_LBUTTONDOWN || message == WM_LBUTTONUP; }

}  // namespace

Notification DecodeNotification(UINT message, WPARAM wParam, LPARAM lParam, int (*idOf)(HWND)) {
    Notification n;
    n.message = message;
    switch (message) {
        case WM_COMMAND:
            n.id = LOWORD(wParam);
            n.code = HIWORD(wParam);
            break;
        case WM_NOTIFY: {
            const auto* header = reinterpret_cast<const NMHDR*>(lParam);
            n.id = header ? static_cast<int>(header->idFrom) : static_cast<int>(wParam);
            n.code = header ? header->code : 0;
            break;
        }
        case WM_VSCROLL:
        case WM_HSCROLL:
            n.id = lParam && idOf ? idOf(reinterpret_cast<HWND>(lParam)) : 0;
            n.code = LOWORD(wParam);
            // Only the thumb codes carry the position (the high word, 16 bits unsigned).
            if (n.code == SB_THUMBPOSITION || n.code == SB_THUMBTRACK) n.pos = HIWORD(wParam);
            break;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP: n.point = POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; break;
        default: n.code = static_cast<UINT>(wParam); break;
    }
    return n;
}

std::string NotificationCodeName(UINT message, UINT code, bool fromComboBox) {
    const char* name = nullptr;
    if (message == WM_COMMAND) name = fromComboBox ? ComboCode(code) : ButtonCode(code);
    if (message == WM_NOTIFY) name = CommonCode(code);
    if (IsScroll(message)) name = ScrollCode(code);
    if (name) return name;
    // NM_ codes are negative numbers in a UINT.
    return "code=" + (message == WM_NOTIFY ? std::to_string(static_cast<int>(code)) : std::to_string(code));
}

std::string FormatNotification(const Notification& n) {
    std::string line = std::to_string(n.id) + " ";
    if (const char* name = MessageName(n.message)) {
        line += name;
    } else {
        char hex[16];
        std::snprintf(hex, sizeof hex, "0x%04X", n.message);
        line += hex;
    }
    if (IsPointer(n.message)) return line + " x=" + std::to_string(n.point.x) + " y=" + std::to_string(n.point.y);
    line += " " + NotificationCodeName(n.message, n.code, n.fromComboBox);
    if (n.pos) line += " pos=" + std::to_string(*n.pos);
    return line;
}

std::vector<std::string> NotificationLog::Last(size_t count) const {
    size_t from = lines_.size() > count ? lines_.size() - count : 0;
    return std::vector<std::string>(lines_.begin() + static_cast<std::ptrdiff_t>(from), lines_.end());
}

bool NotificationLog::WriteTo(const std::string& path) const {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    for (const std::string& line : lines_) out << line << '\n';
    out.close();
    return static_cast<bool>(out);
}

}  // namespace zel::demo
