// The combo box: its box, rows and (optionally) its scroll bar's seven pieces.
#include "CZELComBox.h"
#include "family.h"

namespace zel::skintool {

std::vector<SizeRule> ScrollBarRules(int first);  // families_scroll.cpp

namespace {

std::unique_ptr<CWnd> MakeCombo(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto combo = std::make_unique<CZELComBox>();
    if (!combo->Create(WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    const bool hasBar = skin.paths.size() >= 14 && !skin.paths[7].empty();
    combo->LoadSkin(skin.SkinString(0, hasBar ? 14 : 7), L"");
    for (const wchar_t* item : {L"English", L"Deutsch", L"Français", L"Italiano", L"Español", L"Nederlands", L"Polski"})
        combo->AddString(item);
    combo->SetCurSel(1);
    if (state == 1) combo->ShowDropDown(TRUE);
    return combo;
}

}  // namespace

std::vector<Family> ComboFamilies() {
    std::vector<SizeRule> rules{
        {RuleKind::SameHeight, {0, 1, 2, 3, 4}}, {RuleKind::SameSize, {3, 4}}, {RuleKind::SameSize, {5, 6}}};
    for (const SizeRule& r : ScrollBarRules(7)) rules.push_back(r);
    return {
        {"CZELComBox",
         {"box left", "box middle", "box right", "arrow", "arrow pressed", "row", "row selected", "bar up",
          "bar up pressed", "bar track", "bar thumb", "bar thumb pressed", "bar down", "bar down pressed"},
         nullptr,
         rules,
         {"closed", "open"},
         [](const SpecimenSkin& skin) {
             return SIZE{240, std::max(skin.sizes[0].cy, skin.sizes[3].cy)};
         },
         MakeCombo},
    };
}

}  // namespace zel::skintool
