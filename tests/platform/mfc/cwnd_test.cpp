// CWnd: creation and subclassing (PreSubclassWindow timing), permanent and temporary
// objects, destruction, the default class, the pre-translate walk.
#include <climits>

#include "window_fixture.h"

namespace {

using mfc_test::Note;
using CWndTest = mfc_test::WindowTest;

// Logs the order in which a window's first messages reach the object.
class Recorder : public CWnd {
public:
    bool permanentInPreSubclass = false;
    WNDPROC procInPreSubclass = nullptr;
    int postNcDestroyCalls = 0;
    HWND hwndInPostNcDestroy = reinterpret_cast<HWND>(1);

    LRESULT WindowProc(UINT msg, WPARAM w, LPARAM l) override {
        if (msg == WM_NCCREATE) Note("NCCREATE");
        return CWnd::WindowProc(msg, w, l);
    }

protected:
    void PreSubclassWindow() override {
        Note("PreSubclassWindow");
        permanentInPreSubclass = FromHandlePermanent(m_hWnd) == this;
        procInPreSubclass = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(m_hWnd, GWLP_WNDPROC));
    }
    void PostNcDestroy() override {
        ++postNcDestroyCalls;
        hwndInPostNcDestroy = m_hWnd;
        Note("PostNcDestroy");
    }
    afx_msg int OnCreate(LPCREATESTRUCT cs) {
        Note("CREATE");
        return CWnd::OnCreate(cs);
    }
    afx_msg void OnDestroy() {
        Note("DESTROY");
        CWnd::OnDestroy();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Recorder, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

TEST_F(CWndTest, CreatePresubclassesBeforeNcCreate) {
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, L"host", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr));
    Recorder child;
    ASSERT_TRUE(child.Create(nullptr, L"child", WS_VISIBLE, CRect(10, 10, 60, 40), &parent, 42));
    EXPECT_EQ(mfc_test::Joined(), "PreSubclassWindow NCCREATE CREATE");
    EXPECT_TRUE(child.permanentInPreSubclass);
    EXPECT_NE(child.procInPreSubclass, &AfxWndProc) << "the procedure is replaced after PreSubclassWindow";
    EXPECT_EQ(child.GetStyle() & WS_CHILD, static_cast<DWORD>(WS_CHILD));
    EXPECT_EQ(child.GetDlgCtrlID(), 42);
    EXPECT_EQ(CWnd::FromHandlePermanent(child.m_hWnd), &child);
    EXPECT_EQ(child.GetParent(), &parent);

    mfc_test::Log().clear();
    EXPECT_TRUE(child.DestroyWindow());
    EXPECT_EQ(mfc_test::Joined(), "DESTROY PostNcDestroy");
    EXPECT_EQ(child.postNcDestroyCalls, 1);
    EXPECT_EQ(child.hwndInPostNcDestroy, nullptr) << "detached before PostNcDestroy";
    EXPECT_EQ(child.m_hWnd, nullptr);
}

TEST_F(CWndTest, SubclassWindowPresubclassesThenReplacesTheProcedure) {
    HWND raw = mfc_test::RawWindow(nullptr, 0, RECT{0, 0, 30, 30});
    WNDPROC original = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(raw, GWLP_WNDPROC));
    Recorder wnd;
    ASSERT_TRUE(wnd.SubclassWindow(raw));
    EXPECT_EQ(mfc_test::Joined(), "PreSubclassWindow");
    EXPECT_TRUE(wnd.permanentInPreSubclass);
    EXPECT_EQ(wnd.procInPreSubclass, original);
    EXPECT_EQ(reinterpret_cast<WNDPROC>(GetWindowLongPtrW(raw, GWLP_WNDPROC)), &AfxWndProc);

    Recorder second;
    EXPECT_FALSE(second.SubclassWindow(raw)) << "a window has one permanent object";
    EXPECT_FALSE(second.SubclassWindow(nullptr));

    EXPECT_EQ(wnd.UnsubclassWindow(), raw);
    EXPECT_EQ(reinterpret_cast<WNDPROC>(GetWindowLongPtrW(raw, GWLP_WNDPROC)), original);
    EXPECT_EQ(CWnd::FromHandlePermanent(raw), nullptr);
    DestroyWindow(raw);
}

