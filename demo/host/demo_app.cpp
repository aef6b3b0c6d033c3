#include "host/demo_app.h"

#include <afxwin.h>
#include <zel/resources.h>

#include <cstdio>

#include "resource.h"  // generated with the skin

namespace zel::demo {

DemoApp::~DemoApp() {
    CloseScreen();
    retired_.clear();
    if (background_) DeleteObject(background_);
    if (skin_.module) {
        if (AfxGetResourceHandle() == skin_.module) AfxSetResourceHandle(nullptr);
        zel::FreeResourceModule(skin_.module);
    }
}

bool DemoApp::LoadSkin(const std::string& dir) {
    std::string script = dir + "/default.rc";
    skinDir_ = dir;
    skin_.module = zel::LoadResourceModule(script.c_str());
    skin_.bitmapDir = dir + "/skin";
    if (!skin_.module) {
        std::fprintf(stderr, "zel-demo: cannot load the skin %s\n", script.c_str());
        return false;
    }
    AfxSetResourceHandle(skin_.module);
    background_ = LoadBitmapW(skin_.module, MAKEINTRESOURCEW(IDB_BACKGROUND));
    skin_.background = background_;
    if (!background_) std::fprintf(stderr, "zel-demo: the skin %s has no background\n", script.c_str());
    return background_ != nullptr;
}

bool DemoApp::ReloadSkin() {
    const std::string script = skinDir_ + "/default.rc";
    HINSTANCE module = zel::LoadResourceModule(script.c_str());
    HBITMAP background = module ? LoadBitmapW(module, MAKEINTRESOURCEW(IDB_BACKGROUND)) : nullptr;
    if (!background) {
        std::fprintf(stderr, "zel-demo: the skin %s does not load; keeping the one on show\n", script.c_str());
        if (module) zel::FreeResourceModule(module);
        return false;
    }
    const std::string screen = screenName_;
    CloseScreen();  // the old controls go with their windows before their skin does
    retired_.clear();
    AfxSetResourceHandle(module);
    if (skin_.module) zel::FreeResourceModule(skin_.module);
    if (background_) DeleteObject(background_);
    skin_.module = module;
    background_ = background;
    skin_.background = background_;
    return screen.empty() || Show(screen);
}

// The window goes now (and its controls with it); the objects may still be running a
// message handler, so they wait.
void DemoApp::CloseScreen() {
    if (current_.window) current_.window->Destroy();
    if (current_.window || current_.screen) retired_.push_back(std::move(current_));
    current_ = Shown{};
    screenName_.clear();
}

bool DemoApp::Show(const std::string& name) {
    const ScreenInfo* info = FindScreen(name);
    if (!info) return false;
    retired_.clear();  // no handler of theirs can be running: their windows are gone
    Shown next;
    next.screen = info->make();
    next.window = std::make_unique<HostWindow>(log_, background_, next.screen.get(), name,
                                               [this](const std::string& following) { Show(following); });
    log_.Add("-- screen " + name);
    const bool built = next.window->Create(info->title) && next.screen->Build(next.window->hwnd(), skin_);
    if (built) {
        // The old screen goes only now, under the new one: nothing is uncovered, so the
        // desktop is not painted in between.
        if (current_.window) current_.window->HideUnder();
        next.window->Show();
    }
    CloseScreen();
    if (!built) {
        std::fprintf(stderr, "zel-demo: cannot build the screen '%s'\n", name.c_str());
        next.window->Destroy();
        retired_.push_back(std::move(next));
        return false;
    }
    current_ = std::move(next);
    screenName_ = name;
    return true;
}

}  // namespace zel::demo
