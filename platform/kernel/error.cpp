// Last-error value and MulDiv.
#include <windows.h>

#include <cstdint>
#include <limits>

namespace {
thread_local DWORD lastError = 0;
}

extern "C" {

DWORD GetLastError(void) { return lastError; }
void SetLastError(DWORD error) { lastError = error; }

// number * numerator / denominator with a 64-bit intermediate, rounded half away from zero;
// -1 when the denominator is 0 or the result does not fit in an int.
int MulDiv(int number, int numerator, int denominator) {
    if (denominator == 0) return -1;
    int64_t product = static_cast<int64_t>(number) * numerator;
    bool negative = (product < 0) != (denominator < 0);
    uint64_t p = product < 0 ? 0ull - static_cast<uint64_t>(product) : static_cast<uint64_t>(product);
    uint64_t d = denominator < 0 ? 0ull - static_cast<uint64_t>(static_cast<int64_t>(denominator))
                                 : static_cast<uint64_t>(denominator);
    uint64_t q = (p + d / 2) / d;
    if (q > static_cast<uint64_t>(std::numeric_limits<int>::max())) return -1;
    return negative ? -static_cast<int>(q) : static_cast<int>(q);
}

}  // extern "C"
