#include "host/screens.h"

#include "screens/buttons_screen.h"
#include "screens/clock_screen.h"
#include "screens/home_screen.h"
#include "screens/lists_screens.h"
#include "screens/phone_screen.h"
#include "screens/lists_screen.h"
#include "screens/player_screen.h"
#include "screens/settings_screen.h"

namespace zel::demo {

namespace {

template <class S>
std::unique_ptr<Screen> Make() {
    return std::make_unique<S>();
}

}  // namespace

const std::vector<ScreenInfo>& Screens() {
    static const std::vector<ScreenInfo> screens = {
        {"home", L"ZEL controls", L"Home", L"", Make<HomeScreen>},
        {"player", L"Media player", L"Player",
         L"Volume and seek sliders, a play list with its scroll bar, transport keys.", Make<PlayerScreen>},
        {"buttons", L"Button gallery", L"Buttons",
         L"Repeating, shaped, disabled and text buttons; check boxes.", Make<ButtonsScreen>},
        {"clock", L"Clock settings", L"Clock",
         L"Date and time spinners, a running clock, stroke-digit pickers.", Make<ClockScreen>},
        {"phone", L"Telephone", L"Phone", L"A dial pad, the number display, labels and a shaped portrait.",
         Make<PhoneScreen>},
        {"lists", L"List gallery", L"Lists", L"The image list in its four styles: names, states, numbers, images.",
         Make<ListsScreen>},
        // Screens without a tab come last (the tab strip stops at the first): tours reach them
        // by name.
        {"settings", L"Settings", nullptr, L"Two combo boxes; the lower one opens upward.", Make<SettingsScreen>},
        {"contacts", L"Phone book", nullptr, L"Contacts and missed calls, a row set per kind.", Make<ContactsScreen>},
        {"devices", L"Bluetooth devices", nullptr, L"Paired devices; the connected one marked.", Make<DevicesScreen>},
        {"files", L"Files", nullptr, L"A file browser over the screen: drag to mark.", Make<FilesScreen>},
        {"table", L"Table", nullptr, L"A table with headings that sort.", Make<TableScreen>},
    };
    return screens;
}

void ContentChanged(HWND host, const RECT& area) {
    SendMessageW(host, kChangedMessage, 0, reinterpret_cast<LPARAM>(&area));
}

const ScreenInfo* FindScreen(const std::string& name) {
    for (const ScreenInfo& s : Screens())
        if (name == s.name) return &s;
    return nullptr;
}

}  // namespace zel::demo
