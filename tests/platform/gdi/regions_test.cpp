// Regions: CombineRgn and friends as set algebra over a fixture of edge cases, their
// return codes, and filling and clipping with regions.
#include <algorithm>
#include <cstring>
#include <functional>
#include <vector>

#include "shape_canvas.h"
#include "support/leak_check.h"

namespace {

using namespace zel::test;
using Regions = LeakChecked;

// Empty, degenerate, plain, touching, overlapping, inverted, negative, single pixel.
const RECT kCases[] = {{0, 0, 0, 0}, {3, 3, 3, 8}, {2, 5, 9, 5}, {1, 1, 6, 5},   {6, 1, 10, 5},
                       {1, 5, 6, 8}, {4, 3, 8, 7}, {9, 8, 2, 2}, {-4, -3, 3, 2}, {2, 2, 3, 3}};
constexpr int kX0 = -6, kX1 = 12, kY0 = -5, kY1 = 10;  // the grid checked, wider than every case

bool InRect(const RECT& r, int x, int y) {
    return x >= std::min(r.left, r.right) && x < std::max(r.left, r.right) && y >= std::min(r.top, r.bottom) &&
           y < std::max(r.top, r.bottom);
}

// The code and box must agree with the membership: NULLREGION and box 0,0,0,0 when empty,
// SIMPLEREGION when it fills its box, COMPLEXREGION otherwise.
void ExpectConsistent(HRGN rgn, int code) {
    int count = 0;
    RECT ink{kX1, kY1, kX0, kY0};
    for (int y = kY0; y < kY1; ++y)
        for (int x = kX0; x < kX1; ++x)
            if (PtInRegion(rgn, x, y)) {
                ++count;
                ink = RECT{std::min<LONG>(ink.left, x), std::min<LONG>(ink.top, y), std::max<LONG>(ink.right, x + 1),
                           std::max<LONG>(ink.bottom, y + 1)};
            }
    if (!count) ink = RECT{0, 0, 0, 0};
    const int expect = !count ? NULLREGION
                              : count == (ink.right - ink.left) * (ink.bottom - ink.top) ? SIMPLEREGION : COMPLEXREGION;
    RECT box{-1, -1, -1, -1};
    EXPECT_EQ(GetRgnBox(rgn, &box), code);
    EXPECT_EQ(code, expect);
    EXPECT_TRUE(EqualRect(&box, &ink));
}

TEST_F(Regions, CombineIsSetAlgebraForEveryPairAndMode) {
    const std::pair<int, std::function<bool(bool, bool)>> modes[] = {
        {RGN_AND, [](bool a, bool b) { return a && b; }}, {RGN_OR, [](bool a, bool b) { return a || b; }},
        {RGN_XOR, [](bool a, bool b) { return a != b; }}, {RGN_DIFF, [](bool a, bool b) { return a && !b; }}};
    for (const RECT& a : kCases)
        for (const RECT& b : kCases)
            for (const auto& [mode, op] : modes) {
                SCOPED_TRACE(testing::Message() << "mode " << mode << " a " << a.left << "," << a.top << " b "
                                                << b.left << "," << b.top);
                HRGN ra = CreateRectRgnIndirect(&a), rb = CreateRectRgnIndirect(&b), d = CreateRectRgn(0, 0, 9, 9);
                const int code = CombineRgn(d, ra, rb, mode);
                for (int y = kY0; y < kY1; ++y)
                    for (int x = kX0; x < kX1; ++x)
                        ASSERT_EQ(PtInRegion(d, x, y) != 0, op(InRect(a, x, y), InRect(b, x, y))) << x << "," << y;
                ExpectConsistent(d, code);
                HRGN fresh = CreateRectRgnIndirect(&a);
                EXPECT_TRUE(EqualRgn(ra, fresh)) << "the source is unchanged";
                DeleteObject(fresh);
                // The destination may be one of the sources.
                EXPECT_EQ(CombineRgn(ra, ra, rb, mode), code);
                EXPECT_TRUE(EqualRgn(ra, d));
                DeleteObject(ra);
                DeleteObject(rb);
                DeleteObject(d);
            }
}

TEST_F(Regions, RectRegionsNormaliseCopyAndOffset) {
    for (const RECT& r : kCases) {
        HRGN rgn = CreateRectRgn(r.left, r.top, r.right, r.bottom);
        HRGN swapped = CreateRectRgn(r.right, r.bottom, r.left, r.top), copy = CreateRectRgn(0, 0, 0, 0);
        const int code = r.left == r.right || r.top == r.bottom ? NULLREGION : SIMPLEREGION;
        ExpectConsistent(rgn, code);
        EXPECT_TRUE(EqualRgn(rgn, swapped)) << "all empty regions are equal, too";
        EXPECT_EQ(CombineRgn(copy, rgn, nullptr, RGN_COPY), code);
        EXPECT_EQ(OffsetRgn(copy, -3, 4), code);
        for (int y = kY0; y < kY1; ++y)
            for (int x = kX0; x < kX1; ++x) EXPECT_EQ(PtInRegion(copy, x - 3, y + 4), PtInRegion(rgn, x, y));
        DeleteObject(rgn);
        DeleteObject(swapped);
        DeleteObject(copy);
    }
}

TEST_F(Regions, BadModesAndHandlesFailWithoutTouchingTheDestination) {
    HRGN a = CreateRectRgn(1, 2, 3, 4), d = CreateRectRgn(5, 5, 7, 7), stale = CreateRectRgn(0, 0, 1, 1);
    DeleteObject(stale);
    EXPECT_EQ(CombineRgn(d, a, a, 0), ERROR);
    EXPECT_EQ(CombineRgn(d, a, a, 6), ERROR);
    EXPECT_EQ(CombineRgn(d, a, nullptr, RGN_AND), ERROR);
    EXPECT_EQ(CombineRgn(d, stale, a, RGN_OR), ERROR);
    RECT box;
    EXPECT_EQ(GetRgnBox(d, &box), SIMPLEREGION);
    EXPECT_EQ(box.left, 5);
    EXPECT_EQ(GetRgnBox(stale, &box), ERROR);
    EXPECT_EQ(EqualRgn(stale, a), ERROR);
    const RECT touching{3, 2, 9, 4}, overlap{2, 3, 9, 9};
    EXPECT_FALSE(RectInRegion(a, &touching));
    EXPECT_TRUE(RectInRegion(a, &overlap));
    DeleteObject(a);
    DeleteObject(d);
}

// FillRgn copies the given brush onto exactly the region's pixels; PaintRgn uses the
// DC's brush and mix mode.
TEST_F(Regions, FillAndPaintCoverExactlyTheRegion) {
    HRGN a = CreateRectRgn(1, 1, 6, 5), b = CreateRectRgn(4, 3, 8, 7);
    CombineRgn(a, a, b, RGN_XOR);
    ShapeCanvas c(10, 9);
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    SetROP2(c.dc(), R2_NOT);
    EXPECT_TRUE(FillRgn(c.dc(), a, red));
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 10; ++x)
            EXPECT_EQ(GetPixel(c.dc(), x, y), PtInRegion(a, x, y) ? RGB(255, 0, 0) : kSentinel) << x << "," << y;
    EXPECT_TRUE(PaintRgn(c.dc(), a));
    EXPECT_EQ(GetPixel(c.dc(), 1, 1), RGB(0, 255, 255));
    EXPECT_FALSE(FillRgn(c.dc(), a, nullptr));
    DeleteObject(red);
    DeleteObject(a);
    DeleteObject(b);
}

