// Decoded image files shared by every bitmap loaded from them (SHLoadDIBitmap).
//
// Skins are loaded again on every screen show and state change; decoding is the cost, so
// decoded pixels are kept by path and checked against the file's size and modification
// time. An image lives as long as a bitmap still reads it (Bitmap::shared) or while it is
// among the most recently used images, up to kRecentImageBytes; a GDI bitmap exists only
// where a caller holds a handle, so live GDI counts never include the cache.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "gdi/surface.h"

namespace zel::detail {

constexpr size_t kRecentImageBytes = size_t{24} << 20;

// The decoded pixels of the file at `path` (UTF-8), decoding only when the file is not
// cached or has changed. nullptr on failure, with the reason in *error.
std::shared_ptr<const gdi::PixelBuffer> DecodeFileCached(const std::string& path, size_t maxFileBytes,
                                                          std::string* error);

struct ImageCacheStats {
    size_t images = 0;       // decoded images alive (kept recent or read by bitmaps)
    size_t recentBytes = 0;  // pixel bytes the cache itself keeps alive
    uint64_t decodes = 0;    // files decoded so far
    uint64_t hits = 0;       // loads served without decoding
};
ImageCacheStats ImageCacheState();
// Drops the cache's own references; images still read by bitmaps stay with them.
void FlushImageCache();

}  // namespace zel::detail
