// The default skin: every bitmap the demo's controls are dressed in, drawn on demand.
#pragma once

#include <string>
#include <vector>

#include "skin/canvas.h"
#include "skin/painter.h"

namespace zel::demo {

struct SkinPiece {
    std::string name;   // file stem (name.bmp) and, upper-cased, the IDB_ resource name
    int width = 0, height = 0;
    Layer draw;         // the art, painted on the theme's screen colour
    Layer silhouette;   // keyed pieces only: the opaque part; pixels outside it get the key
};

// Pieces are drawn this many times larger and reduced by area averaging.
constexpr int kSupersample = 4;

// Resource identifiers run from here in catalogue order.
constexpr int kFirstResourceId = 1001;

// In catalogue order; the order fixes the resource identifiers.
const std::vector<SkinPiece>& DefaultSkin();

// The piece at its final size. A keyed piece has theme::kKey on every pixel less than
// half covered by its silhouette, and nowhere else.
Canvas RenderPiece(const SkinPiece& piece);

// "button_plus_normal" -> "IDB_BUTTON_PLUS_NORMAL".
std::string ResourceName(const std::string& pieceName);

}  // namespace zel::demo
