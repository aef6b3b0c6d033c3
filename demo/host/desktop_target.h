// Plays tours on the platform's desktop: pointer and keys through zel::Desktop, shots
// as PNG files of the composed screen.
#pragma once

#include <string>

#include "host/demo_app.h"
#include "tour/player.h"

namespace zel::demo {

class DesktopTarget : public TourTarget {
public:
    DesktopTarget(DemoApp& app, std::string outDir) : app_(app), outDir_(std::move(outDir)) {}

    bool ShowScreen(const std::string& name) override;
    void PointerDown(int x, int y) override;
    void PointerMove(int x, int y) override;
    void PointerUp(int x, int y) override;
    void KeyDown(UINT vk) override;
    void KeyUp(UINT vk) override;
    void Advance(DWORD ms) override;
    bool Shot(const std::string& screen, const std::string& shot) override;

private:
    DemoApp& app_;
    std::string outDir_;
};

}  // namespace zel::demo
