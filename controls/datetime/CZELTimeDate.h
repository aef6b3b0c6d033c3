// CZELTimeDate: three up-down spinners (1022, 1023, 1024) as one date editor (year, month,
// day, the day's range kept to the month) or one clock editor (hour, minute, a colon that
// blinks at 500 ms and a seconds count that moves the minute). Every step of a spinner
// is passed on to the parent as a WM_COMMAND with this control's identifier.
//
// The clock's half-rate toggle is one for the whole module, shared by every instance: two
// running clocks flip it in turn, so one may count two seconds a second while the other
// stands still. That sharing is kept on purpose.
#pragma once

#include <afxwin.h>
#include <afxtempl.h>

#include "CSkinWnd.h"
#include "CZELDate.h"
#include "zelctl_api.h"

class ZELCTL_API CZELTimeDate : public CSkinWnd {
public:
    enum { IDC_ONE = 1022, IDC_TWO = 1023, IDC_THREE = 1024 };

    CZELTimeDate();
    ~CZELTimeDate() override;

    // 0: the date editor; anything else: the clock, running on timer 1 every 500 ms.
    // Going back to the date leaves a running timer running (it does nothing there).
    void SetStyle(int n);
    // Sizes this window for the style and places the spinners, resetting them to the value
    // the control was given (not to what the user has stepped since).
    void MoveCtrls();
    void MoveWindow(int x, int y, int cx, int cy, bool bRepaint);
    void MoveWindow(CRect rc, bool bRepaint);
    // The spinners' fields (and, as a clock, the seconds count) over the stored value.
    void GetTime(SYSTEMTIME* p);
    // The fields of the style, each ignored by a spinner whose range it is outside; the
    // day's range is not recomputed.
    bool SetTime(SYSTEMTIME& t);
    UINT Monthdays(UINT year, UINT month);

    // add, def and colours as the spinner takes them (three each); seps: dash, colon.
    void LoadBitmaps(CArray<CString, CString>& add, CArray<CString, CString>& def, CArray<CString, CString>& colours,
                     CArray<CString, CString>& seps);
    void LoadBitmaps(const UINT* add, const UINT* def, const UINT* colours, const UINT* seps, HINSTANCE hInst);
    // `folder` + eleven "|"-terminated names: the spinner's nine, then dash and colon.
    void LoadSkin(CString strFolder, CString strNames) override;

protected:
    void PreSubclassWindow() override;

    afx_msg void OnPaint();
    afx_msg void OnOne();
    afx_msg void OnTwo();
    afx_msg void OnThree();
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    DECLARE_MESSAGE_MAP()

    SYSTEMTIME m_time;
    int m_nStyle;
    int m_nSepWidth;
    int m_nSpinHeight;
    int m_nYearWidth;
    int m_nSpinWidth;
    bool m_bColon;
    CZELDate m_spin[3];
    CBitmap m_bmpDash;
    CBitmap m_bmpColon;
    int m_nSecond;
    COLORREF m_crBack;

private:
    // What a step of the hour/minute or year/month spinner does before it is passed on.
    void LeadingStep();
    // Takes the separator bitmaps, the back colour from `backSample` (the caller's) and
    // the digits' colour from the dash, then lays out.
    void AfterSkin(HBITMAP dash, HBITMAP colon, HBITMAP backSample);
};
