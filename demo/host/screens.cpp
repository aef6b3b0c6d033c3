#include "host/screens.h"

namespace zel::demo {

namespace {

// The start screen: the background and the host's title and status strip, no controls.
class HomeScreen : public Screen {
public:
    bool Build(HWND, const SkinSource&) override { return true; }
};

}  // namespace

const std::vector<ScreenInfo>& Screens() {
    static const std::vector<ScreenInfo> screens = {
        {"home", L"ZEL controls", []() -> std::unique_ptr<Screen> { return std::make_unique<HomeScreen>(); }},
    };
    return screens;
}

const ScreenInfo* FindScreen(const std::string& name) {
    for (const ScreenInfo& s : Screens())
        if (name == s.name) return &s;
    return nullptr;
}

}  // namespace zel::demo
