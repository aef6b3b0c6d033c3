// Reflection: WM_DRAWITEM to an owner-drawn CButton's DrawItem, control notifications
// offered to the control before its parent, scroll messages to the scroll bar object.
#include <commctrl.h>

#include "window_fixture.h"

namespace {

using mfc_test::Note;
using Reflection = mfc_test::WindowTest;

std::string Flags(UINT action, UINT state) {
    std::string s;
    s += action & ODA_DRAWENTIRE ? "E" : "";
    s += action & ODA_SELECT ? "S" : "";
    s += action & ODA_FOCUS ? "F" : "";
    s += "/";
    s += state & ODS_SELECTED ? "sel" : "";
    s += state & ODS_FOCUS ? "foc" : "";
    s += state & ODS_DISABLED ? "dis" : "";
    return s;
}

class SkinButton : public CButton {
public:
    void DrawItem(LPDRAWITEMSTRUCT dis) override {
        EXPECT_EQ(dis->CtlType, static_cast<UINT>(ODT_BUTTON));
        EXPECT_EQ(dis->hwndItem, m_hWnd);
        EXPECT_EQ(CRect(dis->rcItem), CRect(0, 0, 40, 20));
        Note("DrawItem(" + Flags(dis->itemAction, dis->itemState) + ")");
    }
};

// A parent with no map of its own: CWnd's handlers reflect.
TEST_F(Reflection, OwnerDrawButtonDrawsItselfWithTheStateFlags) {
    CWnd parent;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr));
    SkinButton button;
    ASSERT_TRUE(button.Create(L"ok", WS_VISIBLE | BS_OWNERDRAW, CRect(10, 10, 50, 30), &parent, 7));
    Desk().RunUntilIdle();
    EXPECT_EQ(mfc_test::Joined(), "DrawItem(E/)");

    mfc_test::Log().clear();
    Desk().PointerDown(20, 20);
    EXPECT_NE(mfc_test::Joined().find("DrawItem(S/selfoc)"), std::string::npos) << mfc_test::Joined();
    Desk().PointerUp(20, 20);
    mfc_test::Log().clear();
    button.EnableWindow(FALSE);
    Desk().RunUntilIdle();
    EXPECT_NE(mfc_test::Joined().find("/dis)"), std::string::npos) << mfc_test::Joined();
}

class DrawingParent : public CWnd {
public:
    bool callBase = true;

protected:
    afx_msg void OnDrawItem(int id, LPDRAWITEMSTRUCT dis) {
        Note("parent:DRAWITEM(" + std::to_string(id) + ")");
        if (callBase) CWnd::OnDrawItem(id, dis);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DrawingParent, CWnd)
    ON_WM_DRAWITEM()
END_MESSAGE_MAP()

TEST_F(Reflection, AParentsOwnDrawItemHandlerDecidesWhetherToReflect) {
    DrawingParent parent;
    ASSERT_TRUE(parent.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr));
    SkinButton button;
    ASSERT_TRUE(button.Create(L"", WS_VISIBLE | BS_OWNERDRAW, CRect(10, 10, 50, 30), &parent, 7));
    Desk().RunUntilIdle();
    EXPECT_EQ(mfc_test::Joined(), "parent:DRAWITEM(7) DrawItem(E/)");
    parent.callBase = false;
    mfc_test::Log().clear();
    button.Invalidate();
    Desk().RunUntilIdle();
    EXPECT_EQ(mfc_test::Joined(), "parent:DRAWITEM(7)");
}

