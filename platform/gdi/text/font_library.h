// The text engine's process-wide resources: the FreeType library, the platform's own
// fontconfig configuration and the open font files.
//
// A font file is opened once (one FT_Face) and shared by every realized font that uses
// it; each realized font asks FreeType for its own FT_Size on that face, so any number of
// sizes coexist without reopening or re-scaling the file.
#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H
#include <fontconfig/fontconfig.h>

#include <cstdint>
#include <memory>
#include <string>

namespace zel::text {

struct FaceFile {
    FaceFile() = default;
    FaceFile(const FaceFile&) = delete;
    FaceFile& operator=(const FaceFile&) = delete;
    ~FaceFile();

    std::string path;
    int index = 0;         // face index inside a collection (.ttc)
    uint32_t id = 0;       // small unique number, part of glyph cache keys
    FT_Face face = nullptr;
    std::string family;    // the family name the file declares
    int weight = 400;      // OS/2 usWeightClass (400 when the table is missing)
    bool italic = false;
};

FT_Library Library();

// Our fontconfig configuration: the system configuration plus the directories of faces
// the platform ships with (the Tahoma of the fonts-wine package). Private to the platform so
// the host application's own fontconfig use is not affected.
FcConfig* Config();

// Opens (once) the face `index` of the file at `path`; nullptr if FreeType cannot read it.
std::shared_ptr<FaceFile> OpenFace(const std::string& path, int index);

}  // namespace zel::text
