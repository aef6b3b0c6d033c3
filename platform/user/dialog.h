// The dialog manager's private state and the services its sources share.
#pragma once

#include "user/wndmgr.h"

namespace zel::user {

struct DialogData : ControlData {
    ~DialogData() override;
    HFONT font = nullptr;     // the template's font (WM_GETFONT), or the system font
    bool ownsFont = false;    // created from the template: deleted with the dialog
    SIZE baseUnits{};         // pixels per 4 horizontal and 8 vertical dialog units
    UINT defId = 0;           // DM_SETDEFID, or the template's first default push button
    HWND savedFocus = nullptr;
    DLGPROC proc = nullptr;   // when the window's class has no DLGWINDOWEXTRA bytes
    bool ended = false;
    INT_PTR result = 0;
};

// The dialog state of a window, created on first use for any window whose procedure
// reaches DefDlgProcW; nullptr for a window that already holds another control's state.
DialogData* DialogOf(Window* w);
// The state of a window that has been a dialog, without creating any.
DialogData* ExistingDialog(HWND hwnd);

// The pixel size of dialog units for a font: the average width of the 52 Latin letters,
// rounded, and the font's height.
SIZE BaseUnitsOf(HFONT font);

// The dialog's WM_GETDLGCODE answer for a control (the message is the one being checked).
LRESULT DlgCode(HWND control, MSG* msg);

}  // namespace zel::user
