// frame_internal.h: the library's load entry and its counters, for the platform's load hooks
// and for the tests. Not installed.
#ifndef ZQMATH_FRAME_INTERNAL_H
#define ZQMATH_FRAME_INTERNAL_H

#include "zqexport.h"
#include "zqplatform.h"

#include <cstdint>

namespace zq::detail {

/// The loader's reason codes.
enum EntryReason : DWORD {
    kProcessDetach = 0,
    kProcessAttach = 1,
    kThreadAttach = 2,
    kThreadDetach = 3
};

/// The attach marker value of a library that has been attached once.
constexpr std::int32_t kAttachMarker = 5313;

/// The load entry: 1 on success, 0 on failure.
ZQMATH_API int EntryRoutine(HINSTANCE module, DWORD reason, void* reserved);

ZQMATH_API std::int32_t AttachMarker();
ZQMATH_API std::int32_t ProcessAttachCount();
ZQMATH_API std::int32_t ThreadAttachCount();
/// True once any CBaseDLL has been constructed.
ZQMATH_API bool FirstConstructionSeen();
/// Marks the first construction of a CBaseDLL.
void NoteFirstConstruction();

/// Makes the host framework's extension-module initialisation fail (true) or succeed.
ZQMATH_API void FailExtensionModuleInit(bool fail);

} // namespace zq::detail

#endif
