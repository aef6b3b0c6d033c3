// Message maps: CCmdTarget and the ON_xxx macros.
//
// A map is a table of entries searched most-derived class first, then each base class.
// Every entry holds the handler as a generic member pointer plus the dispatcher that
// knows its exact signature. Each macro static_casts the handler to that exact member
// pointer type first, so a handler with a wrong signature does not compile.
// Handlers named by the caller are written "&CClass::OnSomething".
#pragma once

#include <bit>

#include <windows.h>

#include "zel/mfc/geometry.h"
#include "zel/mfc/object.h"

class CCmdTarget;
class CWnd;
class CDC;
class CScrollBar;

typedef void (CCmdTarget::*AFX_PMSG)();
// Calls one handler with the message cracked for its signature. Returns whether the
// message counts as handled (only the _EX handlers can say no) and sets *result.
typedef BOOL (*AFX_DISPATCH)(CCmdTarget* target, AFX_PMSG handler, UINT id, UINT message, WPARAM wParam,
                             LPARAM lParam, LRESULT* result);

struct AFX_MSGMAP_ENTRY {
    UINT nMessage;   // window message, WM_COMMAND, WM_NOTIFY or a reflected WM_REFLECT_BASE + msg
    UINT nCode;      // control notification code (low 16 bits)
    UINT nID;        // first control id
    UINT nLastID;    // last control id (same as nID unless a range)
    AFX_DISPATCH pfnSig;
    AFX_PMSG pfn;
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

// Extra data for a WM_NOTIFY routed through OnCmdMsg.
struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};
struct AFX_CMDHANDLERINFO {
    CCmdTarget* pTarget;
    AFX_PMSG pmf;
};

// Reflected messages arrive at the child as WM_REFLECT_BASE + the original message.
#define WM_REFLECT_BASE 0xBC00
#define CN_COMMAND 0
#define CN_UPDATE_COMMAND_UI ((UINT)(-1))

class ZEL_API CCmdTarget : public CObject {
public:
    // Routes a command (nCode = notification code) or, with HIWORD(nCode) = WM_NOTIFY or
    // a reflected message, a notification through the map. pExtra is an AFX_NOTIFY for
    // notifications. TRUE when a handler took it.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    // Finds the entry for a window message in this object's maps (most derived first).
    const AFX_MSGMAP_ENTRY* FindMessageEntry(UINT message) const;

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};

#define DECLARE_MESSAGE_MAP()                       \
protected:                                          \
    static const AFX_MSGMAP* GetThisMessageMap();   \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                    \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); } \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {                            \
        typedef theClass ThisClass;                                              \
        typedef baseClass TheBaseClass;                                          \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {

#define END_MESSAGE_MAP()                                                                         \
    {0, 0, 0, 0, nullptr, nullptr}};                                                              \
    static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, &_messageEntries[0]}; \
    return &messageMap;                                                                           \
    }

