// Image decoding and encoding behind SHLoadDIBitmap and zel::SaveBitmap.
//
// Decoders work on bytes in memory and produce a 32-bpp PixelBuffer (0x00RRGGBB) or a
// one-line reason; only LoadImageFromMemory creates a GDI object. Every header field is
// validated before anything proportional to the image size is allocated.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "gdi/surface.h"

namespace zel::detail {

struct ImageLimits {
    int maxSide = 16384;                       // pixels, either axis
    uint64_t maxPixelBytes = uint64_t{256} << 20;  // decoded storage, 4 bytes a pixel
};

struct DecodedImage {
    gdi::PixelBuffer pixels;  // 32 bpp when ok()
    std::string error;        // why decoding failed; empty on success
    bool ok() const { return error.empty(); }
};

// Sniffs the signature ("BM" or the PNG signature) and decodes.
DecodedImage DecodeImage(const uint8_t* data, size_t size, const ImageLimits& limits = {});
DecodedImage DecodeBmp(const uint8_t* data, size_t size, const ImageLimits& limits = {});
DecodedImage DecodePng(const uint8_t* data, size_t size, const ImageLimits& limits = {});

// The reason a width x height image is refused, or empty when it is within the limits.
std::string CheckDimensions(int64_t width, int64_t height, const ImageLimits& limits);

// Decodes into a new 32-bpp bitmap. On failure returns NULL and, unless nameForErrors is
// NULL, writes one line "SHLoadDIBitmap: <name>: <reason>" to stderr.
ZEL_API HBITMAP LoadImageFromMemory(const uint8_t* data, size_t size, const char* nameForErrors);

// SHLoadDIBitmap's work for a path already in UTF-8 (a resource script's bitmap): the
// decoded-image cache's pixels in a new bitmap, or NULL with the reason on stderr.
HBITMAP LoadBitmapFile(std::string path);

// Encoders of SaveBitmap. Monochrome pixels (1 = white) become black and white; the top
// byte of 32-bpp pixels is ignored. Empty on failure.
std::vector<uint8_t> EncodePng(const gdi::PixelBuffer& pixels);  // RGB, 8 bits a channel
std::vector<uint8_t> EncodeBmp(const gdi::PixelBuffer& pixels);  // 24 bpp, bottom-up

// Writes pixels as .png or .bmp, chosen by the extension; no half-written file is left.
bool SavePixels(const gdi::PixelBuffer& pixels, const char* path);

}  // namespace zel::detail