// Combining with a DC that has no clip region combines with its whole surface.
TEST_F(Regions, ClipWithoutAClipRegionMeansTheWholeSurface) {
    HRGN r = CreateRectRgn(2, 1, 5, 3);
    const struct {
        int mode, code;
        bool inside, outside;  // drawable inside r / outside r
    } cases[] = {{RGN_AND, SIMPLEREGION, true, false},
                 {RGN_OR, SIMPLEREGION, true, true},
                 {RGN_DIFF, COMPLEXREGION, false, true},
                 {RGN_XOR, COMPLEXREGION, false, true}};
    for (const auto& t : cases) {
        ShapeCanvas c(8, 5, false, 0);
        EXPECT_EQ(ExtSelectClipRgn(c.dc(), r, t.mode), t.code) << "mode " << t.mode;
        PatBlt(c.dc(), 0, 0, 8, 5, WHITENESS);
        SelectClipRgn(c.dc(), nullptr);
        EXPECT_EQ(GetPixel(c.dc(), 3, 2) != 0, t.inside) << "mode " << t.mode;
        EXPECT_EQ(GetPixel(c.dc(), 6, 4) != 0, t.outside) << "mode " << t.mode;
        EXPECT_EQ(ExtSelectClipRgn(c.dc(), nullptr, RGN_AND), ERROR);
    }
    DeleteObject(r);
}

}  // namespace

