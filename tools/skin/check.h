// zel-skin check: every finding about a skin, one line each, "path: control: problem".
#pragma once

#include <string>
#include <vector>

#include "skin_source.h"

namespace zel::skintool {

struct Finding {
    std::string path;     // the file, or "list:line" for a fault in the control list
    std::string control;  // "CZELButton volume_down", or the resource name of an unused file
    std::string problem;
    std::string Line() const { return path + ": " + control + ": " + problem; }
};

std::vector<Finding> CheckSkin(const SkinSource& skin);

}  // namespace zel::skintool
