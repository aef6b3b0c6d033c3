// CDialog, dialog data exchange and the dialog's message map.
//
// A CDialog binds to its window from inside the dialog's creation (before WM_INITDIALOG,
// which arrives as OnInitDialog), so modeless (Create) and modal (DoModal) dialogs route
// every message through the object. Templates come from AfxGetResourceHandle().
#pragma once

#include "zel/mfc/cwnd.h"

// What DoDataExchange works with. A failed exchange is recorded (m_bFailed) and makes
// UpdateData return FALSE; nothing is thrown.
class ZEL_API CDataExchange {
public:
    CDataExchange(CWnd* dlgWnd, BOOL saveAndValidate) : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dlgWnd) {}
    BOOL m_bSaveAndValidate;
    CWnd* m_pDlgWnd;
    BOOL m_bFailed = FALSE;
    // The item's window, or NULL (and the exchange fails) when the dialog has no such item.
    HWND PrepareCtrl(int id);
    void Fail() { m_bFailed = TRUE; }
};

// Subclasses the item with `control` the first time; later exchanges leave it bound.
ZEL_API void DDX_Control(CDataExchange* dx, int id, CWnd& control);
ZEL_API void DDX_Text(CDataExchange* dx, int id, CString& value);
ZEL_API void DDX_Text(CDataExchange* dx, int id, int& value);
ZEL_API void DDX_Check(CDataExchange* dx, int id, int& value);

class ZEL_API CDialog : public CWnd {
public:
    CDialog() = default;
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    explicit CDialog(LPCWSTR templateName, CWnd* parent = nullptr);

    // Modeless: the window exists when it returns TRUE (WM_INITDIALOG already handled).
    BOOL Create(UINT templateId, CWnd* parent = nullptr);
    BOOL Create(LPCWSTR templateName, CWnd* parent = nullptr);
    BOOL CreateIndirect(LPCDLGTEMPLATEW dlgTemplate, CWnd* parent = nullptr);
    // Modal: runs the dialog's loop and returns the EndDialog value (-1 when the template
    // is missing or the dialog cannot be created).
    virtual INT_PTR DoModal();
    void EndDialog(int result);

    virtual BOOL OnInitDialog();  // UpdateData(FALSE), TRUE (focus to the first tab stop)
    virtual void OnOK();          // UpdateData(TRUE), then EndDialog(IDOK) if it succeeded
    virtual void OnCancel();      // EndDialog(IDCANCEL)
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    void NextDlgCtrl() const;
    void PrevDlgCtrl() const;
    void GotoDlgCtrl(CWnd* control);
    void SetDefID(UINT id);
    DWORD GetDefID() const;

    // The dialog manager's keyboard (Tab, arrows, Enter, Escape) for the dialog's windows.
    BOOL PreTranslateMessage(MSG* msg) override;

    LPCWSTR m_lpszTemplateName = nullptr;
    CWnd* m_pParentWnd = nullptr;

protected:
    virtual void DoDataExchange(CDataExchange* dx);
    afx_msg LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

private:
    const void* FindTemplate() const;
    HWND OwnerHandle() const;
};
