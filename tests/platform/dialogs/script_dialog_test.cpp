// Dialog templates and string tables in resource scripts: what each statement produces and
// the memory form. Their one-line errors are with the other broken scripts
// (mfc/resource_script_test.cpp).
#include <gtest/gtest.h>
#include <windows.h>

#include "dialog_fixture.h"
#include "kernel/dialog_template.h"
#include "kernel/rc/platform_headers.h"
#include "kernel/resource_script.h"

namespace {

using zel::detail::DialogItem;
using zel::detail::DialogTemplate;
using zel::detail::ResourceScript;

// Scripts read from memory: "<name>" -> text.
std::optional<ResourceScript> Parse(const std::string& rc, std::string* error,
                                    const std::string& header = std::string()) {
    return zel::detail::ParseResourceScript(
        "mem/app.rc", error, [&](const std::string& path) -> std::optional<std::string> {
            if (path == "mem/app.rc") return rc;
            if (path == "mem/resource.h" && !header.empty()) return header;
            return std::nullopt;
        });
}

const char kHeader[] =
    "#define IDD_SETTINGS 101\n"
    "#define IDC_NAME 1001\n"
    "#define IDC_LIST 1002\n"
    "#define IDC_AUTO 1003\n"
    "#define IDS_HELLO 200\n"
    "#define IDS_PATH 201\n";

const char kScript[] =
    "#include \"resource.h\"\n"
    "#include \"afxres.h\"\n"
    "LANGUAGE LANG_ENGLISH, SUBLANG_ENGLISH_US\n"
    "IDD_SETTINGS DIALOGEX 10, 20, 200, 120\n"
    "STYLE DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_VISIBLE\n"
    "EXSTYLE WS_EX_CONTROLPARENT\n"
    "CAPTION \"Settings\"\n"
    "FONT 9, \"Tahoma\", 700, 1, 0x86\n"
    "BEGIN\n"
    "    LTEXT           \"&Name:\",IDC_STATIC,7,7,40,8\n"
    "    RTEXT           \"r\",IDC_STATIC,7,17,40,8,NOT WS_GROUP\n"
    "    CTEXT           \"c\",IDC_STATIC,7,27,40,8\n"
    "    EDITTEXT        IDC_NAME,50,5,100,12,ES_AUTOHSCROLL\n"
    "    LISTBOX         IDC_LIST,7,40,80,50,LBS_SORT | WS_VSCROLL\n"
    "    COMBOBOX        1004,90,40,80,50,CBS_DROPDOWNLIST |\n"
    "                    WS_VSCROLL\n"
    "    AUTOCHECKBOX    \"Auto\",IDC_AUTO,90,60,50,10\n"
    "    CHECKBOX        \"Plain\",1005,90,70,50,10\n"
    "    GROUPBOX        \"Group\",IDC_STATIC,5,95,100,20\n"
    "    SCROLLBAR       1006,150,20,10,60,SBS_VERT\n"
    "    CONTROL         \"Custom\",1007,\"ZelCustom\",WS_TABSTOP | 0x10,120,95,40,14,WS_EX_STATICEDGE\n"
    "    CONTROL         \"\",1008,BUTTON,BS_OWNERDRAW,160,95,20,14\n"
    "    DEFPUSHBUTTON   \"OK\",IDOK,143,100,50,14\n"
    "    PUSHBUTTON      \"Cancel\",IDCANCEL,143,80,50,14,NOT WS_TABSTOP\n"
    "END\n"
    "2 DIALOG 0, 0, 50, 30\n"
    "BEGIN\n"
    "END\n"
    "STRINGTABLE\n"
    "BEGIN\n"
    "    IDS_HELLO \"Hello,\\tworld\\n\"\n"
    "    IDS_PATH, \"C:\\\\dir\\\\\"\"x\"\"\"\n"
    "    7 \"\\x41\\102\"\n"
    "END\n"
    "LANGUAGE LANG_GERMAN, SUBLANG_GERMAN\n"
    "STRINGTABLE\n"
    "BEGIN\n"
    "    IDS_HELLO \"Hallo\"\n"
    "    8 \"nur deutsch\"\n"
    "END\n";

const ResourceScript& Script() {
    static std::optional<ResourceScript> script = [] {
        std::string error;
        auto s = Parse(kScript, &error, kHeader);
        EXPECT_TRUE(s) << error;
        return s;
    }();
    return *script;
}

TEST(ScriptDialogs, TemplateHeaderTakesStyleCaptionAndFont) {
    const DialogTemplate& d = Script().dialogsById.at(101);
    EXPECT_TRUE(d.extended);
    EXPECT_EQ(d.style, static_cast<uint32_t>(DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_VISIBLE | WS_CAPTION))
        << "CAPTION adds WS_CAPTION";
    EXPECT_EQ(d.exStyle, static_cast<uint32_t>(WS_EX_CONTROLPARENT));
    EXPECT_EQ(d.caption, L"Settings");
    EXPECT_EQ((std::vector<int>{d.x, d.y, d.cx, d.cy}), (std::vector<int>{10, 20, 200, 120}));
    EXPECT_TRUE(d.hasFont);
    EXPECT_EQ(d.pointSize, 9);
    EXPECT_EQ(d.typeface, L"Tahoma");
    EXPECT_EQ(d.weight, 700);
    EXPECT_EQ(d.italic, 1);
    EXPECT_EQ(d.charset, 0x86);
}

TEST(ScriptDialogs, ADialogWithoutStyleOrControlsGetsTheDefaults) {
    const DialogTemplate& d = Script().dialogsById.at(2);
    EXPECT_FALSE(d.extended);
    EXPECT_EQ(d.style, static_cast<uint32_t>(WS_POPUP | WS_BORDER | WS_SYSMENU));
    EXPECT_TRUE(d.items.empty());
}

TEST(ScriptDialogs, ControlStatementsGetTheirClassAndDefaultStyles) {
    struct Row {
        const wchar_t* cls;
        int id;
        uint32_t style;
        uint32_t exStyle;
        int x, y, cx, cy;
    };
    const uint32_t kBase = WS_CHILD | WS_VISIBLE;
    const Row rows[] = {
        {L"Static", -1, kBase | SS_LEFT | WS_GROUP, 0, 7, 7, 40, 8},
        {L"Static", -1, kBase | SS_RIGHT, 0, 7, 17, 40, 8},  // NOT takes a default away
        {L"Static", -1, kBase | SS_CENTER | WS_GROUP, 0, 7, 27, 40, 8},
        {L"Edit", 1001, kBase | ES_LEFT | WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, 0, 50, 5, 100, 12},
        {L"ListBox", 1002, kBase | LBS_NOTIFY | WS_BORDER | LBS_SORT | WS_VSCROLL, 0, 7, 40, 80, 50},
        {L"ComboBox", 1004, kBase | CBS_DROPDOWNLIST | WS_TABSTOP | WS_VSCROLL, 0, 90, 40, 80, 50},
        {L"Button", 1003, kBase | BS_AUTOCHECKBOX | WS_TABSTOP, 0, 90, 60, 50, 10},
        {L"Button", 1005, kBase | BS_CHECKBOX | WS_TABSTOP, 0, 90, 70, 50, 10},
        {L"Button", -1, kBase | BS_GROUPBOX, 0, 5, 95, 100, 20},
        {L"ScrollBar", 1006, kBase | SBS_VERT, 0, 150, 20, 10, 60},
        {L"ZelCustom", 1007, kBase | WS_TABSTOP | 0x10, WS_EX_STATICEDGE, 120, 95, 40, 14},
        {L"Button", 1008, kBase | BS_OWNERDRAW, 0, 160, 95, 20, 14},
        {L"Button", IDOK, kBase | BS_DEFPUSHBUTTON | WS_TABSTOP, 0, 143, 100, 50, 14},
        {L"Button", IDCANCEL, kBase | BS_PUSHBUTTON, 0, 143, 80, 50, 14},
    };
    const std::vector<DialogItem>& items = Script().dialogsById.at(101).items;
    ASSERT_EQ(items.size(), std::size(rows));
    for (size_t i = 0; i < items.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(items[i].className, rows[i].cls);
        EXPECT_EQ(items[i].id, rows[i].id);
        EXPECT_EQ(items[i].style, rows[i].style);
        EXPECT_EQ(items[i].exStyle, rows[i].exStyle);
        EXPECT_EQ((std::vector<int>{items[i].x, items[i].y, items[i].cx, items[i].cy}),
                  (std::vector<int>{rows[i].x, rows[i].y, rows[i].cx, rows[i].cy}));
    }
    EXPECT_EQ(items[0].text, L"&Name:");
}

TEST(ScriptDialogs, StringTablesApplyTextEscapesAndTheFirstLanguageWins) {
    const auto& s = Script().strings;
    EXPECT_EQ(s.at(200), L"Hello,\tworld\n");
    EXPECT_EQ(s.at(201), L"C:\\dir\\\"x\"");
    EXPECT_EQ(s.at(7), L"AB") << "hex and octal escapes";
    EXPECT_EQ(s.at(8), L"nur deutsch") << "a string only one language has is still there";
    EXPECT_EQ(s.size(), 4u);
}

// The framework header's constants are the C++ headers' values.
TEST(ScriptDialogs, PlatformHeaderAgreesWithTheWin32Headers) {
    struct Name {
        const char* name;
        uint32_t value;
    };
    const Name names[] = {{"WS_POPUP", WS_POPUP},       {"WS_CHILD", WS_CHILD},         {"WS_TABSTOP", WS_TABSTOP},
                          {"WS_GROUP", WS_GROUP},       {"DS_SETFONT", DS_SETFONT},     {"DS_CENTER", DS_CENTER},
                          {"BS_DEFPUSHBUTTON", BS_DEFPUSHBUTTON}, {"BS_OWNERDRAW", BS_OWNERDRAW},
                          {"SS_BITMAP", SS_BITMAP},     {"ES_AUTOHSCROLL", ES_AUTOHSCROLL},
                          {"LBS_STANDARD", static_cast<uint32_t>(LBS_STANDARD)},
                          {"CBS_DROPDOWNLIST", CBS_DROPDOWNLIST}, {"SBS_VERT", SBS_VERT},
                          {"IDCANCEL", IDCANCEL},       {"IDC_STATIC", static_cast<uint32_t>(IDC_STATIC)},
                          {"WS_EX_CONTROLPARENT", WS_EX_CONTROLPARENT},
                          // The SDK's value: caption, system menu, sizing frame, both boxes.
                          {"WS_OVERLAPPEDWINDOW", 0x00CF0000u}};
    for (const Name& n : names) {
        std::string rc = std::string("#include <windows.h>\nSTRINGTABLE BEGIN 1 \"x\" END\n1 DIALOG 0,0,1,1 STYLE ") +
                         n.name + " BEGIN END\n";
        std::string error;
        auto s = Parse(rc, &error);
        ASSERT_TRUE(s) << n.name << ": " << error;
        EXPECT_EQ(s->dialogsById.at(1).style, n.value) << n.name;
    }
}

TEST(ScriptDialogs, MemoryFormRoundTripsBothTemplateKinds) {
    for (unsigned id : {101u, 2u}) {
        const DialogTemplate& d = Script().dialogsById.at(id);
        std::vector<uint64_t> bytes = zel::detail::EncodeDialogTemplate(d);
        DialogTemplate back = zel::detail::DecodeDialogTemplate(bytes.data());
        EXPECT_EQ(back.extended, d.extended);
        EXPECT_EQ(back.style, d.style);
        EXPECT_EQ(back.caption, d.caption);
        EXPECT_EQ(back.typeface, d.typeface);
        EXPECT_EQ(back.pointSize, d.pointSize);
        ASSERT_EQ(back.items.size(), d.items.size());
        for (size_t i = 0; i < d.items.size(); ++i) {
            EXPECT_EQ(back.items[i].className, d.items[i].className) << i;
            EXPECT_EQ(back.items[i].id, d.items[i].id) << i;
            EXPECT_EQ(back.items[i].style, d.items[i].style) << i;
            EXPECT_EQ(back.items[i].text, d.items[i].text) << i;
            EXPECT_EQ(back.items[i].cy, d.items[i].cy) << i;
        }
    }
    // Text ends at its first NUL in the memory form ("\0" and "\x" escapes can put one in
    // a caption): what follows is dropped, and the items after it still read.
    DialogTemplate nul = Script().dialogsById.at(101);
    nul.caption = std::wstring(L"Clock\0more", 10);
    nul.typeface = std::wstring(L"Tahoma\0x", 8);
    nul.menu = std::wstring(L"\0menu", 5);
    DialogTemplate back = zel::detail::DecodeDialogTemplate(zel::detail::EncodeDialogTemplate(nul).data());
    EXPECT_EQ(back.caption, L"Clock");
    EXPECT_EQ(back.typeface, L"Tahoma");
    EXPECT_EQ(back.menu, L"");
    ASSERT_EQ(back.items.size(), nul.items.size());
    EXPECT_EQ(back.items[0].className, nul.items[0].className);
    // The classic form's first DWORD is the style; the extended one starts 1, 0xFFFF.
    std::vector<uint64_t> classic = zel::detail::EncodeDialogTemplate(Script().dialogsById.at(2));
    EXPECT_EQ(reinterpret_cast<const DLGTEMPLATE*>(classic.data())->style, static_cast<DWORD>(WS_POPUP | WS_BORDER | WS_SYSMENU));
    std::vector<uint64_t> ex = zel::detail::EncodeDialogTemplate(Script().dialogsById.at(101));
    EXPECT_EQ(reinterpret_cast<const WORD*>(ex.data())[0], 1);
    EXPECT_EQ(reinterpret_cast<const WORD*>(ex.data())[1], 0xFFFF);
}

}  // namespace
