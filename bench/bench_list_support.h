// What the list benchmarks share: skin pieces written once into a temporary folder, and a
// list on a parent covering the screen that repaints itself on demand.
#pragma once

#include <unistd.h>
#include <zel/debug.h>
#include <zel/desktop.h>
#include <zel/gdi_extras.h>
#include <zel/platform.h>

#include <filesystem>
#include <string>

namespace zel::bench {

namespace fs = std::filesystem;

constexpr int kRows = 100000;

// A temporary folder of solid-colour bitmaps, removed with its contents at the end.
class SkinDir {
public:
    explicit SkinDir(const std::string& tag) : dir_(fs::temp_directory_path() / (tag + std::to_string(::getpid()))) {
        fs::create_directories(dir_);
    }
    ~SkinDir() {
        std::error_code ignored;
        fs::remove_all(dir_, ignored);
    }
    SkinDir(const SkinDir&) = delete;
    SkinDir& operator=(const SkinDir&) = delete;

    fs::path File(const char* name) const { return dir_ / (std::string(name) + ".bmp"); }
    CString Path(const char* name) const {
        const std::string p = File(name).string();
        return CString(std::wstring(p.begin(), p.end()).c_str());
    }
    const fs::path& dir() const { return dir_; }

    // A w x h bitmap of one colour saved as `name`.bmp.
    void Write(const char* name, int w, int h, COLORREF colour) const {
        HDC screen = ::GetDC(nullptr);
        HBITMAP bitmap = ::CreateCompatibleBitmap(screen, w, h);
        HDC dc = ::CreateCompatibleDC(screen);
        ::ReleaseDC(nullptr, screen);
        HGDIOBJ old = ::SelectObject(dc, bitmap);
        HBRUSH brush = ::CreateSolidBrush(colour);
        RECT rc{0, 0, w, h};
        ::FillRect(dc, &rc, brush);
        ::DeleteObject(brush);
        ::SelectObject(dc, old);
        ::DeleteDC(dc);
        zel::SaveBitmap(bitmap, File(name).string().c_str());
        ::DeleteObject(bitmap);
    }

private:
    fs::path dir_;
};

// A list and an 800 x 480 popup parent on a freshly reset desktop; the list is created by
// the benchmark. With `quiet`, the lists' debug lines go nowhere for the host's lifetime.
template <class List>
class ListHost {
public:
    explicit ListHost(bool quiet = false) : quiet_(quiet) {
        zel::Desktop::Get().Reset();
        if (quiet_) zel::SetDebugSink([](const std::wstring&) {});
        parent_.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 0, 800, 480, nullptr, nullptr);
    }
    ~ListHost() {
        list_.DestroyWindow();
        parent_.DestroyWindow();
        if (quiet_) zel::SetDebugSink(nullptr);
    }
    CWnd& parent() { return parent_; }
    List& list() { return list_; }
    void Paint() {
        list_.Invalidate(FALSE);
        list_.UpdateWindow();
    }

private:
    bool quiet_;
    CWnd parent_;
    List list_;
};

}  // namespace zel::bench
