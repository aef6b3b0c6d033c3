// CDialog: a dialog class from a script, its message map, data exchange and DoModal.
#include "dialog_fixture.h"

namespace {

using dialog_test::DialogTest;

const char kScript[] =
    "#include \"afxres.h\"\n"
    "#define IDD_PLAYER 200\n"
    "#define IDC_PLAY 201\n"
    "#define IDC_LOOP 202\n"
    "#define IDC_TITLE 203\n"
    "#define IDC_COUNT 204\n"
    "#define IDS_GREETING 210\n"
    "IDD_PLAYER DIALOGEX 0, 0, 200, 120\n"
    "STYLE DS_SETFONT | WS_POPUP | WS_VISIBLE\n"
    "FONT 8, \"Tahoma\"\n"
    "BEGIN\n"
    "    EDITTEXT        IDC_TITLE,4,4,100,12\n"
    "    EDITTEXT        IDC_COUNT,4,20,40,12\n"
    "    AUTOCHECKBOX    \"Loop\",IDC_LOOP,4,36,60,10\n"
    "    PUSHBUTTON      \"Play\",IDC_PLAY,4,60,50,14\n"
    "    DEFPUSHBUTTON   \"OK\",IDOK,90,100,50,14\n"
    "    PUSHBUTTON      \"Cancel\",IDCANCEL,145,100,50,14\n"
    "END\n"
    "STRINGTABLE\n"
    "BEGIN\n"
    "    IDS_GREETING \"Welcome aboard\"\n"
    "END\n";

std::vector<std::string>& Events() {
    static std::vector<std::string> events;
    return events;
}

// The play button as a control class of its own, bound by DDX_Control.
class CPlayButton : public CButton {
protected:
    afx_msg BOOL OnReflectedClick() {
        Events().push_back("button:reflected click");
        return FALSE;  // the dialog hears it too
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CPlayButton, CButton)
    ON_CONTROL_REFLECT_EX(BN_CLICKED, &CPlayButton::OnReflectedClick)
END_MESSAGE_MAP()

class CPlayerDlg : public CDialog {
public:
    CPlayerDlg() : CDialog(200) {}
    CPlayButton m_play;
    CString m_title = L"Intro";
    int m_count = 3;
    int m_loop = BST_CHECKED;
    HBRUSH m_brush = nullptr;

protected:
    void DoDataExchange(CDataExchange* dx) override {
        DDX_Control(dx, 201, m_play);
        DDX_Text(dx, 203, m_title);
        DDX_Text(dx, 204, m_count);
        DDX_Check(dx, 202, m_loop);
    }
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        Events().push_back("init");
        return TRUE;
    }
    void OnCancel() override {
        Events().push_back("cancel");
        CDialog::OnCancel();
    }
    afx_msg void OnPlay() { Events().push_back("dialog:play"); }
    afx_msg void OnLoop() { Events().push_back("dialog:loop"); }
    afx_msg LRESULT OnPing(WPARAM w, LPARAM) {
        Events().push_back("ping " + std::to_string(w));
        return 9;
    }
    afx_msg void OnPlayNotify(NMHDR* nm, LRESULT* result) {
        Events().push_back("notify " + std::to_string(nm->code));
        *result = 5;
    }
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* wnd, UINT ctlColor) {
        if (ctlColor == CTLCOLOR_DLG) return m_brush;
        return CDialog::OnCtlColor(dc, wnd, ctlColor);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CPlayerDlg, CDialog)
    ON_BN_CLICKED(201, &CPlayerDlg::OnPlay)
    ON_COMMAND(202, &CPlayerDlg::OnLoop)
    ON_MESSAGE(WM_APP + 1, &CPlayerDlg::OnPing)
    ON_NOTIFY(77, 201, &CPlayerDlg::OnPlayNotify)
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

class CDialogs : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Events().clear();
        module_ = Load(kScript);
        AfxSetResourceHandle(module_);
    }
    void TearDown() override {
        AfxSetResourceHandle(nullptr);
        DialogTest::TearDown();
    }
    HINSTANCE module_ = nullptr;
};

