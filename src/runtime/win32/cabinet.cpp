#include "runtime/cabinet.h"

#include <cstddef>
#include <set>

#include "runtime/win32/cabinet_header.h"
#include "runtime/win32/handle.h"
#include "runtime/win32/system_library.h"
#include "runtime/win32/system_time.h"

// A walk through a cabinet is one call of the system's iterator: it reads and unpacks, and tells a
// callback of each file before it is extracted and after. All of that is on the caller's thread,
// and `Walk` lives on its stack until the call returns.
//
// HandOver stands between the iterator and the program's callback, because what the iterator says
// cannot be relied on. One or another ends with success at damaged data, leaves the tail of a
// longer file that was there before, or asks for a missing cabinet of a set for ever. So the
// cabinet's header is read first, files are counted and measured on the way, and a second question
// for the same cabinet ends the walk.
//
// The library below the iterator (cabinet.dll) is not used: it wants functions for memory and for
// files from its caller, and would have to be told how to go from one cabinet to the next.

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

/// The callback of one walk, and what the walk has come to.
struct Walk {
    CabinetCallback callback;
    void* context;
    unsigned told = 0;           ///< Files that the callback was asked about.
    unsigned begun = 0;          ///< Files that it wants to be extracted.
    unsigned extracted = 0;      ///< Files that were.
    std::uint32_t fileSize = 0;  ///< Of the file that is being extracted.
    std::set<std::string> cabinetsAskedFor{};
    bool nextIsMissing = false;
};

UniqueFile Open(const char* path, DWORD access, DWORD disposition) {
    return UniqueFile(::CreateFileA(path, access, FILE_SHARE_READ, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Not every iterator cuts a longer file to its new length, so the file is made empty first. That
/// costs less than looking whether it is there. Where it fails, the iterator fails too and says
/// why.
void MakeEmpty(const char* path) { Open(path, GENERIC_WRITE, CREATE_ALWAYS); }

/// Opens the file only where the system cannot tell without it (Windows 95).
bool HasSize(const char* path, DWORD size) {
    static const SystemLibrary library("kernel32.dll");
    static const LateFunction<decltype(&::GetFileAttributesExA)> getAttributes(
        library, "GetFileAttributesExA");
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (getAttributes(path, GetFileExInfoStandard, &data)) {
        return data.nFileSizeHigh == 0 && data.nFileSizeLow == size;
    }
    const UniqueFile file = Open(path, GENERIC_READ, OPEN_EXISTING);
    return file && ::GetFileSize(file.Get(), nullptr) == size;
}

UINT FileInCabinet(Walk& walk, UINT_PTR param) {
    const UINT answer = walk.callback(walk.context, SPFILENOTIFY_FILEINCABINET, param, 0);
    ++walk.told;
    if (answer == FILEOP_DOIT) {
        ++walk.begun;
        const auto& file = *reinterpret_cast<const FILE_IN_CABINET_INFO_A*>(param);
        walk.fileSize = file.FileSize;
        MakeEmpty(file.FullTargetName);
    }
    return answer;
}

/// A file of another size than the cabinet says counts as failed, whatever the iterator says.
UINT FileExtracted(Walk& walk, UINT_PTR param) {
    FILEPATHS_A paths = *reinterpret_cast<const FILEPATHS_A*>(param);
    if (paths.Win32Error == ERROR_SUCCESS && !HasSize(paths.Target, walk.fileSize)) {
        paths.Win32Error = ERROR_INVALID_DATA;
    }
    walk.extracted += paths.Win32Error == ERROR_SUCCESS ? 1 : 0;
    return walk.callback(walk.context, SPFILENOTIFY_FILEEXTRACTED,
                         reinterpret_cast<UINT_PTR>(&paths), 0);
}

/// The iterator asks for the same cabinet again and again when it cannot use the one that lies
/// beside the first; a set that is whole makes it ask once for each.
UINT NextCabinet(Walk& walk, UINT_PTR param1, UINT_PTR param2) {
    const UINT answer = walk.callback(walk.context, SPFILENOTIFY_NEEDNEWCABINET, param1, param2);
    const auto& info = *reinterpret_cast<const CABINET_INFO_A*>(param1);
    if (walk.cabinetsAskedFor.insert(info.CabinetFile).second) {
        return answer;
    }
    walk.nextIsMissing = true;
    return ERROR_FILE_NOT_FOUND;
}

UINT CALLBACK HandOver(PVOID context, UINT notification, UINT_PTR param1, UINT_PTR param2) {
    Walk& walk = *static_cast<Walk*>(context);
    switch (notification) {
        case SPFILENOTIFY_FILEINCABINET:
            return FileInCabinet(walk, param1);
        case SPFILENOTIFY_FILEEXTRACTED:
            return FileExtracted(walk, param1);
        case SPFILENOTIFY_NEEDNEWCABINET:
            return NextCabinet(walk, param1, param2);
        default:
            return walk.callback(walk.context, notification, param1, param2);
    }
}

/// True when the callback was asked about every file, and all that it wanted were extracted. Some
/// systems' iterator reports success although it stopped at damaged data. Files that began in an
/// earlier cabinet may be left out.
bool IsComplete(const Walk& walk, const CabinetHeader& header) {
    return walk.extracted >= walk.begun && (header.hasPrevious || walk.told >= header.files);
}

/// Loaded when the first cabinet is walked, because the program has to start on machines that lack
/// it.
const LateFunction<decltype(&::SetupIterateCabinetA)>& Iterate() {
    static const SystemLibrary library("setupapi.dll");
    static const LateFunction<decltype(&::SetupIterateCabinetA)> iterate(library,
                                                                         "SetupIterateCabinetA");
    return iterate;
}

}  // namespace

bool SetupIterateCabinetA(const std::string& cabinet, CabinetCallback callback, void* context,
                          std::uint32_t& lastError) {
    CabinetHeader header;
    lastError = ReadCabinetHeader(cabinet, header);
    if (lastError != ERROR_SUCCESS) {
        return false;
    }
    Walk walk{callback, context};
    // Some failures leave the last error as it was; what an earlier call left would mislead.
    ::SetLastError(ERROR_SUCCESS);
    const bool done = Iterate()(cabinet.c_str(), 0, HandOver, &walk) != FALSE;
    lastError = done ? ERROR_SUCCESS : ::GetLastError();
    if (walk.nextIsMissing) {
        lastError = ERROR_FILE_NOT_FOUND;
    } else if (lastError == ERROR_SUCCESS && !(done && IsComplete(walk, header))) {
        lastError = ERROR_INVALID_DATA;
    }
    return lastError == ERROR_SUCCESS;
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
