// The button gallery: push buttons that repeat while held (a climate control), a disabled
// one, a round button that takes taps only on its face, text buttons choosing a source and
// two check boxes.
//
// As a dialog would, it makes some controls with Create and takes over others that already
// exist as plain children (SubclassWindow), and loads skins by file path, by LoadSkin
// string, by resource identifier from an explicit module and from the application's
// resource handle.
#pragma once

#include <zelctl.h>

#include <CBmpTextButton.h>
#include <CZELBmpButton.h>
#include <CZELButton.h>
#include <CZELChkBox.h>

#include "host/paint_kit.h"
#include "host/screens.h"

namespace zel::demo {

class ButtonsScreen : public Screen {
public:
    static constexpr int kCoolerId = 1001, kWarmerId = 1002, kDisabledId = 1003;
    static constexpr int kRoundId = 1101;
    static constexpr int kRadioId = 1201, kMediaId = 1202, kPhoneId = 1203;
    static constexpr int kShuffleId = 1301, kRepeatId = 1302;

    bool Build(HWND host, const SkinSource& skin) override;
    void Paint(HDC frame) override;
    bool AnnouncesChanges() const override { return true; }
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Half degrees Celsius, so that the steps are exact.
    int halfDegrees() const { return halfDegrees_; }

private:
    bool BuildPushButtons(const SkinSource& skin);
    bool BuildRoundButton(const SkinSource& skin);
    bool BuildTextButtons();
    bool BuildCheckBoxes(const SkinSource& skin);
    void Invalidate(const RECT& area) const;

    HWND host_ = nullptr;
    CZELButton cooler_, warmer_, disabled_;
    CZELBmpButton round_;
    CBmpTextButton radio_, media_, phone_;
    CZELChkBox shuffle_, repeat_;

    int halfDegrees_ = 43;  // 21.5 degrees
    int roundTaps_ = 0;
    const wchar_t* source_ = L"Media";

    Font sectionFont_{15, FW_BOLD};
    Font valueFont_{30, FW_BOLD};
    Font textFont_{17};
    Font captionFont_{14};
};

}  // namespace zel::demo
