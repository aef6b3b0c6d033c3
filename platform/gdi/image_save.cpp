// zel::SaveBitmap: a bitmap as an 8-bit RGB PNG or a 24-bpp bottom-up BMP.
#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "gdi/image_codec.h"
#include "gdi/objects.h"
#include "zel/gdi_extras.h"

namespace zel::detail {
namespace {

uint32_t RgbOf(const gdi::PixelBuffer& px, uint32_t p) {
    if (px.mono()) return p & 1 ? 0xFFFFFF : 0;
    return p & 0xFFFFFF;
}

void Put16(uint8_t* p, uint32_t v) { p[0] = v & 0xFF, p[1] = (v >> 8) & 0xFF; }
void Put32(uint8_t* p, uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = (v >> (8 * i)) & 0xFF;
}

void AppendBytes(png_structp png, png_bytep data, png_size_t count) {
    auto* out = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + count);
}
void Flush(png_structp) {}
void OnPngError(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void OnPngWarning(png_structp, png_const_charp) {}

// Writes every row through `line` (width * 3 bytes owned by the caller). libpng errors
// longjmp back here; this frame holds nothing that needs destroying.
bool WriteRows(png_structp png, png_infop info, const gdi::PixelBuffer& px, uint8_t* line) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_IHDR(png, info, px.width, px.height, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int y = 0; y < px.height; ++y) {
        const uint32_t* row = px.row(y);
        for (int x = 0; x < px.width; ++x) {
            uint32_t c = RgbOf(px, row[x]);
            line[3 * x] = (c >> 16) & 0xFF, line[3 * x + 1] = (c >> 8) & 0xFF, line[3 * x + 2] = c & 0xFF;
        }
        png_write_row(png, line);
    }
    png_write_end(png, info);
    return true;
}

bool EndsWith(std::string_view s, std::string_view suffix) {
    if (s.size() < suffix.size()) return false;
    for (size_t i = 0; i < suffix.size(); ++i) {
        char c = s[s.size() - suffix.size() + i];
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        if (c != suffix[i]) return false;
    }
    return true;
}

bool WriteFile(const char* path, const std::vector<uint8_t>& bytes) {
    std::FILE* f = std::fopen(path, "wb");
    if (!f) return false;
    bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    ok = std::fclose(f) == 0 && ok;
    if (!ok) std::remove(path);  // no half-written image left behind
    return ok;
}

}  // namespace

std::vector<uint8_t> EncodePng(const gdi::PixelBuffer& px) {
    std::vector<uint8_t> out;
    if (px.width <= 0 || px.height <= 0) return out;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, OnPngError, OnPngWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        return out;
    }
    png_set_write_fn(png, &out, AppendBytes, Flush);
    std::vector<uint8_t> line(static_cast<size_t>(px.width) * 3);
    bool ok = WriteRows(png, info, px, line.data());
    png_destroy_write_struct(&png, &info);
    if (!ok) out.clear();
    return out;
}

std::vector<uint8_t> EncodeBmp(const gdi::PixelBuffer& px) {
    std::vector<uint8_t> out;
    if (px.width <= 0 || px.height <= 0) return out;
    constexpr size_t kHeaders = 14 + 40;
    uint64_t stride = (static_cast<uint64_t>(px.width) * 3 + 3) & ~uint64_t{3};
    uint64_t imageSize = stride * static_cast<uint64_t>(px.height);
    if (kHeaders + imageSize > 0xFFFFFFFFu) return out;  // bfSize is a DWORD
    out.assign(kHeaders + imageSize, 0);
    uint8_t* h = out.data();
    h[0] = 'B', h[1] = 'M';
    Put32(h + 2, static_cast<uint32_t>(out.size()));
    Put32(h + 10, kHeaders);
    Put32(h + 14, 40);
    Put32(h + 18, static_cast<uint32_t>(px.width));
    Put32(h + 22, static_cast<uint32_t>(px.height));  // positive: bottom row first
    Put16(h + 26, 1);
    Put16(h + 28, 24);
    Put32(h + 30, BI_RGB);
    Put32(h + 34, static_cast<uint32_t>(imageSize));
    for (int y = 0; y < px.height; ++y) {
        const uint32_t* row = px.row(px.height - 1 - y);
        uint8_t* dst = out.data() + kHeaders + stride * y;
        for (int x = 0; x < px.width; ++x) {
            uint32_t c = RgbOf(px, row[x]);
            dst[3 * x] = c & 0xFF, dst[3 * x + 1] = (c >> 8) & 0xFF, dst[3 * x + 2] = (c >> 16) & 0xFF;
        }
    }
    return out;
}

bool SavePixels(const gdi::PixelBuffer& pixels, const char* path) {
    if (!path) return false;
    std::vector<uint8_t> bytes;
    if (EndsWith(path, ".png"))
        bytes = EncodePng(pixels);
    else if (EndsWith(path, ".bmp"))
        bytes = EncodeBmp(pixels);
    else
        return false;
    return !bytes.empty() && WriteFile(path, bytes);
}

}  // namespace zel::detail

namespace zel {

bool SaveBitmap(HBITMAP bitmap, const char* path) {
    gdi::Bitmap* b = gdi::LookupBitmap(bitmap);
    return b && detail::SavePixels(b->Read(), path);
}

}  // namespace zel
