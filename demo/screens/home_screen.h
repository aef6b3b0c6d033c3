// The start screen: a short welcome and a tile for each of the other screens.
#pragma once

#include "host/paint_kit.h"
#include "host/screens.h"

namespace zel::demo {

class HomeScreen : public Screen {
public:
    bool Build(HWND host, const SkinSource& skin) override;
    void Paint(HDC frame) override;
    bool AnnouncesChanges() const override { return true; }
    void Tap(UINT message, POINT point) override;

    // The tile of Screens()[index] (index >= 1: the home screen has none).
    static RECT TileRect(size_t index);

private:
    HWND host_ = nullptr;
    Font headingFont_{26, FW_BOLD};
    Font textFont_{17};
    Font tileFont_{22, FW_BOLD};
    Font blurbFont_{15};  // on narrow tiles
};

}  // namespace zel::demo
