// CWinApp, the application module and the Afx functions.
#include "zel/mfc/cwinapp.h"

#include <cstdio>
#include <set>
#include <string>

#include "kernel/resource_module.h"
#include "mfc/handle_maps.h"
#include "zel/desktop.h"

namespace {

CWinApp*& TheApp() {
    static CWinApp* app = nullptr;
    return app;
}

HINSTANCE& ResourceHandle() {
    static HINSTANCE handle = nullptr;
    return handle;
}

}  // namespace

BOOL CWinThread::PreTranslateMessage(MSG* msg) {
    if (!msg || !msg->hwnd) return FALSE;  // thread messages have no window to offer them to
    CWnd* main = GetMainWnd();
    if (CWnd::WalkPreTranslateTree(main ? main->m_hWnd : nullptr, msg)) return TRUE;
    if (main && main->m_hWnd) {
        CWnd* target = CWnd::FromHandle(msg->hwnd);
        CWnd* top = target ? target->GetTopLevelParent() : nullptr;
        if (!top || top->m_hWnd != main->m_hWnd) return main->PreTranslateMessage(msg);
    }
    return FALSE;
}

BOOL CWinThread::OnIdle(LONG) {
    zel::mfc::DeleteTempMapsIfUnlocked();
    return FALSE;
}

CWinApp::CWinApp(LPCWSTR appName) : appName_(appName) {
    if (TheApp()) std::fprintf(stderr, "CWinApp: a second application object replaces the first\n");
    TheApp() = this;
    m_pszAppName = appName_.IsEmpty() ? nullptr : appName_.GetString();
    m_hInstance = AfxGetInstanceHandle();
}

CWinApp::~CWinApp() {
    if (TheApp() == this) TheApp() = nullptr;
}

int CWinApp::Run() {
    zel::Desktop::Get().Run();
    return ExitInstance();
}

CWinApp* AfxGetApp() { return TheApp(); }

CWnd* AfxGetMainWnd() { return TheApp() ? TheApp()->GetMainWnd() : nullptr; }

HINSTANCE AfxGetInstanceHandle() { return zel::detail::ApplicationModule(); }

HINSTANCE AfxGetResourceHandle() { return ResourceHandle() ? ResourceHandle() : AfxGetInstanceHandle(); }

void AfxSetResourceHandle(HINSTANCE instance) { ResourceHandle() = instance; }

LPCWSTR AfxGetAppName() {
    return TheApp() && TheApp()->m_pszAppName ? TheApp()->m_pszAppName : L"";
}

int AfxMessageBox(LPCWSTR text, UINT type, UINT) {
    CWnd* main = AfxGetMainWnd();
    return ::MessageBoxW(main ? main->m_hWnd : nullptr, text, AfxGetAppName(), type);
}

void AfxPostQuitMessage(int exitCode) { ::PostQuitMessage(exitCode); }

LPCWSTR AfxRegisterWndClass(UINT classStyle, HCURSOR cursor, HBRUSH background, HICON icon) {
    // One name per distinct combination, kept for the life of the process.
    static std::set<std::wstring> names;
    wchar_t name[96];
    std::swprintf(name, sizeof name / sizeof name[0], L"Afx:%x:%p:%p:%p", classStyle, static_cast<void*>(cursor),
                  static_cast<void*>(background), static_cast<void*>(icon));
    const std::wstring& kept = *names.insert(name).first;
    WNDCLASSW wc{};
    HINSTANCE instance = AfxGetInstanceHandle();
    if (!::GetClassInfoW(instance, kept.c_str(), &wc)) {
        wc.style = classStyle;
        wc.lpfnWndProc = ::DefWindowProcW;
        wc.hInstance = instance;
        wc.hCursor = cursor;
        wc.hbrBackground = background;
        wc.hIcon = icon;
        wc.lpszClassName = kept.c_str();
        if (!::RegisterClassW(&wc)) return nullptr;
    }
    return kept.c_str();
}