namespace zel::mfc {

template <class C, class F>
using MemberFn = F C::*;

// Member function pointers of one class share a representation; bit_cast moves a handler
// in and out of the entry's generic slot without a cast between function types.
template <class F>
AFX_PMSG Erase(MemberFn<CCmdTarget, F> handler) {
    return std::bit_cast<AFX_PMSG>(handler);
}
template <class F>
MemberFn<CCmdTarget, F> Restore(AFX_PMSG handler) {
    return std::bit_cast<MemberFn<CCmdTarget, F>>(handler);
}

// One dispatcher per handler signature (message_map.cpp).
ZEL_API BOOL Sig_v_v(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);         // void()
ZEL_API BOOL Sig_b_v(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);         // BOOL(), _EX
ZEL_API BOOL Sig_v_id(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);        // void(UINT id)
ZEL_API BOOL Sig_v_mouse(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);     // void(UINT, CPoint)
ZEL_API BOOL Sig_v_timer(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);     // void(UINT_PTR)
ZEL_API BOOL Sig_v_size(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);      // void(UINT, int, int)
ZEL_API BOOL Sig_v_move(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);      // void(int, int)
ZEL_API BOOL Sig_i_create(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);    // int(LPCREATESTRUCT)
ZEL_API BOOL Sig_v_wndW(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);      // void(CWnd*) from wParam
ZEL_API BOOL Sig_v_wndL(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);      // void(CWnd*) from lParam
ZEL_API BOOL Sig_v_bool(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);      // void(BOOL)
ZEL_API BOOL Sig_v_scroll(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);    // void(UINT, UINT, CScrollBar*)
ZEL_API BOOL Sig_v_scrollR(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);   // void(UINT, UINT)
ZEL_API BOOL Sig_v_activate(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);  // void(UINT, CWnd*, BOOL)
ZEL_API BOOL Sig_b_dc(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);        // BOOL(CDC*)
ZEL_API BOOL Sig_v_key(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);       // void(UINT, UINT, UINT)
ZEL_API BOOL Sig_v_draw(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);      // void(int, LPDRAWITEMSTRUCT)
ZEL_API BOOL Sig_v_measure(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);   // void(int, LPMEASUREITEMSTRUCT)
ZEL_API BOOL Sig_v_show(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);      // void(BOOL, UINT)
ZEL_API BOOL Sig_l_point(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);     // LRESULT(CPoint), screen
ZEL_API BOOL Sig_u_v(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);         // UINT()
ZEL_API BOOL Sig_v_winpos(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);    // void(WINDOWPOS*)
ZEL_API BOOL Sig_l_wl(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);        // LRESULT(WPARAM, LPARAM)
ZEL_API BOOL Sig_v_notify(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);    // void(NMHDR*, LRESULT*)
ZEL_API BOOL Sig_b_notify(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);    // BOOL(NMHDR*, LRESULT*)
ZEL_API BOOL Sig_hbr_ctlcolor(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);  // HBRUSH(CDC*, CWnd*, UINT)
ZEL_API BOOL Sig_v_notifyId(CCmdTarget*, AFX_PMSG, UINT, UINT, WPARAM, LPARAM, LRESULT*);  // void(UINT, NMHDR*, LRESULT*)

}  // namespace zel::mfc

// Generic entry: the handler must have exactly the member function type Fn in ThisClass.
#define ZEL_MAP_ENTRY(msg, code, id, lastId, sig, Fn, handler)                                        \
    {(UINT)(msg), (UINT)(WORD)(code), (UINT)(id), (UINT)(lastId), &::zel::mfc::sig,                   \
     ::zel::mfc::Erase<Fn>(static_cast<::zel::mfc::MemberFn<CCmdTarget, Fn>>(                         \
         static_cast<::zel::mfc::MemberFn<ThisClass, Fn>>(handler)))},

// Window messages with their fixed handler names.
#define ON_WM_CREATE() ZEL_MAP_ENTRY(WM_CREATE, 0, 0, 0, Sig_i_create, int(LPCREATESTRUCT), &ThisClass::OnCreate)
#define ON_WM_DESTROY() ZEL_MAP_ENTRY(WM_DESTROY, 0, 0, 0, Sig_v_v, void(), &ThisClass::OnDestroy)
#define ON_WM_NCDESTROY() ZEL_MAP_ENTRY(WM_NCDESTROY, 0, 0, 0, Sig_v_v, void(), &ThisClass::OnNcDestroy)
#define ON_WM_CLOSE() ZEL_MAP_ENTRY(WM_CLOSE, 0, 0, 0, Sig_v_v, void(), &ThisClass::OnClose)
#define ON_WM_PAINT() ZEL_MAP_ENTRY(WM_PAINT, 0, 0, 0, Sig_v_v, void(), &ThisClass::OnPaint)
#define ON_WM_ERASEBKGND() ZEL_MAP_ENTRY(WM_ERASEBKGND, 0, 0, 0, Sig_b_dc, BOOL(CDC*), &ThisClass::OnEraseBkgnd)
#define ON_WM_MOVE() ZEL_MAP_ENTRY(WM_MOVE, 0, 0, 0, Sig_v_move, void(int, int), &ThisClass::OnMove)
#define ON_WM_SIZE() ZEL_MAP_ENTRY(WM_SIZE, 0, 0, 0, Sig_v_size, void(UINT, int, int), &ThisClass::OnSize)
#define ON_WM_SHOWWINDOW() ZEL_MAP_ENTRY(WM_SHOWWINDOW, 0, 0, 0, Sig_v_show, void(BOOL, UINT), &ThisClass::OnShowWindow)
#define ON_WM_WINDOWPOSCHANGING() \
    ZEL_MAP_ENTRY(WM_WINDOWPOSCHANGING, 0, 0, 0, Sig_v_winpos, void(WINDOWPOS*), &ThisClass::OnWindowPosChanging)
