// Settings: two combo boxes, the display language at the top of the screen (its list
// opens downward) and the radio region near the bottom (its list would pass the screen's
// bottom edge, so it opens upward). Each shows the choice the host last heard of.
//
// As a dialog would, it creates one box and takes over the other from a plain child
// (SubclassWindow); one is skinned by resource identifier, the other by skin string.
#pragma once

#include <zelctl.h>

#include <CZELComBox.h>

#include <string>

#include "host/paint_kit.h"
#include "host/screens.h"

namespace zel::demo {

class SettingsScreen : public Screen {
public:
    static constexpr int kLanguageId = 1401, kRegionId = 1402;

    bool Build(HWND host, const SkinSource& skin) override;
    void Paint(HDC frame) override;
    bool AnnouncesChanges() const override { return true; }
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool BuildLanguage(const SkinSource& skin);
    bool BuildRegion(const SkinSource& skin);

    HWND host_ = nullptr;
    CZELComBox language_, region_;

    Font sectionFont_{15, FW_BOLD};
    Font textFont_{17};
};

}  // namespace zel::demo
