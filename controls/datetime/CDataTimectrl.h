// CDataTimectrl: the date-time picker. Shows a date (year-month-day) or a time of day
// (hour:minute:second) as three fields of stroke digits; the stylus or Left/Right picks a
// field, Up/Down changes it. It can follow the clock once a second until the user edits a
// field. It tells its parent nothing: the host reads the value back with GetTime.
//
// Hosts subclass an existing child window of their dialog (or call CWnd::Create).
#pragma once

#include <afxwin.h>

#include "zelctl_api.h"

class ZELCTL_API CDataTimectrl : public CWnd {
public:
    CDataTimectrl();
    ~CDataTimectrl() override;

    DWORD GetTime(CTime& t) const;
    // Copies the whole SYSTEMTIME (nothing for a null pointer); always 1.
    DWORD GetTime(SYSTEMTIME* p) const;
    // Setting from a CTime is deliberately a no-op; returns 1.
    BOOL SetTime(const CTime* p);
    // Takes any values, unchecked (a null pointer changes nothing), and does not repaint:
    // the host invalidates when it wants the change seen at once. Odd values are shown and
    // stepped as they are.
    BOOL SetTime(SYSTEMTIME* p);
    // 0 = date, anything else = time.
    void SetStyle(int n);
    int GetSyle();
    // Follow the clock (timer 1, once a second) or stop following it.
    void SetAutoUpdate(BOOL b);
    // Days of `month` in `year` (Gregorian); a month outside 1..12 counts 30.
    UINT Monthdays(UINT year, UINT month);

    // Draws `str` in stroke glyphs h high at pt; returns the advance in pixels (every glyph
    // is followed by m_nCharGap, the last one too).
    UINT DrawStr(HDC hdc, CString str, int h, POINT pt, DWORD crBack, DWORD crText);
    UINT DrawCh(HDC hdc, WORD ch, POINT pt, int h);

    // The four key actions; public so a host can call them from its own buttons.
    void RightKey();
    void LeftKeydown();
    void Upkeydown();
    void DownKeyDown();

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    void PreSubclassWindow() override;

    afx_msg void OnPaint();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnDestroy();
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    DECLARE_MESSAGE_MAP()

    SYSTEMTIME m_time;
    int m_nStyle;        // 0 date, 1 time
    RECT m_rcField[3];   // client coordinates, rewritten by every paint; empty before the first
    int m_nCurField;     // -1 none
    COLORREF m_crText;
    COLORREF m_crSelText;
    COLORREF m_crBack;
    COLORREF m_crSelBack;
    int m_nCharGap;
    CWnd m_wndAux;       // never created; focus moving to it would keep the selection

private:
    void Repaint();
    void ClampDay();
};
