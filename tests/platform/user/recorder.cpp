#include "recorder.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include <zel/desktop.h>

namespace zel::test {

namespace {

const char* MessageName(UINT m) {
    static const std::pair<UINT, const char*> names[] = {
        {WM_NCCREATE, "NCCREATE"}, {WM_CREATE, "CREATE"}, {WM_DESTROY, "DESTROY"}, {WM_NCDESTROY, "NCDESTROY"},
        {WM_MOVE, "MOVE"}, {WM_SIZE, "SIZE"}, {WM_ACTIVATE, "ACTIVATE"}, {WM_SETFOCUS, "SETFOCUS"},
        {WM_KILLFOCUS, "KILLFOCUS"}, {WM_ENABLE, "ENABLE"}, {WM_PAINT, "PAINT"}, {WM_ERASEBKGND, "ERASEBKGND"},
        {WM_SHOWWINDOW, "SHOWWINDOW"}, {WM_CANCELMODE, "CANCELMODE"}, {WM_DRAWITEM, "DRAWITEM"},
        {WM_WINDOWPOSCHANGING, "POSCHANGING"}, {WM_WINDOWPOSCHANGED, "POSCHANGED"}, {WM_NCHITTEST, "NCHITTEST"},
        {WM_KEYDOWN, "KEYDOWN"}, {WM_KEYUP, "KEYUP"}, {WM_CHAR, "CHAR"}, {WM_COMMAND, "COMMAND"}, {WM_TIMER, "TIMER"},
        {WM_MOUSEMOVE, "MOUSEMOVE"}, {WM_LBUTTONDOWN, "LBUTTONDOWN"}, {WM_LBUTTONUP, "LBUTTONUP"},
        {WM_LBUTTONDBLCLK, "LBUTTONDBLCLK"}, {WM_CAPTURECHANGED, "CAPTURECHANGED"}, {WM_USER, "USER"}};
    for (const auto& [message, name] : names)
        if (message == m) return name;
    return nullptr;
}

}  // namespace

Recorder& Recorder::Get() {
    static Recorder r;
    return r;
}

Recorder::Recorder() {
    WNDCLASSW wc{};
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = Proc;
    wc.lpszClassName = ClassName();
    RegisterClassW(&wc);
}

void Recorder::Start(std::initializer_list<UINT> messages) {
    recorded_ = messages;
    log_.clear();
    pending_.clear();
    hook = nullptr;
    eraseResult = 1;
}

std::string Recorder::Take() {
    std::string s;
    for (const std::string& e : log_) s += (s.empty() ? "" : ";") + e;
    log_.clear();
    return s.empty() ? "-" : s;
}

void Recorder::Name(HWND hwnd, const char* name) { names_.emplace_back(hwnd, name); }

std::string Recorder::NameOf(HWND hwnd) const {
    if (!hwnd) return "0";
    for (auto it = names_.rbegin(); it != names_.rend(); ++it)
        if (it->first == hwnd) return it->second;
    return "?";
}

HWND Recorder::Top(const char* name, int x, int y, int w, int h, DWORD extra) {
    pending_ = name;
    HWND hwnd = CreateWindowExW(0, ClassName(), L"", WS_POPUP | extra, x, y, w, h, nullptr, nullptr, nullptr, nullptr);
    pending_.clear();
    if (NameOf(hwnd) != name) Name(hwnd, name);
    return hwnd;
}

HWND Recorder::Child(HWND parent, const char* name, int x, int y, int w, int h, int id, DWORD extra,
                     const wchar_t* cls, const wchar_t* text) {
    if (!cls) pending_ = name;
    HWND hwnd = CreateWindowExW(0, cls ? cls : ClassName(), text, WS_CHILD | extra, x, y, w, h, parent,
                                reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    pending_.clear();
    if (hwnd && NameOf(hwnd) != name) Name(hwnd, name);
    return hwnd;
}

std::string Recorder::Describe(HWND h, UINT m, WPARAM wp, LPARAM lp) const {
    const char* n = MessageName(m);
    std::string s = NameOf(h) + ":" + (n ? n : std::to_string(m));
    char b[128];
    switch (m) {
        case WM_SETFOCUS:
        case WM_KILLFOCUS: s += "(" + NameOf(reinterpret_cast<HWND>(wp)) + ")"; break;
        case WM_CAPTURECHANGED: s += "(" + NameOf(reinterpret_cast<HWND>(lp)) + ")"; break;
        case WM_ACTIVATE: s += "(" + std::to_string(LOWORD(wp)) + "," + NameOf(reinterpret_cast<HWND>(lp)) + ")"; break;
        case WM_ENABLE:
        case WM_SHOWWINDOW:
        case WM_TIMER:
        case WM_KEYDOWN:
        case WM_KEYUP:
        case WM_CHAR: s += "(" + std::to_string(wp) + ")"; break;
        case WM_SIZE:
        case WM_MOVE:
        case WM_MOUSEMOVE:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_LBUTTONDBLCLK:
            std::snprintf(b, sizeof b, "(%d,%d)", GET_X_LPARAM(lp), GET_Y_LPARAM(lp));
            s += b;
            break;
        case WM_COMMAND:
            std::snprintf(b, sizeof b, "(%u,%u)", static_cast<unsigned>(LOWORD(wp)), static_cast<unsigned>(HIWORD(wp)));
            s += b;
            break;
        case WM_DRAWITEM: {
            auto* d = reinterpret_cast<const DRAWITEMSTRUCT*>(lp);
            std::snprintf(b, sizeof b, "(act=%u,state=0x%x)", d->itemAction, d->itemState);
            s += b;
            break;
        }
        default: break;
    }
    return s;
}

LRESULT CALLBACK Recorder::Proc(HWND h, UINT m, WPARAM wp, LPARAM lp) {
    Recorder& r = Get();
    if (!r.pending_.empty() && r.NameOf(h) == "?") {
        r.Name(h, r.pending_.c_str());
        r.pending_.clear();
    }
    if (std::find(r.recorded_.begin(), r.recorded_.end(), m) != r.recorded_.end()) r.log_.push_back(r.Describe(h, m, wp, lp));
    LRESULT result = 0;
    if (r.hook && r.hook(h, m, wp, lp, &result)) return result;
    if (m == WM_ERASEBKGND) return r.eraseResult;
    return DefWindowProcW(h, m, wp, lp);
}

void DesktopTest::SetUp() {
    zel::Desktop::Get().Reset();
    rec.Start({});
    rec.Forget();
    LeakChecked::SetUp();
}

void DesktopTest::TearDown() {
    zel::Desktop::Get().Reset();
    rec.Start({});
    rec.Forget();
    LeakChecked::TearDown();
}

}  // namespace zel::test
