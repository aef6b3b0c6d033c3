// Rasterised glyphs, shared by every realized font of the same face, size and rendering,
// kept in one least-recently-used cache bounded in bytes (8 MiB unless changed), so
// repeated drawing never re-rasterises and many sizes or scripts cannot grow without limit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <unordered_map>
#include <vector>

namespace zel::text {

// A glyph's coverage: one byte per pixel, 0..255 (monochrome glyphs use only 0 and 255),
// and the same as horizontal runs of pixels covered at least half, which is all that
// monochrome drawing needs.
struct GlyphImage {
    int left = 0;    // from the pen position to the first column
    int top = 0;     // from the baseline up to the first row
    int width = 0;
    int height = 0;
    int advance = 0;  // the advance of the glyph as hinted for this rendering
    std::vector<uint8_t> coverage;  // width * height, rows top to bottom
    std::vector<uint16_t> runs;     // [begin, end) column pairs, row after row
    std::vector<uint32_t> rowRuns;  // height + 1 offsets into runs

    void BuildRuns();
    size_t Bytes() const {
        return coverage.size() + runs.size() * sizeof(uint16_t) + rowRuns.size() * sizeof(uint32_t) +
               sizeof(GlyphImage) + 64;
    }
};

class GlyphCache {
public:
    static GlyphCache& Get();

    // A key names one glyph of one "strike" (face file, pixel size and rendering choices).
    static uint64_t Key(uint32_t strike, uint32_t glyph) { return (uint64_t{strike} << 32) | glyph; }

    // The cached image, or the result of `render()` (a std::unique_ptr<GlyphImage>, cached
    // unless null). The pointer stays valid until an eviction (see Epoch), at least until
    // the next call of Find.
    template <class Render>
    const GlyphImage* Find(uint64_t key, Render&& render) {
        if (const GlyphImage* hit = Lookup(key)) return hit;
        ++renders_;
        std::unique_ptr<GlyphImage> image = render();
        return image ? Insert(key, std::move(image)) : nullptr;
    }

    void SetLimit(size_t bytes);
    size_t Limit() const { return limit_; }
    size_t Bytes() const { return bytes_; }
    size_t Count() const { return map_.size(); }
    // Changes whenever an image is evicted: pointers kept from earlier calls of Find are
    // valid while the epoch is unchanged.
    uint64_t Epoch() const { return epoch_; }
    uint64_t Renders() const { return renders_; }  // how many times `render` ran
    void Clear();

private:
    struct Entry {
        uint64_t key;
        std::unique_ptr<const GlyphImage> image;
    };
    const GlyphImage* Lookup(uint64_t key);
    const GlyphImage* Insert(uint64_t key, std::unique_ptr<GlyphImage> image);
    void Trim();

    size_t limit_ = 8u << 20;
    size_t bytes_ = 0;
    uint64_t renders_ = 0;
    uint64_t epoch_ = 1;
    std::list<Entry> lru_;  // most recently used first
    std::unordered_map<uint64_t, std::list<Entry>::iterator> map_;
};

// Strike numbers for glyph cache keys: one per distinct (face file, horizontal stretch
// (16.16), pixel size, rendering flags) in the process.
uint32_t StrikeId(uint32_t faceId, long xScale, int ppem, uint32_t flags);

}  // namespace zel::text
