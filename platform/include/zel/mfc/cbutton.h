// CButton: the BUTTON class. An owner-drawn CButton paints in DrawItem, which it receives
// by reflection of its parent's WM_DRAWITEM.
#pragma once

#include "zel/mfc/cwnd.h"

class ZEL_API CButton : public CWnd {
public:
    CButton() = default;

    virtual BOOL Create(LPCWSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id);

    UINT GetState() const;  // BST_ bits
    void SetState(BOOL highlight);
    int GetCheck() const;
    void SetCheck(int check);
    UINT GetButtonStyle() const;  // the BS_ type in the low byte of the style
    void SetButtonStyle(UINT style, BOOL redraw = TRUE);
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const;

    // Called for the button's WM_DRAWITEM; the default draws nothing.
    virtual void DrawItem(LPDRAWITEMSTRUCT dis);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    using CWnd::Create;
};
