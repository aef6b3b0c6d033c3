// What the host hears from its controls, one log line per message:
//
//   1001 WM_COMMAND BN_CLICKED
//   1201 WM_NOTIFY NM_DBLCLK
//   9001 WM_VSCROLL SB_LINEDOWN pos=3
//   1001 WM_LBUTTONDOWN x=120 y=200
//
// first the sender's control identifier (0 when none is known), then the message and its
// code. Scroll positions come from the message for the thumb codes and from the control
// otherwise; pointer messages forwarded by controls carry only a point, so the host names
// the control under it.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace zel::demo {

struct Notification {
    UINT message = 0;
    int id = 0;
    UINT code = 0;                    // BN_, NM_ or SB_ code
    std::optional<long> pos;          // scroll messages
    POINT point{};                    // pointer messages, as the host received them
    bool fromComboBox = false;        // WM_COMMAND codes are CBN_ codes (the host knows the sender)
};

// Reads what the message itself carries. idOf turns a control's window handle into its
// identifier (the host passes GetDlgCtrlID).
Notification DecodeNotification(UINT message, WPARAM wParam, LPARAM lParam, int (*idOf)(HWND));

std::string FormatNotification(const Notification& n);

// The code's name for the message ("BN_CLICKED", "SB_THUMBTRACK", "CBN_SELCHANGE" from a
// combo box), or "code=N".
std::string NotificationCodeName(UINT message, UINT code, bool fromComboBox = false);

// The lines of a tour, kept in order; the status strip shows the last few.
class NotificationLog {
public:
    void Add(std::string line) { lines_.push_back(std::move(line)); }
    void Clear() { lines_.clear(); }
    const std::vector<std::string>& Lines() const { return lines_; }
    std::vector<std::string> Last(size_t count) const;
    bool WriteTo(const std::string& path) const;

private:
    std::vector<std::string> lines_;
};

}  // namespace zel::demo
