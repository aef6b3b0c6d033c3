#include "support/golden.h"

#include <aygshell.h>
#include <zel/desktop.h>
#include <zel/gdi_extras.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "support/memory_surface.h"

namespace zel::test {

namespace fs = std::filesystem;

namespace {

bool UpdateRequested() {
    const char* v = std::getenv("ZEL_UPDATE_GOLDENS");
    return v && std::strcmp(v, "1") == 0;
}

// Equal pixels are dimmed, differing ones red.
Image Diff(const Image& expected, const Image& actual) {
    Image diff{actual.width, actual.height, std::vector<COLORREF>(actual.pixels.size())};
    for (int y = 0; y < actual.height; ++y)
        for (int x = 0; x < actual.width; ++x) {
            COLORREF a = actual.At(x, y);
            bool same = x < expected.width && y < expected.height && expected.At(x, y) == a;
            diff.pixels[static_cast<size_t>(y) * actual.width + x] =
                same ? RGB(GetRValue(a) / 4 + 96, GetGValue(a) / 4 + 96, GetBValue(a) / 4 + 96) : RGB(255, 0, 0);
        }
    return diff;
}

std::string Hex(COLORREF c) {
    char b[16];
    std::snprintf(b, sizeof b, "%06x", static_cast<unsigned>(c));
    return b;
}

}  // namespace

Image CaptureScreen(const RECT& r) {
    Image image{r.right - r.left, r.bottom - r.top, {}};
    if (image.width <= 0 || image.height <= 0) return Image{};
    image.pixels.reserve(static_cast<size_t>(image.width) * image.height);
    for (int y = r.top; y < r.bottom; ++y)
        for (int x = r.left; x < r.right; ++x) image.pixels.push_back(zel::Desktop::Get().Pixel(x, y));
    return image;
}

Image CaptureWindow(HWND hwnd, int margin) {
    RECT r{};
    GetWindowRect(hwnd, &r);
    InflateRect(&r, margin, margin);
    return CaptureScreen(r);
}

bool WritePng(const Image& image, const std::string& path) {
    if (image.width <= 0 || image.height <= 0) return false;
    HDC screen = GetDC(nullptr);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, image.width, image.height);
    ReleaseDC(nullptr, screen);
    if (!bitmap) return false;
    {
        BitmapDC dc(bitmap);
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x) SetPixel(dc, x, y, image.At(x, y));
    }
    bool ok = zel::SaveBitmap(bitmap, path.c_str());
    DeleteObject(bitmap);
    return ok;
}

std::optional<Image> ReadPng(const std::string& path) {
    std::wstring wide(path.begin(), path.end());
    HBITMAP bitmap = SHLoadDIBitmap(wide.c_str());
    if (!bitmap) return std::nullopt;
    BITMAP bm{};
    GetObjectW(bitmap, sizeof bm, &bm);
    Image image{bm.bmWidth, bm.bmHeight, {}};
    {
        BitmapDC dc(bitmap);
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x) image.pixels.push_back(GetPixel(dc, x, y));
    }
    DeleteObject(bitmap);
    return image;
}

::testing::AssertionResult MatchesGolden(const std::string& cls, const std::string& state, const Image& actual) {
    const fs::path golden = fs::path(ZEL_TEST_DATA_DIR) / "golden" / cls / (state + ".png");
    if (UpdateRequested()) {
        fs::create_directories(golden.parent_path());
        if (!WritePng(actual, golden.string()))
            return ::testing::AssertionFailure() << "could not write " << golden;
        std::fprintf(stderr, "golden written: %s\n", golden.c_str());
        return ::testing::AssertionSuccess();
    }
    const fs::path outDir = fs::path(ZEL_TEST_OUT_DIR) / "golden" / cls;
    const fs::path actualPath = outDir / (state + "_actual.png");
    auto keepActual = [&] {
        fs::create_directories(outDir);
        WritePng(actual, actualPath.string());
    };
    if (!fs::exists(golden)) {
        keepActual();
        return ::testing::AssertionFailure() << "missing golden " << golden << " (painted image: " << actualPath
                                             << "; ZEL_UPDATE_GOLDENS=1 writes it)";
    }
    std::optional<Image> expected = ReadPng(golden.string());
    if (!expected) return ::testing::AssertionFailure() << "unreadable golden " << golden;
    if (expected->width != actual.width || expected->height != actual.height) {
        keepActual();
        return ::testing::AssertionFailure() << cls << "/" << state << ": size " << actual.width << "x" << actual.height
                                             << ", golden " << expected->width << "x" << expected->height;
    }
    for (int y = 0; y < actual.height; ++y)
        for (int x = 0; x < actual.width; ++x)
            if (expected->At(x, y) != actual.At(x, y)) {
                keepActual();
                const fs::path diffPath = outDir / (state + "_diff.png");
                WritePng(Diff(*expected, actual), diffPath.string());
                return ::testing::AssertionFailure()
                       << cls << "/" << state << ": first difference at (" << x << ", " << y << "): painted "
                       << Hex(actual.At(x, y)) << ", golden " << Hex(expected->At(x, y)) << "; see " << actualPath
                       << " and " << diffPath;
            }
    return ::testing::AssertionSuccess();
}

}  // namespace zel::test
