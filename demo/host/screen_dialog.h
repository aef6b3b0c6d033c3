// A screen built as a device application builds its screens: a modeless child dialog from a
// template in the demo's resource script (screens/dialogs.rc2), laid over the host between
// its title bar and its status strip, whose items the dialog takes over with the library's
// controls (DDX_Control) and whose notifications reach its message map.
//
// The dialog paints the host's background under itself and then its own content, so that
// the screen looks as if the host had painted it; it passes each notification of its items
// on to the host (kHeardMessage) before handling it, so that the host logs it.
//
// Its off-screen frame is a backing store, as the host's is: the dialog keeps what it drew
// and a region of what in it is stale. A screen announces every change to what
// PaintContent draws (Changed, or kChangedMessage sent to the dialog, as ContentChanged
// sends it to the host); a paint draws only the stale part of its update region and
// presents the rest from the frame, so a repaint from outside (a popup closing, the whole
// screen invalidated) is one blit.
#pragma once

#include <afxwin.h>

#include "host/kept_frame.h"
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
    // dialog's client coordinates; the background is already there. The frame is clipped
    // to what is stale: content outside the clip may be skipped (RectVisible).
    virtual void PaintContent(HDC frame) {}
    // What PaintContent draws in area (client coordinates) has changed: it is drawn again
    // at the next paint, which this asks for.
    void Changed(const RECT& area);
    // Set by OnInitDialog when every control was made.
    void SetBuilt(bool built) { built_ = built; }

    const SkinSource& skin() const { return skin_; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // A screen does not end: Enter and Escape leave it as it is.
    void OnOK() override {}
    void OnCancel() override {}

    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnPaint();
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    void PaintStale(HDC frame, HRGN redraw, const RECT& client);

    UINT templateId_;
    SkinSource skin_;
    HBITMAP background_ = nullptr;
    KeptFrame frame_;  // the dialog's client size, kept between paints
    bool built_ = false;
};

}  // namespace zel::demo
