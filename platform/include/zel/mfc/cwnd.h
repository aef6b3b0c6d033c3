// CWnd: a C++ object bound to a window, with message maps, default processing,
// reflection of control notifications and the usual wrappers.
//
// Binding: Attach puts the object in the permanent map (FromHandle then returns it);
// SubclassWindow also routes the window's messages through the object; CreateEx does both
// from inside CreateWindowExW, before WM_NCCREATE. Messages reach WindowProc, which offers
// them to OnWndMsg (WM_COMMAND -> OnCommand, WM_NOTIFY -> OnNotify, everything else to the
// message maps) and otherwise to DefWindowProc (the window procedure replaced when the
// object subclassed the window). Default() repeats the message being processed with its
// original parameters.
#pragma once

#include <windows.h>

#include "zel/mfc/cdc.h"
#include "zel/mfc/cstring.h"
#include "zel/mfc/geometry.h"
#include "zel/mfc/gdi_objects.h"
#include "zel/mfc/message_map.h"

class CScrollBar;

// The window procedure every subclassed window runs.
ZEL_API LRESULT CALLBACK AfxWndProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

class ZEL_API CWnd : public CCmdTarget {
public:
    CWnd() = default;
    // A permanent object still bound to its window destroys the window.
    ~CWnd() override;

    HWND m_hWnd = nullptr;

