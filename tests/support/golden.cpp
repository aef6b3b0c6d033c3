#include "support/golden.h"

#include <aygshell.h>
#include <zel/desktop.h>
#include <zel/platform.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace zel::test {

namespace {

namespace fs = std::filesystem;

struct Image {
    int width = 0, height = 0;
    std::vector<COLORREF> pixels;  // row by row
    COLORREF at(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

Image CaptureScreen(const RECT& r) {
    Image image{r.right - r.left, r.bottom - r.top, {}};
    if (image.width <= 0 || image.height <= 0) return Image{};
    image.pixels.reserve(static_cast<size_t>(image.width) * image.height);
    for (int y = r.top; y < r.bottom; ++y)
        for (int x = r.left; x < r.right; ++x) image.pixels.push_back(zel::Desktop::Get().Pixel(x, y));
    return image;
}

bool Save(const Image& image, const fs::path& path) {
    HDC screen = ::GetDC(nullptr);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, image.width, image.height);
    HDC dc = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) ::SetPixel(dc, x, y, image.at(x, y));
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    fs::create_directories(path.parent_path());
    const bool ok = zel::SaveBitmap(bitmap, path.string().c_str());
    ::DeleteObject(bitmap);
    return ok;
}

bool Load(const fs::path& path, Image& image) {
    const std::string narrow = path.string();
    HBITMAP bitmap = ::SHLoadDIBitmap(std::wstring(narrow.begin(), narrow.end()).c_str());
    if (!bitmap) return false;
    BITMAP info{};
    ::GetObjectW(bitmap, sizeof info, &info);
    image = Image{info.bmWidth, info.bmHeight, {}};
    HDC dc = ::CreateCompatibleDC(nullptr);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) image.pixels.push_back(::GetPixel(dc, x, y));
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    ::DeleteObject(bitmap);
    return true;
}

// Differing pixels red, equal ones at a third of their brightness.
Image Diff(const Image& expected, const Image& actual) {
    Image diff{actual.width, actual.height, {}};
    for (int y = 0; y < actual.height; ++y)
        for (int x = 0; x < actual.width; ++x) {
            const COLORREF a = actual.at(x, y);
            if (a != expected.at(x, y))
                diff.pixels.push_back(RGB(255, 0, 0));
            else
                diff.pixels.push_back(RGB(GetRValue(a) / 3, GetGValue(a) / 3, GetBValue(a) / 3));
        }
    return diff;
}

std::string Hex(COLORREF c) {
    char b[16];
    std::snprintf(b, sizeof b, "%06x", static_cast<unsigned>(c & 0xFFFFFF));
    return b;
}

}  // namespace

::testing::AssertionResult ScreenMatchesGolden(const std::string& group, const std::string& name,
                                               const RECT& screenRect) {
    const fs::path golden = fs::path(ZEL_TEST_DATA_DIR) / "golden" / group / (name + ".png");
    const Image actual = CaptureScreen(screenRect);
    if (actual.pixels.empty()) return ::testing::AssertionFailure() << "empty rectangle for golden " << golden;

    const char* update = std::getenv("ZEL_UPDATE_GOLDENS");
    if (update && std::string(update) == "1") {
        if (!Save(actual, golden)) return ::testing::AssertionFailure() << "cannot write " << golden;
        return ::testing::AssertionSuccess() << "wrote " << golden;
    }

    Image expected;
    if (!fs::exists(golden) || !Load(golden, expected))
        return ::testing::AssertionFailure() << "missing golden " << golden
                                             << " (ZEL_UPDATE_GOLDENS=1 writes it; review it before committing)";
    if (expected.width != actual.width || expected.height != actual.height)
        return ::testing::AssertionFailure() << golden << " is " << expected.width << "x" << expected.height
                                             << ", the painted area " << actual.width << "x" << actual.height;
    for (int y = 0; y < actual.height; ++y)
        for (int x = 0; x < actual.width; ++x) {
            if (actual.at(x, y) == expected.at(x, y)) continue;
            const fs::path out = fs::path(ZEL_TEST_OUT_DIR);
            const fs::path actualPath = out / (group + "_" + name + "_actual.png");
            const fs::path diffPath = out / (group + "_" + name + "_diff.png");
            Save(actual, actualPath);
            Save(Diff(expected, actual), diffPath);
            return ::testing::AssertionFailure() << group << "/" << name << ": first difference at (" << x << ", "
                                                 << y << "): golden " << Hex(expected.at(x, y)) << ", painted "
                                                 << Hex(actual.at(x, y)) << "; see " << actualPath << " and "
                                                 << diffPath;
        }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult WindowMatchesGolden(const std::string& group, const std::string& name, HWND window) {
    RECT r{};
    if (!::GetWindowRect(window, &r)) return ::testing::AssertionFailure() << "no window for golden " << name;
    return ScreenMatchesGolden(group, name, r);
}

}  // namespace zel::test
