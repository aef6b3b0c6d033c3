// What the control fuzzers share: quiet runs, findings, and the end-of-input checks.
//
// The platform reports failed skin loads and the controls' debug lines on stderr; at
// thousands of inputs a second that output would swamp the log and slow the run. Each
// input therefore runs with stderr pointed at /dev/null. Sanitizer reports go to a copy of
// the real stderr taken at start-up, and a finding restores stderr before it speaks, so
// every problem is still seen. ZEL_FUZZ_VERBOSE=1 keeps the output (for replaying one input).
#pragma once

#include <fcntl.h>
#include <sanitizer/common_interface_defs.h>
#include <sanitizer/lsan_interface.h>
#include <unistd.h>
#include <zel/gdi_extras.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "user/wndmgr.h"

namespace fuzzing {

struct Output {
    int realStderr = -1;
    int devNull = -1;
    bool verbose = false;
};

inline Output& TheOutput() {
    static Output out = [] {
        Output o;
        o.verbose = std::getenv("ZEL_FUZZ_VERBOSE") != nullptr;
        o.realStderr = ::dup(2);
        o.devNull = ::open("/dev/null", O_WRONLY);
        if (o.realStderr >= 0) __sanitizer_set_report_fd(reinterpret_cast<void*>(static_cast<intptr_t>(o.realStderr)));
        return o;
    }();
    return out;
}

inline void RestoreStderr() {
    std::fflush(stderr);
    if (TheOutput().realStderr >= 0) ::dup2(TheOutput().realStderr, 2);
}

// Silences stderr for one input.
class QuietInput {
public:
    QuietInput() {
        const Output& o = TheOutput();
        if (o.verbose || o.devNull < 0) return;
        std::fflush(stderr);
        ::dup2(o.devNull, 2);
    }
    ~QuietInput() { RestoreStderr(); }
    QuietInput(const QuietInput&) = delete;
    QuietInput& operator=(const QuietInput&) = delete;
};

// Adds libFuzzer flags a fuzzer wants by default to its command line (LLVMFuzzerInitialize
// sees the arguments before libFuzzer reads them); a flag the command line sets itself
// ("-entropic=1" against "-entropic=0") wins.
inline void DefaultFlags(int* argc, char*** argv, std::initializer_list<const char*> flags) {
    if (!argc || !argv || *argc < 1) return;
    static std::vector<char*> args;
    args.assign(*argv, *argv + *argc);
    for (const char* flag : flags) {
        const size_t name = std::strcspn(flag, "=") + 1;  // "-entropic="
        bool given = false;
        for (int i = 1; i < *argc; ++i) given = given || std::strncmp((*argv)[i], flag, name) == 0;
        if (!given) args.insert(args.begin() + 1, const_cast<char*>(flag));
    }
    *argc = static_cast<int>(args.size());
    args.push_back(nullptr);
    *argv = args.data();
}

// AddressSanitizer's defaults for the control fuzzers, which a fuzzer binary returns from
// __asan_default_options (ASAN_OPTIONS still overrides them): allocation and free stacks of
// 8 frames instead of 30. Recording every allocation's stack through the deep window
// procedure call chains took a fifth of the storm's time and halved its rate; to read a
// finding with whole stacks, replay its input with ASAN_OPTIONS=malloc_context_size=30.
inline constexpr const char* kAsanDefaults = "malloc_context_size=8";

// LeakSanitizer's suppressions built into a fuzzer (__lsan_default_suppressions), so a run
// without LSAN_OPTIONS knows them too: the ones of fuzz/lsan.supp, which says why.
inline constexpr const char* kLsanSuppressions = "leak:libfontconfig.so\n";

[[noreturn]] inline void Finding(const char* fuzzer, const std::string& what) {
    RestoreStderr();
    std::fprintf(stderr, "%s: %s\n", fuzzer, what.c_str());
    std::abort();
}

// Every GDI object an input created must be gone once its windows and objects are.
inline void CheckGdiBalance(const char* fuzzer, const zel::GdiCounts& before) {
    const zel::GdiCounts after = zel::LiveGdiObjects();
    if (after.total() == before.total() && after.dcs == before.dcs && after.bitmaps == before.bitmaps &&
        after.regions == before.regions && after.fonts == before.fonts)
        return;
    char text[256];
    std::snprintf(text, sizeof text,
                  "GDI objects leaked: dcs %d->%d bitmaps %d->%d brushes %d->%d pens %d->%d fonts %d->%d regions %d->%d",
                  before.dcs, after.dcs, before.bitmaps, after.bitmaps, before.brushes, after.brushes, before.pens,
                  after.pens, before.fonts, after.fonts, before.regions, after.regions);
    Finding(fuzzer, text);
}

// LeakSanitizer's check of the whole heap, now rather than at exit: an allocation nothing
// points to any more is a finding. For a fuzzer that turns libFuzzer's own check after
// every input off (-detect_leaks=0) because its inputs add to caches and so never free
// all they allocate: libFuzzer then runs each such input a second time and, a thousand
// times at most, checks the heap after it.
inline void CheckLeaks(const char* fuzzer) {
    if (__lsan_do_recoverable_leak_check() != 0)
        Finding(fuzzer, "memory leaked (LeakSanitizer's report above); replay the inputs of the run one by one");
}

// Desktop calls run the loop until idle, but give up after a fixed number of messages; a
// control that keeps the queue busy (a paint that never validates, a message it sends
// itself forever) leaves messages behind, which is a finding.
inline void CheckLoopSettled(const char* fuzzer, const char* after) {
    MSG quit{};
    if (zel::user::PumpOne(&quit)) Finding(fuzzer, std::string("the message loop did not settle after ") + after);
}

}  // namespace fuzzing
