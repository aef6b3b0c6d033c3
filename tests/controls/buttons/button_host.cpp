#include "button_host.h"

#include <zel/gdi_extras.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>

namespace buttons_test {

namespace fs = std::filesystem;

namespace {

const char* Logged(UINT message) {
    switch (message) {
        case WM_COMMAND: return "COMMAND";
        case WM_NOTIFY: return "NOTIFY";
        case WM_VSCROLL: return "VSCROLL";
        case WM_HSCROLL: return "HSCROLL";
        case WM_LBUTTONDOWN: return "LBUTTONDOWN";
        case WM_LBUTTONUP: return "LBUTTONUP";
        default: return nullptr;
    }
}

}  // namespace

BOOL RecordingParent::CreateAt(int x, int y, int width, int height) {
    entries_.clear();
    return CreateEx(0, nullptr, L"host", WS_POPUP | WS_VISIBLE, x, y, width, height, nullptr, nullptr);
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
        char b[160];
        const char* what = Logged(e.message);
        switch (e.message) {
            case WM_COMMAND:
                std::snprintf(b, sizeof b, "%s(%u,%u,%s)", what, LOWORD(e.wParam), HIWORD(e.wParam),
                              NameOf(reinterpret_cast<HWND>(e.lParam)).c_str());
                break;
            case WM_NOTIFY: {
                auto* h = reinterpret_cast<const NMHDR*>(e.lParam);
                std::snprintf(b, sizeof b, "%s(%u,%d)", what, static_cast<unsigned>(e.wParam), h ? static_cast<int>(h->code) : 0);
                break;
            }
            case WM_VSCROLL:
            case WM_HSCROLL:
                std::snprintf(b, sizeof b, "%s(%u,%u,%s)", what, LOWORD(e.wParam), HIWORD(e.wParam),
                              NameOf(reinterpret_cast<HWND>(e.lParam)).c_str());
                break;
            default:
                std::snprintf(b, sizeof b, "%s(%u,%d,%d)", what, static_cast<unsigned>(e.wParam), GET_X_LPARAM(e.lParam),
                              GET_Y_LPARAM(e.lParam));
                break;
        }
        log += (log.empty() ? "" : ";") + std::string(b);
    }
    entries_.clear();
    return log.empty() ? "-" : log;
}

std::vector<DWORD> RecordingParent::CommandTimes() const {
    std::vector<DWORD> times;
    for (const Entry& e : entries_)
        if (e.message == WM_COMMAND) times.push_back(e.time);
    return times;
}

LRESULT RecordingParent::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) {
        CRect rc;
        GetClientRect(&rc);
        FillBox(reinterpret_cast<HDC>(wParam), rc.left, rc.top, rc.right, rc.bottom, kSentinel);
        return 1;
    }
    if (Logged(message)) {
        entries_.push_back(Entry{message, wParam, lParam, GetTickCount()});
        if (onMessage) onMessage(message, wParam, lParam);
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

SkinFolder::SkinFolder() {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    dir_ = fs::temp_directory_path() /
           ("zel_buttons_" + std::to_string(::getpid()) + "_" + (info ? info->name() : std::string("suite")));
    fs::remove_all(dir_);
    fs::create_directories(dir_);
}

SkinFolder::~SkinFolder() {
    std::error_code ignored;
    fs::remove_all(dir_, ignored);
}

std::string SkinFolder::Draw(const std::string& name, int width, int height, const std::function<void(HDC)>& paint) {
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    ReleaseDC(nullptr, screen);
    HGDIOBJ old = SelectObject(dc, bitmap);
    paint(dc);
    SelectObject(dc, old);
    DeleteDC(dc);
    const std::string path = (dir_ / (name + ".bmp")).string();
    if (!zel::SaveBitmap(bitmap, path.c_str())) ADD_FAILURE() << "could not write " << path;
    DeleteObject(bitmap);
    return path;
}

std::string SkinFolder::Solid(const std::string& name, int width, int height, COLORREF colour) {
    return Draw(name, width, height, [&](HDC dc) { FillBox(dc, 0, 0, width, height, colour); });
}

std::string SkinFolder::Script(const std::vector<std::pair<int, std::string>>& bitmaps) {
    const fs::path script = dir_ / "skins.rc";
    std::ofstream out(script);
    for (const auto& [id, path] : bitmaps) out << id << " BITMAP \"" << fs::path(path).filename().string() << "\"\n";
    return script.string();
}

void FillBox(HDC dc, int l, int t, int r, int b, COLORREF colour) {
    RECT rc{l, t, r, b};
    HBRUSH brush = CreateSolidBrush(colour);
    FillRect(dc, &rc, brush);
    DeleteObject(brush);
}

CRect InkBox(HWND hwnd, COLORREF ink) {
    CRect client, box;
    GetClientRect(hwnd, &client);
    bool any = false;
    for (int y = 0; y < client.bottom; ++y)
        for (int x = 0; x < client.right; ++x) {
            POINT pt{x, y};
            ClientToScreen(hwnd, &pt);
            if (zel::Desktop::Get().Pixel(pt.x, pt.y) != ink) continue;
            box = any ? CRect(std::min<int>(box.left, x), std::min<int>(box.top, y), std::max<int>(box.right, x + 1),
                              std::max<int>(box.bottom, y + 1))
                      : CRect(x, y, x + 1, y + 1);
            any = true;
        }
    return box;
}

void ButtonsTest::SetUp() {
    desktop.Reset();
    LeakChecked::SetUp();
    ASSERT_TRUE(parent.CreateAt(20, 30, 300, 200));
    parent.Name(parent.m_hWnd, "parent");
    desktop.RunUntilIdle();
}

void ButtonsTest::TearDown() {
    if (parent.m_hWnd) parent.DestroyWindow();
    desktop.Reset();
    desktop.RunUntilIdle();
    LeakChecked::TearDown();
}

POINT ButtonsTest::ScreenOf(HWND hwnd, int x, int y) const {
    POINT pt{x, y};
    ClientToScreen(hwnd, &pt);
    return pt;
}

COLORREF ButtonsTest::ShownAt(HWND hwnd, int x, int y) const {
    POINT pt = ScreenOf(hwnd, x, y);
    return desktop.Pixel(pt.x, pt.y);
}

void ButtonsTest::TapAt(HWND hwnd, int x, int y) {
    POINT pt = ScreenOf(hwnd, x, y);
    desktop.Tap(pt.x, pt.y);
}

void ButtonsTest::DownAt(HWND hwnd, int x, int y) {
    POINT pt = ScreenOf(hwnd, x, y);
    desktop.PointerDown(pt.x, pt.y);
}

void ButtonsTest::MoveTo(HWND hwnd, int x, int y) {
    POINT pt = ScreenOf(hwnd, x, y);
    desktop.PointerMove(pt.x, pt.y);
}

void ButtonsTest::UpAt(HWND hwnd, int x, int y) {
    POINT pt = ScreenOf(hwnd, x, y);
    desktop.PointerUp(pt.x, pt.y);
}

}  // namespace buttons_test
