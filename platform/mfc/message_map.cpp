// CCmdTarget: map search and command routing; the per-signature dispatchers.
#include "zel/mfc/message_map.h"

#include "zel/mfc/cdc.h"
#include "zel/mfc/cscrollbar.h"
#include "zel/mfc/cwnd.h"

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr, nullptr}};
    static const AFX_MSGMAP map = {nullptr, &entries[0]};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const { return GetThisMessageMap(); }

namespace {

// Command-style entries are matched by OnCmdMsg, never as plain window messages.
bool IsRoutedMessage(UINT message) {
    return message == WM_COMMAND || message == WM_NOTIFY || message == WM_REFLECT_BASE + WM_COMMAND ||
           message == WM_REFLECT_BASE + WM_NOTIFY;
}

template <class F>
const AFX_MSGMAP_ENTRY* Search(const AFX_MSGMAP* map, F&& matches) {
    for (; map; map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr)
        for (const AFX_MSGMAP_ENTRY* e = map->lpEntries; e && e->pfnSig; ++e)
            if (matches(*e)) return e;
    return nullptr;
}

}  // namespace

const AFX_MSGMAP_ENTRY* CCmdTarget::FindMessageEntry(UINT message) const {
    if (IsRoutedMessage(message)) return nullptr;
    return Search(GetMessageMap(), [message](const AFX_MSGMAP_ENTRY& e) { return e.nMessage == message; });
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    UINT message = HIWORD(static_cast<UINT>(nCode));
    UINT code = LOWORD(static_cast<UINT>(nCode));
    if (message == 0) message = WM_COMMAND;
    bool reflected = message >= WM_REFLECT_BASE;
    const AFX_MSGMAP_ENTRY* e = Search(GetMessageMap(), [&](const AFX_MSGMAP_ENTRY& entry) {
        return entry.nMessage == message && entry.nCode == code &&
               (reflected || (nID >= entry.nID && nID <= entry.nLastID));
    });
    if (!e) return FALSE;
    if (pHandlerInfo) {
        pHandlerInfo->pTarget = this;
        pHandlerInfo->pmf = e->pfn;
        return TRUE;
    }
    LRESULT ignored = 0;
    auto* notify = static_cast<AFX_NOTIFY*>(pExtra);
    bool isNotify = message == WM_NOTIFY || message == WM_REFLECT_BASE + WM_NOTIFY;
    LPARAM lParam = isNotify && notify ? reinterpret_cast<LPARAM>(notify->pNMHDR) : 0;
    LRESULT* result = isNotify && notify && notify->pResult ? notify->pResult : &ignored;
    return e->pfnSig(this, e->pfn, nID, message, MAKEWPARAM(nID, code), lParam, result);
}