#define ON_WM_WINDOWPOSCHANGED() \
    ZEL_MAP_ENTRY(WM_WINDOWPOSCHANGED, 0, 0, 0, Sig_v_winpos, void(WINDOWPOS*), &ThisClass::OnWindowPosChanged)
#define ON_WM_ACTIVATE() \
    ZEL_MAP_ENTRY(WM_ACTIVATE, 0, 0, 0, Sig_v_activate, void(UINT, CWnd*, BOOL), &ThisClass::OnActivate)
#define ON_WM_SETFOCUS() ZEL_MAP_ENTRY(WM_SETFOCUS, 0, 0, 0, Sig_v_wndW, void(CWnd*), &ThisClass::OnSetFocus)
#define ON_WM_KILLFOCUS() ZEL_MAP_ENTRY(WM_KILLFOCUS, 0, 0, 0, Sig_v_wndW, void(CWnd*), &ThisClass::OnKillFocus)
#define ON_WM_ENABLE() ZEL_MAP_ENTRY(WM_ENABLE, 0, 0, 0, Sig_v_bool, void(BOOL), &ThisClass::OnEnable)
#define ON_WM_TIMER() ZEL_MAP_ENTRY(WM_TIMER, 0, 0, 0, Sig_v_timer, void(UINT_PTR), &ThisClass::OnTimer)
#define ON_WM_LBUTTONDOWN() \
    ZEL_MAP_ENTRY(WM_LBUTTONDOWN, 0, 0, 0, Sig_v_mouse, void(UINT, CPoint), &ThisClass::OnLButtonDown)
