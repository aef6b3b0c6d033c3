// Resource scripts: what a real script looks like, what breaks one (templates and string
// tables included), and the module handles built from them.
#include <gtest/gtest.h>
#include <windows.h>
#include <zel/resources.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "kernel/resource_script.h"
#include "support/platform_scratch.h"

namespace {

namespace fs = std::filesystem;

class ResourceScripts : public ::testing::Test {
protected:
    void SetUp() override { fs::create_directories(scratch_.dir() / "res"); }
    std::string Write(const std::string& name, const std::string& text) { return scratch_.Write(name, text); }
    std::string Dir() const { return scratch_.Dir(); }

    // Parses and returns the error line (empty on success).
    std::string ErrorOf(const std::string& rc) {
        std::string error;
        auto script = zel::detail::ParseResourceScript(Write("broken.rc", rc), &error);
        return script ? std::string() : error;
    }

private:
    zel::test::ScratchFolder scratch_;
};

const char kResourceHeader[] =
    "//{{NO_DEPENDENCIES}}\n"
    "// Microsoft Visual C++ generated include file.\n"
    "#define IDB_PLAY_NORMAL                 130\n"
    "#define IDB_PLAY_DOWN                   (IDB_PLAY_NORMAL + 1)\n"
    "#define IDB_BIG                         0x12345\n"
    "#define IDD_MAIN                        102\n"
    "#define IDC_STATIC                      -1\n"
    "#ifdef APSTUDIO_INVOKED\n"
    "#ifndef APSTUDIO_READONLY_SYMBOLS\n"
    "#define _APS_NEXT_RESOURCE_VALUE        132\n"
    "#endif\n"
    "#endif\n";

const char kScript[] =
    "// Microsoft Visual C++ generated resource script.\n"
    "//\n"
    "#include \"resource.h\"\n"
    "\n"
    "#define APSTUDIO_READONLY_SYMBOLS\n"
    "#include \"afxres.h\"\n"
    "#include <windows.h>\n"
    "#undef APSTUDIO_READONLY_SYMBOLS\n"
    "\n"
    "#if !defined(AFX_RESOURCE_DLL) || defined(AFX_TARG_ENU)\n"
    "#ifdef _WIN32\n"
    "LANGUAGE LANG_ENGLISH, SUBLANG_ENGLISH_US\n"
    "#pragma code_page(1252)\n"
    "#endif //_WIN32\n"
    "\n"
    "#ifdef APSTUDIO_INVOKED\n"
    "1 TEXTINCLUDE DISCARDABLE\n"
    "BEGIN\n"
    "    \"resource.h\\0\"\n"
    "END\n"
    "#endif    // APSTUDIO_INVOKED\n"
    "\n"
    "/* Bitmaps, with the usual\n"
    "   memory options */\n"
    "IDB_PLAY_NORMAL         BITMAP  DISCARDABLE     \"res\\\\play_normal.bmp\"\n"
    "IDB_PLAY_DOWN           BITMAP  MOVEABLE PURE   \"res\\\\play_down.bmp\" // pressed\n"
    "IDB_BIG                 BITMAP                  \"res/big.bmp\"\n"
    "200                     BITMAP                  \"res\\\\two hundred.bmp\"\n"
    "LOGO                    BITMAP                  \"logo.bmp\"\n"
    "\"Quoted\"                BITMAP                  \"quoted.bmp\"\n"
    "IDR_ICON                ICON                    \"res\\\\app.ico\"\n"
    "\n"
    "IDD_MAIN DIALOGEX 0, 0, 320, 200\n"
    "STYLE DS_SETFONT | WS_POPUP | WS_VISIBLE\n"
    "FONT 8, \"MS Shell Dlg\", 0, 0, 0x1\n"
    "BEGIN\n"
    "    CONTROL         \"\",IDC_STATIC,\"Static\",SS_BITMAP,7,7,20,20\n"
    "    PUSHBUTTON      \"END of BEGIN\",IDOK,263,7,50,14\n"
    "END\n"
    "\n"
    "STRINGTABLE\n"
    "BEGIN\n"
    "    IDD_MAIN                \"Main \"\"screen\"\"\"\n"
    "END\n"
    "\n"
    "VS_VERSION_INFO VERSIONINFO\n"
    " FILEVERSION 1,0,0,1\n"
    "BEGIN\n"
    "    BLOCK \"StringFileInfo\"\n"
    "    BEGIN\n"
    "        VALUE \"FileVersion\", \"1, 0, 0, 1\"\n"
    "    END\n"
    "END\n"
    "#endif\n"
    "\n"
    "#ifdef _WIN32_WCE\n"
    "HI_RES_AWARE CEUX {1}\n"
    "#endif\n"
    "#ifndef APSTUDIO_INVOKED\n"
    "IDB_LATE BITMAP \"late.bmp\"\n"
    "#else\n"
    "IDB_NEVER BITMAP \"never.bmp\"\n"
    "#endif\n";

TEST_F(ResourceScripts, ReadsARealLookingScript) {
    Write("resource.h", kResourceHeader);
    std::string rc = Write("app.rc", kScript);
    std::string error;
    auto script = zel::detail::ParseResourceScript(rc, &error);
    ASSERT_TRUE(script) << error;
    const auto& ids = script->bitmapsById;
    ASSERT_EQ(ids.size(), 4u);
    EXPECT_EQ(ids.at(130), Dir() + "/res/play_normal.bmp");
    EXPECT_EQ(ids.at(131), Dir() + "/res/play_down.bmp") << "#define values are expressions";
    EXPECT_EQ(ids.at(0x2345), Dir() + "/res/big.bmp") << "identifiers keep their low 16 bits";
    EXPECT_EQ(ids.at(200), Dir() + "/res/two hundred.bmp");
    const auto& names = script->bitmapsByName;
    ASSERT_EQ(names.size(), 3u);
    EXPECT_EQ(names.at(L"LOGO"), Dir() + "/logo.bmp");
    EXPECT_EQ(names.at(L"QUOTED"), Dir() + "/quoted.bmp");
    EXPECT_EQ(names.at(L"IDB_LATE"), Dir() + "/late.bmp") << "an undefined name is a string name";
}

TEST_F(ResourceScripts, ReadsUtf16ScriptsAndIncludesRelativeToTheScript) {
    fs::create_directories(fs::path(Dir()) / "skin");
    Write("skin/ids.h", "#define IDB_KNOB 7\n#define IDB_KNOB_DOWN (IDB_KNOB|0x10)\nIDB_IGNORED BITMAP \"x.bmp\"\n");
    std::wstring wide =
        L"\ufeff#include \"ids.h\"\r\nIDB_KNOB BITMAP \"knob.bmp\"\r\nIDB_KNOB_DOWN BITMAP \"kn\u00f6b.bmp\"\r\n";
    std::string utf16;
    for (wchar_t c : wide) {
        utf16 += static_cast<char>(c & 0xFF);
        utf16 += static_cast<char>((c >> 8) & 0xFF);
    }
    std::string rc = Write("skin/skin.rc", utf16);
    std::string error;
    auto script = zel::detail::ParseResourceScript(rc, &error);
    ASSERT_TRUE(script) << error;
    EXPECT_EQ(script->bitmapsById.size(), 2u) << "statements inside a .h file are not resources";
    EXPECT_EQ(script->bitmapsById.at(7), Dir() + "/skin/knob.bmp");
    EXPECT_EQ(script->bitmapsById.at(0x17), Dir() + "/skin/kn\xc3\xb6" "b.bmp");
}

TEST_F(ResourceScripts, BrokenScriptsNameTheFileAndLine) {
    struct Case {
        const char* rc;
        const char* where;
        const char* what;
    };
    const Case cases[] = {
        {"IDB_A BITMAP\n", ":1:", "IDB_A BITMAP: expected a quoted file name"},
        {"\n\nIDB_A BITMAP DISCARDABLE res.bmp\n", ":3:", "expected a quoted file name"},
        {"IDB_A BITMAP \"a.bmp\n", ":1:", "unterminated string"},
        {"#include \"missing.h\"\n", ":1:", "cannot open include file 'missing.h'"},
        {"#ifdef X\nIDB_A BITMAP \"a.bmp\"\n", ":1:", "#if without #endif"},
        {"#endif\n", ":1:", "#endif without #if"},
        {"#if 1 +\n#endif\n", ":1:", "#if 1 +: expression ends too early"},
        {"#if 1/0\n#endif\n", ":1:", "division by zero"},
        {"#error skin is too old\n", ":1:", "#error skin is too old"},
        {"IDD_X DIALOG 0,0,10,10\nBEGIN\n  CONTROL \"\",1,\"Static\",0,0,0,1,1\n", ":2:", "BEGIN without END"},
        {"IDD_X DIALOG 0,0,10,10\n", ":1:", "IDD_X DIALOG: missing BEGIN"},
        {"1 BITMAP \"a.bmp\"\n1 BITMAP \"b.bmp\"\n", ":2:", "duplicate BITMAP resource 1"},
        {"END\n", ":1:", "unexpected 'END'"},
        {"IDB_A\n", ":1:", "unexpected end of file"},
        {"0x BITMAP \"a.bmp\"\n", ":1:", "bad number '0x'"},
        {"IDB_A CUSTOM 5\n", ":1:", "IDB_A CUSTOM: expected a file name or a BEGIN block"},
        {"#define SELF SELF\nSELF BITMAP \"a.bmp\"\n", ":2:", "nested too deeply"},
        // Dialog templates and string tables.
        {"1 DIALOG 0,0,10\nBEGIN\nEND\n", ":2:", "expected ',' after the dialog's width"},
        {"1 DIALOG 0,0,10,10\nSTYLE WS_BOGUS\nBEGIN\nEND\n", ":2:", "STYLE: undefined name 'WS_BOGUS'"},
        {"1 DIALOG 0,0,10,10\nBEGIN\n  LTEXT \"a\" 1,0,0,1,1\nEND\n", ":3:", "expected ',' after the control's text"},
        {"1 DIALOG 0,0,10,10\nBEGIN\n  SPINNER 1,0,0,1,1\nEND\n", ":3:", "unknown control statement 'SPINNER'"},
        {"1 DIALOG 0,0,10,10\nBEGIN\n  CONTROL \"a\",1,5,0,0,0,1,1\nEND\n", ":3:", "expected the control's class"},
        {"1 DIALOG 0,0,10,10\nFONT 8\nBEGIN\nEND\n", ":3:", "expected ',' after the font's point size"},
        {"1 DIALOG 0,0,10,10\nCAPTION Title\nBEGIN\nEND\n", ":2:", "expected the caption in quotes"},
        {"1 DIALOG 0,0,10,10\nBEGIN\n  PUSHBUTTON \"a\",1,0,0,1,1\n", ":2:", "1 DIALOG: BEGIN without END"},
        {"1 DIALOG 0,0,1,1\nBEGIN\nEND\n1 DIALOGEX 0,0,1,1\nBEGIN\nEND\n", ":4:", "duplicate DIALOG resource 1"},
        {"STRINGTABLE\nBEGIN\n 1 \"a\"\n 1 \"b\"\nEND\n", ":4:", "duplicate string identifier 1"},
        {"STRINGTABLE\nBEGIN\n 1 2\nEND\n", ":3:", "expected the string in quotes"},
        {"STRINGTABLE\nBEGIN\n 1 \"a\"\n", ":2:", "STRINGTABLE: BEGIN without END"},
        {"STRINGTABLE\n", ":1:", "STRINGTABLE: missing BEGIN"},
        {"1 DIALOG 0,0,10,10\nSTYLE ((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((1\nBEGIN\nEND\n",
         ":2:", "STYLE: expression nested too deeply"},
    };
    for (const Case& c : cases) {
        std::string error = ErrorOf(c.rc);
        EXPECT_NE(error.find("broken.rc"), std::string::npos) << c.rc << " -> " << error;
        EXPECT_NE(error.find(c.where), std::string::npos) << c.rc << " -> " << error;
        EXPECT_NE(error.find(c.what), std::string::npos) << c.rc << " -> " << error;
        EXPECT_EQ(error.find('\n'), std::string::npos) << "one line: " << error;
    }
}

// Every prefix of a good script either reads or fails with one line: no prefix crashes,
// hangs or leaves the reader in a state that reads garbage.
TEST(ResourceScriptText, EveryTruncationReadsOrFailsCleanly) {
    std::string full(kScript), cut;
    zel::detail::FileReader memory = [&](const std::string& path) -> std::optional<std::string> {
        if (path == "skin/cut.rc") return cut;
        if (path == "skin/resource.h") return std::string(kResourceHeader);
        return std::nullopt;
    };
    for (size_t n = 0; n <= full.size(); ++n) {
        cut = full.substr(0, n);
        std::string error;
        auto script = zel::detail::ParseResourceScript("skin/cut.rc", &error, memory);
        if (script) {
            EXPECT_LE(script->bitmapsById.size(), 4u) << n;
        } else {
            EXPECT_EQ(error.rfind("skin/cut.rc:", 0), 0u) << n << ": " << error;
            EXPECT_EQ(error.find('\n'), std::string::npos) << n << ": " << error;
        }
    }
}

TEST_F(ResourceScripts, AnErrorInAnIncludedHeaderNamesTheHeader) {
    Write("resource.h", "#define A 1\n#if A\n");
    std::string error = ErrorOf("#include \"resource.h\"\n");
    EXPECT_NE(error.find("resource.h:2: #if without #endif"), std::string::npos) << error;
    Write("loop.h", "#include \"loop.h\"\n");
    error = ErrorOf("#include \"loop.h\"\n");
    EXPECT_NE(error.find("nested too deeply"), std::string::npos) << error;
}

// ---- what one load may cost ----

// "#define <name><k> (<name><k-1> <op> ... )", `uses` uses of the previous level each.
std::string MacroChain(const std::string& name, int levels, int uses, const std::string& op) {
    std::string text = "#define " + name + "0 1\n";
    for (int k = 1; k <= levels; ++k) {
        text += "#define " + name + std::to_string(k) + " (";
        for (int u = 0; u < uses; ++u) text += (u ? " " + op + " " : "") + name + std::to_string(k - 1);
        text += ")\n";
    }
    return text;
}

TEST_F(ResourceScripts, MacrosUsedManyTimesAreEvaluatedOnce) {
    // Twelve levels of ten uses each: 10^12 expansions if each use were expanded again.
    std::string rc = MacroChain("A", 12, 10, "+") +
                     "#if A12 != 1000000000000\n#error wrong value\n#endif\n"
                     "A4 BITMAP \"a.bmp\"\n";
    std::string error;
    auto script = zel::detail::ParseResourceScript(Write("chain.rc", rc), &error);
    ASSERT_TRUE(script) << error;
    EXPECT_EQ(script->bitmapsById.count(10000), 1u);
}

TEST_F(ResourceScripts, ExpressionsNestAsDeepAsRealHeaders) {
    // 32 parenthesised #defines, each one more than the last, and 32 parentheses.
    std::string rc = MacroChain("N", 32, 1, "+");
    for (int k = 1; k <= 32; ++k) rc += "#define P" + std::to_string(k) + " ((N" + std::to_string(k) + ") + 1)\n";
    rc += "#if P32 != 2 || " + std::string(32, '(') + "1" + std::string(32, ')') + " != 1\n#error wrong\n#endif\n";
    rc += "P32 BITMAP \"p.bmp\"\n";
    std::string error;
    auto script = zel::detail::ParseResourceScript(Write("deep.rc", rc), &error);
    ASSERT_TRUE(script) << error;
    EXPECT_EQ(script->bitmapsById.count(2), 1u);

    // Past any real header: refused with a reason, whatever the kind of nesting.
    const std::string deep[] = {
        "#if " + std::string(5000, '(') + "1" + std::string(5000, ')') + "\n#endif\n",
        "#if " + std::string(100000, '-') + "1\n#endif\n",
        "#if " + std::string(100000, '!') + "1\n#endif\n",
        MacroChain("D", 500, 1, "+") + "#if D500\n#endif\n",
    };
    for (const std::string& text : deep) {
        std::string message = ErrorOf(text);
        EXPECT_NE(message.find("nested too deeply"), std::string::npos) << message;
    }
}

TEST_F(ResourceScripts, ExpansionWorkHasABudgetPerLoad) {
    // 30 levels of 500 uses each, about 30 000 tokens, evaluated again after every #undef
    // (which may change any value): 200 times is more than the budget.
    std::string rc = MacroChain("C", 30, 500, "+");
    for (int i = 0; i < 200; ++i) rc += "#undef X\n#if C30\n#endif\n";
    std::string message = ErrorOf(rc);
    EXPECT_NE(message.find("macros expand to more than 4194304 tokens"), std::string::npos) << message;
    EXPECT_NE(message.find("broken.rc:"), std::string::npos) << message;
}

TEST_F(ResourceScripts, IncludeFanOutsEndAtTheFileBudget) {
    // Each header includes the next one ten times, without guards: 10^6 inclusions.
    for (int level = 0; level < 6; ++level) {
        std::string text = "#define L" + std::to_string(level) + " 1\n";
        for (int i = 0; i < 10; ++i) text += "#include \"h" + std::to_string(level + 1) + ".h\"\n";
        Write("h" + std::to_string(level) + ".h", text);
    }
    Write("h6.h", "#define LEAF 1\n");
    std::string message = ErrorOf("#include \"h0.h\"\n");
    EXPECT_NE(message.find("more than 256 files included"), std::string::npos) << message;
    EXPECT_NE(message.find(".h:"), std::string::npos) << "names the header and line: " << message;
}

TEST_F(ResourceScripts, AHeaderIncludedAgainIsSkippedOnlyWhileItsGuardHidesAllOfIt) {
    // Each part holds one bitmap line: read twice, it is a duplicate identifier.
    Write("guarded.rc2", "\n#ifndef G\n#define G\n1 BITMAP \"g.bmp\"\n#endif\n\n");
    Write("otherwise.rc2", "#ifndef E\n#define E\n#else\n2 BITMAP \"e.bmp\"\n#endif\n");
    Write("after.rc2", "#ifndef A\n#define A\n#endif\n3 BITMAP \"a.bmp\"\n");
    struct Case {
        const char* part;
        const char* between;  // what the script does between the two inclusions
        int id;               // the one bitmap read; 0: read twice, a duplicate
    } cases[] = {
        {"guarded.rc2", "", 1},           // hidden the second time
        {"guarded.rc2", "#undef G\n", 0},  // the guard undone: read again
        {"otherwise.rc2", "", 2},         // an #else branch shows while the guard holds
        {"after.rc2", "", 0},             // a line after the #endif is read every time
    };
    for (const Case& c : cases) {
        const std::string part = std::string("#include \"") + c.part + "\"\n";
        const std::string message = ErrorOf(part + c.between + part);
        if (c.id == 0) {
            EXPECT_NE(message.find("duplicate BITMAP resource"), std::string::npos) << c.part << ": " << message;
            continue;
        }
        std::string error;
        auto script = zel::detail::ParseResourceScript(Write("twice.rc", part + c.between + part), &error);
        ASSERT_TRUE(script) << c.part << ": " << error;
        EXPECT_EQ(script->bitmapsById.size(), 1u) << c.part;
        EXPECT_EQ(script->bitmapsById.count(c.id), 1u) << c.part;
    }
    // The framework headers are one guarded text: the first defines over the script's own
    // definitions, the next reads as nothing.
    EXPECT_EQ(ErrorOf("#define IDCANCEL 9\n#include \"afxres.h\"\n#if IDCANCEL != 2\n#error first\n#endif\n"
                      "#define IDCANCEL 9\n#include <windows.h>\n#if IDCANCEL != 9\n#error next\n#endif\n"),
              "");
    // A skipped inclusion still counts against the load's file budget.
    std::string many;
    for (int i = 0; i < 300; ++i) many += "#include \"guarded.rc2\"\n";
    EXPECT_NE(ErrorOf(many).find("more than 256 files included"), std::string::npos);
}

TEST_F(ResourceScripts, OnlyRegularFilesAreRead) {
    // A FIFO would block the reader for ever; a directory reads as nothing.
    std::string fifo = Dir() + "/fifo.rc";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    std::string error;
    EXPECT_FALSE(zel::detail::ParseResourceScript(fifo, &error));
    EXPECT_EQ(error, fifo + ": cannot open the file");
    EXPECT_FALSE(zel::detail::ParseResourceScript(Dir() + "/res", &error));
    EXPECT_EQ(error, Dir() + "/res: cannot open the file");
    EXPECT_NE(ErrorOf("#include \"fifo.rc\"\n").find("broken.rc:1: cannot open include file 'fifo.rc'"), std::string::npos);
    EXPECT_NE(ErrorOf("#include \"res\"\n").find("broken.rc:1: cannot open include file 'res'"), std::string::npos);
}

TEST_F(ResourceScripts, ModuleHandlesAreCheckedAndFreed) {
    std::string rc = Write("ok.rc", "1 BITMAP \"missing.bmp\"\n");
    HINSTANCE module = zel::LoadResourceModule(rc.c_str());
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(LoadBitmapW(module, MAKEINTRESOURCEW(2)), nullptr) << "no such resource";
    EXPECT_EQ(LoadBitmapW(module, L"NOPE"), nullptr);
    EXPECT_EQ(LoadBitmapW(reinterpret_cast<HINSTANCE>(0x1234), MAKEINTRESOURCEW(1)), nullptr);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_FALSE(FreeLibrary(module)) << "a freed module handle is stale";
    EXPECT_EQ(LoadBitmapW(module, MAKEINTRESOURCEW(1)), nullptr);
    EXPECT_FALSE(FreeLibrary(nullptr));
    zel::FreeResourceModule(module);  // harmless twice

    testing::internal::CaptureStderr();
    EXPECT_EQ(zel::LoadResourceModule(Write("bad.rc", "\nIDB_X BITMAP\n").c_str()), nullptr);
    EXPECT_EQ(zel::LoadResourceModule((Dir() + "/absent.rc").c_str()), nullptr);
    EXPECT_EQ(zel::LoadResourceModule(nullptr), nullptr);
    std::string err = testing::internal::GetCapturedStderr();
    EXPECT_NE(err.find("LoadResourceModule: " + Dir() + "/bad.rc:2: IDB_X BITMAP: expected a quoted file name\n"),
              std::string::npos)
        << err;
    EXPECT_NE(err.find("absent.rc: cannot open the file"), std::string::npos) << err;
}

}  // namespace
