// Skin images for the control fuzzers, drawn with the platform's own GDI and saved once
// per process into a temporary folder, plus the paths a careless host might pass: a file
// that does not exist, a malformed one, an empty one, a folder, an empty string. A
// resource script names the drawn images by identifier (file index + 1).
#pragma once

#include <windows.h>
#include <zel/gdi_extras.h>
#include <zel/resources.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "storm_script.h"

namespace storm {

struct SkinFiles {
    std::filesystem::path dir;
    std::vector<std::wstring> paths;  // by SkinFile
    HINSTANCE module = nullptr;       // BITMAP i + 1 = drawn file i

    const wchar_t* Path(int index) const { return paths[static_cast<size_t>(index) % paths.size()].c_str(); }
};

namespace detail {

inline void Fill(HDC dc, int l, int t, int r, int b, COLORREF colour) {
    RECT rc{l, t, r, b};
    HBRUSH brush = ::CreateSolidBrush(colour);
    ::FillRect(dc, &rc, brush);
    ::DeleteObject(brush);
}

// Images are small: decoding them is most of what building a host costs, and a skin
// smaller than its control is a case worth having anyway.
// A framed block: the frame shows where a piece lands, the fill which piece it is.
inline std::function<void(HDC)> Block(int w, int h, COLORREF fill, COLORREF frame) {
    return [=](HDC dc) {
        Fill(dc, 0, 0, w, h, frame);
        if (w > 2 && h > 2) Fill(dc, 1, 1, w - 1, h - 1, fill);
    };
}

// A disc on a magenta ground: the shaped button's key colour and the slider thumb's
// transparent colour.
inline std::function<void(HDC)> Disc(int w, int h, COLORREF face) {
    return [=](HDC dc) {
        Fill(dc, 0, 0, w, h, RGB(255, 0, 255));
        HBRUSH brush = ::CreateSolidBrush(face);
        HGDIOBJ old = ::SelectObject(dc, brush);
        ::Ellipse(dc, 1, 1, w - 1, h - 1);
        ::SelectObject(dc, old);
        ::DeleteObject(brush);
    };
}

inline bool Draw(const std::filesystem::path& file, int w, int h, const std::function<void(HDC)>& paint) {
    HDC screen = ::GetDC(nullptr);
    HDC dc = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, w, h);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    paint(dc);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    const bool ok = zel::SaveBitmap(bitmap, file.string().c_str());
    ::DeleteObject(bitmap);
    return ok;
}

inline std::wstring Wide(const std::filesystem::path& p) {
    const std::string s = p.string();
    return std::wstring(s.begin(), s.end());  // the temporary folder's name is ASCII
}

}  // namespace detail

