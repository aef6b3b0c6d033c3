#include "host/desktop_target.h"

#include <zel/desktop.h>

namespace zel::demo {

namespace {
zel::Desktop& Desk() { return zel::Desktop::Get(); }
}  // namespace

// A new screen paints before anything else happens on it.
bool DesktopTarget::ShowScreen(const std::string& name) {
    if (!app_.Show(name)) return false;
    Desk().RunUntilIdle();
    return true;
}

void DesktopTarget::PointerDown(int x, int y) { Desk().PointerDown(x, y); }
void DesktopTarget::PointerMove(int x, int y) { Desk().PointerMove(x, y); }
void DesktopTarget::PointerUp(int x, int y) { Desk().PointerUp(x, y); }
void DesktopTarget::KeyDown(UINT vk) { Desk().KeyDown(vk); }
void DesktopTarget::KeyUp(UINT vk) { Desk().KeyUp(vk); }
void DesktopTarget::Advance(DWORD ms) { Desk().Advance(ms); }

bool DesktopTarget::Shot(const std::string& screen, const std::string& shot) {
    Desk().RunUntilIdle();
    std::string path = outDir_ + "/" + screen + "-" + shot + ".png";
    return Desk().SavePng(path.c_str());
}

}  // namespace zel::demo
