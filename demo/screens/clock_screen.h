// The clock settings screen: the date as three spinners that keep the day within its
// month, the running clock with its blinking colon, two stroke-digit pickers (a date to
// edit with the stylus and the arrow keys, a time that follows the clock), the time field
// over its skin, and a spinner of strings choosing the time format.
//
// It is a dialog, as a ported device application's screens are: the template IDD_CLOCK in
// the demo's resource script lays the items out, DoDataExchange subclasses each with its
// control, the message map hears their steps, and the section titles are the script's
// strings. The spinners load their skins by file, the time field by resource identifier.
#pragma once

#include <zelctl.h>

#include <CDataTimectrl.h>
#include <CTimeData.h>
#include <CZELDate.h>
#include <CZELTimeDate.h>

#include <memory>

#include "host/paint_kit.h"
#include "host/screen_dialog.h"
#include "host/screens.h"

namespace zel::demo {

class ClockDialog : public ScreenDialog {
public:
    explicit ClockDialog(const SkinSource& skin);
    // The readouts' timer stops while the screen is hidden; on return the readouts are
    // read back at once. The clock control keeps its own time meanwhile.
    void Pause();
    void Resume();

protected:
    void DoDataExchange(CDataExchange* dx) override;
    BOOL OnInitDialog() override;
    void PaintContent(HDC frame) override;

    afx_msg void OnDateStep();
    afx_msg void OnClockStep();
    afx_msg void OnFormatStep();
    afx_msg void OnTimer(UINT_PTR id);
    DECLARE_MESSAGE_MAP()

private:
    void ReadBack();

    void SkinSpinners();
    bool PlaceFormat();
    void SkinPickers();

    CZELTimeDate date_, clock_;
    CDataTimectrl datePicker_, timePicker_;
    CTimeData timeField_;
    CZELDate format_;
    CString titles_[4];
    // What the readouts the timer watches showed at its last tick.
    SYSTEMTIME tickClock_{}, tickPicked_{};

    Font sectionFont_{15, FW_BOLD};
    Font valueFont_{26, FW_BOLD};
    Font textFont_{17};
};

class ClockScreen : public Screen {
public:
    bool Build(HWND host, const SkinSource& skin) override;
    // The screen draws nothing on the host (its content is the dialog's, which keeps its
    // own frame), so no change of the host's frame goes unannounced.
    bool AnnouncesChanges() const override { return true; }
    // Draws nothing itself: what the host draws afresh under the dialog, the dialog draws
    // afresh too.
    void Paint(HDC frame) override;
    void Pause() override;
    void Resume() override;

private:
    std::unique_ptr<ClockDialog> dialog_;
};

}  // namespace zel::demo
