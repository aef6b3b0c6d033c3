// The Win32 dialog manager: templates to windows at dialog-unit positions, WM_INITDIALOG,
// keyboard navigation, modal loops and the dialog item helpers.
#include "dialog_fixture.h"

#include "kernel/dialog_template.h"
#include "support/platform_rects.h"

namespace {

using dialog_test::ChildRect;
using dialog_test::ClassOf;
using dialog_test::DialogTest;
using dialog_test::ExpectedBaseUnits;
using dialog_test::ModalTour;
using dialog_test::Pixels;
using dialog_test::TapItem;
using zel::test::RectText;

const char kScript[] =
    "#include \"afxres.h\"\n"
    "#define IDD_FORM 100\n"
    "#define IDD_EMPTY 101\n"
    "#define IDD_MISSING 102\n"
    "#define IDD_SYSFONT 103\n"
    "#define IDS_TITLE 300\n"
    "IDD_FORM DIALOGEX 6, 10, 160, 100\n"
    "STYLE DS_SETFONT | WS_POPUP\n"
    "FONT 8, \"Tahoma\"\n"
    "BEGIN\n"
    "    LTEXT           \"Name\",IDC_STATIC,4,4,30,8\n"
    "    EDITTEXT        10,40,3,60,12\n"
    "    AUTORADIOBUTTON \"A\",20,4,20,30,10,WS_GROUP\n"
    "    AUTORADIOBUTTON \"B\",21,40,20,30,10,NOT WS_TABSTOP\n"
    "    AUTORADIOBUTTON \"C\",22,76,20,30,10,NOT WS_TABSTOP\n"
    "    AUTOCHECKBOX    \"Off\",30,4,36,40,10,WS_GROUP | WS_DISABLED\n"
    "    LISTBOX         40,4,50,60,30\n"
    "    COMBOBOX        41,70,50,60,30\n"
    "    SCROLLBAR       42,140,4,10,40\n"
    "    DEFPUSHBUTTON   \"OK\",IDOK,70,82,40,14\n"
    "    PUSHBUTTON      \"Cancel\",IDCANCEL,114,82,40,14\n"
    "    PUSHBUTTON      \"Twice\",IDCANCEL,4,82,40,14\n"
    "END\n"
    "IDD_EMPTY DIALOG 0, 0, 40, 20\n"
    "STYLE WS_POPUP | WS_VISIBLE\n"
    "BEGIN\n"
    "END\n"
    "IDD_MISSING DIALOG 0, 0, 40, 20\n"
    "BEGIN\n"
    "    CONTROL \"x\",1,\"NoSuchClass\",0,0,0,10,10\n"
    "    PUSHBUTTON \"y\",2,10,0,10,10\n"
    "END\n"
    "IDD_SYSFONT DIALOG 0, 0, 40, 20\n"
    "BEGIN\n"
    "    PUSHBUTTON \"y\",2,4,8,20,16\n"
    "END\n"
    "STRINGTABLE\n"
    "BEGIN\n"
    "    IDS_TITLE \"Form title\"\n"
    "END\n";

// What the dialog procedure saw, and what it answers.
struct ProcLog {
    std::vector<std::string> events;
    LPARAM initParam = 0;
    INT_PTR initResult = TRUE;
};
ProcLog& Log() {
    static ProcLog log;
    return log;
}

INT_PTR CALLBACK RecordingDlgProc(HWND dlg, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
        case WM_INITDIALOG:
            Log().initParam = lp;
            Log().events.push_back("INITDIALOG(" + std::to_string(GetDlgCtrlID(reinterpret_cast<HWND>(wp))) + ")");
            return Log().initResult;
        case WM_COMMAND:
            Log().events.push_back("COMMAND(" + std::to_string(LOWORD(wp)) + "," + std::to_string(HIWORD(wp)) + ")");
            if (LOWORD(wp) == IDOK || LOWORD(wp) == IDCANCEL) EndDialog(dlg, LOWORD(wp) == IDOK ? 1000 : 2000);
            return TRUE;
        default: return FALSE;
    }
}

class Dialogs : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Log() = ProcLog{};
        module_ = Load(kScript);
        owner_ = CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, 20, 30, 400, 300, nullptr, nullptr,
                                 nullptr, nullptr);
    }
    HWND Form() {
        return CreateDialogParamW(module_, MAKEINTRESOURCEW(100), owner_, RecordingDlgProc, 77);
    }
    HINSTANCE module_ = nullptr;
    HWND owner_ = nullptr;
};

