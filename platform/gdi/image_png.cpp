// PNG decoding with libpng: every colour type and bit depth becomes 8-bit BGRX rows that
// are already 0x00RRGGBB pixels. Alpha and tRNS are dropped, as a device bitmap has none.
//
// libpng reports errors by longjmp to the setjmp of the running call. The functions that
// call setjmp (ReadInfo, SetUpTransforms, ReadRows) and every frame libpng can unwind (the read callback)
// hold only trivially destructible locals; buffers are owned by DecodePng, outside the jump.
//
// What a file says never decides what one load costs: every chunk must fit in the bytes
// that are left, ancillary chunks are skipped unread (a bitmap has no use for text,
// palettes of suggestions or colour profiles), and libpng's own allocations share one
// fixed budget. The pixels are the only allocation proportional to the header, and they
// are checked against the image limits first.
#include <png.h>

#include <bit>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

#include "gdi/image_codec.h"

namespace zel::detail {
namespace {

// Bytes libpng may hold at once: its structures, zlib's window and a few rows (a row of
// the widest image, 16384 RGBA pixels at 16 bits, is 128 KiB). The pixels are not in it.
constexpr size_t kLibpngBudget = size_t{16} << 20;

struct PngInput {
    const uint8_t* data = nullptr;
    size_t size = 0;
    size_t pos = 0;
    size_t nextChunk = 8;  // offset of the next chunk header, past the signature
    size_t allocated = 0;  // bytes libpng holds, against kLibpngBudget
    bool truncated = false;
    char message[128] = {};
};

uint32_t BigEndian32(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) << 24 | p[1] << 16 | p[2] << 8 | p[3];
}

// libpng reads each chunk header (length and type) in one read at the chunk's start and
// allocates what the length says before reading the data, so a length is checked here,
// against the bytes that are really left, before libpng sees it.
void CheckChunkHeader(png_structp png, PngInput& in) {
    if (in.size - in.pos < 8) return;  // the read itself reports the truncation
    uint32_t length = BigEndian32(in.data + in.pos);
    if (in.size - in.pos < 12 || length > in.size - in.pos - 12) {
        char type[5] = {};
        for (int i = 0; i < 4; ++i) {
            uint8_t c = in.data[in.pos + 4 + i];
            type[i] = c >= 0x20 && c < 0x7F ? static_cast<char>(c) : '?';
        }
        std::snprintf(in.message, sizeof in.message, "%s chunk of %u bytes, %zu left", type,
                      static_cast<unsigned>(length), in.size - in.pos - 8);
        in.truncated = true;
        png_longjmp(png, 1);
    }
    in.nextChunk = in.pos + 12 + length;
}

void ReadBytes(png_structp png, png_bytep out, png_size_t count) {
    auto* in = static_cast<PngInput*>(png_get_io_ptr(png));
    if (in->pos == in->nextChunk) CheckChunkHeader(png, *in);
    if (count > in->size - in->pos) {
        in->truncated = true;
        png_longjmp(png, 1);
    }
    std::memcpy(out, in->data + in->pos, count);
    in->pos += count;
}

// libpng's allocator: each block carries its size in front, so the budget can be given
// back on free. A null return makes libpng fail with "out of memory" through OnError.
constexpr size_t kBlockHeader = alignof(std::max_align_t);

png_voidp Allocate(png_structp png, png_alloc_size_t size) {
    auto* in = static_cast<PngInput*>(png_get_mem_ptr(png));
    if (size > kLibpngBudget - in->allocated) return nullptr;
    auto* block = static_cast<uint8_t*>(std::malloc(size + kBlockHeader));
    if (!block) return nullptr;
    std::memcpy(block, &size, sizeof size);
    in->allocated += size;
    return block + kBlockHeader;
}

void Free(png_structp png, png_voidp p) {
    if (!p) return;
    auto* in = static_cast<PngInput*>(png_get_mem_ptr(png));
    uint8_t* block = static_cast<uint8_t*>(p) - kBlockHeader;
    size_t size;
    std::memcpy(&size, block, sizeof size);
    in->allocated -= size;
    std::free(block);
}

void OnError(png_structp png, png_const_charp message) {
    auto* in = static_cast<PngInput*>(png_get_error_ptr(png));
    std::snprintf(in->message, sizeof in->message, "%s", message);
    png_longjmp(png, 1);
}

// Warnings (unknown chunks, bad ancillary CRCs, ...) do not stop decoding and are not
// worth a line on stderr.
void OnWarning(png_structp, png_const_charp) {}

// Reads the chunks before the image data.
bool ReadInfo(png_structp png, png_infop info) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_read_info(png, info);
    return true;
}

// Sets up the transformations to BGRX; libpng then sizes its row buffers, so this runs
// only once the dimensions are known to be acceptable.
bool SetUpTransforms(png_structp png, png_infop info) {
    if (setjmp(png_jmpbuf(png))) return false;
    int depth = png_get_bit_depth(png, info);
    int type = png_get_color_type(png, info);
    if (depth == 16) png_set_scale_16(png);  // rounds: 0xFFFF -> 0xFF, 0x8080 -> 0x80
    if (type == PNG_COLOR_TYPE_PALETTE) png_set_palette_to_rgb(png);
    if (type == PNG_COLOR_TYPE_GRAY && depth < 8) png_set_expand_gray_1_2_4_to_8(png);
    // Palette expansion turns tRNS into an alpha channel too, so strip whatever alpha the
    // expanded rows have rather than only the image's own.
    png_set_strip_alpha(png);
    if (!(type & PNG_COLOR_MASK_COLOR)) png_set_gray_to_rgb(png);
    png_set_bgr(png);
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    return true;
}

