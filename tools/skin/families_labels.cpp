// The three-piece label, the telephone display, the background label and the static picture.
#include "CZELLable.h"
#include "family.h"

namespace zel::skintool {

namespace {

std::unique_ptr<CWnd> MakeLabel(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t) {
    auto label = std::make_unique<CZELLable>();
    if (!label->Create(nullptr, L"Label text", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    // SetFont does not repaint; loading the pieces does.
    const CRect text(8, 0, place.right - place.left - 8, place.bottom - place.top);
    label->SetFont(20, RGB(255, 255, 255), DT_CENTER | DT_VCENTER | DT_SINGLELINE, text);
    label->LoadSkin(skin.SkinString(0, 3), L"");
    return label;
}

}  // namespace

std::vector<Family> LabelFamilies() {
    return {
        {"CZELLable", {"left cap", "middle", "right cap"}, nullptr, {{RuleKind::SameHeight, {0, 1, 2}}}, {"normal"},
         [](const SpecimenSkin& skin) { return SIZE{240, skin.sizes[1].cy}; }, MakeLabel},
        {"CZELTelLCD", {"left cap", "middle", "right cap", "left indicator", "right indicator"}, nullptr,
         {{RuleKind::SameHeight, {0, 1, 2}}, {RuleKind::SameHeight, {3, 4}}}, {}, nullptr, nullptr},
        // The piece under the window is cut from a bitmap the size of the screen.
        {"CZELBkLable", {"screen"}, nullptr, {{RuleKind::Exact, {0}, 800, 480}}, {}, nullptr, nullptr},
        {"CZELStatic", {"picture"}, nullptr, {}, {}, nullptr, nullptr},
    };
}

}  // namespace zel::skintool
