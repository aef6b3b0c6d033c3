// Dialog layouts as Windows gives them: wine/layouts.rc read by the dialog manager must put
// every dialog and item where the recording in wine/layouts.txt says (made with
// wine/record_layouts.cpp under Wine, with the device's Tahoma).
#include <fstream>
#include <map>
#include <sstream>

#include "dialog_fixture.h"

namespace {

using dialog_test::ChildRect;
using dialog_test::DialogTest;

struct Recorded {
    std::map<int, std::string> dialogs;                // id -> "base=..,.. client=..,.."
    std::map<int, std::vector<std::string>> items;     // dialog -> "id=.. rect=.." in z-order
};

Recorded ReadRecording() {
    Recorded r;
    std::ifstream in(std::string(ZEL_TEST_DATA_DIR) + "/platform/dialogs/wine/layouts.txt");
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream words(line);
        std::string kind, first;
        words >> kind >> first;
        std::string rest;
        std::getline(words, rest);
        if (kind == "dialog") r.dialogs[std::stoi(first.substr(3))] = rest.substr(1);
        if (kind == "item") r.items[std::stoi(first.substr(7))].push_back(rest.substr(1));
    }
    return r;
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

class WineLayouts : public DialogTest {
protected:
    // Creates dialog `id` of wine/layouts.rc and compares it with the recording.
    void Compare(int id) {
        Recorded recorded = ReadRecording();
        ASSERT_TRUE(recorded.dialogs.count(id)) << "wine/layouts.txt is missing or incomplete";
        HINSTANCE module = Load(ReadFile(std::string(ZEL_TEST_DATA_DIR) + "/platform/dialogs/wine/layouts.rc"));
        ASSERT_NE(module, nullptr);
        HWND dlg = CreateDialogParamW(module, MAKEINTRESOURCEW(id), nullptr, nullptr, 0);
        ASSERT_NE(dlg, nullptr);
        RECT units{0, 0, 4, 8}, client;
        MapDialogRect(dlg, &units);
        GetClientRect(dlg, &client);
        std::ostringstream mine;
        mine << "base=" << units.right << "," << units.bottom << " client=" << client.right << "," << client.bottom;
        EXPECT_EQ(mine.str(), recorded.dialogs[id]);
        std::vector<std::string> items, expected = recorded.items[id];
        for (HWND c = GetWindow(dlg, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
            RECT r = ChildRect(c);
            std::ostringstream s;
            s << "id=" << GetDlgCtrlID(c) << " rect=" << r.left << "," << r.top << "," << r.right << ",";
            // A combo box's own height is the control's business (see wine/README.md).
            bool combo = dialog_test::ClassOf(c) == "ComboBox";
            if (combo && items.size() < expected.size())
                expected[items.size()] = expected[items.size()].substr(0, expected[items.size()].rfind(',') + 1);
            if (!combo) s << r.bottom;
            items.push_back(s.str());
        }
        EXPECT_EQ(items, expected);
        DestroyWindow(dlg);
    }
};

TEST_F(WineLayouts, TahomaEightPointFormMatchesWindows) { Compare(1); }

TEST_F(WineLayouts, OddPlacesRoundAsWindowsRoundsThem) { Compare(3); }

TEST_F(WineLayouts, BoldElevenPointFormMatchesWindows) { Compare(2); }

}  // namespace
