// The default skin fits the controls that wear it: sizes that their layouts combine,
// outlines that match their window regions, key colours exactly where transparency is
// wanted, and pieces that survive being stretched.
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>

#include "skin/catalogue.h"
#include "skin/theme.h"
#include "support/leak_check.h"

namespace zel::demo {
namespace {

using theme::kKey;
using theme::kScreen;

const SkinPiece& Piece(const std::string& name) {
    for (const SkinPiece& p : DefaultSkin())
        if (p.name == name) return p;
    ADD_FAILURE() << "no piece " << name;
    static const SkinPiece none;
    return none;
}

// Rendered pixels, kept for the whole run: several tests look at the same pieces.
struct Pixels {
    int w = 0, h = 0;
    std::vector<COLORREF> colors;
    COLORREF at(int x, int y) const { return colors[static_cast<size_t>(y) * w + x]; }
};

const Pixels& Rendered(const std::string& name) {
    static std::map<std::string, Pixels> cache;
    auto it = cache.find(name);
    if (it == cache.end()) {
        Canvas c = RenderPiece(Piece(name));
        it = cache.emplace(name, Pixels{c.width(), c.height(), c.Colors()}).first;
    }
    return it->second;
}

std::vector<std::string> Family(const std::string& stem, std::initializer_list<const char*> states) {
    std::vector<std::string> names;
    for (const char* s : states) names.push_back(stem + s);
    return names;
}

SIZE SizeOf(const std::string& name) { return SIZE{Piece(name).width, Piece(name).height}; }

TEST(SkinCatalogue, NamesAreUniqueFileStemsAndResourceNames) {
    std::set<std::string> names, ids;
    const std::regex stem("[a-z][a-z0-9_]*");
    for (const SkinPiece& p : DefaultSkin()) {
        EXPECT_TRUE(std::regex_match(p.name, stem)) << p.name;
        EXPECT_TRUE(names.insert(p.name).second) << "duplicate " << p.name;
        EXPECT_TRUE(ids.insert(ResourceName(p.name)).second) << "duplicate " << ResourceName(p.name);
        EXPECT_GT(p.width, 0) << p.name;
        EXPECT_GT(p.height, 0) << p.name;
    }
    EXPECT_EQ(ResourceName("scroll_up_pressed"), "IDB_SCROLL_UP_PRESSED");
}

// Pieces a control lays out together must agree on the sizes its layout assumes. The
// rules zel-skin knows (states of one size, the push buttons' 78 x 76, the scroll bar's
// widths, the slider's frame heights) are its check of this skin (tests/tools); here, the
// rest.
TEST(SkinCatalogue, SizesFitTheControlLayouts) {
    EXPECT_EQ(SizeOf("background").cx, theme::kScreenWidth);
    EXPECT_EQ(SizeOf("background").cy, theme::kScreenHeight);
    // The slider is as tall as its left cap: the thumb fits it, the fill is thinner.
    const int height = SizeOf("slider_left_cap").cy;
    EXPECT_LE(SizeOf("slider_thumb").cy, height);
    EXPECT_LT(SizeOf("slider_channel_fill").cy, height);
}

class SkinRenderingAll : public zel::test::LeakChecked {};

TEST_F(SkinRenderingAll, EveryPieceRendersAtItsSizeAndReleasesWhatItUsed) {
    for (const SkinPiece& p : DefaultSkin()) {
        Canvas c = RenderPiece(p);
        ASSERT_TRUE(c.ok()) << p.name;
        EXPECT_EQ(c.width(), p.width) << p.name;
        EXPECT_EQ(c.height(), p.height) << p.name;
    }
}

// Opaque pieces are blitted as they are: a key-coloured pixel would show as magenta.
TEST(SkinRendering, OnlyKeyedPiecesHoldTheKeyColour) {
    for (const SkinPiece& p : DefaultSkin()) {
        if (p.silhouette) continue;
        const Pixels& px = Rendered(p.name);
        auto key = std::find(px.colors.begin(), px.colors.end(), kKey);
        EXPECT_EQ(key, px.colors.end()) << p.name << " has the key colour at index " << (key - px.colors.begin());
    }
}

// The shaped button keeps, per row, the span from the first to the last pixel that differs
// from pixel (0, 0): a key pixel inside that span would be part of the button and show.
// Its other states are drawn through the normal state's region, so they share its outline.
// The play and pause buttons swap skins on one window, so they share the outline as well.
TEST(SkinRendering, ShapedButtonIsOneSpanPerRowInEveryState) {
    const Pixels& normal = Rendered("round_play_normal");
    ASSERT_EQ(normal.at(0, 0), kKey);
    EXPECT_NE(normal.at(normal.w / 2, normal.h / 2), kKey);
    std::vector<std::string> states = Family("round_play_", {"normal", "focus", "pressed", "disabled"});
    for (const std::string& n : Family("round_pause_", {"normal", "focus", "pressed", "disabled"})) states.push_back(n);
    for (const std::string& n : states) {
        const Pixels& px = Rendered(n);
        for (int y = 0; y < px.h; ++y) {
            int first = -1, last = -1;
            for (int x = 0; x < px.w; ++x)
                if (px.at(x, y) != kKey) last = x, first = first < 0 ? x : first;
            for (int x = first; first >= 0 && x <= last; ++x)
                ASSERT_NE(px.at(x, y), kKey) << n << ": key pixel inside row " << y << " at x=" << x;
            for (int x = 0; x < px.w; ++x)
                ASSERT_EQ(px.at(x, y) == kKey, normal.at(x, y) == kKey) << n << " outline differs at " << x << "," << y;
        }
    }
}

// A transparent blit drops exactly the key; a pixel merely close to it is a pink fringe.
TEST(SkinRendering, KeyedPiecesHaveNoFringeNearTheKey) {
    for (const SkinPiece& p : DefaultSkin()) {
        if (!p.silhouette) continue;
        const Pixels& px = Rendered(p.name);
        EXPECT_EQ(px.at(0, 0), kKey) << p.name;
        EXPECT_EQ(px.at(px.w - 1, px.h - 1), kKey) << p.name;
        int opaque = 0;
        for (int y = 0; y < px.h; ++y)
            for (int x = 0; x < px.w; ++x) {
                COLORREF c = px.at(x, y);
                if (c == kKey) continue;
                ++opaque;
                bool pinkish = GetRValue(c) > 160 && GetBValue(c) > 160 && GetGValue(c) < 100;
                EXPECT_FALSE(pinkish) << p.name << " at " << x << "," << y << ": " << std::hex << c;
            }
        EXPECT_GT(opaque, px.w * px.h / 3) << p.name;
    }
}

// The face fills the push button's window region exactly: (0,4)-(78,72) with three steps
// cut at each corner. Nothing inside shows the screen, nothing outside is face.
TEST(SkinRendering, PushButtonFaceMatchesItsWindowRegion) {
    const RECT parts[] = {{0, 4, 78, 72}, {4, 0, 74, 1},  {2, 1, 76, 2},  {1, 2, 77, 4},
                          {4, 75, 74, 76}, {2, 74, 76, 75}, {1, 72, 77, 74}};
    auto inside = [&](int x, int y) {
        for (const RECT& r : parts)
            if (x >= r.left && x < r.right && y >= r.top && y < r.bottom) return true;
        return false;
    };
    for (const char* state : {"normal", "focus", "pressed", "disabled"}) {
        const Pixels& px = Rendered(std::string("button_plus_") + state);
        for (int y = 0; y < px.h; ++y)
            for (int x = 0; x < px.w; ++x)
                ASSERT_EQ(px.at(x, y) != kScreen, inside(x, y)) << state << " at " << x << "," << y;
    }
}

// Stretched pieces must not change along the stretch: the scroll track is stretched
// vertically, the slider's channel and fill and the progress background horizontally.
TEST(SkinRendering, StretchedPiecesAreUniformAlongTheStretch) {
    const Pixels& track = Rendered("scroll_track");
    for (int y = 1; y < track.h; ++y)
        for (int x = 0; x < track.w; ++x) ASSERT_EQ(track.at(x, y), track.at(x, 0)) << "track at " << x << "," << y;
    for (const char* n : {"slider_channel", "slider_channel_fill"}) {
        const Pixels& px = Rendered(n);
        for (int y = 0; y < px.h; ++y)
            for (int x = 1; x < px.w; ++x) ASSERT_EQ(px.at(x, y), px.at(0, y)) << n << " at " << x << "," << y;
    }
    const Pixels& back = Rendered("progress_back");
    for (int y = 0; y < back.h; ++y)
        for (int x = 20; x < back.w - 20; ++x) ASSERT_EQ(back.at(x, y), back.at(20, y)) << "progress at " << x << "," << y;
}

// The slider draws the fill centred in the channel at its own height: those rows must be
// the groove of the empty channel, and the rows around them the plain screen.
TEST(SkinRendering, SliderFillLinesUpWithTheChannelGroove) {
    const Pixels& channel = Rendered("slider_channel");
    const int fillHeight = SizeOf("slider_channel_fill").cy;
    const int top = (channel.h - fillHeight) / 2;
    for (int y = 0; y < channel.h; ++y) {
        bool groove = y >= top && y < top + fillHeight;
        EXPECT_EQ(channel.at(0, y) != kScreen, groove) << "row " << y;
    }
}

// The thumb is blitted opaquely over the track, centred across it: around its rounded
// pill (the top and bottom rows) it must show the track it covers, groove included.
TEST(SkinRendering, ScrollThumbContinuesTheTrackAroundItsPill) {
    const Pixels& track = Rendered("scroll_track");
    for (const char* n : {"scroll_thumb", "scroll_thumb_pressed"}) {
        const Pixels& thumb = Rendered(n);
        const int left = (track.w - thumb.w) / 2;
        for (int y : {0, thumb.h - 1})
            for (int x = 0; x < thumb.w; ++x)
                EXPECT_EQ(thumb.at(x, y), track.at(left + x, 0)) << n << " at " << x << "," << y;
    }
}

}  // namespace
}  // namespace zel::demo
