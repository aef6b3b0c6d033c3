// zel-skin-gen: draws the demo's default skin with the platform's GDI at build time.
//
//   zel-skin-gen OUTDIR [--sheet FILE.png]
//
// writes OUTDIR/skin/<piece>.bmp, OUTDIR/default.rc, OUTDIR/resource.h and the control
// list OUTDIR/default.controls (which control wears which pieces, for zel-skin); --sheet also
// writes every piece side by side into one PNG for a quick look at the whole skin.
#include <windows.h>
#include <zel/platform.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "skin/catalogue.h"
#include "skin/resource_files.h"
#include "skin/theme.h"

namespace {

using namespace zel::demo;

bool WriteText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    if (!out) std::fprintf(stderr, "zel-skin-gen: cannot write %s\n", path.c_str());
    return static_cast<bool>(out);
}

// Pieces left to right in rows no wider than the background, 8 pixels apart.
bool WriteSheet(const std::string& path) {
    constexpr int kGap = 8, kWidth = theme::kScreenWidth + 2 * kGap;
    int x = kGap, y = kGap, rowHeight = 0, height = kGap;
    struct Place {
        int x, y;
    };
    std::vector<Place> places;
    for (const SkinPiece& piece : DefaultSkin()) {
        if (x + piece.width + kGap > kWidth && x > kGap) {
            x = kGap;
            y += rowHeight + kGap;
            rowHeight = 0;
        }
        places.push_back({x, y});
        x += piece.width + kGap;
        rowHeight = std::max(rowHeight, piece.height);
        height = y + rowHeight + kGap;
    }
    Canvas sheet(kWidth, height);
    Painter(sheet, 1).Fill(Box{0, 0, double(kWidth), double(height)}, theme::kRule);
    for (size_t i = 0; i < DefaultSkin().size(); ++i) {
        Canvas piece = RenderPiece(DefaultSkin()[i]);
        BitBlt(sheet.dc(), places[i].x, places[i].y, piece.width(), piece.height(), piece.dc(), 0, 0, SRCCOPY);
    }
    return sheet.Save(path);
}

int Generate(const std::filesystem::path& outDir, const std::string& sheetPath) {
    std::error_code error;
    std::filesystem::create_directories(outDir / "skin", error);
    if (error) {
        std::fprintf(stderr, "zel-skin-gen: cannot create %s: %s\n", (outDir / "skin").c_str(), error.message().c_str());
        return 1;
    }
    for (const SkinPiece& piece : DefaultSkin()) {
        std::filesystem::path file = outDir / "skin" / (piece.name + ".bmp");
        if (!RenderPiece(piece).Save(file.string())) {
            std::fprintf(stderr, "zel-skin-gen: cannot draw or write %s\n", file.c_str());
            return 1;
        }
    }
    if (!WriteText(outDir / "resource.h", ResourceHeaderText(DefaultSkin())) ||
        !WriteText(outDir / "default.rc", ResourceScriptText(DefaultSkin())) ||
        !WriteText(outDir / "default.controls", ControlListText()))
        return 1;
    if (!sheetPath.empty() && !WriteSheet(sheetPath)) {
        std::fprintf(stderr, "zel-skin-gen: cannot write %s\n", sheetPath.c_str());
        return 1;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::string outDir, sheet;
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        if (arg == "--sheet" && i + 1 < argc) {
            sheet = argv[++i];
        } else if (outDir.empty() && !arg.empty() && arg[0] != '-') {
            outDir = arg;
        } else {
            outDir.clear();
            break;
        }
    }
    if (outDir.empty()) {
        std::fprintf(stderr, "usage: zel-skin-gen OUTDIR [--sheet FILE.png]\n");
        return 2;
    }
    zel::GdiCounts before = zel::LiveGdiObjects();
    int status = Generate(outDir, sheet);
    int leaked = zel::LiveGdiObjects().total() - before.total();
    if (leaked) {
        std::fprintf(stderr, "zel-skin-gen: %d GDI objects leaked\n", leaked);
        return 1;
    }
    if (status == 0) std::printf("zel-skin-gen: %zu bitmaps, default.rc and resource.h in %s\n", DefaultSkin().size(), outDir.c_str());
    return status;
}
