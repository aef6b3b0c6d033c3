// CWnd's core: binding objects to windows, subclassing, creation through the create hook,
// the window procedure, default processing, reflection and the pre-translate walk.
#include "zel/mfc/cwnd.h"

#include <cstdint>
#include <cstdio>
#include <unordered_map>

#include "mfc/handle_maps.h"
#include "zel/hooks.h"
#include "zel/mfc/cscrollbar.h"
#include "zel/mfc/cwinapp.h"

namespace zel::mfc {

HandleMap<CWnd>& WindowMap() {
    static auto* map = new HandleMap<CWnd>();  // wrappers may be destroyed after statics
    return *map;
}

}  // namespace zel::mfc

using zel::mfc::WindowMap;

const CWnd CWnd::wndTop(HWND_TOP);
const CWnd CWnd::wndBottom(HWND_BOTTOM);
const CWnd CWnd::wndTopMost(HWND_TOPMOST);
const CWnd CWnd::wndNoTopMost(HWND_NOTOPMOST);

struct CWndAccess {
    static BOOL Bind(CWnd* wnd, HWND hwnd) { return wnd->BindAndSubclass(hwnd); }
};

namespace {

// The message each nested window procedure call is processing; Default() replays it.
struct CurrentMessage {
    MSG msg{};
    int depth = 0;
};
CurrentMessage& Current() {
    static CurrentMessage current;
    return current;
}

class MessageScope {
public:
    MessageScope(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) : saved_(Current().msg) {
        Current().msg = MSG{hwnd, message, wParam, lParam, 0, {0, 0}};
        ++Current().depth;
        ++zel::mfc::TempMapLocks();
    }
    ~MessageScope() {
        Current().msg = saved_;
        --Current().depth;
        --zel::mfc::TempMapLocks();
    }

private:
    MSG saved_;
};

// The window procedure each window had before its first subclassing by a CWnd, so that
// a window whose object detached still behaves as its class does.
std::unordered_map<HWND, WNDPROC>& OriginalProcs() {
    static auto* procs = new std::unordered_map<HWND, WNDPROC>();
    return *procs;
}

WNDPROC OriginalProc(HWND hwnd) {
    auto it = OriginalProcs().find(hwnd);
    return it == OriginalProcs().end() ? nullptr : it->second;
}

// The object CreateEx is creating, picked up by the create hook.
CWnd*& PendingCreate() {
    static CWnd* pending = nullptr;
    return pending;
}

void CreateHook(HWND hwnd, CREATESTRUCTW*) {
    CWnd* wnd = PendingCreate();
    if (!wnd) return;
    PendingCreate() = nullptr;  // windows created from PreSubclassWindow are not ours
    CWndAccess::Bind(wnd, hwnd);
}

bool PreTranslateHook(MSG* msg) {
    zel::mfc::DeleteTempMapsIfUnlocked();
    if (!msg) return false;
    if (CWinApp* app = AfxGetApp()) return app->PreTranslateMessage(msg) != FALSE;
    return CWnd::WalkPreTranslateTree(nullptr, msg) != FALSE;
}

void InstallHooks() {
    zel::SetCreateWindowHook(&CreateHook);
    zel::SetPreTranslateHook(&PreTranslateHook);
}

constexpr wchar_t kDefaultClass[] = L"AfxWnd";

// Registered on first use (and again after a desktop reset dropped it).
LPCWSTR DefaultClass() {
    WNDCLASSW wc{};
    HINSTANCE instance = AfxGetInstanceHandle();
    if (!::GetClassInfoW(instance, kDefaultClass, &wc)) {
        wc.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
        wc.lpfnWndProc = ::DefWindowProcW;
        wc.hInstance = instance;
        wc.lpszClassName = kDefaultClass;
        ::RegisterClassW(&wc);
    }
    return kDefaultClass;
}

LRESULT CallWndProc(CWnd* wnd, HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result;
    {
        MessageScope scope(hwnd, message, wParam, lParam);
        result = wnd->WindowProc(message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        // A handler that skipped CWnd::OnNcDestroy leaves its object bound to a dead
        // window; unbind it. (The object itself may already be deleted: look it up again.)
        if (CWnd* still = CWnd::FromHandlePermanent(hwnd)) still->Detach();
        OriginalProcs().erase(hwnd);
    }
    return result;
}

}  // namespace

LRESULT CALLBACK AfxWndProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (CWnd* wnd = CWnd::FromHandlePermanent(hwnd)) return CallWndProc(wnd, hwnd, message, wParam, lParam);
    WNDPROC original = OriginalProc(hwnd);
    LRESULT result = original && original != AfxWndProc ? ::CallWindowProcW(original, hwnd, message, wParam, lParam)
                                                         : ::DefWindowProcW(hwnd, message, wParam, lParam);
    if (message == WM_NCDESTROY) OriginalProcs().erase(hwnd);
    return result;
}

