// zel-skin sheet: every control of a skin in every state it paints, each under a caption
// naming control and state, in rows no wider than the device's screen.
#pragma once

#include <string>
#include <vector>

#include "skin_source.h"

namespace zel::skintool {

struct SheetOptions {
    std::string control;  // only entries whose class or name is this; empty: all
};

struct SheetResult {
    bool ok = false;
    int cells = 0;
    std::vector<std::string> skipped;  // "CZELList tracks: no sheet states yet"
    std::string error;
};

// Resets the desktop for each state painted; writes `pngPath`.
SheetResult WriteSheet(const SkinSource& skin, const SheetOptions& options, const std::string& pngPath);

}  // namespace zel::skintool
