// CBmpTextButton: an owner-drawn push button whose skin is stretched over the whole button
// with the window text centred on it. Focused or pressed, the caption changes font and
// colour. Input and the click are the BUTTON class's own; this class only draws, in
// DrawItem, which the parent's WM_DRAWITEM reaches by reflection.
#pragma once

#include <afxwin.h>

#include <memory>

#include "zelctl_api.h"

namespace zelctl {
class OwnedFont;
class SkinSet;
}

class ZELCTL_API CBmpTextButton : public CButton {
public:
    enum STATE { STATE_NORMAL = 0, STATE_FOCUS = 1, STATE_DOWN = 2 };

    CBmpTextButton();
    ~CBmpTextButton() override;

    // Makes the button owner-drawn. A non-null hInst is the resource module for this call.
    void LoadBitmaps(UINT nNormal, UINT nFocus, UINT nDown, HINSTANCE hInst);
    // Both captions become nHeight pixels high; nHeightActive is not used.
    void SetFont(int nHeight, int nHeightActive, DWORD crNormal, DWORD crActive);
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);
    void MoveWindow(CRect& rect, BOOL bRepaint = TRUE);
    BOOL ShowWindow(int nCmdShow);

    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    void DrawBitmap(CDC* pDC, STATE state);

    afx_msg void OnDestroy();

    DECLARE_MESSAGE_MAP()

    // The skins of the three states (normal, focus, down), owned by the set.
    std::unique_ptr<zelctl::SkinSet> m_skin;
    std::unique_ptr<zelctl::OwnedFont> m_fontNormal;
    std::unique_ptr<zelctl::OwnedFont> m_fontActive;
    COLORREF m_crNormal;
    COLORREF m_crActive;
    CString m_strText;  // reserved
};