// ---- binding ----

CWnd::~CWnd() {
    if (m_hWnd && FromHandlePermanent(m_hWnd) == this) {
        if (::IsWindow(m_hWnd)) ::DestroyWindow(m_hWnd);
        if (m_hWnd) Detach();
    }
}

CWnd* CWnd::FromHandle(HWND hwnd) {
    return WindowMap().Get<CWnd>(hwnd, [](CWnd* w, const void* h) { w->m_hWnd = static_cast<HWND>(const_cast<void*>(h)); });
}

CWnd* CWnd::FromHandlePermanent(HWND hwnd) { return hwnd ? WindowMap().Permanent(hwnd) : nullptr; }

void CWnd::DeleteTempMap() {
    WindowMap().DeleteTemporaries([](CWnd* w) { w->m_hWnd = nullptr; });
}

BOOL CWnd::Attach(HWND hwnd) {
    if (!hwnd || m_hWnd || WindowMap().IsPermanent(hwnd)) return FALSE;
    m_hWnd = hwnd;
    WindowMap().SetPermanent(hwnd, this);
    InstallHooks();
    return TRUE;
}

HWND CWnd::Detach() {
    HWND hwnd = m_hWnd;
    if (hwnd) WindowMap().RemovePermanent(hwnd, this);
    m_hWnd = nullptr;
    return hwnd;
}

// Attach, PreSubclassWindow, then replace the window procedure (keeping the old one for
// DefWindowProc), in that order.
BOOL CWnd::BindAndSubclass(HWND hwnd) {
    if (!Attach(hwnd)) return FALSE;
    PreSubclassWindow();
    if (m_hWnd != hwnd) return FALSE;  // PreSubclassWindow destroyed or detached it
    auto old = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    if (!old) {
        Detach();
        return FALSE;
    }
    if (old == AfxWndProc) {
        old = OriginalProc(hwnd);
        if (!old) old = ::DefWindowProcW;
    } else {
        OriginalProcs().emplace(hwnd, old);
    }
    m_pfnSuper = old;
    return TRUE;
}

BOOL CWnd::SubclassWindow(HWND hwnd) {
    if (!::IsWindow(hwnd)) return FALSE;
    return BindAndSubclass(hwnd);
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    if (!parent || !parent->m_hWnd) return FALSE;
    return SubclassWindow(::GetDlgItem(parent->m_hWnd, static_cast<int>(id)));
}

HWND CWnd::UnsubclassWindow() {
    if (!m_hWnd) return nullptr;
    if (m_pfnSuper) ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    OriginalProcs().erase(m_hWnd);
    m_pfnSuper = nullptr;
    return Detach();
}

// ---- creation ----

BOOL CWnd::PreCreateWindow(CREATESTRUCTW& cs) {
    if (!cs.lpszClass) cs.lpszClass = DefaultClass();
    return TRUE;
}

BOOL CWnd::Create(LPCWSTR className, LPCWSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                  void*) {
    if (!parent || !parent->m_hWnd) {
        std::fprintf(stderr, "CWnd::Create: a child window needs a parent window\n");
        return FALSE;
    }
    return CreateEx(0, className, windowName, style | WS_CHILD, rect, parent, id);
}

// The size of an absurd rectangle wraps as 32-bit arithmetic does; the window manager
// then clamps whatever results.
BOOL CWnd::CreateEx(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, const RECT& rect,
                    CWnd* parent, UINT id, LPVOID param) {
    const int width = static_cast<int>(int64_t{rect.right} - rect.left);
    const int height = static_cast<int>(int64_t{rect.bottom} - rect.top);
    return CreateEx(exStyle, className, windowName, style, rect.left, rect.top, width, height,
                    parent ? parent->m_hWnd : nullptr, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), param);
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, int x, int y, int width,
                    int height, HWND parent, HMENU idOrMenu, LPVOID param) {
    if (m_hWnd) {
        std::fprintf(stderr, "CWnd::CreateEx: the object already has a window\n");
        return FALSE;
    }
    CREATESTRUCTW cs{param, AfxGetInstanceHandle(), idOrMenu, parent, height, width, y, x, static_cast<LONG>(style),
                     windowName, className, exStyle};
    if (!PreCreateWindow(cs)) return FALSE;

    InstallHooks();
    CWnd* outer = PendingCreate();
    PendingCreate() = this;
    HWND hwnd = ::CreateWindowExW(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), cs.x, cs.y,
                                  cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    PendingCreate() = outer;

    if (!hwnd) {
        if (m_hWnd && !::IsWindow(m_hWnd)) Detach();
        return FALSE;
    }
    if (m_hWnd != hwnd && !m_hWnd) {
        // The window manager did not call the create hook: bind now (WM_CREATE was missed).
        std::fprintf(stderr, "CWnd::CreateEx: window created without the create hook\n");
        return BindAndSubclass(hwnd);
    }
    return m_hWnd == hwnd;
}

