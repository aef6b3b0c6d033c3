// A scratch folder of the running test's own, under the build's test output folder,
// emptied when made and removed afterwards. Platform tests that read or write real files
// (resource scripts, images, FIFOs) put them here.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace zel::test {

class ScratchFolder {
public:
    // <output>/scratch/<pid>/<suite>.<test>: per process, so parallel test programs
    // sharing a suite name never meet.
    ScratchFolder() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir_ = std::filesystem::path(ZEL_TEST_OUT_DIR) / "scratch" / std::to_string(::getpid()) /
               (std::string(info->test_suite_name()) + "." + info->name());
        std::filesystem::remove_all(dir_);
        std::filesystem::create_directories(dir_);
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(dir_, ignored);
        std::filesystem::remove(dir_.parent_path(), ignored);  // the process folder, once empty
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& dir() const { return dir_; }
    std::string Dir() const { return dir_.string(); }
    std::string Path(const std::string& name) const { return (dir_ / name).string(); }
    // Writes `bytes` to <dir>/<name> (folders in the name must exist) and returns the path.
    template <class Bytes>
    std::string Write(const std::string& name, const Bytes& bytes) const {
        std::string path = Path(name);
        std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return path;
    }
    std::string Write(const std::string& name, const char* text) const { return Write(name, std::string(text)); }

private:
    std::filesystem::path dir_;
};

}  // namespace zel::test