namespace {

// ExtCreateRegion from rectangle data equals the union of the same rectangles made one by
// one with CombineRgn; malformed data fails.
std::vector<unsigned char> RegionData(const std::vector<RECT>& rects, DWORD size = sizeof(RGNDATAHEADER),
                                      DWORD type = RDH_RECTANGLES) {
    std::vector<unsigned char> data(sizeof(RGNDATAHEADER) + rects.size() * sizeof(RECT));
    RGNDATAHEADER h{size, type, static_cast<DWORD>(rects.size()), static_cast<DWORD>(rects.size() * sizeof(RECT)),
                    {0, 0, 0, 0}};
    std::memcpy(data.data(), &h, sizeof h);
    if (!rects.empty()) std::memcpy(data.data() + sizeof h, rects.data(), rects.size() * sizeof(RECT));
    return data;
}

TEST_F(Regions, ExtCreateRegionIsTheUnionOfItsRectangles) {
    const std::vector<RECT> all(std::begin(kCases), std::end(kCases));
    for (size_t n = 0; n <= all.size(); ++n) {
        const std::vector<RECT> some(all.begin(), all.begin() + n);
        const auto data = RegionData(some);
        HRGN made = ExtCreateRegion(nullptr, static_cast<DWORD>(data.size()), reinterpret_cast<const RGNDATA*>(data.data()));
        ASSERT_NE(made, nullptr) << n;
        HRGN want = CreateRectRgn(0, 0, 0, 0);
        for (const RECT& r : some) {
            HRGN one = CreateRectRgnIndirect(&r);
            CombineRgn(want, want, one, RGN_OR);
            DeleteObject(one);
        }
        EXPECT_TRUE(EqualRgn(made, want)) << n << " rectangles";
        DeleteObject(made);
        DeleteObject(want);
    }
}

TEST_F(Regions, ExtCreateRegionRefusesMalformedData) {
    const std::vector<RECT> two{{0, 0, 4, 4}, {2, 2, 6, 6}};
    const auto good = RegionData(two);
    const auto rgn = [](const std::vector<unsigned char>& d) { return reinterpret_cast<const RGNDATA*>(d.data()); };
    EXPECT_EQ(ExtCreateRegion(nullptr, static_cast<DWORD>(good.size()) - 1, rgn(good)), nullptr) << "short";
    EXPECT_EQ(ExtCreateRegion(nullptr, 0, rgn(good)), nullptr) << "no header";
    EXPECT_EQ(ExtCreateRegion(nullptr, static_cast<DWORD>(good.size()), nullptr), nullptr) << "no data";
    const auto badSize = RegionData(two, 12), badType = RegionData(two, sizeof(RGNDATAHEADER), 2);
    EXPECT_EQ(ExtCreateRegion(nullptr, static_cast<DWORD>(badSize.size()), rgn(badSize)), nullptr) << "header size";
    EXPECT_EQ(ExtCreateRegion(nullptr, static_cast<DWORD>(badType.size()), rgn(badType)), nullptr) << "type";
}

}  // namespace
