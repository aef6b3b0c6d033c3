// FreeType library, fontconfig configuration and the registry of open font files.
#include "gdi/text/font_library.h"

#include FT_TRUETYPE_TABLES_H

#include <cstdio>
#include <cstdlib>
#include <map>
#include <sstream>
#include <utility>

namespace zel::text {

namespace {

// The fonts-wine package installs Tahoma here; fontconfig does not index it by default.
constexpr const char* kBundledFontDirs[] = {"/usr/share/wine/fonts"};

// Everything here lives until exit on purpose: realized fonts owned by stock objects keep
// FT_Size handles on these faces, and stock objects are never destroyed.
struct Registry {
    FT_Library library = nullptr;
    std::map<std::pair<std::string, int>, std::shared_ptr<FaceFile>> faces;
    uint32_t nextId = 1;
};

Registry& Reg() {
    static Registry* r = [] {
        auto* reg = new Registry();
        if (FT_Init_FreeType(&reg->library) != 0) {
            std::fprintf(stderr, "zel: FreeType failed to initialise; text will not render\n");
            reg->library = nullptr;
        }
        return reg;
    }();
    return *r;
}

void AddFontDir(FcConfig* config, const std::string& dir) {
    if (!dir.empty()) FcConfigAppFontAddDir(config, reinterpret_cast<const FcChar8*>(dir.c_str()));
}

}  // namespace

FaceFile::~FaceFile() {
    if (face) FT_Done_Face(face);
}

FT_Library Library() { return Reg().library; }

FcConfig* Config() {
    static FcConfig* config = [] {
        FcConfig* c = FcInitLoadConfigAndFonts();
        if (!c) return c;
        for (const char* dir : kBundledFontDirs) AddFontDir(c, dir);
        // Deployments put their own faces beside the system ones: ZEL_FONT_DIRS=dir1:dir2.
        if (const char* extra = std::getenv("ZEL_FONT_DIRS")) {
            std::stringstream list(extra);
            std::string dir;
            while (std::getline(list, dir, ':')) AddFontDir(c, dir);
        }
        // Released at exit: fontconfig links parts of a configuration by encoded offsets
        // that leak checkers cannot follow, so a configuration still alive looks leaked.
        std::atexit([] {
            FcConfigDestroy(config);
            config = nullptr;
        });
        return c;
    }();
    return config;
}

std::shared_ptr<FaceFile> OpenFace(const std::string& path, int index) {
    Registry& reg = Reg();
    auto key = std::make_pair(path, index);
    auto it = reg.faces.find(key);
    if (it != reg.faces.end()) return it->second;
    if (!reg.library) return nullptr;
    FT_Face face = nullptr;
    if (FT_New_Face(reg.library, path.c_str(), index, &face) != 0 || !face) return nullptr;
    if (!FT_IS_SCALABLE(face)) {  // bitmap-only faces cannot serve arbitrary heights
        FT_Done_Face(face);
        return nullptr;
    }
    FT_Select_Charmap(face, FT_ENCODING_UNICODE);
    auto file = std::make_shared<FaceFile>();
    file->path = path;
    file->index = index;
    file->id = reg.nextId++;
    file->face = face;
    file->family = face->family_name ? face->family_name : "";
    file->italic = (face->style_flags & FT_STYLE_FLAG_ITALIC) != 0;
    if (auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2)); os2 && os2->version != 0xFFFF)
        file->weight = os2->usWeightClass;
    else
        file->weight = (face->style_flags & FT_STYLE_FLAG_BOLD) ? 700 : 400;
    reg.faces.emplace(key, file);
    return file;
}

}  // namespace zel::text
