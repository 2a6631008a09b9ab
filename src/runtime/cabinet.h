#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "runtime/datetime.h"

namespace swiftpatch {

/// What the system says about a file in a cabinet (FILE_IN_CABINET_INFO_A, in its layout).
struct FileInCabinetInfoA {
    const char* nameInCabinet;
    std::uint32_t fileSize;
    std::uint32_t win32Error;
    std::uint16_t dosDate;
    std::uint16_t dosTime;
    std::uint16_t dosAttribs;
    char fullTargetName[260];  ///< Filled by the callback: the path to extract to, and a NUL.
};

/// A file that was extracted (FILEPATHS_A, in its layout).
struct FilePathsA {
    const char* target;
    const char* source;
    std::uint32_t win32Error;  ///< 0 when the file was extracted.
    std::uint32_t flags;
};

/// The notifications of a walk that a callback acts on (SPFILENOTIFY_xxx), and what the first
/// parameter is.
namespace cabinet_notification {
inline constexpr std::uint32_t kFileInCabinet = 17;   ///< A FileInCabinetInfoA; answer: FILEOP_xxx.
inline constexpr std::uint32_t kNeedNewCabinet = 18;  ///< Answer: 0 to go on beside this cabinet.
inline constexpr std::uint32_t kFileExtracted = 19;   ///< A FilePathsA; answer: 0 to go on.
}  // namespace cabinet_notification

/// Answers to kFileInCabinet (FILEOP_xxx).
namespace cabinet_answer {
inline constexpr std::uint32_t kAbort = 0;
inline constexpr std::uint32_t kExtract = 1;
inline constexpr std::uint32_t kSkip = 2;
}  // namespace cabinet_answer

/// Receives the notifications of a walk. It must not throw: the system's own code lies between
/// it and the caller of the walk.
using CabinetCallback = std::uint32_t (*)(void* context, std::uint32_t notification,
                                          std::uintptr_t param1, std::uintptr_t param2) noexcept;

/// Walks through a cabinet (the system's function of this name). Every notification is handed
/// to `callback` with `context`. False when the walk failed or an answer ended it; `lastError` is
/// the system's last error then, ERROR_INVALID_DATA where it left none. A walk that stopped early
/// although the system says that it went well has failed, too; so has one that lacks the next
/// cabinet of a set (ERROR_FILE_NOT_FOUND). A machine without the system's library
/// for cabinets fails every walk.
bool SetupIterateCabinetA(const std::string& cabinet, CabinetCallback callback, void* context,
                          std::uint32_t& lastError);

/// A date and time as a cabinet stores them, through the system's DosDateTimeToFileTime,
/// FileTimeToLocalFileTime and FileTimeToSystemTime. Empty when they name no date.
std::optional<DateTime> FromDosDateTime(std::uint16_t date, std::uint16_t time);

}  // namespace swiftpatch