TEST_F(Dialogs, ControlsSitAtTheirDialogUnitsInTheTemplateFont) {
    HWND dlg = Form();
    ASSERT_NE(dlg, nullptr);
    SIZE units = ExpectedBaseUnits(8, L"Tahoma");
    RECT dr;
    GetWindowRect(dlg, &dr);
    RECT expected = Pixels(units, 6, 10, 160, 100);
    OffsetRect(&expected, 20, 30);  // relative to the owner's client area
    EXPECT_EQ(RectText(dr), RectText(expected));
    // Every item's pixels against Windows' own: wine_layouts_test. Here the arithmetic.
    RECT want = Pixels(units, 70, 82, 40, 14), mapped{70, 82, 110, 96};
    EXPECT_EQ(RectText(ChildRect(GetDlgItem(dlg, IDOK))), RectText(want));
    ASSERT_TRUE(MapDialogRect(dlg, &mapped));  // each edge on its own: no size to add
    EXPECT_EQ(RectText(mapped), RectText(RECT{want.left, want.top, MulDiv(110, units.cx, 4), MulDiv(96, units.cy, 8)}));
    // The dialog and each control use the template's font.
    auto font = reinterpret_cast<HFONT>(SendMessageW(dlg, WM_GETFONT, 0, 0));
    EXPECT_NE(font, nullptr);
    EXPECT_EQ(reinterpret_cast<HFONT>(SendDlgItemMessageW(dlg, IDOK, WM_GETFONT, 0, 0)), font);
    DestroyWindow(dlg);
}

TEST_F(Dialogs, WithoutAFontTheSystemFontsBaseUnitsApply) {
    HWND dlg = CreateDialogParamW(module_, MAKEINTRESOURCEW(103), nullptr, nullptr, 0);
    ASSERT_NE(dlg, nullptr);
    LONG units = GetDialogBaseUnits();
    RECT r = ChildRect(GetDlgItem(dlg, 2));
    RECT want = Pixels(SIZE{LOWORD(units), HIWORD(units)}, 4, 8, 20, 16);
    EXPECT_EQ(RectText(r), RectText(want));
    EXPECT_GT(LOWORD(units), 0);
    EXPECT_GT(HIWORD(units), LOWORD(units));
    DestroyWindow(dlg);
}

TEST_F(Dialogs, ClassNamesAreWindowsSpellings) {
    HWND dlg = Form();
    EXPECT_EQ(ClassOf(dlg), "#32770");
    EXPECT_EQ(ClassOf(GetDlgItem(dlg, 10)), "Edit");
    EXPECT_EQ(ClassOf(GetDlgItem(dlg, 20)), "Button");
    EXPECT_EQ(ClassOf(GetDlgItem(dlg, 40)), "ListBox");
    EXPECT_EQ(ClassOf(GetDlgItem(dlg, 41)), "ComboBox");
    EXPECT_EQ(ClassOf(GetDlgItem(dlg, 42)), "ScrollBar");
    EXPECT_EQ(ClassOf(GetWindow(dlg, GW_CHILD)), "Static") << "the first item is first in z-order";
    EXPECT_EQ(GetDlgItem(dlg, IDCANCEL), GetWindow(GetDlgItem(dlg, IDOK), GW_HWNDNEXT))
        << "an identifier used twice finds the first item";
    DestroyWindow(dlg);
}

TEST_F(Dialogs, InitDialogGetsTheParamAndFocusGoesToTheFirstTabStop) {
    HWND dlg = Form();
    EXPECT_EQ(Log().initParam, 77);
    EXPECT_EQ(Log().events.at(0), "INITDIALOG(10)");
    EXPECT_EQ(GetFocus(), GetDlgItem(dlg, 10));
    EXPECT_FALSE(IsWindowVisible(dlg)) << "no WS_VISIBLE in the template";
    DestroyWindow(dlg);
    Log().initResult = FALSE;
    SetFocus(owner_);
    dlg = Form();
    EXPECT_EQ(GetFocus(), owner_) << "FALSE from WM_INITDIALOG leaves the focus alone";
    DestroyWindow(dlg);
}

