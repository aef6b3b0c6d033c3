#include "support/recording_parent.h"

#include <commctrl.h>

#include "support/sentinel.h"
#include "support/skin_folder.h"

namespace zel::test {

namespace {

std::string ScrollCode(UINT code) {
    static const char* const names[] = {"SB_LINEUP",     "SB_LINEDOWN", "SB_PAGEUP", "SB_PAGEDOWN", "SB_THUMBPOSITION",
                                        "SB_THUMBTRACK", "SB_TOP",      "SB_BOTTOM", "SB_ENDSCROLL"};
    return code < 9 ? names[code] : std::to_string(code);
}

std::string NotifyCode(UINT code) {
    switch (code) {
        case NM_CLICK: return "NM_CLICK";
        case NM_DBLCLK: return "NM_DBLCLK";
        case NM_RETURN: return "NM_RETURN";
        case NM_RCLICK: return "NM_RCLICK";
        case NM_SETFOCUS: return "NM_SETFOCUS";
        case NM_KILLFOCUS: return "NM_KILLFOCUS";
        default: return std::to_string(static_cast<int>(code));
    }
}

std::string Join(std::initializer_list<std::string> parts) {
    std::string s;
    for (const std::string& p : parts) s += (s.empty() ? "" : ",") + p;
    return s;
}

}  // namespace

BOOL RecordingParent::CreateAt(const CRect& place) {
    entries_.clear();
    names_.clear();
    if (!CreateEx(0, nullptr, L"parent", WS_POPUP | WS_VISIBLE, place.left, place.top, place.Width(), place.Height(),
                  nullptr, nullptr))
        return FALSE;
    Name(m_hWnd, "parent");
    return TRUE;
}

void RecordingParent::Name(HWND hwnd, std::string name) { names_.emplace_back(hwnd, std::move(name)); }

std::string RecordingParent::NameOf(HWND hwnd) const {
    if (!hwnd) return "0";
    for (auto it = names_.rbegin(); it != names_.rend(); ++it)
        if (it->first == hwnd) return it->second;
    return "?";
}

std::string RecordingParent::Take() {
    std::string log;
    for (const Entry& e : entries_) {
        log += (log.empty() ? "" : ";") + e.text;
        if (timed) log += "@" + std::to_string(e.time);
    }
    entries_.clear();
    return log.empty() ? "-" : log;
}

std::vector<DWORD> RecordingParent::Times(UINT message) const {
    std::vector<DWORD> times;
    for (const Entry& e : entries_)
        if (e.message == message) times.push_back(e.time);
    return times;
}

// The text is made on arrival: the NMHDR lives only as long as the message, and a sender
// destroyed later must still show its name.
std::string RecordingParent::Describe(UINT message, WPARAM wParam, LPARAM lParam) const {
    const HWND sender = reinterpret_cast<HWND>(lParam);
    switch (message) {
        case WM_COMMAND:
            return "COMMAND(" + Join({std::to_string(LOWORD(wParam)), std::to_string(HIWORD(wParam)), NameOf(sender)}) +
                   ")";
        case WM_NOTIFY: {
            const auto* hdr = reinterpret_cast<const NMHDR*>(lParam);
            if (!hdr) return "NOTIFY(null)";
            std::string text = Join({std::to_string(hdr->idFrom), NotifyCode(hdr->code), NameOf(hdr->hwndFrom)});
            if (wParam != hdr->idFrom) text += ",wParam=" + std::to_string(wParam);
            return "NOTIFY(" + text + ")";
        }
        case WM_VSCROLL:
        case WM_HSCROLL:
            return std::string(message == WM_VSCROLL ? "VSCROLL(" : "HSCROLL(") +
                   Join({ScrollCode(LOWORD(wParam)), std::to_string(HIWORD(wParam)), NameOf(sender)}) + ")";
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
            return std::string(message == WM_LBUTTONDOWN ? "LBUTTONDOWN(" : "LBUTTONUP(") +
                   Join({std::to_string(wParam), std::to_string(GET_X_LPARAM(lParam)),
                         std::to_string(GET_Y_LPARAM(lParam))}) +
                   ")";
        default: return {};
    }
}

std::string Repeats(const std::string& entry, DWORD first, DWORD period, int count) {
    std::string log;
    for (int i = 0; i < count; ++i) log += (i ? ";" : "") + entry + "@" + std::to_string(first + i * period);
    return log;
}

LRESULT RecordingParent::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) {
        CRect rc;
        GetClientRect(&rc);
        FillBox(reinterpret_cast<HDC>(wParam), rc, kSentinel);
        return 1;
    }
    std::string text = Describe(message, wParam, lParam);
    if (!text.empty()) {
        entries_.push_back(Entry{message, std::move(text), ::GetTickCount()});
        // A copy: the hook may replace or clear itself while it runs.
        if (auto hook = onMessage) hook(message, wParam, lParam);
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

}  // namespace zel::test
