// Face resolution: a LOGFONTW's face name, weight and slant to a font file.
//
// Like the Windows font mapper this never fails: a name that is not installed resolves to
// the generic family its pitch and family bits ask for (sans-serif by default). Known
// names are substituted first (as the registry's FontSubstitutes do):
//   "Tahoma", "System", "MS Sans Serif", "MS Shell Dlg" -> Tahoma (the fonts-wine package)
//   "Arial" -> Liberation Sans, "Times New Roman" -> Liberation Serif,
//   "Courier New" -> Liberation Mono.
// ZEL_FONT_SUBSTITUTES="From=To;From2=To2" adds or overrides entries.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "gdi/text/font_library.h"

namespace zel::text {

struct FaceChoice {
    std::shared_ptr<FaceFile> file;  // nullptr only when no scalable font is installed at all
    bool embolden = false;           // bold requested, the file is not bold: thicken outlines
    bool oblique = false;            // italic requested, the file is upright: shear outlines
    std::wstring faceName;           // what GetTextFaceW reports
};

FaceChoice ResolveFace(const LOGFONTW& lf);

// An installed face that has a glyph for `ch` (CJK and other scripts the chosen face
// lacks), preferring a bold file when `bold`; nullptr when no font has it. Cached.
std::shared_ptr<FaceFile> FallbackFace(char32_t ch, bool bold);

// The face name of a LOGFONTW as UTF-8 (it may lack its terminating NUL).
std::string FaceNameUtf8(const LOGFONTW& lf);

}  // namespace zel::text