TEST_F(CWndTest, ForeignWindowsGetTemporaryObjectsUntilTheLoopIdles) {
    HWND raw = mfc_test::RawWindow(nullptr, 0, RECT{0, 0, 30, 30});
    size_t before = zel::mfc::TemporaryWrapperCount();
    CWnd* temp = CWnd::FromHandle(raw);
    ASSERT_NE(temp, nullptr);
    EXPECT_EQ(temp->m_hWnd, raw);
    EXPECT_EQ(CWnd::FromHandle(raw), temp);
    EXPECT_EQ(CWnd::FromHandlePermanent(raw), nullptr);
    EXPECT_EQ(zel::mfc::TemporaryWrapperCount(), before + 1);
    PostMessageW(raw, WM_NULL, 0, 0);
    Desk().RunUntilIdle();
    EXPECT_EQ(zel::mfc::TemporaryWrapperCount(), 0u) << "the pump deleted the temporaries";

    CWnd owner;
    ASSERT_TRUE(owner.Attach(raw));
    EXPECT_EQ(CWnd::FromHandle(raw), &owner);
    EXPECT_EQ(owner.Detach(), raw);
    DestroyWindow(raw);
}

// Temporaries live as long as the window procedure that asked for them, even when the
// handler runs a nested message loop.
class NestedLoop : public CWnd {
public:
    bool stillSame = false;

protected:
    afx_msg LRESULT OnUser(WPARAM, LPARAM) {
        CWnd* temp = CWnd::FromHandle(reinterpret_cast<HWND>(GetDesktopWindow()));
        size_t count = zel::mfc::TemporaryWrapperCount();
        ::PostMessageW(m_hWnd, WM_NULL, 0, 0);
        zel::Desktop::Get().RunUntilIdle();
        stillSame = zel::mfc::TemporaryWrapperCount() == count && temp->m_hWnd == GetDesktopWindow();
        return 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(NestedLoop, CWnd)
    ON_MESSAGE(WM_USER, &NestedLoop::OnUser)
END_MESSAGE_MAP()

TEST_F(CWndTest, TemporariesSurviveANestedLoopInsideAHandler) {
    NestedLoop wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    wnd.SendMessage(WM_USER);
    EXPECT_TRUE(wnd.stillSame);
}

// A heap object that deletes itself when its window goes, as frames and modeless
// windows do.
class SelfDeleting : public CWnd {
public:
    static int alive;
    SelfDeleting() { ++alive; }
    ~SelfDeleting() override { --alive; }

protected:
    void PostNcDestroy() override { delete this; }
};
int SelfDeleting::alive = 0;

TEST_F(CWndTest, DestructionOrderAndSelfDeletingObjects) {
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr));
    auto* child = new SelfDeleting;
    ASSERT_TRUE(child->Create(nullptr, L"", 0, CRect(0, 0, 10, 10), &parent, 1));
    HWND childHwnd = child->m_hWnd;
    EXPECT_EQ(SelfDeleting::alive, 1);
    parent.DestroyWindow();
    EXPECT_EQ(SelfDeleting::alive, 0) << "destroying the parent destroys the child and its object";
    EXPECT_FALSE(IsWindow(childHwnd));

    HWND hwnd;
    {
        CWnd scoped;
        ASSERT_TRUE(scoped.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
        hwnd = scoped.m_hWnd;
    }
    EXPECT_FALSE(IsWindow(hwnd)) << "a bound object destroys its window";
}

class FailsCreate : public CWnd {
protected:
    afx_msg int OnCreate(LPCREATESTRUCT) { return -1; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(FailsCreate, CWnd)
    ON_WM_CREATE()
END_MESSAGE_MAP()

TEST_F(CWndTest, CreationFailures) {
    FailsCreate fails;
    EXPECT_FALSE(fails.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    EXPECT_EQ(fails.m_hWnd, nullptr);

    CWnd orphan;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(orphan.Create(nullptr, L"", WS_VISIBLE, CRect(0, 0, 5, 5), nullptr, 1));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("needs a parent"), std::string::npos);

    CWnd bad;
    EXPECT_FALSE(bad.CreateEx(0, L"NoSuchClass", L"", WS_POPUP, 0, 0, 5, 5, nullptr, nullptr));
    EXPECT_EQ(bad.m_hWnd, nullptr);
}

// A rectangle whose width does not fit 32 bits wraps (here to -2, which is no width) and
// the window manager clamps the rest.
TEST_F(CWndTest, CreateWithAnAbsurdRectangleWrapsTheSizeAndClampsThePosition) {
    CWnd parent, child;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr));
    ASSERT_TRUE(child.Create(nullptr, L"", 0, CRect(INT_MIN + 1, 5, INT_MAX, 4), &parent, 1));
    CRect rc;
    child.GetWindowRect(&rc);
    parent.ScreenToClient(&rc);
    EXPECT_EQ(rc, CRect(-32768, 5, -32768, 5));
}

// PreCreateWindow sees and may change what CreateWindowExW will get.
class Adjusts : public CWnd {
protected:
    BOOL PreCreateWindow(CREATESTRUCTW& cs) override {
        cs.style |= WS_DISABLED;
        cs.cx = 33;
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, nullptr, GetSysColorBrush(COLOR_WINDOW));
        return cs.lpszClass != nullptr;
    }
};

