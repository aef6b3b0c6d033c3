#include "label_fixture.h"

#include <unistd.h>
#include <zel/desktop.h>
#include <zel/platform.h>
#include <zel/resources.h>

#include <cstdio>
#include <fstream>

#include "ControlFont.h"

namespace labeltest {

namespace fs = std::filesystem;

namespace {

constexpr wchar_t kParentClass[] = L"ZelLabelTestParent";

LRESULT CALLBACK ParentProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
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

void Paint(HDC dc, const Art& art) {
    for (int y = 0; y < art.height; ++y)
        for (int x = 0; x < art.width; ++x) ::SetPixel(dc, x, y, art.colour(x, y));
}

}  // namespace

Parent::Parent() {
    WNDCLASSW wc{};
    wc.lpfnWndProc = ParentProc;
    wc.lpszClassName = kParentClass;
    ::RegisterClassW(&wc);  // again after each desktop reset; a second registration fails harmlessly
    hwnd_ = ::CreateWindowExW(0, kParentClass, L"", WS_POPUP | WS_VISIBLE, 0, 0, 320, 200, nullptr, nullptr, nullptr,
                              nullptr);
}

Parent::~Parent() {
    if (::IsWindow(hwnd_)) ::DestroyWindow(hwnd_);
}

SkinFolder::SkinFolder() {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    dir_ = fs::temp_directory_path() / ("zel_labels_" + std::to_string(::getpid()) + "_" +
                                        (info ? std::string(info->test_suite_name()) + "." + info->name() : "x"));
    fs::remove_all(dir_);
    fs::create_directories(dir_);
}

SkinFolder::~SkinFolder() {
    for (HINSTANCE module : modules_) zel::FreeResourceModule(module);
    std::error_code ignored;
    fs::remove_all(dir_, ignored);
}

CString SkinFolder::Write(const std::string& name, const Art& art) {
    ArtBitmap bitmap(art);
    const std::string path = (dir_ / (name + ".bmp")).string();
    EXPECT_TRUE(zel::SaveBitmap(bitmap.get(), path.c_str())) << path;
    return Path(name);
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

ArtBitmap::ArtBitmap(const Art& art) {
    HDC screen = ::GetDC(nullptr);
    bitmap_ = ::CreateCompatibleBitmap(screen, art.width, art.height);
    HDC dc = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(dc, bitmap_);
    Paint(dc, art);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
}

ArtBitmap::~ArtBitmap() { ::DeleteObject(bitmap_); }

void ControlTest::SetUp() {
    zel::Desktop::Get().Reset();
    LeakChecked::SetUp();
}

void ControlTest::TearDown() {
    zel::Desktop::Get().Reset();
    CWnd::DeleteTempMap();
    LeakChecked::TearDown();
}

Reference::Reference(int w, int h, COLORREF fill) : MemorySurface(w, h, false) { Fill(RECT{0, 0, w, h}, fill); }

void Reference::Fill(const RECT& rc, COLORREF colour) {
    HBRUSH brush = ::CreateSolidBrush(colour);
    ::FillRect(dc(), &rc, brush);
    ::DeleteObject(brush);
}

void Reference::Text(const CString& text, RECT rc, UINT format, int height, COLORREF colour) {
    HFONT font = zelctl::CreateControlFont(height);
    HGDIOBJ old = ::SelectObject(dc(), font);
    ::SetBkMode(dc(), TRANSPARENT);
    ::SetTextColor(dc(), colour);
    ::DrawTextW(dc(), text, text.GetLength(), &rc, format);
    ::SelectObject(dc(), old);
    ::DeleteObject(font);
}

std::string Reference::Diff(const zel::test::Image& actual) const {
    if (actual.width != w() || actual.height != h())
        return "size " + std::to_string(actual.width) + "x" + std::to_string(actual.height);
    int count = 0;
    std::string first;
    for (int y = 0; y < h(); ++y)
        for (int x = 0; x < w(); ++x) {
            const COLORREF want = ::GetPixel(dc(), x, y), got = actual.At(x, y);
            if (want == got) continue;
            if (count++ == 0) {
                char b[96];
                std::snprintf(b, sizeof b, "first at (%d,%d): %06x, expected %06x", x, y, static_cast<unsigned>(got),
                              static_cast<unsigned>(want));
                first = b;
            }
        }
    return count ? std::to_string(count) + " pixels differ, " + first : std::string();
}

SIZE Measure(const CString& text, int height, UINT format) {
    HDC screen = ::GetDC(nullptr);
    HFONT font = zelctl::CreateControlFont(height);
    HGDIOBJ old = ::SelectObject(screen, font);
    RECT rc{0, 0, 0, 0};
    ::DrawTextW(screen, text, text.GetLength(), &rc, format | DT_CALCRECT);
    ::SelectObject(screen, old);
    ::DeleteObject(font);
    ::ReleaseDC(nullptr, screen);
    return SIZE{rc.right - rc.left, rc.bottom - rc.top};
}

}  // namespace labeltest
