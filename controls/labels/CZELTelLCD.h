// CZELTelLCD: the display strip of a telephone dialler. The dialled number (the window's
// own text) is centred above a status strip in a large font that shrinks, 2 pixels a step,
// until a long number fits; the strip shows indicator bitmaps in the bottom corners and a
// status text (a call timer) to the right of the left one.
//
// Mode 1 has both indicators and the status text; mode 2 only the right indicator, and the
// status text stays as it was (SetszTime is ignored). Before InitCtrl the mode is 0: no
// indicators, SetszTime ignored.
//
// As with the label, a host that changes the number with SetWindowText invalidates the
// display itself.
#pragma once

#include <afxtempl.h>
#include <afxwin.h>

#include <memory>

#include "CZELLable.h"
#include "zelctl_api.h"

class ZELCTL_API CZELTelLCD : public CZELLable {
public:
    CZELTelLCD();
    ~CZELTelLCD() override;

    // Skin from resources of hInst (the current resource handle when NULL): mode 1 takes
    // pIDs = {middle, left indicator, right indicator}, mode 2 {middle, right indicator};
    // the caps are not loaded. Another mode loads nothing and keeps the mode. In every mode
    // pHeights[0..1] and pColors[0..1] make the number's and the status text's fonts and
    // colours. The shrink of the number keeps starting from the label's font height. A
    // null array makes the call do nothing.
    void InitCtrl(UINT* pIDs, DWORD* pColors, int* pHeights, int nMode, HINSTANCE hInst);
    // Skin from image files: arrFrame = {left cap, middle, right cap}, arrIndicators =
    // {left, right} (mode 2 keeps no left indicator); needs at least 3 and 2 paths, or
    // nothing happens. Fonts and colours from heights[0..1] and colors[0..1]; the number
    // shrinks from heights[0]. The third elements are not used.
    void InitCtrl(CArray<CString, CString>& arrFrame, CArray<CString, CString>& arrIndicators, DWORD (&colors)[3],
                  int (&heights)[3], int nMode);
    // Mode 1 only: the new status text, and the indicator strip repainted.
    void SetszTime(CString& str);

protected:
    afx_msg void OnPaint();
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    enum Indicator { kLeftIndicator, kRightIndicator, kIndicators };

    std::unique_ptr<zelctl::SkinSet> m_indicators;  // left, right
    CString m_strTime;
    HFONT m_hNumberFont;
    HFONT m_hTimeFont;
    COLORREF m_crNumber;
    COLORREF m_crTime;
    int m_nMode;

private:
    void MakeFonts(const DWORD* colors, const int* heights);
    SIZE StripSize() const;
    void ReleaseFonts();
};
