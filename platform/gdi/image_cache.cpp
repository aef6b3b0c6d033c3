#include "gdi/image_cache.h"

#include <sys/stat.h>

#include <algorithm>
#include <list>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "gdi/image_codec.h"
#include "kernel/file.h"

namespace zel::detail {

namespace {

// What identifies one version of a file.
struct Stamp {
    int64_t size = -1;
    int64_t mtimeNs = 0;
    dev_t dev = 0;
    ino_t ino = 0;
    bool operator==(const Stamp&) const = default;
};

std::optional<Stamp> StampOf(const std::string& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return std::nullopt;
    return Stamp{st.st_size, int64_t{st.st_mtim.tv_sec} * 1000000000 + st.st_mtim.tv_nsec, st.st_dev, st.st_ino};
}

using Image = std::shared_ptr<const gdi::PixelBuffer>;

size_t BytesOf(const Image& image) { return image->pixels.size() * sizeof(uint32_t); }

class Cache {
public:
    Image Find(const std::string& path, const Stamp& stamp) {
        auto it = byPath_.find(path);
        if (it == byPath_.end() || !(it->second.stamp == stamp)) return nullptr;
        Image image = it->second.image.lock();
        if (!image) return nullptr;
        ++stats_.hits;
        Touch(image);
        return image;
    }

    void Add(const std::string& path, const Stamp& stamp, const Image& image) {
        // Entries whose images died with their last bitmap go first.
        std::erase_if(byPath_, [](const auto& e) { return e.second.image.expired(); });
        byPath_[path] = Entry{stamp, image};
        Touch(image);
    }

    void Counted() { ++stats_.decodes; }

    ImageCacheStats Stats() {
        ImageCacheStats s = stats_;
        s.images = static_cast<size_t>(
            std::count_if(byPath_.begin(), byPath_.end(), [](const auto& e) { return !e.second.image.expired(); }));
        s.recentBytes = recentBytes_;
        return s;
    }

    void Flush() {
        recent_.clear();
        recentBytes_ = 0;
        std::erase_if(byPath_, [](const auto& e) { return e.second.image.expired(); });
    }

    std::mutex mutex;

private:
    struct Entry {
        Stamp stamp;
        std::weak_ptr<const gdi::PixelBuffer> image;
    };

    // Most recently used first; the oldest go while over budget, but never the newest.
    void Touch(const Image& image) {
        auto at = std::find(recent_.begin(), recent_.end(), image);
        if (at != recent_.end()) {
            recent_.splice(recent_.begin(), recent_, at);
            return;
        }
        recent_.push_front(image);
        recentBytes_ += BytesOf(image);
        while (recentBytes_ > kRecentImageBytes && recent_.size() > 1) {
            recentBytes_ -= BytesOf(recent_.back());
            recent_.pop_back();
        }
    }

    std::unordered_map<std::string, Entry> byPath_;
    std::list<Image> recent_;
    size_t recentBytes_ = 0;
    ImageCacheStats stats_;
};

Cache& TheCache() {
    static Cache* cache = new Cache;  // never destroyed: bitmaps may outlive static teardown
    return *cache;
}

}  // namespace

std::shared_ptr<const gdi::PixelBuffer> DecodeFileCached(const std::string& path, size_t maxFileBytes,
                                                          std::string* error) {
    Cache& cache = TheCache();
    // Stamped before reading: a file replaced meanwhile only costs a decode next time.
    const std::optional<Stamp> stamp = StampOf(path);
    if (stamp) {
        std::lock_guard lock(cache.mutex);
        if (Image image = cache.Find(path, *stamp)) return image;
    }
    std::optional<std::string> bytes = kernel::ReadWholeFile(path, maxFileBytes, error);
    if (!bytes) return nullptr;
    DecodedImage decoded = DecodeImage(reinterpret_cast<const uint8_t*>(bytes->data()), bytes->size());
    if (!decoded.ok()) {
        if (error) *error = decoded.error;
        return nullptr;
    }
    auto image = std::make_shared<const gdi::PixelBuffer>(std::move(decoded.pixels));
    std::lock_guard lock(cache.mutex);
    cache.Counted();
    if (stamp) cache.Add(path, *stamp, image);
    return image;
}

ImageCacheStats ImageCacheState() {
    std::lock_guard lock(TheCache().mutex);
    return TheCache().Stats();
}

void FlushImageCache() {
    std::lock_guard lock(TheCache().mutex);
    TheCache().Flush();
}

}  // namespace zel::detail
