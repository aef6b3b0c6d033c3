// CTimeData: the time field. The picker's value, style, keys and clock, drawn as a row of
// 8-pixel character cells over a skin bitmap stretched across the client area; in date
// style the character cell last tapped is shown white on black. It tells its parent
// nothing.
//
// Add, Def, Setcur, GetCur and GetMax are the names of a per-character editor that was
// never wired: they exist and deliberately change nothing.
#pragma once

#include "CDataTimectrl.h"

class ZELCTL_API CTimeData : public CDataTimectrl {
public:
    CTimeData();
    ~CTimeData() override;

    // The background skin from resource nID of hInst (the current resource handle when
    // NULL). Until a load succeeds the control paints nothing.
    void LoadBitmapW(UINT nID, HINSTANCE hInst);

    void Add();
    void Def();
    void Setcur(int field, int value);

protected:
    int GetCur(int field);
    int GetMax(int field);

    afx_msg void OnPaint();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    DECLARE_MESSAGE_MAP()

    CBitmap m_bmpBack;
    BOOL m_bBmpLoaded;
    RECT m_rcCell;    // one character cell: (0, 0, 8, client height) once painted
    int m_nCurChar;   // the highlighted cell; -1 none
};