bool ReadRows(png_structp png, png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_read_image(png, rows);
    return true;
}

// Owns libpng's read structures.
class PngReader {
public:
    PngReader(PngInput& input, const ImageLimits& limits) {
        png_ = png_create_read_struct_2(PNG_LIBPNG_VER_STRING, &input, OnError, OnWarning, &input, Allocate,
                                        Free);
        if (png_) info_ = png_create_info_struct(png_);
        if (!info_) return;
        png_set_read_fn(png_, &input, ReadBytes);
        // The caller checks the dimensions first with its own message; these are a second
        // guard at the same values.
        png_set_user_limits(png_, static_cast<png_uint_32>(limits.maxSide), static_cast<png_uint_32>(limits.maxSide));
        // Every ancillary chunk (all but IHDR, PLTE, tRNS, IDAT, IEND) is skipped in small
        // reads without being stored; none changes the pixels of a bitmap without alpha.
        png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
        png_set_chunk_cache_max(png_, 32);           // chunks kept, should one still be
        png_set_chunk_malloc_max(png_, 1u << 20);    // bytes for one ancillary chunk
    }
    ~PngReader() { png_destroy_read_struct(&png_, info_ ? &info_ : nullptr, nullptr); }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    bool ok() const { return info_ != nullptr; }
    png_structp png() const { return png_; }
    png_infop info() const { return info_; }

private:
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
};

// Deflate cannot expand data more than about 1032 times.
constexpr uint64_t kMaxInflateRatio = 1032;

// Total length of the IDAT chunks, walking the chunk list until IEND or the end of the data.
uint64_t ImageDataBytes(const uint8_t* data, size_t size) {
    uint64_t total = 0;
    size_t pos = 8;  // past the signature
    while (pos <= size && size - pos >= 12) {
        const uint8_t* p = data + pos;
        uint32_t length = BigEndian32(p);
        size_t present = size - pos - 8;  // data and CRC bytes actually in the file
        if (std::memcmp(p + 4, "IEND", 4) == 0) break;
        if (std::memcmp(p + 4, "IDAT", 4) == 0) total += length < present ? length : present;
        if (length > present - 4) break;
        pos += 12 + static_cast<size_t>(length);
    }
    return total;
}

std::string Failure(const PngInput& input) {
    if (input.truncated) return input.message[0] ? std::string("truncated PNG data: ") + input.message : "truncated PNG data";
    return std::string("bad PNG data: ") + input.message;
}

// The dimensions in the IHDR chunk, read before libpng runs so that an image over the
// limits is refused with the limits' own message. Nothing when there is no IHDR first.
std::optional<std::pair<int64_t, int64_t>> HeaderSize(const uint8_t* data, size_t size) {
    if (size < 8 + 8 + 8 || std::memcmp(data + 12, "IHDR", 4) != 0) return std::nullopt;
    return std::make_pair(int64_t{BigEndian32(data + 16)}, int64_t{BigEndian32(data + 20)});
}

}  // namespace

DecodedImage DecodePng(const uint8_t* data, size_t size, const ImageLimits& limits) {
    DecodedImage result;
    PngInput input;
    input.data = data;
    input.size = size;
    // Zero and 2^31 and more are libpng's to refuse as bad data.
    if (auto header = HeaderSize(data, size);
        header && header->first > 0 && header->second > 0 && header->first < 0x80000000 && header->second < 0x80000000) {
        result.error = CheckDimensions(header->first, header->second, limits);
        if (!result.ok()) return result;
    }
    PngReader reader(input, limits);
    if (!reader.ok()) {
        result.error = "out of memory";
        return result;
    }
    if (!ReadInfo(reader.png(), reader.info())) {
        result.error = Failure(input);
        return result;
    }
    int64_t width = png_get_image_width(reader.png(), reader.info());
    int64_t height = png_get_image_height(reader.png(), reader.info());
    result.error = CheckDimensions(width, height, limits);
    if (!result.ok()) return result;
    // A header may claim far more pixels than the image data could ever inflate to; such
    // a file is refused before the pixel buffer is allocated.
    uint64_t bitsPerPixel =
        png_get_bit_depth(reader.png(), reader.info()) * png_get_channels(reader.png(), reader.info());
    if (ImageDataBytes(data, size) * kMaxInflateRatio < static_cast<uint64_t>(width) * height * bitsPerPixel / 8) {
        result.error = "truncated PNG data";
        return result;
    }
    if (!SetUpTransforms(reader.png(), reader.info())) {
        result.error = Failure(input);
        return result;
    }
    if (png_get_rowbytes(reader.png(), reader.info()) != static_cast<size_t>(width) * 4) {
        result.error = "unsupported PNG pixel layout";
        return result;
    }

    gdi::PixelBuffer pixels(static_cast<int>(width), static_cast<int>(height), 32);
    std::vector<png_bytep> rows(pixels.height);
    for (int y = 0; y < pixels.height; ++y) rows[y] = reinterpret_cast<png_bytep>(pixels.row(y));
    if (!ReadRows(reader.png(), rows.data())) {
        result.error = Failure(input);
        return result;
    }
    if constexpr (std::endian::native == std::endian::big) {
        for (uint32_t& p : pixels.pixels) p = __builtin_bswap32(p);  // B, G, R, 0 in memory order
    }
    result.pixels = std::move(pixels);
    return result;
}

}  // namespace zel::detail