TEST_F(Dialogs, TabAndArrowsMoveTheFocusAsTheDialogManagerDoes) {
    HWND dlg = Form();
    auto key = [&](UINT vk) {
        MSG m{GetFocus(), WM_KEYDOWN, vk, 0, 0, {}};
        EXPECT_TRUE(IsDialogMessageW(dlg, &m));
        return GetDlgCtrlID(GetFocus());
    };
    // Tab stops in template order, wrapping; items without WS_TABSTOP and disabled ones
    // are passed over.
    std::vector<int> tabs;
    for (int i = 0; i < 6; ++i) tabs.push_back(key(VK_TAB));
    EXPECT_EQ(tabs, (std::vector<int>{20, 41, IDOK, IDCANCEL, IDCANCEL, 10}));
    Desk().KeyDown(VK_SHIFT);
    EXPECT_EQ(key(VK_TAB), IDCANCEL) << "Shift+Tab goes back";
    Desk().KeyUp(VK_SHIFT);
    // Arrows stay inside the WS_GROUP group and click automatic radio buttons.
    SetFocus(GetDlgItem(dlg, 20));
    std::vector<int> arrows;
    for (UINT vk : {VK_RIGHT, VK_DOWN, VK_RIGHT, VK_LEFT}) arrows.push_back(key(vk));
    EXPECT_EQ(arrows, (std::vector<int>{21, 22, 20, 22}));
    EXPECT_EQ(IsDlgButtonChecked(dlg, 22), static_cast<UINT>(BST_CHECKED));
    EXPECT_EQ(IsDlgButtonChecked(dlg, 20), static_cast<UINT>(BST_UNCHECKED));
    DestroyWindow(dlg);
}