class Refuses : public CWnd {
protected:
    BOOL PreCreateWindow(CREATESTRUCTW&) override { return FALSE; }
};

TEST_F(CWndTest, PreCreateWindowAdjustsOrRefusesTheWindow) {
    Adjusts wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    EXPECT_FALSE(wnd.IsWindowEnabled());
    CRect rc;
    wnd.GetClientRect(&rc);
    EXPECT_EQ(rc.Width(), 33);
    EXPECT_EQ(GetClassLongPtrW(wnd.m_hWnd, GCLP_HBRBACKGROUND),
              reinterpret_cast<ULONG_PTR>(GetSysColorBrush(COLOR_WINDOW)));
    EXPECT_STREQ(AfxRegisterWndClass(CS_DBLCLKS, nullptr, GetSysColorBrush(COLOR_WINDOW)),
                 AfxRegisterWndClass(CS_DBLCLKS, nullptr, GetSysColorBrush(COLOR_WINDOW)));
    Refuses refuses;
    EXPECT_FALSE(refuses.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    EXPECT_EQ(refuses.m_hWnd, nullptr);
}

class Clicks : public CWnd {
protected:
    afx_msg void OnLButtonDown(UINT, CPoint) { Note("down"); }
    afx_msg void OnLButtonDblClk(UINT, CPoint) { Note("dblclk"); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Clicks, CWnd)
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
END_MESSAGE_MAP()

TEST_F(CWndTest, DefaultClassHasDoubleClicksAndNoBackgroundBrush) {
    Clicks wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 10, 10, 40, 40, nullptr, nullptr));
    EXPECT_TRUE(GetClassLongW(wnd.m_hWnd, GCL_STYLE) & CS_DBLCLKS);
    EXPECT_NE(GetClassLongPtrW(wnd.m_hWnd, GCLP_WNDPROC), 0u) << "the query itself works";
    EXPECT_EQ(GetClassLongPtrW(wnd.m_hWnd, GCLP_HBRBACKGROUND), 0u);
    Desk().Tap(20, 20);
    Desk().Tap(20, 20);
    EXPECT_EQ(mfc_test::Joined(), "down dblclk");
}

// The pre-translate walk: target first, then each parent with an object, up to the
// application's main window.
class Translator : public CWnd {
public:
    Translator(const char* name, bool eats) : name_(name), eats_(eats) {}

    BOOL PreTranslateMessage(MSG* msg) override {
        if (msg->message == WM_KEYDOWN) Note(std::string(name_) + ":pre");
        return msg->message == WM_KEYDOWN && eats_;
    }

protected:
    afx_msg void OnKeyDown(UINT, UINT, UINT) { Note(std::string(name_) + ":KEYDOWN"); }
    DECLARE_MESSAGE_MAP()

private:
    const char* name_;
    bool eats_;
};

BEGIN_MESSAGE_MAP(Translator, CWnd)
    ON_WM_KEYDOWN()
END_MESSAGE_MAP()

