// Push, shaped and text buttons and the check box.
#include <zel/desktop.h>

#include "CBmpTextButton.h"
#include "CZELBmpButton.h"
#include "CZELButton.h"
#include "CZELChkBox.h"
#include "family.h"

namespace zel::skintool {

namespace {

enum ButtonState { kNormal, kFocus, kPressed, kDisabled };

SIZE FirstPieceSize(const SpecimenSkin& skin) { return skin.sizes.empty() ? SIZE{0, 0} : skin.sizes[0]; }

// A button shows focus when it has it, its pressed face while the stylus is down on it.
template <typename Button>
void ApplyButtonState(Button& button, size_t state) {
    if (state == kFocus) button.SetFocus();
    if (state == kPressed) PressCentre(button);
    if (state == kDisabled) button.EnableWindow(FALSE);
}

std::unique_ptr<CWnd> MakePushButton(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto button = std::make_unique<CZELButton>();
    if (!button->Create(L"", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, place, &parent, 1, false)) return nullptr;
    button->LoadSkin(skin.SkinString(0, 4), L"");
    ApplyButtonState(*button, state);
    return button;
}

std::unique_ptr<CWnd> MakeShapedButton(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto button = std::make_unique<CZELBmpButton>();
    if (!button->Create(L"", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, place, &parent, 1)) return nullptr;
    button->LoadBitmaps(skin.ids.at(0), skin.ids.at(1), skin.ids.at(2), skin.ids.at(3), skin.module);
    ApplyButtonState(*button, state);
    return button;
}

std::unique_ptr<CWnd> MakeTextButton(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto button = std::make_unique<CBmpTextButton>();
    if (!button->Create(L"Text", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, place, &parent, 1)) return nullptr;
    button->LoadBitmaps(skin.ids.at(0), skin.ids.at(1), skin.ids.at(2), skin.module);
    ApplyButtonState(*button, state);
    return button;
}

std::unique_ptr<CWnd> MakeCheckBox(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto box = std::make_unique<CZELChkBox>();
    if (!box->Create(nullptr, L"Check box", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    box->LoadSkin(skin.SkinString(0, 3), L"");
    box->SetCheck(state == 1 ? 1 : 0);
    return box;
}

}  // namespace

std::vector<Family> ButtonFamilies() {
    const std::vector<const char*> fourStates{"normal", "focus", "pressed", "disabled"};
    return {
        {"CZELButton",
         {"normal", "focus", "pressed", "disabled"},
         nullptr,
         {{RuleKind::SameSize, {0, 1, 2, 3}}, {RuleKind::Exact, {0}, 78, 76}},
         fourStates,
         FirstPieceSize,
         MakePushButton},
        // Only resource identifiers: the sheet shows it for script skins.
        {"CZELBmpButton",
         {"normal", "focus", "pressed", "disabled"},
         nullptr,
         {{RuleKind::SameSize, {0, 1, 2, 3}}, {RuleKind::KeyCorners, {0, 1, 2, 3}}},
         fourStates,
         FirstPieceSize,
         MakeShapedButton},
        {"CBmpTextButton",
         {"normal", "focus", "pressed"},
         nullptr,
         {{RuleKind::SameSize, {0, 1, 2}}},
         {"normal", "focus", "pressed", "disabled"},
         FirstPieceSize,
         MakeTextButton},
        {"CZELChkBox",
         {"checked", "unchecked", "background"},
         nullptr,
         {{RuleKind::SameSize, {0, 1}}},
         {"unchecked", "checked"},
         [](const SpecimenSkin& skin) {
             return SIZE{200, std::max<LONG>(skin.sizes.at(2).cy, skin.sizes.at(0).cy)};
         },
         MakeCheckBox},
    };
}

}  // namespace zel::skintool
