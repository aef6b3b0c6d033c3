// libzelctl.so exports the control classes and nothing of its internals.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <sstream>
#include <string>

namespace {

// Defined dynamic symbols of the library, as nm lists them.
std::set<std::string> ExportedSymbols() {
    std::set<std::string> symbols;
    const std::string command = std::string("nm -D --defined-only ") + ZEL_CONTROLS_LIBRARY;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return symbols;
    char line[4096];
    while (fgets(line, sizeof line, pipe)) {
        std::istringstream fields(line);
        std::string address, type, name;
        if (fields >> address >> type >> name) symbols.insert(name);
    }
    pclose(pipe);
    return symbols;
}

const char* const kControlSymbols[] = {
    "_ZN10CZELButton8LoadSkinE7CStringS0_",  // CZELButton::LoadSkin(CString, CString)
    "_ZN10CZELButton12SetAutoClickEb",
    "_ZTV10CZELButton",  // vtables and type information: hosts derive from the controls
    "_ZTI10CZELButton",
    "_ZN13CZELBmpButtonC1Ev",
    "_ZN14CBmpTextButton7SetFontEiijj",
    "_ZN10CZELChkBox11LoadBitmapWE7CStringS0_S0_",
    "_ZTV10CZELChkBox",
    "_ZN14CImageRadioBoxC1Ev",
    "_ZTI8CSkinWnd",
};

TEST(Module, ExportsTheControlClasses) {
    const std::set<std::string> symbols = ExportedSymbols();
    ASSERT_FALSE(symbols.empty()) << "nm found nothing in " << ZEL_CONTROLS_LIBRARY;
    for (const char* name : kControlSymbols) EXPECT_TRUE(symbols.count(name)) << name;
}

TEST(Module, ExportsNothingElse) {
    const char* const kClasses[] = {"8CSkinWnd", "CZEL", "14CBmpTextButton", "14CImageRadioBox", "9CListData",
                                    "12CBbgFileList", "9CTimeData", "13CDataTimectrl"};
    for (const std::string& name : ExportedSymbols()) {
        bool ofAClass = false;
        for (const char* cls : kClasses) ofAClass = ofAClass || name.find(cls) != std::string::npos;
        EXPECT_TRUE(ofAClass) << name;
        EXPECT_EQ(name.find("6zelctl"), std::string::npos) << "internal helper exported: " << name;
    }
}

// RTLD_NOW: every symbol the library needs resolves (what nm lists is the other tests').
TEST(Module, LoadsWithEverySymbolResolved) {
    void* library = dlopen(ZEL_CONTROLS_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_NE(dlsym(library, "_ZN10CZELChkBoxC1Ev"), nullptr);
    dlclose(library);
}

}  // namespace
