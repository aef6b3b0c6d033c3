// PNG output of the screen with libpng.
#include "display/png_writer.h"

#include <png.h>

#include <cstdio>
#include <vector>

namespace zel::display {

bool WritePng(const gdi::PixelBuffer& surface, const char* path) {
    if (!path || surface.width <= 0 || surface.height <= 0) return false;
    FILE* f = std::fopen(path, "wb");
    if (!f) return false;
    std::vector<png_byte> row(static_cast<size_t>(surface.width) * 3);  // before setjmp: longjmp skips destructors
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!png || !info || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        std::fclose(f);
        std::remove(path);
        return false;
    }
    png_init_io(png, f);
    png_set_IHDR(png, info, surface.width, surface.height, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int y = 0; y < surface.height; ++y) {
        const uint32_t* src = surface.row(y);
        for (int x = 0; x < surface.width; ++x) {
            uint32_t p = surface.mono() ? (src[x] ? 0xFFFFFFu : 0u) : src[x];
            row[3 * x] = static_cast<png_byte>(p >> 16);
            row[3 * x + 1] = static_cast<png_byte>(p >> 8);
            row[3 * x + 2] = static_cast<png_byte>(p);
        }
        png_write_row(png, row.data());
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return std::fclose(f) == 0;
}

}  // namespace zel::display
