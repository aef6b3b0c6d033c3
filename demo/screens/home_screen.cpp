#include "screens/home_screen.h"

#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr int kTileWidth = 232, kTileHeight = 150, kTileGap = 24, kTileTop = 196;
constexpr int kTilesLeft = 24, kTilesRight = 776;
constexpr int kNarrowGap = 16;  // more than three tiles sit closer and narrower

}  // namespace

bool HomeScreen::Build(HWND host, const SkinSource&) {
    host_ = host;
    return true;
}

// Up to three tiles keep their full width; more share the row between the margins.
RECT HomeScreen::TileRect(size_t index) {
    const int tiles = static_cast<int>(Screens().size()) - 1;
    const int gap = tiles > 3 ? kNarrowGap : kTileGap;
    const int width = tiles > 3 ? (kTilesRight - kTilesLeft - (tiles - 1) * gap) / tiles : kTileWidth;
    const int left = kTilesLeft + static_cast<int>(index - 1) * (width + gap);
    return RECT{left, kTileTop, left + width, kTileTop + kTileHeight};
}

void HomeScreen::Paint(HDC frame) {
    DrawLabel(frame, L"Bitmap-skinned touch controls", RECT{24, 80, 776, 116}, headingFont_, kText);
    DrawLabel(frame,
              L"Each screen is a host window whose child controls report to it. Tap a tile or a tab; the strip "
              L"at the bottom shows the last notifications the host received.",
              RECT{24, 122, 600, 180}, textFont_, kTextDim, DT_LEFT | DT_TOP | DT_WORDBREAK);
    for (size_t i = 1; i < Screens().size(); ++i) {
        const RECT tile = TileRect(i);
        Panel(frame, tile, RGB(26, 32, 42), kFaceEdge, 20);
        FillBox(frame, RECT{tile.left + 20, tile.top + 20, tile.left + 56, tile.top + 24}, kAccent);
        DrawLabel(frame, Screens()[i].tab, RECT{tile.left + 20, tile.top + 32, tile.right - 20, tile.top + 64},
                  tileFont_, kText);
        DrawLabel(frame, Screens()[i].blurb, RECT{tile.left + 20, tile.top + 68, tile.right - 20, tile.bottom - 12},
                  textFont_, kTextDim, DT_LEFT | DT_TOP | DT_WORDBREAK);
    }
}

void HomeScreen::Tap(UINT message, POINT point) {
    if (message != WM_LBUTTONUP) return;
    for (size_t i = 1; i < Screens().size(); ++i) {
        const RECT tile = TileRect(i);
        if (PtInRect(&tile, point)) PostMessageW(host_, kNavigateMessage, i, 0);
    }
}

}  // namespace zel::demo
