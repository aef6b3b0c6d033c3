// The bounded glyph cache.
#include "gdi/text/glyph_cache.h"

#include <map>
#include <tuple>

namespace zel::text {

GlyphCache& GlyphCache::Get() {
    static auto* cache = new GlyphCache();  // outlives every static that might draw text
    return *cache;
}

const GlyphImage* GlyphCache::Lookup(uint64_t key) {
    auto it = map_.find(key);
    if (it == map_.end()) return nullptr;
    lru_.splice(lru_.begin(), lru_, it->second);
    return it->second->image.get();
}

const GlyphImage* GlyphCache::Insert(uint64_t key, std::unique_ptr<GlyphImage> image) {
    bytes_ += image->Bytes();
    lru_.push_front(Entry{key, std::move(image)});
    map_.emplace(key, lru_.begin());
    Trim();
    return lru_.front().image.get();
}

void GlyphCache::SetLimit(size_t bytes) {
    limit_ = bytes;
    Trim();
}

void GlyphImage::BuildRuns() {
    runs.clear();
    rowRuns.assign(static_cast<size_t>(height) + 1, 0);
    for (int y = 0; y < height; ++y) {
        const uint8_t* row = coverage.data() + static_cast<size_t>(y) * width;
        for (int x = 0; x < width;) {
            if (row[x] < 128) {
                ++x;
                continue;
            }
            int begin = x;
            while (x < width && row[x] >= 128) ++x;
            runs.push_back(static_cast<uint16_t>(begin));
            runs.push_back(static_cast<uint16_t>(x));
        }
        rowRuns[y + 1] = static_cast<uint32_t>(runs.size());
    }
}

void GlyphCache::Clear() {
    ++epoch_;
    lru_.clear();
    map_.clear();
    bytes_ = 0;
}

// The newest entry is never evicted: its caller is about to draw it.
void GlyphCache::Trim() {
    while (bytes_ > limit_ && lru_.size() > 1) {
        ++epoch_;
        const Entry& last = lru_.back();
        bytes_ -= last.image->Bytes();
        map_.erase(last.key);
        lru_.pop_back();
    }
}

uint32_t StrikeId(uint32_t faceId, long xScale, int ppem, uint32_t flags) {
    static auto* ids = new std::map<std::tuple<uint32_t, long, int, uint32_t>, uint32_t>();
    auto key = std::make_tuple(faceId, xScale, ppem, flags);
    auto it = ids->find(key);
    if (it != ids->end()) return it->second;
    uint32_t id = static_cast<uint32_t>(ids->size()) + 1;
    ids->emplace(key, id);
    return id;
}

}  // namespace zel::text
