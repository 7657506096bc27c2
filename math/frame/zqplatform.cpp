// The platform substitutes and the load hooks that run the library's entry routine.
#include "zqplatform.h"

#include "frame/prefault.h"
#include "frame_internal.h"

#include <cstdint>

#if !defined(_WIN32)
#include <ctime>
#endif
#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif
// Pages can be mapped ahead of their first write only where the kernel headers offer it.
#if defined(__linux__) && defined(MADV_POPULATE_WRITE)
#define ZQMATH_PREFAULT_MAPS 1
#else
#define ZQMATH_PREFAULT_MAPS 0
#endif
// Large pages can be asked for only where the kernel headers offer the advice.
#if defined(__linux__) && defined(MADV_HUGEPAGE)
#define ZQMATH_LARGE_PAGES 1
#else
#define ZQMATH_LARGE_PAGES 0
#endif

namespace {

bool g_failExtensionInit = false;

} // namespace

namespace zq::detail {

void FailExtensionModuleInit(bool fail) {
    g_failExtensionInit = fail;
}

void Prefault([[maybe_unused]] void* begin, [[maybe_unused]] std::size_t bytes) {
#if ZQMATH_PREFAULT_MAPS
    // The pages that hold the range are ours as a whole: widening it to them is safe. Kernels
    // before 5.14 refuse the advice; their pages then fault at the first write, as elsewhere.
    static const std::uintptr_t page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto first = reinterpret_cast<std::uintptr_t>(begin) & ~(page - 1);
    const auto end = reinterpret_cast<std::uintptr_t>(begin) + bytes;
    if (bytes > 0) {
        madvise(reinterpret_cast<void*>(first), end - first, MADV_POPULATE_WRITE);
    }
#endif
}

void AdviseLargePages([[maybe_unused]] void* begin, [[maybe_unused]] std::size_t bytes) {
#if ZQMATH_LARGE_PAGES
    // A range too small to hold two whole large pages is left as it is.
    if (bytes < kLargePageMinimum) {
        return;
    }
    // Only the large pages wholly inside the range: the advice must not reach others' memory.
    constexpr std::uintptr_t large = std::uintptr_t(1) << 21;
    const auto first = (reinterpret_cast<std::uintptr_t>(begin) + large - 1) & ~(large - 1);
    const auto end = (reinterpret_cast<std::uintptr_t>(begin) + bytes) & ~(large - 1);
    madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
#endif
}

} // namespace zq::detail

#if !defined(ZQMATH_HAVE_MFC)

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module) {
    if (g_failExtensionInit) {
        return FALSE;
    }
    state.bInitialized = TRUE;
    state.hModule = module;
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL /*all*/) {
    state.bInitialized = FALSE;
}

#endif

#if !defined(_WIN32)

MMRESULT timeGetSystemTime(MMTIME* time, UINT /*size*/) {
    timespec now{};
#if defined(CLOCK_BOOTTIME)
    clock_gettime(CLOCK_BOOTTIME, &now);
#else
    clock_gettime(CLOCK_MONOTONIC, &now);
#endif
    // Milliseconds since boot wrap at 2^32, as the Windows counter does.
    const auto ms = static_cast<unsigned long long>(now.tv_sec) * 1000ULL +
                    static_cast<unsigned long long>(now.tv_nsec) / 1000000ULL;
    time->wType = TIME_MS;
    time->u.ms = static_cast<DWORD>(ms & 0xFFFFFFFFULL);
    return TIMERR_NOERROR;
}

#endif

#if defined(_WIN32) && !defined(ZQMATH_STATIC)

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved) {
    return zq::detail::EntryRoutine(module, reason, reserved);
}

#elif !defined(_WIN32)

// On ELF the shared object's own load and unload hooks play the part of the Windows entry.
extern "C" void* __dso_handle;

namespace {

__attribute__((constructor)) void OnLoad() {
    zq::detail::EntryRoutine(&__dso_handle, zq::detail::kProcessAttach, nullptr);
}

__attribute__((destructor)) void OnUnload() {
    zq::detail::EntryRoutine(&__dso_handle, zq::detail::kProcessDetach, nullptr);
}

} // namespace

#endif
