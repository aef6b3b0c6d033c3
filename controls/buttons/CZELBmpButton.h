// CZELBmpButton: a push button with four resource skins whose window takes the shape of
// its normal skin. Every pixel that differs from the skin's top-left pixel belongs to the
// button, so a round button only takes taps on its face. It sends its own click on a
// release inside; the BUTTON logic never sees the press.
#pragma once

#include <afxwin.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "zelctl_api.h"

namespace zelctl {
class SkinSet;
}

class ZELCTL_API CZELBmpButton : public CButton {
public:
    CZELBmpButton();
    ~CZELBmpButton() override;

    // Call once the window exists. Identifiers other than the normal one may be 0 (no such
    // skin). A non-null hInst is the resource module for this call only.
    void LoadBitmaps(UINT nNormal, UINT nFocus, UINT nDown, UINT nDisable, HINSTANCE hInst);

protected:
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnPaint();

    DECLARE_MESSAGE_MAP()

    BOOL m_bPressed;
    // Normal (also the window's shape), focus, down and disabled skins, owned by the set.
    std::unique_ptr<zelctl::SkinSet> m_skin;
    CRgn m_rgnShape;

    afx_msg void OnDestroy();

private:
    // A set of skins loaded before, with the shape and debug lines it gave: a host that
    // switches between two sets (play and pause) gets the other back without decoding the
    // images or tracing the shape again.
    struct Look;
    struct LookKey {
        UINT ids[4];
        HINSTANCE instance;
        bool operator==(const LookKey&) const = default;
    };

    // Traces the normal skin's shape into m_rgnShape and gives it to the window; false
    // (after the device's message box) without a window DC.
    bool BuildShape();
    HBITMAP ChooseSkin() const;
    // Keeps what m_skin and m_rgnShape hold as a look to come back to.
    void KeepCurrentLook();
    // Makes a kept look current again; false when none matches.
    bool TakeKeptLook(const LookKey& key);

    std::vector<std::unique_ptr<Look>> m_looks;  // most recently left first
    std::optional<LookKey> m_currentKey;         // what m_skin holds, when it has a shape
    std::vector<std::wstring> m_shapeLines;      // the debug lines that shape was traced with
};
