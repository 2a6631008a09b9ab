#include "runtime/win32/errors.h"

#include <algorithm>
#include <array>

#include "runtime/runtime_error.h"

namespace swiftpatch {
namespace {

namespace number = error_number;

// Of the system's own headers for newer systems.
constexpr DWORD kVirusInfected = 225;
constexpr DWORD kVirusDeleted = 226;
constexpr DWORD kDiskQuotaExceeded = 1295;

/// What each system error is to a program: while opening, while deleting, while copying.
struct FileErrorRow {
    DWORD systemError;
    std::int32_t opening;
    std::int32_t deleting;
    std::int32_t copying;
};

constexpr FileErrorRow Same(DWORD systemError, std::int32_t all) {
    return {systemError, all, all, all};
}

/// What another process holds can be neither opened nor overwritten; a program that is to be
/// deleted is probably running.
constexpr FileErrorRow Held(DWORD systemError) {
    return {systemError, number::kPermissionDenied, number::kPathFileAccess,
            number::kPermissionDenied};
}

/// Copying over a file that may not be touched has a number of its own.
constexpr FileErrorRow Refused(DWORD systemError) {
    return {systemError, number::kPathFileAccess, number::kPathFileAccess,
            number::kPermissionDenied};
}

constexpr std::array kFileErrors{
    Same(ERROR_FILE_NOT_FOUND, number::kFileNotFound),
    Same(ERROR_PATH_NOT_FOUND, number::kPathNotFound),
    Same(ERROR_INVALID_DRIVE, number::kPathNotFound),
    Same(ERROR_BAD_PATHNAME, number::kPathNotFound),
    Same(ERROR_BAD_NETPATH, number::kPathNotFound),
    Same(ERROR_BAD_NET_NAME, number::kPathNotFound),
    Same(ERROR_FILENAME_EXCED_RANGE, number::kPathNotFound),
    Same(ERROR_INVALID_NAME, number::kBadFileNameOrNumber),
    Same(ERROR_TOO_MANY_OPEN_FILES, number::kTooManyFiles),
    Refused(ERROR_ACCESS_DENIED),
    Refused(ERROR_ALREADY_EXISTS),
    Refused(ERROR_WRITE_PROTECT),
    Held(ERROR_SHARING_VIOLATION),
    Held(ERROR_LOCK_VIOLATION),
    Held(ERROR_USER_MAPPED_FILE),  // A program that runs from the file.
    Same(kVirusInfected, number::kPermissionDenied),
    Same(kVirusDeleted, number::kPermissionDenied),
    Same(ERROR_NOT_READY, number::kDiskNotReady),
    Same(ERROR_DISK_FULL, number::kDiskFull),
    Same(ERROR_HANDLE_DISK_FULL, number::kDiskFull),
    Same(ERROR_CANNOT_MAKE, number::kDiskFull),  // A directory that has no room for one name more.
    Same(kDiskQuotaExceeded, number::kDiskFull),
};

struct TransferErrorRow {
    DWORD systemError;
    std::int32_t beforeAnswer;
};

constexpr std::array kTransferErrors{
    TransferErrorRow{ERROR_INTERNET_NAME_NOT_RESOLVED, number::kNoConnection},
    TransferErrorRow{ERROR_INTERNET_CANNOT_CONNECT, number::kNoConnection},
    TransferErrorRow{ERROR_INTERNET_DISCONNECTED, number::kNoConnection},
    TransferErrorRow{ERROR_INTERNET_SERVER_UNREACHABLE, number::kNoConnection},
    TransferErrorRow{ERROR_INTERNET_PROXY_SERVER_UNREACHABLE, number::kNoConnection},
    TransferErrorRow{ERROR_INTERNET_TIMEOUT, number::kRequestTimedOut},
};

}  // namespace

void RaiseFileError(DWORD systemError, FileAction action) {
    const auto* row = std::find_if(
        kFileErrors.begin(), kFileErrors.end(),
        [systemError](const FileErrorRow& each) { return each.systemError == systemError; });
    if (row == kFileErrors.end()) {
        throw RuntimeError(number::kDeviceIoError);
    }
    switch (action) {
        case FileAction::kDelete:
            throw RuntimeError(row->deleting);
        case FileAction::kCopy:
            throw RuntimeError(row->copying);
        default:
            throw RuntimeError(row->opening);
    }
}

std::int32_t TransferErrorNumber(DWORD systemError, bool inBody) {
    if (inBody) {
        return number::kRequestTimedOut;
    }
    const auto* row = std::find_if(
        kTransferErrors.begin(), kTransferErrors.end(),
        [systemError](const TransferErrorRow& each) { return each.systemError == systemError; });
    return row == kTransferErrors.end() ? number::kRequestFailed : row->beforeAnswer;
}

}  // namespace swiftpatch
