// Feeds arbitrary bytes to the BMP and PNG decoders. Beyond "no crash, no leak, no
// sanitizer report" it checks what every decoded image must satisfy: 32-bpp pixels with a
// zero top byte, and exact round trips through both encoders of SaveBitmap.
#include <windows.h>

#include <cstdio>
#include <cstdlib>

#include "gdi/image_codec.h"

namespace {

using zel::detail::DecodedImage;

[[noreturn]] void Finding(const char* what) {
    std::fprintf(stderr, "fuzz_images: %s\n", what);
    std::abort();
}

void CheckRoundTrip(const zel::gdi::PixelBuffer& px, const std::vector<uint8_t>& encoded, const char* format) {
    if (encoded.empty()) Finding(format);
    DecodedImage back = zel::detail::DecodeImage(encoded.data(), encoded.size());
    if (!back.ok() || back.pixels.width != px.width || back.pixels.height != px.height ||
        back.pixels.pixels != px.pixels)
        Finding(format);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // Smaller limits than the loader's keep each run fast; the checks are the same.
    zel::detail::ImageLimits limits;
    limits.maxSide = 4096;
    limits.maxPixelBytes = 16u << 20;
    DecodedImage image = zel::detail::DecodeImage(data, size, limits);
    if (!image.ok()) {
        if (!image.pixels.pixels.empty()) Finding("failed decode kept pixels");
        if (image.error.find('\n') != std::string::npos) Finding("error message spans lines");
        return 0;
    }
    const zel::gdi::PixelBuffer& px = image.pixels;
    if (px.bpp != 32 || px.width <= 0 || px.height <= 0 ||
        px.pixels.size() != static_cast<size_t>(px.width) * px.height)
        Finding("bad pixel buffer");
    for (uint32_t p : px.pixels)
        if (p >> 24) Finding("top byte not zero");

    if (px.pixels.size() <= 4096) {
        CheckRoundTrip(px, zel::detail::EncodePng(px), "PNG round trip");
        CheckRoundTrip(px, zel::detail::EncodeBmp(px), "BMP round trip");
    }

    HBITMAP bitmap = zel::detail::LoadImageFromMemory(data, size, nullptr);
    if (!bitmap) Finding("decodes but does not load");
    BITMAP bm{};
    if (GetObjectW(bitmap, sizeof bm, &bm) != sizeof bm || bm.bmWidth != px.width || bm.bmHeight != px.height ||
        bm.bmBitsPixel != 32)
        Finding("loaded bitmap differs");
    DeleteObject(bitmap);
    return 0;
}