#define ON_WM_LBUTTONUP() ZEL_MAP_ENTRY(WM_LBUTTONUP, 0, 0, 0, Sig_v_mouse, void(UINT, CPoint), &ThisClass::OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() \
    ZEL_MAP_ENTRY(WM_LBUTTONDBLCLK, 0, 0, 0, Sig_v_mouse, void(UINT, CPoint), &ThisClass::OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() \
    ZEL_MAP_ENTRY(WM_RBUTTONDOWN, 0, 0, 0, Sig_v_mouse, void(UINT, CPoint), &ThisClass::OnRButtonDown)
#define ON_WM_RBUTTONUP() ZEL_MAP_ENTRY(WM_RBUTTONUP, 0, 0, 0, Sig_v_mouse, void(UINT, CPoint), &ThisClass::OnRButtonUp)
#define ON_WM_MOUSEMOVE() ZEL_MAP_ENTRY(WM_MOUSEMOVE, 0, 0, 0, Sig_v_mouse, void(UINT, CPoint), &ThisClass::OnMouseMove)
#define ON_WM_CAPTURECHANGED() \
    ZEL_MAP_ENTRY(WM_CAPTURECHANGED, 0, 0, 0, Sig_v_wndL, void(CWnd*), &ThisClass::OnCaptureChanged)
#define ON_WM_KEYDOWN() ZEL_MAP_ENTRY(WM_KEYDOWN, 0, 0, 0, Sig_v_key, void(UINT, UINT, UINT), &ThisClass::OnKeyDown)
#define ON_WM_KEYUP() ZEL_MAP_ENTRY(WM_KEYUP, 0, 0, 0, Sig_v_key, void(UINT, UINT, UINT), &ThisClass::OnKeyUp)
#define ON_WM_CHAR() ZEL_MAP_ENTRY(WM_CHAR, 0, 0, 0, Sig_v_key, void(UINT, UINT, UINT), &ThisClass::OnChar)
#define ON_WM_HSCROLL() \
    ZEL_MAP_ENTRY(WM_HSCROLL, 0, 0, 0, Sig_v_scroll, void(UINT, UINT, CScrollBar*), &ThisClass::OnHScroll)
#define ON_WM_VSCROLL() \
    ZEL_MAP_ENTRY(WM_VSCROLL, 0, 0, 0, Sig_v_scroll, void(UINT, UINT, CScrollBar*), &ThisClass::OnVScroll)
#define ON_WM_DRAWITEM() \
    ZEL_MAP_ENTRY(WM_DRAWITEM, 0, 0, 0, Sig_v_draw, void(int, LPDRAWITEMSTRUCT), &ThisClass::OnDrawItem)
#define ON_WM_MEASUREITEM() \
    ZEL_MAP_ENTRY(WM_MEASUREITEM, 0, 0, 0, Sig_v_measure, void(int, LPMEASUREITEMSTRUCT), &ThisClass::OnMeasureItem)
#define ON_WM_NCHITTEST() ZEL_MAP_ENTRY(WM_NCHITTEST, 0, 0, 0, Sig_l_point, LRESULT(CPoint), &ThisClass::OnNcHitTest)
#define ON_WM_GETDLGCODE() ZEL_MAP_ENTRY(WM_GETDLGCODE, 0, 0, 0, Sig_u_v, UINT(), &ThisClass::OnGetDlgCode)

// Every WM_CTLCOLORxxx message, with nCtlColor = the message's CTLCOLOR_xxx index.
#define CTLCOLOR_MSGBOX 0
#define CTLCOLOR_EDIT 1
#define CTLCOLOR_LISTBOX 2
#define CTLCOLOR_BTN 3
#define CTLCOLOR_DLG 4
#define CTLCOLOR_SCROLLBAR 5
#define CTLCOLOR_STATIC 6
#define ZEL_CTLCOLOR_ENTRY(msg) \
    ZEL_MAP_ENTRY(msg, 0, 0, 0, Sig_hbr_ctlcolor, HBRUSH(CDC*, CWnd*, UINT), &ThisClass::OnCtlColor)
#define ON_WM_CTLCOLOR()                                                                               \
    ZEL_CTLCOLOR_ENTRY(WM_CTLCOLORMSGBOX) ZEL_CTLCOLOR_ENTRY(WM_CTLCOLOREDIT)                          \
    ZEL_CTLCOLOR_ENTRY(WM_CTLCOLORLISTBOX) ZEL_CTLCOLOR_ENTRY(WM_CTLCOLORBTN)                          \
    ZEL_CTLCOLOR_ENTRY(WM_CTLCOLORDLG) ZEL_CTLCOLOR_ENTRY(WM_CTLCOLORSCROLLBAR)                        \
    ZEL_CTLCOLOR_ENTRY(WM_CTLCOLORSTATIC)

// Scroll messages reflected from the parent to the scroll bar control that sent them.
#define ON_WM_HSCROLL_REFLECT() \
    ZEL_MAP_ENTRY(WM_REFLECT_BASE + WM_HSCROLL, 0, 0, 0, Sig_v_scrollR, void(UINT, UINT), &ThisClass::HScroll)
#define ON_WM_VSCROLL_REFLECT() \
    ZEL_MAP_ENTRY(WM_REFLECT_BASE + WM_VSCROLL, 0, 0, 0, Sig_v_scrollR, void(UINT, UINT), &ThisClass::VScroll)

// Any message, raw parameters.
#define ON_MESSAGE(message, memberFxn) ZEL_MAP_ENTRY(message, 0, 0, 0, Sig_l_wl, LRESULT(WPARAM, LPARAM), memberFxn)

// Commands and control notifications. ON_COMMAND matches notification code 0, which is
// also BN_CLICKED, so it catches button clicks.
#define ON_COMMAND(id, memberFxn) ZEL_MAP_ENTRY(WM_COMMAND, CN_COMMAND, id, id, Sig_v_v, void(), memberFxn)
#define ON_COMMAND_RANGE(id, idLast, memberFxn) \
    ZEL_MAP_ENTRY(WM_COMMAND, CN_COMMAND, id, idLast, Sig_v_id, void(UINT), memberFxn)
#define ON_CONTROL(code, id, memberFxn) ZEL_MAP_ENTRY(WM_COMMAND, code, id, id, Sig_v_v, void(), memberFxn)
#define ON_CONTROL_RANGE(code, id, idLast, memberFxn) \
    ZEL_MAP_ENTRY(WM_COMMAND, code, id, idLast, Sig_v_id, void(UINT), memberFxn)
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_BN_DOUBLECLICKED(id, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, id, memberFxn)
#define ON_BN_SETFOCUS(id, memberFxn) ON_CONTROL(BN_SETFOCUS, id, memberFxn)
#define ON_BN_KILLFOCUS(id, memberFxn) ON_CONTROL(BN_KILLFOCUS, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)
#define ON_CBN_DROPDOWN(id, memberFxn) ON_CONTROL(CBN_DROPDOWN, id, memberFxn)
#define ON_CBN_CLOSEUP(id, memberFxn) ON_CONTROL(CBN_CLOSEUP, id, memberFxn)
#define ON_CBN_SELENDOK(id, memberFxn) ON_CONTROL(CBN_SELENDOK, id, memberFxn)
#define ON_CBN_SELENDCANCEL(id, memberFxn) ON_CONTROL(CBN_SELENDCANCEL, id, memberFxn)
#define ON_STN_CLICKED(id, memberFxn) ON_CONTROL(STN_CLICKED, id, memberFxn)
#define ON_STN_DBLCLK(id, memberFxn) ON_CONTROL(STN_DBLCLK, id, memberFxn)
#define ON_NOTIFY(code, id, memberFxn) \
    ZEL_MAP_ENTRY(WM_NOTIFY, code, id, id, Sig_v_notify, void(NMHDR*, LRESULT*), memberFxn)
#define ON_NOTIFY_RANGE(code, id, idLast, memberFxn) \
    ZEL_MAP_ENTRY(WM_NOTIFY, code, id, idLast, Sig_v_notifyId, void(UINT, NMHDR*, LRESULT*), memberFxn)
#define ON_NOTIFY_EX(code, id, memberFxn) \
    ZEL_MAP_ENTRY(WM_NOTIFY, code, id, id, Sig_b_notify, BOOL(NMHDR*, LRESULT*), memberFxn)

// Reflected forms, handled by the control itself before its parent. The _EX handlers
// return FALSE to let the parent see the notification as well.
#define ON_CONTROL_REFLECT(code, memberFxn) \
    ZEL_MAP_ENTRY(WM_REFLECT_BASE + WM_COMMAND, code, 0, 0, Sig_v_v, void(), memberFxn)
#define ON_CONTROL_REFLECT_EX(code, memberFxn) \
    ZEL_MAP_ENTRY(WM_REFLECT_BASE + WM_COMMAND, code, 0, 0, Sig_b_v, BOOL(), memberFxn)
#define ON_NOTIFY_REFLECT(code, memberFxn) \
    ZEL_MAP_ENTRY(WM_REFLECT_BASE + WM_NOTIFY, code, 0, 0, Sig_v_notify, void(NMHDR*, LRESULT*), memberFxn)
#define ON_NOTIFY_REFLECT_EX(code, memberFxn) \
    ZEL_MAP_ENTRY(WM_REFLECT_BASE + WM_NOTIFY, code, 0, 0, Sig_b_notify, BOOL(NMHDR*, LRESULT*), memberFxn)
