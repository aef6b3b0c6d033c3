// A screen built as a device application builds its screens: a modeless child dialog from a
// template in the demo's resource script (screens/dialogs.rc2), laid over the host between
// its title bar and its status strip, whose items the dialog takes over with the library's
// controls (DDX_Control) and whose notifications reach its message map.
//
// The dialog paints the host's background under itself and then its own content, so that
// the screen looks as if the host had painted it; it passes each notification of its items
// on to the host (kHeardMessage) before handling it, so that the host logs it.
#pragma once

#include <afxwin.h>

#include "host/screens.h"

namespace zel::demo {

class ScreenDialog : public CDialog {
public:
    ScreenDialog(UINT templateId, const SkinSource& skin);
    ~ScreenDialog() override;
    ScreenDialog(const ScreenDialog&) = delete;
    ScreenDialog& operator=(const ScreenDialog&) = delete;

    // Creates the dialog over host. False when the template is missing or OnInitDialog did
    // not finish the screen (Built()).
    bool Open(HWND host);

protected:
    // Draws the screen's own content (labels, readouts) on the off-screen frame, in the
    // dialog's client coordinates; the background is already there.
    virtual void PaintContent(HDC frame) {}
    // Set by OnInitDialog when every control was made.
    void SetBuilt(bool built) { built_ = built; }

    const SkinSource& skin() const { return skin_; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // A screen does not end: Enter and Escape leave it as it is.
    void OnOK() override {}
    void OnCancel() override {}

    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnPaint();
    DECLARE_MESSAGE_MAP()

private:
    UINT templateId_;
    SkinSource skin_;
    HBITMAP background_ = nullptr;
    HBITMAP frame_ = nullptr;  // the off-screen frame, the dialog's client size
    bool built_ = false;
};

}  // namespace zel::demo
