// CWinApp and the application-wide Afx functions.
#pragma once

#include "zel/mfc/cwnd.h"

class ZEL_API CWinThread : public CCmdTarget {
public:
    CWnd* m_pMainWnd = nullptr;

    virtual BOOL InitInstance() { return TRUE; }
    virtual int ExitInstance() { return 0; }
    // Called by the message loop for each posted or input message before it is
    // dispatched: offers it to the windows from its target up to the main window (and the
    // main window last when the target belongs to another top-level window).
    virtual BOOL PreTranslateMessage(MSG* msg);
    // Deletes the temporary wrappers; returns FALSE (no more idle work).
    virtual BOOL OnIdle(LONG count);
    virtual CWnd* GetMainWnd() { return m_pMainWnd; }
};

// The one application object: constructing it makes it the application.
class ZEL_API CWinApp : public CWinThread {
public:
    explicit CWinApp(LPCWSTR appName = nullptr);
    ~CWinApp() override;

    LPCWSTR m_pszAppName = nullptr;
    HINSTANCE m_hInstance = nullptr;

    // Runs the desktop's real-time loop until WM_QUIT, then ExitInstance.
    virtual int Run();

private:
    CString appName_;
};

ZEL_API CWinApp* AfxGetApp();
ZEL_API CWnd* AfxGetMainWnd();
// The application's module: a checked HINSTANCE that is never freed.
ZEL_API HINSTANCE AfxGetInstanceHandle();
// Where resources load from by default; the application's module until set.
ZEL_API HINSTANCE AfxGetResourceHandle();
ZEL_API void AfxSetResourceHandle(HINSTANCE instance);
ZEL_API LPCWSTR AfxGetAppName();
// MessageBoxW owned by the main window, titled with the application's name.
ZEL_API int AfxMessageBox(LPCWSTR text, UINT type = MB_OK, UINT helpId = 0);
ZEL_API void AfxPostQuitMessage(int exitCode);
// Lock the temporary maps (nested loops); unlocking to zero with deleteTemps deletes them.
ZEL_API void AfxLockTempMaps();
ZEL_API BOOL AfxUnlockTempMaps(BOOL deleteTemps = TRUE);
