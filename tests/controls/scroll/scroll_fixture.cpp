#include "scroll_fixture.h"

#include <unistd.h>
#include <zel/desktop.h>
#include <zel/platform.h>
#include <zel/resources.h>

#include <cstdio>
#include <fstream>

namespace scrolltest {

namespace fs = std::filesystem;

namespace {

constexpr wchar_t kParentClass[] = L"ZelScrollTestParent";

const char* CodeName(UINT code) {
    static const char* const names[] = {"LINEUP",        "LINEDOWN",   "PAGEUP", "PAGEDOWN", "THUMBPOSITION",
                                        "THUMBTRACK",    "TOP",        "BOTTOM", "ENDSCROLL"};
    return code < 9 ? names[code] : "?";
}

Parent*& Current() {
    static Parent* current = nullptr;
    return current;
}

}  // namespace

Parent::Parent(int width, int height) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = Proc;
    wc.lpszClassName = kParentClass;
    ::RegisterClassW(&wc);  // again after each desktop reset; a second registration fails harmlessly
    Current() = this;
    hwnd_ = ::CreateWindowExW(0, kParentClass, L"", WS_POPUP | WS_VISIBLE, 0, 0, width, height, nullptr, nullptr,
                              nullptr, nullptr);
    Name(hwnd_, "parent");
}

Parent::~Parent() {
    if (::IsWindow(hwnd_)) ::DestroyWindow(hwnd_);
    if (Current() == this) Current() = nullptr;
}

std::string Parent::NameOf(HWND hwnd) const {
    if (!hwnd) return "0";
    for (auto it = names_.rbegin(); it != names_.rend(); ++it)
        if (it->first == hwnd) return it->second;
    return "?";
}

std::string Parent::Take() {
    std::string s;
    for (const std::string& e : log_) s += (s.empty() ? "" : ";") + e;
    log_.clear();
    return s.empty() ? "-" : s;
}

void Parent::Log(UINT message, WPARAM wParam, LPARAM lParam) {
    char b[160];
    switch (message) {
        case WM_VSCROLL:
        case WM_HSCROLL:
            std::snprintf(b, sizeof b, "%s(%s,%u,%s)", message == WM_VSCROLL ? "VSCROLL" : "HSCROLL",
                          CodeName(LOWORD(wParam)), static_cast<unsigned>(HIWORD(wParam)),
                          NameOf(reinterpret_cast<HWND>(lParam)).c_str());
            break;
        case WM_COMMAND:
            std::snprintf(b, sizeof b, "COMMAND(%u,%u)", static_cast<unsigned>(LOWORD(wParam)),
                          static_cast<unsigned>(HIWORD(wParam)));
            break;
        case WM_NOTIFY: std::snprintf(b, sizeof b, "NOTIFY(%u)", static_cast<unsigned>(wParam)); break;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
            std::snprintf(b, sizeof b, "%s(%d,%d)", message == WM_LBUTTONDOWN ? "LBUTTONDOWN" : "LBUTTONUP",
                          GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
            break;
        default: return;
    }
    std::string entry = b;
    if (timed) entry += "@" + std::to_string(::GetTickCount());
    log_.push_back(entry);
}

LRESULT CALLBACK Parent::Proc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    Parent* self = Current();
    if (self && (self->hwnd_ == hwnd || !self->hwnd_)) {
        self->Log(message, wParam, lParam);
        if ((message == WM_VSCROLL || message == WM_HSCROLL) && self->onScroll) self->onScroll(message, wParam, lParam);
    }
    if (message == WM_ERASEBKGND) {
        RECT r;
        ::GetClientRect(hwnd, &r);
        HBRUSH brush = ::CreateSolidBrush(kSentinel);
        ::FillRect(reinterpret_cast<HDC>(wParam), &r, brush);
        ::DeleteObject(brush);
        return 1;
    }
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

// ---- skins ---------------------------------------------------------------------------------

SkinFolder::SkinFolder() {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    dir_ = fs::temp_directory_path() / ("zel_scroll_" + std::to_string(::getpid()) + "_" +
                                        (info ? std::string(info->test_suite_name()) + "." + info->name() : "x"));
    fs::remove_all(dir_);
    fs::create_directories(dir_);
}

SkinFolder::~SkinFolder() {
    for (HINSTANCE module : modules_) zel::FreeResourceModule(module);
    std::error_code ignored;
    fs::remove_all(dir_, ignored);
}

std::string SkinFolder::Write(const std::string& name, const Art& art) {
    HDC screen = ::GetDC(nullptr);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, art.width, art.height);
    HDC dc = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    for (int y = 0; y < art.height; ++y)
        for (int x = 0; x < art.width; ++x) ::SetPixel(dc, x, y, art.colour(x, y));
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    const std::string path = (dir_ / (name + ".bmp")).string();
    EXPECT_TRUE(zel::SaveBitmap(bitmap, path.c_str())) << path;
    ::DeleteObject(bitmap);
    return path;
}

CString SkinFolder::Path(const std::string& name) const {
    const std::string path = (dir_ / (name + ".bmp")).string();
    return CString(std::wstring(path.begin(), path.end()).c_str());
}

HINSTANCE SkinFolder::Module(const std::vector<std::pair<UINT, std::string>>& bitmaps) {
    const fs::path rc = dir_ / ("skin" + std::to_string(modules_.size()) + ".rc");
    std::ofstream out(rc);
    for (const auto& [id, name] : bitmaps) out << id << " BITMAP \"" << name << ".bmp\"\n";
    out.close();
    HINSTANCE module = zel::LoadResourceModule(rc.string().c_str());
    EXPECT_NE(module, nullptr) << rc;
    if (module) modules_.push_back(module);
    return module;
}

Art Solid(int width, int height, COLORREF fill) {
    return Art{width, height, [fill](int, int) { return fill; }};
}

Art Framed(int width, int height, COLORREF fill, COLORREF frame) {
    return Art{width, height, [=](int x, int y) {
                   return x == 0 || y == 0 || x == width - 1 || y == height - 1 ? frame : fill;
               }};
}

// ---- fixture and pixels --------------------------------------------------------------------

void ControlTest::SetUp() {
    zel::Desktop::Get().Reset();
    LeakChecked::SetUp();
}

void ControlTest::TearDown() {
    zel::Desktop::Get().Reset();
    CWnd::DeleteTempMap();
    LeakChecked::TearDown();
}

COLORREF ScreenPixel(int x, int y) { return zel::Desktop::Get().Pixel(x, y); }

std::string Hex(COLORREF c) {
    char b[16];
    std::snprintf(b, sizeof b, "%06x", static_cast<unsigned>(c & 0xFFFFFF));
    return b;
}

std::string Column(int x, int top, int bottom) {
    std::string s;
    for (int y = top; y < bottom; ++y) s += (s.empty() ? "" : " ") + Hex(ScreenPixel(x, y));
    return s;
}

std::string Row(int y, int left, int right) {
    std::string s;
    for (int x = left; x < right; ++x) s += (s.empty() ? "" : " ") + Hex(ScreenPixel(x, y));
    return s;
}

}  // namespace scrolltest
