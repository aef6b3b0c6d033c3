#include "support/skin_folder.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <zel/gdi_extras.h>
#include <zel/resources.h>

#include <fstream>

namespace zel::test {

namespace fs = std::filesystem;

// One folder per instance: per process, per test, and numbered in case a test holds two.
SkinFolder::SkinFolder() {
    static int serial = 0;
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    const std::string test = info ? std::string(info->test_suite_name()) + "." + info->name() : "none";
    dir_ = fs::temp_directory_path() /
           ("zel_skins_" + std::to_string(::getpid()) + "_" + std::to_string(serial++) + "_" + test);
    fs::remove_all(dir_);
    fs::create_directories(dir_);
}

SkinFolder::~SkinFolder() {
    for (HINSTANCE module : modules_) zel::FreeResourceModule(module);
    std::error_code ignored;
    fs::remove_all(dir_, ignored);
}

std::string SkinFolder::Draw(const std::string& name, int width, int height, const std::function<void(HDC)>& paint) {
    HDC screen = ::GetDC(nullptr);
    HDC dc = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, width, height);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    paint(dc);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    const std::string path = Path(name);
    EXPECT_TRUE(zel::SaveBitmap(bitmap, path.c_str())) << "could not write " << path;
    ::DeleteObject(bitmap);
    return path;
}

std::string SkinFolder::Pixels(const std::string& name, int width, int height,
                               const std::function<COLORREF(int x, int y)>& colour) {
    return Draw(name, width, height, [&](HDC dc) {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) ::SetPixel(dc, x, y, colour(x, y));
    });
}

std::string SkinFolder::Solid(const std::string& name, int width, int height, COLORREF colour) {
    return Draw(name, width, height, [&](HDC dc) { FillBox(dc, 0, 0, width, height, colour); });
}

std::string SkinFolder::Framed(const std::string& name, int width, int height, COLORREF fill, COLORREF frame) {
    return Draw(name, width, height, [&](HDC dc) {
        FillBox(dc, 0, 0, width, height, frame);
        FillBox(dc, 1, 1, width - 1, height - 1, fill);
    });
}

std::string SkinFolder::Striped(const std::string& name, int width, int height, COLORREF a, COLORREF b, int band,
                                bool columns) {
    const int step = band > 0 ? band : 1;
    return Pixels(name, width, height, [=](int x, int y) { return ((columns ? x : y) / step) % 2 ? b : a; });
}

std::string SkinFolder::Keyed(const std::string& name, int width, int height, COLORREF face, COLORREF key,
                              std::initializer_list<RECT> holes) {
    return Draw(name, width, height, [&](HDC dc) {
        FillBox(dc, 0, 0, width, height, face);
        for (const RECT& hole : holes) FillBox(dc, hole, key);
    });
}

std::string SkinFolder::Path(const std::string& name) const { return (dir_ / (name + ".bmp")).string(); }

CString SkinFolder::Skin(std::initializer_list<std::string> names) const {
    std::string skin;
    for (const std::string& name : names) skin += Path(name) + "|";
    return CString(skin.c_str());
}

std::string SkinFolder::Script(const std::vector<std::pair<UINT, std::string>>& bitmaps) {
    const fs::path script = dir_ / ("skin" + std::to_string(scripts_++) + ".rc");
    std::ofstream out(script);
    for (const auto& [id, name] : bitmaps) out << id << " BITMAP \"" << name << ".bmp\"\n";
    return script.string();
}

HINSTANCE SkinFolder::Module(const std::vector<std::pair<UINT, std::string>>& bitmaps) {
    const std::string script = Script(bitmaps);
    HINSTANCE module = zel::LoadResourceModule(script.c_str());
    EXPECT_NE(module, nullptr) << script;
    if (module) modules_.push_back(module);
    return module;
}

void FillBox(HDC dc, const RECT& rc, COLORREF colour) {
    HBRUSH brush = ::CreateSolidBrush(colour);
    ::FillRect(dc, &rc, brush);
    ::DeleteObject(brush);
}

}  // namespace zel::test
