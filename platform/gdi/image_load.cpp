// SHLoadDIBitmap: reads a .bmp or .png file by its wide path into a new 32-bpp bitmap.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <aygshell.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "gdi/image_codec.h"
#include "gdi/objects.h"

namespace zel::detail {
namespace {

// A legitimate file at the pixel limit is about as large as its decoded pixels; anything
// far beyond that is refused before it is read.
constexpr off_t kMaxFileBytes = off_t{512} << 20;

// Wide (UTF-32) path to UTF-8. Ported code writes "\\dir\\file.bmp": backslashes become
// slashes, so a leading one still means the root.
std::string PathToUtf8(LPCWSTR path) {
    std::string out;
    for (; *path; ++path) {
        uint32_t c = static_cast<uint32_t>(*path);
        if (c == '\\') c = '/';
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = 0xFFFD;
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | c >> 6);
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | c >> 12);
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | c >> 18);
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

// Reads a whole regular file; returns the reason on failure.
std::string ReadWholeFile(const std::string& path, std::vector<uint8_t>& bytes) {
    // Non-blocking, so that a FIFO named by mistake is refused instead of waiting for a
    // writer; reads of regular files ignore the flag.
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) return std::string("cannot open: ") + std::strerror(errno);
    std::string error;
    struct stat st;
    if (::fstat(fd, &st) != 0) {
        error = std::string("cannot stat: ") + std::strerror(errno);
    } else if (!S_ISREG(st.st_mode)) {
        error = "not a regular file";
    } else if (st.st_size > kMaxFileBytes) {
        error = "file too large";
    } else {
        bytes.resize(static_cast<size_t>(st.st_size));
        size_t done = 0;
        while (done < bytes.size()) {
            ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) {
                error = n < 0 ? std::string("read error: ") + std::strerror(errno) : "file shrank while reading";
                break;
            }
            done += static_cast<size_t>(n);
        }
    }
    ::close(fd);
    return error;
}

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
    return gdi::HandleOf<HBITMAP>(bitmap);
}

}  // namespace zel::detail

extern "C" HBITMAP SHLoadDIBitmap(LPCWSTR path) {
    using namespace zel::detail;
    if (!path) {
        Complain("(null)", "no path");
        return nullptr;
    }
    std::string name = PathToUtf8(path);
    std::vector<uint8_t> bytes;
    std::string error = ReadWholeFile(name, bytes);
    if (!error.empty()) {
        Complain(name.c_str(), error);
        return nullptr;
    }
    return LoadImageFromMemory(bytes.data(), bytes.size(), name.c_str());
}
