// The scroll bar and the slider (and its progress style).
#include <zel/desktop.h>

#include "CZELScrollbar.h"
#include "CZELSlider.h"
#include "family.h"

namespace zel::skintool {

namespace {

enum BarPiece { kUp, kUpPressed, kTrack, kThumb, kThumbPressed, kDown, kDownPressed };
constexpr COLORREF kThumbKey = RGB(255, 0, 255);
constexpr int kBarHeight = 240;  // a list's height on the 480-line screen

// The bar places its thumb cell when it paints, so the press waits for the first paint.
void PressAt(CWnd& control, int x, int y) {
    zel::Desktop::Get().RunUntilIdle();
    CRect rc;
    control.GetWindowRect(&rc);
    zel::Desktop::Get().PointerDown(rc.left + x, rc.top + y);
}

std::unique_ptr<CWnd> MakeScrollBar(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto bar = std::make_unique<CZELScrollbar>();
    if (!bar->Create(L"VSCrollBar", WS_CHILD | WS_VISIBLE, place, &parent, 9001)) return nullptr;
    bar->LoadSkin(skin.SkinString(0, 7), L"");
    bar->MoveWindow(place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
    bar->SetScrollRange(0, 100);
    bar->SetScrollPos(50);
    const int width = place.right - place.left, up = skin.sizes[kUp].cy, down = skin.sizes[kDown].cy;
    if (state == 1) PressAt(*bar, width / 2, up / 2);
    if (state == 2) PressAt(*bar, width / 2, kBarHeight / 2);
    if (state == 3) PressAt(*bar, width / 2, kBarHeight - down / 2 - 1);
    return bar;
}

std::unique_ptr<CWnd> MakeSlider(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t state) {
    auto slider = std::make_unique<CZELSlider>();
    if (!slider->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    slider->LoadSkin(skin.SkinString(0, 9), L"");
    slider->SetRange(0, 100);
    slider->SetPos(50);
    if (state == 1) PressCentre(*slider);  // the thumb sits in the middle at half range
    return slider;
}

std::unique_ptr<CWnd> MakeProgress(CWnd& parent, const RECT& place, const SpecimenSkin& skin, size_t) {
    auto bar = std::make_unique<CZELSlider>();
    if (!bar->Create(nullptr, L"", WS_CHILD | WS_VISIBLE, place, &parent, 1)) return nullptr;
    bar->LoadSkin(skin.SkinString(0, 2), L"");
    bar->SetRange(0, 100);
    bar->SetPos(40);
    return bar;
}

}  // namespace

// The scroll bar's rules follow its layout: the bar is as wide as the track, the arrows
// fill that width, the down arrow is assumed as tall as the up arrow, and the thumb is
// centred across the track at its bitmap size.
std::vector<SizeRule> ScrollBarRules(int first) {
    auto at = [first](std::vector<int> pieces) {
        for (int& p : pieces) p += first;
        return pieces;
    };
    return {{RuleKind::SameSize, at({kUp, kUpPressed, kDown, kDownPressed})},
            {RuleKind::SameWidth, at({kTrack, kUp})},
            {RuleKind::SameSize, at({kThumb, kThumbPressed})},
            {RuleKind::NoWider, at({kThumb, kTrack})}};
}

std::vector<Family> ScrollFamilies() {
    return {
        {"CZELScrollbar",
         {"up", "up pressed", "track", "thumb", "thumb pressed", "down", "down pressed"},
         nullptr,
         ScrollBarRules(0),
         {"normal", "up pressed", "thumb pressed", "down pressed"},
         [](const SpecimenSkin& skin) {
             return SIZE{skin.sizes[kTrack].cx, kBarHeight};
         },
         MakeScrollBar},
        {"CZELSlider",
         {"left cap", "right cap", "thumb", "thumb released", "thumb pressed", "filled channel", "empty channel",
          "left channel", "right channel"},
         nullptr,
         {{RuleKind::SameSize, {2, 3, 4}},
          {RuleKind::KeyColour, {2, 3, 4}, 0, 0, kThumbKey},
          {RuleKind::SameHeight, {0, 1, 6, 7, 8}}},
         {"normal", "pressed"},
         [](const SpecimenSkin& skin) {
             return SIZE{320, std::max(skin.sizes[0].cy, skin.sizes[2].cy)};
         },
         MakeSlider},
        // The slider given two pieces: its progress style.
        {"CZELSlider/progress",
         {"background", "fill"},
         nullptr,
         {{RuleKind::SameSize, {0, 1}}},
         {"40%"},
         [](const SpecimenSkin& skin) { return skin.sizes[0]; },
         MakeProgress},
    };
}

}  // namespace zel::skintool
