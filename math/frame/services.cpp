// The exported plain functions of the library frame.
#include "mathdll.h"

#include "stamp.h"

#include <new>

namespace {

DWORD g_markedTime = 0;

} // namespace

void BindMathServices(HINSTANCE instance) {
    // The stamp is formatted and thrown away, as the library has always done on binding.
    char stamp[zq::detail::kStampSize];
    zq::detail::FormatStamp(stamp);
    static_cast<void>(new (std::nothrow) CMathDLL(instance));
}

void UnbindMathServices(long /*unused*/) {
    if (CMathDLL::sfMathDLL != nullptr) {
        delete CMathDLL::sfMathDLL;
    }
}

int BinaryPower(int n, int* remainder, int* exponent) {
    // Above 2^30 the doubling would overflow a signed 32-bit value; 2^30 is the answer there.
    constexpr int kLargest = 1 << 30;
    int p = 1;
    int e = 0;
    if (n > kLargest) {
        *remainder = n - kLargest;
        *exponent = 30;
        return kLargest;
    }
    if (n > 1) {
        do {
            p *= 2;
            ++e;
        } while (p < n);
    }
    if (p == n) {
        *remainder = 0;
        *exponent = e;
        return p;
    }
    p /= 2;
    *remainder = n - p;
    *exponent = e - 1;
    return p;
}

DWORD MarkClockTime() {
    MMTIME time;
    timeGetSystemTime(&time, sizeof(time));
    g_markedTime = time.u.ms;
    return g_markedTime;
}

DWORD GetMarkedTime() {
    return g_markedTime;
}