TEST_F(CDialogs, ModelessDialogRoutesItsMessageMapAndBindsItsControls) {
    CPlayerDlg dlg;
    dlg.m_brush = CreateSolidBrush(RGB(10, 20, 30));
    ASSERT_TRUE(dlg.Create(200u));
    EXPECT_EQ(Events(), (std::vector<std::string>{"init"}));
    EXPECT_EQ(CWnd::FromHandlePermanent(dlg.m_hWnd), &dlg);
    EXPECT_EQ(dlg.m_play.m_hWnd, ::GetDlgItem(dlg.m_hWnd, 201)) << "DDX_Control subclassed the item";
    EXPECT_EQ(CWnd::FromHandlePermanent(dlg.m_play.m_hWnd), &dlg.m_play);
    CString title;
    dlg.GetDlgItem(203)->GetWindowText(title);
    EXPECT_EQ(title, CString(L"Intro")) << "UpdateData(FALSE) from OnInitDialog";
    EXPECT_EQ(::IsDlgButtonChecked(dlg.m_hWnd, 202), static_cast<UINT>(BST_CHECKED));

    Events().clear();
    RECT r;
    dlg.m_play.GetWindowRect(&r);
    Desk().Tap((r.left + r.right) / 2, (r.top + r.bottom) / 2);
    EXPECT_EQ(Events(), (std::vector<std::string>{"button:reflected click", "dialog:play"}));
    Events().clear();
    ::SendMessageW(dlg.m_hWnd, WM_COMMAND, MAKEWPARAM(202, BN_CLICKED), 0);
    EXPECT_EQ(dlg.SendMessage(WM_APP + 1, 4), 9);
    NMHDR nm{dlg.m_play.m_hWnd, 201, 77};
    EXPECT_EQ(dlg.SendMessage(WM_NOTIFY, 201, reinterpret_cast<LPARAM>(&nm)), 5) << "the handler's *pResult";
    EXPECT_EQ(Events(), (std::vector<std::string>{"dialog:loop", "ping 4", "notify 77"}));
    // WM_ERASEBKGND asks WM_CTLCOLORDLG for its brush.
    EXPECT_EQ(dlg.SendMessage(WM_CTLCOLORDLG, 0, reinterpret_cast<LPARAM>(dlg.m_hWnd)),
              reinterpret_cast<LRESULT>(dlg.m_brush));
    Desk().RunUntilIdle();
    POINT centre{r.left - 2, r.top - 2};
    EXPECT_EQ(Desk().Pixel(centre.x, centre.y), RGB(10, 20, 30)) << "the dialog erased with OnCtlColor's brush";

    // Typed values come back with UpdateData(TRUE); a bad number fails the exchange.
    dlg.SetDlgItemText(203, L"Outro");
    dlg.SetDlgItemText(204, L"12");
    EXPECT_TRUE(dlg.UpdateData(TRUE));
    EXPECT_EQ(dlg.m_title, CString(L"Outro"));
    EXPECT_EQ(dlg.m_count, 12);
    dlg.SetDlgItemText(204, L"twelve");
    EXPECT_FALSE(dlg.UpdateData(TRUE));
    EXPECT_EQ(dlg.m_count, 12);
    dlg.DestroyWindow();
    DeleteObject(dlg.m_brush);
}

TEST_F(CDialogs, DoModalReturnsTheEndDialogValueAfterATourOfTaps) {
    dialog_test::ModalTour::Start({
        [](HWND dlg) { dialog_test::TapItem(dlg, 201); },
        [](HWND dlg) { dialog_test::TapItem(dlg, 202); },  // unchecks Loop
        [](HWND dlg) { dialog_test::TapItem(dlg, IDOK); },
    });
    CPlayerDlg dlg;
    EXPECT_EQ(dlg.DoModal(), IDOK);
    EXPECT_EQ(dlg.m_hWnd, nullptr) << "the window is gone, the object stays";
    EXPECT_EQ(dlg.m_loop, BST_UNCHECKED) << "OnOK exchanged the data";
    EXPECT_EQ(Events(), (std::vector<std::string>{"init", "button:reflected click", "dialog:play", "dialog:loop"}));
    EXPECT_EQ(zel::test::LiveWindows(), 0);
}

TEST_F(CDialogs, EscapeAndNothingToDoCancel) {
    dialog_test::ModalTour::Start({[](HWND) { zel::Desktop::Get().KeyDown(VK_ESCAPE); }});
    CPlayerDlg dlg;
    EXPECT_EQ(dlg.DoModal(), IDCANCEL);
    EXPECT_EQ(Events(), (std::vector<std::string>{"init", "cancel"}));
    CDialog missing(999u);
    EXPECT_EQ(missing.DoModal(), -1);
    EXPECT_FALSE(missing.Create(999u));
}

TEST_F(CDialogs, StringsLoadFromTheResourceHandle) {
    CString s(L"unchanged");
    EXPECT_TRUE(s.LoadString(210));
    EXPECT_EQ(s, CString(L"Welcome aboard"));
    EXPECT_FALSE(s.LoadString(211));
    EXPECT_EQ(s, CString(L"Welcome aboard")) << "a missing string leaves the text";
    AfxSetResourceHandle(nullptr);
    EXPECT_FALSE(s.LoadString(210)) << "the application's own module has no strings";
}

}  // namespace