BOOL CWnd::CreateDlgIndirect(LPCDLGTEMPLATEW dlgTemplate, CWnd* parent, HINSTANCE instance, bool modal,
                             INT_PTR* result) {
    if (m_hWnd || !dlgTemplate) return FALSE;
    InstallHooks();
    CWnd* outer = PendingCreate();
    PendingCreate() = this;
    HWND owner = parent ? parent->m_hWnd : nullptr;
    HWND hwnd = nullptr;
    if (modal) {
        INT_PTR r = ::DialogBoxIndirectParamW(instance, dlgTemplate, owner, nullptr, 0);
        if (result) *result = r;
        PendingCreate() = outer;
        return r != -1;
    }
    hwnd = ::CreateDialogIndirectParamW(instance, dlgTemplate, owner, nullptr, 0);
    PendingCreate() = outer;
    if (!hwnd) {
        if (m_hWnd && !::IsWindow(m_hWnd)) Detach();
        return FALSE;
    }
    return m_hWnd == hwnd;
}

BOOL CWnd::DestroyWindow() { return m_hWnd ? ::DestroyWindow(m_hWnd) : FALSE; }

// ---- message processing ----

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (!OnWndMsg(message, wParam, lParam, &result)) result = DefWindowProc(message, wParam, lParam);
    return result;
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    LRESULT local = 0;
    if (!result) result = &local;
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam)) return FALSE;
        *result = 1;
        return TRUE;
    }
    if (message == WM_NOTIFY) {
        LRESULT notifyResult = 0;
        if (!lParam || !OnNotify(wParam, lParam, &notifyResult)) return FALSE;
        *result = notifyResult;
        return TRUE;
    }
    const AFX_MSGMAP_ENTRY* entry = FindMessageEntry(message);
    if (!entry) return FALSE;
    return entry->pfnSig(this, entry->pfn, 0, message, wParam, lParam, result);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!m_hWnd) return 0;
    if (m_pfnSuper) return ::CallWindowProcW(m_pfnSuper, m_hWnd, message, wParam, lParam);
    return ::DefWindowProcW(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() {
    if (Current().depth == 0) return 0;
    const MSG& msg = Current().msg;
    return DefWindowProc(msg.message, msg.wParam, msg.lParam);
}

const MSG* CWnd::GetCurrentMessage() {
    static MSG snapshot;
    snapshot = Current().msg;
    snapshot.time = static_cast<DWORD>(::GetMessageTime());
    DWORD pos = ::GetMessagePos();
    snapshot.pt = POINT{GET_X_LPARAM(pos), GET_Y_LPARAM(pos)};
    return &snapshot;
}

// A control notification goes to the control first; only if it does not take it do the
// parent's ON_COMMAND / ON_CONTROL entries see it.
BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    UINT id = LOWORD(wParam);
    HWND control = reinterpret_cast<HWND>(lParam);
    int code = HIWORD(wParam);
    if (!control) {
        code = CN_COMMAND;  // menus and accelerators
    } else if (ReflectLastMsg(control)) {
        return TRUE;
    }
    return OnCmdMsg(id, code, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM, LPARAM lParam, LRESULT* result) {
    auto* header = reinterpret_cast<NMHDR*>(lParam);
    if (!header) return FALSE;
    if (header->hwndFrom && ReflectLastMsg(header->hwndFrom, result)) return TRUE;
    AFX_NOTIFY notify{result, header};
    return OnCmdMsg(static_cast<UINT>(header->idFrom), static_cast<int>(MAKELONG(header->code, WM_NOTIFY)), &notify,
                    nullptr);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    return ReflectChildNotify(message, wParam, lParam, result);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    switch (message) {
        case WM_HSCROLL:
        case WM_VSCROLL:
        case WM_DRAWITEM:
        case WM_MEASUREITEM:
        case WM_DELETEITEM:
        case WM_COMPAREITEM:
        case WM_VKEYTOITEM:
        case WM_CHARTOITEM:
        case WM_PARENTNOTIFY:
            return OnWndMsg(WM_REFLECT_BASE + message, wParam, lParam, result);
        case WM_COMMAND:
            return OnCmdMsg(0, static_cast<int>(MAKELONG(HIWORD(wParam), WM_REFLECT_BASE + WM_COMMAND)), nullptr,
                            nullptr);
        case WM_NOTIFY: {
            auto* header = reinterpret_cast<NMHDR*>(lParam);
            if (!header) return FALSE;
            LRESULT ignored = 0;
            AFX_NOTIFY notify{result ? result : &ignored, header};
            return OnCmdMsg(0, static_cast<int>(MAKELONG(header->code, WM_REFLECT_BASE + WM_NOTIFY)), &notify,
                            nullptr);
        }
        default:
            return FALSE;
    }
}

BOOL CWnd::SendChildNotifyLastMsg(LRESULT* result) {
    const MSG& msg = Current().msg;
    return OnChildNotify(msg.message, msg.wParam, msg.lParam, result);
}

BOOL CWnd::ReflectLastMsg(HWND child, LRESULT* result) {
    CWnd* wnd = FromHandlePermanent(child);
    return wnd ? wnd->SendChildNotifyLastMsg(result) : FALSE;
}

BOOL CWnd::PreTranslateMessage(MSG*) { return FALSE; }

BOOL CWnd::WalkPreTranslateTree(HWND stop, MSG* msg) {
    if (!msg) return FALSE;
    int guard = 0;
    for (HWND hwnd = msg->hwnd; hwnd && guard < 256; hwnd = ::GetParent(hwnd), ++guard) {
        if (CWnd* wnd = FromHandlePermanent(hwnd))
            if (wnd->PreTranslateMessage(msg)) return TRUE;
        if (hwnd == stop) break;
    }
    return FALSE;
}

// ---- the base class's map and default handlers ----

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_NCDESTROY()
    ON_WM_DRAWITEM()
    ON_WM_MEASUREITEM()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
END_MESSAGE_MAP()

void CWnd::OnNcDestroy() {
    CWinApp* app = AfxGetApp();
    if (app && app->m_pMainWnd == this) {
        app->m_pMainWnd = nullptr;
        AfxPostQuitMessage(0);
    }
    Default();
    Detach();
    PostNcDestroy();
}

void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT dis) {
    if (dis && dis->CtlType != ODT_MENU && ReflectLastMsg(dis->hwndItem)) return;
    Default();
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd*, UINT) { return reinterpret_cast<HBRUSH>(Default()); }