TEST_F(CWndTest, PreTranslateWalksFromTheTargetUpTheParents) {
    Translator top("top", false), middle("middle", false), leaf("leaf", false);
    ASSERT_TRUE(top.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 0, 100, 100, nullptr, nullptr));
    ASSERT_TRUE(middle.Create(nullptr, L"", WS_VISIBLE, CRect(0, 0, 50, 50), &top, 1));
    HWND foreign = mfc_test::RawWindow(middle.m_hWnd, 2, RECT{0, 0, 40, 40});
    ASSERT_TRUE(leaf.Create(nullptr, L"", WS_VISIBLE, CRect(0, 0, 20, 20), CWnd::FromHandle(foreign), 3));
    leaf.SetFocus();
    mfc_test::Log().clear();
    Desk().KeyDown(VK_RETURN);
    EXPECT_EQ(mfc_test::Joined(), "leaf:pre middle:pre top:pre leaf:KEYDOWN")
        << "windows without an object are passed over";

    mfc_test::Log().clear();
    leaf.SendMessage(WM_KEYDOWN, VK_RETURN, 0);
    EXPECT_EQ(mfc_test::Joined(), "leaf:KEYDOWN") << "sent messages do not pass through";

    Translator eater("eater", true), inner("inner", false);
    ASSERT_TRUE(eater.Create(nullptr, L"", WS_VISIBLE, CRect(50, 50, 90, 90), &top, 4));
    ASSERT_TRUE(inner.Create(nullptr, L"", WS_VISIBLE, CRect(0, 0, 20, 20), &eater, 5));
    inner.SetFocus();
    mfc_test::Log().clear();
    Desk().KeyDown(VK_SPACE);
    EXPECT_EQ(mfc_test::Joined(), "inner:pre eater:pre") << "consumed: not dispatched, not walked further";
}

TEST_F(CWndTest, TheMainWindowBoundsTheWalkAndSeesOtherTopLevelWindowsLast) {
    CWinApp app(L"walk");
    Translator owner("owner", false), main("main", false), other("other", false);
    ASSERT_TRUE(owner.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 0, 100, 100, nullptr, nullptr));
    // An owned popup: GetParent returns its owner, so only the main window stops the walk.
    ASSERT_TRUE(main.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 0, 90, 90, owner.m_hWnd, nullptr));
    ASSERT_TRUE(other.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 200, 0, 50, 50, nullptr, nullptr));
    Translator leaf("leaf", false);
    ASSERT_TRUE(leaf.Create(nullptr, L"", WS_VISIBLE, CRect(0, 0, 20, 20), &main, 3));
    app.m_pMainWnd = &main;
    leaf.SetFocus();
    mfc_test::Log().clear();
    Desk().KeyDown(VK_UP);
    EXPECT_EQ(mfc_test::Joined(), "leaf:pre main:pre leaf:KEYDOWN") << "the walk stops at the main window";

    other.SetFocus();
    mfc_test::Log().clear();
    Desk().KeyDown(VK_UP);
    EXPECT_EQ(mfc_test::Joined(), "other:pre main:pre other:KEYDOWN");
    app.m_pMainWnd = nullptr;
}

// The wrappers forward to the window functions; what is their own is text into a
// CString, the TRUE/FALSE of ModifyStyle, GetDlgItem's wrapper, and failing without a window.
TEST_F(CWndTest, WrappersWorkOnTheWindowAndFailWithoutOne) {
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, L"caption", WS_POPUP | WS_VISIBLE, 5, 6, 100, 80, nullptr, nullptr));
    CString text;
    parent.GetWindowText(text);
    EXPECT_STREQ(text, L"caption");
    EXPECT_TRUE(parent.ModifyStyle(0, WS_DISABLED));
    EXPECT_FALSE(parent.ModifyStyle(0, WS_DISABLED)) << "no change, FALSE";
    HWND item = mfc_test::RawWindow(parent.m_hWnd, 77, RECT{0, 0, 5, 5});
    EXPECT_EQ(parent.GetDlgItem(77)->m_hWnd, item);
    EXPECT_EQ(parent.GetDlgItem(78), nullptr);

    CWnd none;
    CRect untouched(1, 2, 3, 4);
    none.GetClientRect(&untouched);
    EXPECT_EQ(untouched, CRect(1, 2, 3, 4));
    EXPECT_EQ(none.SendMessage(WM_USER), 0);
    EXPECT_FALSE(none.DestroyWindow());
    EXPECT_EQ(none.GetParent(), nullptr);
}

}  // namespace
