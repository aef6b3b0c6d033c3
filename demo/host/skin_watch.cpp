#include "host/skin_watch.h"

namespace zel::demo {

namespace fs = std::filesystem;

namespace {

constexpr int kMaxDepth = 4;
constexpr size_t kMaxFiles = 10000;

}  // namespace

SkinWatch::SkinWatch(std::string dir) : dir_(std::move(dir)), files_(Scan()) {}

bool SkinWatch::Changed() {
    std::map<std::string, Stamp> now = Scan();
    const bool changed = now != files_;
    files_ = std::move(now);
    return changed;
}

// Errors (a file removed while walking) leave that file out: the next poll sees the rest.
std::map<std::string, SkinWatch::Stamp> SkinWatch::Scan() const {
    std::map<std::string, Stamp> files;
    std::error_code ec;
    fs::recursive_directory_iterator it(dir_, fs::directory_options::skip_permission_denied, ec), end;
    for (; !ec && it != end && files.size() < kMaxFiles; it.increment(ec)) {
        if (it.depth() >= kMaxDepth) it.disable_recursion_pending();
        std::error_code fileError;
        if (!it->is_regular_file(fileError)) continue;
        Stamp stamp{it->last_write_time(fileError), it->file_size(fileError)};
        if (!fileError) files.emplace(it->path().string(), stamp);
    }
    return files;
}

}  // namespace zel::demo
