// Peak memory of one piece of work, measured in a child process so that nothing else the
// test program did (or will do) counts: the child runs the work and exits, and the kernel
// reports the child's peak resident size. Proves a bound on memory without timing.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <functional>

namespace zel::test {

// Resident bytes now, from /proc/self/statm.
inline uint64_t ResidentBytes() {
    unsigned long pages = 0, resident = 0;
    if (FILE* f = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(f, "%lu %lu", &pages, &resident) != 2) resident = 0;
        std::fclose(f);
    }
    return static_cast<uint64_t>(resident) * static_cast<uint64_t>(sysconf(_SC_PAGESIZE));
}

// How far the resident size rose above the parent's while `work` ran in a forked child;
// UINT64_MAX when the child could not be run or did not exit normally.
inline uint64_t PeakGrowthOf(const std::function<void()>& work) {
    std::fflush(nullptr);
    uint64_t before = ResidentBytes();
    pid_t child = fork();
    if (child < 0) return UINT64_MAX;
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    struct rusage usage {};
    if (wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return UINT64_MAX;
    uint64_t peak = static_cast<uint64_t>(usage.ru_maxrss) * 1024;  // ru_maxrss is in KiB
    return peak > before ? peak - before : 0;
}

}  // namespace zel::test
