#include "zel/mfc/cdialog.h"

#include <cstdio>
#include <cwchar>
#include <string>

#include "kernel/resource_module.h"
#include "zel/mfc/cwinapp.h"

// ---- data exchange ----

HWND CDataExchange::PrepareCtrl(int id) {
    HWND item = m_pDlgWnd ? ::GetDlgItem(m_pDlgWnd->m_hWnd, id) : nullptr;
    if (!item) {
        std::fprintf(stderr, "DDX: the dialog has no item %d\n", id);
        Fail();
    }
    return item;
}

void DDX_Control(CDataExchange* dx, int id, CWnd& control) {
    if (!dx || control.m_hWnd) return;
    HWND item = dx->PrepareCtrl(id);
    if (item && !control.SubclassWindow(item)) dx->Fail();
}

void DDX_Text(CDataExchange* dx, int id, CString& value) {
    HWND item = dx ? dx->PrepareCtrl(id) : nullptr;
    if (!item) return;
    if (dx->m_bSaveAndValidate) {
        int n = ::GetWindowTextLengthW(item);
        std::wstring text(static_cast<size_t>(n) + 1, L'\0');
        ::GetWindowTextW(item, text.data(), n + 1);
        value = text.c_str();
    } else {
        ::SetWindowTextW(item, value);
    }
}

void DDX_Text(CDataExchange* dx, int id, int& value) {
    HWND item = dx ? dx->PrepareCtrl(id) : nullptr;
    if (!item) return;
    HWND dlg = dx->m_pDlgWnd->m_hWnd;
    if (dx->m_bSaveAndValidate) {
        BOOL ok = FALSE;
        int v = static_cast<int>(::GetDlgItemInt(dlg, id, &ok, TRUE));
        if (ok) {
            value = v;
        } else {
            dx->Fail();  // not an integer: the value keeps what it had
        }
    } else {
        ::SetDlgItemInt(dlg, id, static_cast<UINT>(value), TRUE);
    }
}

void DDX_Check(CDataExchange* dx, int id, int& value) {
    HWND item = dx ? dx->PrepareCtrl(id) : nullptr;
    if (!item) return;
    if (dx->m_bSaveAndValidate) {
        value = static_cast<int>(::SendMessageW(item, BM_GETCHECK, 0, 0));
    } else {
        ::SendMessageW(item, BM_SETCHECK, static_cast<WPARAM>(value), 0);
    }
}

// ---- CDialog ----

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_MESSAGE(WM_INITDIALOG, &CDialog::HandleInitDialog)
    ON_COMMAND(IDOK, &CDialog::OnOK)
    ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
END_MESSAGE_MAP()

CDialog::CDialog(UINT templateId, CWnd* parent)
    : m_lpszTemplateName(MAKEINTRESOURCEW(templateId)), m_pParentWnd(parent) {}

CDialog::CDialog(LPCWSTR templateName, CWnd* parent) : m_lpszTemplateName(templateName), m_pParentWnd(parent) {}

const void* CDialog::FindTemplate() const {
    return m_lpszTemplateName ? zel::detail::FindDialogTemplate(AfxGetResourceHandle(), m_lpszTemplateName) : nullptr;
}

HWND CDialog::OwnerHandle() const {
    if (m_pParentWnd) return m_pParentWnd->m_hWnd;
    CWnd* main = AfxGetMainWnd();
    return main && main != this ? main->m_hWnd : nullptr;
}

BOOL CDialog::Create(UINT templateId, CWnd* parent) { return Create(MAKEINTRESOURCEW(templateId), parent); }

BOOL CDialog::Create(LPCWSTR templateName, CWnd* parent) {
    m_lpszTemplateName = templateName;
    if (parent) m_pParentWnd = parent;
    const void* t = FindTemplate();
    if (!t) {
        std::fprintf(stderr, "CDialog::Create: no such dialog template\n");
        return FALSE;
    }
    return CreateIndirect(static_cast<LPCDLGTEMPLATEW>(t), m_pParentWnd);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATEW dlgTemplate, CWnd* parent) {
    if (parent) m_pParentWnd = parent;
    return CreateDlgIndirect(dlgTemplate, m_pParentWnd, AfxGetResourceHandle());
}

INT_PTR CDialog::DoModal() {
    const void* t = FindTemplate();
    if (!t) {
        std::fprintf(stderr, "CDialog::DoModal: no such dialog template\n");
        return -1;
    }
    INT_PTR result = -1;
    HWND owner = OwnerHandle();
    CWnd* ownerWnd = owner ? CWnd::FromHandle(owner) : nullptr;
    CreateDlgIndirect(static_cast<LPCDLGTEMPLATEW>(t), ownerWnd, AfxGetResourceHandle(), true, &result);
    return result;
}

void CDialog::EndDialog(int result) {
    if (m_hWnd) ::EndDialog(m_hWnd, result);
}

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM) { return OnInitDialog(); }

BOOL CDialog::OnInitDialog() {
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK() {
    if (!UpdateData(TRUE)) return;
    EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

BOOL CDialog::UpdateData(BOOL saveAndValidate) {
    if (!m_hWnd) return FALSE;
    CDataExchange dx(this, saveAndValidate);
    DoDataExchange(&dx);
    return !dx.m_bFailed;
}

void CDialog::DoDataExchange(CDataExchange*) {}

void CDialog::NextDlgCtrl() const { ::SendMessageW(m_hWnd, WM_NEXTDLGCTL, 0, 0); }
void CDialog::PrevDlgCtrl() const { ::SendMessageW(m_hWnd, WM_NEXTDLGCTL, 1, 0); }
void CDialog::GotoDlgCtrl(CWnd* control) {
    if (control) ::SendMessageW(m_hWnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control->m_hWnd), 1);
}
void CDialog::SetDefID(UINT id) { ::SendMessageW(m_hWnd, DM_SETDEFID, id, 0); }
DWORD CDialog::GetDefID() const { return static_cast<DWORD>(::SendMessageW(m_hWnd, DM_GETDEFID, 0, 0)); }

BOOL CDialog::PreTranslateMessage(MSG* msg) {
    if (!msg || !m_hWnd) return FALSE;
    bool keyboard = msg->message >= WM_KEYFIRST && msg->message <= WM_KEYLAST;
    return keyboard && ::IsDialogMessageW(m_hWnd, msg);
}
