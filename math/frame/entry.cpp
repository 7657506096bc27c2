// The library's load entry: extension-module registration and the attach counters.
#include "frame_internal.h"

namespace zq::detail {
namespace {

std::int32_t g_attachMarker = 0;
std::int32_t g_processAttachCount = 0;
std::int32_t g_threadAttachCount = 0;
bool g_firstConstruction = false;
AFX_EXTENSION_MODULE g_extensionModule = {};

} // namespace

int EntryRoutine(HINSTANCE module, DWORD reason, void* /*reserved*/) {
    switch (reason) {
    case kProcessAttach:
        if (!AfxInitExtensionModule(g_extensionModule, module)) {
            return 0;
        }
        g_attachMarker = kAttachMarker;
        ++g_processAttachCount;
        return 1;
    case kThreadAttach:
        if (g_attachMarker != kAttachMarker) {
            return 0;
        }
        ++g_threadAttachCount;
        return 1;
    case kThreadDetach:
        // Tests the process count, not the thread count, before the thread count drops:
        // the loader's bookkeeping has always worked this way.
        if (g_attachMarker != kAttachMarker || g_processAttachCount == 0) {
            return 0;
        }
        --g_threadAttachCount;
        return 1;
    case kProcessDetach:
        // The marker stays set: a detached library still counts as once attached.
        if (g_attachMarker != kAttachMarker) {
            return 0;
        }
        AfxTermExtensionModule(g_extensionModule, FALSE);
        --g_processAttachCount;
        return 1;
    default:
        return 1;
    }
}

std::int32_t AttachMarker() {
    return g_attachMarker;
}

std::int32_t ProcessAttachCount() {
    return g_processAttachCount;
}

std::int32_t ThreadAttachCount() {
    return g_threadAttachCount;
}

bool FirstConstructionSeen() {
    return g_firstConstruction;
}

void NoteFirstConstruction() {
    g_firstConstruction = true;
}

} // namespace zq::detail