// A DS_CONTROL dialog inside another is a control parent: its items take part in the outer
// dialog's tab order where it stands, and its own IsDialogMessageW hands keys to the outer
// dialog; hidden, it takes no part.
TEST_F(Dialogs, AnEmbeddedDialogsItemsJoinTheOuterTabOrder) {
    HINSTANCE module = Load(
        "#include \"afxres.h\"\nIDD_OUTER DIALOG 0, 0, 200, 100\nSTYLE WS_POPUP\nBEGIN\n"
        "    PUSHBUTTON \"A\",1,4,4,40,14\n    PUSHBUTTON \"B\",2,4,80,40,14\nEND\n"
        "IDD_INNER DIALOG 50, 20, 100, 50\nSTYLE DS_CONTROL | WS_CHILD | WS_VISIBLE\nBEGIN\n"
        "    PUSHBUTTON \"C\",3,4,4,40,14\n    PUSHBUTTON \"D\",4,4,24,40,14\nEND\n");
    HWND outer = CreateDialogParamW(module, L"IDD_OUTER", owner_, nullptr, 0);
    HWND inner = CreateDialogParamW(module, L"IDD_INNER", outer, nullptr, 0);
    ASSERT_TRUE(outer && inner);
    EXPECT_TRUE(GetWindowLongW(inner, GWL_EXSTYLE) & WS_EX_CONTROLPARENT);
    SetWindowPos(inner, GetDlgItem(outer, 1), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(GetNextDlgTabItem(outer, nullptr, FALSE), GetDlgItem(outer, 1)) << "never the embedded dialog itself";
    auto tab = [&](HWND to, bool back) {
        if (back) Desk().KeyDown(VK_SHIFT);
        MSG m{GetFocus(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
        EXPECT_TRUE(IsDialogMessageW(to, &m));
        if (back) Desk().KeyUp(VK_SHIFT);
        return GetDlgCtrlID(GetFocus());
    };
    SetFocus(GetDlgItem(outer, 1));
    std::vector<int> order;
    for (HWND to : {outer, inner, inner, outer}) order.push_back(tab(to, false));
    EXPECT_EQ(order, (std::vector<int>{3, 4, 2, 1}));
    SetFocus(GetDlgItem(inner, 3));
    EXPECT_EQ(tab(inner, true), 1) << "Shift+Tab leaves the embedded dialog backwards";
    ShowWindow(inner, SW_HIDE);
    EXPECT_EQ(tab(outer, false), 2);
    DestroyWindow(outer);
}

TEST_F(Dialogs, EnterIsTheDefaultButtonAndEscapeIsCancel) {
    HWND dlg = Form();
    Log().events.clear();
    MSG enter{GetDlgItem(dlg, 10), WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    EXPECT_TRUE(IsDialogMessageW(dlg, &enter));
    MSG escape{GetDlgItem(dlg, 10), WM_KEYDOWN, VK_ESCAPE, 0, 0, {}};
    EXPECT_TRUE(IsDialogMessageW(dlg, &escape));
    SendMessageW(dlg, DM_SETDEFID, 20, 0);
    EXPECT_EQ(LOWORD(SendMessageW(dlg, DM_GETDEFID, 0, 0)), 20);
    EXPECT_TRUE(IsDialogMessageW(dlg, &enter));
    EXPECT_EQ(Log().events, (std::vector<std::string>{"COMMAND(1,0)", "COMMAND(2,0)", "COMMAND(20,0)"}));
    MSG foreign{owner_, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    EXPECT_FALSE(IsDialogMessageW(dlg, &foreign)) << "messages for other windows are not the dialog's";
    DestroyWindow(dlg);
}

TEST_F(Dialogs, DialogBoxReturnsTheEndDialogValueAfterATourOfTaps) {
    ModalTour& tour = ModalTour::Start({
        [](HWND dlg) { TapItem(dlg, 21); },
        [](HWND dlg) { TapItem(dlg, 30); },  // disabled: nothing
        [](HWND) { zel::Desktop::Get().KeyDown(VK_TAB); },
        [](HWND dlg) { TapItem(dlg, IDOK); },
    });
    INT_PTR result = DialogBoxParamW(module_, MAKEINTRESOURCEW(100), owner_, RecordingDlgProc, 5);
    EXPECT_EQ(result, 1000);
    EXPECT_EQ(tour.next, 4u) << "the dialog ended at the last tap";
    EXPECT_FALSE(tour.ownerEnabledDuring) << "the owner is disabled while the dialog runs";
    EXPECT_TRUE(IsWindowEnabled(owner_));
    EXPECT_EQ(Log().events, (std::vector<std::string>{"INITDIALOG(10)", "COMMAND(21,0)", "COMMAND(1,0)"}));
    EXPECT_EQ(zel::test::LiveWindows(), 1) << "only the owner is left";
}

TEST_F(Dialogs, AModalDialogWithNothingToWaitForIsCancelled) {
    EXPECT_EQ(DialogBoxParamW(module_, MAKEINTRESOURCEW(100), owner_, RecordingDlgProc, 0), 2000);
    // A procedure that ignores IDCANCEL still gets out.
    EXPECT_EQ(DialogBoxParamW(module_, MAKEINTRESOURCEW(101), owner_, nullptr, 0), IDCANCEL);
    EXPECT_EQ(DialogBoxParamW(module_, MAKEINTRESOURCEW(999), owner_, nullptr, 0), -1);
    EXPECT_EQ(DialogBoxParamW(nullptr, nullptr, owner_, nullptr, 0), -1);
}

TEST_F(Dialogs, EmptyDialogsAndMissingClassesBehaveAsOnWindows) {
    HWND empty = CreateDialogParamW(module_, MAKEINTRESOURCEW(101), nullptr, nullptr, 0);
    ASSERT_NE(empty, nullptr);
    EXPECT_TRUE(IsWindowVisible(empty)) << "WS_VISIBLE in the template shows a modeless dialog";
    EXPECT_EQ(GetWindow(empty, GW_CHILD), nullptr);
    int before = zel::test::LiveWindows();
    EXPECT_EQ(CreateDialogParamW(module_, MAKEINTRESOURCEW(102), nullptr, nullptr, 0), nullptr)
        << "an item of a missing class fails the dialog";
    EXPECT_EQ(zel::test::LiveWindows(), before) << "and nothing of it stays";
    EXPECT_FALSE(EndDialog(owner_, 1)) << "not a dialog";
    EXPECT_FALSE(EndDialog(nullptr, 1));
    RECT r{};
    EXPECT_FALSE(MapDialogRect(owner_, &r));
    DestroyWindow(empty);
}

TEST_F(Dialogs, InMemoryTemplatesWithDsNoFailCreateSkipMissingClasses) {
    zel::detail::DialogTemplate t;
    t.style = WS_POPUP | DS_NOFAILCREATE;
    t.cx = 40;
    t.cy = 20;
    zel::detail::DialogItem missing{L"NoSuchClass", L"x", 0, false, 1, WS_CHILD, 0, 0, 0, 0, 10, 10};
    zel::detail::DialogItem button{L"Button", L"y", 0, false, 2, WS_CHILD | WS_TABSTOP, 0, 0, 10, 0, 10, 10};
    t.items = {missing, button};
    std::vector<uint64_t> bytes = zel::detail::EncodeDialogTemplate(t);
    HWND dlg = CreateDialogIndirectParamW(nullptr, reinterpret_cast<LPCDLGTEMPLATEW>(bytes.data()), nullptr, nullptr, 0);
    ASSERT_NE(dlg, nullptr);
    EXPECT_EQ(GetDlgItem(dlg, 1), nullptr);
    EXPECT_NE(GetDlgItem(dlg, 2), nullptr);
    EXPECT_EQ(CreateDialogIndirectParamW(nullptr, nullptr, nullptr, nullptr, 0), nullptr);
    DestroyWindow(dlg);
}

TEST_F(Dialogs, ItemHelpersReachTheItemsByIdentifier) {
    HWND dlg = Form();
    EXPECT_TRUE(SetDlgItemTextW(dlg, 10, L"typed"));
    wchar_t buf[16];
    EXPECT_EQ(GetDlgItemTextW(dlg, 10, buf, 16), 5u);
    EXPECT_STREQ(buf, L"typed");
    EXPECT_EQ(GetDlgItemTextW(dlg, 10, buf, 3), 2u) << "truncated to the buffer";
    EXPECT_EQ(GetDlgItemTextW(dlg, 999, buf, 16), 0u);
    EXPECT_EQ(buf[0], 0);
    EXPECT_TRUE(SetDlgItemInt(dlg, 10, static_cast<UINT>(-42), TRUE));
    BOOL ok = FALSE;
    EXPECT_EQ(static_cast<int>(GetDlgItemInt(dlg, 10, &ok, TRUE)), -42);
    EXPECT_TRUE(ok);
    EXPECT_EQ(GetDlgItemInt(dlg, 10, &ok, FALSE), 0u);
    EXPECT_FALSE(ok) << "a negative number is no unsigned value";
    EXPECT_TRUE(CheckDlgButton(dlg, 30, BST_CHECKED));
    EXPECT_EQ(IsDlgButtonChecked(dlg, 30), static_cast<UINT>(BST_CHECKED));
    EXPECT_EQ(SendDlgItemMessageW(dlg, 30, BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_TRUE(CheckRadioButton(dlg, 20, 22, 21));
    EXPECT_EQ(IsDlgButtonChecked(dlg, 21), static_cast<UINT>(BST_CHECKED));
    EXPECT_EQ(IsDlgButtonChecked(dlg, 20), 0u);
    EXPECT_FALSE(CheckDlgButton(dlg, 999, BST_CHECKED));
    EXPECT_EQ(SendDlgItemMessageW(dlg, 999, BM_GETCHECK, 0, 0), 0);
    DestroyWindow(dlg);
}

TEST_F(Dialogs, PropertiesAndStrings) {
    int a = 0, b = 0;
    EXPECT_TRUE(SetPropW(owner_, L"Skin", &a));
    EXPECT_TRUE(SetPropW(owner_, MAKEINTRESOURCEW(7), &b));
    EXPECT_EQ(GetPropW(owner_, L"SKIN"), &a) << "names compare as atoms do";
    EXPECT_TRUE(SetPropW(owner_, L"skin", &b));
    EXPECT_EQ(GetPropW(owner_, L"Skin"), &b);
    EXPECT_EQ(RemovePropW(owner_, L"Skin"), &b);
    EXPECT_EQ(GetPropW(owner_, L"Skin"), nullptr);
    EXPECT_EQ(GetPropW(owner_, MAKEINTRESOURCEW(7)), &b);
    EXPECT_FALSE(SetPropW(nullptr, L"x", &a));
    EXPECT_EQ(GetPropW(owner_, nullptr), nullptr);

    wchar_t buf[32];
    EXPECT_EQ(LoadStringW(module_, 300, buf, 32), 10);
    EXPECT_STREQ(buf, L"Form title");
    EXPECT_EQ(LoadStringW(module_, 300, buf, 5), 4);
    EXPECT_STREQ(buf, L"Form");
    const wchar_t* direct = nullptr;
    EXPECT_EQ(LoadStringW(module_, 300, reinterpret_cast<LPWSTR>(&direct), 0), 10);
    EXPECT_EQ(std::wstring(direct, 10), L"Form title");
    EXPECT_EQ(LoadStringW(module_, 301, buf, 32), 0);
    EXPECT_EQ(LoadStringW(reinterpret_cast<HINSTANCE>(0x1234), 300, buf, 32), 0);
    EXPECT_EQ(LoadStringW(module_, 300, nullptr, 32), 0);
}

}  // namespace
