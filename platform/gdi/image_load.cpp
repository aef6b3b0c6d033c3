// SHLoadDIBitmap: reads a .bmp or .png file by its wide path into a new 32-bpp bitmap.
#include <aygshell.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>

#include "gdi/image_cache.h"
#include "gdi/image_codec.h"
#include "gdi/objects.h"
#include "kernel/file.h"
#include "kernel/utf.h"

namespace zel::detail {
namespace {

// A legitimate file at the pixel limit is about as large as its decoded pixels; anything
// far beyond that is refused before it is read.
constexpr size_t kMaxFileBytes = size_t{512} << 20;

// Ported code writes "\\dir\\file.bmp": backslashes become slashes, so a leading one still
// means the root.
void Slashed(std::string& path) { std::replace(path.begin(), path.end(), '\\', '/'); }

void Complain(const char* name, const std::string& reason) {
    if (name) std::fprintf(stderr, "SHLoadDIBitmap: %s: %s\n", name, reason.c_str());
}

}  // namespace

DecodedImage DecodeImage(const uint8_t* data, size_t size, const ImageLimits& limits) {
    static const uint8_t kPngSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    if (data && size >= 2 && data[0] == 'B' && data[1] == 'M') return DecodeBmp(data, size, limits);
    if (data && size >= 8 && std::memcmp(data, kPngSignature, 8) == 0) return DecodePng(data, size, limits);
    DecodedImage result;
    result.error = !data || size == 0 ? "empty file" : "not a BMP or PNG file";
    return result;
}

HBITMAP LoadImageFromMemory(const uint8_t* data, size_t size, const char* nameForErrors) {
    DecodedImage image = DecodeImage(data, size);
    if (!image.ok()) {
        Complain(nameForErrors, image.error);
        return nullptr;
    }
    // Created empty and handed the decoded pixels, so they are never copied.
    gdi::Bitmap* bitmap = gdi::NewBitmap(0, 0, 32);
    bitmap->px = std::move(image.pixels);
    bitmap->zeroPending = false;
    return gdi::HandleOf<HBITMAP>(bitmap);
}

}  // namespace zel::detail

HBITMAP zel::detail::LoadBitmapFile(std::string name) {
    Slashed(name);
    std::string error;
    std::shared_ptr<const zel::gdi::PixelBuffer> image = DecodeFileCached(name, kMaxFileBytes, &error);
    if (!image) {
        Complain(name.c_str(), error);
        return nullptr;
    }
    // Every call gives a bitmap of its own (callers delete it), reading the shared decoded
    // pixels until something draws on it.
    zel::gdi::Bitmap* bitmap = zel::gdi::NewBitmap(0, 0, 32);
    bitmap->zeroPending = false;
    bitmap->px.width = image->width;
    bitmap->px.height = image->height;
    bitmap->shared = std::move(image);
    return zel::gdi::HandleOf<HBITMAP>(bitmap);
}

extern "C" HBITMAP SHLoadDIBitmap(LPCWSTR path) {
    if (!path) {
        zel::detail::Complain("(null)", "no path");
        return nullptr;
    }
    return zel::detail::LoadBitmapFile(zel::kernel::WideToUtf8(path));
}
