// CZELDate: the up-down value spinner. A framed box between an "add" and a "Def" push
// button (CZELButton children 1011 and 2012). In value style it holds an integer in
// [m_nMin, m_nMax], shown in stroke digits with the buttons above and below the box; in
// string style it holds an index into a list of strings, shown as text with the buttons
// right and left of the box. Every step wraps around and sends the parent one WM_COMMAND
// with the spinner's own identifier; held buttons repeat.
//
// The colours come from three sample images (only their top-left pixel counts): the
// client fill, the box's frame and the box's fill.
#pragma once

#include <afxwin.h>
#include <afxtempl.h>

#include <memory>

#include "CSkinWnd.h"
#include "CZELButton.h"
#include "zelctl_api.h"

namespace zelctl {
class SkinSet;
}

class ZELCTL_API CZELDate : public CSkinWnd {
public:
    enum { IDC_ADD = 1011, IDC_DEF = 2012 };

    CZELDate();
    ~CZELDate() override;

    // The window, then (once) the two buttons, hidden until a skin is loaded.
    virtual BOOL Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    // `folder` + each of nine "|"-terminated names: add normal, focus, pressed; Def
    // normal, focus, pressed; back, frame and box colour samples. Text after the last "|"
    // is not taken; with fewer than nine names nothing changes.
    void LoadSkin(CString strFolder, CString strNames) override;
    // Each array needs three entries (normal, focus, pressed; back, frame, box), else the
    // call does nothing.
    void LoadBitmapW(CArray<CString, CString>& add, CArray<CString, CString>& def, CArray<CString, CString>& colours);
    // The same from three triples of resource identifiers of hInst. The push button takes
    // its skins from files only, so the buttons keep the look they had.
    void LoadBitmapW(const UINT* add, const UINT* def, const UINT* colours, HINSTANCE hInst);

    // FALSE in string style or for max < min; else the value is clamped into the range.
    BOOL SetRang(int min, int max);
    // The index (string style) or value, if within [min, max]; false otherwise.
    bool SetPos(int n);
    // The value, in either style, if within [min, max]; repaints in any case.
    void SetCurValue(int n);
    int GetCurValue();
    // The current string; empty when the index names none.
    void GetCurValue(CString& s);
    // Appends a non-empty string (and grows the range by one, up to INT_MAX); the index becomes 0 if it
    // was -1, even for an empty string. No repaint.
    void InsertStr(CString s);
    // true: value style, false: string style. Neither relays out nor repaints.
    void SetVStyle(bool b);
    void SetTextCol(COLORREF cr);
    void MoveWindow(int x, int y, int cx, int cy, bool bRepaint);
    void MoveWindow(CRect rc, bool bRepaint);

    // One step up or down with wrap-around, then WM_COMMAND to the parent. Public: a host
    // may step the spinner itself.
    afx_msg void OnBtnAdd();
    afx_msg void OnBtnDef();

protected:
    void PreSubclassWindow() override;

    afx_msg void OnPaint();
    afx_msg void OnDestroy();
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    DECLARE_MESSAGE_MAP()

    int m_nMin;
    int m_nMax;
    int m_nValue;
    int m_nCharGap;
    CZELButton m_btnAdd;
    CZELButton m_btnDef;
    int m_nBtnWidth;
    int m_nBtnHeight;
    CRect m_rcText;
    COLORREF m_crBack;
    COLORREF m_crFrame;
    COLORREF m_crBox;
    COLORREF m_crText;
    BOOL m_bCreated;
    BOOL m_bStrings;
    CStringArray m_strings;
    int m_nCurIndex;

private:
    // Buttons and box for the current client size; string style keeps `margin` pixels
    // plus the button width free at either end of the box (5 when moved, 10 when skinned).
    void LayOut(int margin, bool textBox);
    // Skin loads read colours from one-colour samples and the buttons' size from the add
    // button's normal skin, then drop them.
    enum Sample { kBackSample, kFrameSample, kBoxSample, kButtonSample, kSamples };
    ZELCTL_HIDDEN void AfterSkin(const zelctl::SkinSet& samples);
    ZELCTL_HIDDEN void ReadColours(const zelctl::SkinSet& samples);
    void ShowButtons();
    void InvalidateText();
    int LastIndex() const;
    void DrawStr(HDC hdc, const CString& str, int h, int w, POINT pt, COLORREF crText, int penWidth);
    void DrawRect(HDC hdc, CString str, RECT rc, UINT format);
    // The picture is kept between paints with what it shows; it is drawn again only when
    // that changed (a step, a colour, the layout, the style), however it was changed.
    struct Picture;
    struct Shown;
    ZELCTL_HIDDEN Shown Showing();
    ZELCTL_HIDDEN void DrawPicture(HDC mem, const CRect& client, const Shown& shown);
    std::unique_ptr<Picture> m_picture;
};
