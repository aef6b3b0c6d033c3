// The clock settings screen: the date as three spinners that keep the day within its
// month, the running clock with its blinking colon, two stroke-digit pickers (a date to
// edit with the stylus and the arrow keys, a time that follows the clock), the time field
// over its skin, and a spinner of strings choosing the time format.
//
// As a dialog would, it takes over plain children for some controls (SubclassWindow) and
// creates the others; the spinners load their skins by file, the time field by resource
// identifier.
#pragma once

#include <zelctl.h>

#include <CDataTimectrl.h>
#include <CTimeData.h>
#include <CZELDate.h>
#include <CZELTimeDate.h>

#include "host/paint_kit.h"
#include "host/screens.h"

namespace zel::demo {

class ClockScreen : public Screen {
public:
    static constexpr int kDateId = 1401, kClockId = 1402, kDatePickerId = 1403, kTimePickerId = 1404;
    static constexpr int kTimeFieldId = 1405, kFormatId = 1406;

    bool Build(HWND host, const SkinSource& skin) override;
    void Paint(HDC frame) override;
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Timer(UINT_PTR id) override;

private:
    bool BuildSpinners(const SkinSource& skin);
    bool BuildPickers(const SkinSource& skin);

    HWND host_ = nullptr;
    CZELTimeDate date_, clock_;
    CDataTimectrl datePicker_, timePicker_;
    CTimeData timeField_;
    CZELDate format_;

    Font sectionFont_{15, FW_BOLD};
    Font valueFont_{26, FW_BOLD};
    Font textFont_{17};
};

}  // namespace zel::demo