// Control notifications: the child's reflect entries come first.
class ClickChild : public CButton {
protected:
    afx_msg void OnClicked() { Note("child:reflect"); }
    afx_msg void OnNotifyClick(NMHDR*, LRESULT* result) {
        Note("child:NM_CLICK");
        *result = 11;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ClickChild, CButton)
    ON_CONTROL_REFLECT(BN_CLICKED, &ClickChild::OnClicked)
    ON_NOTIFY_REFLECT(NM_CLICK, &ClickChild::OnNotifyClick)
END_MESSAGE_MAP()

class ExChild : public CButton {
protected:
    afx_msg BOOL OnClickedEx() {
        Note("child:reflectEx");
        return FALSE;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ExChild, CButton)
    ON_CONTROL_REFLECT_EX(BN_CLICKED, &ExChild::OnClickedEx)
END_MESSAGE_MAP()

class Dialog : public CWnd {
protected:
    afx_msg void OnOk() { Note("parent:BN_CLICKED"); }
    afx_msg void OnOkDouble() { Note("parent:BN_DOUBLECLICKED"); }
    afx_msg void OnCommandRange(UINT id) { Note("parent:COMMAND(" + std::to_string(id) + ")"); }
    afx_msg void OnPadTapped() { Note("parent:pad tapped"); }
    afx_msg void OnNotifyClick(NMHDR* hdr, LRESULT* result) {
        Note("parent:NM_CLICK(" + std::to_string(hdr->idFrom) + ")");
        *result = 22;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Dialog, CWnd)
    ON_BN_CLICKED(1, &Dialog::OnOk)
    ON_BN_DOUBLECLICKED(1, &Dialog::OnOkDouble)
    ON_COMMAND_RANGE(10, 19, &Dialog::OnCommandRange)
    ON_CONTROL(7, 30, &Dialog::OnPadTapped)  // a custom control's own notification code
    ON_NOTIFY(NM_CLICK, 1, &Dialog::OnNotifyClick)
    ON_NOTIFY(NM_CLICK, 2, &Dialog::OnNotifyClick)
END_MESSAGE_MAP()

TEST_F(Reflection, TheChildsReflectHandlerPreemptsTheParentsClickHandler) {
    Dialog dialog;
    ASSERT_TRUE(dialog.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 100, nullptr, nullptr));
    CButton plain;
    ClickChild reflecting;
    ExChild both;
    ASSERT_TRUE(plain.Create(L"", WS_VISIBLE, CRect(0, 0, 40, 20), &dialog, 1));
    ASSERT_TRUE(reflecting.Create(L"", WS_VISIBLE, CRect(50, 0, 90, 20), &dialog, 1));
    ASSERT_TRUE(both.Create(L"", WS_VISIBLE, CRect(100, 0, 140, 20), &dialog, 1));
    Desk().RunUntilIdle();

    struct Case {
        CWnd* button;
        const char* want;
    } cases[] = {
        {&plain, "parent:BN_CLICKED"},
        {&reflecting, "child:reflect"},
        {&both, "child:reflectEx parent:BN_CLICKED"},
    };
    for (const Case& c : cases) {
        mfc_test::Log().clear();
        CRect rc;
        c.button->GetWindowRect(&rc);
        Desk().Tap(rc.left + 5, rc.top + 5);
        EXPECT_EQ(mfc_test::Joined(), c.want);
    }

    CButton ranged;
    ASSERT_TRUE(ranged.Create(L"", WS_VISIBLE, CRect(150, 0, 190, 20), &dialog, 12));
    Desk().RunUntilIdle();
    mfc_test::Log().clear();
    Desk().Tap(155, 5);
    EXPECT_EQ(mfc_test::Joined(), "parent:COMMAND(12)") << "ON_COMMAND entries catch BN_CLICKED (code 0)";