    // Placement values for SetWindowPos.
    static const CWnd wndTop;
    static const CWnd wndBottom;
    static const CWnd wndTopMost;
    static const CWnd wndNoTopMost;

    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }

    // The permanent object for hwnd or a temporary one (deleted at the next idle point of
    // the message loop); NULL only for a NULL handle.
    static CWnd* FromHandle(HWND hwnd);
    static CWnd* FromHandlePermanent(HWND hwnd);
    static void DeleteTempMap();

    BOOL Attach(HWND hwnd);
    HWND Detach();
    BOOL SubclassWindow(HWND hwnd);
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    HWND UnsubclassWindow();

    // Create makes a child (WS_CHILD is forced; a parent is required). A NULL class name
    // means the framework's default class: CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW and no
    // background brush, so WM_ERASEBKGND erases nothing.
    virtual BOOL Create(LPCWSTR className, LPCWSTR windowName, DWORD style, const RECT& rect, CWnd* parent,
                        UINT id, void* context = nullptr);
    virtual BOOL CreateEx(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, int x, int y,
                          int width, int height, HWND parent, HMENU idOrMenu, LPVOID param = nullptr);
    virtual BOOL CreateEx(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, const RECT& rect,
                          CWnd* parent, UINT id, LPVOID param = nullptr);
    virtual BOOL DestroyWindow();

    // Overridables.
    virtual BOOL PreCreateWindow(CREATESTRUCTW& cs);
    virtual void PreSubclassWindow() {}
    virtual BOOL PreTranslateMessage(MSG* msg);
    virtual void PostNcDestroy() {}
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    BOOL ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    BOOL SendChildNotifyLastMsg(LRESULT* result = nullptr);
    // Offers the message being processed to the child's OnChildNotify; FALSE when the
    // child has no permanent object or did not take it.
    static BOOL ReflectLastMsg(HWND child, LRESULT* result = nullptr);
    // The message the innermost window procedure call is processing.
    static const MSG* GetCurrentMessage();
    // Offers msg to PreTranslateMessage of msg->hwnd and each parent up to stop (or the
    // top) that has a permanent object; TRUE as soon as one takes it.
    static BOOL WalkPreTranslateTree(HWND stop, MSG* msg);

    // Wrappers.
    CWnd* GetParent() const;
    CWnd* SetParent(CWnd* parent);
    CWnd* GetTopLevelParent() const;
    CWnd* GetDlgItem(int id) const;
    void SetDlgItemText(int id, LPCWSTR text);
    int GetDlgItemText(int id, CString& text) const;
    void SetDlgItemInt(int id, UINT value, BOOL isSigned = TRUE);
    UINT GetDlgItemInt(int id, BOOL* translated = nullptr, BOOL isSigned = TRUE) const;
    void CheckDlgButton(int id, UINT check);
    UINT IsDlgButtonChecked(int id) const;
    LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    void GetDlgItem(int id, HWND* hwnd) const;
    int GetDlgCtrlID() const;
    int SetDlgCtrlID(int id);
    CWnd* GetWindow(UINT cmd) const;
    BOOL IsChild(const CWnd* wnd) const;
    BOOL IsWindowVisible() const;
    BOOL IsWindowEnabled() const;
    BOOL EnableWindow(BOOL enable = TRUE);
    BOOL ShowWindow(int cmd);
    DWORD GetStyle() const;
    DWORD GetExStyle() const;
    // FALSE when the style does not change; nFlags != 0 also calls SetWindowPos with them.
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
    BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT flags = 0);

    void GetClientRect(LPRECT rect) const;
    void GetWindowRect(LPRECT rect) const;
    void ClientToScreen(LPPOINT pt) const;
    void ClientToScreen(LPRECT rect) const;
    void ScreenToClient(LPPOINT pt) const;
    void ScreenToClient(LPRECT rect) const;
    void MapWindowPoints(CWnd* to, LPPOINT points, UINT count) const;
    void MapWindowPoints(CWnd* to, LPRECT rect) const;
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
    void MoveWindow(LPCRECT rect, BOOL repaint = TRUE);
    BOOL SetWindowPos(const CWnd* insertAfter, int x, int y, int cx, int cy, UINT flags);
    int SetWindowRgn(HRGN region, BOOL redraw);
    int GetWindowRgn(HRGN region) const;

    void Invalidate(BOOL erase = TRUE);
    void InvalidateRect(LPCRECT rect, BOOL erase = TRUE);
    void InvalidateRgn(CRgn* region, BOOL erase = TRUE);
    void ValidateRect(LPCRECT rect);
    void ValidateRgn(CRgn* region);
    void UpdateWindow();
    BOOL RedrawWindow(LPCRECT rect = nullptr, CRgn* region = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
    BOOL GetUpdateRect(LPRECT rect, BOOL erase = FALSE);
    CDC* BeginPaint(LPPAINTSTRUCT ps);
    void EndPaint(LPPAINTSTRUCT ps);
    CDC* GetDC();
    CDC* GetWindowDC();
    int ReleaseDC(CDC* dc);

    CWnd* SetCapture();
    static CWnd* GetCapture();
    CWnd* SetFocus();
    static CWnd* GetFocus();
    UINT_PTR SetTimer(UINT_PTR id, UINT elapse, void(CALLBACK* timerProc)(HWND, UINT, UINT_PTR, DWORD));
    BOOL KillTimer(UINT_PTR id);

    void SetWindowText(LPCWSTR text);
    int GetWindowText(LPWSTR text, int max) const;
    void GetWindowText(CString& text) const;
    int GetWindowTextLength() const;
    void SetFont(CFont* font, BOOL redraw = TRUE);
    CFont* GetFont() const;

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    int MessageBox(LPCWSTR text, LPCWSTR caption = nullptr, UINT type = MB_OK);

protected:
    // Placement objects carry a fixed handle value and are never bound.
    explicit CWnd(HWND special) : m_hWnd(special) {}

    LRESULT Default();

    // Default handlers: each repeats the message to the default window procedure, except
    // where a comment says otherwise.
    afx_msg int OnCreate(LPCREATESTRUCT cs);
    afx_msg void OnDestroy();
    // Posts WM_QUIT for the application's main window, runs the default procedure,
    // unbinds the object and calls PostNcDestroy (its last call).
    afx_msg void OnNcDestroy();
    afx_msg void OnClose();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnMove(int x, int y);
    afx_msg void OnSize(UINT type, int cx, int cy);
    afx_msg void OnShowWindow(BOOL show, UINT status);
    afx_msg void OnWindowPosChanging(WINDOWPOS* pos);
    afx_msg void OnWindowPosChanged(WINDOWPOS* pos);
    afx_msg void OnActivate(UINT state, CWnd* other, BOOL minimized);
    afx_msg void OnSetFocus(CWnd* oldWnd);
    afx_msg void OnKillFocus(CWnd* newWnd);
    afx_msg void OnEnable(BOOL enable);
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnRButtonDown(UINT flags, CPoint point);
    afx_msg void OnRButtonUp(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* wnd);
    afx_msg void OnKeyDown(UINT ch, UINT repeat, UINT flags);
    afx_msg void OnKeyUp(UINT ch, UINT repeat, UINT flags);
    afx_msg void OnChar(UINT ch, UINT repeat, UINT flags);
    afx_msg LRESULT OnNcHitTest(CPoint point);
    afx_msg UINT OnGetDlgCode();
    // Reflect to the scroll bar control that sent them first.
    afx_msg void OnHScroll(UINT code, UINT pos, CScrollBar* scrollBar);
    afx_msg void OnVScroll(UINT code, UINT pos, CScrollBar* scrollBar);
    // Reflect to the control first (a CButton then calls its DrawItem).
    afx_msg void OnDrawItem(int id, LPDRAWITEMSTRUCT dis);
    afx_msg void OnMeasureItem(int id, LPMEASUREITEMSTRUCT mis);
    // The brush a control (or the dialog itself) paints its background with; ctlColor is
    // CTLCOLOR_xxx. The default asks the default procedure.
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* wnd, UINT ctlColor);

    // Creates a dialog from a template with this object bound to it from its creation
    // (modal when `modal`, returning the EndDialog value through *result).
    BOOL CreateDlgIndirect(LPCDLGTEMPLATEW dlgTemplate, CWnd* parent, HINSTANCE instance, bool modal = false,
                           INT_PTR* result = nullptr);

    WNDPROC m_pfnSuper = nullptr;  // the window procedure this object replaced

    DECLARE_MESSAGE_MAP()

private:
    friend struct CWndAccess;
    BOOL BindAndSubclass(HWND hwnd);
};

// Registers (once) a window class with the given style and returns its name.
ZEL_API LPCWSTR AfxRegisterWndClass(UINT classStyle, HCURSOR cursor = nullptr, HBRUSH background = nullptr,
                                    HICON icon = nullptr);
