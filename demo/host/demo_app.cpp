#include "host/demo_app.h"

#include <zel/resources.h>

#include <cstdio>

#include "resource.h"  // generated with the skin

namespace zel::demo {

DemoApp::~DemoApp() {
    CloseScreen();
    if (background_) DeleteObject(background_);
    if (skin_.module) zel::FreeResourceModule(skin_.module);
}

bool DemoApp::LoadSkin(const std::string& dir) {
    std::string script = dir + "/default.rc";
    skin_.module = zel::LoadResourceModule(script.c_str());
    skin_.bitmapDir = dir + "/skin";
    if (!skin_.module) {
        std::fprintf(stderr, "zel-demo: cannot load the skin %s\n", script.c_str());
        return false;
    }
    background_ = LoadBitmapW(skin_.module, MAKEINTRESOURCEW(IDB_BACKGROUND));
    if (!background_) std::fprintf(stderr, "zel-demo: the skin %s has no background\n", script.c_str());
    return background_ != nullptr;
}

void DemoApp::CloseScreen() {
    window_.reset();
    screen_.reset();
    screenName_.clear();
}

bool DemoApp::Show(const std::string& name) {
    const ScreenInfo* info = FindScreen(name);
    if (!info) return false;
    CloseScreen();
    screen_ = info->make();
    window_ = std::make_unique<HostWindow>(log_, background_, screen_.get());
    if (!window_->Create(info->title) || !screen_->Build(window_->hwnd(), skin_)) {
        std::fprintf(stderr, "zel-demo: cannot build the screen '%s'\n", name.c_str());
        CloseScreen();
        return false;
    }
    screenName_ = name;
    log_.Add("-- screen " + name);
    return true;
}

}  // namespace zel::demo
