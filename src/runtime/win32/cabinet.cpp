#include "runtime/cabinet.h"

#include <cstddef>

#include "runtime/win32/system_time.h"
#include "runtime/win32/win32.h"

namespace swiftpatch {
namespace {

static_assert(offsetof(FileInCabinetInfoA, fileSize) == offsetof(FILE_IN_CABINET_INFO_A, FileSize));
static_assert(offsetof(FileInCabinetInfoA, win32Error) ==
              offsetof(FILE_IN_CABINET_INFO_A, Win32Error));
static_assert(offsetof(FileInCabinetInfoA, dosDate) == offsetof(FILE_IN_CABINET_INFO_A, DosDate));
static_assert(offsetof(FileInCabinetInfoA, dosTime) == offsetof(FILE_IN_CABINET_INFO_A, DosTime));
static_assert(offsetof(FileInCabinetInfoA, dosAttribs) ==
              offsetof(FILE_IN_CABINET_INFO_A, DosAttribs));
static_assert(offsetof(FileInCabinetInfoA, fullTargetName) ==
              offsetof(FILE_IN_CABINET_INFO_A, FullTargetName));
static_assert(sizeof(FileInCabinetInfoA::fullTargetName) == MAX_PATH);
static_assert(sizeof(FilePathsA) == sizeof(FILEPATHS_A));
static_assert(offsetof(FilePathsA, win32Error) == offsetof(FILEPATHS_A, Win32Error));
static_assert(cabinet_notification::kFileInCabinet == SPFILENOTIFY_FILEINCABINET);
static_assert(cabinet_notification::kNeedNewCabinet == SPFILENOTIFY_NEEDNEWCABINET);
static_assert(cabinet_notification::kFileExtracted == SPFILENOTIFY_FILEEXTRACTED);
static_assert(cabinet_answer::kAbort == FILEOP_ABORT);
static_assert(cabinet_answer::kExtract == FILEOP_DOIT);
static_assert(cabinet_answer::kSkip == FILEOP_SKIP);

using IterateFunction = decltype(&::SetupIterateCabinetA);

struct Walk {
    CabinetCallback callback;
    void* context;
};

UINT CALLBACK HandOver(PVOID context, UINT notification, UINT_PTR param1, UINT_PTR param2) {
    const Walk& walk = *static_cast<const Walk*>(context);
    return walk.callback(walk.context, notification, param1, param2);
}

/// The library is loaded when the first cabinet is walked, because the program has to start on
/// machines that lack it; and from the system's folder alone, because a file of its name may lie
/// beside the program.
HMODULE LoadSetupLibrary() {
    char folder[MAX_PATH];
    const UINT length = ::GetSystemDirectoryA(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) {
        return nullptr;
    }
    return ::LoadLibraryA((std::string(folder) + "\\setupapi.dll").c_str());
}

/// Null, with the last error set, where the platform does not have the function.
IterateFunction FindIterate() {
    static const HMODULE library = LoadSetupLibrary();
    if (library == nullptr) {
        ::SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    const FARPROC found = ::GetProcAddress(library, "SetupIterateCabinetA");
    // Through a pointer without a type: the compiler takes a direct cast between functions of
    // different types for a mistake.
    return reinterpret_cast<IterateFunction>(reinterpret_cast<void*>(found));
}

}  // namespace

bool SetupIterateCabinetA(const std::string& cabinet, CabinetCallback callback, void* context,
                          std::uint32_t& lastError) {
    Walk walk{callback, context};
    const IterateFunction iterate = FindIterate();
    // Some failures leave the last error as it was; what an earlier call left would mislead.
    if (iterate != nullptr) {
        ::SetLastError(ERROR_SUCCESS);
    }
    const bool done = iterate != nullptr && iterate(cabinet.c_str(), 0, HandOver, &walk);
    lastError = done ? ERROR_SUCCESS : ::GetLastError();
    return done;
}

std::optional<DateTime> FromDosDateTime(std::uint16_t date, std::uint16_t time) {
    FILETIME stored;
    FILETIME local;
    SYSTEMTIME parts;
    if (!::DosDateTimeToFileTime(date, time, &stored) ||
        !::FileTimeToLocalFileTime(&stored, &local) || !::FileTimeToSystemTime(&local, &parts)) {
        return std::nullopt;
    }
    return ToDateTime(parts);
}

}  // namespace swiftpatch
