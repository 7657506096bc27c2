// The platform substitutes and the load hooks that run the library's entry routine.
#include "zqplatform.h"

#include "frame_internal.h"

#if !defined(_WIN32)
#include <ctime>
#endif

namespace {

bool g_failExtensionInit = false;

} // namespace

namespace zq::detail {

void FailExtensionModuleInit(bool fail) {
    g_failExtensionInit = fail;
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