// Generated on first use; the folder is removed when the process exits.
inline const SkinFiles& Skins() {
    static SkinFiles* files = [] {
        namespace fs = std::filesystem;
        auto* s = new SkinFiles;
        s->dir = fs::temp_directory_path() / ("zel_fuzz_skins_" + std::to_string(::getpid()));
        fs::remove_all(s->dir);
        fs::create_directories(s->dir);
        struct Piece {
            const char* name;
            int w, h;
            std::function<void(HDC)> paint;
        };
        using detail::Block;
        using detail::Disc;
        const Piece pieces[kDrawnCount] = {
            {"btn_normal.bmp", 26, 24, Block(26, 24, RGB(40, 80, 160), RGB(0, 0, 0))},
            {"btn_focus.bmp", 26, 24, Block(26, 24, RGB(60, 120, 200), RGB(255, 255, 255))},
            {"btn_down.bmp", 26, 24, Block(26, 24, RGB(20, 40, 80), RGB(255, 255, 0))},
            {"btn_disable.bmp", 26, 24, Block(26, 24, RGB(128, 128, 128), RGB(64, 64, 64))},
            {"chk_on.bmp", 16, 16, Block(16, 16, RGB(0, 160, 0), RGB(0, 0, 0))},
            {"chk_off.bmp", 16, 16, Block(16, 16, RGB(255, 255, 255), RGB(0, 0, 0))},
            {"chk_back.bmp", 8, 8, Block(8, 8, RGB(200, 200, 220), RGB(200, 200, 220))},
            {"bar_up.bmp", 20, 15, Block(20, 15, RGB(0, 0, 200), RGB(0, 0, 0))},
            {"bar_up_down.bmp", 20, 15, Block(20, 15, RGB(0, 0, 100), RGB(0, 0, 0))},
            {"bar_track.bmp", 20, 40, Block(20, 40, RGB(220, 220, 220), RGB(160, 160, 160))},
            {"bar_thumb.bmp", 16, 12, Block(16, 12, RGB(200, 0, 0), RGB(0, 0, 0))},
            {"bar_thumb_down.bmp", 16, 12, Block(16, 12, RGB(100, 0, 0), RGB(0, 0, 0))},
            {"bar_down.bmp", 20, 15, Block(20, 15, RGB(0, 200, 0), RGB(0, 0, 0))},
            {"bar_down_down.bmp", 20, 15, Block(20, 15, RGB(0, 100, 0), RGB(0, 0, 0))},
            {"sl_left.bmp", 6, 20, Block(6, 20, RGB(90, 90, 90), RGB(0, 0, 0))},
            {"sl_right.bmp", 6, 20, Block(6, 20, RGB(90, 90, 90), RGB(0, 0, 0))},
            {"sl_thumb.bmp", 10, 20, Disc(10, 20, RGB(250, 200, 0))},
            {"sl_thumb_up.bmp", 10, 20, Disc(10, 20, RGB(250, 150, 0))},
            {"sl_thumb_down.bmp", 10, 20, Disc(10, 20, RGB(250, 100, 0))},
            {"sl_fill.bmp", 4, 8, Block(4, 8, RGB(0, 120, 255), RGB(0, 120, 255))},
            {"sl_channel.bmp", 4, 20, Block(4, 20, RGB(30, 30, 30), RGB(10, 10, 10))},
            {"sl_chan_left.bmp", 3, 20, Block(3, 20, RGB(50, 50, 50), RGB(10, 10, 10))},
            {"sl_chan_right.bmp", 3, 20, Block(3, 20, RGB(50, 50, 50), RGB(10, 10, 10))},
            {"prog_back.bmp", 10, 10, Block(10, 10, RGB(240, 240, 240), RGB(0, 0, 0))},
            {"prog_fill.png", 10, 10, Block(10, 10, RGB(0, 200, 100), RGB(0, 100, 50))},
            {"round.bmp", 24, 24, Disc(24, 24, RGB(0, 160, 200))},
            {"round_down.bmp", 24, 24, Disc(24, 24, RGB(0, 80, 100))},
            {"all_key.bmp", 24, 24, Block(24, 24, RGB(255, 0, 255), RGB(255, 0, 255))},
            {"tiny.bmp", 1, 1, Block(1, 1, RGB(1, 2, 3), RGB(1, 2, 3))},
            {"wide.png", 300, 5, Block(300, 5, RGB(120, 0, 120), RGB(0, 0, 0))},
        };
        std::ofstream rc(s->dir / "skins.rc");
        for (int i = 0; i < kDrawnCount; ++i) {
            const fs::path file = s->dir / pieces[i].name;
            if (!detail::Draw(file, pieces[i].w, pieces[i].h, pieces[i].paint)) {
                std::fprintf(stderr, "fuzz skins: cannot write %s\n", file.string().c_str());
                std::abort();
            }
            s->paths.push_back(detail::Wide(file));
            rc << (i + 1) << " BITMAP \"" << pieces[i].name << "\"\n";
        }
        rc.close();
        s->paths.push_back(detail::Wide(s->dir / "missing.bmp"));
        std::ofstream(s->dir / "malformed.bmp", std::ios::binary) << "BM: a header cut short, then no bitmap at all";
        s->paths.push_back(detail::Wide(s->dir / "malformed.bmp"));
        std::ofstream(s->dir / "empty.bmp", std::ios::binary).close();
        s->paths.push_back(detail::Wide(s->dir / "empty.bmp"));
        s->paths.push_back(detail::Wide(s->dir));
        s->paths.push_back(L"");
        s->module = zel::LoadResourceModule((s->dir / "skins.rc").string().c_str());
        if (!s->module) {
            std::fprintf(stderr, "fuzz skins: the resource script does not load\n");
            std::abort();
        }
        static const fs::path cleanup = s->dir;
        std::atexit([] {
            std::error_code ignored;
            fs::remove_all(cleanup, ignored);
        });
        return s;
    }();
    return *files;
}

}  // namespace storm
