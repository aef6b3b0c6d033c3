// The path a ported application takes: a dialog from its resource script whose items are
// subclassed by library controls. A subclassed item must behave as the control created
// directly: the same pixels, the same notifications, the same state.
#include <CZELChkBox.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <unistd.h>

#include "support/control_test.h"

namespace {

using namespace zel::test;

constexpr COLORREF kUnchecked = RGB(250, 250, 250);
constexpr COLORREF kChecked = RGB(30, 160, 60);
constexpr UINT kMuteId = 301;

// The item's class is a plain one the application registers, as for any custom control: a
// Static without SS_NOTIFY lets taps through (HTTRANSPARENT), and with it the static's own
// STN_CLICKED would join the control's notification.
const char kScript[] =
    "#include \"afxres.h\"\n"
    "#define IDD_AUDIO 300\n"
    "#define IDC_MUTE 301\n"
    "IDD_AUDIO DIALOGEX 0, 0, 160, 80\n"
    "STYLE DS_SETFONT | DS_CONTROL | WS_CHILD | WS_VISIBLE\n"
    "FONT 8, \"Tahoma\"\n"
    "BEGIN\n"
    "    CONTROL         \"Mute\",IDC_MUTE,\"ZelItemHost\",WS_TABSTOP,4,4,100,20\n"
    "    DEFPUSHBUTTON   \"OK\",IDOK,100,60,50,14\n"
    "END\n";

class CAudioDlg : public CDialog {
public:
    CAudioDlg() : CDialog(300u) {}
    CZELChkBox m_mute;
    CString m_skin;
    std::vector<std::string> commands;

protected:
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        m_mute.SubclassDlgItem(kMuteId, this);
        m_mute.LoadSkin(m_skin, CString());
        return TRUE;
    }
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        commands.push_back("COMMAND(" + std::to_string(LOWORD(wParam)) + "," + std::to_string(HIWORD(wParam)) + ")");
        return CDialog::OnCommand(wParam, lParam);
    }
};

class DialogHost : public ControlTest {
protected:
    DialogHost() : ControlTest(CRect(0, 0, 700, 400)) {}
    void SetUp() override {
        ControlTest::SetUp();
        WNDCLASSW wc{};
        wc.lpfnWndProc = ::DefWindowProcW;
        wc.lpszClassName = L"ZelItemHost";
        ::RegisterClassW(&wc);
        rcPath_ = std::filesystem::temp_directory_path() / ("zel_dlghost_" + std::to_string(::getpid()) + ".rc");
        std::ofstream(rcPath_) << kScript;
        module_ = zel::LoadResourceModule(rcPath_.c_str());
        ASSERT_NE(module_, nullptr);
        AfxSetResourceHandle(module_);
    }
    void TearDown() override {
        dlg_.reset();
        direct_.reset();
        AfxSetResourceHandle(nullptr);
        zel::FreeResourceModule(module_);
        std::filesystem::remove(rcPath_);
        ControlTest::TearDown();
        ::UnregisterClassW(L"ZelItemHost", nullptr);
    }
    std::string Mark(const std::string& name, COLORREF face) {
        return skins.Draw(name, 20, 20, [=](HDC dc) {
            FillBox(dc, 0, 0, 20, 20, RGB(60, 60, 60));
            FillBox(dc, 2, 2, 18, 18, face);
        });
    }

    std::string checked_ = Mark("checked", kChecked);
    std::string unchecked_ = Mark("unchecked", kUnchecked);
    std::string back_ = skins.Striped("back", 2, 1, RGB(200, 220, 240), RGB(240, 230, 190), 1, true);
    std::filesystem::path rcPath_;
    HINSTANCE module_ = nullptr;
    std::unique_ptr<CAudioDlg> dlg_;
    std::unique_ptr<CZELChkBox> direct_;
};

TEST_F(DialogHost, SubclassedItemBehavesAsTheControlCreatedDirectly) {
    dlg_ = std::make_unique<CAudioDlg>();
    dlg_->m_skin = skins.Skin({"checked", "unchecked", "back"});
    ASSERT_TRUE(dlg_->Create(300u, &parent));
    HWND item = ::GetDlgItem(dlg_->m_hWnd, kMuteId);
    ASSERT_EQ(dlg_->m_mute.m_hWnd, item);
    CRect itemRect;
    ::GetClientRect(item, &itemRect);

    // The same control, same size and caption, created the usual way beside the dialog.
    direct_ = std::make_unique<CZELChkBox>();
    CRect place(400, 200, 400 + itemRect.Width(), 200 + itemRect.Height());
    ASSERT_TRUE(direct_->Create(nullptr, L"Mute", WS_VISIBLE, place, &parent, kMuteId));
    direct_->LoadSkin(skins.Skin({"checked", "unchecked", "back"}), CString());
    parent.Name(direct_->m_hWnd, "mute");
    // The dialog gave its item the template font; the direct one gets it too.
    direct_->SendMessage(WM_SETFONT, dlg_->SendMessage(WM_GETFONT), FALSE);
    EXPECT_EQ(::GetFocus(), item) << "WM_INITDIALOG's TRUE focused the first tab stop";
    ::SetFocus(parent.m_hWnd);  // neither has the focus for the first comparison
    desktop.RunUntilIdle();

    auto rows = [&](HWND hwnd) {
        std::string all;
        for (int y = 0; y < itemRect.Height(); y += 3) {
            POINT a = ScreenOf(hwnd, 0, y);
            all += Row(a.y, a.x, a.x + itemRect.Width()) + "\n";
        }
        return all;
    };
    EXPECT_EQ(rows(item), rows(direct_->m_hWnd));
    EXPECT_EQ(ShownAt(item, 10, 10), kUnchecked);

    // Each tapped in turn: checked, focused, the dialog (or the parent) told.
    TapAt(item, 10, 10);
    EXPECT_EQ(dlg_->commands, (std::vector<std::string>{"COMMAND(301,0)"}));
    EXPECT_EQ(dlg_->m_mute.GetCheck(), 1);
    EXPECT_EQ(ShownAt(item, 10, 10), kChecked);
    std::string itemLooks = rows(item);
    TapAt(direct_->m_hWnd, 10, 10);
    EXPECT_EQ(parent.Take(), "COMMAND(301,0,mute)");
    EXPECT_EQ(direct_->GetCheck(), 1);
    EXPECT_EQ(rows(direct_->m_hWnd), itemLooks);
}

}  // namespace
