// The telephone: a dial pad of push buttons feeding the number display, whose number
// shrinks as it grows; a label that repeats what would be called (and shrinks too); the
// last caller's portrait, a picture whose window takes its round shape; and two background
// labels over the screen's own background, which look transparent.
#pragma once

#include <zelctl.h>

#include <CZELBkLable.h>
#include <CZELButton.h>
#include <CZELLable.h>
#include <CZELStatic.h>
#include <CZELTelLCD.h>

#include "host/paint_kit.h"
#include "host/screens.h"

namespace zel::demo {

class PhoneScreen : public Screen {
public:
    // The keys in pad order: 1-9, *, 0, #.
    static constexpr int kFirstKeyId = 3001, kKeys = 12;
    static constexpr int kDisplayId = 3101, kCaptionId = 3102, kPortraitId = 3103;
    static constexpr int kLastNameId = 3104, kLastNumberId = 3105;
    static constexpr int kMaxDigits = 32;

    ~PhoneScreen() override;
    bool Build(HWND host, const SkinSource& skin) override;
    void Paint(HDC frame) override;
    bool AnnouncesChanges() const override { return true; }
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;

    const CString& number() const { return number_; }

private:
    bool BuildPad(const SkinSource& skin);
    bool BuildDisplay(const SkinSource& skin);
    bool BuildLastCall(const SkinSource& skin);
    void Dial(wchar_t key);

    HWND host_ = nullptr;
    CZELButton keys_[kKeys];
    CZELTelLCD display_;
    CZELLable caption_;
    CZELStatic portrait_;
    CZELBkLable lastName_, lastNumber_;
    HBITMAP background_ = nullptr;  // the application's background, for the background labels
    HBITMAP portraitArt_ = nullptr;
    CString number_;

    Font sectionFont_{15, FW_BOLD};
};

}  // namespace zel::demo
