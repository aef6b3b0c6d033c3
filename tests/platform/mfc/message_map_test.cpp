// Message maps: most-derived dispatch with fallback to base maps, cracked parameters,
// Default() with the original parameters, exact handler signatures.
#include <concepts>

#include "window_fixture.h"

namespace {

using mfc_test::Note;
using MessageMaps = mfc_test::WindowTest;

std::string Pt(CPoint p) { return "(" + std::to_string(p.x) + "," + std::to_string(p.y) + ")"; }

class BaseWnd : public CWnd {
protected:
    afx_msg void OnLButtonDown(UINT flags, CPoint point) { Note("Base:LBUTTONDOWN" + Pt(point)); }
    afx_msg void OnTimer(UINT_PTR id) { Note("Base:TIMER(" + std::to_string(id) + ")"); }
    afx_msg LRESULT OnUser(WPARAM w, LPARAM) {
        Note("Base:USER(" + std::to_string(w) + ")");
        return 5;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(BaseWnd, CWnd)
    ON_WM_LBUTTONDOWN()
    ON_WM_TIMER()
    ON_MESSAGE(WM_USER + 1, &BaseWnd::OnUser)
END_MESSAGE_MAP()

class DerivedWnd : public BaseWnd {
protected:
    afx_msg void OnLButtonDown(UINT flags, CPoint point) {
        Note("Derived:LBUTTONDOWN" + Pt(point) + " flags=" + std::to_string(flags));
    }
    afx_msg void OnSize(UINT type, int cx, int cy) {
        Note("Derived:SIZE(" + std::to_string(type) + "," + std::to_string(cx) + "," + std::to_string(cy) + ")");
    }
    afx_msg void OnKeyDown(UINT ch, UINT repeat, UINT flags) {
        Note("Derived:KEYDOWN(" + std::to_string(ch) + "," + std::to_string(repeat) + "," + std::to_string(flags) + ")");
    }
    afx_msg void OnSetFocus(CWnd* old) { Note(std::string("Derived:SETFOCUS(") + (old ? "wnd" : "null") + ")"); }
    afx_msg void OnMove(int x, int y) { Note("Derived:MOVE(" + std::to_string(x) + "," + std::to_string(y) + ")"); }
    afx_msg void OnVScroll(UINT code, UINT pos, CScrollBar* bar) {
        Note("Derived:VSCROLL(" + std::to_string(code) + "," + std::to_string(pos) + "," + (bar ? "bar" : "null") + ")");
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DerivedWnd, BaseWnd)
    ON_WM_LBUTTONDOWN()
    ON_WM_SIZE()
    ON_WM_KEYDOWN()
    ON_WM_SETFOCUS()
    ON_WM_MOVE()
    ON_WM_VSCROLL()
END_MESSAGE_MAP()

TEST_F(MessageMaps, MostDerivedHandlerFirstThenBaseMaps) {
    DerivedWnd wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr));
    mfc_test::Log().clear();
    wnd.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, -4));
    wnd.SendMessage(WM_TIMER, 9, 0);
    EXPECT_EQ(wnd.SendMessage(WM_USER + 1, 2, 0), 5);
    EXPECT_EQ(wnd.SendMessage(WM_USER + 2, 0, 0), 0) << "no entry: the default window procedure";
    EXPECT_EQ(mfc_test::Joined(), "Derived:LBUTTONDOWN(3,-4) flags=1 Base:TIMER(9) Base:USER(2)");
}

TEST_F(MessageMaps, ParametersAreCrackedPerSignature) {
    DerivedWnd wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr));
    mfc_test::Log().clear();
    wnd.SendMessage(WM_SIZE, 0, MAKELPARAM(640, 480));
    wnd.SendMessage(WM_KEYDOWN, VK_DOWN, MAKELPARAM(3, 0x150));
    wnd.SendMessage(WM_SETFOCUS, 0, 0);
    wnd.SendMessage(WM_SETFOCUS, reinterpret_cast<WPARAM>(wnd.m_hWnd), 0);
    wnd.SendMessage(WM_MOVE, 0, MAKELPARAM(-10, 20));
    wnd.SendMessage(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 40000), 0);
    EXPECT_EQ(mfc_test::Joined(),
              "Derived:SIZE(0,640,480) Derived:KEYDOWN(40,3,336) Derived:SETFOCUS(null) Derived:SETFOCUS(wnd) "
              "Derived:MOVE(-10,20) Derived:VSCROLL(5,40000,null)");
}

// A subclass whose handlers pass changed arguments to the base class: Default() must
// still hand the original message to the window's own procedure.
class PassOn : public CWnd {
protected:
    afx_msg void OnLButtonDown(UINT, CPoint) { CWnd::OnLButtonDown(0, CPoint(99, 99)); }
    afx_msg LRESULT OnUser7(WPARAM, LPARAM) { return Default() + 1; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(PassOn, CWnd)
    ON_WM_LBUTTONDOWN()
    ON_MESSAGE(WM_USER + 7, &PassOn::OnUser7)
END_MESSAGE_MAP()

TEST_F(MessageMaps, DefaultReplaysTheOriginalParameters) {
    HWND raw = mfc_test::RawWindow(nullptr, 0, RECT{0, 0, 40, 40});
    PassOn wnd;
    ASSERT_TRUE(wnd.SubclassWindow(raw));
    mfc_test::Log().clear();
    SendMessageW(raw, WM_LBUTTONDOWN, 0, MAKELPARAM(7, 8));
    EXPECT_EQ(SendMessageW(raw, WM_USER + 7, 4, 0), 78);
    EXPECT_EQ(mfc_test::Joined(), "raw:LBUTTONDOWN(7,8) raw:USER7(4)");
}

// The macros static_cast each handler to its exact member function type; these are the
// same casts, so a class whose handler has another signature cannot build a map.
struct RightMouse : CWnd {
    void OnLButtonDown(UINT flags, CPoint point);
};
struct WrongMouse : CWnd {
    void OnLButtonDown(UINT flags, POINT point);
};
struct WrongTimer : CWnd {
    void OnTimer(UINT id);  // the pre-64-bit signature
};
struct RightTimer : CWnd {
    void OnTimer(UINT_PTR id);
};
template <class T, class F>
concept Maps = requires { static_cast<zel::mfc::MemberFn<T, F>>(&T::OnLButtonDown); };
template <class T, class F>
concept MapsTimer = requires { static_cast<zel::mfc::MemberFn<T, F>>(&T::OnTimer); };
static_assert(Maps<RightMouse, void(UINT, CPoint)>);
static_assert(!Maps<WrongMouse, void(UINT, CPoint)>);
static_assert(!MapsTimer<WrongTimer, void(UINT_PTR)>);
static_assert(MapsTimer<RightTimer, void(UINT_PTR)>);

}  // namespace
