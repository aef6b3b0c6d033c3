#include "host/demo_app.h"

#include <afxwin.h>
#include <zel/resources.h>

#include <algorithm>
#include <cstdio>

#include "resource.h"  // generated with the skin

namespace zel::demo {

DemoApp::~DemoApp() {
    DropKeptScreens();
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
    DropKeptScreens();  // the old controls go with their windows before their skin does
    CloseScreen();
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
void DemoApp::Retire(Shown shown) {
    if (shown.window) shown.window->Destroy();
    if (shown.window || shown.screen) retired_.push_back(std::move(shown));
}

void DemoApp::CloseScreen() {
    Retire(std::move(current_));
    current_ = Shown{};
    screenName_.clear();
}

void DemoApp::DropKeptScreens() {
    for (Shown& kept : kept_)
        if (kept.window) kept.window->Destroy();
    kept_.clear();
}

std::vector<std::string> DemoApp::KeptScreens() const {
    std::vector<std::string> names;
    for (const Shown& kept : kept_) names.push_back(kept.name);
    return names;
}

bool DemoApp::Show(const std::string& name) {
    const ScreenInfo* info = FindScreen(name);
    if (!info) return false;
    retired_.clear();  // no handler of theirs can be running: their windows are gone
    log_.Add("-- screen " + name);
    if (current_.window && name == screenName_) return true;
    // Before the next host is activated, which takes the focus.
    if (current_.window) current_.window->Leave();
    Shown next;
    auto kept = std::find_if(kept_.begin(), kept_.end(), [&](const Shown& s) { return s.name == name; });
    if (kept != kept_.end() && !::IsWindow(kept->window->hwnd())) {  // destroyed behind our back: built anew
        Retire(std::move(*kept));
        kept_.erase(kept);
        kept = kept_.end();
    }
    if (kept != kept_.end()) {
        next = std::move(*kept);
        kept_.erase(kept);
        next.window->Return();
    } else {
        next.name = name;
        next.screen = info->make();
        next.window = std::make_unique<HostWindow>(log_, background_, next.screen.get(), name,
                                                   [this](const std::string& following) { Show(following); });
        if (!next.window->Create(info->title) || !next.screen->Build(next.window->hwnd(), skin_)) {
            std::fprintf(stderr, "zel-demo: cannot build the screen '%s'\n", name.c_str());
            Retire(std::move(next));
            if (current_.window) current_.window->Return();
            return false;
        }
    }
    // The screen on show is hidden only now, under the next one: nothing is uncovered, so
    // the desktop is not painted in between.
    if (current_.window) {
        current_.window->HideUnder();
        kept_.push_back(std::move(current_));
    }
    next.window->Show();
    current_ = std::move(next);
    screenName_ = name;
    // The least recently shown go first, closed as a screen on show is.
    while (kept_.size() > kKeptScreens) {
        Retire(std::move(kept_.front()));
        kept_.erase(kept_.begin());
    }
    return true;
}

}  // namespace zel::demo
