#include "kernel/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace zel::kernel {

namespace {

std::string ErrnoText(const char* what) { return std::string(what) + ": " + std::strerror(errno); }

// Fills `bytes` from fd; the empty string, or why it could not.
std::string ReadAll(int fd, std::string& bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return ErrnoText("read error");
        if (n == 0) return "file shrank while reading";
        done += static_cast<size_t>(n);
    }
    return {};
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path, size_t maxBytes, std::string* error) {
    // Non-blocking, so that a FIFO named by mistake is refused instead of waiting for a
    // writer; reads of regular files ignore the flag.
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        if (error) *error = ErrnoText("cannot open");
        return std::nullopt;
    }
    std::string why;
    std::string bytes;
    struct stat st;
    if (::fstat(fd, &st) != 0) {
        why = ErrnoText("cannot stat");
    } else if (!S_ISREG(st.st_mode)) {
        why = "not a regular file";
    } else if (static_cast<uint64_t>(st.st_size) > maxBytes) {
        why = "file too large";
    } else {
        bytes.resize(static_cast<size_t>(st.st_size));
        why = ReadAll(fd, bytes);
    }
    ::close(fd);
    if (!why.empty()) {
        if (error) *error = why;
        return std::nullopt;
    }
    return bytes;
}

}  // namespace zel::kernel
