// The wide row copy: every length around the vector widths and the memcpy threshold, at
// every 4-byte misalignment of either side, copies exactly its pixels and nothing beyond.
#include <gtest/gtest.h>

#include "gdi/row_copy.h"
#include "gdi/surface.h"

namespace zel::gdi {
namespace {

constexpr uint32_t kFence = 0xAAAAAAAAu;
constexpr int kPad = 40;  // fence pixels on both sides of the destination run

TEST(RowCopy, ExactAtEveryLengthAndMisalignment) {
    const size_t lengths[] = {0, 1, 7, 255, 256, 257, 263, 264, 271, 800, 801, 1023, 4096 + 5};
    for (size_t n : lengths)
        for (int so = 0; so < 8; ++so)
            for (int dof = 0; dof < 8; ++dof) {
                PixelStore src(n + 8), dst(n + 8 + 2 * kPad, kFence);
                for (size_t i = 0; i < src.size(); ++i) src[i] = static_cast<uint32_t>(i * 2654435761u);
                CopyPixels(dst.data() + kPad + dof, src.data() + so, n);
                for (size_t i = 0; i < dst.size(); ++i) {
                    const bool in = i >= kPad + static_cast<size_t>(dof) && i < kPad + dof + n;
                    const uint32_t want = in ? src[i - kPad - dof + so] : kFence;
                    ASSERT_EQ(dst[i], want) << "n=" << n << " source offset " << so << " destination offset "
                                            << dof << " at " << i;
                }
            }
}

TEST(RowCopy, PixelStorageIsCacheLineAligned) {
    for (size_t n : {1u, 3u, 17u, 800u * 480u}) {
        PixelBuffer b(static_cast<int>(n), 1, 32);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(b.pixels.data()) % 64, 0u) << n;
    }
}

}  // namespace
}  // namespace zel::gdi
