#include "screens/home_screen.h"

#include "skin/theme.h"

namespace zel::demo {

namespace {

using namespace theme;

constexpr int kTileWidth = 232, kTileHeight = 150, kTileGap = 24, kTileTop = 196;
// From four screens on, four narrower tiles a row; a second row makes them shorter.
constexpr int kNarrowColumns = 4, kNarrowWidth = 176, kNarrowGap = 16, kShortHeight = 114, kRowGap = 12;

struct Grid {
    int columns, width, gap, height;
};

Grid TileGrid() {
    int count = -1;  // the home screen has no tile
    for (const ScreenInfo& s : Screens()) count += s.tab != nullptr;
    if (count <= 3) return Grid{3, kTileWidth, kTileGap, kTileHeight};
    return Grid{kNarrowColumns, kNarrowWidth, kNarrowGap, count > kNarrowColumns ? kShortHeight : kTileHeight};
}

}  // namespace

bool HomeScreen::Build(HWND host, const SkinSource&) {
    host_ = host;
    return true;
}

// Up to three tiles keep their full width; more share the row between the margins.
RECT HomeScreen::TileRect(size_t index) {
    const Grid g = TileGrid();
    const int i = static_cast<int>(index - 1);
    const int left = 24 + (i % g.columns) * (g.width + g.gap);
    const int top = (g.height == kTileHeight ? kTileTop : kTileTop - 8) + (i / g.columns) * (g.height + kRowGap);
    return RECT{left, top, left + g.width, top + g.height};
}

void HomeScreen::Paint(HDC frame) {
    DrawLabel(frame, L"Bitmap-skinned touch controls", RECT{24, 80, 776, 116}, headingFont_, kText);
    DrawLabel(frame,
              L"Each screen is a host window whose child controls report to it. Tap a tile or a tab; the strip "
              L"at the bottom shows the last notifications the host received.",
              RECT{24, 122, 600, 180}, textFont_, kTextDim, DT_LEFT | DT_TOP | DT_WORDBREAK);
    for (size_t i = 1; i < Screens().size() && Screens()[i].tab; ++i) {
        const RECT tile = TileRect(i);
        const bool narrow = tile.right - tile.left < kTileWidth, tall = tile.bottom - tile.top == kTileHeight;
        const int pad = narrow ? 14 : 20, bar = tall ? 20 : 12, name = tall ? 32 : 20;
        Panel(frame, tile, RGB(26, 32, 42), kFaceEdge, 20);
        FillBox(frame, RECT{tile.left + pad, tile.top + bar, tile.left + pad + 36, tile.top + bar + 4}, kAccent);
        const RECT nameBox{tile.left + pad, tile.top + name, tile.right - pad, tile.top + name + 32};
        DrawLabel(frame, Screens()[i].tab, nameBox, tileFont_, kText);
        DrawLabel(frame, Screens()[i].blurb,
                  RECT{tile.left + pad, tile.top + name + 36, tile.right - pad, tile.bottom - 10},
                  narrow ? blurbFont_ : textFont_, kTextDim, DT_LEFT | DT_TOP | DT_WORDBREAK);
    }
}

void HomeScreen::Tap(UINT message, POINT point) {
    if (message != WM_LBUTTONUP) return;
    for (size_t i = 1; i < Screens().size() && Screens()[i].tab; ++i) {
        const RECT tile = TileRect(i);
        if (PtInRect(&tile, point)) PostMessageW(host_, kNavigateMessage, i, 0);
    }
}

}  // namespace zel::demo