    mfc_test::Log().clear();
    dialog.SendMessage(WM_COMMAND, MAKEWPARAM(1, BN_DOUBLECLICKED), reinterpret_cast<LPARAM>(plain.m_hWnd));
    dialog.SendMessage(WM_COMMAND, MAKEWPARAM(12, 0), 0);
    dialog.SendMessage(WM_COMMAND, MAKEWPARAM(20, 0), 0);
    HWND pad = mfc_test::RawWindow(dialog.m_hWnd, 30, RECT{200, 0, 210, 10});
    dialog.SendMessage(WM_COMMAND, MAKEWPARAM(30, 7), reinterpret_cast<LPARAM>(pad));
    dialog.SendMessage(WM_COMMAND, MAKEWPARAM(30, 8), reinterpret_cast<LPARAM>(pad));
    EXPECT_EQ(mfc_test::Joined(), "parent:BN_DOUBLECLICKED parent:COMMAND(12) parent:pad tapped");
}

TEST_F(Reflection, NotificationsReflectWithTheirResult) {
    Dialog dialog;
    ASSERT_TRUE(dialog.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 100, nullptr, nullptr));
    ClickChild reflecting;
    ASSERT_TRUE(reflecting.Create(L"", WS_VISIBLE, CRect(0, 0, 40, 20), &dialog, 1));
    HWND foreign = mfc_test::RawWindow(dialog.m_hWnd, 2, RECT{50, 0, 60, 10});

    NMHDR hdr{reflecting.m_hWnd, 1, static_cast<UINT>(NM_CLICK)};
    EXPECT_EQ(dialog.SendMessage(WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&hdr)), 11);
    NMHDR other{foreign, 2, static_cast<UINT>(NM_CLICK)};
    EXPECT_EQ(dialog.SendMessage(WM_NOTIFY, 2, reinterpret_cast<LPARAM>(&other)), 22);
    NMHDR unknown{foreign, 3, static_cast<UINT>(NM_CLICK)};
    EXPECT_EQ(dialog.SendMessage(WM_NOTIFY, 3, reinterpret_cast<LPARAM>(&unknown)), 0);
    EXPECT_EQ(dialog.SendMessage(WM_NOTIFY, 3, 0), 0);
    EXPECT_EQ(mfc_test::Joined(), "child:NM_CLICK parent:NM_CLICK(2)");
}

// A skinned scroll bar is a plain CWnd that sends WM_VSCROLL with its own handle.
class SkinScroll : public CWnd {
public:
    void Send(UINT code, UINT pos) {
        ::SendMessageW(::GetParent(m_hWnd), WM_VSCROLL, MAKEWPARAM(code, pos), reinterpret_cast<LPARAM>(m_hWnd));
    }

protected:
    afx_msg void VScroll(UINT code, UINT pos) {
        Note("bar:reflected(" + std::to_string(code) + "," + std::to_string(pos) + ")");
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(SkinScroll, CWnd)
    ON_WM_VSCROLL_REFLECT()
END_MESSAGE_MAP()

class ListHost : public CWnd {
public:
    bool handle = true;
    HWND seen = nullptr;

protected:
    afx_msg void OnVScroll(UINT code, UINT pos, CScrollBar* bar) {
        if (!handle) return CWnd::OnVScroll(code, pos, bar);
        seen = bar ? bar->m_hWnd : nullptr;
        Note("host:VSCROLL(" + std::to_string(code) + "," + std::to_string(pos) + ")");
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ListHost, CWnd)
    ON_WM_VSCROLL()
END_MESSAGE_MAP()

TEST_F(Reflection, ScrollMessagesReachTheParentOrReflectToTheBar) {
    ListHost host;
    ASSERT_TRUE(host.CreateEx(0, nullptr, L"", WS_POPUP | WS_VISIBLE, 0, 0, 100, 100, nullptr, nullptr));
    SkinScroll bar;
    ASSERT_TRUE(bar.Create(nullptr, L"", WS_VISIBLE, CRect(90, 0, 100, 100), &host, 5));
    bar.Send(SB_THUMBTRACK, 33);
    EXPECT_EQ(host.seen, bar.m_hWnd);
    host.handle = false;
    bar.Send(SB_LINEDOWN, 0);
    EXPECT_EQ(mfc_test::Joined(), "host:VSCROLL(5,33) bar:reflected(1,0)");
}

}  // namespace