void CWnd::OnMeasureItem(int id, LPMEASUREITEMSTRUCT mis) {
    if (mis && mis->CtlType != ODT_MENU) {
        HWND child = ::GetDlgItem(m_hWnd, id);
        if (child && ReflectLastMsg(child)) return;
    }
    Default();
}

void CWnd::OnHScroll(UINT, UINT, CScrollBar* scrollBar) {
    if (scrollBar && ReflectLastMsg(scrollBar->m_hWnd)) return;
    Default();
}

void CWnd::OnVScroll(UINT, UINT, CScrollBar* scrollBar) {
    if (scrollBar && ReflectLastMsg(scrollBar->m_hWnd)) return;
    Default();
}

int CWnd::OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
void CWnd::OnDestroy() { Default(); }
void CWnd::OnClose() { Default(); }
void CWnd::OnPaint() { Default(); }
BOOL CWnd::OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
void CWnd::OnMove(int, int) { Default(); }
void CWnd::OnSize(UINT, int, int) { Default(); }
void CWnd::OnShowWindow(BOOL, UINT) { Default(); }
void CWnd::OnWindowPosChanging(WINDOWPOS*) { Default(); }
void CWnd::OnWindowPosChanged(WINDOWPOS*) { Default(); }
void CWnd::OnActivate(UINT, CWnd*, BOOL) { Default(); }
void CWnd::OnSetFocus(CWnd*) { Default(); }
void CWnd::OnKillFocus(CWnd*) { Default(); }
void CWnd::OnEnable(BOOL) { Default(); }
void CWnd::OnTimer(UINT_PTR) { Default(); }
void CWnd::OnLButtonDown(UINT, CPoint) { Default(); }
void CWnd::OnLButtonUp(UINT, CPoint) { Default(); }
void CWnd::OnLButtonDblClk(UINT, CPoint) { Default(); }
void CWnd::OnRButtonDown(UINT, CPoint) { Default(); }
void CWnd::OnRButtonUp(UINT, CPoint) { Default(); }
void CWnd::OnMouseMove(UINT, CPoint) { Default(); }
void CWnd::OnCaptureChanged(CWnd*) { Default(); }
void CWnd::OnKeyDown(UINT, UINT, UINT) { Default(); }
void CWnd::OnKeyUp(UINT, UINT, UINT) { Default(); }
void CWnd::OnChar(UINT, UINT, UINT) { Default(); }
LRESULT CWnd::OnNcHitTest(CPoint) { return Default(); }
UINT CWnd::OnGetDlgCode() { return static_cast<UINT>(Default()); }