namespace zel::mfc {

namespace {

template <class F>
auto Member(AFX_PMSG pfn) {
    return Restore<F>(pfn);
}

CPoint Point(LPARAM l) { return CPoint(GET_X_LPARAM(l), GET_Y_LPARAM(l)); }
HWND Hwnd(WPARAM w) { return reinterpret_cast<HWND>(w); }
HWND Hwnd(LPARAM l) { return reinterpret_cast<HWND>(l); }

}  // namespace

#define ZEL_SIG(name) BOOL name(CCmdTarget* t, AFX_PMSG pfn, UINT id, UINT msg, WPARAM w, LPARAM l, LRESULT* r)

ZEL_SIG(Sig_v_v) {
    (t->*Member<void()>(pfn))();
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_b_v) {
    *r = 0;
    return (t->*Member<BOOL()>(pfn))();
}
ZEL_SIG(Sig_v_id) {
    (t->*Member<void(UINT)>(pfn))(id);
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_v_mouse) {
    (t->*Member<void(UINT, CPoint)>(pfn))(static_cast<UINT>(w), Point(l));
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_v_timer) {
    (t->*Member<void(UINT_PTR)>(pfn))(static_cast<UINT_PTR>(w));
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_v_size) {
    (t->*Member<void(UINT, int, int)>(pfn))(static_cast<UINT>(w), LOWORD(l), HIWORD(l));
    *r = 0;
    return TRUE;
}
// Positions are signed: a child may sit left of or above its parent's client area.
ZEL_SIG(Sig_v_move) {
    (t->*Member<void(int, int)>(pfn))(GET_X_LPARAM(l), GET_Y_LPARAM(l));
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_i_create) {
    *r = (t->*Member<int(LPCREATESTRUCT)>(pfn))(reinterpret_cast<LPCREATESTRUCT>(l));
    return TRUE;
}
ZEL_SIG(Sig_v_wndW) {
    (t->*Member<void(CWnd*)>(pfn))(CWnd::FromHandle(Hwnd(w)));
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_v_wndL) {
    (t->*Member<void(CWnd*)>(pfn))(CWnd::FromHandle(Hwnd(l)));
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_v_bool) {
    (t->*Member<void(BOOL)>(pfn))(static_cast<BOOL>(w));
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_v_scroll) {
    (t->*Member<void(UINT, UINT, CScrollBar*)>(pfn))(LOWORD(w), HIWORD(w), CScrollBar::FromHandle(Hwnd(l)));
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_v_scrollR) {
    (t->*Member<void(UINT, UINT)>(pfn))(LOWORD(w), HIWORD(w));
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_v_activate) {
    (t->*Member<void(UINT, CWnd*, BOOL)>(pfn))(LOWORD(w), CWnd::FromHandle(Hwnd(l)), HIWORD(w) != 0);
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_b_dc) {
    *r = (t->*Member<BOOL(CDC*)>(pfn))(CDC::FromHandle(reinterpret_cast<HDC>(w)));
    return TRUE;
}
ZEL_SIG(Sig_hbr_ctlcolor) {
    HBRUSH brush = (t->*Member<HBRUSH(CDC*, CWnd*, UINT)>(pfn))(CDC::FromHandle(reinterpret_cast<HDC>(w)),
                                                               CWnd::FromHandle(Hwnd(l)), msg - WM_CTLCOLORMSGBOX);
    *r = reinterpret_cast<LRESULT>(brush);
    return TRUE;
}
ZEL_SIG(Sig_v_key) {
    (t->*Member<void(UINT, UINT, UINT)>(pfn))(static_cast<UINT>(w), LOWORD(l), HIWORD(l));
    *r = 0;
    return TRUE;
}
// The owner-draw messages answer TRUE: the item was drawn (measured).
ZEL_SIG(Sig_v_draw) {
    (t->*Member<void(int, LPDRAWITEMSTRUCT)>(pfn))(static_cast<int>(w), reinterpret_cast<LPDRAWITEMSTRUCT>(l));
    *r = TRUE;
    return TRUE;
}
ZEL_SIG(Sig_v_measure) {
    (t->*Member<void(int, LPMEASUREITEMSTRUCT)>(pfn))(static_cast<int>(w), reinterpret_cast<LPMEASUREITEMSTRUCT>(l));
    *r = TRUE;
    return TRUE;
}
ZEL_SIG(Sig_v_show) {
    (t->*Member<void(BOOL, UINT)>(pfn))(static_cast<BOOL>(w), static_cast<UINT>(l));
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_l_point) {
    *r = (t->*Member<LRESULT(CPoint)>(pfn))(Point(l));
    return TRUE;
}
ZEL_SIG(Sig_u_v) {
    *r = (t->*Member<UINT()>(pfn))();
    return TRUE;
}
ZEL_SIG(Sig_v_winpos) {
    (t->*Member<void(WINDOWPOS*)>(pfn))(reinterpret_cast<WINDOWPOS*>(l));
    *r = 0;
    return TRUE;
}
ZEL_SIG(Sig_l_wl) {
    *r = (t->*Member<LRESULT(WPARAM, LPARAM)>(pfn))(w, l);
    return TRUE;
}
ZEL_SIG(Sig_v_notify) {
    (t->*Member<void(NMHDR*, LRESULT*)>(pfn))(reinterpret_cast<NMHDR*>(l), r);
    return TRUE;
}
ZEL_SIG(Sig_b_notify) {
    return (t->*Member<BOOL(NMHDR*, LRESULT*)>(pfn))(reinterpret_cast<NMHDR*>(l), r);
}
ZEL_SIG(Sig_v_notifyId) {
    (t->*Member<void(UINT, NMHDR*, LRESULT*)>(pfn))(id, reinterpret_cast<NMHDR*>(l), r);
    return TRUE;
}

#undef ZEL_SIG

}  // namespace zel::mfc
